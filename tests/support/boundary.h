// The library's boundary, taken over at link time: what it calls outside is recorded, and can be redirected or made to
// fail. Faults are counted from the moment that they are asked for: 1 is the next call of that kind.
#ifndef QMV_TESTS_SUPPORT_BOUNDARY_H
#define QMV_TESTS_SUPPORT_BOUNDARY_H

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace qmv::test {

// One line that the host was given.
struct LogLine {
  int level;
  std::string module;
  std::string text;  // without the "[file:line]" in front
  int line = 0;      // not compared

  bool operator==(const LogLine& other) const {
    return level == other.level && module == other.module && text == other.text;
  }
};
void PrintTo(const LogLine& line, std::ostream* out);

// Answers of chosen calls: the n-th call from now on gets the code in place of being made. A failing open hands out a
// connection that is to be closed, as SQLite's does, except without memory.
using Faults = std::map<int, int>;

struct Boundary {
  std::vector<LogLine> log;
  std::vector<std::string> statements;  // every text that SQLite was given, in order
  std::vector<bool> tails;              // whether each sqlite3_prepare was given a place for the tail
  std::vector<unsigned> sleeps;         // seconds
  std::vector<std::string> opened;      // paths
  sqlite3* last_opened = nullptr;       // also after a failure
  int (*busy_handler)(void*, int) = nullptr;
  int busy_handlers_installed = 0;
  int messages_fetched = 0;                   // by sqlite3_errmsg()
  std::set<void*> texts_alive;                // formatted by SQLite and not released
  int statements_alive = 0;                   // prepared and not finalised
  std::set<sqlite3*> connections_alive;       // opened and not closed
  std::map<void*, std::size_t> blocks_alive;  // allocated and not released, and the bytes that were asked for
  int allocations = 0;
  std::set<const char*> formats;  // every text that the host or SQLite was given as a format
  std::string all_statements;     // as statements, which a test may have taken out

  std::string fixed_files = "/nonexistent";  // the folder that stands for the fixed paths' own
  int fail_allocation = 0;
  bool allocations_stay_failing = false;  // the one that fails, and all behind it
  std::size_t largest_array = SIZE_MAX;   // of a larger one only so many elements are there: memory is overcommitted
  int fail_text = 0;
  int miss_statement = 0;  // prepared with success, but there is none
  Faults opens, prepares, steps, finalizes, execs;
  int met = 0;  // faults of all these kinds, and changes
  std::function<void()> while_sleeping = [] {};
  std::function<void()> while_logging = [] {};
  // What another process does right before the library prepares a statement that begins so; it does it once.
  std::string change_before;
  std::function<void()> change;
};

// The boundary of the test that runs.
Boundary& boundary();

// A path of a database or file that the library opens by its fixed name, as it is on this machine during the test.
std::string redirected(const std::string& path);

}  // namespace qmv::test

// The calls as they are without the wrapping, for tests that prepare and look at databases.
extern "C" {
void* __real_malloc(std::size_t size);
void __real_free(void* block);
int __real_sqlite3_open(const char* path, sqlite3** db);
int __real_sqlite3_exec(sqlite3* db, const char* text, int (*row)(void*, int, char**, char**), void* context,
                        char** error);
int __real_sqlite3_prepare(sqlite3* db, const char* text, int length, sqlite3_stmt** statement, const char** tail);
int __real_sqlite3_step(sqlite3_stmt* statement);
int __real_sqlite3_finalize(sqlite3_stmt* statement);
int __real_sqlite3_close(sqlite3* db);
}

#endif
