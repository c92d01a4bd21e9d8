// Texts as UTF-8.
#ifndef QMVCTL_CHARACTERS_H
#define QMVCTL_CHARACTERS_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qmvctl {

struct Character {
  char32_t code;
  size_t length;  // in bytes
};

// The character that a text begins with; nothing where the bytes are none.
std::optional<Character> first_character(std::string_view text);

// Whether texts are the same but for upper and lower case of ASCII letters.
bool is_same(const std::string& a, const std::string& b);

// The control characters of ASCII and Latin-1, which terminals obey.
constexpr bool is_control(char32_t code) {
  return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

// A text of devices, clients or file names, safe to show: a dot stands for each control character, but for those that
// are kept, and for each byte that is no UTF-8.
std::string printable(std::string_view text, std::string_view kept = "");

}  // namespace qmvctl

#endif
