#include "core/formatted_twice.h"

#include <cstring>

namespace qmv {

namespace {

// What ends the directive that begins behind its '%': its letter, or a character that no directive has.
const char* letter_of(const char* at) {
  at += std::strspn(at, "-+ #!0,");
  at += *at == '*' ? 1 : std::strspn(at, "0123456789");
  if (*at == '.') {
    ++at;
    at += *at == '*' ? 1 : std::strspn(at, "0123456789");
  }
  return at + (at[0] != 'l' ? 0 : at[1] != 'l' ? 1 : 2);
}

}  // namespace

void format_without_arguments(char* text) {
  const char* from = text;
  char* to = text;
  while (*from != 0) {
    if (*from != '%' || from[1] == 0) {
      *to++ = *from++;
    } else {
      const char* const letter = letter_of(from + 1);
      if (*letter == 0 || std::strchr("%diuxXocsqQwzpneEfgGr", *letter) == nullptr) break;
      const char* const star = std::strchr(from, '*');
      if (*letter == '%' && (star == nullptr || star > letter)) *to++ = '%';
      from = letter + 1;
    }
  }
  *to = 0;
}

}  // namespace qmv
