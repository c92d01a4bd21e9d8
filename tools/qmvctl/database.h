// Connections and transactions.
#ifndef QMVCTL_DATABASE_H
#define QMVCTL_DATABASE_H

#include <sqlite3.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "qmv.h"

namespace qmvctl {

class Database;

// One of the system's databases.
struct DatabaseKind {
  const char* name;
  const char* file;                   // where the library looks for it
  int32_t (*open)(sqlite3** handle);  // how the library opens that file; NULL where it does so for itself only
  const char* schema;
  void (*store_sample)(Database& database);  // NULL where there is no sample
};

extern const DatabaseKind kInstanceDatabase;   // also where the power supplies come from when no file is named
extern const DatabaseKind kTemporaryDatabase;  // jobs and their errors
extern const DatabaseKind kShellDatabase;      // the command-line shell's jobs
extern const DatabaseKind kRegistry;           // associations and plug-ins

inline constexpr const DatabaseKind* kDatabaseKinds[] = {&kInstanceDatabase, &kTemporaryDatabase, &kShellDatabase,
                                                         &kRegistry};

inline constexpr const char* kIsNotTouched = "the file exists and is not touched";

// What is wrong with a file: "FILE: REASON".
class FileError : public std::runtime_error {
 public:
  FileError(const std::string& file, const std::string& reason)
      : std::runtime_error(file + ": " + reason), file_(file), reason_(reason) {}

  const std::string& file() const { return file_; }
  const std::string& reason() const { return reason_; }

 private:
  std::string file_;
  std::string reason_;
};

// An open database. All failures are FileErrors.
class Database {
 public:
  // Opens an existing file: the library's fixed one when the name is empty, else the named one, with a handler that
  // waits for other processes' locks.
  static Database open(const std::string& file, const DatabaseKind& kind = kInstanceDatabase);

  // Whether the fixed file of that kind is there.
  static bool exists(const DatabaseKind& kind);

  enum class Contents { kTables, kSample };

  // Creates a file with the reference tables (the fixed one when the name is empty), and fills them with the sample
  // when asked to. An existing file is an error and stays as it is, but for an empty one, which is filled; what failed
  // leaves it empty.
  static void create(const std::string& file, const DatabaseKind& kind, Contents contents);

  // An empty database in memory.
  static Database in_memory() { return Database("memory", ":memory:", kInstanceDatabase); }

  // Creates the files that hosts open, or none of them when one exists that is not empty.
  static void create_all(Contents contents);

  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  sqlite3* handle() const { return handle_; }
  const std::string& file() const { return file_; }
  const DatabaseKind& kind() const { return kind_; }

  // Runs a statement without values through the library.
  void execute(const char* statement);

  // Runs a statement of the command's own: take_row(statement) on each row that it yields.
  void query(const char* statement, const std::function<void(sqlite3_stmt*)>& take_row) const;

  [[noreturn]] void fail(const std::string& reason) const;  // throws a FileError

  // After a failed reading: the reason, where SQLite gives one, and the command that looks for others.
  [[noreturn]] void fail_to_read(const std::string& table) const;

  // Behind an error of unknown reason: " (qmvctl check KIND [--db FILE] may tell why)".
  std::string check_hint() const;

 private:
  Database(const std::string& file, const std::string& path, const DatabaseKind& kind);

  std::string file_;
  const DatabaseKind& kind_;
  sqlite3* handle_ = nullptr;
};

// A write transaction, rolled back unless it was committed.
class Transaction {
 public:
  explicit Transaction(Database& database);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  void commit();

 private:
  Database& database_;
  bool is_open_ = true;
};

}  // namespace qmvctl

#endif
