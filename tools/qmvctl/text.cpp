#include "text.h"

#include <fmt/format.h>

#include <algorithm>

namespace qmvctl {

namespace {

void append_utf8(std::string& text, unsigned character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  if (character < 0x800) {
    text += static_cast<char>(0xC0 | character >> 6);
  } else {
    text += static_cast<char>(0xE0 | character >> 12);
    text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
  }
  text += static_cast<char>(0x80 | (character & 0x3F));
}

std::string without_what_follows_a_zero(std::string text) {
  text.resize(std::min(text.size(), text.find('\0')));
  return text;
}

}  // namespace

std::string hex(int32_t number, int digits) {
  return fmt::format("{:0{}X}", static_cast<uint32_t>(number), digits);
}

std::string latin1_text(const Input& piece) {
  std::string text;
  for (size_t i = 0; i < piece.size(); ++i) append_utf8(text, piece.byte(i));
  return without_what_follows_a_zero(text);
}

std::string unicode_text(const Input& piece) {
  constexpr unsigned kReplacement = 0xFFFD;
  std::string text;
  for (size_t i = 0; i + 1 < piece.size(); i += 2) {
    const unsigned unit = piece.word(i);
    const bool is_surrogate = unit >= 0xD800 && unit <= 0xDFFF;
    append_utf8(text, is_surrogate ? kReplacement : unit);
  }
  return without_what_follows_a_zero(text);
}

std::string bcd_plus_text(const Input& piece) {
  std::string text;
  for (size_t i = 0; i < piece.size(); ++i) {
    text += kBcdPlus[piece.byte(i) >> 4];
    text += kBcdPlus[piece.byte(i) & 0xF];
  }
  return text;
}

std::string six_bit_text(const Input& piece) {
  std::string text;
  unsigned bits = 0;
  int held = 0;
  for (size_t i = 0; i < piece.size(); ++i) {
    bits |= static_cast<unsigned>(piece.byte(i)) << held;
    for (held += 8; held >= 6; held -= 6) {
      text += static_cast<char>(' ' + (bits & 0x3F));
      bits >>= 6;
    }
  }
  return text;
}

std::string hex_text(const Input& piece) {
  std::string text;
  for (size_t i = 0; i < piece.size(); ++i) text += hex(piece.byte(i));
  return text;
}

IdString read_id_string(const Input& record, size_t at) {
  const size_t length = record.byte(at) & 0x1F;
  const auto bytes = [&](size_t count) { return record.piece(at + 1, count, "the ID string"); };
  IdString id;
  id.length = static_cast<int>(length);
  switch (record.byte(at) >> 6) {
    case 0:
      id.is_unicode = length > 0;
      break;
    case 1:
      id.text = bcd_plus_text(bytes((length + 1) / 2)).substr(0, length);
      break;
    case 2:
      id.text = six_bit_text(bytes((length * 6 + 7) / 8)).substr(0, length);
      break;
    default:
      id.text = latin1_text(bytes(length));
  }
  return id;
}

bool store_text(std::string_view text, char* field, size_t width) {
  size_t length = std::min(text.size(), width - 1);
  const auto is_inside_character = [&] { return (text[length] & 0xC0) == 0x80; };
  while (length < text.size() && length > 0 && is_inside_character()) --length;
  std::memcpy(field, text.data(), length);
  return length == text.size();
}

}  // namespace qmvctl
