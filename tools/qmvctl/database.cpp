#include "database.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "schema_cim.h"

namespace qmvctl {

namespace {

constexpr int kWaitMilliseconds = 60'000;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File open_file(const std::string& name, const char* mode) {
  return {std::fopen(name.c_str(), mode), std::fclose};
}

std::string name_or_default(const std::string& file) {
  return file.empty() ? kInstanceDatabase : file;
}

int open_connection(const std::string& file, sqlite3** handle) {
  if (file == kInstanceDatabase) return db_init(handle);
  const int status = sqlite3_open(file.c_str(), handle);
  if (status == SQLITE_OK) return sqlite3_busy_timeout(*handle, kWaitMilliseconds);
  sqlite3_close(*handle);
  return status;
}

}  // namespace

Database Database::open(const std::string& file) {
  const std::string name = name_or_default(file);
  if (!open_file(name, "rb")) {  // SQLite would create it
    throw std::runtime_error(name + ": " + std::strerror(errno) + (errno == ENOENT ? " (qmvctl init creates it)" : ""));
  }
  return Database(name);
}

void Database::create(const std::string& file) {
  const std::string name = name_or_default(file);
  if (!open_file(name, "wbx")) {
    throw std::runtime_error(name + ": " +
                             (errno == EEXIST ? "the file exists and is not touched" : std::strerror(errno)));
  }
  try {
    Database database(name);
    Transaction transaction(database);
    database.execute(kSchemaCim);
    transaction.commit();
  } catch (...) {
    std::remove(name.c_str());
    throw;
  }
}

Database::Database(const std::string& file) : file_(file) {
  const int status = open_connection(file_, &handle_);
  if (status != SQLITE_OK) fail(std::string("cannot be opened: ") + sqlite3_errstr(status));
}

Database::~Database() {
  db_close(handle_);
}

void Database::execute(const char* statement) {
  if (db_execute(handle_, "%s", statement) != SQLITE_OK) fail(sqlite3_errmsg(handle_));
}

void Database::fail(const std::string& text) const {
  throw std::runtime_error(file_ + ": " + text);
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
