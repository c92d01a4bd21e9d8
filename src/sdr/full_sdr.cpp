// Full sensor records, table "full_sdr".
#include <cstdio>

#include "core/shapes.h"
#include "qmv/sdr.h"
#include "sdr/embedded_fru.h"
#include "sdr/site.h"

namespace {

using namespace qmv;
using sdr::here;
using Record = full_sdr_rec;

constexpr char kTable[] = "full_sdr";

// The record has OwnerID and OwnerLUN the other way round than the table; both are matched by name.
constexpr auto kColumns = columns<Record>(
    QMV_COLUMN(DeviceID), QMV_COLUMN(SDRType), QMV_COLUMN(OwnerLUN), QMV_COLUMN(OwnerID), QMV_COLUMN(SensorNum),
    QMV_COLUMN(EntityID), QMV_COLUMN(EntityInstance), QMV_COLUMN(SensorInit), QMV_COLUMN(SensorCaps),
    QMV_COLUMN(SensorName), QMV_COLUMN(SensorType), QMV_COLUMN(CIMSensorType), QMV_COLUMN(OtherSensorType),
    QMV_COLUMN(OtherSensorTypeDesc), QMV_COLUMN(EventTypeCode), QMV_COLUMN(AssertionMask), QMV_COLUMN(DeAssertionMask),
    QMV_COLUMN(DiscreteReadingMask), QMV_COLUMN(BaseUnit), QMV_COLUMN(UnitModifier), QMV_COLUMN(RateUnit),
    QMV_COLUMN(Linearization), QMV_COLUMN(M), QMV_COLUMN(MTolerance), QMV_COLUMN(B), QMV_COLUMN(BAccuracy),
    QMV_COLUMN(Accuracy), QMV_COLUMN(RBExp), QMV_COLUMN(AnalogCharFlag), QMV_COLUMN(NominalRdg), QMV_COLUMN(NormalMax),
    QMV_COLUMN(NormalMin), QMV_COLUMN(SensorMaxRdg), QMV_COLUMN(SensorMinRdg), QMV_COLUMN(UpperNRThreshold),
    QMV_COLUMN(UpperCriticalThreshold), QMV_COLUMN(UpperNCThreshold), QMV_COLUMN(LowerNRThreshold),
    QMV_COLUMN(LowerCriticalThreshold), QMV_COLUMN(LowerNCThreshold), QMV_COLUMN(PHysterysis), QMV_COLUMN(NHysterysis),
    QMV_COLUMN(OEM), QMV_COLUMN(IdStrLen), QMV_COLUMN(IdStr), QMV_COLUMN(IPMI_RecordID), QMV_COLUMN(IsFRUAvailable),
    QMV_COLUMN(PhysicalElement), QMV_EMBEDDED_FRU);
static_assert(kColumns.table_columns() == 63);

constexpr auto kKey = columns<Record>(QMV_COLUMN(DeviceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get numericsensor records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get All NumericSensor from database",
    .row = "[%s:%d]Successfully got the NumericSensor record",
    .done = "[%s:%d]Successfully got all the NumericSensors",
};

constexpr Count kCount = {
    .no_row = "[%s:%d]No records found",
    .done = "[%s:%d]Successfully return the no. of numeric sensor present",
};

constexpr GetOne get_one_form(Sql select) {
  return {
      .select = select,
      .no_statement = "[%s:%d]Fail to get NumericSensor record. SQLite stmt is NULL",
      .no_row = "[%s:%d]Fail to get the NumericSensor record",
      .reading = kSilent,
      .done = "[%s:%d]Successfully got the NumericSensor record",
  };
}
constexpr GetOne kGetByNumber =
    get_one_form("select * from %q where SensorNum='%i' and \t\t\t\tDeviceID='%q' and OwnerLUN='%i' and OwnerID='%i';");
constexpr GetOne kGetByDeviceId = [] {
  GetOne form = get_one_form("select * from %q where DeviceID='%q';");
  form.compile_error = CompileError::kReturnsSqliteCode;
  form.out_of_memory = OutOfMemory::kReturnsNoMemory;
  return form;
}();
constexpr GetOne kGetByEntity = {
    .select = "select * from %q where EntityID=%i and EntityInstance=%i;",
    .no_statement = "[%s:%d]Failed to get Full SDR records. SQLite stmt is NULL",
    .no_row = "[%s:%d]Failed to get the Full SDR record",
    .reading = "[%s:%d]Get compact sdr from database",
    .done = kSilent,
    .compile_error = CompileError::kReturnsSqliteCode,
    .out_of_memory = OutOfMemory::kReturnsNoMemory,
};

constexpr Set kSet = {
    .insert =
        "insert into %q (DeviceID, SDRType, OwnerLUN, OwnerID, SensorNum, EntityID, EntityInstance, SensorInit, "
        "SensorCaps, SensorName, SensorType, CIMSensorType, OtherSensorType, OtherSensorTypeDesc, EventTypeCode, "
        "AssertionMask, DeAssertionMask, DiscreteReadingMask, BaseUnit, UnitModifier, RateUnit, Linearization, "
        "M, MTolerance, B, BAccuracy, Accuracy, RBExp, AnalogCharFlag, NominalRdg, NormalMax, NormalMin, "
        "SensorMaxRdg, SensorMinRdg, UpperNRThreshold, UpperCriticalThreshold, UpperNCThreshold, "
        "LowerNRThreshold, LowerCriticalThreshold, LowerNCThreshold, PHysterysis, NHysterysis, OEM, IdStrLen, "
        "IdStr, IPMI_RecordID, IsFRUAvailable, PhysicalElement, FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, "
        "ChannelNumber, FRUIDStrLen, DevIdStr, ChassisSerNumber, ChassisPartNumber, ChassisCustFields, "
        "ProdSerNumber, ProdPartNumber, ProdMfrName, BrdSerNumber, BrdPartNumber, BrdMfrName) values ('%.256q', "
        "%i, %i, %i , %i, %i, \t\t%i, %i, %i, '%.256q', %i, %i, %i, '%.256q', %i, %i, %i, %i, %i, %i, %i, %i, "
        "%i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, %i, '%.256q', %i, "
        "%i, %i, %i, %i, %i, %i, %i, '%.256q', '%.256q', '%.256q', '%.256q', '%.256q', '%.256q', '%.256q', "
        "'%.256q', '%.256q', '%.256q');",
    .update =
        "update %q set DeviceID='%.256q', SDRType=%i, OwnerLUN=%i, OwnerID=%i, SensorNum=%i, EntityID=%i, "
        "EntityInstance=%i, SensorInit=%i, SensorCaps=%i, SensorName='%.256q', SensorType=%i, CIMSensorType=%i, "
        "OtherSensorType=%i, OtherSensorTypeDesc='%.256q', EventTypeCode=%i, AssertionMask=%i, "
        "DeAssertionMask=%i, DiscreteReadingMask=%i, BaseUnit=%i, UnitModifier=%i, RateUnit=%i, "
        "Linearization=%i, M=%i, MTolerance=%i, B=%i, BAccuracy=%i, Accuracy=%i, RBExp=%i, AnalogCharFlag=%i, "
        "NominalRdg=%i, NormalMax=%i, NormalMin=%i, SensorMaxRdg=%i, SensorMinRdg=%i, UpperNRThreshold=%i, "
        "UpperCriticalThreshold=%i, UpperNCThreshold=%i, LowerNRThreshold=%i, LowerCriticalThreshold=%i, "
        "LowerNCThreshold=%i, PHysterysis=%i, NHysterysis=%i, OEM=%i, IdStrLen=%i, IdStr='%.256q', "
        "IPMI_RecordID=%i, IsFRUAvailable=%i, PhysicalElement=%i, FruIDSlaveAddr=%i, DeviceAccessAddr=%i, "
        "LUNBusID=%i, ChannelNumber=%i, FRUIDStrLen=%i, DevIdStr='%.256q', ChassisSerNumber='%.256q', "
        "ChassisPartNumber='%.256q', ChassisCustFields='%.256q', ProdSerNumber='%.256q', "
        "ProdPartNumber='%.256q', ProdMfrName='%.256q', BrdSerNumber='%.256q', BrdPartNumber='%.256q', "
        "BrdMfrName='%.256q' where DeviceID='%.256q';",
    .present = "[%s:%d]NumericSensor record is already present with that key",
    .done = "[%s:%d]Successfully update the NumericSensor record",
};

using Full = Table<kTable, kColumns, kCount, kGetAll, kGetByNumber, kGetByDeviceId, kGetByEntity, kSet>;

}  // namespace

std::int32_t db_fill_full_sdr_fields(full_sdr_rec* record, sqlite3_stmt* row) noexcept {
  if (record == nullptr || row == nullptr) return kFailure;
  read_row(row, Full::layout(), record, Before::kUnknown);
  return kOk;
}

std::int32_t db_set_full_sdr_info(sqlite3* db, const full_sdr_rec* record) noexcept {
  return set<Full, kKey>(here(), db, record);
}

std::int32_t db_get_all_full_sdrs(sqlite3* db, std::int32_t* count, full_sdr_rec** records) noexcept {
  return get_all<Full>(here(), db, counted(records, db_get_num_full_sdr, db, 0), count, records);
}

std::int32_t db_get_full_sdr_info(sqlite3* db, std::int32_t SensorNum, const char* DeviceID, std::int32_t OwnerLUN,
                                  std::int32_t OwnerID, full_sdr_rec** record) noexcept {
  return get_one<Full, kGetByNumber>(here(), db, record, SensorNum, DeviceID, OwnerLUN, OwnerID);
}

std::int32_t db_get_full_sdr_by_entityid_entityinst(sqlite3* db, std::int32_t EntityID, std::int32_t EntityInstance,
                                                    full_sdr_rec** record) noexcept {
  return get_one<Full, kGetByEntity>(here(), db, record, EntityID, EntityInstance);
}

std::int32_t db_get_full_sdr(sqlite3* db, const char* DeviceID, full_sdr_rec** record) noexcept {
  return get_one<Full, kGetByDeviceId>(here(), db, record, DeviceID);
}

// Written out: a compile error goes to standard error first.
std::int32_t db_get_num_full_sdr(sqlite3* db, std::int32_t* count, std::int32_t PhysicalElement) noexcept {
  *count = 0;
  const Site site = here();
  const SqlText text(
      PhysicalElement == 0
          ? sqlite3_mprintf("select count(*) from %q;", Full::name())
          : sqlite3_mprintf("select count(*) from (select * from %q where (PhysicalElement & %i) = %i GROUP BY "
                            "EntityID,EntityInstance);",
                            Full::name(), PhysicalElement, PhysicalElement));
  Statement statement;
  if (statement.prepare(db, text, Tail::kOmitted) != SQLITE_OK) {
    std::fprintf(stderr, "SQL Compilation error: %s", sqlite3_errmsg(db));
    log_compile_error(site, db);
    return kFailure;
  }
  return read_count(Full::form<kCount>(), site, statement, count);
}

// Written out: both failures go to standard error as well.
std::int32_t db_get_all_full_sdrs_by_phy_elem_type(sqlite3* db, std::int32_t PhysicalElement, std::int32_t* count,
                                                   full_sdr_rec** records) noexcept {
  const Site site = here();
  const auto& form = Full::form<kGetAll>();
  const std::int32_t sensors = counted(records, db_get_num_full_sdr, db, PhysicalElement);
  if (sensors < 0) {
    std::fputs(" Fail to get numericsensor records \n", stderr);
    trace(site, text(form, form.count_failed));
    return kFailure;
  }
  if (sensors == 0) return kOk;
  *count = sensors;

  const SqlText select(
      sqlite3_mprintf("select * from %q where (PhysicalElement & %i) = %i GROUP BY EntityID,EntityInstance;",
                      Full::name(), PhysicalElement, PhysicalElement));
  Statement statement;
  if (statement.compile(db, site, select) != SQLITE_OK) {
    std::fprintf(stderr, "Compilation Failed : %s \n", sqlite3_errmsg(db));
    return kFailure;
  }
  return read_rows(form, site, statement, sensors, records);
}

std::int32_t db_get_recordid_by_sensor_num(sqlite3* db, std::int32_t SensorNum, std::int32_t* IPMI_RecordID) noexcept {
  const Site site = here();
  const SqlText text(sqlite3_mprintf("select IPMI_RecordID from %q where SensorNum=%i;", Full::name(), SensorNum));
  Statement statement;
  if (statement.compile(db, site, text) != SQLITE_OK) return kFailure;
  if (statement.missing()) {
    trace(site, Message("[%s:%d]Fail to get Record ID. SQLite stmt is NULL"));
    return kFailure;
  }
  if (statement.step() != SQLITE_ROW) {
    trace(site, Message("[%s:%d]Fail to get the Record ID"));
    return kFailure;
  }
  trace(site, Message("[%s:%d]Get Record ID from database"));
  *IPMI_RecordID = sqlite3_column_int(statement.get(), 0);
  trace(site, Message("[%s:%d]Successfully got the Record ID"));
  return kOk;
}

// QUIRK: SQLite rejects "delete *", so no sensor is ever deleted; the formatted statement is formatted a second time
// and never released. Hosts rely on the row staying. Test: FullSdr.DeleteReturnsZeroAndKeepsTheRow.
std::int32_t db_del_sdr(sqlite3* db, std::int32_t IPMI_RecordID) noexcept {
  SqlText text(sqlite3_mprintf("delete * from %q where IPMI_RecordID=%i;", Full::name(), IPMI_RecordID));
  if (const char* format = text.leave_allocated(); format != nullptr) db_execute(db, format, Full::name());
  trace(here(), Message("[%s:%d]Successfully delete the sdr"));
  return kOk;
}
