// The fixture: the fixed paths lead to files of the test's own, which have all tables.
#ifndef QMV_TESTS_PROCESSES_PROCESSES_TEST_H
#define QMV_TESTS_PROCESSES_PROCESSES_TEST_H

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "qmv.h"

namespace qmv::test {

// A connection made by the library and closed by it, which shows that no statement was left open.
class Connection {
 public:
  explicit Connection(std::int32_t (*open)(sqlite3**) = db_init) { EXPECT_EQ(0, open(&db_)); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { EXPECT_EQ(0, db_close(db_)); }

  operator sqlite3*() const { return db_; }

 private:
  sqlite3* db_ = nullptr;
};

// The first column of a query's first row, as a number or as a text.
int number_of(sqlite3* db, const std::string& query);
std::string text_of(sqlite3* db, const std::string& query);

// A test that kills processes is not to wait for the disk, unless it asks for that.
void do_not_wait_for_the_disk(sqlite3* db);

class ProcessesTest : public testing::Test {
 protected:
  ProcessesTest();
  ~ProcessesTest() override;

  // The folder of the files, and one of them: "cim.db", "tmp_cim.db" or "Association.db".
  const std::filesystem::path& folder() const { return folder_; }
  std::filesystem::path file(const std::string& name) const { return folder_ / name; }

  // Makes a file of that name with all tables. Its pages are small, so that a sensor takes several.
  static void make_file(const std::filesystem::path& file);

 private:
  std::filesystem::path folder_;
};

}  // namespace qmv::test

#endif
