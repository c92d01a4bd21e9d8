#include "fru_decoder.h"

#include <gtest/gtest.h>

#include "bytes.h"

namespace qmvctl::test {
namespace {

fru_rec decode(const Bytes& image) {
  fru_rec fru{};
  decode_fru(input(image), fru);
  return fru;
}

Bytes whole_image() {
  return fru_image(
      chassis_area(ascii_field("C-Part") + ascii_field("C-Serial") + ascii_field("Custom 1") + ascii_field("Custom 2")),
      board_area(ascii_field("B-Maker") + ascii_field("B-Name") + ascii_field("B-Serial") + ascii_field("B-Part") +
                 ascii_field("B-File") + ascii_field("B-Custom")),
      product_area(ascii_field("P-Maker") + ascii_field("P-Name") + ascii_field("P-Part") + ascii_field("P-Version") +
                   ascii_field("P-Serial") + ascii_field("P-Asset") + ascii_field("P-File") + ascii_field("P-Custom")));
}

Bytes multi_record(const Bytes& data, bool is_last) {
  Bytes header{0x02, static_cast<uint8_t>(is_last ? 0x82 : 0x02), static_cast<uint8_t>(data.size()), checksum(data)};
  header.push_back(checksum(header));
  return header + data;
}

Bytes image_with(const Bytes& multi_records) {
  Bytes image = fru_image({}, {}, {}, Bytes{0});
  image.pop_back();
  return image + multi_records;
}

TEST(FruImage, FillsEveryStringFromItsField) {
  const fru_rec fru = decode(whole_image());
  EXPECT_STREQ(fru.ChassisPartNumber, "C-Part");
  EXPECT_STREQ(fru.ChassisSerNumber, "C-Serial");
  EXPECT_STREQ(fru.ChassisCustFields, "Custom 1, Custom 2");
  EXPECT_STREQ(fru.BrdMfrName, "B-Maker");
  EXPECT_STREQ(fru.BrdSerNumber, "B-Serial");
  EXPECT_STREQ(fru.BrdPartNumber, "B-Part");
  EXPECT_STREQ(fru.ProdMfrName, "P-Maker");
  EXPECT_STREQ(fru.ProdPartNumber, "P-Part");
  EXPECT_STREQ(fru.ProdSerNumber, "P-Serial");
}

TEST(FruImage, ReplacesStringsAndKeepsTheAddress) {
  fru_rec fru{};
  fru.FruIDSlaveAddr = 7;
  fru.EntityID = 10;
  std::snprintf(fru.DevIdStr, sizeof fru.DevIdStr, "PSU");
  std::snprintf(fru.BrdMfrName, sizeof fru.BrdMfrName, "a longer name than before");
  std::snprintf(fru.ChassisCustFields, sizeof fru.ChassisCustFields, "old");
  decode_fru(input(fru_image({}, board_area(ascii_field("New")), {})), fru);
  EXPECT_STREQ(fru.BrdMfrName, "New");
  EXPECT_STREQ(fru.ChassisCustFields, "");
  EXPECT_EQ(fru.FruIDSlaveAddr, 7);
  EXPECT_EQ(fru.EntityID, 10);
  EXPECT_STREQ(fru.DevIdStr, "PSU");
}

TEST(FruImage, WithoutAreasLeavesTheStringsEmpty) {
  const fru_rec fru = decode(fru_image({}, {}, {}));
  EXPECT_STREQ(fru.BrdMfrName, "");
  EXPECT_STREQ(fru.ProdMfrName, "");
}

TEST(FruImage, MayEndItsFieldsEarly) {
  const fru_rec fru = decode(fru_image({}, {}, product_area(ascii_field("Maker"))));
  EXPECT_STREQ(fru.ProdMfrName, "Maker");
  EXPECT_STREQ(fru.ProdSerNumber, "");
}

TEST(FruImage, FieldsMayBeEmpty) {
  const fru_rec fru =
      decode(fru_image({}, {}, product_area(Bytes{0xC0, 0x00, 0x40} + Bytes{0x80} + ascii_field("Serial"))));
  EXPECT_STREQ(fru.ProdMfrName, "");
  EXPECT_STREQ(fru.ProdPartNumber, "");
  EXPECT_STREQ(fru.ProdSerNumber, "Serial");
}

TEST(FruImage, ReadsEveryEncoding) {
  const Bytes binary{0x02, 0xBE, 0xEF};
  const Bytes bcd_plus{0x42, 0x12, 0xB3};
  const Bytes six_bit{0x83, 0x29, 0xDC, 0xA6};
  const fru_rec fru = decode(fru_image({}, board_area(binary + ascii_field("Name") + bcd_plus + six_bit),
                                       product_area(ascii_field("\xE4\xB0"))));
  EXPECT_STREQ(fru.BrdMfrName, "BEEF");
  EXPECT_STREQ(fru.BrdSerNumber, "12-3");
  EXPECT_STREQ(fru.BrdPartNumber, "IPMI");
  EXPECT_STREQ(fru.ProdMfrName, "\u00E4\u00B0");
}

TEST(FruImage, EightBitTextOfAnotherLanguageIsUnicode) {
  constexpr uint8_t kGerman = 31;
  constexpr uint8_t kEnglish = 25;
  const Bytes field{0xC4, 'A', 0, 0xAC, 0x20};
  EXPECT_STREQ(decode(fru_image({}, board_area(field, kGerman), {})).BrdMfrName, "A\u20AC");
  EXPECT_STREQ(decode(fru_image({}, {}, product_area(field, kGerman))).ProdMfrName, "A\u20AC");
  EXPECT_STREQ(decode(fru_image({}, board_area(ascii_field("Maker"), kEnglish), {})).BrdMfrName, "Maker");
}

TEST(FruImage, CustomFieldsThatDoNotFitAreCutAndReported) {
  Bytes fields = ascii_field("Part") + ascii_field("Serial");
  for (int i = 0; i < 5; ++i) fields = fields + ascii_field(std::string(60, 'x'));
  fru_rec fru{};
  const auto notes = decode_fru(input(fru_image(chassis_area(fields), {}, {})), fru);
  EXPECT_EQ(strnlen(fru.ChassisCustFields, 256), 255u);
  ASSERT_EQ(notes.size(), 1u);
  EXPECT_EQ(notes[0], "the custom fields of the chassis area are cut to 255 bytes");
}

TEST(FruImage, WrongChecksumOfTheCommonHeaderIsAnError) {
  Bytes image = whole_image();
  image[7] ^= 1;
  EXPECT_EQ(error_of([&] { decode(image); }), "file: offset 7: the checksum of the common header is wrong");
}

TEST(FruImage, AnyChangedByteOfAnAreaIsAnError) {
  const Bytes whole = whole_image();
  for (size_t i = 0; i < whole.size(); ++i) {
    Bytes image = whole;
    image[i] ^= 0x01;
    EXPECT_NE(error_of([&] { decode(image); }), "") << "byte " << i;
  }
}

TEST(FruImage, WrongChecksumOfAnAreaNamesTheArea) {
  Bytes image = fru_image({}, board_area(ascii_field("Maker")), {});
  image.back() ^= 1;
  EXPECT_EQ(error_of([&] { decode(image); }), "file: offset 23: the checksum of the board area is wrong");
}

TEST(FruImage, OtherFormatVersionsAreErrors) {
  Bytes image = whole_image();
  image[0] += 1;
  image[7] -= 1;
  EXPECT_EQ(error_of([&] { decode(image); }),
            "file: offset 0: the common header has format version 02h instead of 01h");
  image = whole_image();
  image[8] = 2;
  EXPECT_EQ(error_of([&] { decode(image); }), "file: offset 8: the chassis area has format version 02h instead of 01h");
}

TEST(FruImage, AreaOfLengthZeroIsAnError) {
  Bytes image = whole_image();
  image[9] = 0;
  EXPECT_EQ(error_of([&] { decode(image); }), "file: offset 9: the chassis area says that it has 0 bytes");
}

TEST(FruImage, FieldBeyondItsAreaIsAnError) {
  Bytes board = board_area(ascii_field("Maker"));
  board[6] = 0xC0 | 62;
  board.back() = static_cast<uint8_t>(board.back() + 0xC5 - board[6]);
  EXPECT_EQ(error_of([&] { decode(fru_image({}, board, {})); }),
            "file: offset 15: a field of the board area needs 62 bytes, but 8 are there");
}

TEST(FruImage, AreaWithoutRoomForTheEndMarkIsRead) {
  Bytes product{1, 1, 0, 0xC3, 'A', 'B', 'C'};
  product.push_back(checksum(product));
  EXPECT_STREQ(decode(fru_image({}, {}, product)).ProdMfrName, "ABC");
}

TEST(FruImage, CutAnywhereIsAnErrorWithFileAndOffset) {
  const Bytes whole = whole_image();
  for (size_t size = 0; size < whole.size(); ++size) {
    const std::string error = error_of([&] { decode(Bytes(whole.begin(), whole.begin() + static_cast<long>(size))); });
    EXPECT_EQ(error.rfind("file: offset ", 0), 0u) << size;
  }
}

TEST(FruImage, MultiRecordsAreCheckedToTheLastOne) {
  const Bytes first = multi_record({1, 2, 3}, false);
  const Bytes last = multi_record({4, 5}, true);
  EXPECT_EQ(error_of([&] { decode(image_with(first + last + Bytes{0xFF})); }), "");
  for (size_t i = 0; i < (first + last).size(); ++i) {
    Bytes records = first + last;
    records[i] ^= 0x01;
    EXPECT_NE(error_of([&] { decode(image_with(records)); }), "") << "byte " << i;
  }
}

TEST(FruImage, MultiRecordErrorsSayWhichChecksum) {
  Bytes records = multi_record({1, 2, 3}, true);
  records[4] ^= 1;
  EXPECT_EQ(error_of([&] { decode(image_with(records)); }),
            "file: offset 12: the header checksum of a multi-record is wrong");
  records = multi_record({1, 2, 3}, true);
  records[5] ^= 1;
  EXPECT_EQ(error_of([&] { decode(image_with(records)); }), "file: offset 11: the checksum of a multi-record is wrong");
}

TEST(FruImage, MultiRecordsThatDoNotEndAreAnError) {
  EXPECT_EQ(error_of([&] { decode(image_with(multi_record({1}, false))); }),
            "file: offset 14: the header of a multi-record needs 5 bytes, but 0 are there");
}

}  // namespace
}  // namespace qmvctl::test
