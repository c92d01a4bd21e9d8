#include "list_command.h"

#include <cstdint>

#include "reports.h"

namespace qmvctl {

namespace {

// Checks what an option that selects says.
CLI::Validator must_be(bool (*is_one)(const std::string& text), const std::string& what) {
  return CLI::Validator([=](const std::string& text) { return is_one(text) ? "" : text + " is no " + what; }, "");
}

}  // namespace

void add_show(CLI::App& parent, const std::string& id_example, std::function<void(const std::string& id)> show) {
  CLI::App* command = add_subcommand(parent, "show", "Show one record in full");
  const auto id = std::make_shared<std::string>();
  command->add_option("id", *id, "ID or name of the record")->type_name("ID")->required();
  std::string path;
  for (const CLI::App* each = command; each; each = each->get_parent()) path = each->get_name() + " " + path;
  add_example(*command, path + id_example);
  command->callback([id, show = std::move(show)] { show(*id); });
}

CLI::App* add_subcommand(CLI::App& parent, const char* name, const char* description) {
  CLI::App* command = parent.add_subcommand(name, description);
  const bool is_below_another = parent.get_parent() != nullptr;
  if (is_below_another) {
    for (CLI::Option* option : parent.get_options()) command->excludes(option);
  }
  return command;
}

std::shared_ptr<Selection> add_selection(CLI::App& command, const Keys& keys) {
  auto selection = std::make_shared<Selection>();
  if (!keys.ids.empty()) command.add_option("--id", selection->id, "records with this ID or name")->type_name("ID");
  if (keys.has_type) {
    command.add_option("--type", selection->type, "sensors of this type, by code or name")
        ->type_name("TYPE")
        ->check(must_be(is_sensor_type, "sensor type"));
  }
  if (keys.has_entity) {
    command.add_option("--entity", selection->entity, "of this entity: 7, 7.1 or a name")
        ->type_name("ENTITY")
        ->check(must_be(is_entity, "entity"));
  }
  if (keys.has_order) {
    command.add_option("--last", selection->last, "the last N of these alone")->type_name("N")->transform(as_number());
  }
  return selection;
}

Form in_full(Form form) {
  if (form.kind == Form::Kind::kTable) form.kind = Form::Kind::kInFull;
  return form;
}

void show_record(const Context& context, const Database& database, Listing listing, const Keys& keys,
                 const std::string& id) {
  select(listing, keys, {.id = id});
  if (listing.rows.empty()) database.fail("there is no record " + id);
  report(context.out, in_full(context.form), listing);
}

CLI::Validator as_number() {
  const auto rewrite = [](std::string& text) {
    const auto number = number_of(text);
    if (!number || *number < 0 || *number > UINT32_MAX) return text + " is no number from 0 to 4294967295";
    text = std::to_string(*number);
    return std::string();
  };
  return CLI::Validator(rewrite, "");
}

void add_example(CLI::App& command, const std::string& example) {
  command.footer("Example:\n  " + example);
}

CLI::App* add_plain_list(CLI::App& parent, Context& context, const ListCommand& list) {
  CLI::App* command = add_subcommand(parent, list.name, list.description);
  const auto selection = add_selection(*command, list.keys);
  add_example(*command, list.example);
  command->callback([&context, command, selection, list] {
    if (!command->get_subcommands().empty()) return;
    Listing listing = list.list(Database::open(context.file, list.kind));
    select(listing, list.keys, *selection);
    report(context.out, context.form, listing);
  });
  return command;
}

CLI::App* add_list(CLI::App& parent, Context& context, const ListCommand& list) {
  CLI::App* command = add_plain_list(parent, context, list);
  if (!list.keys.ids.empty()) {
    add_show(*command, list.keys.id_example, [&context, list](const std::string& id) {
      const Database database = Database::open(context.file, list.kind);
      show_record(context, database, list.list(database), list.keys, id);
    });
  }
  return command;
}

}  // namespace qmvctl
