// The IPMI session, table "ipmi_session".
#include <string>

#include "qmv/sdr.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

class IpmiSession : public DatabaseTest {
 protected:
  IpmiSession() : DatabaseTest("db_sdrd.c") {}

  // The library knows the columns by their index only, so they have no telling names here.
  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table ipmi_session (a, b, c, d, e, f, g, h, i);");
  }

  std::int32_t get() { return db_get_ipmi_session_info(db, record.out()); }

  Texts texts() const {
    return {field(record->SessionText0), field(record->SessionText2), field(record->SessionText3),
            field(record->SessionText4), field(record->SessionText5), field(record->SessionText6),
            field(record->SessionText7), field(record->SessionText8)};
  }

  static constexpr std::size_t kWidths[] = {128, 256, 256, 64, 64, 64, 64, 64};

  Owned<ipmi_session_rec> record;
};

TEST_F(IpmiSession, GetReadsEveryColumnIntoItsField) {
  sql("insert into ipmi_session values ('t0', 1, 't2', 't3', 't4', 't5', 't6', 't7', 't8');");
  EXPECT_EQ(0, get());
  EXPECT_EQ(1, record->SessionValue1);
  EXPECT_EQ(Texts({"t0", "t2", "t3", "t4", "t5", "t6", "t7", "t8"}), texts());
  EXPECT_EQ(Texts({"select * from ipmi_session ;"}), statements());
  EXPECT_EQ(Lines({trace("Get Device record from database"), trace("Successfully got the Device record")}), logged());
}

TEST_F(IpmiSession, GetReadsTheFirstRowOnly) {
  sql("insert into ipmi_session (a, b) values ('first', 1), ('second', 2);");
  EXPECT_EQ(0, get());
  EXPECT_EQ("first", field(record->SessionText0));
  EXPECT_EQ(Lines({trace("Get Device record from database"), trace("Successfully got the Device record")}), logged());
}

TEST_F(IpmiSession, GetOfAnEmptyTableReturnsOneAndLeavesThePointer) {
  ipmi_session_rec untouched;
  ipmi_session_rec* session = &untouched;
  EXPECT_EQ(1, db_get_ipmi_session_info(db, &session));
  EXPECT_EQ(&untouched, session);
  EXPECT_EQ(Lines({trace("Fail to get the Device record")}), logged());
}

TEST_F(IpmiSession, GetWithoutAStatementReturnsOne) {
  sql("insert into ipmi_session (b) values (1);");
  boundary().miss_statement = 1;
  EXPECT_EQ(1, get());
  EXPECT_EQ(nullptr, record.get());
  EXPECT_EQ(Lines({trace("Fail to get Device record. SQLite stmt is NULL")}), logged());
}

TEST_F(IpmiSession, GetWithoutATableReturnsOne) {
  sql("drop table ipmi_session;");
  EXPECT_EQ(1, get());
  EXPECT_EQ(nullptr, record.get());
  EXPECT_EQ(Lines({no_such_table("ipmi_session")}), logged());
}

TEST_F(IpmiSession, GetReturnsOneForAnotherCompileErrorToo) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  EXPECT_EQ(1, get());
  EXPECT_EQ(1u, logged().size());
}

TEST_F(IpmiSession, AllocationFailureReturnsOneWithNullAndLeavesTheStatementOpen) {
  sql("insert into ipmi_session (b) values (1);");
  boundary().fail_allocation = 1;
  ipmi_session_rec untouched;
  ipmi_session_rec* session = &untouched;
  EXPECT_EQ(1, db_get_ipmi_session_info(db, &session));
  EXPECT_EQ(nullptr, session);
  EXPECT_EQ(Lines({trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_F(IpmiSession, GetReadsARowOfNullsAsZeros) {
  sql("insert into ipmi_session (b) values (NULL);");
  EXPECT_EQ(0, get());
  EXPECT_EQ(std::string(sizeof(ipmi_session_rec), '\0'),
            std::string(reinterpret_cast<const char*>(record.get()), sizeof(ipmi_session_rec)));
  logged();
}

// Each column has a letter of its own, so a text that left its field would show in the next one.
class IpmiSessionWidths : public IpmiSession, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(AroundTheWidths, IpmiSessionWidths, testing::Values(-1, 0, 1, 1000));

TEST_P(IpmiSessionWidths, TextsAreCutAtTheWidthOfEachFieldAndNotBefore) {
  sql("insert into ipmi_session (b) values (77);");
  Texts expected;
  for (const std::size_t width : kWidths) {
    const std::string column(1, "acdefghi"[expected.size()]);
    const std::string text(width + static_cast<std::size_t>(GetParam()), column[0]);
    sql("update ipmi_session set " + column + " = '" + text + "';");
    expected.push_back(text.substr(0, width));
  }
  EXPECT_EQ(0, get());
  EXPECT_EQ(expected, texts());
  EXPECT_EQ(77, record->SessionValue1);
  logged();
}

}  // namespace
}  // namespace qmv::test
