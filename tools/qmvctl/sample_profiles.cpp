// Sample: registered profiles, capabilities of elements, and collections.
#include "sample.h"
#include "sample_rows.h"

namespace qmvctl {

namespace {

// Of DMTF (2). Clients find the server's profile by SLP (3) and the others, which are not advertised (2), from there.
constexpr registered_profile_rec kProfiles[] = {
    {"QMV:DSP1004", 2, "Base Server", "1.0.0", "3", "", "", ""},
    {"QMV:DSP1009", 2, "Sensors", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1010", 2, "Record Log", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1011", 2, "Physical Asset", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1012", 2, "Boot Control", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1016", 2, "Telnet Service", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1017", 2, "SSH Service", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1024", 2, "Text Console Redirection", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1027", 2, "Power State Management", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1033", 2, "Profile Registration", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1034", 2, "Simple Identity Management", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1036", 2, "IP Interface", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1037", 2, "DHCP Client", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1039", 2, "Role Based Authorization", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1040", 2, "Watchdog", "1.0.0", "2", "", "", ""},
    {"QMV:DSP1054", 2, "Indications", "1.0.0", "2", "", "", ""},
};

// Enable (2), disable (3), reset (11); the system's name alone can be changed.
constexpr ena_log_elem_cap_rec kElementCapabilities[] = {
    {"QMV:Capabilities-System", "2,3,11", 1, "System Capabilities", 64},
    {"QMV:Capabilities-Console", "2,3", 0, "Text Redirection Capabilities", 0},
    {"QMV:Capabilities-Indications", "2,3", 0, "Indication Service Capabilities", 0},
};

constexpr phy_asset_capabilities_rec kAssetCapabilities[] = {
    {"QMV:Capabilities-Assets", "Physical Asset Capabilities", 1},
};

constexpr concrete_collection_rec kCollections[] = {
    {"QMV:Collection-Capabilities", "Capabilities"},
    {"QMV:Collection-Profiles", "Registered Profiles"},
    {"QMV:Collection-Settings", "Settings"},
};

}  // namespace

void store_sample_profiles(Database& database) {
  store_rows(database, "registered_profile", kProfiles, db_set_regprofile);
  store_rows(database, "ena_log_elem_cap", kElementCapabilities, db_set_elec);
  store_rows(database, "phy_asset_capabilities", kAssetCapabilities, db_set_phy_asset_capabilities);
  store_rows(database, "concrete_collection", kCollections, db_set_concrete_collection);
}

}  // namespace qmvctl
