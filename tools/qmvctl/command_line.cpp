#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "host.h"
#include "import.h"
#include "reports.h"

namespace qmvctl {

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// "ID=FILE", the ID in decimal or, with 0x, in hexadecimal.
FruFile parse_fru(const std::string& text) {
  const size_t sign = text.find('=');
  int id = 0;
  if (sign == std::string::npos || sign + 1 == text.size() || !CLI::detail::lexical_cast(text.substr(0, sign), id) ||
      id < 0 || id > 0xFF) {
    throw CLI::ValidationError("--fru", text + " is not ID=FILE with an ID from 0 to 255");
  }
  return {id, text.substr(sign + 1)};
}

std::vector<FruFile> parse_frus(const std::vector<std::string>& texts) {
  std::vector<FruFile> frus;
  for (const std::string& text : texts) {
    const FruFile fru = parse_fru(text);
    const auto is_same = [&](const FruFile& other) { return other.id == fru.id; };
    if (std::any_of(frus.begin(), frus.end(), is_same)) {
      throw CLI::ValidationError("--fru", "FRU " + std::to_string(fru.id) + " is named twice");
    }
    frus.push_back(fru);
  }
  return frus;
}

class CommandLine {
 public:
  CommandLine(std::ostream& out, std::ostream& err);
  int run(int argument_count, const char* const* arguments);

 private:
  void add_init();
  void add_import();
  CLI::App* add_list(CLI::App& parent, const char* name, const std::string& description,
                     Listing (*list)(const Database&), const DatabaseKind& kind = kInstanceDatabase);
  void add_assets();
  void add_instances();
  void add_indications();
  void add_jobs();
  void add_associations();

  void import();
  void show(const Listing& listing) { report(out_, is_json_, listing); }
  void show_assets();
  void purge();

  std::ostream& out_;
  std::ostream& err_;
  CLI::App app_{"Creates, fills and shows the databases of the server management controller.", "qmvctl"};

  std::string database_;  // empty for the fixed file
  std::string kind_;      // of the database to create, empty for all
  bool has_sample_ = false;
  bool is_json_ = false;
  ImportFiles files_;
  std::vector<std::string> frus_;  // "ID=FILE"
  std::string asset_class_;        // empty for all
  std::string instance_table_;
};

CommandLine::CommandLine(std::ostream& out, std::ostream& err) : out_(out), err_(err) {
  app_.require_subcommand(1);
  app_.fallthrough();
  app_.add_option("--db", database_,
                  std::string("use this database in place of ") + kInstanceDatabase.file + ", " +
                      kTemporaryDatabase.file + " for jobs or " + kRegistry.file + " for associations")
      ->type_name("FILE");
  app_.add_flag("--json", is_json_, "write JSON");
  app_.add_flag_callback(
      "-v,--verbose", [] { show_traces(true); }, "write the library's traces to standard error");
  add_init();
  add_import();
  add_list(app_, "sensors", "Show the sensors with their thresholds", list_sensors);
  add_list(app_, "fru", "Show the field-replaceable units", list_frus);
  add_list(app_, "sel", "Show the event log", list_events);
  add_assets();
  add_list(app_, "processors", "Show the processors", list_processors);
  add_list(app_, "memory", "Show the memory", list_memory);
  add_list(app_, "power-supplies", "Show the power supplies", list_power_supplies);
  add_instances();
  add_jobs();
  add_indications();
  add_associations();
}

void CommandLine::add_init() {
  static const std::map<std::string, const DatabaseKind*> kKinds = {{kInstanceDatabase.name, &kInstanceDatabase},
                                                                    {kTemporaryDatabase.name, &kTemporaryDatabase},
                                                                    {kShellDatabase.name, &kShellDatabase},
                                                                    {kRegistry.name, &kRegistry}};
  CLI::App* command = app_.add_subcommand("init", "Create the databases; an existing file is not touched");
  command->add_option("database", kind_, "one database alone: cim, tmp_cim, smashclp or association")
      ->type_name("DATABASE")
      ->check(CLI::IsMember(&kKinds));
  command->add_flag("--sample", has_sample_, "fill the tables of profiles and jobs with a plausible small controller");
  command->footer(
      "Without DATABASE: cim, tmp_cim and smashclp under /tmp, or none of them when one exists. --db names the file\n"
      "of one database, which is cim when DATABASE is not given. There is no sample of association.");
  command->callback([this] {
    const DatabaseKind& kind = kind_.empty() ? kInstanceDatabase : *kKinds.at(kind_);
    if (has_sample_ && !kind.store_sample) throw CLI::ValidationError("--sample", "there is no sample of " + kind_);
    const auto contents = has_sample_ ? Database::Contents::kSample : Database::Contents::kTables;
    if (kind_.empty() && database_.empty()) {
      Database::create_all(contents);
    } else {
      Database::create(database_, kind, contents);
    }
  });
}

void CommandLine::add_instances() {
  CLI::App* command = app_.add_subcommand("instances", "Show the instances in a profile table");
  command->add_option("table", instance_table_, "the table")->type_name("TABLE")->required();
  command->footer(
      "Tables:\n  " + CLI::detail::join(instance_tables(), "\n  ") +
      "\n\n"
      "Of dhcp_capabilities the library reads the first row only; of textredirectionservice, textredirectionsap,\n"
      "account_management_service and indication_service only the row with the name that it knows. Rows of\n"
      "dhcp_protocol_endpoint, event_type and request_state_change it finds by their keys only: they cannot be shown.");
  command->callback([this] {
    const auto listing = list_instances(Database::open(database_), instance_table_);
    if (!listing) {
      throw CLI::ValidationError("table",
                                 instance_table_ + " is not one of " + CLI::detail::join(instance_tables(), ", "));
    }
    show(*listing);
  });
}

void CommandLine::add_indications() {
  CLI::App* command = app_.add_subcommand("indications", "Show the destinations, filters and subscriptions");
  for (const IndicationList& each : kIndicationLists) {
    add_list(*command, each.name, std::string("Show the ") + each.name + " alone", each.list);
  }
  command->callback([this, command] {
    if (command->get_subcommands().empty()) report(out_, is_json_, list_indications(Database::open(database_)));
  });
}

void CommandLine::add_associations() {
  CLI::App* command = add_list(app_, "associations", "Show the association registry", list_associations, kRegistry);
  add_list(*command, "plugins", "Show the plug-ins that are registered there", list_plugins, kRegistry);
}

void CommandLine::add_import() {
  CLI::App* command = app_.add_subcommand("import", "Store raw dumps of a server, all or nothing");
  command->add_option("--sdr", files_.repository, "sensor data records, from \"ipmitool sdr dump FILE\"")
      ->type_name("FILE");
  command->add_option("--fru", frus_, "FRU images, from \"ipmitool fru read ID FILE\"")->type_name("ID=FILE");
  command->add_option("--sel", files_.event_log, "event log, from \"ipmitool sel writeraw FILE\"")->type_name("FILE");
  command->require_option(1, 0);
  command->callback([this] { import(); });
}

// A command that shows a list, unless a subcommand of its own is given.
CLI::App* CommandLine::add_list(CLI::App& parent, const char* name, const std::string& description,
                                Listing (*list)(const Database&), const DatabaseKind& kind) {
  CLI::App* command = parent.add_subcommand(name, description);
  command->callback([this, command, list, &kind] {
    if (command->get_subcommands().empty()) show(list(Database::open(database_, kind)));
  });
  return command;
}

void CommandLine::add_jobs() {
  CLI::App* command = add_list(app_, "jobs", "Show or purge the jobs", list_jobs, kTemporaryDatabase);
  add_list(*command, "list", "Show the jobs, as without a subcommand", list_jobs, kTemporaryDatabase);
  add_list(*command, "errors", "Show the error records of jobs", list_errors, kTemporaryDatabase);
  command->add_subcommand("purge", "Delete the finished jobs that have expired, and all expired jobs' error records")
      ->callback([this] { purge(); });
}

void CommandLine::add_assets() {
  CLI::App* command = app_.add_subcommand("assets", "Show the physical assets of a CIM class, or of all classes");
  command->add_option("class", asset_class_, CLI::detail::join(kAssetClasses, ", "))->type_name("CLASS");
  command->callback([this] { show_assets(); });
}

int CommandLine::run(int argument_count, const char* const* arguments) {
  show_traces(false);
  try {
    app_.parse(argument_count, arguments);
    out_.flush();
    if (!out_) throw std::runtime_error("the output cannot be written");
    return kDone;
  } catch (const CLI::ParseError& error) {
    return app_.exit(error, out_, err_) == kDone ? kDone : kWrongUsage;
  } catch (const std::exception& error) {
    err_ << "qmvctl: " << error.what() << '\n';
    return kFailed;
  }
}

void CommandLine::import() {
  files_.frus = parse_frus(frus_);
  Database database = Database::open(database_);
  const Inventory stored = import_files(database, files_);
  for (const std::string& note : stored.notes) err_ << "qmvctl: note: " << note << '\n';
  report(out_, is_json_, files_, stored);
}

void CommandLine::purge() {
  if (!database_.empty() && database_ != kTemporaryDatabase.file) {
    throw CLI::ValidationError("--db", std::string("jobs purge works on ") + kTemporaryDatabase.file +
                                           " only: the library opens it by itself");
  }
  report(out_, is_json_, purge_jobs(Database::open("", kTemporaryDatabase)));
}

void CommandLine::show_assets() {
  const Database database = Database::open(database_);
  std::vector<std::string> names(std::begin(kAssetClasses), std::end(kAssetClasses));
  if (!asset_class_.empty()) names = {asset_class_};
  std::vector<Assets> classes;
  for (const std::string& name : names) {
    auto assets = list_assets(database, name);
    if (!assets) throw CLI::ValidationError("class", name + " is not one of " + CLI::detail::join(kAssetClasses, ", "));
    classes.push_back(std::move(*assets));
  }
  report(out_, is_json_, classes);
}

}  // namespace

int run(int argument_count, const char* const* arguments, std::ostream& out, std::ostream& err) {
  return CommandLine(out, err).run(argument_count, arguments);
}

}  // namespace qmvctl
