#include "hostile/values.h"

#include <limits>
#include <utility>

namespace qmv::test {

namespace {

std::function<int(sqlite3_stmt*, int)> as_text(const std::string& bytes) {
  return [bytes](sqlite3_stmt* row, int parameter) {
    return sqlite3_bind_text(row, parameter, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
  };
}

std::function<int(sqlite3_stmt*, int)> as_blob(const std::string& bytes) {
  return [bytes](sqlite3_stmt* row, int parameter) {
    return sqlite3_bind_blob(row, parameter, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
  };
}

std::function<int(sqlite3_stmt*, int)> as_number(sqlite3_int64 number) {
  return [number](sqlite3_stmt* row, int parameter) { return sqlite3_bind_int64(row, parameter, number); };
}

std::function<int(sqlite3_stmt*, int)> as_real(double number) {
  return [number](sqlite3_stmt* row, int parameter) { return sqlite3_bind_double(row, parameter, number); };
}

Stored long_text(std::size_t length) {
  Stored value = plain_text(std::string(length, 'x'));
  value.name = std::to_string(length) + " bytes";
  return value;
}

constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

}  // namespace

Stored plain_text(const std::string& text, std::int32_t number) {
  return {"the text " + text, as_text(text), text, number, true};
}

Stored plain_number(std::int32_t number) {
  return {"the number " + std::to_string(number), as_number(number), std::to_string(number), number, true};
}

std::vector<Stored> hostile_texts(std::size_t width) {
  using namespace std::string_literals;
  // A zero right before the end of the field, and far more behind it.
  const std::string early(width - 1, 'e');
  // Bytes that begin no character, and a character of four bytes that the field's end cuts.
  const std::string cut = std::string(width - 2, '\xff') + "\xf0\x9f\x98\x80\xc3(";
  const std::string bytes(width + 1, '\x80');
  // Beyond the field: as long as a GUID's text, and over members behind it: up to four numbers and another text.
  return {
      long_text(0),
      long_text(1),
      long_text(width - 1),
      long_text(width),
      long_text(width + 1),
      long_text(36),
      long_text(width + 16),
      long_text(width + 272),
      long_text(10000),
      long_text(100000),
      {"NULL", sqlite3_bind_null},
      {"a zero at once", as_text("\0hidden"s)},
      {"a zero within", as_text(early + '\0' + std::string(width, 'h')), early},
      {"invalid UTF-8", as_text(cut), cut},
      {"a blob", as_blob(bytes), bytes},
      {"a blob with a zero", as_blob("12\0\xff"s), "12", 12},
      {"an empty blob", as_blob("")},
      {"the smallest number of 64 bits", as_number(std::numeric_limits<sqlite3_int64>::min()), "-9223372036854775808",
       0},
      {"-1", as_number(-1), "-1", -1, true},
      {"1.5", as_real(1.5), "1.5", 1},
  };
}

std::vector<Stored> hostile_numbers() {
  using namespace std::string_literals;
  return {
      plain_number(kSmallest),
      plain_number(-1),
      plain_number(0),
      plain_number(kLargest),
      {"2^31", as_number(2147483648), "2147483648", kSmallest},
      {"2^32 + 5", as_number(4294967301), "4294967301", 5},
      {"-2^31 - 1", as_number(-2147483649), "-2147483649", kLargest},
      {"the largest number of 64 bits", as_number(std::numeric_limits<sqlite3_int64>::max()), "9223372036854775807",
       -1},
      {"1.5", as_real(1.5), "1.5", 1},
      {"-1.5", as_real(-1.5), "-1.5", -1},
      {"1e300", as_real(1e300), "1.0e+300", -1},
      {"-infinity", as_real(-std::numeric_limits<double>::infinity()), "-Inf", 0},
      {"no number", as_real(std::numeric_limits<double>::quiet_NaN())},
      {"NULL", sqlite3_bind_null},
      {"a text", as_text("twelve"), "twelve"},
      {"a text that begins with a number", as_text("12 dozen"), "12 dozen", 12},
      {"a text of 100,000 digits", as_text(std::string(100000, '9') + "x"), std::string(100000, '9') + "x", -1},
      {"a text with a zero", as_text("7\0007"s), "7", 7},
      {"a blob", as_blob("77\0\x80"s), "77", 77},
  };
}

std::vector<Stored> values_read_as(std::int32_t number) {
  const std::string digits = std::to_string(number);
  const std::vector<std::pair<std::string, std::function<int(sqlite3_stmt*, int)>>> others = {
      {"2^32 more", as_number(number + (sqlite3_int64{1} << 32))},
      {"2^32 less", as_number(number - (sqlite3_int64{1} << 32))},
      {"half more", as_real(number + 0.5)},
      {"a text", as_text(digits)},
      {"a text that goes on", as_text(" " + digits + " dozen")},
      {"a blob", as_blob(digits + '\0' + '\xff')},
  };
  std::vector<Stored> values;
  for (const auto& [name, bind] : others) values.push_back({name + " for " + digits, bind, {}, number});
  return values;
}

}  // namespace qmv::test
