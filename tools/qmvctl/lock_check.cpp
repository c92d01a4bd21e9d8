// Whether another process keeps the database from being written, and which.
#include <fcntl.h>
#include <fmt/format.h>

#include <cstdio>
#include <fstream>
#include <memory>

#include "check.h"

namespace qmvctl {

namespace {

constexpr int kPatienceMilliseconds = 1000;

// The process that holds the lock of writers, 0 when it cannot be told: where a rollback journal is used, SQLite has it
// on this byte of the file. Asked while this process holds no lock, since closing the file releases all.
pid_t writer_of(const std::string& file) {
  constexpr off_t kReservedByte = 0x40000001;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(file.c_str(), "rb"), std::fclose);
  if (!stream) return 0;
  struct flock lock {};
  lock.l_type = F_RDLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = kReservedByte;
  lock.l_len = 1;
  const bool is_held = fcntl(fileno(stream.get()), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  return is_held ? lock.l_pid : 0;
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
  if (status != SQLITE_BUSY) return;
  const pid_t writer = writer_of(database.file());
  findings.push_back({"",
                      process_name(writer) + " has held the write lock for a second: nobody else can store anything.",
                      "See what it is doing, or stop it; fuser FILE names the processes that have the file open."});
}

}  // namespace qmvctl
