// qmvctl - creates, fills, checks and shows the databases of the server management controller, through the library.
#include <unistd.h>

#include <iostream>

#include "command_line.h"

int main(int argument_count, char** arguments) {
  const qmvctl::Terminal terminal = qmvctl::terminal_of(isatty(STDOUT_FILENO) == 1, isatty(STDERR_FILENO) == 1);
  return qmvctl::run(argument_count, arguments, std::cout, std::cerr, terminal);
}
