// What this process holds: heap and descriptors.
#ifndef QMV_TESTS_PROCESSES_MEMORY_H
#define QMV_TESTS_PROCESSES_MEMORY_H

#include <cstddef>

namespace qmv::test {

struct Held {
  std::size_t sqlite_blocks = 0;
  std::size_t sqlite_bytes = 0;
  std::size_t descriptors = 0;

  bool operator==(const Held&) const = default;
};

Held held();

// All that is allocated and not released.
std::size_t heap_bytes();

// Resident memory in KiB. A sanitizer's runtime grows on its own account.
std::size_t resident_kib();
bool is_instrumented();

// From now on calloc() has no element of that size, but where a sanitizer stands in for the allocator.
void refuse_blocks_of(std::size_t size);

}  // namespace qmv::test

#endif
