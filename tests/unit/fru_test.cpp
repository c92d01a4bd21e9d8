// FRU inventory records.
#include "qmv/fru.h"

#include <string>

#include "support/database_test.h"

namespace qmv::test {
namespace {

constexpr char kTable[] =
    "create table fru (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, EntityID, EntityInst, IDStrLen, "
    "DevIdStr, "
    "ChassisSerNumber, ChassisPartNumber, ChassisCustFields, ProdSerNumber, ProdPartNumber, ProdMfrName, BrdSerNumber, "
    "BrdPartNumber, BrdMfrName, unique (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber));";

class Fru : public DatabaseTest {
 protected:
  Fru() : DatabaseTest("db_frud.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql(kTable);
  }

  // A row in which column n of a row that begins at `first` holds first + n, texts with a t in front.
  void insert_row(int first) {
    std::string values;
    for (int i = 0; i < 17; ++i) {
      const std::string number = std::to_string(first + i);
      values += (i == 0 ? "" : ", ") + (i < 7 ? number : "'t" + number + "'");
    }
    sql("insert into fru values (" + values + ");");
  }

  static void expect_row(int first, const fru_rec& record) {
    const auto text = [first](int column) { return "t" + std::to_string(first + column); };
    EXPECT_EQ(first + 0, record.FruIDSlaveAddr);
    EXPECT_EQ(first + 1, record.DeviceAccessAddr);
    EXPECT_EQ(first + 2, record.LUNBusID);
    EXPECT_EQ(first + 3, record.ChannelNumber);
    EXPECT_EQ(first + 4, record.EntityID);
    EXPECT_EQ(first + 5, record.EntityInst);
    EXPECT_EQ(first + 6, record.IDStrLen);
    EXPECT_EQ(text(7), field(record.DevIdStr));
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

  static fru_rec sample() {
    fru_rec record{-1, -2, -3, -4, -5, -6, -7, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}};
    put(record.DevIdStr, "a'h");
    put(record.ChassisSerNumber, "i'");
    put(record.ChassisPartNumber, "j'");
    put(record.ChassisCustFields, "k'");
    put(record.ProdSerNumber, "l'");
    put(record.ProdPartNumber, "m'");
    put(record.ProdMfrName, "n'");
    put(record.BrdSerNumber, "o'");
    put(record.BrdPartNumber, "p'");
    put(record.BrdMfrName, "q'");
    return record;
  }
};

TEST_F(Fru, CountReturnsTheNumberOfRows) {
  insert_row(100);
  insert_row(200);
  std::int32_t count = -1;
  EXPECT_EQ(0, db_get_fru_cnt(db, &count));
  EXPECT_EQ(2, count);
  EXPECT_EQ(Texts({"select count(*) from fru;"}), statements());
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count")}), logged());
}

TEST_F(Fru, CountOfAnEmptyTableIsZeroWithTheSuccessTrace) {
  std::int32_t count = -1;
  EXPECT_EQ(0, db_get_fru_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count")}), logged());
}

TEST_F(Fru, GetByAddressReadsEveryColumnIntoItsField) {
  insert_row(100);
  insert_row(200);
  Owned<fru_rec> record;
  EXPECT_EQ(0, db_get_fru_info(db, 200, 201, 202, 203, record.out()));
  expect_row(200, *record.get());
  EXPECT_EQ(Texts({"select * from fru where FruIDSlaveAddr=200 and \t\t\t\tDeviceAccessAddr=201 and LUNBusID=202 and "
                   "\t\t\t\tChannelNumber=203;"}),
            statements());
  EXPECT_EQ(Lines({trace("Get FRU record from database")}), logged());
}

TEST_F(Fru, GetByAddressWithoutAMatchReturnsOneAndLeavesThePointer) {
  fru_rec untouched;
  fru_rec* record = &untouched;
  EXPECT_EQ(1, db_get_fru_info(db, 1, 2, 3, 4, &record));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({trace("Fail to get the FRU record")}), logged());
}

TEST_F(Fru, GetByAddressWithoutAStatementReturnsOne) {
  boundary().miss_statement = 1;
  Owned<fru_rec> record;
  EXPECT_EQ(1, db_get_fru_info(db, 1, 2, 3, 4, record.out()));
  EXPECT_EQ(Lines({trace("Fail to get FRU record. SQLite stmt is NULL")}), logged());
}

TEST_F(Fru, GetByAddressWithoutATableReturnsOne) {
  sql("drop table fru;");
  Owned<fru_rec> record;
  EXPECT_EQ(1, db_get_fru_info(db, 1, 2, 3, 4, record.out()));
  EXPECT_EQ(Lines({no_such_table("fru")}), logged());
}

TEST_F(Fru, GetByAddressTracesAnAllocationFailureWithAnEmptyDetail) {
  insert_row(100);
  boundary().fail_allocation = 1;
  fru_rec untouched;
  fru_rec* record = &untouched;
  EXPECT_EQ(1, db_get_fru_info(db, 100, 101, 102, 103, &record));
  EXPECT_EQ(nullptr, record);
  EXPECT_EQ(Lines({trace("Memory allocation error: ")}), logged());
  expect_left_open(1);
}

TEST_F(Fru, TextOf300CharactersComesBackAsItsFirst256BytesWithoutATerminator) {
  insert_row(100);
  sql("update fru set ProdMfrName = '" + std::string(300, 'x') + "', BrdSerNumber = NULL;");
  Owned<fru_rec> record;
  EXPECT_EQ(0, db_get_fru_info(db, 100, 101, 102, 103, record.out()));
  EXPECT_EQ(std::string(256, 'x'), field(record->ProdMfrName));
  EXPECT_EQ("", field(record->BrdSerNumber));
  EXPECT_EQ("t115", field(record->BrdPartNumber));
  logged();
}

TEST_F(Fru, GetAllReadsTheRowsInOrder) {
  insert_row(100);
  insert_row(200);
  std::int32_t count = -1;
  Owned<fru_rec> records;
  EXPECT_EQ(0, db_get_all_fru_info(db, &count, records.out()));
  ASSERT_EQ(2, count);
  expect_row(100, records[0]);
  expect_row(200, records[1]);
  EXPECT_EQ(Texts({"select count(*) from fru;", "select * from fru;"}), statements());
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count"), trace("Get all FRU from database"),
                   trace("Successfully got all the FRU")}),
            logged());
}

TEST_F(Fru, GetAllOfAnEmptyTableReturnsNullAndLeavesTheCount) {
  fru_rec untouched;
  fru_rec* records = &untouched;
  std::int32_t count = -1;
  EXPECT_EQ(0, db_get_all_fru_info(db, &count, &records));
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count")}), logged());
}

TEST_F(Fru, GetAllWhoseCountFailsReturnsOne) {
  sql("drop table fru;");
  std::int32_t count = -1;
  Owned<fru_rec> records;
  EXPECT_EQ(1, db_get_all_fru_info(db, &count, records.out()));
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({no_such_table("fru"), trace("Fail to get fru records")}), logged());
}

TEST_F(Fru, SetInsertsEveryFieldUnderItsColumn) {
  const fru_rec record = sample();
  EXPECT_EQ(0, db_set_fru_info(db, &record));
  EXPECT_EQ(
      Texts({"insert into fru (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, \t\t\tChannelNumber, EntityID, EntityInst, "
             "IDStrLen, DevIdStr, ChassisSerNumber,\t\t\tChassisPartNumber, ChassisCustFields, ProdSerNumber, "
             "ProdPartNumber,\t\t\tProdMfrName, BrdSerNumber, BrdPartNumber, BrdMfrName) \t\t\tvalues (-1, -2, -3, -4, "
             "-5, -6, "
             "-7, 'a''h', 'i''', 'j''', 'k''', 'l''', 'm''', \t\t\t'n''', 'o''', 'p''', 'q''');"}),
      statements());
  EXPECT_EQ("-1|-2|-3|-4|-5|-6|-7|a'h|i'|j'|k'|l'|m'|n'|o'|p'|q'", value_of("select * from fru;"));
  EXPECT_EQ(Lines({trace("Successfully update the FRU record")}), logged());
}

TEST_F(Fru, SetOnAnExistingKeyKeepsTheRow) {
  fru_rec record = sample();
  db_set_fru_info(db, &record);
  logged();
  statements();
  put(record.BrdMfrName, "it's changed");
  EXPECT_EQ(0, db_set_fru_info(db, &record));
  EXPECT_EQ("q'", value_of("select BrdMfrName from fru;"));
  EXPECT_EQ(
      "update fru set FruIDSlaveAddr=-1, DeviceAccessAddr=-2, LUNBusID=-3, ChannelNumber=-4, EntityID=-5, "
      "EntityInst=-6, "
      "IDStrLen=-7, DevIdStr='a''h', ChassisSerNumber='i''', ChassisPartNumber='j''', ChassisCustFields='k''', "
      "ProdSerNumber='l''', ProdPartNumber='m''' ,\t\t\tProdMfrName='n''', BrdSerNumber='o''', BrdPartNumber='p''', "
      "BrdMfrName='it''s changed' where FruIDSlaveAddr=-1 and DeviceAccessAddr=-2, \t\t\tLUNBusID=-3 and "
      "ChannelNumber=-4 ;",
      statements().back());
  EXPECT_EQ(Lines({execution_failed(), trace("FRU record is already present with that key"), execution_failed(),
                   trace("Successfully update the FRU record")}),
            logged());
}

TEST_F(Fru, SetWithoutATableReturnsZeroAndTracesSuccess) {
  sql("drop table fru;");
  const fru_rec record = sample();
  EXPECT_EQ(0, db_set_fru_info(db, &record));
  EXPECT_EQ(Lines({execution_failed(), trace("Successfully update the FRU record")}), logged());
}

TEST_F(Fru, SetReadsAFullTextFieldNoFurtherThanItsWidth) {
  fru_rec record = sample();
  put(record.DevIdStr, std::string(256, 'x'));
  EXPECT_EQ(0, db_set_fru_info(db, &record));
  EXPECT_EQ(std::string(256, 'x') + "|i'", value_of("select DevIdStr, ChassisSerNumber from fru;"));
  logged();
}

TEST_F(Fru, GetByEntityFillsTheCallersRecordFromTheFirstMatch) {
  insert_row(100);
  fru_rec record;
  std::memset(&record, 0x55, sizeof(record));
  EXPECT_EQ(0, db_get_fru_by_entity_id(db, &record, 104));
  expect_row(100, record);
  EXPECT_EQ(Texts({"select * from fru where EntityID=104;"}), statements());
  EXPECT_EQ(Lines({trace("Get FRU from database")}), logged());
}

TEST_F(Fru, GetByEntityClearsTheRestOfEachTextField) {
  insert_row(100);
  sql("update fru set BrdMfrName = NULL;");
  fru_rec record;
  std::memset(&record, 0x55, sizeof(record));
  db_get_fru_by_entity_id(db, &record, 104);
  EXPECT_EQ(std::string("t107") + std::string(252, '\0'), std::string(record.DevIdStr, sizeof(record.DevIdStr)));
  EXPECT_EQ(std::string(256, '\0'), std::string(record.BrdMfrName, sizeof(record.BrdMfrName)));
  logged();
}

TEST_F(Fru, GetByEntityWithoutAMatchReturnsZeroAndLeavesTheRecord) {
  fru_rec record;
  std::memset(&record, 0x55, sizeof(record));
  const fru_rec before = record;
  EXPECT_EQ(0, db_get_fru_by_entity_id(db, &record, 104));
  EXPECT_EQ(0, std::memcmp(&before, &record, sizeof(record)));
  EXPECT_EQ(Lines({trace("Get FRU from database")}), logged());
}

TEST_F(Fru, GetByEntityWithoutARecordReturnsOneAndAsksNothing) {
  EXPECT_EQ(1, db_get_fru_by_entity_id(db, nullptr, 104));
  EXPECT_EQ(Texts(), statements());
}

TEST_F(Fru, GetByEntityReturnsOneWhenItsTextCannotBeFormatted) {
  boundary().fail_text = 1;
  fru_rec record;
  EXPECT_EQ(1, db_get_fru_by_entity_id(db, &record, 104));
  EXPECT_EQ(Texts(), statements());
}

TEST_F(Fru, GetByEntityWithoutATableReturnsOne) {
  sql("drop table fru;");
  fru_rec record;
  EXPECT_EQ(1, db_get_fru_by_entity_id(db, &record, 104));
  EXPECT_EQ(Lines({no_such_table("fru")}), logged());
}

TEST_F(Fru, GetByEntityWithoutAStatementReturnsOne) {
  boundary().miss_statement = 1;
  fru_rec record;
  EXPECT_EQ(1, db_get_fru_by_entity_id(db, &record, 104));
  EXPECT_EQ(Lines(), logged());
}

}  // namespace
}  // namespace qmv::test
