/*
 * job_life - a concrete job from its creation to its end: a service tells its clients how far a firmware update is, and
 * the job goes when nobody has to see it any more.
 *
 *   cc -o job_life job_life.c log.c $(pkg-config --cflags --libs qmv)
 */
#include <qmv.h>
#include <stdio.h>
#include <stdlib.h>

/* CIM_ConcreteJob.JobState */
enum { NEW = 2, RUNNING = 4, COMPLETED = 7 };

/* Stores a new job; the library numbers it. */
static int create(struct sqlite3* db, char identifier[64]) {
  concrete_job_rec job = {
      .InstanceID = "FirmwareUpdate",
      .ElementName = "Update of the controller's firmware",
      .JobState = NEW,
      .JobStatus = "waiting",
      .DeleteOnCompletion = 1,
      .TimeBeforeRemoval = "0", /* minutes, from now */
      .OperationalStatus = "2", /* OK */
  };
  return db_set_concretejob(db, &job, identifier);
}

/* What a client sees. */
static void show(struct sqlite3* db, const char* identifier) {
  concrete_job_rec* job = NULL;
  if (db_get_concretejob(db, identifier, &job) == 0) {
    printf("%s: state %d, %.*s, %d %%\n", identifier, job->JobState, (int)sizeof(job->JobStatus), job->JobStatus,
           job->PercentComplete);
  } else {
    printf("%s: gone\n", identifier);
  }
  db_freemem(job);
}

int main(void) {
  struct sqlite3* db;
  char identifier[64];
  if (tmp_db_init(&db) != 0) {
    fputs("the database cannot be opened\n", stderr);
    return EXIT_FAILURE;
  }
  if (create(db, identifier) != 0) {
    db_close(db);
    return EXIT_FAILURE;
  }
  show(db, identifier);

  db_modify_concretejob(db, identifier, "writing the image", "2", 50, RUNNING);
  show(db, identifier);
  db_clear_expired_concretejob(GetUpTime()); /* spares what is running */
  show(db, identifier);

  db_modify_concretejob(db, identifier, "done", "17, 2", 100, COMPLETED); /* 17: completed */
  show(db, identifier);
  db_clear_expired_concretejob(GetUpTime());
  show(db, identifier);

  return db_close(db) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
