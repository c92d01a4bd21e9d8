#include "sel_decoder.h"

#include <cstdio>
#include <set>

#include "records.h"
#include "text.h"

namespace qmvctl {

namespace {

constexpr size_t kRecordSize = 16;
constexpr int kFirstOemType = 0xC0;
constexpr int kFirstOemTypeWithoutTime = 0xE0;

// IPMI 2.0, table 32-1. The table counts bytes from 1, here they count from 0.
constexpr Field<sel_rec> kEvent[] = {
    {&sel_rec::RecordID, 0, Width::kWord},
    {&sel_rec::RecordType, 2},
    {&sel_rec::TimeStamp, 3, Width::kDword},
    {&sel_rec::EvMRev, 9},
    {&sel_rec::SensorType, 10},
    {&sel_rec::SensorNum, 11},
    {&sel_rec::EventDir, 12, Width::kByte, 0x80, 7},
    {&sel_rec::EventType, 12, Width::kByte, 0x7F},
    {&sel_rec::EventData1, 13},
    {&sel_rec::EventData2, 14},
    {&sel_rec::EventData3, 15},
};
constexpr size_t kGeneratorId = 7;  // low byte; GeneratorID has no room for the channel and LUN in the high one

sel_rec decode_event(const Input& record) {
  sel_rec event{};
  read_fields(record, kEvent, event);
  store_text(hex_text(record.piece(kGeneratorId, 1, "the generator ID")), event.GeneratorID);
  return event;
}

void check_record_id(const Input& record, std::set<int>& known) {
  const int id = record.word(0);
  if (id == 0 || id == 0xFFFF) record.fail(0, "record ID " + std::to_string(id) + " is reserved");
  if (!known.insert(id).second) record.fail(0, "record ID " + std::to_string(id) + " occurs twice");
}

}  // namespace

EventLog decode_event_log(const Input& dump) {
  EventLog log;
  std::set<int> record_ids;
  uint32_t latest = 0;
  for (size_t at = 0; at < dump.size(); at += kRecordSize) {
    const Input record = dump.piece(at, kRecordSize, "an event record");
    check_record_id(record, record_ids);
    const int type = record.byte(2);
    if (type < kFirstOemTypeWithoutTime) latest = record.dword(3);
    if (type < kFirstOemType) {
      log.events.push_back(decode_event(record));
    } else {
      ++log.not_held["OEM event"];
    }
  }
  store_text("00", log.info.CompletionCode);
  store_text("51", log.info.Version);
  log.info.RecCnt = static_cast<int32_t>(log.events.size());
  if (latest != 0) store_text(std::to_string(latest), log.info.AddTimeStamp);
  return log;
}

}  // namespace qmvctl
