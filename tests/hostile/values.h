// Values that a column can hold, whatever its type says, and what the library is to make of them.
#ifndef QMV_TESTS_HOSTILE_VALUES_H
#define QMV_TESTS_HOSTILE_VALUES_H

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace qmv::test {

struct Stored {
  std::string name;
  std::function<int(sqlite3_stmt*, int parameter)> bind;
  std::string text = {};    // where it fills a text, as far as there is room
  std::int32_t number = 0;  // where it fills an int32
  bool is_key = false;      // a caller can ask for it, as a text or as a number
};

inline void PrintTo(const Stored& value, std::ostream* out) {
  *out << value.name;
}

Stored plain_text(const std::string& text, std::int32_t number = 0);
Stored plain_number(std::int32_t number);

// For a column that fills a text of that width, and for one that fills an int32.
std::vector<Stored> hostile_texts(std::size_t width);
std::vector<Stored> hostile_numbers();

// Other values that SQLite reads as that number, where it is asked for an int32.
std::vector<Stored> values_read_as(std::int32_t number);

}  // namespace qmv::test

#endif
