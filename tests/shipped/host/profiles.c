/* Capabilities, registered profiles, remote access, power and account management. */
#include "host.h"

static void capabilities(struct sqlite3* db) {
  ena_log_elem_cap_rec stored, *read = NULL;
  int32_t count = -1;
  STORE(stored, InstanceID, "it's", db_set_elec);
  STORE_AGAIN(stored, ElementName, db_set_elec);
  CHECK_FOUND(stored, db_get_elec, "it's");
  CHECK_LISTED(stored, db_get_all_elec);
  CHECK_INT(0, db_get_cnt(db, &count, "ena_log_elem_cap"));
  CHECK_INT(1, count);
}

static void registered(struct sqlite3* db) {
  registered_profile_rec stored, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_regprofile);
  STORE_AGAIN(stored, RegisteredName, db_set_regprofile);
  CHECK_FOUND(stored, db_get_regprofile, "it's");
  CHECK_LISTED(stored, db_get_all_regprofile);
}

static void ssh(struct sqlite3* db) {
  ssh_capabilities_rec stored, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_sshcapabilities);
  STORE_AGAIN(stored, ElementName, db_set_sshcapabilities);
  CHECK_FOUND(stored, db_get_sshcapabilities, "it's");
  CHECK_LISTED(stored, db_get_all_sshcapabilities);
}

static void telnet(struct sqlite3* db) {
  telnet_capabilities_rec stored, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_telnetcapabilities);
  STORE_AGAIN(stored, ElementName, db_set_telnetcapabilities);
  CHECK_FOUND(stored, db_get_telnetcapabilities, "it's");
  CHECK_LISTED(stored, db_get_all_telnetcapabilities);
}

static void asset_capabilities(struct sqlite3* db) {
  phy_asset_capabilities_rec stored, *read = NULL;
  CHECK_INT(1, db_get_phy_asset_capabilities(db, &read));
  STORE(stored, InstanceID, "it's", db_set_phy_asset_capabilities);
  STORE_AGAIN(stored, ElementName, db_set_phy_asset_capabilities);
  CHECK_INT(0, db_get_phy_asset_capabilities(db, &read));
  CHECK_RECORD(stored, read);
  RELEASE(read);
  CHECK_LISTED(stored, db_get_all_phy_asset_capabilities);
}

static void dhcp_capabilities(struct sqlite3* db) {
  dhcp_capabilities_rec stored, *read = NULL;
  CHECK_INT(1, db_get_dhcp_capabilities(db, &read));
  STORE(stored, InstanceID, "it's", db_set_dhcp_capabilities);
  STORE_AGAIN(stored, ElementName, db_set_dhcp_capabilities);
  CHECK_INT(0, db_get_dhcp_capabilities(db, &read));
  CHECK_RECORD(stored, read);
  RELEASE(read);
}

static void dhcp_endpoint(struct sqlite3* db) {
  dhcp_protocol_endpoint_rec stored, expected, *read = NULL;
  STORE(stored, Name, "it's", db_set_dhcp_protocol_endpoint);
  stored.ProtocolIFType = 4096;
  SET(stored.OtherTypeDesc, "70");
  stored.EnabledState = 2;
  stored.RequestedState = 5;
  stored.ClientState = 8;
  STORE_AGAIN(stored, ElementName, db_set_dhcp_protocol_endpoint);
  CHECK_INT(1, value_of(db, "select count(*) from dhcp_protocol_endpoint where ElementName = 'another'"));

  expected = stored; /* what is read is shifted */
  expected.ProtocolIFType = 5;
  SET(expected.OtherTypeDesc, "4096");
  expected.EnabledState = 70;
  expected.RequestedState = 2;
  expected.ClientState = 5;
  SET(expected.ElementName, "8");
  CHECK_FOUND(expected, db_get_dhcp_protocol_endpoint, "it's");
}

static void collections(struct sqlite3* db) {
  concrete_collection_rec stored, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_concrete_collection);
  STORE_AGAIN(stored, ElementName, db_set_concrete_collection);
  CHECK_FOUND(stored, db_get_concrete_collection, "it's");
  CHECK_LISTED(stored, db_get_all_concrete_collection);
}

static void power_capabilities(struct sqlite3* db) {
  power_management_capabilities_rec stored, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_power_mgt_capabilities);
  STORE_AGAIN(stored, ElementName, db_set_power_mgt_capabilities);
  CHECK_FOUND(stored, db_get_power_mgt_capabilities, "it's");
  CHECK_LISTED(stored, db_get_all_power_mgt_capabilities);
}

static void power_service(struct sqlite3* db) {
  power_management_service_rec stored, *read = NULL;
  STORE(stored, Name, "it's", db_set_power_mgt_service);
  STORE_AGAIN(stored, SystemCreationClassName, db_set_power_mgt_service);
  CHECK_INT(0, db_get_power_mgt_service(db, "it's", "another", &read));
  CHECK_RECORD(stored, read);
  RELEASE(read);
  CHECK_INT(1, db_get_power_mgt_service(db, "it's", "no", &read));
  CHECK_LISTED(stored, db_get_all_power_mgt_service);
}

/* Of the last two, a row that exists keeps its values. */

static void account_capabilities(struct sqlite3* db) {
  account_mgt_capabilities_rec stored, other, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_account_mgt_capabilities);
  other = stored;
  STORE_AGAIN(other, ElementName, db_set_account_mgt_capabilities);
  CHECK_FOUND(stored, db_get_account_mgt_capabilities, "it's");
  CHECK_LISTED(stored, db_get_all_account_mgt_capabilities);
}

static void account_settings(struct sqlite3* db) {
  account_setting_data_rec stored, other, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_account_setting_data);
  other = stored;
  STORE_AGAIN(other, MaxPwdExpiration, db_set_account_setting_data);
  CHECK_FOUND(stored, db_get_account_setting_data, "it's");
  CHECK_LISTED(stored, db_get_all_account_setting_data);
}

void profiles(void) {
  sqlite3* const db = open_with_schema();
  capabilities(db);
  registered(db);
  ssh(db);
  telnet(db);
  asset_capabilities(db);
  dhcp_capabilities(db);
  dhcp_endpoint(db);
  collections(db);
  power_capabilities(db);
  power_service(db);
  account_capabilities(db);
  account_settings(db);
  CLOSE(db);
}
