#include "core/formatted_twice.h"

#include <cstring>

namespace qmv {

namespace {

// The end of a directive that begins behind its '%', NULL when it is none.
const char* end_of_directive(const char* at) {
  at += std::strspn(at, "-+ #!0,");
  at += *at == '*' ? 1 : std::strspn(at, "0123456789");
  if (*at == '.') {
    ++at;
    at += *at == '*' ? 1 : std::strspn(at, "0123456789");
  }
  at += at[0] != 'l' ? 0 : at[1] != 'l' ? 1 : 2;
  return *at != 0 && std::strchr("diuxXocsqQwzpneEfgGrST", *at) != nullptr ? at + 1 : nullptr;
}

}  // namespace

void format_without_arguments(char* text) {
  const char* from = text;
  char* to = text;
  while (*from != 0) {
    if (*from != '%' || from[1] == 0) {
      *to++ = *from++;
    } else if (from[1] == '%') {
      *to++ = '%';
      from += 2;
    } else {
      from = end_of_directive(from + 1);
      if (from == nullptr) break;
    }
  }
  *to = 0;
}

}  // namespace qmv
