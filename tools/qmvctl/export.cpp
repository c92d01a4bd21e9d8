#include "export.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "fru_encoder.h"
#include "losses.h"
#include "records.h"
#include "rows.h"
#include "sdr_encoder.h"
#include "sel_record.h"
#include "selection.h"
#include "text.h"

namespace qmvctl {

namespace {

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

Bytes encode_sensors(const Database& database) {
  Repository repository;
  repository.compact_sensors = compact_sensors(database);
  repository.full_sensors = full_sensors(database);
  repository.fru_locators = fru_locators(database);
  repository.builtin_fru = builtin_fru(database, repository.fru_locators);
  Bytes dump = encode_repository(repository);
  if (dump.empty()) database.fail("there are no sensors and FRU locators to be written");
  return dump;
}

Bytes encode_fru_of(const Database& database, int id) {
  const auto all = frus(database);
  const auto fru =
      std::find_if(all.begin(), all.end(), [&](const fru_rec& fru) { return is_controllers_fru(fru, id); });
  if (fru == all.end()) {
    database.fail("there is no FRU " + std::to_string(id) + " of the controller at address 20h");
  }
  return encode_fru(*fru);
}

Bytes encode_events(const Database& database) {
  Bytes dump;
  for (const sel_rec& event : events(database)) {
    const std::string of_event = " of event " + std::to_string(event.RecordID);
    const auto generator = number_of(std::string(text_of(event.GeneratorID)) + "h");
    if (!generator || *generator < 0 || *generator > 0xFF) {
      database.fail("table sel, column GeneratorID" + of_event + ": not two hexadecimal digits");
    }
    if (event.RecordID < 1 || event.RecordID > kLastRecordId) {
      database.fail("table sel, column RecordID" + of_event + ": not from 1 to " + std::to_string(kLastRecordId));
    }
    Bytes bytes(kEventSize);
    write_fields(event, kEvent, bytes);
    bytes[kGeneratorId] = static_cast<uint8_t>(*generator);
    dump.insert(dump.end(), bytes.begin(), bytes.end());
  }
  return dump;
}

// With the reason that the system gives.
FileError failure_of(const std::string& file, int error) {
  return FileError(file, error == EEXIST ? kIsNotTouched : std::strerror(error));
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
  Dumps dumps;
  std::vector<std::pair<std::string, Bytes>> written;
  const auto add = [&](const std::string& file, const Bytes& bytes) {
    written.emplace_back(file, bytes);
    return Input("the dump " + file, bytes);
  };
  if (!files.repository.empty()) dumps.repository = add(files.repository, encode_sensors(database));
  for (const FruFile& fru : files.frus) dumps.frus.push_back({fru.id, add(fru.file, encode_fru_of(database, fru.id))});
  if (!files.event_log.empty()) dumps.event_log = add(files.event_log, encode_events(database));
  Exported exported;
  exported.notes = losses(database, dumps);
  try {
    for (const auto& [name, bytes] : written) {
      write_file(name, bytes);
      exported.files.push_back({name, bytes.size()});
    }
  } catch (...) {
    for (const Exported::File& file : exported.files) std::remove(file.name.c_str());
    throw;
  }
  return exported;
}

}  // namespace qmvctl
