#include "host.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <string_view>
#include <thread>

#include "qmv/core.h"

namespace qmv::test {

namespace {

std::atomic<int> error_lines = 0;
std::atomic<int> not_asked_for = 0;
std::atomic<int>* busy_traces = &not_asked_for;
std::chrono::nanoseconds second = std::chrono::seconds(1);

// Relaxed, or the lines would put threads in an order that the library does not give them.
void count(std::atomic<int>& lines) {
  lines.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace

int errors() {
  return error_lines;
}

void count_busy_traces_in(std::atomic<int>& counter) {
  busy_traces = &counter;
}

void let_a_second_last(std::chrono::nanoseconds time) {
  second = time;
}

void be_an_ordinary_host() {
  count_busy_traces_in(not_asked_for);
  let_a_second_last(std::chrono::seconds(1));
}

}  // namespace qmv::test

extern "C" {

void HTRC_LINUXAPP_DbgOut(int, const char*, ...) {
  qmv::test::count(qmv::test::error_lines);
}

void HTRC_LINUXAPP_Runtime_DbgOut(int, const char* format, ...) {
  char line[512];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(line, sizeof(line), format, arguments);
  va_end(arguments);
  if (std::string_view(line).ends_with("]Handler in busy")) qmv::test::count(*qmv::test::busy_traces);
}

unsigned sleep(unsigned seconds) {
  std::this_thread::sleep_for(seconds * qmv::test::second);
  return 0;
}

}  // extern "C"
