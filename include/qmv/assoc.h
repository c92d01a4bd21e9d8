/*
 * qmv/assoc.h - the association registry, and reading files whose schema is not known. Nothing here is logged through
 * the host.
 * Functions that take or have a file open it themselves and do not wait for locks.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_ASSOC_H
#define QMV_ASSOC_H

#include "qmv/core.h"

/* One association class, a row of table "association". Members are named after their columns where those have no
 * name. Lists are arrays of texts, as long as their counts say or up to the first NULL. */
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

/* One plug-in registration, a row of table "association_reg". Mind the order of the members. */
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
 * Loads all associations of "/etc/Association.db".
 *   records (out)  one new array, released with FreeDBData(); NULL without rows
 *   count (out)    its number of records; untouched without rows
 * Returns 0, also when the rows cannot be read: the records are then zero; 1 when the file cannot be opened or memory
 *   is
 *   short.
 */
QMV_API int32_t assoc_get_global_data(association_rec** records, int32_t* count) QMV_NOEXCEPT;

/*
 * Loads the associations that a query of "/etc/Association.db" selects, with columns as table "association" has them.
 *   records (in, out)  NULL on entry, since failures release what it points to; then one new array, released with
 *                      FreeDBData(); untouched without rows
 *   sql                the query, prepared unchanged
 *   count (out)        the number of records, 0 on failure
 * Returns 0, or 1 on failure, reported on standard error.
 */
QMV_API int32_t get_association_data(association_rec** records, const char* sql, int32_t* count) QMV_NOEXCEPT;

/*
 * Fills a record from the row on which a statement stands.
 * NULL columns leave their text as it is. The count of list 8 goes to Count7, and Count8 is not written.
 */
QMV_API void fill_association_data(struct sqlite3_stmt* row, association_rec* record) QMV_NOEXCEPT;

/*
 * Releases an array and its lists, lists 5 and 6 by Count5 and lists 7 and 8 by Count7, and sets *records to NULL.
 * With a count below 1 only the array is released.
 */
QMV_API void FreeDBData(association_rec** records, int32_t count) QMV_NOEXCEPT;

/*
 * Releases an array with its lists 7 and 8, each by its own count. Lists 5 and 6 are NOT released.
 * Returns 0, or 1 when records is NULL.
 */
QMV_API int32_t free_global_structure(association_rec* records, int32_t count) QMV_NOEXCEPT;

/*
 * Splits a list: elements separated by commas, the whole in braces. At most 1,023 characters are read.
 *   list (out)   a new array of new texts; untouched when text is NULL. Places without an element are NULL
 *   count (out)  the number of commas and one more; 0 when text is NULL
 * Returns 0, or 1 when memory is short.
 */
QMV_API int32_t GetArrayCount(const char* text, char*** list, int32_t* count) QMV_NOEXCEPT;

/* Returns the CMPI type code of a type name, in any case; 0 for another name or NULL. */
QMV_API int32_t GetCMPIDataType(const char* type) QMV_NOEXCEPT;

/* Returns the CIM namespace of a class, "root/interop" or "root/cimv2"; a constant. NULL is of "root/cimv2". */
QMV_API const char* GetNameSpace(const char* class_name) QMV_NOEXCEPT;

/* Returns the first character of a text that is neither blank nor tab; NULL for NULL. */
QMV_API const char* SkipWhiteSpaces(const char* text) QMV_NOEXCEPT;

/*
 * Loads the plug-in registrations of a file.
 *   records (out)  one new array, released with free(); untouched without rows
 *   count (out)    the number of rows
 * Returns 0; 1 when the file cannot be opened, memory is short, or reading ended early: then with the records so far.
 */
QMV_API int32_t load_plugins(association_reg_rec** records, int32_t* count, const char* file) QMV_NOEXCEPT;

/* Returns the number of rows of a table, 0 on any failure. */
QMV_API int32_t get_row_count(struct sqlite3* db, const char* table) QMV_NOEXCEPT;

/* Steps a statement to its end. Returns the number of rows that it yielded; it is neither reset nor finalised. */
QMV_API int32_t get_table_count(struct sqlite3_stmt* statement) QMV_NOEXCEPT;

/*
 * Finds the table of a file that holds one: of several, the last by name.
 *   rows (out)   its number of rows
 *   table (out)  its name, at most 255 characters; a buffer of 256 bytes
 * Returns 0, or 1 when the file cannot be opened or read, or holds no table.
 */
QMV_API int32_t get_static_instances(const char* file, int32_t* rows, char* table) QMV_NOEXCEPT;

/*
 * Appends a table's column names, in order, to a list.
 *   head (in, out)  the list, NULL for an empty one; released with free_column_names()
 *   table           its name; cut so that the statement fits 255 characters. A '%' in it is taken as a formatting
 *   directive
 * Returns 0, also for a table that does not exist; 1 when the file cannot be opened or read or memory is short.
 * Each call leaves its connection open, and with it one file descriptor, until the process ends.
 */
QMV_API int32_t GetColumnNames(column_name_node** head, const char* file, const char* table) QMV_NOEXCEPT;

/* Releases a list of column names. NULL is allowed. Always 0. */
QMV_API int32_t free_column_names(column_name_node* head) QMV_NOEXCEPT;

/*
 * Reads one value of a table.
 *   value (out)    at most 255 characters, empty for NULL or a missing row; a buffer of 256 bytes
 *   column, table  an expression and a name, put into the statement as they are (of 255 characters): pass texts of
 *   your own
 *                  only. A '%' in them is taken as a formatting directive
 *   row            the row's rowid
 * Returns 0, or 1 when the file cannot be opened, the statement does not compile or value is NULL.
 * Each call leaves its connection open, and with it one file descriptor; a call that found a row also keeps SQLite's
 * shared
 * lock, so that nobody can write that file until the process ends.
 */
QMV_API int32_t GetColumnValues(const char* file, char* value, const char* column, const char* table,
                                int32_t row) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
