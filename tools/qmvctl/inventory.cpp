#include "inventory.h"

#include <algorithm>
#include <utility>

#include "fru_decoder.h"
#include "records.h"
#include "text.h"

namespace qmvctl {

namespace {

constexpr int32_t kSensorTypeMemory = 0x0C;
constexpr int32_t kManagementController = 0x20;

// Entity IDs from first to last belong to a category.
struct EntityRange {
  int32_t first;
  int32_t last;
  int32_t category;
};

constexpr int32_t kSlot = 1;
constexpr int32_t kCard = 2;
constexpr int32_t kChassis = 4;
constexpr int32_t kChip = 8;
constexpr int32_t kPackage = 16;
constexpr int32_t kConnector = 32;

constexpr EntityRange kCategories[] = {
    {5, 5, kSlot},           // peripheral bay
    {26, 28, kSlot},         // disk drive, peripheral and device bays
    {7, 8, kCard},           // system board, memory module
    {11, 18, kCard},         // add-in card to processor board
    {21, 22, kCard},         // power management, chassis back panel board
    {25, 25, kCard},         // other chassis board
    {23, 24, kChassis},      // system chassis, sub-chassis
    {3, 3, kChip},           // processor
    {9, 9, kChip},           // processor module
    {4, 4, kPackage},        // disk or disk bay
    {6, 6, kPackage},        // system management module
    {10, 10, kPackage},      // power supply
    {20, 20, kPackage},      // power module
    {29, 29, kPackage},      // fan
    {40, 41, kPackage},      // battery, processing blade
    {43, 45, kPackage},      // processor/memory, I/O and processor/IO modules
    {31, 31, kConnector},    // cable
    {36, 36, kConnector},    // system bus
    {42, 42, kConnector},    // connectivity switch
    {8, 8, kMemory},         // memory module
    {32, 32, kMemory},       // memory device
    {10, 10, kPowerSupply},  // power supply
    {19, 19, kPowerSupply},  // power unit
};

fru_rec fru_of(const fru_locator_sdr_rec& locator) {
  fru_rec fru{};
  fru.FruIDSlaveAddr = locator.FruIDSlaveAddr;
  fru.DeviceAccessAddr = locator.DeviceAccessAddr;
  fru.LUNBusID = locator.LUNBusID;
  fru.ChannelNumber = locator.ChannelNumber;
  fru.EntityID = locator.EntityID;
  fru.EntityInst = locator.EntityInst;
  fru.IDStrLen = locator.IDStrLen;
  store_text(text_of(locator.DevIdStr), fru.DevIdStr);
  return fru;
}

fru_rec fru_without_locator(int fru_id, const std::optional<fru_rec>& builtin_fru) {
  if (fru_id == 0 && builtin_fru) return *builtin_fru;
  fru_rec fru{};
  fru.FruIDSlaveAddr = fru_id;
  fru.DeviceAccessAddr = kManagementController;
  fru.LUNBusID = kLogicalFruDevice;
  return fru;
}

template <class Sensor>
void tie_to_frus(std::vector<Sensor>& sensors, const std::vector<fru_rec>& frus) {
  for (Sensor& sensor : sensors) {
    const auto fru = std::find_if(frus.begin(), frus.end(), [&](const fru_rec& fru) {
      return fru.EntityID == sensor.EntityID && fru.EntityInst == sensor.EntityInstance;
    });
    sensor.IsFRUAvailable = fru != frus.end();
    sensor.FruRecord = sensor.IsFRUAvailable ? *fru : fru_rec{};
    sensor.FruRecord.EntityID = sensor.EntityID;
    sensor.FruRecord.EntityInst = sensor.EntityInstance;
    sensor.PhysicalElement = physical_element(sensor.EntityID, sensor.SensorType);
  }
}

}  // namespace

int32_t physical_element(int32_t entity_id, int32_t sensor_type) {
  int32_t categories = sensor_type == kSensorTypeMemory ? kMemory : 0;
  for (const EntityRange& range : kCategories) {
    if (entity_id >= range.first && entity_id <= range.last) categories |= range.category;
  }
  return categories;
}

void take_repository(Inventory& inventory, Repository repository) {
  inventory.compact_sensors = std::move(repository.compact_sensors);
  inventory.full_sensors = std::move(repository.full_sensors);
  for (const fru_locator_sdr_rec& locator : repository.fru_locators) inventory.frus.push_back(fru_of(locator));
  inventory.fru_locators = std::move(repository.fru_locators);
  inventory.not_held.merge(repository.not_held);
  inventory.notes.insert(inventory.notes.end(), repository.notes.begin(), repository.notes.end());
}

bool is_controllers_fru(const fru_rec& fru, int fru_id) {
  return fru.FruIDSlaveAddr == fru_id && fru.DeviceAccessAddr == kManagementController &&
         (fru.LUNBusID & kLogicalFruDevice) != 0;
}

void take_fru(Inventory& inventory, int fru_id, const Input& image, const std::optional<fru_rec>& builtin_fru) {
  const std::string name = "FRU " + std::to_string(fru_id);
  auto& frus = inventory.frus;
  auto fru =
      std::find_if(frus.begin(), frus.end(), [&](const fru_rec& fru) { return is_controllers_fru(fru, fru_id); });
  if (fru == frus.end()) {
    fru = frus.insert(fru, fru_without_locator(fru_id, builtin_fru));
    if (fru->EntityID == 0) inventory.notes.push_back(name + " has no locator record: its entity is unspecified");
  }
  for (const std::string& note : decode_fru(image, *fru)) inventory.notes.push_back(name + ": " + note);
}

void tie_sensors_to_frus(Inventory& inventory) {
  tie_to_frus(inventory.compact_sensors, inventory.frus);
  tie_to_frus(inventory.full_sensors, inventory.frus);
}

}  // namespace qmvctl
