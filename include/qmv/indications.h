/*
 * qmv/indications.h - the indication service, event types, destinations, filters and subscriptions, and requested
 * state changes.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_INDICATIONS_H
#define QMV_INDICATIONS_H

#include "qmv/core.h"

/* CIM_IndicationService, table "indication_service". Key: Name. */
typedef struct indication_service_rec {
  char Name[256];
  int32_t FilterCreationEnabled;
  int32_t DeliveryRetryAttempts;
  int32_t DeliveryRetryInterval;
  int32_t SubscriptionRemovalAction;
  int32_t SubscriptionRemovalTimeInterval;
} indication_service_rec;

/* An event message, table "event_type". Key: MessageID. */
typedef struct event_type_rec {
  int32_t MessageID;
  char Description[256];
} event_type_rec;

/* Where indications go (CIM_ListenerDestination), table "listener_destination". Key: Name. */
typedef struct listener_destination_rec {
  char Name[256];
  char Destination[256];
} listener_destination_rec;

/* Which events are indicated (CIM_IndicationFilter), table "indication_filter". Key: Name. */
typedef struct indication_filter_rec {
  char Name[256];
  char Query[512];
  int32_t SensorNumMask;
  int32_t SensorTypeMask;
  int32_t SeverityMask;
} indication_filter_rec;

/* A destination and a filter (CIM_IndicationSubscription), table "indication_subscription". Key: both names. */
typedef struct indication_subscription_rec {
  char DestName[256];
  char FilterName[256];
  int32_t EventSeverity; /* the filter's SeverityMask */
  int32_t SensorNum;     /* the filter's SensorNumMask */
  int32_t SensorType;    /* the filter's SensorTypeMask */
  int32_t Enabled;
} indication_subscription_rec;

/* The state that a client last asked an instance to enter, table "request_state_change". Key: the three texts. */
typedef struct request_state_change_rec {
  char ClassName[256];
  int32_t RequestedState;
  char KeyProperty[256];
  char KeyValue[256];
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

/*
 * Reads the destination with the record's Name. Get-one into the caller's record.
 * Differs: the keys are taken from the record, which keeps them; 1 when there are no rows or they cannot be counted.
 */
QMV_API int32_t db_get_listener_destination(struct sqlite3* db, listener_destination_rec* record) QMV_NOEXCEPT;

/*
 * Reads all destinations.
 *   records (out)  one new array; untouched without rows
 *   count (out)    its number of records; written last, untouched without rows and on failure
 * Returns 0; 1 when an out is NULL, counting failed, or the statement does not compile: the array is then still to be
 *   released. When memory is short, NULL is stored and 0 returned.
 */
QMV_API int32_t db_get_all_listener_destination(struct sqlite3* db, listener_destination_rec** records,
                                                int32_t* count) QMV_NOEXCEPT;

/*
 * Stores a destination. Set, by Name.
 * Differs: 1 when the insert failed for another reason than an existing key.
 */
QMV_API int32_t db_set_listener_destination(struct sqlite3* db, const listener_destination_rec* record) QMV_NOEXCEPT;

/*
 * Deletes a destination and its subscriptions.
 * Returns 0, also when there is no such row; 1 when a name is NULL or a statement failed.
 */
QMV_API int32_t db_delete_listener_destination(struct sqlite3* db, const char* Name) QMV_NOEXCEPT;

/* Counts the filters. Count. */
QMV_API int32_t db_get_indication_filter_cimxml_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the filter with the record's Name. Get-one into the caller's record.
 * Differs: the keys are taken from the record, which keeps them; 1 when there are no rows or they cannot be counted.
 */
QMV_API int32_t db_get_indication_filter_cimxml(struct sqlite3* db, indication_filter_rec* record) QMV_NOEXCEPT;

/*
 * Reads all filters.
 *   records (out)  one new array; untouched without rows
 *   count (out)    its number of records; written last, untouched without rows and on failure
 * Returns 0; 1 when an out is NULL, counting failed, or the statement does not compile: the array is then still to be
 *   released. When memory is short, NULL is stored and 0 returned.
 */
QMV_API int32_t db_get_all_indication_filter_cimxml(struct sqlite3* db, indication_filter_rec** records,
                                                    int32_t* count) QMV_NOEXCEPT;

/*
 * Stores a filter. Set, by Name; an existing filter's new masks also go into its subscriptions.
 * Differs: 1 when the insert failed for another reason than an existing key.
 */
QMV_API int32_t db_set_indication_filter_cimxml(struct sqlite3* db, const indication_filter_rec* record) QMV_NOEXCEPT;

/*
 * Deletes a filter and its subscriptions.
 * Returns 0, also when there is no such row; 1 when a name is NULL or a statement failed.
 */
QMV_API int32_t db_delete_indication_filter_cimxml(struct sqlite3* db, const char* Name) QMV_NOEXCEPT;

/* Counts the subscriptions. Count. */
QMV_API int32_t db_get_indication_subscription_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the subscription with the record's FilterName and DestName. Get-one into the caller's record.
 * Differs: the keys are taken from the record, which keeps them; 1 when there are no rows or they cannot be counted.
 */
QMV_API int32_t db_get_indication_subscription(struct sqlite3* db, indication_subscription_rec* record) QMV_NOEXCEPT;

/*
 * Reads all subscriptions.
 *   records (out)  one new array; untouched without rows
 *   count (out)    its number of records; written last, untouched without rows and on failure
 * Returns 0; 1 when an out is NULL, counting failed, or the statement does not compile: the array is then still to be
 *   released. When memory is short, NULL is stored and 1 returned.
 */
QMV_API int32_t db_get_all_indication_subscription(struct sqlite3* db, indication_subscription_rec** records,
                                                   int32_t* count) QMV_NOEXCEPT;

/* Stores a subscription. Set, by DestName and FilterName. */
QMV_API int32_t db_set_indication_subscription(struct sqlite3* db,
                                               const indication_subscription_rec* record) QMV_NOEXCEPT;

/*
 * Deletes a subscription.
 * Returns 0, also when there is no such row; 1 when a name is NULL or a statement failed.
 */
QMV_API int32_t db_delete_indication_subscription(struct sqlite3* db, const char* FilterName,
                                                  const char* DestName) QMV_NOEXCEPT;

/*
 * Deletes the subscriptions of a filter.
 * Returns 0, also when there is no such row; 1 when a name is NULL or a statement failed.
 */
QMV_API int32_t db_delete_indication_subscription_for_filter(struct sqlite3* db, const char* FilterName) QMV_NOEXCEPT;

/* Counts the requested state changes. Count. */
QMV_API int32_t db_get_req_state_change_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the state last requested of an instance.
 *   record (in, out)  the keys; RequestedState is set, to 0 where nothing was requested
 * Returns 0, or 1 when counting failed, with the record untouched, or when there is no statement that compiles.
 */
QMV_API int32_t db_get_req_state_change(struct sqlite3* db, request_state_change_rec* record) QMV_NOEXCEPT;

/* Stores a requested state. Set, by ClassName, KeyProperty and KeyValue. */
QMV_API int32_t db_set_req_state_change(struct sqlite3* db, const request_state_change_rec* record) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
