#include "support/sensor_test.h"

#include <algorithm>
#include <cstring>

namespace qmv::test {

void SensorTest::SetUp() {
  DatabaseTest::SetUp();
  Texts columns;
  for (const Field& field : table_.fields) {
    columns.push_back(std::string(field.column) + (field.is_text() ? " text" : " integer"));
  }
  sql("create table " + table_.name + " (" + joined(columns) + ", unique (DeviceID));");
  testing::internal::CaptureStderr();
}

void SensorTest::TearDown() {
  EXPECT_EQ("", testing::internal::GetCapturedStderr()) << "on standard error, and the test did not ask for it";
  DatabaseTest::TearDown();
}

void SensorTest::insert(int first, const std::string& changes) {
  sql("insert into " + table_.name + " values (" + joined(literals(first)) + ");");
  if (changes.empty()) return;
  sql("update " + table_.name + " set " + changes + " where DeviceID = 't" + std::to_string(first) + "';");
}

SensorTest::Bytes SensorTest::sample(int first) const {
  Bytes record(table_.record_size);
  const Texts all = values(first);
  for (std::size_t i = 0; i < all.size(); ++i) put(record, table_.fields[i], all[i]);
  fru_rec fru;
  std::memcpy(&fru, record.data() + table_.fru_record, sizeof(fru));
  fru.EntityID = first + 998;
  fru.EntityInst = first + 999;
  std::memcpy(record.data() + table_.fru_record, &fru, sizeof(fru));
  return record;
}

SensorTest::Row SensorTest::first_row() {
  sqlite3_stmt* row = nullptr;
  EXPECT_EQ(SQLITE_OK, sqlite3_prepare_v2(db, ("select * from " + table_.name + ";").c_str(), -1, &row, nullptr));
  EXPECT_EQ(SQLITE_ROW, __real_sqlite3_step(row));
  return {row, __real_sqlite3_finalize};
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

std::string SensorTest::member(const void* record, const Field& field) {
  const char* at = static_cast<const char*>(record) + field.offset;
  if (field.is_text()) return {at, strnlen(at, field.width)};
  std::int32_t number;
  std::memcpy(&number, at, sizeof(number));
  return std::to_string(number);
}

void SensorTest::put(Bytes& record, const Field& field, const std::string& value) {
  char* at = record.data() + field.offset;
  if (field.is_text()) {
    std::memset(at, 0, field.width);
    std::memcpy(at, value.data(), std::min(value.size(), field.width));
  } else {
    const std::int32_t number = std::stoi(value);
    std::memcpy(at, &number, sizeof(number));
  }
}

std::string SensorTest::stored(const Field& field, const std::string& condition) {
  return value_of(std::string("select ") + field.column + " from " + table_.name + condition + ";");
}

std::vector<Field> SensorTest::texts() const {
  std::vector<Field> found = table_.fields;
  std::erase_if(found, [](const Field& field) { return !field.is_text(); });
  return found;
}

std::vector<Field> SensorTest::numbers() const {
  std::vector<Field> found = table_.fields;
  std::erase_if(found, [](const Field& field) { return field.is_text(); });
  return found;
}

std::string SensorTest::printed() {
  const std::string text = testing::internal::GetCapturedStderr();
  testing::internal::CaptureStderr();
  return text;
}

Texts SensorTest::values(int first) const {
  Texts all;
  for (const Field& field : table_.fields) {
    all.push_back((field.is_text() ? "t" : "") + std::to_string(first + static_cast<int>(all.size())));
  }
  return all;
}

Texts SensorTest::literals(int first) const {
  Texts all = values(first);
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (table_.fields[i].is_text()) all[i] = "'" + all[i] + "'";
  }
  return all;
}

Texts SensorTest::names() const {
  Texts all;
  for (const Field& field : table_.fields) all.emplace_back(field.column);
  return all;
}

void SensorTest::expect_begins(const std::string& begin, const std::string& text) {
  EXPECT_EQ(begin, text.substr(0, begin.size()));
}

void SensorTest::expect_ends(const std::string& end, const std::string& text) {
  EXPECT_EQ(end, text.substr(text.size() - std::min(text.size(), end.size())));
}

std::string SensorTest::joined(const Texts& texts, const std::string& separator) {
  std::string whole;
  for (const std::string& text : texts) whole += (whole.empty() ? "" : separator) + text;
  return whole;
}

std::string SensorTest::without_blanks(std::string text) {
  std::erase_if(text, [](char c) { return c == ' ' || c == '\t'; });
  return text;
}

}  // namespace qmv::test
