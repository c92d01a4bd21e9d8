// The profile tables, member by member.
#include <cstring>

#include "instances.h"
#include "rows.h"

namespace qmvctl {

namespace {

// In the scope of this, Record names the record.
// clang-format off
#define MEMBER(member) \
  InstanceMember { #member, offsetof(Record, member), width_of<decltype(Record::member)>() }
// clang-format on

template <class Member>
constexpr size_t width_of() {
  return std::is_array_v<Member> ? sizeof(Member) : 0;
}

template <class Record>
Json row_of(const std::vector<InstanceMember>& members, const Record& record) {
  Json row = Json::object();
  for (const InstanceMember& member : members) row[member.name] = member.value_in(&record);
  return row;
}

// A table whose rows a get-all of the library reads.
template <class Record>
InstanceTable every_row(const char* name, const std::vector<InstanceMember>& members, auto get_all) {
  return {name, members, [=](const Database& database) {
            std::vector<Json> rows;
            for (const Record& record : read_all<Record>(database, name, get_all)) {
              rows.push_back(row_of(members, record));
            }
            return rows;
          }};
}

// A table of which the library reads one row at most: get(handle, &record).
template <class Record>
InstanceTable only_row(const char* name, const std::vector<InstanceMember>& members, auto get) {
  return {name, members, [=](const Database& database) {
            std::vector<Json> rows;
            if (count_rows(database, name) == 0) return rows;
            Record record{};
            if (get(database.handle(), &record) == 0) rows.push_back(row_of(members, record));
            return rows;
          }};
}

int32_t first_dhcp_capabilities(sqlite3* db, dhcp_capabilities_rec* record) {
  dhcp_capabilities_rec* made = nullptr;
  const int32_t status = db_get_dhcp_capabilities(db, &made);
  if (made) *record = *made;
  db_freemem(made);
  return status;
}

InstanceTable ena_log_elem_cap() {
  using Record = ena_log_elem_cap_rec;
  return every_row<Record>("ena_log_elem_cap",
                           {MEMBER(InstanceID), MEMBER(RequestStatesSupported), MEMBER(ElementNameEditSupported),
                            MEMBER(ElementName), MEMBER(MaxElementNameLen)},
                           db_get_all_elec);
}

InstanceTable registered_profile() {
  using Record = registered_profile_rec;
  return every_row<Record>("registered_profile",
                           {MEMBER(InstanceID), MEMBER(RegOrganization), MEMBER(RegisteredName),
                            MEMBER(RegisteredVersion), MEMBER(AdvertiseTypes), MEMBER(OtherRegisteredOrganization),
                            MEMBER(AdvertiseTypesDesc), MEMBER(ImplementedFeatures)},
                           db_get_all_regprofile);
}

InstanceTable ssh_capabilities() {
  using Record = ssh_capabilities_rec;
  return every_row<Record>(
      "ssh_capabilities",
      {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(ElementNameEditSupported), MEMBER(MaxConnections),
       MEMBER(RequestedStatesSupported), MEMBER(ListeningPortManagementSupported), MEMBER(MaxListeningPorts),
       MEMBER(SupportedSSHVersions), MEMBER(SupportedEncryptionAlgorithms)},
      db_get_all_sshcapabilities);
}

InstanceTable telnet_capabilities() {
  using Record = telnet_capabilities_rec;
  return every_row<Record>(
      "telnet_capabilities",
      {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(ElementNameEditSupported), MEMBER(MaxConnections),
       MEMBER(RequestedStatesSupported), MEMBER(ListeningPortManagementSupported), MEMBER(MaxListeningPorts),
       MEMBER(SupportedTerminalModes), MEMBER(SupportedCharacterDisplayModes)},
      db_get_all_telnetcapabilities);
}

InstanceTable phy_asset_capabilities() {
  using Record = phy_asset_capabilities_rec;
  return every_row<Record>("phy_asset_capabilities",
                           {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(FRUInfoSupported)},
                           db_get_all_phy_asset_capabilities);
}

InstanceTable dhcp_capabilities() {
  using Record = dhcp_capabilities_rec;
  return only_row<Record>(
      "dhcp_capabilities",
      {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(ElementNameEditSupported), MEMBER(OptionsSupported)},
      first_dhcp_capabilities);
}

InstanceTable concrete_collection() {
  using Record = concrete_collection_rec;
  return every_row<Record>("concrete_collection", {MEMBER(InstanceID), MEMBER(ElementName)},
                           db_get_all_concrete_collection);
}

InstanceTable power_management_capabilities() {
  using Record = power_management_capabilities_rec;
  return every_row<Record>("power_management_capabilities",
                           {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(PowerChangeCapabilities),
                            MEMBER(PowerStateSupported), MEMBER(RequestedPowerStatesSupported)},
                           db_get_all_power_mgt_capabilities);
}

InstanceTable power_management_service() {
  using Record = power_management_service_rec;
  return every_row<Record>(
      "power_management_service",
      {MEMBER(Name), MEMBER(SystemCreationClassName), MEMBER(CreationClassName), MEMBER(ElementName)},
      db_get_all_power_mgt_service);
}

InstanceTable account_mgt_capabilities() {
  using Record = account_mgt_capabilities_rec;
  return every_row<Record>("account_mgt_capabilities",
                           {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(ElementNameEditSupported),
                            MEMBER(MaxElementNameLen), MEMBER(OperationsSupported)},
                           db_get_all_account_mgt_capabilities);
}

InstanceTable account_setting_data() {
  using Record = account_setting_data_rec;
  return every_row<Record>("account_setting_data", {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(MaxPwdExpiration)},
                           db_get_all_account_setting_data);
}

InstanceTable boot_setting_data() {
  using Record = boot_setting_data_rec;
  return every_row<Record>("boot_setting_data", {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(OwningEntity)},
                           db_get_all_boot_setting_data);
}

InstanceTable boot_config_setting() {
  using Record = boot_config_setting_rec;
  return every_row<Record>("boot_config_setting", {MEMBER(InstanceID), MEMBER(ElementName)},
                           db_get_all_boot_config_setting);
}

InstanceTable boot_service_capabilities() {
  using Record = boot_service_capabilities_rec;
  return every_row<Record>(
      "boot_service_capabilities",
      {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(ElementNameEditSupported), MEMBER(BootConfigCapabilities)},
      db_get_all_boot_service_capabilities);
}

InstanceTable boot_source_setting() {
  using Record = boot_source_setting_rec;
  return every_row<Record>("boot_source_setting",
                           {MEMBER(InstanceID), MEMBER(ElementName), MEMBER(BootString), MEMBER(BIOSBootString),
                            MEMBER(StructuredBootString), MEMBER(FailThroughSupported), MEMBER(isHost)},
                           db_get_all_boot_source_setting);
}

InstanceTable boot_service() {
  using Record = boot_service_rec;
  return every_row<Record>("boot_service",
                           {MEMBER(SystemCreationClassName), MEMBER(CreationClassName), MEMBER(ElementName),
                            MEMBER(SystemName), MEMBER(Name)},
                           db_get_all_boot_service);
}

// For which side an entry is, which the get-all leaves out; nothing where its ID, too long for the field, finds no row.
Json side_of(const Database& database, const std::string& id) {
  boot_order_rec entry{};
  return db_get_boot_order(database.handle(), id.c_str(), &entry) == 0 ? Json(entry.isHost) : Json(nullptr);
}

InstanceTable boot_order() {
  using Record = boot_order_rec;
  InstanceTable table = every_row<Record>("boot_order", {MEMBER(InstanceID), MEMBER(AssignedSequence), MEMBER(isHost)},
                                          db_get_all_boot_order);
  table.read = [read = table.read](const Database& database) {
    std::vector<Json> rows = read(database);
    for (Json& row : rows) row["isHost"] = side_of(database, row["InstanceID"]);
    return rows;
  };
  return table;
}

InstanceTable ip_assign_settingdata() {
  using Record = ip_assign_settingdata_rec;
  return every_row<Record>("ip_assign_settingdata", {MEMBER(InstanceID), MEMBER(AddressOrigin), MEMBER(ElementName)},
                           db_get_all_ip_assignment_settingdata);
}

InstanceTable static_ip_assign_settingdata() {
  using Record = static_ip_assign_settingdata_rec;
  return every_row<Record>(
      "static_ip_assign_settingdata",
      {MEMBER(InterfaceName), MEMBER(IPv4Address), MEMBER(Gateway), MEMBER(SubnetMask), MEMBER(IPv6Address),
       MEMBER(IPv6AddressType), MEMBER(IPv6SubnetPrefixLength), MEMBER(GatewayIPv6Address)},
      db_get_all_static_ip_assignment_settingdata);
}

InstanceTable role_based_mgt_capabilities() {
  using Record = role_based_mgt_capabilities_rec;
  return every_row<Record>(
      "role_based_mgt_capabilities",
      {MEMBER(InstanceID), MEMBER(SharedPrivilege), MEMBER(ActivitiesSupported), MEMBER(ActivityQualifierSupported),
       MEMBER(SupportedMethods), MEMBER(QualifierFormatsSupported), MEMBER(ElementName)},
      db_get_all_RBMcapabilities);
}

InstanceTable privilege() {
  using Record = privilege_rec;
  return every_row<Record>(
      "privilege",
      {MEMBER(InstanceID), MEMBER(PrivilegeGranted), MEMBER(Activities), MEMBER(ActivityQualifiers),
       MEMBER(QualifierFormats), MEMBER(RepresentsAuthRights), MEMBER(ElementName)},
      db_get_all_privilege);
}

InstanceTable role() {
  using Record = role_rec;
  return every_row<Record>(
      "role",
      {MEMBER(CreationClassName), MEMBER(Name), MEMBER(RoleCharacteristics), MEMBER(CommonName), MEMBER(ElementName)},
      db_get_all_role);
}

InstanceTable assign_role() {
  using Record = assign_role_rec;
  return every_row<Record>("assign_role", {MEMBER(IdentityInstanceID), MEMBER(RoleCLPName)}, db_get_all_assign_role);
}

InstanceTable protocol_service() {
  using Record = protocol_service_rec;
  return every_row<Record>(
      "protocol_service",
      {MEMBER(Name), MEMBER(Protocol), MEMBER(ElementName), MEMBER(MaxConnections), MEMBER(RequestedState),
       MEMBER(EnabledState), MEMBER(HealthState), MEMBER(OperationalStatus), MEMBER(OtherProtocol)},
      db_get_all_protocol_service);
}

InstanceTable textredirectionservice() {
  using Record = textredirectionservice_rec;
  return only_row<Record>("textredirectionservice",
                          {MEMBER(Name), MEMBER(ElementName), MEMBER(MaxConcurrentEnabledSAPs), MEMBER(EnabledState),
                           MEMBER(RequestedState), MEMBER(SharingMode), MEMBER(RedirectionServiceType)},
                          [](sqlite3* db, Record* record) {
                            int32_t count = 0;
                            return db_get_trs(db, record, &count);
                          });
}

InstanceTable textredirectionsap() {
  using Record = textredirectionsap_rec;
  return only_row<Record>("textredirectionsap",
                          {MEMBER(Name), MEMBER(ElementName), MEMBER(EnabledState), MEMBER(RequestedState),
                           MEMBER(TextFlowType), MEMBER(SessionTerminateSequence)},
                          db_get_all_textSAP);
}

// Read through the library, whether the name can be changed is not known: the member holds the longest name.
InstanceTable pwds_capabilities() {
  using Record = pwds_capabilities_rec;
  return every_row<Record>("pwds_capabilities",
                           {MEMBER(instance_id),
                            MEMBER(ele_name),
                            MEMBER(req_states_supported),
                            {"max_ele_name_len", offsetof(Record, ele_name_edit_supported), 0},
                            MEMBER(act_on_exp_supported),
                            MEMBER(last_exp_data_supported),
                            MEMBER(wdt_data_supported)},
                           db_get_all_pwds_capablities);
}

InstanceTable account_management_service() {
  using Record = account_management_service_rec;
  return only_row<Record>("account_management_service",
                          {MEMBER(Name), MEMBER(RequestedState), MEMBER(EnabledState), MEMBER(ElementName)},
                          [](sqlite3* db, Record* record) {
                            int32_t count = 0;
                            return db_get_accountmgt_service(db, record, &count);
                          });
}

InstanceTable indication_service() {
  using Record = indication_service_rec;
  return only_row<Record>(
      "indication_service",
      {MEMBER(Name), MEMBER(FilterCreationEnabled), MEMBER(DeliveryRetryAttempts), MEMBER(DeliveryRetryInterval),
       MEMBER(SubscriptionRemovalAction), MEMBER(SubscriptionRemovalTimeInterval)},
      db_get_indication_service);
}

}  // namespace

const std::vector<InstanceTable>& all_instance_tables() {
  static const std::vector<InstanceTable> tables = {ena_log_elem_cap(),
                                                    registered_profile(),
                                                    ssh_capabilities(),
                                                    telnet_capabilities(),
                                                    phy_asset_capabilities(),
                                                    dhcp_capabilities(),
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
                                                    ip_assign_settingdata(),
                                                    static_ip_assign_settingdata(),
                                                    role_based_mgt_capabilities(),
                                                    privilege(),
                                                    role(),
                                                    assign_role(),
                                                    protocol_service(),
                                                    textredirectionservice(),
                                                    textredirectionsap(),
                                                    pwds_capabilities(),
                                                    account_management_service(),
                                                    indication_service()};
  return tables;
}

}  // namespace qmvctl
