// Connections and statement execution.
#include <sqlite3.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>

#include "core/own_connection.h"
#include "core/statement.h"
#include "core/status.h"

namespace {

using namespace qmv;

constexpr Site here(std::uint32_t line = __builtin_LINE()) {
  return {Module::kDb, line};
}

constexpr unsigned kBusyWaitSeconds = 2;

// Waits for another process' lock without limit: 1 tells SQLite to try again.
extern "C" int db_busy_handler(void*, int) noexcept {
  trace(here(), Message("[%s:%d]Handler in busy"));
  sleep(kBusyWaitSeconds);
  return 1;
}

std::int32_t open_database(const char* path, sqlite3** db, Site site) {
  const std::int32_t code = sqlite3_open(path, db);
  if (code == SQLITE_OK) {
    trace(site, Format<'s'>("[%s:%d]Opened database(%s) successfully"), path);
    sqlite3_busy_handler(*db, db_busy_handler, nullptr);
    return kOk;
  }
  // QUIRK: A failed open is logged twice, in two calls. Hosts count these lines.
  // Test: DbOpen.FailedOpenIsLoggedTwiceAndTheHandleIsClosedAndKept.
  constexpr Format<'s', 's'> kFailed = "[%s:%d]Can't open database(%s): %s";
  error(site, kFailed, path, sqlite3_errmsg(*db));
  error(site, kFailed, path, sqlite3_errmsg(*db));
  sqlite3_close(*db);
  return code;
}

}  // namespace

std::int32_t qmv::execute(sqlite3* db, const char* format, va_list arguments) {
  const SqlText text(sqlite3_vmprintf(format, arguments));
  char* message = nullptr;
  const std::int32_t code = sqlite3_exec(db, text.get(), nullptr, nullptr, &message);
  if (code != SQLITE_OK) {
    // QUIRK: The line that speaks of success is written on failure, and only there; SQLite's own text is dropped
    // unread. Test: Db.ExecuteSpeaksOfSuccessWhenAStatementFailsAndReleasesTheErrorTextUnread.
    trace(here(), Message("[%s:%d]Successfully execute the SQLite query"));
    sqlite3_free(message);
  }
  return code;
}

std::int32_t db_init(sqlite3** db) noexcept {
  return open_database(kInstanceDatabase, db, here());
}

std::int32_t tmp_db_init(sqlite3** db) noexcept {
  return open_database(kTemporaryDatabase, db, here());
}

std::int32_t smash_db_init(sqlite3** db) noexcept {
  return open_database("/tmp/smashclp.db", db, here());
}

std::int32_t db_execute(sqlite3* db, const char* format, ...) noexcept {
  va_list arguments;
  va_start(arguments, format);
  const std::int32_t code = execute(db, format, arguments);
  va_end(arguments);
  return code;
}

std::int32_t db_commit(sqlite3* db) noexcept {
  trace(here(), Message("[%s:%d]Commit the SQLite Query"));
  return db_execute(db, "commit;");
}

std::int32_t db_close(sqlite3* db) noexcept {
  trace(here(), Message("[%s:%d]Terminate the database handler"));
  return sqlite3_close(db);
}

void db_freemem(void* memory) noexcept {
  if (memory == nullptr) return;
  trace(here(), Message("[%s:%d]Successfully free the Memory"));
  std::free(memory);
}
