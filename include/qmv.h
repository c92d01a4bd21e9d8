/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv.h - the database access layer of a server management controller.
 *
 * Management services (IPMI daemons, CIM providers, the SMASH shell) keep what they know about the server in SQLite
 * files and reach them through this library. It runs inside the calling process; the tables are made by another
 * component (`qmvctl init` makes them as the reference definitions in schema/ say). Conventions that hold wherever a
 * comment does not say else:
 *
 *  1. Host. The process that loads the library provides two debug-output functions (qmv/core.h). What the library has
 *     to say goes there, one call a message: errors at level 130, traces at level 135. Three functions also write to
 *     standard error: get_association_data() (only there), db_get_num_full_sdr() and
 *     db_get_all_full_sdrs_by_phy_elem_type().
 *  2. Status. A function that returns int32_t returns a status: 0 is success; 1 is the library's own failure (a
 *     statement that did not compile, no matching row, no memory) or SQLite's general error; other values are SQLite
 *     result codes passed on.
 *  3. Ownership. A record or an array of records returned through a pointer to a pointer is one block from the C
 *     allocator. The caller owns it, independent of the connection, and releases it with db_freemem() or free(). What
 *     consists of several blocks says how it is released. Connections belong to the caller, from the opening function
 *     to db_close(). Records handed in as const are only read.
 *  4. Text fields. A field of a record holds at most its width in bytes. A shorter text is followed by zeros; a text
 *     that is as wide as its field or wider is cut and has NO terminating zero: bound every use by sizeof. A NULL
 *     column is an empty text, a NULL integer is 0. Text fields of a caller's record are read bounded by their width.
 *  5. Text arguments are NUL-terminated and must not be NULL. Quotes in values are doubled before they reach SQLite;
 *     queries and the names of tables and columns are read as SQL: pass texts of your own only.
 *  6. Shapes. Most functions have one of these shapes, and their comments then name it and what differs:
 *     - Count: sets *count to 0, then to the number of rows. Returns 0; 1 when the statement does not compile; SQLite's
 *       code when no row came (that of the step), or when the end failed (that of sqlite3_finalize, with *count set).
 *     - Get-all: sets *records to NULL, counts, and reads that many rows into one array. Returns 0 with *count and
 *       *records set; 0 with *count UNTOUCHED when there are no rows; 1 when counting failed, with *count untouched, or
 *       when compiling or allocating failed, with *count set; SQLite's code, which can be 1 too, when the reading
 *       failed, with *count and *records set and zeroed records behind the last row. So initialise both, and release
 *       *records whatever the status. Rows that appear between the count and the reading are dropped; rows that vanish
 *       leave zeroed records at the end.
 *     - Get-one: reads the first row that matches the keys. Returns 0 with *record pointing to a new record; 1 when
 *       nothing matches, the step fails (a lock, I/O), the statement does not compile or memory is short. Without a row
 *       *record is untouched; without memory it is NULL.
 *     - Get-one into the caller's record: the same without an allocation; the record is written only from a row.
 *     - Set: inserts the record and, when SQLite reports that the key exists (19), updates that row. Always 0.
 *     - Set once: a set whose update SQLite rejects, so that a row that exists keeps its values. Always 0.
 *     - Delete: removes the rows with that key. Always 0.
 *     A shape "with SQLite's codes" answers a statement that does not compile with SQLite's code, and an allocation
 *     failure with 7 (SQLITE_NOMEM), instead of 1.
 *  7. After an allocation failure a get-one or get-all leaves its statement open, and so does a count whose statement
 *     yields no row: db_close() then answers 5 (SQLITE_BUSY). The get-one's statement stands on its row and keeps
 *     SQLite's shared lock, so that no other connection can write the file any more.
 *  8. Threads. No locks, no threads, and no state between calls but the counter of db_set_concretejob(): use one
 *     connection from one thread at a time, and create jobs from one thread only.
 *  9. Names are kept as callers know them, unusual spellings included.
 * 10. Values. A record's fields are its table's columns. Where a DMTF class is named with a record, they are properties
 *     of that class: values that are not explained here stand in its value maps, and RequestedState and EnabledState
 *     are those of CIM_EnabledLogicalElement (2 enabled, 3 disabled). "List" marks a text that holds several values, in
 *     a form that is between its writers and readers. Flags are 1 or 0. Table and section numbers are those of IPMI
 *     2.0; "raw" is a reading in the sensor's own counts, which section 36.3 converts.
 * 11. Locks. The statements of a connection from db_init(), tmp_db_init() or smash_db_init() wait for the locks of
 *     other connections without limit, in steps of 2 seconds. A function that opens a file itself does not wait.
 * 12. Schema. When another connection has changed the schema of the file (tables, columns, indexes, VACUUM), the next
 *     call that reads fails once, as it does for a failed step; the call after that succeeds.
 * 13. Files. A function that opens a file itself creates it, empty, when it is missing from a directory that exists.
 */
#ifndef QMV_H
#define QMV_H

#include "qmv/assoc.h"
#include "qmv/boot.h"
#include "qmv/core.h"
#include "qmv/fru.h"
#include "qmv/indications.h"
#include "qmv/instances.h"
#include "qmv/jobs.h"
#include "qmv/profiles.h"
#include "qmv/roles.h"
#include "qmv/sdr.h"
#include "qmv/sel.h"
#include "qmv/services.h"

#endif
