/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/jobs.h - concrete jobs, error records, and the clock they are timed with.
 * (*) marks a get-all that does not clear *records first: it stays without rows, and when counting or compiling fails.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_JOBS_H
#define QMV_JOBS_H

#include "qmv/core.h"

/* CIM_ConcreteJob, table "concrete_job" of the temporary instance database. Key: InstanceID. */
typedef struct concrete_job_rec {
  char InstanceID[64];
  char ElementName[64];
  int32_t JobState;            /* 2 new, 4 running, 7 completed, 10 exception */
  char JobStatus[64];          /* state for people */
  int32_t DeleteOnCompletion;  /* flag: clients want it gone once it has ended; stored, never looked at */
  char TimeBeforeRemoval[64];  /* minutes to keep the job, decimal */
  char OperationalStatus[256]; /* CIM_ManagedSystemElement.OperationalStatus, list */
  int32_t PercentComplete;     /* 0 to 100 */
  int32_t RemovalTime;         /* seconds since boot after which a finished job may be purged; 0 in records read */
} concrete_job_rec;

/*
 * CIM_Error, table "error_info" of the temporary instance database. Key: ErrorSource.
 * ErrorType is 0 unknown, 1 other, 2 communications, 3 quality of service, 4 software, 5 hardware, 6 environment,
 * 7 security, 8 oversubscription, 9 unavailable resource, 10 unsupported operation.
 */
typedef struct error_info_rec {
  int32_t ErrorType;
  int32_t PerceivedSeverity; /* 0 unknown, 2 low, 3 medium, 4 high, 5 fatal */
  int32_t ProbableCause;     /* 0 unknown, 1 other; the rest is in the class's value map */
  char ErrorSource[256];     /* whose error it is, a job's InstanceID */
  int32_t ErrorSourceFormat; /* what kind of name ErrorSource is: 0 unknown, 1 other, 2 an object path */
  int32_t CIMStatusCode;     /* status of the CIM operation (DSP0200); 1 failed, 6 not found */
} error_info_rec;

QMV_BEGIN_DECLS

/*
 * Reads the seconds since boot from "/proc/uptime".
 * Returns them as a whole number, clamped to int32; 0 when they cannot be read or are not finite.
 */
QMV_API int32_t GetUpTime(void) QMV_NOEXCEPT;

/*
 * Stores a new job under a new identifier, the base name and a number that only grows: "Job" becomes "Job-1".
 *   job (in, out)          InstanceID holds the base name, then the identifier; RemovalTime becomes GetUpTime() plus
 *                          60 times TimeBeforeRemoval, which counts as 0 where it is no number, clamped to int32
 *   new_instance_id (out)  the identifier, 64 bytes
 * The first job of a process reads the last number back from the row whose rowid is the number of rows. After
 * 2147483647 comes 1. The number belongs to the process: even on two connections, two threads must not create jobs.
 * A job whose identifier exists overwrites the older one, whose RemovalTime stays in the table. An identifier is cut to
 * 63 characters: behind a base name of more than 52 the number can lose digits, behind one of 62 or more it is lost,
 * and the next such job overwrites the one before it.
 * Returns 0 whatever the insert did; 1 when the last number could not be read back, with both outs untouched: a NULL
 *   identifier there leaves a statement open.
 */
QMV_API int32_t db_set_concretejob(struct sqlite3* db, concrete_job_rec* job, char* new_instance_id) QMV_NOEXCEPT;

/* Reads the job with that identifier. Get-one. */
QMV_API int32_t db_get_concretejob(struct sqlite3* db, const char* InstanceID, concrete_job_rec** job) QMV_NOEXCEPT;

/* Reads all jobs. Get-all; mind the order of the last two parameters. */
QMV_API int32_t db_get_all_concretejob(struct sqlite3* db, concrete_job_rec** jobs, int32_t* count) QMV_NOEXCEPT;

/* Deletes a job. Delete. */
QMV_API int32_t db_delete_concretejob(struct sqlite3* db, const char* InstanceID) QMV_NOEXCEPT;

/* Changes a job's status, percentage and state. Always 0. */
QMV_API int32_t db_modify_concretejob(struct sqlite3* db, const char* InstanceID, const char* JobStatus,
                                      const char* OperationalStatus, int32_t PercentComplete,
                                      int32_t JobState) QMV_NOEXCEPT;

/*
 * Purges the temporary instance database: deletes the error records of every job whose RemovalTime is not later than
 * now, and then those of these jobs that are completed or in exception.
 *   now  seconds since boot, as GetUpTime() counts
 * Opens the file itself. A '%' in an identifier is taken as a formatting directive: the error records of that job stay,
 * and those of another source can be deleted instead (a job "Job%d-1" deletes those of "Job-1"). When its statement
 * does not compile, which another connection's exclusive lock is enough for, its connection stays open.
 */
QMV_API void db_clear_expired_concretejob(int32_t now) QMV_NOEXCEPT;

/* Stores an error record. Set, by ErrorSource. */
QMV_API int32_t db_set_error_info(struct sqlite3* db, const error_info_rec* record) QMV_NOEXCEPT;

/* Reads the error record of that source. Get-one, with SQLite's codes. */
QMV_API int32_t db_get_error_info(struct sqlite3* db, const char* ErrorSource, error_info_rec** record) QMV_NOEXCEPT;

/* Reads all error records. Get-all, with SQLite's codes. (*) */
QMV_API int32_t db_get_all_error_info(struct sqlite3* db, int32_t* count, error_info_rec** records) QMV_NOEXCEPT;

/*
 * Makes an error record of a command-line job that ended in an error, from table "jobs" of the shell's database.
 *   ErrorSource   eight characters and the job's number; without one job 0, out of int32's range the nearest
 *   record (out)  one new record; its ErrorSource is the text given, at most 256 bytes of it
 * Returns 0, also without a statement, with *record untouched; 1 when there is no such job, it did not end in an error,
 *   or the statement does not compile, with nothing logged; 7 (SQLITE_NOMEM) when memory is short, with NULL stored.
 */
QMV_API int32_t db_get_clp_error_info(struct sqlite3* db, const char* ErrorSource,
                                      error_info_rec** record) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
