#include "support/table_test.h"

#include <algorithm>
#include <cstring>
#include <regex>

namespace qmv::test {

void TableTest::SetUp() {
  DatabaseTest::SetUp();
  Texts columns;
  for (const Field& field : record_table_.fields) {
    columns.push_back(std::string(field.column) + (field.is_text() ? " text" : " integer"));
  }
  sql("create table " + record_table_.name + " (" + joined(columns) + ", unique (" + record_table_.key + "));");
}

TableTest::Bytes TableTest::sample(int first) const {
  Bytes record(record_table_.record_size);
  const Texts all = values(first);
  for (std::size_t i = 0; i < all.size(); ++i) put(record, record_table_.fields[i], all[i]);
  return record;
}

TableTest::Bytes TableTest::sample_with_quotes(int first) const {
  Bytes record = sample(first);
  for (const Field& field : texts()) put(record, field, "t'" + member(record, field).substr(1));
  return record;
}

std::string TableTest::with_quotes(const std::string& statement) {
  return std::regex_replace(statement, std::regex("'t([0-9])"), "'t''$1");
}

TableTest::Row TableTest::first_row() {
  sqlite3_stmt* row = nullptr;
  EXPECT_EQ(SQLITE_OK,
            sqlite3_prepare_v2(db, ("select * from " + record_table_.name + ";").c_str(), -1, &row, nullptr));
  EXPECT_EQ(SQLITE_ROW, __real_sqlite3_step(row));
  return {row, __real_sqlite3_finalize};
}

void TableTest::make_counts_negative() {
  sqlite3_create_function(
      db, "count", 0, SQLITE_UTF8, nullptr, nullptr, [](sqlite3_context*, int, sqlite3_value**) {},
      [](sqlite3_context* context) { sqlite3_result_int(context, -1); });
}

std::string TableTest::member(const void* record, const Field& field) {
  const char* at = static_cast<const char*>(record) + field.offset;
  if (field.is_text()) return {at, strnlen(at, field.width)};
  std::int32_t number;
  std::memcpy(&number, at, sizeof(number));
  return std::to_string(number);
}

void TableTest::put(Bytes& record, const Field& field, const std::string& value) {
  char* at = record.data() + field.offset;
  if (field.is_text()) {
    std::memset(at, 0, field.width);
    std::memcpy(at, value.data(), std::min(value.size(), field.width));
  } else {
    const std::int32_t number = std::stoi(value);
    std::memcpy(at, &number, sizeof(number));
  }
}

std::string TableTest::stored(const Field& field, const std::string& condition) {
  return value_of(std::string("select ") + field.column + " from " + record_table_.name + condition + ";");
}

std::vector<Field> TableTest::texts() const {
  std::vector<Field> found = record_table_.fields;
  std::erase_if(found, [](const Field& field) { return !field.is_text(); });
  return found;
}

std::vector<Field> TableTest::numbers() const {
  std::vector<Field> found = record_table_.fields;
  std::erase_if(found, [](const Field& field) { return field.is_text(); });
  return found;
}

Texts TableTest::values(int first) const {
  Texts all;
  for (const Field& field : record_table_.fields) {
    all.push_back((field.is_text() ? "t" : "") + std::to_string(first + static_cast<int>(all.size())));
  }
  if (first == 100 && !record_table_.only_row.empty()) all[0] = record_table_.only_row;
  return all;
}

Texts TableTest::literals(int first) const {
  Texts all = values(first);
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (record_table_.fields[i].is_text()) all[i] = "'" + all[i] + "'";
  }
  return all;
}

Texts TableTest::names() const {
  Texts all;
  for (const Field& field : record_table_.fields) all.emplace_back(field.column);
  return all;
}

std::string TableTest::joined(const Texts& texts, const std::string& separator) {
  std::string whole;
  for (const std::string& text : texts) whole += (whole.empty() ? "" : separator) + text;
  return whole;
}

}  // namespace qmv::test
