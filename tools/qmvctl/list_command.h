// Commands that show a list.
#ifndef QMVCTL_LIST_COMMAND_H
#define QMVCTL_LIST_COMMAND_H

#include <functional>
#include <memory>
#include <string>

#include "command_groups.h"
#include "database.h"
#include "selection.h"

namespace qmvctl {

struct ListCommand {
  const char* name;
  const char* description;
  Listing (*list)(const Database&);
  Keys keys;
  const char* example;
  const DatabaseKind& kind = kInstanceDatabase;
};

// Adds the command, with the options that select rows. Subcommands that are added later run in its place.
CLI::App* add_plain_list(CLI::App& parent, Context& context, const ListCommand& command);

// The same, with "show" where rows have names.
CLI::App* add_list(CLI::App& parent, Context& context, const ListCommand& command);

// Adds a command to a command. It goes without the options of that one, which would say nothing of it.
CLI::App* add_subcommand(CLI::App& parent, const char* name, const char* description);

// Adds "show", with what shows the record of a name in full. The example is for its help.
void add_show(CLI::App& parent, const std::string& id_example, std::function<void(const std::string& id)> show);

// Adds the options that select rows by these keys.
std::shared_ptr<Selection> add_selection(CLI::App& command, const Keys& keys);

// The form for a record in full: where people would see a table, they see it instead.
Form in_full(Form form);

// Shows a record in full. It is asked for by its name, so it must be there.
void show_record(const Context& context, const Database& database, Listing listing, const Keys& keys,
                 const std::string& id);

// Lets the number of an option be written as every number.
CLI::Validator as_number();

// The end of a command's help.
void add_example(CLI::App& command, const std::string& example);

}  // namespace qmvctl

#endif
