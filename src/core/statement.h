// Statement texts and prepared statements, each with its owner. The only users of sqlite3_finalize and sqlite3_free.
#ifndef QMV_CORE_STATEMENT_H
#define QMV_CORE_STATEMENT_H

#include <sqlite3.h>

#include <cstdarg>
#include <cstdint>

#include "core/log.h"

namespace qmv {

// A text from SQLite's formatter, released with its owner. It is NULL when memory was short.
class SqlText {
 public:
  explicit SqlText(char* text) : text_(text) {}
  SqlText(const SqlText&) = delete;
  SqlText& operator=(const SqlText&) = delete;
  ~SqlText() { sqlite3_free(text_); }

  const char* get() const { return text_; }
  char* get() { return text_; }

  // Takes another text in place of its own.
  void replace(char* text) {
    sqlite3_free(text_);
    text_ = text;
  }

  // Gives the text up without releasing it.
  const char* leave_allocated() {
    const char* text = text_;
    text_ = nullptr;
    return text;
  }

 private:
  char* text_;
};

enum class Tail { kTaken, kOmitted };

// A prepared statement, finalised with its owner.
class Statement {
 public:
  Statement() = default;
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  // Compiles a text. One that could not be formatted is handed on as NULL, which SQLite answers with 21
  // (SQLITE_MISUSE). Returns SQLite's code; a success may leave the statement missing.
  std::int32_t prepare(sqlite3* db, const SqlText& text, Tail tail = Tail::kTaken);

  // The same, logging a failure.
  [[nodiscard]] std::int32_t compile(sqlite3* db, Site site, const SqlText& text, Tail tail = Tail::kTaken);

  bool missing() const { return handle_ == nullptr; }
  sqlite3_stmt* get() const { return handle_; }

  std::int32_t step() { return sqlite3_step(handle_); }

  // Finalises now and returns SQLite's code.
  [[nodiscard]] std::int32_t finalize();

  // Gives the statement up without finalising it: its connection cannot be closed any more.
  void leave_open() { handle_ = nullptr; }

 private:
  sqlite3_stmt* handle_ = nullptr;
};

void log_compile_error(Site site, sqlite3* db);

// Formats and runs a statement; db_execute() with the arguments as a list.
std::int32_t execute(sqlite3* db, const char* format, va_list arguments);

}  // namespace qmv

#endif
