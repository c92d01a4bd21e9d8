/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/services.h - IP assignment, protocol services, text redirection, watchdog and account management.
 * (*) marks a get-all that does not clear *records first: it stays without rows, and when counting or compiling fails.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_SERVICES_H
#define QMV_SERVICES_H

#include "qmv/core.h"

/* CIM_IPAssignmentSettingData, table "ip_assign_settingdata". Key: InstanceID. */
typedef struct ip_assign_settingdata_rec {
  char InstanceID[256];
  int32_t AddressOrigin; /* 3 static, 4 DHCP */
  char ElementName[256];
} ip_assign_settingdata_rec;

/* CIM_StaticIPAssignmentSettingData, table "static_ip_assign_settingdata". Key: InterfaceName. Mind the order of
 * Gateway and SubnetMask. IPv4 addresses and masks are dotted decimal. */
typedef struct static_ip_assign_settingdata_rec {
  char InterfaceName[256]; /* network interface that is set */
  char IPv4Address[256];
  char Gateway[256]; /* GatewayIPv4Address */
  char SubnetMask[256];
  char IPv6Address[256];          /* as text */
  int32_t IPv6AddressType;        /* scope of the address, chosen by the writer */
  int32_t IPv6SubnetPrefixLength; /* in bits */
  char GatewayIPv6Address[256];   /* as text */
} static_ip_assign_settingdata_rec;

/* CIM_ProtocolService, table "protocol_service". Key: Name. */
typedef struct protocol_service_rec {
  char Name[256];
  int32_t Protocol; /* 1 other, 2 SSH, 3 telnet */
  char ElementName[256];
  int32_t MaxConnections; /* sessions at a time */
  int32_t RequestedState;
  int32_t EnabledState;
  int32_t HealthState;         /* CIM_ManagedSystemElement.HealthState; 5 OK */
  char OperationalStatus[256]; /* CIM_ManagedSystemElement.OperationalStatus, list; 2 OK */
  char OtherProtocol[256];     /* its name where Protocol is 1 */
} protocol_service_rec;

/* CIM_TextRedirectionService, table "textredirectionservice". Key: Name. */
typedef struct textredirectionservice_rec {
  char Name[256];
  char ElementName[256];
  int32_t MaxConcurrentEnabledSAPs; /* access points at a time */
  int32_t EnabledState;
  int32_t RequestedState;
  int32_t SharingMode;
  int32_t RedirectionServiceType;
} textredirectionservice_rec;

/* CIM_TextRedirectionSAP, table "textredirectionsap". Key: Name. */
typedef struct textredirectionsap_rec {
  char Name[256];
  char ElementName[256];
  int32_t EnabledState;
  int32_t RequestedState;
  int32_t TextFlowType;               /* terminal type of the text */
  char SessionTerminateSequence[256]; /* keys that end a session */
} textredirectionsap_rec;

/* Capabilities of the platform watchdog, which no DMTF class has; the first five fields are those of
 * CIM_EnabledLogicalElementCapabilities. Table "pwds_capabilities". Key: instance_id. */
typedef struct pwds_capabilities_rec {
  char instance_id[256];            /* InstanceID */
  char ele_name[256];               /* ElementName, name for people */
  char req_states_supported[32];    /* list */
  int32_t ele_name_edit_supported;  /* flag: the element's name can be changed. After reading: max_ele_name_len */
  int32_t max_ele_name_len;         /* longest name, in characters; never filled by reading */
  char act_on_exp_supported[32];    /* actions on expiration, list */
  char last_exp_data_supported[32]; /* what is kept of the last expiration */
  char wdt_data_supported[32];      /* what is given of the timer */
} pwds_capabilities_rec;

/* CIM_AccountManagementService, table "account_management_service". Key: Name. */
typedef struct account_management_service_rec {
  char Name[256];
  int32_t RequestedState;
  int32_t EnabledState;
  char ElementName[256];
} account_management_service_rec;

QMV_BEGIN_DECLS

/* Reads all IP assignment settings. Get-all. (*) */
QMV_API int32_t db_get_all_ip_assignment_settingdata(struct sqlite3* db, int32_t* count,
                                                     ip_assign_settingdata_rec** records) QMV_NOEXCEPT;

/* Reads the IP assignment setting with that key. Get-one into the caller's record. */
QMV_API int32_t db_get_ip_assignment_setting_data(struct sqlite3* db, const char* InstanceID,
                                                  ip_assign_settingdata_rec* record) QMV_NOEXCEPT;

/* Stores an IP assignment setting. Set, by InstanceID. */
QMV_API int32_t db_set_ip_assignment_settingdata(struct sqlite3* db,
                                                 const ip_assign_settingdata_rec* record) QMV_NOEXCEPT;

/* Reads the static settings of all interfaces. Get-all, with SQLite's codes. (*) */
QMV_API int32_t db_get_all_static_ip_assignment_settingdata(struct sqlite3* db, int32_t* count,
                                                            static_ip_assign_settingdata_rec** records) QMV_NOEXCEPT;

/* Stores an interface's static settings. Set, by InterfaceName. */
QMV_API int32_t db_set_static_ip_assignment_settingdata(struct sqlite3* db,
                                                        const static_ip_assign_settingdata_rec* record) QMV_NOEXCEPT;

/*
 * Inserts an interface's static settings; an existing row stays.
 * Returns 0, or 1 when the insert failed, also for an interface that exists.
 */
QMV_API int32_t db_init_static_ip_assignment_settingdata(struct sqlite3* db,
                                                         const static_ip_assign_settingdata_rec* record) QMV_NOEXCEPT;

/* Deletes the static settings of all interfaces. Always 0. */
QMV_API int32_t db_delete_static_ip(struct sqlite3* db) QMV_NOEXCEPT;

/* Reads all protocol services. Get-all. */
QMV_API int32_t db_get_all_protocol_service(struct sqlite3* db, int32_t* count,
                                            protocol_service_rec** records) QMV_NOEXCEPT;

/* Reads the protocol service with that name. Get-one into the caller's record. */
QMV_API int32_t db_get_protocol_service(struct sqlite3* db, const char* Name,
                                        protocol_service_rec* record) QMV_NOEXCEPT;

/* Stores a protocol service. Set, by Name. */
QMV_API int32_t db_set_protocol_service(struct sqlite3* db, const protocol_service_rec* record) QMV_NOEXCEPT;

/* Sets a protocol service's RequestedState. Always 0. */
QMV_API int32_t db_modify_protocol_service_rs(struct sqlite3* db, int32_t RequestedState,
                                              const char* Name) QMV_NOEXCEPT;

/* Stores a text redirection service. Set, by Name. */
QMV_API int32_t db_set_trs(struct sqlite3* db, const textredirectionservice_rec* record) QMV_NOEXCEPT;

/*
 * Reads the service "TextRedirectionService1". Get-one into the caller's record.
 *   count (out)  1, on every path
 */
QMV_API int32_t db_get_trs(struct sqlite3* db, textredirectionservice_rec* record, int32_t* count) QMV_NOEXCEPT;

/*
 * Sets EnabledState and RequestedState of "TextRedirectionService1" and, unless SapState is 0, EnabledState of
 * "TextRedirectionSAP1". Rows that are not there are no failure.
 * Returns 0, or 1 when a statement failed.
 */
QMV_API int32_t db_modify_trs_rs(struct sqlite3* db, int32_t State, int32_t SapState) QMV_NOEXCEPT;

/* Stores a text redirection access point, without its SessionTerminateSequence. Set, by Name. */
QMV_API int32_t db_set_text_sap(struct sqlite3* db, const textredirectionsap_rec* record) QMV_NOEXCEPT;

/* Reads the access point "TextRedirectionSAP1", this one only. Get-one into the caller's record. */
QMV_API int32_t db_get_all_textSAP(struct sqlite3* db, textredirectionsap_rec* record) QMV_NOEXCEPT;

/* Reads the access point with that name. Get-one into the caller's record. */
QMV_API int32_t db_get_textSAP(struct sqlite3* db, const char* Name, textredirectionsap_rec* record) QMV_NOEXCEPT;

/*
 * Sets the SessionTerminateSequence of "TextRedirectionSAP1".
 * Returns 0 whatever the statement did, or 1 when the sequence is NULL.
 */
QMV_API int32_t db_modify_textSAP(struct sqlite3* db, const char* SessionTerminateSequence) QMV_NOEXCEPT;

/*
 * Sets RequestedState and EnabledState of "TextRedirectionSAP1".
 * Returns 0, or 1 when the statement failed.
 */
QMV_API int32_t db_modify_textSAP_rs(struct sqlite3* db, int32_t State) QMV_NOEXCEPT;

/*
 * Looks up the SessionTerminateSequence of "TextRedirectionSAP1". (The name is spelled so.)
 * Returns the text as SQLite holds it, valid until the process ends and not to be released; NULL without a row, a value
 *   or a statement that compiles.
 * Each call whose statement compiles keeps the statement and its text for good, so the connection cannot be closed; a
 * statement that stands on a row also keeps SQLite's shared lock, so that no other connection can write the file: it
 * gets 5 (SQLITE_BUSY), or waits for ever when db_init() opened it. db_get_textSAP() reads the same without this price.
 */
QMV_API const char* db_get_sesstion_term_seq(struct sqlite3* db) QMV_NOEXCEPT;

/* Counts the watchdogs. Count. */
QMV_API int32_t db_get_pwds_capabilities_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Stores a watchdog's capabilities. Set, by instance_id. (The name is spelled so.)
 * Differs: 1 when storing failed. The texts go into the insert as they are and are read as SQL: one with a single
 *   quote fails, also for a row that exists, which then stays; pass texts of your own only.
 */
QMV_API int32_t db_set_pwds_capablities(struct sqlite3* db, const pwds_capabilities_rec* record) QMV_NOEXCEPT;

/*
 * Reads a watchdog's capabilities. Get-one into the caller's record.
 * Differs: 0 also without a row or a statement, with the record untouched; 1 when record is NULL or the statement does
 *   not compile. See the record for two of its fields.
 */
QMV_API int32_t db_get_pwds_capablities(struct sqlite3* db, const char* instance_id,
                                        pwds_capabilities_rec* record) QMV_NOEXCEPT;

/* Reads all watchdogs. Get-all. See the record for two of its fields. */
QMV_API int32_t db_get_all_pwds_capablities(struct sqlite3* db, int32_t* count,
                                            pwds_capabilities_rec** records) QMV_NOEXCEPT;

/* Stores the account management service. Set, by Name. */
QMV_API int32_t db_set_accountmgt_service(struct sqlite3* db,
                                          const account_management_service_rec* record) QMV_NOEXCEPT;

/*
 * Reads the service "AccountManagementService". Get-one into the caller's record.
 *   count (out)  1, on every path
 */
QMV_API int32_t db_get_accountmgt_service(struct sqlite3* db, account_management_service_rec* record,
                                          int32_t* count) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
