// Columns with hostile values, read by functions that hand out one value of a row and no record.
#include <cstdint>
#include <functional>
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

// The name that a function hands out, none when it fails.
std::string name_by(const std::function<std::int32_t(char**)>& function) {
  char untouched = 0;
  char* name = &untouched;
  const std::int32_t status = function(&name);
  EXPECT_EQ(name == &untouched ? 1 : 0, status);
  if (name == &untouched) return "";
  const std::string text = name;
  db_freemem(name);
  return text;
}

std::string processor(std::int32_t entity, std::int32_t instance) {
  return name_by([=](char** name) { return get_processor_from_db(entity, instance, name); });
}

std::string power_supply(std::int32_t sensor) {
  return name_by([=](char** name) { return get_ps_from_db(name, sensor); });
}

std::vector<std::string> power_supplies() {
  char** names = nullptr;
  std::int32_t count = -1;
  EXPECT_EQ(0, get_all_ps_from_db(&names, &count));
  const std::vector<std::string> texts(names, names + count);
  for (std::int32_t i = 0; i < count; ++i) db_freemem(names[i]);
  db_freemem(names);
  return texts;
}

// Sensors that name what they belong to. Numbers are read as SQLite does, but found only where they are equal.
class NamingSensors : public HostileTest, public testing::WithParamInterface<Stored> {
 protected:
  void SetUp() override {
    HostileTest::SetUp();
    for (const std::string table : {"compact_sdr", "full_sdr"})
      sql("create table " + table + " (EntityID, EntityInstance, SensorNum, PhysicalElement);");
  }

  void put_sensor(const Stored& entity, const Stored& instance, const Stored& sensor) {
    put_row("compact_sdr", {entity, instance, sensor, plain_number(kPowerSupplyElement)});
  }

  static std::string found(const std::string& name) { return GetParam().is_key ? name : ""; }

  static constexpr std::int32_t kPowerSupplyElement = 1024;
  const Stored processor_entity = plain_number(3);
  const Stored supply_entity = plain_number(10);
  const Stored four = plain_number(4);
  const Stored five = plain_number(5);
  const std::string number = std::to_string(GetParam().number);
};

INSTANTIATE_TEST_SUITE_P(Each, NamingSensors, testing::ValuesIn(hostile_numbers()), name_of);

TEST_P(NamingSensors, NumberProcessors) {
  put_sensor(processor_entity, four, GetParam());
  EXPECT_EQ("3:4:" + number + ":Processor", processor(3, 4));
}

TEST_P(NamingSensors, NumberPowerSupplies) {
  put_sensor(supply_entity, four, GetParam());
  const std::string name = "10:4:" + number + ":PowerSupply";
  EXPECT_EQ(std::vector<std::string>{name}, power_supplies());
  EXPECT_EQ(found(name), power_supply(GetParam().number));
}

TEST_P(NamingSensors, SayWhichProcessorItIs) {
  put_sensor(processor_entity, GetParam(), five);
  EXPECT_EQ(found("3:" + number + ":5:Processor"), processor(3, GetParam().number));
}

TEST_P(NamingSensors, SayWhichPowerSupplyItIs) {
  put_sensor(supply_entity, GetParam(), five);
  const std::string name = "10:" + number + ":5:PowerSupply";
  EXPECT_EQ(std::vector<std::string>{name}, power_supplies());
  EXPECT_EQ(name, power_supply(5));
}

TEST_P(NamingSensors, OfOtherEntitiesNameNothing) {
  put_sensor(GetParam(), four, five);
  EXPECT_EQ("", processor(GetParam().number, 4));
  EXPECT_EQ(std::vector<std::string>(), power_supplies());
  EXPECT_EQ("", power_supply(5));
}

// Entity IDs that are no such number, but are read as one.
class EntityIdsReadAs : public NamingSensors {};

INSTANTIATE_TEST_SUITE_P(APowerSupplys, EntityIdsReadAs, testing::ValuesIn(values_read_as(10)), name_of);
INSTANTIATE_TEST_SUITE_P(AProcessors, EntityIdsReadAs, testing::ValuesIn(values_read_as(3)), name_of);

TEST_P(EntityIdsReadAs, AreTakenForAPowerSupplysButNotForAProcessors) {
  put_sensor(GetParam(), four, five);
  using Names = std::vector<std::string>;
  EXPECT_EQ(number == "10" ? Names{"10:4:5:PowerSupply"} : Names{}, power_supplies());
  EXPECT_EQ(number == "10" ? "10:4:5:PowerSupply" : "", power_supply(5));
  EXPECT_EQ("", processor(3, 4));
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

// Up to a zero; without an identifier no errors are looked for, not those of what SQLite formats NULL as either.
TEST_P(SingleTexts, AreIdentifiersOfJobsThatArePurgedWithTheirErrors) {
  sql("create table concrete_job (InstanceID, JobState integer, RemovalTime integer);"
      "create table error_info (ErrorSource);");
  put_row("concrete_job", {GetParam(), plain_number(7), plain_number(1)});
  put_row("error_info", {plain_text(GetParam().text)});
  sql("insert into error_info values ('of another'), ('(NULL)');");
  db_clear_expired_concretejob(1);
  EXPECT_EQ("0", values("select count(*) from concrete_job;").at(0));
  std::vector<std::string> left = {"of another", "(NULL)"};
  if (GetParam().name == "NULL") left.insert(left.begin(), "");
  EXPECT_EQ(left, values("select ErrorSource from error_info order by rowid;"));
}

}  // namespace
}  // namespace qmv::test
