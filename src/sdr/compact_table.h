// What the component queries share with the accessors of table "compact_sdr": its columns, and what a get-all says.
#ifndef QMV_SDR_COMPACT_TABLE_H
#define QMV_SDR_COMPACT_TABLE_H

#include "core/columns.h"
#include "core/forms.h"
#include "qmv/sdr.h"
#include "sdr/embedded_fru.h"

namespace qmv::sdr {

inline constexpr char kCompactTable[] = "compact_sdr";

inline constexpr auto kCompactColumns = [] {
  using Record = compact_sdr_rec;
  return columns<Record>(
      QMV_COLUMN(DeviceID), QMV_COLUMN(SDRType), QMV_COLUMN(OwnerLUN), QMV_COLUMN(OwnerID), QMV_COLUMN(SensorNum),
      QMV_COLUMN(EntityID), QMV_COLUMN(EntityInstance), QMV_COLUMN(SensorInit), QMV_COLUMN(SensorCaps),
      QMV_COLUMN(SensorName), QMV_COLUMN(SensorType), QMV_COLUMN(CIMSensorType), QMV_COLUMN(OtherSensorType),
      QMV_COLUMN(OtherSensorTypeDesc), QMV_COLUMN(EventTypeCode), QMV_COLUMN(AssertionMask),
      QMV_COLUMN(DeAssertionMask), QMV_COLUMN(DiscreteReadingMask), QMV_COLUMN(BaseUnit), QMV_COLUMN(UnitModifier),
      QMV_COLUMN(RateUnit), QMV_COLUMN(RecShareDir), QMV_COLUMN(PHysterysis), QMV_COLUMN(NHysterysis), QMV_COLUMN(OEM),
      QMV_COLUMN(IdStrLen), QMV_COLUMN(IdStr), QMV_COLUMN(IPMI_RecordID), QMV_COLUMN(IsFRUAvailable),
      QMV_COLUMN(PhysicalElement), QMV_EMBEDDED_FRU);
}();
static_assert(kCompactColumns.table_columns() == 45);

constexpr GetAll compact_get_all(Sql select) {
  return {
      .select = select,
      .count_failed = "[%s:%d]Fail to get sensor records",
      .no_rows = kSilent,
      .reading = "[%s:%d]Get All compact SDR records from database",
      .row = "[%s:%d]Successfully got the Sensor record",
      .done = "[%s:%d]Successfully got all the sensors",
  };
}

}  // namespace qmv::sdr

#endif
