#include "sdr_decoder.h"

#include <algorithm>
#include <set>

#include "names.h"
#include "records.h"
#include "text.h"

namespace qmvctl {

namespace {

constexpr size_t kHeaderSize = 5;
constexpr int kRecordVersion = 0x51;  // IPMI 1.5 and 2.0

// IPMI 2.0, table 43-2. The table counts bytes from 1, here they count from 0.
constexpr Field<compact_sdr_rec> kCompactSensor[] = {
    {&compact_sdr_rec::IPMI_RecordID, 0, Width::kWord},
    {&compact_sdr_rec::SDRType, 3},
    {&compact_sdr_rec::OwnerID, 5},
    {&compact_sdr_rec::OwnerLUN, 6},
    {&compact_sdr_rec::SensorNum, 7},
    {&compact_sdr_rec::EntityID, 8},
    {&compact_sdr_rec::EntityInstance, 9},
    {&compact_sdr_rec::SensorInit, 10},
    {&compact_sdr_rec::SensorCaps, 11},
    {&compact_sdr_rec::SensorType, 12},
    {&compact_sdr_rec::EventTypeCode, 13, Width::kByte, 0x7F},
    {&compact_sdr_rec::AssertionMask, 14, Width::kWord},
    {&compact_sdr_rec::DeAssertionMask, 16, Width::kWord},
    {&compact_sdr_rec::DiscreteReadingMask, 18, Width::kWord},
    {&compact_sdr_rec::RateUnit, 20},
    {&compact_sdr_rec::BaseUnit, 21},
    {&compact_sdr_rec::UnitModifier, 22},
    {&compact_sdr_rec::RecShareDir, 23, Width::kWord},
    {&compact_sdr_rec::PHysterysis, 25},
    {&compact_sdr_rec::NHysterysis, 26},
    {&compact_sdr_rec::OEM, 30},
};
constexpr size_t kCompactIdString = 31;

// IPMI 2.0, table 43-1.
constexpr Field<full_sdr_rec> kFullSensor[] = {
    {&full_sdr_rec::IPMI_RecordID, 0, Width::kWord},
    {&full_sdr_rec::SDRType, 3},
    {&full_sdr_rec::OwnerID, 5},
    {&full_sdr_rec::OwnerLUN, 6},
    {&full_sdr_rec::SensorNum, 7},
    {&full_sdr_rec::EntityID, 8},
    {&full_sdr_rec::EntityInstance, 9},
    {&full_sdr_rec::SensorInit, 10},
    {&full_sdr_rec::SensorCaps, 11},
    {&full_sdr_rec::SensorType, 12},
    {&full_sdr_rec::EventTypeCode, 13, Width::kByte, 0x7F},
    {&full_sdr_rec::AssertionMask, 14, Width::kWord},
    {&full_sdr_rec::DeAssertionMask, 16, Width::kWord},
    {&full_sdr_rec::DiscreteReadingMask, 18, Width::kWord},
    {&full_sdr_rec::RateUnit, 20},
    {&full_sdr_rec::BaseUnit, 21},
    {&full_sdr_rec::UnitModifier, 22},
    {&full_sdr_rec::Linearization, 23, Width::kByte, 0x7F},
    {&full_sdr_rec::M, 24},
    {&full_sdr_rec::MTolerance, 25},
    {&full_sdr_rec::B, 26},
    {&full_sdr_rec::BAccuracy, 27},
    {&full_sdr_rec::Accuracy, 28},
    {&full_sdr_rec::RBExp, 29},
    {&full_sdr_rec::AnalogCharFlag, 30},
    {&full_sdr_rec::NominalRdg, 31},
    {&full_sdr_rec::NormalMax, 32},
    {&full_sdr_rec::NormalMin, 33},
    {&full_sdr_rec::SensorMaxRdg, 34},
    {&full_sdr_rec::SensorMinRdg, 35},
    {&full_sdr_rec::UpperNRThreshold, 36},
    {&full_sdr_rec::UpperCriticalThreshold, 37},
    {&full_sdr_rec::UpperNCThreshold, 38},
    {&full_sdr_rec::LowerNRThreshold, 39},
    {&full_sdr_rec::LowerCriticalThreshold, 40},
    {&full_sdr_rec::LowerNCThreshold, 41},
    {&full_sdr_rec::PHysterysis, 42},
    {&full_sdr_rec::NHysterysis, 43},
    {&full_sdr_rec::OEM, 46},
};
constexpr size_t kFullIdString = 47;

// IPMI 2.0, table 43-7.
constexpr Field<fru_locator_sdr_rec> kFruLocator[] = {
    {&fru_locator_sdr_rec::DeviceAccessAddr, 5}, {&fru_locator_sdr_rec::FruIDSlaveAddr, 6},
    {&fru_locator_sdr_rec::LUNBusID, 7},         {&fru_locator_sdr_rec::ChannelNumber, 8, Width::kByte, 0xF0, 4},
    {&fru_locator_sdr_rec::DevType, 10},         {&fru_locator_sdr_rec::DevTypeModifier, 11},
    {&fru_locator_sdr_rec::EntityID, 12},        {&fru_locator_sdr_rec::EntityInst, 13},
    {&fru_locator_sdr_rec::OEMField, 14},
};
constexpr size_t kFruLocatorIdString = 15;

// IPMI 2.0, table 43-8.
constexpr Field<fru_rec> kControllerLocator[] = {
    {&fru_rec::DeviceAccessAddr, 5},
    {&fru_rec::ChannelNumber, 6, Width::kByte, 0x0F},
    {&fru_rec::EntityID, 12},
    {&fru_rec::EntityInst, 13},
};
constexpr size_t kControllerCapabilities = 8;
constexpr size_t kControllerIdString = 15;

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

// "A" to "Z", "AA", "AB", ... for 0, 1, ...
std::string alphabetic(int number) {
  std::string text;
  for (; number >= 0; number = number / 26 - 1) text.insert(text.begin(), static_cast<char>('A' + number % 26));
  return text;
}

// What the sharing bytes of a compact record say (table 43-2, bytes 24 and 25).
struct Sharing {
  explicit Sharing(int32_t bytes)
      : count(bytes & 0xF),
        is_alphabetic((bytes >> 4 & 3) == 1),
        first_suffix(bytes >> 8 & 0x7F),
        has_own_instances((bytes & 0x8000) != 0) {}

  std::string suffix(int number) const {
    return " " + (is_alphabetic ? alphabetic(first_suffix + number) : std::to_string(first_suffix + number));
  }

  int count;
  bool is_alphabetic;
  int first_suffix;
  bool has_own_instances;
};

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
