/*
 * qmv/jobs.h - concrete jobs, error records, and the clock they are timed with.
 * (*) marks a get-all that does not clear *records first: without rows, or when counting fails, it keeps its value.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_JOBS_H
#define QMV_JOBS_H

#include "qmv/core.h"

/* CIM_ConcreteJob, table "concrete_job" of the temporary instance database. Key: InstanceID. */
typedef struct concrete_job_rec {
  char InstanceID[64];
  char ElementName[64];
  int32_t JobState; /* CIM_ConcreteJob.JobState; 7 Completed, 10 Exception */
  char JobStatus[64];
  int32_t DeleteOnCompletion;
  char TimeBeforeRemoval[64]; /* minutes, decimal */
  char OperationalStatus[256];
  int32_t PercentComplete;
  int32_t RemovalTime; /* seconds since boot after which a finished job may be purged; 0 in records read */
} concrete_job_rec;

/* CIM_Error, table "error_info" of the temporary instance database. Key: ErrorSource. */
typedef struct error_info_rec {
  int32_t ErrorType;
  int32_t PerceivedSeverity;
  int32_t ProbableCause;
  char ErrorSource[256]; /* whose error it is, a job's InstanceID */
  int32_t ErrorSourceFormat;
  int32_t CIMStatusCode;
} error_info_rec;

QMV_BEGIN_DECLS

/*
 * Reads the seconds since boot from "/proc/uptime".
 * Returns them as a whole number, clamped to int32; 0 when they cannot be read or are not finite.
 */
QMV_API int32_t GetUpTime(void) QMV_NOEXCEPT;

/*
 * Stores a new job under a new identifier, the base name and a number that only grows: "Job" becomes "Job-1".
 *   job (in, out)          InstanceID holds the base name, then the identifier, of at most 63 characters; RemovalTime
 *   is set
 *   new_instance_id (out)  the identifier, 64 bytes
 * The first job of a process reads the last number back from the row whose rowid is the number of rows. After
 * 2147483647
 * comes 1. Not to be called from two threads.
 * Returns 0 whatever the insert did, or 1 when the last number could not be read back; a NULL identifier then leaves a
 *   statement open.
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
 * now,
 * and then those of these jobs that are Completed or in Exception.
 *   now  seconds since boot, as GetUpTime() counts
 * Opens the file itself and does not wait for locks. A '%' in an identifier is taken as a formatting directive: the
 * error
 * records of that job are not found. When its statement does not compile, its connection stays open.
 */
QMV_API void db_clear_expired_concretejob(int32_t now) QMV_NOEXCEPT;

/* Stores an error record. Set, by ErrorSource. */
QMV_API int32_t db_set_error_info(struct sqlite3* db, const error_info_rec* record) QMV_NOEXCEPT;

/*
 * Reads the error record of that source. Get-one.
 * Differs: SQLite's own code when the statement does not compile, 7 (SQLITE_NOMEM) when memory
 *   is short.
 */
QMV_API int32_t db_get_error_info(struct sqlite3* db, const char* ErrorSource, error_info_rec** record) QMV_NOEXCEPT;

/*
 * Reads all error records. Get-all. (*)
 * Differs: SQLite's own code when the statement does not compile,
 *   7 (SQLITE_NOMEM) when memory is short.
 */
QMV_API int32_t db_get_all_error_info(struct sqlite3* db, int32_t* count, error_info_rec** records) QMV_NOEXCEPT;

/*
 * Makes an error record of a command-line job that ended in an error, from table "jobs" of the shell's database.
 *   ErrorSource   eight characters and the job's number; without one job 0, out of int32's range the nearest
 *   record (out)  one new record; its ErrorSource is the text given, at most 256 bytes of it
 * Returns 0, also without a statement, with *record untouched; 1 when there is no such job, it did not end in an
 *   error, or the statement does not compile; 7 (SQLITE_NOMEM) when memory is short.
 */
QMV_API int32_t db_get_clp_error_info(struct sqlite3* db, const char* ErrorSource,
                                      error_info_rec** record) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
