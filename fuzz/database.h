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

// A table and the calls that touch it, by what they are for: some that read one table clear up another.
struct Touched {
  std::string name;
  sqlite3* db = nullptr;          // a connection that knows it by this name
  sqlite3_stmt* put = nullptr;    // a row of parameters into it
  sqlite3_stmt* clear = nullptr;  // all rows out of it
  std::vector<test::Call> readers = {};
  std::vector<test::Call> writers = {};
};

// A call that reads tables, a connection for it, and what it answers when they are empty.
struct Reader {
  test::Call call;
  sqlite3* db;
  std::vector<const Touched*> tables;
  test::Answer without_rows;
};

// Makes the shared database and finds out which calls touch its tables. It can have some of them only: connections that
// the library opens itself read what there is of all tables.
class Database {
 public:
  explicit Database(Tables tables, const std::set<std::string>& only = {});
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  sqlite3* get() const { return db_; }
  const std::vector<Touched>& tables() const { return tables_; }
  const Touched& table(const std::string& name) const;
  const std::vector<Reader>& readers() const { return readers_; }

  void sql(const char* text) const;

 private:
  void add_tables(sqlite3* db, const std::string& schema);
  void try_out(const test::Call& call);

  sqlite3* db_ = nullptr;
  sqlite3* bare_ = nullptr;  // where sensors have no columns of FRUs
  std::vector<Touched> tables_;
  std::vector<Reader> readers_;
};

// Puts a row of any values into a table: some are those that a call with this material asks for.
void put_row(const Touched& table, const test::Material& asked, Input& input);

// Deletes all rows of a table, and returns how many there were.
int clear(const Touched& table);

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
