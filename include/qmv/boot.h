/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/boot.h - boot configuration and boot order.
 * (*) marks a get-all that does not clear *records first: it stays without rows, and when counting or compiling fails.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_BOOT_H
#define QMV_BOOT_H

#include "qmv/core.h"

/* CIM_BootSettingData, table "boot_setting_data". Key: InstanceID. */
typedef struct boot_setting_data_rec {
  char InstanceID[256];
  char ElementName[256];
  char OwningEntity[256]; /* who defined the setting */
} boot_setting_data_rec;

/* CIM_BootConfigSetting, table "boot_config_setting". Key: InstanceID. */
typedef struct boot_config_setting_rec {
  char InstanceID[256];
  char ElementName[256];
} boot_config_setting_rec;

/* CIM_BootServiceCapabilities, table "boot_service_capabilities". Key: InstanceID. */
typedef struct boot_service_capabilities_rec {
  char InstanceID[256];
  char ElementName[256];
  int32_t ElementNameEditSupported; /* flag */
  int32_t BootConfigCapabilities;
} boot_service_capabilities_rec;

/* CIM_BootSourceSetting, table "boot_source_setting". Key: InstanceID. */
typedef struct boot_source_setting_rec {
  char InstanceID[256];
  char ElementName[256];
  char BootString[256];           /* names the source to the boot service */
  char BIOSBootString[256];       /* names it to the firmware of the host */
  char StructuredBootString[256]; /* "CIM:Network:1", say */
  int32_t FailThroughSupported;   /* whether the next source is tried when this one fails */
  int32_t isHost;                 /* which side the source is for, chosen by the writer */
} boot_source_setting_rec;

/* CIM_BootService, table "boot_service". Key: SystemCreationClassName. */
typedef struct boot_service_rec {
  char SystemCreationClassName[256]; /* class of the system that boots */
  char CreationClassName[256];       /* class of the service */
  char ElementName[256];
  char SystemName[256]; /* name of the system that boots */
  char Name[256];
  int32_t reserved; /* no column; 0 in records read */
} boot_service_rec;

/* The place of a boot source in the boot sequence, table "boot_order". Key: InstanceID. */
typedef struct boot_order_rec {
  char InstanceID[256];
  int32_t AssignedSequence; /* CIM_OrderedComponent.AssignedSequence; 0 for not assigned */
  int32_t isHost;           /* which side the entry is for, chosen by the writer */
} boot_order_rec;

QMV_BEGIN_DECLS

/* Reads all boot settings. Get-all. (*) */
QMV_API int32_t db_get_all_boot_setting_data(struct sqlite3* db, int32_t* count,
                                             boot_setting_data_rec** records) QMV_NOEXCEPT;

/* Reads the boot setting with that key. Get-one. */
QMV_API int32_t db_get_boot_setting_data(struct sqlite3* db, const char* InstanceID,
                                         boot_setting_data_rec** record) QMV_NOEXCEPT;

/* Stores a boot setting. Set once, by InstanceID. */
QMV_API int32_t db_set_boot_setting_data(struct sqlite3* db, const boot_setting_data_rec* record) QMV_NOEXCEPT;

/* Reads all boot configurations. Get-all. (*) */
QMV_API int32_t db_get_all_boot_config_setting(struct sqlite3* db, int32_t* count,
                                               boot_config_setting_rec** records) QMV_NOEXCEPT;

/* Reads the boot configuration with that key. Get-one. */
QMV_API int32_t db_get_boot_config_setting(struct sqlite3* db, const char* InstanceID,
                                           boot_config_setting_rec** record) QMV_NOEXCEPT;

/* Stores a boot configuration. Set, by InstanceID. */
QMV_API int32_t db_set_boot_config_setting(struct sqlite3* db, const boot_config_setting_rec* record) QMV_NOEXCEPT;

/* Reads all boot service capabilities. Get-all. (*) */
QMV_API int32_t db_get_all_boot_service_capabilities(struct sqlite3* db, int32_t* count,
                                                     boot_service_capabilities_rec** records) QMV_NOEXCEPT;

/* Reads the boot service capabilities with that key. Get-one. */
QMV_API int32_t db_get_boot_service_cap(struct sqlite3* db, const char* InstanceID,
                                        boot_service_capabilities_rec** record) QMV_NOEXCEPT;

/* Stores boot service capabilities. Set once, by InstanceID. */
QMV_API int32_t db_set_boot_service_capabilities(struct sqlite3* db,
                                                 const boot_service_capabilities_rec* record) QMV_NOEXCEPT;

/* Reads all boot sources. Get-all. (*) */
QMV_API int32_t db_get_all_boot_source_setting(struct sqlite3* db, int32_t* count,
                                               boot_source_setting_rec** records) QMV_NOEXCEPT;

/*
 * Reads the boot source with that key. Get-one.
 * Differs: SQLite's code when the statement does not compile. An allocation failure is not logged, and no statement
 *   stays open.
 */
QMV_API int32_t db_get_boot_source_setting(struct sqlite3* db, const char* InstanceID,
                                           boot_source_setting_rec** record) QMV_NOEXCEPT;

/* Stores a boot source. Set once, by InstanceID. */
QMV_API int32_t db_set_boot_source_setting(struct sqlite3* db, const boot_source_setting_rec* record) QMV_NOEXCEPT;

/* Reads all boot services. Get-all. (*) */
QMV_API int32_t db_get_all_boot_service(struct sqlite3* db, int32_t* count, boot_service_rec** records) QMV_NOEXCEPT;

/* Stores a boot service. Set, by SystemCreationClassName: two services of systems of one class share one row. */
QMV_API int32_t db_set_boot_service(struct sqlite3* db, const boot_service_rec* record) QMV_NOEXCEPT;

/*
 * Reads all boot order entries. Get-all, with SQLite's codes.
 * Differs: isHost is not read and stays 0; read entries one by one to learn it.
 */
QMV_API int32_t db_get_all_boot_order(struct sqlite3* db, int32_t* count, boot_order_rec** records) QMV_NOEXCEPT;

/* Reads the boot order entry with that key. Get-one into the caller's record, with SQLite's codes. */
QMV_API int32_t db_get_boot_order(struct sqlite3* db, const char* InstanceID, boot_order_rec* record) QMV_NOEXCEPT;

/* Stores a boot order entry. Set, by InstanceID. Differs: 1 when record is NULL or storing failed. */
QMV_API int32_t db_set_boot_order(struct sqlite3* db, const boot_order_rec* record) QMV_NOEXCEPT;

/* Deletes all boot order entries. Always 0. */
QMV_API int32_t db_delete_boot_order(struct sqlite3* db) QMV_NOEXCEPT;

/* Sets AssignedSequence to 0 in all entries of one side. Always 0. */
QMV_API int32_t db_reset_boot_order(struct sqlite3* db, int32_t isHost) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
