#include "core/statement.h"

#include <cstring>

namespace qmv {

Statement::~Statement() {
  if (handle_ != nullptr) sqlite3_finalize(handle_);
}

std::int32_t Statement::prepare(sqlite3* db, const SqlText& text, Tail tail) {
  const char* rest = nullptr;
  const int length = text.get() == nullptr ? 0 : static_cast<int>(std::strlen(text.get()));
  return sqlite3_prepare(db, text.get(), length, &handle_, tail == Tail::kTaken ? &rest : nullptr);
}

std::int32_t Statement::compile(sqlite3* db, Site site, const SqlText& text, Tail tail) {
  const std::int32_t code = prepare(db, text, tail);
  if (code != SQLITE_OK) log_compile_error(site, db);
  return code;
}

std::int32_t Statement::finalize() {
  sqlite3_stmt* handle = handle_;
  handle_ = nullptr;
  return sqlite3_finalize(handle);
}

void log_compile_error(Site site, sqlite3* db) {
  error(site, Format<'s'>("[%s:%d]SQL Compilation error: %s"), sqlite3_errmsg(db));
}

}  // namespace qmv
