// Columns with hostile values, read by functions that hand out one value of a row and no record.
#include <cstdint>
#include <string>
#include <vector>

#include "hostile/hostile_test.h"
#include "torture/guarded.h"

namespace qmv::test {
namespace {

class SensorNumbers : public HostileTest, public testing::WithParamInterface<Stored> {
 protected:
  static constexpr std::int32_t kEntity = 3;
  static constexpr std::int32_t kInstance = 4;
  static constexpr std::int32_t kSensor = 5;

  // One sensor of the entity, with the value in a column.
  void put_sensor(const std::string& column) {
    sql("create table full_sdr (EntityID, EntityInstance, SensorNum, " + column + ");");
    put_row("full_sdr", {plain_number(kEntity), plain_number(kInstance), plain_number(kSensor), GetParam()});
  }
};

std::string name_of(const testing::TestParamInfo<Stored>& info) {
  return std::to_string(info.index);
}
INSTANTIATE_TEST_SUITE_P(Each, SensorNumbers, testing::ValuesIn(hostile_numbers()), name_of);

TEST_P(SensorNumbers, AreRecordIds) {
  put_sensor("IPMI_RecordID");
  std::int32_t record = 77;
  EXPECT_EQ(0, db_get_recordid_by_sensor_num(db, kSensor, &record));
  EXPECT_EQ(GetParam().number, record);
}

// NULL is no other type than any.
TEST_P(SensorNumbers, AreTypesUnlikeTheEntitys) {
  put_sensor("SensorType");
  std::int32_t type = 77;
  const bool is_null = GetParam().text.empty();
  EXPECT_EQ(is_null ? 1 : 0, db_check_is_entity_id_not_equals_to_sen_type(db, kEntity, kInstance, &type));
  EXPECT_EQ(is_null ? 77 : GetParam().number, type);
  EXPECT_EQ(1, db_check_is_entity_id_equals_to_sen_type(db, kEntity, kInstance));
}

class SingleTexts : public HostileTest, public testing::WithParamInterface<Stored> {};

constexpr std::size_t kValueSize = 256;
INSTANTIATE_TEST_SUITE_P(Each, SingleTexts, testing::ValuesIn(hostile_texts(kValueSize)), name_of);

TEST_P(SingleTexts, AreTerminateSequencesAsSqliteHoldsThem) {
  sql("create table textredirectionsap (Name, SessionTerminateSequence);");
  put_row("textredirectionsap", {plain_text("TextRedirectionSAP1"), GetParam()});
  const char* const sequence = db_get_sesstion_term_seq(db);
  ASSERT_EQ(GetParam().name == "NULL", sequence == nullptr);
  EXPECT_TRUE(GetParam().text == (sequence == nullptr ? "" : sequence));
}

TEST_P(SingleTexts, AreValuesOfAColumnAsFarAsThereIsRoom) {
  sql("create table any (one);");
  put_row("any", {GetParam()});
  const Guarded value(kValueSize, '?');
  ASSERT_EQ(0, GetColumnValues("any", value.bytes(), "one", "any", 1));
  EXPECT_EQ(GetParam().text.substr(0, kValueSize - 1), value.bytes());
}

}  // namespace
}  // namespace qmv::test
