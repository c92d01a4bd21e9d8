/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/fru.h - FRU inventory: one row per field-replaceable unit, in table "fru".
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_FRU_H
#define QMV_FRU_H

#include "qmv/core.h"

/*
 * A field-replaceable unit. The first four fields are its address and key: bytes 6 to 9 of the FRU device locator
 * record (IPMI 2.0, table 43-7). The inventory strings, UTF-8, come from the FRU's chassis, product and board
 * information areas (IPMI Platform Management FRU Information Storage Definition).
 */
typedef struct fru_rec {
  int32_t FruIDSlaveAddr;   /* FRU device ID, or slave address of a device without a controller */
  int32_t DeviceAccessAddr; /* slave address of the controller that gives access */
  int32_t LUNBusID;         /* bit 7 logical FRU device, LUN in bits 4 and 3, private bus in bits 2 to 0 */
  int32_t ChannelNumber;    /* channel of that controller */
  int32_t EntityID;         /* what the FRU is, table 43-13 */
  int32_t EntityInst;       /* which of them */
  int32_t IDStrLen;         /* length of DevIdStr as the locator gives it, in bytes */
  char DevIdStr[256];       /* the locator's ID string */
  char ChassisSerNumber[256];
  char ChassisPartNumber[256];
  char ChassisCustFields[256]; /* custom fields, separated by ", " */
  char ProdSerNumber[256];
  char ProdPartNumber[256]; /* part or model number */
  char ProdMfrName[256];    /* manufacturer */
  char BrdSerNumber[256];
  char BrdPartNumber[256];
  char BrdMfrName[256]; /* manufacturer */
} fru_rec;

QMV_BEGIN_DECLS

/* Reads the FRU with that address. Get-one. */
QMV_API int32_t db_get_fru_info(struct sqlite3* db, int32_t FruIDSlaveAddr, int32_t DeviceAccessAddr, int32_t LUNBusID,
                                int32_t ChannelNumber, fru_rec** record) QMV_NOEXCEPT;

/* Stores a FRU. Set once, by the four address fields. */
QMV_API int32_t db_set_fru_info(struct sqlite3* db, const fru_rec* record) QMV_NOEXCEPT;

/* Counts the FRUs. Count. */
QMV_API int32_t db_get_fru_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the first FRU of an entity into the caller's record.
 *   record (out)  filled from the row
 *   EntityID      table 43-13
 * Returns 0, also when no FRU has that entity ID or the step fails: the record is then untouched, so clear it first to
 *   tell; 1 when record is NULL, memory is short, or the statement is missing or does not compile.
 */
QMV_API int32_t db_get_fru_by_entity_id(struct sqlite3* db, fru_rec* record, int32_t EntityID) QMV_NOEXCEPT;

/* Reads all FRUs. Get-all. */
QMV_API int32_t db_get_all_fru_info(struct sqlite3* db, int32_t* count, fru_rec** records) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
