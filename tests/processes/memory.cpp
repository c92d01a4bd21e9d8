#include "memory.h"

#include <malloc.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// Where a sanitizer stands in for the allocator, it knows the size of the heap.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace qmv::test {

namespace {

std::size_t sqlite_status(int what) {
  sqlite3_int64 now = 0;
  sqlite3_int64 highest = 0;
  sqlite3_status64(what, &now, &highest, 0);
  return static_cast<std::size_t>(now);
}

}  // namespace

Held held() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  const auto open = static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors)));
  return {sqlite_status(SQLITE_STATUS_MALLOC_COUNT), sqlite_status(SQLITE_STATUS_MEMORY_USED), open};
}

std::size_t heap_bytes() {
  if (is_instrumented()) return __sanitizer_get_current_allocated_bytes();
  const auto heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

std::size_t resident_kib() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmRSS:") {
  }
  std::size_t kib = 0;
  status >> kib;
  return kib;
}

bool is_instrumented() {
  return &__sanitizer_get_current_allocated_bytes != nullptr;
}

}  // namespace qmv::test
