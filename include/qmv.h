/*
 * qmv.h - the database access layer of a server management controller.
 *
 * Management services (IPMI daemons, CIM providers, the SMASH shell) keep what they know about the server in SQLite
 * files and reach them through this library. It runs inside the calling process; the tables are made by another
 * component (schema/ holds reference definitions). Conventions that hold for every function, said once:
 *
 *  1. Host. The process that loads the library provides two debug-output functions (qmv/core.h). Everything the
 *     library has to say goes there, as one line: errors at level 130, traces at level 135.
 *  2. Status. A function that returns int32_t returns a status: 0 is success; 1 is the library's own failure (a
 *     statement that did not compile, no matching row, no memory); other values are SQLite result codes passed on,
 *     as its comment says. Functions that set or delete answer 0 whatever happened, unless their comment says else.
 *  3. Ownership. A record or an array returned through a pointer to a pointer is one block from the C allocator. The
 *     caller owns it, independent of the connection, and releases it with db_freemem() or free(). Connections belong
 *     to the caller, from the opening function to db_close(). Records handed in are only read.
 *  4. Text fields. A field of a record holds at most its width in bytes. A shorter text is followed by zeros; a text
 *     that is as wide as its field or wider is cut and has NO terminating zero: bound every use by sizeof. A NULL
 *     column is an empty text, a NULL integer is 0. Text fields of a caller's record are read bounded by their width.
 *  5. Text arguments are NUL-terminated and must not be NULL; quotes in them are doubled before they reach SQLite.
 *  6. Shapes. Most functions have one of these shapes, and their comments then name it and what differs:
 *     - Count: sets *count to 0, then to the number of rows. Returns 0; 1 when the statement does not compile;
 *       SQLite's step code when no row came.
 *     - Get-all: sets *records to NULL, counts, and reads that many rows into one array. Returns 0 with *count and
 *       *records set; 0 with *count UNTOUCHED and *records NULL when there are no rows (initialise your count);
 *       1 when counting, compiling or allocating failed. Rows that appear between the count and the reading are
 *       dropped; rows that vanish leave zeroed records at the end.
 *     - Get-one: reads the first row that matches the keys. Returns 0 with *record pointing to a new record; 1 when
 *       nothing matches, the statement does not compile or memory is short. Without a row *record is untouched.
 *     - Get-one into the caller's record: the same without an allocation; the record is written only from a row.
 *     - Set: inserts the record and, when SQLite reports that the key exists (19), updates that row. Always 0.
 *     - Delete: removes the rows with that key. Always 0.
 *  7. After an allocation failure a get-one or get-all leaves its statement open: db_close() then answers
 *     SQLITE_BUSY (5). So does a count whose statement yields no row.
 *  8. Threads. No locks, no threads, no state between calls: use one connection from one thread at a time.
 *  9. Names are kept as callers know them, unusual spellings included.
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
