// The watchdog's capabilities and the account management service: their tables, and what is theirs alone.
#include <cstring>
#include <string>
#include <vector>

#include "qmv/services.h"
#include "unit/profile_rules.h"

namespace qmv::test {
namespace {

// The columns of a watchdog and the members that reading fills: the length of the name goes where the flag stands.
const std::vector<Field>& read_columns() {
  using Record = pwds_capabilities_rec;
  static const std::vector<Field> kColumns = {
      TEXT(instance_id, 256),         TEXT(ele_name, 256),
      TEXT(req_states_supported, 32), FIELD_OF_COLUMN("max_ele_name_len", ele_name_edit_supported),
      TEXT(act_on_exp_supported, 32), TEXT(last_exp_data_supported, 32),
      TEXT(wdt_data_supported, 32)};
  return kColumns;
}

const ProfileTable& watchdogs() {
  using Record = pwds_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "pwds_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(instance_id, 256), TEXT(ele_name, 256), TEXT(req_states_supported, 32),
                 NUMBER(ele_name_edit_supported), NUMBER(max_ele_name_len), TEXT(act_on_exp_supported, 32),
                 TEXT(last_exp_data_supported, 32), TEXT(wdt_data_supported, 32)},
      .key = "instance_id",
  };
  return kTable;
}

const ProfileTable& account_services() {
  using Record = account_management_service_rec;
  static const ProfileTable kTable = {
      .name = "account_management_service",
      .record_size = sizeof(Record),
      .fields = {TEXT(Name, 256), NUMBER(RequestedState), NUMBER(EnabledState), TEXT(ElementName, 256)},
      .key = "Name",
  };
  return kTable;
}

const ProfileTable& account_service() {
  static const ProfileTable kTable = with_only_row(account_services(), "AccountManagementService");
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    {.name = "Watchdogs",
     .table = watchdogs(),
     .call = erased<pwds_capabilities_rec>(db_get_all_pwds_capablities),
     .reading = "Get all privilege records from database",
     .done = "Successfully got all privileges %d",
     .count_failed = "Fail to get privilege records",
     .reads = read_columns(),
     .clears_the_pointer = true},
};

const ProfileGetOneCase kGetOne[] = {
    {.name = "TheAccountService",
     .table = account_service(),
     .call =
         filling<account_management_service_rec>([](sqlite3* db, const Texts&, account_management_service_rec* record) {
           std::int32_t count = -1;
           return db_get_accountmgt_service(db, record, &count);
         }),
     .keys = {"Name"},
     .statement = "select * from account_management_service where Name='AccountManagementService';",
     .reading = "Get assign role from database",
     .done = "Successfully got acc_mgt",
     .no_row = "Fail to get acc_mgt_service",
     .no_statement = "Fail to get acc_mgt_service",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
};

const ProfileSetCase kSet[] = {
    {.name = "AccountService",
     .table = account_services(),
     .call = storing(db_set_accountmgt_service),
     .insert = "insert into account_management_service (Name,RequestedState,EnabledState,ElementName)                 "
               "values ('t100', '101', '102', 't103');",
     .update = "update account_management_service set "
               "Name='t100',RequestedState='101',EnabledState='102',ElementName='t103' where Name='t100';",
     .present = "AssignRole record is already present with that key",
     .done = "Successfully update the account_management_service record"},
};

INSTANTIATE_TEST_SUITE_P(WatchdogAccount, ProfileGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(WatchdogAccount, ProfileGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(WatchdogAccount, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

constexpr char kColumns[] =
    "instance_id, ele_name, req_states_supported, ele_name_edit_supported, max_ele_name_len, act_on_exp_supported, "
    "last_exp_data_supported, wdt_data_supported";

class Watchdog : public DatabaseTest {
 protected:
  Watchdog() : DatabaseTest("db_static_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table pwds_capabilities (instance_id unique, ele_name, req_states_supported, ele_name_edit_supported, "
        "max_ele_name_len, act_on_exp_supported, last_exp_data_supported, wdt_data_supported);");
    std::memset(&record, 0x55, sizeof(record));
  }

  void insert_row(const std::string& id) {
    sql("insert into pwds_capabilities values ('" + id + "', 'n', 'r', 1, 64, 'a', 'l', 'w');");
  }

  static pwds_capabilities_rec sample() {
    pwds_capabilities_rec made{};
    put(made.instance_id, "dog");
    put(made.ele_name, "name");
    put(made.req_states_supported, "2,3");
    made.ele_name_edit_supported = 14;
    made.max_ele_name_len = -5;
    put(made.act_on_exp_supported, "reset");
    put(made.last_exp_data_supported, "last");
    put(made.wdt_data_supported, "data");
    return made;
  }

  Texts rows() { return rows_of(std::string("select ") + kColumns + " from pwds_capabilities;"); }

  void expect_record_untouched() const {
    pwds_capabilities_rec before;
    std::memset(&before, 0x55, sizeof(before));
    EXPECT_EQ(0, std::memcmp(&before, &record, sizeof(record)));
  }

  LogLine present() const { return trace("AssignRole record is already present with that key"); }
  LogLine was_set() const { return trace("Successfully update the account_management_service record"); }
  LogLine reading() const { return trace("Get PWDS capability from database"); }
  LogLine missing() const { return trace("Fail to get platform watchdog capabilities\n"); }

  pwds_capabilities_rec record;
  std::int32_t count = -1;
};

TEST_F(Watchdog, CountReturnsTheNumberOfRows) {
  insert_row("dog");
  insert_row("cat");
  EXPECT_EQ(0, db_get_pwds_capabilities_cnt(db, &count));
  EXPECT_EQ(2, count);
  EXPECT_EQ(Texts({"select count(*) from pwds_capabilities;"}), statements());
  EXPECT_EQ(Lines({trace("Successfully returns the watchdog capabilities count :2")}), logged());
}

TEST_F(Watchdog, CountOfNothingIsZeroWithTheSuccessTrace) {
  EXPECT_EQ(0, db_get_pwds_capabilities_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("Successfully returns the watchdog capabilities count :0")}), logged());
}

TEST_F(Watchdog, CountWithoutATableReturnsOneWithTheCountCleared) {
  sql("drop table pwds_capabilities;");
  EXPECT_EQ(1, db_get_pwds_capabilities_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("pwds_capabilities")}), logged());
}

TEST_F(Watchdog, CountWithoutAStatementIsZero) {
  boundary().miss_statement = 1;
  EXPECT_EQ(0, db_get_pwds_capabilities_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_F(Watchdog, CountWithoutARowReturnsTheCodeOfTheStep) {
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(SQLITE_BUSY, db_get_pwds_capabilities_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
  expect_left_open(1);
}

TEST_F(Watchdog, CountReturnsTheCodeOfFinalize) {
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, db_get_pwds_capabilities_cnt(db, &count));
  EXPECT_EQ(Lines({trace("Successfully returns the watchdog capabilities count :0")}), logged());
}

TEST_F(Watchdog, SetInsertsEveryFieldUnderItsColumn) {
  const pwds_capabilities_rec dog = sample();
  EXPECT_EQ(0, db_set_pwds_capablities(db, &dog));
  EXPECT_EQ(
      Texts({"insert into pwds_capabilities "
             "(instance_id,ele_name,req_states_supported,ele_name_edit_supported,\t\t\t\t\tmax_ele_name_len,act_on_exp_"
             "supported,last_exp_data_supported,wdt_data_supported) \t\t\t\t\tvalues ('dog', 'name', '2,3', "
             "'14','-5','reset', 'last','data');"}),
      statements());
  EXPECT_EQ(Texts({"dog|name|2,3|14|-5|reset|last|data"}), rows());
  EXPECT_EQ(Lines({was_set()}), logged());
}

TEST_F(Watchdog, SetOnAnExistingKeyUpdatesThatRow) {
  insert_row("dog");
  insert_row("cat");
  const pwds_capabilities_rec dog = sample();
  EXPECT_EQ(0, db_set_pwds_capablities(db, &dog));
  EXPECT_EQ(
      "update pwds_capabilities set "
      "instance_id='dog',ele_name='name',req_states_supported='2,3',ele_name_edit_supported='14',"
      "\t\t\t\t\tmax_ele_name_len='-5',act_on_exp_supported='reset',last_exp_data_supported='last',wdt_data_"
      "supported='data' where instance_id='dog';",
      statements().back());
  EXPECT_EQ(Texts({"dog|name|2,3|14|-5|reset|last|data", "cat|n|r|1|64|a|l|w"}), rows());
  EXPECT_EQ(Lines({execution_failed(), present(), was_set()}), logged());
}

TEST_F(Watchdog, QuoteInATextFailsTheInsert) {
  pwds_capabilities_rec dog = sample();
  put(dog.ele_name, "watch'dog");
  EXPECT_EQ(1, db_set_pwds_capablities(db, &dog));
  EXPECT_EQ(1u, statements().size());
  EXPECT_EQ(Texts(), rows());
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

TEST_F(Watchdog, EveryTextOfTheInsertIsTakenAsItIsAndOfTheUpdateIsEscaped) {
  pwds_capabilities_rec dog = sample();
  for (const bool updated : {false, true}) {
    put(dog.instance_id, "i");  // the key of the insert and of the update's condition are to meet
    put(dog.ele_name, "n''n");
    put(dog.req_states_supported, "r''r");
    put(dog.act_on_exp_supported, "a''a");
    put(dog.last_exp_data_supported, "l''l");
    put(dog.wdt_data_supported, "w''w");
    EXPECT_EQ(0, db_set_pwds_capablities(db, &dog));
    EXPECT_EQ(updated ? Texts({"i|n''n|r''r|14|-5|a''a|l''l|w''w"}) : Texts({"i|n'n|r'r|14|-5|a'a|l'l|w'w"}), rows());
  }
  logged();
}

TEST_F(Watchdog, KeyOfTheUpdateIsEscaped) {
  insert_row("i''i");
  pwds_capabilities_rec dog = sample();
  put(dog.instance_id, "i''i");
  EXPECT_EQ(0, db_set_pwds_capablities(db, &dog));
  EXPECT_EQ(Texts({"i'i|n|r|1|64|a|l|w"}), rows()) << "the row of that key is another one";
  const std::string update = statements().back();
  EXPECT_NE(std::string::npos, update.find("set instance_id='i''''i',")) << update;
  EXPECT_NE(std::string::npos, update.find("where instance_id='i''''i';")) << update;
  logged();
}

TEST_F(Watchdog, SetReturnsOneInSilenceWhenTheInsertFails) {
  sql("drop table pwds_capabilities;");
  const pwds_capabilities_rec dog = sample();
  EXPECT_EQ(1, db_set_pwds_capablities(db, &dog));
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

TEST_F(Watchdog, SetReturnsOneWhenTheUpdateFails) {
  insert_row("dog");
  boundary().execs = {{2, SQLITE_BUSY}};
  const pwds_capabilities_rec dog = sample();
  EXPECT_EQ(1, db_set_pwds_capablities(db, &dog));
  EXPECT_EQ(Lines({execution_failed(), present(), execution_failed()}), logged());
}

TEST_F(Watchdog, SetReadsFullTextFieldsNoFurtherThanTheirWidth) {
  pwds_capabilities_rec dog = sample();
  put(dog.instance_id, std::string(256, 'i'));
  put(dog.ele_name, std::string(256, 'n'));
  put(dog.req_states_supported, std::string(32, 'r'));
  put(dog.act_on_exp_supported, std::string(32, 'a'));
  put(dog.last_exp_data_supported, std::string(32, 'l'));
  put(dog.wdt_data_supported, std::string(32, 'w'));
  const std::string row = std::string(256, 'i') + "|" + std::string(256, 'n') + "|" + std::string(32, 'r') + "|14|-5|" +
                          std::string(32, 'a') + "|" + std::string(32, 'l') + "|" + std::string(32, 'w');
  EXPECT_EQ(0, db_set_pwds_capablities(db, &dog));
  EXPECT_EQ(Texts({row}), rows());
  sql("update pwds_capabilities set ele_name = 1, req_states_supported = 2, act_on_exp_supported = 3, "
      "last_exp_data_supported = 4, wdt_data_supported = 5;");
  EXPECT_EQ(0, db_set_pwds_capablities(db, &dog));
  EXPECT_EQ(Texts({row}), rows());
  logged();
}

TEST_F(Watchdog, GetReadsEveryColumnButTheEditFlag) {
  insert_row("cat");
  insert_row("do''g");
  EXPECT_EQ(0, db_get_pwds_capablities(db, "do'g", &record));
  EXPECT_EQ("do'g", field(record.instance_id));
  EXPECT_EQ("n", field(record.ele_name));
  EXPECT_EQ("r", field(record.req_states_supported));
  EXPECT_EQ("a", field(record.act_on_exp_supported));
  EXPECT_EQ("l", field(record.last_exp_data_supported));
  EXPECT_EQ("w", field(record.wdt_data_supported));
  EXPECT_EQ(Texts({"select * from pwds_capabilities where instance_id='do''g';"}), statements());
  EXPECT_EQ(Lines({reading()}), logged());
}

TEST_F(Watchdog, ReadersKeepTheNameLengthInTheEditFlag) {
  insert_row("dog");
  EXPECT_EQ(0, db_get_pwds_capablities(db, "dog", &record));
  EXPECT_EQ(64, record.ele_name_edit_supported);
  EXPECT_EQ(0x55555555, record.max_ele_name_len);

  Owned<pwds_capabilities_rec> records;
  EXPECT_EQ(0, db_get_all_pwds_capablities(db, &count, records.out()));
  EXPECT_EQ(64, records[0].ele_name_edit_supported);
  EXPECT_EQ(0, records[0].max_ele_name_len);
  logged();
}

TEST_F(Watchdog, GetCutsTextsAtTheirWidth) {
  insert_row("dog");
  for (const std::size_t length : {31u, 32u, 33u, 300u}) {
    SCOPED_TRACE(length);
    const std::string text(length, 'x');
    sql("update pwds_capabilities set ele_name = '" + text + "', req_states_supported = '" + text +
        "', act_on_exp_supported = '" + text + "', last_exp_data_supported = '" + text + "', wdt_data_supported = '" +
        text + "';");
    EXPECT_EQ(0, db_get_pwds_capablities(db, "dog", &record));
    EXPECT_EQ(text.substr(0, 256), field(record.ele_name));
    EXPECT_EQ(text.substr(0, 32), field(record.req_states_supported));
    EXPECT_EQ(text.substr(0, 32), field(record.act_on_exp_supported));
    EXPECT_EQ(text.substr(0, 32), field(record.last_exp_data_supported));
    EXPECT_EQ(text.substr(0, 32), field(record.wdt_data_supported));
    EXPECT_EQ(64, record.ele_name_edit_supported);
  }
  logged();
}

TEST_F(Watchdog, GetEmptiesWhatNullColumnsFill) {
  sql("insert into pwds_capabilities (instance_id) values ('dog');");
  EXPECT_EQ(0, db_get_pwds_capablities(db, "dog", &record));
  EXPECT_EQ(std::string(256, '\0'), std::string(record.ele_name, sizeof(record.ele_name)));
  EXPECT_EQ(std::string(32, '\0'), std::string(record.req_states_supported, sizeof(record.req_states_supported)));
  EXPECT_EQ(std::string(32, '\0'), std::string(record.act_on_exp_supported, sizeof(record.act_on_exp_supported)));
  EXPECT_EQ(std::string(32, '\0'), std::string(record.last_exp_data_supported, sizeof(record.last_exp_data_supported)));
  EXPECT_EQ(std::string(32, '\0'), std::string(record.wdt_data_supported, sizeof(record.wdt_data_supported)));
  EXPECT_EQ(0, record.ele_name_edit_supported);
  logged();
}

TEST_F(Watchdog, GetOfAnUnknownInstanceReturnsZeroAndLeavesTheRecord) {
  insert_row("dog");
  EXPECT_EQ(0, db_get_pwds_capablities(db, "cat", &record));
  expect_record_untouched();
  EXPECT_EQ(Lines({reading(), missing()}), logged());
}

TEST_F(Watchdog, GetWhoseStepFailsReturnsZeroAndLeavesTheRecord) {
  insert_row("dog");
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(0, db_get_pwds_capablities(db, "dog", &record));
  expect_record_untouched();
  EXPECT_EQ(Lines({reading(), missing()}), logged());
}

TEST_F(Watchdog, GetIgnoresTheCodeOfFinalize) {
  insert_row("dog");
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(0, db_get_pwds_capablities(db, "dog", &record));
  logged();
}

TEST_F(Watchdog, GetWithoutARecordReturnsOneAndAsksNothing) {
  EXPECT_EQ(1, db_get_pwds_capablities(db, "dog", nullptr));
  EXPECT_EQ(Texts(), statements());
}

TEST_F(Watchdog, GetWithoutATableReturnsOneWithANewlineBehindItsError) {
  sql("drop table pwds_capabilities;");
  EXPECT_EQ(1, db_get_pwds_capablities(db, "dog", &record));
  expect_record_untouched();
  EXPECT_EQ(Lines({error("SQL Compilation error: no such table: pwds_capabilities\n")}), logged());
}

TEST_F(Watchdog, GetWithoutAStatementReturnsZero) {
  boundary().miss_statement = 1;
  EXPECT_EQ(0, db_get_pwds_capablities(db, "dog", &record));
  expect_record_untouched();
  EXPECT_EQ(Lines({missing()}), logged());
}

TEST_F(Watchdog, GetWhoseTextCannotBeFormattedDoesNotCompile) {
  boundary().fail_text = 1;
  EXPECT_EQ(1, db_get_pwds_capablities(db, "dog", &record));
  EXPECT_EQ(Texts({"(null)"}), statements());
  EXPECT_EQ(1u, logged().size());
}

class AccountService : public DatabaseTest {
 protected:
  AccountService() : DatabaseTest("db_static_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table account_management_service (Name unique, RequestedState, EnabledState, ElementName);");
  }

  void expect_count_of_one(std::int32_t status) {
    account_management_service_rec record;
    std::int32_t count = -1;
    EXPECT_EQ(status, db_get_accountmgt_service(db, &record, &count));
    EXPECT_EQ(1, count);
  }
};

TEST_F(AccountService, GetSetsTheCountToOneOnEveryPath) {
  expect_count_of_one(1);
  sql("insert into account_management_service (Name) values ('AccountManagementService');");
  expect_count_of_one(0);
  boundary().miss_statement = 1;
  expect_count_of_one(1);
  sql("drop table account_management_service;");
  expect_count_of_one(1);
  logged();
}

}  // namespace
}  // namespace qmv::test
