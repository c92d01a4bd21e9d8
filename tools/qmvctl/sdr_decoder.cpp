#include "sdr_decoder.h"

#include <algorithm>
#include <set>

#include "names.h"
#include "sdr_records.h"
#include "text.h"

namespace qmvctl {

namespace {

std::string record_name(const Input& record) {
  return "record " + hex(record.word(0), 4) + "h";
}

std::string kind_of(uint8_t record_type) {
  switch (record_type) {
    case 0x03:
      return "event-only sensor";
    case 0x08:
    case 0x09:
      return "entity association";
    case 0x10:
      return "generic device locator";
    case 0x12:
      return "management controller locator";
    case 0x13:
      return "management controller confirmation";
    case 0x14:
      return "channel info";
    case 0xC0:
      return "OEM";
    default:
      return "type " + hex(record_type) + "h";
  }
}

class Decoder {
 public:
  void add(const Input& record);
  Repository result() && { return std::move(repository_); }

 private:
  void add_compact(const Input& record);
  void add_shared(const Input& record, const compact_sdr_rec& first);
  void add_full(const Input& record);
  void add_fru_locator(const Input& record);
  void note_controller(const Input& record);

  std::string read_name(const Input& record, size_t at);
  bool is_new(const char* device_id);

  template <class Sensor>
  void complete(const Input& record, Sensor& sensor, const std::string& name);

  Repository repository_;
  std::set<std::string> device_ids_;
};

void Decoder::add(const Input& record) {
  switch (record.byte(3)) {
    case 0x01:
      return add_full(record);
    case 0x02:
      return add_compact(record);
    case 0x11:
      return add_fru_locator(record);
    case 0x12:
      note_controller(record);
      break;
    default:
      break;
  }
  ++repository_.not_held[kind_of(record.byte(3))];
}

std::string Decoder::read_name(const Input& record, size_t at) {
  IdString id = read_id_string(record, at);
  if (id.is_unicode) {
    repository_.notes.push_back(record_name(record) + ": the Unicode ID string is not decoded, the name stays empty");
  }
  return std::move(id.text);
}

bool Decoder::is_new(const char* device_id) {
  const bool is_new = device_ids_.insert(device_id).second;
  if (!is_new) {
    ++repository_.not_held["repeated sensor"];
    repository_.notes.push_back(std::string("sensor ") + device_id + " has more than one record; the first one counts");
  }
  return is_new;
}

// Fills what is derived from the bytes of the record, the same for both kinds of sensors.
template <class Sensor>
void Decoder::complete(const Input& record, Sensor& sensor, const std::string& name) {
  if (sensor.SensorNum > 0xFE) record.fail(7, "sensor number FFh is reserved");
  store_text(hex(sensor.OwnerID) + ":" + hex(sensor.OwnerLUN) + ":" + hex(sensor.SensorNum), sensor.DeviceID);
  store_text(name, sensor.IdStr);
  store_text(name, sensor.SensorName);
  sensor.IdStrLen = static_cast<int32_t>(name.size());
  sensor.CIMSensorType = cim_sensor_type(sensor.SensorType, sensor.BaseUnit);
  if (sensor.CIMSensorType == kCimOther) {
    sensor.OtherSensorType = sensor.SensorType;
    store_text(sensor_type_name(sensor.SensorType), sensor.OtherSensorTypeDesc);
  }
  sensor.FruRecord.EntityID = sensor.EntityID;
  sensor.FruRecord.EntityInst = sensor.EntityInstance;
}

void Decoder::add_full(const Input& record) {
  full_sdr_rec sensor{};
  read_fields(record, kFullSensor, sensor);
  complete(record, sensor, read_name(record, kFullIdString));
  if (is_new(sensor.DeviceID)) repository_.full_sensors.push_back(sensor);
}

void Decoder::add_compact(const Input& record) {
  compact_sdr_rec first{};
  read_fields(record, kCompactSensor, first);
  const std::string name = read_name(record, kCompactIdString);
  const Sharing sharing(first.RecShareDir);
  for (int number = 0; number < std::max(sharing.count, 1); ++number) {
    compact_sdr_rec sensor = first;
    sensor.SensorNum += number;
    if (sharing.has_own_instances)
      sensor.EntityInstance = (first.EntityInstance & 0x80) | ((first.EntityInstance + number) & 0x7F);
    complete(record, sensor, sharing.count > 1 ? name + sharing.suffix(number) : name);
    if (is_new(sensor.DeviceID)) repository_.compact_sensors.push_back(sensor);
  }
}

void Decoder::add_fru_locator(const Input& record) {
  fru_locator_sdr_rec locator{};
  read_fields(record, kFruLocator, locator);
  locator.IDStrLen = record.byte(kFruLocatorIdString) & 0x1F;
  store_text(read_name(record, kFruLocatorIdString), locator.DevIdStr);
  for (const fru_locator_sdr_rec& other : repository_.fru_locators) {
    if (has_same_address(other, locator)) {
      ++repository_.not_held["repeated FRU locator"];
      return;
    }
  }
  repository_.fru_locators.push_back(locator);
}

void Decoder::note_controller(const Input& record) {
  constexpr int kHasFruInventory = 0x08;
  constexpr int kManagementController = 0x20;
  if (record.byte(5) != kManagementController || !(record.byte(kControllerCapabilities) & kHasFruInventory)) return;
  fru_rec fru{};
  read_fields(record, kControllerLocator, fru);
  fru.LUNBusID = kLogicalFruDevice;
  fru.IDStrLen = record.byte(kControllerIdString) & 0x1F;
  store_text(read_name(record, kControllerIdString), fru.DevIdStr);
  repository_.builtin_fru = fru;
}

}  // namespace

Repository decode_repository(const Input& dump) {
  if (dump.size() == 0) dump.fail(0, "there are no sensor data records");
  Decoder decoder;
  for (size_t at = 0; at < dump.size();) {
    const Input header = dump.piece(at, kHeaderSize, "the header of a record");
    if (header.byte(2) != kRecordVersion) {
      header.fail(2, "no sensor data record: version " + hex(header.byte(2)) + "h instead of 51h");
    }
    const size_t size = kHeaderSize + header.byte(4);
    decoder.add(dump.piece(at, size, record_name(header)));
    at += size;
  }
  return std::move(decoder).result();
}

}  // namespace qmvctl
