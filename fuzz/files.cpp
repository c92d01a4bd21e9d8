// Files that are no database, or a damaged one, read and written by all that touches a table.
#include "database.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace qmv::fuzz;
  static const Database database(Tables::kAsTheSchemaSays);
  const Forgiving meanwhile;
  Input input(bytes, size);
  const Touched& table = database.tables()[input.choice(database.tables().size())];
  const std::string image = input.rest();
  open_as(&image);
  sqlite3* const db = connection_to(image);
  for (const auto& calls : {table.readers, table.writers}) {
    for (const qmv::test::Call& call : calls) call.run(db, call.material);
  }
  close(db);
  close_left_open();
  open_as(nullptr);
  return 0;
}
