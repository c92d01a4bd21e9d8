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

// "54 reserved", and what is no byte as it is stored.
std::string entity_text(sqlite3_stmt* row) {
  std::string stored = reinterpret_cast<const char*>(sqlite3_column_text(row, 0));
  if (sqlite3_column_type(row, 1) != SQLITE_INTEGER) return stored;
  const sqlite3_int64 id = sqlite3_column_int64(row, 1);
  return id >= 0 && id <= 0xFF ? stored + " " + entity_name(static_cast<int32_t>(id)) : stored;
}

// The map from entities to CIM classes goes from 0 to 53.
void check_entities(const Database& database, const std::string& table, std::vector<Finding>& findings) {
  const std::string where = fmt::format("from {} where EntityID not between 0 and 53", table);
  const std::string each = fmt::format("select quote(EntityID), EntityID, count(*) {} group by EntityID;", where);
  std::string entities;
  int count = 0;
  database.query(each.c_str(), [&](sqlite3_stmt* row) {
    entities += (entities.empty() ? "" : ", ") + entity_text(row);
    count += sqlite3_column_int(row, 2);
  });
  if (count == 0) return;
  findings.push_back(
      {table,
       fmt::format("column EntityID: {} outside 0 to 53, which have no CIM class: {}.",
                   count == 1 ? "1 row has an entity" : fmt::format("{} rows have entities", count), entities),
       "They are in no class and in no assets. Where the server itself says so, as with the OEM entities from 208 on, "
       "nothing is to be done; else: select * " +
           where + ";"});
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
  if (columns.contains("EntityID")) check_entities(database, table, findings);
  if (table == "sel" && columns.contains("RecordID")) check_record_ids(database, findings);
}

}  // namespace qmvctl
