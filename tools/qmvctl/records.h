// Records of IPMI as tables of offsets: which bytes of a record fill which member.
#ifndef QMVCTL_RECORDS_H
#define QMVCTL_RECORDS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "input.h"

namespace qmvctl {

enum class Width { kByte, kWord, kDword };  // low byte first

template <class Record>
struct Field {
  int32_t Record::*member;
  size_t offset;  // in the record, from 0
  Width width = Width::kByte;
  uint32_t mask = 0xFFFFFFFF;  // applied before the shift to the right
  int shift = 0;
};

template <class Record, size_t Count>
void read_fields(const Input& bytes, const Field<Record> (&fields)[Count], Record& record) {
  for (const Field<Record>& field : fields) {
    uint32_t value = field.width == Width::kByte   ? bytes.byte(field.offset)
                     : field.width == Width::kWord ? bytes.word(field.offset)
                                                   : bytes.dword(field.offset);
    record.*field.member = static_cast<int32_t>((value & field.mask) >> field.shift);
  }
}

// The other way round, into bytes that are zero. What does not fit a field is left out.
template <class Record, size_t Count>
void write_fields(const Record& record, const Field<Record> (&fields)[Count], std::vector<uint8_t>& bytes) {
  for (const Field<Record>& field : fields) {
    const uint32_t value = static_cast<uint32_t>(record.*field.member) << field.shift & field.mask;
    const size_t size = field.width == Width::kByte ? 1 : field.width == Width::kWord ? 2 : 4;
    for (size_t i = 0; i < size; ++i) bytes[field.offset + i] |= static_cast<uint8_t>(value >> 8 * i);
  }
}

// Whether two FRU or FRU locator records stand for one device.
template <class Record, class Other>
bool has_same_address(const Record& record, const Other& other) {
  return record.FruIDSlaveAddr == other.FruIDSlaveAddr && record.DeviceAccessAddr == other.DeviceAccessAddr &&
         record.LUNBusID == other.LUNBusID && record.ChannelNumber == other.ChannelNumber;
}

}  // namespace qmvctl

#endif
