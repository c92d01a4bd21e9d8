// Memory that ends at the end of a page, with a page behind it that nobody may touch.
#ifndef QMV_TESTS_TORTURE_GUARDED_H
#define QMV_TESTS_TORTURE_GUARDED_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <new>

namespace qmv::test {

class Guarded {
 public:
  Guarded(std::size_t size, char fill) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t usable = (size + page - 1) / page * page;
    mapped_ = usable + page;
    void* const start = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (start == MAP_FAILED) throw std::bad_alloc();
    start_ = static_cast<char*>(start);
    mprotect(start_ + usable, page, PROT_NONE);
    bytes_ = start_ + usable - size;
    std::memset(bytes_, fill, size);
  }
  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;
  ~Guarded() { munmap(start_, mapped_); }

  char* bytes() const { return bytes_; }

 private:
  std::size_t mapped_;
  char* start_;
  char* bytes_;
};

}  // namespace qmv::test

#endif
