#include "redirect.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

std::string redirected_directory;

std::string redirected(const char* path) {
  constexpr std::string_view kFixed[] = {"/tmp/cim.db", "/tmp/tmp_cim.db", "/tmp/smashclp.db", "/etc/Association.db"};
  for (const std::string_view fixed : kFixed) {
    if (path != fixed) continue;
    if (redirected_directory.empty()) std::abort();  // never the machine's own file
    return redirected_directory + "/" + std::string(fixed.substr(fixed.rfind('/') + 1));
  }
  return path;
}

// There is one for new files only.
mode_t mode_behind(int flags, va_list rest) {
  const bool makes_a_file = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
  return makes_a_file ? va_arg(rest, mode_t) : 0;
}

template <class Function>
Function next(Function, const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

namespace qmvctl::test {

void redirect_fixed_paths(const std::string& directory) {
  redirected_directory = directory;
}

}  // namespace qmvctl::test

extern "C" {

int sqlite3_open(const char* file, sqlite3** database) {
  return next(&sqlite3_open, "sqlite3_open")(redirected(file).c_str(), database);
}

int open_descriptor(const char* file, int flags, ...) __asm__("open");
int open_large_descriptor(const char* file, int flags, ...) __asm__("open64");

FILE* open_stream(const char* file, const char* mode) __asm__("fopen");
FILE* open_large_stream(const char* file, const char* mode) __asm__("fopen64");

int file_status(const char* file, struct stat* status) __asm__("stat");
int large_file_status(const char* file, struct stat* status) __asm__("stat64");
int link_status(const char* file, struct stat* status) __asm__("lstat");
int large_link_status(const char* file, struct stat* status) __asm__("lstat64");

int open_descriptor(const char* file, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = mode_behind(flags, rest);
  va_end(rest);
  return next(&open_descriptor, "open")(redirected(file).c_str(), flags, mode);
}

int open_large_descriptor(const char* file, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = mode_behind(flags, rest);
  va_end(rest);
  return next(&open_large_descriptor, "open64")(redirected(file).c_str(), flags, mode);
}

FILE* open_stream(const char* file, const char* mode) {
  return next(&open_stream, "fopen")(redirected(file).c_str(), mode);
}

FILE* open_large_stream(const char* file, const char* mode) {
  return next(&open_large_stream, "fopen64")(redirected(file).c_str(), mode);
}

int file_status(const char* file, struct stat* status) {
  return next(&file_status, "stat")(redirected(file).c_str(), status);
}

int large_file_status(const char* file, struct stat* status) {
  return next(&large_file_status, "stat64")(redirected(file).c_str(), status);
}

int link_status(const char* file, struct stat* status) {
  return next(&link_status, "lstat")(redirected(file).c_str(), status);
}

int large_link_status(const char* file, struct stat* status) {
  return next(&large_link_status, "lstat64")(redirected(file).c_str(), status);
}

}  // extern "C"
