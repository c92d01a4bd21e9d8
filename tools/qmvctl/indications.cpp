// indications: destinations, filters and subscriptions.
#include "commands.h"
#include "rows.h"
#include "text.h"

namespace qmvctl {

Listing list_destinations(const Database& database) {
  Listing listing{
      {text_column("Name", "name"), text_column("Destination", "destination")}, {}, "There are no destinations."};
  for (const auto& destination :
       read_all<listener_destination_rec>(database, "destinations", count_first(db_get_all_listener_destination))) {
    listing.rows.push_back({{"name", text_of(destination.Name)}, {"destination", text_of(destination.Destination)}});
  }
  return listing;
}

Listing list_filters(const Database& database) {
  Listing listing{{text_column("Name", "name"), number_column("Sensor mask", "sensor_number_mask"),
                   number_column("Type mask", "sensor_type_mask"), number_column("Severity mask", "severity_mask"),
                   text_column("Query", "query")},
                  {},
                  "There are no filters."};
  for (const auto& filter :
       read_all<indication_filter_rec>(database, "filters", count_first(db_get_all_indication_filter_cimxml))) {
    listing.rows.push_back({{"name", text_of(filter.Name)},
                            {"query", text_of(filter.Query)},
                            {"sensor_number_mask", filter.SensorNumMask},
                            {"sensor_type_mask", filter.SensorTypeMask},
                            {"severity_mask", filter.SeverityMask}});
  }
  return listing;
}

Listing list_subscriptions(const Database& database) {
  Listing listing{{text_column("Destination", "destination"), text_column("Filter", "filter"),
                   number_column("Sensor mask", "sensor_number_mask"), number_column("Type mask", "sensor_type_mask"),
                   number_column("Severity mask", "severity_mask"), number_column("Enabled", "enabled")},
                  {},
                  "There are no subscriptions."};
  for (const auto& subscription : read_all<indication_subscription_rec>(
           database, "subscriptions", count_first(db_get_all_indication_subscription))) {
    listing.rows.push_back({{"destination", text_of(subscription.DestName)},
                            {"filter", text_of(subscription.FilterName)},
                            {"sensor_number_mask", subscription.SensorNum},
                            {"sensor_type_mask", subscription.SensorType},
                            {"severity_mask", subscription.EventSeverity},
                            {"enabled", subscription.Enabled}});
  }
  return listing;
}

std::vector<HeadedListing> list_indications(const Database& database) {
  std::vector<HeadedListing> lists;
  for (const IndicationList& each : kIndicationLists) lists.push_back({each.name, each.head, each.list(database)});
  return lists;
}

}  // namespace qmvctl
