// Sensors, FRUs, the event log, managed systems and the IPMI session.
#include "table.h"

namespace qmv::test {
namespace {

Table compact_sdr() {
  using Record = compact_sdr_rec;
  return {"cim",
          "compact_sdr",
          {"DeviceID"},
          {FIELD(DeviceID),
           FIELD(SDRType),
           FIELD(OwnerLUN),
           FIELD(OwnerID),
           FIELD(SensorNum),
           FIELD(EntityID),
           FIELD(EntityInstance),
           FIELD(SensorInit),
           FIELD(SensorCaps),
           FIELD(SensorName),
           FIELD(SensorType),
           FIELD(CIMSensorType),
           FIELD(OtherSensorType),
           FIELD(OtherSensorTypeDesc),
           FIELD(EventTypeCode),
           FIELD(AssertionMask),
           FIELD(DeAssertionMask),
           FIELD(DiscreteReadingMask),
           FIELD(BaseUnit),
           FIELD(UnitModifier),
           FIELD(RateUnit),
           FIELD(RecShareDir),
           FIELD(PHysterysis),
           FIELD(NHysterysis),
           FIELD(OEM),
           FIELD(IdStrLen),
           FIELD(IdStr),
           FIELD(IPMI_RecordID),
           FIELD(IsFRUAvailable),
           FIELD(PhysicalElement),
           FIELD_FROM("FruIDSlaveAddr", FruRecord.FruIDSlaveAddr),
           FIELD_FROM("DeviceAccessAddr", FruRecord.DeviceAccessAddr),
           FIELD_FROM("LUNBusID", FruRecord.LUNBusID),
           FIELD_FROM("ChannelNumber", FruRecord.ChannelNumber),
           FIELD_FROM("FRUIDStrLen", FruRecord.IDStrLen),
           FIELD_FROM("DevIdStr", FruRecord.DevIdStr),
           FIELD_FROM("ChassisSerNumber", FruRecord.ChassisSerNumber),
           FIELD_FROM("ChassisPartNumber", FruRecord.ChassisPartNumber),
           FIELD_FROM("ChassisCustFields", FruRecord.ChassisCustFields),
           FIELD_FROM("ProdSerNumber", FruRecord.ProdSerNumber),
           FIELD_FROM("ProdPartNumber", FruRecord.ProdPartNumber),
           FIELD_FROM("ProdMfrName", FruRecord.ProdMfrName),
           FIELD_FROM("BrdSerNumber", FruRecord.BrdSerNumber),
           FIELD_FROM("BrdPartNumber", FruRecord.BrdPartNumber),
           FIELD_FROM("BrdMfrName", FruRecord.BrdMfrName)},
          {SET(db_set_compact_sdr_info)},
          {ALL(db_get_all_compact_sdrs), ONE(db_get_compact_sdr, "DeviceID"),
           ONE(db_get_compact_sdr_info, "SensorNum", "DeviceID", "OwnerLUN", "OwnerID"),
           ONE(db_get_compact_sdr_by_entityid_entityinst, "EntityID", "EntityInstance")}};
}

Table full_sdr() {
  using Record = full_sdr_rec;
  return {"cim",
          "full_sdr",
          {"DeviceID"},
          {FIELD(DeviceID),
           FIELD(SDRType),
           FIELD(OwnerID),
           FIELD(OwnerLUN),
           FIELD(SensorNum),
           FIELD(EntityID),
           FIELD(EntityInstance),
           FIELD(SensorInit),
           FIELD(SensorCaps),
           FIELD(SensorName),
           FIELD(SensorType),
           FIELD(CIMSensorType),
           FIELD(OtherSensorType),
           FIELD(OtherSensorTypeDesc),
           FIELD(EventTypeCode),
           FIELD(AssertionMask),
           FIELD(DeAssertionMask),
           FIELD(DiscreteReadingMask),
           FIELD(BaseUnit),
           FIELD(UnitModifier),
           FIELD(RateUnit),
           FIELD(Linearization),
           FIELD(M),
           FIELD(MTolerance),
           FIELD(B),
           FIELD(BAccuracy),
           FIELD(Accuracy),
           FIELD(RBExp),
           FIELD(AnalogCharFlag),
           FIELD(NominalRdg),
           FIELD(NormalMax),
           FIELD(NormalMin),
           FIELD(SensorMaxRdg),
           FIELD(SensorMinRdg),
           FIELD(UpperNRThreshold),
           FIELD(UpperCriticalThreshold),
           FIELD(UpperNCThreshold),
           FIELD(LowerNRThreshold),
           FIELD(LowerCriticalThreshold),
           FIELD(LowerNCThreshold),
           FIELD(PHysterysis),
           FIELD(NHysterysis),
           FIELD(OEM),
           FIELD(IdStrLen),
           FIELD(IdStr),
           FIELD(IPMI_RecordID),
           FIELD(IsFRUAvailable),
           FIELD(PhysicalElement),
           FIELD_FROM("FruIDSlaveAddr", FruRecord.FruIDSlaveAddr),
           FIELD_FROM("DeviceAccessAddr", FruRecord.DeviceAccessAddr),
           FIELD_FROM("LUNBusID", FruRecord.LUNBusID),
           FIELD_FROM("ChannelNumber", FruRecord.ChannelNumber),
           FIELD_FROM("FRUIDStrLen", FruRecord.IDStrLen),
           FIELD_FROM("DevIdStr", FruRecord.DevIdStr),
           FIELD_FROM("ChassisSerNumber", FruRecord.ChassisSerNumber),
           FIELD_FROM("ChassisPartNumber", FruRecord.ChassisPartNumber),
           FIELD_FROM("ChassisCustFields", FruRecord.ChassisCustFields),
           FIELD_FROM("ProdSerNumber", FruRecord.ProdSerNumber),
           FIELD_FROM("ProdPartNumber", FruRecord.ProdPartNumber),
           FIELD_FROM("ProdMfrName", FruRecord.ProdMfrName),
           FIELD_FROM("BrdSerNumber", FruRecord.BrdSerNumber),
           FIELD_FROM("BrdPartNumber", FruRecord.BrdPartNumber),
           FIELD_FROM("BrdMfrName", FruRecord.BrdMfrName)},
          {SET(db_set_full_sdr_info)},
          {ALL(db_get_all_full_sdrs), ONE(db_get_full_sdr, "DeviceID"),
           ONE(db_get_full_sdr_info, "SensorNum", "DeviceID", "OwnerLUN", "OwnerID"),
           ONE(db_get_full_sdr_by_entityid_entityinst, "EntityID", "EntityInstance")}};
}

Table fru() {
  using Record = fru_rec;
  return {"cim",
          "fru",
          {"FruIDSlaveAddr", "DeviceAccessAddr", "LUNBusID", "ChannelNumber"},
          {FIELD(FruIDSlaveAddr), FIELD(DeviceAccessAddr), FIELD(LUNBusID), FIELD(ChannelNumber), FIELD(EntityID),
           FIELD(EntityInst), FIELD(IDStrLen), FIELD(DevIdStr), FIELD(ChassisSerNumber), FIELD(ChassisPartNumber),
           FIELD(ChassisCustFields), FIELD(ProdSerNumber), FIELD(ProdPartNumber), FIELD(ProdMfrName),
           FIELD(BrdSerNumber), FIELD(BrdPartNumber), FIELD(BrdMfrName)},
          {keeping(SET(db_set_fru_info))},
          {ALL(db_get_all_fru_info),
           ONE(db_get_fru_info, "FruIDSlaveAddr", "DeviceAccessAddr", "LUNBusID", "ChannelNumber"),
           reader_into<Record>("db_get_fru_by_entity_id", [](sqlite3* db, const Row& row, Record* to) {
             return db_get_fru_by_entity_id(db, to, row.at("EntityID"));
           })}};
}

Table fru_locator_sdr() {
  using Record = fru_locator_sdr_rec;
  return {
      "cim",
      "fru_locator_sdr",
      {"FruIDSlaveAddr", "DeviceAccessAddr", "LUNBusID", "ChannelNumber"},
      {FIELD(FruIDSlaveAddr), FIELD(DeviceAccessAddr), FIELD(LUNBusID), FIELD(ChannelNumber), FIELD(DevType),
       FIELD(DevTypeModifier), FIELD(EntityID), FIELD(EntityInst), FIELD(OEMField), FIELD(IDStrLen), FIELD(DevIdStr)},
      {keeping(SET(db_set_fru_locator_sdr_info))},
      {ONE(db_get_fru_locator_sdr_info, "FruIDSlaveAddr", "DeviceAccessAddr", "LUNBusID", "ChannelNumber")}};
}

Table device() {
  using Record = device_rec;
  return {
      "cim",
      "device",
      {"GUID", "DeviceType"},
      {FIELD(IPAddress), FIELD(GUID), FIELD(DeviceType), FIELD(RequestedState), FIELD(EntityID), FIELD(EntityInstance)},
      {SET(db_set_device)},
      {ONE(db_get_device, "GUID", "DeviceType"), ONE(db_get_device_bytype, "DeviceType")}};
}

Table ipmi_session() {
  using Record = ipmi_session_rec;
  return {"cim",
          "ipmi_session",
          {},
          {FIELD(SessionText0), FIELD(SessionValue1), FIELD(SessionText2), FIELD(SessionText3), FIELD(SessionText4),
           FIELD(SessionText5), FIELD(SessionText6), FIELD(SessionText7), FIELD(SessionText8)},
          {},
          {ONE(db_get_ipmi_session_info)}};
}

Table sel_info() {
  using Record = sel_info_rec;
  // The reader is one column behind after the first.
  const std::vector<Field> shifted = {FIELD(MaxNoOfSels),
                                      FIELD_FROM("MaxNoOfSels", CompletionCode),
                                      FIELD_FROM("CompletionCode", Version),
                                      FIELD_FROM("Version", RecCnt),
                                      FIELD_FROM("RecCnt", FreeSpace),
                                      FIELD_FROM("FreeSpace", AddTimeStamp),
                                      FIELD_FROM("AddTimeStamp", EraseTimeStamp),
                                      FIELD_FROM("EraseTimeStamp", OperationSupport)};
  return {"cim",
          "sel_info",
          {"Version"},
          {FIELD(MaxNoOfSels), FIELD(CompletionCode), FIELD(Version), FIELD(RecCnt), FIELD(FreeSpace),
           FIELD(AddTimeStamp), FIELD(EraseTimeStamp), FIELD(OperationSupport)},
          {SET(db_set_selinfo)},
          {ONE(db_get_selinfo).filling(shifted)}};
}

Table sel() {
  using Record = sel_rec;
  const auto add = [](sqlite3* db, const Record* record) { return db_addsel(db, record, 0); };
  return {
      "cim",
      "sel",
      {"RecordID"},
      {FIELD(RecordID), FIELD(RecordType), FIELD(TimeStamp), FIELD(GeneratorID), FIELD(EventType), FIELD(EvMRev),
       FIELD(SensorType), FIELD(SensorNum), FIELD(EventDir), FIELD(EventData1), FIELD(EventData2), FIELD(EventData3)},
      {setter<Record>("db_addsel", add)},
      {ALL(db_get_all_sel_records), ONE(db_get_sel_record, "RecordID")}};
}

}  // namespace

std::vector<Table> sensor_tables() {
  return {compact_sdr(), full_sdr(), fru(), fru_locator_sdr(), device(), ipmi_session(), sel_info(), sel()};
}

}  // namespace qmv::test
