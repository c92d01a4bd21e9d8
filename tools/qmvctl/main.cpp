// qmvctl - creates, fills and shows the databases of the server management controller, through the library.
#include <iostream>

#include "command_line.h"

int main(int argument_count, char** arguments) {
  return qmvctl::run(argument_count, arguments, std::cout, std::cerr);
}
