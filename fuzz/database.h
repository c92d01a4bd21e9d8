// The databases that the targets work on, all in memory: one that every connection shares, whatever file it names, and
// the calls by the tables that they touch.
#ifndef QMV_FUZZ_DATABASE_H
#define QMV_FUZZ_DATABASE_H

#include <sqlite3.h>

#include <set>
#include <string>
#include <vector>

#include "input.h"
#include "torture/calls.h"

namespace qmv::fuzz {

enum class Tables { kAsTheSchemaSays, kOfAnyValues };

// A table, its columns and the calls that read or write it.
struct Touched {
  std::string name;
  int columns = 0;
  std::vector<test::Call> readers;
  std::vector<test::Call> writers;
};

// Makes the shared database and finds out which calls touch its tables. Of these a target can keep those that it works
// on: connections that the library opens itself read what there is of all tables.
class Database {
 public:
  explicit Database(Tables tables, const std::set<std::string>& kept = {});
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  sqlite3* get() const { return db_; }
  const std::vector<Touched>& tables() const { return tables_; }
  const Touched& table(const std::string& name) const;

  // Puts one row of any values into a table, in place of all rows.
  void put_row(const Touched& table, Input& input) const;
  void sql(const char* text) const;

 private:
  sqlite3* db_ = nullptr;
  std::vector<Touched> tables_;
};

// As long as it lives, what is not released is no leak: some functions never release a text, and say so.
class Forgiving {
 public:
  Forgiving();
  Forgiving(const Forgiving&) = delete;
  Forgiving& operator=(const Forgiving&) = delete;
  ~Forgiving();
};

// Texts, numbers and records for a call.
test::Material material_of(Input& input);

// A connection to the bytes of a file, which gives up where a statement takes too long. NULL where there are too many.
sqlite3* connection_to(const std::string& image);

}  // namespace qmv::fuzz

#endif
