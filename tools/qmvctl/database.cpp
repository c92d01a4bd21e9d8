#include "database.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "sample.h"
#include "schema.h"

namespace qmvctl {

namespace {

constexpr int kWaitMilliseconds = 60'000;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File open_file(const std::string& name, const char* mode) {
  return {std::fopen(name.c_str(), mode), std::fclose};
}

std::string name_or_default(const std::string& file, const DatabaseKind& kind) {
  return file.empty() ? kind.file : file;
}

// The name as SQLite takes it for that of a file: "file:a" and ":memory:" are something else to it.
std::string path_of(const std::string& file) {
  return file.starts_with('/') ? file : "./" + file;
}

// A command of qmvctl that looks after a file of that kind.
std::string command_on(const std::string& command, const std::string& file, const DatabaseKind& kind) {
  const std::string option = file == kind.file ? "" : " --db " + file;
  return "qmvctl " + command + " " + kind.name + option;
}

int open_connection(const std::string& path, const DatabaseKind& kind, sqlite3** handle) {
  if (path == kind.file && kind.open) return kind.open(handle);
  const int status = sqlite3_open(path.c_str(), handle);
  if (status == SQLITE_OK) return sqlite3_busy_timeout(*handle, kWaitMilliseconds);
  sqlite3_close(*handle);
  return status;
}

[[noreturn]] void fail_as_it_exists(const std::string& file) {
  throw FileError(file, kIsNotTouched);
}

// Whether that is a regular file of 0 bytes, as SQLite makes one for a host that only reads.
bool is_empty_file(const std::string& name) {
  struct stat info {};
  return lstat(name.c_str(), &info) == 0 && S_ISREG(info.st_mode) && info.st_size == 0;
}

// Creates a file unless there is an empty one.
void make_file(const std::string& name) {
  if (open_file(name, "wbx")) return;
  const int error = errno;
  if (error != EEXIST) throw FileError(name, std::strerror(error));
  if (!is_empty_file(name)) fail_as_it_exists(name);
}

// Whether something of that name is there, were it a link to nothing.
bool is_taken(const std::string& name) {
  struct stat info {};
  return lstat(name.c_str(), &info) == 0;
}

}  // namespace

const DatabaseKind kInstanceDatabase{"cim", "/tmp/cim.db", db_init, kSchemaCim, store_sample_instances};
const DatabaseKind kTemporaryDatabase{"tmp_cim", "/tmp/tmp_cim.db", tmp_db_init, kSchemaTmpCim, store_sample_jobs};
const DatabaseKind kShellDatabase{"smashclp", "/tmp/smashclp.db", smash_db_init, kSchemaSmashclp,
                                  store_sample_shell_jobs};
const DatabaseKind kRegistry{"association", "/etc/Association.db", nullptr, kSchemaAssociation, nullptr};

Database Database::open(const std::string& file, const DatabaseKind& kind) {
  const std::string name = name_or_default(file, kind);
  struct stat info {};
  const bool is_there = stat(name.c_str(), &info) == 0;
  if (is_there && !S_ISREG(info.st_mode)) throw FileError(name, "is no regular file");  // opening a pipe waits
  if (!is_there || !open_file(name, "rb")) {                                            // SQLite would create it
    const int error = errno;
    const std::string hint = error == ENOENT ? " (" + command_on("init", name, kind) + " creates it)" : "";
    throw FileError(name, std::strerror(error) + hint);
  }
  return Database(name, path_of(name), kind);
}

void Database::create(const std::string& file, const DatabaseKind& kind, Contents contents) {
  const std::string name = name_or_default(file, kind);
  make_file(name);
  Database database(name, path_of(name), kind);
  Transaction transaction(database);
  // Another process may have filled the file until now, but cannot from here on. What fails leaves it empty, and does
  // not remove it: another process may be about to fill it.
  if (!is_empty_file(name)) fail_as_it_exists(name);
  database.execute(kind.schema);
  if (contents == Contents::kSample) kind.store_sample(database);
  transaction.commit();
}

bool Database::exists(const DatabaseKind& kind) {
  struct stat info {};
  return stat(kind.file, &info) == 0;
}

void Database::create_all(Contents contents) {
  for (const DatabaseKind* kind : kDatabaseKinds) {
    if (kind->open && is_taken(kind->file) && !is_empty_file(kind->file)) fail_as_it_exists(kind->file);
  }
  for (const DatabaseKind* kind : kDatabaseKinds) {
    if (kind->open) create("", *kind, contents);
  }
}

Database::Database(const std::string& file, const std::string& path, const DatabaseKind& kind)
    : file_(file), kind_(kind) {
  const int status = open_connection(path, kind, &handle_);
  if (status != SQLITE_OK) fail(std::string("cannot be opened: ") + sqlite3_errstr(status));
}

Database::~Database() {
  db_close(handle_);
}

void Database::execute(const char* statement) {
  if (db_execute(handle_, "%s", statement) != SQLITE_OK) fail(sqlite3_errmsg(handle_));
}

void Database::query(const char* statement, const std::function<void(sqlite3_stmt*)>& take_row) const {
  sqlite3_stmt* raw = nullptr;
  if (sqlite3_prepare_v2(handle_, statement, -1, &raw, nullptr) != SQLITE_OK) fail(sqlite3_errmsg(handle_));
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> prepared(raw, sqlite3_finalize);
  int status = sqlite3_step(raw);
  for (; status == SQLITE_ROW; status = sqlite3_step(raw)) take_row(raw);
  if (status != SQLITE_DONE) fail(sqlite3_errmsg(handle_));
}

void Database::fail(const std::string& reason) const {
  throw FileError(file_, reason);
}

void Database::fail_to_read(const std::string& table) const {
  const bool has_reason = sqlite3_errcode(handle_) != SQLITE_OK && sqlite3_errcode(handle_) != SQLITE_DONE;
  const std::string reason = has_reason ? std::string(": ") + sqlite3_errmsg(handle_) : "";
  fail("table " + table + " cannot be read" + reason + check_hint());
}

std::string Database::check_hint() const {
  return " (" + command_on("check", file_, kind_) + " may tell why)";
}

Transaction::Transaction(Database& database) : database_(database) {
  database_.execute("begin immediate;");
}

Transaction::~Transaction() {
  if (is_open_) db_execute(database_.handle(), "rollback;");
}

void Transaction::commit() {
  if (db_commit(database_.handle()) != SQLITE_OK) database_.fail(sqlite3_errmsg(database_.handle()));
  is_open_ = false;
}

}  // namespace qmvctl
