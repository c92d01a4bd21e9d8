// Sample: the indication service, and one station that is told of critical temperatures and power supplies.
#include "sample.h"
#include "sample_rows.h"

namespace qmvctl {

namespace {

// Three attempts every 30 seconds; the subscriptions of a destination that stays silent for 30 days are removed (2).
constexpr indication_service_rec kServices[] = {
    {"IndicationService", 1, 3, 30, 2, 2592000},
};

// Threshold events (IPMI 2.0, table 42-2).
constexpr event_type_rec kEventTypes[] = {
    {1, "Lower Non-critical going low"},
    {2, "Lower Critical going low"},
    {3, "Upper Non-critical going high"},
    {4, "Upper Critical going high"},
};

constexpr listener_destination_rec kDestinations[] = {
    {"Station1", "https://192.0.2.20:5989/indications"},
};

// Any sensor (255) of type temperature (1) or power supply (8), when critical (6).
constexpr indication_filter_rec kFilters[] = {
    {"CriticalTemperature", "SELECT * FROM CIM_AlertIndication", 255, 1, 6},
    {"CriticalPowerSupply", "SELECT * FROM CIM_AlertIndication", 255, 8, 6},
};

// With the masks of their filters.
constexpr indication_subscription_rec kSubscriptions[] = {
    {"Station1", "CriticalTemperature", 6, 255, 1, 1},
    {"Station1", "CriticalPowerSupply", 6, 255, 8, 0},
};

}  // namespace

void store_sample_indications(Database& database) {
  store_rows(database, "indication_service", kServices, db_set_indication_service);
  store_rows(database, "event_type", kEventTypes, db_set_EventType_Data);
  store_rows(database, "listener_destination", kDestinations, db_set_listener_destination);
  store_rows(database, "indication_filter", kFilters, db_set_indication_filter_cimxml);
  store_rows(database, "indication_subscription", kSubscriptions, db_set_indication_subscription);
}

}  // namespace qmvctl
