// indications: destinations, filters and subscriptions.
#include "commands.h"
#include "rows.h"
#include "text.h"

namespace qmvctl {

Listing list_destinations(const Database& database) {
  Listing listing{{text_column("Name", 26, "name"), text_column("Destination", 52, "destination")},
                  {},
                  "There are no destinations."};
  for (const auto& destination : read_all<listener_destination_rec>(database, "listener_destination",
                                                                    count_first(db_get_all_listener_destination))) {
    listing.rows.push_back({{"name", text_of(destination.Name)}, {"destination", text_of(destination.Destination)}});
  }
  return listing;
}

Listing list_filters(const Database& database) {
  Listing listing{{text_column("Name", 20, "name"), number_column("Sensor mask", 11, "sensor_number_mask"),
                   number_column("Type mask", 9, "sensor_type_mask"),
                   number_column("Severity mask", 13, "severity_mask"), text_column("Query", 19, "query")},
                  {},
                  "There are no filters."};
  for (const auto& filter : read_all<indication_filter_rec>(database, "indication_filter",
                                                            count_first(db_get_all_indication_filter_cimxml))) {
    listing.rows.push_back({{"name", text_of(filter.Name)},
                            {"query", text_of(filter.Query)},
                            {"sensor_number_mask", filter.SensorNumMask},
                            {"sensor_type_mask", filter.SensorTypeMask},
                            {"severity_mask", filter.SeverityMask}});
  }
  return listing;
}

Listing list_subscriptions(const Database& database) {
  Listing listing{
      {text_column("Destination", 15, "destination"), text_column("Filter", 15, "filter"),
       number_column("Sensor mask", 11, "sensor_number_mask"), number_column("Type mask", 9, "sensor_type_mask"),
       number_column("Severity mask", 13, "severity_mask"), number_column("Enabled", 7, "enabled")},
      {},
      "There are no subscriptions."};
  for (const auto& subscription : read_all<indication_subscription_rec>(
           database, "indication_subscription", count_first(db_get_all_indication_subscription))) {
    listing.rows.push_back({{"destination", text_of(subscription.DestName)},
                            {"filter", text_of(subscription.FilterName)},
                            {"sensor_number_mask", subscription.SensorNum},
                            {"sensor_type_mask", subscription.SensorType},
                            {"severity_mask", subscription.EventSeverity},
                            {"enabled", subscription.Enabled}});
  }
  return listing;
}

}  // namespace qmvctl
