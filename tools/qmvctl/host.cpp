#include "host.h"

#include <cstdarg>
#include <cstdio>

#include "qmv/core.h"

namespace {

bool traces_are_shown = false;

// One line on standard error, with what the library says in one piece.
__attribute__((format(printf, 2, 0))) void write_line(const char* kind, const char* format, va_list arguments) {
  flockfile(stderr);
  std::fprintf(stderr, "qmvctl: %s: ", kind);
  std::vfprintf(stderr, format, arguments);
  std::fputc('\n', stderr);
  funlockfile(stderr);
}

}  // namespace

namespace qmvctl {

void show_traces(bool is_on) {
  traces_are_shown = is_on;
}

}  // namespace qmvctl

void HTRC_LINUXAPP_DbgOut(int, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  write_line("error", format, arguments);
  va_end(arguments);
}

void HTRC_LINUXAPP_Runtime_DbgOut(int, const char* format, ...) {
  if (!traces_are_shown) return;
  va_list arguments;
  va_start(arguments, format);
  write_line("trace", format, arguments);
  va_end(arguments);
}
