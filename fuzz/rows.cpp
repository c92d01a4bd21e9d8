// Rows of values of any type and length, in all tables that a call reads, for each call that reads.
#include "database.h"
#include "support/shared_database.h"

namespace {

using namespace qmv::fuzz;

const Database& database() {
  static const Database shared(Tables::kOfAnyValues);
  return shared;
}

// The readers whose answer a row has changed, or who have deleted one.
std::set<std::string> found;

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const Reader& reader = database().readers()[input.choice(database().readers().size())];
  const bool usual = input.choice(2) == 0;
  const qmv::test::Material material = usual ? reader.call.material : material_of(input);
  for (const Touched* table : reader.tables) put_row(*table, material, input);
  const qmv::test::Answer answer = reader.call.run(reader.db, material);
  qmv::test::close_left_open();
  std::size_t left = 0;
  for (const Touched* table : reader.tables) left += static_cast<std::size_t>(clear(*table));
  const bool met = answer != reader.without_rows || left != reader.tables.size();
  if (usual && met) found.insert(reader.call.name);
  return 0;
}

std::vector<std::string> qmv::fuzz::unreached() {
  std::vector<std::string> names;
  for (const Reader& reader : database().readers()) {
    if (!found.contains(reader.call.name)) names.push_back(reader.call.name);
  }
  return names;
}
