// What is wrong with a database: it is compared with the tables that the library relies on.
#ifndef QMVCTL_CHECK_H
#define QMVCTL_CHECK_H

#include <string>
#include <vector>

#include "database.h"

namespace qmvctl {

struct Finding {
  std::string table;     // empty for what concerns the whole file
  std::string problem;   // what is wrong, and what follows from it
  std::string advice;    // what to do
  bool is_note = false;  // nothing is wrong; it is good to know
};

// What to do about damage.
inline constexpr const char* kRestore =
    "Restore it from a copy, or save what can be read: sqlite3 FILE .recover | sqlite3 NEW";

// Checks everything, first of all whether others lock the file: what could not be read because of that is a finding too.
// Without a kind it is the one whose tables the database has. The database is not changed.
std::vector<Finding> check(Database& database, const DatabaseKind* kind);

// The parts of a check. Each adds what it finds.
void check_locks(const Database& database, std::vector<Finding>& findings);
void check_integrity(const Database& database, std::vector<Finding>& findings);
void check_contents(const Database& database, const std::string& table, std::vector<Finding>& findings);

}  // namespace qmvctl

#endif
