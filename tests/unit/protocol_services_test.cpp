// Protocol services and text redirection: their tables, and what is theirs alone.
#include <string>

#include "qmv/services.h"
#include "unit/profile_rules.h"

namespace qmv::test {
namespace {

const ProfileTable& protocol_services() {
  using Record = protocol_service_rec;
  static const ProfileTable kTable = {
      .name = "protocol_service",
      .record_size = sizeof(Record),
      .fields = {TEXT(Name, 256), NUMBER(Protocol), TEXT(ElementName, 256), NUMBER(MaxConnections),
                 NUMBER(RequestedState), NUMBER(EnabledState), NUMBER(HealthState), TEXT(OperationalStatus, 256),
                 TEXT(OtherProtocol, 256)},
      .key = "Name",
  };
  return kTable;
}

const ProfileTable& redirection_services() {
  using Record = textredirectionservice_rec;
  static const ProfileTable kTable = {
      .name = "textredirectionservice",
      .record_size = sizeof(Record),
      .fields = {TEXT(Name, 256), TEXT(ElementName, 256), NUMBER(MaxConcurrentEnabledSAPs), NUMBER(EnabledState),
                 NUMBER(RequestedState), NUMBER(SharingMode), NUMBER(RedirectionServiceType)},
      .key = "Name",
  };
  return kTable;
}

const ProfileTable& access_points() {
  using Record = textredirectionsap_rec;
  static const ProfileTable kTable = {
      .name = "textredirectionsap",
      .record_size = sizeof(Record),
      .fields = {TEXT(Name, 256), TEXT(ElementName, 256), NUMBER(EnabledState), NUMBER(RequestedState),
                 NUMBER(TextFlowType), TEXT(SessionTerminateSequence, 256)},
      .key = "Name",
  };
  return kTable;
}

// The same tables for the accessors that ask for one row by its name.
const ProfileTable& redirection_service() {
  static const ProfileTable kTable = with_only_row(redirection_services(), "TextRedirectionService1");
  return kTable;
}

const ProfileTable& access_point() {
  static const ProfileTable kTable = with_only_row(access_points(), "TextRedirectionSAP1");
  return kTable;
}

// What the set of an access point knows of it.
const ProfileTable& access_points_without_sequence() {
  static const ProfileTable kTable = [] {
    ProfileTable table = access_points();
    table.fields.pop_back();
    return table;
  }();
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    {.name = "ProtocolServices",
     .table = protocol_services(),
     .call = erased<protocol_service_rec>(db_get_all_protocol_service),
     .reading = "Get all role records from database",
     .done = "Successfully got all protocol service %d",
     .count_failed = "Fail to get protocol service records",
     .clears_the_pointer = true},
};

const ProfileGetOneCase kGetOne[] = {
    {.name = "ProtocolService",
     .table = protocol_services(),
     .call = filling_by_text(db_get_protocol_service),
     .keys = {"Name"},
     .statement = "select * from protocol_service where Name='t100';",
     .reading = "Get protocol service from database",
     .done = "Successfully got the protocol service.",
     .no_row = "Fail to get protocol service records",
     .no_statement = "Fail to get protocol service record",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
    {.name = "AccessPoint",
     .table = access_points(),
     .call = filling_by_text(db_get_textSAP),
     .keys = {"Name"},
     .statement = "select * from textredirectionsap where Name='t100';",
     .reading = "Get TextRedirectionSAP from database",
     .done = "Successfully got TextRedirectionSAP\n",
     .no_row = "Fail to get TextRedirectionSAP records\n",
     .no_statement = "Fail to get TextRedirectionSAP records\n",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
    {.name = "TheRedirectionService",
     .table = redirection_service(),
     .call = filling<textredirectionservice_rec>([](sqlite3* db, const Texts&, textredirectionservice_rec* record) {
       std::int32_t count = -1;
       return db_get_trs(db, record, &count);
     }),
     .keys = {"Name"},
     .statement = "select * from textredirectionservice where Name='TextRedirectionService1';",
     .reading = "Get assign role from database",
     .done = "Successfully got trs",
     .no_row = "Fail to get trs",
     .no_statement = "Fail to get trs",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
    {.name = "TheAccessPoint",
     .table = access_point(),
     .call = filling_by_nothing(db_get_all_textSAP),
     .keys = {"Name"},
     .statement = "select * from textredirectionsap where Name='TextRedirectionSAP1';",
     .reading = "Get assign role from database",
     .done = "Successfully got trs",
     .no_row = "Fail to get trs",
     .no_statement = "Fail to get trs",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
};

const ProfileSetCase kSet[] = {
    {.name = "ProtocolService",
     .table = protocol_services(),
     .call = storing(db_set_protocol_service),
     .insert = "insert into protocol_service (Name, Protocol, ElementName, \t\t\tMaxConnections, RequestedState, "
               "EnabledState, \t\t\tHealthState, OperationalStatus, OtherProtocol) \t\t\tvalues ('t100', 101, 't102', "
               "103, 104, 105, 106, 't107', 't108');",
     .update = "update protocol_service set Name='t100',Protocol=101, ElementName='t102', "
               "\t\t\t\tMaxConnections=103, RequestedState=104,EnabledState=105, \t\t\t\tHealthState=106, "
               "OperationalStatus='t107',OtherProtocol='t108' where Name='t100';",
     .present = "Protocol service record is already present with that key",
     .done = "Successfully update the protocol service record"},
    {.name = "RedirectionService",
     .table = redirection_services(),
     .call = storing(db_set_trs),
     .insert = "insert into textredirectionservice (Name, "
               "ElementName,MaxConcurrentEnabledSAPs,EnabledState,RequestedState,SharingMode,RedirectionServiceType) "
               "\t\tvalues ('t100', 't101', '102', '103', '104', '105', '106');",
     .update = "update textredirectionservice set "
               "Name='t100',ElementName='t101',MaxConcurrentEnabledSAPs='102',EnabledState='103',RequestedState='104',"
               "SharingMode='105',RedirectionServiceType='106'                                where Name='t100';",
     .present = "AssignRole record is already present with that key",
     .done = "Successfully update the TRS record"},
    {.name = "AccessPoint",
     .table = access_points_without_sequence(),
     .call = storing(db_set_text_sap),
     .insert = "insert into textredirectionsap (Name, ElementName,EnabledState,RequestedState,TextFlowType)            "
               "             values ('t100', 't101', '102', '103', '104');",
     .update = "update textredirectionsap set "
               "Name='t100',ElementName='t101',EnabledState='102',RequestedState='103',TextFlowType='104'              "
               "                  where Name='t100';",
     .present = "TextRedirectionSAP record is already present with that key",
     .done = "Successfully update the TextRedirectionSAP record"},
};

INSTANTIATE_TEST_SUITE_P(ProtocolServices, ProfileGetAll, testing::ValuesIn(kGetAll),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(ProtocolServices, ProfileGetOne, testing::ValuesIn(kGetOne),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(ProtocolServices, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

class ProtocolService : public DatabaseTest {
 protected:
  ProtocolService() : DatabaseTest("db_static_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table protocol_service (Name unique, RequestedState);"
        "insert into protocol_service values ('ssh', 1), ('teln''et', 1);");
  }

  Texts rows() { return rows_of("select * from protocol_service;"); }
};

TEST_F(ProtocolService, RequestedStateOfTheNamedServiceIsModified) {
  EXPECT_EQ(0, db_modify_protocol_service_rs(db, -3, "teln'et"));
  EXPECT_EQ(Texts({"update protocol_service set RequestedState='-3'where Name='teln''et';"}), statements());
  EXPECT_EQ(Texts({"ssh|1", "teln'et|-3"}), rows());
}

TEST_F(ProtocolService, NameOfAModificationIsNotCut) {
  const std::string longer(5000, 'x');
  sql("update protocol_service set Name = '" + longer + "' where Name = 'ssh';");
  EXPECT_EQ(0, db_modify_protocol_service_rs(db, 2, longer.c_str()));
  EXPECT_EQ(Texts({longer + "|2", "teln'et|1"}), rows());
}

TEST_F(ProtocolService, ModificationOfAServiceThatIsNotThereReturnsZero) {
  EXPECT_EQ(0, db_modify_protocol_service_rs(db, 2, "http"));
  EXPECT_EQ(Texts({"ssh|1", "teln'et|1"}), rows());
}

TEST_F(ProtocolService, ModificationThatFailsReturnsZero) {
  sql("drop table protocol_service;");
  EXPECT_EQ(0, db_modify_protocol_service_rs(db, 2, "ssh"));
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

class TextRedirection : public DatabaseTest {
 protected:
  TextRedirection() : DatabaseTest("db_static_instance.c") {}

  // Each table has the row that the accessors work on between two others.
  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table textredirectionservice (Name unique, ElementName, MaxConcurrentEnabledSAPs, EnabledState, "
        "RequestedState, SharingMode, RedirectionServiceType);"
        "insert into textredirectionservice values ('TextRedirectionService0', 'a', 1, 2, 3, 4, 5), "
        "('TextRedirectionService1', 'b', 11, 12, 13, 14, 15), ('TextRedirectionService2', 'c', 21, 22, 23, 24, 25);" +
        access_points("textredirectionsap"));
  }

  static std::string access_points(const std::string& table) {
    return "create table " + table +
           " (Name unique, ElementName, EnabledState, RequestedState, TextFlowType, SessionTerminateSequence);"
           "insert into " +
           table +
           " values ('TextRedirectionSAP0', 'a', 1, 2, 3, '~0'), ('TextRedirectionSAP1', 'b', 11, 12, 13, '~.'), "
           "('TextRedirectionSAP2', 'c', 21, 22, 23, '~2');";
  }

  void without_the_rows() {
    sql("delete from textredirectionservice where Name like '%1';"
        "delete from textredirectionsap where Name like '%1';");
  }

  void expect_count_of_one(std::int32_t status) {
    textredirectionservice_rec record;
    std::int32_t count = -1;
    EXPECT_EQ(status, db_get_trs(db, &record, &count));
    EXPECT_EQ(1, count);
  }

  Texts service_states() { return rows_of("select EnabledState, RequestedState from textredirectionservice;"); }
  Texts access_point_states() { return rows_of("select EnabledState, RequestedState from textredirectionsap;"); }
  Texts sequences() { return rows_of("select SessionTerminateSequence from textredirectionsap;"); }
};

TEST_F(TextRedirection, ModifyingTheServiceSetsBothItsStates) {
  EXPECT_EQ(0, db_modify_trs_rs(db, 17, 0));
  EXPECT_EQ(Texts({"update textredirectionservice set EnabledState='17',RequestedState='17' where "
                   "Name='TextRedirectionService1';"}),
            statements());
  EXPECT_EQ(Texts({"2|3", "17|17", "22|23"}), service_states());
}

TEST_F(TextRedirection, ModifyingTheServiceWithoutAnAccessPointsStateLeavesTheAccessPoint) {
  EXPECT_EQ(0, db_modify_trs_rs(db, 7, 0));
  EXPECT_EQ(Texts({"1|2", "11|12", "21|22"}), access_point_states());
}

TEST_F(TextRedirection, ModifyingTheServiceSetsTheAccessPointsEnabledState) {
  EXPECT_EQ(0, db_modify_trs_rs(db, 7, -8));
  EXPECT_EQ("update textredirectionsap set EnabledState='-8' where Name='TextRedirectionSAP1';", statements().back());
  EXPECT_EQ(Texts({"2|3", "7|7", "22|23"}), service_states());
  EXPECT_EQ(Texts({"1|2", "-8|12", "21|22"}), access_point_states());
}

TEST_F(TextRedirection, ModifyingTheServiceEndsWithOneWhereItsUpdateFails) {
  boundary().execs = {{1, SQLITE_BUSY}};
  EXPECT_EQ(1, db_modify_trs_rs(db, 7, 8));
  EXPECT_EQ(1u, statements().size());
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

TEST_F(TextRedirection, ModifyingTheServiceReturnsOneWhenTheAccessPointsUpdateFails) {
  boundary().execs = {{2, SQLITE_BUSY}};
  EXPECT_EQ(1, db_modify_trs_rs(db, 7, 8));
  EXPECT_EQ(Texts({"2|3", "7|7", "22|23"}), service_states());
  EXPECT_EQ(Texts({"1|2", "11|12", "21|22"}), access_point_states());
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

TEST_F(TextRedirection, ModifyingTheAccessPointSetsBothItsStates) {
  EXPECT_EQ(0, db_modify_textSAP_rs(db, 17));
  EXPECT_EQ(Texts({"update textredirectionsap set RequestedState='17',EnabledState='17' where "
                   "Name='TextRedirectionSAP1';"}),
            statements());
  EXPECT_EQ(Texts({"1|2", "17|17", "21|22"}), access_point_states());
}

TEST_F(TextRedirection, ModifyingTheAccessPointReturnsOneWhenItsUpdateFails) {
  boundary().execs = {{1, SQLITE_BUSY}};
  EXPECT_EQ(1, db_modify_textSAP_rs(db, 7));
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

TEST_F(TextRedirection, ModifyingTheSequenceSetsIt) {
  EXPECT_EQ(0, db_modify_textSAP(db, "~'q"));
  EXPECT_EQ(Texts({"update textredirectionsap set SessionTerminateSequence='~''q'where Name='TextRedirectionSAP1';"}),
            statements());
  EXPECT_EQ(Texts({"~0", "~'q", "~2"}), sequences());
}

TEST_F(TextRedirection, ModifyingTheSequenceDoesNotCutIt) {
  const std::string longer(5000, 'x');
  EXPECT_EQ(0, db_modify_textSAP(db, longer.c_str()));
  EXPECT_EQ(Texts({"~0", longer, "~2"}), sequences());
}

TEST_F(TextRedirection, ModifyingTheSequenceWithoutOneReturnsOneAndAsksNothing) {
  EXPECT_EQ(1, db_modify_textSAP(db, nullptr));
  EXPECT_EQ(Texts(), statements());
}

TEST_F(TextRedirection, ModifyingTheSequenceReturnsZeroWhenItsUpdateFails) {
  boundary().execs = {{1, SQLITE_BUSY}};
  EXPECT_EQ(0, db_modify_textSAP(db, "~q"));
  EXPECT_EQ(Texts({"~0", "~.", "~2"}), sequences());
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

TEST_F(TextRedirection, ModificationsOfRowsThatAreNotThereReturnZero) {
  without_the_rows();
  EXPECT_EQ(0, db_modify_trs_rs(db, 7, 8));
  EXPECT_EQ(0, db_modify_textSAP_rs(db, 7));
  EXPECT_EQ(0, db_modify_textSAP(db, "~q"));
  EXPECT_EQ(Texts({"2|3", "22|23"}), service_states());
  EXPECT_EQ(Texts({"1|2", "21|22"}), access_point_states());
  EXPECT_EQ(Texts({"~0", "~2"}), sequences());
}

TEST_F(TextRedirection, SetOfAnAccessPointLeavesItsSequence) {
  textredirectionsap_rec record{};
  put(record.SessionTerminateSequence, "~x");
  put(record.Name, "TextRedirectionSAP1");
  EXPECT_EQ(0, db_set_text_sap(db, &record));
  put(record.Name, "TextRedirectionSAP3");
  EXPECT_EQ(0, db_set_text_sap(db, &record));
  EXPECT_EQ(Texts({"~0", "~.", "~2", "NULL"}), sequences());
  logged();
}

TEST_F(TextRedirection, GetServiceSetsTheCountToOneOnEveryPath) {
  expect_count_of_one(0);
  boundary().miss_statement = 1;
  expect_count_of_one(1);
  without_the_rows();
  expect_count_of_one(1);
  sql("drop table textredirectionservice;");
  expect_count_of_one(1);
  logged();
}

TEST_F(TextRedirection, TerminateSequenceIsTheStoredOne) {
  EXPECT_STREQ("~.", db_get_sesstion_term_seq(db));
  EXPECT_EQ(Texts({"select SessionTerminateSequence from textredirectionsap where Name='TextRedirectionSAP1';"}),
            statements());
  EXPECT_EQ(std::vector<bool>({true}), boundary().tails);
  expect_left_open(1);
  expect_left_allocated(1);
}

TEST_F(TextRedirection, TerminateSequenceKeepsItsStatementOpen) {
  const char* first = db_get_sesstion_term_seq(db);
  expect_left_open(1);
  db_modify_textSAP(db, "another");
  const char* second = db_get_sesstion_term_seq(db);
  expect_left_open(1);
  EXPECT_STREQ("~.", first);
  EXPECT_STREQ("another", second);
  expect_left_allocated(2);
}

TEST_F(TextRedirection, TerminateSequenceKeepsOthersFromWriting) {
  const std::string file = scratch() + "/redirection.db";
  const Connection other = open(file);
  sql(other.get(), access_points("textredirectionsap"));
  sql("drop table textredirectionsap; attach '" + file + "' as redirection;");
  const char* const write = "update textredirectionsap set ElementName = 'd';";
  sql(other.get(), write);

  EXPECT_STREQ("~.", db_get_sesstion_term_seq(db));
  EXPECT_EQ(SQLITE_BUSY, __real_sqlite3_exec(other.get(), write, nullptr, nullptr, nullptr));
  expect_left_open(1);
  expect_left_allocated(1);
}

TEST_F(TextRedirection, TerminateSequenceThatIsNullOrOfNoRowIsNull) {
  sql("update textredirectionsap set SessionTerminateSequence = NULL where Name like '%1';");
  EXPECT_EQ(nullptr, db_get_sesstion_term_seq(db));
  without_the_rows();
  EXPECT_EQ(nullptr, db_get_sesstion_term_seq(db));
  expect_left_open(2);
  expect_left_allocated(2);
}

TEST_F(TextRedirection, TerminateSequenceDoesNotTestTheStep) {
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(nullptr, db_get_sesstion_term_seq(db));
  expect_left_open(1);
  expect_left_allocated(1);
}

TEST_F(TextRedirection, TerminateSequenceWithoutATableIsNull) {
  sql("drop table textredirectionsap;");
  EXPECT_EQ(nullptr, db_get_sesstion_term_seq(db));
  EXPECT_EQ(Lines({no_such_table("textredirectionsap")}), logged());
}

TEST_F(TextRedirection, TerminateSequenceWithoutAStatementIsNullInSilence) {
  boundary().miss_statement = 1;
  EXPECT_EQ(nullptr, db_get_sesstion_term_seq(db));
}

TEST_F(TextRedirection, TerminateSequenceWhoseTextCannotBeFormattedDoesNotCompile) {
  boundary().fail_text = 1;
  EXPECT_EQ(nullptr, db_get_sesstion_term_seq(db));
  EXPECT_EQ(Texts({"(null)"}), statements());
  EXPECT_EQ(1u, logged().size());
}

}  // namespace
}  // namespace qmv::test
