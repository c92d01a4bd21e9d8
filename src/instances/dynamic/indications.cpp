// Where event indications go and which events they carry: destinations, filters and subscriptions.
#include "qmv/indications.h"

#include <cstdlib>

#include "core/shapes.h"
#include "instances/dynamic/site.h"

namespace {

using namespace qmv;
using dynamic::here;

constexpr char kDestinations[] = "listener_destination";
constexpr char kFilters[] = "indication_filter";
constexpr char kSubscriptions[] = "indication_subscription";

// The three tables count with the same texts.
constexpr Count kCount = {
    .select = "select count(*) from %q;",
    .no_row = "[%s:%d]No Records Found",
    .done = "[%s:%d]Successfully returned count %d",
};

// All columns for the get-all, and those that are no key for the get-one.
namespace destination {

using Record = listener_destination_rec;

constexpr auto kColumns = columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(Destination));
constexpr auto kValues = columns<Record>(QMV_COLUMN_AT(1, Destination));

// QUIRK: One message misspells the listener. Test: Indications.GetWithoutAStatementReturnsOne.
constexpr GetOne kGetOne = {
    .select = "select * from %q where Name='%.256q';",
    .no_statement = "[%s:%d]Fail to get ListsnerDestination record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the Listener Destination record / record not found \n",
    .reading = kSilent,
    .done = kSilent,
};

using Table = qmv::Table<kDestinations, kValues, kCount, kGetOne>;

}  // namespace destination

namespace filter {

using Record = indication_filter_rec;

constexpr auto kColumns = columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(Query), QMV_COLUMN(SensorNumMask),
                                          QMV_COLUMN(SensorTypeMask), QMV_COLUMN(SeverityMask));
constexpr auto kValues = columns<Record>(QMV_COLUMN_AT(1, Query), QMV_COLUMN_AT(2, SensorNumMask),
                                         QMV_COLUMN_AT(3, SensorTypeMask), QMV_COLUMN_AT(4, SeverityMask));

constexpr GetOne kGetOne = {
    .select = "select * from %q where Name='%.256q';",
    .no_statement = "[%s:%d]Fail to get Indication Filter record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the Indication Filter record / record not found \n",
    .reading = kSilent,
    .done = kSilent,
};

using Table = qmv::Table<kFilters, kValues, kCount, kGetOne>;

}  // namespace filter

namespace subscription {

using Record = indication_subscription_rec;

constexpr auto kColumns = columns<Record>(QMV_COLUMN(DestName), QMV_COLUMN(FilterName), QMV_COLUMN(EventSeverity),
                                          QMV_COLUMN(SensorNum), QMV_COLUMN(SensorType), QMV_COLUMN(Enabled));
constexpr auto kValues = columns<Record>(QMV_COLUMN_AT(2, EventSeverity), QMV_COLUMN_AT(3, SensorNum),
                                         QMV_COLUMN_AT(4, SensorType), QMV_COLUMN_AT(5, Enabled));

constexpr GetOne kGetOne = {
    .select = "select * from %q where FilterName='%.256q' and DestName='%.256q';",
    .no_statement = "[%s:%d]Fail to get indication subscription record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the indication subscription record / record not found \n",
    .reading = kSilent,
    .done = kSilent,
};

using Table = qmv::Table<kSubscriptions, kValues, kCount, kGetOne>;

}  // namespace subscription

// Written out: the array comes before the statement, and the count after the rows.
std::int32_t get_all_of(Site site, sqlite3* db, const Layout& layout, CountFunction* count_table, const char* table,
                        Out records, std::int32_t* count, std::int32_t without_memory) {
  std::int32_t rows = 0;
  if (count_table(db, &rows) != kOk) return kFailure;
  if (rows == 0) return kOk;
  auto* const block = static_cast<char*>(std::calloc(static_cast<std::size_t>(rows), layout.record_size));
  records.store(block);
  if (block == nullptr) {
    trace(site, Message("[%s:%d]Memory allocation error"));
    return without_memory;
  }
  const SqlText text(sqlite3_mprintf("select * from %q;", table));
  Statement statement;
  if (statement.prepare(db, text) != SQLITE_OK || statement.missing()) {
    log_compile_error(site, db);
    return kFailure;
  }
  for (std::int32_t i = 0; statement.step() == SQLITE_ROW;) {
    if (i == rows) continue;  // a row that appeared since the count
    read_row(statement.get(), layout, block + static_cast<std::size_t>(i) * layout.record_size, Before::kZero);
    ++i;
  }
  *count = rows;
  return kOk;
}

// A get-one counts first: without rows, or when counting fails, there is nothing to say.
bool has_rows(sqlite3* db, CountFunction* count_table) {
  std::int32_t rows = 0;
  return count_table(db, &rows) == kOk && rows != 0;
}

void trace_present(Site site) {
  trace(site, Message("[%s:%d]the record is already present with that key"));
}

// Deletes the row with that name and then the subscriptions that refer to it.
std::int32_t delete_with_subscriptions(sqlite3* db, const char* table, const char* cascade, const char* name) {
  if (name == nullptr) return kFailure;
  if (db_execute(db, "delete from %q where Name='%q';", table, name) != SQLITE_OK) return kFailure;
  return db_execute(db, cascade, kSubscriptions, name) == SQLITE_OK ? kOk : kFailure;
}

constexpr char kDeleteOfDestination[] = "delete from %q where DestName='%q';";
constexpr char kDeleteOfFilter[] = "delete from %q where FilterName='%q';";

}  // namespace

std::int32_t db_get_listener_destination_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<destination::Table>(here(), db, count);
}

std::int32_t db_get_listener_destination(sqlite3* db, listener_destination_rec* record) noexcept {
  if (!has_rows(db, db_get_listener_destination_cnt)) return kFailure;
  return fill_row(destination::Table::form<destination::kGetOne>(), here(), db, record, kDestinations, record->Name);
}

// QUIRK: Without memory, destinations and filters answer 0 and subscriptions 1.
// Test: Indications.GetAllWithoutMemoryIsAFailureOfSubscriptionsOnly.
std::int32_t db_get_all_listener_destination(sqlite3* db, listener_destination_rec** records,
                                             std::int32_t* count) noexcept {
  if (records == nullptr || count == nullptr) return kFailure;
  return get_all_of(here(), db, kRuns<destination::kColumns>.layout, db_get_listener_destination_cnt, kDestinations,
                    records, count, kOk);
}

std::int32_t db_set_listener_destination(sqlite3* db, const listener_destination_rec* record) noexcept {
  const Site site = here();
  const std::int32_t code =
      db_execute(db, "insert into %q values('%.256q','%.256q');", kDestinations, record->Name, record->Destination);
  if (code == SQLITE_CONSTRAINT) {
    trace_present(site);
    db_execute(db, "update %q set Destination='%.256q' where Name='%.256q';", kDestinations, record->Destination,
               record->Name);
  } else if (code != SQLITE_OK) {
    return kFailure;
  }
  trace(site, Message("[%s:%d]Successfully updated the Listener destination record"));
  return kOk;
}

std::int32_t db_delete_listener_destination(sqlite3* db, const char* Name) noexcept {
  return delete_with_subscriptions(db, kDestinations, kDeleteOfDestination, Name);
}

std::int32_t db_get_indication_filter_cimxml_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<filter::Table>(here(), db, count);
}

std::int32_t db_get_indication_filter_cimxml(sqlite3* db, indication_filter_rec* record) noexcept {
  if (!has_rows(db, db_get_indication_filter_cimxml_cnt)) return kFailure;
  return fill_row(filter::Table::form<filter::kGetOne>(), here(), db, record, kFilters, record->Name);
}

std::int32_t db_get_all_indication_filter_cimxml(sqlite3* db, indication_filter_rec** records,
                                                 std::int32_t* count) noexcept {
  if (records == nullptr || count == nullptr) return kFailure;
  return get_all_of(here(), db, kRuns<filter::kColumns>.layout, db_get_indication_filter_cimxml_cnt, kFilters, records,
                    count, kOk);
}

// An existing filter's new masks are pushed into its subscriptions.
std::int32_t db_set_indication_filter_cimxml(sqlite3* db, const indication_filter_rec* record) noexcept {
  const Site site = here();
  const std::int32_t code =
      db_execute(db, "insert into %q values('%.256q','%.512q',%i,%i,%i);", kFilters, record->Name, record->Query,
                 record->SensorNumMask, record->SensorTypeMask, record->SeverityMask);
  if (code == SQLITE_CONSTRAINT) {
    trace_present(site);
    db_execute(
        db, "update %q set Query='%.512q',SensorNumMask=%i,SensorTypeMask=%i,SeverityMask=%i where Name='%.256q';",
        kFilters, record->Query, record->SensorNumMask, record->SensorTypeMask, record->SeverityMask, record->Name);
    db_execute(db, "update %q set EventSeverity=%i,SensorNum=%i,SensorType=%i where FilterName='%.256q';",
               kSubscriptions, record->SeverityMask, record->SensorNumMask, record->SensorTypeMask, record->Name);
  } else if (code != SQLITE_OK) {
    return kFailure;
  }
  // QUIRK: It says what the set of a destination says. Test: Indications.SetInsertsEveryMemberUnderItsColumn.
  trace(site, Message("[%s:%d]Successfully updated the Listener destination record"));
  return kOk;
}

std::int32_t db_delete_indication_filter_cimxml(sqlite3* db, const char* Name) noexcept {
  return delete_with_subscriptions(db, kFilters, kDeleteOfFilter, Name);
}

std::int32_t db_get_indication_subscription_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<subscription::Table>(here(), db, count);
}

std::int32_t db_get_indication_subscription(sqlite3* db, indication_subscription_rec* record) noexcept {
  if (!has_rows(db, db_get_indication_subscription_cnt)) return kFailure;
  return fill_row(subscription::Table::form<subscription::kGetOne>(), here(), db, record, kSubscriptions,
                  record->FilterName, record->DestName);
}

std::int32_t db_get_all_indication_subscription(sqlite3* db, indication_subscription_rec** records,
                                                std::int32_t* count) noexcept {
  if (records == nullptr || count == nullptr) return kFailure;
  return get_all_of(here(), db, kRuns<subscription::kColumns>.layout, db_get_indication_subscription_cnt,
                    kSubscriptions, records, count, kFailure);
}

std::int32_t db_set_indication_subscription(sqlite3* db, const indication_subscription_rec* record) noexcept {
  const Site site = here();
  const std::int32_t code =
      db_execute(db, "insert into %q values('%.256q','%.256q',%i,%i,%i,%i);", kSubscriptions, record->DestName,
                 record->FilterName, record->EventSeverity, record->SensorNum, record->SensorType, record->Enabled);
  if (code == SQLITE_CONSTRAINT) {
    trace_present(site);
    db_execute(db,
               "update %q set EventSeverity=%i,SensorNum=%i,SensorType=%i,Enabled=%i where DestName='%.256q' and "
               "FilterName = '%.256q';",
               kSubscriptions, record->EventSeverity, record->SensorNum, record->SensorType, record->Enabled,
               record->DestName, record->FilterName);
  }
  trace(site, Message("[%s:%d]Successfully updated the indication_subscription record"));
  return kOk;
}

std::int32_t db_delete_indication_subscription(sqlite3* db, const char* FilterName, const char* DestName) noexcept {
  if (FilterName == nullptr || DestName == nullptr) return kFailure;
  const std::int32_t code =
      db_execute(db, "delete from %q where FilterName='%q' and DestName='%q';", kSubscriptions, FilterName, DestName);
  return code == SQLITE_OK ? kOk : kFailure;
}

std::int32_t db_delete_indication_subscription_for_filter(sqlite3* db, const char* FilterName) noexcept {
  if (FilterName == nullptr) return kFailure;
  return db_execute(db, kDeleteOfFilter, kSubscriptions, FilterName) == SQLITE_OK ? kOk : kFailure;
}
