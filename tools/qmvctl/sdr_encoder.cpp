#include "sdr_encoder.h"

#include <algorithm>
#include <set>

#include "sdr_records.h"
#include "text.h"

namespace qmvctl {

namespace {

// A record: its members, the ID string at its end, type and length in its header.
template <class Record, size_t Count>
Bytes encode(const Record& record, const Field<Record> (&fields)[Count], uint8_t type, size_t id_offset,
             std::string_view name, int32_t name_length) {
  constexpr size_t kLongestName = 0x1F;
  constexpr uint8_t kEightBit = 0xC0;
  Bytes bytes(id_offset + 1);
  write_fields(record, fields, bytes);
  Bytes text = latin1_bytes(name).value_or(Bytes(name.begin(), name.end()));
  const size_t length = std::max(text.size(), static_cast<size_t>(std::max(name_length, 0)));
  text.resize(std::min(length, kLongestName));
  bytes[id_offset] = static_cast<uint8_t>(kEightBit | text.size());
  bytes.insert(bytes.end(), text.begin(), text.end());
  bytes[2] = kRecordVersion;
  bytes[3] = type;
  bytes[4] = static_cast<uint8_t>(bytes.size() - kHeaderSize);
  return bytes;
}

Bytes encode(const full_sdr_rec& sensor) {
  return encode(sensor, kFullSensor, 0x01, kFullIdString, text_of(sensor.SensorName), 0);
}

Bytes encode(const compact_sdr_rec& sensor, std::string_view name) {
  return encode(sensor, kCompactSensor, 0x02, kCompactIdString, name, 0);
}

Bytes encode(const fru_locator_sdr_rec& locator) {
  return encode(locator, kFruLocator, 0x11, kFruLocatorIdString, text_of(locator.DevIdStr), locator.IDStrLen);
}

Bytes encode_controller(const fru_rec& fru) {
  constexpr uint8_t kHasFruInventory = 0x08;
  Bytes bytes = encode(fru, kControllerLocator, 0x12, kControllerIdString, text_of(fru.DevIdStr), fru.IDStrLen);
  bytes[kControllerCapabilities] = kHasFruInventory;
  return bytes;
}

using Sensors = std::vector<compact_sdr_rec>::const_iterator;

// The sensors that come from one record stand one behind the other.
Sensors end_of_record(Sensors first, Sensors end) {
  const int count = std::max(Sharing(first->RecShareDir).count, 1);
  Sensors last = first;
  while (last != end && last - first < count && last->IPMI_RecordID == first->IPMI_RecordID) ++last;
  return last;
}

bool is_same(const compact_sdr_rec& a, const compact_sdr_rec& b) {
  return std::string_view(a.DeviceID) == b.DeviceID && std::string_view(a.SensorName) == b.SensorName &&
         a.EntityInstance == b.EntityInstance;
}

// The one record of several sensors; nothing when it would not give these.
Bytes encode_shared(Sensors first, Sensors end) {
  const std::string suffix = Sharing(first->RecShareDir).suffix(0);
  std::string_view name = text_of(first->SensorName);
  if (!name.ends_with(suffix)) return {};
  name.remove_suffix(suffix.size());
  Bytes bytes = encode(*first, name);
  const auto decoded = decode_repository(Input("the record", bytes)).compact_sensors;
  return std::equal(first, end, decoded.begin(), decoded.end(), is_same) ? bytes : Bytes();
}

Bytes encode_alone(compact_sdr_rec sensor) {
  constexpr int32_t kShareCount = 0x0F;
  sensor.RecShareDir = (sensor.RecShareDir & ~kShareCount) | 1;
  return encode(sensor, text_of(sensor.SensorName));
}

void append(Bytes& dump, const Bytes& bytes) {
  dump.insert(dump.end(), bytes.begin(), bytes.end());
}

void append_compact(Bytes& dump, const std::vector<compact_sdr_rec>& sensors) {
  for (Sensors first = sensors.begin(); first != sensors.end();) {
    const Sensors end = end_of_record(first, sensors.end());
    const bool is_shared = Sharing(first->RecShareDir).count > 1;
    const Bytes bytes = is_shared ? encode_shared(first, end) : encode(*first, text_of(first->SensorName));
    if (bytes.empty()) {
      for (; first != end; ++first) append(dump, encode_alone(*first));
    }
    append(dump, bytes);
    first = end;
  }
}

// Record IDs that no sensor has.
class FreeIds {
 public:
  explicit FreeIds(const Repository& repository) {
    for (const auto& sensor : repository.compact_sensors) used_.insert(sensor.IPMI_RecordID);
    for (const auto& sensor : repository.full_sensors) used_.insert(sensor.IPMI_RecordID);
  }

  void give(Bytes& record) {
    while (used_.contains(next_)) ++next_;
    record[0] = static_cast<uint8_t>(next_);
    record[1] = static_cast<uint8_t>(next_ >> 8);
    ++next_;
  }

 private:
  std::set<int32_t> used_;
  int32_t next_ = 1;
};

}  // namespace

Bytes encode_repository(const Repository& repository) {
  Bytes dump;
  append_compact(dump, repository.compact_sensors);
  for (const full_sdr_rec& sensor : repository.full_sensors) append(dump, encode(sensor));
  std::vector<Bytes> locators;
  for (const fru_locator_sdr_rec& locator : repository.fru_locators) locators.push_back(encode(locator));
  if (repository.builtin_fru) locators.push_back(encode_controller(*repository.builtin_fru));
  FreeIds ids(repository);
  for (Bytes& record : locators) {
    ids.give(record);
    append(dump, record);
  }
  return dump;
}

}  // namespace qmvctl
