// The databases that calls work on, in memory and in files.
#ifndef QMV_TESTS_TORTURE_DATABASES_H
#define QMV_TESTS_TORTURE_DATABASES_H

#include <sqlite3.h>

#include <map>
#include <string>

namespace qmv::test {

// A connection to a database in memory with all tables, which can be put back at once.
class Database {
 public:
  Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  sqlite3* get() const { return db_; }

  // Ends statements and a transaction that were left open.
  void settle();
  // Whether anything was written since it was last put back.
  bool is_changed() const;
  void put_back();

 private:
  unsigned char* bytes() const;

  sqlite3* db_ = nullptr;
};

// The files that stand for the fixed ones: each with the tables that are read there, and the uptime.
// One more, all.db, has all tables.
class FixedFiles {
 public:
  FixedFiles();
  FixedFiles(const FixedFiles&) = delete;
  FixedFiles& operator=(const FixedFiles&) = delete;
  ~FixedFiles();

  const std::string& folder() const { return folder_; }
  void put_back(const std::string& file) const;

 private:
  std::string folder_;
  std::map<std::string, std::string> images_;  // by file
};

// Those of the whole program, removed at its end.
const FixedFiles& fixed_files();

}  // namespace qmv::test

#endif
