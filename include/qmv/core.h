/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/core.h - connections, statement execution, release of records, and what the host provides.
 * The conventions shared by all functions stand in qmv.h.
 */
#ifndef QMV_CORE_H
#define QMV_CORE_H

#include <stdint.h>

#if defined(__cplusplus)
#define QMV_BEGIN_DECLS extern "C" {
#define QMV_END_DECLS }
#define QMV_NOEXCEPT noexcept
#else
#define QMV_BEGIN_DECLS
#define QMV_END_DECLS
#define QMV_NOEXCEPT
#endif

/* Marks an exported function. */
#define QMV_API __attribute__((visibility("default")))

struct sqlite3;
struct sqlite3_stmt;

QMV_BEGIN_DECLS

/*
 * Provided by the host: write one debug line. The library calls them with level 130 (DbgOut, errors) and 135
 * (Runtime_DbgOut, traces), a format that begins "[%s:%d]", the name of the module's source file, the line in it, and
 * what else the format names. Some formats end in a newline or hold one, most do not.
 */
void HTRC_LINUXAPP_DbgOut(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));
void HTRC_LINUXAPP_Runtime_DbgOut(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));

/*
 * Opens the instance database, "/tmp/cim.db". The file is created empty when it is missing.
 *   db (out)  the new connection
 * Returns 0, or the code of sqlite3_open (14, SQLITE_CANTOPEN, for a missing directory).
 * Owns: the caller closes the connection with db_close(). Its statements wait for other connections' locks, in steps of
 *   2 seconds, without limit; where both would wait for each other, SQLite answers 5 (SQLITE_BUSY) at once.
 * On failure the connection is closed already; *db holds its dead handle and must not be used or closed.
 */
QMV_API int32_t db_init(struct sqlite3** db) QMV_NOEXCEPT;

/* Opens the temporary instance database, "/tmp/tmp_cim.db"; otherwise as db_init(). */
QMV_API int32_t tmp_db_init(struct sqlite3** db) QMV_NOEXCEPT;

/* Opens the command-line shell's database, "/tmp/smashclp.db"; otherwise as db_init(). */
QMV_API int32_t smash_db_init(struct sqlite3** db) QMV_NOEXCEPT;

/*
 * Formats and runs a statement; rows that it yields are discarded.
 *   db      the connection
 *   format  an SQLite printf format (%q doubles quotes, %i and %d are integers), followed by its arguments
 * Returns the code of sqlite3_exec: 0, 1 for a statement that SQLite rejects, 19 (SQLITE_CONSTRAINT) when a key exists.
 *   0 also when memory is too short to format the text: nothing is run and nothing logged then, so a set that reports
 *   0 may have stored nothing.
 * Differs: a trace that reads "Successfully execute the SQLite query" is written when the statement FAILED, and only
 * then.
 */
QMV_API int32_t db_execute(struct sqlite3* db, const char* format, ...) QMV_NOEXCEPT;

/*
 * Commits the transaction that the caller began with db_execute(db, "begin;").
 * Returns the code of sqlite3_exec; 1 when no transaction is open.
 */
QMV_API int32_t db_commit(struct sqlite3* db) QMV_NOEXCEPT;

/*
 * Closes a connection.
 * Returns the code of sqlite3_close: 5 (SQLITE_BUSY) while a statement is open, and the connection then stays open.
 */
QMV_API int32_t db_close(struct sqlite3* db) QMV_NOEXCEPT;

/* Releases a record or an array that the library returned. NULL is allowed and does nothing. */
QMV_API void db_freemem(void* memory) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
