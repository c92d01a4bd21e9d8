/* IP assignment, protocol services, text redirection, watchdog and account management. */
#include <string.h>

#include "host.h"

static void assignment(struct sqlite3* db) {
  ip_assign_settingdata_rec stored, one, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_ip_assignment_settingdata);
  STORE_AGAIN(stored, ElementName, db_set_ip_assignment_settingdata);
  CHECK_FILLED(stored, db_get_ip_assignment_setting_data, "it's", one);
  CHECK_LISTED(stored, db_get_all_ip_assignment_settingdata);
}

static void static_settings(struct sqlite3* db) {
  static_ip_assign_settingdata_rec stored, *read = NULL;
  STORE(stored, InterfaceName, "eth0", db_init_static_ip_assignment_settingdata);
  CHECK_INT(1, db_init_static_ip_assignment_settingdata(db, &stored));
  STORE_AGAIN(stored, Gateway, db_set_static_ip_assignment_settingdata);
  CHECK_LISTED(stored, db_get_all_static_ip_assignment_settingdata);
  CHECK_INT(0, db_delete_static_ip(db));
  CHECK_INT(0, value_of(db, "select count(*) from static_ip_assign_settingdata"));
}

static void protocols(struct sqlite3* db) {
  protocol_service_rec stored, one, *read = NULL;
  STORE(stored, Name, "it's", db_set_protocol_service);
  STORE_AGAIN(stored, ElementName, db_set_protocol_service);
  stored.RequestedState = 2;
  CHECK_INT(0, db_modify_protocol_service_rs(db, 2, "it's"));
  CHECK_FILLED(stored, db_get_protocol_service, "it's", one);
  CHECK_LISTED(stored, db_get_all_protocol_service);
}

static void check_redirection(struct sqlite3* db, textredirectionservice_rec expected) {
  textredirectionservice_rec one;
  int32_t count = -1;
  memset(&one, 0, sizeof one);
  CHECK_INT(0, db_get_trs(db, &one, &count));
  CHECK_INT(1, count);
  CHECK_RECORD(expected, &one);
}

static void check_access_point(struct sqlite3* db, textredirectionsap_rec expected) {
  textredirectionsap_rec one;
  CHECK_FILLED(expected, db_get_textSAP, "TextRedirectionSAP1", one);
  memset(&one, 0, sizeof one);
  CHECK_INT(0, db_get_all_textSAP(db, &one));
  CHECK_RECORD(expected, &one);
}

static void redirection(struct sqlite3* db) {
  textredirectionservice_rec service;
  textredirectionsap_rec access_point;
  STORE(service, Name, "TextRedirectionService1", db_set_trs);
  STORE_AGAIN(service, ElementName, db_set_trs);
  check_redirection(db, service);

  STORE(access_point, Name, "TextRedirectionSAP1", db_set_text_sap);
  STORE_AGAIN(access_point, ElementName, db_set_text_sap);
  SET(access_point.SessionTerminateSequence, ""); /* is not stored */
  check_access_point(db, access_point);

  CHECK_INT(0, db_modify_textSAP(db, "~'."));
  SET(access_point.SessionTerminateSequence, "~'.");
  CHECK_INT(0, db_modify_textSAP_rs(db, 3));
  access_point.RequestedState = access_point.EnabledState = 3;
  check_access_point(db, access_point);

  CHECK_INT(0, db_modify_trs_rs(db, 2, 6));
  service.EnabledState = service.RequestedState = 2;
  access_point.EnabledState = 6;
  check_redirection(db, service);
  check_access_point(db, access_point);
}

/* The statement that holds the sequence stays, and keeps the connection open. */
static void terminate_sequence(struct sqlite3* db) {
  CHECK_TEXT("~'.", db_get_sesstion_term_seq(db));
  CHECK_INT(SQLITE_BUSY, db_close(db));
  sqlite3_finalize(sqlite3_next_stmt(db, NULL));
}

static void watchdogs(struct sqlite3* db) {
  pwds_capabilities_rec stored, one, *read = NULL;
  int32_t count = -1;
  STORE(stored, instance_id, "watchdog", db_set_pwds_capablities);
  STORE_AGAIN(stored, ele_name, db_set_pwds_capablities);
  CHECK_INT(0, db_get_pwds_capabilities_cnt(db, &count));
  CHECK_INT(1, count);

  stored.ele_name_edit_supported = stored.max_ele_name_len;
  stored.max_ele_name_len = 0;
  memset(&one, 0, sizeof one);
  CHECK_INT(0, db_get_pwds_capablities(db, "watchdog", &one));
  CHECK_RECORD(stored, &one);
  CHECK_INT(0, db_get_pwds_capablities(db, "no", &one));
  CHECK_RECORD(stored, &one);
  CHECK_LISTED(stored, db_get_all_pwds_capablities);
}

static void accounts(struct sqlite3* db) {
  account_management_service_rec stored, one;
  int32_t count = -1;
  STORE(stored, Name, "AccountManagementService", db_set_accountmgt_service);
  STORE_AGAIN(stored, ElementName, db_set_accountmgt_service);
  memset(&one, 0, sizeof one);
  CHECK_INT(0, db_get_accountmgt_service(db, &one, &count));
  CHECK_INT(1, count);
  CHECK_RECORD(stored, &one);
}

void services(void) {
  sqlite3* const db = open_with_schema();
  assignment(db);
  static_settings(db);
  protocols(db);
  redirection(db);
  terminate_sequence(db);
  watchdogs(db);
  accounts(db);
  CLOSE(db);
}
