#include "support/sensor_test.h"

#include <cstring>

namespace qmv::test {

void SensorTest::SetUp() {
  TableTest::SetUp();
  testing::internal::CaptureStderr();
}

void SensorTest::TearDown() {
  EXPECT_EQ("", testing::internal::GetCapturedStderr()) << "on standard error, and the test did not ask for it";
  TableTest::TearDown();
}

void SensorTest::insert(int first, const std::string& changes) {
  TableTest::insert(first);
  if (changes.empty()) return;
  sql("update " + table_.name + " set " + changes + " where DeviceID = 't" + std::to_string(first) + "';");
}

SensorTest::Bytes SensorTest::sample(int first) const {
  Bytes record = TableTest::sample(first);
  fru_rec fru;
  std::memcpy(&fru, record.data() + table_.fru_record, sizeof(fru));
  fru.EntityID = first + 998;
  fru.EntityInst = first + 999;
  std::memcpy(record.data() + table_.fru_record, &fru, sizeof(fru));
  return record;
}

void SensorTest::expect_record(int first, const void* record) const {
  const Texts all = values(first);
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(all[i], member(record, table_.fields[i])) << table_.fields[i].column;
  }
  fru_rec fru;
  std::memcpy(&fru, static_cast<const char*>(record) + table_.fru_record, sizeof(fru));
  EXPECT_EQ(first + 5, fru.EntityID);
  EXPECT_EQ(first + 6, fru.EntityInst);
}

void SensorTest::expect_row(int first, const std::string& key) {
  const Texts all = values(first);
  for (std::size_t i = 1; i < all.size(); ++i) {
    const Field& field = table_.fields[i];
    EXPECT_EQ(all[i], stored(field, " where DeviceID = '" + key + "'")) << field.column;
  }
}

std::string SensorTest::printed() {
  const std::string text = testing::internal::GetCapturedStderr();
  testing::internal::CaptureStderr();
  return text;
}

}  // namespace qmv::test
