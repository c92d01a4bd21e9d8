#include "instances.h"

#include <algorithm>
#include <cstring>

#include "commands.h"

namespace qmvctl {

Json InstanceMember::value_in(const void* record) const {
  const char* at = static_cast<const char*>(record) + offset;
  if (width != 0) return std::string(at, strnlen(at, width));
  int32_t number;
  std::memcpy(&number, at, sizeof(number));
  return number;
}

std::vector<std::string> instance_tables() {
  std::vector<std::string> names;
  for (const InstanceTable& table : all_instance_tables()) names.emplace_back(table.name);
  return names;
}

std::optional<Listing> list_instances(const Database& database, const std::string& table) {
  const auto& tables = all_instance_tables();
  const auto found = std::find_if(tables.begin(), tables.end(), [&](const auto& one) { return one.name == table; });
  if (found == tables.end()) return std::nullopt;
  Listing listing{{}, found->read(database), "There are no instances in " + table + "."};
  for (const InstanceMember& member : found->members) {
    listing.columns.push_back(member.width != 0 ? text_column(member.name, member.name)
                                                : number_column(member.name, member.name));
  }
  return listing;
}

}  // namespace qmvctl
