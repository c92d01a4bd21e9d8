#include "event_log.h"

#include <algorithm>
#include <cstring>

#include "rows.h"
#include "sel_record.h"

namespace qmvctl {

namespace {

// Why a change did not happen: SQLite's reason, or that of a trigger that prevents it without an error.
std::string reason_of(const Database& database, const char* trigger) {
  const bool has_error = sqlite3_errcode(database.handle()) != SQLITE_OK;
  return has_error ? sqlite3_errmsg(database.handle()) : trigger;
}

// After a delete of the library, which always answers 0.
void expect_events(const Database& database, size_t count) {
  const std::string reason = reason_of(database, "table sel keeps them");
  if (count_rows(database, "sel") != count) database.fail("events cannot be deleted: " + reason);
}

bool has_event(const Database& database, int32_t record_id) {
  sel_rec* event = nullptr;
  const bool is_there = db_get_sel_record(database.handle(), record_id, &event) == 0;
  db_freemem(event);
  return is_there;
}

}  // namespace

int32_t add_event(Database& database, sel_rec event) {
  Transaction transaction(database);
  int32_t last = 0;
  for (const sel_rec& other : events(database)) last = std::max(last, other.RecordID);
  if (last >= kLastRecordId) database.fail("the event log has used its last record ID: clear it first");
  event.RecordID = last + 1;
  // A constraint that the row does not meet looks to the library like an event that exists.
  const int32_t status = db_addsel(database.handle(), &event, 0);
  const std::string reason = reason_of(database, "table sel does not take it");
  const bool is_added = status == 0 && has_event(database, event.RecordID);
  if (!is_added) database.fail("the event cannot be added: " + reason + database.check_hint());
  transaction.commit();
  return event.RecordID;
}

void delete_events(Database& database, const std::set<int32_t>& record_ids) {
  Transaction transaction(database);
  for (const int32_t id : record_ids) {
    const size_t count = count_rows(database, "sel");
    if (!has_event(database, id)) database.fail("there is no event " + std::to_string(id) + "; nothing is deleted");
    db_del_sel(database.handle(), id);
    expect_events(database, count - 1);
  }
  transaction.commit();
}

size_t clear_events(Database& database) {
  Transaction transaction(database);
  const size_t count = count_rows(database, "sel");
  db_clear_sel_records(database.handle());
  expect_events(database, 0);
  transaction.commit();
  return count;
}

}  // namespace qmvctl
