// Power supplies, named after the sensors that are flagged as physical elements.
#include <cstdio>
#include <cstdlib>

#include "core/own_connection.h"
#include "core/statement.h"
#include "core/status.h"
#include "qmv/instances.h"
#include "sdr/entity_class_map.h"

namespace {

using namespace qmv;

// The bit of PhysicalElement that marks power supplies.
constexpr std::int32_t kPowerSupplyElement = 1024;
constexpr std::size_t kNameSize = 256;

// Whether the row, of EntityID, EntityInstance and SensorNum, is of a power supply.
bool is_power_supply(const Statement& sensors) {
  return is_of_logical_class(sqlite3_column_int(sensors.get(), 0), "CIM_PowerSupply");
}

// The name of the power supply of that row, NULL when memory is short.
char* name_of(const Statement& sensors) {
  auto* const name = static_cast<char*>(std::calloc(1, kNameSize));
  if (name == nullptr) return nullptr;
  const auto column = [&sensors](int index) { return sqlite3_column_int(sensors.get(), index); };
  std::snprintf(name, kNameSize, "%d:%d:%d:%s", column(0), column(1), column(2), "PowerSupply");
  return name;
}

// The number of entities with a flagged sensor, an upper bound of the power supplies; -1 when they cannot be counted.
std::int32_t count_elements(sqlite3* db) {
  const SqlText text(sqlite3_mprintf(
      "SELECT count(*) FROM (SELECT * FROM (                 SELECT  EntityID,EntityInstance,SensorNum FROM %q WHERE "
      "(PhysicalElement & %i) = %i                 UNION                 SELECT EntityID,EntityInstance,SensorNum FROM "
      "%q WHERE  (PhysicalElement & %i) = %i) \t\t\t\tGROUP BY EntityID,EntityInstance);",
      "compact_sdr", kPowerSupplyElement, kPowerSupplyElement, "full_sdr", kPowerSupplyElement, kPowerSupplyElement));
  Statement statement;
  if (statement.prepare(db, text) != SQLITE_OK) return -1;
  std::int32_t count = 0;
  while (statement.step() == SQLITE_ROW) count = sqlite3_column_int(statement.get(), 0);
  return count;
}

// Names the power supplies, at most `room` of them. Returns their number, or -1 on failure, with the names so far.
std::int32_t name_all(sqlite3* db, char** names, std::int32_t room) {
  const SqlText text(sqlite3_mprintf(
      "SELECT * FROM ( \t \tSELECT  EntityID,EntityInstance,SensorNum FROM %q WHERE (PhysicalElement & %i) = %i "
      "\t\tUNION \t\tSELECT EntityID,EntityInstance,SensorNum FROM %q WHERE  (PhysicalElement & %i) = %i)\t\tGROUP BY "
      "EntityID,EntityInstance;",
      "compact_sdr", kPowerSupplyElement, kPowerSupplyElement, "full_sdr", kPowerSupplyElement, kPowerSupplyElement));
  Statement sensors;
  if (sensors.prepare(db, text) != SQLITE_OK) return -1;
  std::int32_t named = 0;
  while (sensors.step() == SQLITE_ROW) {
    if (named == room || !is_power_supply(sensors)) continue;
    names[named] = name_of(sensors);
    if (names[named] == nullptr) return -1;
    ++named;
  }
  return named;
}

std::int32_t fail(char*** names, std::int32_t* count) {
  *names = nullptr;
  *count = 0;
  return kFailure;
}

}  // namespace

std::int32_t get_ps_from_db(char** name, std::int32_t SensorNum) noexcept {
  const OwnConnection connection(kInstanceDatabase);
  if (!connection.is_open()) return kFailure;
  const SqlText text(
      sqlite3_mprintf("SELECT * FROM (                 SELECT  EntityID,EntityInstance,SensorNum FROM %q WHERE "
                      "(PhysicalElement & %i) = "
                      "%i and SensorNum = %i                UNION                 SELECT "
                      "EntityID,EntityInstance,SensorNum FROM %q WHERE "
                      " (PhysicalElement & %i) = %i and SensorNum = %i);",
                      "compact_sdr", kPowerSupplyElement, kPowerSupplyElement, SensorNum, "full_sdr",
                      kPowerSupplyElement, kPowerSupplyElement, SensorNum));
  Statement sensors;
  if (sensors.prepare(connection.get(), text) != SQLITE_OK) return kFailure;
  while (sensors.step() == SQLITE_ROW) {
    if (!is_power_supply(sensors) || sqlite3_column_int(sensors.get(), 2) != SensorNum) continue;
    *name = name_of(sensors);
    return *name != nullptr ? kOk : kFailure;
  }
  return kFailure;
}

std::int32_t get_all_ps_from_db(char*** names, std::int32_t* count) noexcept {
  const OwnConnection connection(kInstanceDatabase);
  if (!connection.is_open()) return fail(names, count);
  const std::int32_t room = count_elements(connection.get());
  if (room < 0) return fail(names, count);
  if (room == 0) return kOk;
  auto** const made = static_cast<char**>(std::calloc(static_cast<std::size_t>(room), sizeof(char*)));
  if (made == nullptr) return fail(names, count);
  const std::int32_t named = name_all(connection.get(), made, room);
  if (named < 0) {
    for (std::int32_t i = 0; i < room; ++i) std::free(made[i]);
    std::free(made);
    return fail(names, count);
  }
  *names = made;
  *count = named;
  return kOk;
}
