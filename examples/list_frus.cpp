/*
 * list_frus - a C++ host: what the library hands out is owned from the first moment, and released by its own function.
 * Prints maker, part number and serial number of every field-replaceable unit's board.
 *
 *   c++ -std=c++17 -o list_frus list_frus.cpp log.c $(pkg-config --cflags --libs qmv)
 */
#include <qmv.h>

#include <cstddef>
#include <cstring>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace {

struct Release {
  void operator()(sqlite3* db) const { db_close(db); }
  void operator()(fru_rec* frus) const { db_freemem(frus); }
};

using Connection = std::unique_ptr<sqlite3, Release>;

struct Frus {
  std::unique_ptr<fru_rec[], Release> records;
  int32_t count = 0;

  const fru_rec* begin() const { return records.get(); }
  const fru_rec* end() const { return begin() + count; }
};

// A text that fills its field has no terminating zero.
template <std::size_t Width>
std::string_view text(const char (&field)[Width]) {
  return {field, strnlen(field, Width)};
}

Connection connect() {
  sqlite3* db = nullptr;
  if (db_init(&db) != 0) throw std::runtime_error("the database cannot be opened");
  return Connection(db);
}

Frus all_frus(const Connection& db) {
  Frus frus;
  fru_rec* records = nullptr;
  const int32_t status = db_get_all_fru_info(db.get(), &frus.count, &records);
  frus.records.reset(records);  // whatever the status
  if (status != 0) throw std::runtime_error("the FRUs cannot be read");
  return frus;
}

}  // namespace

int main() try {
  const Connection db = connect();
  for (const fru_rec& fru : all_frus(db)) {
    std::cout << text(fru.DevIdStr) << ": " << text(fru.BrdMfrName) << ", " << text(fru.BrdPartNumber) << ", "
              << text(fru.BrdSerNumber) << '\n';
  }
  return 0;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
