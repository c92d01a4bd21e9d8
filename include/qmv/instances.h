/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/instances.h - instances derived from sensors and FRUs: physical assets, physical elements, power supplies.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_INSTANCES_H
#define QMV_INSTANCES_H

#include "qmv/fru.h"

/* A physical asset (CIM_PhysicalElement): a FRU together with a sensor of the same entity. The fields down to
 * BrdMfrName are those of fru_rec. */
typedef struct fru_sdr_rec {
  int32_t FruIDSlaveAddr;
  int32_t DeviceAccessAddr;
  int32_t LUNBusID;
  int32_t ChannelNumber;
  int32_t EntityID;
  int32_t EntityInst;
  int32_t IDStrLen;
  char DevIdStr[256];
  char ChassisSerNumber[256];
  char ChassisPartNumber[256];
  char ChassisCustFields[256];
  char ProdSerNumber[256];
  char ProdPartNumber[256];
  char ProdMfrName[256];
  char BrdSerNumber[256];
  char BrdPartNumber[256];
  char BrdMfrName[256];
  int32_t IdStrLen;       /* length of an ID string, in bytes; whose, says the function */
  char IdStr[256];        /* the sensor's ID string */
  int32_t IsFRUAvailable; /* from the sensor; db_get_all_physicalasset_element() only */
  int32_t SensorNum;      /* db_get_all_physicalasset_element() only */
} fru_sdr_rec;

/* Sizes of the buffers that get_sqlqueries() and get_sqlqueries_nonFRU() fill, in bytes, terminating zero included. */
#define QMV_COUNT_QUERY_SIZE 277
#define QMV_LIST_QUERY_SIZE 418

QMV_BEGIN_DECLS

/* Counts the pairs of a FRU and a compact sensor of its entity. Count. */
QMV_API int32_t db_get_fru_compact_sdr_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the pairs of a FRU and a compact sensor of its entity. Get-all.
 * IdStrLen is the FRU row's column of that name; IDStrLen, DevIdStr, IsFRUAvailable and SensorNum stay zero.
 * Differs: 0 whenever the count is 0, even when counting failed. When the statement for a FRU's inventory strings does
 *   not compile, its code is returned at once, with the records read so far; the statement that stays open then stands
 *   on a row, with the consequences of convention 7.
 */
QMV_API int32_t db_get_all_fru_compact_sdr(struct sqlite3* db, int32_t* count, fru_sdr_rec** records) QMV_NOEXCEPT;

/*
 * Reads the first pair of a FRU and a compact sensor of an entity. Get-one into the caller's record, with SQLite's
 * codes. IdStrLen is the sensor's; IDStrLen, DevIdStr, IsFRUAvailable and SensorNum are untouched.
 * The statement does not compile where the sensor table has columns of the same names as the FRU table (as schema/ has
 * them), since they are then ambiguous to SQLite.
 */
QMV_API int32_t db_get_fru_compact_sdr(struct sqlite3* db, int32_t EntityID, int32_t EntityInst,
                                       fru_sdr_rec* record) QMV_NOEXCEPT;

/* Counts the pairs of a FRU and a full sensor of its entity. Count. */
QMV_API int32_t db_get_fru_full_sdr_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads the pairs of a FRU and a full sensor of its entity; as db_get_all_fru_compact_sdr(). */
QMV_API int32_t db_get_all_fru_full_sdr(struct sqlite3* db, int32_t* count, fru_sdr_rec** records) QMV_NOEXCEPT;

/*
 * Reads the first pair of a FRU and a full sensor of an entity; as db_get_fru_compact_sdr().
 * Differs: IdStrLen is the FRU row's.
 */
QMV_API int32_t db_get_fru_full_sdr(struct sqlite3* db, int32_t EntityID, int32_t EntityInst,
                                    fru_sdr_rec* record) QMV_NOEXCEPT;

/*
 * Hands out the statements that count and list the FRUs of a CIM physical element class, joined with their sensors.
 *   class_name   CIM_Slot, CIM_Card, CIM_Chassis, CIM_Chip, CIM_PhysicalPackage, CIM_PhysicalConnector or
 *                CIM_PhysicalMemory, in any case
 *   count (out)  the counting statement; a buffer of QMV_COUNT_QUERY_SIZE bytes
 *   list (out)   the listing statement; a buffer of QMV_LIST_QUERY_SIZE bytes. Its columns: FruIDSlaveAddr,
 *                DeviceAccessAddr, LUNBusID, ChannelNumber, EntityID, EntityInstance, IdStrLen, IdStr, SensorNum
 * Returns 0, or 1 for another class: the buffers are then untouched. No database is touched, nothing is logged.
 */
QMV_API int32_t get_sqlqueries(const char* class_name, char* count, char* list) QMV_NOEXCEPT;

/*
 * Hands out the statements that count and list the full sensors of a CIM physical element class; as get_sqlqueries().
 * The list's columns: EntityID, EntityInstance, IdStr, SensorNum.
 */
QMV_API int32_t get_sqlqueries_nonFRU(const char* class_name, char* count, char* list) QMV_NOEXCEPT;

/*
 * Tells whether an entity has a full sensor whose sensor type equals its entity ID.
 * Returns 0 when it has one, 1 when not (also without a row, and the statement then stays open), or SQLite's code when
 *   the statement does not compile.
 */
QMV_API int32_t db_check_is_entity_id_equals_to_sen_type(struct sqlite3* db, int32_t EntityID,
                                                         int32_t EntityInstance) QMV_NOEXCEPT;

/*
 * Reads the sensor type of the first full sensor of an entity whose sensor type differs from its entity ID.
 *   SensorType (out)  table 42-3; untouched without a row
 * Returns 0; 1 when there is none, and the statement then stays open; SQLite's code when it does not compile.
 */
QMV_API int32_t db_check_is_entity_id_not_equals_to_sen_type(struct sqlite3* db, int32_t EntityID,
                                                             int32_t EntityInstance, int32_t* SensorType) QMV_NOEXCEPT;

/*
 * Reads one sensor of each entity in a category of physical elements, compact sensors first, then full ones.
 *   count (out)      the number of records, 0 when there are none
 *   records (out)    one new array, released by the caller; NULL when there are none
 *   PhysicalElement  the category's bits; see compact_sdr_rec
 * Returns 0, or 1 when reading either kind of sensor failed or memory is short.
 */
QMV_API int32_t db_get_all_physicalasset_element(struct sqlite3* db, int32_t* count, fru_sdr_rec** records,
                                                 int32_t PhysicalElement) QMV_NOEXCEPT;

/*
 * Names the power supply (CIM_PowerSupply) with a sensor of that number in "/tmp/cim.db", as
 * "EntityID:EntityInstance:SensorNum:PowerSupply". A power supply is a sensor whose PhysicalElement has bit 1024 and
 * whose entity ID is 10 or 19. Opens the file itself. Logs nothing.
 *   name (out)  a new text of at most 256 bytes, released by the caller with db_freemem() or free()
 * Returns 0; 1 with *name untouched when the file cannot be opened or read or there is no such sensor, and with NULL
 *   stored when memory is short.
 */
QMV_API int32_t get_ps_from_db(char** name, int32_t SensorNum) QMV_NOEXCEPT;

/*
 * Names all power supplies in "/tmp/cim.db", one text an entity; as get_ps_from_db().
 *   names (out)  a new array of pointers to texts; the caller releases each text and the array with free()
 *   count (out)  the number of texts, which stand at the array's start
 * Returns 0; when no sensor has bit 1024, both outs are untouched; when such sensors exist but none is a power supply,
 *   *count is 0 and *names an array of NULLs that is still to be released. 1 on failure, with *names NULL and *count 0.
 */
QMV_API int32_t get_all_ps_from_db(char*** names, int32_t* count) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
