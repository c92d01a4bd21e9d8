// Texts that are formatted a second time, with nothing to take.
#include "core/formatted_twice.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace qmv::test {
namespace {

std::string formatted(std::string text) {
  format_without_arguments(text.data());
  return text.c_str();
}

TEST(FormattedTwice, TextWithoutAPercentSignStays) {
  EXPECT_EQ("", formatted(""));
  EXPECT_EQ("select 'it''s';\n", formatted("select 'it''s';\n"));
}

TEST(FormattedTwice, EveryDirectiveYieldsNothing) {
  for (const char letter : std::string("diuxXocsqQwzpneEfgGr")) {
    EXPECT_EQ("ab", formatted(std::string("a%") + letter + "b")) << letter;
  }
}

TEST(FormattedTwice, FlagsWidthPrecisionAndLengthBelongToTheDirective) {
  for (const char* directive : {"%-+ #!0,d", "%12d", "%.5q", "%12.34q", "%*d", "%.*s", "%*.*f", "%ld", "%lld",
                                "%-012.3lld", "%99999999999999999999d", "%.d", "%*%", "%.*%"}) {
    EXPECT_EQ("ab", formatted(std::string("a") + directive + "b")) << directive;
  }
}

TEST(FormattedTwice, LettersBehindADirectiveStay) {
  EXPECT_EQ("ds", formatted("%dd%ss"));
}

TEST(FormattedTwice, WidthBeforeAPercentSignAddsNoBlanks) {
  EXPECT_EQ("a%b", formatted("a%5%b"));
  EXPECT_EQ("a%b", formatted("a%-999999999%b"));
}

class FormattedLikeSqlite : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Texts, FormattedLikeSqlite,
                         testing::Values("100%", "100%%", "%%%%d", "%%d%%", "a%yb%%", "a%", "a%5", "a%-", "a%.", "a%l",
                                         "a%5.", "a%5.3", "a% yb", "a%'b", "a%;b", "a%5-db", "a%llldb", "a%%%%%%b%kc",
                                         "a%Tb", "a%5Sb", "a% %b", "a%l%b", "a%.2%b", "a%-+ #!0,%b", "a%%b*"));

// SQLite itself may only be asked where there is no directive that would take an argument.
TEST_P(FormattedLikeSqlite, WhereNothingIsTaken) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
  char* expected = sqlite3_mprintf(GetParam());
#pragma GCC diagnostic pop
  EXPECT_STREQ(expected, formatted(GetParam()).c_str());
  sqlite3_free(expected);
}

}  // namespace
}  // namespace qmv::test
