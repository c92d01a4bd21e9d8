// init and check.
#include <map>
#include <memory>

#include "check.h"
#include "command_groups.h"
#include "database.h"
#include "reports.h"

namespace qmvctl {

namespace {

const auto kKinds = [] {
  std::map<std::string, const DatabaseKind*> kinds;
  for (const DatabaseKind* kind : kDatabaseKinds) kinds[kind->name] = kind;
  return kinds;
}();

// "[DATABASE]": the name of a kind.
std::shared_ptr<std::string> add_kind(CLI::App& command) {
  auto name = std::make_shared<std::string>();
  command.add_option("database", *name, "one database alone")->type_name("DATABASE")->check(CLI::IsMember(&kKinds));
  return name;
}

void init(const Context& context, const std::string& name, bool has_sample) {
  const DatabaseKind& kind = name.empty() ? kInstanceDatabase : *kKinds.at(name);
  if (has_sample && !kind.store_sample) throw CLI::ValidationError("--sample", "there is no sample of " + name);
  const auto contents = has_sample ? Database::Contents::kSample : Database::Contents::kTables;
  if (name.empty() && context.file.empty()) {
    Database::create_all(contents);
  } else {
    Database::create(context.file, kind, contents);
  }
}

// Of that kind, or of the kind whose tables it has.
Checked check_file(const std::string& file, const DatabaseKind* kind) {
  try {
    Database database = Database::open(file, kind ? *kind : kInstanceDatabase);
    return {database.file(), check(database, kind)};
  } catch (const FileError& error) {
    return {error.file(), {{"", error.reason(), "Name another file with --db, or see to this one."}}};
  }
}

// What hosts open; the registry is not everywhere.
std::vector<Checked> check_all() {
  std::vector<Checked> files;
  for (const DatabaseKind* kind : kDatabaseKinds) {
    const bool may_be_missing = kind == &kRegistry;
    if (!may_be_missing || Database::exists(*kind)) files.push_back(check_file("", kind));
  }
  return files;
}

void check(Context& context, const std::string& name) {
  const DatabaseKind* kind = name.empty() ? nullptr : kKinds.at(name);
  const bool is_all = name.empty() && context.file.empty();
  const std::vector<Checked> files = is_all ? check_all() : std::vector{check_file(context.file, kind)};
  for (const Checked& checked : files) context.is_wrong |= problems(checked) > 0;
  report(context.out, context.form, files);
}

void add_check(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("check", "Say what is wrong with the databases, and what to do");
  const auto name = add_kind(*command);
  command->footer(
      "Looks for missing tables and views in place of them, columns that are missing,\n"
      "added or in another order, keys that are not unique and what else is, triggers,\n"
      "texts wider than their fields, event record IDs outside 1 to 65534, entities\n"
      "that IPMI does not know, damage to the file and locks that others hold, and\n"
      "exits with 1 when it finds such a problem. A note is none: it tells what IPMI\n"
      "allows but the library does not use, entities without a CIM class. Without\n"
      "DATABASE: cim, tmp_cim, smashclp and, where it is, association; or the file\n"
      "that --db names, as the database whose tables it has.\n\n"
      "Example:\n  qmvctl check --db test.db");
  command->callback([&context, name] { check(context, *name); });
}

void add_init(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("init", "Create the databases; no file with contents is touched");
  const auto name = add_kind(*command);
  const auto has_sample = std::make_shared<bool>(false);
  command->add_flag("--sample", *has_sample, "fill profiles and jobs with a small controller");
  command->footer(
      "Without DATABASE: cim, tmp_cim and smashclp under /tmp, or none of them when\n"
      "one exists. --db names the file of one database, which is cim when DATABASE is\n"
      "not given. A file of 0 bytes, as SQLite makes it for a host that is started\n"
      "first, is taken for missing. There is no sample of association.\n\n"
      "Example:\n  qmvctl init --sample --db test.db");
  command->callback([&context, name, has_sample] { init(context, *name, *has_sample); });
}

}  // namespace

void add_database_commands(CLI::App& app, Context& context) {
  add_init(app, context);
  add_check(app, context);
}

}  // namespace qmvctl
