#include "sel_decoder.h"

#include <gtest/gtest.h>

#include <cstring>

#include "bytes.h"

namespace qmvctl::test {
namespace {

Bytes event_record(uint16_t id, uint8_t type = 0x02) {
  return {static_cast<uint8_t>(id),
          static_cast<uint8_t>(id >> 8),
          type,
          0x13,
          0x14,
          0x15,
          0x16,
          0x2C,
          0x60,
          0x04,
          0x1A,
          0x1B,
          0xEF,
          0x1D,
          0x1E,
          0x1F};
}

EventLog decode(const Bytes& bytes) {
  return decode_event_log(input(bytes));
}

TEST(EventRecord, FillsEveryMemberFromItsByte) {
  const EventLog log = decode(event_record(0x1110));
  ASSERT_EQ(log.events.size(), 1u);
  const sel_rec& event = log.events[0];
  EXPECT_EQ(event.RecordID, 0x1110);
  EXPECT_EQ(event.RecordType, 2);
  EXPECT_EQ(event.TimeStamp, 0x16151413);
  EXPECT_STREQ(event.GeneratorID, "2C");
  EXPECT_EQ(event.EvMRev, 4);
  EXPECT_EQ(event.SensorType, 0x1A);
  EXPECT_EQ(event.SensorNum, 0x1B);
  EXPECT_EQ(event.EventDir, 1);
  EXPECT_EQ(event.EventType, 0x6F);
  EXPECT_EQ(event.EventData1, 0x1D);
  EXPECT_EQ(event.EventData2, 0x1E);
  EXPECT_EQ(event.EventData3, 0x1F);
}

TEST(EventRecord, TimeBeyondThirtyOneBitsKeepsItsBits) {
  Bytes record = event_record(1);
  record[3] = record[4] = record[5] = record[6] = 0xFF;
  EXPECT_EQ(decode(record).events.at(0).TimeStamp, -1);
}

TEST(EventLog, DescribesItself) {
  const EventLog log = decode(event_record(1) + event_record(2));
  EXPECT_EQ(log.info.RecCnt, 2);
  EXPECT_STREQ(log.info.Version, "51");
  EXPECT_STREQ(log.info.CompletionCode, "00");
  EXPECT_STREQ(log.info.AddTimeStamp, "370480147");  // 16151413h
  EXPECT_STREQ(log.info.EraseTimeStamp, "");
  EXPECT_EQ(log.info.MaxNoOfSels, 0);
}

TEST(EventLog, HoldsTypesBelowC0AndCountsOemRecords) {
  const EventLog log = decode(event_record(1, 0x03) + event_record(2, 0xC0) + event_record(3, 0xFF));
  ASSERT_EQ(log.events.size(), 1u);
  EXPECT_EQ(log.events[0].RecordType, 3);
  EXPECT_EQ(log.not_held.at("OEM event"), 2);
}

TEST(EventLog, MayBeEmpty) {
  EXPECT_TRUE(decode({}).events.empty());
  EXPECT_STREQ(decode({}).info.AddTimeStamp, "");
}

TEST(EventLog, CutAnywhereInARecordIsAnErrorWithFileAndOffset) {
  const Bytes whole = event_record(1) + event_record(2);
  for (size_t size = 1; size < whole.size(); ++size) {
    if (size == 16) continue;
    const std::string error = error_of([&] { decode(Bytes(whole.begin(), whole.begin() + static_cast<long>(size))); });
    EXPECT_EQ(error, "file: offset " + std::string(size < 16 ? "0" : "16") + ": an event record needs 16 bytes, but " +
                         std::to_string(size % 16) + " are there");
  }
}

TEST(EventLog, ReservedRecordIdIsAnError) {
  EXPECT_EQ(error_of([] { decode(event_record(1) + event_record(0)); }), "file: offset 16: record ID 0 is reserved");
  EXPECT_EQ(error_of([] { decode(event_record(0xFFFF)); }), "file: offset 0: record ID 65535 is reserved");
}

TEST(EventLog, RepeatedRecordIdIsAnError) {
  EXPECT_EQ(error_of([] { decode(event_record(7) + event_record(7)); }), "file: offset 16: record ID 7 occurs twice");
}

}  // namespace
}  // namespace qmvctl::test
