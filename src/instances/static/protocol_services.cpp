// Protocol services and text redirection.
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

// The one row of each redirection table that the accessors work on.
constexpr char kService[] = "TextRedirectionService1";
constexpr char kAccessPoint[] = "TextRedirectionSAP1";

namespace service {

using Record = protocol_service_rec;

constexpr char kTable[] = "protocol_service";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(Protocol), QMV_COLUMN(ElementName), QMV_COLUMN(MaxConnections),
                    QMV_COLUMN(RequestedState), QMV_COLUMN(EnabledState), QMV_COLUMN(HealthState),
                    QMV_COLUMN(OperationalStatus), QMV_COLUMN(OtherProtocol));

constexpr auto kKey = columns<Record>(QMV_COLUMN(Name));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get protocol service records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all role records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all protocol service %d",
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where Name='%q';",
    .no_statement = "[%s:%d]Fail to get protocol service record",
    .no_row = "[%s:%d]Fail to get protocol service records",
    .reading = "[%s:%d]Get protocol service from database",
    .done = "[%s:%d]Successfully got the protocol service.",
};

constexpr Set kSet = {
    .insert =
        "insert into %q (Name, Protocol, ElementName, \t\t\tMaxConnections, RequestedState, EnabledState, "
        "\t\t\tHealthState, OperationalStatus, OtherProtocol) \t\t\tvalues ('%.256q', %i, '%.256q', %i, %i, "
        "%i, %i, '%.256q', '%.256q');",
    .update =
        "update %q set Name='%.256q',Protocol=%i, ElementName='%.256q', \t\t\t\tMaxConnections=%i, "
        "RequestedState=%i,EnabledState=%i, \t\t\t\tHealthState=%i, "
        "OperationalStatus='%.256q',OtherProtocol='%.256q' where Name='%.256q';",
    .present = "[%s:%d]Protocol service record is already present with that key",
    .done = "[%s:%d]Successfully update the protocol service record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace service

namespace redirection {

using Record = textredirectionservice_rec;

constexpr char kTable[] = "textredirectionservice";

constexpr auto kColumns = columns<Record>(
    QMV_COLUMN(Name), QMV_COLUMN(ElementName), QMV_COLUMN(MaxConcurrentEnabledSAPs), QMV_COLUMN(EnabledState),
    QMV_COLUMN(RequestedState), QMV_COLUMN(SharingMode), QMV_COLUMN(RedirectionServiceType));

constexpr auto kKey = columns<Record>(QMV_COLUMN(Name));

constexpr GetOne kGetOne = {
    .select = "select * from %q where Name='%q';",
    .no_statement = "[%s:%d]Fail to get trs",
    .no_row = "[%s:%d]Fail to get trs",
    .reading = "[%s:%d]Get assign role from database",
    .done = "[%s:%d]Successfully got trs",
};

constexpr Set kSet = {
    .insert =
        "insert into %q (Name, "
        "ElementName,MaxConcurrentEnabledSAPs,EnabledState,RequestedState,SharingMode,RedirectionServiceType) "
        "\t\tvalues ('%.256q', '%.256q', '%i', '%i', '%i', '%i', '%i');",
    .update =
        "update %q set "
        "Name='%.256q',ElementName='%.256q',MaxConcurrentEnabledSAPs='%i',EnabledState='%i',RequestedState='%i',"
        "SharingMode='%i',RedirectionServiceType='%i'                                "
        "where Name='%.256q';",
    .present = "[%s:%d]AssignRole record is already present with that key",
    .done = "[%s:%d]Successfully update the TRS record",
};

using Table = qmv::Table<kTable, kColumns, kGetOne, kSet>;

}  // namespace redirection

namespace access_point {

using Record = textredirectionsap_rec;

constexpr char kTable[] = "textredirectionsap";

constexpr GetOne kGetOne = {
    .select = "select * from %q where Name='%q';",
    .no_statement = "[%s:%d]Fail to get TextRedirectionSAP records\n",
    .no_row = "[%s:%d]Fail to get TextRedirectionSAP records\n",
    .reading = "[%s:%d]Get TextRedirectionSAP from database",
    .done = "[%s:%d]Successfully got TextRedirectionSAP\n",
};

// The set leaves the session terminate sequence, the last column, alone.
constexpr auto kReadColumns =
    columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(ElementName), QMV_COLUMN(EnabledState), QMV_COLUMN(RequestedState),
                    QMV_COLUMN(TextFlowType), QMV_COLUMN(SessionTerminateSequence));

constexpr auto kColumns = columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(ElementName), QMV_COLUMN(EnabledState),
                                          QMV_COLUMN(RequestedState), QMV_COLUMN(TextFlowType));

constexpr auto kKey = columns<Record>(QMV_COLUMN(Name));
constexpr Set kSet = {
    .insert =
        "insert into %q (Name, ElementName,EnabledState,RequestedState,TextFlowType)                         "
        "values ('%.256q', '%.256q', '%i', '%i', '%i');",
    .update =
        "update %q set "
        "Name='%.256q',ElementName='%.256q',EnabledState='%i',RequestedState='%i',TextFlowType='%i'                  "
        "              "
        "where Name='%.256q';",
    .present = "[%s:%d]TextRedirectionSAP record is already present with that key",
    .done = "[%s:%d]Successfully update the TextRedirectionSAP record",
};

using Table = qmv::Table<kTable, kReadColumns, redirection::kGetOne, kGetOne, kSet>;

}  // namespace access_point

}  // namespace

std::int32_t db_get_all_protocol_service(sqlite3* db, std::int32_t* count, protocol_service_rec** records) noexcept {
  return list<service::Table>(here(), db, count, records);
}

std::int32_t db_get_protocol_service(sqlite3* db, const char* Name, protocol_service_rec* record) noexcept {
  return fill<service::Table>(here(), db, record, Name);
}

std::int32_t db_set_protocol_service(sqlite3* db, const protocol_service_rec* record) noexcept {
  return set<service::Table, service::kKey>(here(), db, record);
}

std::int32_t db_modify_protocol_service_rs(sqlite3* db, std::int32_t RequestedState, const char* Name) noexcept {
  db_execute(db, "update %q set RequestedState='%i'where Name='%q';", service::Table::name(), RequestedState, Name);
  return kOk;
}

std::int32_t db_set_trs(sqlite3* db, const textredirectionservice_rec* record) noexcept {
  return set<redirection::Table, redirection::kKey>(here(), db, record);
}

std::int32_t db_get_trs(sqlite3* db, textredirectionservice_rec* record, std::int32_t* count) noexcept {
  const std::int32_t status = fill<redirection::Table>(here(), db, record, static_cast<const char*>(kService));
  *count = 1;  // on every path
  return status;
}

std::int32_t db_modify_trs_rs(sqlite3* db, std::int32_t State, std::int32_t SapState) noexcept {
  if (db_execute(db, "update %q set EnabledState='%i',RequestedState='%i' where Name='%q';", redirection::Table::name(),
                 State, State, kService) != SQLITE_OK)
    return kFailure;
  if (SapState == 0) return kOk;
  const std::int32_t code = db_execute(db, "update %q set EnabledState='%i' where Name='%q';",
                                       access_point::Table::name(), SapState, kAccessPoint);
  return code == SQLITE_OK ? kOk : kFailure;
}

std::int32_t db_set_text_sap(sqlite3* db, const textredirectionsap_rec* record) noexcept {
  return set<access_point::Table, access_point::kKey, access_point::kColumns>(here(), db, record);
}

// QUIRK: Despite its name it reads one row, and it says what db_get_trs() says. Test:
// ProfileGetOne.ReadsTheFirstRowOfItsKeys.
std::int32_t db_get_all_textSAP(sqlite3* db, textredirectionsap_rec* record) noexcept {
  return fill<access_point::Table, redirection::kGetOne>(here(), db, record, static_cast<const char*>(kAccessPoint));
}

std::int32_t db_get_textSAP(sqlite3* db, const char* Name, textredirectionsap_rec* record) noexcept {
  return fill<access_point::Table, access_point::kGetOne>(here(), db, record, Name);
}

std::int32_t db_modify_textSAP(sqlite3* db, const char* SessionTerminateSequence) noexcept {
  if (SessionTerminateSequence == nullptr) return kFailure;
  db_execute(db, "update %q set SessionTerminateSequence='%q'where Name='%q';", access_point::Table::name(),
             SessionTerminateSequence, kAccessPoint);
  return kOk;
}

std::int32_t db_modify_textSAP_rs(sqlite3* db, std::int32_t State) noexcept {
  const std::int32_t code = db_execute(db, "update %q set RequestedState='%i',EnabledState='%i' where Name='%q';",
                                       access_point::Table::name(), State, State, kAccessPoint);
  return code == SQLITE_OK ? kOk : kFailure;
}

const char* db_get_sesstion_term_seq(sqlite3* db) noexcept {
  SqlText text(sqlite3_mprintf("select SessionTerminateSequence from %q where Name='%q';", access_point::Table::name(),
                               kAccessPoint));
  Statement statement;
  if (statement.compile(db, here(), text) != SQLITE_OK || statement.missing()) return nullptr;
  statement.step();
  const auto* sequence = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
  // QUIRK: The statement is never finalised and its text never released, so that the result stays valid; it holds the
  // file's shared lock. Test: TextRedirection.TerminateSequenceKeepsItsStatementOpen.
  statement.leave_open();
  text.leave_allocated();
  return sequence;
}
