// A row of values of any type and length in any table, read by one of those that read the table.
#include "database.h"
#include "support/shared_database.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace qmv::fuzz;
  static const Database database(Tables::kOfAnyValues);
  Input input(bytes, size);
  const Touched& table = database.tables()[input.choice(database.tables().size())];
  const qmv::test::Material material = material_of(input);
  const std::size_t reader = input.choice(256);
  database.put_row(table, input);
  if (!table.readers.empty()) table.readers[reader % table.readers.size()].run(database.get(), material);
  qmv::test::close_left_open();
  return 0;
}
