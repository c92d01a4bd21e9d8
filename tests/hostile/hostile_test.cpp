#include "hostile/hostile_test.h"

#include <cctype>
#include <fstream>
#include <iterator>

#include "support/shared_database.h"

namespace qmv::test {

void HostileTest::SetUp() {
  ASSERT_EQ(SQLITE_OK, open_shared(&db));
}

void HostileTest::TearDown() {
  close_left_open();
  close(db);
}

void HostileTest::sql(const std::string& text) {
  char* message = nullptr;
  ASSERT_EQ(SQLITE_OK, sqlite3_exec(db, text.c_str(), nullptr, nullptr, &message)) << message << ": " << text;
}

std::vector<std::string> HostileTest::values(const std::string& query) {
  std::vector<std::string> found;
  const auto add = [](void* to, int count, char** texts, char**) {
    for (int i = 0; i < count; ++i)
      static_cast<std::vector<std::string>*>(to)->emplace_back(texts[i] == nullptr ? "NULL" : texts[i]);
    return 0;
  };
  EXPECT_EQ(SQLITE_OK, sqlite3_exec(db, query.c_str(), add, &found, nullptr)) << sqlite3_errmsg(db) << ": " << query;
  return found;
}

void HostileTest::make_tables(const std::string& database) {
  std::string file = database;
  file[0] = static_cast<char>(std::tolower(file[0]));
  std::ifstream schema(std::string(QMV_SCHEMA) + "/" + file + ".sql");
  const std::string text{std::istreambuf_iterator<char>(schema), {}};
  ASSERT_FALSE(text.empty()) << database;
  sql("begin;" + text + "commit;");
}

void HostileTest::make_lax_table(const Table& table) {
  const auto columns = values("select group_concat(name || ' ' || type) from pragma_table_info('" + table.name + "');");
  sql("drop table " + table.name + "; create table " + table.name + " (" + columns.at(0) + ");");
}

void HostileTest::put_row(const std::string& table, const std::vector<Stored>& row) {
  sql("delete from " + table + ";");
  std::string parameters = "?";
  for (std::size_t i = 1; i < row.size(); ++i) parameters += ",?";
  sqlite3_stmt* insert = nullptr;
  ASSERT_EQ(SQLITE_OK, sqlite3_prepare_v2(db, ("insert into " + table + " values (" + parameters + ");").c_str(), -1,
                                          &insert, nullptr))
      << sqlite3_errmsg(db);
  int parameter = 0;
  for (const Stored& value : row) EXPECT_EQ(SQLITE_OK, value.bind(insert, ++parameter)) << value.name;
  EXPECT_EQ(SQLITE_DONE, sqlite3_step(insert)) << sqlite3_errmsg(db);
  sqlite3_finalize(insert);
}

std::vector<Table> all_tables() {
  std::vector<Table> all;
  for (const auto& tables : {sensor_tables(), profile_tables(), service_tables(), job_tables(), association_tables()})
    all.insert(all.end(), tables.begin(), tables.end());
  return all;
}

}  // namespace qmv::test
