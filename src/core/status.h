// The statuses that the library answers with on its own account; everything else is an SQLite result code passed on.
#ifndef QMV_CORE_STATUS_H
#define QMV_CORE_STATUS_H

#include <sqlite3.h>

#include <cstdint>

namespace qmv {

inline constexpr std::int32_t kOk = SQLITE_OK;
inline constexpr std::int32_t kFailure = 1;
inline constexpr std::int32_t kNoMemory = SQLITE_NOMEM;

}  // namespace qmv

#endif
