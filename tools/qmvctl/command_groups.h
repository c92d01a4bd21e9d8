// The commands, added to the command line group by group.
#ifndef QMVCTL_COMMAND_GROUPS_H
#define QMVCTL_COMMAND_GROUPS_H

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#include "listing.h"
#include "terminal.h"

namespace qmvctl {

// What all commands share. It lives as long as the command line.
struct Context {
  std::ostream& out;
  std::ostream& err;
  Terminal terminal;
  std::string file = {};  // of the database, empty for the fixed one
  Form form = {};
  bool is_wrong = false;  // what was looked at, though nothing failed
};

void add_database_commands(CLI::App& app, Context& context);   // init and check
void add_dump_commands(CLI::App& app, Context& context);       // import and export
void add_list_commands(CLI::App& app, Context& context);       // sensors and the other lists
void add_event_log_commands(CLI::App& app, Context& context);  // sel
void add_job_commands(CLI::App& app, Context& context);        // jobs

}  // namespace qmvctl

#endif
