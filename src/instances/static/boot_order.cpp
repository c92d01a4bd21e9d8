// Boot order.
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

namespace entry {

using Record = boot_order_rec;

constexpr char kTable[] = "boot_order";

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get boot order records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all role records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all boot order %d",
    .compile_error = CompileError::kReturnsSqliteCode,
    .out_of_memory = OutOfMemory::kReturnsNoMemory,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get boot order record",
    .no_row = "[%s:%d]Fail to get boot order records",
    .reading = "[%s:%d]Get boot order from database",
    .done = "[%s:%d]Successfully got the boot order.",
    .compile_error = CompileError::kReturnsSqliteCode,
};

// QUIRK: The get-all does not read isHost, which stays 0. Test: BootOrder.GetAllLeavesTheHostFlagZero.
constexpr auto kListColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(AssignedSequence));

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(AssignedSequence), QMV_COLUMN(isHost));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));
constexpr Set kSet = {
    .insert =
        "insert into %q (InstanceID, AssignedSequence, isHost)                         values ('%.256q', "
        "'%i', '%i');",
    .update = "update %q set InstanceID='%.256q', AssignedSequence='%i', isHost='%i' where InstanceID='%.256q';",
    .present = "[%s:%d]Error info is already present with that key",
    .done = "[%s:%d]Successfully update the boot order record",
};

using ListTable = qmv::Table<kTable, kListColumns, kGetAll>;
using Table = qmv::Table<kTable, kColumns, kGetOne, kSet>;

}  // namespace entry

}  // namespace

std::int32_t db_get_all_boot_order(sqlite3* db, std::int32_t* count, boot_order_rec** records) noexcept {
  return list<entry::ListTable>(here(), db, count, records);
}

std::int32_t db_get_boot_order(sqlite3* db, const char* InstanceID, boot_order_rec* record) noexcept {
  return fill<entry::Table>(here(), db, record, InstanceID);
}

// Unlike most sets, it reports a failure.
std::int32_t db_set_boot_order(sqlite3* db, const boot_order_rec* record) noexcept {
  const Site site = here();
  if (record == nullptr) return kFailure;
  if (upsert<entry::Table, entry::kKey>(site, db, record) != SQLITE_OK) {
    trace(site, Format<'s'>("[%s:%d]DB Error: %s \n"), sqlite3_errmsg(db));
    return kFailure;
  }
  const auto& form = entry::Table::form<entry::kSet>();
  trace(site, text(form, form.done));
  return kOk;
}

std::int32_t db_delete_boot_order(sqlite3* db) noexcept {
  db_execute(db, "delete from %q", entry::Table::name());
  return kOk;
}

std::int32_t db_reset_boot_order(sqlite3* db, std::int32_t isHost) noexcept {
  db_execute(db, "update %q set AssignedSequence=0 where isHost='%i'", entry::Table::name(), isHost);
  return kOk;
}
