// Every directive of SQLite's formatter in every text that is formatted a second time, without an argument to take.
#include <algorithm>
#include <string>
#include <vector>

#include "hostile/hostile_test.h"
#include "torture/guarded.h"

namespace qmv::test {
namespace {

// Each yields nothing, whatever it would do with an argument: read it, write through it, release it.
constexpr const char* kDirectives[] = {
    "%d", "%i", "%u", "%o", "%x", "%X", "%c", "%e",   "%E",  "%f",  "%g",     "%G",        "%s",
    "%q", "%Q", "%w", "%z", "%n", "%p", "%r", "%lld", "%ld", "%*d", "%-*.*f", "%#+ 0!,5d", "%.99999999999s"};

class Directives : public HostileTest, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Each, Directives, testing::ValuesIn(kDirectives));

// The texts of callers are at the end of a page.
class CallersText {
 public:
  explicit CallersText(const std::string& text) : memory_(text.size() + 1, 0) {
    std::copy(text.begin(), text.end(), memory_.bytes());
  }
  operator const char*() const { return memory_.bytes(); }

 private:
  Guarded memory_;
};

std::vector<std::string> column_names(const std::string& table) {
  column_name_node* head = nullptr;
  EXPECT_EQ(0, GetColumnNames(&head, CallersText("any"), CallersText(table)));
  std::vector<std::string> names;
  for (const column_name_node* node = head; node != nullptr; node = node->Next) names.emplace_back(node->ColumnName);
  free_column_names(head);
  return names;
}

TEST_P(Directives, AreLeftOutOfATableWhoseColumnsAreListed) {
  sql("create table ab (one, two);");
  EXPECT_EQ(std::vector<std::string>({"one", "two"}), column_names(std::string("a") + GetParam() + "b"));
}

TEST_P(Directives, AreLeftOutOfAColumnAndATableWhoseValueIsRead) {
  sql("create table ab (one); insert into ab values (1);");
  const Guarded value(256, '?');
  EXPECT_EQ(0, GetColumnValues(CallersText("any"), value.bytes(), CallersText(std::string("'c") + GetParam() + "d'"),
                               CallersText(std::string("a") + GetParam() + "b"), 1));
  EXPECT_STREQ("cd", value.bytes());
}

TEST_P(Directives, AreLeftOutOfTheIdentifierOfAnExpiredJob) {
  make_tables("tmp_cim");
  const std::string identifier = std::string("a") + GetParam() + "b";
  sql("insert into concrete_job (InstanceID, JobState, RemovalTime) values ('" + identifier + "', 7, 1);");
  for (const std::string& source : {identifier, std::string("ab"), std::string("a")})
    sql("insert into error_info (ErrorSource) values ('" + source + "');");
  db_clear_expired_concretejob(1);
  EXPECT_EQ("0", values("select count(*) from concrete_job;").at(0));
  // The errors of "ab" are deleted in place of the job's own.
  EXPECT_EQ(std::vector<std::string>({identifier, "a"}), values("select ErrorSource from error_info order by rowid;"));
}

// A pair of signs is one sign.
using PairsOfSigns = HostileTest;

TEST_F(PairsOfSigns, AreOneSignInATableWhoseColumnsAreListed) {
  sql("create table 'a%b' (one, two);");
  EXPECT_EQ(std::vector<std::string>({"one", "two"}), column_names("'a%%b'"));
}

TEST_F(PairsOfSigns, AreOneSignInAColumnAndATableWhoseValueIsRead) {
  sql("create table 'a%b' (one); insert into 'a%b' values (1);");
  const Guarded value(256, '?');
  ASSERT_EQ(0, GetColumnValues(CallersText("any"), value.bytes(), CallersText("17 %% 5"), CallersText("'a%%b'"), 1));
  EXPECT_STREQ("2", value.bytes());
}

// A sign at the text's end takes what the statement goes on with; what is no directive then ends the statement.
class LoneSigns : public HostileTest {};

TEST_F(LoneSigns, EndAListOfColumns) {
  sql("create table a (one);");
  column_name_node* head = nullptr;
  EXPECT_EQ(1, GetColumnNames(&head, "any", CallersText("a%")));  // "PRAGMA table_info(a"
  EXPECT_EQ(nullptr, head);
}

// SQLite keeps these directives to itself: for others the text ends there.
TEST_F(LoneSigns, AndSqlitesOwnDirectivesEndAListOfColumns) {
  sql("create table a (one);");
  for (const char* table : {"a%S", "a%T"}) {
    column_name_node* head = nullptr;
    EXPECT_EQ(1, GetColumnNames(&head, "any", CallersText(table)));
    EXPECT_EQ(nullptr, head);
  }
}

TEST_F(LoneSigns, EndAStatementBehindItsTable) {
  sql("create table a (one); insert into a values ('first'); insert into a values ('second');");
  const Guarded value(256, '?');
  EXPECT_EQ(0, GetColumnValues("any", value.bytes(), "one", CallersText("a%"), 2));  // without its row
  EXPECT_STREQ("first", value.bytes());
  EXPECT_EQ(1, GetColumnValues("any", value.bytes(), CallersText("'one%"), "a", 2));
}

TEST_F(LoneSigns, EndTheDeletionOfAJobsErrors) {
  make_tables("tmp_cim");
  sql("insert into concrete_job (InstanceID, JobState, RemovalTime) values ('a%', 7, 1), ('b%%', 7, 1);"
      "insert into error_info (ErrorSource) values ('a'), ('a%'), ('b%'), ('b%%');");
  db_clear_expired_concretejob(1);
  EXPECT_EQ(std::vector<std::string>({"a", "a%", "b%%"}), values("select ErrorSource from error_info order by rowid;"));
}

// A statement is cut at 255 characters; the cut can leave a sign alone, or half of a pair.
TEST_F(LoneSigns, CanBeLeftByACut) {
  for (std::size_t length = 225; length <= 260; ++length) {
    for (const char* sign : {"%", "%%", "%l", "%5.", "%*"}) {
      column_name_node* head = nullptr;
      std::string table(length, 'a');
      GetColumnNames(&head, "any", CallersText(table + sign));
      EXPECT_EQ(nullptr, head);
      const Guarded value(256, 0);
      GetColumnValues("any", value.bytes(), CallersText(table + sign), CallersText(table), 1);
      EXPECT_STREQ("", value.bytes());
    }
  }
}

}  // namespace
}  // namespace qmv::test
