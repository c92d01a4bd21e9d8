// jobs.
#include "commands.h"
#include "list_command.h"
#include "reports.h"

namespace qmvctl {

namespace {

const ListCommand kJobs{"jobs",
                        "Show or purge the jobs",
                        list_jobs,
                        {{"instance_id", "element_name"}, "Job-1"},
                        "qmvctl jobs purge",
                        kTemporaryDatabase};
const ListCommand kJobList{"list",
                           "Show the jobs, as without a subcommand",
                           list_jobs,
                           {{"instance_id", "element_name"}, "Job-1"},
                           "qmvctl jobs list --wide",
                           kTemporaryDatabase};
const ListCommand kJobErrors{"errors",
                             "Show the error records of jobs",
                             list_errors,
                             {{"error_source"}, "Job-1"},
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
  add_list(*command, context, kJobList);
  add_list(*command, context, kJobErrors);
  CLI::App* purging = add_subcommand(*command, "purge", "Delete expired finished jobs, with their errors");
  add_example(*purging, "qmvctl jobs purge --json");
  purging->callback([&context] { purge(context); });
}

}  // namespace qmvctl
