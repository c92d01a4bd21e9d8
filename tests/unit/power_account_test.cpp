// Power management and account management.
#include <string>

#include "qmv/profiles.h"
#include "unit/borrowed_texts.h"

namespace qmv::test {
namespace {

const ProfileTable& power_capabilities() {
  using Record = power_management_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "power_management_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), TEXT(PowerChangeCapabilities, 64),
                 TEXT(PowerStateSupported, 64), TEXT(RequestedPowerStatesSupported, 64)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& power_services() {
  using Record = power_management_service_rec;
  static const ProfileTable kTable = {
      .name = "power_management_service",
      .record_size = sizeof(Record),
      .fields = {TEXT(Name, 256), TEXT(SystemCreationClassName, 256), TEXT(CreationClassName, 256),
                 TEXT(ElementName, 256)},
      .key = "Name",
  };
  return kTable;
}

const ProfileTable& account_capabilities() {
  using Record = account_mgt_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "account_mgt_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), NUMBER(ElementNameEditSupported),
                 NUMBER(MaxElementNameLen), TEXT(OperationsSupported, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& account_settings() {
  using Record = account_setting_data_rec;
  static const ProfileTable kTable = {
      .name = "account_setting_data",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), TEXT(MaxPwdExpiration, 64)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    like_a_collection({.name = "PowerCapabilities",
                       .table = power_capabilities(),
                       .call = erased<power_management_capabilities_rec>(db_get_all_power_mgt_capabilities)}),
    like_a_collection({.name = "PowerService",
                       .table = power_services(),
                       .call = erased<power_management_service_rec>(db_get_all_power_mgt_service)}),
    like_a_collection({.name = "AccountCapabilities",
                       .table = account_capabilities(),
                       .call = erased<account_mgt_capabilities_rec>(db_get_all_account_mgt_capabilities)}),
    like_a_collection({.name = "AccountSettings",
                       .table = account_settings(),
                       .call = erased<account_setting_data_rec>(db_get_all_account_setting_data)}),
};

const ProfileGetOneCase kGetOne[] = {
    like_an_asset({.name = "PowerCapabilities",
                   .table = power_capabilities(),
                   .call = by_text(db_get_power_mgt_capabilities),
                   .keys = {"InstanceID"},
                   .statement = "select * from power_management_capabilities where InstanceID='t100';"}),
    like_an_asset({.name = "PowerService",
                   .table = power_services(),
                   .call = by_texts(db_get_power_mgt_service),
                   .keys = {"Name", "SystemCreationClassName"},
                   .statement = "select * from power_management_service where Name='t100' and "
                                "SystemCreationClassName='t101';"}),
    like_an_asset({.name = "AccountCapabilities",
                   .table = account_capabilities(),
                   .call = by_text(db_get_account_mgt_capabilities),
                   .keys = {"InstanceID"},
                   .statement = "select * from account_mgt_capabilities where InstanceID='t100';"}),
    like_an_asset({.name = "AccountSettings",
                   .table = account_settings(),
                   .call = by_text(db_get_account_setting_data),
                   .keys = {"InstanceID"},
                   .statement = "select * from account_setting_data where InstanceID='t100';"}),
};

const ProfileSetCase kSet[] = {
    like_an_asset({.name = "PowerCapabilities",
                   .table = power_capabilities(),
                   .call = storing(db_set_power_mgt_capabilities),
                   .insert = "insert into power_management_capabilities (InstanceID, ElementName, "
                             "PowerChangeCapabilities, PowerStateSupported, RequestedPowerStatesSupported) "
                             "\t\t\tvalues ('t100', 't101', 't102', 't103', 't104');",
                   .update = "update power_management_capabilities set InstanceID='t100', ElementName='t101', "
                             "PowerChangeCapabilities='t102', \t\tPowerStateSupported='t103', "
                             "RequestedPowerStatesSupported='t104' where InstanceID='t100';"}),
    like_an_asset({.name = "PowerService",
                   .table = power_services(),
                   .call = storing(db_set_power_mgt_service),
                   .insert = "insert into power_management_service (Name, SystemCreationClassName, "
                             "CreationClassName, ElementName)                         values ('t100', 't101', "
                             "'t102', 't103');",
                   .update = "update power_management_service set Name='t100', SystemCreationClassName='t101', "
                             "CreationClassName='t102', ElementName='t103' where Name='t100';"}),
    like_an_asset({.name = "AccountCapabilities",
                   .table = account_capabilities(),
                   .call = storing(db_set_account_mgt_capabilities),
                   .insert = "insert into account_mgt_capabilities (InstanceID, ElementName, "
                             "ElementNameEditSupported, MaxElementNameLen, OperationsSupported) \t\t\tvalues "
                             "('t100', 't101', 102, 103, 't104');",
                   .update = "update account_mgt_capabilities set InstanceID='t100', ElementName='t101' "
                             "ElementNameEditSupported=102, MaxElementNameLen=103, "
                             "\t\tOperationsSupported='t104' where InstanceID='t100';",
                   .update_is_rejected = true}),
    like_an_asset({.name = "AccountSettings",
                   .table = account_settings(),
                   .call = storing(db_set_account_setting_data),
                   .insert = "insert into account_setting_data (InstanceID, ElementName, "
                             "MaxPwdExpiration)\tvalues ('t100', 't101', 't102');",
                   .update = "update account_setting_data set InstanceID='t100', ElementName='t101' "
                             "MaxPwdExpiration='t102' where InstanceID='t100';",
                   .update_is_rejected = true}),
};

INSTANTIATE_TEST_SUITE_P(PowerAccount, ProfileGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(PowerAccount, ProfileGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(PowerAccount, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

class PowerAccount : public DatabaseTest {
 protected:
  PowerAccount() : DatabaseTest("db_static_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    // Without declared types, which would turn a number into a text and back.
    sql("create table power_management_capabilities (InstanceID unique, ElementName, PowerChangeCapabilities, "
        "PowerStateSupported, RequestedPowerStatesSupported);"
        "create table power_management_service (Name, SystemCreationClassName, CreationClassName, ElementName);"
        "create table account_mgt_capabilities (InstanceID unique, ElementName, ElementNameEditSupported, "
        "MaxElementNameLen, OperationsSupported);"
        "create table account_setting_data (InstanceID unique, ElementName, MaxPwdExpiration);");
  }

  // What every set says when the key exists.
  Lines present_and_set() const {
    return {execution_failed(), trace("Physical Asset record is already present with that key"), execution_failed(),
            trace("Successfully update the Physical Asset cap. record")};
  }
};

TEST_F(PowerAccount, AccountCapabilitiesOfAnExistingKeyKeepTheirRow) {
  sql("insert into account_mgt_capabilities values ('a', 'old', 1, 2, 'old');");
  account_mgt_capabilities_rec record = {};
  put(record.InstanceID, "a");
  put(record.ElementName, "new");
  record.MaxElementNameLen = 9;
  EXPECT_EQ(0, db_set_account_mgt_capabilities(db, &record));
  EXPECT_EQ(Texts({"a|old|1|2|old"}), rows_of("select * from account_mgt_capabilities;"));
  EXPECT_EQ(present_and_set(), logged());
}

TEST_F(PowerAccount, AccountSettingsOfAnExistingKeyKeepTheirRow) {
  sql("insert into account_setting_data values ('a', 'old', '90');");
  account_setting_data_rec record = {};
  put(record.InstanceID, "a");
  put(record.MaxPwdExpiration, "30");
  EXPECT_EQ(0, db_set_account_setting_data(db, &record));
  EXPECT_EQ(Texts({"a|old|90"}), rows_of("select * from account_setting_data;"));
  EXPECT_EQ(present_and_set(), logged());
}

TEST_F(PowerAccount, PasswordExpiryIsAText) {
  account_setting_data_rec record = {};
  put(record.InstanceID, "a");
  put(record.MaxPwdExpiration, "0090");
  db_set_account_setting_data(db, &record);
  EXPECT_EQ("text", value_of("select typeof(MaxPwdExpiration) from account_setting_data;"));
  Owned<account_setting_data_rec> found;
  EXPECT_EQ(0, db_get_account_setting_data(db, "a", found.out()));
  EXPECT_EQ("0090", field(found->MaxPwdExpiration));
  logged();
}

TEST_F(PowerAccount, FullTextOf64CharactersIsFollowedByTheNextField) {
  const std::string full(64, 'x');
  sql("insert into power_management_capabilities values ('p', 'e', '" + full + "y', 'next', '" + full + "');");
  Owned<power_management_capabilities_rec> record;
  EXPECT_EQ(0, db_get_power_mgt_capabilities(db, "p", record.out()));
  EXPECT_EQ(full + "next", std::string(record->PowerChangeCapabilities, 68));
  EXPECT_EQ(full, field(record->RequestedPowerStatesSupported));
  logged();
}

TEST_F(PowerAccount, PowerServiceIsReadByBothItsNames) {
  sql("insert into power_management_service values ('power', 'other', 'first', 'first');"
      "insert into power_management_service values ('power', 'system', 'second', 'second');");
  Owned<power_management_service_rec> record;
  EXPECT_EQ(0, db_get_power_mgt_service(db, "power", "system", record.out()));
  EXPECT_EQ("second", field(record->CreationClassName));
  logged();

  power_management_service_rec* untouched = record.get();
  EXPECT_EQ(1, db_get_power_mgt_service(db, "power", "another", &untouched));
  EXPECT_EQ(record.get(), untouched);
  EXPECT_EQ(Lines({trace("Fail to get the physical asset cap. record")}), logged());
}

TEST_F(PowerAccount, PowerServiceIsUpdatedByItsNameAlone) {
  sql("create unique index by_name on power_management_service (Name);"
      "insert into power_management_service values ('power', 'system', 'old', 'old');");
  power_management_service_rec record = {};
  put(record.Name, "power");
  put(record.SystemCreationClassName, "another");
  put(record.CreationClassName, "new");
  EXPECT_EQ(0, db_set_power_mgt_service(db, &record));
  EXPECT_EQ(Texts({"power|another|new|"}), rows_of("select * from power_management_service;"));
  logged();
}

}  // namespace
}  // namespace qmv::test
