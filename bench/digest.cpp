#include "digest.h"

#include <cstddef>
#include <initializer_list>

#include "compact_columns.h"

namespace qmv::bench {

namespace {

struct Digest {
  std::uint64_t value = 14695981039346656037U;

  void add(std::int32_t number) { value = (value ^ static_cast<std::uint32_t>(number)) * 1099511628211U; }
  template <std::size_t Width>
  void add(const char (&text)[Width]) {
    for (std::size_t i = 0; i < Width && text[i] != 0; ++i) add(text[i]);
    add(-1);
  }
};

}  // namespace

std::uint64_t digest(const compact_sdr_rec& record) {
  Digest made;
#define ADD(column, member) made.add(record.member);
  COMPACT_COLUMNS(ADD, ADD, ADD)
  made.add(record.FruRecord.EntityID);
  made.add(record.FruRecord.EntityInst);
  return made.value;
}

std::uint64_t digest(const fru_sdr_rec& record) {
  Digest made;
  for (const std::int32_t number : {record.FruIDSlaveAddr, record.DeviceAccessAddr, record.LUNBusID,
                                    record.ChannelNumber, record.EntityID, record.EntityInst, record.IdStrLen})
    made.add(number);
  for (const auto* text : {&record.ChassisSerNumber, &record.ChassisPartNumber, &record.ChassisCustFields,
                           &record.ProdSerNumber, &record.ProdPartNumber, &record.ProdMfrName, &record.BrdSerNumber,
                           &record.BrdPartNumber, &record.BrdMfrName, &record.IdStr})
    made.add(*text);
  return made.value;
}

std::uint64_t digest(const ssh_capabilities_rec& record) {
  Digest made;
  for (const std::int32_t number : {record.ElementNameEditSupported, record.MaxConnections,
                                    record.ListeningPortManagementSupported, record.MaxListeningPorts})
    made.add(number);
  for (const auto* text : {&record.InstanceID, &record.ElementName, &record.RequestedStatesSupported,
                           &record.SupportedSSHVersions, &record.SupportedEncryptionAlgorithms})
    made.add(*text);
  return made.value;
}

}  // namespace qmv::bench
