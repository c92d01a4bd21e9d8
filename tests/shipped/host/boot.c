/* Boot configuration and boot order. */
#include "host.h"

/* Of settings, capabilities and sources, a row that exists keeps its values. */

static void settings(struct sqlite3* db) {
  boot_setting_data_rec stored, other, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_boot_setting_data);
  other = stored;
  STORE_AGAIN(other, OwningEntity, db_set_boot_setting_data);
  CHECK_FOUND(stored, db_get_boot_setting_data, "it's");
  CHECK_LISTED(stored, db_get_all_boot_setting_data);
}

static void configurations(struct sqlite3* db) {
  boot_config_setting_rec stored, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_boot_config_setting);
  STORE_AGAIN(stored, ElementName, db_set_boot_config_setting);
  CHECK_FOUND(stored, db_get_boot_config_setting, "it's");
  CHECK_LISTED(stored, db_get_all_boot_config_setting);
}

static void capabilities(struct sqlite3* db) {
  boot_service_capabilities_rec stored, other, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_boot_service_capabilities);
  other = stored;
  STORE_AGAIN(other, ElementName, db_set_boot_service_capabilities);
  CHECK_FOUND(stored, db_get_boot_service_cap, "it's");
  CHECK_LISTED(stored, db_get_all_boot_service_capabilities);
}

static void sources(struct sqlite3* db) {
  boot_source_setting_rec stored, other, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_boot_source_setting);
  other = stored;
  STORE_AGAIN(other, BootString, db_set_boot_source_setting);
  CHECK_FOUND(stored, db_get_boot_source_setting, "it's");
  CHECK_LISTED(stored, db_get_all_boot_source_setting);
}

static void services_of_boot(struct sqlite3* db) {
  boot_service_rec stored, *read = NULL;
  STORE(stored, SystemCreationClassName, "it's", db_set_boot_service);
  STORE_AGAIN(stored, Name, db_set_boot_service);
  stored.reserved = 0;
  CHECK_LISTED(stored, db_get_all_boot_service);
}

static void order(struct sqlite3* db) {
  boot_order_rec stored, one, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_boot_order);
  stored.AssignedSequence = 2;
  stored.isHost = 1;
  CHECK_INT(0, db_set_boot_order(db, &stored));
  CHECK_FILLED(stored, db_get_boot_order, "it's", one);
  one.isHost = 0; /* is not listed */
  CHECK_LISTED(one, db_get_all_boot_order);

  CHECK_INT(0, db_reset_boot_order(db, 0));
  CHECK_INT(2, value_of(db, "select AssignedSequence from boot_order"));
  CHECK_INT(0, db_reset_boot_order(db, 1));
  CHECK_INT(0, value_of(db, "select AssignedSequence from boot_order"));
  CHECK_INT(0, db_delete_boot_order(db));
  CHECK_INT(0, value_of(db, "select count(*) from boot_order"));
}

void boot(void) {
  sqlite3* const db = open_with_schema();
  settings(db);
  configurations(db);
  capabilities(db);
  sources(db);
  services_of_boot(db);
  order(db);
  CLOSE(db);
}
