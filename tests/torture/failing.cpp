#include "torture/failing.h"

#include <sqlite3.h>

#include <numeric>
#include <stdexcept>
#include <utility>

namespace qmv::test {

namespace {

std::array<Failing, kUses> uses;

// The real ones.
sqlite3_mem_methods allocator;
sqlite3_vfs* files;

void* allocate(int size) {
  return failing(Use::kAllocation).now() ? nullptr : allocator.xMalloc(size);
}

void* reallocate(void* block, int size) {
  return failing(Use::kAllocation).now() ? nullptr : allocator.xRealloc(block, size);
}

using Io = sqlite3_io_methods;

// An open file; the real one lies behind it.
struct File {
  sqlite3_file base;

  sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* real(sqlite3_file* file) {
  return reinterpret_cast<File*>(file)->real();
}

// A method of the real file, unless it fails.
template <auto Method, Use kUse, int kCode, class... Arguments>
int unless_failing(sqlite3_file* file, Arguments... arguments) {
  if (failing(kUse).now()) return kCode;
  return (real(file)->pMethods->*Method)(real(file), arguments...);
}

template <auto Method, class... Arguments>
int forwarded(sqlite3_file* file, Arguments... arguments) {
  return (real(file)->pMethods->*Method)(real(file), arguments...);
}

int write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
  if (failing(Use::kFull).now()) return SQLITE_FULL;
  return unless_failing<&Io::xWrite, Use::kWrite, SQLITE_IOERR_WRITE>(file, bytes, size, offset);
}

// What was written need not survive a power cut, so nobody waits for it.
int sync(sqlite3_file*, int) {
  return failing(Use::kSync).now() ? SQLITE_IOERR_FSYNC : SQLITE_OK;
}

constexpr Io kMethods = {
    .iVersion = 1,
    .xClose = forwarded<&Io::xClose>,
    .xRead = unless_failing<&Io::xRead, Use::kRead, SQLITE_IOERR_READ>,
    .xWrite = write,
    .xTruncate = forwarded<&Io::xTruncate>,
    .xSync = sync,
    .xFileSize = forwarded<&Io::xFileSize>,
    .xLock = unless_failing<&Io::xLock, Use::kLock, SQLITE_IOERR_LOCK>,
    .xUnlock = forwarded<&Io::xUnlock>,
    .xCheckReservedLock = forwarded<&Io::xCheckReservedLock>,
    .xFileControl = forwarded<&Io::xFileControl>,
    .xSectorSize = forwarded<&Io::xSectorSize>,
    .xDeviceCharacteristics = forwarded<&Io::xDeviceCharacteristics>,
    .xShmMap = nullptr,
    .xShmLock = nullptr,
    .xShmBarrier = nullptr,
    .xShmUnmap = nullptr,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

int open_file(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* given) {
  file->pMethods = nullptr;
  if (failing(Use::kOpen).now()) return SQLITE_CANTOPEN;
  const int code = files->xOpen(files, name, real(file), flags, given);
  if (real(file)->pMethods != nullptr) file->pMethods = &kMethods;
  return code;
}

int delete_file(sqlite3_vfs*, const char* name, int sync_folder) {
  static_cast<void>(sync_folder);
  return failing(Use::kDelete).now() ? SQLITE_IOERR_DELETE : files->xDelete(files, name, 0);
}

void expect(int code) {
  if (code != SQLITE_OK) throw std::runtime_error("SQLite is in use already");
}

void take_over_allocator() {
  expect(sqlite3_config(SQLITE_CONFIG_GETMALLOC, &allocator));
  static sqlite3_mem_methods methods = allocator;
  methods.xMalloc = allocate;
  methods.xRealloc = reallocate;
  expect(sqlite3_config(SQLITE_CONFIG_MALLOC, &methods));
  expect(sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0));
}

void take_over_files() {
  files = sqlite3_vfs_find(nullptr);
  static sqlite3_vfs ours = *files;
  ours.szOsFile += static_cast<int>(sizeof(File));
  ours.zName = "failing";
  ours.pNext = nullptr;
  ours.xOpen = open_file;
  ours.xDelete = delete_file;
  expect(sqlite3_vfs_register(&ours, 1));
}

}  // namespace

Failing& failing(Use use) {
  return uses.at(static_cast<std::size_t>(use));
}

int failed_uses() {
  return std::accumulate(uses.begin(), uses.end(), 0, [](int sum, const Failing& use) { return sum + use.failed; });
}

void make_all_well() {
  uses = {};
}

Healthy::Healthy() : kept_(std::exchange(uses, {})) {}

Healthy::~Healthy() {
  uses = kept_;
}

void take_over_sqlite() {
  take_over_allocator();
  take_over_files();
}

}  // namespace qmv::test
