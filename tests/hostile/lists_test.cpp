// The lists of the association registry: long ones, those that hold nothing, and pairs of different lengths.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "hostile/guarded_blocks.h"
#include "hostile/hostile_test.h"
#include "torture/guarded.h"

namespace qmv::test {
namespace {

std::string repeated(const std::string& piece, std::size_t length) {
  std::string text;
  while (text.size() < length) text += piece;
  return text.substr(0, length);
}

struct Split {
  std::string name;
  std::string text;
  std::int32_t count;     // commas of the first 1,023 characters and one more
  std::int32_t elements;  // that are not empty
  std::string last = {};
};

void PrintTo(const Split& split, std::ostream* out) {
  *out << split.name;
}

const Split kSplits[] = {
    {"Empty", "", 1, 0},
    {"OneComma", ",", 2, 0},
    {"Commas1022", repeated(",", 1022), 1023, 0},
    {"Commas1023", repeated(",", 1023), 1024, 0},
    {"Commas100000", repeated(",", 100000), 1024, 0},
    {"OpeningBraces", repeated("{", 5000), 1, 0},
    {"ClosingBraces", repeated("}", 1023), 1, 0},
    {"PairsOfBraces", repeated("{}", 100000), 1, 0},
    {"BracesAndCommas", repeated("{},", 3000), 342, 0},
    {"Blanks", repeated(" ", 100000), 1, 1, ""},
    {"OneElementOf1022", repeated("x", 1022), 1, 1, repeated("x", 1022)},
    {"OneElementOf1023", repeated("x", 1023), 1, 1, repeated("x", 1023)},
    {"OneElementOf1024", repeated("x", 1024), 1, 1, repeated("x", 1023)},
    {"OneElementOf100000", repeated("x", 100000), 1, 1, repeated("x", 1023)},
    {"ShortestElements", repeated("x,", 1023), 512, 512, "x"},
    {"ShortestElementsOfALongText", repeated("x,", 100000), 512, 512, "x"},
    {"CutWithinAnElement", repeated("x", 1020) + ",abcdef}", 2, 2, "ab"},
    {"CutBehindAComma", repeated("x", 1022) + ",abc}", 2, 1, repeated("x", 1022)},
    {"BracesBetweenElements", "a{b}c{d", 1, 1, "a"},
    {"InvalidCharacters", "\xff\xc3,\x80", 2, 2, "\x80"},
};

class HostileLists : public HostileTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(lost_, blocks_alive()) << "blocks that nobody released";
    release_blocks();
    HostileTest::TearDown();
  }

  // A record of one row, loaded and released.
  association_rec loaded(const std::vector<Stored>& row) {
    make_tables_once();
    put_row("association", row);
    association_rec* records = nullptr;
    std::int32_t count = 0;
    EXPECT_EQ(0, get_association_data(&records, "select * from association;", &count));
    EXPECT_EQ(1, count);
    if (records == nullptr) return {};
    const association_rec copy = *records;
    FreeDBData(&records, count);
    return copy;
  }

  void make_tables_once() {
    if (values("select count(*) from sqlite_master;").at(0) == "0") make_tables("Association");
  }

  // A row whose lists have these texts.
  static std::vector<Stored> row_of(const std::string& five, const std::string& six, const std::string& seven,
                                    const std::string& eight) {
    return {plain_text("C"),  plain_text("N"), plain_text("2"),   plain_text("3"),  plain_number(4),
            plain_text(five), plain_text(six), plain_text(seven), plain_text(eight)};
  }

  std::size_t lost_ = 0;
};

class Lists : public HostileLists, public testing::WithParamInterface<Split> {};

INSTANTIATE_TEST_SUITE_P(Of, Lists, testing::ValuesIn(kSplits),
                         [](const testing::TestParamInfo<Split>& info) { return info.param.name; });

TEST_P(Lists, HaveTheirElementsAndNullsBehindThem) {
  char** list = nullptr;
  std::int32_t count = -1;
  EXPECT_EQ(0, GetArrayCount(GetParam().text.c_str(), &list, &count));
  EXPECT_EQ(GetParam().count, count);
  for (std::int32_t i = 0; i <= count; ++i) EXPECT_EQ(i < GetParam().elements, list[i] != nullptr) << i;
  if (GetParam().elements > 0) {
    EXPECT_STREQ(GetParam().last.c_str(), list[GetParam().elements - 1]);
  }
  for (std::int32_t i = 0; i <= count; ++i) std::free(list[i]);
  std::free(list);
}

TEST_P(Lists, AreLoadedAndReleasedInPairsOfOneLength) {
  const std::string& text = GetParam().text;
  const association_rec record = loaded(row_of(text, text, text, text));
  EXPECT_EQ(GetParam().count, record.Count5);
  EXPECT_EQ(GetParam().count, record.Count6);
  EXPECT_EQ(GetParam().count, record.Count7);
}

// Every list with every other as its partner. What a longer second list, or a longer list 7, has beyond the count that
// releases it is lost, and that is all.
TEST_P(Lists, OfDifferentLengthsAreReleasedAsFarAsTheirCount) {
  for (const Split& other : kSplits) {
    SCOPED_TRACE(other.name);
    loaded(row_of(GetParam().text, other.text, other.text, GetParam().text));
    const auto lost = static_cast<std::size_t>(std::max(0, other.elements - GetParam().count));
    EXPECT_EQ(2 * lost, blocks_alive());
    release_blocks();
  }
}

// Each column with each value, as rows of a table.
class AssociationColumns : public HostileLists {
 protected:
  void for_each_value(const std::function<void(const std::vector<Stored>& row, std::size_t column)>& test) {
    make_tables_once();
    for (std::size_t column = 0; column < 9; ++column) {
      for (const Stored& value : column == 4 ? hostile_numbers() : hostile_texts(kTextSize)) {
        SCOPED_TRACE("column " + std::to_string(column) + ": " + value.name);
        std::vector<Stored> row = row_of("{5}", "{6}", "{7}", "{8}");
        row[column] = value;
        test(row, column);
      }
    }
  }

  void fill_from_row(association_rec& record) {
    sqlite3_stmt* row = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_prepare_v2(db, "select * from association;", -1, &row, nullptr));
    EXPECT_EQ(SQLITE_ROW, sqlite3_step(row));
    fill_association_data(row, &record);
    sqlite3_finalize(row);
  }

  static bool is_null(const Stored& value) { return value.name == "NULL"; }

  // A text member that a column fills, what a NULL leaves behind it.
  static std::string member_of(const Stored& value, char before = 0) {
    std::string member = value.text;
    member.resize(kTextSize, is_null(value) ? before : '\0');
    return member;
  }

  // A list that is one element or none.
  static void release_list(char** list) {
    std::free(*list);
    std::free(list);
  }

  static constexpr std::size_t kTextSize = 256;
};

TEST_F(AssociationColumns, FillTheirMembersAndNoOthers) {
  for_each_value([this](const std::vector<Stored>& row, std::size_t column) {
    const association_rec record = loaded(row);
    if (column == 5 && is_null(row[5])) ++lost_;  // list 6 has no count, and its text is lost
    EXPECT_TRUE(member_of(row[0]) == std::string(record.ClassName, kTextSize));
    EXPECT_TRUE(member_of(row[1]) == std::string(record.NameSpace, kTextSize));
    EXPECT_TRUE(member_of(row[2]) == std::string(record.Text2, kTextSize));
    EXPECT_TRUE(member_of(row[3]) == std::string(record.Text3, kTextSize));
    EXPECT_EQ(row[4].number, record.Flag4);
  });
}

TEST_F(AssociationColumns, OfAllAssociationsAreReadLikewise) {
  for_each_value([this](const std::vector<Stored>& row, std::size_t column) {
    put_row("association", row);
    association_rec* records = nullptr;
    std::int32_t count = 0;
    ASSERT_EQ(0, assoc_get_global_data(&records, &count));
    ASSERT_EQ(1, count);
    EXPECT_TRUE(member_of(row[2]) == std::string(records->Text2, kTextSize));
    EXPECT_STREQ("root/cimv2", records->NameSpace);
    EXPECT_EQ(row[4].number, records->Flag4);
    FreeDBData(&records, count);
    if ((column == 5 || column == 7) && is_null(row[column])) ++lost_;  // so are texts of lists 6 and 8
  });
}

// Used before, the record keeps what it held where a column is NULL.
TEST_F(AssociationColumns, FillACallersRecordWhereTheyAreNotNull) {
  for_each_value([this](const std::vector<Stored>& row, std::size_t) {
    put_row("association", row);
    const Guarded memory(sizeof(association_rec), '?');
    auto& record = *reinterpret_cast<association_rec*>(memory.bytes());
    const association_rec before = record;
    fill_from_row(record);

    EXPECT_TRUE(member_of(row[0], '?') == std::string(record.ClassName, kTextSize));
    EXPECT_TRUE(member_of(row[1], '?') == std::string(record.NameSpace, kTextSize));
    EXPECT_TRUE(member_of(row[2], '?') == std::string(record.Text2, kTextSize));
    EXPECT_TRUE(member_of(row[3], '?') == std::string(record.Text3, kTextSize));
    EXPECT_EQ(row[4].number, record.Flag4);
    EXPECT_EQ(is_null(row[5]) ? before.Count5 : 1, record.Count5);
    EXPECT_EQ(is_null(row[6]) ? before.Count6 : 1, record.Count6);
    EXPECT_EQ(1, record.Count7) << "of list 7 or of list 8";
    EXPECT_EQ(before.Count8, record.Count8);
    const std::pair<char**, char**> lists[] = {{before.List5, record.List5},
                                               {before.List6, record.List6},
                                               {before.List7, record.List7},
                                               {before.List8, record.List8}};
    for (std::size_t i = 0; i < std::size(lists); ++i) {
      EXPECT_EQ(is_null(row[5 + i]), lists[i].first == lists[i].second) << "list " << 5 + i;
      if (lists[i].first != lists[i].second) release_list(lists[i].second);
    }
  });
}

}  // namespace
}  // namespace qmv::test
