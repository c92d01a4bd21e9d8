#include "processes_test.h"

#include <unistd.h>

#include <fstream>
#include <sstream>

#include "../qmvctl/redirect.h"
#include "host.h"

namespace qmv::test {

namespace {

std::string schema_of(const std::string& database) {
  std::ifstream file(std::string(QMV_SCHEMA) + "/" + database + ".sql");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace

std::string text_of(sqlite3* db, const std::string& query) {
  sqlite3_stmt* row = nullptr;
  EXPECT_EQ(SQLITE_OK, sqlite3_prepare_v2(db, query.c_str(), -1, &row, nullptr)) << sqlite3_errmsg(db);
  EXPECT_EQ(SQLITE_ROW, sqlite3_step(row)) << query;
  const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(row, 0));
  const std::string copy = text == nullptr ? "" : text;
  sqlite3_finalize(row);
  return copy;
}

int number_of(sqlite3* db, const std::string& query) {
  return std::stoi("0" + text_of(db, query));
}

void do_not_wait_for_the_disk(sqlite3* db) {
  EXPECT_EQ(0, db_execute(db, "pragma synchronous = off;"));
}

ProcessesTest::ProcessesTest() {
  std::string pattern = testing::TempDir() + "qmv-processes-XXXXXX";
  folder_ = mkdtemp(pattern.data());
  qmvctl::test::redirect_fixed_paths(folder_);
  for (const char* name : {"cim.db", "tmp_cim.db", "Association.db"}) make_file(file(name));
}

ProcessesTest::~ProcessesTest() {
  be_an_ordinary_host();
  std::filesystem::remove_all(folder_);
}

void ProcessesTest::make_file(const std::filesystem::path& file) {
  sqlite3* db = nullptr;
  EXPECT_EQ(SQLITE_OK, sqlite3_open(file.c_str(), &db));
  const std::string tables = schema_of("cim") + schema_of("tmp_cim") + schema_of("association");
  const std::string all = "pragma page_size = 1024; pragma synchronous = off; begin; " + tables + "commit;";
  EXPECT_EQ(SQLITE_OK, sqlite3_exec(db, all.c_str(), nullptr, nullptr, nullptr)) << sqlite3_errmsg(db);
  EXPECT_EQ(SQLITE_OK, sqlite3_close(db));
}

}  // namespace qmv::test
