// The count of any table, enabled logical element capabilities and registered profiles.
#include <string>
#include <vector>

#include "qmv/profiles.h"
#include "unit/profile_rules.h"

namespace qmv::test {
namespace {

const ProfileTable& capabilities() {
  using Record = ena_log_elem_cap_rec;
  static const ProfileTable kTable = {
      .name = "ena_log_elem_cap",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(RequestStatesSupported, 256), NUMBER(ElementNameEditSupported),
                 TEXT(ElementName, 256), NUMBER(MaxElementNameLen)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& profiles() {
  using Record = registered_profile_rec;
  static const ProfileTable kTable = {
      .name = "registered_profile",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), NUMBER(RegOrganization), TEXT(RegisteredName, 256),
                 TEXT(RegisteredVersion, 256), TEXT(AdvertiseTypes, 256), TEXT(OtherRegisteredOrganization, 256),
                 TEXT(AdvertiseTypesDesc, 256), TEXT(ImplementedFeatures, 512)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    {.name = "Elec",
     .table = capabilities(),
     .call = erased<ena_log_elem_cap_rec>(db_get_all_elec),
     .reading = "Get all elec from database",
     .done = "Successfully got all elec",
     .count_failed = "Fail to get elec records"},
    {.name = "RegProfile",
     .table = profiles(),
     .call = erased<registered_profile_rec>(db_get_all_regprofile),
     .reading = "Get all regprofile from database",
     .done = "Successfully got all the regprofile",
     .count_failed = "Fail to get regprofile records"},
};

const ProfileGetOneCase kGetOne[] = {
    {.name = "Elec",
     .table = capabilities(),
     .call = by_text(db_get_elec),
     .keys = {"InstanceID"},
     .statement = "select * from ena_log_elem_cap where InstanceID='t100';",
     .reading = "Get Enabled Logical element capability rec from database",
     .no_row = "Fail to get the ELEC record",
     .no_statement = "Fail to get ELEC record. SQLite stmt is NULL"},
    {.name = "RegProfile",
     .table = profiles(),
     .call = by_text(db_get_regprofile),
     .keys = {"InstanceID"},
     .statement = "select * from registered_profile where InstanceID='t100';",
     .reading = "Get Registered profile record from database",
     .no_row = "Fail to get the registered Profile record",
     .no_statement = "Fail to get Reg Profile record. SQLite stmt is NULL"},
};

const ProfileSetCase kSet[] = {
    {.name = "Elec",
     .table = capabilities(),
     .call = storing(db_set_elec),
     .insert = "insert into ena_log_elem_cap (InstanceID, RequestStatesSupported, \t\t\tElementNameEditSupported, "
               "ElementName, MaxElementNameLen) \t\t\tvalues ('t100', 't101', 102, 't103', 104);",
     .update = "update ena_log_elem_cap set InstanceID='t100', RequestStatesSupported='t101', "
               "\t\t\tElementNameEditSupported=102, ElementName='t103', MaxElementNameLen=104\t\t\twhere "
               "InstanceID='t100' ;",
     .present = "ELEC record is already present with that key",
     .done = "Successfully update the ELEC record"},
    {.name = "RegProfile",
     .table = profiles(),
     .call = storing(db_set_regprofile),
     .insert = "insert into registered_profile (InstanceID, RegOrganization, RegisteredName, \t\t\tRegisteredVersion, "
               "AdvertiseTypes, OtherRegisteredOrganization, AdvertiseTypesDesc, ImplementedFeatures) \t\t\tvalues "
               "('t100', 101, 't102', 't103', 't104', 't105', 't106','t107');",
     .update = "update registered_profile set InstanceID='t100', RegOrganization=101, \t\t\tRegisteredName='t102', "
               "RegisteredVersion='t103', AdvertiseTypes='t104', \t\t\tOtherRegisteredOrganization='t105', "
               "AdvertiseTypesDesc='t106', ImplementedFeatures='t107' where InstanceID='t100' ;",
     .present = "Registered Profile record is already present with that key",
     .done = "Successfully update the Registered Profile record"},
};

INSTANTIATE_TEST_SUITE_P(Capabilities, ProfileGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Capabilities, ProfileGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Capabilities, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

class GenericCount : public DatabaseTest {
 protected:
  GenericCount() : DatabaseTest("db_static_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table lamps (watt); insert into lamps values (40), (60), (100);");
  }

  std::int32_t count_rows(const char* table) { return db_get_cnt(db, &count, table); }

  std::int32_t count = -1;
};

TEST_F(GenericCount, CountsTheRowsOfATable) {
  EXPECT_EQ(0, count_rows("lamps"));
  EXPECT_EQ(3, count);
  EXPECT_EQ(Texts({"select count(*) from lamps;"}), statements());
  EXPECT_EQ(std::vector<bool>({false}), boundary().tails) << "no place for the tail";
  logged();
}

TEST_F(GenericCount, OfAnEmptyTableIsZero) {
  sql("delete from lamps;");
  EXPECT_EQ(0, count_rows("lamps"));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("Successfully returns the ssh count")}), logged());
}

TEST_F(GenericCount, NamesSshForEveryTable) {
  sql("create table ssh_capabilities (InstanceID);");
  for (const char* const table : {"lamps", "ssh_capabilities"}) {
    count_rows(table);
    EXPECT_EQ(Lines({trace("Successfully returns the ssh count")}), logged()) << table;
  }
}

TEST_F(GenericCount, OfAnEmptyNameReturnsOneAndLeavesTheCount) {
  EXPECT_EQ(1, count_rows(""));
  EXPECT_EQ(-1, count);
  EXPECT_EQ(Texts(), statements());
  EXPECT_EQ(Lines({error("Table name is empty")}), logged());
}

TEST_F(GenericCount, OfAMissingTableReturnsOneWithTheCountCleared) {
  EXPECT_EQ(1, count_rows("bulbs"));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("bulbs")}), logged());
}

TEST_F(GenericCount, DoublesTheQuotesOfAName) {
  EXPECT_EQ(1, count_rows("la'mps"));
  EXPECT_EQ(Texts({"select count(*) from la''mps;"}), statements());
  EXPECT_EQ(1u, logged().size());
}

TEST_F(GenericCount, OfANameThatCannotBeFormattedReturnsOne) {
  boundary().fail_text = 1;
  EXPECT_EQ(1, count_rows("lamps"));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Texts({"(null)"}), statements());
  EXPECT_EQ(1u, logged().size());
}

TEST_F(GenericCount, WithoutAStatementIsZero) {
  boundary().miss_statement = 1;
  EXPECT_EQ(0, count_rows("lamps"));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_F(GenericCount, WithoutARowReturnsTheCodeOfTheStepAndLeavesTheStatementOpen) {
  for (const int code : {SQLITE_DONE, SQLITE_BUSY}) {
    boundary().steps = {{1, code}};
    EXPECT_EQ(code, count_rows("lamps"));
    EXPECT_EQ(0, count);
    EXPECT_EQ(Lines({trace("No records found")}), logged());
    expect_left_open(1);
  }
}

TEST_F(GenericCount, ReturnsTheCodeOfFinalize) {
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, count_rows("lamps"));
  EXPECT_EQ(3, count);
  EXPECT_EQ(Lines({trace("Successfully returns the ssh count")}), logged());
}

}  // namespace
}  // namespace qmv::test
