// Sensors all of whose fields say one number, so that half of a row shows.
#ifndef QMV_TESTS_PROCESSES_SENSORS_H
#define QMV_TESTS_PROCESSES_SENSORS_H

#include <string>

#include "qmv/sdr.h"

namespace qmv::test {

// A sensor whose fields behind the key are as wide as they can be and repeat the number, which is below 456,976.
compact_sdr_rec sensor(const std::string& key, int number);

// What the fields say: a number, or -1 when they differ.
int number_in(const compact_sdr_rec& sensor);

// The same of the row with that key; -2 without a row.
int stored_number(sqlite3* db, const std::string& key);

// How many of all rows are halves.
int half_rows(sqlite3* db);

}  // namespace qmv::test

#endif
