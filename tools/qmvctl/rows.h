// Rows read through the library, as vectors.
#ifndef QMVCTL_ROWS_H
#define QMVCTL_ROWS_H

#include <cstdint>
#include <string>
#include <vector>

#include "database.h"

namespace qmvctl {

// Calls a get-all of the library: read(handle, &count, &records). The table is named in the message of a failure.
template <class Record, class Read>
std::vector<Record> read_all(const Database& database, const std::string& table, Read read) {
  int32_t count = 0;
  Record* records = nullptr;
  const int32_t status = read(database.handle(), &count, &records);
  std::vector<Record> rows;
  if (status == 0 && records) rows.assign(records, records + count);
  db_freemem(records);
  if (status != 0) database.fail_to_read(table);
  return rows;
}

// How many rows a table has.
inline size_t count_rows(const Database& database, const char* table) {
  int32_t count = 0;
  if (db_get_cnt(database.handle(), &count, table) != 0) database.fail_to_read(table);
  return static_cast<size_t>(count);
}

// A get-all of the library that takes the records before their count, as read_all() calls it.
template <class Record>
auto count_first(int32_t (*get_all)(sqlite3*, Record**, int32_t*)) {
  return [get_all](sqlite3* db, int32_t* count, Record** records) { return get_all(db, records, count); };
}

inline std::vector<compact_sdr_rec> compact_sensors(const Database& database) {
  return read_all<compact_sdr_rec>(database, "compact_sdr", db_get_all_compact_sdrs);
}

inline std::vector<full_sdr_rec> full_sensors(const Database& database) {
  return read_all<full_sdr_rec>(database, "full_sdr", db_get_all_full_sdrs);
}

inline std::vector<fru_rec> frus(const Database& database) {
  return read_all<fru_rec>(database, "fru", db_get_all_fru_info);
}

// Has no get-all: the keys are the command's own query.
std::vector<fru_locator_sdr_rec> fru_locators(const Database& database);

inline std::vector<sel_rec> events(const Database& database) {
  return read_all<sel_rec>(database, "sel", db_get_all_sel_records);
}

}  // namespace qmvctl

#endif
