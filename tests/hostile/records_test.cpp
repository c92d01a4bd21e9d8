// Records of callers whose texts are all full, so that none ends with a zero, and that end at the end of a page.
#include <algorithm>
#include <cstring>

#include "hostile/hostile_test.h"

namespace qmv::test {
namespace {

class FullRecords : public HostileTest, public testing::WithParamInterface<Table> {
 protected:
  const Table& table = GetParam();

  bool is_key(const Field& field) const {
    return std::find(table.key.begin(), table.key.end(), field.column) != table.key.end();
  }

  // A record all whose bytes are one letter, but for its key: that is all x, or what accessors ask for.
  Bytes full_of(char letter) const {
    std::size_t size = 0;
    for (const Field& field : table.fields) size = std::max(size, field.offset + field.width);
    Bytes record(size, letter);
    for (const Field& field : table.fields) {
      char* const member = record.data() + field.offset;
      if (is_key(field)) std::memset(member, 'x', field.width);
      if (const auto given = table.given.find(field.column); given != table.given.end()) {
        std::memset(member, 0, field.width);
        std::memcpy(member, given->second.data(), given->second.size());
      }
    }
    return record;
  }

  // The row has what a record holds, texts as wide as their fields.
  void expect_row(const Setter& setter, const Bytes& record) {
    for (const Field& field : table.fields) {
      // What is made when the record is stored has its own tests.
      if (setter.name == "db_set_concretejob" && (field.column == "InstanceID" || field.column == "RemovalTime"))
        continue;
      const char* const member = record.data() + field.offset;
      std::int32_t number;
      std::memcpy(&number, member, sizeof(number));
      const auto expected = field.is_text ? std::string(member, strnlen(member, field.width)) : std::to_string(number);
      const auto found = values("select " + field.column + " from " + table.name + ";");
      ASSERT_EQ(1u, found.size());
      EXPECT_TRUE(expected == found[0]) << field.column << ": " << found[0];
    }
  }
};

TEST_P(FullRecords, AreStoredAsWideAsTheirFields) {
  make_tables(table.database);
  for (const Setter& setter : table.setters) {
    SCOPED_TRACE(setter.name);
    sql("delete from " + table.name + ";");
    const Bytes inserted = full_of('x');
    Bytes record = inserted;
    setter.set(db, record);
    expect_row(setter, inserted);
    if (setter.existing == Setter::Existing::kIsNeverMet) continue;
    const Bytes updated = full_of('y');
    record = updated;
    setter.set(db, record);
    expect_row(setter, setter.existing == Setter::Existing::kIsKept ? inserted : updated);
  }
}

std::vector<Table> written_tables() {
  std::vector<Table> tables = all_tables();
  std::erase_if(tables, [](const Table& table) { return table.setters.empty(); });
  return tables;
}

const auto name_of = [](const testing::TestParamInfo<Table>& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Each, FullRecords, testing::ValuesIn(written_tables()), name_of);

}  // namespace
}  // namespace qmv::test
