#include "command_line.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <string>

#include "characters.h"
#include "command_groups.h"
#include "database.h"
#include "host.h"
#include "version.h"

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

// What is wrong with the command line. CLI11 does not name a word that is no command.
std::string usage_error(const CLI::App* app, const CLI::Error& error) {
  const std::vector<std::string> words = app->remaining();
  const bool is_unknown = error.get_name() == "RequiredError" && !words.empty() && !words.front().starts_with('-');
  const std::string text = is_unknown ? words.front() + " is no command" : error.what();
  return "qmvctl: " + printable(text, "\n") + "\nRun with --help for more information.\n";
}

void add_global_options(CLI::App& app, Context& context) {
  app.require_subcommand(1);
  app.fallthrough();
  app.add_option("--db", context.file, "use this database in place of the one in /tmp or /etc")->type_name("FILE");
  add_form_options(app, context.form);
  app.add_flag_callback(
      "-v,--verbose", [] { show_traces(true); }, "write the library's traces to standard error");
  app.set_version_flag("--version", "qmvctl " QMVCTL_VERSION, "print the version");
  app.failure_message(usage_error);
  app.get_formatter()->column_width(24);
  app.footer("qmvctl COMMAND --help says more of each, with an example.");
}

// An empty text is what a script's unset variable leaves. It is refused, for it would say the same as an option that is
// not given: the fixed database, or all rows.
void refuse_empty_texts(CLI::App& app) {
  const CLI::Validator is_given(
      [](const std::string& text) { return text.empty() ? std::string("the text is empty") : ""; }, "");
  for (CLI::Option* option : app.get_options()) {
    const bool takes_texts = option->get_items_expected_min() > 0;
    if (takes_texts) option->check(is_given);
  }
  for (CLI::App* command : app.get_subcommands({})) refuse_empty_texts(*command);
}

// Runs the command that is named, or prints the help that is asked for. Returns false when the command line is wrong.
bool parse(CLI::App& app, int argument_count, const char* const* arguments, std::ostream& out, std::ostream& err) {
  try {
    app.parse(argument_count, arguments);
    return true;
  } catch (const CLI::ParseError& error) {
    return app.exit(error, out, err) == kDone;
  }
}

}  // namespace

int run(int argument_count, const char* const* arguments, std::ostream& out, std::ostream& err, Terminal terminal) {
  std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is a failed write, after which it goes away
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
  refuse_empty_texts(app);
  try {
    if (!parse(app, argument_count, arguments, out, err)) return kWrongUsage;
    out.flush();
    if (!out) throw std::runtime_error("the output cannot be written");
    return context.is_wrong ? kFailed : kDone;
  } catch (const std::exception& error) {
    err << "qmvctl: " << printable(error.what()) << '\n';
    return kFailed;
  }
}

}  // namespace qmvctl
