// Sample: jobs that have ended, one well and one in an error.
#include "sample.h"
#include "sample_rows.h"
#include "text.h"

namespace qmvctl {

namespace {

// JobState is completed (7) and exception (10), OperationalStatus completed (17) with OK (2) and error (6). The library
// makes identifiers of the base names, "QMV:Job-1", and keeps the jobs for an hour.
constexpr concrete_job_rec kCompleted = {"QMV:Job", "Clear Event Log", 7, "Completed", 0, "60", "2,17", 100, 0};
constexpr concrete_job_rec kFailed = {"QMV:Job", "Power Cycle", 10, "Exception", 0, "60", "6,17", 0, 0};

// An unavailable resource (9), medium (3), of unknown cause (0); the CIM operation failed (1).
constexpr error_info_rec kError = {9, 3, 0, "", 1, 1};

// Returns the job under its identifier.
concrete_job_rec store_job(const Database& database, concrete_job_rec job) {
  char identifier[sizeof job.InstanceID];
  store_row(database, "concrete_job", [&] { return db_set_concretejob(database.handle(), &job, identifier); });
  return job;
}

}  // namespace

void store_sample_jobs(Database& database) {
  store_job(database, kCompleted);
  error_info_rec error = kError;
  store_text(text_of(store_job(database, kFailed).InstanceID), error.ErrorSource);
  store_row(database, "error_info", [&] { return db_set_error_info(database.handle(), &error); });
}

// The shell's jobs have no setter, since the shell writes them itself.
void store_sample_shell_jobs(Database& database) {
  store_row(database, "jobs", [&] {
    return db_execute(database.handle(),
                      "insert into jobs values (1, 7, 'show /system1', 'admin', 320, 321, 100, 0, '', 0, '', 0, 0, ''),"
                      " (2, 10, 'reset /system1', 'monitor', 410, 411, 0, 7, 'Security Error', 2,"
                      " 'CIM_ERR_ACCESS_DENIED', 2, 0, 'Unknown');");
  });
}

}  // namespace qmvctl
