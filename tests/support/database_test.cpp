#include "support/database_test.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <utility>

#include "qmv/core.h"

namespace qmv::test {

namespace {

void close(sqlite3* db) {
  while (sqlite3_stmt* statement = sqlite3_next_stmt(db, nullptr)) __real_sqlite3_finalize(statement);
  EXPECT_EQ(SQLITE_OK, __real_sqlite3_close(db));
}

}  // namespace

void DatabaseTest::SetUp() {
  boundary() = Boundary();
  ASSERT_EQ(SQLITE_OK, __real_sqlite3_open(":memory:", &db));
}

void DatabaseTest::TearDown() {
  EXPECT_EQ(Lines(), logged()) << "lines that the test did not ask for";
  EXPECT_EQ(left_open_, boundary().statements_alive) << "statements left open";
  EXPECT_EQ(left_allocated_, boundary().texts_alive.size()) << "formatted texts left allocated";
  EXPECT_EQ(left_connected_, boundary().connections_alive.size()) << "connections left open";
  for (void* text : std::exchange(boundary().texts_alive, {})) sqlite3_free(text);
  for (sqlite3* connection : std::exchange(boundary().connections_alive, {})) close(connection);
  boundary().blocks_alive.clear();  // so that a checker of leaks does not find them here
  close(db);
  if (!scratch_.empty()) std::filesystem::remove_all(scratch_);
}

void DatabaseTest::sql(sqlite3* connection, const std::string& text) {
  char* message = nullptr;
  ASSERT_EQ(SQLITE_OK, __real_sqlite3_exec(connection, text.c_str(), nullptr, nullptr, &message))
      << message << ": " << text;
}

void DatabaseTest::sql_before(const std::string& statement, const std::string& text) {
  boundary().change_before = statement;
  boundary().change = [this, text] { sql(text); };
}

std::string DatabaseTest::value_of(sqlite3* connection, const std::string& query) {
  const Texts rows = rows_of(connection, query);
  return rows.empty() ? "(none)" : rows.front();
}

Texts DatabaseTest::rows_of(sqlite3* connection, const std::string& query) {
  Texts rows;
  const auto add = [](void* context, int count, char** values, char**) {
    std::string row;
    for (int i = 0; i < count; ++i) row += (i == 0 ? "" : "|") + std::string(values[i] == nullptr ? "NULL" : values[i]);
    static_cast<Texts*>(context)->push_back(row);
    return 0;
  };
  char* message = nullptr;
  EXPECT_EQ(SQLITE_OK, __real_sqlite3_exec(connection, query.c_str(), add, &rows, &message))
      << message << ": " << query;
  return rows;
}

Lines DatabaseTest::logged() {
  return std::exchange(boundary().log, {});
}

Texts DatabaseTest::statements() {
  return std::exchange(boundary().statements, {});
}

void DatabaseTest::expect_left_open(int statements) {
  left_open_ += statements;
  EXPECT_EQ(left_open_, boundary().statements_alive);
  EXPECT_EQ(SQLITE_BUSY, db_close(db)) << "an open statement keeps the connection open";
  EXPECT_EQ(trace_of("db.c", "Terminate the database handler"), boundary().log.back());
  boundary().log.pop_back();
}

void DatabaseTest::expect_left_allocated(std::size_t texts) {
  left_allocated_ += texts;
  EXPECT_EQ(left_allocated_, boundary().texts_alive.size());
}

void DatabaseTest::expect_left_connected(std::size_t connections, int statements) {
  left_open_ += statements;
  left_connected_ += connections;
  EXPECT_EQ(left_open_, boundary().statements_alive);
  EXPECT_EQ(left_connected_, boundary().connections_alive.size());
}

void DatabaseTest::in_new_process(const std::function<void()>& rest) {
  std::fflush(nullptr);
  const pid_t child = fork();
  ASSERT_NE(-1, child);
  if (child == 0) {
    [&]() noexcept { rest(); }();
    TearDown();
    std::exit(HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
  }
  int status = -1;
  EXPECT_EQ(child, waitpid(child, &status, 0));
  EXPECT_EQ(0, status) << "in the new process";
}

std::string DatabaseTest::scratch() {
  if (scratch_.empty()) {
    std::string pattern = testing::TempDir() + "qmv-XXXXXX";
    scratch_ = mkdtemp(pattern.data());
    boundary().fixed_files = scratch_;
  }
  return scratch_;
}

DatabaseTest::Connection DatabaseTest::open(const std::string& path) {
  sqlite3* connection = nullptr;
  EXPECT_EQ(SQLITE_OK, __real_sqlite3_open(path.c_str(), &connection));
  sql(connection, "pragma synchronous = off;");  // the file does not outlive the test
  return Connection(connection);
}

}  // namespace qmv::test
