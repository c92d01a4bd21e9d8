#include "fru_decoder.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "fru_areas.h"
#include "text.h"

namespace qmvctl {

namespace {

void check_version(const Input& bytes, const std::string& what) {
  if ((bytes.byte(0) & 0x0F) != kFormatVersion) {
    bytes.fail(0, what + " has format version " + hex(bytes.byte(0)) + "h instead of 01h");
  }
}

// Where an area begins, nothing when the image has none.
std::optional<size_t> area_start(const Input& header, size_t header_offset) {
  const size_t start = header.byte(header_offset) * kUnit;
  return start ? std::optional(start) : std::nullopt;
}

// In another language than English a character has 16 bits (language codes 0 and 25 are English).
bool is_english(const Input& area, std::optional<size_t> language) {
  return !language || area.byte(*language) == 0 || area.byte(*language) == 25;
}

// The fields of an area up to the end mark, or up to the checksum where no room was left for the mark.
std::vector<std::string> read_area_fields(const Input& area, const Area& layout) {
  const Input fields = area.piece(0, area.size() - 1, "the area");
  std::vector<std::string> texts;
  for (size_t at = layout.first_field; at < fields.size() && fields.byte(at) != kEndOfFields;) {
    const size_t length = fields.byte(at) & 0x3F;
    const Input bytes = fields.piece(at + 1, length, std::string("a field of the ") + layout.name + " area");
    texts.push_back(field_text(fields.byte(at) >> 6, bytes, is_english(area, layout.language)));
    at += 1 + length;
  }
  return texts;
}

Input open_area(const Input& image, size_t start, const Area& layout) {
  const std::string name = std::string("the ") + layout.name + " area";
  const Input head = image.piece(start, 2, name);
  check_version(head, name);
  const size_t length = head.byte(1) * kUnit;
  if (length <= layout.first_field) head.fail(1, name + " says that it has " + std::to_string(length) + " bytes");
  Input area = image.piece(start, length, name);
  if (area.sum() != 0) area.fail(length - 1, "the checksum of " + name + " is wrong");
  return area;
}

void clear_texts(fru_rec& fru) {
  const auto clear = [&](Text text) { std::fill_n(fru.*text, sizeof(fru.*text), '\0'); };
  for (const Area& layout : kAreas) {
    for (size_t i = 0; i < layout.field_count; ++i) {
      if (layout.fields[i]) clear(layout.fields[i]);
    }
    if (layout.custom_fields) clear(layout.custom_fields);
  }
}

void decode_area(const Input& area, const Area& layout, fru_rec& fru, std::vector<std::string>& notes) {
  const std::vector<std::string> texts = read_area_fields(area, layout);
  std::string custom;
  for (size_t i = 0; i < texts.size(); ++i) {
    if (i >= layout.field_count) {
      custom += (custom.empty() ? "" : ", ") + texts[i];
    } else if (layout.fields[i]) {
      store_text(texts[i], fru.*layout.fields[i]);
    }
  }
  if (layout.custom_fields && !store_text(custom, fru.*layout.custom_fields)) {
    notes.push_back(std::string("the custom fields of the ") + layout.name + " area are cut to 255 bytes");
  }
}

// Walks the multi-record area: each record has a header with a checksum of its own and one of the record's data.
void check_multi_records(const Input& image, size_t start) {
  constexpr size_t kHeaderSize = 5;
  constexpr uint8_t kEndOfList = 0x80;
  bool is_last = false;
  for (size_t at = start; !is_last;) {
    const Input header = image.piece(at, kHeaderSize, "the header of a multi-record");
    if (header.sum() != 0) header.fail(4, "the header checksum of a multi-record is wrong");
    const Input data = image.piece(at + kHeaderSize, header.byte(2), "a multi-record");
    if (static_cast<uint8_t>(data.sum() + header.byte(3)) != 0)
      header.fail(3, "the checksum of a multi-record is wrong");
    is_last = (header.byte(1) & kEndOfList) != 0;
    at += kHeaderSize + data.size();
  }
}

}  // namespace

std::string field_text(int type, const Input& bytes, bool is_english) {
  switch (type) {
    case 0:
      return hex_text(bytes);
    case 1:
      return bcd_plus_text(bytes);
    case 2:
      return six_bit_text(bytes);
    default:
      return is_english ? latin1_text(bytes) : unicode_text(bytes);
  }
}

std::vector<std::string> decode_fru(const Input& image, fru_rec& fru) {
  const Input header = image.piece(0, kCommonHeaderSize, "the common header");
  if (header.sum() != 0) header.fail(kCommonHeaderSize - 1, "the checksum of the common header is wrong");
  check_version(header, "the common header");
  clear_texts(fru);
  std::vector<std::string> notes;
  for (const Area& layout : kAreas) {
    const auto start = area_start(header, layout.header_offset);
    if (start) decode_area(open_area(image, *start, layout), layout, fru, notes);
  }
  if (const auto start = area_start(header, kMultiRecordOffset)) check_multi_records(image, *start);
  return notes;
}

}  // namespace qmvctl
