// The indication service, event types and error records: their tables, and what is theirs alone.
#include <cstddef>
#include <cstdlib>
#include <string>
#include <utility>

#include "qmv/indications.h"
#include "qmv/jobs.h"
#include "unit/profile_rules.h"

namespace qmv::test {
namespace {

const ProfileTable& indication_services() {
  using Record = indication_service_rec;
  static const ProfileTable kTable = {
      .name = "indication_service",
      .record_size = sizeof(Record),
      .fields = {TEXT(Name, 256), NUMBER(FilterCreationEnabled), NUMBER(DeliveryRetryAttempts),
                 NUMBER(DeliveryRetryInterval), NUMBER(SubscriptionRemovalAction),
                 NUMBER(SubscriptionRemovalTimeInterval)},
      .key = "Name",
  };
  return kTable;
}

const ProfileTable& indication_service() {
  static const ProfileTable kTable = with_only_row(indication_services(), "IndicationService");
  return kTable;
}

const ProfileTable& event_types() {
  using Record = event_type_rec;
  static const ProfileTable kTable = {
      .name = "event_type",
      .record_size = sizeof(Record),
      .fields = {NUMBER(MessageID), TEXT(Description, 256)},
      .key = "MessageID",
  };
  return kTable;
}

const ProfileTable& errors() {
  using Record = error_info_rec;
  static const ProfileTable kTable = {
      .name = "error_info",
      .record_size = sizeof(Record),
      .fields = {TEXT(ErrorSource, 256), NUMBER(ErrorType), NUMBER(PerceivedSeverity), NUMBER(ProbableCause),
                 NUMBER(ErrorSourceFormat), NUMBER(CIMStatusCode)},
      .key = "ErrorSource",
  };
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    {.name = "Errors",
     .table = errors(),
     .call = erased<error_info_rec>(db_get_all_error_info),
     .reading = "Get all errors from database",
     .done = "Successfully got all elec",
     .count_failed = "Fail to get the error record ",
     .passes_codes_on = true,
     .without_memory = 7},
};

const ProfileGetOneCase kGetOne[] = {
    {.name = "TheIndicationService",
     .table = indication_service(),
     .call = filling_by_nothing(db_get_indication_service),
     .keys = {"Name"},
     .statement = "select * from indication_service where Name='IndicationService';",
     .reading = "Get assign role from database",
     .done = "Successfully got acc_mgt",
     .no_row = "Fail to get indication_service",
     .no_statement = "Fail to get indication_service",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
    {.name = "EventType",
     .table = event_types(),
     .call = filling_by_text(db_get_MessageID),
     .keys = {"Description"},
     .statement = "select * from event_type where Description='t101';",
     .reading = "Get Event Type from database",
     .done = "Successfully got the Event Type MessageID.",
     .no_row = "Fail to get event type MessageID records",
     .no_statement = "Fail to get event type Message record",
     .into = Into::kCallersRecord,
     .says_reading_before_the_step = true},
    {.name = "Error",
     .table = errors(),
     .call = by_text(db_get_error_info),
     .keys = {"ErrorSource"},
     .statement = "select * from error_info where ErrorSource='t100';",
     .reading = "Get Errors from database",
     .no_row = "Fail to get the Error record",
     .no_statement = "Fail to get Error record. SQLite stmt is NULL",
     .passes_codes_on = true,
     .without_memory = 7},
};

const ProfileSetCase kSet[] = {
    {.name = "IndicationService",
     .table = indication_services(),
     .call = storing(db_set_indication_service),
     .insert = "insert into indication_service "
               "(Name,FilterCreationEnabled,DeliveryRetryAttempts,DeliveryRetryInterval,SubscriptionRemovalAction,     "
               "           SubscriptionRemovalTimeInterval) values ('t100', '101', '102', '103', '104', '105');",
     .update = "update indication_service set Name='t100', FilterCreationEnabled=101,                         "
               "DeliveryRetryAttempts=102, DeliveryRetryInterval=103, SubscriptionRemovalAction=104,                   "
               "      SubscriptionRemovalTimeInterval=105 where Name='t100' ;",
     .present = "AssignRole record is already present with that key",
     .done = "Successfully update the db_set_indication_service record"},
    {.name = "EventType",
     .table = event_types(),
     .call = storing(db_set_EventType_Data),
     .insert = "insert into event_type (MessageID,Description)                         values (100, 't101');",
     .update = "update event_type set MessageID=100, Description='t101' where MessageID=100;",
     .present = "Event Type Data record is already present with that key",
     .done = "Successfully update the EventType Data record"},
    {.name = "Error",
     .table = errors(),
     .call = storing(db_set_error_info),
     .insert = "insert into error_info "
               "(ErrorSource,ErrorType,PerceivedSeverity,ProbableCause,ErrorSourceFormat,CIMStatusCode)                "
               " values ('t100', '101', '102', '103', '104', '105');",
     .update = "update error_info set "
               "ErrorSource='t100',ErrorType='101',PerceivedSeverity='102',ProbableCause='103',ErrorSourceFormat='104',"
               "CIMStatusCode='105' where ErrorSource='t100';",
     .present = "Error info is already present with that key",
     .done = "Successfully update the Error record"},
};

INSTANTIATE_TEST_SUITE_P(IndicationService, ProfileGetAll, testing::ValuesIn(kGetAll),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(IndicationService, ProfileGetOne, testing::ValuesIn(kGetOne),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(IndicationService, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

class EventType : public DatabaseTest {
 protected:
  EventType() : DatabaseTest("db_static_instance.c") {}
};

TEST_F(EventType, FirstOfSeveralWithThatDescriptionIsRead) {
  sql("create table event_type (MessageID, Description);"
      "insert into event_type values (7, 'fan'), (5, 'power'), (6, 'power');");
  event_type_rec record;
  EXPECT_EQ(0, db_get_MessageID(db, "power", &record));
  EXPECT_EQ(5, record.MessageID);
  logged();
}

TEST(ErrorInfo, SourceIsTheFourthMemberOfTheRecord) {
  EXPECT_EQ(0u, offsetof(error_info_rec, ErrorType));
  EXPECT_EQ(4u, offsetof(error_info_rec, PerceivedSeverity));
  EXPECT_EQ(8u, offsetof(error_info_rec, ProbableCause));
  EXPECT_EQ(12u, offsetof(error_info_rec, ErrorSource));
  EXPECT_EQ(268u, offsetof(error_info_rec, ErrorSourceFormat));
  EXPECT_EQ(272u, offsetof(error_info_rec, CIMStatusCode));
}

// Error records from the jobs of the command-line shell.
class ShellJobError : public DatabaseTest {
 protected:
  ShellJobError() : DatabaseTest("db_static_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table jobs (jobid, state, c2, c3, c4, c5, c6, error_type, c8, status_code, c10, severity, cause, "
        "c13);");
  }

  // A job in that state; column n holds first + n otherwise.
  void insert_job(const std::string& id, int first, const std::string& state = "10") {
    std::string values = id + ", " + state;
    for (int i = 2; i < 14; ++i) values += ", " + std::to_string(first + i);
    sql("insert into jobs values (" + values + ");");
  }

  std::int32_t get(const std::string& source) { return db_get_clp_error_info(db, source.c_str(), &record_); }

  void expect_nothing_stored() const { EXPECT_EQ(&untouched_, record_); }

  // Which job a source names.
  std::string job_of(const std::string& source) {
    get(source);
    const std::string start = "select * from jobs where jobid=";
    const std::string statement = statements().back();
    EXPECT_EQ(start, statement.substr(0, start.size()));
    return statement.substr(start.size());
  }

  void TearDown() override {
    if (record_ != &untouched_) std::free(record_);
    DatabaseTest::TearDown();
  }

  error_info_rec untouched_;
  error_info_rec* record_ = &untouched_;
};

TEST_F(ShellJobError, IsMadeOfTheJobsColumnsInSilence) {
  insert_job("41", 200);
  insert_job("42", 100);
  ASSERT_EQ(0, get("smashjob42"));
  EXPECT_EQ(sizeof(error_info_rec), size_of(record_));
  EXPECT_EQ(107, record_->ErrorType);
  EXPECT_EQ(111, record_->PerceivedSeverity);
  EXPECT_EQ(112, record_->ProbableCause);
  EXPECT_EQ("smashjob42", field(record_->ErrorSource));
  EXPECT_EQ(0, record_->ErrorSourceFormat);
  EXPECT_EQ(109, record_->CIMStatusCode);
  EXPECT_EQ(Texts({"select * from jobs where jobid=42"}), statements());
}

TEST_F(ShellJobError, NumberStartsAtTheNinthCharacter) {
  EXPECT_EQ("9", job_of("123456789"));
  EXPECT_EQ("42", job_of("????????42"));
  EXPECT_EQ("42", job_of("smashjob 42abc"));
  EXPECT_EQ("-3", job_of("smashjob-3"));
  EXPECT_EQ("10", job_of("smashjob010"));
  EXPECT_EQ("0", job_of("smashjobabc"));
}

TEST_F(ShellJobError, SourceOfUpToEightCharactersIsJobZero) {
  for (std::size_t length = 0; length <= 8; ++length) {
    SCOPED_TRACE(length);
    char source[] = "1234567899";
    source[length] = 0;
    db_get_clp_error_info(db, source, &record_);
    EXPECT_EQ(Texts({"select * from jobs where jobid=0"}), statements());
  }
}

TEST_F(ShellJobError, NumberOutOfRangeIsTheNearest) {
  EXPECT_EQ("2147483647", job_of("smashjob2147483648"));
  EXPECT_EQ("2147483647", job_of("smashjob4294967298"));
  EXPECT_EQ("2147483647", job_of("smashjob99999999999999999999"));
  EXPECT_EQ("-2147483648", job_of("smashjob-4294967298"));
}

TEST_F(ShellJobError, JobInAnotherStateHasNone) {
  for (const char* state : {"7", "0", "-10", "NULL"}) {
    SCOPED_TRACE(state);
    sql("delete from jobs;");
    insert_job("42", 100, state);
    EXPECT_EQ(1, get("smashjob42"));
    expect_nothing_stored();
  }
}

TEST_F(ShellJobError, WithoutAJobIsOneInSilence) {
  insert_job("42", 100);
  EXPECT_EQ(1, get("smashjob43"));
  expect_nothing_stored();
}

TEST_F(ShellJobError, WithoutATableIsOneInSilence) {
  sql("drop table jobs;");
  EXPECT_EQ(1, get("smashjob42"));
  expect_nothing_stored();
}

TEST_F(ShellJobError, WithoutAStatementIsZero) {
  insert_job("42", 100);
  boundary().miss_statement = 1;
  EXPECT_EQ(0, get("smashjob42"));
  expect_nothing_stored();
}

TEST_F(ShellJobError, OfAJobThatCannotBeReadIsOne) {
  insert_job("42", 100);
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(1, get("smashjob42"));
  expect_nothing_stored();
}

TEST_F(ShellJobError, WhoseTextCannotBeFormattedIsOneInSilence) {
  insert_job("42", 100);
  boundary().fail_text = 1;
  EXPECT_EQ(1, get("smashjob42"));
  EXPECT_EQ(Texts({"(null)"}), statements());
  expect_nothing_stored();
}

TEST_F(ShellJobError, WithoutMemoryIsSevenWithItsStatementFinalised) {
  insert_job("42", 100);
  boundary().fail_allocation = 1;
  EXPECT_EQ(7, get("smashjob42"));
  EXPECT_EQ(nullptr, record_);
  EXPECT_EQ(Lines({trace("Memory allocation error")}), logged());
}

TEST_F(ShellJobError, SourceIsCutAtItsWidthAndLeavesTheFormatZero) {
  insert_job("42", 100);
  for (const std::size_t length : {255u, 256u, 257u, 5000u}) {
    SCOPED_TRACE(length);
    const std::string source = "smashjob42" + std::string(length - 10, 'x');
    ASSERT_EQ(0, get(source));
    EXPECT_EQ(source.substr(0, 256), field(record_->ErrorSource));
    EXPECT_EQ(0, record_->ErrorSourceFormat);
    EXPECT_EQ(109, record_->CIMStatusCode);
    std::free(std::exchange(record_, &untouched_));
  }
}

TEST_F(ShellJobError, NullColumnsAreZero) {
  sql("insert into jobs (jobid, state) values (42, 10);");
  ASSERT_EQ(0, get("smashjob42"));
  EXPECT_EQ(0, record_->ErrorType);
  EXPECT_EQ(0, record_->PerceivedSeverity);
  EXPECT_EQ(0, record_->ProbableCause);
  EXPECT_EQ(0, record_->CIMStatusCode);
}

}  // namespace
}  // namespace qmv::test
