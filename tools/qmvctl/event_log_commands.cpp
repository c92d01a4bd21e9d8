// sel.
#include "commands.h"
#include "list_command.h"

namespace qmvctl {

namespace {

const ListCommand kEvents{"sel", "Show the event log", list_events, {{"record_id"}, true, false}, "qmvctl sel show 1"};

}  // namespace

void add_event_log_commands(CLI::App& app, Context& context) {
  add_list(app, context, kEvents);
}

}  // namespace qmvctl
