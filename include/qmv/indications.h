/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/indications.h - the indication service, event types, destinations, filters, subscriptions, and requested states.
 * Destinations, filters and subscriptions have shapes of their own:
 *  - Get-one by record: a get-one into the caller's record that takes the keys from the record, which keeps them. It
 *    counts the rows first: 1 also when that failed.
 *  - Get-all, array first: counts, makes the array, and reads that many rows into it; rows that appear or vanish
 *    meanwhile as in a get-all. Returns 0 with *records and *count set, also when the reading failed; 0 with both
 *    untouched when there are no rows; 0 with NULL stored and *count untouched when memory is short, with no statement
 *    open; 1 with both untouched when one is NULL or counting failed; 1 with *count untouched when the statement is
 *    missing or does not compile: release *records then too.
 *  - Checked delete: returns 0, also when there is no such row; 1 when a name is NULL or a statement failed.
 * The other conventions and shapes named here stand in qmv.h.
 */
#ifndef QMV_INDICATIONS_H
#define QMV_INDICATIONS_H

#include "qmv/core.h"

/* CIM_IndicationService, table "indication_service". Key: Name. */
typedef struct indication_service_rec {
  char Name[256];
  int32_t FilterCreationEnabled; /* flag: clients may make filters */
  int32_t DeliveryRetryAttempts;
  int32_t DeliveryRetryInterval;           /* seconds */
  int32_t SubscriptionRemovalAction;       /* for destinations that stay unreachable: 2 remove, 3 disable, 4 ignore */
  int32_t SubscriptionRemovalTimeInterval; /* seconds */
} indication_service_rec;

/* An event message, table "event_type". Key: MessageID. */
typedef struct event_type_rec {
  int32_t MessageID;     /* number of the message */
  char Description[256]; /* its text */
} event_type_rec;

/* Where indications go (CIM_ListenerDestination), table "listener_destination". Key: Name. */
typedef struct listener_destination_rec {
  char Name[256];
  char Destination[256]; /* URL */
} listener_destination_rec;

/* Which events are indicated (CIM_IndicationFilter), table "indication_filter". Key: Name. The masks are what the
 * indication service looks for in an event; they and Query are only transported. */
typedef struct indication_filter_rec {
  char Name[256];
  char Query[512];
  int32_t SensorNumMask;
  int32_t SensorTypeMask;
  int32_t SeverityMask;
} indication_filter_rec;

/* Which filter's events go to which destination (CIM_IndicationSubscription), table "indication_subscription".
 * Key: both names. */
typedef struct indication_subscription_rec {
  char DestName[256];    /* Name of a destination */
  char FilterName[256];  /* Name of a filter */
  int32_t EventSeverity; /* the filter's SeverityMask */
  int32_t SensorNum;     /* the filter's SensorNumMask */
  int32_t SensorType;    /* the filter's SensorTypeMask */
  int32_t Enabled;       /* flag: events are delivered */
} indication_subscription_rec;

/* The state that a client last asked an instance to enter, table "request_state_change". Key: the three texts. */
typedef struct request_state_change_rec {
  char ClassName[256];    /* CIM class of the instance */
  int32_t RequestedState; /* CIM_EnabledLogicalElement.RequestedState */
  char KeyProperty[256];  /* property that names the instance */
  char KeyValue[256];     /* its value */
} request_state_change_rec;

QMV_BEGIN_DECLS

/* Stores the indication service. Set, by Name. */
QMV_API int32_t db_set_indication_service(struct sqlite3* db, const indication_service_rec* record) QMV_NOEXCEPT;

/* Reads the service "IndicationService". Get-one into the caller's record. */
QMV_API int32_t db_get_indication_service(struct sqlite3* db, indication_service_rec* record) QMV_NOEXCEPT;

/* Stores an event message. Set, by MessageID. */
QMV_API int32_t db_set_EventType_Data(struct sqlite3* db, const event_type_rec* record) QMV_NOEXCEPT;

/* Reads the first event message with that description. Get-one into the caller's record. */
QMV_API int32_t db_get_MessageID(struct sqlite3* db, const char* Description, event_type_rec* record) QMV_NOEXCEPT;

/* Counts the destinations. Count. */
QMV_API int32_t db_get_listener_destination_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads the destination with the record's Name. Get-one by record. */
QMV_API int32_t db_get_listener_destination(struct sqlite3* db, listener_destination_rec* record) QMV_NOEXCEPT;

/* Reads all destinations. Get-all, array first. */
QMV_API int32_t db_get_all_listener_destination(struct sqlite3* db, listener_destination_rec** records,
                                                int32_t* count) QMV_NOEXCEPT;

/* Stores a destination. Set, by Name. Differs: 1 when the insert failed for another reason than an existing key. */
QMV_API int32_t db_set_listener_destination(struct sqlite3* db, const listener_destination_rec* record) QMV_NOEXCEPT;

/* Deletes a destination and its subscriptions. Checked delete. */
QMV_API int32_t db_delete_listener_destination(struct sqlite3* db, const char* Name) QMV_NOEXCEPT;

/* Counts the filters. Count. */
QMV_API int32_t db_get_indication_filter_cimxml_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads the filter with the record's Name. Get-one by record. */
QMV_API int32_t db_get_indication_filter_cimxml(struct sqlite3* db, indication_filter_rec* record) QMV_NOEXCEPT;

/* Reads all filters. Get-all, array first. */
QMV_API int32_t db_get_all_indication_filter_cimxml(struct sqlite3* db, indication_filter_rec** records,
                                                    int32_t* count) QMV_NOEXCEPT;

/*
 * Stores a filter. Set, by Name; an existing filter's new masks also go into its subscriptions.
 * Differs: 1 when the insert failed for another reason than an existing key.
 */
QMV_API int32_t db_set_indication_filter_cimxml(struct sqlite3* db, const indication_filter_rec* record) QMV_NOEXCEPT;

/* Deletes a filter and its subscriptions. Checked delete. */
QMV_API int32_t db_delete_indication_filter_cimxml(struct sqlite3* db, const char* Name) QMV_NOEXCEPT;

/* Counts the subscriptions. Count. */
QMV_API int32_t db_get_indication_subscription_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads the subscription with the record's FilterName and DestName. Get-one by record. */
QMV_API int32_t db_get_indication_subscription(struct sqlite3* db, indication_subscription_rec* record) QMV_NOEXCEPT;

/* Reads all subscriptions. Get-all, array first. Differs: 1 when memory is short. */
QMV_API int32_t db_get_all_indication_subscription(struct sqlite3* db, indication_subscription_rec** records,
                                                   int32_t* count) QMV_NOEXCEPT;

/* Stores a subscription. Set, by DestName and FilterName. */
QMV_API int32_t db_set_indication_subscription(struct sqlite3* db,
                                               const indication_subscription_rec* record) QMV_NOEXCEPT;

/* Deletes a subscription. Checked delete. */
QMV_API int32_t db_delete_indication_subscription(struct sqlite3* db, const char* FilterName,
                                                  const char* DestName) QMV_NOEXCEPT;

/* Deletes the subscriptions of a filter. Checked delete. */
QMV_API int32_t db_delete_indication_subscription_for_filter(struct sqlite3* db, const char* FilterName) QMV_NOEXCEPT;

/* Counts the requested state changes. Count. */
QMV_API int32_t db_get_req_state_change_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the state last requested of an instance.
 *   record (in, out)  the keys; RequestedState is set, to 0 where nothing was requested or read
 * Returns 0; 1 when counting failed, with the record untouched, or when the statement is missing or does not compile.
 */
QMV_API int32_t db_get_req_state_change(struct sqlite3* db, request_state_change_rec* record) QMV_NOEXCEPT;

/* Stores a requested state. Set, by ClassName, KeyProperty and KeyValue. */
QMV_API int32_t db_set_req_state_change(struct sqlite3* db, const request_state_change_rec* record) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
