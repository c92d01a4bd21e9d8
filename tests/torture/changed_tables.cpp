#include "torture/changed_tables.h"

#include "torture/ends.h"
#include "torture/rules.h"
#include "torture/tables.h"

namespace qmv::test {

namespace {

// A query that makes a statement of each table's name and columns.
std::string of_columns(const std::string& statement, const std::string& condition = "true") {
  return "select " + statement + " from tables, pragma_table_info(tables.name) as columns where " + condition +
         " group by tables.name;";
}

// Another table of the same name and rows, with other columns.
std::string remade(const std::string& columns, const std::string& condition = "true") {
  return of_columns(
      "'alter table ' || tables.name || ' rename to old_' || tables.name || ';create table ' || tables.name || "
      "' as select ' || " +
          columns + " || ' from old_' || tables.name || ' order by rowid;'",
      condition);
}

}  // namespace

const std::string kEmpty = "select 'delete from ' || name || ';' from tables;";
const std::string kHalve =
    "select 'delete from ' || name || ' where rowid > (select avg(rowid) from ' || name || ');' from tables;";
const std::string kDouble = of_columns(
    "'insert into ' || tables.name || ' select ' || group_concat(case "
    "when columns.type = 'TEXT' then columns.name || '||''x''' "
    "when columns.pk or columns.name = 'EntityInstance' then columns.name || '+2000000000' "
    "else columns.name end) || ' from ' || tables.name || ';'");
const std::string kDrop = "select 'drop table ' || name || ';' from tables;";
const std::string kMoreColumns = remade("group_concat(columns.name) || ', 1 as more1, ''m'' as more2, null as more3'");

std::string cut(const std::string& condition) {
  return remade("group_concat(columns.name)", condition);
}

std::string nulled(const std::string& condition) {
  return remade("group_concat(iif(" + condition + ", columns.name, 'null as no_' || columns.name))");
}

void TablesInUse::make(const std::string& change, const std::string& tables) {
  std::string words = tables;
  std::erase(words, '\'');
  run_each(store(), "with tables as (select name from sqlite_master where type = 'table' and instr('" + words +
                        "', name)) " + change);
}

Trial TablesInUse::tried_with(const std::string& change, const std::string& statement) {
  put_back();
  const Trial trial = tried([&] {
    boundary().change_before = statement;
    boundary().change = [=, this] { make(change, statement); };
  });
  EXPECT_FALSE(boundary().change) << "it was made";
  return trial;
}

Trial ChangedTables::tried_with(const std::string& change, std::size_t nth) {
  return TablesInUse::tried_with(change, healthy.statements.at(nth - 1));
}

void ChangedTables::expect_same(const Trial& expected, const Trial& trial) const {
  EXPECT_TRUE(expected.answer == trial.answer);
  EXPECT_EQ(expected.left, trial.left);
}

void ChangedTables::expect_end_of_prepare(const Trial& trial, int nth) const {
  expect_end(end_of(rules_of(GetParam()).prepares, nth), SQLITE_ERROR, trial);
}

}  // namespace qmv::test
