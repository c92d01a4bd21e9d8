// Role-based authorization: capabilities, privileges, roles and who has them.
#include "qmv/roles.h"

#include <string>

#include "unit/profile_rules.h"

namespace qmv::test {
namespace {

const ProfileTable& capabilities() {
  using Record = role_based_mgt_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "role_based_mgt_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), NUMBER(SharedPrivilege), TEXT(ActivitiesSupported, 256),
                 TEXT(ActivityQualifierSupported, 256), TEXT(SupportedMethods, 256),
                 TEXT(QualifierFormatsSupported, 256), TEXT(ElementName, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& privileges() {
  using Record = privilege_rec;
  static const ProfileTable kTable = {
      .name = "privilege",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), NUMBER(PrivilegeGranted), TEXT(Activities, 256), TEXT(ActivityQualifiers, 256),
                 TEXT(QualifierFormats, 256), NUMBER(RepresentsAuthRights), TEXT(ElementName, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& roles() {
  using Record = role_rec;
  static const ProfileTable kTable = {
      .name = "role",
      .record_size = sizeof(Record),
      .fields = {TEXT(CreationClassName, 256), TEXT(Name, 256), TEXT(RoleCharacteristics, 256), TEXT(CommonName, 256),
                 TEXT(ElementName, 256)},
      .key = "Name",
  };
  return kTable;
}

const ProfileTable& assignments() {
  using Record = assign_role_rec;
  static const ProfileTable kTable = {
      .name = "assign_role",
      .record_size = sizeof(Record),
      .fields = {TEXT(IdentityInstanceID, 256), TEXT(RoleCLPName, 256)},
      .key = "IdentityInstanceID",
  };
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    {.name = "Capabilities",
     .table = capabilities(),
     .call = erased<role_based_mgt_capabilities_rec>(db_get_all_RBMcapabilities),
     .reading = "Get all Role Based Mgt records from database",
     .done = "Successfully got all RoleBased Mgt. Capabilities %d",
     .count_failed = "Fail to get RoleBased Mgt. Capability records"},
    {.name = "Privilege",
     .table = privileges(),
     .call = erased<privilege_rec>(db_get_all_privilege),
     .reading = "Get all privilege records from database",
     .done = "Successfully got all privileges %d",
     .count_failed = "Fail to get privilege records"},
    {.name = "Role",
     .table = roles(),
     .call = erased<role_rec>(db_get_all_role),
     .reading = "Get all role records from database",
     .done = "Successfully got all roles %d",
     .count_failed = "Fail to get role records"},
    {.name = "Assignment",
     .table = assignments(),
     .call = erased<assign_role_rec>(db_get_all_assign_role),
     .reading = "Get all role records from database",
     .done = "Successfully got all assign role %d",
     .count_failed = "Fail to get assign role records"},
};

const ProfileGetOneCase kGetOne[] = {
    {.name = "Capabilities",
     .table = capabilities(),
     .call = filling<role_based_mgt_capabilities_rec>(
         [](sqlite3* db, const Texts& keys, role_based_mgt_capabilities_rec* record) {
           return db_get_RBMcapabilities(db, keys[0].c_str(), record);
         }),
     .keys = {"InstanceID"},
     .statement = "select * from role_based_mgt_capabilities where InstanceID='t100';",
     .reading = "Get RBMCapabilities from database",
     .done = "Successfully got the RBManagement Capa.",
     .no_row = "Fail to get RoleBased Mgt. Capability records",
     .no_statement = "Fail to get RoleBased Mgt. Capability records",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
    {.name = "Privilege",
     .table = privileges(),
     .call = filling<privilege_rec>([](sqlite3* db, const Texts& keys, privilege_rec* record) {
       return db_get_privilege(db, keys[0].c_str(), record);
     }),
     .keys = {"InstanceID"},
     .statement = "select * from privilege where InstanceID='t100';",
     .reading = "Get Privilege from database",
     .done = "Successfully got the Privilege.",
     .no_row = "Fail to get privilege records",
     .no_statement = "Fail to get privilege record",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
    {.name = "Role",
     .table = roles(),
     .call = filling<role_rec>([](sqlite3* db, const Texts& keys, role_rec* record) {
       return db_get_role(db, keys[0].c_str(), keys[1].c_str(), record);
     }),
     .keys = {"Name", "CreationClassName"},
     .statement = "select * from role where Name='t101'and \t\t\tCreationClassName= 't100';",
     .reading = "Get Role from database",
     .done = "Successfully got the role.",
     .no_row = "Fail to get role records",
     .no_statement = "Fail to get role record",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
    {.name = "Assignment",
     .table = assignments(),
     .call = filling<assign_role_rec>([](sqlite3* db, const Texts& keys, assign_role_rec* record) {
       return db_get_assign_role(db, keys[0].c_str(), record);
     }),
     .keys = {"IdentityInstanceID"},
     .statement = "select * from assign_role where IdentityInstanceID='t100';",
     .reading = "Get assign role from database",
     .done = "Successfully got the assign role.",
     .no_row = "Fail to get assign role records",
     .no_statement = "Fail to get assign role record",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
};

const ProfileSetCase kSet[] = {
    {.name = "Capabilities",
     .table = capabilities(),
     .call = storing(db_set_RBMcapabilities),
     .insert = "insert into role_based_mgt_capabilities (InstanceID, SharedPrivilege, "
               "ActivitiesSupported,\t\t\tActivityQualifierSupported, SupportedMethods, "
               "QualifierFormatsSupported,\t\t\tElementName) values ('t100', 101, 't102', 't103', 't104', 't105', "
               "'t106');",
     .update = "update role_based_mgt_capabilities set InstanceID='t100',SharedPrivilege=101, "
               "ActivitiesSupported='t102',\t\t\t\tActivityQualifierSupported='t103', SupportedMethods='t104', "
               "\t\t\t\tQualifierFormatsSupported='t105', ElementName='t106'\t\t\t\twhere InstanceID='t100';",
     .present = "Role Based Mgt. Cap. record is already present with that key",
     .done = "Successfully update the Role Based Mgt. Cap. record"},
    {.name = "Privilege",
     .table = privileges(),
     .call = storing(db_set_privilege),
     .insert = "insert into privilege (InstanceID, PrivilegeGranted, Activities, \t\t\tActivityQualifiers, "
               "QualifierFormats, RepresentsAuthRights,\t\t\tElementName)values ('t100', 101, 't102', 't103', 't104', "
               "105, 't106');",
     .update = "update privilege set InstanceID='t100',PrivilegeGranted=101, "
               "Activities='t102',\t\t\t\tActivityQualifiers='t103', QualifierFormats='t104', "
               "\t\t\t\tRepresentsAuthRights=105, ElementName='t106' where InstanceID='t100';",
     .present = "Privilege record is already present with that key",
     .done = "Successfully update the Privilege record"},
    {.name = "Role",
     .table = roles(),
     .call = storing(db_set_role),
     .insert = "insert into role (CreationClassName, Name, RoleCharacteristics, \t\t\tCommonName, "
               "ElementName)\t\t\tvalues ('t100', 't101', 't102', 't103', 't104');",
     .update = "update role set CreationClassName='t100',Name='t101', "
               "RoleCharacteristics='t102',\t\t\t\tCommonName='t103',ElementName ='t104' where Name='t101';",
     .present = "Role record is already present with that key",
     .done = "Successfully update the role record"},
    {.name = "Assignment",
     .table = assignments(),
     .call = storing(db_set_assign_role),
     .insert = "insert into assign_role (IdentityInstanceID, RoleCLPName) \t\t\tvalues ('t100', 't101');",
     .update = "update assign_role set IdentityInstanceID='t100',RoleCLPName='t101'\t\t\t\twhere "
               "IdentityInstanceID='t100';",
     .present = "AssignRole record is already present with that key",
     .done = "Successfully update the assign role record"},
};

INSTANTIATE_TEST_SUITE_P(Roles, ProfileGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Roles, ProfileGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Roles, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

class Role : public DatabaseTest {
 protected:
  Role() : DatabaseTest("db_static_instance.c") {}

  void create_table(const std::string& key) {
    sql("create table role (CreationClassName, Name, RoleCharacteristics, CommonName, ElementName, unique (" + key +
        "));");
  }

  void insert(const std::string& class_name, const std::string& name) {
    sql("insert into role values ('" + class_name + "', '" + name + "', 'x', 'y', 'z');");
  }

  void set(const std::string& class_name, const std::string& name) {
    role_rec role{};
    put(role.CreationClassName, class_name);
    put(role.Name, name);
    EXPECT_EQ(0, db_set_role(db, &role));
  }

  Texts classes_and_names() { return rows_of("select CreationClassName, Name from role order by rowid;"); }
};

TEST_F(Role, OfThatNameButAnotherClassIsNotFound) {
  create_table("Name");
  insert("class", "admin");
  role_rec role{};
  EXPECT_EQ(1, db_get_role(db, "admin", "another", &role));
  EXPECT_EQ(1, db_get_role(db, "another", "class", &role));
  EXPECT_EQ("", field(role.Name));
  EXPECT_EQ(0, db_get_role(db, "admin", "class", &role));
  EXPECT_EQ("admin", field(role.Name));
  logged();
}

TEST_F(Role, SetUpdatesByNameWhateverTheClass) {
  create_table("Name");
  insert("class", "admin");
  insert("class", "operator");
  set("another", "admin");
  EXPECT_EQ(Texts({"another|admin", "class|operator"}), classes_and_names());
  logged();
}

TEST_F(Role, SetInsertsWhereTheSchemaAllowsTheNameOncePerClass) {
  create_table("CreationClassName, Name");
  insert("class", "admin");
  set("another", "admin");
  EXPECT_EQ(Texts({"class|admin", "another|admin"}), classes_and_names());
  EXPECT_EQ(Lines({trace("Successfully update the role record")}), logged());
}

}  // namespace
}  // namespace qmv::test
