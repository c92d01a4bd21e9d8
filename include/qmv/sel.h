/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/sel.h - the system event log: table "sel_info" describes the log, table "sel" holds its events.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_SEL_H
#define QMV_SEL_H

#include "qmv/core.h"

/*
 * What is known of the log as a whole (IPMI 2.0, Get SEL Info, table 31-2). Key: Version.
 * Storing a record writes each field to its column; reading does not bring them back so: see db_get_selinfo(). Texts
 * that are read must stay below their fields' widths: a longer one runs on into the fields behind it, up to the end of
 * the record.
 */
typedef struct sel_info_rec {
  int32_t MaxNoOfSels;       /* events that the log can hold */
  char CompletionCode[64];   /* of Get SEL Info, two hexadecimal digits */
  char Version[64];          /* of the log's format, two hexadecimal digits, "51" for IPMI 2.0 */
  int32_t RecCnt;            /* events in the log */
  int32_t FreeSpace;         /* in bytes */
  char AddTimeStamp[128];    /* time of the latest addition, seconds since 1970-01-01 00:00 */
  char EraseTimeStamp[128];  /* time of the latest erasure, likewise */
  char OperationSupport[64]; /* operation support byte, two hexadecimal digits */
} sel_info_rec;

/* One event (IPMI 2.0, SEL event record, table 32-1). Key: RecordID. */
typedef struct sel_rec {
  int32_t RecordID;    /* 1 to 65534 */
  int32_t RecordType;  /* 2 for a system event */
  int32_t TimeStamp;   /* seconds since 1970-01-01 00:00, the low 32 bits as a signed number */
  char GeneratorID[4]; /* low byte of the generator ID, two hexadecimal digits */
  int32_t EventType;   /* event/reading type, table 42-1 */
  int32_t EvMRev;      /* event message format revision, 4 in IPMI 2.0 */
  int32_t SensorType;  /* table 42-3 */
  int32_t SensorNum;   /* number of the sensor at the generator */
  int32_t EventDir;    /* 0 assertion, 1 deassertion */
  int32_t EventData1;  /* table 29-6: offset in bits 3 to 0, what the other two bytes hold in bits 7 to 4 */
  int32_t EventData2;  /* reading, raw, or other data */
  int32_t EventData3;  /* threshold, raw, or other data */
} sel_rec;

QMV_BEGIN_DECLS

/* Counts the rows of "sel_info". Count. Differs: 1 when there is no statement. */
QMV_API int32_t db_get_selinfo_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the first row of "sel_info". Get-one, without a key.
 * Differs: 7 (SQLITE_NOMEM) when memory is short. The fields are shifted by one against the columns: CompletionCode
 *   holds the text of the column MaxNoOfSels, Version that of CompletionCode, RecCnt the integer in Version, and so on
 *   down to OperationSupport, which holds EraseTimeStamp; the column OperationSupport is never read.
 */
QMV_API int32_t db_get_selinfo(struct sqlite3* db, sel_info_rec** record) QMV_NOEXCEPT;

/* Stores the log information, each field under its own column. Set, by Version. */
QMV_API int32_t db_set_selinfo(struct sqlite3* db, const sel_info_rec* record) QMV_NOEXCEPT;

/*
 * Counts the events. Count.
 * Differs: the count is taken whatever the step answers, and the status is the code of sqlite3_finalize.
 */
QMV_API int32_t db_getnumofsels(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads the event with that record ID. Get-one. Differs: a missing row is not traced. */
QMV_API int32_t db_get_sel_record(struct sqlite3* db, int32_t RecordID, sel_rec** record) QMV_NOEXCEPT;

/* Reads all events. Get-all. */
QMV_API int32_t db_get_all_sel_records(struct sqlite3* db, int32_t* count, sel_rec** records) QMV_NOEXCEPT;

/* Deletes the event with that record ID. Delete. The formatted statement, some 40 bytes, is never released. */
QMV_API int32_t db_del_sel(struct sqlite3* db, int32_t RecordID) QMV_NOEXCEPT;

/* Deletes all events. Always 0. */
QMV_API int32_t db_clear_sel_records(struct sqlite3* db) QMV_NOEXCEPT;

/*
 * Adds an event; an event with its record ID is updated.
 *   record           the event
 *   DeleteRecordID   the event to delete first, to make room; 0 or less for none. The formatted statement is never
 *                    released
 * Returns 0, or 1 when the insert failed for another reason than an existing record ID. A failing delete is only
 *   traced.
 */
QMV_API int32_t db_addsel(struct sqlite3* db, const sel_rec* record, int32_t DeleteRecordID) QMV_NOEXCEPT;

/*
 * Adds events one after another with db_addsel(); those whose RecordID is 0 or less are skipped.
 *   count            the number of records; 0 or less adds nothing
 *   records          the events
 *   DeleteRecordID   handed on with EVERY event, so the same one is deleted before each of them
 * Returns 0, or 1 at the first event that failed; the events before it stay.
 */
QMV_API int32_t db_add_sel_entries(struct sqlite3* db, int32_t count, const sel_rec* records,
                                   int32_t DeleteRecordID) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
