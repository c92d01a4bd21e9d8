/* The indication service, event types, destinations, filters and subscriptions, and requested state changes. */
#include <string.h>

#include "host.h"

static void service(struct sqlite3* db) {
  indication_service_rec stored, one;
  STORE(stored, Name, "IndicationService", db_set_indication_service);
  stored.DeliveryRetryAttempts = 3;
  CHECK_INT(0, db_set_indication_service(db, &stored));
  memset(&one, 0, sizeof one);
  CHECK_INT(0, db_get_indication_service(db, &one));
  CHECK_RECORD(stored, &one);
}

static void event_types(struct sqlite3* db) {
  event_type_rec stored, one;
  STORE(stored, Description, "it's hot", db_set_EventType_Data);
  STORE_AGAIN(stored, Description, db_set_EventType_Data);
  CHECK_FILLED(stored, db_get_MessageID, "another", one);
}

/* The accessors of destinations, filters and subscriptions have their outputs in another order. */
#define CHECK_COUNTED_AND_LISTED(expected, get_count, get_all) \
  do {                                                         \
    int32_t count = -1;                                        \
    CHECK_INT(0, get_count(db, &count));                       \
    CHECK_INT(1, count);                                       \
    count = -1;                                                \
    CHECK_INT(0, get_all(db, &read, &count));                  \
    CHECK_INT(1, count);                                       \
    CHECK_RECORD(expected, read);                              \
    RELEASE(read);                                             \
  } while (0)

static void destinations(struct sqlite3* db) {
  listener_destination_rec stored, one, *read = NULL;
  STORE(stored, Name, "it's", db_set_listener_destination);
  STORE_AGAIN(stored, Destination, db_set_listener_destination);
  CHECK_COUNTED_AND_LISTED(stored, db_get_listener_destination_cnt, db_get_all_listener_destination);
  memset(&one, 0, sizeof one);
  SET(one.Name, "it's");
  CHECK_INT(0, db_get_listener_destination(db, &one));
  CHECK_RECORD(stored, &one);
}

static void filters(struct sqlite3* db) {
  indication_filter_rec stored, one, *read = NULL;
  STORE(stored, Name, "it's", db_set_indication_filter_cimxml);
  STORE_AGAIN(stored, Query, db_set_indication_filter_cimxml);
  CHECK_COUNTED_AND_LISTED(stored, db_get_indication_filter_cimxml_cnt, db_get_all_indication_filter_cimxml);
  memset(&one, 0, sizeof one);
  SET(one.Name, "it's");
  CHECK_INT(0, db_get_indication_filter_cimxml(db, &one));
  CHECK_RECORD(stored, &one);
}

static void subscriptions(struct sqlite3* db) {
  indication_subscription_rec stored, one, *read = NULL;
  STORE(stored, DestName, "here", db_set_indication_subscription);
  SET(stored.FilterName, "all");
  CHECK_INT(0, db_set_indication_subscription(db, &stored));
  CHECK_INT(2, value_of(db, "select count(*) from indication_subscription"));
  CHECK_INT(0, db_delete_indication_subscription_for_filter(db, "all"));
  CHECK_INT(1, value_of(db, "select count(*) from indication_subscription"));
  RUN(db, "delete from indication_subscription");

  CHECK_INT(0, db_set_indication_subscription(db, &stored));
  stored.Enabled = 1;
  CHECK_INT(0, db_set_indication_subscription(db, &stored));
  CHECK_COUNTED_AND_LISTED(stored, db_get_indication_subscription_cnt, db_get_all_indication_subscription);
  memset(&one, 0, sizeof one);
  SET(one.DestName, "here");
  SET(one.FilterName, "all");
  CHECK_INT(0, db_get_indication_subscription(db, &one));
  CHECK_RECORD(stored, &one);
  CHECK_INT(0, db_delete_indication_subscription(db, "all", "here"));
  CHECK_INT(0, value_of(db, "select count(*) from indication_subscription"));
}

/* A destination and a filter take their subscriptions with them. */
static void deletes(struct sqlite3* db) {
  RUN(db, "insert into indication_subscription (DestName, FilterName) values ('it''s', 'x'), ('x', 'it''s'), (1, 2)");
  CHECK_INT(0, db_delete_listener_destination(db, "it's"));
  CHECK_INT(0, value_of(db, "select count(*) from listener_destination"));
  CHECK_INT(2, value_of(db, "select count(*) from indication_subscription"));
  CHECK_INT(0, db_delete_indication_filter_cimxml(db, "it's"));
  CHECK_INT(0, value_of(db, "select count(*) from indication_filter"));
  CHECK_INT(1, value_of(db, "select count(*) from indication_subscription"));
}

void indications(void) {
  sqlite3* const db = open_with_schema();
  service(db);
  event_types(db);
  destinations(db);
  filters(db);
  subscriptions(db);
  deletes(db);
  CLOSE(db);
}

void requested_states(void) {
  sqlite3* const db = open_with_schema();
  request_state_change_rec stored, one;
  int32_t count = -1;
  STORE(stored, KeyValue, "it's", db_set_req_state_change);
  stored.RequestedState = 3;
  CHECK_INT(0, db_set_req_state_change(db, &stored));
  CHECK_INT(0, db_get_req_state_change_cnt(db, &count));
  CHECK_INT(1, count);
  one = stored;
  one.RequestedState = -1;
  CHECK_INT(0, db_get_req_state_change(db, &one));
  CHECK_RECORD(stored, &one);
  SET(one.KeyValue, "no");
  CHECK_INT(0, db_get_req_state_change(db, &one));
  CHECK_INT(0, one.RequestedState);
  CLOSE(db);
}
