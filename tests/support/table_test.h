// The fixture of tests on one table and the record of its rows, which each test file describes.
#ifndef QMV_TESTS_SUPPORT_TABLE_TEST_H
#define QMV_TESTS_SUPPORT_TABLE_TEST_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/database_test.h"

namespace qmv::test {

// A column and the member that it fills: an int32, or a text of any other width.
struct Field {
  const char* column;
  std::size_t offset;
  std::size_t width;

  bool is_text() const { return width != sizeof(std::int32_t); }
};

// In the scope of these, Record names the record.
#define FIELD(member) FIELD_OF_COLUMN(#member, member)
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

struct RecordTable {
  std::string name;
  std::size_t record_size;
  std::vector<Field> fields;  // in the order of the columns
  std::string key;            // the columns that no two rows share, separated by commas
  std::string only_row = {};  // what the first column holds in row 100, where accessors ask for one row by its name
};

inline RecordTable with_only_row(RecordTable table, const std::string& name) {
  table.only_row = name;
  return table;
}

class TableTest : public DatabaseTest {
 protected:
  using Bytes = std::vector<char>;  // of a record

  TableTest(const std::string& module, RecordTable table) : DatabaseTest(module), record_table_(std::move(table)) {}

  void SetUp() override;

  // A row in which column n holds first + n, texts with a t in front.
  void insert(int first) { sql("insert into " + record_table_.name + " values (" + joined(literals(first)) + ");"); }

  // A record that such a row makes.
  Bytes sample(int first) const;

  // The same with a quote behind the t of each text, and the statement that is given for it, made of the sample's.
  Bytes sample_with_quotes(int first) const;
  static std::string with_quotes(const std::string& statement);

  // A select of all columns, standing on its first row.
  using Row = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;
  Row first_row();

  // Makes every count less than nothing.
  void make_counts_negative();

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

  static std::string joined(const Texts& texts, const std::string& separator = ",");

 private:
  const RecordTable record_table_;
};

// A record or an array of them of any type, released at the end of the test.
class OwnedRecords {
 public:
  explicit OwnedRecords(const auto& table) : size_(table.record_size) {}
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
