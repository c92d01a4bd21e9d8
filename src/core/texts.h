// Texts one behind the other, each once: constants refer to them by distances instead of pointers.
#ifndef QMV_CORE_TEXTS_H
#define QMV_CORE_TEXTS_H

#include <cstddef>

namespace qmv {

constexpr std::size_t size_with_end(const char* text) {
  std::size_t length = 0;
  while (text[length] != 0) ++length;
  return length + 1;
}

constexpr bool is_same_text(const char* one, const char* other) {
  for (; *one == *other; ++one, ++other) {
    if (*one == 0) return true;
  }
  return false;
}

// The place of a text among others, or `size` when it is none of them.
constexpr std::size_t place_among(const char* texts, std::size_t size, const char* text) {
  std::size_t at = 0;
  while (at < size && !is_same_text(texts + at, text)) at += size_with_end(texts + at);
  return at;
}

// Collects texts while compiling.
template <std::size_t Room>
struct Texts {
  char bytes[Room]{};
  std::size_t used = 0;

  // The place of a text, which is added when it is new.
  constexpr std::size_t place_of(const char* text) {
    const std::size_t at = place_among(bytes, used, text);
    if (at == used) {
      do bytes[used++] = *text;
      while (*text++ != 0);
    }
    return at;
  }

  // Copies them without the room that was not needed.
  constexpr void copy_to(char* room) const {
    for (std::size_t i = 0; i < used; ++i) room[i] = bytes[i];
  }
};

}  // namespace qmv

#endif
