// Whether other processes keep the database from being written, and which.
#include <fcntl.h>
#include <fmt/format.h>

#include <chrono>
#include <fstream>
#include <optional>
#include <string_view>
#include <thread>

#include "check.h"

namespace qmvctl {

namespace {

constexpr int kPatienceMilliseconds = 1000;

// The bytes of the file on which SQLite has its locks where a rollback journal is used: that of the one writer, and
// that of all who read.
struct LockRange {
  off_t start;
  off_t length;
};
constexpr LockRange kWriting{0x40000001, 1};
constexpr LockRange kReading{0x40000002, 510};

// Opens a file for good: closing any descriptor of it would release the locks that SQLite has through its own.
int descriptor_of(const std::string& file) {
  return open(file.c_str(), O_RDONLY | O_CLOEXEC);
}

// A process that holds a lock on this range, 0 for one that cannot be named from within this container.
std::optional<pid_t> holder_of(const LockRange& range, int descriptor) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = range.start;
  lock.l_len = range.length;
  const bool is_held = fcntl(descriptor, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  return is_held ? std::optional(lock.l_pid) : std::nullopt;
}

// A process that reads whenever somebody looks: its reading does not end, or the next begins at once.
std::optional<pid_t> lasting_reader_of(int descriptor) {
  constexpr int kLooks = 20;
  const std::optional<pid_t> reader = holder_of(kReading, descriptor);
  for (int look = 0; reader && look < kLooks; ++look) {
    std::this_thread::sleep_for(std::chrono::milliseconds(kPatienceMilliseconds / kLooks));
    if (holder_of(kReading, descriptor) != reader) return std::nullopt;
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
  return fmt::format("process {}", process) + (name.empty() ? "" : " (" + name + ")");
}

}  // namespace

void check_locks(const Database& database, std::vector<Finding>& findings) {
  sqlite3_busy_timeout(database.handle(), kPatienceMilliseconds);
  const int status = sqlite3_exec(database.handle(), "begin immediate; rollback;", nullptr, nullptr, nullptr);
  std::string holder;
  const int descriptor = descriptor_of(database.file());
  if (status == SQLITE_BUSY) {
    holder = process_name(holder_of(kWriting, descriptor).value_or(0)) + " has held the write lock";
  } else if (status == SQLITE_OK && !has_write_ahead_log(database)) {
    const std::optional<pid_t> reader = lasting_reader_of(descriptor);
    if (reader) holder = process_name(*reader) + " has held a read lock";
  }
  if (holder.empty()) return;
  findings.push_back({"", holder + " for a second: nobody else can store anything.",
                      "See what it is doing, or stop it; fuser FILE names the processes that have the file open."});
}

}  // namespace qmvctl
