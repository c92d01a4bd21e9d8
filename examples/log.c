/*
 * log.c - the two functions that every host provides: what the library has to say comes here.
 */
#include <qmv.h>
#include <stdarg.h>
#include <stdio.h>

/* What failed. */
void HTRC_LINUXAPP_DbgOut(int level, const char* format, ...) {
  va_list values;
  (void)level;
  va_start(values, format);
  vfprintf(stderr, format, values);
  fputc('\n', stderr);
  va_end(values);
}

/* What is being done: several lines a call, which only somebody who looks for a fault wants to read. */
void HTRC_LINUXAPP_Runtime_DbgOut(int level, const char* format, ...) {
  (void)level;
  (void)format;
}
