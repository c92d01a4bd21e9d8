/* FRU inventory. */
#include <string.h>

#include "host.h"

void frus(void) {
  sqlite3* const db = open_with_schema();
  fru_rec fru, other, *read = NULL;
  int32_t count = -1;
  FILL(fru);
  fru.EntityID = 7;

  CHECK_INT(0, db_set_fru_info(db, &fru));
  CHECK_INT(0, db_get_fru_info(db, fru.FruIDSlaveAddr, fru.DeviceAccessAddr, fru.LUNBusID, fru.ChannelNumber, &read));
  CHECK_RECORD(fru, read);
  RELEASE(read);

  other = fru;
  SET(other.DevIdStr, "another");
  CHECK_INT(0, db_set_fru_info(db, &other));
  memset(&other, 0, sizeof other);
  CHECK_INT(0, db_get_fru_by_entity_id(db, &other, 7));
  CHECK_RECORD(fru, &other); /* an existing row keeps its values */

  read = NULL;
  CHECK_INT(1, db_get_fru_info(db, 1, 2, 3, 4, &read));
  CHECK(read == NULL);

  other.FruIDSlaveAddr = 1;
  CHECK_INT(0, db_set_fru_info(db, &other));
  CHECK_INT(0, db_get_fru_cnt(db, &count));
  CHECK_INT(2, count);
  CHECK_INT(0, db_get_all_fru_info(db, &count, &read));
  CHECK_INT(2, count);
  CHECK(read != NULL && memcmp(&read[0], &read[1], sizeof *read) != 0);
  RELEASE(read);
  CLOSE(db);
}
