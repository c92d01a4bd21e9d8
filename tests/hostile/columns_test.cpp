// Every column of every table with hostile values, read by every reader of the table: the member that the column fills
// holds what fits, with zeros behind it, and all other bytes of the record are as they are with any row.
#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "hostile/hostile_test.h"

namespace qmv::test {
namespace {

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

// The members of sensors that their FRU holds once more.
template <class Record>
std::vector<Field> fru_entity() {
  return {FIELD_FROM("EntityID", FruRecord.EntityID), FIELD_FROM("EntityInstance", FruRecord.EntityInst)};
}

std::vector<Field> copies_in(const std::string& table) {
  if (table == "compact_sdr") return fru_entity<compact_sdr_rec>();
  if (table == "full_sdr") return fru_entity<full_sdr_rec>();
  return {};
}

class HostileColumns : public HostileTest, public testing::WithParamInterface<Table> {
 protected:
  void SetUp() override {
    HostileTest::SetUp();
    ASSERT_FALSE(table.readers.empty());
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
    std::vector<Field> fields = reader.fields;
    if (fields.empty()) {
      fields = table.fields;
      for (const Field& copy : copies_in(table.name)) fields.push_back(copy);
    }
    std::stable_sort(fields.begin(), fields.end(),
                     [this](const Field& a, const Field& b) { return index_of(a.column) < index_of(b.column); });
    return fields;
  }

  // What a reader makes of the usual row, without the members that columns fill.
  Bytes bytes_between_members(const Reader& reader) {
    put_row(table.name, usual);
    Bytes record = reader.read(db, keys_of(usual));
    for (const Field& field : fields_of(reader)) std::memset(record.data() + field.offset, 0, field.width);
    return record;
  }

  // The record of a row, byte by byte: its members, between the other bytes.
  Bytes record_of(const std::vector<Field>& fields, const std::vector<Stored>& row, Bytes record) const {
    for (const Field& field : fields) {
      const Stored& value = row[index_of(field.column)];
      char* const member = record.data() + field.offset;
      if (field.is_text) {
        const std::size_t room = runs_on(table.name, field.column) ? record.size() - field.offset : field.width;
        std::memcpy(member, value.text.data(), std::min(value.text.size(), room));
      } else {
        std::memcpy(member, &value.number, sizeof(value.number));
      }
    }
    if (table.name == "jobs") put_source(row, record);
    return record;
  }

  // The error of a job has the source by which it was asked for, which is no column.
  void put_source(const std::vector<Stored>& row, Bytes& record) const {
    const std::string source = "JobPath:" + row[index_of("jobid")].text;
    error_info_rec error;
    std::memcpy(&error, record.data(), sizeof(error));
    std::strncpy(error.ErrorSource, source.c_str(), sizeof(error.ErrorSource));
    std::memcpy(record.data(), &error, sizeof(error));
  }

  static std::string member(const Bytes& record, const Field& field) {
    return {record.data() + field.offset, field.width};
  }

  // Reads a row and compares the whole record, zeros included.
  void expect_read(const Reader& reader, const std::vector<Stored>& row, const Bytes& between_members) {
    put_row(table.name, row);
    const Bytes record = reader.read(db, keys_of(row));
    const std::vector<Field> fields = fields_of(reader);
    const Bytes expected = record_of(fields, row, between_members);
    for (const Field& field : fields)
      EXPECT_TRUE(member(expected, field) == member(record, field)) << "the member of " << field.column;
    EXPECT_TRUE(expected == record);
  }

  const Table& table = GetParam();
  std::vector<std::string> columns;
  std::vector<std::string> types;
  std::vector<Stored> usual;  // a row
};

TEST_P(HostileColumns, FillTheirMembersAndNoOthers) {
  for (const Reader& reader : table.readers) {
    const std::vector<bool> is_key = keys_of(reader);
    const Bytes between_members = bytes_between_members(reader);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (is_key[i] && table.given.contains(columns[i])) continue;
      for (const Stored& value : hostile_values(reader, i)) {
        if (is_key[i] && (!value.is_key || (is_one_of(kAskByRecord, reader.name) && value.text.size() > 256))) continue;
        SCOPED_TRACE(reader.name + ", " + columns[i] + ": " + value.name);
        std::vector<Stored> row = usual;
        row[i] = value;
        expect_read(reader, row, between_members);
      }
    }
  }
}

// All columns at once that are no keys, each with the same kind of value.
TEST_P(HostileColumns, FillTheirMembersTogether) {
  for (const Reader& reader : table.readers) {
    const std::vector<bool> is_key = keys_of(reader);
    const Bytes between_members = bytes_between_members(reader);
    const std::size_t kinds = std::max(hostile_texts(4).size(), hostile_numbers().size());
    for (std::size_t kind = 0; kind < kinds; ++kind) {
      SCOPED_TRACE(reader.name + ", kind " + std::to_string(kind));
      std::vector<Stored> row = usual;
      for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::vector<Stored> hostile = hostile_values(reader, i);
        if (!is_key[i]) row[i] = hostile[kind % hostile.size()];
      }
      expect_read(reader, row, between_members);
    }
  }
}

// Lists and a text that is not copied have tests of their own.
std::vector<Table> tables_of_members() {
  std::vector<Table> tables = all_tables();
  std::erase_if(tables, [](const Table& table) { return table.name == "association"; });
  for (Table& table : tables)
    std::erase_if(table.readers, [](const Reader& reader) { return reader.name == "db_get_sesstion_term_seq"; });
  return tables;
}

const auto name_of = [](const testing::TestParamInfo<Table>& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Each, HostileColumns, testing::ValuesIn(tables_of_members()), name_of);

const auto name_of_derived = [](const testing::TestParamInfo<Table>& info) {
  return info.param.name + "_by_" + info.param.readers.front().name;
};
INSTANTIATE_TEST_SUITE_P(Derived, HostileColumns, testing::ValuesIn(derived_tables()), name_of_derived);

}  // namespace
}  // namespace qmv::test
