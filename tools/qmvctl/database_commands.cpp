// init.
#include <map>
#include <memory>

#include "command_groups.h"
#include "database.h"

namespace qmvctl {

namespace {

const std::map<std::string, const DatabaseKind*> kKinds = {{kInstanceDatabase.name, &kInstanceDatabase},
                                                           {kTemporaryDatabase.name, &kTemporaryDatabase},
                                                           {kShellDatabase.name, &kShellDatabase},
                                                           {kRegistry.name, &kRegistry}};

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

}  // namespace

void add_database_commands(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("init", "Create the databases; an existing file is not touched");
  const auto name = std::make_shared<std::string>();
  command->add_option("database", *name, "one database alone: cim, tmp_cim, smashclp or association")
      ->type_name("DATABASE")
      ->check(CLI::IsMember(&kKinds));
  const auto has_sample = std::make_shared<bool>(false);
  command->add_flag("--sample", *has_sample, "fill the tables of profiles and jobs with a plausible small controller");
  command->footer(
      "Without DATABASE: cim, tmp_cim and smashclp under /tmp, or none of them when\n"
      "one exists. --db names the file of one database, which is cim when DATABASE is\n"
      "not given. There is no sample of association.\n\n"
      "Example:\n  qmvctl init --sample --db test.db");
  command->callback([&context, name, has_sample] { init(context, *name, *has_sample); });
}

}  // namespace qmvctl
