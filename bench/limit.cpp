#include <cstdlib>
#include <cstring>

#include "compact_columns.h"
#include "contenders.h"

namespace qmv::bench::limit {

namespace {

template <std::size_t Width>
void read_text(sqlite3_stmt* row, int index, char (&field)[Width]) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, index));
  if (text != nullptr) std::memcpy(field, text, strnlen(text, Width));
}

void read(sqlite3_stmt* row, compact_sdr_rec& record) {
  int index = 0;
#define READ_INTEGER(column, member) record.member = sqlite3_column_int(row, index++);
#define READ_TEXT(column, member) read_text(row, index++, record.member);
  COMPACT_COLUMNS(READ_INTEGER, READ_TEXT, READ_TEXT)
  record.FruRecord.EntityID = record.EntityID;
  record.FruRecord.EntityInst = record.EntityInstance;
}

std::int32_t read_all(sqlite3_stmt* statement, std::int32_t known_count, compact_sdr_rec** records) {
  auto* next = static_cast<compact_sdr_rec*>(std::calloc(static_cast<std::size_t>(known_count), sizeof(**records)));
  *records = next;
  while (sqlite3_step(statement) == SQLITE_ROW) read(statement, *next++);
  return sqlite3_finalize(statement);
}

}  // namespace

std::int32_t get_all(sqlite3* db, std::int32_t known_count, compact_sdr_rec** records) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(db, "select * from compact_sdr;", -1, &statement, nullptr);
  return read_all(statement, known_count, records);
}

std::int32_t get_masked(sqlite3* db, std::int32_t mask, std::int32_t known_count, compact_sdr_rec** records) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(db,
                     "select * from compact_sdr where (PhysicalElement & ?1) = ?1 GROUP BY EntityID,EntityInstance;",
                     -1, &statement, nullptr);
  sqlite3_bind_int(statement, 1, mask);
  return read_all(statement, known_count, records);
}

std::int32_t get_one(sqlite3* db, const char* DeviceID, compact_sdr_rec** record) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(db, "select * from compact_sdr where DeviceID=?;", -1, &statement, nullptr);
  sqlite3_bind_text(statement, 1, DeviceID, -1, SQLITE_STATIC);
  return read_all(statement, 1, record);
}

}  // namespace qmv::bench::limit
