// Compact sensors: their table, and what is theirs alone.
#include <string>

#include "unit/sensor_rules.h"

namespace qmv::test {
namespace {

const SensorTable& compact_sensors() {
  using Record = compact_sdr_rec;
  static const SensorTable kTable = {
      .name = "compact_sdr",
      .record_size = sizeof(Record),
      .fru_record = offsetof(Record, FruRecord),
      .fields = {FIELD(DeviceID),
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
                 FRU_FIELDS},
      .fill = [](void* record,
                 sqlite3_stmt* row) { return db_fill_compact_sdr_fields(static_cast<Record*>(record), row); },
      .set = [](sqlite3* db,
                const void* record) { return db_set_compact_sdr_info(db, static_cast<const Record*>(record)); },
      .count = db_get_num_compact_sdr,
      .get_all_by_mask = erased<Record>(db_get_all_compact_sdrs_by_phy_elem_type),
      .get_by_key = erased<Record>(db_get_compact_sdr),
      .insert =
          "insert into compact_sdr (DeviceID, SDRType, OwnerLUN, OwnerID, SensorNum, EntityID, EntityInstance, "
          "SensorInit, SensorCaps, SensorName, SensorType, CIMSensorType, OtherSensorType, OtherSensorTypeDesc, "
          "EventTypeCode, AssertionMask, DeAssertionMask, DiscreteReadingMask, BaseUnit, UnitModifier, RateUnit, "
          "RecShareDir, PHysterysis, NHysterysis, OEM, IdStrLen, IdStr, IPMI_RecordID, IsFRUAvailable, "
          "PhysicalElement, FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, FRUIDStrLen, DevIdStr, "
          "ChassisSerNumber, ChassisPartNumber, ChassisCustFields, ProdSerNumber, ProdPartNumber, ProdMfrName, "
          "BrdSerNumber, BrdPartNumber, BrdMfrName) values ('t100', 101, 102, 103 , 104, 105, 106, 107, 108, 't109', "
          "110, 111, 112, 't113', 114, 115, 116, 117, 118, 119, \t\t120, 121, 122, 123, 124, 125, 't126', 127, 128, "
          "129, 130, 131, 132, 133, 134, 't135', 't136', 't137', 't138', 't139','t140', "
          "\t\t't141','t142','t143','t144');",
      .update =
          "update compact_sdr set DeviceID='t100', SDRType=101, OwnerLUN=102, OwnerID=103, SensorNum=104, "
          "EntityID=105, EntityInstance=106, SensorInit=107, SensorCaps=108, SensorName='t109', SensorType=110, "
          "CIMSensorType=111, OtherSensorType=112, OtherSensorTypeDesc='t113', EventTypeCode=114, AssertionMask=115, "
          "DeAssertionMask=116, DiscreteReadingMask=117, BaseUnit=118, UnitModifier=119, RateUnit=120, "
          "RecShareDir=121, PHysterysis=122, NHysterysis=123, OEM=124, IdStrLen=125, IdStr='t126', IPMI_RecordID=127, "
          "IsFRUAvailable=128, PhysicalElement=129, FruIDSlaveAddr=130, DeviceAccessAddr=131, LUNBusID=132, "
          "ChannelNumber=133, FRUIDStrLen=134, DevIdStr='t135', ChassisSerNumber='t136', ChassisPartNumber='t137', "
          "ChassisCustFields='t138', ProdSerNumber='t139', ProdPartNumber='t140', ProdMfrName='t141', "
          "BrdSerNumber='t142', BrdPartNumber='t143', BrdMfrName='t144'  where DeviceID='t100';",
      .counted = "Successfully return the no. of sensors present",
      .count_without_table_print = "",
      .already_present = "Sensor record is already present with that key",
      .was_set = "Successfully update the Sensor record",
      .getting_all = "Get All compact SDR records from database",
      .got_row = "Successfully got the Sensor record",
      .got_all = "Successfully got all the sensors",
      .count_failed = "Fail to get sensor records",
  };
  return kTable;
}

const GetAllCase kGetAll[] = {
    {.name = "All",
     .table = compact_sensors(),
     .call = erased<compact_sdr_rec>(db_get_all_compact_sdrs),
     .count_statement = "select count(*) from compact_sdr;",
     .statement = "select * from compact_sdr;",
     .count_failed_print = "",
     .without_table_print = ""},
    {.name = "ByMask",
     .table = compact_sensors(),
     .call = erased<compact_sdr_rec>([](sqlite3* db, std::int32_t* count, compact_sdr_rec** records) {
       return db_get_all_compact_sdrs_by_phy_elem_type(db, 1, count, records);
     }),
     .count_statement = "select count(*) from (select * from compact_sdr where (PhysicalElement & 1) = 1 GROUP BY "
                        "EntityID,EntityInstance);",
     .statement = "select * from compact_sdr where (PhysicalElement & 1) = 1 GROUP BY EntityID,EntityInstance;",
     .count_failed_print = "",
     .without_table_print = ""},
};

const GetOneCase kGetOne[] = {
    {.name = "ByNumberKeyAndOwner",
     .table = compact_sensors(),
     .call = erased<compact_sdr_rec>([](sqlite3* db, compact_sdr_rec** record) {
       return db_get_compact_sdr_info(db, 104, "t100", 102, 103, record);
     }),
     .statement = "select * from compact_sdr where SensorNum='104' and \t\t\t\tDeviceID='t100' and OwnerLUN='102' and "
                  "OwnerID='103';",
     .got_row = "Successfully got the Compact SDR record",
     .no_row = "Failed to get the Compact SDR record",
     .no_statement = "Failed to get Compact SDR records. SQLite stmt is NULL",
     .passes_codes_on = false},
    {.name = "ByEntity",
     .table = compact_sensors(),
     .call = erased<compact_sdr_rec>([](sqlite3* db, compact_sdr_rec** record) {
       return db_get_compact_sdr_by_entityid_entityinst(db, 105, 106, record);
     }),
     .statement = "select * from compact_sdr where EntityID=105 and EntityInstance=106;",
     .got_row = "Get compact sdr from database",
     .no_row = "Failed to get the Compact SDR record",
     .no_statement = "Failed to get Compact SDR records. SQLite stmt is NULL",
     .passes_codes_on = true},
    {.name = "ByKey",
     .table = compact_sensors(),
     .call = erased<compact_sdr_rec>(
         [](sqlite3* db, compact_sdr_rec** record) { return db_get_compact_sdr(db, "t100", record); }),
     .statement = "select * from compact_sdr where DeviceID='t100';",
     .got_row = "Get compact sdr from database",
     .no_row = "Failed to get the Compact SDR record",
     .no_statement = "Failed to get Compact SDR records. SQLite stmt is NULL",
     .passes_codes_on = true},
};

INSTANTIATE_TEST_SUITE_P(Compact, Sensors, testing::Values(compact_sensors()), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Compact, SensorGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Compact, SensorGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());

class CompactSdr : public SensorTest {
 protected:
  CompactSdr() : SensorTest(compact_sensors()) {}
};

TEST_F(CompactSdr, QuoteInAKeyIsDoubled) {
  compact_sdr_rec* record = nullptr;
  EXPECT_EQ(1, db_get_compact_sdr_info(db, 1, "o'clock", 2, 3, &record));
  EXPECT_EQ(Texts({"select * from compact_sdr where SensorNum='1' and \t\t\t\tDeviceID='o''clock' and OwnerLUN='2' and "
                   "OwnerID='3';"}),
            statements());
  logged();
}

TEST_F(CompactSdr, TableHas45Columns) {
  EXPECT_EQ(45u, table_.fields.size());
}

}  // namespace
}  // namespace qmv::test
