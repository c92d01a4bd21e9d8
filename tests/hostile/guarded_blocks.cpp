#include "hostile/guarded_blocks.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>

namespace {

struct Block {
  void* pages;
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

// A block of zeros. Pages cost memory only when they are touched, so that blocks of terabytes can be had.
void* guarded(std::size_t size) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  if (size > SIZE_MAX - 3 * page) return refuse();
  const std::size_t usable = std::max<std::size_t>(1, (size + page - 1) / page) * page;
  const std::size_t mapped = usable + page;
  void* const pages = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (pages == MAP_FAILED) return refuse();
  mprotect(static_cast<char*>(pages) + usable, page, PROT_NONE);
  void* const block = static_cast<char*>(pages) + usable - size;
  blocks()[block] = {pages, mapped, size};
  return block;
}

}  // namespace

namespace qmv::test {

std::size_t blocks_alive() {
  return blocks().size();
}

void release_blocks() {
  for (const auto& [block, where] : blocks()) munmap(where.pages, where.mapped);
  blocks().clear();
}

std::size_t blocks_refused() {
  return refused;
}

}  // namespace qmv::test

extern "C" {

void __real_free(void* block);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);
void __wrap_free(void* block);

void* __wrap_malloc(std::size_t size) {
  void* const block = guarded(size);
  if (block != nullptr) std::memset(block, 'u', size);  // as malloc leaves it: not zeros
  return block;
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
  std::size_t product = 0;
  return __builtin_mul_overflow(count, size, &product) ? refuse() : guarded(product);
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
  munmap(found->second.pages, found->second.mapped);
  blocks().erase(found);
}

}  // extern "C"
