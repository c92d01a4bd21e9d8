// Sample: the power of the server and its watchdog.
#include "sample.h"
#include "sample_rows.h"

namespace qmvctl {

namespace {

constexpr power_management_service_rec kServices[] = {
    {"PowerManagementService", "CIM_ComputerSystem", "CIM_PowerManagementService", "Power Management Service"},
};

// The state can be set (3), power cycled (4), the hardware reset (7), the system shut down (8); states are on (2), power
// cycle off-soft (5), off-soft (8), master bus reset (10) and off-soft graceful (12).
constexpr power_management_capabilities_rec kCapabilities[] = {
    {"QMV:Capabilities-Power", "Power Management Capabilities", "3,4,7,8", "2,5,8,10,12", "2,5,8,10,12"},
};

// On expiration nothing (0), reset (1), off (2), or off and on again (3).
constexpr pwds_capabilities_rec kWatchdogs[] = {{
    .instance_id = "QMV:Capabilities-Watchdog",
    .ele_name = "Watchdog Capabilities",
    .req_states_supported = "2,3",
    .ele_name_edit_supported = 0,
    .max_ele_name_len = 0,
    .act_on_exp_supported = "0,1,2,3",
    .last_exp_data_supported = "TimeOfLastExpiration",
    .wdt_data_supported = "TimeoutInterval,TimerResolution",
}};

}  // namespace

void store_sample_power(Database& database) {
  store_rows(database, "power_management_service", kServices, db_set_power_mgt_service);
  store_rows(database, "power_management_capabilities", kCapabilities, db_set_power_mgt_capabilities);
  store_rows(database, "pwds_capabilities", kWatchdogs, db_set_pwds_capablities);
}

}  // namespace qmvctl
