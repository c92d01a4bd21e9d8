// Event records, table kTable.
#include "qmv/sel.h"

#include "core/shapes.h"
#include "sel/site.h"

namespace {

using namespace qmv;
using sel::here;
using Record = sel_rec;

constexpr char kTable[] = "sel";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(RecordID), QMV_COLUMN(RecordType), QMV_COLUMN(TimeStamp), QMV_COLUMN(GeneratorID),
                    QMV_COLUMN(EventType), QMV_COLUMN(EvMRev), QMV_COLUMN(SensorType), QMV_COLUMN(SensorNum),
                    QMV_COLUMN(EventDir), QMV_COLUMN(EventData1), QMV_COLUMN(EventData2), QMV_COLUMN(EventData3));
static_assert(kColumns.table_columns() == 12);

constexpr Count kCount = {
    .select = "select count(*) from %q;",
    .no_row = kSilent,
    .done = "[%s:%d]Successfully return the no. of sels present",
    .step = CountStep::kIgnored,
};

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get sel records",
    .no_rows = "[%s:%d]No entry in the sel table",
    .reading = "[%s:%d]Get All Sels from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all the sels",
};

constexpr GetOne kGet = {
    .select = "select * from %q where RecordID=%i;",
    .no_statement = kSilent,
    .no_row = kSilent,
    .reading = "[%s:%d]Get Sel record from database",
    .done = kSilent,
};

using Sel = Table<kTable, kColumns, kCount, kGetAll, kGet>;

// Deletes an event. Returns db_execute()'s code, or 1 when there is no text to execute.
// QUIRK: The statement is formatted here, handed on as a format, and never released. Test:
// Sel.DeleteNeverReleasesItsText.
std::int32_t delete_event(sqlite3* db, std::int32_t RecordID) {
  SqlText text(sqlite3_mprintf("delete from %q where RecordID=%i;", Sel::name(), RecordID));
  const char* format = text.leave_allocated();
  return format == nullptr ? kFailure : db_execute(db, format, Sel::name());
}

std::int32_t insert_event(sqlite3* db, const sel_rec& event) {
  return db_execute(
      db,
      "insert into %q (RecordID, RecordType, TimeStamp, \t\t\tGeneratorID, EventType, EvMRev , SensorType , "
      "SensorNum , \t\t\tEventDir, EventData1, EventData2, EventData3) values (\t\t\t%i, %i, %i, '%.4q', "
      "%i, %i, %i, %i, %i, %i, %i, %i);",
      Sel::name(), event.RecordID, event.RecordType, event.TimeStamp, event.GeneratorID, event.EventType, event.EvMRev,
      event.SensorType, event.SensorNum, event.EventDir, event.EventData1, event.EventData2, event.EventData3);
}

void update_event(sqlite3* db, const sel_rec& event) {
  db_execute(db,
             "update %q set RecordType = %i, TimeStamp = %i,                         GeneratorID = '%.4q', EventType = "
             "%i, EvMRev = %i, SensorType = %i, SensorNum = %i,                         EventDir= %i, EventData1 = %i, "
             "EventData2 = %i, EventData3 = %i where RecordID = %i;",
             Sel::name(), event.RecordType, event.TimeStamp, event.GeneratorID, event.EventType, event.EvMRev,
             event.SensorType, event.SensorNum, event.EventDir, event.EventData1, event.EventData2, event.EventData3,
             event.RecordID);
}

}  // namespace

std::int32_t db_getnumofsels(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<Sel>(here(), db, count);
}

std::int32_t db_get_sel_record(sqlite3* db, std::int32_t RecordID, sel_rec** record) noexcept {
  return get_one<Sel>(here(), db, record, RecordID);
}

std::int32_t db_get_all_sel_records(sqlite3* db, std::int32_t* count, sel_rec** records) noexcept {
  return get_all<Sel>(here(), db, counted(records, db_getnumofsels, db), count, records);
}

std::int32_t db_del_sel(sqlite3* db, std::int32_t RecordID) noexcept {
  delete_event(db, RecordID);
  trace(here(), Message("[%s:%d]Successfully delete the sel"));
  return kOk;
}

std::int32_t db_clear_sel_records(sqlite3* db) noexcept {
  db_execute(db, "delete from %q;", Sel::name());
  trace(here(), Message("[%s:%d]Successfully clear the sels"));
  return kOk;
}

std::int32_t db_addsel(sqlite3* db, const sel_rec* record, std::int32_t DeleteRecordID) noexcept {
  const Site site = here();
  if (DeleteRecordID > 0 && delete_event(db, DeleteRecordID) != SQLITE_OK) {
    trace(site, Message("[%s:%d]Failed to delete old sel record"));
  }
  const std::int32_t code = insert_event(db, *record);
  if (code == SQLITE_CONSTRAINT) {
    trace(site, Message("[%s:%d]An entry with the record id exists already : Updating DB"));
    update_event(db, *record);
  } else if (code != SQLITE_OK) {
    return kFailure;
  }
  trace(site, Message("[%s:%d]Successfully add sel record"));
  return kOk;
}

std::int32_t db_add_sel_entries(sqlite3* db, std::int32_t count, const sel_rec* records,
                                std::int32_t DeleteRecordID) noexcept {
  const Site site = here();
  trace(site, Message("[%s:%d]Enter into add_sel_entries"));
  if (count != 0) trace(site, Format<'d'>("[%s:%d]Sel_Cnt : %d"), count);
  for (std::int32_t i = 0; i < count; ++i) {
    if (records[i].RecordID <= 0) continue;
    if (db_addsel(db, &records[i], DeleteRecordID) != kOk) {
      trace(site, Message("[%s:%d]Fail to add sel records"));
      return kFailure;
    }
  }
  trace(site, Message("[%s:%d]Successfully add all sel records"));
  return kOk;
}
