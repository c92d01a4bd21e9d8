// What differs between a table and its reference, and what to do about it.
#ifndef QMVCTL_TABLE_COMPARISON_H
#define QMVCTL_TABLE_COMPARISON_H

#include "check.h"
#include "table_shape.h"

namespace qmvctl {

// A copy of a database without rows, on which statements are tried before they are advised: compiling alone does not
// tell whether they run, since indexes, views and triggers may need what they change.
class Rehearsal {
 public:
  explicit Rehearsal(const Database& database);

  // Whether SQLite takes these one after the other. The copy stays as it is.
  bool can_run(const Names& statements) const;

 private:
  bool run(const Names& statements) const;

  Database copy_;
  bool is_complete_;
};

// Compares a table that is there with its reference: columns, uniqueness, and that nothing else runs when rows change.
// `kind` is named in what to do.
void compare(const Database& database, const TableShape& reference, const DatabaseKind& kind,
             const Rehearsal& rehearsal, std::vector<Finding>& findings);

}  // namespace qmvctl

#endif
