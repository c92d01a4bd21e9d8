#include "packed_text.h"

#include <string>

#include "characters.h"
#include "text.h"

namespace qmvctl {

namespace {

// The codes of all characters; nothing where a byte is none.
std::optional<std::u32string> codes(std::string_view text) {
  std::u32string codes;
  while (!text.empty()) {
    const auto character = first_character(text);
    if (!character) return std::nullopt;
    codes += character->code;
    text.remove_prefix(character->length);
  }
  return codes;
}

// Two characters a byte, each at its place in the digits.
std::optional<Bytes> digit_pairs(std::string_view text, std::string_view digits) {
  if (text.size() % 2 != 0) return std::nullopt;
  Bytes bytes;
  for (size_t i = 0; i < text.size(); i += 2) {
    const size_t upper = digits.find(text[i]);
    const size_t lower = digits.find(text[i + 1]);
    if (upper == std::string_view::npos || lower == std::string_view::npos) return std::nullopt;
    bytes.push_back(static_cast<uint8_t>(upper << 4 | lower));
  }
  return bytes;
}

}  // namespace

std::optional<Bytes> latin1_bytes(std::string_view text) {
  const auto all = codes(text);
  if (!all) return std::nullopt;
  Bytes bytes;
  for (const char32_t character : *all) {
    if (character > 0xFF) return std::nullopt;
    bytes.push_back(static_cast<uint8_t>(character));
  }
  return bytes;
}

std::optional<Bytes> unicode_bytes(std::string_view text) {
  const auto all = codes(text);
  if (!all) return std::nullopt;
  Bytes bytes;
  for (const char32_t character : *all) {
    if (character > 0xFFFF) return std::nullopt;
    bytes.push_back(static_cast<uint8_t>(character));
    bytes.push_back(static_cast<uint8_t>(character >> 8));
  }
  return bytes;
}

std::optional<Bytes> six_bit_bytes(std::string_view text) {
  Bytes bytes((text.size() * 6 + 7) / 8);
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] < ' ' || text[i] > '_') return std::nullopt;
    const unsigned bits = static_cast<unsigned>(text[i] - ' ') << (i * 6 % 8);
    bytes[i * 6 / 8] |= static_cast<uint8_t>(bits);
    if (bits > 0xFF) bytes[i * 6 / 8 + 1] |= static_cast<uint8_t>(bits >> 8);
  }
  return bytes;
}

std::optional<Bytes> bcd_plus_bytes(std::string_view text) {
  return digit_pairs(text, kBcdPlus);
}

std::optional<Bytes> hex_bytes(std::string_view text) {
  return digit_pairs(text, "0123456789ABCDEF");
}

}  // namespace qmvctl
