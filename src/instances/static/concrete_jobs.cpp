// Concrete jobs, table "concrete_job", and the library's clock.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/formatted_twice.h"
#include "core/own_connection.h"
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using Record = concrete_job_rec;

constexpr char kTable[] = "concrete_job";

// RemovalTime, the last column, is written by the insert only.
constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(JobState), QMV_COLUMN(JobStatus),
                    QMV_COLUMN(DeleteOnCompletion), QMV_COLUMN(OperationalStatus), QMV_COLUMN(PercentComplete),
                    QMV_COLUMN(TimeBeforeRemoval));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get concretejob records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all regprofile from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got concrete_job",
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get Concrete Job record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the Concrete Job record",
    .reading = "[%s:%d]Get Registered profile record from database",
    .done = kSilent,
};

using Jobs = Table<kTable, kColumns, kGetAll, kGetOne>;

// CIM_ConcreteJob.JobState: the states in which a job is finished.
constexpr std::int32_t kCompleted = 7;
constexpr std::int32_t kException = 10;

constexpr std::int64_t kSecondsPerMinute = 60;

// The number in the last generated identifier, 0 before the first. Without a lock: one thread creates jobs.
std::int32_t last_number = 0;

std::int32_t clamped(std::int64_t number) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, INT32_MIN, INT32_MAX));
}

// A number at the beginning of a text field, which need not be terminated.
template <std::size_t Width>
std::int64_t leading_number(const char (&field)[Width]) {
  char text[Width + 1] = {};
  std::memcpy(text, field, strnlen(field, Width));
  return std::strtoll(text, nullptr, 10);
}

// Reads the last number back from the row that is taken to be the newest. Returns 1 when that fails.
std::int32_t recover_number(sqlite3* db, Site site) {
  std::int32_t rows = 0;
  if (db_get_cnt(db, &rows, kTable) != kOk) return kFailure;
  if (rows <= 0) return kOk;
  const SqlText text(sqlite3_mprintf("select * from %q where rowid='%i';", kTable, rows));
  Statement newest;
  if (newest.compile(db, site, text) != SQLITE_OK) return kFailure;
  if (newest.step() == SQLITE_ROW) {
    const auto* identifier = reinterpret_cast<const char*>(sqlite3_column_text(newest.get(), 0));
    if (identifier == nullptr) {
      // QUIRK: A NULL identifier leaves its statement open. Test: ConcreteJobs.NullIdentifierLeavesTheStatementOpen.
      newest.leave_open();
      return kFailure;
    }
    const char* dash = std::strrchr(identifier, '-');
    if (dash != nullptr) last_number = clamped(std::strtoll(dash + 1, nullptr, 10));
  }
  return newest.finalize() == SQLITE_OK ? kOk : kFailure;
}

// Makes the identifier of a new job from the base name in its place. Numbers are never given back.
void name_job(concrete_job_rec* job) {
  char base[sizeof(job->InstanceID)];
  std::memcpy(base, job->InstanceID, sizeof(base));
  last_number = last_number == INT32_MAX ? 1 : last_number + 1;
  std::memset(job->InstanceID, 0, sizeof(job->InstanceID));
  std::snprintf(job->InstanceID, sizeof(job->InstanceID), "%.*s-%d", static_cast<int>(strnlen(base, sizeof(base))),
                base, last_number);
}

std::int32_t insert_job(sqlite3* db, const concrete_job_rec& job) {
  return db_execute(db,
                    "insert into %q (InstanceID, ElementName, JobState, JobStatus, DeleteOnCompletion, "
                    "OperationalStatus, PercentComplete, TimeBeforeRemoval, RemovalTime) values ('%.64q', '%.64q', "
                    "'%i', '%.64q', '%i', '%.256q', '%i', '%.64q', '%i');",
                    kTable, job.InstanceID, job.ElementName, job.JobState, job.JobStatus, job.DeleteOnCompletion,
                    job.OperationalStatus, job.PercentComplete, job.TimeBeforeRemoval, job.RemovalTime);
}

// The update leaves RemovalTime as it was.
void update_job(sqlite3* db, const concrete_job_rec& job) {
  db_execute(db,
             "update %q set "
             "InstanceID='%.64q',ElementName='%.64q',JobState='%i',JobStatus='%.64q',DeleteOnCompletion='%i',"
             "OperationalStatus='%.256q',PercentComplete='%i',TimeBeforeRemoval='%.64q' where InstanceID='%.64q';",
             kTable, job.InstanceID, job.ElementName, job.JobState, job.JobStatus, job.DeleteOnCompletion,
             job.OperationalStatus, job.PercentComplete, job.TimeBeforeRemoval, job.InstanceID);
}

// Deletes the error records of a job. QUIRK: The statement is formatted a second time, so a '%' in the identifier is
// taken as a directive: the records are not found, and those of another source can be deleted in their place.
// Test: ConcreteJobs.PurgeTakesAPercentSignInAnIdentifierAsADirective.
void delete_errors_of(sqlite3* db, const char* identifier) {
  SqlText text(sqlite3_mprintf("delete from %q where ErrorSource='%q';", "error_info", identifier));
  if (text.get() == nullptr) return;
  format_without_arguments(text.get());
  db_execute(db, "%s", text.get());
}

}  // namespace

std::int32_t GetUpTime(void) noexcept {
  std::FILE* file = std::fopen("/proc/uptime", "r");
  if (file == nullptr) return 0;
  double seconds = 0.0;
  if (std::fscanf(file, "%lf", &seconds) != 1) seconds = 0.0;
  std::fclose(file);
  if (!std::isfinite(seconds)) return 0;
  return static_cast<std::int32_t>(std::clamp<double>(seconds, INT32_MIN, INT32_MAX));
}

std::int32_t db_set_concretejob(sqlite3* db, concrete_job_rec* job, char* new_instance_id) noexcept {
  const Site site = here();
  if (last_number == 0 && recover_number(db, site) != kOk) return kFailure;
  name_job(job);
  std::memcpy(new_instance_id, job->InstanceID, sizeof(job->InstanceID));
  const std::int64_t minutes = clamped(leading_number(job->TimeBeforeRemoval));
  job->RemovalTime = clamped(GetUpTime() + kSecondsPerMinute * minutes);
  if (insert_job(db, *job) == SQLITE_CONSTRAINT) {
    trace(site, Message("[%s:%d]AssignRole record is already present with that key"));
    update_job(db, *job);
  }
  trace(site, Message("[%s:%d]Successfully update the concretejob record"));
  return kOk;
}

std::int32_t db_get_concretejob(sqlite3* db, const char* InstanceID, concrete_job_rec** job) noexcept {
  return get_one<Jobs>(here(), db, job, InstanceID);
}

std::int32_t db_get_all_concretejob(sqlite3* db, concrete_job_rec** jobs, std::int32_t* count) noexcept {
  return profile::list<Jobs>(here(), db, count, jobs);
}

std::int32_t db_delete_concretejob(sqlite3* db, const char* InstanceID) noexcept {
  db_execute(db, "delete from %q where InstanceID='%q';", kTable, InstanceID);
  return kOk;
}

std::int32_t db_modify_concretejob(sqlite3* db, const char* InstanceID, const char* JobStatus,
                                   const char* OperationalStatus, std::int32_t PercentComplete,
                                   std::int32_t JobState) noexcept {
  db_execute(db,
             "Update %q SET InstanceID='%q',JobStatus='%q',OperationalStatus='%q',PercentComplete='%i',JobState='%i' "
             "where InstanceID='%q';",
             kTable, InstanceID, JobStatus, OperationalStatus, PercentComplete, JobState, InstanceID);
  return kOk;
}

void db_clear_expired_concretejob(std::int32_t now) noexcept {
  OwnConnection connection(kTemporaryDatabase);
  if (!connection.is_open()) return;
  sqlite3* const db = connection.get();
  {
    const SqlText text(sqlite3_mprintf("select * from %q where RemovalTime<='%i'", kTable, now));
    Statement expired;
    if (expired.compile(db, here(), text) != SQLITE_OK) {
      // QUIRK: The connection stays open. Test: ConcreteJobs.PurgeThatDoesNotCompileLeavesItsConnectionOpen.
      connection.leave_unclosed();
      return;
    }
    while (expired.step() == SQLITE_ROW) {
      const auto* identifier = reinterpret_cast<const char*>(sqlite3_column_text(expired.get(), 0));
      if (identifier != nullptr) delete_errors_of(db, identifier);
    }
  }
  for (const std::int32_t state : {kCompleted, kException}) {
    db_execute(db, "delete from %q where RemovalTime<='%i' and JobState='%i';", kTable, now, state);
  }
}
