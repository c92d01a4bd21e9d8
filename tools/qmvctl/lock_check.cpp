// Whether other processes keep the database from being written, and which.
#include <fcntl.h>
#include <fmt/format.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string_view>
#include <thread>

#include "check.h"

namespace qmvctl {

namespace {

constexpr int kPatienceMilliseconds = 1000;

// The bytes of the file on which SQLite has its locks where a rollback journal is used: that of the one writer, and that
// of all who read.
struct Bytes {
  off_t start;
  off_t length;
};
constexpr Bytes kWriting{0x40000001, 1};
constexpr Bytes kReading{0x40000002, 510};

// A process that holds a lock on these bytes, 0 when there is none or it cannot be told. Asked while this process holds
// no lock, since closing the file releases all.
pid_t holder_of(const Bytes& bytes, const std::string& file) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(file.c_str(), "rb"), std::fclose);
  if (!stream) return 0;
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = bytes.start;
  lock.l_len = bytes.length;
  const bool is_held = fcntl(fileno(stream.get()), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  return is_held ? lock.l_pid : 0;
}

// The process that does not end its reading, 0 when each one does.
pid_t lasting_reader_of(const std::string& file) {
  constexpr int kLooks = 20;
  const pid_t reader = holder_of(kReading, file);
  for (int look = 0; look < kLooks; ++look) {
    if (reader == 0 || holder_of(kReading, file) != reader) return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(kPatienceMilliseconds / kLooks));
  }
  return reader;
}

// Where a write-ahead log is used, readers hold up nobody, and every connection holds the lock of readers.
bool has_write_ahead_log(const Database& database) {
  bool is_used = false;
  database.query("pragma journal_mode;", [&](sqlite3_stmt* row) {
    is_used = std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(row, 0))) == "wal";
  });
  return is_used;
}

// "process 4711 (name)"
std::string process_name(pid_t process) {
  if (process <= 0) return "another process";
  std::string name;
  std::getline(std::ifstream(fmt::format("/proc/{}/comm", process)), name);
  return fmt::format("process {} ({})", process, name);
}

}  // namespace

void check_locks(const Database& database, std::vector<Finding>& findings) {
  sqlite3_busy_timeout(database.handle(), kPatienceMilliseconds);
  const int status = sqlite3_exec(database.handle(), "begin immediate; rollback;", nullptr, nullptr, nullptr);
  std::string holder;
  if (status == SQLITE_BUSY) {
    holder = process_name(holder_of(kWriting, database.file())) + " has held the write lock";
  } else if (status == SQLITE_OK && !has_write_ahead_log(database)) {
    const pid_t reader = lasting_reader_of(database.file());
    if (reader != 0) holder = process_name(reader) + " has held a read lock";
  }
  if (holder.empty()) return;
  findings.push_back({"", holder + " for a second: nobody else can store anything.",
                      "See what it is doing, or stop it; fuser FILE names the processes that have the file open."});
}

}  // namespace qmvctl
