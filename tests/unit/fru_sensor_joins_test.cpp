// Physical assets: the FRU rows joined with the compact or the full sensors of their entity.
#include <cstring>
#include <string>
#include <utility>

#include "qmv/instances.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

// One sensor table, the functions that join it, and their texts.
struct Sensors {
  const char* table;
  std::int32_t (*count)(sqlite3*, std::int32_t*);
  std::int32_t (*get_all)(sqlite3*, std::int32_t*, fru_sdr_rec**);
  std::int32_t (*get_one)(sqlite3*, std::int32_t, std::int32_t, fru_sdr_rec*);
  const char* count_statement;
  const char* join_statement;
  const char* get_one_statement;  // for entity 104, instance 105
  const char* no_row;
  int get_one_length;  // the ID string length of FRU 106 or of sensor 50
};

void PrintTo(const Sensors& sensors, std::ostream* out) {
  *out << sensors.table;
}

constexpr Sensors kCompact{
    "compact_sdr",
    db_get_fru_compact_sdr_cnt,
    db_get_all_fru_compact_sdr,
    db_get_fru_compact_sdr,
    "select count(*) from fru \t    \t\tJOIN compact_sdr ON fru.EntityID = compact_sdr.EntityID and \t    "
    "\t\tfru.EntityInst = compact_sdr.EntityInstance;",
    "select fru.FruIDSlaveAddr, fru.DeviceAccessAddr, \t    \t\tfru.LUNBusID, fru.ChannelNumber, fru.EntityID, "
    "fru.EntityInst, \t    \t\tfru.IdStrLen, IdStr from fru \t    \t\tJOIN compact_sdr ON fru.EntityID = "
    "compact_sdr.EntityID and \t    \t\tfru.EntityInst = compact_sdr.EntityInstance;",
    "select FruIDSlaveAddr, DeviceAccessAddr, \t\t\tLUNBusID, ChannelNumber, fru.EntityID, EntityInstance, "
    "ChassisSerNumber,\t\t\tChassisPartNumber, ChassisCustFields, ProdSerNumber, \t\t\tProdPartNumber, ProdMfrName, "
    "BrdSerNumber, BrdPartNumber, \t\t\tBrdMfrName, compact_sdr.IdStrLen, IdStr from fru, compact_sdr where "
    "\t\t\tfru.EntityID==compact_sdr.EntityID and fru.EntityInst==compact_sdr.EntityInstance \t\t\tand fru.EntityID == "
    "104 and EntityInst == 105;",
    "No Record found",
    50,
};

constexpr Sensors kFull{
    "full_sdr",
    db_get_fru_full_sdr_cnt,
    db_get_all_fru_full_sdr,
    db_get_fru_full_sdr,
    "select count(*) from fru \t\t\tJOIN full_sdr ON fru.EntityID = full_sdr.EntityID and \t\t\tfru.EntityInst = "
    "full_sdr.EntityInstance;",
    "select fru.FruIDSlaveAddr, fru.DeviceAccessAddr, \t    \t\tfru.LUNBusID, fru.ChannelNumber, fru.EntityID, "
    "fru.EntityInst, \t    \t\tfru.IdStrLen, IdStr from fru \t    \t\tJOIN full_sdr ON fru.EntityID = "
    "full_sdr.EntityID and \t    \t\tfru.EntityInst = full_sdr.EntityInstance;",
    "select FruIDSlaveAddr, DeviceAccessAddr, \t\t\tLUNBusID, ChannelNumber, fru.EntityID, EntityInstance, "
    "ChassisSerNumber,\t\t\tChassisPartNumber, ChassisCustFields, ProdSerNumber, \t\t\tProdPartNumber, ProdMfrName, "
    "BrdSerNumber, BrdPartNumber, \t\t\tBrdMfrName, fru.IdStrLen, IdStr from fru, full_sdr where "
    "\t\t\tfru.EntityID==full_sdr.EntityID and fru.EntityInst==full_sdr.EntityInstance \t\t\tand fru.EntityID == 104 "
    "and EntityInst == 105;",
    "No Records Found",
    106,
};

constexpr char kInventoryColumns[] =
    "ChassisSerNumber, ChassisPartNumber, ChassisCustFields, ProdSerNumber, ProdPartNumber, ProdMfrName, BrdSerNumber, "
    "BrdPartNumber, BrdMfrName";

class FruSensorJoins : public DatabaseTest, public testing::WithParamInterface<Sensors> {
 protected:
  FruSensorJoins() : DatabaseTest("db_dynamic_instance.c"), table(GetParam().table) {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table fru (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, EntityID, EntityInst, IDStrLen, "
        "DevIdStr, " +
        std::string(kInventoryColumns) + ");");
    sql("create table " + table +
        " (SensorNum, EntityID, EntityInstance, IdStrLen, IdStr, IsFRUAvailable, FRUIDStrLen);");
  }

  // Adds the columns of the embedded FRU, under the names with which sensors are stored.
  void give_sensors_the_fru_columns() {
    sql("drop table " + table + ";");
    sql("create table " + table +
        " (SensorNum, EntityID, EntityInstance, IdStrLen, IdStr, IsFRUAvailable, FRUIDStrLen, FruIDSlaveAddr, "
        "DeviceAccessAddr, LUNBusID, ChannelNumber, DevIdStr, " +
        kInventoryColumns + ");");
  }

  // A FRU in which column n of a row that begins at `first` holds first + n, texts with a t in front.
  void insert_fru(int first) {
    std::string values;
    for (int i = 0; i < 17; ++i) {
      const std::string number = std::to_string(first + i);
      values += (i == 0 ? "" : ", ") + (i < 7 ? number : "'t" + number + "'");
    }
    sql("insert into fru values (" + values + ");");
  }

  // A sensor of that FRU's entity whose ID string is an s and its length.
  std::string sensor_of(int first, int length) const {
    return "insert into " + table +
           " (SensorNum, EntityID, EntityInstance, IdStrLen, IdStr, IsFRUAvailable) values (7, " +
           std::to_string(first + 4) + ", " + std::to_string(first + 5) + ", " + std::to_string(length) + ", 's" +
           std::to_string(length) + "', 8);";
  }
  void insert_sensor(int first, int length) { sql(sensor_of(first, length)); }

  static void expect_address(int first, const fru_sdr_rec& record) {
    EXPECT_EQ(first + 0, record.FruIDSlaveAddr);
    EXPECT_EQ(first + 1, record.DeviceAccessAddr);
    EXPECT_EQ(first + 2, record.LUNBusID);
    EXPECT_EQ(first + 3, record.ChannelNumber);
    EXPECT_EQ(first + 4, record.EntityID);
    EXPECT_EQ(first + 5, record.EntityInst);
  }

  static void expect_inventory(int first, const fru_sdr_rec& record) {
    const auto text = [first](int column) { return "t" + std::to_string(first + column); };
    EXPECT_EQ(text(8), field(record.ChassisSerNumber));
    EXPECT_EQ(text(9), field(record.ChassisPartNumber));
    EXPECT_EQ(text(10), field(record.ChassisCustFields));
    EXPECT_EQ(text(11), field(record.ProdSerNumber));
    EXPECT_EQ(text(12), field(record.ProdPartNumber));
    EXPECT_EQ(text(13), field(record.ProdMfrName));
    EXPECT_EQ(text(14), field(record.BrdSerNumber));
    EXPECT_EQ(text(15), field(record.BrdPartNumber));
    EXPECT_EQ(text(16), field(record.BrdMfrName));
  }

  template <class Member>
  static bool holds_only(int byte, const Member& member) {
    return bytes(member) == std::string(sizeof(member), static_cast<char>(byte));
  }

  template <class Member>
  static std::string bytes(const Member& member) {
    return {reinterpret_cast<const char*>(&member), sizeof(member)};
  }

  // The fields that no join fills.
  static void expect_unfilled(int byte, const fru_sdr_rec& record) {
    EXPECT_TRUE(holds_only(byte, record.IDStrLen));
    EXPECT_TRUE(holds_only(byte, record.DevIdStr));
    EXPECT_TRUE(holds_only(byte, record.IsFRUAvailable));
    EXPECT_TRUE(holds_only(byte, record.SensorNum));
  }

  // The steps that a call takes, counted by a fault that is still to come.
  template <class Call>
  static int steps_of(Call call) {
    boundary().steps = {{1000, SQLITE_OK}};
    call();
    return 1000 - std::exchange(boundary().steps, {}).begin()->first;
  }

  std::int32_t get_all() { return GetParam().get_all(db, &count, records.out()); }
  std::int32_t get_one() { return GetParam().get_one(db, 104, 105, &record); }

  // What is logged on the way.
  LogLine counted(int rows) const {
    return trace("Successfully returns the fru-" + table + " count " + std::to_string(rows));
  }
  LogLine began() const { return trace("Get all Physical asset records from database"); }
  LogLine joined(int first) const {
    return trace("EntityID :: " + std::to_string(first + 4) + "\n Entity Instance::" + std::to_string(first + 5) +
                 "\n");
  }
  LogLine inventory() const { return trace("Get all Chassis, Board, Product info from FRU table"); }
  LogLine ended() const { return trace("Successfully got all the Physical Assert from " + table); }

  static std::string inventory_statement(int first) {
    const auto number = [first](int column) { return std::to_string(first + column); };
    return "select ChassisSerNumber, ChassisPartNumber, \t\t\t    \t\tChassisCustFields, ProdSerNumber, "
           "ProdPartNumber, "
           "ProdMfrName, \t\t\t    \t\tBrdSerNumber, BrdPartNumber, BrdMfrName from 'fru' where \t\t\t    "
           "\t\tfru.FruIDSlaveAddr==" +
           number(0) + " and fru.DeviceAccessAddr==" + number(1) + " and \t\t\t    \t\tfru.LUNBusID==" + number(2) +
           " and fru.ChannelNumber==" + number(3) + ";";
  }

  const std::string table;
  std::int32_t count = -1;
  Owned<fru_sdr_rec> records;
  fru_sdr_rec record{};
};

INSTANTIATE_TEST_SUITE_P(EachTable, FruSensorJoins, testing::Values(kCompact, kFull),
                         [](const auto& each) { return std::string(each.param.table); });

TEST_P(FruSensorJoins, CountReturnsTheNumberOfPairsOfOneEntityAndInstance) {
  insert_fru(100);
  insert_fru(200);
  insert_sensor(100, 50);
  insert_sensor(100, 51);
  insert_sensor(300, 52);
  sql("insert into " + table + " (EntityID, EntityInstance) values (204, 999), (999, 205);");
  EXPECT_EQ(0, GetParam().count(db, &count));
  EXPECT_EQ(2, count);
  EXPECT_EQ(Texts({GetParam().count_statement}), statements());
  EXPECT_EQ(std::vector<bool>({false}), boundary().tails);
  EXPECT_EQ(Lines({counted(2)}), logged());
}

TEST_P(FruSensorJoins, CountWithoutATableReturnsOneWithTheCountCleared) {
  sql("drop table fru;");
  EXPECT_EQ(1, GetParam().count(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("fru")}), logged());
}

TEST_P(FruSensorJoins, CountWithoutAStatementIsZero) {
  boundary().miss_statement = 1;
  EXPECT_EQ(0, GetParam().count(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_P(FruSensorJoins, CountWithoutARowReturnsTheStepsCodeWithTheWordsOfItsTable) {
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(SQLITE_BUSY, GetParam().count(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace(GetParam().no_row)}), logged());
  expect_left_open(1);
}

TEST_P(FruSensorJoins, CountReturnsTheCodeOfFinalize) {
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, GetParam().count(db, &count));
  EXPECT_EQ(Lines({counted(0)}), logged());
}

TEST_P(FruSensorJoins, GetAllReadsThePairAndThenTheInventoryOfItsFru) {
  give_sensors_the_fru_columns();
  insert_fru(100);
  insert_sensor(100, 50);
  EXPECT_EQ(0, get_all());
  ASSERT_EQ(1, count);
  expect_address(100, records[0]);
  EXPECT_EQ(106, records[0].IdStrLen) << "the FRU's, not the sensor's";
  EXPECT_EQ("s50", field(records[0].IdStr));
  expect_inventory(100, records[0]);
  expect_unfilled(0, records[0]);
  EXPECT_EQ(Texts({GetParam().count_statement, GetParam().join_statement, inventory_statement(100)}), statements());
  EXPECT_EQ(Lines({counted(1), began(), joined(100), inventory(), ended()}), logged());
}

TEST_P(FruSensorJoins, GetAllReadsEachFrusOwnInventory) {
  for (const int first : {100, 200}) {
    insert_fru(first);
    insert_sensor(first, first / 2);
  }
  EXPECT_EQ(0, get_all());
  ASSERT_EQ(2, count);
  for (const std::size_t i : {0u, 1u}) {
    const int first = records[i].FruIDSlaveAddr;
    expect_inventory(first, records[i]);
    EXPECT_EQ("s" + std::to_string(first / 2), field(records[i].IdStr));
  }
  EXPECT_NE(records[0].FruIDSlaveAddr, records[1].FruIDSlaveAddr);
  EXPECT_EQ(7u, logged().size());
}

TEST_P(FruSensorJoins, FruThatMatchesThreeSensorsGivesThreeRecordsWithItsInventoryAndEachSensorsName) {
  insert_fru(100);
  for (const int length : {50, 51, 52}) insert_sensor(100, length);
  EXPECT_EQ(0, get_all());
  ASSERT_EQ(3, count);
  std::set<std::string> names;
  for (std::size_t i = 0; i < 3; ++i) {
    expect_address(100, records[i]);
    expect_inventory(100, records[i]);
    names.insert(field(records[i].IdStr));
  }
  EXPECT_EQ(std::set<std::string>({"s50", "s51", "s52"}), names);
  EXPECT_EQ(1, boundary().allocations);
  EXPECT_EQ(Lines({counted(3), began(), joined(100), inventory(), joined(100), inventory(), joined(100), inventory(),
                   ended()}),
            logged());
}

TEST_P(FruSensorJoins, GetAllWithoutAPairReturnsNullAndLeavesTheCount) {
  insert_fru(100);
  insert_sensor(200, 50);
  *records.out() = static_cast<fru_sdr_rec*>(std::malloc(1));
  fru_sdr_rec* const before = records.get();
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({counted(0)}), logged());
  std::free(before);
}

TEST_P(FruSensorJoins, GetAllReturnsZeroWhenTheCountCannotBeTaken) {
  sql("drop table " + table + ";");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({no_such_table(table)}), logged());
}

TEST_P(FruSensorJoins, GetAllReturnsOneWhenTheCountFailsWithRows) {
  insert_fru(100);
  insert_sensor(100, 50);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({counted(1), trace("Fail to get physical asset records from " + table)}), logged());
}

TEST_P(FruSensorJoins, GetAllReturnsOneWhenTheCountIsNegative) {
  const auto minus_one = [](sqlite3_context* context) { sqlite3_result_int(context, -1); };
  const auto no_step = [](sqlite3_context*, int, sqlite3_value**) {};
  sqlite3_create_function(db, "count", 0, SQLITE_UTF8, nullptr, nullptr, no_step, minus_one);
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({counted(-1), trace("Fail to get physical asset records from " + table)}), logged());
}

TEST_P(FruSensorJoins, GetAllReturnsExactlyTheCountedRecordsWhenPairsAppear) {
  insert_fru(100);
  insert_sensor(100, 50);
  insert_sensor(100, 51);
  sql_before("select fru.", sensor_of(100, 52) + sensor_of(100, 53));
  EXPECT_EQ(1 + 5 + 2, steps_of([this] { EXPECT_EQ(0, get_all()); }))
      << "the count's, those of the join up to its end, and the inventories'";
  EXPECT_EQ(2, count);
  expect_inventory(100, records[1]);
  EXPECT_EQ(Lines({counted(2), began(), joined(100), inventory(), joined(100), inventory(), ended()}), logged());
}

TEST_P(FruSensorJoins, GetAllLeavesZeroedRecordsForPairsThatVanish) {
  insert_fru(100);
  insert_sensor(100, 50);
  insert_sensor(100, 51);
  sql_before("select fru.", "delete from " + table + " where IdStrLen = 51;");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(2, count);
  EXPECT_EQ("s50", field(records[0].IdStr));
  EXPECT_TRUE(holds_only(0, records[1]));
  logged();
}

TEST_P(FruSensorJoins, GetAllWhoseJoinDoesNotCompileReturnsOneWithTheCountWritten) {
  insert_fru(100);
  insert_sensor(100, 50);
  sql("alter table " + table + " rename column IdStr to Name;");
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(1, count);
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(Lines({counted(1), error("SQL Compilation error: no such column: IdStr")}), logged());
}

TEST_P(FruSensorJoins, GetAllWhoseJoinCannotBeFormattedReturnsOne) {
  insert_fru(100);
  insert_sensor(100, 50);
  boundary().fail_text = 2;
  EXPECT_EQ(1, get_all());
  EXPECT_EQ("(null)", statements().back());
  EXPECT_EQ(2u, logged().size());
}

TEST_P(FruSensorJoins, GetAllWithoutMemoryReturnsOneAndLeavesTheJoinOpen) {
  insert_fru(100);
  insert_sensor(100, 50);
  boundary().fail_allocation = 1;
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(1, count);
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(Lines({counted(1), trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_P(FruSensorJoins, GetAllWithoutAStatementReturnsZeroedRecords) {
  insert_fru(100);
  insert_sensor(100, 50);
  boundary().miss_statement = 2;
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(1, count);
  ASSERT_NE(nullptr, records.get());
  EXPECT_TRUE(holds_only(0, records[0]));
  EXPECT_EQ(Lines({counted(1)}), logged());
}

TEST_P(FruSensorJoins, GetAllReturnsTheCodeOfTheJoinsFinalizeAndNoOther) {
  insert_fru(100);
  insert_sensor(100, 50);
  boundary().finalizes = {{2, SQLITE_IOERR}};  // the inventory's
  EXPECT_EQ(0, get_all());
  std::free(records.get());
  boundary().finalizes = {{3, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, get_all());
  EXPECT_EQ(ended(), logged().back());
}

TEST_P(FruSensorJoins, InventoryWithoutARowStaysZero) {
  insert_fru(100);
  insert_sensor(100, 50);
  sql("update fru set FruIDSlaveAddr = NULL;");  // reads as 0, which no row has
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(0, records[0].FruIDSlaveAddr);
  EXPECT_EQ("s50", field(records[0].IdStr));
  EXPECT_EQ("", field(records[0].ChassisSerNumber));
  EXPECT_EQ("", field(records[0].BrdMfrName));
  EXPECT_EQ(Lines({counted(1), began(), joined(100), inventory(), ended()}), logged());
}

TEST_P(FruSensorJoins, InventoryWithoutAStatementIsPassedOver) {
  insert_fru(100);
  insert_sensor(100, 50);
  insert_sensor(100, 51);
  boundary().miss_statement = 3;
  EXPECT_EQ(0, get_all());
  EXPECT_EQ("", field(records[0].BrdMfrName));
  EXPECT_EQ("t116", field(records[1].BrdMfrName));
  EXPECT_EQ(Lines({counted(2), began(), joined(100), joined(100), inventory(), ended()}), logged());
}

TEST_P(FruSensorJoins, GetAllStopsWhenTheInventoryDoesNotCompile) {
  insert_fru(100);
  insert_sensor(100, 50);
  insert_sensor(100, 51);
  insert_sensor(100, 52);
  boundary().prepares = {{4, SQLITE_INTERNAL}};
  EXPECT_EQ(SQLITE_INTERNAL, get_all());
  EXPECT_EQ(3, count);
  expect_inventory(100, records[0]);
  expect_address(100, records[1]);
  EXPECT_EQ("", field(records[1].ChassisSerNumber));
  EXPECT_TRUE(holds_only(0, records[2]));
  const Lines lines = logged();
  ASSERT_EQ(6u, lines.size());
  EXPECT_EQ(Lines({counted(3), began(), joined(100), inventory(), joined(100)}), Lines(lines.begin(), lines.end() - 1));
  EXPECT_EQ(130, lines.back().level);
  EXPECT_EQ(0u, lines.back().text.find("SQL Compilation error: "));
  expect_left_allocated(1);
  EXPECT_EQ(inventory_statement(100), static_cast<const char*>(*boundary().texts_alive.begin()));
  expect_left_open(1);
}

TEST_P(FruSensorJoins, InventoryThatSqliteRejectsIsAnsweredWithItsCode) {
  insert_fru(100);
  insert_sensor(100, 50);
  sql("alter table fru rename column BrdMfrName to Maker;");
  EXPECT_EQ(SQLITE_ERROR, get_all());
  EXPECT_EQ(Lines({counted(1), began(), joined(100), error("SQL Compilation error: no such column: BrdMfrName")}),
            logged());
  expect_left_allocated(1);
  expect_left_open(1);
}

TEST_P(FruSensorJoins, InventoryThatCannotBeFormattedIsAnsweredWithSqlitesMisuse) {
  insert_fru(100);
  insert_sensor(100, 50);
  boundary().fail_text = 3;
  EXPECT_EQ(SQLITE_MISUSE, get_all());
  EXPECT_EQ("(null)", statements().back());
  EXPECT_EQ(4u, logged().size());
  expect_left_open(1);
}

TEST_P(FruSensorJoins, TextsAroundTheirFieldsWidthAreCutThereAndNotBefore) {
  insert_fru(100);
  insert_sensor(100, 50);
  for (const std::size_t length : {0u, 1u, 255u, 256u, 257u}) {
    SCOPED_TRACE(length);
    const std::string text(length, 'x');
    const std::string cut = text.substr(0, 256);
    sql("update fru set ProdMfrName = '" + text + "', BrdMfrName = '" + text + "'; update " + table + " set IdStr = '" +
        text + "';");
    Owned<fru_sdr_rec> all;
    EXPECT_EQ(0, GetParam().get_all(db, &count, all.out()));
    EXPECT_EQ(0, get_one());
    for (const fru_sdr_rec* one : {all.get(), &record}) {
      EXPECT_EQ(cut, field(one->ProdMfrName));
      EXPECT_EQ("t114", field(one->BrdSerNumber));
      EXPECT_EQ(cut, field(one->BrdMfrName));
      EXPECT_EQ(cut, field(one->IdStr));
    }
    EXPECT_EQ(106, all->IdStrLen);
    EXPECT_EQ(0, all->IsFRUAvailable);
  }
  logged();
}

TEST_P(FruSensorJoins, NullColumnsReadAsZeroAndEmpty) {
  insert_fru(100);
  insert_sensor(100, 50);
  sql("update fru set IDStrLen = NULL, ChassisSerNumber = NULL; update " + table +
      " set IdStr = NULL, IdStrLen = NULL;");
  EXPECT_EQ(0, get_all());
  std::memset(&record, 0x55, sizeof(record));
  EXPECT_EQ(0, get_one());
  for (const fru_sdr_rec* one : {records.get(), &record}) {
    EXPECT_EQ(0, one->IdStrLen);
    EXPECT_TRUE(holds_only(0, one->IdStr));
    EXPECT_TRUE(holds_only(0, one->ChassisSerNumber));
  }
  logged();
}

TEST_P(FruSensorJoins, GetOneFillsTheCallersRecord) {
  insert_fru(100);
  insert_fru(200);
  insert_sensor(200, 60);
  insert_sensor(100, 50);
  std::memset(&record, 0x55, sizeof(record));
  EXPECT_EQ(0, get_one());
  expect_address(100, record);
  expect_inventory(100, record);
  EXPECT_EQ("s50" + std::string(253, '\0'), bytes(record.IdStr));
  EXPECT_EQ("t116" + std::string(252, '\0'), bytes(record.BrdMfrName));
  expect_unfilled(0x55, record);
  EXPECT_EQ(0, boundary().allocations);
  EXPECT_EQ(Texts({GetParam().get_one_statement}), statements());
  EXPECT_EQ(Lines({trace("Get Physical asset record from database"), trace("Successfully got the Physical Assert")}),
            logged());
}

TEST_P(FruSensorJoins, GetOneTakesTheLengthFromTheSensorOrFromTheFru) {
  insert_fru(100);
  insert_sensor(100, 50);
  EXPECT_EQ(0, get_one());
  EXPECT_EQ(GetParam().get_one_length, record.IdStrLen);
  logged();
}

TEST_P(FruSensorJoins, GetOneOfTwoMatchingSensorsReturnsTheFirstRowOnly) {
  insert_fru(100);
  insert_sensor(100, 50);
  insert_sensor(100, 51);
  const std::string first = value_of("select IdStr from fru, " + table + " where fru.EntityID == 104;");
  EXPECT_EQ(0, get_one());
  EXPECT_EQ(first, field(record.IdStr));
  EXPECT_EQ(2u, logged().size());
}

TEST_P(FruSensorJoins, GetOneWithoutAMatchReturnsOneAndLeavesTheRecord) {
  insert_fru(100);
  insert_sensor(100, 50);
  std::memset(&record, 0x55, sizeof(record));
  EXPECT_EQ(1, GetParam().get_one(db, 104, 106, &record));
  EXPECT_EQ(1, GetParam().get_one(db, -2147483647 - 1, 105, &record));
  EXPECT_TRUE(holds_only(0x55, record));
  const LogLine tried = trace("Get Physical asset record from database");
  const LogLine failed = trace("Fail to get physical asset records");
  EXPECT_EQ(Lines({tried, failed, tried, failed}), logged());
}

TEST_P(FruSensorJoins, GetOneWithoutAStatementReturnsOne) {
  boundary().miss_statement = 1;
  EXPECT_EQ(1, get_one());
  EXPECT_EQ(Lines({trace("Fail to get physical asset records")}), logged());
}

TEST_P(FruSensorJoins, GetOneIgnoresTheCodeOfFinalize) {
  insert_fru(100);
  insert_sensor(100, 50);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(0, get_one());
  logged();
}

TEST_P(FruSensorJoins, GetOneIsAmbiguousWhereSensorsHaveTheFruColumns) {
  give_sensors_the_fru_columns();
  insert_fru(100);
  insert_sensor(100, 50);
  std::memset(&record, 0x55, sizeof(record));
  EXPECT_EQ(SQLITE_ERROR, get_one());
  EXPECT_TRUE(holds_only(0x55, record));
  EXPECT_EQ(Texts({GetParam().get_one_statement}), statements());
  EXPECT_EQ(Lines({error("SQL Compilation error: ambiguous column name: FruIDSlaveAddr")}), logged());
}

TEST_P(FruSensorJoins, GetOneThatDoesNotCompileReturnsSqlitesOwnCode) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  EXPECT_EQ(SQLITE_INTERNAL, get_one());
  boundary().fail_text = 1;
  EXPECT_EQ(SQLITE_MISUSE, get_one());
  EXPECT_EQ("(null)", statements().back());
  const Lines lines = logged();
  ASSERT_EQ(2u, lines.size());
  for (const LogLine& line : lines) EXPECT_EQ(0u, line.text.find("SQL Compilation error: "));
}

}  // namespace
}  // namespace qmv::test
