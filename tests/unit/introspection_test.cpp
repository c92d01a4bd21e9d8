// Reading files without knowing their schema. Nothing here is logged.
#include <algorithm>
#include <cstring>
#include <string>

#include "qmv/assoc.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

constexpr char kMissing[] = "/nonexistent/file.db";
constexpr char kSelectTables[] = "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name;";

// A file of the test's own, of which the library is given the path.
class Introspection : public DatabaseTest {
 protected:
  Introspection() : DatabaseTest("") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    path = scratch() + "/file.db";
    file = open(path);
    make("pragma synchronous = off;");
  }

  void TearDown() override {
    EXPECT_EQ(0, free_column_names(names));
    DatabaseTest::TearDown();
  }

  void make(const std::string& text) { sql(file.get(), text); }

  // What another process does to the file right before the library prepares a statement that begins so.
  void make_before(const std::string& statement, const std::string& text) {
    boundary().change_before = statement;
    boundary().change = [this, text] { make(text); };
  }

  // Whether another process could write the file now.
  bool can_be_written() {
    return __real_sqlite3_exec(file.get(), "create table written (a); drop table written;", nullptr, nullptr,
                               nullptr) == SQLITE_OK;
  }

  std::int32_t get_names(const std::string& table) { return GetColumnNames(&names, path.c_str(), table.c_str()); }
  Texts listed() const {
    Texts all;
    for (const column_name_node* node = names; node != nullptr; node = node->Next) {
      all.push_back(field(node->ColumnName));
    }
    return all;
  }

  std::int32_t get_value(const std::string& column, const std::string& table = "t", int row = 1) {
    return GetColumnValues(path.c_str(), value, column.c_str(), table.c_str(), row);
  }

  std::string path;
  Connection file;
  column_name_node* names = nullptr;
  char value[256] = "untouched";
};

TEST_F(Introspection, RowsOfATableAreCounted) {
  sql("create table t (a); insert into t values (1), (2), (NULL);");
  EXPECT_EQ(3, get_row_count(db, "t"));
  EXPECT_EQ(Texts({"SELECT Count(*) FROM  t;"}), statements());
}

TEST_F(Introspection, TableThatDoesNotExistHasNoRows) {
  EXPECT_EQ(0, get_row_count(db, "t"));
  EXPECT_EQ(0, get_row_count(db, "t; drop"));
  EXPECT_EQ(0, get_row_count(db, "it's"));
  EXPECT_EQ("SELECT Count(*) FROM  it''s;", statements().back());
  boundary().fail_text = 1;
  EXPECT_EQ(0, get_row_count(db, "t"));
}

TEST_F(Introspection, RowsOfAStatementAreCountedByStepping) {
  sqlite3_stmt* statement = nullptr;
  ASSERT_EQ(SQLITE_OK, sqlite3_prepare_v2(db, "select 1 union select 2 union select 3;", -1, &statement, nullptr));
  EXPECT_EQ(3, get_table_count(statement));
  boundary().steps = {{1, SQLITE_ROW}, {2, SQLITE_ROW}, {3, SQLITE_BUSY}};
  EXPECT_EQ(2, get_table_count(statement)) << "up to the first step that is no row";
  EXPECT_EQ(SQLITE_OK, __real_sqlite3_finalize(statement)) << "it was left to its owner";
}

TEST_F(Introspection, RowsOfAStatementAreCountedWithoutResettingIt) {
  sqlite3_stmt* statement = nullptr;
  ASSERT_EQ(SQLITE_OK, sqlite3_prepare_v2(db, "select 1 union select 2;", -1, &statement, nullptr));
  boundary().steps = {{2, SQLITE_BUSY}};
  EXPECT_EQ(1, get_table_count(statement));
  EXPECT_NE(0, sqlite3_stmt_busy(statement)) << "it stands on the first row";
  EXPECT_EQ(1, get_table_count(statement)) << "the second row";
  __real_sqlite3_finalize(statement);
}

class Plugins : public Introspection {
 protected:
  void SetUp() override {
    Introspection::SetUp();
    make("create table association_reg (a, b, c, d);");
  }

  std::int32_t load() { return load_plugins(records.out(), &count, path.c_str()); }

  Texts fields(std::size_t i) const {
    return {field(records[i].RegColumn0), field(records[i].RegColumn1), field(records[i].RegColumn2),
            field(records[i].RegColumn3)};
  }

  Owned<association_reg_rec> records;
  std::int32_t count = -1;
};

TEST_F(Plugins, AreLoadedColumnByColumn) {
  make("insert into association_reg values ('a1', 'b1', 'c1', 'd1'), ('a2', 'b2', 'c2', 'd2');");
  EXPECT_EQ(0, load());
  ASSERT_EQ(2, count);
  EXPECT_EQ(Texts({"a1", "b1", "c1", "d1"}), fields(0));
  EXPECT_EQ(Texts({"a2", "b2", "c2", "d2"}), fields(1));
  EXPECT_EQ(Texts({path}), boundary().opened);
  EXPECT_EQ(Texts({"SELECT Count(*) FROM  association_reg;", "select * from association_reg"}), statements());
  EXPECT_EQ(0, boundary().busy_handlers_installed);
}

TEST_F(Plugins, RecordHasTheThirdColumnFirstAndTheFirstColumnLast) {
  EXPECT_EQ(0u, offsetof(association_reg_rec, RegColumn3));
  EXPECT_EQ(256u, offsetof(association_reg_rec, RegColumn0));
  EXPECT_EQ(512u, offsetof(association_reg_rec, RegColumn2));
  EXPECT_EQ(768u, offsetof(association_reg_rec, RegColumn1));
  EXPECT_EQ(1024u, sizeof(association_reg_rec));
}

TEST_F(Plugins, TextsAroundTheirFieldsWidthAreCutThereAndNotBefore) {
  make("insert into association_reg values ('" + std::string(255, 'a') + "', '" + std::string(256, 'b') + "', '" +
       std::string(257, 'c') + "', NULL);");
  EXPECT_EQ(0, load());
  EXPECT_EQ(Texts({std::string(255, 'a'), std::string(256, 'b'), std::string(256, 'c'), ""}), fields(0));
}

TEST_F(Plugins, EmptyTableIsZeroAndLeavesThePointer) {
  association_reg_rec untouched;
  association_reg_rec* place = &untouched;
  EXPECT_EQ(0, load_plugins(&place, &count, path.c_str()));
  EXPECT_EQ(0, count);
  EXPECT_EQ(&untouched, place);
}

TEST_F(Plugins, FileWithoutTheTableIsLikeAnEmptyTable) {
  make("drop table association_reg;");
  EXPECT_EQ(0, load());
  EXPECT_EQ(0, count);
  EXPECT_EQ(nullptr, records.get());
}

TEST_F(Plugins, FileThatCannotBeOpenedReturnsOneAndLeavesBothOuts) {
  EXPECT_EQ(1, load_plugins(records.out(), &count, kMissing));
  EXPECT_EQ(-1, count);
  EXPECT_EQ(nullptr, records.get());
}

TEST_F(Plugins, WithoutMemoryReturnOneWithTheCount) {
  make("insert into association_reg values (1, 2, 3, 4);");
  boundary().fail_allocation = 1;
  EXPECT_EQ(1, load());
  EXPECT_EQ(1, count);
  EXPECT_EQ(nullptr, records.get());
}

TEST_F(Plugins, SelectThatDoesNotCompileReturnsOneAndReleasesTheRecords) {
  make("insert into association_reg values (1, 2, 3, 4);");
  boundary().prepares = {{2, SQLITE_INTERNAL}};
  EXPECT_EQ(1, load());
  EXPECT_EQ(1, count);
  EXPECT_EQ(nullptr, records.get());
  EXPECT_EQ(1, boundary().allocations);
  EXPECT_EQ(0u, boundary().blocks_alive.size());
}

TEST_F(Plugins, SelectThatCannotBeFormattedReturnsOne) {
  make("insert into association_reg values (1, 2, 3, 4);");
  boundary().fail_text = 2;
  EXPECT_EQ(1, load());
  EXPECT_EQ(0u, boundary().blocks_alive.size());
}

class PluginsThatEndEarly : public Plugins, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(With, PluginsThatEndEarly, testing::Values(SQLITE_BUSY, SQLITE_IOERR, SQLITE_MISUSE));

TEST_P(PluginsThatEndEarly, ReturnOneWithWhatWasRead) {
  make("insert into association_reg values (1, 2, 3, 4), (5, 6, 7, 8);");
  boundary().steps = {{4, GetParam()}};  // the first two are the count's
  EXPECT_EQ(1, load());
  EXPECT_EQ(2, count);
  ASSERT_NE(nullptr, records.get());
  EXPECT_EQ(Texts({"1", "2", "3", "4"}), fields(0));
  EXPECT_EQ(Texts({"", "", "", ""}), fields(1));
}

TEST_F(Plugins, RowsThatAppearAfterTheCountAreSteppedOver) {
  make("insert into association_reg values (1, 2, 3, 4);");
  make_before("select * from", "insert into association_reg values (5, 6, 7, 8), (9, 10, 11, 12);");
  EXPECT_EQ(0, load());
  EXPECT_EQ(1, count);
  EXPECT_EQ(Texts({"1", "2", "3", "4"}), fields(0));
}

class StaticInstances : public Introspection {
 protected:
  std::int32_t get() { return get_static_instances(path.c_str(), &rows, name); }

  char name[256] = "untouched";
  std::int32_t rows = -1;
};

TEST_F(StaticInstances, TableIsTheLastByName) {
  make("create table zebra (a); create table ape (a); insert into ape values (1); insert into zebra values (1), (2);");
  EXPECT_EQ(0, get());
  EXPECT_STREQ("zebra", name);
  EXPECT_EQ(2, rows);
  EXPECT_EQ(Texts({kSelectTables, "SELECT Count(*) FROM  zebra;"}), statements());
  EXPECT_EQ(Texts({path}), boundary().opened);
}

TEST_F(StaticInstances, ViewsAndIndexesAreNoTables) {
  make("create table ape (a); create view zebra as select a from ape; create index zoo on ape (a);");
  EXPECT_EQ(0, get());
  EXPECT_STREQ("ape", name);
  EXPECT_EQ(0, rows);
}

TEST_F(StaticInstances, FileWithoutATableReturnsOneAndLeavesBothOuts) {
  EXPECT_EQ(1, get());
  EXPECT_STREQ("untouched", name);
  EXPECT_EQ(-1, rows);
}

TEST_F(StaticInstances, FileThatCannotBeOpenedOrReadReturnsOne) {
  EXPECT_EQ(1, get_static_instances(kMissing, &rows, name));
  make("create table t (a);");
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  EXPECT_EQ(1, get());
  boundary().fail_text = 1;
  EXPECT_EQ(1, get());
  EXPECT_STREQ("untouched", name);
}

TEST_F(StaticInstances, NameIsCutAt255CharactersAndTheRowsAreThoseOfTheWholeName) {
  for (const std::size_t length : {254u, 255u, 256u, 300u}) {
    const std::string whole(length, 'x');
    make("create table " + whole + " (a); insert into " + whole + " values (1), (2);");
    std::memset(name, '?', sizeof(name));
    EXPECT_EQ(0, get());
    EXPECT_EQ(2, rows);
    EXPECT_EQ(whole.substr(0, 255), field(name));
    make("drop table " + whole + ";");
  }
}

TEST_F(Introspection, ColumnNamesAreListedInOrder) {
  make("create table t (second text, first, \"it's third\" integer);");
  EXPECT_EQ(0, get_names("t"));
  EXPECT_EQ(Texts({"second", "first", "it's third"}), listed());
  EXPECT_EQ(Texts({"PRAGMA table_info(t);"}), statements());
  EXPECT_EQ(Texts({path}), boundary().opened);
  expect_left_connected(1, 1);
  expect_left_allocated(1);
}

TEST_F(Introspection, ColumnNamesAreAppendedToTheList) {
  make("create table t (a, b, c); create table u (d);");
  EXPECT_EQ(0, get_names("t"));
  EXPECT_EQ(0, get_names("t"));
  EXPECT_EQ(0, get_names("u"));
  EXPECT_EQ(Texts({"a", "b", "c", "a", "b", "c", "d"}), listed());
  expect_left_connected(3, 3);
  expect_left_allocated(3);
}

TEST_F(Introspection, ColumnNamesLeaveTheirStatementOpen) {
  make("create table t (a);");
  EXPECT_EQ(0, get_names("t"));
  expect_left_connected(1, 1);
  expect_left_allocated(1);
  EXPECT_NE(nullptr, sqlite3_next_stmt(boundary().last_opened, nullptr));
  EXPECT_TRUE(can_be_written()) << "it has ended";
}

TEST_F(Introspection, ColumnNamesOfATableThatDoesNotExistAreNone) {
  EXPECT_EQ(0, get_names("t"));
  EXPECT_EQ(nullptr, names);
  expect_left_connected(1, 1);
  expect_left_allocated(1);
}

TEST_F(Introspection, ColumnNamesEndAtTheFirstStepThatIsNoRow) {
  make("create table t (a, b);");
  boundary().steps = {{2, SQLITE_IOERR}};
  EXPECT_EQ(0, get_names("t"));
  EXPECT_EQ(Texts({"a"}), listed());
  expect_left_connected(1, 1);
  expect_left_allocated(1);
}

TEST_F(Introspection, ColumnNamesReturnOneWithoutAFileOrAStatement) {
  EXPECT_EQ(1, GetColumnNames(&names, kMissing, "t"));
  EXPECT_EQ(1, get_names("t) t("));
  boundary().fail_text = 1;
  EXPECT_EQ(1, get_names("t"));
  EXPECT_EQ(nullptr, names);
}

TEST_F(Introspection, ColumnNamesWithoutMemoryLeaveTheConnectionOpen) {
  make("create table t (a, b, c);");
  boundary().fail_allocation = 2;
  EXPECT_EQ(1, get_names("t"));
  EXPECT_EQ(Texts({"a"}), listed());
  expect_left_connected(1, 1);
  expect_left_allocated(1);
}

TEST_F(Introspection, ColumnNamesThatAreNullLeaveTheirNodeEmpty) {
  make("create table t (a);");
  boundary().steps = {{1, SQLITE_ROW}};  // before the first row, where every column is NULL
  EXPECT_EQ(0, get_names("t"));
  EXPECT_EQ(Texts({"", "a"}), listed());
  EXPECT_EQ(std::string(128, '\0'), std::string(names->ColumnName, 128));
  expect_left_connected(1, 1);
  expect_left_allocated(1);
}

TEST_F(Introspection, ColumnNamesAreCutAtTheirWidth) {
  make("create table t (" + std::string(127, 'a') + ", " + std::string(128, 'b') + ", " + std::string(129, 'c') + ");");
  EXPECT_EQ(0, get_names("t"));
  EXPECT_EQ(Texts({std::string(127, 'a'), std::string(128, 'b'), std::string(128, 'c')}), listed());
  expect_left_connected(1, 1);
  expect_left_allocated(1);
}

TEST_F(Introspection, ColumnNamesOfATableWithALongNameAreLookedUpByWhatFits) {
  const std::string longest(235, 't');  // with 255 characters around it
  make("create table " + longest + " (a);");
  EXPECT_EQ(0, get_names(longest));
  EXPECT_EQ(Texts({"a"}), listed());
  EXPECT_EQ(255u, statements()[0].size());
  expect_left_connected(1, 1);
  expect_left_allocated(1);
  EXPECT_EQ(1, get_names(longest + "ttt")) << "the statement loses its end";
  EXPECT_EQ("PRAGMA table_info(" + longest + "tt", statements()[0]);
}

TEST_F(Introspection, ColumnNamesTakeAPercentSignInATableNameAsADirective) {
  make("create table '50%' (a); create table 't' (b);");
  EXPECT_EQ(0, get_names("'50%%'"));
  EXPECT_EQ(0, get_names("t%d%n%s%z"));
  EXPECT_EQ(Texts({"a", "b"}), listed());
  EXPECT_EQ(Texts({"PRAGMA table_info('50%');", "PRAGMA table_info(t);"}), statements());
  expect_left_connected(2, 2);
  expect_left_allocated(2);
}

TEST_F(Introspection, ColumnNamesOfAnEmptyListNeedNoRelease) {
  EXPECT_EQ(0, free_column_names(nullptr));
}

TEST_F(Introspection, ColumnNamesAreReleasedNodeByNode) {
  make("create table t (a, b, c);");
  get_names("t");
  expect_left_connected(1, 1);
  expect_left_allocated(1);
  EXPECT_EQ(3u, boundary().blocks_alive.size());
  for (const auto& [node, size] : boundary().blocks_alive) EXPECT_EQ(sizeof(column_name_node), size);
  EXPECT_EQ(0, free_column_names(names));
  names = nullptr;
  EXPECT_EQ(0u, boundary().blocks_alive.size());
}

// A table t with a row.
class ColumnValues : public Introspection {
 protected:
  void SetUp() override {
    Introspection::SetUp();
    make("create table t (a, b); insert into t values ('first', 17);");
  }
};

TEST_F(ColumnValues, AreReadByColumnAndRow) {
  make("insert into t values ('second', 8);");
  EXPECT_EQ(0, get_value("a"));
  EXPECT_STREQ("first", value);
  EXPECT_EQ(0, get_value("b", "t", 2));
  EXPECT_STREQ("8", value);
  EXPECT_EQ(Texts({"SELECT a FROM  t WHERE ROWID=1;", "SELECT b FROM  t WHERE ROWID=2;"}), statements());
  EXPECT_EQ(Texts({path, path}), boundary().opened);
  EXPECT_EQ(std::vector<bool>({true, true}), boundary().tails);
  expect_left_connected(2, 2);
}

TEST_F(ColumnValues, ExpressionAndNameAreTakenAsTheyAre) {
  EXPECT_EQ(0, get_value("a || ' ' || b, 5", "(select rowid, * from t)"));
  EXPECT_STREQ("first 17", value);
  expect_left_connected(1, 1);
}

TEST_F(Introspection, ColumnValuesLeaveTheirStatementOpen) {
  make("create table t (a); insert into t values (1);");
  EXPECT_EQ(0, get_value("a"));
  expect_left_connected(1, 1);
  EXPECT_FALSE(can_be_written()) << "it stands on its row";
}

TEST_F(ColumnValues, OfAMissingRowAreEmpty) {
  EXPECT_EQ(0, get_value("a", "t", 7));
  EXPECT_STREQ("", value);
  EXPECT_EQ("SELECT a FROM  t WHERE ROWID=7;", statements()[0]);
  EXPECT_TRUE(can_be_written());
  expect_left_connected(1, 1);
}

TEST_F(ColumnValues, OfANegativeRowAreReadToo) {
  make("insert into t (rowid, a) values (-1, 'negative');");
  EXPECT_EQ(0, get_value("a", "t", -1));
  EXPECT_STREQ("negative", value);
  expect_left_connected(1, 1);
}

TEST_F(ColumnValues, WhoseStepFailsAreEmpty) {
  boundary().steps = {{1, SQLITE_IOERR}};
  EXPECT_EQ(0, get_value("a"));
  EXPECT_STREQ("", value);
  expect_left_connected(1, 1);
}

TEST_F(ColumnValues, ThatAreNullAreEmpty) {
  EXPECT_EQ(0, get_value("NULL"));
  EXPECT_STREQ("", value);
  expect_left_connected(1, 1);
}

TEST_F(ColumnValues, AreCutAt255Characters) {
  for (const std::size_t length : {254u, 255u, 256u, 300u}) {
    const std::string whole(length, 'x');
    make("insert into t (rowid, a) values (" + std::to_string(length) + ", '" + whole + "');");
  }
  for (const int length : {254, 255, 256, 300}) {
    std::memset(value, '?', sizeof(value));
    EXPECT_EQ(0, get_value("a", "t", length));
    EXPECT_EQ(std::string(static_cast<std::size_t>(std::min(length, 255)), 'x'), field(value));
  }
  expect_left_connected(4, 4);
}

TEST_F(ColumnValues, WithoutABufferReturnOneAndLeaveTheirStatementOpen) {
  EXPECT_EQ(1, GetColumnValues(path.c_str(), nullptr, "a", "t", 1));
  expect_left_connected(1, 1);
}

TEST_F(ColumnValues, ReturnOneWithoutAFileOrAStatement) {
  EXPECT_EQ(1, GetColumnValues(kMissing, value, "a", "t", 1));
  EXPECT_EQ(1, get_value("c"));
  boundary().fail_text = 1;
  EXPECT_EQ(1, get_value("a"));
  EXPECT_STREQ("untouched", value);
}

TEST_F(ColumnValues, TakeAPercentSignAsADirective) {
  EXPECT_EQ(0, get_value("'100%%'"));
  EXPECT_STREQ("100%", value);
  EXPECT_EQ(0, get_value("'%d%s%n%z'", "t%q"));
  EXPECT_STREQ("", value);
  EXPECT_EQ(Texts({"SELECT '100%' FROM  t WHERE ROWID=1;", "SELECT '' FROM  t WHERE ROWID=1;"}), statements());
  expect_left_connected(2, 2);
}

TEST_F(ColumnValues, StatementIsCutAt255Characters) {
  const std::string column = "'" + std::string(221, 'x') + "'";  // with 32 characters behind it
  EXPECT_EQ(0, get_value(column, "t", 1));
  EXPECT_EQ("SELECT " + column + " FROM  t WHERE ROWID=1;", statements()[0]);
  EXPECT_EQ(1, get_value("'" + std::string(300, 'x') + "'"));
  EXPECT_EQ("SELECT '" + std::string(247, 'x'), statements()[0]);
  expect_left_connected(1, 1);
}

}  // namespace
}  // namespace qmv::test
