#include "hostile/hostile_test.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace qmv::test {

namespace {

// In memory, shared by all connections that name it.
constexpr char kShared[] = "file:/hostile?vfs=memdb";

std::string uptime;
std::vector<sqlite3*> opened_by_library;

int open_shared(sqlite3** connection) {
  return sqlite3_open_v2(kShared, connection, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI, nullptr);
}

// Closes a connection with all that was left open on it.
void close(sqlite3* connection) {
  while (sqlite3_stmt* statement = sqlite3_next_stmt(connection, nullptr)) sqlite3_finalize(statement);
  EXPECT_EQ(SQLITE_OK, sqlite3_close_v2(connection));
}

}  // namespace

void HostileTest::SetUp() {
  ASSERT_EQ(SQLITE_OK, open_shared(&db));
}

void HostileTest::TearDown() {
  for (sqlite3* connection : std::exchange(opened_by_library, {})) close(connection);
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

void HostileTest::set_uptime(const std::string& text) {
  uptime = text;
}

std::vector<Table> all_tables() {
  std::vector<Table> all;
  for (const auto& tables : {sensor_tables(), profile_tables(), service_tables(), job_tables(), association_tables()})
    all.insert(all.end(), tables.begin(), tables.end());
  return all;
}

}  // namespace qmv::test

extern "C" {

int __real_sqlite3_close(sqlite3* connection);
std::FILE* __real_fopen(const char* path, const char* mode);
int __wrap_sqlite3_open(const char* path, sqlite3** connection);
int __wrap_sqlite3_close(sqlite3* connection);
std::FILE* __wrap_fopen(const char* path, const char* mode);

int __wrap_sqlite3_open(const char*, sqlite3** connection) {
  const int code = qmv::test::open_shared(connection);
  qmv::test::opened_by_library.push_back(*connection);
  return code;
}

int __wrap_sqlite3_close(sqlite3* connection) {
  const int code = __real_sqlite3_close(connection);
  if (code == SQLITE_OK) std::erase(qmv::test::opened_by_library, connection);
  return code;
}

std::FILE* __wrap_fopen(const char* path, const char* mode) {
  if (std::string(path) != "/proc/uptime") return __real_fopen(path, mode);
  return fmemopen(qmv::test::uptime.data(), qmv::test::uptime.size(), mode);
}

}  // extern "C"
