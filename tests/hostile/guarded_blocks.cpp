#include "hostile/guarded_blocks.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

extern "C" {
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_malloc(std::size_t size);
void __real_free(void* block);
void __sanitizer_get_current_allocated_bytes() __attribute__((weak));
}

namespace {

constexpr std::size_t kLargestPlain = 64 * 1024 * 1024;
constexpr char kSlack = 'g';  // in front of a block, up to its page's begin

struct Block {
  char* pages;  // NULL when it is plain
  std::size_t mapped;
  std::size_t size;
};

// Never destroyed, since blocks are released until the process ends.
std::map<void*, Block>& blocks() {
  static auto& only = *new std::map<void*, Block>;
  return only;
}

std::size_t refused = 0;

void* refuse() {
  ++refused;
  return nullptr;
}

// Left to the C library, or to the tool in its place, which knows what was not written yet. Larger blocks than any table
// makes are not: no tool has memory for them.
bool is_plain(std::size_t size) {
  static const bool wanted =
      &__sanitizer_get_current_allocated_bytes != nullptr || std::getenv("QMV_PLAIN_BLOCKS") != nullptr;
  return wanted && size <= kLargestPlain;
}

// Keeps a plain block in mind.
void* plain(void* block, std::size_t size) {
  if (block != nullptr) blocks()[block] = {nullptr, 0, size};
  return block;
}

// A block of zeros between two pages that nobody may touch. Pages cost memory only when they are touched, so that blocks
// of terabytes can be had.
void* guarded(std::size_t size) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  if (size > SIZE_MAX - 4 * page) return refuse();
  const std::size_t usable = std::max<std::size_t>(1, (size + page - 1) / page) * page;
  const std::size_t mapped = page + usable + page;
  void* const start = mmap(nullptr, mapped, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (start == MAP_FAILED) return refuse();
  char* const pages = static_cast<char*>(start);
  if (mprotect(pages + page, usable, PROT_READ | PROT_WRITE) != 0) {
    munmap(start, mapped);
    return refuse();
  }
  std::memset(pages + page, kSlack, usable - size);
  char* const block = pages + page + usable - size;
  blocks()[block] = {pages, mapped, size};
  return block;
}

// Ends the process where somebody wrote in front of the block.
void release(char* block, const Block& where) {
  if (where.pages == nullptr) return __real_free(block);
  const char* const begin = where.pages + sysconf(_SC_PAGESIZE);
  if (!std::all_of(begin, static_cast<const char*>(block), [](char byte) { return byte == kSlack; })) {
    std::fputs("somebody wrote in front of a block\n", stderr);
    std::abort();
  }
  munmap(where.pages, where.mapped);
}

}  // namespace

namespace qmv::test {

std::size_t blocks_alive() {
  return blocks().size();
}

void release_blocks() {
  for (const auto& [block, where] : blocks()) release(static_cast<char*>(block), where);
  blocks().clear();
}

std::size_t blocks_refused() {
  return refused;
}

}  // namespace qmv::test

extern "C" {

void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);
void __wrap_free(void* block);

void* __wrap_malloc(std::size_t size) {
  if (is_plain(size)) return plain(__real_malloc(size), size);
  void* const block = guarded(size);
  if (block != nullptr) std::memset(block, 'u', size);  // as malloc leaves it: not zeros
  return block;
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
  std::size_t product = 0;
  if (__builtin_mul_overflow(count, size, &product)) return refuse();
  return is_plain(product) ? plain(__real_calloc(count, size), product) : guarded(product);
}

void* __wrap_realloc(void* block, std::size_t size) {
  void* const moved = __wrap_malloc(size);
  if (moved == nullptr) return nullptr;
  if (block != nullptr) std::memcpy(moved, block, std::min(size, blocks().at(block).size));
  __wrap_free(block);
  return moved;
}

void __wrap_free(void* block) {
  const auto found = blocks().find(block);
  if (found == blocks().end()) return __real_free(block);
  release(static_cast<char*>(block), found->second);
  blocks().erase(found);
}

}  // extern "C"
