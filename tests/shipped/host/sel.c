/* The system event log. */
#include <string.h>

#include "host.h"

static void log_information(struct sqlite3* db) {
  sel_info_rec info, *read = NULL;
  int32_t count = -1;
  memset(&info, 0, sizeof info);
  info.MaxNoOfSels = 3000;
  SET(info.CompletionCode, "00");
  SET(info.Version, "51");
  info.RecCnt = 12;
  info.FreeSpace = 4096;
  SET(info.AddTimeStamp, "1000");
  SET(info.EraseTimeStamp, "900");
  SET(info.OperationSupport, "8a");

  CHECK_INT(0, db_set_selinfo(db, &info));
  CHECK_INT(1, value_of(db,
                        "select count(*) from sel_info where MaxNoOfSels = 3000 and Version = '51' "
                        "and EraseTimeStamp = '900' and OperationSupport = '8a'"));
  CHECK_INT(0, db_get_selinfo_cnt(db, &count));
  CHECK_INT(1, count);
  CHECK_INT(0, db_get_selinfo(db, &read));
  if (CHECK(read != NULL)) { /* shifted by one column */
    CHECK_INT(3000, read->MaxNoOfSels);
    CHECK_FIELD("3000", read->CompletionCode);
    CHECK_FIELD("00", read->Version);
    CHECK_INT(51, read->RecCnt);
    CHECK_INT(12, read->FreeSpace);
    CHECK_FIELD("4096", read->AddTimeStamp);
    CHECK_FIELD("1000", read->EraseTimeStamp);
    CHECK_FIELD("900", read->OperationSupport);
  }
  RELEASE(read);
}

void event_log(void) {
  sqlite3* const db = open_with_schema();
  sel_rec events[3], *read = NULL;
  int32_t count = -1;
  log_information(db);

  FILL(events);
  for (int i = 0; i < 3; ++i) {
    events[i].RecordID = i + 1;
    SET(events[i].GeneratorID, "20");
  }
  CHECK_INT(0, db_addsel(db, &events[0], 0));
  CHECK_INT(0, db_get_sel_record(db, 1, &read));
  CHECK_RECORD(events[0], read);
  RELEASE(read);
  events[0].EventDir = 1;
  CHECK_INT(0, db_addsel(db, &events[0], 0));
  CHECK_INT(1, value_of(db, "select EventDir from sel"));

  CHECK_INT(0, db_addsel(db, &events[1], 1)); /* in place of the first */
  CHECK_INT(2, value_of(db, "select min(RecordID) from sel"));
  CHECK_INT(0, db_add_sel_entries(db, 3, events, 0));
  CHECK_INT(0, db_getnumofsels(db, &count));
  CHECK_INT(3, count);
  CHECK_INT(0, db_get_all_sel_records(db, &count, &read));
  CHECK_INT(3, count);
  CHECK_RECORD(events, read);
  RELEASE(read);

  CHECK_INT(0, db_del_sel(db, 2));
  CHECK_INT(4, value_of(db, "select sum(RecordID) from sel"));
  read = NULL;
  CHECK_INT(1, db_get_sel_record(db, 2, &read));
  CHECK(read == NULL);
  CHECK_INT(0, db_clear_sel_records(db));
  count = -1;
  CHECK_INT(0, db_get_all_sel_records(db, &count, &read));
  CHECK_INT(-1, count);
  CHECK(read == NULL);
  CLOSE(db);
}
