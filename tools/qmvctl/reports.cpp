#include "reports.h"

#include <map>
#include <string>

namespace qmvctl {

namespace {

std::string counted(size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// "5 event-only sensor records, 1 OEM record"
std::string list_of_counts(const std::map<std::string, int>& counts) {
  std::string text;
  for (const auto& [kind, count] : counts) {
    text += (text.empty() ? "" : ", ") + counted(static_cast<size_t>(count), kind + " record");
  }
  return text;
}

Json to_json(const Assets::Part& part) {
  return {{"count", part.count}, {"rows", part.listing.rows}};
}

void print_assets(std::ostream& out, const Assets& assets) {
  out << assets.class_name << ": " << counted(static_cast<size_t>(assets.frus.count), "pair")
      << " of a FRU and a full sensor\n";
  print_table(out, assets.frus.listing);
  out << '\n' << assets.class_name << ": " << counted(static_cast<size_t>(assets.sensors.count), "full sensor") << '\n';
  print_table(out, assets.sensors.listing);
  out << '\n';
}

}  // namespace

void report(std::ostream& out, bool is_json, const Listing& listing) {
  if (is_json) {
    print_json(out, listing.rows);
  } else {
    print_table(out, listing);
  }
}

void report(std::ostream& out, bool is_json, const std::vector<HeadedListing>& lists) {
  if (is_json) {
    Json all = Json::object();
    for (const HeadedListing& each : lists) all[each.name] = each.listing.rows;
    print_json(out, all);
    return;
  }
  for (const HeadedListing& each : lists) {
    out << each.head << '\n';
    print_table(out, each.listing);
    out << '\n';
  }
}

void report(std::ostream& out, bool is_json, const std::vector<Assets>& classes) {
  if (!is_json) {
    for (const Assets& assets : classes) print_assets(out, assets);
    return;
  }
  Json all = Json::array();
  for (const Assets& assets : classes) {
    all.push_back({{"class", assets.class_name},
                   {"frus_with_sensors", to_json(assets.frus)},
                   {"sensors", to_json(assets.sensors)}});
  }
  print_json(out, all);
}

void report(std::ostream& out, bool is_json, const ImportFiles& files, const Inventory& stored) {
  Json counts = Json::object();
  if (!files.repository.empty() || !files.frus.empty()) {
    counts["compact sensor"] = stored.compact_sensors.size();
    counts["full sensor"] = stored.full_sensors.size();
    counts["FRU"] = stored.frus.size();
  }
  if (stored.fru_locators) counts["FRU locator"] = stored.fru_locators->size();
  if (stored.event_log) counts["event"] = stored.event_log->events.size();
  if (is_json) {
    print_json(out, {{"stored", counts}, {"not_held", stored.not_held}, {"notes", stored.notes}});
    return;
  }
  for (const auto& [what, count] : counts.items()) out << "stored " << counted(count, what) << '\n';
  if (!stored.not_held.empty()) {
    out << "not stored, as no table holds them: " << list_of_counts(stored.not_held) << '\n';
  }
}

void report(std::ostream& out, bool is_json, const Purged& purged) {
  if (is_json) {
    print_json(out, {{"purged", {{"jobs", purged.jobs}, {"errors", purged.errors}}}});
  } else {
    out << "purged " << counted(purged.jobs.size(), "job") << " and " << counted(purged.errors.size(), "error record")
        << '\n';
  }
}

}  // namespace qmvctl
