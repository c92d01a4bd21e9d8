#include "reports.h"

#include <algorithm>
#include <map>
#include <string>

#include "characters.h"

namespace qmvctl {

namespace {

// "5 event-only sensor records, 1 OEM record"
std::string list_of_counts(const std::map<std::string, int>& counts) {
  std::string text;
  for (const auto& [kind, count] : counts) {
    text += (text.empty() ? "" : ", ") + counted(static_cast<size_t>(count), kind + " record");
  }
  return text;
}

bool is_json(const Form& form) {
  return form.kind == Form::Kind::kJson;
}

Json to_json(const Assets::Part& part) {
  return {{"count", part.count}, {"rows", part.listing.rows}};
}

Json to_json(const std::vector<Assets>& classes) {
  Json all = Json::array();
  for (const Assets& assets : classes) {
    all.push_back({{"class", assets.class_name},
                   {"frus_with_sensors", to_json(assets.frus)},
                   {"sensors", to_json(assets.sensors)}});
  }
  return all;
}

Json to_json(const std::vector<HeadedListing>& lists) {
  Json all = Json::object();
  for (const HeadedListing& each : lists) all[each.name] = each.listing.rows;
  return all;
}

void print_findings(std::ostream& out, const Checked& checked) {
  const size_t count = problems(checked);
  out << printable(checked.file) << ": " << (count == 0 ? "nothing is wrong" : counted(count, "problem")) << '\n';
  for (const Finding& finding : checked.findings) {
    out << "\n"
        << (finding.is_note ? "note: " : "") << (finding.table.empty() ? "" : "table " + finding.table + ": ")
        << printable(finding.problem) << '\n'
        << "  " << printable(finding.advice) << '\n';
  }
}

// Lists for people and spreadsheets. Records in full are what was asked for: a list that has none is no answer.
void print(std::ostream& out, const Form& form, const std::vector<HeadedListing>& lists) {
  if (form.kind == Form::Kind::kCsv) return print_csv(out, form, lists);
  for (const HeadedListing& each : lists) {
    if (form.kind == Form::Kind::kInFull && each.listing.rows.empty()) continue;
    if (form.has_heads) out << each.head << '\n';
    report(out, form, each.listing);
    if (form.has_heads) out << '\n';
  }
}

}  // namespace

size_t problems(const Checked& checked) {
  const auto is_problem = [](const Finding& finding) { return !finding.is_note; };
  return static_cast<size_t>(std::count_if(checked.findings.begin(), checked.findings.end(), is_problem));
}

std::string counted(size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void report(std::ostream& out, const Form& form, const Listing& listing) {
  switch (form.kind) {
    case Form::Kind::kTable:
      return print_table(out, form, listing);
    case Form::Kind::kInFull:
      return print_in_full(out, form, listing);
    case Form::Kind::kJson:
      return print_json(out, listing.rows);
    case Form::Kind::kCsv:
      return print_csv(out, form, {{"", "", listing}});
  }
}

void report(std::ostream& out, const Form& form, const std::vector<HeadedListing>& lists) {
  if (is_json(form)) return print_json(out, to_json(lists));
  print(out, form, lists);
}

void report(std::ostream& out, const Form& form, const std::vector<Assets>& classes) {
  if (is_json(form)) return print_json(out, to_json(classes));
  std::vector<HeadedListing> lists;
  for (const Assets& assets : classes) {
    const std::string& name = assets.class_name;
    const std::string pairs = counted(static_cast<size_t>(assets.frus.count), "pair");
    const std::string sensors = counted(static_cast<size_t>(assets.sensors.count), "full sensor");
    lists.push_back({name + " FRUs", name + ": " + pairs + " of a FRU and a full sensor", assets.frus.listing});
    lists.push_back({name + " sensors", name + ": " + sensors, assets.sensors.listing});
  }
  print(out, form, lists);
}

void report(std::ostream& out, const Form& form, const ImportFiles& files, const Inventory& stored) {
  Json counts = Json::object();
  std::string text;
  const auto add = [&](const char* key, const char* what, size_t count) {
    counts[key] = count;
    text += "stored " + counted(count, what) + '\n';
  };
  if (!files.repository.empty() || !files.frus.empty()) {
    add("compact_sensors", "compact sensor", stored.compact_sensors.size());
    add("full_sensors", "full sensor", stored.full_sensors.size());
    add("frus", "FRU", stored.frus.size());
  }
  if (stored.fru_locators) add("fru_locators", "FRU locator", stored.fru_locators->size());
  if (stored.event_log) add("events", "event", stored.event_log->events.size());
  if (is_json(form)) {
    print_json(out, {{"stored", counts}, {"not_held", stored.not_held}, {"notes", stored.notes}});
    return;
  }
  out << text;
  if (!stored.not_held.empty()) {
    out << "not stored, as no table holds them: " << list_of_counts(stored.not_held) << '\n';
  }
}

void report(std::ostream& out, const Form& form, const Exported& exported) {
  Json files = Json::array();
  std::string text;
  for (const Exported::File& file : exported.files) {
    files.push_back({{"file", file.name}, {"bytes", file.size}});
    text += (text.empty() ? "" : "\n") + ("wrote " + file.name) + ", " + counted(file.size, "byte");
  }
  report(out, form, {{"written", files}, {"notes", exported.notes}}, text);
}

void report(std::ostream& out, const Form& form, const std::vector<Checked>& files) {
  if (form.kind == Form::Kind::kTable) {
    for (const Checked& checked : files) print_findings(out, checked);
    return;
  }
  Listing listing{
      {text_column("File", kWide, "file"), text_column("Table", kWide, "table"), text_column("Kind", kWide, "kind"),
       text_column("Problem", kWide, "problem"), text_column("Advice", kWide, "advice")},
      {},
      ""};
  for (const Checked& checked : files) {
    for (const Finding& finding : checked.findings) {
      listing.rows.push_back({{"file", checked.file},
                              {"table", finding.table},
                              {"kind", finding.is_note ? "note" : "problem"},
                              {"problem", finding.problem},
                              {"advice", finding.advice}});
    }
  }
  report(out, form, listing);
}

void report(std::ostream& out, const Form& form, const Json& json, const std::string& text) {
  if (is_json(form)) return print_json(out, json);
  out << printable(text, "\n") << '\n';
}

void report(std::ostream& out, const Form& form, const Purged& purged) {
  report(out, form, {{"purged", {{"jobs", purged.jobs}, {"errors", purged.errors}}}},
         "purged " + counted(purged.jobs.size(), "job") + " and " + counted(purged.errors.size(), "error record"));
}

}  // namespace qmvctl
