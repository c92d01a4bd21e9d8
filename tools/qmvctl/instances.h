// The profile tables and how the library reads them.
#ifndef QMVCTL_INSTANCES_H
#define QMVCTL_INSTANCES_H

#include <cstddef>
#include <functional>
#include <vector>

#include "database.h"
#include "listing.h"

namespace qmvctl {

// A member of a record, under the name of its column.
struct InstanceMember {
  const char* name;
  size_t offset;
  size_t width;  // of a text, 0 for a number

  Json value_in(const void* record) const;
};

struct InstanceTable {
  const char* name;
  std::vector<InstanceMember> members;
  std::function<std::vector<Json>(const Database&)> read;
};

const std::vector<InstanceTable>& all_instance_tables();

}  // namespace qmvctl

#endif
