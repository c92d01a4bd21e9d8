// The debug output of a host that formats its lines and drops them: what a line is given is read.
#include <cstdarg>
#include <cstdio>

#include "qmv/core.h"

namespace {

__attribute__((format(printf, 1, 0))) void formatted(const char* format, va_list arguments) {
  char line[4096];
  std::vsnprintf(line, sizeof(line), format, arguments);
}

}  // namespace

extern "C" {

void HTRC_LINUXAPP_DbgOut(int, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  formatted(format, arguments);
  va_end(arguments);
}

void HTRC_LINUXAPP_Runtime_DbgOut(int, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  formatted(format, arguments);
  va_end(arguments);
}

}  // extern "C"
