// Sample: a server that boots from its disk, then from the network, then from a DVD.
#include "sample.h"
#include "sample_rows.h"

namespace qmvctl {

namespace {

constexpr boot_service_rec kServices[] = {{
    .SystemCreationClassName = "CIM_ComputerSystem",
    .CreationClassName = "CIM_BootService",
    .ElementName = "Boot Service",
    .SystemName = "server1",
    .Name = "BootService",
    .reserved = 0,
}};

// Boot configurations can be made (2).
constexpr boot_service_capabilities_rec kCapabilities[] = {
    {"QMV:Capabilities-Boot", "Boot Service Capabilities", 0, 2},
};

constexpr boot_config_setting_rec kConfigurations[] = {
    {"QMV:BootConfig", "Boot Configuration"},
};

constexpr boot_setting_data_rec kSettings[] = {
    {"QMV:BootSetting", "Boot Settings", "QMV"},
};

// For the host (1); a source that fails is followed by the next one (FailThroughSupported 1).
constexpr boot_source_setting_rec kSources[] = {
    {"QMV:BootSource-Disk", "Hard Disk", "disk", "Disk", "CIM:Hard-Disk:1", 1, 1},
    {"QMV:BootSource-Network", "Network", "pxe", "PXE", "CIM:Network:1", 1, 1},
    {"QMV:BootSource-DVD", "DVD", "cdrom", "CD/DVD", "CIM:CD/DVD:1", 1, 1},
};

constexpr boot_order_rec kOrder[] = {
    {"QMV:BootSource-Disk", 1, 1},
    {"QMV:BootSource-Network", 2, 1},
    {"QMV:BootSource-DVD", 3, 1},
};

}  // namespace

void store_sample_boot(Database& database) {
  store_rows(database, "boot_service", kServices, db_set_boot_service);
  store_rows(database, "boot_service_capabilities", kCapabilities, db_set_boot_service_capabilities);
  store_rows(database, "boot_config_setting", kConfigurations, db_set_boot_config_setting);
  store_rows(database, "boot_setting_data", kSettings, db_set_boot_setting_data);
  store_rows(database, "boot_source_setting", kSources, db_set_boot_source_setting);
  store_rows(database, "boot_order", kOrder, db_set_boot_order);
}

}  // namespace qmvctl
