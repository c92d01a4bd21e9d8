// The commands that show what the database holds. Each returns what is to be printed.
#ifndef QMVCTL_COMMANDS_H
#define QMVCTL_COMMANDS_H

#include <optional>
#include <string>
#include <vector>

#include "database.h"
#include "listing.h"

namespace qmvctl {

Listing list_sensors(const Database& database);
Listing list_frus(const Database& database);
Listing list_events(const Database& database);
Listing list_processors(const Database& database);
Listing list_memory(const Database& database);

// Power supplies: of the fixed file by the library's own search, of another file by the sensors in the category.
Listing list_power_supplies(const Database& database);

// The instances of a profile table, as the library reads them; members are named as the columns. Nothing for a table
// that instance_tables() does not name.
std::optional<Listing> list_instances(const Database& database, const std::string& table);

// The tables that list_instances() knows, and the column that names the instances of one.
std::vector<std::string> instance_tables();
std::string instance_key(const std::string& table);

// Where indications go, which events are indicated, and which of these go where.
Listing list_destinations(const Database& database);
Listing list_filters(const Database& database);
Listing list_subscriptions(const Database& database);

// The association classes that a registry holds, and the plug-ins registered there.
Listing list_associations(const Database& database);
Listing list_plugins(const Database& database);

// Jobs, and the records of what went wrong in them; both are in the temporary database.
Listing list_jobs(const Database& database);
Listing list_errors(const Database& database);

// What a purge deleted.
struct Purged {
  std::vector<std::string> jobs;    // by identifier
  std::vector<std::string> errors;  // by source
};

// Deletes the finished jobs that have expired, and the error records of all that have. The library finds the database
// by itself: it must be the fixed one.
Purged purge_jobs(const Database& database);

// The physical assets of a CIM class, by the statements that the library hands out for it.
struct Assets {
  struct Part {
    int count = 0;  // what the counting statement says, less what a selection leaves out
    Listing listing;
  };

  std::string class_name;
  Part frus;     // FRUs joined with the full sensors of their entity ID
  Part sensors;  // the full sensors alone
};

// Nothing for a class that the library does not know.
std::optional<Assets> list_assets(const Database& database, const std::string& class_name);

// The classes that the library knows.
inline constexpr const char* kAssetClasses[] = {
    "CIM_Slot",           "CIM_Card", "CIM_Chassis", "CIM_Chip", "CIM_PhysicalPackage", "CIM_PhysicalConnector",
    "CIM_PhysicalMemory",
};

}  // namespace qmvctl

#endif
