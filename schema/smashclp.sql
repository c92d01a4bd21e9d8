-- smashclp.sql - the table of the command-line shell's database, /tmp/smashclp.db. The library only reads it, by
-- position: keep the order. From errtype on they are what the command-line protocol says of
-- a job's error (DSP0214, command status).

-- Jobs of the command-line protocol, one row each.
CREATE TABLE jobs (
  jobid          INTEGER NOT NULL PRIMARY KEY, -- number of the job
  state          INTEGER, -- CIM_ConcreteJob.JobState; 10 for a job that ended in an error
  command        TEXT,    -- the command line
  owner          TEXT,    -- who gave it
  start_time     INTEGER, -- in seconds since boot
  end_time       INTEGER, -- in seconds since boot; 0 while the job runs
  percent        INTEGER, -- 0 to 100
  errtype        INTEGER, -- CIM_Error.ErrorType
  errtype_desc   TEXT,    -- errtype in words
  cimstat        INTEGER, -- CIM_Error.CIMStatusCode
  cimstat_desc   TEXT,    -- cimstat in words
  severity       INTEGER, -- CIM_Error.PerceivedSeverity
  probcause      INTEGER, -- CIM_Error.ProbableCause
  probcause_desc TEXT     -- probcause in words
);
