// jobs.
#include "commands.h"
#include "list_command.h"
#include "reports.h"

namespace qmvctl {

namespace {

const Keys kJobKeys{{"instance_id", "element_name"}, "QMV:Job-1"};
const ListCommand kJobs{"jobs", "Show or purge the jobs", list_jobs, kJobKeys, "qmvctl jobs purge", kTemporaryDatabase};
const ListCommand kJobList{"list",
                           "Show the jobs, as without a subcommand",
                           list_jobs,
                           kJobKeys,
                           "qmvctl jobs list --wide",
                           kTemporaryDatabase};
const ListCommand kJobErrors{"errors",
                             "Show the error records of jobs",
                             list_errors,
                             {{"error_source"}, "QMV:Job-2"},
                             "qmvctl jobs errors --json",
                             kTemporaryDatabase};

void purge(const Context& context) {
  if (!context.file.empty() && context.file != kTemporaryDatabase.file) {
    throw CLI::ValidationError("--db", std::string("jobs purge works on ") + kTemporaryDatabase.file +
                                           " only: the library opens it by itself");
  }
  report(context.out, context.form, purge_jobs(Database::open("", kTemporaryDatabase)));
}

}  // namespace

void add_job_commands(CLI::App& app, Context& context) {
  CLI::App* command = add_list(app, context, kJobs);
  add_plain_list(*command, context, kJobList);
  add_list(*command, context, kJobErrors);
  CLI::App* purging = add_subcommand(*command, "purge", "Delete expired finished jobs, with their errors");
  add_example(*purging, "qmvctl jobs purge --json");
  purging->callback([&context] { purge(context); });
}

}  // namespace qmvctl
