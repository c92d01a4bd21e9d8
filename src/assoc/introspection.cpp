// Reading files without knowing their schema: plug-in registrations, tables, columns and values. Nothing here is
// logged.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/columns.h"
#include "core/formatted_twice.h"
#include "core/own_connection.h"
#include "core/statement.h"
#include "core/status.h"
#include "qmv/assoc.h"

namespace {

using namespace qmv;

constexpr char kRegistrations[] = "association_reg";
constexpr std::size_t kStatementSize = 256;
constexpr std::size_t kValueSize = 256;

constexpr auto kRegistrationColumns = [] {
  using Record = association_reg_rec;
  return columns<Record>(QMV_COLUMN_AT(3, RegColumn3), QMV_COLUMN_AT(0, RegColumn0), QMV_COLUMN_AT(2, RegColumn2),
                         QMV_COLUMN_AT(1, RegColumn1));
}();

// Copies a text and its terminating zero, at most kValueSize bytes; NULL gives an empty text.
void copy_value(const char* text, char* value) {
  const std::size_t length = text == nullptr ? 0 : strnlen(text, kValueSize - 1);
  if (length != 0) std::memcpy(value, text, length);
  value[length] = 0;
}

// A statement text that is formatted a second time, with nothing to take.
SqlText formatted_again(char (&text)[kStatementSize]) {
  format_without_arguments(text);
  return SqlText(sqlite3_mprintf("%s", text));
}

// Appends a node to a list. Returns its place, NULL when memory is short.
column_name_node* append(column_name_node** head) {
  column_name_node** end = head;
  while (*end != nullptr) end = &(*end)->Next;
  *end = static_cast<column_name_node*>(std::calloc(1, sizeof(column_name_node)));
  return *end;
}

}  // namespace

std::int32_t get_row_count(sqlite3* db, const char* table) noexcept {
  const SqlText text(sqlite3_mprintf("SELECT Count(*) FROM  %q;", table));
  Statement statement;
  statement.prepare(db, text);
  std::int32_t rows = 0;
  while (statement.step() == SQLITE_ROW) rows = sqlite3_column_int(statement.get(), 0);
  return rows;
}

std::int32_t get_table_count(sqlite3_stmt* statement) noexcept {
  std::int32_t rows = 0;
  while (sqlite3_step(statement) == SQLITE_ROW) ++rows;
  return rows;
}

std::int32_t load_plugins(association_reg_rec** records, std::int32_t* count, const char* file) noexcept {
  const OwnConnection connection(file);
  if (!connection.is_open()) return kFailure;
  const std::int32_t rows = get_row_count(connection.get(), kRegistrations);
  *count = rows;
  if (rows <= 0) return kOk;
  auto* const made =
      static_cast<association_reg_rec*>(std::calloc(static_cast<std::size_t>(rows), sizeof(association_reg_rec)));
  if (made == nullptr) return kFailure;
  const SqlText text(sqlite3_mprintf("select * from %q", kRegistrations));
  Statement statement;
  if (statement.prepare(connection.get(), text) != SQLITE_OK) {
    std::free(made);
    return kFailure;
  }
  std::int32_t step = statement.step();
  for (std::int32_t i = 0; step == SQLITE_ROW; step = statement.step()) {
    if (i < rows) read_row(statement.get(), kRuns<kRegistrationColumns>.layout, &made[i++], Before::kZero);
  }
  *records = made;
  return step == SQLITE_DONE ? kOk : kFailure;
}

std::int32_t get_static_instances(const char* file, std::int32_t* rows, char* table) noexcept {
  const OwnConnection connection(file);
  if (!connection.is_open()) return kFailure;
  const SqlText text(sqlite3_mprintf("%s", "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name;"));
  Statement tables;
  if (tables.prepare(connection.get(), text) != SQLITE_OK) return kFailure;
  SqlText last(nullptr);
  while (tables.step() == SQLITE_ROW) last.replace(sqlite3_mprintf("%s", sqlite3_column_text(tables.get(), 0)));
  if (last.get() == nullptr) return kFailure;
  copy_value(last.get(), table);
  *rows = get_row_count(connection.get(), last.get());
  return kOk;
}

std::int32_t GetColumnNames(column_name_node** head, const char* file, const char* table) noexcept {
  OwnConnection connection(file);
  if (!connection.is_open()) return kFailure;
  char pragma[kStatementSize];
  std::snprintf(pragma, sizeof(pragma), "PRAGMA table_info(%s);", table);
  SqlText text = formatted_again(pragma);
  Statement columns;
  if (columns.prepare(connection.get(), text) != SQLITE_OK) return kFailure;
  while (columns.step() == SQLITE_ROW) {
    column_name_node* const node = append(head);
    if (node == nullptr) {
      // QUIRK: The connection stays open. Test: Introspection.ColumnNamesWithoutMemoryLeaveTheConnectionOpen.
      columns.leave_open();
      text.leave_allocated();
      connection.leave_unclosed();
      return kFailure;
    }
    read_text(columns.get(), 1, node->ColumnName, sizeof(node->ColumnName), Before::kZero);
  }
  // QUIRK: Neither is the statement finalised nor the text released, so closing fails and a descriptor stays open.
  // Test: Introspection.ColumnNamesLeaveTheirStatementOpen.
  columns.leave_open();
  text.leave_allocated();
  return kOk;
}

std::int32_t free_column_names(column_name_node* head) noexcept {
  while (head != nullptr) {
    column_name_node* const next = head->Next;
    std::free(head);
    head = next;
  }
  return kOk;
}

std::int32_t GetColumnValues(const char* file, char* value, const char* column, const char* table,
                             std::int32_t row) noexcept {
  const OwnConnection connection(file);
  if (!connection.is_open()) return kFailure;
  char select[kStatementSize];
  std::snprintf(select, sizeof(select), "SELECT %s FROM  %s WHERE ROWID=%d;", column, table, row);
  const SqlText text = formatted_again(select);
  Statement statement;
  if (statement.prepare(connection.get(), text) != SQLITE_OK) return kFailure;
  statement.step();
  if (value != nullptr) copy_value(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)), value);
  // QUIRK: The statement is not finalised, so closing fails; on a row it keeps the file's shared lock.
  // Test: Introspection.ColumnValuesLeaveTheirStatementOpen.
  statement.leave_open();
  return value != nullptr ? kOk : kFailure;
}
