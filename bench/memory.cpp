// The C allocator of the benchmark programs, for all contenders and for SQLite alike: it counts, and it puts readable
// bytes behind every block. SQLite keeps texts in blocks of the C allocator, so a blind copy of a whole field from a
// short text stays within a block.
#include "memory.h"

#include <cstdlib>

namespace {

constexpr std::size_t kWidestField = 256;
std::size_t calls = 0;

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) {
  ++calls;
  return __libc_malloc(size + kWidestField);
}

void* calloc(std::size_t count, std::size_t size) {
  ++calls;
  return __libc_calloc(1, count * size + kWidestField);
}

void* realloc(void* block, std::size_t size) {
  ++calls;
  return __libc_realloc(block, size + kWidestField);
}

}  // extern "C"

std::size_t qmv::bench::allocations() {
  return calls;
}
