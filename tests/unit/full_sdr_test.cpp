// Full sensors: their table, and what is theirs alone.
#include <cstdio>
#include <string>

#include "unit/sensor_rules.h"

namespace qmv::test {
namespace {

const SensorTable& full_sensors() {
  using Record = full_sdr_rec;
  static const SensorTable kTable = {
      .name = "full_sdr",
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
                 FRU_FIELDS},
      .fill = [](void* record,
                 sqlite3_stmt* row) { return db_fill_full_sdr_fields(static_cast<Record*>(record), row); },
      .set = [](sqlite3* db,
                const void* record) { return db_set_full_sdr_info(db, static_cast<const Record*>(record)); },
      .count = db_get_num_full_sdr,
      .get_all_by_mask = erased<Record>(db_get_all_full_sdrs_by_phy_elem_type),
      .get_by_key = erased<Record>(db_get_full_sdr),
      .insert =
          "insert into full_sdr (DeviceID, SDRType, OwnerLUN, OwnerID, SensorNum, EntityID, EntityInstance, "
          "SensorInit, SensorCaps, SensorName, SensorType, CIMSensorType, OtherSensorType, OtherSensorTypeDesc, "
          "EventTypeCode, AssertionMask, DeAssertionMask, DiscreteReadingMask, BaseUnit, UnitModifier, RateUnit, "
          "Linearization, M, MTolerance, B, BAccuracy, Accuracy, RBExp, AnalogCharFlag, NominalRdg, NormalMax, "
          "NormalMin, SensorMaxRdg, SensorMinRdg, UpperNRThreshold, UpperCriticalThreshold, UpperNCThreshold, "
          "LowerNRThreshold, LowerCriticalThreshold, LowerNCThreshold, PHysterysis, NHysterysis, OEM, IdStrLen, "
          "IdStr, IPMI_RecordID, IsFRUAvailable, PhysicalElement, FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, "
          "ChannelNumber, FRUIDStrLen, DevIdStr, ChassisSerNumber, ChassisPartNumber, ChassisCustFields, "
          "ProdSerNumber, ProdPartNumber, ProdMfrName, BrdSerNumber, BrdPartNumber, BrdMfrName) values ('t100', 101, "
          "102, 103 , 104, 105, \t\t106, 107, 108, 't109', 110, 111, 112, 't113', 114, 115, 116, 117, 118, 119, 120, "
          "121, 122, 123, 124, 125, 126, 127, 128, 129, 130, 131, 132, 133, 134, 135, 136, 137, 138, 139, 140, 141, "
          "142, 143, 't144', 145, 146, 147, 148, 149, 150, 151, 152, 't153', 't154', 't155', 't156', 't157', 't158', "
          "'t159', 't160', 't161', 't162');",
      .update =
          "update full_sdr set DeviceID='t100', SDRType=101, OwnerLUN=102, OwnerID=103, SensorNum=104, EntityID=105, "
          "EntityInstance=106, SensorInit=107, SensorCaps=108, SensorName='t109', SensorType=110, CIMSensorType=111, "
          "OtherSensorType=112, OtherSensorTypeDesc='t113', EventTypeCode=114, AssertionMask=115, "
          "DeAssertionMask=116, DiscreteReadingMask=117, BaseUnit=118, UnitModifier=119, RateUnit=120, "
          "Linearization=121, M=122, MTolerance=123, B=124, BAccuracy=125, Accuracy=126, RBExp=127, "
          "AnalogCharFlag=128, NominalRdg=129, NormalMax=130, NormalMin=131, SensorMaxRdg=132, SensorMinRdg=133, "
          "UpperNRThreshold=134, UpperCriticalThreshold=135, UpperNCThreshold=136, LowerNRThreshold=137, "
          "LowerCriticalThreshold=138, LowerNCThreshold=139, PHysterysis=140, NHysterysis=141, OEM=142, IdStrLen=143, "
          "IdStr='t144', IPMI_RecordID=145, IsFRUAvailable=146, PhysicalElement=147, FruIDSlaveAddr=148, "
          "DeviceAccessAddr=149, LUNBusID=150, ChannelNumber=151, FRUIDStrLen=152, DevIdStr='t153', "
          "ChassisSerNumber='t154', ChassisPartNumber='t155', ChassisCustFields='t156', ProdSerNumber='t157', "
          "ProdPartNumber='t158', ProdMfrName='t159', BrdSerNumber='t160', BrdPartNumber='t161', BrdMfrName='t162' "
          "where DeviceID='t100';",
      .counted = "Successfully return the no. of numeric sensor present",
      .count_without_table_print = "SQL Compilation error: no such table: full_sdr",
      .already_present = "NumericSensor record is already present with that key",
      .was_set = "Successfully update the NumericSensor record",
      .getting_all = "Get All NumericSensor from database",
      .got_row = "Successfully got the NumericSensor record",
      .got_all = "Successfully got all the NumericSensors",
      .count_failed = "Fail to get numericsensor records",
  };
  return kTable;
}

const GetAllCase kGetAll[] = {
    {.name = "All",
     .table = full_sensors(),
     .call = erased<full_sdr_rec>(db_get_all_full_sdrs),
     .count_statement = "select count(*) from full_sdr;",
     .statement = "select * from full_sdr;",
     .count_failed_print = "",
     .without_table_print = ""},
    {.name = "ByMask",
     .table = full_sensors(),
     .call = erased<full_sdr_rec>([](sqlite3* db, std::int32_t* count, full_sdr_rec** records) {
       return db_get_all_full_sdrs_by_phy_elem_type(db, 1, count, records);
     }),
     .count_statement = "select count(*) from (select * from full_sdr where (PhysicalElement & 1) = 1 GROUP BY "
                        "EntityID,EntityInstance);",
     .statement = "select * from full_sdr where (PhysicalElement & 1) = 1 GROUP BY EntityID,EntityInstance;",
     .count_failed_print = " Fail to get numericsensor records \n",
     .without_table_print = "Compilation Failed : no such table: full_sdr \n"},
};

const GetOneCase kGetOne[] = {
    {.name = "ByNumberKeyAndOwner",
     .table = full_sensors(),
     .call = erased<full_sdr_rec>(
         [](sqlite3* db, full_sdr_rec** record) { return db_get_full_sdr_info(db, 104, "t100", 102, 103, record); }),
     .statement = "select * from full_sdr where SensorNum='104' and \t\t\t\tDeviceID='t100' and OwnerLUN='102' and "
                  "OwnerID='103';",
     .got_row = "Successfully got the NumericSensor record",
     .no_row = "Fail to get the NumericSensor record",
     .no_statement = "Fail to get NumericSensor record. SQLite stmt is NULL",
     .passes_codes_on = false},
    {.name = "ByEntity",
     .table = full_sensors(),
     .call = erased<full_sdr_rec>([](sqlite3* db, full_sdr_rec** record) {
       return db_get_full_sdr_by_entityid_entityinst(db, 105, 106, record);
     }),
     .statement = "select * from full_sdr where EntityID=105 and EntityInstance=106;",
     .got_row = "Get compact sdr from database",
     .no_row = "Failed to get the Full SDR record",
     .no_statement = "Failed to get Full SDR records. SQLite stmt is NULL",
     .passes_codes_on = true},
    {.name = "ByKey",
     .table = full_sensors(),
     .call =
         erased<full_sdr_rec>([](sqlite3* db, full_sdr_rec** record) { return db_get_full_sdr(db, "t100", record); }),
     .statement = "select * from full_sdr where DeviceID='t100';",
     .got_row = "Successfully got the NumericSensor record",
     .no_row = "Fail to get the NumericSensor record",
     .no_statement = "Fail to get NumericSensor record. SQLite stmt is NULL",
     .passes_codes_on = true},
};

INSTANTIATE_TEST_SUITE_P(Full, Sensors, testing::Values(full_sensors()), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Full, SensorGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Full, SensorGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());

class FullSdr : public SensorTest {
 protected:
  FullSdr() : SensorTest(full_sensors()) {}

  // Puts a mark on standard error wherever a line is logged.
  static void mark_log_lines() {
    boundary().while_logging = [] { std::fputs("<line>", stderr); };
  }

  std::int32_t record_id = -1;
};

TEST_F(FullSdr, QuoteInAKeyIsDoubled) {
  full_sdr_rec* record = nullptr;
  EXPECT_EQ(1, db_get_full_sdr_info(db, 1, "o'clock", 2, 3, &record));
  EXPECT_EQ(Texts({"select * from full_sdr where SensorNum='1' and \t\t\t\tDeviceID='o''clock' and OwnerLUN='2' and "
                   "OwnerID='3';"}),
            statements());
  logged();
}

TEST_F(FullSdr, TableHas63Columns) {
  EXPECT_EQ(63u, table_.fields.size());
}

TEST_F(FullSdr, OwnerLunAndIdKeepTheirColumnsThoughTheRecordHasThemTheOtherWayRound) {
  static_assert(offsetof(full_sdr_rec, OwnerID) < offsetof(full_sdr_rec, OwnerLUN));
  insert(100, "OwnerLUN = 5, OwnerID = 32");
  Owned<full_sdr_rec> record;
  EXPECT_EQ(0, db_get_full_sdr(db, "t100", record.out()));
  EXPECT_EQ(5, record->OwnerLUN);
  EXPECT_EQ(0x20, record->OwnerID);
  sql("delete from full_sdr;");
  db_set_full_sdr_info(db, record.get());
  EXPECT_EQ("5|32", joined(rows_of("select OwnerLUN, OwnerID from full_sdr;")));
  logged();
}

TEST_F(FullSdr, CountWithoutATableWritesToStandardErrorAndThenLogs) {
  sql("drop table full_sdr;");
  mark_log_lines();
  std::int32_t count = -1;
  db_get_num_full_sdr(db, &count, 0);
  EXPECT_EQ("SQL Compilation error: no such table: full_sdr<line>", printed());
  logged();
}

TEST_F(FullSdr, MaskedGetAllWritesToStandardErrorAfterACompileErrorAndBeforeTheFailureTrace) {
  insert(100);
  sql_before("select * from", "drop table full_sdr;");
  mark_log_lines();
  std::int32_t count = -1;
  Owned<full_sdr_rec> records;
  db_get_all_full_sdrs_by_phy_elem_type(db, 1, &count, records.out());
  EXPECT_EQ("<line><line>Compilation Failed : no such table: full_sdr \n", printed());
  db_get_all_full_sdrs_by_phy_elem_type(db, 1, &count, records.out());
  EXPECT_EQ("SQL Compilation error: no such table: full_sdr<line> Fail to get numericsensor records \n<line>",
            printed());
  logged();
}

TEST_F(FullSdr, MaskedGetAllWithoutTextsPrintsWhatSqliteSays) {
  insert(100);
  boundary().fail_text = 1;
  std::int32_t count = -1;
  Owned<full_sdr_rec> records;
  EXPECT_EQ(1, db_get_all_full_sdrs_by_phy_elem_type(db, 1, &count, records.out()));
  EXPECT_EQ("SQL Compilation error: " + std::string(sqlite3_errmsg(db)) + " Fail to get numericsensor records \n",
            printed());
  EXPECT_EQ(2u, logged().size());
}

TEST_F(FullSdr, RecordIdOfASensorNumberIsThatOfTheFirstRow) {
  insert(100, "SensorNum = 7");
  insert(200, "SensorNum = 7");
  EXPECT_EQ(0, db_get_recordid_by_sensor_num(db, 7, &record_id));
  EXPECT_EQ(145, record_id);
  EXPECT_EQ(Texts({"select IPMI_RecordID from full_sdr where SensorNum=7;"}), statements());
  EXPECT_EQ(Lines({trace("Get Record ID from database"), trace("Successfully got the Record ID")}), logged());
}

TEST_F(FullSdr, RecordIdOfANumberThatOnlyACompactSensorHasIsNotFound) {
  sql("create table compact_sdr (SensorNum integer, IPMI_RecordID integer);");
  sql("insert into compact_sdr values (7, 8);");
  insert(100);
  EXPECT_EQ(1, db_get_recordid_by_sensor_num(db, 7, &record_id));
  EXPECT_EQ(-1, record_id);
  EXPECT_EQ(Lines({trace("Fail to get the Record ID")}), logged());
}

TEST_F(FullSdr, RecordIdWithoutAStatementReturnsOne) {
  boundary().miss_statement = 1;
  EXPECT_EQ(1, db_get_recordid_by_sensor_num(db, 7, &record_id));
  EXPECT_EQ(-1, record_id);
  EXPECT_EQ(Lines({trace("Fail to get Record ID. SQLite stmt is NULL")}), logged());
}

TEST_F(FullSdr, RecordIdWithoutATableReturnsOne) {
  sql("drop table full_sdr;");
  EXPECT_EQ(1, db_get_recordid_by_sensor_num(db, 7, &record_id));
  EXPECT_EQ(-1, record_id);
  EXPECT_EQ(Lines({no_such_table("full_sdr")}), logged());
}

TEST_F(FullSdr, RecordIdReturnsOneWhateverSqliteAnswersWhenItDoesNotCompile) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  EXPECT_EQ(1, db_get_recordid_by_sensor_num(db, 7, &record_id));
  EXPECT_EQ(Lines({error("SQL Compilation error: not an error")}), logged());
}

TEST_F(FullSdr, RecordIdWhoseTextCannotBeFormattedReturnsOne) {
  boundary().fail_text = 1;
  EXPECT_EQ(1, db_get_recordid_by_sensor_num(db, 7, &record_id));
  EXPECT_EQ(Texts({"(null)"}), statements());
  EXPECT_EQ(1u, logged().size());
}

TEST_F(FullSdr, RecordIdIgnoresTheCodeOfFinalize) {
  insert(100);
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(0, db_get_recordid_by_sensor_num(db, 104, &record_id));
  logged();
}

TEST_F(FullSdr, DeleteReturnsZeroAndKeepsTheRow) {
  insert(100);
  EXPECT_EQ(0, db_del_sdr(db, 145));
  EXPECT_EQ("1", value_of("select count(*) from full_sdr where IPMI_RecordID = 145;"));
  EXPECT_EQ(Texts({"delete * from full_sdr where IPMI_RecordID=145;"}), statements());
  EXPECT_EQ(Lines({execution_failed(), trace("Successfully delete the sdr")}), logged());
  expect_left_allocated(1);
}

TEST_F(FullSdr, DeleteFormatsItsTextTwice) {
  boundary().fail_text = 2;
  EXPECT_EQ(0, db_del_sdr(db, 145));
  EXPECT_EQ(Texts({"(null)"}), statements());
  EXPECT_EQ(Lines({trace("Successfully delete the sdr")}), logged()) << "SQLite runs no text with success";
  expect_left_allocated(1);
}

TEST_F(FullSdr, DeleteWhoseTextCannotBeFormattedRunsNothing) {
  boundary().fail_text = 1;
  EXPECT_EQ(0, db_del_sdr(db, 145));
  EXPECT_EQ(Texts(), statements());
  EXPECT_EQ(Lines({trace("Successfully delete the sdr")}), logged());
}

}  // namespace
}  // namespace qmv::test
