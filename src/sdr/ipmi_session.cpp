// The IPMI session, table "ipmi_session"; the messages call it Device.
#include "core/shapes.h"
#include "qmv/sdr.h"
#include "sdr/site.h"

namespace {

using namespace qmv;
using sdr::here;
using Record = ipmi_session_rec;

constexpr char kTable[] = "ipmi_session";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(SessionText0), QMV_COLUMN(SessionValue1), QMV_COLUMN(SessionText2),
                                          QMV_COLUMN(SessionText3), QMV_COLUMN(SessionText4), QMV_COLUMN(SessionText5),
                                          QMV_COLUMN(SessionText6), QMV_COLUMN(SessionText7), QMV_COLUMN(SessionText8));
static_assert(kColumns.table_columns() == 9);

constexpr GetOne kGet = {
    .select = "select * from %q ;",
    .no_statement = "[%s:%d]Fail to get Device record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the Device record",
    .reading = "[%s:%d]Get Device record from database",
    .done = "[%s:%d]Successfully got the Device record",
};

using Session = Table<kTable, kColumns, kGet>;

}  // namespace

std::int32_t db_get_ipmi_session_info(sqlite3* db, ipmi_session_rec** record) noexcept {
  return get_one<Session>(here(), db, record);
}
