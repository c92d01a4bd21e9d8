// Records and texts of any bytes, stored, changed and deleted by all that writes a table: twice, so that the second one
// meets the first. Whatever they hold, no table goes or comes.
#include "database.h"
#include "support/shared_database.h"

namespace {

// The number of tables; of all that stands in texts, SQL would change it first.
int tables_in(sqlite3* db) {
  sqlite3_stmt* count = nullptr;
  sqlite3_prepare_v2(db, "select count(*) from sqlite_master;", -1, &count, nullptr);
  sqlite3_step(count);
  const int tables = sqlite3_column_int(count, 0);
  sqlite3_finalize(count);
  return tables;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace qmv::fuzz;
  static const Database database(Tables::kAsTheSchemaSays);
  static const int tables = tables_in(database.get());
  const Forgiving meanwhile;
  Input input(bytes, size);
  const Touched& table = database.tables()[input.choice(database.tables().size())];
  qmv::test::Material material = material_of(input);
  material.bytes = input.rest();
  database.sql("begin;");
  for (const qmv::test::Call& call : table.writers) {
    call.run(database.get(), material);
    call.run(database.get(), material);
  }
  require(tables_in(database.get()) == tables, "the tables are the same");
  database.sql("rollback;");
  qmv::test::close_left_open();
  return 0;
}
