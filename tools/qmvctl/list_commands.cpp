// sensors, fru, assets, processors, memory, power-supplies, instances, indications and associations.
#include "commands.h"
#include "list_command.h"
#include "reports.h"

namespace qmvctl {

namespace {

const ListCommand kSensorList{"sensors",
                              "Show the sensors with their thresholds",
                              list_sensors,
                              {{"device_id", "name"}, "20:00:30", true, true},
                              "qmvctl sensors --type temperature --entity 7.1"};
const ListCommand kFruList{
    "fru", "Show the field-replaceable units", list_frus, {{"fru_id", "name"}, "0", false, true}, "qmvctl fru show 0"};
const ListCommand kProcessorList{"processors",
                                 "Show the processors",
                                 list_processors,
                                 {{"device_id", "name"}, "20:00:40", true, true},
                                 "qmvctl processors --entity 3.1"};
const ListCommand kMemoryList{
    "memory", "Show the memory", list_memory, {{"device_id", "name"}, "20:00:48", true, true}, "qmvctl memory --csv"};
const ListCommand kPowerSupplyList{"power-supplies",
                                   "Show the power supplies",
                                   list_power_supplies,
                                   {{"instance", "fru"}, "10:1:48:PowerSupply", false, true},
                                   "qmvctl power-supplies --wide"};
const ListCommand kAssociationList{"associations",
                                   "Show the association registry",
                                   list_associations,
                                   {{"class"}, "CIM_ElementCapabilities"},
                                   "qmvctl associations show CIM_ElementCapabilities",
                                   kRegistry};
const ListCommand kPluginList{
    "plugins", "Show the plug-ins that are registered there", list_plugins, {}, "qmvctl associations plugins",
    kRegistry};

const ListCommand kIndicationLists[] = {
    {"destinations",
     "Show the destinations alone",
     list_destinations,
     {{"name"}, "Station1"},
     "qmvctl indications destinations --json"},
    {"filters",
     "Show the filters alone",
     list_filters,
     {{"name"}, "CriticalTemperature"},
     "qmvctl indications filters --wide"},
    {"subscriptions",
     "Show the subscriptions alone",
     list_subscriptions,
     {{"destination", "filter"}, "Station1"},
     "qmvctl indications subscriptions --id Station1"},
};

const Keys kAssetKeys{{"fru_id", "sensor_name"}, "0", false, true};

// The assets of a class, or of all when it is empty, that are asked for.
std::vector<Assets> assets_of(const Database& database, const std::string& asset_class, const Selection& selection) {
  std::vector<std::string> names(std::begin(kAssetClasses), std::end(kAssetClasses));
  if (!asset_class.empty()) names = {asset_class};
  std::vector<Assets> classes;
  for (const std::string& name : names) {
    auto assets = list_assets(database, name);
    if (!assets) throw CLI::ValidationError("class", name + " is not one of " + CLI::detail::join(kAssetClasses, ", "));
    for (Assets::Part* part : {&assets->frus, &assets->sensors}) {
      part->count -= static_cast<int>(select(part->listing, kAssetKeys, selection));
    }
    classes.push_back(std::move(*assets));
  }
  return classes;
}

// An asset is of several classes, and a sensor beside several FRUs: all of them are the record.
void show_asset(const Context& context, const std::string& id) {
  const Database database = Database::open(context.file);
  std::vector<Assets> classes = assets_of(database, "", {.id = id});
  std::erase_if(classes,
                [](const Assets& each) { return each.frus.listing.rows.empty() && each.sensors.listing.rows.empty(); });
  if (classes.empty()) database.fail("there is no record " + id);
  report(context.out, in_full(context.form), classes);
}

void add_assets(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("assets", "Show the physical assets of a CIM class or of all");
  const auto selection = add_selection(*command, kAssetKeys);
  const auto asset_class = std::make_shared<std::string>();
  command->add_option("class", *asset_class, "the class, all when it is not given")->type_name("CLASS");
  add_show(*command, kAssetKeys.id_example, [&context](const std::string& id) { show_asset(context, id); });
  command->footer("Classes:\n  " + CLI::detail::join(kAssetClasses, "\n  ") + "\n\nExample:\n  qmvctl assets CIM_Card");
  command->callback([&context, command, asset_class, selection] {
    if (!command->get_subcommands().empty()) return;
    report(context.out, context.form, assets_of(Database::open(context.file), *asset_class, *selection));
  });
}

void show_instances(const Context& context, const std::string& table, const std::string& id,
                    const Selection& selection) {
  const Database database = Database::open(context.file);
  auto listing = list_instances(database, table);
  if (!listing) {
    throw CLI::ValidationError("table", table + " is not one of " + CLI::detail::join(instance_tables(), ", "));
  }
  const Keys keys = {{instance_key(table)}};
  if (!id.empty()) return show_record(context, database, std::move(*listing), keys, id);
  select(*listing, keys, selection);
  report(context.out, context.form, *listing);
}

void add_instances(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("instances", "Show the instances in a profile table");
  const auto table = std::make_shared<std::string>();
  command->add_option("table", *table, "the table")->type_name("TABLE")->required();
  const auto id = std::make_shared<std::string>();
  const auto selection = add_selection(*command, {{"the key of the table"}});
  command->add_option("id", *id, "this instance in full; all when it is not given")
      ->type_name("ID")
      ->excludes(command->get_option("--id"));
  command->footer("Tables:\n  " + CLI::detail::join(instance_tables(), "\n  ") +
                  "\n\n"
                  "An instance goes by its first column, a role by its name. Of dhcp_capabilities\n"
                  "the library reads the first row only; of textredirectionservice,\n"
                  "textredirectionsap, account_management_service and indication_service only the\n"
                  "row with the name that it knows. Rows of dhcp_protocol_endpoint, event_type and\n"
                  "request_state_change it finds by their keys only: they cannot be shown.\n\n"
                  "Example:\n  qmvctl instances boot_order");
  command->callback([&context, table, id, selection] { show_instances(context, *table, *id, *selection); });
}

void add_indications(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("indications", "Show the destinations, filters and subscriptions");
  for (const ListCommand& each : kIndicationLists) add_list(*command, context, each);
  add_example(*command, "qmvctl indications subscriptions");
  command->callback([&context, command] {
    if (!command->get_subcommands().empty()) return;
    const Database database = Database::open(context.file);
    std::vector<HeadedListing> lists;
    for (const ListCommand& each : kIndicationLists) {
      std::string head = each.name;
      head[0] = static_cast<char>(std::toupper(head[0]));
      lists.push_back({each.name, head, each.list(database)});
    }
    report(context.out, context.form, lists);
  });
}

}  // namespace

void add_list_commands(CLI::App& app, Context& context) {
  add_list(app, context, kSensorList);
  add_list(app, context, kFruList);
  add_assets(app, context);
  add_list(app, context, kProcessorList);
  add_list(app, context, kMemoryList);
  add_list(app, context, kPowerSupplyList);
  add_instances(app, context);
  add_indications(app, context);
  CLI::App* associations = add_list(app, context, kAssociationList);
  add_list(*associations, context, kPluginList);
}

}  // namespace qmvctl
