#include "terminal.h"

#include <cstdlib>
#include <string_view>

namespace qmvctl {

namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

}  // namespace

Terminal terminal_of(bool out_is_terminal, bool err_is_terminal) {
  const bool is_dumb = environment("TERM") == "dumb";
  const bool wants_colours = environment("NO_COLOR").empty();
  return {out_is_terminal && wants_colours && !is_dumb, err_is_terminal && !is_dumb};
}

}  // namespace qmvctl
