/*
 * A host that loads the library while it runs. Every import is bound at once, so loading shows that the library asks
 * for nothing that its own dependencies and the host's two functions do not provide. It then uses a database, which
 * shows that SQLite came with it.
 */
#include <dlfcn.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

struct sqlite3;

static void* library;
static char scratch[] = "/tmp/qmv-dlopen-XXXXXX"; /* stands for the fixed file */
static int lines;

void HTRC_LINUXAPP_DbgOut(int level, const char* format, ...);
void HTRC_LINUXAPP_Runtime_DbgOut(int level, const char* format, ...);
int sqlite3_open(const char* file, struct sqlite3** db);

void HTRC_LINUXAPP_DbgOut(int level, const char* format, ...) {
  (void)level, (void)format;
}

void HTRC_LINUXAPP_Runtime_DbgOut(int level, const char* format, ...) {
  (void)format;
  lines += level == 135;
}

static void must(int holds, const char* what) {
  if (holds) return;
  fprintf(stderr, "%s\n", what);
  exit(EXIT_FAILURE);
}

/* Stores the address of a function of the library, or of SQLite behind it. */
static void find(const char* name, void* function) {
  void* const symbol = dlsym(library, name);
  must(symbol != NULL, name);
  memcpy(function, &symbol, sizeof symbol);
}

/* Stands before SQLite's, for the library too. */
int sqlite3_open(const char* file, struct sqlite3** db) {
  int (*open)(const char*, struct sqlite3**, int, const char*);
  find("sqlite3_open_v2", &open);
  must(strcmp(file, "/tmp/cim.db") == 0, "the library opens another file");
  return open(scratch, db, 2 /* SQLITE_OPEN_READWRITE */, NULL);
}

static void use_a_database(void) {
  int32_t (*init)(struct sqlite3**);
  int32_t (*execute)(struct sqlite3*, const char*, ...);
  int32_t (*close_database)(struct sqlite3*);
  find("db_init", &init);
  find("db_execute", &execute);
  find("db_close", &close_database);
  must(close(mkstemp(scratch)) == 0, "there is no scratch file");
  struct sqlite3* db = NULL;
  must(init(&db) == 0, "the database does not open");
  must(execute(db, "create table %q (number);", "numbers") == 0, "nothing can be executed");
  must(execute(db, "insert into numbers values (1") != 0, "half a statement is executed");
  must(close_database(db) == 0, "the database does not close");
  struct stat file;
  must(stat(scratch, &file) == 0 && file.st_size > 0, "nothing was written");
  unlink(scratch);
}

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  library = dlopen(argv[1], RTLD_NOW);
  if (library == NULL) fprintf(stderr, "%s\n", dlerror());
  must(library != NULL, "the library does not load");
  void (*release)(void*);
  find("db_freemem", &release);
  release(malloc(1));
  must(lines == 1, "the host was not called once");
  use_a_database();
  return EXIT_SUCCESS;
}
