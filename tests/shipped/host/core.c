/* Connections, statements, and release. */
#include <stdlib.h>
#include <string.h>

#include "host.h"

static void opens(int32_t (*open)(struct sqlite3**), const char* fixed_file) {
  sqlite3* db = NULL;
  forget_lines();
  CHECK(!exists(fixed_file));
  CHECK_INT(SQLITE_OK, open(&db));
  CHECK(exists(fixed_file));
  CHECK_INT(1, lines_of_level(135));
  CHECK(strstr(last_line(), fixed_file) != NULL);
  CLOSE(db);
}

static void does_not_open(int32_t (*open)(struct sqlite3**)) {
  sqlite3* db = NULL;
  forget_lines();
  move_fixed_files("/missing");
  CHECK_INT(SQLITE_CANTOPEN, open(&db));
  CHECK_INT(2, lines_of_level(130));
  move_fixed_files("");
}

void connections(void) {
  opens(db_init, INSTANCE_DATABASE);
  opens(tmp_db_init, TEMPORARY_DATABASE);
  opens(smash_db_init, SHELL_DATABASE);
  does_not_open(db_init);
  does_not_open(tmp_db_init);
  does_not_open(smash_db_init);
}

static sqlite3* writer;

static void let_the_writer_end(unsigned seconds) {
  CHECK_INT(2, seconds);
  CHECK_TEXT("Handler in busy", last_line());
  RUN(writer, "commit");
  while_sleeping = NULL;
}

static void waits_for_a_lock(struct sqlite3* db) {
  writer = open_from_outside(INSTANCE_DATABASE);
  RUN(writer, "begin exclusive");
  while_sleeping = let_the_writer_end;
  CHECK_INT(SQLITE_OK, db_execute(db, "insert into texts values (3, 'waited');"));
  CHECK(while_sleeping == NULL);
  CHECK_INT(SQLITE_OK, sqlite3_close(writer));
}

void statements(void) {
  sqlite3* const db = open_empty();
  CHECK_INT(SQLITE_OK, db_execute(db, "create table %q (number integer primary key, text);", "texts"));
  CHECK_INT(SQLITE_OK, db_execute(db, "insert into texts values (%i, '%q');", 1, "it's"));
  CHECK_INT(1, value_of(db, "select count(*) from texts where number = 1 and text = 'it''s'"));
  CHECK_INT(0, lines_of_level(135));
  CHECK_INT(SQLITE_CONSTRAINT, db_execute(db, "insert into texts values (1, '');"));
  CHECK_TEXT("Successfully execute the SQLite query", last_line());

  CHECK_INT(SQLITE_OK, db_execute(db, "begin;"));
  CHECK_INT(SQLITE_OK, db_execute(db, "insert into texts values (2, '');"));
  CHECK_INT(SQLITE_OK, db_commit(db));
  CHECK_INT(2, value_of(db, "select count(*) from texts"));
  CHECK_INT(SQLITE_ERROR, db_commit(db));

  waits_for_a_lock(db);

  sqlite3_stmt* open_statement = NULL;
  CHECK_INT(SQLITE_OK, sqlite3_prepare_v2(db, "select 1", -1, &open_statement, NULL));
  CHECK_INT(SQLITE_BUSY, db_close(db));
  sqlite3_finalize(open_statement);
  CLOSE(db);

  forget_lines();
  db_freemem(NULL);
  CHECK_INT(0, lines_of_level(135));
  db_freemem(malloc(1));
  CHECK_INT(1, lines_of_level(135));
}
