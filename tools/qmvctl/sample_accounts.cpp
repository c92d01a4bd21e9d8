// Sample: accounts, and the three fixed roles that they have.
#include "sample.h"
#include "sample_rows.h"

namespace qmvctl {

namespace {

constexpr account_management_service_rec kServices[] = {
    {"AccountManagementService", 12, 2, "Account Management Service"},
};

// Accounts can be made (2), changed (3) and deleted (4); user names have 16 characters, as in IPMI.
constexpr account_mgt_capabilities_rec kAccountCapabilities[] = {
    {"QMV:Capabilities-Accounts", "Account Management Capabilities", 1, 16, "2,3,4"},
};

// 90 days.
constexpr account_setting_data_rec kAccountSettings[] = {
    {"QMV:AccountSetting", "Account Settings", "00000090000000.000000:000"},
};

// No methods are supported, since the roles are static (2).
constexpr role_based_mgt_capabilities_rec kRoleCapabilities[] = {{
    .InstanceID = "QMV:Capabilities-Roles",
    .SharedPrivilege = 0,
    .ActivitiesSupported = "2,3,4,5,6,7",
    .ActivityQualifierSupported = "",
    .SupportedMethods = "",
    .QualifierFormatsSupported = "",
    .ElementName = "Role Management Capabilities",
}};

constexpr role_rec kRoles[] = {
    {"CIM_Role", "role1", "2", "Administrator", "Administrator Role"},
    {"CIM_Role", "role2", "2", "Operator", "Operator Role"},
    {"CIM_Role", "role3", "2", "User", "User Role"},
};

// Create (2), delete (3), detect (4), read (5), write (6), execute (7); the administrator alone can grant them.
constexpr privilege_rec kPrivileges[] = {
    {"QMV:Privilege-role1", 1, "2,3,4,5,6,7", "", "", 1, "Administrator Privilege"},
    {"QMV:Privilege-role2", 1, "4,5,7", "", "", 0, "Operator Privilege"},
    {"QMV:Privilege-role3", 1, "4,5", "", "", 0, "User Privilege"},
};

constexpr assign_role_rec kAssignments[] = {
    {"QMV:Identity-admin", "role1"},
    {"QMV:Identity-operator", "role2"},
    {"QMV:Identity-monitor", "role3"},
};

}  // namespace

void store_sample_accounts(Database& database) {
  store_rows(database, "account_management_service", kServices, db_set_accountmgt_service);
  store_rows(database, "account_mgt_capabilities", kAccountCapabilities, db_set_account_mgt_capabilities);
  store_rows(database, "account_setting_data", kAccountSettings, db_set_account_setting_data);
  store_rows(database, "role_based_mgt_capabilities", kRoleCapabilities, db_set_RBMcapabilities);
  store_rows(database, "role", kRoles, db_set_role);
  store_rows(database, "privilege", kPrivileges, db_set_privilege);
  store_rows(database, "assign_role", kAssignments, db_set_assign_role);
}

}  // namespace qmvctl
