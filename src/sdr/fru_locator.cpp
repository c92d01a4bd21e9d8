// FRU device locator records, table "fru_locator_sdr".
#include "core/shapes.h"
#include "qmv/sdr.h"
#include "sdr/site.h"

namespace {

using namespace qmv;
using sdr::here;
using Record = fru_locator_sdr_rec;

constexpr char kTable[] = "fru_locator_sdr";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(FruIDSlaveAddr), QMV_COLUMN(DeviceAccessAddr), QMV_COLUMN(LUNBusID),
                    QMV_COLUMN(ChannelNumber), QMV_COLUMN(DevType), QMV_COLUMN(DevTypeModifier), QMV_COLUMN(EntityID),
                    QMV_COLUMN(EntityInst), QMV_COLUMN(OEMField), QMV_COLUMN(IDStrLen), QMV_COLUMN(DevIdStr));
static_assert(kColumns.table_columns() == 11);

constexpr auto kKey = columns<Record>(QMV_COLUMN(FruIDSlaveAddr), QMV_COLUMN(DeviceAccessAddr), QMV_COLUMN(LUNBusID),
                                      QMV_COLUMN(ChannelNumber));

constexpr GetOne kGet = {
    .select =
        "select * from %q where FruIDSlaveAddr=%i and \t\t\t\tDeviceAccessAddr=%i and LUNBusID=%i and "
        "\t\t\t\tChannelNumber=%i;",
    .no_statement = "[%s:%d]Fail to get FRU_LOCATOR_SDR record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the FRU_LOCATOR_SDR record",
    .reading = "[%s:%d]Get FRU_LOCATOR_SDR record from database",
    .done = kSilent,
    .out_of_memory = OutOfMemory::kReturnsOneWithDetail,
};

// QUIRK: SQLite rejects the update for the comma in its where clause, so a row that exists keeps its values. Hosts
// count on it. Test: FruLocator.SetOnAnExistingKeyKeepsTheRow.
constexpr Set kSet = {
    .insert =
        "insert into %q (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, \t\t\tChannelNumber, DevType, "
        "DevTypeModifier, EntityID, EntityInst,\t\t\tOEMField, IDStrLen, DevIdStr) values (%i, %i, %i, %i, %i, %i, "
        "\t\t\t%i, %i, %i, %i, '%.256q');",
    .update =
        "update %q set FruIDSlaveAddr=%i, DeviceAccessAddr=%i, \t\t\tLUNBusID=%i, ChannelNumber=%i, DevType=%i, "
        "DevTypeModifier=%i, \t\t\tEntityID=%i, EntityInst=%i, OEMField=%i, IDStrLen=%i, \t\t\tDevIdStr='%.256q' "
        "where FruIDSlaveAddr=%i and DeviceAccessAddr=%i, \t\t\tLUNBusID=%i and ChannelNumber=%i ;",
    .present = "[%s:%d]FRU_LOCATOR_SDR record is already present with that key",
    .done = "[%s:%d]Successfully update the FRU_LOCATOR_SDR record",
};

using Locator = Table<kTable, kColumns, kGet, kSet>;

}  // namespace

std::int32_t db_get_fru_locator_sdr_info(sqlite3* db, std::int32_t FruIDSlaveAddr, std::int32_t DeviceAccessAddr,
                                         std::int32_t LUNBusID, std::int32_t ChannelNumber,
                                         fru_locator_sdr_rec** record) noexcept {
  return get_one<Locator>(here(), db, record, FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber);
}

std::int32_t db_set_fru_locator_sdr_info(sqlite3* db, const fru_locator_sdr_rec* record) noexcept {
  return set<Locator, kKey>(here(), db, record);
}
