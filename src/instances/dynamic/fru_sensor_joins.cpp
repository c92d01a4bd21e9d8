// FRUs joined with the sensors of their entity. The compact and the full family differ in the sensor table and in
// texts.
#include <cstdlib>

#include "core/shapes.h"
#include "instances/dynamic/site.h"
#include "qmv/instances.h"

namespace {

using namespace qmv;
using dynamic::here;
using Record = fru_sdr_rec;

constexpr char kFru[] = "fru";
constexpr char kCompact[] = "compact_sdr";
constexpr char kFull[] = "full_sdr";

// A row of the join, a FRU's inventory strings, and both together as the get-one selects them.
constexpr auto kJoinColumns = columns<Record>(QMV_COLUMN(FruIDSlaveAddr), QMV_COLUMN(DeviceAccessAddr),
                                              QMV_COLUMN(LUNBusID), QMV_COLUMN(ChannelNumber), QMV_COLUMN(EntityID),
                                              QMV_COLUMN(EntityInst), QMV_COLUMN(IdStrLen), QMV_COLUMN(IdStr));
constexpr auto kInventoryColumns =
    columns<Record>(QMV_COLUMN(ChassisSerNumber), QMV_COLUMN(ChassisPartNumber), QMV_COLUMN(ChassisCustFields),
                    QMV_COLUMN(ProdSerNumber), QMV_COLUMN(ProdPartNumber), QMV_COLUMN(ProdMfrName),
                    QMV_COLUMN(BrdSerNumber), QMV_COLUMN(BrdPartNumber), QMV_COLUMN(BrdMfrName));
constexpr auto kPairColumns = columns<Record>(
    QMV_COLUMN(FruIDSlaveAddr), QMV_COLUMN(DeviceAccessAddr), QMV_COLUMN(LUNBusID), QMV_COLUMN(ChannelNumber),
    QMV_COLUMN(EntityID), QMV_COLUMN(EntityInst), QMV_COLUMN(ChassisSerNumber), QMV_COLUMN(ChassisPartNumber),
    QMV_COLUMN(ChassisCustFields), QMV_COLUMN(ProdSerNumber), QMV_COLUMN(ProdPartNumber), QMV_COLUMN(ProdMfrName),
    QMV_COLUMN(BrdSerNumber), QMV_COLUMN(BrdPartNumber), QMV_COLUMN(BrdMfrName), QMV_COLUMN(IdStrLen),
    QMV_COLUMN(IdStr));

constexpr Count kCountCompact = {
    .select =
        "select count(*) from %q \t    \t\tJOIN %q ON %q.EntityID = %q.EntityID and \t    \t\t%q.EntityInst = "
        "%q.EntityInstance;",
    .no_row = "[%s:%d]No Record found",
    .done = "[%s:%d]Successfully returns the fru-compact_sdr count %d",
};
constexpr Count kCountFull = {
    .select =
        "select count(*) from %q \t\t\tJOIN %q ON %q.EntityID = %q.EntityID and \t\t\t%q.EntityInst = "
        "%q.EntityInstance;",
    .no_row = "[%s:%d]No Records Found",
    .done = "[%s:%d]Successfully returns the fru-full_sdr count %d",
};

// Reads the inventory strings of the FRU on whose row the join stands. Returns SQLite's code when that does not
// compile.
std::int32_t read_inventory(sqlite3* db, Site site, Statement& join, fru_sdr_rec* record) {
  const auto key = [&join](int column) { return sqlite3_column_int(join.get(), column); };
  SqlText text(sqlite3_mprintf(
      "select ChassisSerNumber, ChassisPartNumber, \t\t\t    \t\tChassisCustFields, ProdSerNumber, ProdPartNumber, "
      "ProdMfrName, \t\t\t    \t\tBrdSerNumber, BrdPartNumber, BrdMfrName from '%q' where \t\t\t    "
      "\t\t%q.FruIDSlaveAddr==%i and %q.DeviceAccessAddr==%i and \t\t\t    \t\t%q.LUNBusID==%i and "
      "%q.ChannelNumber==%i;",
      kFru, kFru, key(0), kFru, key(1), kFru, key(2), kFru, key(3)));
  Statement inventory;
  const std::int32_t code = inventory.compile(db, site, text);
  if (code != SQLITE_OK) {
    // QUIRK: Neither is the text released nor the join finalised. Test:
    // FruSensorJoins.GetAllStopsWhenTheInventoryDoesNotCompile.
    text.leave_allocated();
    join.leave_open();
    return code;
  }
  if (inventory.missing()) return kOk;
  trace(site, Message("[%s:%d]Get all Chassis, Board, Product info from FRU table"));
  if (inventory.step() == SQLITE_ROW) read_row(inventory.get(), kRuns<kInventoryColumns>.layout, record, Before::kZero);
  return kOk;
}

// Written out: a second statement reads the inventory strings row by row.
std::int32_t get_all_pairs(sqlite3* db, Site site, const char* sensors, CountFunction* count_pairs, std::int32_t* count,
                           fru_sdr_rec** records, Format<> count_failed, Format<> done) {
  *records = nullptr;
  std::int32_t pairs = 0;
  const std::int32_t counted = count_pairs(db, &pairs);
  if (pairs == 0) return kOk;
  if (counted != kOk || pairs < 0) {
    trace(site, count_failed);
    return kFailure;
  }
  *count = pairs;

  const SqlText text(sqlite3_mprintf(
      "select %q.FruIDSlaveAddr, %q.DeviceAccessAddr, \t    \t\t%q.LUNBusID, %q.ChannelNumber, %q.EntityID, "
      "%q.EntityInst, \t    \t\t%q.IdStrLen, IdStr from %q \t    \t\tJOIN %q ON %q.EntityID = %q.EntityID and \t    "
      "\t\t%q.EntityInst = %q.EntityInstance;",
      kFru, kFru, kFru, kFru, kFru, kFru, kFru, kFru, sensors, kFru, sensors, kFru, sensors));
  Statement join;
  if (join.compile(db, site, text) != SQLITE_OK) return kFailure;
  *records = static_cast<fru_sdr_rec*>(std::calloc(static_cast<std::size_t>(pairs), sizeof(fru_sdr_rec)));
  if (*records == nullptr) return out_of_memory(site, join);
  if (join.missing()) return kOk;

  trace(site, Message("[%s:%d]Get all Physical asset records from database"));
  fru_sdr_rec* next = *records;
  while (join.step() == SQLITE_ROW) {
    if (next == *records + pairs) continue;  // a row that appeared since the count
    read_row(join.get(), kRuns<kJoinColumns>.layout, next, Before::kZero);
    trace(site, Format<'d', 'd'>("[%s:%d]EntityID :: %d\n Entity Instance::%d\n"), next->EntityID, next->EntityInst);
    const std::int32_t code = read_inventory(db, site, join, next);
    if (code != SQLITE_OK) return code;
    ++next;
  }
  trace(site, done);
  return join.finalize();
}

constexpr GetOne kGetPair = {
    .select =
        "select FruIDSlaveAddr, DeviceAccessAddr, \t\t\tLUNBusID, ChannelNumber, %q.EntityID, EntityInstance, "
        "ChassisSerNumber,\t\t\tChassisPartNumber, ChassisCustFields, ProdSerNumber, \t\t\tProdPartNumber, "
        "ProdMfrName, BrdSerNumber, BrdPartNumber, \t\t\tBrdMfrName, %q.IdStrLen, IdStr from %q, %q where "
        "\t\t\t%q.EntityID==%q.EntityID and %q.EntityInst==%q.EntityInstance \t\t\tand %q.EntityID == %i and "
        "EntityInst == %i;",
    .no_statement = "[%s:%d]Fail to get physical asset records",
    .no_row = "[%s:%d]Fail to get physical asset records",
    .reading = "[%s:%d]Get Physical asset record from database",
    .done = "[%s:%d]Successfully got the Physical Assert",
    .compile_error = CompileError::kReturnsSqliteCode,
};

using Counts = Table<kFru, kNoColumns, kCountCompact, kCountFull>;
using Pair = Table<kFru, kPairColumns, kGetPair>;

// IdStrLen is that of the length table.
std::int32_t get_pair(sqlite3* db, Site site, const char* sensors, const char* length, std::int32_t EntityID,
                      std::int32_t EntityInst, fru_sdr_rec* record) {
  return fill_row(Pair::form<kGetPair>(), site, db, record, kFru, length, kFru, sensors, kFru, sensors, kFru, sensors,
                  kFru, EntityID, EntityInst);
}

}  // namespace

std::int32_t db_get_fru_compact_sdr_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return count_rows(Counts::form<kCountCompact>(), here(), db, count, kFru, kCompact, kFru, kCompact, kFru, kCompact);
}

std::int32_t db_get_all_fru_compact_sdr(sqlite3* db, std::int32_t* count, fru_sdr_rec** records) noexcept {
  return get_all_pairs(db, here(), kCompact, db_get_fru_compact_sdr_cnt, count, records,
                       "[%s:%d]Fail to get physical asset records from compact_sdr",
                       "[%s:%d]Successfully got all the Physical Assert from compact_sdr");
}

std::int32_t db_get_fru_compact_sdr(sqlite3* db, std::int32_t EntityID, std::int32_t EntityInst,
                                    fru_sdr_rec* record) noexcept {
  return get_pair(db, here(), kCompact, kCompact, EntityID, EntityInst, record);
}

std::int32_t db_get_fru_full_sdr_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return count_rows(Counts::form<kCountFull>(), here(), db, count, kFru, kFull, kFru, kFull, kFru, kFull);
}

std::int32_t db_get_all_fru_full_sdr(sqlite3* db, std::int32_t* count, fru_sdr_rec** records) noexcept {
  return get_all_pairs(db, here(), kFull, db_get_fru_full_sdr_cnt, count, records,
                       "[%s:%d]Fail to get physical asset records from full_sdr",
                       "[%s:%d]Successfully got all the Physical Assert from full_sdr");
}

// QUIRK: IdStrLen is the FRU's here, and the sensor's in db_get_fru_compact_sdr(). Test:
// FruSensorJoins.GetOneTakesTheLengthFromTheSensorOrFromTheFru.
std::int32_t db_get_fru_full_sdr(sqlite3* db, std::int32_t EntityID, std::int32_t EntityInst,
                                 fru_sdr_rec* record) noexcept {
  return get_pair(db, here(), kFull, kFru, EntityID, EntityInst, record);
}
