// What dumps do not hold of a database.
#ifndef QMVCTL_LOSSES_H
#define QMVCTL_LOSSES_H

#include <string>
#include <vector>

#include "import.h"

namespace qmvctl {

// The rows that an import of these dumps of that database would not store again as they are, a note of each.
std::vector<std::string> losses(const Database& database, const Dumps& dumps);

}  // namespace qmvctl

#endif
