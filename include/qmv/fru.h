/*
 * qmv/fru.h - FRU inventory: one row per field-replaceable unit, in table "fru".
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_FRU_H
#define QMV_FRU_H

#include "qmv/core.h"

/*
 * A field-replaceable unit. The first four fields are its address and key: bytes 6 to 9 of the FRU device locator
 * record (IPMI 2.0, table 43-7). The inventory strings come from the FRU's chassis, product and board information areas
 * (IPMI Platform Management FRU Information Storage Definition).
 */
typedef struct fru_rec {
  int32_t FruIDSlaveAddr;   /* FRU device ID, or slave address of a device without a controller */
  int32_t DeviceAccessAddr; /* slave address of the controller that gives access */
  int32_t LUNBusID;         /* logical device, LUN, private bus */
  int32_t ChannelNumber;
  int32_t EntityID;   /* IPMI 2.0, table 43-13 */
  int32_t EntityInst; /* entity instance */
  int32_t IDStrLen;   /* length of DevIdStr as the locator gives it, in bytes */
  char DevIdStr[256]; /* the locator's device ID string */
  char ChassisSerNumber[256];
  char ChassisPartNumber[256];
  char ChassisCustFields[256];
  char ProdSerNumber[256];
  char ProdPartNumber[256];
  char ProdMfrName[256];
  char BrdSerNumber[256];
  char BrdPartNumber[256];
  char BrdMfrName[256];
} fru_rec;

QMV_BEGIN_DECLS

/*
 * Reads the FRU with that address. Get-one.
 *   record (out)  the new record
 */
QMV_API int32_t db_get_fru_info(struct sqlite3* db, int32_t FruIDSlaveAddr, int32_t DeviceAccessAddr, int32_t LUNBusID,
                                int32_t ChannelNumber, fru_rec** record) QMV_NOEXCEPT;

/*
 * Stores a FRU. Set, by the four address fields.
 * Differs: a row that exists is never updated, since SQLite rejects the update; it keeps its values and 0 is returned.
 */
QMV_API int32_t db_set_fru_info(struct sqlite3* db, const fru_rec* record) QMV_NOEXCEPT;

/* Counts the FRUs. Count. */
QMV_API int32_t db_get_fru_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the first FRU of an entity into the caller's record.
 *   record (out)  filled from the row
 *   EntityID      IPMI 2.0, table 43-13
 * Returns 0, also when no FRU has that entity ID: the record is then untouched, so clear it first to tell. 1 when
 * record is NULL, memory is short or the statement does not compile.
 */
QMV_API int32_t db_get_fru_by_entity_id(struct sqlite3* db, fru_rec* record, int32_t EntityID) QMV_NOEXCEPT;

/* Reads all FRUs. Get-all. */
QMV_API int32_t db_get_all_fru_info(struct sqlite3* db, int32_t* count, fru_rec** records) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
