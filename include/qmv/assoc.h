/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/assoc.h - the association registry, and reading files whose schema is not known. Nothing here is logged through
 * the host. Functions that take or have a file open it themselves.
 * The conventions stand in qmv.h.
 */
#ifndef QMV_ASSOC_H
#define QMV_ASSOC_H

#include "qmv/core.h"

/*
 * One association class, a row of table "association", whose columns are ClassName, NameSpace, Text2, Text3, Flag4 and
 * List5 to List8, taken by position; those without a known meaning bear their number. Lists are arrays of texts, as
 * long as their counts say or up to the first NULL. Lists 5 and 6 are a pair of one length, and so are lists 7 and 8. A
 * list that memory was too short for is shorter than its count, or NULL.
 */
typedef struct association_rec {
  char NameSpace[256]; /* CIM namespace */
  char** List5;
  char** List6;
  int32_t Count5;
  int32_t Count6;
  int32_t Flag4;
  char ClassName[256]; /* CIM class */
  char Text2[256];
  char Text3[256];
  char** List7;
  char** List8;
  int32_t Count7;
  int32_t Count8;
} association_rec;

/* One plug-in registration, a row of table "association_reg", whose columns are taken by position and bear their
 * number. Mind the order of the members. */
typedef struct association_reg_rec {
  char RegColumn3[256];
  char RegColumn0[256];
  char RegColumn2[256];
  char RegColumn1[256];
} association_reg_rec;

/* One name in a list of column names. */
typedef struct column_name_node {
  char ColumnName[128];
  struct column_name_node* Next;
} column_name_node;

QMV_BEGIN_DECLS

/*
 * Loads all associations of "/etc/Association.db". A record's NameSpace is GetNameSpace() of its class.
 *   records (out)  one new array, released with FreeDBData(); NULL without rows
 *   count (out)    its number of records; untouched without rows
 * Returns 0; 1 when the file cannot be opened or memory is short, with both outs untouched. Rows that cannot be counted
 *   (the file is locked, the table is missing) are taken for none; rows that cannot be read leave zeroed records.
 */
QMV_API int32_t assoc_get_global_data(association_rec** records, int32_t* count) QMV_NOEXCEPT;

/*
 * Loads the associations that a query of "/etc/Association.db" selects, with columns as table "association" has them.
 * Records are filled as fill_association_data() does: NameSpace is column 1, Count7 the count of list 8, Count8 is 0.
 *   records (in, out)  NULL on entry, since failures release what it points to; then one new array, released with
 *                      FreeDBData(); untouched without rows, NULL on failure
 *   sql                the query, prepared unchanged
 *   count (out)        the number of records, 0 on failure
 * Returns 0, also when the reading ends early; 1 when the file cannot be opened, the query does not compile (a locked
 *   file is such a case) or memory is short, reported on standard error.
 */
QMV_API int32_t get_association_data(association_rec** records, const char* sql, int32_t* count) QMV_NOEXCEPT;

/*
 * Fills a record from the row on which a statement stands; NameSpace is column 1. The record is not cleared first: NULL
 * columns leave their text, or their list and its count, as they are, and a list that is filled overwrites the record's
 * pointer without releasing it. Flag4 is always written. The count of list 8 goes to Count7; Count8 is not written.
 * Owns: the new lists are the caller's, as GetArrayCount() makes them.
 */
QMV_API void fill_association_data(struct sqlite3_stmt* row, association_rec* record) QMV_NOEXCEPT;

/*
 * Releases an array and its lists, lists 5 and 6 by Count5 and lists 7 and 8 by Count7, and sets *records to NULL. A
 * list's texts beyond its pair's count are lost. With a count below 1 only the array is released; NULL does nothing.
 */
QMV_API void FreeDBData(association_rec** records, int32_t count) QMV_NOEXCEPT;

/*
 * Releases an array with its lists 7 and 8, each by its own count. Lists 5 and 6 are NOT released. Of an array from
 * get_association_data(), whose Count7 is list 8's and whose Count8 is 0, the texts of list 7 beyond that count and all of
 * list 8 are lost too. With a count below 1 only the array is released.
 * Returns 0, or 1 when records is NULL.
 */
QMV_API int32_t free_global_structure(association_rec* records, int32_t count) QMV_NOEXCEPT;

/*
 * Splits a list: elements separated by commas, the whole in braces. Only its first 1,023 characters are read.
 *   list (out)   a new array of new texts, without blanks and tabs before them; empty elements are left out. Behind the
 *                elements stand NULLs, up to the count and one more. Untouched when text is NULL. The caller releases
 *                each text and the array with free()
 *   count (out)  the number of commas read and one more; 0 when text is NULL
 * Returns 0, or 1 when memory is short: the count is then set, and the list NULL or what there was memory for.
 */
QMV_API int32_t GetArrayCount(const char* text, char*** list, int32_t* count) QMV_NOEXCEPT;

/*
 * Returns the type code that the CMPI standard gives to a type name, in any case of letters: REF 4352, uint16 144,
 * uint64 176, string 5632, dateTime 6144, uint16A 8336; 0 for another name or NULL.
 */
QMV_API int32_t GetCMPIDataType(const char* type) QMV_NOEXCEPT;

/*
 * Returns the CIM namespace of a class, whose name may be in any case of letters; a constant. "root/interop" for
 * CIM_IndicationFilter, CIM_IndicationService, CIM_RegisteredProfile, CIM_IndicationHandlerCIMXML and
 * CIM_ReferencedProfile, "root/cimv2" for every other class and NULL.
 */
QMV_API const char* GetNameSpace(const char* class_name) QMV_NOEXCEPT;

/* Returns the first character of a text that is neither blank nor tab; NULL for NULL. */
QMV_API const char* SkipWhiteSpaces(const char* text) QMV_NOEXCEPT;

/*
 * Loads the plug-in registrations of a file.
 *   records (out)  one new array, released with free(); untouched without rows, and on failure but the last
 *   count (out)    the number of rows counted, 0 when they cannot be counted; untouched when the file cannot be opened
 * Returns 0; 1 when the file cannot be opened, memory is short, the statement does not compile, or the reading ended
 *   early: the records so far are then in the array, and zeroed ones up to the count behind them.
 */
QMV_API int32_t load_plugins(association_reg_rec** records, int32_t* count, const char* file) QMV_NOEXCEPT;

/* Returns the number of rows of a table, 0 on any failure. The name stands unquoted: "my table" is a failure. */
QMV_API int32_t get_row_count(struct sqlite3* db, const char* table) QMV_NOEXCEPT;

/* Steps a statement to its end. Returns the number of rows that it yielded; it is neither reset nor finalised. */
QMV_API int32_t get_table_count(struct sqlite3_stmt* statement) QMV_NOEXCEPT;

/*
 * Finds the table of a file that holds one: of several, the last by name, SQLite's own (sqlite_sequence) among them.
 *   rows (out)   its number of rows, as get_row_count() gives it
 *   table (out)  its name, at most 255 characters; a buffer of 256 bytes
 * Returns 0, or 1 when the file cannot be opened or read, or holds no table, with both outs untouched.
 */
QMV_API int32_t get_static_instances(const char* file, int32_t* rows, char* table) QMV_NOEXCEPT;

/*
 * Appends a table's column names, in order, to a list.
 *   head (in, out)  the list, NULL for an empty one; released with free_column_names()
 *   table           its name, read as SQL; cut so that the statement fits 255 characters. A '%' in it is taken as a
 *                   formatting directive
 * Returns 0, also for a table that does not exist; 1 when the file cannot be opened or read, the statement does not
 *   compile, or memory is short, with the names so far in the list.
 * Each call whose statement compiles leaves its connection and one file descriptor open until the process ends.
 */
QMV_API int32_t GetColumnNames(column_name_node** head, const char* file, const char* table) QMV_NOEXCEPT;

/* Releases a list of column names. NULL is allowed. Always 0. */
QMV_API int32_t free_column_names(column_name_node* head) QMV_NOEXCEPT;

/*
 * Reads one value of a table.
 *   value (out)    at most 255 characters, empty for NULL or a missing row, untouched on failure; a buffer of 256 bytes
 *   column, table  an expression and a name, read as SQL; the statement is cut at 255 characters. A '%' in them is
 *                  taken as a formatting directive
 *   row            the row's rowid
 * Returns 0, or 1 when the file cannot be opened, the statement does not compile or value is NULL.
 * Each call whose statement compiles leaves its connection open, and with it one file descriptor; one that found a row
 * also keeps SQLite's shared lock, so that nobody can write that file until the process ends.
 */
QMV_API int32_t GetColumnValues(const char* file, char* value, const char* column, const char* table,
                                int32_t row) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
