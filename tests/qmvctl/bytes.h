// Hand-made input: sensor data records and FRU images, byte by byte.
#ifndef QMVCTL_TESTS_BYTES_H
#define QMVCTL_TESTS_BYTES_H

#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include "input.h"

namespace qmvctl::test {

using Bytes = std::vector<uint8_t>;

inline Input input(Bytes bytes) {
  return {"file", std::move(bytes)};
}

inline Bytes operator+(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

inline Bytes ascii(const std::string& text) {
  return {text.begin(), text.end()};
}

// A type/length byte for 8-bit ASCII and the text.
inline Bytes ascii_field(const std::string& text) {
  return Bytes{static_cast<uint8_t>(0xC0 | text.size())} + ascii(text);
}

// A sensor data record: each byte of the fixed part holds its own offset plus 40h, so that no two members are alike;
// then the ID string. The caller overwrites what it is about.
inline Bytes numbered_record(uint8_t type, size_t fixed_size, const Bytes& id_string) {
  Bytes bytes(fixed_size);
  std::iota(bytes.begin(), bytes.end(), uint8_t{0x40});
  bytes = bytes + id_string;
  bytes[2] = 0x51;
  bytes[3] = type;
  bytes[4] = static_cast<uint8_t>(bytes.size() - 5);
  return bytes;
}

inline Bytes compact_record(const Bytes& id_string = ascii_field("Fan 1")) {
  Bytes bytes = numbered_record(0x02, 31, id_string);
  bytes[23] = 0x81;  // one sensor, output
  return bytes;
}

inline Bytes full_record(const Bytes& id_string = ascii_field("BB +12.0V")) {
  return numbered_record(0x01, 47, id_string);
}

inline Bytes fru_locator_record(const Bytes& id_string = ascii_field("Baseboard")) {
  return numbered_record(0x11, 15, id_string);
}

inline uint8_t checksum(const Bytes& bytes) {
  return static_cast<uint8_t>(-std::accumulate(bytes.begin(), bytes.end(), 0));
}

// An information area: pads to units of 8 bytes, sets the length and the checksum.
inline Bytes area(Bytes bytes) {
  bytes.push_back(0xC1);
  while (bytes.size() % 8 != 7) bytes.push_back(0);
  bytes[1] = static_cast<uint8_t>((bytes.size() + 1) / 8);
  bytes.push_back(checksum(bytes));
  return bytes;
}

// A FRU image with the given areas behind the common header; an empty one is left out.
inline Bytes fru_image(const Bytes& chassis, const Bytes& board, const Bytes& product,
                       const Bytes& multi_records = {}) {
  Bytes header{1, 0};
  Bytes body;
  for (const Bytes& part : {chassis, board, product, multi_records}) {
    header.push_back(part.empty() ? uint8_t{0} : static_cast<uint8_t>((8 + body.size()) / 8));
    body = body + part;
  }
  header.push_back(0);
  header.push_back(checksum(header));
  return header + body;
}

inline Bytes chassis_area(const Bytes& fields) {
  return area(Bytes{1, 0, 0x17} + fields);
}
inline Bytes board_area(const Bytes& fields, uint8_t language = 0) {
  return area(Bytes{1, 0, language, 0x11, 0x22, 0x33} + fields);
}
inline Bytes product_area(const Bytes& fields, uint8_t language = 0) {
  return area(Bytes{1, 0, language} + fields);
}

// The message of the InputError that a decoder throws; "" when it throws none.
template <class Decode>
std::string error_of(Decode decode) {
  try {
    decode();
  } catch (const InputError& error) {
    return error.what();
  }
  return "";
}

}  // namespace qmvctl::test

#endif
