// Rows that the library cannot hold or does not know.
#include <fmt/format.h>

#include "check.h"
#include "field_widths.h"
#include "names.h"
#include "table_shape.h"

namespace qmvctl {

namespace {

void check_integrity_row(sqlite3_stmt* row, std::vector<Finding>& findings) {
  const std::string text = reinterpret_cast<const char*>(sqlite3_column_text(row, 0));
  if (text == "ok") return;
  findings.push_back({"", "the file is damaged: " + text,
                      "Restore it from a copy, or save what can be read: sqlite3 FILE .recover | sqlite3 NEW"});
}

void check_width(const Database& database, const std::string& table, const std::string& column, size_t width,
                 std::vector<Finding>& findings) {
  const std::string length = fmt::format("length(cast({} as blob))", column);
  const std::string wide = fmt::format("from {} where {} > {};", table, length, width);
  database.query(fmt::format("select count(*), max({}) {}", length, wide).c_str(), [&](sqlite3_stmt* row) {
    const int count = sqlite3_column_int(row, 0);
    if (count == 0) return;
    findings.push_back(
        {table,
         fmt::format("column {}: {} wider than the field of {} bytes, and cut when read; the longest has {}.", column,
                     count == 1 ? "1 text is" : fmt::format("{} texts are", count), width, sqlite3_column_int(row, 1)),
         fmt::format("Shorten them: select {}, {} {}", column, length, wide)});
  });
}

// The map from entities to CIM classes goes from 0 to 53.
void check_entities(const Database& database, const std::string& table, std::vector<Finding>& findings) {
  const std::string where = fmt::format("from {} where EntityID not between 0 and 53", table);
  std::string ids;
  int count = 0;
  database.query(fmt::format("select EntityID, count(*) {} group by EntityID;", where).c_str(), [&](sqlite3_stmt* row) {
    const int id = sqlite3_column_int(row, 0);
    ids += fmt::format("{}{} {}", ids.empty() ? "" : ", ", id, entity_name(id));
    count += sqlite3_column_int(row, 1);
  });
  if (count == 0) return;
  findings.push_back(
      {table,
       fmt::format("column EntityID: {} outside 0 to 53, which have no CIM class: {}.",
                   count == 1 ? "1 row has an entity" : fmt::format("{} rows have entities", count), ids),
       fmt::format("Give them the entity that is nearest: select * {};", where)});
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
}

}  // namespace qmvctl
