#include "sdr/entity_class_map.h"

#include <cstddef>
#include <cstring>

#include "core/texts.h"

namespace qmv {

namespace {

constexpr EntityClass kWritten[kEntityClasses] = {
    {"0", "TBD", "TBD", "Unspecified"},
    {"1", "TBD", "TBD", "Other"},
    {"2", "TBD", "TBD", "Unknown"},
    {"3", "CIM_Processor", "CIM_Chip", "Processor"},
    {"4", "CIM_DiskDrive", "CIM_PhysicalPackage", "Disk or Disk Bay"},
    {"5", "TBD", "CIM_Slot", "Peripheral Bay"},
    {"6", "CIM_ComputerSystem", "CIM_PhysicalPackage", "System Management Module"},
    {"7", "CIM_ComputerSystem", "CIM_Card", "System Board"},
    {"8", "CIM_Memory", "CIM_PhysicalMemory", "Memory Module"},
    {"9", "CIM_Processor", "CIM_Chip", "Processor Module"},
    {"10", "CIM_PowerSupply", "CIM_PhysicalPackage", "Power Supply"},
    {"11", "CIM_ComputerSystem", "CIM_Card", "Add-in Card"},
    {"12", "TBD", "CIM_Card", "Front Panel Board"},
    {"13", "TBD", "CIM_Card", "Back Panel Board"},
    {"14", "TBD", "CIM_Card", "Power System Board"},
    {"15", "TBD", "CIM_Card", "Drive Backplane"},
    {"16", "CIM_ComputerSystem", "CIM_Card", "System Internal Expansion Board"},
    {"17", "TBD", "CIM_Card", "Other System Board"},
    {"18", "CIM_Processor", "CIM_Card", "Processor Board"},
    {"19", "CIM_PowerSupply", "CIM_PhysicalPackage", "Power Unit"},
    {"20", "TBD", "CIM_PhysicalPackage", "Power Module"},
    {"21", "TBD", "CIM_Card", "Power Management"},
    {"22", "TBD", "CIM_Card", "Chassis Back Panel Board"},
    {"23", "CIM_ComputerSystem", "CIM_Chassis", "System Chassis"},
    {"24", "TBD", "CIM_Chassis", "Sub-Chassis"},
    {"25", "TBD", "CIM_Card", "Other Chassis Board"},
    {"26", "TBD", "CIM_Slot", "Disk Drive Bay"},
    {"27", "TBD", "CIM_Slot", "Peripheral Bay"},
    {"28", "TBD", "CIM_Slot", "Device Bay"},
    {"29", "CIM_Fan", "CIM_PhysicalPackage", "Fan"},
    {"30", "CIM_Fan", "TBD", "Cooling Unit"},
    {"31", "TBD", "CIM_PhysicalConnector", "Cable"},
    {"32", "CIM_Memory", "CIM_PhysicalMemory", "Memory Device"},
    {"33", "TBD", "CIM_SoftwareIdentity", "System Management Software"},
    {"34", "TBD", "CIM_SoftwareIdentity", "BIOS"},
    {"35", "TBD", "CIM_SoftwareIdentity", "Operating System"},
    {"36", "TBD", "CIM_PhysicalConnector", "System Bus"},
    {"37", "TBD", "TBD", "Group"},
    {"38", "CIM_ComputerSystem", "CIM_Card", "Remote Management Communication Device"},
    {"39", "TBD", "TBD", "External Environment"},
    {"40", "CIM_Battery", "CIM_PhysicalPackage", "Battery"},
    {"41", "CIM_ComputerSystem", "CIM_PhysicalPackage", "Processing Blade"},
    {"42", "CIM_ComputerSystem", "CIM_PhysicalConnector", "Connectivity Switch"},
    {"43", "CIM_ComputerSystem", "CIM_PhysicalPackage", "Processor/Memory Module"},
    {"44", "CIM_ComputerSystem", "CIM_PhysicalPackage", "I/O Module"},
    {"45", "CIM_ComputerSystem", "CIM_PhysicalPackage", "Processor/IO Module"},
    {"46", "TBD", "CIM_SoftwareIdentity", "Management Controller Firmware"},
    {"47", "CIM_ServiceAccessPort", "TBD", "IPMI Channel"},
    {"48", "TBD", "TBD", "PCI Bus"},
    {"49", "TBD", "TBD", "PCI Express Bus"},
    {"50", "TBD", "TBD", "SCSI Bus"},
    {"51", "TBD", "TBD", "SATA/SAS bus"},
    {"52", "TBD", "TBD", "Processor/front-side bus"},
    {"53", "TBD", "TBD", "Real Time Clock(RTC)"},
};

// The table as it is stored: rows of distances into the texts. Pointers would have to be relocated at load time, 216 of
// them.
struct Row {
  std::uint16_t id, logical_class, physical_class, description;
};

struct Collected {
  Row rows[kEntityClasses]{};
  Texts<4096> texts{};
};

constexpr Collected collected() {
  Collected made;
  const auto place_of = [&made](const char* text) { return static_cast<std::uint16_t>(made.texts.place_of(text)); };
  for (std::size_t i = 0; i < kEntityClasses; ++i) {
    const EntityClass& row = kWritten[i];
    made.rows[i] = {place_of(row.id), place_of(row.logical_class), place_of(row.physical_class),
                    place_of(row.description)};
  }
  return made;
}

// The same, without the room that was not needed.
template <std::size_t Size>
struct Map {
  Row rows[kEntityClasses];
  char texts[Size];
};

constexpr auto kMap = [] {
  constexpr Collected kCollected = collected();
  Map<kCollected.texts.used> map{};
  for (std::size_t i = 0; i < kEntityClasses; ++i) map.rows[i] = kCollected.rows[i];
  kCollected.texts.copy_to(map.texts);
  return map;
}();

}  // namespace

EntityClass entity_class(std::int32_t entity_id) {
  const Row& row = kMap.rows[entity_id];
  return {kMap.texts + row.id, kMap.texts + row.logical_class, kMap.texts + row.physical_class,
          kMap.texts + row.description};
}

bool is_of_logical_class(std::int32_t entity_id, const char* cim_class) {
  return entity_id >= 0 && entity_id < kEntityClasses &&
         std::strcmp(kMap.texts + kMap.rows[entity_id].logical_class, cim_class) == 0;
}

}  // namespace qmv
