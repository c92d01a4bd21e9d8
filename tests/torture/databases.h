// The databases that calls work on, in memory and in files.
#ifndef QMV_TESTS_TORTURE_DATABASES_H
#define QMV_TESTS_TORTURE_DATABASES_H

#include <sqlite3.h>

#include <map>
#include <string>

#include "torture/calls.h"

namespace qmv::test {

// The database that a call finds all it needs in.
const std::string& image_for(const Call& call);

// A connection to a database in memory that begins as an image, and can be put back at once.
class Database {
 public:
  explicit Database(const std::string& image);
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

  const std::string& image_;
  sqlite3* db_ = nullptr;
};

// The files that stand for the fixed ones: each with the tables that are read there, and the uptime.
// Two more have all tables: all.db and, with narrow sensor tables, narrow.db.
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
