// Lists of the association registry: alone, and in rows whose other columns are of any type.
#include "database.h"
#include "qmv.h"
#include "support/shared_database.h"

namespace {

void split(const std::string& text) {
  char** list = nullptr;
  std::int32_t count = -1;
  qmv::fuzz::require(GetArrayCount(text.c_str(), &list, &count) == 0, "the text is split");
  qmv::fuzz::require(count >= 1 && count <= 1024 && list[count] == nullptr, "a NULL ends the list");
  std::int32_t elements = 0;
  while (list[elements] != nullptr) ++elements;
  for (std::int32_t i = 0; i < elements; ++i) {
    qmv::fuzz::require(std::strpbrk(list[i], ",{}") == nullptr, "an element has no separator");
    qmv::fuzz::require(*list[i] != ' ' && *list[i] != '\t', "an element begins with no blank");
    db_freemem(list[i]);
  }
  for (std::int32_t i = elements; i < count; ++i) qmv::fuzz::require(list[i] == nullptr, "NULLs are behind elements");
  db_freemem(list);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using namespace qmv::fuzz;
  static const Database database(Tables::kOfAnyValues, {"association"});
  static const Touched& table = database.table("association");
  split(std::string(Input(bytes, size).rest().c_str()));
  Input input(bytes, size);
  put_row(table, {}, input);
  for (const qmv::test::Call& call : table.readers) call.run(database.get(), call.material);
  qmv::test::close_left_open();
  clear(table);
  return 0;
}
