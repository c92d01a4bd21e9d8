// Events, table "sel".
#include "qmv/sel.h"

#include <string>

#include "support/database_test.h"

namespace qmv::test {
namespace {

constexpr char kTable[] =
    "create table sel (RecordID, RecordType, TimeStamp, GeneratorID, EventType, EvMRev, SensorType, SensorNum, "
    "EventDir, EventData1, EventData2, EventData3, unique (RecordID));";

class Sel : public DatabaseTest {
 protected:
  Sel() : DatabaseTest("db_seld.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql(kTable);
  }

  // A row in which column n holds first + n; `first` has three digits at most.
  void insert_row(int first) {
    std::string values;
    for (int i = 0; i < 12; ++i) {
      const std::string number = std::to_string(first + i);
      values += (i == 0 ? "" : ", ") + (i == 3 ? "'" + number + "'" : number);
    }
    sql("insert into sel values (" + values + ");");
  }

  static void expect_row(int first, const sel_rec& record) {
    EXPECT_EQ(std::to_string(first + 3), field(record.GeneratorID));
    expect_integers(first, record);
  }

  static void expect_integers(int first, const sel_rec& record) {
    EXPECT_EQ(first + 0, record.RecordID);
    EXPECT_EQ(first + 1, record.RecordType);
    EXPECT_EQ(first + 2, record.TimeStamp);
    EXPECT_EQ(first + 4, record.EventType);
    EXPECT_EQ(first + 5, record.EvMRev);
    EXPECT_EQ(first + 6, record.SensorType);
    EXPECT_EQ(first + 7, record.SensorNum);
    EXPECT_EQ(first + 8, record.EventDir);
    EXPECT_EQ(first + 9, record.EventData1);
    EXPECT_EQ(first + 10, record.EventData2);
    EXPECT_EQ(first + 11, record.EventData3);
  }

  void expect_get_fails_and_leaves_the_pointer(std::int32_t id, const Lines& lines) {
    sel_rec untouched;
    sel_rec* record = &untouched;
    EXPECT_EQ(1, db_get_sel_record(db, id, &record));
    EXPECT_EQ(&untouched, record);
    EXPECT_EQ(lines, logged());
  }

  void expect_get_all_gives_null_and_leaves_the_count(std::int32_t status, const Lines& lines) {
    sel_rec untouched;
    sel_rec* all = &untouched;
    EXPECT_EQ(status, db_get_all_sel_records(db, &count, &all));
    EXPECT_EQ(nullptr, all);
    EXPECT_EQ(-1, count);
    EXPECT_EQ(lines, logged());
  }

  LogLine counted() const { return trace("Successfully return the no. of sels present"); }

  static void expect_zeros(const sel_rec& record) {
    EXPECT_EQ(std::string(sizeof(record), '\0'), std::string(reinterpret_cast<const char*>(&record), sizeof(record)));
  }

  static sel_rec sample(std::int32_t id, std::int32_t first = 0) {
    sel_rec record{id,        first + 2, first + 3, {},         first + 5,  first + 6,
                   first + 7, first + 8, first + 9, first + 10, first + 11, first + 12};
    put(record.GeneratorID, "d'");
    return record;
  }

  // Makes count(*) answer something else than the number of rows: an integer, or an error without a value.
  using Answer = void (*)(sqlite3_context*);
  void count_answers(Answer answer) {
    ASSERT_EQ(SQLITE_OK, sqlite3_create_function(
                             db, "count", 0, SQLITE_UTF8, nullptr, nullptr,
                             [](sqlite3_context*, int, sqlite3_value**) {}, answer));
  }

  // All events, each column by its name.
  Texts rows() {
    return rows_of(
        "select RecordID, RecordType, TimeStamp, GeneratorID, EventType, EvMRev, SensorType, SensorNum, EventDir, "
        "EventData1, EventData2, EventData3 from sel order by RecordID;");
  }
  Texts ids() { return rows_of("select RecordID from sel order by RecordID;"); }

  std::int32_t count = -1;
  Owned<sel_rec> records;
};

TEST_F(Sel, CountReturnsTheNumberOfRows) {
  insert_row(100);
  insert_row(200);
  EXPECT_EQ(0, db_getnumofsels(db, &count));
  EXPECT_EQ(2, count);
  EXPECT_EQ(Texts({"select count(*) from sel;"}), statements());
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_F(Sel, CountOfAnEmptyTableIsZeroWithTheSuccessTrace) {
  EXPECT_EQ(0, db_getnumofsels(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_F(Sel, CountWithoutATableReturnsOneWithTheCountCleared) {
  sql("drop table sel;");
  EXPECT_EQ(1, db_getnumofsels(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("sel")}), logged());
}

TEST_F(Sel, CountWithoutAStatementReturnsZero) {
  boundary().miss_statement = 1;
  EXPECT_EQ(0, db_getnumofsels(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_F(Sel, CountDoesNotLookAtTheStepsAnswer) {
  for (const int code : {SQLITE_DONE, SQLITE_BUSY}) {
    boundary().steps = {{1, code}};
    EXPECT_EQ(0, db_getnumofsels(db, &count));
    EXPECT_EQ(0, count);
    EXPECT_EQ(Lines({counted()}), logged());
  }
}

TEST_F(Sel, CountWhoseStepFailsReturnsTheCodeOfFinalizeWithTheSuccessTrace) {
  count_answers([](sqlite3_context* context) { sqlite3_result_error_code(context, SQLITE_CORRUPT); });
  EXPECT_EQ(SQLITE_CORRUPT, db_getnumofsels(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_F(Sel, GetReadsEveryColumnIntoItsField) {
  insert_row(100);
  insert_row(200);
  EXPECT_EQ(0, db_get_sel_record(db, 200, records.out()));
  expect_row(200, *records.get());
  EXPECT_EQ(Texts({"select * from sel where RecordID=200;"}), statements());
  EXPECT_EQ(Lines({trace("Get Sel record from database")}), logged());
}

TEST_F(Sel, GetReadsNullColumnsAsZeros) {
  sql("insert into sel (RecordID) values (0);");
  EXPECT_EQ(0, db_get_sel_record(db, 0, records.out()));
  expect_zeros(*records.get());
  logged();
}

TEST_F(Sel, GetWithoutARowReturnsOneInSilenceAndLeavesThePointer) {
  insert_row(100);
  expect_get_fails_and_leaves_the_pointer(-100, Lines());
  EXPECT_EQ(Texts({"select * from sel where RecordID=-100;"}), statements());
}

TEST_F(Sel, GetWithoutAStatementReturnsOneInSilenceAndLeavesThePointer) {
  insert_row(100);
  boundary().miss_statement = 1;
  expect_get_fails_and_leaves_the_pointer(100, Lines());
}

TEST_F(Sel, GetWithoutATableReturnsOneAndLeavesThePointer) {
  sql("drop table sel;");
  expect_get_fails_and_leaves_the_pointer(100, Lines({no_such_table("sel")}));
}

TEST_F(Sel, GetReturnsOneWhenMemoryIsShortAndLeavesTheStatementOpen) {
  insert_row(100);
  boundary().fail_allocation = 1;
  sel_rec untouched;
  sel_rec* record = &untouched;
  EXPECT_EQ(1, db_get_sel_record(db, 100, &record));
  EXPECT_EQ(nullptr, record);
  EXPECT_EQ(Lines({trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_F(Sel, GetIgnoresTheCodeOfFinalize) {
  insert_row(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(0, db_get_sel_record(db, 100, records.out()));
  expect_row(100, *records.get());
  logged();
}

TEST_F(Sel, GetAllReadsTheRowsInOrder) {
  insert_row(100);
  insert_row(200);
  EXPECT_EQ(0, db_get_all_sel_records(db, &count, records.out()));
  ASSERT_EQ(2, count);
  expect_row(100, records[0]);
  expect_row(200, records[1]);
  EXPECT_EQ(Texts({"select count(*) from sel;", "select * from sel;"}), statements());
  EXPECT_EQ(Lines({counted(), trace("Get All Sels from database"), trace("Successfully got all the sels")}), logged());
}

TEST_F(Sel, GetAllOfAnEmptyTableReturnsNullAndLeavesTheCount) {
  expect_get_all_gives_null_and_leaves_the_count(0, Lines({counted(), trace("No entry in the sel table")}));
}

TEST_F(Sel, GetAllWhoseCountHasNoStatementTakesTheTableForEmpty) {
  insert_row(100);
  boundary().miss_statement = 1;
  expect_get_all_gives_null_and_leaves_the_count(
      0, Lines({trace("No records found"), trace("No entry in the sel table")}));
}

TEST_F(Sel, GetAllWhoseCountFailsReturnsOneWithNullAndLeavesTheCount) {
  sql("drop table sel;");
  expect_get_all_gives_null_and_leaves_the_count(1, Lines({no_such_table("sel"), trace("Fail to get sel records")}));
}

TEST_F(Sel, GetAllOfANegativeCountReturnsOneWithNullAndLeavesTheCount) {
  count_answers([](sqlite3_context* context) { sqlite3_result_int(context, -5); });
  expect_get_all_gives_null_and_leaves_the_count(1, Lines({counted(), trace("Fail to get sel records")}));
  EXPECT_EQ(Texts({"select count(*) from sel;"}), statements());
}

TEST_F(Sel, GetAllThatDoesNotCompileReturnsOneWithTheCountWritten) {
  insert_row(100);
  sql_before("select * from", "drop table sel;");
  EXPECT_EQ(1, db_get_all_sel_records(db, &count, records.out()));
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(1, count);
  EXPECT_EQ(Lines({counted(), no_such_table("sel")}), logged());
}

TEST_F(Sel, GetAllReturnsOneWhenMemoryIsShortAndLeavesTheStatementOpen) {
  insert_row(100);
  boundary().fail_allocation = 1;
  EXPECT_EQ(1, db_get_all_sel_records(db, &count, records.out()));
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(1, count);
  EXPECT_EQ(Lines({counted(), trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_F(Sel, GetAllWithoutAStatementReturnsZeroedRecords) {
  insert_row(100);
  boundary().miss_statement = 2;
  EXPECT_EQ(0, db_get_all_sel_records(db, &count, records.out()));
  EXPECT_EQ(1, count);
  ASSERT_NE(nullptr, records.get());
  expect_zeros(*records.get());
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_F(Sel, GetAllStepsOverRowsBeyondTheCount) {
  insert_row(100);
  sql_before("select * from", "insert into sel (RecordID) values (2);");
  EXPECT_EQ(0, db_get_all_sel_records(db, &count, records.out()));
  EXPECT_EQ(1, count);
  expect_row(100, records[0]);
  logged();
}

TEST_F(Sel, GetAllReturnsTheCodeOfFinalize) {
  insert_row(100);
  boundary().finalizes = {{2, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, db_get_all_sel_records(db, &count, records.out()));
  EXPECT_EQ(1, count);
  logged();
}

// A generator ID has room for three characters and a zero. What is longer must not harm what stands behind it.
class SelGeneratorID : public Sel, public testing::WithParamInterface<std::size_t> {
 protected:
  void SetUp() override {
    Sel::SetUp();
    insert_row(100);
    insert_row(200);
    const std::string text = "abcd" + std::string(GetParam() - 4, 'x');
    sql("update sel set GeneratorID = '" + text + "' where RecordID = 100;");
  }
};

// Up to the last byte of the field, of the record, of the next record, and beyond.
INSTANTIATE_TEST_SUITE_P(TextsOf, SelGeneratorID, testing::Values(4, 5, 35, 36, 37, 47, 84, 85, 10000));

TEST_P(SelGeneratorID, LongerThanItsFieldLeavesTheFieldsBehindIt) {
  EXPECT_EQ(0, db_get_sel_record(db, 100, records.out()));
  EXPECT_EQ("abcd", field(records->GeneratorID));
  expect_integers(100, *records.get());
  logged();
}

TEST_P(SelGeneratorID, LongerThanItsFieldLeavesNullColumnsZero) {
  sql("update sel set EventType = NULL, EventData3 = NULL where RecordID = 100;");
  EXPECT_EQ(0, db_get_sel_record(db, 100, records.out()));
  EXPECT_EQ(0, records->EventType);
  EXPECT_EQ(0, records->EventData3);
  logged();
}

TEST_P(SelGeneratorID, LongerThanItsFieldLeavesTheNextRecord) {
  EXPECT_EQ(0, db_get_all_sel_records(db, &count, records.out()));
  EXPECT_EQ("abcd", field(records[0].GeneratorID));
  expect_integers(100, records[0]);
  expect_row(200, records[1]);
  logged();
}

TEST_P(SelGeneratorID, LongerThanItsFieldLeavesTheRecordOfAVanishedRowZeroed) {
  sql_before("select * from", "delete from sel where RecordID = 200;");
  EXPECT_EQ(0, db_get_all_sel_records(db, &count, records.out()));
  EXPECT_EQ(2, count);
  expect_zeros(records[1]);
  logged();
}

TEST_F(Sel, GeneratorIDEndsAtAZeroWithinItsText) {
  insert_row(100);
  sql("update sel set GeneratorID = cast(x'61006263' as text);");
  EXPECT_EQ(0, db_get_sel_record(db, 100, records.out()));
  EXPECT_EQ(std::string("a\0\0\0", 4), std::string(records->GeneratorID, 4));
  logged();
}

TEST_F(Sel, DeleteNeverReleasesItsText) {
  insert_row(100);
  insert_row(200);
  EXPECT_EQ(0, db_del_sel(db, 100));
  EXPECT_EQ(Texts({"200"}), ids());
  EXPECT_EQ(Texts({"delete from sel where RecordID=100;"}), statements());
  EXPECT_EQ(Lines({trace("Successfully delete the sel")}), logged());
  expect_left_allocated(1);
}

TEST_F(Sel, DeleteOfZeroOrLessIsNoException) {
  sql("insert into sel (RecordID) values (0), (-1), (1);");
  EXPECT_EQ(0, db_del_sel(db, 0));
  EXPECT_EQ(0, db_del_sel(db, -1));
  EXPECT_EQ(Texts({"1"}), ids());
  EXPECT_EQ(Lines({trace("Successfully delete the sel"), trace("Successfully delete the sel")}), logged());
  expect_left_allocated(2);
}

TEST_F(Sel, DeleteWithoutATableReturnsZero) {
  sql("drop table sel;");
  EXPECT_EQ(0, db_del_sel(db, 100));
  EXPECT_EQ(Lines({execution_failed(), trace("Successfully delete the sel")}), logged());
  expect_left_allocated(1);
}

TEST_F(Sel, DeleteWhoseTextCannotBeFormattedExecutesNothing) {
  insert_row(100);
  boundary().fail_text = 1;
  EXPECT_EQ(0, db_del_sel(db, 100));
  EXPECT_EQ(Texts(), statements());
  EXPECT_EQ(Texts({"100"}), ids());
  EXPECT_EQ(Lines({trace("Successfully delete the sel")}), logged());
}

TEST_F(Sel, ClearRemovesEveryEvent) {
  insert_row(100);
  insert_row(200);
  EXPECT_EQ(0, db_clear_sel_records(db));
  EXPECT_EQ(Texts(), ids());
  EXPECT_EQ(Texts({"delete from sel;"}), statements());
  EXPECT_EQ(Lines({trace("Successfully clear the sels")}), logged());
}

TEST_F(Sel, ClearWithoutATableReturnsZero) {
  sql("drop table sel;");
  EXPECT_EQ(0, db_clear_sel_records(db));
  EXPECT_EQ(Lines({execution_failed(), trace("Successfully clear the sels")}), logged());
}

TEST_F(Sel, AddInsertsEveryFieldUnderItsColumn) {
  const sel_rec event = sample(1);
  EXPECT_EQ(0, db_addsel(db, &event, 0));
  EXPECT_EQ(
      Texts({"insert into sel (RecordID, RecordType, TimeStamp, \t\t\tGeneratorID, EventType, EvMRev , SensorType "
             ", SensorNum , \t\t\tEventDir, EventData1, EventData2, EventData3) values (\t\t\t1, 2, 3, 'd''', 5, "
             "6, 7, 8, 9, 10, 11, 12);"}),
      statements());
  EXPECT_EQ(Texts({"1|2|3|d'|5|6|7|8|9|10|11|12"}), rows());
  EXPECT_EQ(Lines({trace("Successfully add sel record")}), logged());
}

TEST_F(Sel, AddOfAnExistingRecordIDUpdatesThatEventAndReturnsZero) {
  insert_row(100);
  insert_row(200);
  sel_rec event = sample(100, 50);
  EXPECT_EQ(0, db_addsel(db, &event, 0));
  ASSERT_EQ(2u, boundary().statements.size());
  EXPECT_EQ(
      "update sel set RecordType = 52, TimeStamp = 53,                         GeneratorID = 'd''', EventType = "
      "55, EvMRev = 56, SensorType = 57, SensorNum = 58,                         EventDir= 59, EventData1 = 60, "
      "EventData2 = 61, EventData3 = 62 where RecordID = 100;",
      statements().back());
  EXPECT_EQ(Texts({"100|52|53|d'|55|56|57|58|59|60|61|62", "200|201|202|203|204|205|206|207|208|209|210|211"}), rows());
  EXPECT_EQ(Lines({execution_failed(), trace("An entry with the record id exists already : Updating DB"),
                   trace("Successfully add sel record")}),
            logged());
}

TEST_F(Sel, AddWhoseUpdateFailsReturnsZero) {
  insert_row(100);
  sql("create trigger refuse before update on sel begin select raise(abort, 'no'); end;");
  const sel_rec event = sample(100);
  EXPECT_EQ(0, db_addsel(db, &event, 0));
  EXPECT_EQ("101", value_of("select RecordType from sel;"));
  EXPECT_EQ(Lines({execution_failed(), trace("An entry with the record id exists already : Updating DB"),
                   execution_failed(), trace("Successfully add sel record")}),
            logged());
}

TEST_F(Sel, AddWhoseInsertFailsOtherwiseReturnsOneWithoutAMessageAndTriesNoUpdate) {
  sql("drop table sel;");
  const sel_rec event = sample(1);
  EXPECT_EQ(1, db_addsel(db, &event, 0));
  EXPECT_EQ(1u, statements().size());
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

TEST_F(Sel, AddReturnsOneForWhateverCodeTheInsertFailsWith) {
  for (const int code : {SQLITE_BUSY, SQLITE_READONLY, SQLITE_FULL, SQLITE_DONE}) {
    boundary().execs = {{1, code}};
    const sel_rec event = sample(1);
    EXPECT_EQ(1, db_addsel(db, &event, 0));
    EXPECT_EQ(Lines({execution_failed()}), logged());
  }
}

TEST_F(Sel, AddDeletesTheNamedEventFirstAndNeverReleasesItsText) {
  insert_row(100);
  insert_row(200);
  const sel_rec event = sample(1);
  EXPECT_EQ(0, db_addsel(db, &event, 100));
  EXPECT_EQ(Texts({"1", "200"}), ids());
  ASSERT_EQ(2u, boundary().statements.size());
  EXPECT_EQ("delete from sel where RecordID=100;", statements().front());
  EXPECT_EQ(Lines({trace("Successfully add sel record")}), logged());
  expect_left_allocated(1);
}

TEST_F(Sel, AddDeletesTheEventOfTheSmallestID) {
  sql("insert into sel (RecordID) values (1);");
  const sel_rec event = sample(2);
  EXPECT_EQ(0, db_addsel(db, &event, 1));
  EXPECT_EQ(Texts({"2"}), ids());
  logged();
  expect_left_allocated(1);
}

TEST_F(Sel, AddDeletesNothingForAnIDOfZeroOrLess) {
  sql("insert into sel (RecordID) values (0), (-1);");
  const sel_rec event = sample(1);
  EXPECT_EQ(0, db_addsel(db, &event, 0));
  const sel_rec next = sample(2);
  EXPECT_EQ(0, db_addsel(db, &next, -1));
  EXPECT_EQ(Texts({"-1", "0", "1", "2"}), ids());
  EXPECT_EQ(2u, statements().size());
  logged();
}

TEST_F(Sel, AddWithAMissingEventToDeleteReturnsZero) {
  const sel_rec event = sample(1);
  EXPECT_EQ(0, db_addsel(db, &event, INT32_MAX));
  EXPECT_EQ("delete from sel where RecordID=2147483647;", statements().front());
  EXPECT_EQ(Texts({"1"}), ids());
  EXPECT_EQ(Lines({trace("Successfully add sel record")}), logged());
  expect_left_allocated(1);
}

TEST_F(Sel, AddThatDeletesItsOwnRecordIDFirstInserts) {
  insert_row(100);
  const sel_rec event = sample(100);
  EXPECT_EQ(0, db_addsel(db, &event, 100));
  EXPECT_EQ(Texts({"100|2|3|d'|5|6|7|8|9|10|11|12"}), rows());
  EXPECT_EQ(Lines({trace("Successfully add sel record")}), logged());
  expect_left_allocated(1);
}

TEST_F(Sel, AddGoesOnWhenItsDeleteFails) {
  insert_row(100);
  sql("create trigger refuse before delete on sel begin select raise(abort, 'no'); end;");
  const sel_rec event = sample(1);
  EXPECT_EQ(0, db_addsel(db, &event, 100));
  EXPECT_EQ(Texts({"1", "100"}), ids());
  EXPECT_EQ(Lines({execution_failed(), trace("Failed to delete old sel record"), trace("Successfully add sel record")}),
            logged());
  expect_left_allocated(1);
}

TEST_F(Sel, AddGoesOnWhenTheTextOfItsDeleteCannotBeFormatted) {
  insert_row(100);
  boundary().fail_text = 1;
  const sel_rec event = sample(1);
  EXPECT_EQ(0, db_addsel(db, &event, 100));
  EXPECT_EQ(1u, statements().size());
  EXPECT_EQ(Texts({"1", "100"}), ids());
  EXPECT_EQ(Lines({trace("Failed to delete old sel record"), trace("Successfully add sel record")}), logged());
}

TEST_F(Sel, AddReadsAFullGeneratorIDNoFurtherThanItsWidthInBothStatements) {
  for (const char* full : {"abcd", "''''"}) {
    sel_rec event = sample(1, 0x41414141 - 5);  // what stands behind the field is text as well
    put(event.GeneratorID, full);
    EXPECT_EQ(0, db_addsel(db, &event, 0));
    EXPECT_EQ(full, value_of("select GeneratorID from sel;"));
    sql("update sel set GeneratorID = NULL;");
    EXPECT_EQ(0, db_addsel(db, &event, 0));
    EXPECT_EQ(full, value_of("select GeneratorID from sel;"));
    sql("delete from sel;");
  }
  logged();
}

TEST_F(Sel, AddStoresTheLimitsOfIntegersAndAnEmptyText) {
  const sel_rec event{INT32_MAX, INT32_MIN, -1, {}, INT32_MAX, INT32_MIN, -1, 0, 1, 255, INT32_MAX, INT32_MIN};
  EXPECT_EQ(0, db_addsel(db, &event, 0));
  EXPECT_EQ(Texts({"2147483647|-2147483648|-1||2147483647|-2147483648|-1|0|1|255|2147483647|-2147483648"}), rows());
  logged();
}

TEST_F(Sel, AddTakesARecordIDOfZeroOrLess) {
  for (const std::int32_t id : {0, -1}) {
    const sel_rec event = sample(id);
    EXPECT_EQ(0, db_addsel(db, &event, 0));
  }
  EXPECT_EQ(Texts({"-1", "0"}), ids());
  logged();
}

TEST_F(Sel, AddEntriesAddsEachInOrder) {
  const sel_rec events[] = {sample(2, 10), sample(1, 20)};
  EXPECT_EQ(0, db_add_sel_entries(db, 2, events, 0));
  EXPECT_EQ(Texts({"1|22|23|d'|25|26|27|28|29|30|31|32", "2|12|13|d'|15|16|17|18|19|20|21|22"}), rows());
  EXPECT_EQ(Texts({"2", "1"}), rows_of("select RecordID from sel order by rowid;"));
  EXPECT_EQ(Lines({trace("Enter into add_sel_entries"), trace("Sel_Cnt : 2"), trace("Successfully add sel record"),
                   trace("Successfully add sel record"), trace("Successfully add all sel records")}),
            logged());
}

TEST_F(Sel, AddEntriesOfNoneReturnsZeroWithoutTracingTheCount) {
  EXPECT_EQ(0, db_add_sel_entries(db, 0, nullptr, 100));
  EXPECT_EQ(Texts(), statements());
  EXPECT_EQ(Lines({trace("Enter into add_sel_entries"), trace("Successfully add all sel records")}), logged());
}

TEST_F(Sel, AddEntriesOfANegativeCountReturnsZeroAfterTracingTheCount) {
  EXPECT_EQ(0, db_add_sel_entries(db, -3, nullptr, 100));
  EXPECT_EQ(Texts(), statements());
  EXPECT_EQ(
      Lines({trace("Enter into add_sel_entries"), trace("Sel_Cnt : -3"), trace("Successfully add all sel records")}),
      logged());
}

TEST_F(Sel, AddEntriesSkipsRecordsWhoseIDIsZeroOrLess) {
  insert_row(100);
  const sel_rec events[] = {sample(0), sample(-1)};
  EXPECT_EQ(0, db_add_sel_entries(db, 2, events, 100));
  EXPECT_EQ(Texts(), statements()) << "nothing is deleted for a record that is skipped";
  EXPECT_EQ(Texts({"100"}), ids());
  EXPECT_EQ(
      Lines({trace("Enter into add_sel_entries"), trace("Sel_Cnt : 2"), trace("Successfully add all sel records")}),
      logged());
}

TEST_F(Sel, AddEntriesGoesOnBehindASkippedRecord) {
  const sel_rec events[] = {sample(0), sample(5), sample(-1), sample(6)};
  EXPECT_EQ(0, db_add_sel_entries(db, 4, events, 0));
  EXPECT_EQ(Texts({"5", "6"}), ids());
  EXPECT_EQ(Lines({trace("Enter into add_sel_entries"), trace("Sel_Cnt : 4"), trace("Successfully add sel record"),
                   trace("Successfully add sel record"), trace("Successfully add all sel records")}),
            logged());
}

TEST_F(Sel, AddEntriesDeletesTheSameEventBeforeEachAdd) {
  insert_row(100);
  const sel_rec events[] = {sample(100), sample(2), sample(3)};
  EXPECT_EQ(0, db_add_sel_entries(db, 3, events, 100));
  const Texts given = statements();
  ASSERT_EQ(6u, given.size());
  for (const std::size_t i : {0u, 2u, 4u}) EXPECT_EQ("delete from sel where RecordID=100;", given[i]);
  EXPECT_EQ(Texts({"2", "3"}), ids()) << "the event of the batch with that ID is removed again";
  logged();
  expect_left_allocated(3);
}

TEST_F(Sel, AddEntriesStopsAtTheFirstFailureAndKeepsWhatWasAdded) {
  const sel_rec events[] = {sample(1), sample(2), sample(3)};
  boundary().execs = {{2, SQLITE_FULL}};
  EXPECT_EQ(1, db_add_sel_entries(db, 3, events, 0));
  EXPECT_EQ(2u, statements().size());
  EXPECT_EQ(Texts({"1"}), ids());
  EXPECT_EQ(Lines({trace("Enter into add_sel_entries"), trace("Sel_Cnt : 3"), trace("Successfully add sel record"),
                   execution_failed(), trace("Fail to add sel records")}),
            logged());
}

TEST_F(Sel, AddEntriesUpdatesThoseThatExist) {
  insert_row(100);
  const sel_rec events[] = {sample(100)};
  EXPECT_EQ(0, db_add_sel_entries(db, 1, events, 0));
  EXPECT_EQ(Texts({"100|2|3|d'|5|6|7|8|9|10|11|12"}), rows());
  EXPECT_EQ(Lines({trace("Enter into add_sel_entries"), trace("Sel_Cnt : 1"), execution_failed(),
                   trace("An entry with the record id exists already : Updating DB"),
                   trace("Successfully add sel record"), trace("Successfully add all sel records")}),
            logged());
}

}  // namespace
}  // namespace qmv::test
