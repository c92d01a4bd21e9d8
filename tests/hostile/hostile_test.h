// The fixture of tests with hostile data: one database in memory, which stands for every file that the library opens.
#ifndef QMV_TESTS_HOSTILE_HOSTILE_TEST_H
#define QMV_TESTS_HOSTILE_HOSTILE_TEST_H

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>
#include <vector>

#include "hostile/values.h"
#include "schema/table.h"

namespace qmv::test {

class HostileTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  void sql(const std::string& text);

  // The values of all rows, one after another; "NULL" for NULL.
  std::vector<std::string> values(const std::string& query);

  // The tables of a database, as its schema makes them; one of them with its columns alone, without keys and other
  // constraints, so that it holds any value.
  void make_tables(const std::string& database);
  void make_lax_table(const Table& table);

  // Puts one row into a table, in place of all rows, its values in the order of the columns.
  void put_row(const std::string& table, const std::vector<Stored>& row);

  sqlite3* db = nullptr;
};

// Every table of the schema, and tables once more for each way to choose among their rows.
std::vector<Table> all_tables();
std::vector<Table> derived_tables();

}  // namespace qmv::test

#endif
