// FRU information storage images: their areas, and the fields of these.
#ifndef QMVCTL_FRU_AREAS_H
#define QMVCTL_FRU_AREAS_H

#include <iterator>
#include <optional>
#include <string>

#include "input.h"
#include "qmv.h"

namespace qmvctl {

constexpr size_t kUnit = 8;  // offsets and lengths count in units of 8 bytes
constexpr int kFormatVersion = 1;
constexpr size_t kCommonHeaderSize = 8;
constexpr size_t kMultiRecordOffset = 5;  // in the common header
constexpr uint8_t kEndOfFields = 0xC1;

using Text = char (fru_rec::*)[256];

// A chassis, board or product information area: its predefined fields in order. A null member is not kept.
struct Area {
  const char* name;
  size_t header_offset;            // of the area's offset in the common header
  std::optional<size_t> language;  // offset of the language code
  size_t first_field;              // offset of the first type/length byte
  const Text* fields;
  size_t field_count;
  Text custom_fields;
};

inline constexpr Text kChassisFields[] = {&fru_rec::ChassisPartNumber, &fru_rec::ChassisSerNumber};
inline constexpr Text kBoardFields[] = {&fru_rec::BrdMfrName, nullptr /* product name */, &fru_rec::BrdSerNumber,
                                        &fru_rec::BrdPartNumber, nullptr /* FRU file ID */};
inline constexpr Text kProductFields[] = {&fru_rec::ProdMfrName,
                                          nullptr /* name */,
                                          &fru_rec::ProdPartNumber,
                                          nullptr /* version */,
                                          &fru_rec::ProdSerNumber,
                                          nullptr /* asset tag */,
                                          nullptr /* FRU file ID */};

inline constexpr Area kAreas[] = {
    {"chassis", 2, std::nullopt, 3, kChassisFields, std::size(kChassisFields), &fru_rec::ChassisCustFields},
    {"board", 3, 2, 6, kBoardFields, std::size(kBoardFields), nullptr},
    {"product", 4, 2, 3, kProductFields, std::size(kProductFields), nullptr},
};

// The text of a field by the type in its type/length byte. In another language than English a character has 16 bits.
std::string field_text(int type, const Input& bytes, bool is_english);

}  // namespace qmvctl

#endif
