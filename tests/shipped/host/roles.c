/* Role-based authorization. */
#include <string.h>

#include "host.h"

static void capabilities(struct sqlite3* db) {
  role_based_mgt_capabilities_rec stored, one, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_RBMcapabilities);
  STORE_AGAIN(stored, ElementName, db_set_RBMcapabilities);
  CHECK_FILLED(stored, db_get_RBMcapabilities, "it's", one);
  CHECK_LISTED(stored, db_get_all_RBMcapabilities);
}

static void privileges(struct sqlite3* db) {
  privilege_rec stored, one, *read = NULL;
  STORE(stored, InstanceID, "it's", db_set_privilege);
  STORE_AGAIN(stored, Activities, db_set_privilege);
  CHECK_FILLED(stored, db_get_privilege, "it's", one);
  CHECK_LISTED(stored, db_get_all_privilege);
}

static void named_roles(struct sqlite3* db) {
  role_rec stored, one, *read = NULL;
  STORE(stored, Name, "it's", db_set_role);
  STORE_AGAIN(stored, CreationClassName, db_set_role);
  memset(&one, 0, sizeof one);
  CHECK_INT(0, db_get_role(db, "it's", "another", &one));
  CHECK_RECORD(stored, &one);
  CHECK_INT(1, db_get_role(db, "it's", "no", &one));
  CHECK_LISTED(stored, db_get_all_role);
}

static void assignments(struct sqlite3* db) {
  assign_role_rec stored, one, *read = NULL;
  STORE(stored, IdentityInstanceID, "it's", db_set_assign_role);
  STORE_AGAIN(stored, RoleCLPName, db_set_assign_role);
  CHECK_FILLED(stored, db_get_assign_role, "it's", one);
  CHECK_LISTED(stored, db_get_all_assign_role);
}

void roles(void) {
  sqlite3* const db = open_with_schema();
  capabilities(db);
  privileges(db);
  named_roles(db);
  assignments(db);
  CLOSE(db);
}
