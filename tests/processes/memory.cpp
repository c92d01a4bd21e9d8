#include "memory.h"

#include <malloc.h>
#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// Where a sanitizer stands in for the allocator, it knows the size of the heap.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace qmv::test {

namespace {

std::size_t refused_size = SIZE_MAX;

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

void refuse_blocks_of(std::size_t size) {
  refused_size = size;
}

}  // namespace qmv::test

// Known by other names to each compiler.
#ifdef __has_feature
#define QMV_HAS_SANITIZER (__has_feature(address_sanitizer) || __has_feature(thread_sanitizer))
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QMV_HAS_SANITIZER 1
#else
#define QMV_HAS_SANITIZER 0
#endif

#if !QMV_HAS_SANITIZER
extern "C" {

void* __libc_calloc(std::size_t count, std::size_t size);

// In place of the C library's for all libraries of the process.
void* calloc(std::size_t count, std::size_t size) noexcept {
  return size == qmv::test::refused_size ? nullptr : __libc_calloc(count, size);
}

}  // extern "C"
#endif
