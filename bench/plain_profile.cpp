// The functions of a profile table, and the count of any table's rows that they begin with.
#include <cstdlib>

#include "contenders.h"
#include "plain.h"

namespace qmv::bench::plain {

namespace {

constexpr char kFile[] = "db_static_instance.c";
constexpr char kTable[] = "ssh_capabilities";

std::int32_t read(ssh_capabilities_rec* record, sqlite3_stmt* row) {
  if (record == nullptr || row == nullptr) return 1;
  const unsigned char* text = nullptr;
  int index = 0;
  READ_TEXT(InstanceID, InstanceID)
  READ_TEXT(ElementName, ElementName)
  READ_INTEGER(ElementNameEditSupported, ElementNameEditSupported)
  READ_INTEGER(MaxConnections, MaxConnections)
  READ_TEXT(RequestedStatesSupported, RequestedStatesSupported)
  READ_INTEGER(ListeningPortManagementSupported, ListeningPortManagementSupported)
  READ_INTEGER(MaxListeningPorts, MaxListeningPorts)
  READ_TEXT(SupportedSSHVersions, SupportedSSHVersions)
  READ_TEXT(SupportedEncryptionAlgorithms, SupportedEncryptionAlgorithms)
  return 0;
}

std::int32_t count_rows(sqlite3* db, std::int32_t* count, const char* table) {
  *count = 0;
  if (std::strlen(table) == 0) {
    HTRC_LINUXAPP_DbgOut(130, "[%s:%d]Table name is empty", kFile, __LINE__);
    return 1;
  }
  std::int32_t result = 0;
  sqlite3_stmt* statement = nullptr;
  char* sql = sqlite3_mprintf("select count(*) from %q;", table);
  if (sqlite3_prepare(db, sql, static_cast<int>(std::strlen(sql)), &statement, nullptr) != SQLITE_OK) {
    COMPILE_ERROR(db);
    result = 1;
  } else if (statement == nullptr) {
    TRACE("[%s:%d]No records found", kFile, __LINE__);
  } else if ((result = sqlite3_step(statement)) == SQLITE_ROW) {
    *count = sqlite3_column_int(statement, 0);
    result = sqlite3_finalize(statement);
    TRACE("[%s:%d]Successfully returns the ssh count", kFile, __LINE__);
  } else {
    TRACE("[%s:%d]No records found", kFile, __LINE__);
  }
  sqlite3_free(sql);
  return result;
}

std::int32_t get_all_rows(sqlite3* db, const char* sql, std::int32_t count, ssh_capabilities_rec** records) {
  const char* tail = nullptr;
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare(db, sql, static_cast<int>(std::strlen(sql)), &statement, &tail) != SQLITE_OK) {
    COMPILE_ERROR(db);
    return 1;
  }
  const std::size_t size = static_cast<std::size_t>(count) * sizeof(**records);
  *records = static_cast<ssh_capabilities_rec*>(std::malloc(size));
  if (*records == nullptr) {
    TRACE("[%s:%d]Memory allocation error", kFile, __LINE__);
    return 1;
  }
  std::memset(*records, 0, size);
  if (statement == nullptr) return 0;
  TRACE("[%s:%d]Get all ssh from database", kFile, __LINE__);
  std::int32_t filled = 0;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    if (filled < count) {
      read(&(*records)[filled], statement);
      ++filled;
    }
  }
  TRACE("[%s:%d]Successfully got all the ssh", kFile, __LINE__);
  return sqlite3_finalize(statement);
}

}  // namespace

std::int32_t get_all_capabilities(sqlite3* db, std::int32_t* count, ssh_capabilities_rec** records) noexcept {
  std::int32_t rows = 0;
  if (count_rows(db, &rows, kTable) != 0 || rows < 0) {
    TRACE("[%s:%d]Fail to get ssh records", kFile, __LINE__);
    return 1;
  }
  if (rows == 0) return 0;
  *count = rows;
  char* sql = sqlite3_mprintf("select * from %q;", kTable);
  const std::int32_t result = get_all_rows(db, sql, rows, records);
  sqlite3_free(sql);
  return result;
}

std::int32_t get_capabilities(sqlite3* db, const char* InstanceID, ssh_capabilities_rec** record) noexcept {
  std::int32_t result = 0;
  const char* tail = nullptr;
  sqlite3_stmt* statement = nullptr;
  char* sql = sqlite3_mprintf("select * from %q where InstanceID='%q';", kTable, InstanceID);
  if (sqlite3_prepare(db, sql, static_cast<int>(std::strlen(sql)), &statement, &tail) != SQLITE_OK) {
    COMPILE_ERROR(db);
    result = 1;
  } else if (statement == nullptr) {
    TRACE("[%s:%d]Fail to get SSH Capabilities record. SQLite stmt is NULL", kFile, __LINE__);
    result = 1;
  } else {
    if (sqlite3_step(statement) == SQLITE_ROW) {
      *record = static_cast<ssh_capabilities_rec*>(std::calloc(1, sizeof(**record)));
      if (*record == nullptr) {
        TRACE("[%s:%d]Memory allocation error", kFile, __LINE__);
        sqlite3_free(sql);
        return 1;
      }
      TRACE("[%s:%d]Get SSH Capabilities rec from database", kFile, __LINE__);
      read(*record, statement);
    } else {
      TRACE("[%s:%d]Fail to get the SSH Capabilities record", kFile, __LINE__);
      result = 1;
    }
    sqlite3_finalize(statement);
  }
  sqlite3_free(sql);
  return result;
}

std::int32_t set_capabilities(sqlite3* db, const ssh_capabilities_rec* record) noexcept {
  if (execute(db,
              "insert into %q (InstanceID, ElementName, ElementNameEditSupported,\t\t\tMaxConnections, "
              "RequestedStatesSupported, \t\t\tListeningPortManagementSupported, MaxListeningPorts, "
              "\t\t\tSupportedSSHVersions, SupportedEncryptionAlgorithms)\t\t\tvalues ('%.256q', '%.256q', %i, %i, "
              "'%.256q', %i, %i, '%.256q', '%.256q');",
              kTable, record->InstanceID, record->ElementName, record->ElementNameEditSupported, record->MaxConnections,
              record->RequestedStatesSupported, record->ListeningPortManagementSupported, record->MaxListeningPorts,
              record->SupportedSSHVersions, record->SupportedEncryptionAlgorithms) == SQLITE_CONSTRAINT) {
    TRACE("[%s:%d]SSH record is already present with that key", kFile, __LINE__);
    execute(db,
            "update %q set InstanceID='%.256q', ElementName='%.256q', \t\t\tElementNameEditSupported=%i, "
            "MaxConnections=%i, \t\t\tRequestedStatesSupported='%.256q', "
            "ListeningPortManagementSupported=%i,\t\t\tMaxListeningPorts=%i, SupportedSSHVersions='%.256q', "
            "\t\t\tSupportedEncryptionAlgorithms='%.256q' where InstanceID='%.256q' ;",
            kTable, record->InstanceID, record->ElementName, record->ElementNameEditSupported, record->MaxConnections,
            record->RequestedStatesSupported, record->ListeningPortManagementSupported, record->MaxListeningPorts,
            record->SupportedSSHVersions, record->SupportedEncryptionAlgorithms, record->InstanceID);
  }
  TRACE("[%s:%d]Successfully update the SSH record", kFile, __LINE__);
  return 0;
}

}  // namespace qmv::bench::plain
