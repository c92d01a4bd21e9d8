// Runs each operation once in a marked region, so that a tool that counts instructions can tell what they cost:
// callgrind by the names of the marking functions, the counting plugin of qemu by the system call that both make.
// Writes one line for each region, in order: operation, contender, allocations.
//
//   instructions DATABASE SCHEMA    the file is made anew
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

#include "memory.h"
#include "operations.h"
#include "rows.h"

extern "C" {

__attribute__((noinline)) void region_begins() {
  syscall(SYS_getppid);
}
__attribute__((noinline)) void region_ends() {
  syscall(SYS_getppid);
}

}  // extern "C"

namespace {

void measure(const qmv::bench::Operation& operation) {
  operation.begin();
  const std::size_t before = qmv::bench::allocations();
  region_begins();
  operation.run();
  region_ends();
  const std::size_t allocations = qmv::bench::allocations() - before;
  operation.end();
  std::printf("%s\t%s\t%zu\n", operation.name.c_str(), operation.contender.c_str(), allocations);
  std::fflush(stdout);
}

// In a process of its own, so that all operations find the same heap: how long malloc looks for a block depends on what
// ran before, and makes up to a hundredth of an operation.
void measure_apart(const qmv::bench::Operation& operation) {
  const pid_t child = fork();
  if (child == 0) {
    measure(operation);
    _exit(0);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || status != 0)
    throw std::runtime_error(operation.name + " failed");
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::fprintf(stderr, "usage: instructions DATABASE SCHEMA\n");
    return 2;
  }
  qmv::bench::create_database(argv[1], argv[2]);
  for (const qmv::bench::Operation& operation : qmv::bench::operations(argv[1])) measure_apart(operation);
  return 0;
} catch (const std::exception& failure) {
  std::fprintf(stderr, "instructions: %s\n", failure.what());
  return 1;
}
