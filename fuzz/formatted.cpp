// Texts that are formatted a second time.
#include "core/formatted_twice.h"
#include "database.h"
#include "qmv.h"
#include "support/shared_database.h"

namespace {

// What SQLite makes of a text in which no argument is asked for.
std::string formatted(const std::string& text) {
  std::string made = text;
  qmv::format_without_arguments(made.data());
  return made.c_str();
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace qmv::fuzz;
  static const Database database(Tables::kOfAnyValues, {"concrete_job", "error_info", "sel"});
  const std::string text = std::string(Input(bytes, size).rest().c_str());

  const std::string made = formatted(text);
  require(made.size() <= text.size(), "formatting makes a text no longer");
  if (text.find('%') == std::string::npos) require(made == text, "a text without a sign stays");

  // As a job's identifier. Doubled quotes keep it one text.
  sqlite3_stmt* job = nullptr;
  database.sql("begin; delete from concrete_job;");
  sqlite3_prepare_v2(database.get(), "insert into concrete_job (InstanceID, RemovalTime) values (?, 0);", -1, &job,
                     nullptr);
  sqlite3_bind_text(job, 1, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
  sqlite3_step(job);
  sqlite3_finalize(job);
  database.sql("commit;");
  db_clear_expired_concretejob(1);

  // As an expression and as a table.
  char value[256] = "";
  GetColumnValues("any", value, text.c_str(), "sel", 1);
  GetColumnValues("any", value, "1", text.c_str(), 1);
  const Forgiving meanwhile;
  column_name_node* names = nullptr;
  GetColumnNames(&names, "any", text.c_str());
  free_column_names(names);
  qmv::test::close_left_open();
  return 0;
}
