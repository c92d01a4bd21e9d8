// Boot order.
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;
using profile::Table;

namespace entry {

using Record = boot_order_rec;

// QUIRK: The get-all does not read isHost, which stays 0. Test: BootOrder.GetAllLeavesTheHostFlagZero.
constexpr auto kListColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(AssignedSequence));

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(AssignedSequence), QMV_COLUMN(isHost));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr auto kSql = packed([] {
  return Table{
      .table = "boot_order",
      .select = "select * from %q where InstanceID='%q';",
      .insert =
          "insert into %q (InstanceID, AssignedSequence, isHost)                         values ('%.256q', "
          "'%i', '%i');",
      .update = "update %q set InstanceID='%.256q', AssignedSequence='%i', isHost='%i' where InstanceID='%.256q';",
  };
});

constexpr auto kGetAll = packed([] {
  return GetAll{
      .count_failed = "[%s:%d]Fail to get boot order records",
      .no_rows = kSilent,
      .reading = "[%s:%d]Get all role records from database",
      .row = kSilent,
      .done = "[%s:%d]Successfully got all boot order %d",
      .compile_error = CompileError::kReturnsSqliteCode,
      .out_of_memory = OutOfMemory::kReturnsNoMemory,
  };
});

constexpr auto kGetOne = packed([] {
  return GetOne{
      .no_statement = "[%s:%d]Fail to get boot order record",
      .no_row = "[%s:%d]Fail to get boot order records",
      .reading = "[%s:%d]Get boot order from database",
      .done = "[%s:%d]Successfully got the boot order.",
      .compile_error = CompileError::kReturnsSqliteCode,
  };
});

constexpr auto kSet = packed([] {
  return Set{
      .present = "[%s:%d]Error info is already present with that key",
      .done = "[%s:%d]Successfully update the boot order record",
  };
});

}  // namespace entry

}  // namespace

std::int32_t db_get_all_boot_order(sqlite3* db, std::int32_t* count, boot_order_rec** records) noexcept {
  return list<entry::kGetAll, entry::kListColumns, entry::kSql>(here(), db, count, records);
}

std::int32_t db_get_boot_order(sqlite3* db, const char* InstanceID, boot_order_rec* record) noexcept {
  return fill<entry::kGetOne, entry::kColumns, entry::kSql>(here(), db, record, InstanceID);
}

// Unlike most sets, it reports a failure.
std::int32_t db_set_boot_order(sqlite3* db, const boot_order_rec* record) noexcept {
  const Site site = here();
  if (record == nullptr) return kFailure;
  using namespace entry;
  if (upsert<kSet, kColumns, kKey, kSql>(site, db, record) != SQLITE_OK) {
    trace(site, Format<'s'>("[%s:%d]DB Error: %s \n"), sqlite3_errmsg(db));
    return kFailure;
  }
  trace(site, QMV_TEXT(kSet, done));
  return kOk;
}

std::int32_t db_delete_boot_order(sqlite3* db) noexcept {
  db_execute(db, "delete from %q", QMV_TEXT(entry::kSql, table));
  return kOk;
}

std::int32_t db_reset_boot_order(sqlite3* db, std::int32_t isHost) noexcept {
  db_execute(db, "update %q set AssignedSequence=0 where isHost='%i'", QMV_TEXT(entry::kSql, table), isHost);
  return kOk;
}
