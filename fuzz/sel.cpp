// Event logs of any bytes.
#include <set>

#include "sel_decoder.h"
#include "texts.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  using qmv::fuzz::require;
  try {
    const qmvctl::EventLog log = qmvctl::decode_event_log({"file", {bytes, bytes + size}});
    std::set<std::int32_t> records;
    for (const sel_rec& event : log.events) {
      qmv::fuzz::require_text(event.GeneratorID);
      require(event.RecordID > 0 && event.RecordID < 0xFFFF, "an event has a record ID");
      require(records.insert(event.RecordID).second, "no two events share a record ID");
    }
    require(log.info.RecCnt == static_cast<std::int32_t>(log.events.size()), "the events are counted");
    qmv::fuzz::require_text(log.info.AddTimeStamp);
    qmv::fuzz::require_text(log.info.Version);
  } catch (const qmvctl::InputError&) {
  }
  return 0;
}
