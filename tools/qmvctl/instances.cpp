#include "instances.h"

#include <algorithm>
#include <cstring>

#include "commands.h"
#include "table_shape.h"

namespace qmvctl {

namespace {

constexpr int kPlaces = 80;
constexpr int kGap = 2;

// The places of a member's column: those of its head, and enough of a text to be told from others. The first members
// are shown in a table, as many as there is room for.
int width_of(const InstanceMember& member, int& room) {
  constexpr int kText = 24;
  const int head = static_cast<int>(std::strlen(member.name));
  const int width = member.width != 0 ? std::max(head, kText) : head;
  if (width > room) {
    room = 0;
    return kWide;
  }
  room -= width + kGap;
  return width;
}

}  // namespace

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

std::string instance_key(const std::string& table) {
  const auto shapes = references(kInstanceDatabase);
  const auto shape = std::find_if(shapes.begin(), shapes.end(), [&](const auto& one) { return one.name == table; });
  return *shape->unique.front().columns.begin();
}

std::optional<Listing> list_instances(const Database& database, const std::string& table) {
  const auto& tables = all_instance_tables();
  const auto found = std::find_if(tables.begin(), tables.end(), [&](const auto& one) { return one.name == table; });
  if (found == tables.end()) return std::nullopt;
  Listing listing{{}, found->read(database), "There are no instances in " + table + "."};
  int room = kPlaces;
  for (const InstanceMember& member : found->members) {
    const int width = width_of(member, room);
    listing.columns.push_back(member.width != 0 ? text_column(member.name, width, member.name)
                                                : number_column(member.name, width, member.name));
  }
  return listing;
}

}  // namespace qmvctl
