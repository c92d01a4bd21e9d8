// Every exported function as one call with plausible arguments, for tests of what holds for all of them.
#ifndef QMV_TESTS_TORTURE_CALLS_H
#define QMV_TESTS_TORTURE_CALLS_H

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace qmv::test {

// What a call's arguments are made of.
struct Material {
  std::string text = "k";   // every text
  std::int32_t number = 3;  // every number
  char fill = 'k';          // every byte of a record that the caller brings, which ends at the end of a page
};

// What came back. Blocks that the library handed out are released already.
struct Answer {
  std::optional<std::int32_t> status;  // of functions that return one
  bool handed_out = false;             // a block came through a pointer to a pointer

  bool operator==(const Answer&) const = default;
};

struct Call {
  std::string name;
  std::function<Answer(sqlite3* db, const Material& material)> run;
};

inline void PrintTo(const Call& call, std::ostream* out) {
  *out << call.name;
}

// All exported functions. Those that open files of their own do so by the fixed names; "/tmp/cim.db" stands for any file.
const std::vector<Call>& calls();

// Makes every table of every schema in one database, with the rows that calls of the plain material find.
void make_tables_with_rows(sqlite3* db);

}  // namespace qmv::test

#endif
