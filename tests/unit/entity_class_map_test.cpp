// IPMI entities as CIM classes.
#include "sdr/entity_class_map.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>

namespace qmv::test {
namespace {

// Entity ID, logical class, physical class, description.
// clang-format off
constexpr EntityClass kExpected[] = {
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
// clang-format on

TEST(EntityClassMap, HasTheseRowsByEntityId) {
  ASSERT_EQ(54u, std::size(kExpected));
  ASSERT_EQ(54, kEntityClasses);
  for (std::int32_t id = 0; id < 54; ++id) {
    SCOPED_TRACE(id);
    EXPECT_EQ(std::to_string(id), entity_class(id).id);
    EXPECT_STREQ(kExpected[id].id, entity_class(id).id);
    EXPECT_STREQ(kExpected[id].logical_class, entity_class(id).logical_class);
    EXPECT_STREQ(kExpected[id].physical_class, entity_class(id).physical_class);
    EXPECT_STREQ(kExpected[id].description, entity_class(id).description);
  }
}

TEST(EntityClassMap, EntityIsOfItsOwnLogicalClassOnly) {
  EXPECT_TRUE(is_of_logical_class(3, "CIM_Processor"));
  EXPECT_TRUE(is_of_logical_class(53, "TBD"));
  EXPECT_FALSE(is_of_logical_class(3, "CIM_Processo"));
  EXPECT_FALSE(is_of_logical_class(3, "CIM_Processors"));
  EXPECT_FALSE(is_of_logical_class(3, "CIM_Chip")) << "its physical class";
  EXPECT_FALSE(is_of_logical_class(8, "CIM_Processor"));
}

TEST(EntityClassMap, EntityOutsideTheMapIsOfNoClass) {
  for (const std::int32_t id : {54, 64, 65, 66, 209, 255, 1000000, INT32_MAX, -1, INT32_MIN}) {
    SCOPED_TRACE(id);
    EXPECT_FALSE(is_of_logical_class(id, "CIM_Processor"));
    EXPECT_FALSE(is_of_logical_class(id, "TBD"));
  }
}

}  // namespace
}  // namespace qmv::test
