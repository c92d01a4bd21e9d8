// Connections and statement execution.
#include <filesystem>
#include <string>

#include "qmv/core.h"
#include "qmv/profiles.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

class Db : public DatabaseTest {
 protected:
  Db() : DatabaseTest("db.c") {}
};

struct Opener {
  const char* path;
  std::int32_t (*open)(sqlite3**);
};

class DbOpen : public Db, public testing::WithParamInterface<Opener> {};

INSTANTIATE_TEST_SUITE_P(EachFile, DbOpen,
                         testing::Values(Opener{"/tmp/cim.db", [](sqlite3** db) { return db_init(db); }},
                                         Opener{"/tmp/tmp_cim.db", [](sqlite3** db) { return tmp_db_init(db); }},
                                         Opener{"/tmp/smashclp.db", [](sqlite3** db) { return smash_db_init(db); }}));

TEST_P(DbOpen, OpensItsFileAndInstallsTheBusyHandler) {
  scratch();
  sqlite3* opened = nullptr;
  boundary().while_logging = [] { EXPECT_EQ(0, boundary().busy_handlers_installed) << "not yet"; };
  EXPECT_EQ(0, GetParam().open(&opened));
  const std::string path = GetParam().path;
  EXPECT_EQ(Texts({path}), boundary().opened);
  EXPECT_EQ(Lines({trace("Opened database(" + path + ") successfully")}), logged());
  EXPECT_EQ(1, boundary().busy_handlers_installed);
  EXPECT_TRUE(std::filesystem::exists(redirected(path))) << "the file is created empty";
  EXPECT_EQ(0, sqlite3_close(opened));
}

TEST_P(DbOpen, FailedOpenIsLoggedTwiceAndTheHandleIsClosedAndKept) {
  boundary().fixed_files = "/nonexistent";
  sqlite3* opened = nullptr;
  int messages = 0;
  boundary().while_logging = [&messages] {
    EXPECT_EQ(++messages, boundary().messages_fetched) << "anew for each line";
    EXPECT_EQ(1u, boundary().connections_alive.size()) << "closed after both";
  };
  EXPECT_EQ(SQLITE_CANTOPEN, GetParam().open(&opened));
  const LogLine line = error("Can't open database(" + std::string(GetParam().path) + "): unable to open database file");
  EXPECT_EQ(Lines({line, line}), logged());
  EXPECT_EQ(0, boundary().busy_handlers_installed);
  EXPECT_NE(nullptr, opened) << "the handle's value is left as SQLite stored it";
}

TEST_F(Db, BusyHandlerLogsSleepsTwoSecondsAndAsksForAnotherTryEachTime) {
  scratch();
  sqlite3* opened = nullptr;
  db_init(&opened);
  for (const int earlier_calls : {0, 1, 1000}) EXPECT_EQ(1, boundary().busy_handler(nullptr, earlier_calls));
  EXPECT_EQ(std::vector<unsigned>({2, 2, 2}), boundary().sleeps);
  const LogLine busy = trace("Handler in busy");
  EXPECT_EQ(Lines({trace("Opened database(/tmp/cim.db) successfully"), busy, busy, busy}), logged());
  sqlite3_close(opened);
}

TEST_F(Db, ReadFailsOnceAfterAnotherConnectionHasChangedTheSchema) {
  const Connection other = open(scratch() + "/cim.db");
  sql(other.get(), "create table t (a); insert into t values (1);");
  sqlite3* opened = nullptr;
  db_init(&opened);
  std::int32_t count = 0;
  EXPECT_EQ(0, db_get_cnt(opened, &count, "t"));
  for (const char* change : {"create table other (a);", "create index i on t (a);", "vacuum;"}) {
    sql(other.get(), change);
    EXPECT_EQ(SQLITE_ERROR, db_get_cnt(opened, &count, "t")) << change;
    count = 0;
    EXPECT_EQ(0, db_get_cnt(opened, &count, "t")) << change;
    EXPECT_EQ(1, count);
  }
  logged();
  while (sqlite3_stmt* const left = sqlite3_next_stmt(opened, nullptr)) sqlite3_finalize(left);  // the counts' own
  EXPECT_EQ(0, sqlite3_close(opened));
}

TEST_F(Db, StatementWaitsInStepsOfTwoSecondsUntilTheLockIsReleased) {
  const Connection other = open(scratch() + "/cim.db");
  sql(other.get(), "create table t(a); begin exclusive;");
  sqlite3* opened = nullptr;
  db_init(&opened);
  boundary().while_sleeping = [&] {
    if (boundary().sleeps.size() == 3) sql(other.get(), "commit;");
  };
  EXPECT_EQ(0, db_execute(opened, "insert into t values (%i);", 1));
  EXPECT_EQ(std::vector<unsigned>({2, 2, 2}), boundary().sleeps);
  const LogLine busy = trace("Handler in busy");
  EXPECT_EQ(Lines({trace("Opened database(/tmp/cim.db) successfully"), busy, busy, busy}), logged());
  sqlite3_close(opened);
}

TEST_F(Db, ExecuteOfAValidStatementLogsNothing) {
  EXPECT_EQ(0, db_execute(db, "create table t(a);"));
  EXPECT_EQ(Lines(), logged());
}

TEST_F(Db, ExecuteFormatsWithSqliteConversions) {
  sql("create table t(a, b);");
  EXPECT_EQ(0, db_execute(db, "insert into %q values ('%q', %i);", "t", "it's", -7));
  EXPECT_EQ(Texts({"insert into t values ('it''s', -7);"}), statements());
  EXPECT_EQ("it's|-7", value_of("select * from t;"));
}

TEST_F(Db, ExecuteDiscardsRows) {
  EXPECT_EQ(0, db_execute(db, "select 1 union select 2;"));
}

TEST_F(Db, ExecuteSpeaksOfSuccessWhenAStatementFailsAndReleasesTheErrorTextUnread) {
  EXPECT_EQ(SQLITE_ERROR, db_execute(db, "delete * from full_sdr where IPMI_RecordID=%i;", 1));
  EXPECT_EQ(Lines({trace("Successfully execute the SQLite query")}), logged());
  EXPECT_TRUE(boundary().texts_alive.empty());
}

TEST_F(Db, ExecuteReturnsTheConstraintCodeForAKeyThatExists) {
  sql("create table t(a primary key); insert into t values (1);");
  EXPECT_EQ(SQLITE_CONSTRAINT, db_execute(db, "insert into t values (1);"));
  EXPECT_EQ(Lines({trace("Successfully execute the SQLite query")}), logged());
}

TEST_F(Db, ExecuteHandsATextThatCouldNotBeFormattedToSqlite) {
  boundary().fail_text = 1;
  EXPECT_EQ(0, db_execute(db, "no statement at all")) << "SQLite has nothing to do for no text";
  EXPECT_EQ(Texts({"(null)"}), statements());
}

TEST_F(Db, ExecuteReturnsSqlitesCodeUnchanged) {
  boundary().execs = {{1, SQLITE_FULL}};
  EXPECT_EQ(SQLITE_FULL, db_execute(db, "select 1;"));
  EXPECT_EQ(Lines({trace("Successfully execute the SQLite query")}), logged());
}

TEST_F(Db, CommitEndsTheCallersTransaction) {
  sql("create table t(a); begin; insert into t values (1);");
  EXPECT_EQ(0, db_commit(db));
  EXPECT_EQ(Texts({"commit;"}), statements());
  EXPECT_EQ(Lines({trace("Commit the SQLite Query")}), logged());
  EXPECT_NE(0, sqlite3_get_autocommit(db));
}

TEST_F(Db, CommitWithoutATransactionReturnsOne) {
  EXPECT_EQ(1, db_commit(db));
  EXPECT_EQ(Lines({trace("Commit the SQLite Query"), trace("Successfully execute the SQLite query")}), logged());
}

TEST_F(Db, CloseTracesAndReturnsSqlitesCode) {
  sqlite3* other = nullptr;
  __real_sqlite3_open(":memory:", &other);
  sqlite3_stmt* statement = nullptr;
  __real_sqlite3_prepare(other, "select 1;", -1, &statement, nullptr);
  EXPECT_EQ(SQLITE_BUSY, db_close(other));
  __real_sqlite3_finalize(statement);
  EXPECT_EQ(0, db_close(other));
  const LogLine line = trace("Terminate the database handler");
  EXPECT_EQ(Lines({line, line}), logged());
}

TEST_F(Db, FreememTracesAndReleases) {
  db_freemem(std::malloc(1));
  EXPECT_TRUE(boundary().blocks_alive.empty());
  EXPECT_EQ(Lines({trace("Successfully free the Memory")}), logged());
}

TEST_F(Db, FreememOfNullLogsNothing) {
  db_freemem(nullptr);
  EXPECT_EQ(Lines(), logged());
}

}  // namespace
}  // namespace qmv::test
