#include <sqlite3.h>

#include "command_test.h"

namespace qmvctl::test {
namespace {

class Jobs : public CommandTest {
 protected:
  Jobs() { on_database({"init", "tmp_cim"}); }

  // A job of that name and state, with the time when it expires, in seconds since boot.
  void insert_job(const std::string& id, int state, int removal_time) {
    sql("insert into concrete_job (InstanceID, JobState, RemovalTime) values ('" + id + "', " + std::to_string(state) +
        ", " + std::to_string(removal_time) + ");");
  }

  void insert_error(const std::string& source) {
    sql("insert into error_info (ErrorSource) values ('" + source + "');");
  }

  // A job of each kind that a purge tells apart, with an error record each.
  void insert_jobs_to_purge() {
    insert_job("Done-1", 7, 1);
    insert_job("Failed-2", 10, 1);
    insert_job("Running-3", 4, 1);
    insert_job("Fresh-4", 7, 2147483647);
    for (const char* id : {"Done-1", "Failed-2", "Running-3", "Fresh-4"}) insert_error(id);
  }

  // The scratch database becomes the fixed one.
  void move_to_fixed_place() { std::filesystem::rename(database(), path("tmp_cim.db")); }

  // Members of the fixed database's rows.
  Json of_fixed_file(const std::vector<std::string>& arguments, const char* member) {
    Json members = Json::array();
    for (const Json& row : Json::parse(run(arguments).out)) members.push_back(row.at(member));
    return members;
  }
};

TEST_F(Jobs, AreShownWithAllThatTheLibraryReads) {
  sql("insert into concrete_job values ('Job-1', 'Flash', 10, 'verify failed', 1, '6,17', 40, '5', 1300);");
  const Json expected = {{"instance_id", "Job-1"},        {"element_name", "Flash"},    {"job_state", 10},
                         {"job_state_name", "Exception"}, {"percent_complete", 40},     {"job_status", "verify failed"},
                         {"operational_status", "6,17"},  {"time_before_removal", "5"}, {"delete_on_completion", 1}};
  EXPECT_EQ(rows({"jobs"}), Json::array({expected}));
}

TEST_F(Jobs, AreATableForPeople) {
  sql("insert into concrete_job values ('Job-1', 'Flash', 10, 'verify failed', 1, '6,17', 40, '5', 1300),"
      "('Job-20', 'Boot', 4, 'going', 0, '2', 100, '60', 9);");
  const std::string table =
      "InstanceID  Name   State      Percent  Status\n"
      "Job-1       Flash  Exception       40  verify failed\n"
      "Job-20      Boot   Running        100  going\n";
  EXPECT_EQ(on_database({"jobs", "--wide"}).out,
            "InstanceID  Name   State      Percent  Status         Operational status  Minutes kept  Delete\n"
            "Job-1       Flash  Exception       40  verify failed  6,17                           5       1\n"
            "Job-20      Boot   Running        100  going          2                             60       0\n");
  EXPECT_EQ(on_database({"jobs"}).out, table);
  EXPECT_NE(on_database({"jobs", "show", "Job-1"}).out.find("Exception (10)\n"), std::string::npos);
  EXPECT_EQ(on_database({"jobs", "list"}).out, table);
}

TEST_F(Jobs, StatesBearTheirNamesOrTheirNumbers) {
  const std::vector<std::pair<int, std::string>> states = {
      {-1, "state -1"},      {1, "state 1"},   {2, "New"},        {3, "Starting"}, {4, "Running"},    {5, "Suspended"},
      {6, "Shutting Down"},  {7, "Completed"}, {8, "Terminated"}, {9, "Killed"},   {10, "Exception"}, {11, "Service"},
      {12, "Query Pending"}, {13, "state 13"}};
  for (const auto& [state, name] : states) insert_job("Job-" + std::to_string(state), state, 0);
  const Json jobs = rows({"jobs"});
  ASSERT_EQ(jobs.size(), states.size());
  for (size_t i = 0; i < states.size(); ++i) EXPECT_EQ(jobs.at(i).at("job_state_name"), states[i].second);
}

TEST_F(Jobs, ErrorsAreShownByTheirSource) {
  sql("insert into error_info values ('Job-1', 4, 5, 6, 7, 1);");
  const Json expected = {{"error_source", "Job-1"}, {"error_source_format", 7}, {"error_type", 4},
                         {"perceived_severity", 5}, {"probable_cause", 6},      {"cim_status_code", 1}};
  EXPECT_EQ(rows({"jobs", "errors"}), Json::array({expected}));
  EXPECT_EQ(on_database({"jobs", "errors"}).out,
            "Source  Format  Type  Severity  Cause  CIM status\n"
            "Job-1        7     4         5      6           1\n");
}

TEST_F(Jobs, WithoutARowThereAreNone) {
  EXPECT_EQ(on_database({"jobs"}).out, "There are no jobs.\n");
  EXPECT_EQ(on_database({"jobs", "errors"}).out, "There are no error records.\n");
  EXPECT_EQ(rows({"jobs"}), Json::array());
  EXPECT_EQ(rows({"jobs", "errors"}), Json::array());
}

TEST_F(Jobs, OfHostileTextsAreShownBoundedAndPrintable) {
  const std::string too_long(300, 'x');
  sql("insert into concrete_job (InstanceID, JobStatus, OperationalStatus) values ('Job' || char(27) || '[2J-1', '" +
      too_long + "', '" + too_long + "');");
  sql("insert into error_info (ErrorSource) values ('" + too_long + "' || char(10));");
  EXPECT_NE(on_database({"jobs"}).out.find("\nJob.[2J-1 "), std::string::npos);
  EXPECT_EQ(rows({"jobs"}).at(0).at("instance_id"), "Job\x1B[2J-1");
  EXPECT_EQ(rows({"jobs"}).at(0).at("job_status"), std::string(64, 'x'));
  EXPECT_EQ(rows({"jobs"}).at(0).at("operational_status"), std::string(256, 'x'));
  EXPECT_EQ(rows({"jobs", "errors"}).at(0).at("error_source"), std::string(256, 'x'));
}

TEST_F(Jobs, AreThoseOfTheTemporaryDatabaseWithoutDb) {
  insert_job("Job-1", 4, 0);
  insert_error("Job-1");
  move_to_fixed_place();
  EXPECT_EQ(of_fixed_file({"jobs", "--json"}, "instance_id"), Json::array({"Job-1"}));
  EXPECT_EQ(of_fixed_file({"jobs", "errors", "--json"}, "error_source"), Json::array({"Job-1"}));
}

TEST_F(Jobs, OfAMissingFileFailAndItIsNotCreated) {
  for (const auto& command : {std::vector<std::string>{"jobs"}, {"jobs", "errors"}, {"jobs", "purge"}}) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qmvctl: /tmp/tmp_cim.db: No such file or directory (qmvctl init tmp_cim creates it)\n");
    EXPECT_FALSE(std::filesystem::exists(path("tmp_cim.db")));
  }
}

TEST_F(Jobs, OfAMissingTableFail) {
  sql("drop table concrete_job; drop table error_info;");
  testing::internal::CaptureStderr();
  const Outcome jobs = on_database({"jobs"});
  const Outcome errors = on_database({"jobs", "errors"});
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(jobs.status, 1);
  EXPECT_EQ(jobs.err,
            "qmvctl: " + database() +
                ": table concrete_job cannot be read: no such table: concrete_job (qmvctl check tmp_cim --db " +
                database() + " may tell why)\n");
  EXPECT_EQ(errors.status, 1);
  EXPECT_EQ(errors.err, "qmvctl: " + database() +
                            ": table error_info cannot be read: no such table: error_info (qmvctl check tmp_cim --db " +
                            database() + " may tell why)\n");
}

TEST_F(Jobs, PurgeDeletesFinishedExpiredJobsAndTheErrorsOfExpiredOnes) {
  insert_jobs_to_purge();
  move_to_fixed_place();
  EXPECT_EQ(run({"jobs", "purge"}).out, "purged 2 jobs and 3 error records\n");
  EXPECT_EQ(of_fixed_file({"jobs", "--json"}, "instance_id"), Json::array({"Running-3", "Fresh-4"}));
  EXPECT_EQ(of_fixed_file({"jobs", "errors", "--json"}, "error_source"), Json::array({"Fresh-4"}));
}

TEST_F(Jobs, PurgeNamesThemInJson) {
  insert_jobs_to_purge();
  move_to_fixed_place();
  const Outcome outcome = run({"jobs", "purge", "--json"});
  EXPECT_EQ(outcome.status, 0);
  const Json purged = {{"jobs", {"Done-1", "Failed-2"}}, {"errors", {"Done-1", "Failed-2", "Running-3"}}};
  EXPECT_EQ(Json::parse(outcome.out), Json({{"purged", purged}}));
}

TEST_F(Jobs, PurgeOfNothingSaysSo) {
  move_to_fixed_place();
  EXPECT_EQ(run({"jobs", "purge"}).out, "purged 0 jobs and 0 error records\n");
  EXPECT_EQ(Json::parse(run({"jobs", "purge", "--json"}).out),
            Json({{"purged", {{"jobs", Json::array()}, {"errors", Json::array()}}}}));
}

TEST_F(Jobs, PurgeRefusesANamedFile) {
  insert_jobs_to_purge();
  std::filesystem::copy(database(), path("tmp_cim.db"));
  const Outcome outcome = on_database({"jobs", "purge"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.err.find("--db: jobs purge works on /tmp/tmp_cim.db only: the library opens it by itself"),
            std::string::npos)
      << outcome.err;
  EXPECT_EQ(sql("select count(*) from concrete_job;"), "4");
  EXPECT_EQ(of_fixed_file({"jobs", "--json"}, "instance_id").size(), 4u);
}

TEST_F(Jobs, PurgeTakesTheFixedFileByName) {
  insert_jobs_to_purge();
  move_to_fixed_place();
  EXPECT_EQ(run({"jobs", "purge", "--db", "/tmp/tmp_cim.db"}).out, "purged 2 jobs and 3 error records\n");
}

TEST_F(Jobs, PurgeThatIsKeptFromDeletingFails) {
  insert_jobs_to_purge();
  move_to_fixed_place();
  sqlite3* reader = nullptr;
  sqlite3_open(path("tmp_cim.db").c_str(), &reader);
  sqlite3_exec(reader, "begin; select * from concrete_job;", nullptr, nullptr, nullptr);
  const Outcome outcome = run({"jobs", "purge"});
  sqlite3_close(reader);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "qmvctl: /tmp/tmp_cim.db: expired jobs that could not be deleted: 2\n");
}

TEST_F(Jobs, TakeOneSubcommandAtMost) {
  EXPECT_EQ(on_database({"jobs", "unknown"}).status, 2);
  EXPECT_EQ(on_database({"jobs", "list", "errors"}).status, 2);
  EXPECT_EQ(on_database({"jobs", "sensors"}).status, 2);
}

}  // namespace
}  // namespace qmvctl::test
