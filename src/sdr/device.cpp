// Managed systems, table "device"; the messages call them ComputerSystem.
#include "core/shapes.h"
#include "qmv/sdr.h"
#include "sdr/site.h"

namespace {

using namespace qmv;
using sdr::here;
using Record = device_rec;

constexpr char kTable[] = "device";

// QUIRK: The address is read without regard to its field's width: a longer text runs on over the members behind it, up
// to the record's end, and what a later column does not overwrite stays. (So is the GUID, but later columns fill all
// that is behind it.) Test: Device.LongTextsRunOnUpToTheRecordsEnd.
constexpr auto kReadColumns =
    columns<Record>(QMV_COLUMN(GUID), QMV_COLUMN(DeviceType), QMV_RUNNING_COLUMN(IPAddress), QMV_COLUMN(RequestedState),
                    QMV_COLUMN(EntityID), QMV_COLUMN(EntityInstance));

constexpr auto kColumns = columns<Record>(QMV_COLUMN(GUID), QMV_COLUMN(DeviceType), QMV_COLUMN(IPAddress),
                                          QMV_COLUMN(RequestedState), QMV_COLUMN(EntityID), QMV_COLUMN(EntityInstance));
static_assert(kColumns.table_columns() == 6);

constexpr auto kKey = columns<Record>(QMV_COLUMN(GUID), QMV_COLUMN(DeviceType));

constexpr GetOne get_one_form(Sql select) {
  return {
      .select = select,
      .no_statement = "[%s:%d]Fail to get ComputerSystem record. SQLite stmt is NULL",
      .no_row = "[%s:%d]Fail to get the ComputerSystem record",
      .reading = "[%s:%d]Get ComputerSystem record from database",
      .done = "[%s:%d]Successfully got the ComputerSystem record",
  };
}
constexpr GetOne kGet = get_one_form("select * from %q where GUID='%q' and DeviceType=%i\t\t\t\t;");
constexpr GetOne kGetByType = get_one_form("select * from %q where DeviceType=%i\t\t\t\t;");

constexpr Set kSet = {
    .insert =
        "insert into %q (GUID, DeviceType, IPAddress, \t\t\tRequestedState, EntityID, EntityInstance) \t\t\tvalues "
        "('%.256q', %i, '%.256q', %i, %i, %i);",
    .update =
        "update %q set GUID='%.256q', DeviceType=%i, IPAddress='%.256q', \t\t\t\tRequestedState=%i, EntityID=%i, "
        "EntityInstance=%i \t\t\t\t where GUID='%.256q' and DeviceType=%i;",
    .present = "[%s:%d]ComputerSystem record is already present with that key",
    .done = "[%s:%d]Successfully update the ComputerSystem record",
};

using Device = Table<kTable, kReadColumns, kGet, kGetByType, kSet>;

}  // namespace

std::int32_t db_get_device(sqlite3* db, const char* GUID, std::int32_t DeviceType, device_rec** record) noexcept {
  return get_one<Device, kGet>(here(), db, record, GUID, DeviceType);
}

std::int32_t db_get_device_bytype(sqlite3* db, std::int32_t DeviceType, device_rec** record) noexcept {
  return get_one<Device, kGetByType>(here(), db, record, DeviceType);
}

std::int32_t db_set_device(sqlite3* db, const device_rec* record) noexcept {
  return set<Device, kKey, kColumns>(here(), db, record);
}
