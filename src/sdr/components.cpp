// Components that are derived from the compact sensors: redundancy sets, memory and processors.
#include <cstdio>
#include <cstdlib>

#include "core/own_connection.h"
#include "core/shapes.h"
#include "qmv/sdr.h"
#include "sdr/compact_table.h"
#include "sdr/entity_class_map.h"
#include "sdr/site.h"

namespace {

using namespace qmv;
using sdr::here;

// IPMI 2.0, tables 42-3 and 42-2.
constexpr std::int32_t kProcessorSensor = 0x07;
constexpr std::int32_t kMemorySensor = 0x0c;
constexpr std::int32_t kRedundancyEvents = 0x0b;
// The bit of PhysicalElement that marks memory.
constexpr std::int32_t kMemoryElement = 256;

constexpr Count count_form(Sql select) {
  return {
      .select = select,
      .no_row = kSilent,
      .done = "[%s:%d]Successfully return the no. of sensors present",
      .step = CountStep::kIgnored,
  };
}
constexpr Count kCountRedundancySets =
    count_form("select count(*) from (select * from %q where EventTypeCode=%d GROUP BY EntityID,EntityInstance);");
constexpr Count kCountProcessors = count_form("select count(*) from %q where SensorType=%d;");
constexpr Count kCountMemory = count_form({});

constexpr GetAll kGetRedundancySets =
    sdr::compact_get_all("select * from %q where EventTypeCode=%d GROUP BY EntityID,EntityInstance;");
constexpr GetAll kGetMemory = sdr::compact_get_all("select * from %q where SensorType=%d;");

// As the other get-alls of the table, but silent about each record.
constexpr GetAll kGetProcessors = [] {
  GetAll form = kGetMemory;
  form.row = kSilent;
  return form;
}();

using Compact = Table<sdr::kCompactTable, sdr::kCompactColumns, kCountRedundancySets, kCountProcessors, kCountMemory,
                      kGetRedundancySets, kGetMemory, kGetProcessors>;

}  // namespace

std::int32_t db_get_redundancyset_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<Compact, kCountRedundancySets>(here(), db, count, kRedundancyEvents);
}

std::int32_t db_get_all_redundancyset(sqlite3* db, std::int32_t* count, compact_sdr_rec** records) noexcept {
  return get_all<Compact, kGetRedundancySets>(here(), db, counted(records, db_get_redundancyset_cnt, db), count,
                                              records, kRedundancyEvents);
}

// Written out: the statement has two tables.
std::int32_t db_get_memory_cnt(sqlite3* db, std::int32_t* count) noexcept {
  const Site site = here();
  *count = 0;
  const SqlText text(
      sqlite3_mprintf("select count(*) from \t( SELECT  compact_sdr.DeviceID FROM %q WHERE (PhysicalElement & %i) = %i "
                      "\tUNION \tSELECT "
                      "full_sdr.DeviceID FROM %q WHERE  (PhysicalElement & %i) = %i);",
                      "compact_sdr", kMemoryElement, kMemoryElement, "full_sdr", kMemoryElement, kMemoryElement));
  Statement statement;
  if (statement.compile(db, site, text, Tail::kOmitted) != SQLITE_OK) return kFailure;
  return read_count(Compact::form<kCountMemory>(), site, statement, count);
}

// QUIRK: Counts the elements with the memory bit, and reads the compact sensors of type memory. Fewer of these leave
// zeroed records at the end, more are dropped. Test: Components.MemoryIsCountedByElementAndReadBySensorType.
std::int32_t db_get_all_memory(sqlite3* db, std::int32_t* count, compact_sdr_rec** records) noexcept {
  return get_all<Compact, kGetMemory>(here(), db, counted(records, db_get_memory_cnt, db), count, records,
                                      kMemorySensor);
}

std::int32_t db_get_processor_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<Compact, kCountProcessors>(here(), db, count, kProcessorSensor);
}

std::int32_t db_get_all_processor(sqlite3* db, std::int32_t* count, compact_sdr_rec** records) noexcept {
  return get_all<Compact, kGetProcessors>(here(), db, counted(records, db_get_processor_cnt, db), count, records,
                                          kProcessorSensor);
}

namespace {

constexpr std::size_t kNameSize = 256;

// Stores the name of the first sensor of the entity whose logical class is a processor's.
std::int32_t name_processor(Statement& sensors, std::int32_t EntityID, std::int32_t EntityInstance, char** name) {
  while (sensors.step() == SQLITE_ROW) {
    const std::int32_t entity = sqlite3_column_int(sensors.get(), 0);
    if (!is_of_logical_class(entity, "CIM_Processor")) continue;
    if (entity != EntityID || sqlite3_column_int(sensors.get(), 1) != EntityInstance) continue;
    *name = static_cast<char*>(std::calloc(1, kNameSize));
    if (*name == nullptr) return kFailure;
    std::snprintf(*name, kNameSize, "%d:%d:%d:Processor", EntityID, EntityInstance,
                  sqlite3_column_int(sensors.get(), 2));
    return kOk;
  }
  return kFailure;
}

}  // namespace

std::int32_t get_processor_from_db(std::int32_t EntityID, std::int32_t EntityInstance, char** name) noexcept {
  OwnConnection connection(kInstanceDatabase);
  if (!connection.is_open()) {
    // QUIRK: The handle of a failed open is not closed. Test: ProcessorName.FailedOpenReturnsOneAndLeavesTheHandle.
    connection.leave_unclosed();
    return kFailure;
  }
  const SqlText text(sqlite3_mprintf(
      "select EntityID,EntityInstance,SensorNum from %q where EntityID=%i             and EntityInstance=%i;",
      "compact_sdr", EntityID, EntityInstance));
  Statement sensors;
  sensors.prepare(connection.get(), text);
  return name_processor(sensors, EntityID, EntityInstance, name);
}
