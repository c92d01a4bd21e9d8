/*
 * A host process as the library's users write them: it links the shipped file and sees the public header only. It
 * stands between the library and the machine: debug lines are kept, the fixed database files lie in a scratch
 * directory, the clock says what it is told, and nobody sleeps. One function below for each family makes a round through all that the family exports.
 */
#ifndef QMV_TESTS_SHIPPED_HOST_H
#define QMV_TESTS_SHIPPED_HOST_H

#include <qmv.h>
#include <sqlite3.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <string.h>

QMV_BEGIN_DECLS

void connections(void);
void statements(void);
void frus(void);
void compact_sensors(void);
void full_sensors(void);
void managed_systems(void);
void components(void);
void event_log(void);
void physical_assets(void);
void physical_elements(void);
void power_supplies(void);
void profiles(void);
void boot(void);
void roles(void);
void services(void);
void jobs(void);
void indications(void);
void requested_states(void);
void associations(void);
void introspection(void);

/* A check prints a line when it fails, and the test goes on; CHECK() also says whether it held. */
#define CHECK(condition) check((condition), #condition, __FILE__, __LINE__)
#define CHECK_INT(expected, actual) check_int((expected), (actual), #actual, __FILE__, __LINE__)
/* A text field of a record, bounded by its width. */
#define CHECK_FIELD(expected, field) check_text((expected), (field), sizeof(field), #field, __FILE__, __LINE__)
/* A text of the library that ends with a zero. */
#define CHECK_TEXT(expected, text) check_text((expected), (text), PTRDIFF_MAX, #text, __FILE__, __LINE__)
/* Two records, byte by byte. */
#define CHECK_RECORD(expected, actual) \
  check_record(&(expected), (actual), sizeof(expected), #actual, __FILE__, __LINE__)

bool check(bool holds, const char* what, const char* file, int line);
void check_int(int64_t expected, int64_t actual, const char* what, const char* file, int line);
void check_text(const char* expected, const char* actual, size_t width, const char* what, const char* file, int line);
void check_record(const void* expected, const void* actual, size_t size, const char* what, const char* file, int line);

/* Fills a record so that all its fields differ; text fields are as wide as they can be. */
#define FILL(record) fill(&(record), sizeof(record))
void fill(void* record, size_t size);
/* Stores a short text in a field. */
#define SET(field, text) set((field), sizeof(field), (text))
void set(char* field, size_t width, const char* text);

/* Gives back what the library handed out. */
#define RELEASE(memory) (db_freemem(memory), (memory) = NULL)

/* What the library said since forget_lines(). */
int lines_of_level(int level);
const char* last_line(void);
void forget_lines(void);

/* The fixed files, and one that a service might keep, wherever they are in truth. */
#define INSTANCE_DATABASE "/tmp/cim.db"
#define TEMPORARY_DATABASE "/tmp/tmp_cim.db"
#define SHELL_DATABASE "/tmp/smashclp.db"
#define REGISTRY "/etc/Association.db"
#define STATIC_INSTANCES "/conf/static_instances.db"
bool exists(const char* fixed_file);
void move_fixed_files(const char* folder);

/* What happens in place of sleeping, and what "/proc/uptime" holds: NULL when it is not there. */
extern void (*while_sleeping)(unsigned seconds);
extern const char* uptime;

/* The instance database, empty or as the schema defines it. */
struct sqlite3* open_empty(void);
struct sqlite3* open_with_schema(void);
/* Makes the tables of a database as a file of the schema says. */
void make_tables(struct sqlite3* db, const char* schema_file);
/* Closes it, which shows that no statement was left open. */
#define CLOSE(db) CHECK_INT(SQLITE_OK, db_close(db))

/* Another process at the same file. */
struct sqlite3* open_from_outside(const char* fixed_file);
#define RUN(db, text) CHECK_INT(SQLITE_OK, sqlite3_exec((db), (text), NULL, NULL, NULL))
/* The integer in the first column of a query's first row. */
int value_of(struct sqlite3* db, const char* query);

QMV_END_DECLS

/*
 * A table of instances, with `db` its connection and `read` a pointer to its record: the record is stored, its key a
 * given text; stored again with another text in a member; read by its key, into a new record or the caller's; listed.
 */
#define STORE(record, key, text, set) \
  do {                                \
    FILL(record);                     \
    SET((record).key, (text));        \
    CHECK_INT(0, set(db, &(record))); \
  } while (0)

#define STORE_AGAIN(record, member, set) \
  do {                                   \
    SET((record).member, "another");     \
    CHECK_INT(0, set(db, &(record)));    \
  } while (0)

#define CHECK_FOUND(expected, get, key)  \
  do {                                   \
    CHECK_INT(0, get(db, (key), &read)); \
    CHECK_RECORD(expected, read);        \
    RELEASE(read);                       \
    CHECK_INT(1, get(db, "no", &read));  \
  } while (0)

#define CHECK_FILLED(expected, get, key, record) \
  do {                                           \
    memset(&(record), 0, sizeof(record));        \
    CHECK_INT(0, get(db, (key), &(record)));     \
    CHECK_RECORD(expected, &(record));           \
    CHECK_INT(1, get(db, "no", &(record)));      \
  } while (0)

#define CHECK_LISTED(expected, get_all)        \
  do {                                         \
    int32_t listed = -1;                       \
    CHECK_INT(0, get_all(db, &listed, &read)); \
    CHECK_INT(1, listed);                      \
    CHECK_RECORD(expected, read);              \
    RELEASE(read);                             \
  } while (0)

#endif
