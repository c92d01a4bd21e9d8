#include "command_line.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <string>

#include "command_groups.h"
#include "database.h"
#include "host.h"

namespace qmvctl {

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

void add_form_options(CLI::App& app, Form& form) {
  const auto choose = [&form](Form::Kind kind) { return [&form, kind] { form.kind = kind; }; };
  CLI::Option* json = app.add_flag_callback("--json", choose(Form::Kind::kJson), "write JSON");
  app.add_flag_callback("--csv", choose(Form::Kind::kCsv), "write comma-separated values")->excludes(json);
  app.add_flag("--wide", form.is_wide, "show all columns in full, beyond 80 places");
  app.add_flag_callback(
      "--no-header", [&form] { form.has_heads = false; }, "leave out the heads of columns");
}

void add_global_options(CLI::App& app, Context& context) {
  app.require_subcommand(1);
  app.fallthrough();
  app.add_option("--db", context.file, "use this database in place of the one in /tmp or /etc")->type_name("FILE");
  add_form_options(app, context.form);
  app.add_flag_callback(
      "-v,--verbose", [] { show_traces(true); }, "write the library's traces to standard error");
  app.get_formatter()->column_width(24);
  app.footer("qmvctl COMMAND --help says more of each, with an example.");
}

}  // namespace

int run(int argument_count, const char* const* arguments, std::ostream& out, std::ostream& err, Terminal terminal) {
  show_traces(false);
  Context context{out, err, terminal};
  context.form.has_colours = terminal.has_colours;
  CLI::App app{"Looks after the databases of the server management controller.", "qmvctl"};
  add_global_options(app, context);
  add_database_commands(app, context);
  add_dump_commands(app, context);
  add_list_commands(app, context);
  add_event_log_commands(app, context);
  add_job_commands(app, context);
  try {
    app.parse(argument_count, arguments);
    out.flush();
    if (!out) throw std::runtime_error("the output cannot be written");
    return context.is_wrong ? kFailed : kDone;
  } catch (const CLI::ParseError& error) {
    return app.exit(error, out, err) == kDone ? kDone : kWrongUsage;
  } catch (const std::exception& error) {
    err << "qmvctl: " << error.what() << '\n';
    return kFailed;
  }
}

}  // namespace qmvctl
