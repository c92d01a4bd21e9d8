// Every column of every table with hostile values, read by every reader of the table: the member that the column fills
// holds what fits, with zeros behind it, and all other members hold their own.
#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "hostile/hostile_test.h"

namespace qmv::test {
namespace {

// Readers with tests of their own: lists, and a text that is not copied.
constexpr const char* kReadElsewhere[] = {"get_association_data", "assoc_get_global_data", "db_get_sesstion_term_seq"};

// Readers that take their keys from the caller's record, where they are as wide as its fields at most.
constexpr const char* kAskByRecord[] = {"db_get_req_state_change", "db_get_listener_destination",
                                        "db_get_indication_filter_cimxml", "db_get_indication_subscription"};

bool is_one_of(const auto& names, const std::string& name) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

// Columns whose text runs on over the members behind its own.
bool runs_on(const std::string& table, const std::string& column) {
  return table == "sel_info" || (table == "device" && column == "IPAddress");
}

class HostileColumns : public HostileTest, public testing::WithParamInterface<Table> {
 protected:
  void SetUp() override {
    HostileTest::SetUp();
    make_tables(table.database);
    columns = values("select name from pragma_table_info('" + table.name + "');");
    types = values("select type from pragma_table_info('" + table.name + "');");
    make_lax_table(table);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const auto given = table.given.find(columns[i]);
      const auto number = static_cast<std::int32_t>(10 + i);
      if (types[i] == "TEXT") {
        usual.push_back(given != table.given.end() ? plain_text(given->second)
                                                   : plain_text("0" + std::to_string(number), number));
      } else {
        usual.push_back(plain_number(given != table.given.end() ? std::stoi(given->second) : number));
      }
    }
    for (const Reader& reader : table.readers) {
      if (!is_one_of(kReadElsewhere, reader.name)) readers.push_back(reader);
    }
  }

  Row keys_of(const std::vector<Stored>& row) const {
    Row keys;
    for (std::size_t i = 0; i < columns.size(); ++i) keys[columns[i]] = {row[i].text};
    return keys;
  }

  std::size_t index_of(const std::string& column) const {
    return static_cast<std::size_t>(std::find(columns.begin(), columns.end(), column) - columns.begin());
  }

  // By which columns a reader asks for the row.
  std::vector<bool> keys_of(const Reader& reader) {
    put_row(table.name, usual);
    std::vector<bool> is_key;
    for (const std::string& column : columns) {
      Row keys = keys_of(usual);
      keys.erase(column);
      try {
        reader.read(db, keys);
        is_key.push_back(table.given.contains(column));
      } catch (const std::out_of_range&) {
        is_key.push_back(true);
      }
    }
    return is_key;
  }

  // What to put into a column: of its type, and around the width of the member that it fills.
  std::vector<Stored> hostile_values(const Reader& reader, std::size_t column) const {
    if (types[column] != "TEXT") return hostile_numbers();
    std::size_t width = sizeof(std::int32_t);
    for (const Field& field : fields_of(reader)) {
      if (field.column == columns[column]) width = std::max(width, field.width);
    }
    return hostile_texts(width);
  }

  // What fills which members, in the order of the columns.
  std::vector<Field> fields_of(const Reader& reader) const {
    std::vector<Field> fields = reader.fields.empty() ? table.fields : reader.fields;
    std::stable_sort(fields.begin(), fields.end(),
                     [this](const Field& a, const Field& b) { return index_of(a.column) < index_of(b.column); });
    return fields;
  }

  // The record of a row, byte by byte.
  Bytes record_of(const std::vector<Field>& fields, const std::vector<Stored>& row, std::size_t size) const {
    Bytes record(size);
    for (const Field& field : fields) {
      const Stored& value = row[index_of(field.column)];
      char* const member = record.data() + field.offset;
      if (field.is_text) {
        const std::size_t room = runs_on(table.name, field.column) ? size - field.offset : field.width;
        std::memcpy(member, value.text.data(), std::min(value.text.size(), room));
      } else {
        std::memcpy(member, &value.number, sizeof(value.number));
      }
    }
    return record;
  }

  static std::string member(const Bytes& record, const Field& field) {
    return {record.data() + field.offset, field.width};
  }

  // Reads a row and compares every member, zeros included.
  void expect_read(const Reader& reader, const std::vector<Stored>& row) {
    put_row(table.name, row);
    const Bytes record = reader.read(db, keys_of(row));
    const std::vector<Field> fields = fields_of(reader);
    const Bytes expected = record_of(fields, row, record.size());
    for (const Field& field : fields)
      EXPECT_TRUE(member(expected, field) == member(record, field)) << "the member of " << field.column;
  }

  const Table& table = GetParam();
  std::vector<std::string> columns;
  std::vector<std::string> types;
  std::vector<Stored> usual;  // a row
  std::vector<Reader> readers;
};

TEST_P(HostileColumns, FillTheirMembersAndNoOthers) {
  for (const Reader& reader : readers) {
    const std::vector<bool> is_key = keys_of(reader);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (is_key[i] && table.given.contains(columns[i])) continue;
      for (const Stored& value : hostile_values(reader, i)) {
        if (is_key[i] && (!value.is_key || (is_one_of(kAskByRecord, reader.name) && value.text.size() > 256))) continue;
        SCOPED_TRACE(reader.name + ", " + columns[i] + ": " + value.name);
        std::vector<Stored> row = usual;
        row[i] = value;
        expect_read(reader, row);
      }
    }
  }
}

// All columns at once that are no keys, each with the same kind of value.
TEST_P(HostileColumns, FillTheirMembersTogether) {
  for (const Reader& reader : readers) {
    const std::vector<bool> is_key = keys_of(reader);
    const std::size_t kinds = std::max(hostile_texts(4).size(), hostile_numbers().size());
    for (std::size_t kind = 0; kind < kinds; ++kind) {
      SCOPED_TRACE(reader.name + ", kind " + std::to_string(kind));
      std::vector<Stored> row = usual;
      for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::vector<Stored> hostile = hostile_values(reader, i);
        if (!is_key[i]) row[i] = hostile[kind % hostile.size()];
      }
      expect_read(reader, row);
    }
  }
}

const auto name_of = [](const testing::TestParamInfo<Table>& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Each, HostileColumns, testing::ValuesIn(all_tables()), name_of);

const auto name_of_derived = [](const testing::TestParamInfo<Table>& info) {
  return info.param.name + "_by_" + info.param.readers.front().name;
};
INSTANTIATE_TEST_SUITE_P(Derived, HostileColumns, testing::ValuesIn(derived_tables()), name_of_derived);

}  // namespace
}  // namespace qmv::test
