// What differs between a table and its reference, and what to do about it.
#ifndef QMVCTL_TABLE_COMPARISON_H
#define QMVCTL_TABLE_COMPARISON_H

#include "check.h"
#include "table_shape.h"

namespace qmvctl {

// Compares a table that is there with its reference: columns, uniqueness, and that nothing else runs when rows change.
// `kind` is named in what to do.
void compare(const Database& database, const TableShape& reference, const DatabaseKind& kind,
             std::vector<Finding>& findings);

}  // namespace qmvctl

#endif
