// What a terminal shows beside plain text.
#ifndef QMVCTL_TERMINAL_H
#define QMVCTL_TERMINAL_H

namespace qmvctl {

struct Terminal {
  bool has_colours = false;   // on standard output
  bool has_progress = false;  // on standard error
};

// Terminals show both, files and terminals that call themselves dumb nothing. NO_COLOR in the environment, unless it is
// empty, means no colours.
Terminal terminal_of(bool out_is_terminal, bool err_is_terminal);

}  // namespace qmvctl

#endif
