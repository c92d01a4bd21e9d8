// What the compiler refuses: statements and log lines that do not fit the values that fill them.
#include "core/fits.h"

#include <gtest/gtest.h>

namespace qmv::test {
namespace {

using Text = const char*;
using Number = std::int32_t;

TEST(Conversions, AreTheLettersInOrderAndThenNone) {
  Conversions conversions("[%s:%d] '%.256q'%");
  for (const char letter : {'s', 'd', 'q', '\0', '\0'}) EXPECT_EQ(letter, conversions.next().letter);
}

TEST(Conversions, HaveAPrecisionAndAQuoteInFront) {
  Conversions conversions("%.109q '%q' '%i x%.90s");
  const Conversion expected[] = {{'q', 109, false}, {'q', 0, true}, {'i', 0, true}, {'s', 90, false}};
  for (const auto& [letter, precision, quoted] : expected) {
    const Conversion found = conversions.next();
    EXPECT_EQ(letter, found.letter);
    EXPECT_EQ(precision, found.precision);
    EXPECT_EQ(quoted, found.quoted);
  }
}

TEST(LogLines, BeginWithTheirPlaceAndHaveTheConversionsOfTheirValues) {
  EXPECT_TRUE(is_log_line<>("[%s:%d]No records found"));
  EXPECT_TRUE((is_log_line<'s', 'd'>("[%s:%d]of %s: %d")));
  for (const Text text : {"", "%s:%d]", "[%d:%d]", "[%s %d]", "[%s:%s]", "[%s:%d ", "[%s:%d]%d"}) {
    EXPECT_FALSE(is_log_line<>(text)) << text;
  }
  for (const Text text : {"[%s:%d]", "[%s:%d]%s", "[%s:%d]%d%d"}) EXPECT_FALSE(is_log_line<'d'>(text)) << text;
}

TEST(LogLines, TakeTextsForTextsAndNumbersForNumbers) {
  EXPECT_TRUE((kMatches<'s', Text> && kMatches<'d', Number>));
  EXPECT_FALSE((kMatches<'s', Number> || kMatches<'d', Text> || kMatches<'d', long long> || kMatches<'x', Number>));
}

TEST(Statements, FitTheirTableAndValues) {
  EXPECT_TRUE(fits<>("delete from %q;"));
  EXPECT_TRUE((fits<Number, Number>("select * from %q where A=%i and B=%d;")));
  EXPECT_TRUE((fits<Text, Number, Text>("update %q set A='%q' where B=%i and C='%s';")));
}

TEST(Statements, WithoutTheirTableDoNotFit) {
  EXPECT_FALSE(fits<>("delete from sel;"));
  EXPECT_FALSE(fits<>("delete from %s;"));
  EXPECT_FALSE(fits<>("delete from %.64q;"));
}

TEST(Statements, WithOtherConversionsThanTheirValuesDoNotFit) {
  for (const Text text : {"from %q where A=%q;", "from %q where A='%i';", "from %q where A='%.64q';",
                          "from %q where A='%c';", "from %q;", "from %q where A='%q' and B='%q';"}) {
    EXPECT_FALSE(fits<Text>(text)) << text;
  }
  for (const Text text : {"from %q where A='%q';", "from %q where A=%u;", "from %q;", "from %q where A=%i and B=%i;"})
    EXPECT_FALSE(fits<Number>(text)) << text;
}

TEST(Texts, OfRecordsAreQuotedAndBoundedByTheirWidth) {
  EXPECT_TRUE(takes_text({'q', 64, true}, 64));
  EXPECT_TRUE(takes_text({'s', 64, true}, 64));
  EXPECT_FALSE(takes_text({'q', 64, false}, 64));
  EXPECT_FALSE(takes_text({'q', 0, true}, 64));
  EXPECT_FALSE(takes_text({'q', 65, true}, 64));
  EXPECT_FALSE(takes_text({'i', 64, true}, 64));
}

}  // namespace
}  // namespace qmv::test
