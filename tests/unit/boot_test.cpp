// Boot configuration: settings, sources and the boot service.
#include "qmv/boot.h"

#include <string>

#include "unit/borrowed_texts.h"

namespace qmv::test {
namespace {

const ProfileTable& setting_data() {
  using Record = boot_setting_data_rec;
  static const ProfileTable kTable = {
      .name = "boot_setting_data",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), TEXT(OwningEntity, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& config_settings() {
  using Record = boot_config_setting_rec;
  static const ProfileTable kTable = {
      .name = "boot_config_setting",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& service_capabilities() {
  using Record = boot_service_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "boot_service_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), NUMBER(ElementNameEditSupported),
                 NUMBER(BootConfigCapabilities)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& source_settings() {
  using Record = boot_source_setting_rec;
  static const ProfileTable kTable = {
      .name = "boot_source_setting",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), TEXT(BootString, 256), TEXT(BIOSBootString, 256),
                 TEXT(StructuredBootString, 256), NUMBER(FailThroughSupported), NUMBER(isHost)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& services() {
  using Record = boot_service_rec;
  static const ProfileTable kTable = {
      .name = "boot_service",
      .record_size = sizeof(Record),
      .fields = {TEXT(SystemCreationClassName, 256), TEXT(CreationClassName, 256), TEXT(ElementName, 256),
                 TEXT(SystemName, 256), TEXT(Name, 256)},
      .key = "SystemCreationClassName",
  };
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    like_a_collection({.name = "SettingData",
                       .table = setting_data(),
                       .call = erased<boot_setting_data_rec>(db_get_all_boot_setting_data)}),
    like_a_collection({.name = "ConfigSetting",
                       .table = config_settings(),
                       .call = erased<boot_config_setting_rec>(db_get_all_boot_config_setting)}),
    like_a_collection({.name = "ServiceCapabilities",
                       .table = service_capabilities(),
                       .call = erased<boot_service_capabilities_rec>(db_get_all_boot_service_capabilities)}),
    {.name = "SourceSetting",
     .table = source_settings(),
     .call = erased<boot_source_setting_rec>(db_get_all_boot_source_setting),
     .reading = "Get all boot_source_setting records from database",
     .done = "Successfully got all Boot_source_setting %d",
     .count_failed = "Fail to get Boot_source_setting records"},
    {.name = "Service",
     .table = services(),
     .call = erased<boot_service_rec>(db_get_all_boot_service),
     .reading = "Get all boot service records from database",
     .done = "Successfully got all boot service %d",
     .count_failed = "Fail to get Boot service records"},
};

const ProfileGetOneCase kGetOne[] = {
    like_an_asset({.name = "SettingData",
                   .table = setting_data(),
                   .call = by_text(db_get_boot_setting_data),
                   .keys = {"InstanceID"},
                   .statement = "select * from boot_setting_data where InstanceID='t100';"}),
    like_an_asset({.name = "ConfigSetting",
                   .table = config_settings(),
                   .call = by_text(db_get_boot_config_setting),
                   .keys = {"InstanceID"},
                   .statement = "select * from boot_config_setting where InstanceID='t100';"}),
    like_an_asset({.name = "ServiceCapabilities",
                   .table = service_capabilities(),
                   .call = by_text(db_get_boot_service_cap),
                   .keys = {"InstanceID"},
                   .statement = "select * from boot_service_capabilities where InstanceID='t100';"}),
    {.name = "SourceSetting",
     .table = source_settings(),
     .call = by_text(db_get_boot_source_setting),
     .keys = {"InstanceID"},
     .statement = "select * from boot_source_setting where InstanceID='t100';",
     .reading = "Get boot_source_setting from database",
     .done = "Successfully got the Boot_source_setting.",
     .no_row = "Fail to get Boot_source_setting records",
     .no_statement = "Fail to get Boot_source_setting record",
     .says_reading_before_the_step = true,
     .passes_codes_on = true,
     .tests_memory = false},
};

const ProfileSetCase kSet[] = {
    like_an_asset(
        {.name = "SettingData",
         .table = setting_data(),
         .call = storing(db_set_boot_setting_data),
         .insert =
             "insert into boot_setting_data (InstanceID, ElementName, OwningEntity) values ('t100', 't101', 't102');",
         .update = "update boot_setting_data set InstanceID='t100', ElementName='t101' OwningEntity='t102' where "
                   "InstanceID='t100';",
         .update_is_rejected = true}),
    like_an_asset(
        {.name = "ConfigSetting",
         .table = config_settings(),
         .call = storing(db_set_boot_config_setting),
         .insert = "insert into boot_config_setting (InstanceID, ElementName) values ('t100', 't101');",
         .update = "update boot_config_setting set InstanceID='t100', ElementName='t101' where InstanceID='t100';"}),
    like_an_asset({.name = "ServiceCapabilities",
                   .table = service_capabilities(),
                   .call = storing(db_set_boot_service_capabilities),
                   .insert =
                       "insert into boot_service_capabilities (InstanceID, ElementName, ElementNameEditSupported, "
                       "BootConfigCapabilities) values ('t100', 't101', 102, 103);",
                   .update = "update boot_service_capabilities set InstanceID='t100', ElementName='t101' "
                             "ElementNameEditSupported=102, BootConfigCapabilities=103 \t\twhere InstanceID='t100';",
                   .update_is_rejected = true}),
    like_an_asset(
        {.name = "SourceSetting",
         .table = source_settings(),
         .call = storing(db_set_boot_source_setting),
         .insert =
             "insert into boot_source_setting (InstanceID, ElementName, BootString, BIOSBootString, "
             "StructuredBootString, FailThroughSupported, isHost) values ('t100', 't101', 't102', 't103', 't104', "
             "105, 106);",
         .update = "update boot_source_setting set InstanceID='t100', ElementName='t101', BootString='t102', "
                   "BIOSBootString='t103', StructuredBootString='t104' FailThroughSupported=105, isHost=106 where "
                   "InstanceID='t100';",
         .update_is_rejected = true}),
    {.name = "Service",
     .table = services(),
     .call = storing(db_set_boot_service),
     .insert = "insert into boot_service (SystemCreationClassName, CreationClassName, ElementName, SystemName, Name) "
               "values ('t100', 't101', 't102', 't103', 't104');",
     .update = "update boot_service set SystemCreationClassName='t100', CreationClassName='t101', ElementName='t102', "
               "SystemName='t103', Name='t104' where SystemCreationClassName='t100';",
     .present = "Boot Service record is already present with that key",
     .done = "Successfully update the Boot Service record"},
};

INSTANTIATE_TEST_SUITE_P(Boot, ProfileGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Boot, ProfileGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Boot, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

class Boot : public DatabaseTest {
 protected:
  Boot() : DatabaseTest("db_static_instance.c") {}

  // What a set says of a row that exists and that it fails to update.
  Lines lines_of_a_rejected_update() const {
    return {execution_failed(), trace("Physical Asset record is already present with that key"), execution_failed(),
            trace("Successfully update the Physical Asset cap. record")};
  }
};

TEST_F(Boot, SettingDataOfAnExistingKeyKeepsItsRow) {
  sql("create table boot_setting_data (InstanceID primary key, ElementName, OwningEntity);");
  sql("insert into boot_setting_data values ('a', 'name', 'owner');");
  boot_setting_data_rec record{};
  put(record.InstanceID, "a");
  put(record.ElementName, "new name");
  put(record.OwningEntity, "new owner");
  EXPECT_EQ(0, db_set_boot_setting_data(db, &record));
  EXPECT_EQ(Texts({"a|name|owner"}), rows_of("select * from boot_setting_data;"));
  EXPECT_EQ(lines_of_a_rejected_update(), logged());
}

TEST_F(Boot, ServiceCapabilitiesOfAnExistingKeyKeepTheirRow) {
  sql("create table boot_service_capabilities (InstanceID primary key, ElementName, ElementNameEditSupported, "
      "BootConfigCapabilities);");
  sql("insert into boot_service_capabilities values ('a', 'name', 1, 2);");
  boot_service_capabilities_rec record{};
  put(record.InstanceID, "a");
  record.BootConfigCapabilities = 3;
  EXPECT_EQ(0, db_set_boot_service_capabilities(db, &record));
  EXPECT_EQ(Texts({"a|name|1|2"}), rows_of("select * from boot_service_capabilities;"));
  EXPECT_EQ(lines_of_a_rejected_update(), logged());
}

TEST_F(Boot, SourceSettingOfAnExistingKeyKeepsItsRow) {
  sql("create table boot_source_setting (InstanceID primary key, ElementName, BootString, BIOSBootString, "
      "StructuredBootString, FailThroughSupported, isHost);");
  sql("insert into boot_source_setting values ('a', 'name', 'disk', 'bios', 'structured', 1, 0);");
  boot_source_setting_rec record{};
  put(record.InstanceID, "a");
  put(record.BootString, "network");
  EXPECT_EQ(0, db_set_boot_source_setting(db, &record));
  EXPECT_EQ(Texts({"a|name|disk|bios|structured|1|0"}), rows_of("select * from boot_source_setting;"));
  EXPECT_EQ(lines_of_a_rejected_update(), logged());
}

TEST_F(Boot, SourceSettingIsOneRecord) {
  sql("create table boot_source_setting (InstanceID, a, b, c, d, e, f);");
  sql("insert into boot_source_setting (InstanceID) values ('a');");
  Owned<boot_source_setting_rec> record;
  EXPECT_EQ(0, db_get_boot_source_setting(db, "a", record.out()));
  EXPECT_EQ(sizeof(boot_source_setting_rec), size_of(record.get()));
  logged();
}

TEST_F(Boot, SourceSettingWithoutMemoryReturnsOneWithNullAndWithoutAWord) {
  sql("create table boot_source_setting (InstanceID, a, b, c, d, e, f);");
  sql("insert into boot_source_setting (InstanceID) values ('a');");
  boundary().fail_allocation = 1;
  boot_source_setting_rec untouched;
  boot_source_setting_rec* record = &untouched;
  EXPECT_EQ(1, db_get_boot_source_setting(db, "a", &record));
  EXPECT_EQ(nullptr, record);
  EXPECT_EQ(Lines({trace("Get boot_source_setting from database")}), logged());
}

TEST_F(Boot, ServiceRecordEndsWithAFieldThatNoColumnFills) {
  EXPECT_EQ(5u * 256, offsetof(boot_service_rec, reserved));
  EXPECT_EQ(5u * 256 + 4, sizeof(boot_service_rec));
  sql("create table boot_service (SystemCreationClassName, CreationClassName, ElementName, SystemName, Name);");
  sql("insert into boot_service (SystemCreationClassName) values ('a'), ('b');");
  std::int32_t count = -1;
  Owned<boot_service_rec> records;
  EXPECT_EQ(0, db_get_all_boot_service(db, &count, records.out()));
  ASSERT_EQ(2, count);
  EXPECT_EQ(0, records[0].reserved);
  EXPECT_EQ(0, records[1].reserved);
  EXPECT_EQ("b", field(records[1].SystemCreationClassName));
  logged();
}

TEST_F(Boot, ServicesOfTheSameSystemClassShareOneRow) {
  sql("create table boot_service (SystemCreationClassName primary key, CreationClassName, ElementName, SystemName, "
      "Name);");
  boot_service_rec service{};
  put(service.SystemCreationClassName, "system");
  for (const char* const name : {"one", "two"}) {
    put(service.Name, name);
    EXPECT_EQ(0, db_set_boot_service(db, &service));
  }
  EXPECT_EQ(Texts({"system|two"}), rows_of("select SystemCreationClassName, Name from boot_service;"));
  logged();
}

}  // namespace
}  // namespace qmv::test
