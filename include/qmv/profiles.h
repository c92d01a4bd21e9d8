/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/profiles.h - capabilities, registered profiles, remote access, power and account management.
 * (*) marks a get-all that does not clear *records first: it stays without rows, and when counting or compiling fails.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_PROFILES_H
#define QMV_PROFILES_H

#include "qmv/core.h"

/* CIM_EnabledLogicalElementCapabilities, table "ena_log_elem_cap". Key: InstanceID. */
typedef struct ena_log_elem_cap_rec {
  char InstanceID[256];
  char RequestStatesSupported[256]; /* RequestedStatesSupported, list; the column is spelled so too */
  int32_t ElementNameEditSupported; /* flag: the element's name can be changed */
  char ElementName[256];            /* name for people */
  int32_t MaxElementNameLen;        /* longest name, in characters */
} ena_log_elem_cap_rec;

/* CIM_RegisteredProfile: a management profile as DMTF registers it, table "registered_profile". Key: InstanceID. */
typedef struct registered_profile_rec {
  char InstanceID[256];
  int32_t RegOrganization;               /* RegisteredOrganization; 2 DMTF, 1 another */
  char RegisteredName[256];              /* "Boot Control", say */
  char RegisteredVersion[256];           /* major.minor.update */
  char AdvertiseTypes[256];              /* list; 2 not advertised, 3 SLP */
  char OtherRegisteredOrganization[256]; /* its name where RegOrganization is 1 */
  char AdvertiseTypesDesc[256];          /* AdvertiseTypeDescriptions, list */
  char ImplementedFeatures[512];         /* list */
} registered_profile_rec;

/* CIM_SSHCapabilities, table "ssh_capabilities". Key: InstanceID. */
typedef struct ssh_capabilities_rec {
  char InstanceID[256];
  char ElementName[256];
  int32_t ElementNameEditSupported;         /* flag */
  int32_t MaxConnections;                   /* sessions at a time */
  char RequestedStatesSupported[256];       /* list */
  int32_t ListeningPortManagementSupported; /* flag: the port can be changed */
  int32_t MaxListeningPorts;
  char SupportedSSHVersions[256];          /* list */
  char SupportedEncryptionAlgorithms[256]; /* list */
} ssh_capabilities_rec;

/* CIM_TelnetCapabilities, table "telnet_capabilities"; as ssh_capabilities_rec. Key: InstanceID. */
typedef struct telnet_capabilities_rec {
  char InstanceID[256];
  char ElementName[256];
  int32_t ElementNameEditSupported;
  int32_t MaxConnections;
  char RequestedStatesSupported[256];
  int32_t ListeningPortManagementSupported;
  int32_t MaxListeningPorts;
  char SupportedTerminalModes[256];         /* list */
  char SupportedCharacterDisplayModes[256]; /* list */
} telnet_capabilities_rec;

/* CIM_PhysicalAssetCapabilities, table "phy_asset_capabilities". Key: InstanceID. */
typedef struct phy_asset_capabilities_rec {
  char InstanceID[256];
  char ElementName[256];
  int32_t FRUInfoSupported; /* flag: inventory data are given */
} phy_asset_capabilities_rec;

/* CIM_DHCPCapabilities, table "dhcp_capabilities". Key: InstanceID. */
typedef struct dhcp_capabilities_rec {
  char InstanceID[256];
  char ElementName[256];
  int32_t ElementNameEditSupported; /* flag */
  char OptionsSupported[256];       /* list of DHCP options */
} dhcp_capabilities_rec;

/* CIM_DHCPProtocolEndpoint, table "dhcp_protocol_endpoint". Key: Name. */
typedef struct dhcp_protocol_endpoint_rec {
  char Name[256];
  char NameFormat[256];    /* what the name is made of */
  int32_t ProtocolIFType;  /* 1 other */
  char OtherTypeDesc[256]; /* OtherTypeDescription, where ProtocolIFType is 1 */
  int32_t EnabledState;
  int32_t RequestedState;
  int32_t ClientState; /* where the client is in obtaining its lease */
  char ElementName[256];
} dhcp_protocol_endpoint_rec;

/* CIM_ConcreteCollection, table "concrete_collection". Key: InstanceID. */
typedef struct concrete_collection_rec {
  char InstanceID[256];
  char ElementName[256];
} concrete_collection_rec;

/* CIM_PowerManagementCapabilities, table "power_management_capabilities". Key: InstanceID. */
typedef struct power_management_capabilities_rec {
  char InstanceID[256];
  char ElementName[256];
  char PowerChangeCapabilities[64];       /* list; how power can be changed */
  char PowerStateSupported[64];           /* PowerStatesSupported, list */
  char RequestedPowerStatesSupported[64]; /* list */
} power_management_capabilities_rec;

/* CIM_PowerManagementService, table "power_management_service". Key: Name. */
typedef struct power_management_service_rec {
  char Name[256];
  char SystemCreationClassName[256]; /* class of the system that the service is part of */
  char CreationClassName[256];       /* class of the service */
  char ElementName[256];
} power_management_service_rec;

/* CIM_AccountManagementCapabilities, table "account_mgt_capabilities". Key: InstanceID. */
typedef struct account_mgt_capabilities_rec {
  char InstanceID[256];
  char ElementName[256];
  int32_t ElementNameEditSupported; /* flag */
  int32_t MaxElementNameLen;        /* in characters */
  char OperationsSupported[256];    /* list; what can be done to accounts */
} account_mgt_capabilities_rec;

/* CIM_AccountSettingData, table "account_setting_data". Key: InstanceID. */
typedef struct account_setting_data_rec {
  char InstanceID[256];
  char ElementName[256];
  char MaxPwdExpiration[64]; /* MaximumPasswordExpiration, a CIM interval (a text, not a number) */
} account_setting_data_rec;

QMV_BEGIN_DECLS

/*
 * Counts the rows of a table. Count.
 *   table  its name, read as SQL; of an empty name 1 is returned and *count stays untouched
 */
QMV_API int32_t db_get_cnt(struct sqlite3* db, int32_t* count, const char* table) QMV_NOEXCEPT;

/* Reads all capabilities. Get-all. (*) */
QMV_API int32_t db_get_all_elec(struct sqlite3* db, int32_t* count, ena_log_elem_cap_rec** records) QMV_NOEXCEPT;

/* Reads the capabilities with that key. Get-one. */
QMV_API int32_t db_get_elec(struct sqlite3* db, const char* InstanceID, ena_log_elem_cap_rec** record) QMV_NOEXCEPT;

/* Stores capabilities. Set, by InstanceID. */
QMV_API int32_t db_set_elec(struct sqlite3* db, const ena_log_elem_cap_rec* record) QMV_NOEXCEPT;

/* Reads all registered profiles. Get-all. (*) */
QMV_API int32_t db_get_all_regprofile(struct sqlite3* db, int32_t* count,
                                      registered_profile_rec** records) QMV_NOEXCEPT;

/* Reads the profile with that key. Get-one. */
QMV_API int32_t db_get_regprofile(struct sqlite3* db, const char* InstanceID,
                                  registered_profile_rec** record) QMV_NOEXCEPT;

/* Stores a registered profile. Set, by InstanceID. */
QMV_API int32_t db_set_regprofile(struct sqlite3* db, const registered_profile_rec* record) QMV_NOEXCEPT;

/* Reads all SSH capabilities. Get-all. (*) */
QMV_API int32_t db_get_all_sshcapabilities(struct sqlite3* db, int32_t* count,
                                           ssh_capabilities_rec** records) QMV_NOEXCEPT;

/* Reads the SSH capabilities with that key. Get-one. */
QMV_API int32_t db_get_sshcapabilities(struct sqlite3* db, const char* InstanceID,
                                       ssh_capabilities_rec** record) QMV_NOEXCEPT;

/* Stores SSH capabilities. Set, by InstanceID. */
QMV_API int32_t db_set_sshcapabilities(struct sqlite3* db, const ssh_capabilities_rec* record) QMV_NOEXCEPT;

/* Reads all telnet capabilities. Get-all. (*) */
QMV_API int32_t db_get_all_telnetcapabilities(struct sqlite3* db, int32_t* count,
                                              telnet_capabilities_rec** records) QMV_NOEXCEPT;

/* Reads the telnet capabilities with that key. Get-one. */
QMV_API int32_t db_get_telnetcapabilities(struct sqlite3* db, const char* InstanceID,
                                          telnet_capabilities_rec** record) QMV_NOEXCEPT;

/* Stores telnet capabilities. Set, by InstanceID. */
QMV_API int32_t db_set_telnetcapabilities(struct sqlite3* db, const telnet_capabilities_rec* record) QMV_NOEXCEPT;

/* Reads all physical asset capabilities. Get-all. (*) */
QMV_API int32_t db_get_all_phy_asset_capabilities(struct sqlite3* db, int32_t* count,
                                                  phy_asset_capabilities_rec** records) QMV_NOEXCEPT;

/* Reads the first row of the physical asset capabilities, whatever their key. Get-one. */
QMV_API int32_t db_get_phy_asset_capabilities(struct sqlite3* db, phy_asset_capabilities_rec** record) QMV_NOEXCEPT;

/* Stores physical asset capabilities. Set, by InstanceID. */
QMV_API int32_t db_set_phy_asset_capabilities(struct sqlite3* db,
                                              const phy_asset_capabilities_rec* record) QMV_NOEXCEPT;

/* Reads the first row of the DHCP capabilities, whatever their key. Get-one. */
QMV_API int32_t db_get_dhcp_capabilities(struct sqlite3* db, dhcp_capabilities_rec** record) QMV_NOEXCEPT;

/* Stores DHCP capabilities. Set, by InstanceID. */
QMV_API int32_t db_set_dhcp_capabilities(struct sqlite3* db, const dhcp_capabilities_rec* record) QMV_NOEXCEPT;

/*
 * Reads the DHCP protocol endpoint with that name. Get-one.
 * Differs: from the third field on, the fields do not hold their own columns: ProtocolIFType and ClientState hold
 *   RequestedState, OtherTypeDesc holds ProtocolIFType, EnabledState holds OtherTypeDesc, RequestedState holds
 *   EnabledState, and ElementName holds ClientState; the column ElementName is never read.
 */
QMV_API int32_t db_get_dhcp_protocol_endpoint(struct sqlite3* db, const char* Name,
                                              dhcp_protocol_endpoint_rec** record) QMV_NOEXCEPT;

/* Stores a DHCP protocol endpoint, each field under its own column. Set, by Name. */
QMV_API int32_t db_set_dhcp_protocol_endpoint(struct sqlite3* db,
                                              const dhcp_protocol_endpoint_rec* record) QMV_NOEXCEPT;

/* Reads all concrete collections. Get-all. (*) */
QMV_API int32_t db_get_all_concrete_collection(struct sqlite3* db, int32_t* count,
                                               concrete_collection_rec** records) QMV_NOEXCEPT;

/* Reads the concrete collection with that key. Get-one. */
QMV_API int32_t db_get_concrete_collection(struct sqlite3* db, const char* InstanceID,
                                           concrete_collection_rec** record) QMV_NOEXCEPT;

/* Stores a concrete collection. Set, by InstanceID. */
QMV_API int32_t db_set_concrete_collection(struct sqlite3* db, const concrete_collection_rec* record) QMV_NOEXCEPT;

/* Reads all power management capabilities. Get-all. (*) */
QMV_API int32_t db_get_all_power_mgt_capabilities(struct sqlite3* db, int32_t* count,
                                                  power_management_capabilities_rec** records) QMV_NOEXCEPT;

/* Reads the power management capabilities with that key. Get-one. */
QMV_API int32_t db_get_power_mgt_capabilities(struct sqlite3* db, const char* InstanceID,
                                              power_management_capabilities_rec** record) QMV_NOEXCEPT;

/* Stores power management capabilities. Set, by InstanceID. */
QMV_API int32_t db_set_power_mgt_capabilities(struct sqlite3* db,
                                              const power_management_capabilities_rec* record) QMV_NOEXCEPT;

/* Reads all power management services. Get-all. (*) */
QMV_API int32_t db_get_all_power_mgt_service(struct sqlite3* db, int32_t* count,
                                             power_management_service_rec** records) QMV_NOEXCEPT;

/* Reads the power management service with that name and system class. Get-one. */
QMV_API int32_t db_get_power_mgt_service(struct sqlite3* db, const char* Name, const char* SystemCreationClassName,
                                         power_management_service_rec** record) QMV_NOEXCEPT;

/* Stores a power management service. Set, by Name alone, whatever the row's SystemCreationClassName. */
QMV_API int32_t db_set_power_mgt_service(struct sqlite3* db, const power_management_service_rec* record) QMV_NOEXCEPT;

/* Reads all account management capabilities. Get-all. (*) */
QMV_API int32_t db_get_all_account_mgt_capabilities(struct sqlite3* db, int32_t* count,
                                                    account_mgt_capabilities_rec** records) QMV_NOEXCEPT;

/* Reads the account management capabilities with that key. Get-one. */
QMV_API int32_t db_get_account_mgt_capabilities(struct sqlite3* db, const char* InstanceID,
                                                account_mgt_capabilities_rec** record) QMV_NOEXCEPT;

/* Stores account management capabilities. Set once, by InstanceID. */
QMV_API int32_t db_set_account_mgt_capabilities(struct sqlite3* db,
                                                const account_mgt_capabilities_rec* record) QMV_NOEXCEPT;

/* Reads all account settings. Get-all. (*) */
QMV_API int32_t db_get_all_account_setting_data(struct sqlite3* db, int32_t* count,
                                                account_setting_data_rec** records) QMV_NOEXCEPT;

/* Reads the account settings with that key. Get-one. */
QMV_API int32_t db_get_account_setting_data(struct sqlite3* db, const char* InstanceID,
                                            account_setting_data_rec** record) QMV_NOEXCEPT;

/* Stores account settings. Set once, by InstanceID. */
QMV_API int32_t db_set_account_setting_data(struct sqlite3* db, const account_setting_data_rec* record) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
