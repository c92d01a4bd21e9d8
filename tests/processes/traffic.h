// Reads and writes of every family that leave nothing behind, for tests that keep the library busy.
#ifndef QMV_TESTS_PROCESSES_TRAFFIC_H
#define QMV_TESTS_PROCESSES_TRAFFIC_H

#include <sqlite3.h>

#include <span>

namespace qmv::test::traffic {

// Calls one function, with records, texts and numbers that all consist of a digit, and checks that nothing made of another
// digit comes back.
using Call = void (*)(sqlite3* db, char digit);

// Writes insert and update; reads want each write to have been called.
std::span<const Call> writes();
std::span<const Call> reads();

// Puts the rows that reads need and no write makes into the fixed files.
void make_rows();

}  // namespace qmv::test::traffic

#endif
