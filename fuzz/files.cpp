// Files that are no database, or a damaged one, read and written by all that touches a table.
#include "database.h"
#include "support/shared_database.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace qmv::fuzz;
  static const Database database(Tables::kAsTheSchemaSays);
  const Forgiving meanwhile;
  Input input(bytes, size);
  const Touched& table = database.tables()[input.choice(database.tables().size())];
  const std::string image = input.rest();
  qmv::test::open_by([&image] { return connection_to(image); });
  sqlite3* const db = connection_to(image);
  for (const auto& calls : {table.readers, table.writers}) {
    for (const qmv::test::Call& call : calls) call.run(db, call.material);
  }
  qmv::test::close(db);
  qmv::test::close_left_open();
  qmv::test::open_by(nullptr);
  return 0;
}
