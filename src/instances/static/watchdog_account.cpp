// Watchdog capabilities and the account management service.
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

namespace watchdog {

using Record = pwds_capabilities_rec;

constexpr char kTable[] = "pwds_capabilities";

constexpr Count kCount = {
    .select = "select count(*) from %q;",
    .no_row = "[%s:%d]No records found",
    .done = "[%s:%d]Successfully returns the watchdog capabilities count :%d",
};

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get privilege records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all privilege records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all privileges %d",
};

// QUIRK: Columns 3 and 4 both go to ele_name_edit_supported, which keeps the second; max_ele_name_len is never filled.
// Test: Watchdog.ReadersKeepTheNameLengthInTheEditFlag.
constexpr auto kReadColumns =
    columns<Record>(QMV_COLUMN_AT(0, instance_id), QMV_COLUMN_AT(1, ele_name), QMV_COLUMN_AT(2, req_states_supported),
                    QMV_COLUMN_AT(3, ele_name_edit_supported), QMV_COLUMN_AT(4, ele_name_edit_supported),
                    QMV_COLUMN_AT(5, act_on_exp_supported), QMV_COLUMN_AT(6, last_exp_data_supported),
                    QMV_COLUMN_AT(7, wdt_data_supported));

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(instance_id), QMV_COLUMN(ele_name), QMV_COLUMN(req_states_supported),
                    QMV_COLUMN(ele_name_edit_supported), QMV_COLUMN(max_ele_name_len), QMV_COLUMN(act_on_exp_supported),
                    QMV_COLUMN(last_exp_data_supported), QMV_COLUMN(wdt_data_supported));

constexpr auto kKey = columns<Record>(QMV_COLUMN(instance_id));

// QUIRK: The insert's texts are not escaped, so a quote in one makes it fail. Test:
// Watchdog.QuoteInATextFailsTheInsert.
constexpr Set kSet = {
    .insert =
        "insert into %q "
        "(instance_id,ele_name,req_states_supported,ele_name_edit_supported,\t\t\t\t\tmax_ele_name_len,act_on_exp_"
        "supported,last_exp_data_supported,wdt_data_supported) "
        "\t\t\t\t\tvalues ('%.256s', '%.256s', '%.32s', '%i','%i','%.32s', '%.32s','%.32s');",
    .update =
        "update %q set "
        "instance_id='%.256q',ele_name='%.256q',req_states_supported='%.32q',ele_name_edit_supported='%i',"
        "\t\t\t\t\tmax_ele_name_len='%i',act_on_exp_supported='%.32q',last_exp_data_supported='%.32q',wdt_data_"
        "supported='%.32q' "
        "where instance_id='%.256q';",
    .present = "[%s:%d]AssignRole record is already present with that key",
    .done = "[%s:%d]Successfully update the account_management_service record",
};

using Table = qmv::Table<kTable, kReadColumns, kCount, kGetAll, kSet>;

}  // namespace watchdog

namespace account {

using Record = account_management_service_rec;

constexpr char kTable[] = "account_management_service";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(RequestedState), QMV_COLUMN(EnabledState), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(Name));

constexpr GetOne kGetOne = {
    .select = "select * from %q where Name='%q';",
    .no_statement = "[%s:%d]Fail to get acc_mgt_service",
    .no_row = "[%s:%d]Fail to get acc_mgt_service",
    .reading = "[%s:%d]Get assign role from database",
    .done = "[%s:%d]Successfully got acc_mgt",
};

constexpr Set kSet = {
    .insert =
        "insert into %q (Name,RequestedState,EnabledState,ElementName)                 values ('%.256q', "
        "'%i', '%i', '%.256q');",
    .update =
        "update %q set Name='%.256q',RequestedState='%i',EnabledState='%i',ElementName='%.256q' where "
        "Name='%.256q';",
    .present = "[%s:%d]AssignRole record is already present with that key",
    .done = "[%s:%d]Successfully update the account_management_service record",
};

using Table = qmv::Table<kTable, kColumns, kGetOne, kSet>;

}  // namespace account

}  // namespace

std::int32_t db_get_pwds_capabilities_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<watchdog::Table>(here(), db, count);
}

// Unlike most sets, it reports a failure.
std::int32_t db_set_pwds_capablities(sqlite3* db, const pwds_capabilities_rec* record) noexcept {
  const Site site = here();
  if (upsert<watchdog::Table, watchdog::kKey, watchdog::kColumns>(site, db, record) != SQLITE_OK) return kFailure;
  const auto& form = watchdog::Table::form<watchdog::kSet>();
  trace(site, text(form, form.done));
  return kOk;
}

std::int32_t db_get_all_pwds_capablities(sqlite3* db, std::int32_t* count, pwds_capabilities_rec** records) noexcept {
  return list<watchdog::Table>(here(), db, count, records);
}

std::int32_t db_set_accountmgt_service(sqlite3* db, const account_management_service_rec* record) noexcept {
  return set<account::Table, account::kKey>(here(), db, record);
}

std::int32_t db_get_accountmgt_service(sqlite3* db, account_management_service_rec* record,
                                       std::int32_t* count) noexcept {
  const char* const name = "AccountManagementService";
  const std::int32_t status = fill<account::Table>(here(), db, record, name);
  *count = 1;  // on every path
  return status;
}

// Written out: the compile error ends in a newline.
// QUIRK: A missing instance is no error. Test: Watchdog.GetOfAnUnknownInstanceReturnsZeroAndLeavesTheRecord.
std::int32_t db_get_pwds_capablities(sqlite3* db, const char* instance_id, pwds_capabilities_rec* record) noexcept {
  const Site site = here();
  if (record == nullptr) return kFailure;
  const SqlText text(sqlite3_mprintf("select * from %q where instance_id='%q';", watchdog::Table::name(), instance_id));
  Statement statement;
  if (statement.prepare(db, text) != SQLITE_OK) {
    error(site, Format<'s'>("[%s:%d]SQL Compilation error: %s\n"), sqlite3_errmsg(db));
    return kFailure;
  }
  constexpr Message kMissing = "[%s:%d]Fail to get platform watchdog capabilities\n";
  if (statement.missing()) {
    trace(site, kMissing);
    return kOk;
  }
  trace(site, Message("[%s:%d]Get PWDS capability from database"));
  if (statement.step() != SQLITE_ROW) {
    trace(site, kMissing);
    return kOk;
  }
  read_row(statement.get(), watchdog::Table::layout(), record, Before::kUnknown);
  return kOk;
}
