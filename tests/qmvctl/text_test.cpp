#include "text.h"

#include <gtest/gtest.h>

#include "bytes.h"

namespace qmvctl::test {
namespace {

IdString id_string(Bytes bytes) {
  return read_id_string(input(std::move(bytes)), 0);
}

TEST(Text, Latin1BecomesUtf8) {
  EXPECT_EQ(latin1_text(input({'T', 0xE4, 0xB0, 'C'})), "T\u00E4\u00B0C");
}

TEST(Text, ZeroEndsAnEightBitText) {
  EXPECT_EQ(latin1_text(input({'A', 'B', 0, 'C'})), "AB");
}

TEST(Text, UnicodeIsLowByteFirst) {
  EXPECT_EQ(unicode_text(input({0x41, 0x00, 0xE4, 0x00, 0xAC, 0x20})), "A\u00E4\u20AC");
}

TEST(Text, HalfOfASurrogatePairBecomesTheReplacementCharacter) {
  EXPECT_EQ(unicode_text(input({0x34, 0xD8, 0x41, 0x00})), "\uFFFDA");
}

TEST(Text, OddLastByteOfUnicodeIsNoCharacter) {
  EXPECT_EQ(unicode_text(input({0x41, 0x00, 0x42})), "A");
}

TEST(Text, BcdPlusTakesTheUpperDigitFirst) {
  EXPECT_EQ(bcd_plus_text(input({0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF})), "0123456789 -.:,_");
}

TEST(Text, SixBitTextTakesTheLowestBitsFirst) {
  EXPECT_EQ(six_bit_text(input({0x29, 0xDC, 0xA6})), "IPMI");  // the standard's own example
}

TEST(Text, SixBitTextOfAllCharacters) {
  Bytes packed;
  for (unsigned first = 0; first < 64; first += 4) {
    const unsigned bits = first | (first + 1) << 6 | (first + 2) << 12 | (first + 3) << 18;
    packed =
        packed + Bytes{static_cast<uint8_t>(bits), static_cast<uint8_t>(bits >> 8), static_cast<uint8_t>(bits >> 16)};
  }
  EXPECT_EQ(six_bit_text(input(packed)), " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_");
}

TEST(Text, HexTextHasTwoDigitsAByte) {
  EXPECT_EQ(hex_text(input({0x0A, 0xFF, 0x10})), "0AFF10");
}

TEST(IdString, EightBitTextIsReadToItsLength) {
  EXPECT_EQ(id_string({0xC3, 'F', 'a', 'n', 'X'}).text, "Fan");
  EXPECT_EQ(id_string({0xC3, 'F', 'a', 'n', 'X'}).length, 3);
}

TEST(IdString, BcdPlusLengthCountsCharacters) {
  EXPECT_EQ(id_string({0x43, 0x12, 0x34}).text, "123");
}

TEST(IdString, SixBitLengthCountsCharacters) {
  EXPECT_EQ(id_string({0x84, 0x29, 0xDC, 0xA6}).text, "IPMI");
  EXPECT_EQ(id_string({0x82, 0x29, 0xDC}).text, "IP");
}

TEST(IdString, UnicodeIsReported) {
  const IdString id = id_string({0x02, 'A', 0, 'B', 0});
  EXPECT_TRUE(id.is_unicode);
  EXPECT_EQ(id.text, "");
}

TEST(IdString, LengthZeroIsAnEmptyText) {
  EXPECT_EQ(id_string({0xC0}).text, "");
  EXPECT_FALSE(id_string({0x00}).is_unicode);
}

TEST(IdString, TextBeyondTheRecordIsAnError) {
  EXPECT_EQ(error_of([] {
              id_string({0xC4, 'F', 'a', 'n'});
            }),
            "file: offset 1: the ID string needs 4 bytes, but 3 are there");
  EXPECT_NE(error_of([] { id_string({0x84, 0x29, 0xDC}); }), "");
  EXPECT_NE(error_of([] { id_string({0x43, 0x12}); }), "");
}

TEST(StoredText, FitsWithItsTerminatingZero) {
  char field[4] = {};
  EXPECT_TRUE(store_text("abc", field));
  EXPECT_STREQ(field, "abc");
}

TEST(StoredText, IsCutToLeaveATerminatingZero) {
  char field[4] = {};
  EXPECT_FALSE(store_text("abcd", field));
  EXPECT_STREQ(field, "abc");
}

TEST(StoredText, IsCutBetweenCharacters) {
  char field[4] = {};
  EXPECT_FALSE(store_text("ab\u00E4", field));
  EXPECT_STREQ(field, "ab");
}

TEST(StoredText, OfFullWidthIsReadWithoutATerminatingZero) {
  const char field[3] = {'a', 'b', 'c'};
  EXPECT_EQ(text_of(field), "abc");
}

}  // namespace
}  // namespace qmvctl::test
