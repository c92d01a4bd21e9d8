// Where event indications go and which events they carry: destinations, filters and subscriptions.
#include "qmv/indications.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "support/table_test.h"

namespace qmv::test {
namespace {

// What the accessors of one table do and say, on row 100.
struct IndicationTable {
  RecordTable table;
  std::vector<Field> keys;
  std::vector<Field> values;  // the other members
  std::int32_t (*count)(sqlite3* db, std::int32_t* count);
  std::function<std::int32_t(sqlite3* db, void* record)> get;
  std::function<std::int32_t(sqlite3* db, void** place, std::int32_t* count)> get_all;
  std::function<std::int32_t(sqlite3* db, const void* record)> set;

  std::string select;
  std::string no_statement;
  std::string no_row;
  std::int32_t without_memory;
  std::string insert;
  Texts updates;
  std::string was_set;
  std::int32_t after_failed_insert;
};

void PrintTo(const IndicationTable& one, std::ostream* out) {
  *out << one.table.name;
}

template <class Record>
std::function<std::int32_t(sqlite3*, void*)> get_of(std::int32_t (*get)(sqlite3*, Record*)) {
  return [get](sqlite3* db, void* record) { return get(db, static_cast<Record*>(record)); };
}

template <class Record>
auto get_all_of(std::int32_t (*get_all)(sqlite3*, Record**, std::int32_t*)) {
  return [get_all](sqlite3* db, void** place, std::int32_t* count) {
    auto* records = place == nullptr ? nullptr : static_cast<Record*>(*place);
    const std::int32_t status = get_all(db, place == nullptr ? nullptr : &records, count);
    if (place != nullptr) *place = records;
    return status;
  };
}

template <class Record>
std::function<std::int32_t(sqlite3*, const void*)> set_of(std::int32_t (*set)(sqlite3*, const Record*)) {
  return [set](sqlite3* db, const void* record) { return set(db, static_cast<const Record*>(record)); };
}

IndicationTable destinations() {
  using Record = listener_destination_rec;
  static_assert(sizeof(Record) == 256 + 256);
  return {
      .table = {"listener_destination", sizeof(Record), {FIELD(Name), FIELD(Destination)}, "Name"},
      .keys = {FIELD(Name)},
      .values = {FIELD(Destination)},
      .count = db_get_listener_destination_cnt,
      .get = get_of(db_get_listener_destination),
      .get_all = get_all_of(db_get_all_listener_destination),
      .set = set_of(db_set_listener_destination),
      .select = "select * from listener_destination where Name='t100';",
      .no_statement = "Fail to get ListsnerDestination record. SQLite stmt is NULL",
      .no_row = "Fail to get the Listener Destination record / record not found \n",
      .without_memory = 0,
      .insert = "insert into listener_destination values('t100','t101');",
      .updates = {"update listener_destination set Destination='t101' where Name='t100';"},
      .was_set = "Successfully updated the Listener destination record",
      .after_failed_insert = 1,
  };
}

IndicationTable filters() {
  using Record = indication_filter_rec;
  static_assert(sizeof(Record) == 256 + 512 + 3 * 4);
  return {
      .table = {"indication_filter",
                sizeof(Record),
                {FIELD(Name), FIELD(Query), FIELD(SensorNumMask), FIELD(SensorTypeMask), FIELD(SeverityMask)},
                "Name"},
      .keys = {FIELD(Name)},
      .values = {FIELD(Query), FIELD(SensorNumMask), FIELD(SensorTypeMask), FIELD(SeverityMask)},
      .count = db_get_indication_filter_cimxml_cnt,
      .get = get_of(db_get_indication_filter_cimxml),
      .get_all = get_all_of(db_get_all_indication_filter_cimxml),
      .set = set_of(db_set_indication_filter_cimxml),
      .select = "select * from indication_filter where Name='t100';",
      .no_statement = "Fail to get Indication Filter record. SQLite stmt is NULL",
      .no_row = "Fail to get the Indication Filter record / record not found \n",
      .without_memory = 0,
      .insert = "insert into indication_filter values('t100','t101',102,103,104);",
      .updates =
          {"update indication_filter set Query='t101',SensorNumMask=102,SensorTypeMask=103,SeverityMask=104 where "
           "Name='t100';",
           "update indication_subscription set EventSeverity=104,SensorNum=102,SensorType=103 where "
           "FilterName='t100';"},
      .was_set = "Successfully updated the Listener destination record",  // the destination's words
      .after_failed_insert = 1,
  };
}

IndicationTable subscriptions() {
  using Record = indication_subscription_rec;
  static_assert(sizeof(Record) == 256 + 256 + 4 * 4);
  return {
      .table = {"indication_subscription",
                sizeof(Record),
                {FIELD(DestName), FIELD(FilterName), FIELD(EventSeverity), FIELD(SensorNum), FIELD(SensorType),
                 FIELD(Enabled)},
                "DestName, FilterName"},
      .keys = {FIELD(DestName), FIELD(FilterName)},
      .values = {FIELD(EventSeverity), FIELD(SensorNum), FIELD(SensorType), FIELD(Enabled)},
      .count = db_get_indication_subscription_cnt,
      .get = get_of(db_get_indication_subscription),
      .get_all = get_all_of(db_get_all_indication_subscription),
      .set = set_of(db_set_indication_subscription),
      .select = "select * from indication_subscription where FilterName='t101' and DestName='t100';",
      .no_statement = "Fail to get indication subscription record. SQLite stmt is NULL",
      .no_row = "Fail to get the indication subscription record / record not found \n",
      .without_memory = 1,
      .insert = "insert into indication_subscription values('t100','t101',102,103,104,105);",
      .updates = {"update indication_subscription set EventSeverity=102,SensorNum=103,SensorType=104,Enabled=105 where "
                  "DestName='t100' and FilterName = 't101';"},
      .was_set = "Successfully updated the indication_subscription record",
      .after_failed_insert = 0,
  };
}

constexpr char kSubscriptions[] =
    "create table if not exists indication_subscription (DestName text, FilterName text, EventSeverity integer, "
    "SensorNum integer, SensorType integer, Enabled integer, unique (DestName, FilterName));";

class Indications : public TableTest, public testing::WithParamInterface<IndicationTable> {
 protected:
  Indications() : TableTest("db_dynamic_instance.c", GetParam().table) {}

  void SetUp() override {
    TableTest::SetUp();
    sql(kSubscriptions);  // which an existing filter is pushed into
  }

  // A record that holds these keys, and bytes that are not zero elsewhere.
  Bytes keys_of(int first) const {
    Bytes record(table().record_size, kBefore);
    const Bytes row = sample(first);
    for (const Field& key : GetParam().keys) {
      std::strcpy(record.data() + key.offset, row.data() + key.offset);
    }
    return record;
  }

  std::int32_t get(Bytes& record) { return GetParam().get(db, record.data()); }
  std::int32_t get_all() { return GetParam().get_all(db, records.out(), &count); }
  std::int32_t set(const Bytes& record) { return GetParam().set(db, record.data()); }

  void expect_members(int first, const void* record, const std::vector<Field>& fields) const {
    const Texts expected = values(first);
    for (std::size_t i = 0; i < expected.size(); ++i) {
      for (const Field& each : fields) {
        if (each.offset != table().fields[i].offset) continue;
        EXPECT_EQ(expected[i], member(record, each)) << each.column;
      }
    }
  }

  void expect_outs_untouched() {
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(-1, count);
  }

  const RecordTable& table() const { return GetParam().table; }
  std::string select_count() const { return "select count(*) from " + table().name + ";"; }
  std::string select_all() const { return "select * from " + table().name + ";"; }
  std::string drop() const { return "drop table " + table().name + ";"; }
  LogLine counted(int rows) const { return trace("Successfully returned count " + std::to_string(rows)); }
  LogLine present() const { return trace("the record is already present with that key"); }
  LogLine was_set() const { return trace(GetParam().was_set); }

  static constexpr char kBefore = '\x55';
  std::int32_t count = -1;
  OwnedRecords records{GetParam().table};
};

INSTANTIATE_TEST_SUITE_P(Each, Indications, testing::Values(destinations(), filters(), subscriptions()),
                         [](const auto& one) { return one.param.table.name; });

TEST_P(Indications, CountReturnsTheNumberOfRows) {
  insert(100);
  insert(200);
  EXPECT_EQ(0, GetParam().count(db, &count));
  EXPECT_EQ(2, count);
  EXPECT_EQ(Texts({select_count()}), statements());
  EXPECT_EQ(Lines({counted(2)}), logged());
}

TEST_P(Indications, CountWithoutATableReturnsOneWithTheCountCleared) {
  sql(drop());
  EXPECT_EQ(1, GetParam().count(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table(table().name)}), logged());
}

TEST_P(Indications, CountWithoutAStatementIsZero) {
  boundary().miss_statement = 1;
  EXPECT_EQ(0, GetParam().count(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_P(Indications, CountWithoutARowReturnsTheStepsCodeInItsOwnWords) {
  insert(100);
  boundary().steps = {{1, SQLITE_DONE}};
  EXPECT_EQ(SQLITE_DONE, GetParam().count(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No Records Found")}), logged());
  expect_left_open(1);
}

TEST_P(Indications, CountReturnsTheCodeOfFinalize) {
  insert(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, GetParam().count(db, &count));
  EXPECT_EQ(1, count);
  EXPECT_EQ(Lines({counted(1)}), logged());
}

TEST_P(Indications, GetFillsAllMembersButTheKeys) {
  insert(200);
  insert(100);
  Bytes record = keys_of(100);
  Bytes expected = record;
  for (const Field& each : GetParam().values) put(expected, each, member(sample(100), each));
  EXPECT_EQ(0, get(record));
  EXPECT_EQ(expected, record);
  EXPECT_EQ(Texts({select_count(), GetParam().select}), statements());
  EXPECT_EQ(Lines({counted(2)}), logged());
  EXPECT_EQ(0, boundary().allocations);
}

TEST_P(Indications, GetReadsNullAsZeros) {
  insert(100);
  Bytes record = keys_of(100);
  for (const Field& each : GetParam().values) sql("update " + table().name + " set " + each.column + " = NULL;");
  EXPECT_EQ(0, get(record));
  for (const Field& each : GetParam().values) {
    EXPECT_EQ(std::string(each.width, '\0'), std::string(&record[each.offset], each.width)) << each.column;
  }
  logged();
}

TEST_P(Indications, GetReadsKeysUpToTheirWidthAndQuotesAsTheyAre) {
  insert(100);
  Bytes record = keys_of(100);
  char letter = 'a';
  for (const Field& key : GetParam().keys) {
    const std::string text = "'" + std::string(key.width - 1, letter++);
    put(record, key, text);
    sql("update " + table().name + " set " + key.column + " = '" + "'" + text + "';");
  }
  EXPECT_EQ(0, get(record));
  expect_members(100, record.data(), GetParam().values);
  logged();
}

TEST_P(Indications, GetOfAnEmptyTableReturnsOneAndSaysNothing) {
  Bytes record = keys_of(100);
  const Bytes before = record;
  EXPECT_EQ(1, get(record));
  EXPECT_EQ(before, record);
  EXPECT_EQ(Texts({select_count()}), statements());
  EXPECT_EQ(Lines({counted(0)}), logged());
}

TEST_P(Indications, GetOfATableThatCannotBeCountedReturnsOneAndSaysNothing) {
  insert(100);
  Bytes record = keys_of(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(1, get(record));
  EXPECT_EQ(keys_of(100), record);
  EXPECT_EQ(Lines({counted(1)}), logged());
}

TEST_P(Indications, GetWithoutAMatchReturnsOneAndLeavesTheRecord) {
  insert(200);
  Bytes record = keys_of(100);
  EXPECT_EQ(1, get(record));
  EXPECT_EQ(keys_of(100), record);
  EXPECT_EQ(Lines({counted(1), trace(GetParam().no_row)}), logged());
}

TEST_P(Indications, GetWhoseStepFailsReturnsOneAndLeavesTheRecord) {
  insert(100);
  Bytes record = keys_of(100);
  boundary().steps = {{2, SQLITE_BUSY}};  // the first is the count's
  EXPECT_EQ(1, get(record));
  EXPECT_EQ(keys_of(100), record);
  EXPECT_EQ(Lines({counted(1), trace(GetParam().no_row)}), logged());
}

TEST_P(Indications, GetMatchesEveryKey) {
  insert(100);
  for (const Field& key : GetParam().keys) {
    Bytes record = keys_of(100);
    put(record, key, "other");
    EXPECT_EQ(1, get(record)) << key.column;
  }
  logged();
}

TEST_P(Indications, GetWithoutAStatementReturnsOne) {
  insert(100);
  Bytes record = keys_of(100);
  boundary().miss_statement = 2;
  EXPECT_EQ(1, get(record));
  EXPECT_EQ(keys_of(100), record);
  EXPECT_EQ(Lines({counted(1), trace(GetParam().no_statement)}), logged());
}

TEST_P(Indications, GetThatDoesNotCompileReturnsOne) {
  insert(100);
  Bytes record = keys_of(100);
  sql_before("select * from", drop());
  EXPECT_EQ(1, get(record));
  EXPECT_EQ(keys_of(100), record);
  EXPECT_EQ(Lines({counted(1), no_such_table(table().name)}), logged());
}

TEST_P(Indications, GetAllReadsEveryColumnOfEveryRow) {
  insert(100);
  insert(200);
  EXPECT_EQ(0, get_all());
  ASSERT_EQ(2, count);
  expect_members(100, records[0], table().fields);
  expect_members(200, records[1], table().fields);
  EXPECT_EQ(Texts({select_count(), select_all()}), statements());
  EXPECT_EQ(Lines({counted(2)}), logged());
}

TEST_P(Indications, GetAllWithoutAnOutReturnsOneAndDoesNothing) {
  insert(100);
  EXPECT_EQ(1, GetParam().get_all(db, nullptr, &count));
  EXPECT_EQ(1, GetParam().get_all(db, records.out(), nullptr));
  expect_outs_untouched();
  EXPECT_EQ(Texts(), statements());
}

TEST_P(Indications, GetAllOfATableThatCannotBeCountedReturnsOne) {
  sql(drop());
  EXPECT_EQ(1, get_all());
  expect_outs_untouched();
  EXPECT_EQ(Lines({no_such_table(table().name)}), logged());
}

TEST_P(Indications, GetAllReturnsOneWhateverSqliteAnswers) {
  insert(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(1, get_all()) << "the count";
  expect_outs_untouched();
  boundary().prepares = {{2, SQLITE_INTERNAL}};
  EXPECT_EQ(1, get_all()) << "the rows";
  EXPECT_EQ(Lines({counted(1), counted(1), error("SQL Compilation error: not an error")}), logged());
}

TEST_P(Indications, GetAllEndsAtTheFirstStepThatIsNoRow) {
  insert(100);
  insert(200);
  boundary().steps = {{3, SQLITE_BUSY}};  // the first is the count's
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(2, count);
  expect_members(100, records[0], table().fields);
  EXPECT_EQ(Bytes(table().record_size), Bytes(records[1], records[2]));
  EXPECT_EQ(Lines({counted(2)}), logged());
}

TEST_P(Indications, GetAllOfAnEmptyTableLeavesBothOuts) {
  char untouched = 0;
  void* place = &untouched;
  EXPECT_EQ(0, GetParam().get_all(db, &place, &count));
  EXPECT_EQ(&untouched, place);
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({counted(0)}), logged());
}

TEST_P(Indications, GetAllWithoutMemoryIsAFailureOfSubscriptionsOnly) {
  insert(100);
  boundary().fail_allocation = 1;
  char untouched = 0;
  void* place = &untouched;
  EXPECT_EQ(GetParam().without_memory, GetParam().get_all(db, &place, &count));
  EXPECT_EQ(nullptr, place);
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Texts({select_count()}), statements()) << "the array comes before the statement";
  EXPECT_EQ(Lines({counted(1), trace("Memory allocation error")}), logged());
}

TEST_P(Indications, GetAllThatDoesNotCompileReturnsOneWithItsArray) {
  insert(100);
  sql_before("select * from", drop());
  EXPECT_EQ(1, get_all());
  EXPECT_FALSE(records.empty());
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({counted(1), no_such_table(table().name)}), logged());
}

TEST_P(Indications, GetAllWithoutAStatementReturnsOneAsIfItDidNotCompile) {
  insert(100);
  boundary().miss_statement = 2;
  EXPECT_EQ(1, get_all());
  EXPECT_FALSE(records.empty());
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Lines({counted(1), error("SQL Compilation error: not an error")}), logged());
}

// So many that they would not fit behind the array unnoticed.
TEST_P(Indications, GetAllStepsOverRowsThatAppearAfterTheCount) {
  insert(100);
  Texts later = literals(200);
  later[0] = "i";
  sql_before("select * from",
             "with recursive n (i) as (values (1) union all select i + 1 from n where i < 2000) insert into " +
                 table().name + " select " + joined(later) + " from n;");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(1, count);
  expect_members(100, records[0], table().fields);
  logged();
}

TEST_P(Indications, GetAllLeavesZerosForRowsThatVanishAfterTheCount) {
  insert(100);
  insert(200);
  sql_before("select * from", "delete from " + table().name + " where rowid = 2;");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(2, count);
  EXPECT_EQ(std::string(table().record_size, '\0'), std::string(records[1], table().record_size));
  logged();
}

TEST_P(Indications, GetAllReadsNullsAsZeros) {
  sql("insert into " + table().name + " (rowid) values (1);");
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(std::string(table().record_size, '\0'), std::string(records[0], table().record_size));
  logged();
}

TEST_P(Indications, GetAllReturnsZeroWhateverFinalizeReturns) {
  insert(100);
  boundary().finalizes = {{2, SQLITE_IOERR}};
  EXPECT_EQ(0, get_all());
  EXPECT_EQ(1, count);
  logged();
}

TEST_P(Indications, TextsAreCutAtTheWidthOfTheirFieldAndNotBefore) {
  insert(100);
  for (const Field& each : texts()) {
    for (const int over : {-1, 0, 1}) {
      const std::string text(each.width + static_cast<std::size_t>(over), 'x');
      sql("delete from " + table().name + ";");
      insert(100);
      sql("update " + table().name + " set " + each.column + " = '" + text + "';");
      OwnedRecords all(table());
      EXPECT_EQ(0, GetParam().get_all(db, all.out(), &count));
      for (const Field& other : table().fields) {
        const std::string expected = other.offset == each.offset ? text.substr(0, each.width) : stored(other);
        EXPECT_EQ(expected, member(all[0], other)) << other.column;
      }
    }
  }
  logged();
}

TEST_P(Indications, SetInsertsEveryMemberUnderItsColumn) {
  EXPECT_EQ(0, set(sample(100)));
  for (std::size_t i = 0; i < table().fields.size(); ++i) EXPECT_EQ(values(100)[i], stored(table().fields[i]));
  EXPECT_EQ(Texts({GetParam().insert}), statements());
  EXPECT_EQ(Lines({was_set()}), logged());
}

TEST_P(Indications, SetUpdatesTheRowWithTheSameKey) {
  insert(100);
  insert(200);
  for (const Field& each : GetParam().values) sql("update " + table().name + " set " + each.column + " = 7;");
  EXPECT_EQ(0, set(sample(100)));
  for (std::size_t i = 0; i < table().fields.size(); ++i) {
    EXPECT_EQ(values(100)[i], stored(table().fields[i], " where rowid = 1"));
  }
  for (const Field& each : GetParam().values) EXPECT_EQ("7", stored(each, " where rowid = 2")) << "another row";
  Texts expected = GetParam().updates;
  expected.insert(expected.begin(), GetParam().insert);
  EXPECT_EQ(expected, statements());
  EXPECT_EQ(Lines({execution_failed(), present(), was_set()}), logged());
}

TEST_P(Indications, SetThatCannotInsertFailsButForSubscriptions) {
  Lines expected = {execution_failed()};
  if (GetParam().after_failed_insert == 0) expected.push_back(was_set());
  for (const int code : {SQLITE_ERROR, SQLITE_BUSY, SQLITE_FULL}) {
    boundary().execs = {{1, code}};
    EXPECT_EQ(GetParam().after_failed_insert, set(sample(100))) << code;
    EXPECT_EQ(Texts({GetParam().insert}), statements());
    EXPECT_EQ(expected, logged());
  }
}

TEST_P(Indications, SetIgnoresUpdatesThatFail) {
  insert(100);
  Lines expected = {execution_failed(), present()};
  for (std::size_t i = 0; i < GetParam().updates.size(); ++i) {
    boundary().execs[static_cast<int>(i) + 2] = SQLITE_FULL;
    expected.push_back(execution_failed());
  }
  expected.push_back(was_set());
  EXPECT_EQ(0, set(sample(100)));
  EXPECT_EQ(GetParam().updates.back(), statements().back()) << "each is tried";
  EXPECT_EQ(expected, logged());
}

TEST_P(Indications, SetReadsTextsUpToTheirWidthAndQuotesAsTheyAre) {
  Bytes record = sample(100);
  for (const Field& each : texts()) put(record, each, "'" + std::string(each.width - 1, 'x'));
  record.insert(record.end(), {'x', '\0'});  // what stands behind it is not read
  for (const char* way : {"insert", "update"}) {
    SCOPED_TRACE(way);
    EXPECT_EQ(0, set(record));
    for (const Field& each : table().fields) EXPECT_EQ(member(record, each), stored(each)) << each.column;
    for (const Field& each : GetParam().values) sql("update " + table().name + " set " + each.column + " = NULL;");
  }
  EXPECT_EQ("1", value_of("select count(*) from " + table().name + ";"));
  logged();
}

// What the three tables do to each other: two destinations, two filters, and each with each subscribed.
class IndicationReferences : public DatabaseTest {
 protected:
  IndicationReferences() : DatabaseTest("db_dynamic_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql(kSubscriptions);
    sql("create table listener_destination (Name text unique, Destination text);"
        "create table indication_filter (Name text unique, Query text, SensorNumMask integer, SensorTypeMask integer, "
        "SeverityMask integer);"
        "insert into listener_destination values ('d''1', 'http://1'), ('d2', 'http://2');"
        "insert into indication_filter values ('f''1', '', 0, 0, 0), ('f2', '', 0, 0, 0);"
        "insert into indication_subscription select d.Name, f.Name, 7, 8, 9, 1 from listener_destination d, "
        "indication_filter f order by d.rowid, f.rowid;");
  }

  Texts destinations() { return rows_of("select Name from listener_destination;"); }
  Texts filters() { return rows_of("select Name from indication_filter;"); }
  Texts subscriptions() { return rows_of("select DestName, FilterName from indication_subscription;"); }
};

TEST_F(IndicationReferences, ExistingFilterIsPushedIntoItsSubscriptions) {
  indication_filter_rec filter{{}, {}, 1, 2, 4};
  put(filter.Name, "f'1");
  EXPECT_EQ(0, db_set_indication_filter_cimxml(db, &filter));
  EXPECT_EQ(Texts({"d'1|f'1|4|1|2|1", "d'1|f2|7|8|9|1", "d2|f'1|4|1|2|1", "d2|f2|7|8|9|1"}),
            rows_of("select DestName, FilterName, EventSeverity, SensorNum, SensorType, Enabled from "
                    "indication_subscription;"));
  logged();
}

TEST_F(IndicationReferences, PushTakesAFilterNameOfTheWholeWidth) {
  indication_filter_rec filter{{}, {}, 1, 2, 4};
  put(filter.Name, std::string(256, 'f'));
  put(filter.Query, "not read as a part of the name");
  sql("update indication_filter set Name = '" + std::string(256, 'f') +
      "' where Name = 'f2'; update indication_subscription set FilterName = '" + std::string(256, 'f') +
      "' where FilterName = 'f2';");
  EXPECT_EQ(0, db_set_indication_filter_cimxml(db, &filter));
  EXPECT_EQ(Texts({"7", "4", "7", "4"}), rows_of("select EventSeverity from indication_subscription order by rowid;"));
  logged();
}

TEST_F(IndicationReferences, NewFilterIsNotPushed) {
  sql("delete from indication_filter;");
  indication_filter_rec filter{{}, {}, 1, 2, 4};
  put(filter.Name, "f'1");
  EXPECT_EQ(0, db_set_indication_filter_cimxml(db, &filter));
  EXPECT_EQ("7", value_of("select EventSeverity from indication_subscription;"));
  EXPECT_EQ(Lines({trace("Successfully updated the Listener destination record")}), logged());
}

TEST_F(IndicationReferences, DestinationIsDeletedWithItsSubscriptions) {
  EXPECT_EQ(0, db_delete_listener_destination(db, "d'1"));
  EXPECT_EQ(Texts({"delete from listener_destination where Name='d''1';",
                   "delete from indication_subscription where DestName='d''1';"}),
            statements());
  EXPECT_EQ(Texts({"d2"}), destinations());
  EXPECT_EQ(Texts({"f'1", "f2"}), filters());
  EXPECT_EQ(Texts({"d2|f'1", "d2|f2"}), subscriptions());
}

TEST_F(IndicationReferences, FilterIsDeletedWithItsSubscriptions) {
  EXPECT_EQ(0, db_delete_indication_filter_cimxml(db, "f'1"));
  EXPECT_EQ(Texts({"delete from indication_filter where Name='f''1';",
                   "delete from indication_subscription where FilterName='f''1';"}),
            statements());
  EXPECT_EQ(Texts({"d'1", "d2"}), destinations());
  EXPECT_EQ(Texts({"f2"}), filters());
  EXPECT_EQ(Texts({"d'1|f2", "d2|f2"}), subscriptions());
}

TEST_F(IndicationReferences, SubscriptionsOfWhatDoesNotExistAreDeletedToo) {
  sql("delete from listener_destination; delete from indication_filter;");
  EXPECT_EQ(0, db_delete_listener_destination(db, "d'1"));
  EXPECT_EQ(0, db_delete_indication_filter_cimxml(db, "f'1"));
  EXPECT_EQ(Texts({"d2|f2"}), subscriptions());
}

TEST_F(IndicationReferences, SubscriptionIsDeletedByFilterAndDestination) {
  EXPECT_EQ(0, db_delete_indication_subscription(db, "f'1", "d'1"));
  EXPECT_EQ(Texts({"delete from indication_subscription where FilterName='f''1' and DestName='d''1';"}), statements());
  EXPECT_EQ(Texts({"d'1|f2", "d2|f'1", "d2|f2"}), subscriptions());
}

TEST_F(IndicationReferences, SubscriptionsOfAFilterAreDeletedWithoutIt) {
  EXPECT_EQ(0, db_delete_indication_subscription_for_filter(db, "f'1"));
  EXPECT_EQ(Texts({"delete from indication_subscription where FilterName='f''1';"}), statements());
  EXPECT_EQ(Texts({"f'1", "f2"}), filters());
  EXPECT_EQ(Texts({"d'1|f2", "d2|f2"}), subscriptions());
}

TEST_F(IndicationReferences, DeletersReturnOneForANullName) {
  EXPECT_EQ(1, db_delete_listener_destination(db, nullptr));
  EXPECT_EQ(1, db_delete_indication_filter_cimxml(db, nullptr));
  EXPECT_EQ(1, db_delete_indication_subscription(db, nullptr, "d2"));
  EXPECT_EQ(1, db_delete_indication_subscription(db, "f2", nullptr));
  EXPECT_EQ(1, db_delete_indication_subscription_for_filter(db, nullptr));
  EXPECT_EQ(Texts(), statements());
}

// Deletes fail with any code.
class FailingDeletes : public IndicationReferences, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(With, FailingDeletes, testing::Values(SQLITE_ERROR, SQLITE_BUSY, SQLITE_FULL));

TEST_P(FailingDeletes, OfARowReturnOneAndKeepItsSubscriptions) {
  boundary().execs = {{1, GetParam()}, {2, GetParam()}};
  EXPECT_EQ(1, db_delete_listener_destination(db, "d2"));
  EXPECT_EQ(1, db_delete_indication_filter_cimxml(db, "f2"));
  EXPECT_EQ(4u, subscriptions().size());
  EXPECT_EQ(Lines({execution_failed(), execution_failed()}), logged());
}

TEST_P(FailingDeletes, OfSubscriptionsReturnOne) {
  boundary().execs = {{2, GetParam()}, {4, GetParam()}, {5, GetParam()}, {6, GetParam()}};
  EXPECT_EQ(1, db_delete_listener_destination(db, "d2"));
  EXPECT_EQ(1, db_delete_indication_filter_cimxml(db, "f2"));
  EXPECT_EQ(1, db_delete_indication_subscription(db, "f2", "d2"));
  EXPECT_EQ(1, db_delete_indication_subscription_for_filter(db, "f2"));
  EXPECT_EQ(Texts({"d'1"}), destinations());
  EXPECT_EQ(Texts({"f'1"}), filters());
  EXPECT_EQ(4u, subscriptions().size());
  EXPECT_EQ(Lines(4, execution_failed()), logged());
}

}  // namespace
}  // namespace qmv::test
