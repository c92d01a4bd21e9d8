// The sensor data record repository, as "ipmitool sdr dump" writes it.
#ifndef QMVCTL_SDR_DECODER_H
#define QMVCTL_SDR_DECODER_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "input.h"
#include "qmv.h"

namespace qmvctl {

// The sensors and FRU locators of a server, and what the repository holds besides.
struct Repository {
  std::vector<compact_sdr_rec> compact_sensors;
  std::vector<full_sdr_rec> full_sensors;
  std::vector<fru_locator_sdr_rec> fru_locators;
  std::optional<fru_rec> builtin_fru;   // FRU 0 of the management controller at address 20h, by its device locator
  std::map<std::string, int> not_held;  // records that no table holds, counted by kind
  std::vector<std::string> notes;       // what a person should know of records that are held
};

// Bit of LUNBusID: the FRU is a logical one, which its controller answers for, and the address holds a FRU device ID.
constexpr int32_t kLogicalFruDevice = 0x80;

// Decodes a dump. Throws InputError where it is cut or wrong.
//
// DeviceID, a sensor's key, is made of what IPMI addresses a sensor by: owner ID, owner LUN byte (channel and LUN) and
// sensor number, two hexadecimal digits each, as in "20:00:D0". So it is the same in a new repository, and no two
// sensors share it, compact or full; a second record of a sensor is counted as not held.
//
// A compact record that several sensors share gives one sensor for each, with the number, name and entity instance that
// the sharing bytes say; RecShareDir and IPMI_RecordID still say which record it was.
//
// What does not come from the record (IsFRUAvailable, PhysicalElement, FruRecord but for its copies of the entity)
// stays zero.
Repository decode_repository(const Input& dump);

}  // namespace qmvctl

#endif
