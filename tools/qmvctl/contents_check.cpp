// Rows that the library cannot hold or does not know.
#include <fmt/format.h>

#include <sstream>

#include "check.h"
#include "field_widths.h"
#include "names.h"
#include "sel_record.h"
#include "table_shape.h"

namespace qmvctl {

namespace {

// SQLite puts the problems of one B-tree together, under a head.
void check_integrity_row(sqlite3_stmt* row, std::vector<Finding>& findings) {
  std::istringstream lines(reinterpret_cast<const char*>(sqlite3_column_text(row, 0)));
  for (std::string line; std::getline(lines, line);) {
    const bool is_problem = line != "ok" && !line.starts_with("***");
    if (is_problem) findings.push_back({"", "the file is damaged: " + line, kRestore});
  }
}

// "1 text is", "2 texts are"
std::string texts_are(int count) {
  return count == 1 ? "1 text is" : fmt::format("{} texts are", count);
}

// What becomes of texts that are too long.
std::string effect_of(int count, const FieldWidth& width) {
  if (!width.runs_on) return fmt::format("wider than the field of {} bytes, and cut when read", width.bytes);
  return fmt::format("longer than {} bytes, and {} on over the fields behind {} own when read", width.bytes - 1,
                     count == 1 ? "runs" : "run", count == 1 ? "its" : "their");
}

void check_width(const Database& database, const std::string& table, const std::string& column, const FieldWidth& width,
                 std::vector<Finding>& findings) {
  const std::string length = fmt::format("length(cast({} as blob))", column);
  const size_t longest = width.runs_on ? width.bytes - 1 : width.bytes;
  const std::string wide = fmt::format("from {} where {} > {};", table, length, longest);
  database.query(fmt::format("select count(*), max({}) {}", length, wide).c_str(), [&](sqlite3_stmt* row) {
    const int count = sqlite3_column_int(row, 0);
    if (count == 0) return;
    findings.push_back({table,
                        fmt::format("column {}: {} {}; the longest has {}.", column, texts_are(count),
                                    effect_of(count, width), sqlite3_column_int(row, 1)),
                        fmt::format("Shorten them: select {}, {} {}", column, length, wide)});
  });
}

// "54 reserved", and what is no byte as it is stored, up to where it is cut.
constexpr int kLongestEntity = 32;
std::string entity_text(sqlite3_stmt* row) {
  std::string stored = reinterpret_cast<const char*>(sqlite3_column_text(row, 0));
  if (sqlite3_column_int(row, 3) > kLongestEntity) stored += "...";
  if (sqlite3_column_type(row, 1) != SQLITE_INTEGER) return stored;
  const sqlite3_int64 id = sqlite3_column_int64(row, 1);
  return id >= 0 && id <= 0xFF ? stored + " " + entity_name(static_cast<int32_t>(id)) : stored;
}

// Rows whose entity ID is outside the map from entities to CIM classes, which goes from 0 to 53. What IPMI 2.0, table
// 43-13, allows is as it may be; what it reserves, and what is no byte, is wrong.
struct EntityCheck {
  const char* condition;
  const char* problem;
  const char* advice;
  bool is_note;
};
constexpr EntityCheck kEntityChecks[] = {
    {"EntityID is not null and (typeof(EntityID) <> 'integer' or EntityID not between 0 and 255 or EntityID = 54 or "
     "EntityID between 56 and 63 or EntityID between 67 and 143)",
     "that IPMI does not know", "They are in no class and in no assets. Correct them", false},
    // The last ranges are those of the chassis, of sets of boards and of OEMs.
    {"typeof(EntityID) = 'integer' and (EntityID in (55, 64, 65, 66) or EntityID between 144 and 255)",
     "without a CIM class", "They are in no class and in no assets, and nothing is to be done. To see them", true},
};

void check_entities(const Database& database, const std::string& table, const EntityCheck& check,
                    std::vector<Finding>& findings) {
  const std::string where = fmt::format("from {} where {}", table, check.condition);
  const std::string each = fmt::format(
      "select substr(quote(EntityID), 1, {}), EntityID, count(*), length(quote(EntityID)) {} group by EntityID;",
      kLongestEntity, where);
  constexpr int kNamed = 10;
  std::string entities;
  int different = 0;
  int count = 0;
  database.query(each.c_str(), [&](sqlite3_stmt* row) {
    if (different < kNamed) entities += (different == 0 ? "" : ", ") + entity_text(row);
    different += 1;
    count += sqlite3_column_int(row, 2);
  });
  if (different > kNamed) entities += fmt::format(" and {} more", different - kNamed);
  if (count == 0) return;
  findings.push_back({table,
                      fmt::format("column EntityID: {} {}: {}.",
                                  count == 1 ? "1 row has an entity" : fmt::format("{} rows have entities", count),
                                  check.problem, entities),
                      fmt::format("{}: select * {};", check.advice, where), check.is_note});
}

// What the controller's log cannot hold.
void check_record_ids(const Database& database, std::vector<Finding>& findings) {
  const std::string where = fmt::format("from sel where RecordID not between 1 and {}", kLastRecordId);
  database.query(fmt::format("select count(*) {};", where).c_str(), [&](sqlite3_stmt* row) {
    const int count = sqlite3_column_int(row, 0);
    if (count == 0) return;
    findings.push_back({"sel",
                        fmt::format("column RecordID: {} outside 1 to {}: the log cannot be exported, and nothing is "
                                    "added behind one above them.",
                                    count == 1 ? "1 event is" : fmt::format("{} events are", count), kLastRecordId),
                        "Delete them: delete " + where + ";"});
  });
}

}  // namespace

void check_integrity(const Database& database, std::vector<Finding>& findings) {
  database.query("pragma integrity_check(10);", [&](sqlite3_stmt* row) { check_integrity_row(row, findings); });
}

void check_contents(const Database& database, const std::string& table, std::vector<Finding>& findings) {
  const Names names = columns_of(database, table);
  const NameSet columns(names.begin(), names.end());
  for (const auto& [column, width] : field_widths(table)) {
    if (columns.contains(column)) check_width(database, table, column, width, findings);
  }
  if (columns.contains("EntityID")) {
    for (const EntityCheck& check : kEntityChecks) check_entities(database, table, check, findings);
  }
  if (table == "sel" && columns.contains("RecordID")) check_record_ids(database, findings);
}

}  // namespace qmvctl
