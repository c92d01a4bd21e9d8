#include "rows.h"

#include <sqlite3.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>

#include "compact_columns.h"

namespace qmv::bench {

namespace {

constexpr int kFirstInventoryColumn = 35;

struct Row {
  int sensor;
  int revision;  // of the texts

  int entity() const { return sensor / kSensorsPerEntity; }
  bool has_fru() const { return entity() % kEntitiesPerFru == 0; }
};

// The text of the n-th column; none where it is NULL.
std::optional<std::string> text(Row row, int column) {
  constexpr char kWords[] =
      "Baseboard Power Supply 2 Inlet Temp DIMM A3 VRM 12V Rail Fan Tray 7 PCIe Riser S/N 4711-0815";
  if (column == 0) return device_id(row.sensor);
  if ((row.sensor + column) % 11 == 0) return std::nullopt;
  if (column >= kFirstInventoryColumn && !row.has_fru()) return "";
  const int seed = row.sensor * 31 + column * 17 + row.revision;
  const auto length = static_cast<std::size_t>(8 + seed % 23);
  return std::string(kWords).substr(static_cast<std::size_t>(seed) % (sizeof(kWords) - 31), length);
}

int number(Row row, int column) {
  switch (column) {
    case 5:
      return row.entity() % 54;
    case 6:
      return row.entity() / 54 + 1;
    case 29:
      return row.entity() % 8 == 0 ? kMask : 1;
    case 30:
      return row.entity();
    default:
      return (row.sensor * 7 + column * 13) % (column % 3 == 0 ? 32768 : 256);
  }
}

compact_sdr_rec record(Row row) {
  compact_sdr_rec made{};
  int column = 0;
#define FILL_INTEGER(name, member) made.member = number(row, column++);
#define FILL_TEXT(name, member) \
  std::strncpy(made.member, text(row, column++).value_or("").c_str(), sizeof(made.member) - 1);
  COMPACT_COLUMNS(FILL_INTEGER, FILL_TEXT, FILL_TEXT)
  return made;
}

struct Close {
  void operator()(sqlite3* db) const { sqlite3_close(db); }
};

void execute(sqlite3* db, const std::string& sql) {
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
    throw std::runtime_error(sqlite3_errmsg(db));
}

std::string quoted(const std::optional<std::string>& text) {
  return text ? "'" + *text + "'" : "NULL";
}

std::string sensor_values(Row row) {
  std::string values;
  int column = 0;
#define ADD_INTEGER(name, member) values += std::to_string(number(row, column++)) + ", ";
#define ADD_TEXT(name, member) values += quoted(text(row, column++)) + ", ";
#define ADD_LAST(name, member) values += quoted(text(row, column));
  COMPACT_COLUMNS(ADD_INTEGER, ADD_TEXT, ADD_LAST)
  return values;
}

// The FRU of a sensor: the FRU columns of the sensor's row, with its entity between address and inventory.
std::string fru_values(Row row) {
  std::string values;
  for (const int column : {30, 31, 32, 33, 5, 6, 34}) values += std::to_string(number(row, column)) + ", ";
  for (int column = 35; column <= 44; ++column) values += quoted(text(row, column)) + (column == 44 ? "" : ", ");
  return values;
}

}  // namespace

std::string device_id(int sensor) {
  return "sensor 0x20.0." + std::to_string(sensor) + " compact";
}

std::vector<compact_sdr_rec> changed_sensors(int count) {
  std::vector<compact_sdr_rec> made;
  for (int i = 0; i < count; ++i) made.push_back(record({.sensor = i * (kSensors / count), .revision = 5}));
  return made;
}

std::vector<compact_sdr_rec> new_sensors(int count) {
  std::vector<compact_sdr_rec> made;
  for (int i = 0; i < count; ++i) made.push_back(record({.sensor = kSensors + i, .revision = 0}));
  return made;
}

void create_database(const std::string& path, const std::string& schema) {
  std::ifstream file(schema);
  const std::string tables{std::istreambuf_iterator<char>(file), {}};
  sqlite3* opened = nullptr;
  sqlite3_open(path.c_str(), &opened);
  const std::unique_ptr<sqlite3, Close> db(opened);
  execute(db.get(), "begin;" + tables);
  for (Row row{}; row.sensor < kSensors; ++row.sensor) {
    execute(db.get(), "insert into compact_sdr values (" + sensor_values(row) + ");");
    if (row.has_fru() && row.sensor % kSensorsPerEntity == 0)
      execute(db.get(), "insert into fru values (" + fru_values(row) + ");");
  }
  for (int n = 0; n < kCapabilities; ++n) {
    const ssh_capabilities_rec row = capabilities(n, 0);
    db_set_sshcapabilities(db.get(), &row);
  }
  execute(db.get(), "commit;");
}

}  // namespace qmv::bench
