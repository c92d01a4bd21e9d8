// What is known of the event log as a whole, table "sel_info".
#include "core/shapes.h"
#include "qmv/sel.h"
#include "sel/site.h"

namespace {

using namespace qmv;
using sel::here;
using Record = sel_info_rec;

constexpr char kTable[] = "sel_info";

// QUIRK: The reader takes column 0 twice and is one column behind from then on; the writer is not. Its texts run on
// over the members behind their own, up to the record's end. Tests: SelInfo.ReaderIsOneColumnBehindAfterTheFirst,
// SelInfo.LongTextsRunOnUpToTheRecordsEnd.
constexpr auto kReadColumns = columns<Record>(
    QMV_COLUMN_AT(0, MaxNoOfSels), QMV_RUNNING_COLUMN_AT(0, CompletionCode), QMV_RUNNING_COLUMN_AT(1, Version),
    QMV_COLUMN_AT(2, RecCnt), QMV_COLUMN_AT(3, FreeSpace), QMV_RUNNING_COLUMN_AT(4, AddTimeStamp),
    QMV_RUNNING_COLUMN_AT(5, EraseTimeStamp), QMV_RUNNING_COLUMN_AT(6, OperationSupport));

constexpr auto kColumns = columns<Record>(QMV_COLUMN(MaxNoOfSels), QMV_COLUMN(CompletionCode), QMV_COLUMN(Version),
                                          QMV_COLUMN(RecCnt), QMV_COLUMN(FreeSpace), QMV_COLUMN(AddTimeStamp),
                                          QMV_COLUMN(EraseTimeStamp), QMV_COLUMN(OperationSupport));
static_assert(kColumns.table_columns() == 8);

constexpr auto kKey = columns<Record>(QMV_COLUMN(Version));

constexpr Count kCount = {
    .select = "select count(*) from %q;",
    .no_row = "[%s:%d]No records found",
    .done = "[%s:%d]Successfully return SelInfo Count",
    .without_statement = kFailure,
};

constexpr GetOne kGet = {
    .select = "select * from %q;",
    .no_statement = "[%s:%d]Fail to get Selinfo record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the Selinfo record",
    .reading = "[%s:%d]Get Selinfo record from database",
    .done = "[%s:%d]Successfully got the Selinfo record",
    .out_of_memory = OutOfMemory::kReturnsNoMemory,
};

constexpr Set kSet = {
    .insert =
        "insert into %q (MaxNoOfSels, CompletionCode, Version, \t\t\tRecCnt, FreeSpace, AddTimeStamp, "
        "EraseTimeStamp,\t\t\tOperationSupport) values (%i, '%.64q', '%.64q', %i, %i, '%.128q', "
        "\t\t\t'%.128q', '%.64q');",
    .update =
        "update %q set MaxNoOfSels=%i, CompletionCode='%.64q', \t\t\tVersion='%.64q', RecCnt=%i, FreeSpace=%i, "
        "AddTimeStamp='%.128q', \t\t\tEraseTimeStamp='%.128q', OperationSupport='%.64q' where Version='%.64q';",
    .present = "[%s:%d]Selinfo record is already present with that key",
    .done = "[%s:%d]Successfully update the Selinfo record",
};

using SelInfo = Table<kTable, kReadColumns, kCount, kGet, kSet>;

}  // namespace

std::int32_t db_get_selinfo_cnt(sqlite3* db, std::int32_t* count) noexcept {
  return get_count<SelInfo>(here(), db, count);
}

std::int32_t db_get_selinfo(sqlite3* db, sel_info_rec** record) noexcept {
  return get_one<SelInfo>(here(), db, record);
}

std::int32_t db_set_selinfo(sqlite3* db, const sel_info_rec* record) noexcept {
  return set<SelInfo, kKey, kColumns>(here(), db, record);
}
