// Files of others, whose tables and columns have hostile names.
#include <cstdint>
#include <string>
#include <utility>

#include "hostile/hostile_test.h"
#include "torture/guarded.h"

namespace qmv::test {
namespace {

// What stands in a schema is a name, whatever it looks like.
class HostileNames : public HostileTest, public testing::WithParamInterface<Stored> {
 protected:
  void create(const std::string& table, const std::string& column) {
    sql("create table " + quoted(table) + " (" + quoted(column) + ", \"another\");");
  }

 private:
  static std::string quoted(const std::string& name) {
    std::string doubled;
    for (const char letter : name) doubled += std::string(letter == '"' ? 2 : 1, letter);
    return '"' + doubled + '"';
  }
};

constexpr std::size_t kTableNameSize = 256;
constexpr std::size_t kColumnNameSize = 128;

std::string name_of(const testing::TestParamInfo<Stored>& info) {
  return std::to_string(info.index);
}
INSTANTIATE_TEST_SUITE_P(OfTables, HostileNames, testing::ValuesIn(hostile_texts(kTableNameSize)), name_of);
INSTANTIATE_TEST_SUITE_P(OfColumns, HostileNames, testing::ValuesIn(hostile_texts(kColumnNameSize)), name_of);
INSTANTIATE_TEST_SUITE_P(OfSigns, HostileNames,
                         testing::Values(plain_text("a\"b"), plain_text("a'b"), plain_text("[a]"), plain_text("%s%n%d"),
                                         plain_text("a\nb"), plain_text("; drop table any; --"), plain_text("select")),
                         name_of);

TEST_P(HostileNames, AreFoundInAFileAsFarAsThereIsRoom) {
  create(GetParam().text, "one");
  const Guarded table(kTableNameSize, '?');
  std::int32_t rows = -1;
  ASSERT_EQ(0, get_static_instances("any", &rows, table.bytes()));
  EXPECT_EQ(GetParam().text.substr(0, kTableNameSize - 1), table.bytes());
  EXPECT_EQ(0, rows);
}

// A name as wide as its field has no zero behind it.
TEST_P(HostileNames, AreListedAsFarAsThereIsRoom) {
  create("any", GetParam().text);
  column_name_node* head = nullptr;
  ASSERT_EQ(0, GetColumnNames(&head, "any", "any"));
  ASSERT_NE(nullptr, head);
  std::string expected = GetParam().text;
  expected.resize(kColumnNameSize);
  EXPECT_TRUE(expected == std::string(head->ColumnName, kColumnNameSize));
  ASSERT_NE(nullptr, head->Next);
  EXPECT_STREQ("another", head->Next->ColumnName);
  EXPECT_EQ(nullptr, head->Next->Next);
  free_column_names(head);
}

// The rows of a table are counted by its name unquoted.
using UnquotedNames = HostileTest;

TEST_F(UnquotedNames, CountWhatTheySay) {
  const std::pair<std::string, std::int32_t> names[] = {
      {"t", 2},
      {"t t", 2},
      {"two words", 0},
      {"t, t", 4},
      {"t where two", 1},
      {"t limit 0", 0},
      {"t union all select 7", 7},
      {"t; delete from t", 2},
  };
  for (const auto& [name, rows] : names) {
    SCOPED_TRACE(name);
    sql("create table t (two); insert into t values (1), (0); create table if not exists \"" + name + "\" (one);");
    std::int32_t count = -1;
    const Guarded table(kTableNameSize, '?');
    EXPECT_EQ(0, get_static_instances("any", &count, table.bytes()));
    EXPECT_EQ(rows, count);
    EXPECT_EQ("2", values("select count(*) from t;").at(0));
    sql("drop table t; drop table if exists \"" + name + "\";");
  }
}

}  // namespace
}  // namespace qmv::test
