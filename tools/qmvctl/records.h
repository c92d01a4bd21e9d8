// Records of IPMI as tables of offsets: which bytes of a record fill which member.
#ifndef QMVCTL_RECORDS_H
#define QMVCTL_RECORDS_H

#include <cstddef>
#include <cstdint>

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

// Whether two FRU or FRU locator records stand for one device.
template <class Record, class Other>
bool has_same_address(const Record& record, const Other& other) {
  return record.FruIDSlaveAddr == other.FruIDSlaveAddr && record.DeviceAccessAddr == other.DeviceAccessAddr &&
         record.LUNBusID == other.LUNBusID && record.ChannelNumber == other.ChannelNumber;
}

}  // namespace qmvctl

#endif
