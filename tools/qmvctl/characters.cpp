#include "characters.h"

#include <strings.h>

#include <cstdint>

namespace qmvctl {

namespace {

// How many bytes the first one announces, 0 when it begins no character.
size_t length_of(uint8_t first) {
  if (first < 0x80) return 1;
  if (first >> 5 == 0b110) return 2;
  if (first >> 4 == 0b1110) return 3;
  return first >> 3 == 0b11110 ? 4 : 0;
}

// Whether a code may be written in so many bytes (RFC 3629): not in more than it needs, and no half of a pair.
bool is_code(char32_t code, size_t length) {
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool is_surrogate = code >= 0xD800 && code < 0xE000;
  return code >= kLeast[length] && code < 0x110000 && !is_surrogate;
}

}  // namespace

std::optional<Character> first_character(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const auto first = static_cast<uint8_t>(text[0]);
  const size_t length = length_of(first);
  if (length == 0 || length > text.size()) return std::nullopt;
  char32_t code = length == 1 ? first : first & (0x7F >> length);
  for (size_t i = 1; i < length; ++i) {
    const auto next = static_cast<uint8_t>(text[i]);
    if ((next & 0xC0) != 0x80) return std::nullopt;
    code = code << 6 | (next & 0x3F);
  }
  return is_code(code, length) ? std::optional(Character{code, length}) : std::nullopt;
}

bool is_same(const std::string& a, const std::string& b) {
  return strcasecmp(a.c_str(), b.c_str()) == 0;
}

std::string printable(std::string_view text, std::string_view kept) {
  std::string shown;
  while (!text.empty()) {
    const auto character = first_character(text);
    const size_t length = character ? character->length : 1;
    const bool is_kept = kept.find(text[0]) != std::string_view::npos;
    const bool is_shown = is_kept || (character && !is_control(character->code));
    shown += is_shown ? text.substr(0, length) : ".";
    text.remove_prefix(length);
  }
  return shown;
}

}  // namespace qmvctl
