#include "losses.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

#include "inventory.h"
#include "records.h"
#include "rows.h"
#include "text.h"

namespace qmvctl {

namespace {

using Notes = std::vector<std::string>;

template <class Record>
std::string_view bytes_of(const Record& record) {
  return {reinterpret_cast<const char*>(&record), sizeof record};
}

// The rows that an import of the dumps would not give.
template <class Record>
void compare(const std::vector<Record>& stored, const std::vector<Record>& imported, auto name, Notes& notes) {
  std::vector<std::string_view> known;
  for (const Record& record : imported) known.push_back(bytes_of(record));
  std::sort(known.begin(), known.end());
  for (const Record& row : stored) {
    if (!std::binary_search(known.begin(), known.end(), bytes_of(row))) {
      notes.push_back(name(row) + " is not in the dump as it is in the table");
    }
  }
}

void clear_strings(fru_rec& fru) {
  const auto clear = [](auto&... fields) { (std::memset(fields, 0, sizeof fields), ...); };
  clear(fru.ChassisSerNumber, fru.ChassisPartNumber, fru.ChassisCustFields, fru.ProdSerNumber, fru.ProdPartNumber,
        fru.ProdMfrName, fru.BrdSerNumber, fru.BrdPartNumber, fru.BrdMfrName);
}

// The FRUs and sensors that a database holds.
struct Stored {
  explicit Stored(const Database& database)
      : compact_sensors(qmvctl::compact_sensors(database)),
        full_sensors(qmvctl::full_sensors(database)),
        frus(qmvctl::frus(database)) {}

  // Leaves out the strings of FRUs whose images are not among the dumps, with a note of each that has some.
  void leave_strings_out(const Dumps& dumps, Notes& notes) {
    for (fru_rec& fru : frus) {
      const bool has_image = std::any_of(dumps.frus.begin(), dumps.frus.end(),
                                         [&](const Dumps::Image& image) { return is_controllers_fru(fru, image.id); });
      if (has_image) continue;
      const fru_rec before = fru;
      clear_strings(fru);
      if (bytes_of(fru) != bytes_of(before)) {
        notes.push_back("the strings of FRU " + std::to_string(fru.FruIDSlaveAddr) + " are in none of these dumps");
      }
      for (auto& sensor : compact_sensors) leave_strings_out(fru, sensor.FruRecord);
      for (auto& sensor : full_sensors) leave_strings_out(fru, sensor.FruRecord);
    }
  }

  void compare_with(const Inventory& imported, Notes& notes) const {
    const auto sensor_name = [](const auto& sensor) { return "sensor " + std::string(text_of(sensor.DeviceID)); };
    compare(compact_sensors, imported.compact_sensors, sensor_name, notes);
    compare(full_sensors, imported.full_sensors, sensor_name, notes);
    const auto fru_name = [](const fru_rec& fru) { return "FRU " + std::to_string(fru.FruIDSlaveAddr); };
    compare(frus, imported.frus, fru_name, notes);
  }

  std::vector<compact_sdr_rec> compact_sensors;
  std::vector<full_sdr_rec> full_sensors;
  std::vector<fru_rec> frus;

 private:
  static void leave_strings_out(const fru_rec& of, fru_rec& fru) {
    if (has_same_address(of, fru)) clear_strings(fru);
  }
};

void compare_event_log(const Database& database, const EventLog& imported, Notes& notes) {
  const auto name = [](const sel_rec& event) { return "event " + std::to_string(event.RecordID); };
  compare(events(database), imported.events, name, notes);
  sel_info_rec* info = nullptr;
  const bool has_info = db_get_selinfo(database.handle(), &info) == 0;
  const std::unique_ptr<sel_info_rec, void (*)(void*)> owned(info, db_freemem);
  if (!has_info) return;
  const auto description = [](const sel_info_rec&) { return std::string("the description of the event log"); };
  compare<sel_info_rec>({*info}, {shifted(imported.info)}, description, notes);
}

}  // namespace

Notes losses(const Database& database, const Dumps& dumps) {
  Notes notes;
  const Inventory imported = gather(database, dumps);
  if (dumps.repository || !dumps.frus.empty()) {
    Stored stored(database);
    if (dumps.repository) stored.leave_strings_out(dumps, notes);
    stored.compare_with(imported, notes);
  }
  if (dumps.repository) {
    const auto name = [](const auto& locator) {
      return "the locator of FRU " + std::to_string(locator.FruIDSlaveAddr);
    };
    compare(fru_locators(database), *imported.fru_locators, name, notes);
  }
  if (dumps.event_log) compare_event_log(database, *imported.event_log, notes);
  return notes;
}

}  // namespace qmvctl
