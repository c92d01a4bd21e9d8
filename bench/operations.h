// What is measured: each operation by each contender that offers it, on one database file.
#ifndef QMV_BENCH_OPERATIONS_H
#define QMV_BENCH_OPERATIONS_H

#include <string>
#include <vector>

#include "operation.h"

struct sqlite3;

namespace qmv::bench {

// Opens the file for all contenders. Throws when two contenders bring something different for one operation.
std::vector<Operation> operations(const std::string& path);

// The two kinds of tables; db is the open file.
void add_sensor_operations(std::vector<Operation>& list, sqlite3* db, const std::string& path);
void add_profile_operations(std::vector<Operation>& list, sqlite3* db);

}  // namespace qmv::bench

#endif
