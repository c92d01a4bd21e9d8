// jobs: the concrete jobs of the temporary database, their error records, and the purge.
#include <algorithm>
#include <iterator>
#include <utility>

#include "commands.h"
#include "rows.h"
#include "text.h"

namespace qmvctl {

namespace {

// CIM_ConcreteJob.JobState
constexpr const char* kJobStates[] = {
    "",          "",           "New",    "Starting",  "Running", "Suspended",    "Shutting Down",
    "Completed", "Terminated", "Killed", "Exception", "Service", "Query Pending"};

std::string job_state_name(int32_t state) {
  const bool has_name = state >= 2 && state < static_cast<int32_t>(std::size(kJobStates));
  return has_name ? kJobStates[state] : "state " + std::to_string(state);
}

std::vector<concrete_job_rec> jobs(const Database& database) {
  return read_all<concrete_job_rec>(database, "concrete_job", count_first(db_get_all_concretejob));
}

std::vector<error_info_rec> errors(const Database& database) {
  return read_all<error_info_rec>(database, "error_info", db_get_all_error_info);
}

// The texts of a field of all records, sorted.
template <class Record, size_t Width>
std::vector<std::string> all(const std::vector<Record>& records, char (Record::*field)[Width]) {
  std::vector<std::string> texts;
  for (const Record& record : records) texts.emplace_back(text_of(record.*field));
  std::sort(texts.begin(), texts.end());
  return texts;
}

Purged identifiers(const Database& database) {
  return {all(jobs(database), &concrete_job_rec::InstanceID), all(errors(database), &error_info_rec::ErrorSource)};
}

std::vector<std::string> without(const std::vector<std::string>& sorted, const std::vector<std::string>& left_out) {
  std::vector<std::string> rest;
  std::set_difference(sorted.begin(), sorted.end(), left_out.begin(), left_out.end(), std::back_inserter(rest));
  return rest;
}

// The library's purge does not say whether it could delete, and readers of the file are enough to keep it from that.
void check_purge(const Database& database, int32_t now) {
  const std::string expired =
      "select count(*) from concrete_job where RemovalTime <= " + std::to_string(now) + " and JobState in (7, 10);";
  database.query(expired.c_str(), [&](sqlite3_stmt* row) {
    const int left = sqlite3_column_int(row, 0);
    if (left != 0) database.fail("expired jobs that could not be deleted: " + std::to_string(left));
  });
}

}  // namespace

Listing list_jobs(const Database& database) {
  Listing listing{
      {text_column("InstanceID", 20, "instance_id"), text_column("Name", 16, "element_name"),
       cim_name_column("State", 13, "job_state_name", "job_state"), number_column("Percent", 7, "percent_complete"),
       text_column("Status", 16, "job_status"), text_column("Operational status", kWide, "operational_status"),
       number_column("Minutes kept", kWide, "time_before_removal"),
       number_column("Delete", kWide, "delete_on_completion")},
      {},
      "There are no jobs."};
  for (const concrete_job_rec& job : jobs(database)) {
    listing.rows.push_back({{"instance_id", text_of(job.InstanceID)},
                            {"element_name", text_of(job.ElementName)},
                            {"job_state", job.JobState},
                            {"job_state_name", job_state_name(job.JobState)},
                            {"percent_complete", job.PercentComplete},
                            {"job_status", text_of(job.JobStatus)},
                            {"operational_status", text_of(job.OperationalStatus)},
                            {"time_before_removal", text_of(job.TimeBeforeRemoval)},
                            {"delete_on_completion", job.DeleteOnCompletion}});
  }
  return listing;
}

Listing list_errors(const Database& database) {
  Listing listing{{text_column("Source", 30, "error_source"), number_column("Format", 6, "error_source_format"),
                   number_column("Type", 4, "error_type"), number_column("Severity", 8, "perceived_severity"),
                   number_column("Cause", 5, "probable_cause"), number_column("CIM status", 10, "cim_status_code")},
                  {},
                  "There are no error records."};
  for (const error_info_rec& error : errors(database)) {
    listing.rows.push_back({{"error_source", text_of(error.ErrorSource)},
                            {"error_source_format", error.ErrorSourceFormat},
                            {"error_type", error.ErrorType},
                            {"perceived_severity", error.PerceivedSeverity},
                            {"probable_cause", error.ProbableCause},
                            {"cim_status_code", error.CIMStatusCode}});
  }
  return listing;
}

Purged purge_jobs(const Database& database) {
  const int32_t now = GetUpTime();
  const Purged before = identifiers(database);
  db_clear_expired_concretejob(now);
  check_purge(database, now);
  const Purged after = identifiers(database);
  return {without(before.jobs, after.jobs), without(before.errors, after.errors)};
}

}  // namespace qmvctl
