#include "export.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "fru_decoder.h"
#include "fru_encoder.h"
#include "records.h"
#include "rows.h"
#include "sdr_encoder.h"
#include "sel_record.h"
#include "selection.h"
#include "text.h"

namespace qmvctl {

namespace {

using Notes = std::vector<std::string>;

std::vector<fru_locator_sdr_rec> fru_locators(const Database& database) {
  std::vector<fru_locator_sdr_rec> locators;
  const char* keys =
      "select FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber from fru_locator_sdr order by rowid;";
  database.query(keys, [&](sqlite3_stmt* row) {
    const auto key = [row](int column) { return sqlite3_column_int(row, column); };
    fru_locator_sdr_rec* locator = nullptr;
    if (db_get_fru_locator_sdr_info(database.handle(), key(0), key(1), key(2), key(3), &locator) != 0) {
      fail_to_read(database, "fru_locator_sdr");
    }
    locators.push_back(*locator);
    db_freemem(locator);
  });
  return locators;
}

// FRU 0 of the controller, when it has no locator of its own and is not quite unknown.
std::optional<fru_rec> builtin_fru(const Database& database, const std::vector<fru_locator_sdr_rec>& locators) {
  for (const fru_rec& fru : frus(database)) {
    const bool has_locator = std::any_of(locators.begin(), locators.end(),
                                         [&](const auto& locator) { return has_same_address(fru, locator); });
    const bool is_known = fru.EntityID != 0 || fru.DevIdStr[0] != '\0';
    if (is_controllers_fru(fru, 0) && !has_locator && is_known) return fru;
  }
  return std::nullopt;
}

// What a record says of a sensor, without what is tied to it.
template <class Sensor>
Sensor untied(Sensor sensor) {
  sensor.IsFRUAvailable = sensor.PhysicalElement = 0;
  sensor.FruRecord = {};
  return sensor;
}

template <class Record>
void compare(const std::vector<Record>& stored, const std::vector<Record>& decoded, auto name, Notes& notes) {
  for (const Record& row : stored) {
    const auto is_row = [&](const Record& other) { return std::memcmp(&row, &other, sizeof row) == 0; };
    if (std::none_of(decoded.begin(), decoded.end(), is_row)) {
      notes.push_back(name(row) + " is not in the dump as it is in the table");
    }
  }
}

template <class Sensor>
void compare_sensors(std::vector<Sensor> stored, std::vector<Sensor> decoded, Notes& notes) {
  std::transform(stored.begin(), stored.end(), stored.begin(), untied<Sensor>);
  std::transform(decoded.begin(), decoded.end(), decoded.begin(), untied<Sensor>);
  compare(
      stored, decoded, [](const Sensor& sensor) { return "sensor " + std::string(text_of(sensor.DeviceID)); }, notes);
}

Bytes encode_sensors(const Database& database, Notes& notes) {
  Repository repository;
  repository.compact_sensors = compact_sensors(database);
  repository.full_sensors = full_sensors(database);
  repository.fru_locators = fru_locators(database);
  repository.builtin_fru = builtin_fru(database, repository.fru_locators);
  Bytes dump = encode_repository(repository);
  if (dump.empty()) database.fail("there are no sensors and FRU locators to be written");
  const Repository decoded = decode_repository(Input("the dump", dump));
  compare_sensors(repository.compact_sensors, decoded.compact_sensors, notes);
  compare_sensors(repository.full_sensors, decoded.full_sensors, notes);
  const auto name = [](const auto& locator) { return "the locator of FRU " + std::to_string(locator.FruIDSlaveAddr); };
  compare(repository.fru_locators, decoded.fru_locators, name, notes);
  return dump;
}

Bytes encode_fru_of(const Database& database, int id, Notes& notes) {
  const auto all = frus(database);
  const auto fru =
      std::find_if(all.begin(), all.end(), [&](const fru_rec& fru) { return is_controllers_fru(fru, id); });
  std::string name = "FRU " + std::to_string(id);
  if (fru == all.end()) database.fail("there is no " + name + " of the controller at address 20h");
  Bytes image = encode_fru(*fru);
  fru_rec decoded = *fru;
  decode_fru(Input("the image", image), decoded);
  compare<fru_rec>(
      {*fru}, {decoded}, [&](const fru_rec&) { return name; }, notes);
  return image;
}

Bytes encode_events(const Database& database, Notes& notes) {
  Bytes dump;
  const auto stored = events(database);
  for (const sel_rec& event : stored) {
    const auto generator = number_of(std::string(text_of(event.GeneratorID)) + "h");
    if (!generator || *generator < 0 || *generator > 0xFF) {
      database.fail("table sel, column GeneratorID of event " + std::to_string(event.RecordID) +
                    ": not two hexadecimal digits");
    }
    Bytes bytes(kEventSize);
    write_fields(event, kEvent, bytes);
    bytes[kGeneratorId] = static_cast<uint8_t>(*generator);
    dump.insert(dump.end(), bytes.begin(), bytes.end());
  }
  const auto name = [](const sel_rec& event) { return "event " + std::to_string(event.RecordID); };
  compare(stored, decode_event_log(Input("the dump", dump)).events, name, notes);
  return dump;
}

// With the reason that the system gives.
std::runtime_error failure_of(const std::string& file, int error) {
  return std::runtime_error(file + ": " +
                            (error == EEXIST ? "the file exists and is not touched" : std::strerror(error)));
}

void write_file(const std::string& name, const Bytes& bytes) {
  std::FILE* const stream = std::fopen(name.c_str(), "wbx");
  if (!stream) throw failure_of(name, errno);
  int error = std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size() ? 0 : errno;
  if (std::fclose(stream) != 0 && error == 0) error = errno;
  if (error == 0) return;
  std::remove(name.c_str());
  throw failure_of(name, error);
}

}  // namespace

Exported export_files(const Database& database, const ImportFiles& files) {
  Exported exported;
  std::vector<std::pair<std::string, Bytes>> dumps;
  if (!files.repository.empty()) dumps.emplace_back(files.repository, encode_sensors(database, exported.notes));
  for (const FruFile& fru : files.frus) dumps.emplace_back(fru.file, encode_fru_of(database, fru.id, exported.notes));
  if (!files.event_log.empty()) dumps.emplace_back(files.event_log, encode_events(database, exported.notes));
  try {
    for (const auto& [name, bytes] : dumps) {
      write_file(name, bytes);
      exported.files.push_back({name, bytes.size()});
    }
  } catch (...) {
    for (const Exported::File& written : exported.files) std::remove(written.name.c_str());
    throw;
  }
  return exported;
}

}  // namespace qmvctl
