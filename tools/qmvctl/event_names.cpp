// The states of discrete and threshold events: IPMI 2.0, table 42-2 (generic event types) and 42-3 (by sensor type), and
// how bad each of them is.
#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string_view>

#include "names.h"

namespace qmvctl {

namespace {

struct States {
  int32_t type;
  std::string_view levels;            // by offset: nominal, warning or critical; - for an offset without a name
  std::array<const char*, 16> names;  // by offset
};

constexpr States kGeneric[] = {
    {0x01,
     "WWCCCCWWCCCC",
     {"Lower Non-critical going low", "Lower Non-critical going high", "Lower Critical going low",
      "Lower Critical going high", "Lower Non-recoverable going low", "Lower Non-recoverable going high",
      "Upper Non-critical going low", "Upper Non-critical going high", "Upper Critical going low",
      "Upper Critical going high", "Upper Non-recoverable going low", "Upper Non-recoverable going high"}},
    {0x02, "NNN", {"Transition to Idle", "Transition to Active", "Transition to Busy"}},
    {0x03, "NW", {"State Deasserted", "State Asserted"}},
    {0x04, "NW", {"Predictive Failure Deasserted", "Predictive Failure Asserted"}},
    {0x05, "NW", {"Limit Not Exceeded", "Limit Exceeded"}},
    {0x06, "NW", {"Performance Met", "Performance Lags"}},
    {0x07,
     "NWCCWCCNN",
     {"Transition to OK", "Transition to Non-critical from OK", "Transition to Critical from less severe",
      "Transition to Non-recoverable from less severe", "Transition to Non-critical from more severe",
      "Transition to Critical from Non-recoverable", "Transition to Non-recoverable", "Monitor", "Informational"}},
    {0x08, "WN", {"Device Absent", "Device Present"}},
    {0x09, "WN", {"Device Disabled", "Device Enabled"}},
    {0x0A,
     "NNNNNNWNC",
     {"Transition to Running", "Transition to In Test", "Transition to Power Off", "Transition to On Line",
      "Transition to Off Line", "Transition to Off Duty", "Transition to Degraded", "Transition to Power Save",
      "Install Error"}},
    {0x0B,
     "NCWWWCWW",
     {"Fully Redundant", "Redundancy Lost", "Redundancy Degraded", "Non-Redundant: Sufficient from Redundant",
      "Non-Redundant: Sufficient from Insufficient", "Non-Redundant: Insufficient Resources",
      "Redundancy Degraded from Fully Redundant", "Redundancy Degraded from Non-Redundant"}},
    {0x0C, "NNNN", {"D0 Power State", "D1 Power State", "D2 Power State", "D3 Power State"}},
};

constexpr States kSensorSpecific[] = {
    {0x05,
     "CCCCWCC",
     {"General Chassis intrusion", "Drive Bay intrusion", "I/O Card area intrusion", "Processor area intrusion",
      "System unplugged from LAN", "Unauthorized dock", "FAN area intrusion"}},
    {0x06,
     "WWWWWW",
     {"Front Panel Lockout violation attempted", "Pre-boot password violation - user password",
      "Pre-boot password violation - setup password", "Pre-boot password violation - network boot password",
      "Other pre-boot password violation", "Out-of-band access password violation"}},
    {0x07,
     "CCCCCCCNWNWCW",
     {"IERR", "Thermal Trip", "FRB1/BIST failure", "FRB2/Hang in POST failure", "FRB3/Processor startup/init failure",
      "Configuration Error", "SM BIOS Uncorrectable CPU-complex Error", "Presence detected", "Disabled",
      "Terminator presence detected", "Throttled", "Uncorrectable machine check exception",
      "Correctable machine check error"}},
    {0x08,
     "NCWCCWCW",
     {"Presence detected", "Failure detected", "Predictive failure", "Power Supply AC lost", "AC lost or out-of-range",
      "AC out-of-range, but present", "Config Error", "Power Supply Inactive"}},
    {0x09,
     "NNCCCCCW",
     {"Power off/down", "Power cycle", "240VA power down", "Interlock power down", "AC lost",
      "Soft-power control failure", "Failure detected", "Predictive failure"}},
    {0x0C,
     "WCCCWWNCNWC",
     {"Correctable ECC", "Uncorrectable ECC", "Parity", "Memory Scrub Failed", "Memory Device Disabled",
      "Correctable ECC logging limit reached", "Presence Detected", "Configuration Error", "Spare", "Throttled",
      "Critical Overtemperature"}},
    {0x0D,
     "NCWNNCCNW",
     {"Drive Present", "Drive Fault", "Predictive Failure", "Hot Spare", "Parity Check In Progress",
      "In Critical Array", "In Failed Array", "Rebuild In Progress", "Rebuild Aborted"}},
    {0x0F, "CCN", {"System Firmware Error", "System Firmware Hang", "System Firmware Progress"}},
    {0x10,
     "WWNWCWW",
     {"Correctable memory error logging disabled", "Event logging disabled", "Log area reset/cleared",
      "All event logging disabled", "Log full", "Log almost full", "Correctable machine check error logging disabled"}},
    {0x11,
     "CCCCCCCW",
     {"BIOS Reset", "OS Reset", "OS Shut Down", "OS Power Down", "OS Power Cycle", "OS NMI/Diag Interrupt",
      "OS Expired", "OS pre-timeout Interrupt"}},
    {0x12,
     "NNCNNN",
     {"System Reconfigured", "OEM System boot event", "Undetermined system hardware failure",
      "Entry added to auxiliary log", "PEF Action", "Timestamp Clock Sync"}},
    {0x13,
     "CCCCCCCWCCCW",
     {"NMI/Diag Interrupt", "Bus Timeout", "I/O Channel check NMI", "Software NMI", "PCI PERR", "PCI SERR",
      "EISA failsafe timeout", "Bus Correctable error", "Bus Uncorrectable error", "Fatal NMI", "Bus Fatal Error",
      "Bus Degraded"}},
    {0x14,
     "NNNNW",
     {"Power Button pressed", "Sleep Button pressed", "Reset Button pressed", "FRU Latch",
      "FRU Service request button"}},
    {0x19, "CC", {"Soft Power Control Failure", "Thermal Trip"}},
    {0x1B, "NC", {"Cable/Interconnect connected", "Configuration Error"}},
    {0x1D,
     "NNNNNNNN",
     {"Initiated by power up", "Initiated by hard reset", "Initiated by warm reset", "User requested PXE boot",
      "Automatic boot to diagnostic", "OS initiated hard reset", "OS initiated warm reset", "System Restart"}},
    {0x1E,
     "CCCCC",
     {"No bootable media", "Non-bootable disk in drive", "PXE server not found", "Invalid boot sector",
      "Timeout waiting for selection"}},
    {0x1F,
     "NNNNNNNNNWC",
     {"A: boot completed", "C: boot completed", "PXE boot completed", "Diagnostic boot completed",
      "CD-ROM boot completed", "ROM boot completed", "boot completed - device not specified", "Installation started",
      "Installation completed", "Installation aborted", "Installation failed"}},
    {0x20,
     "CCNNWC",
     {"Error during system startup", "Run-time critical stop", "OS graceful stop", "OS graceful shutdown",
      "PEF initiated soft shutdown", "Agent not responding"}},
    {0x21,
     "CNNNNNNNWN",
     {"Fault Status", "Identify Status", "Device Installed", "Ready for Device Installation",
      "Ready for Device Removal", "Slot Power is Off", "Device Removal Request", "Interlock", "Slot is Disabled",
      "Spare Device"}},
    {0x22,
     "NNNNNNNNNNNNN-N",
     {"S0/G0: working", "S1: sleeping, clocks stopped", "S2: sleeping, cache lost", "S3: suspend-to-RAM",
      "S4: suspend-to-disk", "S5/G2: soft-off", "S4/S5: soft-off", "G3: mechanical off", "Sleeping in S1/S2/S3",
      "G1: sleeping", "S5: entered by override", "Legacy ON state", "Legacy OFF state", nullptr, "Unknown"}},
    {0x23,
     "CCCC----W",
     {"Timer expired", "Hard reset", "Power down", "Power cycle", nullptr, nullptr, nullptr, nullptr,
      "Timer interrupt"}},
    {0x24,
     "NNNN",
     {"Platform generated page", "Platform generated LAN alert", "Platform Event Trap generated",
      "Platform generated SNMP trap, OEM format"}},
    {0x25, "NWW", {"Present", "Absent", "Disabled"}},
    {0x27, "CN", {"Heartbeat Lost", "Heartbeat"}},
    {0x28,
     "WWCCCC",
     {"Sensor access degraded or unavailable", "Controller access degraded or unavailable",
      "Management controller off-line", "Management controller unavailable", "Sensor failure", "FRU failure"}},
    {0x29, "WCN", {"Low", "Failed", "Presence Detected"}},
    {0x2A, "NNWW", {"Session activated", "Session deactivated", "Invalid user name or password", "Access disabled"}},
    {0x2B,
     "NNCCCCNN",
     {"Hardware change detected", "Firmware or software change detected", "Hardware incompatibility detected",
      "Firmware or software incompatibility detected", "Invalid or unsupported hardware version",
      "Invalid or unsupported firmware or software version", "Hardware change success",
      "Firmware or software change success"}},
    {0x2C,
     "NNNNNNNC",
     {"Not Installed", "Inactive", "Activation Requested", "Activation in Progress", "Active", "Deactivation Requested",
      "Deactivation in Progress", "Communication lost"}},
};

// Whether every state with a name has a level, and no other one.
constexpr bool have_levels(const auto& table) {
  for (const States& row : table) {
    for (size_t i = 0; i < row.names.size(); ++i) {
      const char level = i < row.levels.size() ? row.levels[i] : '-';
      if ((row.names[i] != nullptr) != (level == 'N' || level == 'W' || level == 'C')) return false;
    }
  }
  return true;
}
static_assert(have_levels(kGeneric) && have_levels(kSensorSpecific));

template <size_t Count>
const States* find_states(const States (&table)[Count], int32_t type) {
  const auto row =
      std::find_if(std::begin(table), std::end(table), [=](const States& row) { return row.type == type; });
  return row == std::end(table) ? nullptr : row;
}

struct State {
  const char* name;
  char level;
};

// Nothing for a state without a name.
std::optional<State> find_state(int32_t event_type, int32_t sensor_type, int32_t state) {
  constexpr int32_t kSensorSpecificEvent = 0x6F;
  const States* states = event_type == kSensorSpecificEvent ? find_states(kSensorSpecific, sensor_type)
                                                            : find_states(kGeneric, event_type);
  const auto offset = static_cast<size_t>(state);
  if (!states || offset >= states->names.size() || !states->names[offset]) return std::nullopt;
  return State{states->names[offset], states->levels[offset]};
}

}  // namespace

std::string event_type_name(int32_t event_type) {
  constexpr int32_t kThreshold = 0x01, kLastGeneric = 0x0C, kSensorSpecificType = 0x6F, kLast = 0x7F;
  if (event_type == 0) return "unspecified";
  if (event_type == kThreshold) return "Threshold";
  if (event_type > kThreshold && event_type <= kLastGeneric) return "Generic discrete";
  if (event_type == kSensorSpecificType) return "Sensor-specific";
  return event_type > kSensorSpecificType && event_type <= kLast ? "OEM" : "reserved";
}

std::string event_name(int32_t event_type, int32_t sensor_type, int32_t state) {
  const auto known = find_state(event_type, sensor_type, state);
  return known ? known->name : "state " + std::to_string(state);
}

std::string event_state(int32_t event_type, int32_t sensor_type, int32_t state, bool is_deasserted) {
  const auto known = find_state(event_type, sensor_type, state);
  if (!known) return "";
  if (is_deasserted) return known->level == 'N' ? "Ended" : "Nominal";
  if (known->level == 'N') return "Nominal";
  return known->level == 'W' ? "Warning" : "Critical";
}

}  // namespace qmvctl
