// The indication service, event types, and error records.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

namespace service {

using Record = indication_service_rec;

constexpr char kTable[] = "indication_service";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(FilterCreationEnabled), QMV_COLUMN(DeliveryRetryAttempts),
                    QMV_COLUMN(DeliveryRetryInterval), QMV_COLUMN(SubscriptionRemovalAction),
                    QMV_COLUMN(SubscriptionRemovalTimeInterval));

constexpr auto kKey = columns<Record>(QMV_COLUMN(Name));

constexpr GetOne kGetOne = {
    .select = "select * from %q where Name='%q';",
    .no_statement = "[%s:%d]Fail to get indication_service",
    .no_row = "[%s:%d]Fail to get indication_service",
    .reading = "[%s:%d]Get assign role from database",
    .done = "[%s:%d]Successfully got acc_mgt",
};

constexpr Set kSet = {
    .insert =
        "insert into %q "
        "(Name,FilterCreationEnabled,DeliveryRetryAttempts,DeliveryRetryInterval,SubscriptionRemovalAction,          "
        "      "
        "SubscriptionRemovalTimeInterval) values ('%.256q', '%i', '%i', '%i', '%i', '%i');",
    .update =
        "update %q set Name='%.256q', FilterCreationEnabled=%i,                         "
        "DeliveryRetryAttempts=%i, DeliveryRetryInterval=%i, "
        "SubscriptionRemovalAction=%i,                         SubscriptionRemovalTimeInterval=%i where "
        "Name='%.256q' ;",
    .present = "[%s:%d]AssignRole record is already present with that key",
    .done = "[%s:%d]Successfully update the db_set_indication_service record",
};

using Table = qmv::Table<kTable, kColumns, kGetOne, kSet>;

}  // namespace service

namespace event {

using Record = event_type_rec;

constexpr char kTable[] = "event_type";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(MessageID), QMV_COLUMN(Description));

constexpr auto kKey = columns<Record>(QMV_COLUMN(MessageID));

constexpr GetOne kGetOne = {
    .select = "select * from %q where Description='%q';",
    .no_statement = "[%s:%d]Fail to get event type Message record",
    .no_row = "[%s:%d]Fail to get event type MessageID records",
    .reading = "[%s:%d]Get Event Type from database",
    .done = "[%s:%d]Successfully got the Event Type MessageID.",
};

constexpr Set kSet = {
    .insert = "insert into %q (MessageID,Description)                         values (%i, '%.256q');",
    .update = "update %q set MessageID=%i, Description='%.256q' where MessageID=%i;",
    .present = "[%s:%d]Event Type Data record is already present with that key",
    .done = "[%s:%d]Successfully update the EventType Data record",
};

using Table = qmv::Table<kTable, kColumns, kGetOne, kSet>;

}  // namespace event

namespace error_record {

using Record = error_info_rec;

constexpr char kTable[] = "error_info";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(ErrorSource), QMV_COLUMN(ErrorType), QMV_COLUMN(PerceivedSeverity),
                    QMV_COLUMN(ProbableCause), QMV_COLUMN(ErrorSourceFormat), QMV_COLUMN(CIMStatusCode));

constexpr auto kKey = columns<Record>(QMV_COLUMN(ErrorSource));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get the error record ",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all errors from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all elec",
    .outs = Outs::kUntouched,
    .compile_error = CompileError::kReturnsSqliteCode,
    .out_of_memory = OutOfMemory::kReturnsNoMemory,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where ErrorSource='%q';",
    .no_statement = "[%s:%d]Fail to get Error record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the Error record",
    .reading = "[%s:%d]Get Errors from database",
    .done = kSilent,
    .compile_error = CompileError::kReturnsSqliteCode,
    .out_of_memory = OutOfMemory::kReturnsNoMemory,
};

constexpr Set kSet = {
    .insert =
        "insert into %q "
        "(ErrorSource,ErrorType,PerceivedSeverity,ProbableCause,ErrorSourceFormat,CIMStatusCode)                 "
        "values ('%.256q', '%i', '%i', '%i', '%i', '%i');",
    .update =
        "update %q set "
        "ErrorSource='%.256q',ErrorType='%i',PerceivedSeverity='%i',ProbableCause='%i',ErrorSourceFormat='%i',"
        "CIMStatusCode='%i' "
        "where ErrorSource='%.256q';",
    .present = "[%s:%d]Error info is already present with that key",
    .done = "[%s:%d]Successfully update the Error record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace error_record

// Table "jobs" of the command-line shell: the columns that an error record is made of.
namespace job {

using Record = error_info_rec;

constexpr int kStateColumn = 1;
constexpr std::int32_t kEndedInError = 10;
constexpr std::size_t kSourcePrefix = 8;  // characters before the job's number

constexpr auto kColumns = columns<Record>(QMV_COLUMN_AT(7, ErrorType), QMV_COLUMN_AT(11, PerceivedSeverity),
                                          QMV_COLUMN_AT(12, ProbableCause), QMV_COLUMN_AT(9, CIMStatusCode));

// The number behind the prefix, the nearest int32 to it; a source without one is job 0.
std::int32_t number(const char* source) {
  if (strnlen(source, kSourcePrefix) < kSourcePrefix) return 0;
  const long number = std::strtol(source + kSourcePrefix, nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long>(number, INT32_MIN, INT32_MAX));
}

}  // namespace job

}  // namespace

std::int32_t db_set_indication_service(sqlite3* db, const indication_service_rec* record) noexcept {
  return set<service::Table, service::kKey>(here(), db, record);
}

std::int32_t db_get_indication_service(sqlite3* db, indication_service_rec* record) noexcept {
  const char* const name = "IndicationService";
  return fill<service::Table>(here(), db, record, name);
}

std::int32_t db_set_EventType_Data(sqlite3* db, const event_type_rec* record) noexcept {
  return set<event::Table, event::kKey>(here(), db, record);
}

std::int32_t db_get_MessageID(sqlite3* db, const char* Description, event_type_rec* record) noexcept {
  return fill<event::Table>(here(), db, record, Description);
}

std::int32_t db_set_error_info(sqlite3* db, const error_info_rec* record) noexcept {
  return set<error_record::Table, error_record::kKey>(here(), db, record);
}

std::int32_t db_get_error_info(sqlite3* db, const char* ErrorSource, error_info_rec** record) noexcept {
  return get_one<error_record::Table>(here(), db, record, ErrorSource);
}

std::int32_t db_get_all_error_info(sqlite3* db, std::int32_t* count, error_info_rec** records) noexcept {
  return list<error_record::Table>(here(), db, count, records);
}

// Written out: its record is made of another table's row.
std::int32_t db_get_clp_error_info(sqlite3* db, const char* ErrorSource, error_info_rec** record) noexcept {
  const SqlText text(sqlite3_mprintf("select * from %q where jobid=%d", "jobs", job::number(ErrorSource)));
  Statement statement;
  if (statement.prepare(db, text) != SQLITE_OK) return kFailure;
  if (statement.missing()) return kOk;
  if (statement.step() != SQLITE_ROW) return kFailure;
  if (sqlite3_column_int(statement.get(), job::kStateColumn) != job::kEndedInError) return kFailure;
  *record = static_cast<error_info_rec*>(std::calloc(1, sizeof(error_info_rec)));
  if (*record == nullptr) {
    trace(here(), Message("[%s:%d]Memory allocation error"));
    return kNoMemory;
  }
  read_row(statement.get(), kRuns<job::kColumns>.layout, *record, Before::kZero);
  std::memcpy((*record)->ErrorSource, ErrorSource, strnlen(ErrorSource, sizeof((*record)->ErrorSource)));
  return kOk;
}
