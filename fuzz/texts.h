// What decoders promise of the texts that they fill: they end within their field, and are UTF-8.
#ifndef QMV_FUZZ_TEXTS_H
#define QMV_FUZZ_TEXTS_H

#include <cstddef>
#include <cstring>

#include "input.h"

namespace qmv::fuzz {

inline bool is_utf8(const char* text) {
  const auto* at = reinterpret_cast<const unsigned char*>(text);
  while (*at != 0) {
    const int behind = *at < 0x80 ? 0 : *at >= 0xC2 && *at < 0xE0 ? 1 : *at >= 0xE0 && *at < 0xF0 ? 2 : -1;
    if (behind < 0) return false;
    ++at;
    for (int i = 0; i < behind; ++i, ++at) {
      if ((*at & 0xC0) != 0x80) return false;
    }
  }
  return true;
}

template <std::size_t Width>
void require_text(const char (&field)[Width]) {
  require(strnlen(field, Width) < Width, "a text ends within its field");
  require(is_utf8(field), "a text is UTF-8");
}

inline void require_texts(const fru_rec& fru) {
  for (const auto& text :
       {fru.DevIdStr, fru.ChassisSerNumber, fru.ChassisPartNumber, fru.ChassisCustFields, fru.ProdSerNumber,
        fru.ProdPartNumber, fru.ProdMfrName, fru.BrdSerNumber, fru.BrdPartNumber, fru.BrdMfrName})
    require_text(reinterpret_cast<const char(&)[sizeof(fru.DevIdStr)]>(*text));
}

}  // namespace qmv::fuzz

#endif
