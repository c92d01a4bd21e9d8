// IP assignment: how interfaces get their addresses, and their static configuration.
#include <cstring>
#include <string>

#include "qmv/services.h"
#include "unit/profile_rules.h"

namespace qmv::test {
namespace {

const ProfileTable& settings() {
  using Record = ip_assign_settingdata_rec;
  static const ProfileTable kTable = {
      .name = "ip_assign_settingdata",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), NUMBER(AddressOrigin), TEXT(ElementName, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& static_settings() {
  using Record = static_ip_assign_settingdata_rec;
  static const ProfileTable kTable = {
      .name = "static_ip_assign_settingdata",
      .record_size = sizeof(Record),
      .fields = {TEXT(InterfaceName, 256), TEXT(IPv4Address, 256), TEXT(SubnetMask, 256), TEXT(Gateway, 256),
                 TEXT(IPv6Address, 256), NUMBER(IPv6AddressType), NUMBER(IPv6SubnetPrefixLength),
                 TEXT(GatewayIPv6Address, 256)},
      .key = "InterfaceName",
  };
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    {.name = "Settings",
     .table = settings(),
     .call = erased<ip_assign_settingdata_rec>(db_get_all_ip_assignment_settingdata),
     .reading = "Get all IPAssignmentSettingdata records from database",
     .done = "Successfully got all IPAssignmentSettingData %d",
     .count_failed = "Fail to get IPAssignmentSettingData records"},
    {.name = "StaticSettings",
     .table = static_settings(),
     .call = erased<static_ip_assign_settingdata_rec>(db_get_all_static_ip_assignment_settingdata),
     .reading = "Get all Static IPAssignmentSettingdata records from database",
     .done = "Successfully got all Static IPAssignmentSettingData %d",
     .count_failed = "Fail to get Static IPAssignmentSettingData records",
     .passes_codes_on = true,
     .without_memory = 7},
};

const ProfileGetOneCase kGetOne[] = {
    {.name = "Settings",
     .table = settings(),
     .call = filling<ip_assign_settingdata_rec>([](sqlite3* db, const Texts& keys, ip_assign_settingdata_rec* record) {
       return db_get_ip_assignment_setting_data(db, keys[0].c_str(), record);
     }),
     .keys = {"InstanceID"},
     .statement = "select * from ip_assign_settingdata where InstanceID='t100';",
     .reading = "Get IPAssignmentSettingData from database",
     .done = "Successfully got IPAssignmentSettingData\n",
     .no_row = "Fail to get IPAssignmentSettingData records\n",
     .no_statement = "Fail to get IPAssignmentSettingData records\n",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
};

const ProfileSetCase kSet[] = {
    {.name = "Settings",
     .table = settings(),
     .call = storing(db_set_ip_assignment_settingdata),
     .insert = "insert into ip_assign_settingdata (InstanceID, AddressOrigin, ElementName) values ('t100', 101, "
               "'t102');",
     .update = "update ip_assign_settingdata set InstanceID='t100', AddressOrigin=101, "
               "ElementName='t102'\t\t\t\twhere InstanceID='t100';",
     .present = "IPAssignSettingData record is already present with that key",
     .done = "Successfully update the IPAssignSettingData record"},
    {.name = "StaticSettings",
     .table = static_settings(),
     .call = storing(db_set_static_ip_assignment_settingdata),
     .insert = "insert into static_ip_assign_settingdata (InterfaceName, IPv4Address, SubnetMask, Gateway, "
               "IPv6Address, IPv6AddressType, IPv6SubnetPrefixLength, GatewayIPv6Address) values ('t100','t101', "
               "'t102', 't103', 't104', '105', '106', 't107');",
     .update = "update static_ip_assign_settingdata set IPv4Address='t101', SubnetMask='t102', Gateway='t103', "
               "IPv6Address='t104', IPv6AddressType='105', IPv6SubnetPrefixLength='106', GatewayIPv6Address='t107' "
               "where InterfaceName='t100';",
     .present = "Updating the StaticIPAssignmentTable",
     .done = "Successfully update the Static IPAssignSettingData record"},
};

INSTANTIATE_TEST_SUITE_P(IpAssignment, ProfileGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(IpAssignment, ProfileGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(IpAssignment, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

class StaticIpAssignment : public TableTest {
 protected:
  StaticIpAssignment() : TableTest("db_static_instance.c", static_settings()) {}

  // The record that row 100 makes.
  static_ip_assign_settingdata_rec record() const {
    static_ip_assign_settingdata_rec made;
    std::memcpy(&made, sample(100).data(), sizeof(made));
    return made;
  }

  Texts rows() { return rows_of("select * from static_ip_assign_settingdata;"); }
};

TEST_F(StaticIpAssignment, RecordHasTheGatewayBeforeTheMask) {
  EXPECT_EQ(2u * 256, offsetof(static_ip_assign_settingdata_rec, Gateway));
  EXPECT_EQ(3u * 256, offsetof(static_ip_assign_settingdata_rec, SubnetMask));
  EXPECT_EQ(1544u, sizeof(static_ip_assign_settingdata_rec));
}

TEST_F(StaticIpAssignment, MaskAndGatewayStayApartOnTheirWayInAndOut) {
  const auto interface = record();
  EXPECT_EQ("t102", field(interface.SubnetMask));
  EXPECT_EQ("t103", field(interface.Gateway));
  EXPECT_EQ(0, db_set_static_ip_assignment_settingdata(db, &interface));
  EXPECT_EQ(Texts({"t102|t103"}), rows_of("select SubnetMask, Gateway from static_ip_assign_settingdata;"));
  std::int32_t count = -1;
  Owned<static_ip_assign_settingdata_rec> found;
  EXPECT_EQ(0, db_get_all_static_ip_assignment_settingdata(db, &count, found.out()));
  ASSERT_EQ(1, count);
  EXPECT_EQ("t102", field(found->SubnetMask));
  EXPECT_EQ("t103", field(found->Gateway));
  logged();
}

TEST_F(StaticIpAssignment, InitialiseInsertsInSilence) {
  const auto interface = record();
  EXPECT_EQ(0, db_init_static_ip_assignment_settingdata(db, &interface));
  EXPECT_EQ(Texts({"t100|t101|t102|t103|t104|105|106|t107"}), rows());
  EXPECT_EQ(
      Texts({"insert into static_ip_assign_settingdata (InterfaceName, IPv4Address, SubnetMask, Gateway, IPv6Address, "
             "IPv6AddressType, IPv6SubnetPrefixLength, GatewayIPv6Address) values ('t100','t101', 't102', 't103', "
             "'t104', '105', '106', 't107');"}),
      statements());
}

TEST_F(StaticIpAssignment, InitialiseOfAnExistingInterfaceReturnsOneAndSetUpdatesIt) {
  auto interface = record();
  db_init_static_ip_assignment_settingdata(db, &interface);
  interface.IPv6AddressType = 7;
  EXPECT_EQ(1, db_init_static_ip_assignment_settingdata(db, &interface));
  EXPECT_EQ(Texts({"t100|t101|t102|t103|t104|105|106|t107"}), rows());
  EXPECT_EQ(Lines({execution_failed()}), logged());
  EXPECT_EQ(2u, statements().size()) << "no update";
  EXPECT_EQ(0, db_set_static_ip_assignment_settingdata(db, &interface));
  EXPECT_EQ(Texts({"t100|t101|t102|t103|t104|7|106|t107"}), rows());
  logged();
}

TEST_F(StaticIpAssignment, InitialiseAnswersAnyFailureWithOne) {
  sql("drop table static_ip_assign_settingdata;");
  const auto interface = record();
  for (const int code : {SQLITE_ERROR, SQLITE_BUSY, SQLITE_FULL}) {
    boundary().execs = {{1, code}};
    EXPECT_EQ(1, db_init_static_ip_assignment_settingdata(db, &interface)) << code;
    EXPECT_EQ(Lines({execution_failed()}), logged());
  }
}

TEST_F(StaticIpAssignment, InitialiseReadsFullTextsNoFurtherThanTheirWidth) {
  Bytes full = sample(100);
  for (const Field& text : texts()) put(full, text, std::string(256, 'x'));
  static_ip_assign_settingdata_rec interface;
  std::memcpy(&interface, full.data(), sizeof(interface));
  EXPECT_EQ(0, db_init_static_ip_assignment_settingdata(db, &interface));
  for (const Field& text : texts()) EXPECT_EQ(std::string(256, 'x'), stored(text)) << text.column;
}

TEST_F(StaticIpAssignment, DeleteEmptiesTheTableInSilence) {
  insert(100);
  insert(200);
  EXPECT_EQ(0, db_delete_static_ip(db));
  EXPECT_EQ(Texts(), rows());
  EXPECT_EQ(Texts({"delete from static_ip_assign_settingdata"}), statements());
}

TEST_F(StaticIpAssignment, DeleteThatFailsReturnsZero) {
  sql("drop table static_ip_assign_settingdata;");
  EXPECT_EQ(0, db_delete_static_ip(db));
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

}  // namespace
}  // namespace qmv::test
