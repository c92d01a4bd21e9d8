// The packed encodings of IPMI texts, in the direction that text.h does not have. Each returns nothing for a text that it
// cannot hold.
#ifndef QMVCTL_PACKED_TEXT_H
#define QMVCTL_PACKED_TEXT_H

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace qmvctl {

using Bytes = std::vector<uint8_t>;

std::optional<Bytes> latin1_bytes(std::string_view text);
std::optional<Bytes> unicode_bytes(std::string_view text);   // 16 bits a character, low byte first
std::optional<Bytes> six_bit_bytes(std::string_view text);   // four characters in three bytes, the lowest bits first
std::optional<Bytes> bcd_plus_bytes(std::string_view text);  // two characters a byte, the upper four bits first
std::optional<Bytes> hex_bytes(std::string_view text);       // two hexadecimal digits a byte

}  // namespace qmvctl

#endif
