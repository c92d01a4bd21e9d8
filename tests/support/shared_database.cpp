#include "support/shared_database.h"

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace qmv::test {

namespace {

// Shared by all connections that name it.
constexpr char kShared[] = "file:/shared?vfs=memdb";

std::function<sqlite3*()> opens;
std::vector<sqlite3*> opened_by_library;
std::string uptime = "12345.67 1.0\n";

}  // namespace

int open_shared(sqlite3** connection) {
  return sqlite3_open_v2(kShared, connection, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI, nullptr);
}

void open_by(std::function<sqlite3*()> open) {
  opens = std::move(open);
}

void close(sqlite3* connection) {
  while (sqlite3_stmt* statement = sqlite3_next_stmt(connection, nullptr)) sqlite3_finalize(statement);
  if (sqlite3_close(connection) == SQLITE_OK) return;
  std::fputs("something else than a statement keeps a connection open\n", stderr);
  std::abort();
}

void close_left_open() {
  for (sqlite3* connection : std::exchange(opened_by_library, {})) close(connection);
}

void set_uptime(const std::string& text) {
  uptime = text;
}

}  // namespace qmv::test

extern "C" {

int __real_sqlite3_close(sqlite3* connection);
std::FILE* __real_fopen(const char* path, const char* mode);
int __wrap_sqlite3_open(const char* path, sqlite3** connection);
int __wrap_sqlite3_close(sqlite3* connection);
std::FILE* __wrap_fopen(const char* path, const char* mode);

int __wrap_sqlite3_open(const char*, sqlite3** connection) {
  using namespace qmv::test;
  int code = SQLITE_OK;
  if (opens) {
    *connection = opens();
  } else {
    code = open_shared(connection);
  }
  opened_by_library.push_back(*connection);
  return code;
}

int __wrap_sqlite3_close(sqlite3* connection) {
  const int code = __real_sqlite3_close(connection);
  if (code == SQLITE_OK) std::erase(qmv::test::opened_by_library, connection);
  return code;
}

std::FILE* __wrap_fopen(const char* path, const char* mode) {
  if (std::string(path) != "/proc/uptime") return __real_fopen(path, mode);
  return fmemopen(qmv::test::uptime.data(), qmv::test::uptime.size(), mode);
}

}  // extern "C"
