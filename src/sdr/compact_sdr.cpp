// Compact sensor records, table "compact_sdr".
#include "core/shapes.h"
#include "qmv/sdr.h"
#include "sdr/compact_table.h"
#include "sdr/site.h"

namespace {

using namespace qmv;
using sdr::here;
using Record = compact_sdr_rec;

constexpr auto kKey = columns<Record>(QMV_COLUMN(DeviceID));

constexpr Count count_form(Sql select) {
  return {
      .select = select,
      .no_row = "[%s:%d]No records found",
      .done = "[%s:%d]Successfully return the no. of sensors present",
  };
}
constexpr Count kCountAll = count_form("select count(*) from %q;");
constexpr Count kCountEntities = count_form(
    "select count(*) from (select * from %q where (PhysicalElement & %i) = %i GROUP BY EntityID,EntityInstance);");

constexpr GetAll kGetAll = sdr::compact_get_all("select * from %q;");
constexpr GetAll kGetEntities =
    sdr::compact_get_all("select * from %q where (PhysicalElement & %i) = %i GROUP BY EntityID,EntityInstance;");

constexpr GetOne kGetByNumber = {
    .select = "select * from %q where SensorNum='%i' and \t\t\t\tDeviceID='%q' and OwnerLUN='%i' and OwnerID='%i';",
    .no_statement = "[%s:%d]Failed to get Compact SDR records. SQLite stmt is NULL",
    .no_row = "[%s:%d]Failed to get the Compact SDR record",
    .reading = kSilent,
    .done = "[%s:%d]Successfully got the Compact SDR record",
};

constexpr GetOne get_one_form(Sql select) {
  return {
      .select = select,
      .no_statement = "[%s:%d]Failed to get Compact SDR records. SQLite stmt is NULL",
      .no_row = "[%s:%d]Failed to get the Compact SDR record",
      .reading = "[%s:%d]Get compact sdr from database",
      .done = kSilent,
      .compile_error = CompileError::kReturnsSqliteCode,
      .out_of_memory = OutOfMemory::kReturnsNoMemory,
  };
}
constexpr GetOne kGetByEntity = get_one_form("select * from %q where EntityID=%i and EntityInstance=%i;");
constexpr GetOne kGetByDeviceId = get_one_form("select * from %q where DeviceID='%q';");

constexpr Set kSet = {
    .insert =
        "insert into %q (DeviceID, SDRType, OwnerLUN, OwnerID, SensorNum, EntityID, EntityInstance, SensorInit, "
        "SensorCaps, SensorName, SensorType, CIMSensorType, OtherSensorType, OtherSensorTypeDesc, EventTypeCode, "
        "AssertionMask, DeAssertionMask, DiscreteReadingMask, BaseUnit, UnitModifier, RateUnit, RecShareDir, "
        "PHysterysis, NHysterysis, OEM, IdStrLen, IdStr, IPMI_RecordID, IsFRUAvailable, PhysicalElement, "
        "FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, FRUIDStrLen, DevIdStr, ChassisSerNumber, "
        "ChassisPartNumber, ChassisCustFields, ProdSerNumber, ProdPartNumber, ProdMfrName, BrdSerNumber, "
        "BrdPartNumber, BrdMfrName) values ('%.256q', %i, %i, %i , %i, %i, %i, %i, %i, '%.256q', %i, %i, %i, "
        "'%.256q', %i, %i, %i, %i, %i, %i, \t\t%i, %i, %i, %i, %i, %i, '%.256q', %i, %i, %i, %i, %i, %i, %i, %i, "
        "'%.256q', '%.256q', '%.256q', '%.256q', '%.256q','%.256q', \t\t'%.256q','%.256q','%.256q','%.256q');",
    .update =
        "update %q set DeviceID='%.256q', SDRType=%i, OwnerLUN=%i, OwnerID=%i, SensorNum=%i, EntityID=%i, "
        "EntityInstance=%i, SensorInit=%i, SensorCaps=%i, SensorName='%.256q', SensorType=%i, CIMSensorType=%i, "
        "OtherSensorType=%i, OtherSensorTypeDesc='%.256q', EventTypeCode=%i, AssertionMask=%i, "
        "DeAssertionMask=%i, DiscreteReadingMask=%i, BaseUnit=%i, UnitModifier=%i, RateUnit=%i, RecShareDir=%i, "
        "PHysterysis=%i, NHysterysis=%i, OEM=%i, IdStrLen=%i, IdStr='%.256q', IPMI_RecordID=%i, "
        "IsFRUAvailable=%i, PhysicalElement=%i, FruIDSlaveAddr=%i, DeviceAccessAddr=%i, LUNBusID=%i, "
        "ChannelNumber=%i, FRUIDStrLen=%i, DevIdStr='%.256q', ChassisSerNumber='%.256q', "
        "ChassisPartNumber='%.256q', ChassisCustFields='%.256q', ProdSerNumber='%.256q', "
        "ProdPartNumber='%.256q', ProdMfrName='%.256q', BrdSerNumber='%.256q', BrdPartNumber='%.256q', "
        "BrdMfrName='%.256q'  where DeviceID='%.256q';",
    .present = "[%s:%d]Sensor record is already present with that key",
    .done = "[%s:%d]Successfully update the Sensor record",
};

using Compact = Table<sdr::kCompactTable, sdr::kCompactColumns, kCountAll, kCountEntities, kGetAll, kGetEntities,
                      kGetByNumber, kGetByEntity, kGetByDeviceId, kSet>;

}  // namespace

std::int32_t db_fill_compact_sdr_fields(compact_sdr_rec* record, sqlite3_stmt* row) noexcept {
  if (record == nullptr || row == nullptr) return kFailure;
  read_row(row, Compact::layout(), record, Before::kUnknown);
  return kOk;
}

std::int32_t db_set_compact_sdr_info(sqlite3* db, const compact_sdr_rec* record) noexcept {
  return set<Compact, kKey>(here(), db, record);
}

std::int32_t db_get_num_compact_sdr(sqlite3* db, std::int32_t* count, std::int32_t PhysicalElement) noexcept {
  return PhysicalElement == 0 ? get_count<Compact, kCountAll>(here(), db, count)
                              : get_count<Compact, kCountEntities>(here(), db, count, PhysicalElement, PhysicalElement);
}

std::int32_t db_get_all_compact_sdrs(sqlite3* db, std::int32_t* count, compact_sdr_rec** records) noexcept {
  return get_all<Compact, kGetAll>(here(), db, counted(records, db_get_num_compact_sdr, db, 0), count, records);
}

std::int32_t db_get_all_compact_sdrs_by_phy_elem_type(sqlite3* db, std::int32_t PhysicalElement, std::int32_t* count,
                                                      compact_sdr_rec** records) noexcept {
  return get_all<Compact, kGetEntities>(here(), db, counted(records, db_get_num_compact_sdr, db, PhysicalElement),
                                        count, records, PhysicalElement, PhysicalElement);
}

std::int32_t db_get_compact_sdr_info(sqlite3* db, std::int32_t SensorNum, const char* DeviceID, std::int32_t OwnerLUN,
                                     std::int32_t OwnerID, compact_sdr_rec** record) noexcept {
  return get_one<Compact, kGetByNumber>(here(), db, record, SensorNum, DeviceID, OwnerLUN, OwnerID);
}

std::int32_t db_get_compact_sdr_by_entityid_entityinst(sqlite3* db, std::int32_t EntityID, std::int32_t EntityInstance,
                                                       compact_sdr_rec** record) noexcept {
  return get_one<Compact, kGetByEntity>(here(), db, record, EntityID, EntityInstance);
}

std::int32_t db_get_compact_sdr(sqlite3* db, const char* DeviceID, compact_sdr_rec** record) noexcept {
  return get_one<Compact, kGetByDeviceId>(here(), db, record, DeviceID);
}
