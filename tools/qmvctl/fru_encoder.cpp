#include "fru_encoder.h"

#include <algorithm>
#include <numeric>
#include <string>

#include "fru_areas.h"
#include "text.h"

namespace qmvctl {

namespace {

constexpr size_t kLongestField = 0x3F;
constexpr int kOtherLanguage = 1;  // whatever it is: all but English have characters of 16 bits

uint8_t checksum(const Bytes& bytes) {
  return static_cast<uint8_t>(-std::accumulate(bytes.begin(), bytes.end(), 0));
}

// The texts of an area: the predefined fields, then the custom ones, which are kept as one text.
std::vector<std::string> texts_of(const Area& layout, const fru_rec& fru) {
  std::vector<std::string> texts;
  for (size_t i = 0; i < layout.field_count; ++i) {
    texts.emplace_back(layout.fields[i] ? text_of(fru.*layout.fields[i]) : "");
  }
  std::string custom(layout.custom_fields ? text_of(fru.*layout.custom_fields) : "");
  constexpr std::string_view kGap = ", ";
  while (!custom.empty()) {
    const size_t end = std::min(custom.find(kGap), custom.size());
    texts.push_back(custom.substr(0, end));
    custom.erase(0, end + kGap.size());
  }
  return texts;
}

// A field in this encoding, the type/length byte first; nothing when it does not give the text again.
std::optional<Bytes> encode_as(int type, std::optional<Bytes> bytes, const std::string& text, bool is_english) {
  constexpr size_t kLooksLikeTheEnd = 1;  // of eight-bit text: its type/length byte would be the end mark
  if (bytes && type == 3 && bytes->size() == kLooksLikeTheEnd) bytes->push_back(0);
  if (!bytes || bytes->size() > kLongestField || field_text(type, Input("the field", *bytes), is_english) != text) {
    return std::nullopt;
  }
  bytes->insert(bytes->begin(), static_cast<uint8_t>(static_cast<size_t>(type) << 6 | bytes->size()));
  return bytes;
}

Bytes encode_field(const std::string& text, bool is_english) {
  if (text.empty()) return {0xC0};
  if (auto field = encode_as(3, is_english ? latin1_bytes(text) : unicode_bytes(text), text, is_english)) return *field;
  if (auto field = encode_as(2, six_bit_bytes(text), text, is_english)) return *field;
  if (auto field = encode_as(1, bcd_plus_bytes(text), text, is_english)) return *field;
  if (auto field = encode_as(0, hex_bytes(text), text, is_english)) return *field;
  return encode_field(text.substr(0, text.size() - 1), is_english);  // what fits
}

Bytes encode_area(const Area& layout, const std::vector<std::string>& texts) {
  const bool is_english = !layout.language || std::all_of(texts.begin(), texts.end(), [](const std::string& text) {
    return latin1_bytes(text).has_value();
  });
  Bytes bytes(layout.first_field);
  bytes[0] = kFormatVersion;
  if (!is_english) bytes[*layout.language] = kOtherLanguage;
  for (const std::string& text : texts) {
    const Bytes field = encode_field(text, is_english);
    bytes.insert(bytes.end(), field.begin(), field.end());
  }
  bytes.push_back(kEndOfFields);
  bytes.resize((bytes.size() + kUnit) / kUnit * kUnit - 1);
  bytes[1] = static_cast<uint8_t>((bytes.size() + 1) / kUnit);
  bytes.push_back(checksum(bytes));
  return bytes;
}

}  // namespace

Bytes encode_fru(const fru_rec& fru) {
  Bytes header(kCommonHeaderSize - 1);
  header[0] = kFormatVersion;
  Bytes areas;
  for (const Area& layout : kAreas) {
    const std::vector<std::string> texts = texts_of(layout, fru);
    if (std::all_of(texts.begin(), texts.end(), [](const std::string& text) { return text.empty(); })) continue;
    header[layout.header_offset] = static_cast<uint8_t>((kCommonHeaderSize + areas.size()) / kUnit);
    const Bytes area = encode_area(layout, texts);
    areas.insert(areas.end(), area.begin(), area.end());
  }
  header.push_back(checksum(header));
  header.insert(header.end(), areas.begin(), areas.end());
  return header;
}

}  // namespace qmvctl
