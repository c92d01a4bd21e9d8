#include "host.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "characters.h"
#include "qmv/core.h"

namespace {

bool traces_are_shown = false;

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::string text(static_cast<size_t>(std::max(length, 0)) + 1, '\0');
  std::vsnprintf(text.data(), text.size(), format, again);
  va_end(again);
  text.pop_back();
  return text;
}

// One line on standard error, in one piece: texts of the database are in it.
void write_line(const char* kind, const std::string& text) {
  std::fprintf(stderr, "qmvctl: %s: %s\n", kind, qmvctl::printable(text).c_str());
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
  write_line("error", formatted(format, arguments));
  va_end(arguments);
}

void HTRC_LINUXAPP_Runtime_DbgOut(int, const char* format, ...) {
  if (!traces_are_shown) return;
  va_list arguments;
  va_start(arguments, format);
  write_line("trace", formatted(format, arguments));
  va_end(arguments);
}
