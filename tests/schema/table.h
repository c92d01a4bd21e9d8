// A table of the schema as its accessors see it: which columns fill which members, who writes it and who reads it.
#ifndef QMV_TESTS_SCHEMA_TABLE_H
#define QMV_TESTS_SCHEMA_TABLE_H

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include "qmv.h"
#include "torture/guarded.h"

namespace qmv::test {

// A column and the member that it fills: an int32 or a text.
struct Field {
  std::string column;
  std::size_t offset;
  std::size_t width;
  bool is_text;
};

// In the scope of these, Record names the record.
#define FIELD(member) FIELD_FROM(#member, member)
#define FIELD_FROM(column, member)                                                                                  \
  ::qmv::test::Field {                                                                                              \
    column, offsetof(Record, member), sizeof(decltype(Record{}.member)), std::is_array_v<decltype(Record{}.member)> \
  }

// A value of a row, handed to an accessor as the text or the number that it asks for.
struct Value {
  std::string text;

  operator const char*() const { return text.c_str(); }
  operator std::int32_t() const { return std::stoi(text); }
};

using Row = std::map<std::string, Value>;  // by column
using Bytes = std::vector<char>;           // of a record

// Writes a record; the accessor may change it.
struct Setter {
  enum class Existing { kIsUpdated, kIsKept, kIsNeverMet };  // what becomes of a row with the record's key

  std::string name;
  std::function<void(sqlite3*, Bytes& record)> set;
  Existing existing = Existing::kIsUpdated;
};

// Reads the record of a row.
struct Reader {
  std::string name;
  std::function<Bytes(sqlite3*, const Row&)> read;
  std::vector<Field> fields = {};  // that it fills, where they are not the table's

  Reader filling(const std::vector<Field>& own) const { return {name, read, own}; }
};

struct Table {
  std::string database;  // the file's name without ".db"
  std::string name;
  std::vector<std::string> key;
  std::vector<Field> fields;
  std::vector<Setter> setters;
  std::vector<Reader> readers;
  std::map<std::string, std::string> given = {};  // values that a row must have to be found
};

inline void PrintTo(const Table& table, std::ostream* out) {
  *out << table.name;
}

std::vector<Table> sensor_tables();
std::vector<Table> profile_tables();
std::vector<Table> service_tables();
std::vector<Table> job_tables();
std::vector<Table> association_tables();

// Fills a text of a caller's record, zeros behind it.
template <std::size_t Width>
void put_text(char (&field)[Width], const std::string& text) {
  std::memset(field, 0, Width);
  std::memcpy(field, text.data(), std::min(text.size(), Width));
}

template <class Record>
Bytes bytes_of(const Record& record) {
  Bytes bytes(sizeof(Record));
  std::memcpy(bytes.data(), &record, sizeof(Record));
  return bytes;
}

// A setter: call(db, &record). The record ends at the end of a page, as those below do.
template <class Record>
Setter setter(const std::string& name, auto call) {
  return {name, [call, name](sqlite3* db, Bytes& bytes) {
            const Guarded memory(sizeof(Record), 0);
            auto* const record = reinterpret_cast<Record*>(memory.bytes());
            std::memcpy(record, bytes.data(), std::min(bytes.size(), sizeof(Record)));
            EXPECT_EQ(0, call(db, record)) << name;
            bytes = bytes_of(*record);
          }};
}

// Setters that leave an existing row as it is, and those that never meet one.
inline Setter keeping(Setter setter) {
  setter.existing = Setter::Existing::kIsKept;
  return setter;
}
inline Setter always_new(Setter setter) {
  setter.existing = Setter::Existing::kIsNeverMet;
  return setter;
}

// A reader of the record that a new one points to: call(db, row, &pointer).
template <class Record>
Reader reader_of_new(const std::string& name, auto call) {
  return {name, [call, name](sqlite3* db, const Row& row) {
            Record* record = nullptr;
            EXPECT_EQ(0, call(db, row, &record)) << name;
            const Bytes bytes = record == nullptr ? Bytes(sizeof(Record)) : bytes_of(*record);
            db_freemem(record);
            return bytes;
          }};
}

// A reader into the caller's record, which was used before: call(db, row, &record).
template <class Record>
Reader reader_into(const std::string& name, auto call) {
  return {name, [call, name](sqlite3* db, const Row& row) {
            const Guarded memory(sizeof(Record), '?');
            auto* const record = reinterpret_cast<Record*>(memory.bytes());
            EXPECT_EQ(0, call(db, row, record)) << name;
            return bytes_of(*record);
          }};
}

// Sets that answer 0, get-alls of the one row, and get-ones by the columns of a key.
#define SET(function) ::qmv::test::setter<Record>(#function, function)
#define ALL(function)                                                                                   \
  ::qmv::test::reader_of_new<Record>(#function, [](sqlite3* db, const ::qmv::test::Row&, Record** to) { \
    std::int32_t count = 0;                                                                             \
    const std::int32_t status = function(db, &count, to);                                               \
    EXPECT_EQ(1, count);                                                                                \
    return status;                                                                                      \
  })
#define ALL_ARRAY_FIRST(function)                                                                       \
  ::qmv::test::reader_of_new<Record>(#function, [](sqlite3* db, const ::qmv::test::Row&, Record** to) { \
    std::int32_t count = 0;                                                                             \
    const std::int32_t status = function(db, to, &count);                                               \
    EXPECT_EQ(1, count);                                                                                \
    return status;                                                                                      \
  })
#define ONE(function, ...) \
  ::qmv::test::reader_of_new<Record>(#function, ::qmv::test::by_key(function __VA_OPT__(, ) __VA_ARGS__))
#define FILL(function, ...) \
  ::qmv::test::reader_into<Record>(#function, ::qmv::test::by_key(function __VA_OPT__(, ) __VA_ARGS__))

auto by_key(auto function, auto... columns) {
  return [=](sqlite3* db, const Row& row, auto* to) { return function(db, row.at(columns)..., to); };
}

}  // namespace qmv::test

#endif
