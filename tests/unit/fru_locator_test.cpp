// FRU device locators, table "fru_locator_sdr".
#include <string>

#include "qmv/sdr.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

class FruLocator : public DatabaseTest {
 protected:
  FruLocator() : DatabaseTest("db_sdrd.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table fru_locator_sdr (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, DevType, "
        "DevTypeModifier, EntityID, EntityInst, OEMField, IDStrLen, DevIdStr, "
        "unique (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber));");
  }

  // A row in which column n of a row that begins at `first` holds first + n, the text with a t in front.
  void insert_row(int first) {
    std::string values;
    for (int i = 0; i < 10; ++i) values += std::to_string(first + i) + ", ";
    sql("insert into fru_locator_sdr values (" + values + "'t" + std::to_string(first + 10) + "');");
  }

  static void expect_row(int first, const fru_locator_sdr_rec& record) {
    EXPECT_EQ(first + 0, record.FruIDSlaveAddr);
    EXPECT_EQ(first + 1, record.DeviceAccessAddr);
    EXPECT_EQ(first + 2, record.LUNBusID);
    EXPECT_EQ(first + 3, record.ChannelNumber);
    EXPECT_EQ(first + 4, record.DevType);
    EXPECT_EQ(first + 5, record.DevTypeModifier);
    EXPECT_EQ(first + 6, record.EntityID);
    EXPECT_EQ(first + 7, record.EntityInst);
    EXPECT_EQ(first + 8, record.OEMField);
    EXPECT_EQ(first + 9, record.IDStrLen);
    EXPECT_EQ("t" + std::to_string(first + 10), field(record.DevIdStr));
  }

  static fru_locator_sdr_rec sample() {
    fru_locator_sdr_rec record{11, 12, 13, 14, 15, 16, 17, 18, 19, 20, {}};
    put(record.DevIdStr, "a'k");
    return record;
  }

  // What SQLite says that the table holds, columns by name.
  Texts stored() {
    return rows_of(
        "select FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, DevType, DevTypeModifier, EntityID, "
        "EntityInst, OEMField, IDStrLen, DevIdStr from fru_locator_sdr;");
  }

  // The row that insert_row(100) makes.
  std::int32_t get(fru_locator_sdr_rec** record) { return db_get_fru_locator_sdr_info(db, 100, 101, 102, 103, record); }
};

TEST_F(FruLocator, GetReadsEveryColumnIntoItsFieldWithoutASuccessTrace) {
  insert_row(200);
  insert_row(100);
  Owned<fru_locator_sdr_rec> record;
  EXPECT_EQ(0, get(record.out()));
  expect_row(100, *record.get());
  EXPECT_EQ(Texts({"select * from fru_locator_sdr where FruIDSlaveAddr=100 and \t\t\t\tDeviceAccessAddr=101 and "
                   "LUNBusID=102 and \t\t\t\tChannelNumber=103;"}),
            statements());
  EXPECT_EQ(Lines({trace("Get FRU_LOCATOR_SDR record from database")}), logged());
}

TEST_F(FruLocator, GetNeedsAllFourPartsOfTheAddress) {
  insert_row(100);
  const std::int32_t addresses[][4] = {{0, 101, 102, 103}, {100, 0, 102, 103}, {100, 101, 0, 103}, {100, 101, 102, 0}};
  for (const auto& [slave, access, lun, channel] : addresses) {
    Owned<fru_locator_sdr_rec> record;
    EXPECT_EQ(1, db_get_fru_locator_sdr_info(db, slave, access, lun, channel, record.out()));
  }
  EXPECT_EQ(Lines(4, trace("Fail to get the FRU_LOCATOR_SDR record")), logged());
}

TEST_F(FruLocator, GetWithoutAMatchReturnsOneAndLeavesThePointer) {
  fru_locator_sdr_rec untouched;
  fru_locator_sdr_rec* record = &untouched;
  EXPECT_EQ(1, get(&record));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({trace("Fail to get the FRU_LOCATOR_SDR record")}), logged());
}

TEST_F(FruLocator, GetWithoutAStatementReturnsOneAndLeavesThePointer) {
  insert_row(100);
  boundary().miss_statement = 1;
  fru_locator_sdr_rec untouched;
  fru_locator_sdr_rec* record = &untouched;
  EXPECT_EQ(1, get(&record));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({trace("Fail to get FRU_LOCATOR_SDR record. SQLite stmt is NULL")}), logged());
}

TEST_F(FruLocator, GetWithoutATableReturnsOneAndLeavesThePointer) {
  sql("drop table fru_locator_sdr;");
  fru_locator_sdr_rec untouched;
  fru_locator_sdr_rec* record = &untouched;
  EXPECT_EQ(1, get(&record));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({no_such_table("fru_locator_sdr")}), logged());
}

TEST_F(FruLocator, GetReturnsOneForAnotherCompileErrorToo) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  Owned<fru_locator_sdr_rec> record;
  EXPECT_EQ(1, get(record.out()));
  EXPECT_EQ(1u, logged().size());
}

TEST_F(FruLocator, GetTracesAnAllocationFailureWithAnEmptyDetailAndLeavesTheStatementOpen) {
  insert_row(100);
  boundary().fail_allocation = 1;
  fru_locator_sdr_rec untouched;
  fru_locator_sdr_rec* record = &untouched;
  EXPECT_EQ(1, get(&record));
  EXPECT_EQ(nullptr, record);
  EXPECT_EQ(Lines({trace("Memory allocation error: ")}), logged());
  expect_left_open(1);
}

TEST_F(FruLocator, GetReadsNullColumnsAsZerosAndAnEmptyText) {
  sql("insert into fru_locator_sdr (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber) values (100, 101, 102, "
      "103);");
  Owned<fru_locator_sdr_rec> record;
  EXPECT_EQ(0, get(record.out()));
  for (const std::int32_t value : {record->DevType, record->DevTypeModifier, record->EntityID, record->EntityInst,
                                   record->OEMField, record->IDStrLen}) {
    EXPECT_EQ(0, value);
  }
  EXPECT_EQ(std::string(256, '\0'), std::string(record->DevIdStr, sizeof(record->DevIdStr)));
  logged();
}

TEST_F(FruLocator, GetCutsTheIdStringAt256BytesWithoutATerminator) {
  insert_row(100);
  for (const std::size_t length : {std::size_t{255}, std::size_t{256}, std::size_t{257}, std::size_t{100000}}) {
    SCOPED_TRACE(length);
    sql("update fru_locator_sdr set DevIdStr = '" + std::string(length, 'x') + "';");
    Owned<fru_locator_sdr_rec> record;
    EXPECT_EQ(0, get(record.out()));
    EXPECT_EQ(std::string(std::min(length, std::size_t{256}), 'x'), field(record->DevIdStr));
    EXPECT_EQ(109, record->IDStrLen);
  }
  logged();
}

TEST_F(FruLocator, SetInsertsEveryFieldUnderItsColumn) {
  const fru_locator_sdr_rec record = sample();
  EXPECT_EQ(0, db_set_fru_locator_sdr_info(db, &record));
  EXPECT_EQ(
      Texts({"insert into fru_locator_sdr (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, \t\t\tChannelNumber, DevType, "
             "DevTypeModifier, EntityID, EntityInst,\t\t\tOEMField, IDStrLen, DevIdStr) values (11, 12, 13, 14, "
             "15, 16, \t\t\t17, 18, 19, 20, 'a''k');"}),
      statements());
  EXPECT_EQ(Texts({"11|12|13|14|15|16|17|18|19|20|a'k"}), stored());
  EXPECT_EQ(Lines({trace("Successfully update the FRU_LOCATOR_SDR record")}), logged());
}

TEST_F(FruLocator, SetOnAnExistingKeyKeepsTheRow) {
  fru_locator_sdr_rec record = sample();
  db_set_fru_locator_sdr_info(db, &record);
  logged();
  put(record.DevIdStr, "it's changed");
  record.DevType = 50;
  EXPECT_EQ(0, db_set_fru_locator_sdr_info(db, &record));
  EXPECT_EQ(Texts({"11|12|13|14|15|16|17|18|19|20|a'k"}), stored());
  EXPECT_EQ(
      "update fru_locator_sdr set FruIDSlaveAddr=11, DeviceAccessAddr=12, \t\t\tLUNBusID=13, ChannelNumber=14, "
      "DevType=50, DevTypeModifier=16, \t\t\tEntityID=17, EntityInst=18, OEMField=19, IDStrLen=20, "
      "\t\t\tDevIdStr='it''s changed' where FruIDSlaveAddr=11 and DeviceAccessAddr=12, \t\t\tLUNBusID=13 and "
      "ChannelNumber=14 ;",
      statements().back());
  EXPECT_EQ(Lines({execution_failed(), trace("FRU_LOCATOR_SDR record is already present with that key"),
                   execution_failed(), trace("Successfully update the FRU_LOCATOR_SDR record")}),
            logged());
}

TEST_F(FruLocator, SetWithoutATableReturnsZeroTracesSuccessAndTriesNoUpdate) {
  sql("drop table fru_locator_sdr;");
  const fru_locator_sdr_rec record = sample();
  EXPECT_EQ(0, db_set_fru_locator_sdr_info(db, &record));
  EXPECT_EQ(1u, statements().size());
  EXPECT_EQ(Lines({execution_failed(), trace("Successfully update the FRU_LOCATOR_SDR record")}), logged());
}

TEST_F(FruLocator, SetReadsAFullIdStringNoFurtherThanItsWidthInBothStatements) {
  struct {
    fru_locator_sdr_rec record = sample();
    char behind[8] = "behind";
  } memory;
  put(memory.record.DevIdStr, std::string(256, 'x'));
  EXPECT_EQ(0, db_set_fru_locator_sdr_info(db, &memory.record));
  EXPECT_EQ(std::string(256, 'x'), value_of("select DevIdStr from fru_locator_sdr;"));
  EXPECT_EQ(0, db_set_fru_locator_sdr_info(db, &memory.record));
  EXPECT_EQ(std::string::npos, statements().back().find("behind"));
  logged();
}

TEST_F(FruLocator, SetAndGetBringARecordBack) {
  const fru_locator_sdr_rec record = sample();
  db_set_fru_locator_sdr_info(db, &record);
  Owned<fru_locator_sdr_rec> back;
  EXPECT_EQ(0, db_get_fru_locator_sdr_info(db, 11, 12, 13, 14, back.out()));
  EXPECT_EQ(0, std::memcmp(&record, back.get(), sizeof(record)));
  logged();
}

}  // namespace
}  // namespace qmv::test
