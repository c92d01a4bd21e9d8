#include "check.h"

#include <algorithm>

#include "table_comparison.h"

namespace qmvctl {

namespace {

// The kind of what just failed.
int error_of(const Database& database) {
  constexpr int kKind = 0xFF;  // the other bits say more of it
  return sqlite3_errcode(database.handle()) & kKind;
}

// Runs a part of the check: what damage hides from it is not hidden from the others.
void check_part(const Database& database, const std::string& table, std::vector<Finding>& findings, auto check) {
  try {
    check();
  } catch (const std::runtime_error& error) {
    if (error_of(database) != SQLITE_CORRUPT) throw;
    const std::string what = table.empty() ? "the file" : "it";
    findings.push_back({table, what + " cannot be read in full: " + error.what(), kRestore});
  }
}

Finding missing(const std::string& table, const NameSet& views, const std::string& advice) {
  const char* problem = views.contains(table) ? "a view has its name: nothing can be stored in it."
                                              : "the table is missing: nothing is read from it or stored in it.";
  return {table, problem, advice + " it."};
}

void check_tables(const Database& database, const DatabaseKind& kind, std::vector<Finding>& findings) {
  const NameSet tables = tables_of(database);
  const NameSet views = views_of(database);
  const std::vector<TableShape> shapes = references(kind);
  const auto is_there = [&](const TableShape& reference) { return tables.contains(reference.name); };
  const std::string advice = std::string("qmvctl init ") + kind.name + " --db NEW creates a database that has";
  if (std::none_of(shapes.begin(), shapes.end(), is_there)) {
    findings.push_back({"", std::string("none of the tables of ") + kind.name + " is there.", advice + " them."});
    return;
  }
  const Rehearsal rehearsal(database);
  for (const TableShape& reference : shapes) {
    if (is_there(reference)) {
      check_part(database, reference.name, findings, [&] {
        compare(database, reference, kind, rehearsal, findings);
        check_contents(database, reference.name, findings);
      });
    } else {
      findings.push_back(missing(reference.name, views, advice));
    }
  }
}

// The kind whose tables a database has; the instance database when it has none of any kind.
const DatabaseKind& kind_of(const Database& database) {
  const NameSet tables = tables_of(database);
  const DatabaseKind* best = &kInstanceDatabase;
  std::ptrdiff_t most = 0;
  for (const DatabaseKind* kind : kDatabaseKinds) {
    const auto shapes = references(*kind);
    const auto known = std::count_if(shapes.begin(), shapes.end(),
                                     [&](const TableShape& shape) { return tables.contains(shape.name); });
    if (known > most) best = kind;
    most = std::max(most, known);
  }
  return *best;
}

}  // namespace

std::vector<Finding> check(Database& database, const DatabaseKind* kind) {
  std::vector<Finding> findings;
  try {
    check_locks(database, findings);
    check_part(database, "", findings, [&] { check_integrity(database, findings); });
    check_tables(database, kind ? *kind : kind_of(database), findings);
  } catch (const std::runtime_error& error) {
    const bool is_damaged = error_of(database) == SQLITE_CORRUPT || error_of(database) == SQLITE_NOTADB;
    findings.push_back({"", std::string("the check ends here: ") + error.what(),
                        is_damaged ? kRestore : "See to that first, then check again."});
  }
  return findings;
}

}  // namespace qmvctl
