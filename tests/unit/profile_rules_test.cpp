// What holds for every profile table.
#include "unit/profile_rules.h"

#include <algorithm>
#include <cstdlib>

namespace qmv::test {

void ProfileTest::expect_record(int first, const void* record, const std::vector<Field>& reads, char before) const {
  const Texts columns = names();
  const Texts all = values(first);
  for (const Field& member_field : table_.fields) {
    std::string expected = member(Bytes(table_.record_size, before), member_field);
    for (const Field& read : reads.empty() ? table_.fields : reads) {
      if (read.offset != member_field.offset) continue;
      const auto column = std::find(columns.begin(), columns.end(), read.column) - columns.begin();
      const bool is_no_number = table_.fields[static_cast<std::size_t>(column)].is_text() && !read.is_text();
      expected = is_no_number ? "0" : all[static_cast<std::size_t>(column)];
    }
    EXPECT_EQ(expected, member(record, member_field)) << "the member " << member_field.column;
  }
}

LogLine ProfileGetAll::done(int rows) const {
  std::string text = GetParam().done;
  if (const auto at = text.find("%d"); at != std::string::npos) text.replace(at, 2, std::to_string(rows));
  return trace(text);
}

void ProfileGetAll::expect_pointer_kept() const {
  EXPECT_EQ(GetParam().clears_the_pointer ? nullptr : this, records_);
}

void ProfileGetAll::expect_outputs_kept() const {
  expect_pointer_kept();
  EXPECT_EQ(-1, count_);
}

void ProfileGetAll::TearDown() {
  if (records_ != this) std::free(records_);
  ProfileTest::TearDown();
}

bool ProfileGetOne::is_key(const Field& field) const {
  const Texts& keys = GetParam().keys;
  return std::find(keys.begin(), keys.end(), field.column) != keys.end();
}

std::int32_t ProfileGetOne::get() {
  const Texts all = values(100);
  Texts keys;
  for (const std::string& key : GetParam().keys) {
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (names()[i] == key) keys.push_back(all[i]);
    }
  }
  return get(keys);
}

void ProfileGetOne::expect_nothing_written() const {
  EXPECT_EQ(callers_.data(), place_) << "the pointer";
  EXPECT_EQ(Bytes(table_.record_size, kBefore), callers_) << "the record";
  EXPECT_EQ(0, boundary().allocations);
}

void ProfileGetOne::TearDown() {
  if (place_ != callers_.data()) std::free(place_);
  ProfileTest::TearDown();
}

Lines ProfileGetOne::lines_before_the_row(const std::string& last) const {
  if (GetParam().says_reading_before_the_step) return {trace(GetParam().reading), trace(last)};
  return {trace(last)};
}

Lines ProfileSet::lines_of_an_update() const {
  Lines lines = {execution_failed(), trace(GetParam().present)};
  if (GetParam().update_is_rejected) lines.push_back(execution_failed());
  lines.push_back(trace(GetParam().done));
  return lines;
}

TEST_P(ProfileGetAll, ReadsTheRows) {
  insert(100);
  insert(200);
  EXPECT_EQ(0, get_all());
  ASSERT_EQ(2, count_);
  expect_record(100, record(0), GetParam().reads);
  expect_record(200, record(1), GetParam().reads);
  EXPECT_EQ(Texts({select_count(), select()}), statements());
  EXPECT_EQ(Lines({counted(), trace(GetParam().reading), done(2)}), logged());
}

TEST_P(ProfileGetAll, OfAnEmptyTableReturnsZeroAndLeavesTheOutputs) {
  EXPECT_EQ(0, get_all());
  expect_outputs_kept();
  EXPECT_EQ(Texts({select_count()}), statements());
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_P(ProfileGetAll, WithoutATableReturnsOneAndLeavesTheOutputs) {
  sql("drop table " + table_.name + ";");
  EXPECT_EQ(1, get_all());
  expect_outputs_kept();
  EXPECT_EQ(Lines({no_such_table(table_.name), trace(GetParam().count_failed)}), logged());
}

TEST_P(ProfileGetAll, OfANegativeCountReturnsOneAndLeavesTheOutputs) {
  insert(100);
  make_counts_negative();
  EXPECT_EQ(1, get_all());
  expect_outputs_kept();
  EXPECT_EQ(Lines({counted(), trace(GetParam().count_failed)}), logged());
}

TEST_P(ProfileGetAll, WhoseRowStatementDoesNotCompileHasWrittenTheCount) {
  insert(100);
  boundary().prepares = {{2, SQLITE_INTERNAL}};
  EXPECT_EQ(GetParam().passes_codes_on ? SQLITE_INTERNAL : 1, get_all());
  expect_pointer_kept();
  EXPECT_EQ(1, count_);
  EXPECT_EQ(Lines({counted(), error("SQL Compilation error: not an error")}), logged());
}

TEST_P(ProfileGetAll, WithoutMemoryStoresNullAndLeavesTheStatementOpen) {
  insert(100);
  boundary().fail_allocation = 1;
  EXPECT_EQ(GetParam().without_memory, get_all());
  EXPECT_EQ(nullptr, records_);
  EXPECT_EQ(1, count_);
  EXPECT_EQ(Lines({counted(), trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_P(ProfileGetAll, WithoutAStatementReturnsZeroedRecordsInSilence) {
  insert(100);
  boundary().miss_statement = 2;
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(1, count_);
  EXPECT_EQ(Bytes(table_.record_size), Bytes(record(0), record(1)));
  EXPECT_EQ(Lines({counted()}), logged());
}

TEST_P(ProfileGetAll, DropsRowsThatAppearAfterTheCount) {
  insert(100);
  sql_before("select * from", "insert into " + table_.name + " values (" + joined(literals(200)) + ");");
  boundary().steps = {{4, SQLITE_DONE}};  // behind the count and the two rows
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(1, count_);
  EXPECT_EQ(Faults(), boundary().steps) << "the dropped row is stepped over";
  expect_record(100, record(0), GetParam().reads);
  EXPECT_EQ(Lines({counted(), trace(GetParam().reading), done(1)}), logged());
}

TEST_P(ProfileGetAll, LeavesZerosForRowsThatVanishAfterTheCount) {
  insert(100);
  insert(200);
  sql_before("select * from", "delete from " + table_.name + " where rowid = 2;");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(2, count_);
  expect_record(100, record(0), GetParam().reads);
  EXPECT_EQ(Bytes(table_.record_size), Bytes(record(1), record(2)));
  EXPECT_EQ(Lines({counted(), trace(GetParam().reading), done(2)}), logged());
}

TEST_P(ProfileGetAll, ReturnsTheCodeOfFinalize) {
  insert(100);
  boundary().finalizes = {{2, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, get_all());
  EXPECT_EQ(1, count_);
  logged();
}

TEST_P(ProfileGetAll, ReadsNullColumnsAsZeros) {
  sql("insert into " + table_.name + " (" + names()[0] + ") values (NULL);");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(Bytes(table_.record_size), Bytes(record(0), record(1)));
  logged();
}

TEST_P(ProfileGetAll, CutsTextsAtTheirWidth) {
  insert(100);
  insert(200);
  for (const Field& field : texts()) {
    sql("update " + table_.name + " set " + field.column + " = " + field.column + " || '" + std::string(5000, 'x') +
        "';");
  }
  EXPECT_EQ(0, get_all());
  for (const Field& read : GetParam().reads.empty() ? table_.fields : GetParam().reads) {
    const Texts columns = rows_of(std::string("select ") + read.column + " from " + table_.name + ";");
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (!read.is_text() && columns[i].size() > 5000) continue;  // a text that is read as a number
      EXPECT_EQ(read.is_text() ? columns[i].substr(0, read.width) : columns[i], member(record(i), read)) << read.column;
    }
  }
  logged();
}

TEST_P(ProfileGetOne, ReadsTheFirstRowOfItsKeys) {
  if (has_keys()) insert(200);
  insert(100);
  if (!has_keys()) insert(200);
  EXPECT_EQ(0, get());
  EXPECT_EQ(makes_record(), place_ != callers_.data());
  expect_record(100, place_, GetParam().reads, makes_record() ? '\0' : kBefore);
  EXPECT_EQ(Texts({GetParam().statement}), statements());
  EXPECT_EQ(std::vector<bool>({true}), boundary().tails);
  Lines lines = {trace(GetParam().reading)};
  if (!GetParam().done.empty()) lines.push_back(trace(GetParam().done));
  EXPECT_EQ(lines, logged());
}

TEST_P(ProfileGetOne, ReadsTheFirstOfTheRowsWithTheSameKeys) {
  sql("create table again as select * from " + table_.name + "; drop table " + table_.name +
      "; alter table again rename to " + table_.name + ";");  // without its unique columns
  insert(100);
  insert(200);
  for (std::size_t i = 0; i < names().size(); ++i) {
    if (is_key(table_.fields[i])) sql("update " + table_.name + " set " + names()[i] + " = " + literals(100)[i] + ";");
  }
  EXPECT_EQ(0, get());
  expect_record(100, place_, GetParam().reads, makes_record() ? '\0' : kBefore);
  logged();
}

TEST_P(ProfileGetOne, SaysThatItReadsBeforeTheStepOrBehindIt) {
  insert(100);
  boundary().while_logging = [] { boundary().steps = {{1, SQLITE_BUSY}}; };
  EXPECT_EQ(GetParam().says_reading_before_the_step ? 1 : 0, get());
  logged();
}

TEST_P(ProfileGetOne, MakesOneRecordOrFillsTheCallers) {
  insert(100);
  get();
  EXPECT_EQ(makes_record() ? 1 : 0, boundary().allocations);
  logged();
}

TEST_P(ProfileGetOne, WithoutAMatchReturnsOneAndWritesNothing) {
  if (has_keys()) insert(200);
  EXPECT_EQ(1, get());
  expect_nothing_written();
  EXPECT_EQ(lines_before_the_row(GetParam().no_row), logged());
}

TEST_P(ProfileGetOne, WhoseStepFailsReturnsOneAndWritesNothing) {
  insert(100);
  for (const int code : {SQLITE_BUSY, SQLITE_IOERR}) {
    boundary().steps = {{1, code}};
    EXPECT_EQ(1, get()) << code;
    expect_nothing_written();
    EXPECT_EQ(lines_before_the_row(GetParam().no_row), logged());
  }
}

TEST_P(ProfileGetOne, WithoutATableReturnsOneAndWritesNothing) {
  sql("drop table " + table_.name + ";");
  EXPECT_EQ(1, get());
  expect_nothing_written();
  EXPECT_EQ(Lines({no_such_table(table_.name)}), logged());
}

TEST_P(ProfileGetOne, WithoutAStatementReturnsOneAndWritesNothing) {
  boundary().miss_statement = 1;
  EXPECT_EQ(1, get());
  expect_nothing_written();
  EXPECT_EQ(Lines({trace(GetParam().no_statement)}), logged());
}

TEST_P(ProfileGetOne, AnswersOneOrSqlitesCodeWhenItDoesNotCompile) {
  insert(100);
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  EXPECT_EQ(GetParam().passes_codes_on ? SQLITE_INTERNAL : 1, get());
  expect_nothing_written();
  EXPECT_EQ(Lines({error("SQL Compilation error: not an error")}), logged());
}

TEST_P(ProfileGetOne, IgnoresTheCodeOfFinalize) {
  insert(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(0, get());
  logged();
}

TEST_P(ProfileGetOne, WithoutMemoryStoresNullAndLeavesTheStatementOpen) {
  if (!makes_record()) return;  // it asks for none, as MakesOneRecordOrFillsTheCallers proves
  insert(100);
  boundary().fail_allocation = 1;
  EXPECT_EQ(GetParam().without_memory, get());
  EXPECT_EQ(nullptr, place_);
  if (GetParam().tests_memory) {
    EXPECT_EQ(lines_before_the_row("Memory allocation error"), logged());
    expect_left_open(1);
  } else {
    EXPECT_EQ(Lines({trace(GetParam().reading)}), logged());
  }
}

TEST_P(ProfileGetOne, TakesKeysLiterally) {
  const std::string hostile = "it's %s%q '); --";
  Texts changes;
  Texts keys;
  for (const Field& field : table_.fields) {
    if (!is_key(field) || !field.is_text()) continue;
    changes.push_back(std::string(field.column) + " = 'it''s %s%q ''); --'");
    keys.push_back(hostile);
  }
  if (!table_.only_row.empty()) return;                              // its accessor takes no key
  if (keys.size() < GetParam().keys.size() || keys.empty()) return;  // numbers hold no quote
  insert(200);
  insert(100);
  sql("update " + table_.name + " set " + joined(changes) + " where " + names()[0] + " = " + literals(100)[0] + ";");
  EXPECT_EQ(0, get(keys));
  EXPECT_EQ(1u, statements().size());
  logged();
}

TEST_P(ProfileGetOne, CutsTextsAtTheirWidthAndNotBefore) {
  const std::vector<Field>& reads = GetParam().reads.empty() ? table_.fields : GetParam().reads;
  for (const Field& read : reads) {
    if (!read.is_text() || is_key(read)) continue;
    for (const std::size_t length : lengths_around(read.width)) {
      SCOPED_TRACE(std::string(read.column) + ": " + std::to_string(length));
      sql("delete from " + table_.name + ";");
      insert(100);
      const std::string text(length, 'x');
      sql("update " + table_.name + " set " + read.column + " = '" + text + "';");
      const std::string column = value_of(std::string("select ") + read.column + " from " + table_.name + ";");
      EXPECT_EQ(0, get());
      EXPECT_EQ(column.substr(0, read.width), member(place_, read));
      if (makes_record()) std::free(std::exchange(place_, callers_.data()));
    }
  }
  logged();
}

TEST_P(ProfileGetOne, ReadsNullColumnsAsZeros) {
  insert(100);
  for (const Field& field : table_.fields) {
    if (!is_key(field)) sql("update " + table_.name + " set " + field.column + " = NULL;");
  }
  EXPECT_EQ(0, get());
  for (const Field& read : GetParam().reads.empty() ? table_.fields : GetParam().reads) {
    if (is_key(read)) continue;
    EXPECT_EQ(read.is_text() ? "" : "0", member(place_, read)) << read.column;
  }
  logged();
}

TEST_P(ProfileSet, InsertsEveryMemberUnderItsColumn) {
  EXPECT_EQ(0, set(sample(100)));
  for (std::size_t i = 0; i < table_.fields.size(); ++i) {
    EXPECT_EQ(values(100)[i], stored(table_.fields[i])) << names()[i];
  }
  EXPECT_EQ(Texts({GetParam().insert}), statements());
  EXPECT_EQ(Lines({trace(GetParam().done)}), logged());
}

TEST_P(ProfileSet, UpdatesTheRowOfItsKeyAndNoOther) {
  insert(100);
  insert(200);
  Bytes record = sample(300);
  Texts expected = values(GetParam().update_is_rejected ? 100 : 300);
  for (std::size_t i = 0; i < table_.fields.size(); ++i) {
    if (!is_key(table_.fields[i])) continue;
    expected[i] = values(100)[i];
    put(record, table_.fields[i], expected[i]);
  }
  EXPECT_EQ(0, set(record));
  EXPECT_EQ(Texts({joined(expected, "|"), joined(values(200), "|")}), rows_of("select * from " + table_.name + ";"));
  EXPECT_EQ(lines_of_an_update(), logged());
}

TEST_P(ProfileSet, UpdateIsGivenToSqliteAsItIsWritten) {
  insert(100);
  EXPECT_EQ(0, set(sample(100)));
  EXPECT_EQ(Texts({GetParam().insert, GetParam().update}), statements());
  EXPECT_EQ(lines_of_an_update(), logged());
}

TEST_P(ProfileSet, DoublesTheQuotesOfEveryTextInBothStatements) {
  const std::string insert = with_quotes(GetParam().insert);
  set(sample_with_quotes(100));
  set(sample_with_quotes(100));
  EXPECT_EQ(Texts({insert, insert, with_quotes(GetParam().update)}), statements());
  logged();
}

TEST_P(ProfileSet, IgnoresAFailingUpdate) {
  insert(100);
  boundary().execs = {{2, SQLITE_IOERR}};
  EXPECT_EQ(0, set(sample(100)));
  EXPECT_EQ(Lines({execution_failed(), trace(GetParam().present), execution_failed(), trace(GetParam().done)}),
            logged());
}

TEST_P(ProfileSet, ThatFailsForAnotherReasonReturnsZeroAndTracesSuccess) {
  sql("drop table " + table_.name + ";");
  EXPECT_EQ(0, set(sample(100)));
  EXPECT_EQ(Texts({GetParam().insert}), statements());
  EXPECT_EQ(Lines({execution_failed(), trace(GetParam().done)}), logged());
}

TEST_P(ProfileSet, TakesNoOtherCodeThanNineteenForAKeyThatExists) {
  insert(100);
  sqlite3_extended_result_codes(db, 1);  // SQLITE_CONSTRAINT_UNIQUE
  EXPECT_EQ(0, set(sample(100)));
  EXPECT_EQ(Texts({GetParam().insert}), statements());
  EXPECT_EQ(Lines({execution_failed(), trace(GetParam().done)}), logged());
}

TEST_P(ProfileSet, ReadsFullTextsNoFurtherThanTheirWidth) {
  Bytes record = sample(100);
  for (const char letter : {'i', 'u'}) {  // as inserted, as updated
    for (const Field& field : texts()) {
      if (letter == 'i' || !is_key(field)) put(record, field, std::string(field.width, letter));
    }
    EXPECT_EQ(0, set(record));
    for (const Field& field : texts()) {
      const bool is_new = letter == 'u' && !is_key(field) && !GetParam().update_is_rejected;
      EXPECT_EQ(std::string(field.width, is_new ? 'u' : 'i'), stored(field)) << letter << " " << field.column;
    }
    EXPECT_EQ("1", value_of("select count(*) from " + table_.name + ";"));
  }
  logged();
}

TEST_P(ProfileSet, TakesTextsLiterally) {
  const std::string quotes = "'%s%q '); drop table x; --";
  Bytes record = sample(100);
  for (const std::string first : {"i", "u"}) {  // as inserted, as updated
    for (const Field& field : texts()) {
      if (first == "i" || !is_key(field)) put(record, field, first + quotes);
    }
    EXPECT_EQ(0, set(record));
    for (const Field& field : texts()) {
      const bool is_new = first == "u" && !is_key(field) && !GetParam().update_is_rejected;
      EXPECT_EQ((is_new ? "u" : "i") + quotes, stored(field)) << first << " " << field.column;
    }
  }
  logged();
}

TEST_P(ProfileSet, KeepsTheSmallestAndTheLargestNumber) {
  for (const char* const number : {"-2147483648", "2147483647", "-1"}) {
    sql("delete from " + table_.name + ";");
    Bytes record = sample(100);
    for (const Field& field : numbers()) put(record, field, number);
    EXPECT_EQ(0, set(record));
    for (const Field& field : numbers()) EXPECT_EQ(number, stored(field)) << field.column;
  }
  logged();
}

}  // namespace qmv::test
