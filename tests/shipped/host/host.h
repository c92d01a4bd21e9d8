/*
 * A host process as the library's users write them: it links the shipped file and sees the public header only. It
 * stands between the library and the machine: debug lines are kept, the fixed database files lie in a scratch
 * directory, and nobody sleeps. One function below for each family makes a round through all that the family exports.
 */
#ifndef QMV_TESTS_SHIPPED_HOST_H
#define QMV_TESTS_SHIPPED_HOST_H

#include <qmv.h>
#include <sqlite3.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

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

/* The fixed files, wherever they are in truth, and what happens in place of sleeping. */
bool exists(const char* fixed_file);
void move_fixed_files(const char* folder);
extern void (*while_sleeping)(unsigned seconds);

/* The instance database, empty or as the schema defines it. */
#define INSTANCE_DATABASE "/tmp/cim.db"
struct sqlite3* open_empty(void);
struct sqlite3* open_with_schema(void);
/* Closes it, which shows that no statement was left open. */
#define CLOSE(db) CHECK_INT(SQLITE_OK, db_close(db))

/* Another process at the same file. */
struct sqlite3* open_from_outside(const char* fixed_file);
#define RUN(db, text) CHECK_INT(SQLITE_OK, sqlite3_exec((db), (text), NULL, NULL, NULL))
/* The integer in the first column of a query's first row. */
int value_of(struct sqlite3* db, const char* query);

QMV_END_DECLS

#endif
