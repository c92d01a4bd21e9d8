// What the library imports from its host, and its sleep(), which stands before the C library's.
#ifndef QMV_TESTS_PROCESSES_HOST_H
#define QMV_TESTS_PROCESSES_HOST_H

#include <atomic>
#include <chrono>

namespace qmv::test {

// Error lines of this process so far.
int errors();

// From now on, here and in processes started later: where "Handler in busy" traces are counted, and how long one second
// of a busy wait lasts.
void count_busy_traces_in(std::atomic<int>& counter);
void let_a_second_last(std::chrono::nanoseconds time);

// Traces are not counted, and a second is a second.
void be_an_ordinary_host();

}  // namespace qmv::test

#endif
