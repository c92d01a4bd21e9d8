-- tmp_cim.sql - the tables of the temporary instance database, /tmp/tmp_cim.db. Order, spelling and keys matter, as in
-- cim.sql.

-- CIM_ConcreteJob, one row a job. A new process takes the job whose rowid is the number of rows for the newest one, and
-- goes on counting from its identifier. Texts have at most 64 bytes, except OperationalStatus.
CREATE TABLE concrete_job (
  InstanceID         TEXT NOT NULL PRIMARY KEY, -- the base name of its kind, "-" and a number that only grows
  ElementName        TEXT,
  JobState           INTEGER, -- 2 new, 4 running, 7 completed, 10 exception
  JobStatus          TEXT,    -- state for people
  DeleteOnCompletion INTEGER, -- 1 when clients want it gone once it has ended, else 0; the purge does not ask
  OperationalStatus  TEXT,    -- CIM_ManagedSystemElement.OperationalStatus, list
  PercentComplete    INTEGER, -- 0 to 100
  TimeBeforeRemoval  TEXT,    -- minutes to keep the job, decimal
  RemovalTime        INTEGER  -- when a finished job may be purged, in seconds since boot; never read back
);

-- CIM_Error: what went wrong in a job, one row for each source of errors. The purge deletes the rows of a job with it.
CREATE TABLE error_info (
  ErrorSource       TEXT NOT NULL PRIMARY KEY, -- whose error it is: a job's InstanceID
  ErrorType         INTEGER,
  PerceivedSeverity INTEGER,
  ProbableCause     INTEGER,
  ErrorSourceFormat INTEGER, -- what kind of name ErrorSource is
  CIMStatusCode     INTEGER  -- status of the CIM operation (DSP0200); 1 failed
);
