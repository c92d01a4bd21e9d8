// The association registry, a file of its own. Nothing here is logged; what is written to standard error has to be asked
// for.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <utility>

#include "qmv/assoc.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

class Associations : public DatabaseTest {
 protected:
  Associations() : DatabaseTest("") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    file = open(scratch() + "/Association.db");
    make("pragma synchronous = off; create table association (a, b, c, d, e, f, g, h, i);");
    testing::internal::CaptureStderr();
  }

  void TearDown() override {
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    FreeDBData(&records, count);
    DatabaseTest::TearDown();
  }

  static std::string printed() {
    const std::string text = testing::internal::GetCapturedStderr();
    testing::internal::CaptureStderr();
    return text;
  }

  void make(const std::string& text) { sql(file.get(), text); }

  // A row of which every column holds its name and a number; the lists of a pair are equally long.
  void add(const std::string& n) {
    make("insert into association values ('A" + n + "', 'b" + n + "', 'c" + n + "', 'd" + n + "', 1" + n + ", '{f" + n +
         ",f}', '{g" + n + ",g}', '{h" + n + ",h,h}', '{i" + n + ",i,i}');");
  }

  std::int32_t load() { return assoc_get_global_data(&records, &count); }
  std::int32_t load(const std::string& query) { return get_association_data(&records, query.c_str(), &count); }

  static Texts elements(char** list, std::int32_t count) {
    Texts all;
    for (std::int32_t i = 0; i < count; ++i) all.emplace_back(list[i] == nullptr ? "NULL" : list[i]);
    return all;
  }

  static void expect_texts(const std::string& n, const association_rec& record) {
    EXPECT_EQ("A" + n, field(record.ClassName));
    EXPECT_EQ("c" + n, field(record.Text2));
    EXPECT_EQ("d" + n, field(record.Text3));
    EXPECT_EQ("1" + n, std::to_string(record.Flag4));
  }

  static void expect_lists(const std::string& n, const association_rec& record) {
    EXPECT_EQ(2, record.Count5);
    EXPECT_EQ(2, record.Count6);
    EXPECT_EQ(3, record.Count7);
    EXPECT_EQ(Texts({"f" + n, "f"}), elements(record.List5, 2));
    EXPECT_EQ(Texts({"g" + n, "g"}), elements(record.List6, 2));
    EXPECT_EQ(Texts({"h" + n, "h", "h"}), elements(record.List7, 3));
    EXPECT_EQ(Texts({"i" + n, "i", "i"}), elements(record.List8, 3));
  }

  static std::size_t blocks() { return boundary().blocks_alive.size(); }

  Connection file;
  association_rec* records = nullptr;
  std::int32_t count = -1;
};

constexpr std::size_t kBlocksOfARecord = 4 + 2 + 2 + 3 + 3;  // four lists and their elements

TEST_F(Associations, MembersStandInTheOrderOfTheContract) {
  const std::size_t pointer = sizeof(void*);
  EXPECT_EQ(0u, offsetof(association_rec, NameSpace));
  EXPECT_EQ(256u, offsetof(association_rec, List5));
  EXPECT_EQ(256u + pointer, offsetof(association_rec, List6));
  EXPECT_EQ(256u + 2 * pointer, offsetof(association_rec, Count5));
  EXPECT_EQ(offsetof(association_rec, Count5) + 4, offsetof(association_rec, Count6));
  EXPECT_EQ(offsetof(association_rec, Count6) + 4, offsetof(association_rec, Flag4));
  EXPECT_EQ(offsetof(association_rec, Flag4) + 4, offsetof(association_rec, ClassName));
  EXPECT_EQ(offsetof(association_rec, ClassName) + 256, offsetof(association_rec, Text2));
  EXPECT_EQ(offsetof(association_rec, Text2) + 256, offsetof(association_rec, Text3));
  EXPECT_LT(offsetof(association_rec, Text3), offsetof(association_rec, List7));
  EXPECT_EQ(offsetof(association_rec, List7) + pointer, offsetof(association_rec, List8));
  EXPECT_EQ(offsetof(association_rec, List8) + pointer, offsetof(association_rec, Count7));
  EXPECT_EQ(offsetof(association_rec, Count7) + 4, offsetof(association_rec, Count8));
}

TEST_F(Associations, AllAreLoadedWithTheirListsAndCounts) {
  add("1");
  add("2");
  EXPECT_EQ(0, load());
  ASSERT_EQ(2, count);
  for (int i = 0; i < 2; ++i) {
    expect_texts(std::to_string(i + 1), records[i]);
    expect_lists(std::to_string(i + 1), records[i]);
    EXPECT_EQ(3, records[i].Count8);
  }
  EXPECT_EQ(Texts({"/etc/Association.db"}), boundary().opened);
  EXPECT_EQ(Texts({"SELECT Count(*) FROM  association;", "select * from association"}), statements());
  EXPECT_EQ(0, boundary().busy_handlers_installed);
}

TEST_F(Associations, AllAreLoadedWithTheNamespaceOfTheirClass) {
  add("1");
  make("insert into association (a, b) values ('cim_registeredprofile', 'b2'), (NULL, 'b3');");
  EXPECT_EQ(0, load());
  EXPECT_EQ("root/cimv2", field(records[0].NameSpace));
  EXPECT_EQ("root/interop", field(records[1].NameSpace));
  EXPECT_EQ("root/cimv2", field(records[2].NameSpace));
}

TEST_F(Associations, ListsOfAPairAreCountedApartInAll) {
  make("insert into association (f, g, h, i) values ('{1,2}', '{1}', '{1,2,3,4}', '{1,2,3}');");
  EXPECT_EQ(0, load());
  EXPECT_EQ(2, records->Count5);
  EXPECT_EQ(1, records->Count6);
  EXPECT_EQ(4, records->Count7);
  EXPECT_EQ(3, records->Count8);
}

TEST_F(Associations, NullColumnsLeaveZeros) {
  make("insert into association (a) values ('A');");
  EXPECT_EQ(0, load());
  association_rec expected{};
  put(expected.NameSpace, "root/cimv2");
  put(expected.ClassName, "A");
  EXPECT_EQ(0, std::memcmp(&expected, records, sizeof(expected)));
}

TEST_F(Associations, AllOfAnEmptyOrMissingTableAreNullWithTheCountLeft) {
  for (const char* change : {"delete from association;", "drop table association;"}) {
    make(change);
    association_rec untouched{};
    association_rec* place = &untouched;
    EXPECT_EQ(0, assoc_get_global_data(&place, &count));
    EXPECT_EQ(nullptr, place);
    EXPECT_EQ(-1, count);
  }
}

TEST_F(Associations, AllReturnOneWithoutTheFile) {
  boundary().fixed_files = "/nonexistent";
  EXPECT_EQ(1, load());
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(-1, count);
}

TEST_F(Associations, AllReturnOneWithoutMemory) {
  add("1");
  boundary().fail_allocation = 1;
  EXPECT_EQ(1, load());
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(-1, count);
}

TEST_F(Associations, AllAreZeroWhenTheSelectDoesNotCompile) {
  add("1");
  boundary().prepares = {{2, SQLITE_INTERNAL}};
  EXPECT_EQ(0, load());
  EXPECT_EQ(1, count);
  const association_rec zero{};
  EXPECT_EQ(0, std::memcmp(&zero, records, sizeof(zero)));
}

TEST_F(Associations, AllEndAtTheFirstStepThatIsNoRow) {
  add("1");
  add("2");
  boundary().steps = {{4, SQLITE_IOERR}};  // the first two are the count's
  EXPECT_EQ(0, load());
  EXPECT_EQ(2, count);
  expect_texts("1", records[0]);
  EXPECT_EQ("", field(records[1].ClassName));
}

TEST_F(Associations, RowsThatAppearAfterTheCountAreSteppedOver) {
  add("1");
  boundary().change_before = "select * from";
  boundary().change = [this] {
    add("2");
    add("3");
  };
  EXPECT_EQ(0, load());
  EXPECT_EQ(1, count);
  expect_texts("1", *records);
  EXPECT_EQ(1 + kBlocksOfARecord, blocks());
}

class AssociationTexts : public Associations, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(AroundTheWidth, AssociationTexts, testing::Values(-1, 0, 1, 1000));

TEST_P(AssociationTexts, AreCutAtTheWidthOfTheirFieldAndNotBefore) {
  const std::size_t length = 256u + static_cast<std::size_t>(GetParam());
  make("insert into association (a, b, c, d, e) values ('" + std::string(length, 'a') + "', '" +
       std::string(length, 'b') + "', '" + std::string(length, 'c') + "', '" + std::string(length, 'd') + "', 77);");
  const std::size_t kept = std::min<std::size_t>(length, 256);
  for (const bool by_query : {false, true}) {
    EXPECT_EQ(0, by_query ? load("select * from association;") : load());
    EXPECT_EQ(std::string(kept, 'a'), field(records->ClassName));
    EXPECT_EQ(by_query ? std::string(kept, 'b') : "root/cimv2", field(records->NameSpace));
    EXPECT_EQ(std::string(kept, 'c'), field(records->Text2));
    EXPECT_EQ(std::string(kept, 'd'), field(records->Text3));
    EXPECT_EQ(77, records->Flag4);
    FreeDBData(&records, count);
  }
}

TEST_F(Associations, QueryIsPreparedUnchanged) {
  const std::string query = "select * from association where a <> '100%d %n %q'  --  it's";
  add("1");
  EXPECT_EQ(0, load(query));
  EXPECT_EQ(1, count);
  EXPECT_EQ(Texts({query}), statements());
  EXPECT_EQ(Texts({"/etc/Association.db"}), boundary().opened);
  EXPECT_EQ(0, boundary().busy_handlers_installed);
}

TEST_F(Associations, QueriedOnesTakeTheirNamespaceFromItsColumn) {
  for (const char* n : {"1", "2", "3"}) add(n);
  EXPECT_EQ(0, load("select * from association where a <> 'A2';"));
  ASSERT_EQ(2, count);
  expect_texts("1", records[0]);
  expect_texts("3", records[1]);
  expect_lists("1", records[0]);
  expect_lists("3", records[1]);
  EXPECT_EQ("b1", field(records[0].NameSpace));
  EXPECT_EQ("b3", field(records[1].NameSpace));
}

TEST_F(Associations, FilledRecordCountsListEightInCountSeven) {
  make("insert into association (h, i) values ('{1,2,3}', '{1}');");
  EXPECT_EQ(0, load("select * from association;"));
  EXPECT_EQ(1, records->Count7);
  EXPECT_EQ(0, records->Count8);
  EXPECT_EQ(Texts({"1", "2", "3"}), elements(records->List7, 3));
  EXPECT_EQ(Texts({"1"}), elements(records->List8, 1));
  for (const int left : {1, 2}) std::free(records->List7[left]);  // which the release does not count
}

TEST_F(Associations, FilledRecordKeepsTheCountOfListSevenWithoutAListEight) {
  make("insert into association (h) values ('{1,2}');");
  EXPECT_EQ(0, load("select * from association;"));
  EXPECT_EQ(2, records->Count7);
  EXPECT_EQ(nullptr, records->List8);
}

// Records that a row fills in place of other bytes.
class FilledAssociation : public Associations {
 protected:
  FilledAssociation() {
    std::memset(&expected, 'x', sizeof(expected));
    std::memset(&record, 'x', sizeof(record));
  }

  void fill_with(const std::string& row) {
    make(row);
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(file.get(), "select * from association;", -1, &statement, nullptr);
    EXPECT_EQ(SQLITE_ROW, __real_sqlite3_step(statement));
    fill_association_data(statement, &record);
    EXPECT_EQ(0, std::memcmp(&expected, &record, sizeof(record)));
    __real_sqlite3_finalize(statement);
  }

  association_rec expected;
  association_rec record;
};

TEST_F(FilledAssociation, IsNotClearedFirst) {
  expected.Flag4 = 5;
  fill_with("insert into association (e) values (5);");
}

TEST_F(FilledAssociation, HasZerosBehindItsTextsAndForANullFlag) {
  put(expected.ClassName, "A");
  put(expected.NameSpace, "b");
  put(expected.Text2, "c");
  put(expected.Text3, "d");
  expected.Flag4 = 0;
  fill_with("insert into association (a, b, c, d) values ('A', 'b', 'c', 'd');");
}

TEST_F(Associations, QueriedRecordsAreClearedBeforeTheyAreFilled) {
  for (int i = 0; i < 40; ++i) make("insert into association (e) values (" + std::to_string(i) + ");");
  EXPECT_EQ(0, load("select * from association;"));
  ASSERT_EQ(40, count);
  for (int i = 0; i < 40; ++i) {
    association_rec expected{};
    expected.Flag4 = i;
    EXPECT_EQ(0, std::memcmp(&expected, &records[i], sizeof(expected))) << i;
  }
}

TEST_F(Associations, QueriedRecordsGrowOneByOne) {
  for (const std::size_t rows : {1u, 2u, 3u}) {
    add(std::to_string(rows));
    EXPECT_EQ(0, load("select * from association;"));
    EXPECT_EQ(rows * sizeof(association_rec), size_of(records));
    FreeDBData(&records, count);
  }
}

TEST_F(Associations, QueryWithoutRowsLeavesThePointer) {
  association_rec untouched{};
  association_rec* place = &untouched;
  EXPECT_EQ(0, get_association_data(&place, "select * from association;", &count));
  EXPECT_EQ(&untouched, place);
  EXPECT_EQ(0, count);
}

TEST_F(Associations, QueryEndsAtTheFirstStepThatIsNoRow) {
  add("1");
  add("2");
  boundary().steps = {{2, SQLITE_IOERR}};
  EXPECT_EQ(0, load("select * from association;"));
  ASSERT_EQ(1, count);
  expect_texts("1", *records);
}

TEST_F(Associations, QueryThatDoesNotCompileIsPrinted) {
  EXPECT_EQ(1, load("select 100% from"));
  EXPECT_EQ(0, count);
  EXPECT_EQ("SQL compilation error : select 100% from \n", printed());
}

TEST_F(Associations, QueryThatCannotBeFormattedDoesNotCompile) {
  boundary().fail_text = 1;
  EXPECT_EQ(1, load("select * from association;"));
  EXPECT_EQ(0, count);
  EXPECT_EQ("SQL compilation error : select * from association; \n", printed());
}

TEST_F(Associations, QueryWithoutTheFileIsPrinted) {
  boundary().fixed_files = "/nonexistent";
  EXPECT_EQ(1, load("select * from association;"));
  EXPECT_EQ(0, count);
  EXPECT_EQ("Unable to open /etc/Association.db \n", printed());
}

TEST_F(Associations, QueryWithoutMemoryReleasesWhatWasLoaded) {
  add("1");
  add("2");
  const int of_a_record = static_cast<int>(kBlocksOfARecord);
  for (const int failing : {1, 2 + of_a_record}) {  // the first record, and the growth to the second
    boundary().fail_allocation = failing;
    EXPECT_EQ(1, load("select * from association;"));
    EXPECT_EQ(nullptr, records);
    EXPECT_EQ(0, count);
    EXPECT_EQ("\n Memory allocation error \n", printed());
    EXPECT_EQ(0u, blocks());
  }
}

TEST_F(Associations, FailuresReleaseTheArrayThatThePointerHeldWithoutItsLists) {
  add("1");
  const auto fail = [&](const std::string& query) {
    records = static_cast<association_rec*>(std::calloc(1, sizeof(association_rec)));
    char** const list = records->List5 = static_cast<char**>(std::calloc(1, sizeof(char*)));
    EXPECT_EQ(1, load(query));
    EXPECT_EQ(nullptr, records);
    EXPECT_EQ(1u, blocks());
    std::free(list);
    EXPECT_NE("", printed());
  };
  fail("no query");
  boundary().fail_allocation = 3;  // the first two are this test's own
  fail("select * from association;");
  boundary().fixed_files = "/nonexistent";
  fail("select * from association;");
}

TEST_F(Associations, ListsThatRunOutOfMemoryCanBeReleased) {
  add("1");
  for (int failing = 2; failing <= 1 + static_cast<int>(kBlocksOfARecord); ++failing) {
    for (const bool by_query : {false, true}) {
      boundary().fail_allocation = failing;
      EXPECT_EQ(0, by_query ? load("select * from association;") : load());
      EXPECT_EQ(1, count);
      FreeDBData(&records, count);
      EXPECT_EQ(0u, blocks()) << failing;
    }
  }
}

TEST_F(Associations, DataIsReleasedWithAllLists) {
  add("1");
  add("2");
  load();
  EXPECT_EQ(1 + 2 * kBlocksOfARecord, blocks());
  FreeDBData(&records, count);
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(0u, blocks());
}

TEST_F(Associations, DataOfNullIsNothingToRelease) {
  FreeDBData(&records, 7);
  EXPECT_EQ(nullptr, records);
  EXPECT_EQ(1, free_global_structure(nullptr, 7));
}

TEST_F(Associations, DataWithoutACountIsReleasedAsAnArrayOnly) {
  for (const std::int32_t none : {0, -1}) {
    association_rec kept{};
    GetArrayCount("{a}", &kept.List7, &kept.Count7);
    records = static_cast<association_rec*>(std::calloc(1, sizeof(association_rec)));
    *records = kept;
    FreeDBData(&records, none);
    EXPECT_EQ(nullptr, records);
    EXPECT_EQ(2u, blocks()) << "the list and its element";
    auto* array = static_cast<association_rec*>(std::calloc(1, sizeof(association_rec)));
    *array = kept;
    EXPECT_EQ(0, free_global_structure(array, none));
    EXPECT_EQ(2u, blocks());
    std::free(kept.List7[0]);
    std::free(kept.List7);
  }
}

TEST_F(Associations, DataCountsBothListsOfAPairByTheFirst) {
  records = static_cast<association_rec*>(std::calloc(1, sizeof(association_rec)));
  std::int32_t ignored = 0;
  GetArrayCount("{a}", &records->List5, &ignored);
  GetArrayCount("{b,c}", &records->List6, &records->Count6);
  GetArrayCount("{d}", &records->List7, &ignored);
  GetArrayCount("{e,f}", &records->List8, &records->Count8);
  records->Count5 = records->Count7 = 1;
  char* left[] = {records->List6[1], records->List8[1]};
  FreeDBData(&records, 1);
  EXPECT_EQ((std::map<void*, std::size_t>{{left[0], 2}, {left[1], 2}}), boundary().blocks_alive);
  for (char* each : left) std::free(each);
}

TEST_F(Associations, DataKeepsTheTextsOfAListWhoseCountedPartnerIsNull) {
  make("insert into association (g) values ('{1,2}');");
  load();
  char* const left[] = {records->List6[0], records->List6[1]};
  FreeDBData(&records, count);
  EXPECT_EQ((std::map<void*, std::size_t>{{left[0], 2}, {left[1], 2}}), boundary().blocks_alive);
  for (char* each : left) std::free(each);
}

TEST_F(Associations, DataWhoseListIsShorterThanItsCountEndsThere) {
  make("insert into association (f, g, h, i) values ('{1,2,3}', '{1}', '{1}', '{1,2,3}');");
  EXPECT_EQ(0, load("select * from association;"));
  EXPECT_EQ(3, records->Count5);
  EXPECT_EQ(3, records->Count7);
  FreeDBData(&records, count);
  EXPECT_EQ(0u, blocks());
}

TEST_F(Associations, GlobalStructureKeepsListsFiveAndSix) {
  add("1");
  load();
  const association_rec kept = *records;
  EXPECT_EQ(0, free_global_structure(records, count));
  records = nullptr;
  EXPECT_EQ(2u + 2 + 2, blocks());
  EXPECT_EQ(Texts({"f1", "f"}), elements(kept.List5, 2));
  EXPECT_EQ(Texts({"g1", "g"}), elements(kept.List6, 2));
  for (char** list : {kept.List5, kept.List6}) {
    for (const int i : {0, 1}) std::free(list[i]);
    std::free(list);
  }
}

TEST_F(Associations, GlobalStructureKeepsTheTextsOfListEightOfQueriedOnes) {
  make("insert into association (h, i) values ('{1}', '{2,3}');");
  load("select * from association;");
  char* const left[] = {records->List8[0], records->List8[1]};
  EXPECT_EQ(0, free_global_structure(std::exchange(records, nullptr), count));
  EXPECT_EQ((std::map<void*, std::size_t>{{left[0], 2}, {left[1], 2}}), boundary().blocks_alive);
  for (char* each : left) std::free(each);
}

TEST_F(Associations, GlobalStructureKeepsTheTextsOfListSevenBeyondListEightsCountOfQueriedOnes) {
  make("insert into association (h, i) values ('{1,2,3}', '{8}');");
  load("select * from association;");
  char* const left[] = {records->List7[1], records->List7[2], records->List8[0]};
  EXPECT_EQ(0, free_global_structure(std::exchange(records, nullptr), count));
  EXPECT_EQ((std::map<void*, std::size_t>{{left[0], 2}, {left[1], 2}, {left[2], 2}}), boundary().blocks_alive);
  for (char* each : left) std::free(each);
}

TEST_F(Associations, GlobalStructureCountsListsSevenAndEightApart) {
  make("insert into association (h, i) values ('{1}', '{1,2,3}');");
  load();
  EXPECT_EQ(0, free_global_structure(records, count));
  records = nullptr;
  EXPECT_EQ(0u, blocks());
}

TEST_F(Associations, GlobalStructureStopsAtTheFirstNull) {
  make("insert into association (h, i) values ('{}', '{1,2,3}');");
  load();
  EXPECT_EQ(1, records->Count7) << "of one NULL";
  void* const left = records->List8[2];
  std::free(std::exchange(records->List8[1], nullptr));
  EXPECT_EQ(0, free_global_structure(records, count));
  records = nullptr;
  ASSERT_EQ((std::map<void*, std::size_t>{{left, 2}}), boundary().blocks_alive);
  std::free(left);
}

struct List {
  const char* text;
  Texts elements;
};

class AssociationList : public Associations, public testing::WithParamInterface<List> {};

INSTANTIATE_TEST_SUITE_P(Of, AssociationList,
                         testing::Values(List{"{CIM_Fan, CIM_Sensor}", {"CIM_Fan", "CIM_Sensor"}}, List{"{}", {"NULL"}},
                                         List{"", {"NULL"}}, List{"one", {"one"}},
                                         List{"{ \t one \t,\ttwo }", {"one \t", "two "}},
                                         List{"{a,,b}", {"a", "b", "NULL"}}, List{"{a,b", {"a", "b"}},
                                         List{"{,}", {"NULL", "NULL"}}, List{"{a}{b}", {"a"}},
                                         List{"{a}{b},c", {"a", "b"}}, List{"{ ,a}", {"", "a"}}));

TEST_P(AssociationList, IsSplitAtCommasAndBracesWithoutLeadingBlanks) {
  char** list = nullptr;
  EXPECT_EQ(0, GetArrayCount(GetParam().text, &list, &count));
  EXPECT_EQ(GetParam().elements, elements(list, count));
  EXPECT_EQ(nullptr, list[count]) << "one more, where a longer pair ends";
  EXPECT_EQ(sizeof(char*) * (static_cast<std::size_t>(count) + 1), size_of(list));
  for (std::int32_t i = 0; i < count; ++i) std::free(list[i]);
  std::free(list);
  EXPECT_EQ(0u, blocks());
}

TEST_F(Associations, ListOfNullIsNone) {
  char* untouched = nullptr;
  char** list = &untouched;
  EXPECT_EQ(0, GetArrayCount(nullptr, &list, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(&untouched, list);
  EXPECT_EQ(0, boundary().allocations);
}

TEST_F(Associations, ListIsCutAt1023Characters) {
  char** list = nullptr;
  const std::string text = std::string(1021, 'x') + ",yz,w";  // the comma is the 1022nd
  EXPECT_EQ(0, GetArrayCount(text.c_str(), &list, &count));
  EXPECT_EQ(Texts({std::string(1021, 'x'), "y"}), elements(list, count));
  for (const int i : {0, 1}) std::free(list[i]);
  std::free(list);
}

TEST_F(Associations, ListWithoutMemoryReturnsOneWithItsCount) {
  char** list = nullptr;
  boundary().fail_allocation = 1;
  EXPECT_EQ(1, GetArrayCount("{a,b,c}", &list, &count));
  EXPECT_EQ(3, count);
  EXPECT_EQ(nullptr, list);
  boundary().fail_allocation = 3;
  EXPECT_EQ(1, GetArrayCount("{a,b,c}", &list, &count));
  EXPECT_EQ(3, count);
  EXPECT_EQ(Texts({"a", "NULL", "NULL"}), elements(list, count));
  std::free(list[0]);
  std::free(list);
}

struct Type {
  const char* name;
  std::int32_t code;
};

class CmpiTypes : public testing::TestWithParam<Type> {};

INSTANTIATE_TEST_SUITE_P(Of, CmpiTypes,
                         testing::Values(Type{"REF", 4352}, Type{"ref", 4352}, Type{"uint16", 144}, Type{"UINT64", 176},
                                         Type{"uint64", 176}, Type{"string", 5632}, Type{"STRING", 5632},
                                         Type{"dateTime", 6144}, Type{"datetime", 6144}, Type{"uint16A", 8336},
                                         Type{"uint16a", 8336}, Type{"uint1", 0}, Type{"uint16AA", 0},
                                         Type{"uint32", 0}, Type{" string", 0}, Type{"", 0}, Type{nullptr, 0}));

TEST_P(CmpiTypes, HaveTheCodesOfTheStandardInAnyCase) {
  EXPECT_EQ(GetParam().code, GetCMPIDataType(GetParam().name));
}

TEST(CimNamespace, IsInteropForFiveClassesInAnyCase) {
  for (const char* name :
       {"CIM_IndicationFilter", "CIM_IndicationService", "CIM_RegisteredProfile", "CIM_IndicationHandlerCIMXML",
        "CIM_ReferencedProfile", "cim_registeredprofile", "CIM_INDICATIONHANDLERCIMXML"}) {
    EXPECT_STREQ("root/interop", GetNameSpace(name)) << name;
  }
}

TEST(CimNamespace, IsTheCommonOneForEveryOtherClass) {
  for (const char* name : {"CIM_Fan", "CIM_IndicationFilte", "CIM_IndicationFilterX", "CIM_IndicationHandler", ""}) {
    EXPECT_STREQ("root/cimv2", GetNameSpace(name)) << name;
  }
  EXPECT_STREQ("root/cimv2", GetNameSpace(nullptr));
}

TEST(WhiteSpaces, AreBlanksAndTabs) {
  EXPECT_STREQ("a b", SkipWhiteSpaces(" \t \ta b"));
  EXPECT_STREQ("\n a", SkipWhiteSpaces(" \n a"));
  EXPECT_STREQ("\va", SkipWhiteSpaces("\va"));
  EXPECT_STREQ("", SkipWhiteSpaces("  "));
  EXPECT_EQ(nullptr, SkipWhiteSpaces(nullptr));
}

}  // namespace
}  // namespace qmv::test
