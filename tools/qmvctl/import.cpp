#include "import.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

#include "rows.h"
#include "table_shape.h"
#include "text.h"

namespace qmvctl {

namespace {

// The longest dumps of a server, in bytes: all record IDs with a header of 5 bytes and 255 bytes behind it, what a FRU
// device's 16-bit offsets reach, and all event IDs with 16 bytes.
constexpr size_t kLongestRepository = size_t{65'535} * 260;
constexpr size_t kLongestImage = 65'536;
constexpr size_t kLongestEventLog = size_t{65'534} * 16;

template <class Record>
using Owned = std::unique_ptr<Record, void (*)(void*)>;

// Calls a get-one of the library: read(&record). Nothing without a row.
template <class Record, class Read>
Owned<Record> read_one(Read read) {
  Record* record = nullptr;
  const bool is_found = read(&record) == 0;
  return {is_found ? record : nullptr, db_freemem};
}

// Records are compared as a whole: they have no padding, and the library zeroes what follows a text.
template <class Record>
bool is_equal(const Record& a, const Record& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

[[noreturn]] void differ(const Database& database, const char* table) {
  std::string objection;
  for (const TableShape& reference : references(database.kind())) {
    if (reference.name == table) objection = objection_to_rows(database, reference);
  }
  database.fail(std::string("table ") + table + " reads back different from what was stored" +
                (objection.empty() ? "" : ": " + objection) + "; nothing is imported" + database.check_hint());
}

// Compares the rows of a table with what was stored, in any order. `comes_before` orders records by their key.
template <class Record, class Order>
void expect_rows(const Database& database, const char* table, std::vector<Record> rows, std::vector<Record> stored,
                 Order comes_before) {
  std::sort(rows.begin(), rows.end(), comes_before);
  std::sort(stored.begin(), stored.end(), comes_before);
  if (!std::equal(rows.begin(), rows.end(), stored.begin(), stored.end(), is_equal<Record>)) differ(database, table);
}

template <class Record>
bool device_id_before(const Record& a, const Record& b) {
  return text_of(a.DeviceID) < text_of(b.DeviceID);
}

bool address_before(const fru_rec& a, const fru_rec& b) {
  return std::tie(a.FruIDSlaveAddr, a.DeviceAccessAddr, a.LUNBusID, a.ChannelNumber) <
         std::tie(b.FruIDSlaveAddr, b.DeviceAccessAddr, b.LUNBusID, b.ChannelNumber);
}

template <class Record>
void store_rows(const Database& database, const char* what, const std::vector<Record>& rows,
                int32_t (*set)(sqlite3*, const Record*), Progress& progress) {
  for (size_t i = 0; i < rows.size(); ++i) {
    progress.show(what, i, rows.size());
    set(database.handle(), &rows[i]);
  }
}

void store_sensors(Database& database, const Inventory& inventory, Progress& progress) {
  database.execute("delete from compact_sdr; delete from full_sdr;");
  store_rows(database, "compact sensors", inventory.compact_sensors, db_set_compact_sdr_info, progress);
  store_rows(database, "full sensors", inventory.full_sensors, db_set_full_sdr_info, progress);
  expect_rows(database, "compact_sdr", compact_sensors(database), inventory.compact_sensors,
              device_id_before<compact_sdr_rec>);
  expect_rows(database, "full_sdr", full_sensors(database), inventory.full_sensors, device_id_before<full_sdr_rec>);
}

void store_frus(Database& database, const std::vector<fru_rec>& stored, Progress& progress) {
  database.execute("delete from fru;");
  store_rows(database, "FRUs", stored, db_set_fru_info, progress);
  expect_rows(database, "fru", frus(database), stored, address_before);
}

void store_fru_locators(Database& database, const std::vector<fru_locator_sdr_rec>& locators, Progress& progress) {
  database.execute("delete from fru_locator_sdr;");
  store_rows(database, "FRU locators", locators, db_set_fru_locator_sdr_info, progress);
  for (const auto& locator : locators) {
    const auto row = read_one<fru_locator_sdr_rec>([&](fru_locator_sdr_rec** record) {
      return db_get_fru_locator_sdr_info(database.handle(), locator.FruIDSlaveAddr, locator.DeviceAccessAddr,
                                         locator.LUNBusID, locator.ChannelNumber, record);
    });
    if (!row || !is_equal(*row, locator)) differ(database, "fru_locator_sdr");
  }
}

void store_events(const Database& database, const std::vector<sel_rec>& events, Progress& progress) {
  constexpr size_t kTogether = 64;
  for (size_t i = 0; i < events.size(); i += kTogether) {
    progress.show("events", i, events.size());
    const size_t count = std::min(kTogether, events.size() - i);
    db_add_sel_entries(database.handle(), static_cast<int32_t>(count), &events[i], 0);
  }
}

void store_event_log(Database& database, const EventLog& log, Progress& progress) {
  database.execute("delete from sel_info; delete from sel;");
  db_set_selinfo(database.handle(), &log.info);
  const auto info =
      read_one<sel_info_rec>([&](sel_info_rec** record) { return db_get_selinfo(database.handle(), record); });
  if (!info || !is_equal(*info, shifted(log.info))) differ(database, "sel_info");
  store_events(database, log.events, progress);
  expect_rows(database, "sel", events(database), log.events,
              [](const sel_rec& a, const sel_rec& b) { return a.RecordID < b.RecordID; });
}

Dumps read(const ImportFiles& files) {
  Dumps dumps;
  if (!files.repository.empty()) dumps.repository = Input::read(files.repository, kLongestRepository);
  for (const FruFile& fru : files.frus) dumps.frus.push_back({fru.id, Input::read(fru.file, kLongestImage)});
  if (!files.event_log.empty()) dumps.event_log = Input::read(files.event_log, kLongestEventLog);
  return dumps;
}

}  // namespace

Inventory gather(const Database& database, const Dumps& dumps) {
  Inventory inventory;
  std::optional<fru_rec> builtin_fru;
  if (dumps.repository) {
    Repository repository = decode_repository(*dumps.repository);
    builtin_fru = repository.builtin_fru;
    take_repository(inventory, std::move(repository));
  } else if (!dumps.frus.empty()) {
    inventory.compact_sensors = compact_sensors(database);
    inventory.full_sensors = full_sensors(database);
    inventory.frus = frus(database);
  }
  for (const Dumps::Image& image : dumps.frus) take_fru(inventory, image.id, image.bytes, builtin_fru);
  tie_sensors_to_frus(inventory);
  if (dumps.event_log) {
    inventory.event_log = decode_event_log(*dumps.event_log);
    inventory.not_held.merge(inventory.event_log->not_held);
  }
  return inventory;
}

sel_info_rec shifted(const sel_info_rec& stored) {
  sel_info_rec read{};
  read.MaxNoOfSels = stored.MaxNoOfSels;
  store_text(std::to_string(stored.MaxNoOfSels), read.CompletionCode);
  store_text(text_of(stored.CompletionCode), read.Version);
  read.RecCnt = std::atoi(stored.Version);
  read.FreeSpace = stored.RecCnt;
  store_text(std::to_string(stored.FreeSpace), read.AddTimeStamp);
  store_text(text_of(stored.AddTimeStamp), read.EraseTimeStamp);
  store_text(text_of(stored.EraseTimeStamp), read.OperationSupport);
  return read;
}

Inventory import_files(Database& database, const ImportFiles& files, Progress& progress) {
  Transaction transaction(database);
  Inventory inventory = gather(database, read(files));
  if (!files.repository.empty() || !files.frus.empty()) {
    store_sensors(database, inventory, progress);
    store_frus(database, inventory.frus, progress);
  }
  if (inventory.fru_locators) store_fru_locators(database, *inventory.fru_locators, progress);
  if (inventory.event_log) store_event_log(database, *inventory.event_log, progress);
  transaction.commit();
  return inventory;
}

}  // namespace qmvctl
