// Requested state changes, table "request_state_change".
#include <string>

#include "qmv/indications.h"
#include "support/table_test.h"

namespace qmv::test {
namespace {

using Record = request_state_change_rec;

RecordTable table() {
  static_assert(sizeof(Record) == 256 + 4 + 256 + 256);
  return {"request_state_change",
          sizeof(Record),
          {FIELD(ClassName), FIELD(RequestedState), FIELD(KeyProperty), FIELD(KeyValue)},
          "ClassName, KeyProperty, KeyValue"};
}

class RequestedState : public TableTest {
 protected:
  RequestedState() : TableTest("db_dynamic_instance.c", table()) {}

  // The record that row 100 makes, with another state.
  Record record_of(int first, std::int32_t state) const {
    Record record;
    std::memcpy(&record, sample(first).data(), sizeof(record));
    record.RequestedState = state;
    return record;
  }

  std::int32_t get() { return db_get_req_state_change(db, &record); }
  std::int32_t set() { return db_set_req_state_change(db, &record); }

  LogLine counted(int rows) const {
    return trace("Successfully returns the fru-full_sdr count " + std::to_string(rows));
  }
  LogLine present() const { return trace("the record is already present with that key"); }
  LogLine was_set() const { return trace("Successfully update the ELEC record"); }

  Record record = record_of(100, -1);
  std::int32_t count = -1;
};

constexpr char kSelect[] =
    "select * from request_state_change where ClassName='t100' and KeyProperty='t102' and KeyValue='t103';";
constexpr char kInsert[] = "insert into request_state_change values('t100', 25, 't102', 't103');";
constexpr char kUpdate[] =
    "update request_state_change set RequestedState=25 where ClassName='t100' and KeyProperty='t102' and "
    "KeyValue='t103';";

TEST_F(RequestedState, CountReturnsTheNumberOfRowsInTheWordsOfAnotherTable) {
  insert(100);
  insert(200);
  EXPECT_EQ(0, db_get_req_state_change_cnt(db, &count));
  EXPECT_EQ(2, count);
  EXPECT_EQ(Texts({"select count(*) from request_state_change;"}), statements());
  EXPECT_EQ(Lines({counted(2)}), logged());
}

TEST_F(RequestedState, CountWithoutATableReturnsOneWithTheCountCleared) {
  sql("drop table request_state_change;");
  EXPECT_EQ(1, db_get_req_state_change_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("request_state_change")}), logged());
}

TEST_F(RequestedState, CountWithoutAStatementIsZero) {
  boundary().miss_statement = 1;
  EXPECT_EQ(0, db_get_req_state_change_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_F(RequestedState, CountWithoutARowReturnsTheStepsCodeInItsOwnWords) {
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(SQLITE_BUSY, db_get_req_state_change_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No Records Found")}), logged());
  expect_left_open(1);
}

TEST_F(RequestedState, CountReturnsTheCodeOfFinalize) {
  insert(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, db_get_req_state_change_cnt(db, &count));
  EXPECT_EQ(1, count);
  EXPECT_EQ(Lines({counted(1)}), logged());
}

TEST_F(RequestedState, GetReadsTheStateAndLeavesTheKeys) {
  insert(200);
  insert(100);
  std::memset(record.ClassName + 8, 'x', 8);  // behind its end
  Record expected = record;
  expected.RequestedState = 101;
  EXPECT_EQ(0, get());
  EXPECT_EQ(0, std::memcmp(&expected, &record, sizeof(record)));
  EXPECT_EQ(Texts({"select count(*) from request_state_change;", kSelect}), statements());
  EXPECT_EQ(Lines({counted(2)}), logged());
}

TEST_F(RequestedState, GetMatchesEveryKey) {
  insert(100);
  for (auto key : {&Record::ClassName, &Record::KeyProperty, &Record::KeyValue}) {
    record = record_of(100, -1);
    qmv::test::put(record.*key, "other");
    EXPECT_EQ(0, get());
    EXPECT_EQ(0, record.RequestedState);
  }
  logged();
}

TEST_F(RequestedState, GetWithoutAMatchIsZeroAndNoError) {
  insert(200);
  EXPECT_EQ(0, get());
  EXPECT_EQ(0, record.RequestedState);
  EXPECT_EQ(Lines({counted(1)}), logged());
}

TEST_F(RequestedState, GetOfAnEmptyTableIsZeroWithoutASelect) {
  EXPECT_EQ(0, get());
  EXPECT_EQ(0, record.RequestedState);
  EXPECT_EQ(Texts({"select count(*) from request_state_change;"}), statements());
  EXPECT_EQ(Lines({counted(0)}), logged());
}

TEST_F(RequestedState, GetOfATableThatCannotBeCountedReturnsOneAndLeavesTheRecord) {
  insert(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(1, get());
  EXPECT_EQ(-1, record.RequestedState);
  EXPECT_EQ(Lines({counted(1)}), logged());
}

TEST_F(RequestedState, GetThatDoesNotCompileReturnsOneWithTheStateCleared) {
  insert(100);
  sql_before("select * from", "drop table request_state_change;");
  EXPECT_EQ(1, get());
  EXPECT_EQ(0, record.RequestedState);
  EXPECT_EQ(Lines({counted(1), no_such_table("request_state_change")}), logged());
}

TEST_F(RequestedState, GetWithoutAStatementReturnsOne) {
  insert(100);
  boundary().miss_statement = 2;
  EXPECT_EQ(1, get());
  EXPECT_EQ(0, record.RequestedState);
  EXPECT_EQ(Lines({counted(1), trace("Fail to get the record. SQLite stmt is NULL")}), logged());
}

TEST_F(RequestedState, GetReturnsZeroWhateverTheStepAndFinalizeReturn) {
  insert(100);
  boundary().steps = {{2, SQLITE_BUSY}};  // the first is the count's
  boundary().finalizes = {{2, SQLITE_IOERR}};
  EXPECT_EQ(0, get());
  EXPECT_EQ(0, record.RequestedState);
  EXPECT_EQ(Lines({counted(1)}), logged());
}

TEST_F(RequestedState, GetReadsANullStateAsZero) {
  insert(100);
  sql("update request_state_change set RequestedState = NULL;");
  EXPECT_EQ(0, get());
  EXPECT_EQ(0, record.RequestedState);
  logged();
}

TEST_F(RequestedState, SetInsertsEveryMemberUnderItsColumn) {
  record.RequestedState = 25;
  EXPECT_EQ(0, set());
  EXPECT_EQ("t100|25|t102|t103",
            value_of("select ClassName, RequestedState, KeyProperty, KeyValue from request_state_change;"));
  EXPECT_EQ(Texts({kInsert}), statements());
  EXPECT_EQ(Lines({was_set()}), logged());
}

TEST_F(RequestedState, SetUpdatesTheStateOfTheSameKeys) {
  insert(100);
  insert(200);
  record.RequestedState = 25;
  EXPECT_EQ(0, set());
  EXPECT_EQ(Texts({"t100|25|t102|t103", "t200|201|t202|t203"}), rows_of("select * from request_state_change;"));
  EXPECT_EQ(Texts({kInsert, kUpdate}), statements());
  EXPECT_EQ(Lines({execution_failed(), present(), was_set()}), logged());
}

TEST_F(RequestedState, SetReturnsZeroWhenItFails) {
  insert(100);
  boundary().execs = {{1, SQLITE_FULL}};
  EXPECT_EQ(0, set());
  EXPECT_EQ(Lines({execution_failed(), was_set()}), logged());
  boundary().execs = {{2, SQLITE_FULL}};
  EXPECT_EQ(0, set());
  EXPECT_EQ(Lines({execution_failed(), present(), execution_failed(), was_set()}), logged());
}

TEST_F(RequestedState, KeysAreReadUpToTheirWidthAndQuotesAsTheyAre) {
  qmv::test::put(record.ClassName, "'" + std::string(255, 'a'));
  qmv::test::put(record.KeyProperty, "'" + std::string(255, 'b'));
  qmv::test::put(record.KeyValue, "'" + std::string(255, 'c'));
  for (const std::int32_t state : {2, 3}) {  // the insert and the update
    record.RequestedState = state;
    EXPECT_EQ(0, set());
    EXPECT_EQ(Texts({"'" + std::string(255, 'a') + "|" + std::to_string(state) + "|'" + std::string(255, 'b') + "|'" +
                     std::string(255, 'c')}),
              rows_of("select * from request_state_change;"));
  }
  record.RequestedState = -1;
  EXPECT_EQ(0, get());
  EXPECT_EQ(3, record.RequestedState);
  logged();
}

}  // namespace
}  // namespace qmv::test
