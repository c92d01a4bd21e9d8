// Physical element categories: CIM classes as sets of IPMI entities, and the sensors of a category as one array.
#include <strings.h>

#include <cstdlib>
#include <cstring>

#include "core/shapes.h"
#include "instances/dynamic/site.h"
#include "qmv/instances.h"
#include "qmv/sdr.h"

namespace {

using namespace qmv;
using dynamic::here;

// The statements of each class: its name, the counting one, the listing one. They are handed out letter by letter, with
// the blanks and commas as they stand. The sets overlap on purpose: entities 3 and 9 are chips and memory, 8 is a card
// and memory.
#define QMV_FRU_QUERIES(name, separator, gap, condition)                                                              \
  name "\0select count(*)  from fru join full_sdr on fru.entityid=full_sdr.entityid and (" condition                  \
       ") order by fru.entityid;\0select fru.FruIDSlaveAddr, fru.DeviceAccessAddr, fru.LUNBusID, "                    \
       "fru.ChannelNumber, full_sdr.EntityID, full_sdr.EntityInstance, fru.IdStrLen, IdStr" separator "SensorNum" gap \
       "from fru join full_sdr on fru.entityid=full_sdr.entityid and (" condition ") order by fru.entityid;\0"

// clang-format off
constexpr char kFruQueries[] =
    QMV_FRU_QUERIES("CIM_Slot", ", ", " ",
                    "fru.entityid=5 or ( fru.entityid>= 26 and  fru.entityid<= 28) ")
    QMV_FRU_QUERIES("CIM_Card", ", ", "  ",
                    "fru.entityid=7 or fru.entityid=8 or fru.entityid=21 or fru.entityid=22 or fru.entityid=25 "
                    "or (fru.entityid>= 11 and  fru.entityid<= 18)")
    QMV_FRU_QUERIES("CIM_Chassis", " ,", "  ",
                    "fru.entityid=23 or fru.entityid=24 ")
    QMV_FRU_QUERIES("CIM_Chip", " ,", "  ",
                    "fru.entityid=3 or fru.entityid=9 ")
    QMV_FRU_QUERIES("CIM_PhysicalPackage", " ,", "  ",
                    "fru.entityid=4 or fru.entityid=6 or fru.entityid=10 or fru.entityid=20 or fru.entityid=29 "
                    "or fru.entityid=40 or fru.entityid=41 or (fru.entityid>= 43 and  fru.entityid<= 45)")
    QMV_FRU_QUERIES("CIM_PhysicalConnector", " ,", "  ",
                    "fru.entityid=31 or fru.entityid=36 or fru.entityid=42")
    QMV_FRU_QUERIES("CIM_PhysicalMemory", " ,", "  ",
                    "fru.entityid=3 or fru.entityid=9 or fru.entityid=8 or fru.entityid=32 ");

// QUIRK: Only the memory list has no order. Test: PhysicalElements.MemoryListOfSensorsAloneHasNoOrder.
constexpr char kSensorQueries[] =
    "CIM_Slot\0"
    "select count(*) from full_sdr where (entityid=5 or ( entityid>= 26 and entityid<= 28));" "\0"
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=5 or ( entityid>= 26 and "
    "entityid<= 28)) order by entityid;" "\0"
    "CIM_Card\0"
    "select count(*) from full_sdr where (entityid=7 or entityid=8 or entityid=21 or entityid=22 or entityid=25 "
    "or (entityid>= 11 and entityid<= 18));" "\0"
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=7 or entityid=8 or "
    "entityid=21 or entityid=22 or entityid=25 or (entityid>= 11 and entityid<= 18)) order by entityid;" "\0"
    "CIM_Chassis\0"
    "select count(*) from full_sdr where (entityid=23 or entityid=24);" "\0"
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=23 or entityid=24 ) order "
    "by entityid;" "\0"
    "CIM_Chip\0"
    "select count(*) from full_sdr where (entityid=3 or entityid=9);" "\0"
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=3 or entityid=9 ) order by "
    "entityid;" "\0"
    "CIM_PhysicalMemory\0"
    "select count(*)  from full_sdr where (entityid=3 or entityid=9 or  entityid=8 or entityid=32);" "\0"
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=3 or entityid=9 or "
    "entityid=8 or entityid=32);" "\0"
    "CIM_PhysicalPackage\0"
    "select count(*) from full_sdr where (entityid=4 or entityid=6 or entityid=10 or entityid=20 or entityid=29 "
    "or entityid=40 or entityid=41 or (entityid>= 43 and entityid<= 45));" "\0"
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=4 or entityid=6 or "
    "entityid=10 or entityid=20 or entityid=29 or entityid=40 or entityid=41 or (entityid>= 43 and entityid<= "
    "45)) order by entityid;" "\0"
    "CIM_PhysicalConnector\0"
    "select count(*) from full_sdr where (entityid=31 or entityid=36 or entityid=42);" "\0"
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=31 or entityid=36 or "
    "entityid=42) order by entityid;" "\0";
// clang-format on

const char* behind(const char* text) {
  return text + std::strlen(text) + 1;
}

void copy(char* to, const char* text) {
  std::memcpy(to, text, std::strlen(text) + 1);
}

std::int32_t hand_out(const char* queries, const char* class_name, char* count, char* list) {
  for (const char* name = queries; *name != 0; name = behind(behind(behind(name)))) {
    if (strcasecmp(name, class_name) != 0) continue;
    copy(count, behind(name));
    copy(list, behind(behind(name)));
    return kOk;
  }
  return kFailure;
}

}  // namespace

std::int32_t get_sqlqueries(const char* class_name, char* count, char* list) noexcept {
  return hand_out(kFruQueries, class_name, count, list);
}

std::int32_t get_sqlqueries_nonFRU(const char* class_name, char* count, char* list) noexcept {
  return hand_out(kSensorQueries, class_name, count, list);
}

std::int32_t db_check_is_entity_id_equals_to_sen_type(sqlite3* db, std::int32_t EntityID,
                                                      std::int32_t EntityInstance) noexcept {
  const Site site = here();
  const SqlText text(sqlite3_mprintf(
      "select count(*) from %q where \t\t\tEntityID == SensorType and EntityID == %d     \t\tand EntityInstance == %d;",
      "full_sdr", EntityID, EntityInstance));
  Statement statement;
  const std::int32_t code = statement.compile(db, site, text);
  if (code != SQLITE_OK) return code;
  if (statement.missing() || statement.step() != SQLITE_ROW) {
    // QUIRK: A count without a row leaves its statement open. Test:
    // PhysicalElements.EqualTypeCheckWithoutARowLeavesTheStatementOpen.
    statement.leave_open();
    trace(site, Message("[%s:%d]No records found"));
    return kFailure;
  }
  const std::int32_t sensors = sqlite3_column_int(statement.get(), 0);
  static_cast<void>(statement.finalize());
  trace(site, Format<'d'>("[%s:%d]Successfully returns the status. Count value : %d"), sensors);
  return sensors != 0 ? kOk : kFailure;
}

std::int32_t db_check_is_entity_id_not_equals_to_sen_type(sqlite3* db, std::int32_t EntityID,
                                                          std::int32_t EntityInstance,
                                                          std::int32_t* SensorType) noexcept {
  const Site site = here();
  const SqlText text(sqlite3_mprintf(
      "select SensorType from %q where \t\t\tEntityID != SensorType and EntityID == %d \t\t\tand EntityInstance == %d;",
      "full_sdr", EntityID, EntityInstance));
  Statement statement;
  const std::int32_t code = statement.compile(db, site, text);
  if (code != SQLITE_OK) return code;
  if (statement.missing()) {
    trace(site, Message("[%s:%d]No records found"));
    return kFailure;
  }
  if (statement.step() != SQLITE_ROW) {
    // QUIRK: Without a row the statement stays open, and nothing is said. Test:
    // PhysicalElements.OtherTypeCheckWithoutARowLeavesTheStatementOpen.
    statement.leave_open();
    return kFailure;
  }
  *SensorType = sqlite3_column_int(statement.get(), 0);
  const std::int32_t finalized = statement.finalize();
  trace(site, Format<'d'>("[%s:%d]Successfully returns the status.Sensor Type : %d"), *SensorType);
  return finalized;
}

namespace {

// An array from the library's own get-alls, released at the end.
template <class Sensor>
struct Sensors {
  Sensor* records = nullptr;
  std::int32_t count = 0;

  Sensors() = default;
  Sensors(const Sensors&) = delete;
  Sensors& operator=(const Sensors&) = delete;
  ~Sensors() { std::free(records); }
};

static_assert(offsetof(fru_sdr_rec, IdStrLen) == sizeof(fru_rec), "a fru_sdr_rec begins with the members of a fru_rec");

// Turns sensors into physical assets and returns the place behind the last one.
template <class Sensor>
fru_sdr_rec* add_assets(const Sensors<Sensor>& sensors, fru_sdr_rec* next) {
  if (sensors.records == nullptr) return next;
  for (std::int32_t i = 0; i < sensors.count; ++i, ++next) {
    const Sensor& sensor = sensors.records[i];
    std::memcpy(next, &sensor.FruRecord, sizeof(fru_rec));
    next->SensorNum = sensor.SensorNum;
    next->IdStrLen = sensor.IdStrLen;
    next->IsFRUAvailable = sensor.IsFRUAvailable;
    std::memcpy(next->IdStr, sensor.IdStr, strnlen(sensor.IdStr, sizeof(sensor.IdStr)));
  }
  return next;
}

}  // namespace

std::int32_t db_get_all_physicalasset_element(sqlite3* db, std::int32_t* count, fru_sdr_rec** records,
                                              std::int32_t PhysicalElement) noexcept {
  *records = nullptr;
  *count = 0;
  Sensors<compact_sdr_rec> compact;
  Sensors<full_sdr_rec> full;
  const std::int32_t compact_status =
      db_get_all_compact_sdrs_by_phy_elem_type(db, PhysicalElement, &compact.count, &compact.records);
  const std::int32_t full_status =
      db_get_all_full_sdrs_by_phy_elem_type(db, PhysicalElement, &full.count, &full.records);
  if (compact_status != kOk || full_status != kOk) return kFailure;

  std::int32_t total = 0;
  if (__builtin_add_overflow(compact.count, full.count, &total)) return kFailure;
  if (total == 0) return kOk;
  *records = static_cast<fru_sdr_rec*>(std::calloc(static_cast<std::size_t>(total), sizeof(fru_sdr_rec)));
  if (*records == nullptr) return kFailure;
  *count = total;
  add_assets(full, add_assets(compact, *records));
  return kOk;
}
