// Concrete jobs, table "concrete_job", and the clock that they are timed with. The number of the last job lives as long
// as the process, so a test that creates jobs runs in a process of its own.
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "qmv/jobs.h"
#include "unit/profile_rules.h"

namespace qmv::test {
namespace {

using Record = concrete_job_rec;

const ProfileTable& jobs_table() {
  static const ProfileTable table{
      "concrete_job",
      sizeof(Record),
      {TEXT(InstanceID, 64), TEXT(ElementName, 64), NUMBER(JobState), TEXT(JobStatus, 64), NUMBER(DeleteOnCompletion),
       TEXT(OperationalStatus, 256), NUMBER(PercentComplete), TEXT(TimeBeforeRemoval, 64), NUMBER(RemovalTime)},
      "InstanceID"};
  return table;
}

// Both readers leave RemovalTime, the last column, alone.
std::vector<Field> read_columns() {
  std::vector<Field> columns = jobs_table().fields;
  columns.pop_back();
  return columns;
}

INSTANTIATE_TEST_SUITE_P(ConcreteJobs, ProfileGetAll,
                         testing::Values(ProfileGetAllCase{
                             .name = "concrete_job",
                             .table = jobs_table(),
                             .call = erased<Record>([](sqlite3* db, std::int32_t* count, Record** jobs) {
                               return db_get_all_concretejob(db, jobs, count);
                             }),
                             .reading = "Get all regprofile from database",
                             .done = "Successfully got concrete_job",
                             .count_failed = "Fail to get concretejob records",
                             .reads = read_columns(),
                             .clears_the_pointer = true,
                         }));

INSTANTIATE_TEST_SUITE_P(ConcreteJobs, ProfileGetOne,
                         testing::Values(ProfileGetOneCase{
                             .name = "concrete_job",
                             .table = jobs_table(),
                             .call = erased<Record>([](sqlite3* db, const Texts& keys, Record** job) {
                               return db_get_concretejob(db, keys[0].c_str(), job);
                             }),
                             .keys = {"InstanceID"},
                             .statement = "select * from concrete_job where InstanceID='t100';",
                             .reading = "Get Registered profile record from database",
                             .no_row = "Fail to get the Concrete Job record",
                             .no_statement = "Fail to get Concrete Job record. SQLite stmt is NULL",
                             .reads = read_columns(),
                         }));

class ConcreteJobs : public TableTest {
 protected:
  ConcreteJobs() : TableTest("db_static_instance.c", jobs_table()) {}

  void boot(const std::string& uptime) { std::ofstream(scratch() + "/uptime") << uptime; }

  // A row of the table, with that number where one is given.
  void add(const std::string& identifier) { sql("insert into concrete_job (InstanceID) values (" + identifier + ");"); }
  void add_at(int number, const std::string& identifier) {
    sql("insert into concrete_job (rowid, InstanceID) values (" + std::to_string(number) + ", " + identifier + ");");
  }

  // A new job's identifier.
  std::string create(const std::string& base = "Job") {
    qmv::test::put(job.InstanceID, base);
    EXPECT_EQ(0, set());
    return field(job.InstanceID);
  }
  std::int32_t set() { return db_set_concretejob(db, &job, identifier); }

  // Of the table's rows, none was looked at.
  void expect_count_and_insert() {
    const Texts all = statements();
    ASSERT_EQ(2u, all.size());
    EXPECT_EQ("select count(*) from concrete_job;", all[0]);
    EXPECT_EQ(0u, all[1].find("insert into concrete_job "));
  }

  // The purge works on the temporary instance database, by a connection of its own.
  void make_file() {
    file = open(scratch() + "/tmp_cim.db");
    sql(file.get(),
        "create table concrete_job (InstanceID text, JobState integer, RemovalTime integer); create table error_info "
        "(ErrorSource text);");
  }

  // A job in the file, with an error record.
  void add_to_file(const std::string& identifier, int state, int time) {
    const std::string values = std::to_string(state) + "," + std::to_string(time);
    sql(file.get(), "insert into concrete_job values ('" + identifier + "'," + values +
                        "); insert into error_info values ('" + identifier + "');");
  }
  Texts jobs() { return rows_of(file.get(), "select InstanceID from concrete_job order by rowid;"); }
  Texts errors() { return rows_of(file.get(), "select ErrorSource from error_info order by rowid;"); }

  LogLine counted() const { return trace("Successfully returns the ssh count"); }
  LogLine present() const { return trace("AssignRole record is already present with that key"); }
  LogLine stored() const { return trace("Successfully update the concretejob record"); }

  Record job = {};
  char identifier[64] = {};
  Connection file;
};

TEST_F(ConcreteJobs, FirstJobOfAnEmptyTableIsNumberOne) {
  in_new_process([&] {
    EXPECT_EQ("Job-1", create());
    EXPECT_EQ(Lines({counted(), stored()}), logged());
    expect_count_and_insert();
    EXPECT_EQ("Job-1", value_of("select InstanceID from concrete_job;"));
  });
}

TEST_F(ConcreteJobs, NegativeCountIsTakenForAnEmptyTable) {
  in_new_process([&] {
    make_counts_negative();
    EXPECT_EQ("Job-1", create());
    expect_count_and_insert();
    logged();
  });
}

TEST_F(ConcreteJobs, FirstJobGoesOnFromTheRowWhoseNumberIsTheNumberOfRows) {
  in_new_process([&] {
    for (int row = 1; row <= 11; ++row) add("'Job-" + std::to_string(30 + row) + "'");
    add("'Job-17'");
    EXPECT_EQ("Job-18", create());
    const Texts all = statements();
    ASSERT_EQ(3u, all.size());
    EXPECT_EQ("select * from concrete_job where rowid='12';", all[1]);
    EXPECT_EQ(Lines({counted(), stored()}), logged());
  });
}

TEST_F(ConcreteJobs, NumberStandsBehindTheLastDashInDecimal) {
  in_new_process([&] {
    add("'Clear-12-Log-010'");
    EXPECT_EQ("Job-11", create());
    logged();
  });
}

TEST_F(ConcreteJobs, LaterJobsCountOnWithoutLookingAtTheTable) {
  in_new_process([&] {
    EXPECT_EQ("Job-1", create());
    sql("delete from concrete_job;");
    add("'Job-70'");
    statements();
    EXPECT_EQ("Clear-2", create("Clear"));
    EXPECT_EQ(1u, statements().size());
    EXPECT_EQ(Lines({counted(), stored(), stored()}), logged());
  });
}

class ConcreteJobWithoutANumber : public ConcreteJobs, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Newest, ConcreteJobWithoutANumber,
                         testing::Values("''", "'Job17'", "'Job-'", "'Job-x17'", "17"));

TEST_P(ConcreteJobWithoutANumber, BeginsAtOneAndIsLookedAtOnce) {
  in_new_process([&] {
    add(GetParam());
    EXPECT_EQ("Job-1", create());
    EXPECT_EQ("Job-2", create());
    EXPECT_EQ(Lines({counted(), stored(), stored()}), logged());
  });
}

TEST_F(ConcreteJobs, NewestRowThatIsMissingBeginsAtOne) {
  in_new_process([&] {
    add_at(5, "'Job-17'");
    EXPECT_EQ("Job-1", create());
    logged();
  });
}

TEST_F(ConcreteJobs, TableThatCannotBeCountedReturnsOneAndIsTriedAgain) {
  in_new_process([&] {
    sql("alter table concrete_job rename to elsewhere;");
    qmv::test::put(job.InstanceID, "Job");
    EXPECT_EQ(1, set());
    EXPECT_EQ("Job", field(job.InstanceID));
    EXPECT_EQ("", field(identifier));
    EXPECT_EQ(Texts({"select count(*) from concrete_job;"}), statements());
    EXPECT_EQ(Lines({no_such_table("concrete_job")}), logged());
    sql("alter table elsewhere rename to concrete_job;");
    add("'Job-17'");
    EXPECT_EQ("Job-18", create());
    logged();
  });
}

TEST_F(ConcreteJobs, NewestRowThatDoesNotCompileReturnsOne) {
  in_new_process([&] {
    add("'Job-17'");
    sql_before("select * from", "drop table concrete_job;");
    EXPECT_EQ(1, set());
    EXPECT_EQ(Lines({counted(), no_such_table("concrete_job")}), logged());
  });
}

TEST_F(ConcreteJobs, RecoveryReturnsOneWhateverSqliteAnswers) {
  in_new_process([&] {
    add("'Job-17'");
    boundary().steps = {{1, SQLITE_BUSY}};
    EXPECT_EQ(1, set()) << "the count";
    expect_left_open(1);
    boundary().prepares = {{2, SQLITE_INTERNAL}};
    EXPECT_EQ(1, set()) << "the newest row";
    EXPECT_EQ(Texts({"Job-17"}), rows_of("select InstanceID from concrete_job;"));
    logged();
  });
}

TEST_F(ConcreteJobs, NullIdentifierLeavesTheStatementOpen) {
  in_new_process([&] {
    add("NULL");
    EXPECT_EQ(1, set());
    EXPECT_EQ(Lines({counted()}), logged());
    EXPECT_EQ("1", value_of("select count(*) from concrete_job;"));
    expect_left_open(1);
  });
}

TEST_F(ConcreteJobs, FailingFinalizeReturnsOneAndKeepsTheNumber) {
  in_new_process([&] {
    add("'Job-17'");
    boundary().finalizes = {{2, SQLITE_IOERR}};  // the first is the count's
    EXPECT_EQ(1, set());
    EXPECT_EQ(Lines({counted()}), logged());
    sql("delete from concrete_job;");
    EXPECT_EQ("Job-18", create());
    EXPECT_EQ(Lines({stored()}), logged());
  });
}

TEST_F(ConcreteJobs, NumbersEndAtTheLargestAndBeginAgainAtOne) {
  in_new_process([&] {
    add("'Job-2147483646'");
    EXPECT_EQ("Job-2147483647", create());
    EXPECT_EQ("Job-1", create());
    logged();
  });
}

TEST_F(ConcreteJobs, NumberBeyondTheLargestIsTakenForTheLargest) {
  in_new_process([&] {
    add("'Job-99999999999999999999'");
    EXPECT_EQ("Job-1", create());
    logged();
  });
}

TEST_F(ConcreteJobs, NumberIsNotGivenBackWhenTheInsertFails) {
  in_new_process([&] {
    EXPECT_EQ("Job-1", create());
    boundary().execs = {{1, SQLITE_FULL}};
    EXPECT_EQ("Job-2", create());
    EXPECT_EQ("Job-3", create());
    EXPECT_EQ(Texts({"Job-1", "Job-3"}), rows_of("select InstanceID from concrete_job;"));
    EXPECT_EQ(Lines({counted(), stored(), execution_failed(), stored(), stored()}), logged());
  });
}

TEST_F(ConcreteJobs, IdentifierIsCutAt63Characters) {
  in_new_process([&] {
    Texts expected;
    for (const std::size_t length : {60u, 61u, 62u, 63u, 64u}) {
      const std::string base(length, 'x');
      expected.push_back((base + "-" + std::to_string(expected.size() + 1)).substr(0, 63));
      job.ElementName[0] = 'y';  // stands behind a base name without a terminator
      EXPECT_EQ(expected.back(), create(base));
    }
    EXPECT_EQ(Texts({expected[0], expected[1], expected[2], expected[3]}),
              rows_of("select InstanceID from concrete_job;"))
        << "the last is the one before, cut";
    logged();
  });
}

TEST_F(ConcreteJobs, IdentifierIsCopiedInItsWholeWidth) {
  in_new_process([&] {
    std::memset(identifier, 'x', sizeof(identifier));
    create("a name that is longer");
    create("Job");
    EXPECT_EQ(std::string(job.InstanceID, 64), std::string(identifier, 64));
    EXPECT_STREQ("Job-2", identifier);
    logged();
  });
}

TEST_F(ConcreteJobs, IdentifierEndsWithZerosWhateverStoodBehindTheBaseName) {
  in_new_process([&] {
    std::memset(job.InstanceID, 'x', sizeof(job.InstanceID));
    std::strcpy(job.InstanceID, "Job");
    EXPECT_EQ(0, set());
    EXPECT_EQ("Job-1" + std::string(59, '\0'), std::string(job.InstanceID, 64));
    logged();
  });
}

TEST_F(ConcreteJobs, SetStoresEveryFieldUnderItsColumn) {
  in_new_process([&] {
    const Bytes record = sample(100);
    std::memcpy(&job, record.data(), sizeof(job));
    EXPECT_EQ(0, set());
    EXPECT_EQ(Texts({"t100-1|t101|102|t103|104|t105|106|t107|0"}),
              rows_of("select InstanceID, ElementName, JobState, JobStatus, DeleteOnCompletion, OperationalStatus, "
                      "PercentComplete, TimeBeforeRemoval, RemovalTime from concrete_job;"));
    EXPECT_EQ(
        "insert into concrete_job (InstanceID, ElementName, JobState, JobStatus, DeleteOnCompletion, "
        "OperationalStatus, "
        "PercentComplete, TimeBeforeRemoval, RemovalTime) values ('t100-1', 't101', '102', 't103', '104', 't105', "
        "'106', "
        "'t107', '0');",
        statements().back());
    logged();
  });
}

TEST_F(ConcreteJobs, SetTakesQuotesAndPercentSignsAsTheyAre) {
  in_new_process([&] {
    qmv::test::put(job.ElementName, "it's 100%n");
    EXPECT_EQ("Bob's %d-1", create("Bob's %d"));
    EXPECT_EQ("Bob's %d-1|it's 100%n", value_of("select InstanceID, ElementName from concrete_job;"));
    logged();
  });
}

TEST_F(ConcreteJobs, SetReadsFieldsWithoutATerminatorUpToTheirWidth) {
  in_new_process([&] {
    std::memset(&job, '1', sizeof(job));
    EXPECT_EQ(0, set());
    for (const Field& each : texts()) {
      const std::string expected = each.offset == 0 ? std::string(63, '1') : std::string(each.width, '1');
      EXPECT_EQ(expected, TableTest::stored(each)) << each.column;
    }
    logged();
  });
}

// A row that is in the way of the first job, although no number is read back from it.
class ConcreteJobThatExists : public ConcreteJobs {
 protected:
  void SetUp() override {
    ConcreteJobs::SetUp();
    add_at(2, "'t100-1'");
    sql("update concrete_job set RemovalTime = 5;");
    const Bytes record = sample(100);
    std::memcpy(&job, record.data(), sizeof(job));
  }
};

TEST_F(ConcreteJobThatExists, IsUpdatedButForItsRemovalTime) {
  in_new_process([&] {
    EXPECT_EQ(0, set());
    EXPECT_EQ(Texts({"t100-1|t101|102|t103|104|t105|106|t107|5"}),
              rows_of("select InstanceID, ElementName, JobState, JobStatus, DeleteOnCompletion, OperationalStatus, "
                      "PercentComplete, TimeBeforeRemoval, RemovalTime from concrete_job;"));
    EXPECT_EQ(
        "update concrete_job set InstanceID='t100-1',ElementName='t101',JobState='102',JobStatus='t103',"
        "DeleteOnCompletion='104',OperationalStatus='t105',PercentComplete='106',TimeBeforeRemoval='t107' where "
        "InstanceID='t100-1';",
        statements().back());
    EXPECT_EQ(Lines({counted(), execution_failed(), present(), stored()}), logged());
  });
}

TEST_F(ConcreteJobThatExists, IsUpdatedWithTheQuotesOfItsTexts) {
  in_new_process([&] {
    const Bytes record = sample_with_quotes(100);
    std::memcpy(&job, record.data(), sizeof(job));
    sql("update concrete_job set InstanceID = 't''100-1';");
    EXPECT_EQ(0, set());
    EXPECT_EQ(Texts({"t'100-1|t'101|t'103|t'105|t'107"}),
              rows_of("select InstanceID, ElementName, JobStatus, OperationalStatus, TimeBeforeRemoval from "
                      "concrete_job;"));
    logged();
  });
}

TEST_F(ConcreteJobThatExists, IsStoredBoundedByTheWidthsToo) {
  in_new_process([&] {
    std::memset(&job, '1', sizeof(job));
    sql("update concrete_job set InstanceID = '" + std::string(63, '1') + "';");
    EXPECT_EQ(0, set());
    for (const Field& each : texts()) {
      const std::string expected = each.offset == 0 ? std::string(63, '1') : std::string(each.width, '1');
      EXPECT_EQ(expected, TableTest::stored(each)) << each.column;
    }
    logged();
  });
}

TEST_F(ConcreteJobThatExists, UpdateThatFailsIsNotReported) {
  in_new_process([&] {
    boundary().execs = {{2, SQLITE_FULL}};
    EXPECT_EQ(0, set());
    EXPECT_EQ(Lines({counted(), execution_failed(), present(), execution_failed(), stored()}), logged());
  });
}

struct Removal {
  const char* uptime;
  std::string minutes;
  std::int32_t time;
};

class ConcreteJobRemoval : public ConcreteJobs, public testing::WithParamInterface<Removal> {};

INSTANTIATE_TEST_SUITE_P(
    Of, ConcreteJobRemoval,
    testing::Values(Removal{"1000.9 1", "5", 1300}, Removal{"1000.9 1", "soon", 1000}, Removal{"1000.9 1", "", 1000},
                    Removal{"1000.9 1", " 7 minutes", 1420}, Removal{"1000.9 1", "0x10", 1000},
                    Removal{"1000.9 1", "-10", 400}, Removal{"0.0 0", "35791394", 2147483640},
                    Removal{"7.0 0", "35791394", 2147483647}, Removal{"8.0 0", "35791394", 2147483647},
                    Removal{"1.0 0", "2147483648", 2147483647}, Removal{"1.0 0", std::string(64, '9'), 2147483647},
                    Removal{"1.0 0", "-" + std::string(63, '9'), -2147483647 - 1}));

TEST_P(ConcreteJobRemoval, TimeIsTheUptimeAndTheMinutesInSeconds) {
  in_new_process([&] {
    boot(GetParam().uptime);
    qmv::test::put(job.TimeBeforeRemoval, GetParam().minutes);
    std::memset(job.OperationalStatus, '1', 5);  // stands behind minutes without a terminator
    create();
    EXPECT_EQ(GetParam().time, job.RemovalTime);
    EXPECT_EQ(std::to_string(GetParam().time), value_of("select RemovalTime from concrete_job;"));
    logged();
  });
}

TEST_F(ConcreteJobs, RemovalTimeCountsFromZeroWithoutAnUptime) {
  in_new_process([&] {
    scratch();
    qmv::test::put(job.TimeBeforeRemoval, "5");
    create();
    EXPECT_EQ(300, job.RemovalTime);
    logged();
  });
}

TEST_F(ConcreteJobs, UptimeIsZeroWithoutItsFile) {
  scratch();
  EXPECT_EQ(0, GetUpTime());
}

struct Uptime {
  const char* text;
  std::int32_t seconds;
};

class UptimeFile : public ConcreteJobs, public testing::WithParamInterface<Uptime> {};

INSTANTIATE_TEST_SUITE_P(Of, UptimeFile,
                         testing::Values(Uptime{"1000.99 3900.12\n", 1000}, Uptime{"0.5 0.1\n", 0}, Uptime{"-5.9", -5},
                                         Uptime{"", 0}, Uptime{"for ever", 0}, Uptime{"inf", 0}, Uptime{"-inf", 0},
                                         Uptime{"nan", 0}, Uptime{"2147483646.9", 2147483646},
                                         Uptime{"2147483648.0", 2147483647}, Uptime{"1e300", 2147483647},
                                         Uptime{"-1e300", -2147483647 - 1}));

TEST_P(UptimeFile, IsReadInWholeSecondsTowardZero) {
  boot(GetParam().text);
  EXPECT_EQ(GetParam().seconds, GetUpTime());
}

TEST_F(ConcreteJobs, UptimeFileIsClosedAgain) {
  boot("1.0 0");
  const auto descriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
  };
  const auto before = descriptors();
  GetUpTime();
  EXPECT_EQ(before, descriptors());
}

TEST_F(ConcreteJobs, DeleteRemovesTheJobAndSaysNothing) {
  for (const char* each : {"'Job-1'", "'Bob''s-2'"}) add(each);
  EXPECT_EQ(0, db_delete_concretejob(db, "Bob's-2"));
  EXPECT_EQ(Texts({"delete from concrete_job where InstanceID='Bob''s-2';"}), statements());
  EXPECT_EQ(Texts({"Job-1"}), rows_of("select InstanceID from concrete_job;"));
}

TEST_F(ConcreteJobs, DeleteAndModifyReturnZeroWhenTheyFail) {
  sql("drop table concrete_job;");
  EXPECT_EQ(0, db_delete_concretejob(db, "Job-1"));
  EXPECT_EQ(0, db_modify_concretejob(db, "Job-1", "", "", 0, 0));
  EXPECT_EQ(Lines({execution_failed(), execution_failed()}), logged());
}

TEST_F(ConcreteJobs, ModifyChangesStatusPercentageAndState) {
  insert(100);
  insert(200);
  sql("update concrete_job set InstanceID = 'Bob''s-2' where InstanceID = 't200';");
  EXPECT_EQ(0, db_modify_concretejob(db, "Bob's-2", "it's done", "won't go on", 100, 10));
  EXPECT_EQ(
      Texts({"Update concrete_job SET InstanceID='Bob''s-2',JobStatus='it''s done',OperationalStatus='won''t go on',"
             "PercentComplete='100',JobState='10' where InstanceID='Bob''s-2';"}),
      statements());
  EXPECT_EQ(
      Texts({"t100|t101|102|t103|104|t105|106|t107|108", "Bob's-2|t201|10|it's done|204|won't go on|100|t207|208"}),
      rows_of("select * from concrete_job;"));
}

class ConcreteJobPurge : public ConcreteJobs {
 protected:
  void SetUp() override {
    ConcreteJobs::SetUp();
    make_file();
  }
};

TEST_F(ConcreteJobPurge, DeletesErrorsFirstAndThenCompletedAndFailedJobs) {
  add_to_file("Job-1", 7, 900);
  add_to_file("Job-2", 10, 900);
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts({"/tmp/tmp_cim.db"}), boundary().opened);
  EXPECT_EQ(
      Texts({"select * from concrete_job where RemovalTime<='1000'",
             "delete from error_info where ErrorSource='Job-1';", "delete from error_info where ErrorSource='Job-2';",
             "delete from concrete_job where RemovalTime<='1000' and JobState='7';",
             "delete from concrete_job where RemovalTime<='1000' and JobState='10';"}),
      statements());
  EXPECT_EQ(Texts(), jobs());
  EXPECT_EQ(Texts(), errors());
}

TEST_F(ConcreteJobPurge, TakesJobsOfNowAndLeavesLaterOnes) {
  add_to_file("Job-1", 7, 1000);
  add_to_file("Job-2", 7, 1001);
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts({"Job-2"}), jobs());
  EXPECT_EQ(Texts({"Job-2"}), errors());
}

TEST_F(ConcreteJobPurge, JobThatIsNotFinishedLosesItsErrorsOnly) {
  for (const int state : {4, 8, 9, 11}) add_to_file("Job-" + std::to_string(state), state, 0);
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts({"Job-4", "Job-8", "Job-9", "Job-11"}), jobs());
  EXPECT_EQ(Texts(), errors());
}

TEST_F(ConcreteJobPurge, PassesOverAJobWithoutAnIdentifier) {
  sql(file.get(), "insert into concrete_job values (NULL, 4, 0); insert into error_info values (NULL), ('');");
  add_to_file("Job-2", 4, 0);
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts({"NULL", ""}), errors());
  EXPECT_EQ("delete from error_info where ErrorSource='Job-2';", statements()[1]);
}

TEST_F(ConcreteJobPurge, ReadsQuotesInAnIdentifierAsTheyAre) {
  add_to_file("Bob''s-1", 7, 0);
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts(), errors());
}

TEST_F(ConcreteJobs, PurgeTakesAPercentSignInAnIdentifierAsADirective) {
  make_file();
  for (const auto& [job, source] : std::map<std::string, std::string>{{"50%-1", "50"},
                                                                      {"5%%-1", "5%-1';"},
                                                                      {"%d-1", "-1';"},
                                                                      {"%n%s%z%q-1", "-1';"},
                                                                      {"%9999999d-1", "-1';"},
                                                                      {"%*.*f-1", "-1';"}}) {
    sql(file.get(), "delete from error_info;");
    add_to_file(job, 7, 0);
    statements();
    db_clear_expired_concretejob(1000);
    EXPECT_EQ("delete from error_info where ErrorSource='" + source, statements()[1]);
    EXPECT_EQ(Texts({job}), errors());
    EXPECT_EQ(Texts(), jobs());
  }
  EXPECT_EQ(Lines({execution_failed()}), logged()) << "the first ends in its quotes";
}

TEST_F(ConcreteJobPurge, GoesOnBehindErrorsThatCannotBeDeleted) {
  add_to_file("50%-1", 7, 0);
  add_to_file("Job-2", 7, 0);
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts({"50%-1"}), errors());
  EXPECT_EQ(Lines({execution_failed()}), logged());
}

TEST_F(ConcreteJobPurge, ErrorsWhoseDeleteCannotBeFormattedStay) {
  add_to_file("Job-1", 7, 0);
  add_to_file("Job-2", 7, 0);
  boundary().fail_text = 2;  // the first is the select
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts({"Job-1"}), errors());
  EXPECT_EQ(Texts(), jobs());
}

TEST_F(ConcreteJobPurge, ReturnsSilentlyWithoutItsFile) {
  boundary().fixed_files = "/nonexistent";
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts(), statements());
}

TEST_F(ConcreteJobs, PurgeThatDoesNotCompileLeavesItsConnectionOpen) {
  scratch();
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Texts({"select * from concrete_job where RemovalTime<='1000'"}), statements());
  EXPECT_EQ(Lines({no_such_table("concrete_job")}), logged());
  expect_left_connected(1, 0);
}

TEST_F(ConcreteJobPurge, DoesNotWaitForALock) {
  add_to_file("Job-1", 7, 0);
  sql(file.get(), "begin exclusive;");
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(Lines({error("SQL Compilation error: database is locked")}), logged());
  EXPECT_EQ(0, boundary().busy_handlers_installed);
  expect_left_connected(1, 0);
}

TEST_F(ConcreteJobPurge, IgnoresDeletesThatFail) {
  add_to_file("Job-1", 7, 0);
  sql(file.get(), "begin immediate;");
  std::vector<int> open;
  boundary().while_logging = [&open] { open.push_back(boundary().statements_alive); };
  db_clear_expired_concretejob(1000);
  EXPECT_EQ(4u, statements().size());
  EXPECT_EQ(std::vector<int>({1, 0, 0}), open) << "the select ends before the jobs are deleted";
  EXPECT_EQ(Lines({execution_failed(), execution_failed(), execution_failed()}), logged());
}

}  // namespace
}  // namespace qmv::test
