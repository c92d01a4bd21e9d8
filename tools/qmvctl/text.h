// Texts of IPMI records: the packed encodings, and fixed-width fields of the library's records.
#ifndef QMVCTL_TEXT_H
#define QMVCTL_TEXT_H

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "input.h"

namespace qmvctl {

// A number in hexadecimal digits, as many as asked for at least.
std::string hex(int32_t number, int digits = 2);

// All bytes of the piece as UTF-8. A zero ends the text: strings in the field are padded with it, and no record holds
// it.
std::string latin1_text(const Input& piece);   // 8-bit ASCII and Latin-1
std::string unicode_text(const Input& piece);  // 16 bits a character, low byte first
constexpr char kBcdPlus[] = "0123456789 -.:,_";
std::string bcd_plus_text(const Input& piece);  // two characters a byte, the upper four bits first
std::string six_bit_text(const Input& piece);   // four characters in three bytes, the lowest bits first
std::string hex_text(const Input& piece);       // two hexadecimal digits a byte

// The ID string of a sensor data record (IPMI 2.0, section 43.15).
struct IdString {
  std::string text;
  int length = 0;           // as the record gives it, in characters
  bool is_unicode = false;  // the text is then empty: how many bytes a Unicode character takes is not defined there
};

// Reads the ID string whose type/length byte is at that offset.
IdString read_id_string(const Input& record, size_t at);

// A text field of a record, bounded by its width.
template <size_t Width>
std::string_view text_of(const char (&field)[Width]) {
  return {field, strnlen(field, Width)};
}

// Stores a text in a field of a zeroed record, always with a terminating zero. Returns false when it was cut (between
// two characters) to fit.
bool store_text(std::string_view text, char* field, size_t width);

template <size_t Width>
bool store_text(std::string_view text, char (&field)[Width]) {
  return store_text(text, field, Width);
}

}  // namespace qmvctl

#endif
