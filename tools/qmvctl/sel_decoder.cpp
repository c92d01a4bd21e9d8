#include "sel_decoder.h"

#include <set>

#include "sel_record.h"
#include "text.h"

namespace qmvctl {

namespace {

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
  for (size_t at = 0; at < dump.size(); at += kEventSize) {
    const Input record = dump.piece(at, kEventSize, "an event record");
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
