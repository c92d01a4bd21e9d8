// The fixture of every test that calls the library: a database in memory, the boundary, and the verbs.
#ifndef QMV_TESTS_SUPPORT_DATABASE_TEST_H
#define QMV_TESTS_SUPPORT_DATABASE_TEST_H

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/boundary.h"

namespace qmv::test {

using Lines = std::vector<LogLine>;
using Texts = std::vector<std::string>;

class DatabaseTest : public testing::Test {
 protected:
  // The module whose file name the log lines of this family bear.
  explicit DatabaseTest(std::string module) : module_(std::move(module)) {}

  void SetUp() override;

  // Fails the test on a log line that it did not ask for, and on a statement, text or connection that stays without being
  // announced.
  void TearDown() override;

  // Runs SQL of the test's own on the database in memory, or on another connection.
  void sql(const std::string& text) { sql(db, text); }
  void sql(sqlite3* connection, const std::string& text);

  // Runs SQL once, right before the library prepares a statement that begins so.
  void sql_before(const std::string& statement, const std::string& text);

  // The first column of the first row of a query, "(none)" without a row.
  std::string value_of(const std::string& query) { return value_of(db, query); }
  std::string value_of(sqlite3* connection, const std::string& query);

  // All rows of a query, columns separated by "|".
  Texts rows_of(const std::string& query) { return rows_of(db, query); }
  Texts rows_of(sqlite3* connection, const std::string& query);

  // What was logged, and which statements SQLite was given, since these were last asked for.
  Lines logged();
  Texts statements();

  // Lines to compare with.
  LogLine trace(const std::string& text) const { return {135, module_, text}; }
  LogLine error(const std::string& text) const { return {130, module_, text}; }
  static LogLine trace_of(const std::string& module, const std::string& text) { return {135, module, text}; }
  // What db_execute() says of a statement that failed.
  static LogLine execution_failed() { return trace_of("db.c", "Successfully execute the SQLite query"); }
  LogLine no_such_table(const std::string& table) const {
    return error("SQL Compilation error: no such table: " + table);
  }

  // Announces what the call left behind, as it is meant to; the test then releases it.
  void expect_left_open(int statements);
  void expect_left_allocated(std::size_t texts);
  void expect_left_connected(std::size_t connections, int statements);  // of the library's own

  // Runs the rest of a test in a process of its own, with which goes what the library remembers in it.
  void in_new_process(const std::function<void()>& rest);

  // A folder of this test's own for database files; also makes the fixed paths stand for files in it.
  std::string scratch();

  // A second connection to a file of the test's own.
  struct Closer {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
  };
  using Connection = std::unique_ptr<sqlite3, Closer>;
  Connection open(const std::string& path);

  // How many bytes were asked for when a block was allocated.
  static std::size_t size_of(void* block) { return boundary().blocks_alive.at(block); }

  // The whole field, its zeros included.
  template <std::size_t Width>
  static std::string field(const char (&bytes)[Width]) {
    return {bytes, strnlen(bytes, Width)};
  }

  sqlite3* db = nullptr;

 private:
  std::string module_;
  std::string scratch_;
  int left_open_ = 0;
  std::size_t left_allocated_ = 0;
  std::size_t left_connected_ = 0;
};

// A record or an array from the library, released at the end of the test.
template <class Record>
class Owned {
 public:
  ~Owned() { std::free(record_); }
  Record** out() { return &record_; }
  Record* get() const { return record_; }
  Record* operator->() const { return record_; }
  Record& operator[](std::size_t i) const { return record_[i]; }

 private:
  Record* record_ = nullptr;
};

// Fills a text field with a text, zeros behind it; a text as wide as the field leaves no zero.
template <std::size_t Width>
void put(char (&field)[Width], const std::string& text) {
  std::memset(field, 0, Width);
  std::memcpy(field, text.data(), std::min(text.size(), Width));
}

}  // namespace qmv::test

#endif
