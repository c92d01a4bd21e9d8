// Components derived from the sensors: redundancy sets, memory, processors.
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "qmv/sdr.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

constexpr char kCompactTable[] =
    "create table compact_sdr (DeviceID, SDRType, OwnerLUN, OwnerID, SensorNum, EntityID, EntityInstance, SensorInit, "
    "SensorCaps, SensorName, SensorType, CIMSensorType, OtherSensorType, OtherSensorTypeDesc, EventTypeCode, "
    "AssertionMask, DeAssertionMask, DiscreteReadingMask, BaseUnit, UnitModifier, RateUnit, RecShareDir, PHysterysis, "
    "NHysterysis, OEM, IdStrLen, IdStr, IPMI_RecordID, IsFRUAvailable, PhysicalElement, FruIDSlaveAddr, "
    "DeviceAccessAddr, "
    "LUNBusID, ChannelNumber, FRUIDStrLen, DevIdStr, ChassisSerNumber, ChassisPartNumber, ChassisCustFields, "
    "ProdSerNumber, ProdPartNumber, ProdMfrName, BrdSerNumber, BrdPartNumber, BrdMfrName);";

class Components : public DatabaseTest {
 protected:
  Components() : DatabaseTest("db_sdrd.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql(kCompactTable);
    sql("create table full_sdr (DeviceID, PhysicalElement);");
  }

  // A compact sensor of entity (entity, 1) that has these values besides, written "column = value, ...".
  void insert_sensor(const std::string& id, int entity, const std::string& values) {
    sql("insert into compact_sdr (DeviceID, EntityID, EntityInstance) values ('" + id + "', " + std::to_string(entity) +
        ", 1); update compact_sdr set " + values + " where DeviceID = '" + id + "';");
  }

  std::int32_t count = -1;
  Owned<compact_sdr_rec> records;
};

// What is counted and read, and the values that make a sensor count and be read.
struct Component {
  const char* name;
  std::int32_t (*count)(sqlite3*, std::int32_t*);
  std::int32_t (*get_all)(sqlite3*, std::int32_t*, compact_sdr_rec**);
  const char* count_statement;
  const char* statement;
  const char* member;
  bool traces_each_record;
};

void PrintTo(const Component& component, std::ostream* out) {
  *out << component.name;
}

constexpr Component kRedundancySet{
    .name = "RedundancySet",
    .count = db_get_redundancyset_cnt,
    .get_all = db_get_all_redundancyset,
    .count_statement =
        "select count(*) from (select * from compact_sdr where EventTypeCode=11 GROUP BY "
        "EntityID,EntityInstance);",
    .statement = "select * from compact_sdr where EventTypeCode=11 GROUP BY EntityID,EntityInstance;",
    .member = "EventTypeCode = 11",
    .traces_each_record = true,
};

constexpr Component kMemory{
    .name = "Memory",
    .count = db_get_memory_cnt,
    .get_all = db_get_all_memory,
    .count_statement =
        "select count(*) from \t( SELECT  compact_sdr.DeviceID FROM compact_sdr WHERE (PhysicalElement & "
        "256) = 256 \tUNION \tSELECT full_sdr.DeviceID FROM full_sdr WHERE  (PhysicalElement & 256) = 256);",
    .statement = "select * from compact_sdr where SensorType=12;",
    .member = "SensorType = 12, PhysicalElement = 256",
    .traces_each_record = true,
};

constexpr Component kProcessor{
    .name = "Processor",
    .count = db_get_processor_cnt,
    .get_all = db_get_all_processor,
    .count_statement = "select count(*) from compact_sdr where SensorType=7;",
    .statement = "select * from compact_sdr where SensorType=7;",
    .member = "SensorType = 7",
    .traces_each_record = false,
};

class EachComponent : public Components, public testing::WithParamInterface<Component> {
 protected:
  void insert_member(const std::string& id, int entity) { insert_sensor(id, entity, GetParam().member); }

  std::int32_t get_count() { return GetParam().count(db, &count); }
  std::int32_t get_all() { return GetParam().get_all(db, &count, records.out()); }

  LogLine counted() const { return trace("Successfully return the no. of sensors present"); }
};

INSTANTIATE_TEST_SUITE_P(Of, EachComponent, testing::Values(kRedundancySet, kMemory, kProcessor),
                         [](const auto& component) { return component.param.name; });

TEST_P(EachComponent, CountReturnsTheNumberOfItsSensors) {
  insert_member("a", 1);
  insert_member("b", 2);
  insert_sensor("other", 3, "SensorType = 1, EventTypeCode = 1, PhysicalElement = 255");
  EXPECT_EQ(0, get_count());
  EXPECT_EQ(2, count);
  EXPECT_EQ(Texts({GetParam().count_statement}), statements());
  EXPECT_EQ(std::vector<bool>({false}), boundary().tails);
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_P(EachComponent, CountOfNoneIsZeroWithTheSuccessTrace) {
  EXPECT_EQ(0, get_count());
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_P(EachComponent, CountWithoutATableReturnsOneWithTheCountCleared) {
  sql("drop table compact_sdr;");
  EXPECT_EQ(1, get_count());
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("compact_sdr")}), logged());
}

TEST_P(EachComponent, CountWithoutAStatementIsZero) {
  insert_member("a", 1);
  boundary().miss_statement = 1;
  EXPECT_EQ(0, get_count());
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_P(EachComponent, CountDoesNotLookAtTheStepAndFinalises) {
  insert_member("a", 1);
  boundary().steps = {{1, SQLITE_DONE}};
  EXPECT_EQ(0, get_count());
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_P(EachComponent, CountReturnsTheCodeOfFinalize) {
  insert_member("a", 1);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, get_count());
  EXPECT_EQ(1, count);
  EXPECT_EQ(Lines({counted()}), logged());
}

// Every value of this view is an overflow, so the step fails.
TEST_P(EachComponent, CountReturnsWhatFinalizeSaysOfAFailedStep) {
  sql("drop table compact_sdr; create view compact_sdr as select abs(-9223372036854775807 - 1) as SensorType, "
      "abs(-9223372036854775807 - 1) as EventTypeCode, abs(-9223372036854775807 - 1) as PhysicalElement, "
      "1 as EntityID, 1 as EntityInstance, 1 as DeviceID;");
  EXPECT_EQ(SQLITE_ERROR, get_count());
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_P(EachComponent, GetAllReadsItsSensors) {
  insert_member("a", 1);
  insert_sensor("other", 2, "SensorType = 1, EventTypeCode = 1");
  insert_member("b", 3);
  EXPECT_EQ(0, get_all());
  ASSERT_EQ(2, count);
  EXPECT_EQ("a", field(records[0].DeviceID));
  EXPECT_EQ("b", field(records[1].DeviceID));
  EXPECT_EQ(Texts({GetParam().count_statement, GetParam().statement}), statements());
  logged();
}

TEST_P(EachComponent, GetAllTracesItsSteps) {
  insert_member("a", 1);
  insert_member("b", 3);
  EXPECT_EQ(0, get_all());
  Lines expected = {counted(), trace("Get All compact SDR records from database")};
  if (GetParam().traces_each_record) expected.insert(expected.end(), 2, trace("Successfully got the Sensor record"));
  expected.push_back(trace("Successfully got all the sensors"));
  EXPECT_EQ(expected, logged());
}

// Column n holds n, texts with a t in front, save those that decide.
TEST_P(EachComponent, GetAllReadsEveryColumnAsTheRowReaderDoes) {
  std::string values = "'t0'";
  for (int i = 1; i < 45; ++i) {
    const bool text = i == 9 || i == 13 || i == 26 || i >= 35;
    values += text ? ", 't" + std::to_string(i) + "'" : ", " + std::to_string(i);
  }
  sql("insert into compact_sdr values (" + values + "); update compact_sdr set " + GetParam().member + ";");
  EXPECT_EQ(0, get_all());
  ASSERT_EQ(1, count);

  compact_sdr_rec expected{};
  sqlite3_stmt* row = nullptr;
  __real_sqlite3_prepare(db, "select * from compact_sdr;", -1, &row, nullptr);
  __real_sqlite3_step(row);
  EXPECT_EQ(0, db_fill_compact_sdr_fields(&expected, row));
  __real_sqlite3_finalize(row);
  EXPECT_EQ(0, std::memcmp(&expected, records.get(), sizeof(expected)));
  EXPECT_EQ(2, expected.OwnerLUN);
  EXPECT_EQ(5, expected.FruRecord.EntityID);
  EXPECT_EQ("t44", field(expected.FruRecord.BrdMfrName));
  logged();
}

TEST_P(EachComponent, GetAllOfNoneReturnsNullAndLeavesTheCount) {
  compact_sdr_rec untouched;
  compact_sdr_rec* none = &untouched;
  EXPECT_EQ(0, GetParam().get_all(db, &count, &none));
  EXPECT_EQ(nullptr, none);
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_P(EachComponent, GetAllWhoseCountFailsReturnsOne) {
  sql("drop table compact_sdr;");
  compact_sdr_rec untouched;
  compact_sdr_rec* none = &untouched;
  EXPECT_EQ(1, GetParam().get_all(db, &count, &none));
  EXPECT_EQ(nullptr, none);
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({no_such_table("compact_sdr"), trace("Fail to get sensor records")}), logged());
}

TEST_P(EachComponent, GetAllThatDoesNotCompileReturnsOneWithTheCountWritten) {
  insert_member("a", 1);
  sql_before("select * from compact_sdr", "drop table compact_sdr;");
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(1, count);
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(Lines({counted(), no_such_table("compact_sdr")}), logged());
}

TEST_P(EachComponent, GetAllWithoutAStatementReturnsZeroedRecords) {
  insert_member("a", 1);
  boundary().miss_statement = 2;
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(1, count);
  ASSERT_NE(nullptr, records.get());
  EXPECT_EQ("", field(records[0].DeviceID));
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_P(EachComponent, AllocationFailureReturnsOneAndLeavesTheStatementOpen) {
  insert_member("a", 1);
  boundary().fail_allocation = 1;
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(1, count);
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(Lines({counted(), trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_F(Components, RedundancySensorsOfOneEntityCountOnceAndComeBackAsOneRecord) {
  insert_sensor("a", 1, "EventTypeCode = 11");
  insert_sensor("b", 1, "EventTypeCode = 11");
  insert_sensor("c", 1, "EventTypeCode = 11, EntityInstance = 2");
  insert_sensor("d", 2, "EventTypeCode = 11");
  EXPECT_EQ(0, db_get_all_redundancyset(db, &count, records.out()));
  ASSERT_EQ(3, count);
  const auto entity = [this](std::size_t i) { return std::pair(records[i].EntityID, records[i].EntityInstance); };
  EXPECT_EQ(std::pair(1, 1), entity(0));
  EXPECT_EQ(std::pair(1, 2), entity(1));
  EXPECT_EQ(std::pair(2, 1), entity(2));
  logged();
}

TEST_F(Components, ProcessorSensorsOfOneEntityAllCountAndComeBack) {
  insert_sensor("a", 3, "SensorType = 7");
  insert_sensor("b", 3, "SensorType = 7");
  EXPECT_EQ(0, db_get_all_processor(db, &count, records.out()));
  ASSERT_EQ(2, count);
  EXPECT_EQ("a", field(records[0].DeviceID));
  EXPECT_EQ("b", field(records[1].DeviceID));
  logged();
}

TEST_F(Components, MemoryCountIsOfTheDistinctDeviceIdsOfBothTables) {
  insert_sensor("compact", 8, "PhysicalElement = 256");
  insert_sensor("both", 8, "PhysicalElement = 256");
  sql("insert into full_sdr values ('both', 256), ('full', 256), ('full', 256);");
  EXPECT_EQ(0, db_get_memory_cnt(db, &count));
  EXPECT_EQ(3, count);
  logged();
}

TEST_F(Components, MemoryCountTestsOneBitWhateverTheOthersAndTheSensorType) {
  insert_sensor("more bits", 8, "PhysicalElement = 257, SensorType = 1");
  insert_sensor("all but the bit", 8, "PhysicalElement = 65279, SensorType = 12");
  sql("insert into full_sdr values ('more bits in full', 768), ('unknown', NULL), ('all but the bit in full', 255);");
  EXPECT_EQ(0, db_get_memory_cnt(db, &count));
  EXPECT_EQ(2, count);
  logged();
}

TEST_F(Components, MemoryCountNeedsTheFullSensorsTableToo) {
  sql("drop table full_sdr;");
  EXPECT_EQ(1, db_get_memory_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("full_sdr")}), logged());
}

TEST_F(Components, MemoryIsCountedByElementAndReadBySensorType) {
  insert_sensor("a", 8, "PhysicalElement = 256, SensorType = 12");
  insert_sensor("temperature", 8, "PhysicalElement = 256, SensorType = 1");
  EXPECT_EQ(0, db_get_all_memory(db, &count, records.out()));
  ASSERT_EQ(2, count);
  EXPECT_EQ("a", field(records[0].DeviceID)) << "the record without a row stays zero";
  const auto* second = reinterpret_cast<const char*>(&records[1]);
  EXPECT_EQ(std::string(sizeof(compact_sdr_rec), '\0'), std::string(second, sizeof(compact_sdr_rec)));
  logged();
}

TEST_F(Components, MemoryRowsBeyondTheCountedOnesAreDroppedUntraced) {
  insert_sensor("a", 8, "PhysicalElement = 256, SensorType = 12");
  insert_sensor("b", 8, "PhysicalElement = 0, SensorType = 12");
  EXPECT_EQ(0, db_get_all_memory(db, &count, records.out()));
  ASSERT_EQ(1, count);
  EXPECT_EQ("a", field(records[0].DeviceID));
  EXPECT_EQ(Lines({trace("Successfully return the no. of sensors present"),
                   trace("Get All compact SDR records from database"), trace("Successfully got the Sensor record"),
                   trace("Successfully got all the sensors")}),
            logged());
}

TEST_F(Components, MemoryRowsAreNotReadWhenNothingIsCounted) {
  insert_sensor("a", 8, "PhysicalElement = 0, SensorType = 12");
  EXPECT_EQ(0, db_get_all_memory(db, &count, records.out()));
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(-1, count);
  logged();
}

// Every call opens the fixed file by itself and must leave neither it nor memory behind; nothing is ever logged, which
// the fixture proves.
class ProcessorName : public DatabaseTest {
 protected:
  ProcessorName() : DatabaseTest("db_sdrd.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    file = open(scratch() + "/cim.db");
    sql(file.get(), "create table compact_sdr (DeviceID, SensorNum, EntityID, EntityInstance);");
  }

  void TearDown() override {
    file.reset();
    EXPECT_FALSE(is_open(scratch() + "/cim.db"));
    EXPECT_EQ(0, boundary().busy_handlers_installed);
    DatabaseTest::TearDown();
  }

  void insert_sensor(int entity, int instance, int number) {
    sql(file.get(), "insert into compact_sdr (SensorNum, EntityID, EntityInstance) values (" + std::to_string(number) +
                        ", " + std::to_string(entity) + ", " + std::to_string(instance) + ");");
  }

  // What the call made of a pointer, which begins as something else than NULL.
  std::string name_of(int entity, int instance) {
    char untouched[] = "(untouched)";
    char* name = untouched;
    status = get_processor_from_db(entity, instance, &name);
    if (name == nullptr) return "(null)";
    const std::string text = name;
    if (name != untouched) std::free(name);
    return text;
  }

  static bool is_open(const std::string& path) {
    for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
      std::error_code vanished;
      if (std::filesystem::read_symlink(descriptor, vanished) == path) return true;
    }
    return false;
  }

  Connection file;
  std::int32_t status = -1;
};

TEST_F(ProcessorName, IsEntityInstanceSensorNumberAndTheClassWord) {
  insert_sensor(3, 1, 5);
  EXPECT_EQ("3:1:5:Processor", name_of(3, 1));
  EXPECT_EQ(0, status);
  EXPECT_EQ(Texts({"/tmp/cim.db"}), boundary().opened);
  EXPECT_EQ(Texts({"select EntityID,EntityInstance,SensorNum from compact_sdr where EntityID=3             and "
                   "EntityInstance=1;"}),
            statements());
}

TEST_F(ProcessorName, ComesFromTheFirstSensorOfThatEntity) {
  insert_sensor(3, 2, 4);
  insert_sensor(9, 1, 6);
  insert_sensor(3, 1, 8);
  insert_sensor(3, 1, 5);
  EXPECT_EQ("3:1:8:Processor", name_of(3, 1));
}

// A view whose every value is the next of these.
std::vector<int> next_values;

void next_value(sqlite3_context* context, int, sqlite3_value**) {
  sqlite3_result_int(context, next_values.front());
  next_values.erase(next_values.begin());
}

int provide_next_value(sqlite3* db, char**, const sqlite3_api_routines*) {
  return sqlite3_create_function(db, "next_value", 0, SQLITE_UTF8, nullptr, next_value, nullptr, nullptr);
}

TEST_F(ProcessorName, PassesOverARowThatReadsAsAnotherEntityThanItWasChosenAs) {
  sql(file.get(), "drop table compact_sdr; create table sensors (SensorNum); insert into sensors values (5), (6);");
  const auto extension = reinterpret_cast<void (*)()>(provide_next_value);
  sqlite3_auto_extension(extension);
  provide_next_value(file.get(), nullptr, nullptr);
  sql(file.get(),
      "create view compact_sdr as select next_value() EntityID, next_value() EntityInstance, SensorNum from "
      "sensors;");
  for (const auto& [entity, instance] : {std::pair(8, 1), std::pair(9, 1), std::pair(64, 1), std::pair(3, 2)}) {
    SCOPED_TRACE(entity);
    next_values = {3, 1, entity, instance, 3, 1, 3, 1};  // each row as it is chosen and as it is read
    EXPECT_EQ("3:1:6:Processor", name_of(3, 1));
    EXPECT_EQ(std::vector<int>(), next_values);
  }
  sqlite3_cancel_auto_extension(extension);
}

TEST_F(ProcessorName, IsATextIn256ZeroedBytes) {
  insert_sensor(18, -2147483648, 2147483647);
  Owned<char> name;
  EXPECT_EQ(0, get_processor_from_db(18, INT32_MIN, name.out()));
  EXPECT_EQ(256u, size_of(name.get()));
  const std::string text = "18:-2147483648:2147483647:Processor";
  EXPECT_EQ(text + std::string(256 - text.size(), '\0'), std::string(name.get(), 256));
  EXPECT_EQ(1, boundary().allocations);
}

TEST_F(ProcessorName, IsGivenToTheEntitiesOfTheProcessorClassOnly) {
  std::string named;
  for (int entity = 0; entity < 54; ++entity) {
    insert_sensor(entity, 1, 5);
    if (name_of(entity, 1) == "(untouched)") {
      EXPECT_EQ(1, status);
      continue;
    }
    EXPECT_EQ(0, status);
    named += std::to_string(entity) + " ";
  }
  EXPECT_EQ("3 9 18 ", named);
}

TEST_F(ProcessorName, IsNotGivenToAnEntityOutsideTheMap) {
  for (const int entity : {54, 64, 65, 66, 209, 255, INT32_MAX, -1, INT32_MIN}) {
    SCOPED_TRACE(entity);
    insert_sensor(entity, 1, 5);
    EXPECT_EQ("(untouched)", name_of(entity, 1));
    EXPECT_EQ(1, status);
  }
}

TEST_F(ProcessorName, WithoutASensorReturnsOneAndLeavesThePointer) {
  insert_sensor(3, 1, 5);
  EXPECT_EQ("(untouched)", name_of(3, 2));
  EXPECT_EQ(1, status);
}

TEST_F(ProcessorName, WithoutATableReturnsOneAndLeavesThePointer) {
  sql(file.get(), "drop table compact_sdr;");
  EXPECT_EQ("(untouched)", name_of(3, 1));
  EXPECT_EQ(1, status);
}

TEST_F(ProcessorName, WithoutAStatementReturnsOneAndLeavesThePointer) {
  insert_sensor(3, 1, 5);
  boundary().miss_statement = 1;
  EXPECT_EQ("(untouched)", name_of(3, 1));
  EXPECT_EQ(1, status);
}

TEST_F(ProcessorName, WhoseTextCannotBeFormattedReturnsOneAndLeavesThePointer) {
  insert_sensor(3, 1, 5);
  boundary().fail_text = 1;
  EXPECT_EQ("(untouched)", name_of(3, 1));
  EXPECT_EQ(1, status);
  EXPECT_EQ(Texts({"(null)"}), statements());
}

TEST_F(ProcessorName, AllocationFailureReturnsOneWithNull) {
  insert_sensor(3, 1, 5);
  insert_sensor(3, 1, 6);
  boundary().fail_allocation = 1;
  EXPECT_EQ("(null)", name_of(3, 1));
  EXPECT_EQ(1, status);
  EXPECT_EQ(1, boundary().allocations) << "no further row is tried";
}

TEST_F(ProcessorName, DoesNotWaitForAnotherConnectionsLock) {
  insert_sensor(3, 1, 5);
  sql(file.get(), "begin exclusive;");
  EXPECT_EQ("(untouched)", name_of(3, 1));
  EXPECT_EQ(1, status);
  EXPECT_EQ(std::vector<unsigned>(), boundary().sleeps);
}

TEST_F(ProcessorName, FailedOpenReturnsOneAndLeavesTheHandle) {
  boundary().fixed_files = scratch() + "/missing";
  const sqlite3_int64 before = sqlite3_memory_used();
  EXPECT_EQ("(untouched)", name_of(3, 1));
  EXPECT_EQ(1, status);
  EXPECT_EQ(Texts({"/tmp/cim.db"}), boundary().opened);
  EXPECT_EQ(Texts(), statements());
  ASSERT_LT(before, sqlite3_memory_used()) << "the handle is not closed";
  EXPECT_EQ(0, sqlite3_close(boundary().last_opened));
  EXPECT_EQ(before, sqlite3_memory_used());
}

TEST_F(ProcessorName, LeavesNoMemoryToSqlite) {
  insert_sensor(3, 1, 5);
  name_of(3, 1);
  const sqlite3_int64 before = sqlite3_memory_used();
  name_of(3, 1);
  name_of(8, 1);
  EXPECT_EQ(before, sqlite3_memory_used());
}

}  // namespace
}  // namespace qmv::test
