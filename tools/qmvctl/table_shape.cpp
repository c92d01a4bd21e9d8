#include "table_shape.h"

#include <fmt/format.h>
#include <strings.h>

namespace qmvctl {

namespace {

std::string text_at(sqlite3_stmt* row, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  return text ? text : "";
}

std::vector<Uniqueness> uniqueness_of(const Database& database, const std::string& table) {
  std::vector<Uniqueness> all;
  constexpr const char* kKeyWithoutIndex =
      "select name from pragma_table_info('{0}') where pk > 0 and "
      "not exists (select 1 from pragma_index_list('{0}') where origin = 'pk');";
  const Names key = names_of(database, fmt::format(kKeyWithoutIndex, table));
  if (!key.empty()) all.push_back({set_of(key), "", false, false});
  constexpr const char* kIndexes =
      "select list.name, list.partial, info.name, info.cid = -2 from pragma_index_list('{}') list, "
      "pragma_index_info(list.name) info where list.\"unique\" order by list.name;";
  database.query(fmt::format(kIndexes, table).c_str(), [&](sqlite3_stmt* row) {
    const std::string index = text_at(row, 0);
    if (all.empty() || all.back().index != index) all.push_back({{}, index, sqlite3_column_int(row, 1) != 0, false});
    const bool is_expression = sqlite3_column_int(row, 3) != 0;
    if (is_expression) {
      all.back().has_expressions = true;
    } else {
      all.back().columns.insert(text_at(row, 2));
    }
  });
  return all;
}

}  // namespace

bool NameOrder::operator()(const std::string& a, const std::string& b) const {
  return strcasecmp(a.c_str(), b.c_str()) < 0;
}

Names names_of(const Database& database, const std::string& query) {
  Names names;
  database.query(query.c_str(), [&](sqlite3_stmt* row) { names.push_back(text_at(row, 0)); });
  return names;
}

NameSet set_of(const Names& names) {
  return {names.begin(), names.end()};
}

NameSet tables_of(const Database& database) {
  return set_of(names_of(database, "select name from sqlite_master where type = 'table';"));
}

NameSet views_of(const Database& database) {
  return set_of(names_of(database, "select name from sqlite_master where type = 'view';"));
}

Names columns_of(const Database& database, const std::string& table) {
  return names_of(database,
                  fmt::format("select name from pragma_table_xinfo('{}') where hidden <> 1 order by cid;", table));
}

TableShape shape_of(const Database& database, const std::string& table) {
  return {table, columns_of(database, table), uniqueness_of(database, table)};
}

std::vector<TableShape> references(const DatabaseKind& kind) {
  Database database = Database::in_memory();
  database.execute(kind.schema);
  std::vector<TableShape> shapes;
  for (const std::string& table : tables_of(database)) shapes.push_back(shape_of(database, table));
  return shapes;
}

std::string objection_to_rows(const Database& database, const TableShape& reference) {
  const Names values(reference.columns.size(), "null");
  const std::string insert = fmt::format("insert into {} ({}) values ({});", reference.name,
                                         fmt::join(reference.columns, ", "), fmt::join(values, ", "));
  sqlite3_stmt* compiled = nullptr;
  const int status = sqlite3_prepare_v2(database.handle(), insert.c_str(), -1, &compiled, nullptr);
  sqlite3_finalize(compiled);
  return status == SQLITE_OK ? "" : sqlite3_errmsg(database.handle());
}

}  // namespace qmvctl
