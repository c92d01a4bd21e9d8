// The shapes that the accessors share, each path proved once, on the FRU table.
#include <string>

#include "qmv/fru.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

class Shapes : public DatabaseTest {
 protected:
  Shapes() : DatabaseTest("db_frud.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table fru (a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q);");
  }

  void insert_rows(int count) {
    for (int i = 1; i <= count; ++i) sql("insert into fru (a) values (" + std::to_string(i) + ");");
  }

  std::int32_t get_all() { return db_get_all_fru_info(db, &count, records.out()); }

  std::int32_t count = -1;
  Owned<fru_rec> records;
};

TEST_F(Shapes, CountTakesNoTailAndOtherStatementsDo) {
  insert_rows(1);
  get_all();
  EXPECT_EQ(std::vector<bool>({false, true}), boundary().tails);
  logged();
}

TEST_F(Shapes, CountWithoutAStatementIsZero) {
  boundary().miss_statement = 1;
  EXPECT_EQ(0, db_get_fru_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_F(Shapes, CountThatDoesNotCompileReturnsOneWithTheCountCleared) {
  sql("drop table fru;");
  EXPECT_EQ(1, db_get_fru_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("fru")}), logged());
}

TEST_F(Shapes, CountWithoutARowLeavesTheStatementOpen) {
  boundary().steps = {{1, SQLITE_DONE}};
  EXPECT_EQ(SQLITE_DONE, db_get_fru_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
  expect_left_open(1);
}

TEST_F(Shapes, CountReturnsTheCodeOfFinalize) {
  insert_rows(2);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, db_get_fru_cnt(db, &count));
  EXPECT_EQ(2, count);
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count")}), logged());
}

TEST_F(Shapes, CountFinalisesBeforeItSpeaks) {
  boundary().while_logging = [] { EXPECT_EQ(0, boundary().statements_alive); };
  EXPECT_EQ(0, db_get_fru_cnt(db, &count));
  EXPECT_EQ(1u, logged().size());
}

TEST_F(Shapes, CountWhoseTextCannotBeFormattedDoesNotCompile) {
  boundary().fail_text = 1;
  EXPECT_EQ(1, db_get_fru_cnt(db, &count));
  EXPECT_EQ(Texts({"(null)"}), statements());
  EXPECT_EQ(1u, logged().size());
}

TEST_F(Shapes, GetAllFailsWhenTheCountFailsInAnyWay) {
  insert_rows(1);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count"), trace("Fail to get fru records")}), logged());
}

TEST_F(Shapes, GetAllClearsThePointerBeforeItCounts) {
  fru_rec old{};
  fru_rec* pointer = &old;
  fru_rec* seen = &old;
  boundary().while_logging = [&] { seen = pointer; };
  EXPECT_EQ(0, db_get_all_fru_info(db, &count, &pointer));
  EXPECT_EQ(nullptr, seen) << "when the count is logged";
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count")}), logged());
}

TEST_F(Shapes, GetAllDropsRowsThatAppearAfterTheCount) {
  insert_rows(2);
  sql_before("select * from", "insert into fru (a) values (3);");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(2, count);
  EXPECT_EQ(2, records[1].FruIDSlaveAddr);
  logged();
}

TEST_F(Shapes, GetAllLeavesZeroedRecordsForRowsThatVanishAfterTheCount) {
  insert_rows(2);
  sql_before("select * from", "delete from fru where a = 2;");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(2, count);
  EXPECT_EQ(1, records[0].FruIDSlaveAddr);
  EXPECT_EQ(std::string(sizeof(fru_rec), '\0'), std::string(reinterpret_cast<char*>(&records[1]), sizeof(fru_rec)));
  logged();
}

TEST_F(Shapes, GetAllThatDoesNotCompileReturnsOneWithTheCountWritten) {
  insert_rows(2);
  sql_before("select * from", "drop table fru;");
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(2, count);
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count"), no_such_table("fru")}), logged());
}

TEST_F(Shapes, GetAllWithoutAStatementReturnsZeroedRecords) {
  insert_rows(2);
  boundary().miss_statement = 2;
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(2, count);
  ASSERT_NE(nullptr, records.get());
  EXPECT_EQ(0, records[0].FruIDSlaveAddr);
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count")}), logged());
}

TEST_F(Shapes, GetAllMakesOneAllocationWhateverTheNumberOfRows) {
  insert_rows(50);
  get_all();
  EXPECT_EQ(1, boundary().allocations);
  EXPECT_EQ(50 * sizeof(fru_rec), size_of(records.get()));
  logged();
}

TEST_F(Shapes, GetAllReturnsTheCodeOfFinalize) {
  insert_rows(1);
  boundary().finalizes = {{2, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, get_all());
  EXPECT_EQ(1, count);
  logged();
}

TEST_F(Shapes, GetAllEndsAtTheFirstStepThatIsNoRow) {
  insert_rows(3);
  boundary().steps = {{3, SQLITE_BUSY}};  // the first is the count's
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(1, records[0].FruIDSlaveAddr);
  EXPECT_EQ(0, records[1].FruIDSlaveAddr);
  logged();
}

TEST_F(Shapes, AllocationFailureLeavesTheStatementOpen) {
  insert_rows(1);
  boundary().fail_allocation = 1;
  EXPECT_EQ(1, get_all());
  EXPECT_EQ(1, count);
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(Lines({trace("Successfully returns the FRU count"), trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_F(Shapes, GetOneAllocatesOneRecord) {
  sql("drop table fru; create table fru (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, e, f, g, h, i, j, "
      "k, "
      "l, m, n, o, p, q); insert into fru (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber) values (1, 2, 3, "
      "4);");
  EXPECT_EQ(0, db_get_fru_info(db, 1, 2, 3, 4, records.out()));
  EXPECT_EQ(1, boundary().allocations);
  EXPECT_EQ(sizeof(fru_rec), size_of(records.get()));
  logged();
}

TEST_F(Shapes, GetOneWhoseTextCannotBeFormattedDoesNotCompile) {
  boundary().fail_text = 1;
  EXPECT_EQ(1, db_get_fru_info(db, 1, 2, 3, 4, records.out()));
  EXPECT_EQ(Texts({"(null)"}), statements());
  EXPECT_EQ(1u, logged().size());
}

TEST_F(Shapes, TextsAroundTheirFieldsWidthAreCutThereAndNotBefore) {
  for (const std::size_t length :
       {std::size_t{0}, std::size_t{1}, std::size_t{255}, std::size_t{256}, std::size_t{257}}) {
    SCOPED_TRACE(length);
    sql("delete from fru; insert into fru (a, h, i) values (1, '" + std::string(length, 'x') + "', 'next');");
    Owned<fru_rec> record;
    std::int32_t rows = 0;
    EXPECT_EQ(0, db_get_all_fru_info(db, &rows, record.out()));
    EXPECT_EQ(std::string(std::min(length, std::size_t{256}), 'x'), field(record->DevIdStr));
    EXPECT_EQ("next", field(record->ChassisSerNumber));
  }
  logged();
}

TEST_F(Shapes, LogLinesBearALineOfTheAccessorsFile) {
  db_get_fru_cnt(db, &count);
  const Lines first = logged();
  get_all();
  const Lines second = logged();
  ASSERT_EQ(1u, first.size());
  EXPECT_GT(first[0].line, 1);
  EXPECT_EQ(first[0].line, second[0].line) << "the count's own line, also when the get-all calls it";
  insert_rows(1);
  get_all();
  EXPECT_NE(first[0].line, logged().back().line) << "the get-all has a line of its own";
}

}  // namespace
}  // namespace qmv::test
