// What holds for the sensors of both tables.
#include "unit/sensor_rules.h"

namespace qmv::test {

TEST_P(Sensors, MembersAreNumbersOrTextsOf256Bytes) {
  for (const Field& field : table_.fields) {
    EXPECT_TRUE(field.width == 4 || field.width == 256) << field.column << ": " << field.width;
  }
}

TEST_P(Sensors, ReaderFillsEveryMemberFromItsColumnInSilence) {
  insert(100);
  Bytes record(table_.record_size, '\x55');
  EXPECT_EQ(0, table_.fill(record.data(), first_row().get()));
  expect_record(100, record.data());
  EXPECT_EQ(Texts(), statements());
}

TEST_P(Sensors, ReaderNeitherStepsNorFinalises) {
  insert(100);
  insert(200);
  Bytes record(table_.record_size);
  const Row row = first_row();
  table_.fill(record.data(), row.get());
  EXPECT_EQ(0, table_.fill(record.data(), row.get()));
  expect_record(100, record.data());
  EXPECT_EQ(SQLITE_ROW, __real_sqlite3_step(row.get()));
  EXPECT_EQ(0, table_.fill(record.data(), row.get()));
  expect_record(200, record.data());
}

TEST_P(Sensors, ReaderWithoutARecordOrARowReturnsOneAndReadsNothing) {
  insert(100);
  Bytes record(table_.record_size, '\x55');
  EXPECT_EQ(1, table_.fill(nullptr, first_row().get()));
  EXPECT_EQ(1, table_.fill(record.data(), nullptr));
  EXPECT_EQ(1, table_.fill(nullptr, nullptr));
  EXPECT_EQ(Bytes(table_.record_size, '\x55'), record);
}

TEST_P(Sensors, ReaderEmptiesWhatNullColumnsFill) {
  sql("insert into " + table_.name + " (DeviceID) values (NULL);");
  Bytes record(table_.record_size, '\x55');
  EXPECT_EQ(0, table_.fill(record.data(), first_row().get()));
  EXPECT_EQ(Bytes(table_.record_size, '\0'), record);
}

TEST_P(Sensors, ReaderCutsTextsAtTheirWidthAndNotBefore) {
  for (const std::size_t length : {255u, 256u, 257u, 5000u}) {
    SCOPED_TRACE(length);
    const std::string text(length, 'x');
    sql("delete from " + table_.name + ";");
    insert(100);
    for (const Field& field : texts()) sql("update " + table_.name + " set " + field.column + " = '" + text + "';");
    Bytes record(table_.record_size, '\x55');
    table_.fill(record.data(), first_row().get());
    for (const Field& field : texts()) EXPECT_EQ(text.substr(0, 256), member(record, field)) << field.column;
    for (const Field& field : numbers()) EXPECT_EQ(stored(field), member(record, field)) << field.column;
  }
}

TEST_P(Sensors, CountWithMaskZeroCountsEveryRow) {
  insert(100, "PhysicalElement = 0, EntityID = 7, EntityInstance = 1");
  insert(200, "PhysicalElement = 256, EntityID = 7, EntityInstance = 1");
  insert(300, "PhysicalElement = NULL, EntityID = 7, EntityInstance = 1");
  std::int32_t count = -1;
  EXPECT_EQ(0, table_.count(db, &count, 0));
  EXPECT_EQ(3, count);
  EXPECT_EQ(Texts({"select count(*) from " + table_.name + ";"}), statements());
  EXPECT_EQ(std::vector<bool>({false}), boundary().tails) << "where the statement ends is not asked for";
  EXPECT_EQ(Lines({trace(table_.counted)}), logged());
}

TEST_P(Sensors, MaskedCountCountsTheEntitiesThatHaveAllBits) {
  insert(100, "PhysicalElement = 768, EntityID = 7, EntityInstance = 1");
  insert(200, "PhysicalElement = 769, EntityID = 7, EntityInstance = 1");
  insert(300, "PhysicalElement = 768, EntityID = 7, EntityInstance = 2");
  insert(400, "PhysicalElement = 768, EntityID = 8, EntityInstance = 1");
  insert(500, "PhysicalElement = 256, EntityID = 9, EntityInstance = 1");
  std::int32_t count = -1;
  EXPECT_EQ(0, table_.count(db, &count, 768));
  EXPECT_EQ(3, count);
  EXPECT_EQ(Texts({"select count(*) from (select * from " + table_.name +
                   " where (PhysicalElement & 768) = 768 GROUP BY EntityID,EntityInstance);"}),
            statements());
  EXPECT_EQ(Lines({trace(table_.counted)}), logged());
}

TEST_P(Sensors, NegativeMaskIsAMaskAsWell) {
  insert(100, "PhysicalElement = -1");
  insert(200, "PhysicalElement = 256");
  std::int32_t count = -1;
  EXPECT_EQ(0, table_.count(db, &count, -2147483647 - 1));
  EXPECT_EQ(1, count);
  logged();
}

TEST_P(Sensors, CountOfNothingIsZeroWithTheSuccessTrace) {
  for (const std::int32_t mask : {0, 256}) {
    std::int32_t count = -1;
    EXPECT_EQ(0, table_.count(db, &count, mask));
    EXPECT_EQ(0, count);
    EXPECT_EQ(Lines({trace(table_.counted)}), logged());
  }
}

TEST_P(Sensors, CountWithoutATableReturnsOneWithTheCountCleared) {
  sql("drop table " + table_.name + ";");
  for (const std::int32_t mask : {0, 256}) {
    std::int32_t count = -1;
    EXPECT_EQ(1, table_.count(db, &count, mask));
    EXPECT_EQ(0, count);
    EXPECT_EQ(table_.count_without_table_print, printed());
    EXPECT_EQ(Lines({no_such_table(table_.name)}), logged());
  }
}

TEST_P(Sensors, CountThatDoesNotCompileReturnsOneWhateverSqliteAnswers) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  std::int32_t count = -1;
  EXPECT_EQ(1, table_.count(db, &count, 0));
  printed();
  logged();
}

TEST_P(Sensors, CountWithoutAStatementIsZero) {
  insert(100);
  boundary().miss_statement = 1;
  std::int32_t count = -1;
  EXPECT_EQ(0, table_.count(db, &count, 0));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_P(Sensors, CountWithoutARowReturnsTheCodeOfTheStepAndLeavesTheStatementOpen) {
  insert(100);
  boundary().steps = {{1, SQLITE_BUSY}};
  std::int32_t count = -1;
  EXPECT_EQ(SQLITE_BUSY, table_.count(db, &count, 0));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
  expect_left_open(1);
}

TEST_P(Sensors, MaskedGetAllReturnsOneRecordForEachEntity) {
  insert(100, "PhysicalElement = 256, EntityID = 7, EntityInstance = 1");
  insert(200, "PhysicalElement = 256, EntityID = 7, EntityInstance = 1");
  insert(300, "PhysicalElement = 257, EntityID = 7, EntityInstance = 2");
  insert(400, "PhysicalElement = 512, EntityID = 7, EntityInstance = 3");
  std::int32_t count = -1;
  OwnedRecords records(table_);
  EXPECT_EQ(0, table_.get_all_by_mask(records.out(), db, 256, &count));
  ASSERT_EQ(2, count);
  const std::string one_of_two = member(records[0], device_id());
  EXPECT_TRUE(one_of_two == "t100" || one_of_two == "t200") << one_of_two;
  EXPECT_EQ("t300", member(records[1], device_id()));
  logged();
}

TEST_P(Sensors, MaskedGetAllWithMaskZeroCountsEveryRowButReadsOneForEachEntity) {
  insert(100, "EntityID = 7, EntityInstance = 1");
  insert(200, "EntityID = 7, EntityInstance = 1");
  insert(300, "EntityID = 8, EntityInstance = 1, PhysicalElement = 0");
  std::int32_t count = -1;
  OwnedRecords records(table_);
  EXPECT_EQ(0, table_.get_all_by_mask(records.out(), db, 0, &count));
  ASSERT_EQ(3, count);
  EXPECT_EQ("t300", member(records[1], device_id()));
  EXPECT_EQ(Bytes(table_.record_size), Bytes(records[2], records[3]));
  EXPECT_EQ(
      Texts({"select count(*) from " + table_.name + ";",
             "select * from " + table_.name + " where (PhysicalElement & 0) = 0 GROUP BY EntityID,EntityInstance;"}),
      statements());
  logged();
}

TEST_P(Sensors, KeysAreTakenLiterally) {
  insert(100);
  for (const std::string key : {"it's", "100%d %q", "' or '1'='1", "", "\xC3\xA9"}) {
    SCOPED_TRACE(key);
    Bytes record = sample(200);
    put(record, device_id(), key);
    set(record);
    OwnedRecords found(table_);
    EXPECT_EQ(0, table_.get_by_key(found.out(), db, key.c_str()));
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(key, member(found[0], device_id()));
  }
  EXPECT_EQ("6", value_of("select count(*) from " + table_.name + ";"));
  logged();
}

TEST_P(Sensors, SetInsertsEveryMemberUnderItsColumn) {
  EXPECT_EQ(0, set(sample(100)));
  expect_row(100, "t100");
  EXPECT_EQ(Lines({trace(table_.was_set)}), logged());
  EXPECT_EQ(Texts({table_.insert}), statements());
}

TEST_P(Sensors, SetOnAnExistingKeyReplacesEveryColumnOfThatRowOnly) {
  insert(100);
  insert(200);
  Bytes record = sample(300);
  put(record, device_id(), "t100");
  EXPECT_EQ(0, set(record));
  expect_row(300, "t100");
  expect_row(200, "t200");
  EXPECT_EQ("2", value_of("select count(*) from " + table_.name + ";"));
  EXPECT_EQ(Lines({execution_failed(), trace(table_.already_present), trace(table_.was_set)}), logged());
}

TEST_P(Sensors, SetUpdatesWithEveryColumnInOrderAndThenTheKey) {
  insert(100);
  set(sample(100));
  EXPECT_EQ(Texts({table_.insert, table_.update}), statements());
  logged();
}

TEST_P(Sensors, SetDoublesTheQuotesOfEveryTextInBothStatements) {
  const std::string insert = with_quotes(table_.insert);
  set(sample_with_quotes(100));
  set(sample_with_quotes(100));
  EXPECT_EQ(Texts({insert, insert, with_quotes(table_.update)}), statements());
  logged();
}

TEST_P(Sensors, SetIgnoresAFailingUpdate) {
  insert(100);
  boundary().execs = {{2, SQLITE_IOERR}};
  EXPECT_EQ(0, set(sample(100)));
  EXPECT_EQ(Lines({execution_failed(), trace(table_.already_present), execution_failed(), trace(table_.was_set)}),
            logged());
}

TEST_P(Sensors, SetThatFailsForAnotherReasonReturnsZeroAndTracesSuccess) {
  sql("drop table " + table_.name + ";");
  EXPECT_EQ(0, set(sample(100)));
  EXPECT_EQ(1u, statements().size()) << "no update";
  EXPECT_EQ(Lines({execution_failed(), trace(table_.was_set)}), logged());
}

TEST_P(Sensors, SetReadsFullTextsNoFurtherThanTheirWidth) {
  Bytes record = sample(100);
  for (const Field& field : texts()) put(record, field, std::string(256, 'x'));
  for (const char* const how : {"insert", "update"}) {
    set(record);
    for (const Field& field : texts()) EXPECT_EQ(std::string(256, 'x'), stored(field)) << how << " " << field.column;
    EXPECT_EQ("1", value_of("select count(*) from " + table_.name + ";"));
  }
  EXPECT_EQ(Lines({trace(table_.was_set), execution_failed(), trace(table_.already_present), trace(table_.was_set)}),
            logged());
}

TEST_P(Sensors, SetTakesTextsLiterally) {
  Bytes record = sample(100);
  for (const Field& field : texts()) put(record, field, "%s%q '); drop table x; --" + std::string(256, '\''));
  for (const char* const how : {"insert", "update"}) {
    set(record);
    for (const Field& field : texts()) EXPECT_EQ(member(record, field), stored(field)) << how << " " << field.column;
  }
  logged();
}

TEST_P(Sensors, SetKeepsTheSmallestAndTheLargestNumber) {
  for (const char* const number : {"-2147483648", "2147483647", "-1"}) {
    Bytes record = sample(100);
    for (const Field& field : numbers()) put(record, field, number);
    set(record);
    OwnedRecords found(table_);
    EXPECT_EQ(0, table_.get_by_key(found.out(), db, "t100"));
    for (const Field& field : numbers()) EXPECT_EQ(number, member(found[0], field)) << field.column;
  }
  logged();
}

TEST_P(SensorGetAll, ReadsTheRowsAndTracesEach) {
  insert(100);
  insert(200);
  std::int32_t count = -1;
  OwnedRecords records(table_);
  EXPECT_EQ(0, GetParam().call(records.out(), db, &count));
  ASSERT_EQ(2, count);
  expect_record(100, records[0]);
  expect_record(200, records[1]);
  EXPECT_EQ(Texts({GetParam().count_statement, GetParam().statement}), statements());
  EXPECT_EQ(Lines({trace(table_.counted), trace(table_.getting_all), trace(table_.got_row), trace(table_.got_row),
                   trace(table_.got_all)}),
            logged());
}

TEST_P(SensorGetAll, OfAnEmptyTableReturnsZeroWithNullAndLeavesTheCount) {
  std::int32_t count = -1;
  void* records = &count;
  EXPECT_EQ(0, GetParam().call(&records, db, &count));
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({trace(table_.counted)}), logged());
}

TEST_P(SensorGetAll, WithoutATableReturnsOneWithNullAndLeavesTheCount) {
  sql("drop table " + table_.name + ";");
  std::int32_t count = -1;
  void* records = &count;
  EXPECT_EQ(1, GetParam().call(&records, db, &count));
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(-1, count);
  EXPECT_EQ(table_.count_without_table_print + GetParam().count_failed_print, printed());
  EXPECT_EQ(Lines({no_such_table(table_.name), trace(table_.count_failed)}), logged());
}

TEST_P(SensorGetAll, OfANegativeCountFails) {
  insert(100);
  make_counts_negative();
  std::int32_t count = 0;
  OwnedRecords records(table_);
  EXPECT_EQ(1, GetParam().call(records.out(), db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(GetParam().count_failed_print, printed());
  EXPECT_EQ(Lines({trace(table_.counted), trace(table_.count_failed)}), logged());
}

TEST_P(SensorGetAll, WhoseRowStatementDoesNotCompileReturnsOneWithTheCountWritten) {
  insert(100);
  sql_before("select * from", "drop table " + table_.name + ";");
  std::int32_t count = -1;
  void* records = &count;
  EXPECT_EQ(1, GetParam().call(&records, db, &count));
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(1, count);
  EXPECT_EQ(GetParam().without_table_print, printed());
  EXPECT_EQ(Lines({trace(table_.counted), no_such_table(table_.name)}), logged());
}

TEST_P(SensorGetAll, ReturnsOneWhateverSqliteAnswersWhenItDoesNotCompile) {
  insert(100);
  boundary().prepares = {{2, SQLITE_INTERNAL}};
  std::int32_t count = -1;
  OwnedRecords records(table_);
  EXPECT_EQ(1, GetParam().call(records.out(), db, &count));
  printed();
  logged();
}

TEST_P(SensorGetAll, WithoutMemoryReturnsOneAndLeavesTheStatementOpen) {
  insert(100);
  boundary().fail_allocation = 1;
  std::int32_t count = -1;
  void* records = &count;
  EXPECT_EQ(1, GetParam().call(&records, db, &count));
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(1, count);
  EXPECT_EQ(Lines({trace(table_.counted), trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_P(SensorGetAll, WithoutAStatementReturnsZeroedRecordsInSilence) {
  insert(100);
  boundary().miss_statement = 2;
  std::int32_t count = -1;
  OwnedRecords records(table_);
  EXPECT_EQ(0, GetParam().call(records.out(), db, &count));
  EXPECT_EQ(1, count);
  EXPECT_EQ(Bytes(table_.record_size), Bytes(records[0], records[1]));
  EXPECT_EQ(Lines({trace(table_.counted)}), logged());
}

TEST_P(SensorGetAll, NeitherReadsNorTracesRowsThatAppearAfterTheCount) {
  insert(200);
  sql_before("select * from", "insert into " + table_.name + " values (" + joined(literals(300)) + ");");
  std::int32_t count = -1;
  OwnedRecords records(table_);
  EXPECT_EQ(0, GetParam().call(records.out(), db, &count));
  EXPECT_EQ(1, count);
  expect_record(200, records[0]);
  EXPECT_EQ(Lines({trace(table_.counted), trace(table_.getting_all), trace(table_.got_row), trace(table_.got_all)}),
            logged());
}

TEST_P(SensorGetOne, ReadsTheFirstRowOfItsKeys) {
  insert(200);
  insert(100);
  OwnedRecords record(table_);
  EXPECT_EQ(0, GetParam().call(record.out(), db));
  ASSERT_FALSE(record.empty());
  expect_record(100, record[0]);
  EXPECT_EQ(Texts({GetParam().statement}), statements());
  EXPECT_EQ(Lines({trace(GetParam().got_row)}), logged());
}

TEST_P(SensorGetOne, IgnoresTheCodeOfFinalize) {
  insert(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  OwnedRecords record(table_);
  EXPECT_EQ(0, GetParam().call(record.out(), db));
  logged();
}

TEST_P(SensorGetOne, WithoutAMatchReturnsOneAndLeavesThePointer) {
  insert(200);
  int untouched;
  void* record = &untouched;
  EXPECT_EQ(1, GetParam().call(&record, db));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({trace(GetParam().no_row)}), logged());
}

TEST_P(SensorGetOne, WhoseStepFailsReturnsOneAndLeavesThePointer) {
  insert(100);
  for (const int code : {SQLITE_BUSY, SQLITE_IOERR}) {
    boundary().steps = {{1, code}};
    int untouched;
    void* record = &untouched;
    EXPECT_EQ(1, GetParam().call(&record, db)) << code;
    EXPECT_EQ(&untouched, record);
    EXPECT_EQ(Lines({trace(GetParam().no_row)}), logged());
  }
}

TEST_P(SensorGetOne, WithoutAStatementReturnsOneAndLeavesThePointer) {
  boundary().miss_statement = 1;
  int untouched;
  void* record = &untouched;
  EXPECT_EQ(1, GetParam().call(&record, db));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({trace(GetParam().no_statement)}), logged());
}

TEST_P(SensorGetOne, WithoutATableReturnsOneAndLeavesThePointer) {
  sql("drop table " + table_.name + ";");
  int untouched;
  void* record = &untouched;
  EXPECT_EQ(1, GetParam().call(&record, db));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({no_such_table(table_.name)}), logged());
}

TEST_P(SensorGetOne, AnswersOneOrSqlitesCodeWhenItDoesNotCompile) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  OwnedRecords record(table_);
  EXPECT_EQ(GetParam().passes_codes_on ? SQLITE_INTERNAL : 1, GetParam().call(record.out(), db));
  EXPECT_EQ(Lines({error("SQL Compilation error: not an error")}), logged());
}

TEST_P(SensorGetOne, AnswersOneOrMisuseWhenItsTextCannotBeFormatted) {
  boundary().fail_text = 1;
  OwnedRecords record(table_);
  EXPECT_EQ(GetParam().passes_codes_on ? SQLITE_MISUSE : 1, GetParam().call(record.out(), db));
  EXPECT_EQ(Texts({"(null)"}), statements());
  EXPECT_EQ(1u, logged().size());
}

TEST_P(SensorGetOne, WithoutMemoryAnswersOneOrSevenAndLeavesTheStatementOpen) {
  insert(100);
  boundary().fail_allocation = 1;
  int untouched;
  void* record = &untouched;
  EXPECT_EQ(GetParam().passes_codes_on ? 7 : 1, GetParam().call(&record, db));
  EXPECT_EQ(nullptr, record);
  EXPECT_EQ(Lines({trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

}  // namespace qmv::test
