// The fixture of tests on a sensor table, which each test file describes: columns, accessors and texts.
#ifndef QMV_TESTS_SUPPORT_SENSOR_TEST_H
#define QMV_TESTS_SUPPORT_SENSOR_TEST_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "qmv/sdr.h"
#include "support/database_test.h"

namespace qmv::test {

// A column and the member that it fills: an int32, or a text of 256 bytes.
struct Field {
  const char* column;
  std::size_t offset;
  std::size_t width;

  bool is_text() const { return width == 256; }
};

// In the scope of these, Record names the record. The FRU record's columns end both tables.
#define FIELD(member) FIELD_OF_COLUMN(#member, member)
#define FRU_FIELD(member) FIELD_OF_COLUMN(#member, FruRecord.member)
#define FRU_FIELDS                                                                                                     \
  FRU_FIELD(FruIDSlaveAddr), FRU_FIELD(DeviceAccessAddr), FRU_FIELD(LUNBusID), FRU_FIELD(ChannelNumber),               \
      FIELD_OF_COLUMN("FRUIDStrLen", FruRecord.IDStrLen), FRU_FIELD(DevIdStr), FRU_FIELD(ChassisSerNumber),            \
      FRU_FIELD(ChassisPartNumber), FRU_FIELD(ChassisCustFields), FRU_FIELD(ProdSerNumber), FRU_FIELD(ProdPartNumber), \
      FRU_FIELD(ProdMfrName), FRU_FIELD(BrdSerNumber), FRU_FIELD(BrdPartNumber), FRU_FIELD(BrdMfrName)
#define FIELD_OF_COLUMN(column, member)                                 \
  ::qmv::test::Field {                                                  \
    column, offsetof(Record, member), sizeof(decltype(Record{}.member)) \
  }

// A call of an accessor without its record's type: where to store the new record comes first.
template <class... Arguments>
using Get = std::function<std::int32_t(void** place, sqlite3* db, Arguments...)>;

template <class Record, class Call>
auto erased(Call call) {
  return [call](void** place, auto... arguments) {
    auto* record = static_cast<Record*>(*place);
    const std::int32_t status = call(arguments..., &record);
    *place = record;
    return status;
  };
}

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
class SensorTest : public DatabaseTest {
 protected:
  using Bytes = std::vector<char>;  // of a record

  explicit SensorTest(const SensorTable& table) : DatabaseTest("db_sdrd.c"), table_(table) {}

  void SetUp() override;
  void TearDown() override;

  // A row in which column n holds first + n, texts with a t in front; then what is to be different.
  void insert(int first, const std::string& changes = "");

  // A record that such a row makes, whose FRU record has another entity.
  Bytes sample(int first) const;
  std::int32_t set(const Bytes& record) { return table_.set(db, record.data()); }

  // A select of all columns, standing on its first row.
  using Row = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;
  Row first_row();

  // Whether a record, or the row with that key, is the one of `first`.
  void expect_record(int first, const void* record) const;
  void expect_row(int first, const std::string& key);

  // What was written to standard error since this was last asked for.
  static std::string printed();

  const Field& device_id() const { return table_.fields[0]; }
  std::vector<Field> texts() const;
  std::vector<Field> numbers() const;

  // What a member holds, a text without its zeros; what a member is to hold; what the row holds there.
  static std::string member(const void* record, const Field& field);
  static std::string member(const Bytes& record, const Field& field) { return member(record.data(), field); }
  static void put(Bytes& record, const Field& field, const std::string& value);
  std::string stored(const Field& field, const std::string& condition = "");

  // The values of a row's columns, as they are and as they stand in a statement, and the columns' names.
  Texts values(int first) const;
  Texts literals(int first) const;
  Texts names() const;

  static void expect_begins(const std::string& begin, const std::string& text);
  static void expect_ends(const std::string& end, const std::string& text);
  static std::string joined(const Texts& texts, const std::string& separator = ",");
  static std::string without_blanks(std::string text);

  const SensorTable& table_;
};

// A record or an array of them of any type, released at the end of the test.
class OwnedRecords {
 public:
  explicit OwnedRecords(const SensorTable& table) : size_(table.record_size) {}
  OwnedRecords(const OwnedRecords&) = delete;
  OwnedRecords& operator=(const OwnedRecords&) = delete;
  ~OwnedRecords() { std::free(records_); }
  void** out() { return &records_; }
  const char* operator[](std::size_t i) const { return static_cast<const char*>(records_) + i * size_; }
  bool empty() const { return records_ == nullptr; }

 private:
  std::size_t size_;
  void* records_ = nullptr;
};

}  // namespace qmv::test

#endif
