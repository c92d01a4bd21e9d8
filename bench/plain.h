// What the files of PLAIN share: log lines, the reading of a column, the execution of a statement. Each has a kFile,
// the module that its log lines name.
#ifndef QMV_BENCH_PLAIN_H
#define QMV_BENCH_PLAIN_H

#include <qmv.h>
#include <sqlite3.h>

#include <cstdint>
#include <cstring>

#define TRACE(...) HTRC_LINUXAPP_Runtime_DbgOut(135, __VA_ARGS__)
#define COMPILE_ERROR(db) \
  HTRC_LINUXAPP_DbgOut(130, "[%s:%d]SQL Compilation error: %s", kFile, __LINE__, sqlite3_errmsg(db))

// The blind copy: as many bytes as the field has, however short the text. memory.cpp makes sure that there are so many.
#define READ_INTEGER(column, member) record->member = sqlite3_column_int(row, index++);
#define READ_TEXT(column, member)                              \
  if ((text = sqlite3_column_text(row, index++)) != nullptr) { \
    std::memcpy(record->member, text, sizeof(record->member)); \
  } else {                                                     \
    std::memset(record->member, 0, sizeof(record->member));    \
  }

namespace qmv::bench::plain {

std::int32_t execute(sqlite3* db, const char* format, ...);

}  // namespace qmv::bench::plain

#endif
