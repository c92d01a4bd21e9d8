// Role-based authorization. The get-ones fill the caller's record.
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

namespace capabilities {

using Record = role_based_mgt_capabilities_rec;

constexpr char kTable[] = "role_based_mgt_capabilities";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(SharedPrivilege), QMV_COLUMN(ActivitiesSupported),
                    QMV_COLUMN(ActivityQualifierSupported), QMV_COLUMN(SupportedMethods),
                    QMV_COLUMN(QualifierFormatsSupported), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get RoleBased Mgt. Capability records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all Role Based Mgt records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all RoleBased Mgt. Capabilities %d",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get RoleBased Mgt. Capability records",
    .no_row = "[%s:%d]Fail to get RoleBased Mgt. Capability records",
    .reading = "[%s:%d]Get RBMCapabilities from database",
    .done = "[%s:%d]Successfully got the RBManagement Capa.",
};

constexpr Set kSet = {
    .insert =
        "insert into %q (InstanceID, SharedPrivilege, ActivitiesSupported,\t\t\tActivityQualifierSupported, "
        "SupportedMethods, QualifierFormatsSupported,\t\t\tElementName) values ('%.256q', %i, '%.256q', "
        "'%.256q', '%.256q', '%.256q', '%.256q');",
    .update =
        "update %q set InstanceID='%.256q',SharedPrivilege=%i, "
        "ActivitiesSupported='%.256q',\t\t\t\tActivityQualifierSupported='%.256q', "
        "SupportedMethods='%.256q', \t\t\t\tQualifierFormatsSupported='%.256q', "
        "ElementName='%.256q'\t\t\t\twhere InstanceID='%.256q';",
    .present = "[%s:%d]Role Based Mgt. Cap. record is already present with that key",
    .done = "[%s:%d]Successfully update the Role Based Mgt. Cap. record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace capabilities

namespace privilege {

using Record = privilege_rec;

constexpr char kTable[] = "privilege";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(PrivilegeGranted), QMV_COLUMN(Activities),
                                          QMV_COLUMN(ActivityQualifiers), QMV_COLUMN(QualifierFormats),
                                          QMV_COLUMN(RepresentsAuthRights), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get privilege records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all privilege records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all privileges %d",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get privilege record",
    .no_row = "[%s:%d]Fail to get privilege records",
    .reading = "[%s:%d]Get Privilege from database",
    .done = "[%s:%d]Successfully got the Privilege.",
};

constexpr Set kSet = {
    .insert =
        "insert into %q (InstanceID, PrivilegeGranted, Activities, \t\t\tActivityQualifiers, "
        "QualifierFormats, RepresentsAuthRights,\t\t\tElementName)values ('%.256q', %i, '%.256q', '%.256q', "
        "'%.256q', %i, '%.256q');",
    .update =
        "update %q set InstanceID='%.256q',PrivilegeGranted=%i, "
        "Activities='%.256q',\t\t\t\tActivityQualifiers='%.256q', QualifierFormats='%.256q', "
        "\t\t\t\tRepresentsAuthRights=%i, ElementName='%.256q' where InstanceID='%.256q';",
    .present = "[%s:%d]Privilege record is already present with that key",
    .done = "[%s:%d]Successfully update the Privilege record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace privilege

namespace role {

using Record = role_rec;

constexpr char kTable[] = "role";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(CreationClassName), QMV_COLUMN(Name), QMV_COLUMN(RoleCharacteristics),
                    QMV_COLUMN(CommonName), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(Name));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get role records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all role records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all roles %d",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where Name='%q'and \t\t\tCreationClassName= '%q';",
    .no_statement = "[%s:%d]Fail to get role record",
    .no_row = "[%s:%d]Fail to get role records",
    .reading = "[%s:%d]Get Role from database",
    .done = "[%s:%d]Successfully got the role.",
};

constexpr Set kSet = {
    .insert =
        "insert into %q (CreationClassName, Name, RoleCharacteristics, \t\t\tCommonName, "
        "ElementName)\t\t\tvalues ('%.256q', '%.256q', '%.256q', '%.256q', '%.256q');",
    .update =
        "update %q set CreationClassName='%.256q',Name='%.256q', "
        "RoleCharacteristics='%.256q',\t\t\t\tCommonName='%.256q',ElementName ='%.256q' where Name='%.256q';",
    .present = "[%s:%d]Role record is already present with that key",
    .done = "[%s:%d]Successfully update the role record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace role

namespace assignment {

using Record = assign_role_rec;

constexpr char kTable[] = "assign_role";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(IdentityInstanceID), QMV_COLUMN(RoleCLPName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(IdentityInstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get assign role records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all role records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all assign role %d",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where IdentityInstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get assign role record",
    .no_row = "[%s:%d]Fail to get assign role records",
    .reading = "[%s:%d]Get assign role from database",
    .done = "[%s:%d]Successfully got the assign role.",
};

constexpr Set kSet = {
    .insert = "insert into %q (IdentityInstanceID, RoleCLPName) \t\t\tvalues ('%.256q', '%.256q');",
    .update =
        "update %q set IdentityInstanceID='%.256q',RoleCLPName='%.256q'\t\t\t\twhere "
        "IdentityInstanceID='%.256q';",
    .present = "[%s:%d]AssignRole record is already present with that key",
    .done = "[%s:%d]Successfully update the assign role record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace assignment

}  // namespace

std::int32_t db_get_all_RBMcapabilities(sqlite3* db, std::int32_t* count,
                                        role_based_mgt_capabilities_rec** records) noexcept {
  return list<capabilities::Table>(here(), db, count, records);
}

std::int32_t db_get_RBMcapabilities(sqlite3* db, const char* InstanceID,
                                    role_based_mgt_capabilities_rec* record) noexcept {
  return fill<capabilities::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_RBMcapabilities(sqlite3* db, const role_based_mgt_capabilities_rec* record) noexcept {
  return set<capabilities::Table, capabilities::kKey>(here(), db, record);
}

std::int32_t db_get_all_privilege(sqlite3* db, std::int32_t* count, privilege_rec** records) noexcept {
  return list<privilege::Table>(here(), db, count, records);
}

std::int32_t db_get_privilege(sqlite3* db, const char* InstanceID, privilege_rec* record) noexcept {
  return fill<privilege::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_privilege(sqlite3* db, const privilege_rec* record) noexcept {
  return set<privilege::Table, privilege::kKey>(here(), db, record);
}

std::int32_t db_get_all_role(sqlite3* db, std::int32_t* count, role_rec** records) noexcept {
  return list<role::Table>(here(), db, count, records);
}

std::int32_t db_get_role(sqlite3* db, const char* Name, const char* CreationClassName, role_rec* record) noexcept {
  return fill<role::Table>(here(), db, record, Name, CreationClassName);
}

std::int32_t db_set_role(sqlite3* db, const role_rec* record) noexcept {
  return set<role::Table, role::kKey>(here(), db, record);
}

std::int32_t db_get_all_assign_role(sqlite3* db, std::int32_t* count, assign_role_rec** records) noexcept {
  return list<assignment::Table>(here(), db, count, records);
}

std::int32_t db_get_assign_role(sqlite3* db, const char* IdentityInstanceID, assign_role_rec* record) noexcept {
  return fill<assignment::Table>(here(), db, record, IdentityInstanceID);
}

std::int32_t db_set_assign_role(sqlite3* db, const assign_role_rec* record) noexcept {
  return set<assignment::Table, assignment::kKey>(here(), db, record);
}
