/*
 * A host that loads the library while it runs. Every import is bound at once, so loading shows that the library asks
 * for nothing that its own dependencies and the host's two functions do not provide.
 */
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int lines;

void HTRC_LINUXAPP_DbgOut(int level, const char* format, ...);
void HTRC_LINUXAPP_Runtime_DbgOut(int level, const char* format, ...);

void HTRC_LINUXAPP_DbgOut(int level, const char* format, ...) {
  (void)level, (void)format;
}

void HTRC_LINUXAPP_Runtime_DbgOut(int level, const char* format, ...) {
  (void)format;
  lines += level == 135;
}

static void* must(void* result) {
  if (result == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    exit(EXIT_FAILURE);
  }
  return result;
}

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  void* const library = must(dlopen(argv[1], RTLD_NOW));
  void* const symbol = must(dlsym(library, "db_freemem"));
  void (*release)(void*);
  memcpy(&release, &symbol, sizeof release);
  release(malloc(1));
  if (lines != 1) fprintf(stderr, "the host was called %d times, not once\n", lines);
  return lines == 1 ? EXIT_SUCCESS : EXIT_FAILURE;
}
