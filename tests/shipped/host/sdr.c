/* Sensors, managed systems, and the components that are derived from compact sensors. */
#include <string.h>

#include "host.h"

/* A sensor of memory module 8:1, flagged as memory; its FRU's entity is the sensor's own. */
#define FILL_SENSOR(sensor, id, number) \
  do {                                  \
    FILL(sensor);                       \
    SET((sensor).DeviceID, (id));       \
    (sensor).SensorNum = (number);      \
    (sensor).EntityID = 8;              \
    (sensor).EntityInstance = 1;        \
    (sensor).PhysicalElement = 256;     \
    (sensor).FruRecord.EntityID = 8;    \
    (sensor).FruRecord.EntityInst = 1;  \
  } while (0)

void compact_sensors(void) {
  sqlite3* const db = open_with_schema();
  compact_sdr_rec sensor, filled, *read = NULL;
  int32_t count = -1;
  FILL_SENSOR(sensor, "DIMM 'A1'", 5);

  CHECK_INT(0, db_set_compact_sdr_info(db, &sensor));
  CHECK_INT(0, db_get_compact_sdr(db, "DIMM 'A1'", &read));
  CHECK_RECORD(sensor, read);
  RELEASE(read);

  sensor.IPMI_RecordID = 77; /* an existing row is replaced */
  CHECK_INT(0, db_set_compact_sdr_info(db, &sensor));
  CHECK_INT(0, db_get_compact_sdr_info(db, 5, "DIMM 'A1'", sensor.OwnerLUN, sensor.OwnerID, &read));
  CHECK_RECORD(sensor, read);
  RELEASE(read);
  CHECK_INT(0, db_get_compact_sdr_by_entityid_entityinst(db, 8, 1, &read));
  CHECK_RECORD(sensor, read);
  RELEASE(read);
  CHECK_INT(1, db_get_compact_sdr(db, "DIMM 'A2'", &read));

  sqlite3_stmt* row = NULL;
  CHECK_INT(SQLITE_OK, sqlite3_prepare_v2(db, "select * from compact_sdr", -1, &row, NULL));
  CHECK_INT(SQLITE_ROW, sqlite3_step(row));
  CHECK_INT(0, db_fill_compact_sdr_fields(&filled, row));
  CHECK_RECORD(sensor, &filled);
  CHECK_INT(1, db_fill_compact_sdr_fields(&filled, NULL));
  sqlite3_finalize(row);

  SET(sensor.DeviceID, "DIMM 'A2'"); /* a second sensor of the same entity */
  CHECK_INT(0, db_set_compact_sdr_info(db, &sensor));
  CHECK_INT(0, db_get_num_compact_sdr(db, &count, 0));
  CHECK_INT(2, count);
  CHECK_INT(0, db_get_num_compact_sdr(db, &count, 256));
  CHECK_INT(1, count);
  CHECK_INT(0, db_get_all_compact_sdrs(db, &count, &read));
  CHECK_INT(2, count);
  CHECK(read != NULL && strcmp(read[0].DeviceID, read[1].DeviceID) != 0);
  RELEASE(read);
  CHECK_INT(0, db_get_all_compact_sdrs_by_phy_elem_type(db, 256, &count, &read));
  CHECK_INT(1, count);
  CHECK(read != NULL && read[0].EntityID == 8);
  RELEASE(read);
  CLOSE(db);
}

void full_sensors(void) {
  sqlite3* const db = open_with_schema();
  full_sdr_rec sensor, filled, *read = NULL;
  int32_t count = -1;
  FILL_SENSOR(sensor, "Temp 'A1'", 9);

  CHECK_INT(0, db_set_full_sdr_info(db, &sensor));
  CHECK_INT(0, db_get_full_sdr(db, "Temp 'A1'", &read));
  CHECK_RECORD(sensor, read);
  RELEASE(read);

  sensor.IPMI_RecordID = 78;
  CHECK_INT(0, db_set_full_sdr_info(db, &sensor));
  CHECK_INT(0, db_get_full_sdr_info(db, 9, "Temp 'A1'", sensor.OwnerLUN, sensor.OwnerID, &read));
  CHECK_RECORD(sensor, read);
  RELEASE(read);
  CHECK_INT(0, db_get_full_sdr_by_entityid_entityinst(db, 8, 1, &read));
  CHECK_RECORD(sensor, read);
  RELEASE(read);
  CHECK_INT(1, db_get_full_sdr(db, "Temp 'A2'", &read));

  sqlite3_stmt* row = NULL;
  CHECK_INT(SQLITE_OK, sqlite3_prepare_v2(db, "select * from full_sdr", -1, &row, NULL));
  CHECK_INT(SQLITE_ROW, sqlite3_step(row));
  CHECK_INT(0, db_fill_full_sdr_fields(&filled, row));
  CHECK_RECORD(sensor, &filled);
  CHECK_INT(1, db_fill_full_sdr_fields(NULL, row));
  sqlite3_finalize(row);

  int32_t record_id = -1;
  CHECK_INT(0, db_get_recordid_by_sensor_num(db, 9, &record_id));
  CHECK_INT(78, record_id);
  CHECK_INT(0, db_del_sdr(db, 78)); /* deletes nothing */
  CHECK_TEXT("Successfully delete the sdr", last_line());
  CHECK_INT(1, value_of(db, "select count(*) from full_sdr"));

  SET(sensor.DeviceID, "Temp 'A2'");
  CHECK_INT(0, db_set_full_sdr_info(db, &sensor));
  CHECK_INT(0, db_get_num_full_sdr(db, &count, 0));
  CHECK_INT(2, count);
  CHECK_INT(0, db_get_num_full_sdr(db, &count, 256));
  CHECK_INT(1, count);
  CHECK_INT(0, db_get_all_full_sdrs(db, &count, &read));
  CHECK_INT(2, count);
  CHECK(read != NULL && strcmp(read[0].DeviceID, read[1].DeviceID) != 0);
  RELEASE(read);
  CHECK_INT(0, db_get_all_full_sdrs_by_phy_elem_type(db, 256, &count, &read));
  CHECK_INT(1, count);
  CHECK(read != NULL && read[0].EntityID == 8);
  RELEASE(read);
  CLOSE(db);
}

static void devices(struct sqlite3* db) {
  device_rec device, *read = NULL;
  FILL(device);
  SET(device.GUID, "4c4c4544-0051");
  SET(device.IPAddress, "192.0.2.7");
  device.DeviceType = 2;

  CHECK_INT(0, db_set_device(db, &device));
  device.RequestedState = 3;
  CHECK_INT(0, db_set_device(db, &device));
  CHECK_INT(0, db_get_device(db, "4c4c4544-0051", 2, &read));
  CHECK_RECORD(device, read);
  RELEASE(read);
  CHECK_INT(0, db_get_device_bytype(db, 2, &read));
  CHECK_RECORD(device, read);
  RELEASE(read);
  CHECK_INT(1, db_get_device(db, "4c4c4544-0051", 1, &read));
}

static void fru_locators(struct sqlite3* db) {
  fru_locator_sdr_rec locator, other, *read = NULL;
  FILL(locator);
  CHECK_INT(0, db_set_fru_locator_sdr_info(db, &locator));
  other = locator;
  SET(other.DevIdStr, "another");
  CHECK_INT(0, db_set_fru_locator_sdr_info(db, &other));
  CHECK_INT(0, db_get_fru_locator_sdr_info(db, locator.FruIDSlaveAddr, locator.DeviceAccessAddr, locator.LUNBusID,
                                           locator.ChannelNumber, &read));
  CHECK_RECORD(locator, read); /* an existing row keeps its values */
  RELEASE(read);
}

static void session(struct sqlite3* db) {
  ipmi_session_rec* read = NULL;
  CHECK_INT(1, db_get_ipmi_session_info(db, &read));
  CHECK(read == NULL);
  RUN(db, "insert into ipmi_session values ('0', 1, '2', '3', '4', '5', '6', '7', '8')");
  CHECK_INT(0, db_get_ipmi_session_info(db, &read));
  if (CHECK(read != NULL)) {
    CHECK_FIELD("0", read->SessionText0);
    CHECK_INT(1, read->SessionValue1);
    CHECK_FIELD("2", read->SessionText2);
    CHECK_FIELD("3", read->SessionText3);
    CHECK_FIELD("4", read->SessionText4);
    CHECK_FIELD("5", read->SessionText5);
    CHECK_FIELD("6", read->SessionText6);
    CHECK_FIELD("7", read->SessionText7);
    CHECK_FIELD("8", read->SessionText8);
  }
  RELEASE(read);
}

void managed_systems(void) {
  sqlite3* const db = open_with_schema();
  devices(db);
  fru_locators(db);
  session(db);
  CLOSE(db);
}

static void one_of_each(int32_t (*get_count)(struct sqlite3*, int32_t*),
                        int32_t (*get_all)(struct sqlite3*, int32_t*, compact_sdr_rec**), struct sqlite3* db,
                        const char* id) {
  compact_sdr_rec* read = NULL;
  int32_t count = -1;
  CHECK_INT(0, get_count(db, &count));
  CHECK_INT(1, count);
  CHECK_INT(0, get_all(db, &count, &read));
  CHECK_INT(1, count);
  if (CHECK(read != NULL)) CHECK_FIELD(id, read[0].DeviceID);
  RELEASE(read);
}

void components(void) {
  sqlite3* const db = open_with_schema();
  RUN(db,
      "insert into compact_sdr (DeviceID, EntityID, EntityInstance, SensorNum, SensorType, EventTypeCode, "
      "PhysicalElement)"
      " values ('CPU 1', 3, 1, 5, 7, 111, 0), ('DIMM A1', 8, 1, 6, 12, 111, 256), ('PSUs', 19, 1, 7, 8, 11, 0)");
  one_of_each(db_get_processor_cnt, db_get_all_processor, db, "CPU 1");
  one_of_each(db_get_memory_cnt, db_get_all_memory, db, "DIMM A1");
  one_of_each(db_get_redundancyset_cnt, db_get_all_redundancyset, db, "PSUs");

  char* name = NULL;
  CHECK_INT(0, get_processor_from_db(3, 1, &name));
  CHECK_TEXT("3:1:5:Processor", name);
  RELEASE(name);
  CHECK_INT(1, get_processor_from_db(8, 1, &name));
  CLOSE(db);
}
