// The library's boundary as it is, for the calls and tables of tests/torture, here beside the shared library: nothing
// stands between it and SQLite, so nothing is recorded and nothing fails.
#include <cstdlib>

#include "support/boundary.h"
#include "torture/failing.h"

namespace qmv::test {

Boundary& boundary() {
  static Boundary empty;
  return empty;
}

Healthy::Healthy() = default;
Healthy::~Healthy() = default;

}  // namespace qmv::test

extern "C" {

void* __real_malloc(std::size_t size) {
  return std::malloc(size);
}

int __real_sqlite3_open(const char* path, sqlite3** db) {
  return sqlite3_open(path, db);
}

int __real_sqlite3_exec(sqlite3* db, const char* text, int (*row)(void*, int, char**, char**), void* context,
                        char** error) {
  return sqlite3_exec(db, text, row, context, error);
}

int __real_sqlite3_prepare(sqlite3* db, const char* text, int length, sqlite3_stmt** statement, const char** tail) {
  return sqlite3_prepare(db, text, length, statement, tail);
}

int __real_sqlite3_step(sqlite3_stmt* statement) {
  return sqlite3_step(statement);
}

int __real_sqlite3_finalize(sqlite3_stmt* statement) {
  return sqlite3_finalize(statement);
}

int __real_sqlite3_close(sqlite3* db) {
  return sqlite3_close(db);
}

}  // extern "C"
