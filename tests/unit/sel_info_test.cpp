// What is known of the event log as a whole, table "sel_info".
#include <algorithm>
#include <cstddef>
#include <string>
#include <tuple>

#include "qmv/sel.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

constexpr char kTable[] =
    "create table sel_info (MaxNoOfSels, CompletionCode, Version, RecCnt, FreeSpace, AddTimeStamp, EraseTimeStamp, "
    "OperationSupport, unique (Version));";

class SelInfo : public DatabaseTest {
 protected:
  SelInfo() : DatabaseTest("db_seld.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql(kTable);
  }

  // A row in which column n holds first + n, as the text that a set leaves there or as an integer.
  void insert_row(int first) {
    const auto number = [first](int column) { return std::to_string(first + column); };
    sql("insert into sel_info values (" + number(0) + ", '" + number(1) + "', '" + number(2) + "', " + number(3) +
        ", " + number(4) + ", '" + number(5) + "', '" + number(6) + "', '" + number(7) + "');");
  }

  // A row that holds a text of this length in each column that is read as a text, and 22 and 33 in the two others.
  void insert_texts(std::size_t length) {
    const auto text = [length](char letter) { return "'" + std::string(length, letter) + "'"; };
    sql("insert into sel_info values (" + text('c') + ", " + text('v') + ", 22, 33, " + text('a') + ", " + text('e') +
        ", " + text('o') + ", 'never read');");
  }

  // Reads the row that the test inserted.
  const sel_info_rec& read() {
    EXPECT_EQ(0, db_get_selinfo(db, record.out()));
    EXPECT_EQ(Lines({trace("Get Selinfo record from database"), trace("Successfully got the Selinfo record")}),
              logged());
    return *record.get();
  }

  void expect_get_fails_and_leaves_the_pointer(const Lines& lines) {
    sel_info_rec untouched;
    sel_info_rec* info = &untouched;
    EXPECT_EQ(1, db_get_selinfo(db, &info));
    EXPECT_EQ(&untouched, info);
    EXPECT_EQ(lines, logged());
  }

  static std::string bytes(const sel_info_rec& record) {
    return {reinterpret_cast<const char*>(&record), sizeof(record)};
  }

  static sel_info_rec sample() {
    sel_info_rec record{1, {}, {}, 4, 5, {}, {}, {}};
    put(record.CompletionCode, "b");
    put(record.Version, "c'd");
    put(record.AddTimeStamp, "f");
    put(record.EraseTimeStamp, "g");
    put(record.OperationSupport, "h");
    return record;
  }

  void store(const sel_info_rec& stored) {
    EXPECT_EQ(0, db_set_selinfo(db, &stored));
    logged();
    statements();
  }

  // The one row, each column by its name.
  std::string row() {
    return value_of(
        "select MaxNoOfSels || '|' || CompletionCode || '|' || Version || '|' || RecCnt || '|' || FreeSpace || '|' || "
        "AddTimeStamp || '|' || EraseTimeStamp || '|' || OperationSupport from sel_info;");
  }

  Owned<sel_info_rec> record;
};

TEST_F(SelInfo, CountReturnsTheNumberOfRows) {
  insert_row(100);
  insert_row(200);
  std::int32_t count = -1;
  EXPECT_EQ(0, db_get_selinfo_cnt(db, &count));
  EXPECT_EQ(2, count);
  EXPECT_EQ(Texts({"select count(*) from sel_info;"}), statements());
  EXPECT_EQ(Lines({trace("Successfully return SelInfo Count")}), logged());
}

TEST_F(SelInfo, CountOfAnEmptyTableIsZeroWithTheSuccessTrace) {
  std::int32_t count = -1;
  EXPECT_EQ(0, db_get_selinfo_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("Successfully return SelInfo Count")}), logged());
}

TEST_F(SelInfo, CountWithoutATableReturnsOneWithTheCountCleared) {
  sql("drop table sel_info;");
  std::int32_t count = -1;
  EXPECT_EQ(1, db_get_selinfo_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({no_such_table("sel_info")}), logged());
}

TEST_F(SelInfo, CountWithoutAStatementReturnsOne) {
  boundary().miss_statement = 1;
  std::int32_t count = -1;
  EXPECT_EQ(1, db_get_selinfo_cnt(db, &count));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_F(SelInfo, CountWithoutARowReturnsTheStepsCodeAndLeavesTheStatementOpen) {
  for (const int code : {SQLITE_DONE, SQLITE_BUSY}) {
    boundary().steps = {{1, code}};
    std::int32_t count = -1;
    EXPECT_EQ(code, db_get_selinfo_cnt(db, &count));
    EXPECT_EQ(0, count);
    EXPECT_EQ(Lines({trace("No records found")}), logged());
    expect_left_open(1);
  }
}

TEST_F(SelInfo, CountReturnsTheCodeOfFinalize) {
  insert_row(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  std::int32_t count = -1;
  EXPECT_EQ(SQLITE_IOERR, db_get_selinfo_cnt(db, &count));
  EXPECT_EQ(1, count);
  EXPECT_EQ(Lines({trace("Successfully return SelInfo Count")}), logged());
}

TEST_F(SelInfo, ReaderIsOneColumnBehindAfterTheFirst) {
  insert_row(100);
  insert_row(200);
  const sel_info_rec& read_back = read();
  EXPECT_EQ(100, read_back.MaxNoOfSels);
  EXPECT_EQ("100", field(read_back.CompletionCode)) << "the text of MaxNoOfSels";
  EXPECT_EQ("101", field(read_back.Version)) << "CompletionCode";
  EXPECT_EQ(102, read_back.RecCnt) << "Version";
  EXPECT_EQ(103, read_back.FreeSpace) << "RecCnt";
  EXPECT_EQ("104", field(read_back.AddTimeStamp)) << "FreeSpace";
  EXPECT_EQ("105", field(read_back.EraseTimeStamp)) << "AddTimeStamp";
  EXPECT_EQ("106", field(read_back.OperationSupport)) << "EraseTimeStamp";
  EXPECT_EQ(Texts({"select * from sel_info;"}), statements());
}

TEST_F(SelInfo, GetReturnsWhatWasSetInTheWrongFields) {
  sel_info_rec stored = sample();
  stored.MaxNoOfSels = 3000;
  put(stored.CompletionCode, "00");
  store(stored);
  const sel_info_rec& read_back = read();
  EXPECT_EQ(3000, read_back.MaxNoOfSels);
  EXPECT_EQ("3000", field(read_back.CompletionCode));
  EXPECT_EQ("00", field(read_back.Version));
  EXPECT_EQ(0, read_back.RecCnt) << "the version's text is no number";
}

TEST_F(SelInfo, GetReadsNullColumnsAsZeros) {
  sql("insert into sel_info (MaxNoOfSels) values (NULL);");
  EXPECT_EQ(std::string(sizeof(sel_info_rec), '\0'), bytes(read()));
}

TEST_F(SelInfo, GetWithoutARowReturnsOneAndLeavesThePointer) {
  expect_get_fails_and_leaves_the_pointer(Lines({trace("Fail to get the Selinfo record")}));
}

TEST_F(SelInfo, GetWithoutAStatementReturnsOneAndLeavesThePointer) {
  insert_row(100);
  boundary().miss_statement = 1;
  expect_get_fails_and_leaves_the_pointer(Lines({trace("Fail to get Selinfo record. SQLite stmt is NULL")}));
}

TEST_F(SelInfo, GetWithoutATableReturnsOneAndLeavesThePointer) {
  sql("drop table sel_info;");
  expect_get_fails_and_leaves_the_pointer(Lines({no_such_table("sel_info")}));
}

TEST_F(SelInfo, GetReturnsSevenWhenMemoryIsShortAndLeavesTheStatementOpen) {
  insert_row(100);
  boundary().fail_allocation = 1;
  sel_info_rec untouched;
  sel_info_rec* info = &untouched;
  EXPECT_EQ(7, db_get_selinfo(db, &info));
  EXPECT_EQ(nullptr, info);
  EXPECT_EQ(Lines({trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_F(SelInfo, GetIgnoresTheCodeOfFinalize) {
  insert_row(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(100, read().MaxNoOfSels);
}

// Texts are copied without a look at the width of their field: one that is longer runs on over the fields behind it,
// until those are filled from their own columns.

TEST_F(SelInfo, TextsEndAtAZeroWithinThem) {
  insert_row(100);
  sql("update sel_info set CompletionCode = cast(x'6162006364' as text);");
  EXPECT_EQ(std::string("ab").append(62, '\0'), std::string(read().Version, 64));
}

TEST_F(SelInfo, TextThatRanOnIsOverwrittenOnlyAsFarAsTheNextFieldsOwnTextReaches) {
  insert_row(100);
  sql("update sel_info set MaxNoOfSels = '" + std::string(70, 'c') + "', CompletionCode = 'v';");
  EXPECT_EQ(std::string(64, 'c'), field(read().CompletionCode));
  EXPECT_EQ("vccccc", field(record->Version));
}

TEST_F(SelInfo, LongTextsRunOnUpToTheRecordsEnd) {
  insert_row(100);
  sql("update sel_info set FreeSpace = '" + std::string(300, 'a') + "', AddTimeStamp = NULL, EraseTimeStamp = NULL;");
  EXPECT_EQ(std::string(128, 'a'), field(read().AddTimeStamp));
  EXPECT_EQ(std::string(128, 'a'), field(record->EraseTimeStamp));
  EXPECT_EQ(std::string(44, 'a'), field(record->OperationSupport));
}

TEST_F(SelInfo, TextThatRanOnIsCoveredPieceByPieceInColumnOrder) {
  insert_row(100);
  sql("update sel_info set FreeSpace = '" + std::string(10000, 'a') + "', AddTimeStamp = '" + std::string(150, 'e') +
      "', EraseTimeStamp = 'o';");
  EXPECT_EQ(std::string(128, 'a'), field(read().AddTimeStamp));
  EXPECT_EQ(std::string(128, 'e'), field(record->EraseTimeStamp));
  EXPECT_EQ("o" + std::string(21, 'e') + std::string(42, 'a'), field(record->OperationSupport));
}

TEST_F(SelInfo, IntegersAreReadAfterTheTextsInFrontOfThem) {
  insert_texts(10000);
  sql("update sel_info set Version = NULL, RecCnt = 33;");
  EXPECT_EQ(0, read().RecCnt) << "a NULL integer is written as well";
  EXPECT_EQ(33, record->FreeSpace);
}

TEST_F(SelInfo, FieldsThatAllRunOverHoldTheBeginningOfTheirOwnTexts) {
  for (const std::size_t length : {1u, 63u, 64u, 65u, 127u, 128u, 129u, 10000u}) {
    SCOPED_TRACE(length);
    sql("delete from sel_info;");
    insert_texts(length);
    const auto beginning = [length](std::size_t width, char letter) {
      return std::string(std::min(length, width), letter);
    };
    Owned<sel_info_rec> info;
    EXPECT_EQ(0, db_get_selinfo(db, info.out()));
    logged();
    EXPECT_EQ(beginning(64, 'c'), field(info->CompletionCode));
    EXPECT_EQ(beginning(64, 'v'), field(info->Version));
    EXPECT_EQ(22, info->RecCnt);
    EXPECT_EQ(33, info->FreeSpace);
    EXPECT_EQ(beginning(128, 'a'), field(info->AddTimeStamp));
    EXPECT_EQ(beginning(128, 'e'), field(info->EraseTimeStamp));
    EXPECT_EQ(beginning(64, 'o'), field(info->OperationSupport));
  }
}

struct TextField {
  const char* column;
  const char* name;
  std::size_t offset;
};

class SelInfoText : public SelInfo, public testing::WithParamInterface<std::tuple<TextField, std::size_t>> {};

INSTANTIATE_TEST_SUITE_P(
    EachColumn, SelInfoText,
    testing::Combine(
        testing::Values(TextField{"MaxNoOfSels", "CompletionCode", offsetof(sel_info_rec, CompletionCode)},
                        TextField{"CompletionCode", "Version", offsetof(sel_info_rec, Version)},
                        TextField{"FreeSpace", "AddTimeStamp", offsetof(sel_info_rec, AddTimeStamp)},
                        TextField{"AddTimeStamp", "EraseTimeStamp", offsetof(sel_info_rec, EraseTimeStamp)},
                        TextField{"EraseTimeStamp", "OperationSupport", offsetof(sel_info_rec, OperationSupport)}),
        testing::Values(1, 63, 64, 65, 127, 128, 129, 10000)),
    [](const auto& info) {
      return std::string(std::get<0>(info.param).name) + "Of" + std::to_string(std::get<1>(info.param));
    });

TEST_P(SelInfoText, RunsOnOverTheFieldsBehindItsOwnUpToTheRecordsEnd) {
  const auto& [text, length] = GetParam();
  sql("insert into sel_info (" + std::string(text.column) + ") values ('" + std::string(length, 'x') + "');");
  sql("update sel_info set Version = 22, RecCnt = 33;");
  sel_info_rec expected{};
  std::memset(reinterpret_cast<char*>(&expected) + text.offset, 'x', std::min(length, sizeof(expected) - text.offset));
  expected.RecCnt = 22;
  expected.FreeSpace = 33;
  EXPECT_EQ(bytes(expected), bytes(read()));
}

TEST_F(SelInfo, SetInsertsEveryFieldUnderItsColumn) {
  const sel_info_rec stored = sample();
  EXPECT_EQ(0, db_set_selinfo(db, &stored));
  EXPECT_EQ(Texts({"insert into sel_info (MaxNoOfSels, CompletionCode, Version, \t\t\tRecCnt, FreeSpace, AddTimeStamp, "
                   "EraseTimeStamp,\t\t\tOperationSupport) values (1, 'b', 'c''d', 4, 5, 'f', \t\t\t'g', 'h');"}),
            statements());
  EXPECT_EQ("1|b|c'd|4|5|f|g|h", row());
  EXPECT_EQ(Lines({trace("Successfully update the Selinfo record")}), logged());
}

TEST_F(SelInfo, SetOnAnExistingVersionReplacesThatRowAndReturnsZero) {
  sel_info_rec stored = sample();
  store(stored);
  stored = {11, {}, {}, 14, 15, {}, {}, {}};
  put(stored.CompletionCode, "bb");
  put(stored.Version, "c'd");
  put(stored.AddTimeStamp, "ff");
  put(stored.EraseTimeStamp, "gg");
  put(stored.OperationSupport, "hh");
  EXPECT_EQ(0, db_set_selinfo(db, &stored));
  ASSERT_EQ(2u, boundary().statements.size());
  EXPECT_EQ(
      "update sel_info set MaxNoOfSels=11, CompletionCode='bb', \t\t\tVersion='c''d', RecCnt=14, FreeSpace=15, "
      "AddTimeStamp='ff', \t\t\tEraseTimeStamp='gg', OperationSupport='hh' where Version='c''d';",
      statements().back());
  EXPECT_EQ("11|bb|c'd|14|15|ff|gg|hh", row());
  EXPECT_EQ(Lines({execution_failed(), trace("Selinfo record is already present with that key"),
                   trace("Successfully update the Selinfo record")}),
            logged());
}

TEST_F(SelInfo, SetLeavesRowsOfOtherVersions) {
  sel_info_rec stored = sample();
  store(stored);
  put(stored.Version, "other");
  store(stored);
  stored.MaxNoOfSels = 99;
  store(stored);
  EXPECT_EQ(Texts({"1|c'd", "99|other"}), rows_of("select MaxNoOfSels, Version from sel_info order by MaxNoOfSels;"));
}

TEST_F(SelInfo, SetWhoseInsertFailsOtherwiseTriesNoUpdateAndReturnsZero) {
  sql("drop table sel_info;");
  const sel_info_rec stored = sample();
  EXPECT_EQ(0, db_set_selinfo(db, &stored));
  EXPECT_EQ(1u, statements().size());
  EXPECT_EQ(Lines({execution_failed(), trace("Successfully update the Selinfo record")}), logged());
}

TEST_F(SelInfo, SetWhoseUpdateFailsReturnsZero) {
  sel_info_rec stored = sample();
  store(stored);
  sql("create trigger refuse before update on sel_info begin select raise(abort, 'no'); end;");
  stored.MaxNoOfSels = 99;
  EXPECT_EQ(0, db_set_selinfo(db, &stored));
  EXPECT_EQ("1|b|c'd|4|5|f|g|h", row());
  EXPECT_EQ(Lines({execution_failed(), trace("Selinfo record is already present with that key"), execution_failed(),
                   trace("Successfully update the Selinfo record")}),
            logged());
}

// A record whose texts fill their fields, with text behind each that must not be read: 0x41 is 'A'.
struct FullRecord {
  sel_info_rec record{1, {}, {}, 0x41414141, 0x41414141, {}, {}, {}};
  char behind[8] = "behind";

  explicit FullRecord(char filling) {
    std::memset(record.CompletionCode, filling, sizeof(record.CompletionCode));
    std::memset(record.Version, filling, sizeof(record.Version));
    std::memset(record.AddTimeStamp, filling, sizeof(record.AddTimeStamp));
    std::memset(record.EraseTimeStamp, filling, sizeof(record.EraseTimeStamp));
    std::memset(record.OperationSupport, filling, sizeof(record.OperationSupport));
  }
};

TEST_F(SelInfo, SetReadsFullTextFieldsNoFurtherThanTheirWidthInBothStatements) {
  for (const char filling : {'x', '\''}) {
    SCOPED_TRACE(filling);
    const std::string half(64, filling);
    const std::string full(128, filling);
    FullRecord stored(filling);
    store(stored.record);
    const std::string texts = half + "|" + half + "|1094795585|1094795585|" + full + "|" + full + "|" + half;
    EXPECT_EQ("1|" + texts, row());
    stored.record.MaxNoOfSels = 2;
    store(stored.record);
    EXPECT_EQ("2|" + texts, row());
    sql("delete from sel_info;");
  }
}

TEST_F(SelInfo, SetStoresEmptyTextsAndTheLimitsOfIntegers) {
  const sel_info_rec stored{INT32_MAX, {}, {}, INT32_MIN, -1, {}, {}, {}};
  store(stored);
  EXPECT_EQ("2147483647|||-2147483648|-1|||", row());
}

}  // namespace
}  // namespace qmv::test
