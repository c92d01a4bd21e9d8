// The functions of the sensors. C code in all but name: what somebody writes who is given the steps and has a hundred
// tables to go.
#include "plain.h"

#include <cstdarg>
#include <cstdlib>

#include "compact_columns.h"
#include "contenders.h"

namespace qmv::bench::plain {

std::int32_t execute(sqlite3* db, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  char* text = sqlite3_vmprintf(format, arguments);
  va_end(arguments);
  char* message = nullptr;
  const std::int32_t code = sqlite3_exec(db, text, nullptr, nullptr, &message);
  if (code != SQLITE_OK) {
    TRACE("[%s:%d]Successfully execute the SQLite query", "db.c", __LINE__);
    if (message != nullptr) sqlite3_free(message);
  }
  sqlite3_free(text);
  return code;
}

namespace {

constexpr char kFile[] = "db_sdrd.c";

std::int32_t read(compact_sdr_rec* record, sqlite3_stmt* row) {
  if (record == nullptr || row == nullptr) return 1;
  const unsigned char* text = nullptr;
  int index = 0;
  COMPACT_COLUMNS(READ_INTEGER, READ_TEXT, READ_TEXT)
  record->FruRecord.EntityID = record->EntityID;
  record->FruRecord.EntityInst = record->EntityInstance;
  return 0;
}

std::int32_t count_rows(sqlite3* db, std::int32_t* count, const char* sql, bool* found) {
  std::int32_t result = 0;
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare(db, sql, static_cast<int>(std::strlen(sql)), &statement, nullptr) != SQLITE_OK) {
    COMPILE_ERROR(db);
    return 1;
  }
  if (statement == nullptr) {
    TRACE("[%s:%d]No records found", kFile, __LINE__);
    return 0;
  }
  if ((result = sqlite3_step(statement)) == SQLITE_ROW) {
    *count = sqlite3_column_int(statement, 0);
    result = sqlite3_finalize(statement);
    *found = true;
  } else {
    TRACE("[%s:%d]No records found", kFile, __LINE__);
  }
  return result;
}

std::int32_t get_all_rows(sqlite3* db, const char* sql, std::int32_t count, compact_sdr_rec** records) {
  const char* tail = nullptr;
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare(db, sql, static_cast<int>(std::strlen(sql)), &statement, &tail) != SQLITE_OK) {
    COMPILE_ERROR(db);
    return 1;
  }
  const std::size_t size = static_cast<std::size_t>(count) * sizeof(**records);
  *records = static_cast<compact_sdr_rec*>(std::malloc(size));
  if (*records == nullptr) {
    TRACE("[%s:%d]Memory allocation error", kFile, __LINE__);
    return 1;
  }
  std::memset(*records, 0, size);
  if (statement == nullptr) return 0;
  TRACE("[%s:%d]Get All compact SDR records from database", kFile, __LINE__);
  std::int32_t filled = 0;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    if (filled < count) {
      read(&(*records)[filled], statement);
      TRACE("[%s:%d]Successfully got the Sensor record", kFile, __LINE__);
      ++filled;
    }
  }
  TRACE("[%s:%d]Successfully got all the sensors", kFile, __LINE__);
  return sqlite3_finalize(statement);
}

}  // namespace

std::int32_t count(sqlite3* db, std::int32_t* count, std::int32_t mask) noexcept {
  *count = 0;
  char* sql = nullptr;
  if (mask == 0) {
    sql = sqlite3_mprintf("select count(*) from %q;", "compact_sdr");
  } else {
    sql = sqlite3_mprintf(
        "select count(*) from (select * from %q where (PhysicalElement & %i) = %i GROUP BY EntityID,EntityInstance);",
        "compact_sdr", mask, mask);
  }
  bool found = false;
  const std::int32_t result = count_rows(db, count, sql, &found);
  if (found) TRACE("[%s:%d]Successfully return the no. of sensors present", kFile, __LINE__);
  sqlite3_free(sql);
  return result;
}

std::int32_t get_all(sqlite3* db, std::int32_t* count, compact_sdr_rec** records) noexcept {
  *records = nullptr;
  std::int32_t rows = 0;
  if (plain::count(db, &rows, 0) != 0 || rows < 0) {
    TRACE("[%s:%d]Fail to get sensor records", kFile, __LINE__);
    return 1;
  }
  if (rows == 0) return 0;
  *count = rows;
  char* sql = sqlite3_mprintf("select * from %q;", "compact_sdr");
  const std::int32_t result = get_all_rows(db, sql, rows, records);
  sqlite3_free(sql);
  return result;
}

std::int32_t get_masked(sqlite3* db, std::int32_t mask, std::int32_t* count, compact_sdr_rec** records) noexcept {
  *records = nullptr;
  std::int32_t rows = 0;
  if (plain::count(db, &rows, mask) != 0 || rows < 0) {
    TRACE("[%s:%d]Fail to get sensor records", kFile, __LINE__);
    return 1;
  }
  if (rows == 0) return 0;
  *count = rows;
  char* sql = sqlite3_mprintf("select * from %q where (PhysicalElement & %i) = %i GROUP BY EntityID,EntityInstance;",
                              "compact_sdr", mask, mask);
  const std::int32_t result = get_all_rows(db, sql, rows, records);
  sqlite3_free(sql);
  return result;
}

std::int32_t get_one(sqlite3* db, const char* DeviceID, compact_sdr_rec** record) noexcept {
  std::int32_t result = 0;
  const char* tail = nullptr;
  sqlite3_stmt* statement = nullptr;
  char* sql = sqlite3_mprintf("select * from %q where DeviceID='%q';", "compact_sdr", DeviceID);
  if ((result = sqlite3_prepare(db, sql, static_cast<int>(std::strlen(sql)), &statement, &tail)) != SQLITE_OK) {
    COMPILE_ERROR(db);
  } else if (statement == nullptr) {
    TRACE("[%s:%d]Failed to get Compact SDR records. SQLite stmt is NULL", kFile, __LINE__);
    result = 1;
  } else {
    if (sqlite3_step(statement) == SQLITE_ROW) {
      *record = static_cast<compact_sdr_rec*>(std::calloc(1, sizeof(**record)));
      if (*record == nullptr) {
        TRACE("[%s:%d]Memory allocation error", kFile, __LINE__);
        sqlite3_free(sql);
        return 7;
      }
      TRACE("[%s:%d]Get compact sdr from database", kFile, __LINE__);
      read(*record, statement);
    } else {
      TRACE("[%s:%d]Failed to get the Compact SDR record", kFile, __LINE__);
      result = 1;
    }
    sqlite3_finalize(statement);
  }
  sqlite3_free(sql);
  return result;
}

namespace {

std::int32_t count_pairs(sqlite3* db, std::int32_t* count) {
  *count = 0;
  char* sql = sqlite3_mprintf(
      "select count(*) from %q \t    \t\tJOIN %q ON %q.EntityID = %q.EntityID and \t    \t\t%q.EntityInst = "
      "%q.EntityInstance;",
      "fru", "compact_sdr", "fru", "compact_sdr", "fru", "compact_sdr");
  bool found = false;
  const std::int32_t result = count_rows(db, count, sql, &found);
  if (found) TRACE("[%s:%d]Successfully returns the fru-compact_sdr count %d", kFile, __LINE__, *count);
  sqlite3_free(sql);
  return result;
}

std::int32_t read_inventory(sqlite3* db, sqlite3_stmt* pairs, fru_sdr_rec* record) {
  char* sql = sqlite3_mprintf(
      "select ChassisSerNumber, ChassisPartNumber, \t\t\t    \t\tChassisCustFields, ProdSerNumber, ProdPartNumber, "
      "ProdMfrName, \t\t\t    \t\tBrdSerNumber, BrdPartNumber, BrdMfrName from '%q' where \t\t\t    "
      "\t\t%q.FruIDSlaveAddr==%i and %q.DeviceAccessAddr==%i and \t\t\t    \t\t%q.LUNBusID==%i and "
      "%q.ChannelNumber==%i;",
      "fru", "fru", sqlite3_column_int(pairs, 0), "fru", sqlite3_column_int(pairs, 1), "fru",
      sqlite3_column_int(pairs, 2), "fru", sqlite3_column_int(pairs, 3));
  const char* tail = nullptr;
  sqlite3_stmt* row = nullptr;
  const std::int32_t code = sqlite3_prepare(db, sql, static_cast<int>(std::strlen(sql)), &row, &tail);
  if (code != SQLITE_OK) {
    COMPILE_ERROR(db);
    return code;
  }
  if (row != nullptr) {
    TRACE("[%s:%d]Get all Chassis, Board, Product info from FRU table", kFile, __LINE__);
    if (sqlite3_step(row) == SQLITE_ROW) {
      const unsigned char* text = nullptr;
      int index = 0;
      READ_TEXT(ChassisSerNumber, ChassisSerNumber)
      READ_TEXT(ChassisPartNumber, ChassisPartNumber)
      READ_TEXT(ChassisCustFields, ChassisCustFields)
      READ_TEXT(ProdSerNumber, ProdSerNumber)
      READ_TEXT(ProdPartNumber, ProdPartNumber)
      READ_TEXT(ProdMfrName, ProdMfrName)
      READ_TEXT(BrdSerNumber, BrdSerNumber)
      READ_TEXT(BrdPartNumber, BrdPartNumber)
      READ_TEXT(BrdMfrName, BrdMfrName)
    }
    sqlite3_finalize(row);
  }
  sqlite3_free(sql);
  return 0;
}

std::int32_t get_all_pairs(sqlite3* db, const char* sql, std::int32_t count, fru_sdr_rec** records) {
  const char* tail = nullptr;
  sqlite3_stmt* row = nullptr;
  if (sqlite3_prepare(db, sql, static_cast<int>(std::strlen(sql)), &row, &tail) != SQLITE_OK) {
    COMPILE_ERROR(db);
    return 1;
  }
  const std::size_t size = static_cast<std::size_t>(count) * sizeof(**records);
  *records = static_cast<fru_sdr_rec*>(std::malloc(size));
  if (*records == nullptr) {
    TRACE("[%s:%d]Memory allocation error", kFile, __LINE__);
    return 1;
  }
  std::memset(*records, 0, size);
  if (row == nullptr) return 0;
  TRACE("[%s:%d]Get all Physical asset records from database", kFile, __LINE__);
  std::int32_t filled = 0;
  while (sqlite3_step(row) == SQLITE_ROW) {
    if (filled < count) {
      fru_sdr_rec* record = &(*records)[filled];
      const unsigned char* text = nullptr;
      int index = 0;
      READ_INTEGER(FruIDSlaveAddr, FruIDSlaveAddr)
      READ_INTEGER(DeviceAccessAddr, DeviceAccessAddr)
      READ_INTEGER(LUNBusID, LUNBusID)
      READ_INTEGER(ChannelNumber, ChannelNumber)
      READ_INTEGER(EntityID, EntityID)
      READ_INTEGER(EntityInst, EntityInst)
      READ_INTEGER(IdStrLen, IdStrLen)
      READ_TEXT(IdStr, IdStr)
      TRACE("[%s:%d]EntityID :: %d\n Entity Instance::%d\n", kFile, __LINE__, sqlite3_column_int(row, 4),
            sqlite3_column_int(row, 5));
      const std::int32_t code = read_inventory(db, row, record);
      if (code != SQLITE_OK) return code;
      ++filled;
    }
  }
  TRACE("[%s:%d]Successfully got all the Physical Assert from compact_sdr", kFile, __LINE__);
  return sqlite3_finalize(row);
}

}  // namespace

std::int32_t get_pairs(sqlite3* db, std::int32_t* count, fru_sdr_rec** records) noexcept {
  *records = nullptr;
  std::int32_t pairs = 0;
  const std::int32_t counted = count_pairs(db, &pairs);
  if (pairs == 0) return 0;
  if (counted != 0 || pairs < 0) {
    TRACE("[%s:%d]Fail to get physical asset records from compact_sdr", kFile, __LINE__);
    return 1;
  }
  *count = pairs;
  char* sql = sqlite3_mprintf(
      "select %q.FruIDSlaveAddr, %q.DeviceAccessAddr, \t    \t\t%q.LUNBusID, %q.ChannelNumber, %q.EntityID, "
      "%q.EntityInst, \t    \t\t%q.IdStrLen, IdStr from %q \t    \t\tJOIN %q ON %q.EntityID = %q.EntityID and \t    "
      "\t\t%q.EntityInst = %q.EntityInstance;",
      "fru", "fru", "fru", "fru", "fru", "fru", "fru", "fru", "compact_sdr", "fru", "compact_sdr", "fru",
      "compact_sdr");
  const std::int32_t result = get_all_pairs(db, sql, pairs, records);
  sqlite3_free(sql);
  return result;
}

std::int32_t set(sqlite3* db, const compact_sdr_rec* record) noexcept {
#define NAME(column, member) #column ", "
#define LAST_NAME(column, member) #column
#define INTEGER_VALUE(column, member) "%i, "
#define TEXT_VALUE(column, member) "'%q', "
#define LAST_VALUE(column, member) "'%q'"
#define SET_INTEGER(column, member) #column "=%i, "
#define SET_TEXT(column, member) #column "='%q', "
#define LAST_SET(column, member) #column "='%q'"
#define ARGUMENT(column, member) record->member,
#define LAST_ARGUMENT(column, member) record->member
  if (execute(db,
              "insert into %q (" COMPACT_COLUMNS(NAME, NAME, LAST_NAME) ") values (" COMPACT_COLUMNS(
                  INTEGER_VALUE, TEXT_VALUE, LAST_VALUE) ");",
              "compact_sdr", COMPACT_COLUMNS(ARGUMENT, ARGUMENT, LAST_ARGUMENT)) == SQLITE_CONSTRAINT) {
    TRACE("[%s:%d]Sensor record is already present with that key", kFile, __LINE__);
    execute(db, "update %q set " COMPACT_COLUMNS(SET_INTEGER, SET_TEXT, LAST_SET) "  where DeviceID='%q';",
            "compact_sdr", COMPACT_COLUMNS(ARGUMENT, ARGUMENT, LAST_ARGUMENT), record->DeviceID);
  }
  TRACE("[%s:%d]Successfully update the Sensor record", kFile, __LINE__);
  return 0;
}

}  // namespace qmv::bench::plain
