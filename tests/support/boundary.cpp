#include "support/boundary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <utility>

#include "qmv/core.h"

namespace qmv::test {

namespace {

// True when the countdown of a single fault ends with this call.
bool due(int& countdown) {
  if (countdown == 0 || --countdown != 0) return false;
  ++boundary().met;
  return true;
}

// Takes the answer of this call out of the faults, if it has one, and brings the others one call nearer.
bool take(Faults& faults, int& code) {
  Faults nearer;
  bool found = false;
  for (const auto& [call, answer] : faults) {
    if (call == 1) {
      code = answer;
      found = true;
      ++boundary().met;
    } else {
      nearer[call - 1] = answer;
    }
  }
  faults = nearer;
  return found;
}

// Allocates, or fails where that is asked for.
template <class Allocate>
void* allocated(std::size_t size, Allocate allocate) {
  ++boundary().allocations;
  if (due(boundary().fail_allocation)) {
    if (boundary().allocations_stay_failing) boundary().fail_allocation = 1;
    return nullptr;
  }
  void* const block = allocate();
  boundary().blocks_alive[block] = size;
  return block;
}

// The lines of a module's sources on which an accessor calls here(), which log lines name as their place.
const std::set<int>& places(const std::string& module) {
  static const std::map<std::string, std::string> kFolders = {{"db.c", "core"},
                                                              {"db_sdrd.c", "sdr"},
                                                              {"db_seld.c", "sel"},
                                                              {"db_frud.c", "fru"},
                                                              {"db_static_instance.c", "instances/static"},
                                                              {"db_dynamic_instance.c", "instances/dynamic"}};
  static std::map<std::string, std::set<int>> found;
  const auto [entry, is_new] = found.try_emplace(module);
  const auto folder = kFolders.find(module);
  if (!is_new || folder == kFolders.end()) return entry->second;
  for (const auto& file : std::filesystem::directory_iterator(QMV_SOURCES "/" + folder->second)) {
    std::ifstream source(file.path());
    std::string text;
    for (int line = 1; std::getline(source, text); ++line) {
      if (text.find("here()") != std::string::npos) entry->second.insert(line);
    }
  }
  return entry->second;
}

__attribute__((format(printf, 3, 0))) void record(int expected_level, int level, const char* format,
                                                  va_list arguments) {
  boundary().while_logging();
  EXPECT_EQ(expected_level, level) << "each function has one level";
  boundary().formats.insert(format);
  va_list copy;
  va_copy(copy, arguments);
  const std::string module = va_arg(copy, const char*);
  const int line = va_arg(copy, int);
  va_end(copy);
  EXPECT_EQ(1u, places(module).count(line)) << "no accessor is at " << module << ":" << line;
  char whole[8192];
  std::vsnprintf(whole, sizeof(whole), format, arguments);
  const std::string site = "[" + module + ":" + std::to_string(line) + "]";
  const std::string text = whole;
  boundary().log.push_back({level, module, text.rfind(site, 0) == 0 ? text.substr(site.size()) : text, line});
}

// Keeps a statement that SQLite was given.
void given(const std::string& statement) {
  boundary().statements.push_back(statement);
  boundary().all_statements += statement + '\n';
}

}  // namespace

void PrintTo(const LogLine& line, std::ostream* out) {
  *out << line.level << " [" << line.module << "]" << line.text;
}

// Never destroyed, since blocks are released until the process ends.
Boundary& boundary() {
  static auto& only = *new Boundary;
  return only;
}

std::string redirected(const std::string& path) {
  for (const char* fixed :
       {"/tmp/cim.db", "/tmp/tmp_cim.db", "/tmp/smashclp.db", "/etc/Association.db", "/proc/uptime"}) {
    if (path == fixed) return boundary().fixed_files + path.substr(path.rfind('/'));
  }
  return path;
}

}  // namespace qmv::test

using qmv::test::boundary;

extern "C" {

void HTRC_LINUXAPP_DbgOut(int level, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  qmv::test::record(130, level, format, arguments);
  va_end(arguments);
}

void HTRC_LINUXAPP_Runtime_DbgOut(int level, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  qmv::test::record(135, level, format, arguments);
  va_end(arguments);
}

void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
std::FILE* __real_fopen(const char* path, const char* mode);
char* __real_sqlite3_vmprintf(const char* format, va_list arguments);
void __real_sqlite3_free(void* memory);
const char* __real_sqlite3_errmsg(sqlite3* db);
int __real_sqlite3_busy_handler(sqlite3* db, int (*handler)(void*, int), void* context);

void* __wrap_calloc(std::size_t count, std::size_t size) {
  return qmv::test::allocated(count * size,
                              [=] { return __real_calloc(std::min(count, boundary().largest_array), size); });
}

void* __wrap_malloc(std::size_t size) {
  return qmv::test::allocated(size, [=] { return __real_malloc(size); });
}

void* __wrap_realloc(void* block, std::size_t size) {
  return qmv::test::allocated(size, [=] {
    boundary().blocks_alive.erase(block);
    return __real_realloc(block, size);
  });
}

void __wrap_free(void* block) {
  boundary().blocks_alive.erase(block);
  __real_free(block);
}

std::FILE* __wrap_fopen(const char* path, const char* mode) {
  return __real_fopen(qmv::test::redirected(path).c_str(), mode);
}

unsigned __wrap_sleep(unsigned seconds) {
  boundary().sleeps.push_back(seconds);
  boundary().while_sleeping();
  return 0;
}

int __wrap_sqlite3_open(const char* path, sqlite3** db) {
  boundary().opened.emplace_back(path);
  int code = __real_sqlite3_open(qmv::test::redirected(path).c_str(), db);
  qmv::test::take(boundary().opens, code);
  if (code == SQLITE_NOMEM) __real_sqlite3_close(std::exchange(*db, nullptr));
  boundary().last_opened = *db;
  if (*db != nullptr) boundary().connections_alive.insert(*db);
  return code;
}

int __wrap_sqlite3_close(sqlite3* db) {
  const int code = __real_sqlite3_close(db);
  if (code == SQLITE_OK) boundary().connections_alive.erase(db);
  return code;
}

const char* __wrap_sqlite3_errmsg(sqlite3* db) {
  ++boundary().messages_fetched;
  return __real_sqlite3_errmsg(db);
}

int __wrap_sqlite3_busy_handler(sqlite3* db, int (*handler)(void*, int), void* context) {
  boundary().busy_handler = handler;
  ++boundary().busy_handlers_installed;
  return __real_sqlite3_busy_handler(db, handler, context);
}

char* __wrap_sqlite3_vmprintf(const char* format, va_list arguments) {
  boundary().formats.insert(format);
  if (qmv::test::due(boundary().fail_text)) return nullptr;
  char* text = __real_sqlite3_vmprintf(format, arguments);
  if (text != nullptr) boundary().texts_alive.insert(text);
  return text;
}

char* __wrap_sqlite3_mprintf(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  char* text = __wrap_sqlite3_vmprintf(format, arguments);
  va_end(arguments);
  return text;
}

void __wrap_sqlite3_free(void* memory) {
  boundary().texts_alive.erase(memory);
  __real_sqlite3_free(memory);
}

int __wrap_sqlite3_exec(sqlite3* db, const char* text, int (*row)(void*, int, char**, char**), void* context,
                        char** error) {
  qmv::test::given(text == nullptr ? "(null)" : text);
  int code = 0;
  if (qmv::test::take(boundary().execs, code)) return code;
  code = __real_sqlite3_exec(db, text, row, context, error);
  if (error != nullptr && *error != nullptr) boundary().texts_alive.insert(*error);
  return code;
}

int __wrap_sqlite3_prepare(sqlite3* db, const char* text, int length, sqlite3_stmt** statement, const char** tail) {
  qmv::test::given(text == nullptr ? "(null)" : std::string(text, static_cast<std::size_t>(length)));
  boundary().tails.push_back(tail != nullptr);
  if (boundary().change && boundary().statements.back().rfind(boundary().change_before, 0) == 0) {
    ++boundary().met;
    std::exchange(boundary().change, nullptr)();
  }
  *statement = nullptr;
  int code = SQLITE_OK;
  if (qmv::test::take(boundary().prepares, code) || qmv::test::due(boundary().miss_statement)) return code;
  code = __real_sqlite3_prepare(db, text, length, statement, tail);
  if (code == SQLITE_OK && *statement != nullptr) ++boundary().statements_alive;
  return code;
}

int __wrap_sqlite3_step(sqlite3_stmt* statement) {
  int code = 0;
  return qmv::test::take(boundary().steps, code) ? code : __real_sqlite3_step(statement);
}

int __wrap_sqlite3_finalize(sqlite3_stmt* statement) {
  if (statement != nullptr) --boundary().statements_alive;
  const int real = __real_sqlite3_finalize(statement);
  int code = 0;
  return qmv::test::take(boundary().finalizes, code) ? code : real;
}

}  // extern "C"
