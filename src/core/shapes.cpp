#include "core/shapes.h"

#include <cstdarg>
#include <cstdlib>

namespace qmv {

namespace {

// Compiles the statement that a variadic shape was given.
std::int32_t compile(Statement& statement, sqlite3* db, Site site, const char* format, va_list arguments,
                     Tail tail = Tail::kTaken) {
  const SqlText formatted(sqlite3_vmprintf(format, arguments));
  return statement.compile(db, site, formatted, tail);
}

const Layout& layout_of(const auto& form) {
  return *reinterpret_cast<const Layout*>(reinterpret_cast<const char*>(&form) + form.layout.distance);
}

std::int32_t answer_of(CompileError answer, std::int32_t code) {
  return answer == CompileError::kReturnsSqliteCode ? code : kFailure;
}

// The beginning of both get-ones, up to the step. Returns the accessor's status when it ends here.
std::int32_t start(const GetOneForm<Stored>& form, Site site, Statement& statement, sqlite3* db, va_list arguments) {
  const std::int32_t code = compile(statement, db, site, text(form, form.select), arguments);
  if (code != SQLITE_OK) return answer_of(form.compile_error, code);
  if (!statement.missing()) return kOk;
  trace(site, text(form, form.no_statement));
  return kFailure;
}

// Inserts, or updates where the key exists, with the same arguments. Returns the code of the last statement.
std::int32_t upsert(const SetForm<Stored>& form, Site site, sqlite3* db, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  std::int32_t code = execute(db, text(form, form.insert), arguments);
  if (code == SQLITE_CONSTRAINT) {
    trace(site, text(form, form.present));
    code = execute(db, text(form, form.update), again);
  }
  va_end(again);
  return code;
}

}  // namespace

std::int32_t counted(CountFunction* count, sqlite3* db) {
  std::int32_t rows = 0;
  return count(db, &rows) == kOk ? rows : -1;
}

std::int32_t out_of_memory(Site site, Statement& statement, OutOfMemory answer) {
  // QUIRK: The statement is not finalised, so the connection cannot be closed any more.
  // Test: Shapes.AllocationFailureLeavesTheStatementOpen.
  statement.leave_open();
  if (answer == OutOfMemory::kReturnsOneWithDetail) {
    trace(site, Format<'s'>("[%s:%d]Memory allocation error: %s"), "");
  } else {
    trace(site, Message("[%s:%d]Memory allocation error"));
  }
  return answer == OutOfMemory::kReturnsNoMemory ? kNoMemory : kFailure;
}

std::int32_t count_rows(const CountForm<Stored>& form, Site site, sqlite3* db, std::int32_t* count, ...) {
  *count = 0;
  Statement statement;
  va_list arguments;
  va_start(arguments, count);
  const std::int32_t code = compile(statement, db, site, text(form, form.select), arguments, Tail::kOmitted);
  va_end(arguments);
  return code == SQLITE_OK ? read_count(form, site, statement, count) : kFailure;
}

std::int32_t read_count(const CountForm<Stored>& form, Site site, Statement& statement, std::int32_t* count) {
  if (statement.missing()) {
    trace(site, Message("[%s:%d]No records found"));
    return form.without_statement;
  }
  const std::int32_t step = statement.step();
  if (step != SQLITE_ROW && form.step == CountStep::kTested) {
    // QUIRK: A count without a row leaves its statement open. Test: Shapes.CountWithoutARowLeavesTheStatementOpen.
    statement.leave_open();
    trace(site, text(form, form.no_row));
    return step;
  }
  *count = sqlite3_column_int(statement.get(), 0);
  const std::int32_t finalized = statement.finalize();
  trace(site, text(form, form.done), *count);
  return finalized;
}

std::int32_t get_all_rows(const GetAllForm<Stored>& form, Site site, sqlite3* db, std::int32_t rows,
                          std::int32_t* count, Out records, ...) {
  if (rows < 0) {
    trace(site, text(form, form.count_failed));
    return kFailure;
  }
  if (rows == 0) {
    trace(site, text(form, form.no_rows));
    return kOk;
  }
  *count = rows;

  Statement statement;
  va_list arguments;
  va_start(arguments, records);
  const std::int32_t code = compile(statement, db, site, text(form, form.select), arguments);
  va_end(arguments);
  if (code != SQLITE_OK) return answer_of(form.compile_error, code);
  return read_rows(form, site, statement, rows, records);
}

std::int32_t read_rows(const GetAllForm<Stored>& form, Site site, Statement& statement, std::int32_t count,
                       Out records) {
  const Layout& layout = layout_of(form);
  const auto rows = static_cast<std::size_t>(count);
  auto* const block = static_cast<char*>(std::calloc(rows, layout.record_size));
  records.store(block);
  if (block == nullptr) return out_of_memory(site, statement, form.out_of_memory);
  if (statement.missing()) return kOk;

  trace(site, text(form, form.reading));
  const char* const row_read = text(form, form.row);
  char* next = block;
  char* const end = block + rows * layout.record_size;
  while (statement.step() == SQLITE_ROW) {
    if (next == end) continue;  // a row that appeared since the count
    read_row(statement.get(), layout, next, Before::kZero);
    trace(site, row_read);
    next += layout.record_size;
  }
  trace(site, text(form, form.done), count);
  return statement.finalize();
}

std::int32_t get_one_row(const GetOneForm<Stored>& form, Site site, sqlite3* db, Out record, ...) {
  Statement statement;
  va_list arguments;
  va_start(arguments, record);
  const std::int32_t status = start(form, site, statement, db, arguments);
  va_end(arguments);
  if (status != kOk) return status;
  if (statement.step() != SQLITE_ROW) {
    trace(site, text(form, form.no_row));
    return kFailure;
  }
  void* const block = std::calloc(1, layout_of(form).record_size);
  record.store(block);
  if (block == nullptr) return out_of_memory(site, statement, form.out_of_memory);
  trace(site, text(form, form.reading));
  read_row(statement.get(), layout_of(form), block, Before::kZero);
  trace(site, text(form, form.done));
  return kOk;
}

std::int32_t fill_row(const GetOneForm<Stored>& form, Site site, sqlite3* db, void* record, ...) {
  Statement statement;
  va_list arguments;
  va_start(arguments, record);
  const std::int32_t status = start(form, site, statement, db, arguments);
  va_end(arguments);
  if (status != kOk) return status;
  trace(site, text(form, form.reading));
  if (statement.step() != SQLITE_ROW) {
    trace(site, text(form, form.no_row));
    return kFailure;
  }
  read_row(statement.get(), layout_of(form), record, Before::kUnknown);
  trace(site, text(form, form.done));
  return kOk;
}

std::int32_t upsert_row(const SetForm<Stored>& form, Site site, sqlite3* db, ...) {
  va_list arguments;
  va_start(arguments, db);
  const std::int32_t code = upsert(form, site, db, arguments);
  va_end(arguments);
  return code;
}

std::int32_t set_row(const SetForm<Stored>& form, Site site, sqlite3* db, ...) {
  va_list arguments;
  va_start(arguments, db);
  upsert(form, site, db, arguments);
  va_end(arguments);
  trace(site, text(form, form.done));
  return kOk;
}

}  // namespace qmv
