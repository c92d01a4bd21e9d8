/* Physical assets, physical elements and power supplies. */
#include <stdlib.h>
#include <string.h>
#include <strings.h>

#include "host.h"

/* A FRU of entity 3:1, with one sensor of each kind. */
static struct sqlite3* open_with_asset(fru_rec* fru) {
  sqlite3* const db = open_with_schema();
  fill(fru, sizeof *fru);
  fru->EntityID = 3;
  fru->EntityInst = 1;
  fru->IDStrLen = 11;
  CHECK_INT(0, db_set_fru_info(db, fru));
  RUN(db,
      "insert into compact_sdr (DeviceID, EntityID, EntityInstance, SensorNum, IdStrLen, IdStr, PhysicalElement) "
      "values ('c', 3, 1, 5, 7, 'compact', 8)");
  RUN(db,
      "insert into full_sdr (DeviceID, EntityID, EntityInstance, SensorNum, IdStrLen, IdStr, SensorType, "
      "PhysicalElement) "
      "values ('f', 3, 1, 6, 4, 'full', 3, 8), ('g', 3, 2, 7, 4, 'full', 1, 16)");
  return db;
}

/* The record that these accessors make of that FRU and a sensor. */
static fru_sdr_rec asset_of(const fru_rec* fru, int32_t id_length, const char* id) {
  fru_sdr_rec asset;
  memset(&asset, 0, sizeof asset);
  memcpy(&asset, fru, sizeof *fru);
  asset.IDStrLen = 0;
  memset(asset.DevIdStr, 0, sizeof asset.DevIdStr);
  asset.IdStrLen = id_length;
  SET(asset.IdStr, id);
  return asset;
}

/* The sensor tables without the columns that they share with the FRU table, of which SQLite cannot choose one. */
static void narrow_sensor_tables(struct sqlite3* db) {
  RUN(db,
      "create table narrow as select EntityID, EntityInstance, IdStrLen, IdStr from compact_sdr; "
      "drop table compact_sdr; alter table narrow rename to compact_sdr; "
      "create table narrow as select EntityID, EntityInstance, IdStrLen, IdStr from full_sdr; "
      "drop table full_sdr; alter table narrow rename to full_sdr;");
}

void physical_assets(void) {
  fru_rec fru;
  sqlite3* const db = open_with_asset(&fru);
  fru_sdr_rec expected, one, *read = NULL;
  int32_t count = -1;

  expected = asset_of(&fru, 11, "compact"); /* the length is the FRU's */
  CHECK_INT(0, db_get_fru_compact_sdr_cnt(db, &count));
  CHECK_INT(1, count);
  CHECK_INT(0, db_get_all_fru_compact_sdr(db, &count, &read));
  CHECK_INT(1, count);
  CHECK_RECORD(expected, read);
  RELEASE(read);

  expected = asset_of(&fru, 11, "full");
  CHECK_INT(0, db_get_fru_full_sdr_cnt(db, &count));
  CHECK_INT(1, count);
  CHECK_INT(0, db_get_all_fru_full_sdr(db, &count, &read));
  CHECK_INT(1, count);
  CHECK_RECORD(expected, read);
  RELEASE(read);

  CHECK_INT(SQLITE_ERROR, db_get_fru_compact_sdr(db, 3, 1, &one));
  CHECK_INT(SQLITE_ERROR, db_get_fru_full_sdr(db, 3, 1, &one));
  narrow_sensor_tables(db);
  memset(&one, 0, sizeof one);
  expected = asset_of(&fru, 7, "compact"); /* the length is the sensor's */
  CHECK_INT(0, db_get_fru_compact_sdr(db, 3, 1, &one));
  CHECK_RECORD(expected, &one);
  expected = asset_of(&fru, 11, "full");
  CHECK_INT(0, db_get_fru_full_sdr(db, 3, 1, &one));
  CHECK_RECORD(expected, &one);
  CHECK_INT(1, db_get_fru_full_sdr(db, 3, 2, &one));
  CLOSE(db);
}

/* The statements of CIM_Chip, which count and list entity 3. */
static void class_statements(struct sqlite3* db, int32_t (*get)(const char*, char*, char*), int rows,
                             int entity_column) {
  char count[QMV_COUNT_QUERY_SIZE] = "untouched", list[QMV_LIST_QUERY_SIZE] = "untouched";
  CHECK_INT(1, get("CIM_Fan", count, list));
  CHECK_FIELD("untouched", count);
  CHECK_FIELD("untouched", list);
  CHECK_INT(0, get("cim_chip", count, list));
  CHECK_INT(rows, value_of(db, count));

  sqlite3_stmt* row = NULL;
  CHECK_INT(SQLITE_OK, sqlite3_prepare_v2(db, list, -1, &row, NULL));
  CHECK_INT(SQLITE_ROW, sqlite3_step(row));
  CHECK_INT(3, sqlite3_column_int(row, entity_column));
  sqlite3_finalize(row);
}

static void physical_asset_elements(struct sqlite3* db) {
  fru_sdr_rec* read = NULL;
  int32_t count = -1;
  CHECK_INT(0, db_get_all_physicalasset_element(db, &count, &read, 8));
  CHECK_INT(2, count);
  if (CHECK(read != NULL && count == 2)) {
    CHECK_INT(5, read[0].SensorNum);
    CHECK_FIELD("compact", read[0].IdStr);
    CHECK_INT(6, read[1].SensorNum);
    CHECK_FIELD("full", read[1].IdStr);
  }
  RELEASE(read);
}

void physical_elements(void) {
  fru_rec fru;
  sqlite3* const db = open_with_asset(&fru);
  class_statements(db, get_sqlqueries, 2, 4);
  class_statements(db, get_sqlqueries_nonFRU, 2, 0);

  int32_t type = -1;
  CHECK_INT(0, db_check_is_entity_id_equals_to_sen_type(db, 3, 1));
  CHECK_INT(1, db_check_is_entity_id_equals_to_sen_type(db, 3, 2));
  CHECK_INT(0, db_check_is_entity_id_not_equals_to_sen_type(db, 3, 2, &type));
  CHECK_INT(1, type);

  physical_asset_elements(db);
  CLOSE(db);
}

void power_supplies(void) {
  sqlite3* const db = open_with_schema();
  RUN(db,
      "insert into compact_sdr (DeviceID, EntityID, EntityInstance, SensorNum, PhysicalElement) "
      "values ('PSU1', 10, 1, 48, 1024), ('CPU1', 3, 1, 49, 1024)");
  char* name = NULL;
  CHECK_INT(0, get_ps_from_db(&name, 48));
  CHECK_TEXT("10:1:48:PowerSupply", name);
  RELEASE(name);
  CHECK_INT(1, get_ps_from_db(&name, 49));

  char** names = NULL;
  int32_t count = -1;
  CHECK_INT(0, get_all_ps_from_db(&names, &count));
  CHECK_INT(1, count);
  if (CHECK(names != NULL)) {
    CHECK_TEXT("10:1:48:PowerSupply", names[0]);
    RELEASE(names[0]);
  }
  RELEASE(names);
  CLOSE(db);
}
