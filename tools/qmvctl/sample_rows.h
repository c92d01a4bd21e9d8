// How rows of the sample are stored.
#ifndef QMVCTL_SAMPLE_ROWS_H
#define QMVCTL_SAMPLE_ROWS_H

#include <cstddef>
#include <string>

#include "database.h"

namespace qmvctl {

// Runs a setter: set(). Most answer 0 whatever happened, so the row must also have changed.
template <class Set>
void store_row(const Database& database, const char* table, Set set) {
  const int changes = sqlite3_total_changes(database.handle());
  if (set() != 0 || sqlite3_total_changes(database.handle()) == changes) {
    database.fail(std::string("a row of ") + table + " cannot be stored: " + sqlite3_errmsg(database.handle()));
  }
}

template <class Record, size_t kRows>
void store_rows(const Database& database, const char* table, const Record (&rows)[kRows],
                int32_t (*set)(sqlite3*, const Record*)) {
  for (const Record& row : rows) store_row(database, table, [&] { return set(database.handle(), &row); });
}

}  // namespace qmvctl

#endif
