// The command line: what each command takes, does and prints.
#ifndef QMVCTL_COMMAND_LINE_H
#define QMVCTL_COMMAND_LINE_H

#include <ostream>

#include "terminal.h"

namespace qmvctl {

// Runs the command that the arguments name. Returns the exit status: 0 done, 1 failed, 2 wrong usage.
int run(int argument_count, const char* const* arguments, std::ostream& out, std::ostream& err, Terminal terminal);

}  // namespace qmvctl

#endif
