// Get-alls count with one statement and read with another: somebody changes the tables in between.
#include <map>
#include <string>
#include <vector>

#include "torture/ends.h"
#include "torture/tables.h"
#include "torture/torture_test.h"

namespace qmv::test {
namespace {

// What happens to a table, as a query that makes the statements: of the table's name, and of its columns.
constexpr char kEmpty[] = "select 'delete from ' || name || ';' from tables;";
constexpr char kHalve[] =
    "select 'delete from ' || name || ' where rowid > (select avg(rowid) from ' || name || ');' from tables;";
constexpr char kDrop[] = "select 'drop table ' || name || ';' from tables;";

std::string of_columns(const std::string& statement, const std::string& condition = "true") {
  return "select " + statement + " from tables, pragma_table_info(tables.name) as columns where " + condition +
         " group by tables.name;";
}

// Every row once more, under another key and of another entity instance, behind the others.
const std::string kDouble = of_columns(
    "'insert into ' || tables.name || ' select ' || group_concat(case "
    "when columns.type = 'TEXT' then columns.name || '||''x''' "
    "when columns.pk or columns.name = 'EntityInstance' then columns.name || '+2000000000' "
    "else columns.name end) || ' from ' || tables.name || ';'");

// Another table of the same name and rows, with those of the columns for which a condition holds, and with more.
std::string remade(const std::string& condition, const std::string& more = "") {
  return of_columns(
      "'alter table ' || tables.name || ' rename to old_' || tables.name || ';create table ' || "
      "tables.name || ' as select ' || group_concat(columns.name) || '" +
          more + " from old_' || tables.name || ';'",
      condition);
}
const std::string kOneColumn = remade("columns.cid = 0");
const std::string kOneColumnLess = remade("columns.cid + 1 < (select count(*) from pragma_table_info(tables.name))");
const std::string kLastIsNull =
    remade("columns.cid + 1 < (select count(*) from pragma_table_info(tables.name))", ", null as last");
const std::string kMoreColumns = remade("true", ", 1 as more1, ''m'' as more2, null as more3");

class ChangedTables : public Torture {
 protected:
  // Calls while somebody does that right before the n-th statement is prepared, to the tables that it names.
  Trial tried_with(const std::string& change, std::size_t nth = 2) {
    put_back();
    const std::string statement = healthy.statements.at(nth - 1);
    std::string words = statement;
    std::erase(words, '\'');
    const std::string tables =
        "with tables as (select name from sqlite_master where type = 'table' and instr('" + words + "', name)) ";
    const Trial trial = tried([&] {
      boundary().change_before = statement;
      boundary().change = [=, this] { run_each(store(), tables + change); };
    });
    EXPECT_FALSE(boundary().change) << "it was made";
    return trial;
  }

  // An array of as many records as were counted.
  void expect_whole_array(const Trial& trial) const {
    EXPECT_EQ(0, trial.answer.status);
    EXPECT_EQ(Handed::kBlock, trial.answer.handed);
    EXPECT_EQ(healthy.answer.number, trial.answer.number);
    EXPECT_EQ(healthy.answer.content.size(), trial.answer.content.size());
    EXPECT_EQ(Left(), trial.left);
  }

  // The end that a statement has which does not compile any more.
  void expect_end_of_prepare(const Trial& trial, int nth = 2) const {
    expect_end(end_of(rules_of(GetParam()).prepares, nth), SQLITE_ERROR, trial);
  }

  static std::string without_end(const std::string& statement) { return statement.substr(0, statement.find(';')); }

  bool takes_whole_table() const { return healthy.statements[1].find('=') == std::string::npos; }

  const Trial healthy = tried();
};

// The assets are those of two get-alls.
const std::string kAssets = "db_get_all_physicalasset_element";

std::vector<Call> get_alls() {
  std::vector<Call> all = calls_of(Shape::kGetAll);
  std::erase_if(all, [](const Call& call) { return call.name == kAssets; });
  return all;
}

INSTANTIATE_TEST_SUITE_P(Each, ChangedTables, testing::ValuesIn(get_alls()), name_of);

TEST_P(ChangedTables, WithoutRowsLeaveZeroedRecords) {
  const Trial trial = tried_with(kEmpty);
  expect_whole_array(trial);
  EXPECT_EQ(std::string::npos, trial.answer.content.find_first_not_of('\0'));
}

TEST_P(ChangedTables, WithFewerRowsLeaveZeroesBehindThem) {
  if (!takes_whole_table()) return;
  const Trial trial = tried_with(kHalve);
  expect_whole_array(trial);
  const std::string& records = trial.answer.content;
  const std::string left = rows(store(), "select count(*) from (" + without_end(healthy.statements[1]) + ");").at(0);
  const std::size_t kept = records.size() / static_cast<std::size_t>(*trial.answer.number) * std::stoul(left);
  EXPECT_LT(0u, kept);
  EXPECT_LT(kept, records.size());
  EXPECT_TRUE(records.substr(0, kept) == healthy.answer.content.substr(0, kept)) << "the first rows";
  EXPECT_EQ(std::string::npos, records.find_first_not_of('\0', kept));
}

TEST_P(ChangedTables, WithMoreRowsDropThem) {
  const Trial trial = tried_with(kDouble);
  expect_whole_array(trial);
  if (takes_whole_table()) {
    EXPECT_TRUE(healthy.answer.content == trial.answer.content) << "the first rows";
  }
}

TEST_P(ChangedTables, ThatAreGoneDoNotCompile) {
  expect_end_of_prepare(tried_with(kDrop));
}

TEST_P(ChangedTables, WithMoreColumnsAreReadAsBefore) {
  const Trial trial = tried_with(kMoreColumns);
  expect_whole_array(trial);
  EXPECT_TRUE(healthy.answer.content == trial.answer.content);
}

TEST_P(ChangedTables, WithOneColumnAreReadAsFarAsTheyGo) {
  const Trial trial = tried_with(kOneColumn);
  if (takes_whole_table()) {
    expect_whole_array(trial);
  } else {
    expect_end_of_prepare(trial);
  }
}

TEST_P(ChangedTables, WithOneColumnLessAreReadAsFarAsTheyGo) {
  const Trial trial = tried_with(kOneColumnLess);
  if (healthy.statements[1].find("JOIN") == std::string::npos) {
    expect_whole_array(trial);
  } else {
    expect_end_of_prepare(trial, 3);
  }
}

// Those that read one row with one statement.
class ChangedTablesOfOneRow : public ChangedTables {};

INSTANTIATE_TEST_SUITE_P(Each, ChangedTablesOfOneRow, testing::ValuesIn(calls_of(Shape::kGetOne)), name_of);

TEST_P(ChangedTablesOfOneRow, WithOneColumnLessAreReadAsIfItWereNull) {
  const Trial null = tried_with(kLastIsNull, 1);
  const Trial trial = tried_with(kOneColumnLess, 1);
  EXPECT_TRUE(null.answer == trial.answer);
  EXPECT_EQ(null.left, trial.left);
}

// Those that read in more ways, or files of their own.
const std::map<std::string, std::string> kFilesOfOthers = {
    {kAssets, ""},
    {"get_all_ps_from_db", "cim.db"},
    {"assoc_get_global_data", "Association.db"},
    {"load_plugins", "Association.db"},
};

class ChangedTablesOfOthers : public ChangedTables {
 protected:
  std::string file() const override { return kFilesOfOthers.at(GetParam().name); }
};

std::vector<Call> others() {
  std::vector<Call> all = calls();
  std::erase_if(all, [](const Call& call) { return !kFilesOfOthers.contains(call.name); });
  return all;
}

INSTANTIATE_TEST_SUITE_P(Each, ChangedTablesOfOthers, testing::ValuesIn(others()), name_of);

TEST_P(ChangedTablesOfOthers, AreSurvived) {
  const std::string empty = kEmpty;
  const std::string halve = kHalve;
  const std::string drop = kDrop;
  for (const std::string& change : {empty, halve, drop, kDouble, kOneColumn, kOneColumnLess, kMoreColumns}) {
    for (std::size_t nth = 2; nth <= healthy.statements.size(); ++nth) {
      const Trial trial = tried_with(change, nth);
      EXPECT_TRUE(trial.answer.status == 0 || trial.answer.status == 1);
      EXPECT_EQ(Left(), trial.left);
      put_back();
      expect_works_as(healthy);
    }
  }
}

}  // namespace
}  // namespace qmv::test
