#include "check.h"

#include <algorithm>

#include "table_shape.h"

namespace qmvctl {

namespace {

void check_tables(const Database& database, const DatabaseKind& kind, std::vector<Finding>& findings) {
  const NameSet tables = tables_of(database);
  for (const TableShape& reference : references(kind)) {
    const std::string& table = reference.name;
    if (!tables.contains(table)) {
      findings.push_back({table, "the table is missing: nothing is read from it or stored in it.",
                          std::string("qmvctl init ") + kind.name + " --db NEW creates a database that has it."});
      continue;
    }
    compare(shape_of(database, table), reference, kind, findings);
    check_contents(database, table, findings);
  }
}

// The kind whose tables a database has; the instance database when it has none of any kind.
const DatabaseKind& kind_of(const Database& database) {
  const NameSet tables = tables_of(database);
  const DatabaseKind* best = &kInstanceDatabase;
  std::ptrdiff_t most = 0;
  for (const DatabaseKind* kind : {&kInstanceDatabase, &kTemporaryDatabase, &kShellDatabase, &kRegistry}) {
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
  check_locks(database, findings);
  try {
    check_integrity(database, findings);
    check_tables(database, kind ? *kind : kind_of(database), findings);
  } catch (const std::runtime_error& error) {
    findings.push_back(
        {"", std::string("the check ends here: ") + error.what(), "See to that first, then check again."});
  }
  return findings;
}

}  // namespace qmvctl
