#include "names.h"

#include <iterator>

#include "text.h"

namespace qmvctl {

namespace {

constexpr const char* kSensorTypes[] = {
    "reserved",
    "Temperature",
    "Voltage",
    "Current",
    "Fan",
    "Physical Security",
    "Platform Security",
    "Processor",
    "Power Supply",
    "Power Unit",
    "Cooling Device",
    "Other Units-based Sensor",
    "Memory",
    "Drive Slot / Bay",
    "POST Memory Resize",
    "System Firmware Progress",
    "Event Logging Disabled",
    "Watchdog 1",
    "System Event",
    "Critical Interrupt",
    "Button",
    "Module / Board",
    "Microcontroller",
    "Add-in Card",
    "Chassis",
    "Chip Set",
    "Other FRU",
    "Cable / Interconnect",
    "Terminator",
    "System Boot Initiated",
    "Boot Error",
    "OS Boot",
    "OS Critical Stop",
    "Slot / Connector",
    "System ACPI Power State",
    "Watchdog 2",
    "Platform Alert",
    "Entity Presence",
    "Monitor ASIC",
    "LAN",
    "Management Subsystem Health",
    "Battery",
    "Session Audit",
    "Version Change",
    "FRU State",
};
static_assert(std::size(kSensorTypes) == 0x2D);

constexpr const char* kEntities[] = {
    "Unspecified",
    "Other",
    "Unknown",
    "Processor",
    "Disk or Disk Bay",
    "Peripheral Bay",
    "System Management Module",
    "System Board",
    "Memory Module",
    "Processor Module",
    "Power Supply",
    "Add-in Card",
    "Front Panel Board",
    "Back Panel Board",
    "Power System Board",
    "Drive Backplane",
    "System Internal Expansion Board",
    "Other System Board",
    "Processor Board",
    "Power Unit",
    "Power Module",
    "Power Management",
    "Chassis Back Panel Board",
    "System Chassis",
    "Sub-Chassis",
    "Other Chassis Board",
    "Disk Drive Bay",
    "Peripheral Bay",
    "Device Bay",
    "Fan",
    "Cooling Unit",
    "Cable",
    "Memory Device",
    "System Management Software",
    "BIOS",
    "Operating System",
    "System Bus",
    "Group",
    "Remote Management Device",
    "External Environment",
    "Battery",
    "Processing Blade",
    "Connectivity Switch",
    "Processor/Memory Module",
    "I/O Module",
    "Processor/IO Module",
    "Management Controller Firmware",
    "IPMI Channel",
    "PCI Bus",
    "PCI Express Bus",
    "SCSI Bus",
    "SATA/SAS Bus",
    "Processor/Front-side Bus",
    "Real Time Clock",
    "reserved",
    "Air Inlet",
    "reserved",
    "reserved",
    "reserved",
    "reserved",
    "reserved",
    "reserved",
    "reserved",
    "reserved",
    "Air Inlet",
    "Processor",
    "Baseboard",
};
static_assert(std::size(kEntities) == 0x43);

constexpr const char* kUnits[] = {
    "",
    "degrees C",
    "degrees F",
    "degrees K",
    "Volts",
    "Amps",
    "Watts",
    "Joules",
    "Coulombs",
    "VA",
    "Nits",
    "lumen",
    "lux",
    "Candela",
    "kPa",
    "PSI",
    "Newton",
    "CFM",
    "RPM",
    "Hz",
    "us",
    "ms",
    "s",
    "minutes",
    "hours",
    "days",
    "weeks",
    "mil",
    "inches",
    "feet",
    "cu in",
    "cu feet",
    "mm",
    "cm",
    "m",
    "cu cm",
    "cu m",
    "liters",
    "fluid ounces",
    "radians",
    "steradians",
    "revolutions",
    "cycles",
    "gravities",
    "ounces",
    "pounds",
    "ft-lb",
    "oz-in",
    "gauss",
    "gilberts",
    "henry",
    "millihenry",
    "farad",
    "microfarad",
    "ohms",
    "siemens",
    "mole",
    "becquerel",
    "PPM",
    "reserved",
    "dB",
    "dBA",
    "dBC",
    "gray",
    "sievert",
    "color temp",
    "bits",
    "kilobits",
    "megabits",
    "gigabits",
    "bytes",
    "kilobytes",
    "megabytes",
    "gigabytes",
    "words",
    "dwords",
    "qwords",
    "lines",
    "hits",
    "misses",
    "retries",
    "resets",
    "overruns",
    "underruns",
    "collisions",
    "packets",
    "messages",
    "characters",
    "errors",
    "correctable errors",
    "uncorrectable errors",
    "fatal errors",
    "grams",
};
static_assert(std::size(kUnits) == 93);

constexpr const char* kRates[] = {"", " per us", " per ms", " per s", " per minute", " per hour", " per day", ""};

// "type 2Dh"
std::string numbered(const std::string& what, int32_t code) {
  return what + " " + hex(code) + "h";
}

template <size_t Count>
bool names(const char* const (&)[Count], int32_t code) {
  return code >= 0 && code < static_cast<int32_t>(Count);
}

// CIM_Sensor.SensorType: 2 temperature, 3 voltage, 4 current, 5 tachometer, 7 switch, 11 presence, 12 air flow,
// 13 power consumption, 16 intrusion.
int32_t cim_sensor_type_of_unit(int32_t base_unit) {
  switch (base_unit) {
    case 1:
    case 2:
    case 3:
      return 2;
    case 4:
      return 3;
    case 5:
      return 4;
    case 6:
      return 13;
    case 17:
      return 12;
    case 18:
      return 5;
    default:
      return kCimOther;
  }
}

}  // namespace

std::string sensor_type_name(int32_t sensor_type) {
  if (names(kSensorTypes, sensor_type)) return kSensorTypes[sensor_type];
  return numbered(sensor_type >= 0xC0 ? "OEM type" : "type", sensor_type);
}

std::string entity_name(int32_t entity_id) {
  return names(kEntities, entity_id) ? kEntities[entity_id] : numbered("entity", entity_id);
}

std::string unit_name(int32_t unit) {
  return names(kUnits, unit) ? kUnits[unit] : numbered("unit", unit);
}

std::string reading_unit(int32_t units1, int32_t base_unit, int32_t modifier_unit) {
  std::string unit = units1 & 1 ? "%" : "";
  if (base_unit != 0) unit += (unit.empty() ? "" : " ") + unit_name(base_unit);
  const int32_t modifier_use = units1 >> 1 & 3;
  if (modifier_use == 1) unit += "/" + unit_name(modifier_unit);
  if (modifier_use == 2) unit += "*" + unit_name(modifier_unit);
  return unit + kRates[units1 >> 3 & 7];
}

int32_t cim_sensor_type(int32_t sensor_type, int32_t base_unit) {
  constexpr int32_t kOtherUnits = 0x0B;
  switch (sensor_type) {
    case 0x01:
      return 2;
    case 0x02:
      return 3;
    case 0x03:
      return 4;
    case 0x04:
      return base_unit == 0 ? kCimOther : 5;
    case 0x05:
      return 16;
    case 0x14:
      return 7;
    case 0x25:
      return 11;
    case kOtherUnits:
      return cim_sensor_type_of_unit(base_unit);
    default:
      return kCimOther;
  }
}

}  // namespace qmvctl
