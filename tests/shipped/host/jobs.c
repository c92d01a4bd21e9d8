/* The clock, concrete jobs and error records. */
#include <string.h>

#include "host.h"

static void tells_the_time(void) {
  uptime = NULL;
  CHECK_INT(0, GetUpTime());
  uptime = "1000.90 1900.00\n";
  CHECK_INT(1000, GetUpTime());
}

/* A job that may go five minutes after it is stored. */
static concrete_job_rec new_job(struct sqlite3* db, const char* identifier) {
  concrete_job_rec job;
  char named[64] = "";
  FILL(job);
  SET(job.InstanceID, "Job");
  SET(job.TimeBeforeRemoval, "5");
  CHECK_INT(0, db_set_concretejob(db, &job, named));
  CHECK_TEXT(identifier, named);
  CHECK_FIELD(identifier, job.InstanceID);
  CHECK_INT(1300, job.RemovalTime);
  job.RemovalTime = 0; /* is not read back */
  return job;
}

static void names_and_changes_jobs(struct sqlite3* db) {
  concrete_job_rec job, *read = NULL;
  int32_t count = -1;
  RUN(db, "insert into concrete_job (InstanceID) values ('a'), ('b'), ('Job-17')");
  job = new_job(db, "Job-18");
  CHECK_FOUND(job, db_get_concretejob, "Job-18");

  SET(job.JobStatus, "it's done");
  SET(job.OperationalStatus, "2, 17");
  job.PercentComplete = 100;
  job.JobState = 7;
  CHECK_INT(0, db_modify_concretejob(db, "Job-18", "it's done", "2, 17", 100, 7));
  RUN(db, "delete from concrete_job where InstanceID in ('a', 'b', 'Job-17')");
  CHECK_INT(0, db_get_all_concretejob(db, &read, &count));
  CHECK_INT(1, count);
  CHECK_RECORD(job, read);
  RELEASE(read);

  new_job(db, "Job-19");
  CHECK_INT(0, db_delete_concretejob(db, "Job-19"));
  CHECK_INT(1, value_of(db, "select count(*) from concrete_job"));
}

static void keeps_errors(struct sqlite3* db) {
  error_info_rec stored, *read = NULL;
  STORE(stored, ErrorSource, "Job-18", db_set_error_info);
  stored.CIMStatusCode = 4;
  CHECK_INT(0, db_set_error_info(db, &stored));
  CHECK_FOUND(stored, db_get_error_info, "Job-18");
  CHECK_LISTED(stored, db_get_all_error_info);
}

static void purges(struct sqlite3* db) {
  db_clear_expired_concretejob(1299);
  CHECK_INT(1, value_of(db, "select count(*) from concrete_job"));
  CHECK_INT(1, value_of(db, "select count(*) from error_info"));
  db_clear_expired_concretejob(1300);
  CHECK_INT(0, value_of(db, "select count(*) from concrete_job"));
  CHECK_INT(0, value_of(db, "select count(*) from error_info"));
}

static void finds_errors_of_the_shell(void) {
  sqlite3* db = NULL;
  error_info_rec expected, *read = NULL;
  CHECK_INT(SQLITE_OK, smash_db_init(&db));
  make_tables(db, "smashclp.sql");
  RUN(db,
      "insert into jobs (jobid, state, errtype, cimstat, severity, probcause) "
      "values (20, 10, 1, 2, 3, 4), (21, 7, 1, 2, 3, 4)");
  memset(&expected, 0, sizeof expected);
  SET(expected.ErrorSource, "CLP job 20");
  expected.ErrorType = 1;
  expected.CIMStatusCode = 2;
  expected.PerceivedSeverity = 3;
  expected.ProbableCause = 4;
  CHECK_FOUND(expected, db_get_clp_error_info, "CLP job 20");
  CHECK_INT(1, db_get_clp_error_info(db, "CLP job 21", &read));
  CLOSE(db);
}

void jobs(void) {
  sqlite3* db = NULL;
  CHECK_INT(SQLITE_OK, tmp_db_init(&db));
  make_tables(db, "tmp_cim.sql");
  tells_the_time();
  names_and_changes_jobs(db);
  keeps_errors(db);
  purges(db);
  CLOSE(db);
  finds_errors_of_the_shell();
}
