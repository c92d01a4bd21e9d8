// Jobs and their errors.
#include "table.h"

namespace qmv::test {
namespace {

Table concrete_job() {
  using Record = concrete_job_rec;
  const auto set = [](sqlite3* db, Record* job) {
    char identifier[64];
    return db_set_concretejob(db, job, identifier);
  };
  std::vector<Field> fields = {FIELD(InstanceID),        FIELD(ElementName),        FIELD(JobState),
                               FIELD(JobStatus),         FIELD(DeleteOnCompletion), FIELD(TimeBeforeRemoval),
                               FIELD(OperationalStatus), FIELD(PercentComplete)};
  const std::vector<Field> without_removal_time = fields;
  fields.push_back(FIELD(RemovalTime));
  return {"tmp_cim",
          "concrete_job",
          {"InstanceID"},
          fields,
          {always_new(setter<Record>("db_set_concretejob", set))},
          {ALL_ARRAY_FIRST(db_get_all_concretejob).filling(without_removal_time),
           ONE(db_get_concretejob, "InstanceID").filling(without_removal_time)}};
}

Table error_info() {
  using Record = error_info_rec;
  return {"tmp_cim",
          "error_info",
          {"ErrorSource"},
          {FIELD(ErrorType), FIELD(PerceivedSeverity), FIELD(ProbableCause), FIELD(ErrorSource),
           FIELD(ErrorSourceFormat), FIELD(CIMStatusCode)},
          {SET(db_set_error_info)},
          {ALL(db_get_all_error_info), ONE(db_get_error_info, "ErrorSource")}};
}

// The error of a job is its record; the rest of the row is not read.
Table jobs() {
  using Record = error_info_rec;
  const auto error = [](sqlite3* db, const Row& row, Record** to) {
    return db_get_clp_error_info(db, ("JobPath:" + row.at("jobid").text).c_str(), to);
  };
  return {"smashclp",
          "jobs",
          {"jobid"},
          {FIELD_FROM("errtype", ErrorType), FIELD_FROM("severity", PerceivedSeverity),
           FIELD_FROM("probcause", ProbableCause), FIELD_FROM("cimstat", CIMStatusCode)},
          {},
          {reader_of_new<Record>("db_get_clp_error_info", error)},
          {{"state", "10"}}};
}

}  // namespace

std::vector<Table> job_tables() {
  return {concrete_job(), error_info(), jobs()};
}

}  // namespace qmv::test
