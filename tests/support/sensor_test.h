// The fixture of tests on a sensor table, which each test file describes: columns, accessors and texts.
#ifndef QMV_TESTS_SUPPORT_SENSOR_TEST_H
#define QMV_TESTS_SUPPORT_SENSOR_TEST_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "qmv/sdr.h"
#include "support/table_test.h"

namespace qmv::test {

// In the scope of this, Record names the record. The FRU record's columns end both tables.
#define FRU_FIELD(member) FIELD_OF_COLUMN(#member, FruRecord.member)
#define FRU_FIELDS                                                                                                     \
  FRU_FIELD(FruIDSlaveAddr), FRU_FIELD(DeviceAccessAddr), FRU_FIELD(LUNBusID), FRU_FIELD(ChannelNumber),               \
      FIELD_OF_COLUMN("FRUIDStrLen", FruRecord.IDStrLen), FRU_FIELD(DevIdStr), FRU_FIELD(ChassisSerNumber),            \
      FRU_FIELD(ChassisPartNumber), FRU_FIELD(ChassisCustFields), FRU_FIELD(ProdSerNumber), FRU_FIELD(ProdPartNumber), \
      FRU_FIELD(ProdMfrName), FRU_FIELD(BrdSerNumber), FRU_FIELD(BrdPartNumber), FRU_FIELD(BrdMfrName)

struct SensorTable {
  std::string name;
  std::size_t record_size;
  std::size_t fru_record;     // offset
  std::vector<Field> fields;  // in the order of the columns

  std::function<std::int32_t(void* record, sqlite3_stmt* row)> fill;
  std::function<std::int32_t(sqlite3* db, const void* record)> set;
  std::int32_t (*count)(sqlite3* db, std::int32_t* count, std::int32_t mask);
  Get<std::int32_t, std::int32_t*> get_all_by_mask;
  Get<const char*> get_by_key;

  std::string insert;  // of the record 100
  std::string update;
  std::string counted;
  std::string count_without_table_print;  // on standard error
  std::string already_present;
  std::string was_set;
  std::string getting_all;
  std::string got_row;
  std::string got_all;
  std::string count_failed;
};

inline void PrintTo(const SensorTable& table, std::ostream* out) {
  *out << table.name;
}

// A test on one of these tables; what it writes to standard error has to be asked for.
class SensorTest : public TableTest {
 protected:
  explicit SensorTest(const SensorTable& table)
      : TableTest("db_sdrd.c", {table.name, table.record_size, table.fields, "DeviceID"}), table_(table) {}

  void SetUp() override;
  void TearDown() override;

  // A row as TableTest makes it; then what is to be different.
  void insert(int first, const std::string& changes = "");

  // A record as TableTest makes it, whose FRU record has another entity.
  Bytes sample(int first) const;
  std::int32_t set(const Bytes& record) { return table_.set(db, record.data()); }

  // Whether a record, or the row with that key, is the one of `first`.
  void expect_record(int first, const void* record) const;
  void expect_row(int first, const std::string& key);

  // What was written to standard error since this was last asked for.
  static std::string printed();

  const Field& device_id() const { return table_.fields[0]; }

  const SensorTable& table_;
};

}  // namespace qmv::test

#endif
