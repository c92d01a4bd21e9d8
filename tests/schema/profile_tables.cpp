// Capabilities, profiles, remote access, power and account management, boot and roles.
#include "table.h"

namespace qmv::test {
namespace {

Table ena_log_elem_cap() {
  using Record = ena_log_elem_cap_rec;
  return {"cim",
          "ena_log_elem_cap",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(RequestStatesSupported), FIELD(ElementNameEditSupported), FIELD(ElementName),
           FIELD(MaxElementNameLen)},
          {SET(db_set_elec)},
          {ALL(db_get_all_elec), ONE(db_get_elec, "InstanceID")}};
}

Table registered_profile() {
  using Record = registered_profile_rec;
  return {"cim",
          "registered_profile",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(RegOrganization), FIELD(RegisteredName), FIELD(RegisteredVersion),
           FIELD(AdvertiseTypes), FIELD(OtherRegisteredOrganization), FIELD(AdvertiseTypesDesc),
           FIELD(ImplementedFeatures)},
          {SET(db_set_regprofile)},
          {ALL(db_get_all_regprofile), ONE(db_get_regprofile, "InstanceID")}};
}

Table ssh_capabilities() {
  using Record = ssh_capabilities_rec;
  return {"cim",
          "ssh_capabilities",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(ElementNameEditSupported), FIELD(MaxConnections),
           FIELD(RequestedStatesSupported), FIELD(ListeningPortManagementSupported), FIELD(MaxListeningPorts),
           FIELD(SupportedSSHVersions), FIELD(SupportedEncryptionAlgorithms)},
          {SET(db_set_sshcapabilities)},
          {ALL(db_get_all_sshcapabilities), ONE(db_get_sshcapabilities, "InstanceID")}};
}

Table telnet_capabilities() {
  using Record = telnet_capabilities_rec;
  return {"cim",
          "telnet_capabilities",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(ElementNameEditSupported), FIELD(MaxConnections),
           FIELD(RequestedStatesSupported), FIELD(ListeningPortManagementSupported), FIELD(MaxListeningPorts),
           FIELD(SupportedTerminalModes), FIELD(SupportedCharacterDisplayModes)},
          {SET(db_set_telnetcapabilities)},
          {ALL(db_get_all_telnetcapabilities), ONE(db_get_telnetcapabilities, "InstanceID")}};
}

Table phy_asset_capabilities() {
  using Record = phy_asset_capabilities_rec;
  return {"cim",
          "phy_asset_capabilities",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(FRUInfoSupported)},
          {SET(db_set_phy_asset_capabilities)},
          {ALL(db_get_all_phy_asset_capabilities), ONE(db_get_phy_asset_capabilities)}};
}

Table dhcp_capabilities() {
  using Record = dhcp_capabilities_rec;
  return {"cim",
          "dhcp_capabilities",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(ElementNameEditSupported), FIELD(OptionsSupported)},
          {SET(db_set_dhcp_capabilities)},
          {ONE(db_get_dhcp_capabilities)}};
}

Table dhcp_protocol_endpoint() {
  using Record = dhcp_protocol_endpoint_rec;
  // The reader has lost its place.
  const std::vector<Field> shifted = {FIELD(Name),
                                      FIELD(NameFormat),
                                      FIELD_FROM("RequestedState", ProtocolIFType),
                                      FIELD_FROM("ProtocolIFType", OtherTypeDesc),
                                      FIELD_FROM("OtherTypeDesc", EnabledState),
                                      FIELD_FROM("EnabledState", RequestedState),
                                      FIELD_FROM("RequestedState", ClientState),
                                      FIELD_FROM("ClientState", ElementName)};
  return {"cim",
          "dhcp_protocol_endpoint",
          {"Name"},
          {FIELD(Name), FIELD(NameFormat), FIELD(ProtocolIFType), FIELD(OtherTypeDesc), FIELD(EnabledState),
           FIELD(RequestedState), FIELD(ClientState), FIELD(ElementName)},
          {SET(db_set_dhcp_protocol_endpoint)},
          {ONE(db_get_dhcp_protocol_endpoint, "Name").filling(shifted)}};
}

Table concrete_collection() {
  using Record = concrete_collection_rec;
  return {"cim",
          "concrete_collection",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName)},
          {SET(db_set_concrete_collection)},
          {ALL(db_get_all_concrete_collection), ONE(db_get_concrete_collection, "InstanceID")}};
}

Table power_management_capabilities() {
  using Record = power_management_capabilities_rec;
  return {"cim",
          "power_management_capabilities",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(PowerChangeCapabilities), FIELD(PowerStateSupported),
           FIELD(RequestedPowerStatesSupported)},
          {SET(db_set_power_mgt_capabilities)},
          {ALL(db_get_all_power_mgt_capabilities), ONE(db_get_power_mgt_capabilities, "InstanceID")}};
}

Table power_management_service() {
  using Record = power_management_service_rec;
  return {"cim",
          "power_management_service",
          {"Name"},
          {FIELD(Name), FIELD(SystemCreationClassName), FIELD(CreationClassName), FIELD(ElementName)},
          {SET(db_set_power_mgt_service)},
          {ALL(db_get_all_power_mgt_service), ONE(db_get_power_mgt_service, "Name", "SystemCreationClassName")}};
}

Table account_mgt_capabilities() {
  using Record = account_mgt_capabilities_rec;
  return {"cim",
          "account_mgt_capabilities",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(ElementNameEditSupported), FIELD(MaxElementNameLen),
           FIELD(OperationsSupported)},
          {keeping(SET(db_set_account_mgt_capabilities))},
          {ALL(db_get_all_account_mgt_capabilities), ONE(db_get_account_mgt_capabilities, "InstanceID")}};
}

Table account_setting_data() {
  using Record = account_setting_data_rec;
  return {"cim",
          "account_setting_data",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(MaxPwdExpiration)},
          {keeping(SET(db_set_account_setting_data))},
          {ALL(db_get_all_account_setting_data), ONE(db_get_account_setting_data, "InstanceID")}};
}

Table boot_setting_data() {
  using Record = boot_setting_data_rec;
  return {"cim",
          "boot_setting_data",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(OwningEntity)},
          {keeping(SET(db_set_boot_setting_data))},
          {ALL(db_get_all_boot_setting_data), ONE(db_get_boot_setting_data, "InstanceID")}};
}

Table boot_config_setting() {
  using Record = boot_config_setting_rec;
  return {"cim",
          "boot_config_setting",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName)},
          {SET(db_set_boot_config_setting)},
          {ALL(db_get_all_boot_config_setting), ONE(db_get_boot_config_setting, "InstanceID")}};
}

Table boot_service_capabilities() {
  using Record = boot_service_capabilities_rec;
  return {"cim",
          "boot_service_capabilities",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(ElementNameEditSupported), FIELD(BootConfigCapabilities)},
          {keeping(SET(db_set_boot_service_capabilities))},
          {ALL(db_get_all_boot_service_capabilities), ONE(db_get_boot_service_cap, "InstanceID")}};
}

Table boot_source_setting() {
  using Record = boot_source_setting_rec;
  return {"cim",
          "boot_source_setting",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(ElementName), FIELD(BootString), FIELD(BIOSBootString), FIELD(StructuredBootString),
           FIELD(FailThroughSupported), FIELD(isHost)},
          {keeping(SET(db_set_boot_source_setting))},
          {ALL(db_get_all_boot_source_setting), ONE(db_get_boot_source_setting, "InstanceID")}};
}

Table boot_service() {
  using Record = boot_service_rec;
  return {
      "cim",
      "boot_service",
      {"SystemCreationClassName"},
      {FIELD(SystemCreationClassName), FIELD(CreationClassName), FIELD(ElementName), FIELD(SystemName), FIELD(Name)},
      {SET(db_set_boot_service)},
      {ALL(db_get_all_boot_service)}};
}

Table boot_order() {
  using Record = boot_order_rec;
  return {"cim",
          "boot_order",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(AssignedSequence), FIELD(isHost)},
          {SET(db_set_boot_order)},
          {ALL(db_get_all_boot_order).filling({FIELD(InstanceID), FIELD(AssignedSequence)}),
           FILL(db_get_boot_order, "InstanceID")}};
}

Table role_based_mgt_capabilities() {
  using Record = role_based_mgt_capabilities_rec;
  return {"cim",
          "role_based_mgt_capabilities",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(SharedPrivilege), FIELD(ActivitiesSupported), FIELD(ActivityQualifierSupported),
           FIELD(SupportedMethods), FIELD(QualifierFormatsSupported), FIELD(ElementName)},
          {SET(db_set_RBMcapabilities)},
          {ALL(db_get_all_RBMcapabilities), FILL(db_get_RBMcapabilities, "InstanceID")}};
}

Table privilege() {
  using Record = privilege_rec;
  return {"cim",
          "privilege",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(PrivilegeGranted), FIELD(Activities), FIELD(ActivityQualifiers),
           FIELD(QualifierFormats), FIELD(RepresentsAuthRights), FIELD(ElementName)},
          {SET(db_set_privilege)},
          {ALL(db_get_all_privilege), FILL(db_get_privilege, "InstanceID")}};
}

Table role() {
  using Record = role_rec;
  return {"cim",
          "role",
          {"Name"},
          {FIELD(CreationClassName), FIELD(Name), FIELD(RoleCharacteristics), FIELD(CommonName), FIELD(ElementName)},
          {SET(db_set_role)},
          {ALL(db_get_all_role), FILL(db_get_role, "Name", "CreationClassName")}};
}

Table assign_role() {
  using Record = assign_role_rec;
  return {"cim",
          "assign_role",
          {"IdentityInstanceID"},
          {FIELD(IdentityInstanceID), FIELD(RoleCLPName)},
          {SET(db_set_assign_role)},
          {ALL(db_get_all_assign_role), FILL(db_get_assign_role, "IdentityInstanceID")}};
}

}  // namespace

std::vector<Table> profile_tables() {
  return {ena_log_elem_cap(),
          registered_profile(),
          ssh_capabilities(),
          telnet_capabilities(),
          phy_asset_capabilities(),
          dhcp_capabilities(),
          dhcp_protocol_endpoint(),
          concrete_collection(),
          power_management_capabilities(),
          power_management_service(),
          account_mgt_capabilities(),
          account_setting_data(),
          boot_setting_data(),
          boot_config_setting(),
          boot_service_capabilities(),
          boot_source_setting(),
          boot_service(),
          boot_order(),
          role_based_mgt_capabilities(),
          privilege(),
          role(),
          assign_role()};
}

}  // namespace qmv::test
