#undef _FILE_OFFSET_BITS /* or the fopen() below would be fopen64() */
#include "host.h"

#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int failures;

static const char* const fixed_files[] = {INSTANCE_DATABASE, TEMPORARY_DATABASE, SHELL_DATABASE, REGISTRY,
                                          STATIC_INSTANCES};
static char scratch[256];       /* holds them */
static const char* folder = ""; /* below it */
static const char* schema_folder;

static int lines[256]; /* by level */
static char newest[512];

void (*while_sleeping)(unsigned seconds);
const char* uptime;

bool check(bool holds, const char* what, const char* file, int line) {
  if (holds) return true;
  failures++;
  printf("%s:%d: %s does not hold\n", file, line, what);
  return false;
}

void check_int(int64_t expected, int64_t actual, const char* what, const char* file, int line) {
  if (expected == actual) return;
  failures++;
  printf("%s:%d: %s is %lld, not %lld\n", file, line, what, (long long)actual, (long long)expected);
}

void check_text(const char* expected, const char* actual, size_t width, const char* what, const char* file, int line) {
  if (actual != NULL && strncmp(expected, actual, width) == 0) return;
  failures++;
  printf("%s:%d: %s is \"%.*s\", not \"%s\"\n", file, line, what, width > 256 ? 256 : (int)width,
         actual == NULL ? "(NULL)" : actual, expected);
}

void check_record(const void* expected, const void* actual, size_t size, const char* what, const char* file, int line) {
  if (actual == NULL) {
    failures++;
    printf("%s:%d: %s is NULL\n", file, line, what);
    return;
  }
  for (size_t i = 0; i < size; ++i) {
    if (((const char*)expected)[i] == ((const char*)actual)[i]) continue;
    failures++;
    printf("%s:%d: %s differs at byte %zu\n", file, line, what, i);
    return;
  }
}

/* Every four bytes are other digits: a number, or a piece of a text without an end. */
void fill(void* record, size_t size) {
  for (size_t i = 0; i < size; i += 4) {
    char digits[8];
    snprintf(digits, sizeof digits, "%04u", (unsigned)(i / 4) % 10000);
    memcpy((char*)record + i, digits, 4);
  }
}

void set(char* field, size_t width, const char* text) {
  memset(field, 0, width);
  memcpy(field, text, strlen(text));
}

/* What the library imports from its host. */

__attribute__((format(printf, 2, 0))) static void keep(int level, const char* format, va_list arguments) {
  vsnprintf(newest, sizeof newest, format, arguments);
  CHECK(newest[0] == '[' && strchr(newest, ']') != NULL);
  lines[level & 255]++;
}

void HTRC_LINUXAPP_DbgOut(int level, const char* format, ...) {
  va_list arguments;
  CHECK_INT(130, level);
  va_start(arguments, format);
  keep(level, format, arguments);
  va_end(arguments);
}

void HTRC_LINUXAPP_Runtime_DbgOut(int level, const char* format, ...) {
  va_list arguments;
  CHECK_INT(135, level);
  va_start(arguments, format);
  keep(level, format, arguments);
  va_end(arguments);
}

int lines_of_level(int level) {
  return lines[level & 255];
}

/* Without the "[file:line]". */
const char* last_line(void) {
  const char* const end = strchr(newest, ']');
  return end == NULL ? newest : end + 1;
}

void forget_lines(void) {
  memset(lines, 0, sizeof lines);
  newest[0] = '\0';
}

/* What the library calls outside: these definitions come before SQLite's and libc's. */

static void path_of(const char* fixed_file, char* path, size_t size) {
  snprintf(path, size, "%s%s%s", scratch, folder, strrchr(fixed_file, '/'));
}

int sqlite3_open(const char* filename, sqlite3** db) {
  for (size_t i = 0; i < sizeof fixed_files / sizeof *fixed_files; ++i) {
    if (strcmp(filename, fixed_files[i]) != 0) continue;
    char path[512];
    path_of(filename, path, sizeof path);
    return sqlite3_open_v2(path, db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, NULL); /* what sqlite3_open does */
  }
  CHECK_TEXT("one of the fixed files", filename);
  *db = NULL;
  return SQLITE_CANTOPEN;
}

FILE* fopen(const char* path, const char* mode) {
  static char text[64];
  CHECK_TEXT("/proc/uptime", path);
  CHECK_TEXT("r", mode);
  if (uptime == NULL) return NULL;
  snprintf(text, sizeof text, "%s", uptime);
  return fmemopen(text, strlen(text), mode);
}

unsigned sleep(unsigned seconds) {
  if (!CHECK(while_sleeping != NULL)) exit(EXIT_FAILURE); /* it would be asked to sleep for ever */
  while_sleeping(seconds);
  return 0;
}

bool exists(const char* fixed_file) {
  char path[512];
  path_of(fixed_file, path, sizeof path);
  return access(path, F_OK) == 0;
}

void move_fixed_files(const char* to) {
  folder = to;
}

struct sqlite3* open_empty(void) {
  char path[512];
  sqlite3* db = NULL;
  path_of(INSTANCE_DATABASE, path, sizeof path);
  unlink(path);
  CHECK_INT(SQLITE_OK, db_init(&db));
  forget_lines();
  return db;
}

struct sqlite3* open_with_schema(void) {
  sqlite3* const db = open_empty();
  make_tables(db, "cim.sql");
  return db;
}

static char* read_whole(const char* path) {
  const int file = open(path, O_RDONLY);
  char* const text = (char*)calloc(1, 1 << 16);
  if (file == -1 || text == NULL || read(file, text, (1 << 16) - 1) <= 0) {
    perror(path);
    exit(EXIT_FAILURE);
  }
  close(file);
  return text;
}

void make_tables(struct sqlite3* db, const char* schema_file) {
  char path[512];
  snprintf(path, sizeof path, "%s/%s", schema_folder, schema_file);
  char* const statements = read_whole(path);
  RUN(db, "pragma synchronous = off"); /* the disk need not survive the test */
  RUN(db, statements);
  free(statements);
}

struct sqlite3* open_from_outside(const char* fixed_file) {
  char path[512];
  sqlite3* db = NULL;
  path_of(fixed_file, path, sizeof path);
  CHECK_INT(SQLITE_OK, sqlite3_open_v2(path, &db, SQLITE_OPEN_READWRITE, NULL));
  return db;
}

int value_of(struct sqlite3* db, const char* query) {
  sqlite3_stmt* row = NULL;
  CHECK_INT(SQLITE_OK, sqlite3_prepare_v2(db, query, -1, &row, NULL));
  CHECK_INT(SQLITE_ROW, sqlite3_step(row));
  const int value = sqlite3_column_int(row, 0);
  sqlite3_finalize(row);
  return value;
}

static void remove_scratch(void) {
  for (size_t i = 0; i < sizeof fixed_files / sizeof *fixed_files; ++i) {
    char path[512];
    path_of(fixed_files[i], path, sizeof path);
    unlink(path);
  }
  CHECK_INT(0, rmdir(scratch));
}

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: %s SCHEMA_FOLDER\n", argv[0]);
    return 2;
  }
  const char* const tmp = getenv("TMPDIR");
  snprintf(scratch, sizeof scratch, "%s/qmv-host-XXXXXX", tmp == NULL ? "/tmp" : tmp);
  if (mkdtemp(scratch) == NULL) {
    perror(scratch);
    return EXIT_FAILURE;
  }
  schema_folder = argv[1];

  connections();
  statements();
  frus();
  compact_sensors();
  full_sensors();
  managed_systems();
  components();
  event_log();
  physical_assets();
  physical_elements();
  power_supplies();
  profiles();
  boot();
  roles();
  services();
  jobs();
  indications();
  requested_states();
  associations();
  introspection();

  remove_scratch();
  printf("%d failed\n", failures);
  return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
