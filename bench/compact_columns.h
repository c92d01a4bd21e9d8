// The columns of table "compact_sdr" in order, each with the record member that it fills: one list for all contenders
// that write their readers and statements out. LAST is the last column, a text.
#ifndef QMV_BENCH_COMPACT_COLUMNS_H
#define QMV_BENCH_COMPACT_COLUMNS_H

#define COMPACT_COLUMNS(INTEGER, TEXT, LAST)            \
  TEXT(DeviceID, DeviceID)                              \
  INTEGER(SDRType, SDRType)                             \
  INTEGER(OwnerLUN, OwnerLUN)                           \
  INTEGER(OwnerID, OwnerID)                             \
  INTEGER(SensorNum, SensorNum)                         \
  INTEGER(EntityID, EntityID)                           \
  INTEGER(EntityInstance, EntityInstance)               \
  INTEGER(SensorInit, SensorInit)                       \
  INTEGER(SensorCaps, SensorCaps)                       \
  TEXT(SensorName, SensorName)                          \
  INTEGER(SensorType, SensorType)                       \
  INTEGER(CIMSensorType, CIMSensorType)                 \
  INTEGER(OtherSensorType, OtherSensorType)             \
  TEXT(OtherSensorTypeDesc, OtherSensorTypeDesc)        \
  INTEGER(EventTypeCode, EventTypeCode)                 \
  INTEGER(AssertionMask, AssertionMask)                 \
  INTEGER(DeAssertionMask, DeAssertionMask)             \
  INTEGER(DiscreteReadingMask, DiscreteReadingMask)     \
  INTEGER(BaseUnit, BaseUnit)                           \
  INTEGER(UnitModifier, UnitModifier)                   \
  INTEGER(RateUnit, RateUnit)                           \
  INTEGER(RecShareDir, RecShareDir)                     \
  INTEGER(PHysterysis, PHysterysis)                     \
  INTEGER(NHysterysis, NHysterysis)                     \
  INTEGER(OEM, OEM)                                     \
  INTEGER(IdStrLen, IdStrLen)                           \
  TEXT(IdStr, IdStr)                                    \
  INTEGER(IPMI_RecordID, IPMI_RecordID)                 \
  INTEGER(IsFRUAvailable, IsFRUAvailable)               \
  INTEGER(PhysicalElement, PhysicalElement)             \
  INTEGER(FruIDSlaveAddr, FruRecord.FruIDSlaveAddr)     \
  INTEGER(DeviceAccessAddr, FruRecord.DeviceAccessAddr) \
  INTEGER(LUNBusID, FruRecord.LUNBusID)                 \
  INTEGER(ChannelNumber, FruRecord.ChannelNumber)       \
  INTEGER(FRUIDStrLen, FruRecord.IDStrLen)              \
  TEXT(DevIdStr, FruRecord.DevIdStr)                    \
  TEXT(ChassisSerNumber, FruRecord.ChassisSerNumber)    \
  TEXT(ChassisPartNumber, FruRecord.ChassisPartNumber)  \
  TEXT(ChassisCustFields, FruRecord.ChassisCustFields)  \
  TEXT(ProdSerNumber, FruRecord.ProdSerNumber)          \
  TEXT(ProdPartNumber, FruRecord.ProdPartNumber)        \
  TEXT(ProdMfrName, FruRecord.ProdMfrName)              \
  TEXT(BrdSerNumber, FruRecord.BrdSerNumber)            \
  TEXT(BrdPartNumber, FruRecord.BrdPartNumber)          \
  LAST(BrdMfrName, FruRecord.BrdMfrName)

#endif
