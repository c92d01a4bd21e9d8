// FRU inventory records, table "fru".
#include "qmv/fru.h"

#include "core/shapes.h"

namespace {

using namespace qmv;

constexpr Site here(std::uint32_t line = __builtin_LINE()) {
  return {Module::kFru, line};
}

using Record = fru_rec;

constexpr char kTable[] = "fru";

constexpr auto kColumns = columns<Record>(
    QMV_COLUMN(FruIDSlaveAddr), QMV_COLUMN(DeviceAccessAddr), QMV_COLUMN(LUNBusID), QMV_COLUMN(ChannelNumber),
    QMV_COLUMN(EntityID), QMV_COLUMN(EntityInst), QMV_COLUMN(IDStrLen), QMV_COLUMN(DevIdStr),
    QMV_COLUMN(ChassisSerNumber), QMV_COLUMN(ChassisPartNumber), QMV_COLUMN(ChassisCustFields),
    QMV_COLUMN(ProdSerNumber), QMV_COLUMN(ProdPartNumber), QMV_COLUMN(ProdMfrName), QMV_COLUMN(BrdSerNumber),
    QMV_COLUMN(BrdPartNumber), QMV_COLUMN(BrdMfrName));
static_assert(kColumns.table_columns() == 17);

constexpr auto kKey = columns<Record>(QMV_COLUMN(FruIDSlaveAddr), QMV_COLUMN(DeviceAccessAddr), QMV_COLUMN(LUNBusID),
                                      QMV_COLUMN(ChannelNumber));

constexpr Count kCount = {
    .select = "select count(*) from %q;",
    .no_row = "[%s:%d]No records found",
    .done = "[%s:%d]Successfully returns the FRU count",
};

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get fru records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all FRU from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all the FRU",
};

constexpr GetOne kGetByAddress = {
    .select =
        "select * from %q where FruIDSlaveAddr=%i and \t\t\t\tDeviceAccessAddr=%i and LUNBusID=%i and "
        "\t\t\t\tChannelNumber=%i;",
    .no_statement = "[%s:%d]Fail to get FRU record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the FRU record",
    .reading = "[%s:%d]Get FRU record from database",
    .done = kSilent,
    .out_of_memory = OutOfMemory::kReturnsOneWithDetail,
};

// QUIRK: SQLite rejects the update for the comma in its where clause, so a row that exists keeps its values. Hosts
// count on an inventory that is written once. Test: Fru.SetOnAnExistingKeyKeepsTheRow.
constexpr Set kSet = {
    .insert =
        "insert into %q (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, \t\t\tChannelNumber, EntityID, EntityInst, "
        "IDStrLen, DevIdStr, ChassisSerNumber,\t\t\tChassisPartNumber, ChassisCustFields, ProdSerNumber, "
        "ProdPartNumber,\t\t\tProdMfrName, BrdSerNumber, BrdPartNumber, BrdMfrName) \t\t\tvalues (%i, %i, %i, %i, "
        "%i, %i, %i, '%.256q', '%.256q', '%.256q', '%.256q', '%.256q', '%.256q', \t\t\t'%.256q', '%.256q', "
        "'%.256q', '%.256q');",
    .update =
        "update %q set FruIDSlaveAddr=%i, DeviceAccessAddr=%i, LUNBusID=%i, ChannelNumber=%i, EntityID=%i, "
        "EntityInst=%i, IDStrLen=%i, DevIdStr='%.256q', ChassisSerNumber='%.256q', ChassisPartNumber='%.256q', "
        "ChassisCustFields='%.256q', ProdSerNumber='%.256q', ProdPartNumber='%.256q' ,\t\t\tProdMfrName='%.256q', "
        "BrdSerNumber='%.256q', BrdPartNumber='%.256q', BrdMfrName='%.256q' where FruIDSlaveAddr=%i and "
        "DeviceAccessAddr=%i, \t\t\tLUNBusID=%i and ChannelNumber=%i ;",
    .present = "[%s:%d]FRU record is already present with that key",
    .done = "[%s:%d]Successfully update the FRU record",
};

using Fru = Table<kTable, kColumns, kCount, kGetAll, kGetByAddress, kSet>;

}  // namespace

std::int32_t db_get_fru_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<Fru>(here(), db, count);
}

std::int32_t db_get_all_fru_info(sqlite3* db, std::int32_t* count, fru_rec** records) noexcept {
  return get_all<Fru>(here(), db, counted(records, db_get_fru_cnt, db), count, records);
}

std::int32_t db_get_fru_info(sqlite3* db, std::int32_t FruIDSlaveAddr, std::int32_t DeviceAccessAddr,
                             std::int32_t LUNBusID, std::int32_t ChannelNumber, fru_rec** record) noexcept {
  return get_one<Fru>(here(), db, record, FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber);
}

std::int32_t db_set_fru_info(sqlite3* db, const fru_rec* record) noexcept {
  return set<Fru, kKey>(here(), db, record);
}

// Written out: it answers 0 without a row, and tests its text.
std::int32_t db_get_fru_by_entity_id(sqlite3* db, fru_rec* record, std::int32_t EntityID) noexcept {
  const Site site = here();
  if (record == nullptr) return kFailure;
  const SqlText text(sqlite3_mprintf("select * from %q where EntityID=%i;", Fru::name(), EntityID));
  if (text.get() == nullptr) return kFailure;
  Statement statement;
  if (statement.compile(db, site, text) != SQLITE_OK || statement.missing()) return kFailure;
  trace(site, Message("[%s:%d]Get FRU from database"));
  if (statement.step() == SQLITE_ROW) read_row(statement.get(), Fru::layout(), record, Before::kUnknown);
  return kOk;
}
