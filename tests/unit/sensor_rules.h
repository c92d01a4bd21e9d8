// Compact and full sensors keep the same rules on different tables. The rules stand in sensor_rules_test.cpp; the test
// of each table instantiates them with its table and accessors, and proves on its own where it departs.
#ifndef QMV_TESTS_UNIT_SENSOR_RULES_H
#define QMV_TESTS_UNIT_SENSOR_RULES_H

#include <cstdint>
#include <ostream>
#include <string>

#include "support/sensor_test.h"

namespace qmv::test {

// A get-all that reads the rows 100 and 200.
struct GetAllCase {
  std::string name;
  const SensorTable& table;
  Get<std::int32_t*> call;
  std::string count_statement;
  std::string statement;
  std::string count_failed_print;   // on standard error
  std::string without_table_print;  // on standard error, when only the count found the table
};

// A get-one with the keys of row 100.
struct GetOneCase {
  std::string name;
  const SensorTable& table;
  Get<> call;
  std::string statement;
  std::string got_row;
  std::string no_row;
  std::string no_statement;
  bool passes_codes_on;  // answers SQLite's code of compiling, and 7 when memory is short; else 1
};

inline void PrintTo(const GetAllCase& one, std::ostream* out) {
  *out << one.name;
}
inline void PrintTo(const GetOneCase& one, std::ostream* out) {
  *out << one.name;
}

class Sensors : public SensorTest, public testing::WithParamInterface<SensorTable> {
 protected:
  Sensors() : SensorTest(GetParam()) {}
};

class SensorGetAll : public SensorTest, public testing::WithParamInterface<GetAllCase> {
 protected:
  SensorGetAll() : SensorTest(GetParam().table) {}
};

class SensorGetOne : public SensorTest, public testing::WithParamInterface<GetOneCase> {
 protected:
  SensorGetOne() : SensorTest(GetParam().table) {}
};

}  // namespace qmv::test

#endif
