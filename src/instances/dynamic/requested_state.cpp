// Requested state changes, table "request_state_change".
#include "core/shapes.h"
#include "instances/dynamic/site.h"
#include "qmv/indications.h"

namespace {

using namespace qmv;
using dynamic::here;

constexpr char kTable[] = "request_state_change";

constexpr Count kCount = {
    .select = "select count(*) from %q;",
    .no_row = "[%s:%d]No Records Found",
    .done = "[%s:%d]Successfully returns the fru-full_sdr count %d",
};

using Changes = Table<kTable, kNoColumns, kCount>;

}  // namespace

std::int32_t db_get_req_state_change_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<Changes>(here(), db, count);
}

// Written out: it counts first, and a missing row is no error.
std::int32_t db_get_req_state_change(sqlite3* db, request_state_change_rec* record) noexcept {
  const Site site = here();
  std::int32_t rows = 0;
  if (db_get_req_state_change_cnt(db, &rows) != kOk) return kFailure;
  record->RequestedState = 0;
  if (rows == 0) return kOk;
  const SqlText text(
      sqlite3_mprintf("select * from %q where ClassName='%.256q' and KeyProperty='%.256q' and KeyValue='%.256q';",
                      kTable, record->ClassName, record->KeyProperty, record->KeyValue));
  Statement statement;
  if (statement.compile(db, site, text) != SQLITE_OK) return kFailure;
  if (statement.missing()) {
    trace(site, Message("[%s:%d]Fail to get the record. SQLite stmt is NULL"));
    return kFailure;
  }
  if (statement.step() == SQLITE_ROW) record->RequestedState = sqlite3_column_int(statement.get(), 1);
  return kOk;
}

// Written out: the update leaves the key columns alone.
std::int32_t db_set_req_state_change(sqlite3* db, const request_state_change_rec* record) noexcept {
  const Site site = here();
  const std::int32_t code =
      db_execute(db, "insert into %q values('%.256q', %i, '%.256q', '%.256q');", kTable, record->ClassName,
                 record->RequestedState, record->KeyProperty, record->KeyValue);
  if (code == SQLITE_CONSTRAINT) {
    trace(site, Message("[%s:%d]the record is already present with that key"));
    db_execute(db,
               "update %q set RequestedState=%i where ClassName='%.256q' and KeyProperty='%.256q' and "
               "KeyValue='%.256q';",
               kTable, record->RequestedState, record->ClassName, record->KeyProperty, record->KeyValue);
  }
  trace(site, Message("[%s:%d]Successfully update the ELEC record"));
  return kOk;
}
