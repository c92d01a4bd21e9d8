// IP assignment: how interfaces get their addresses, and their static configuration.
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

namespace assignment {

using Record = ip_assign_settingdata_rec;

constexpr char kTable[] = "ip_assign_settingdata";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(AddressOrigin), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get IPAssignmentSettingData records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all IPAssignmentSettingdata records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all IPAssignmentSettingData %d",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get IPAssignmentSettingData records\n",
    .no_row = "[%s:%d]Fail to get IPAssignmentSettingData records\n",
    .reading = "[%s:%d]Get IPAssignmentSettingData from database",
    .done = "[%s:%d]Successfully got IPAssignmentSettingData\n",
};

constexpr Set kSet = {
    .insert = "insert into %q (InstanceID, AddressOrigin, ElementName) values ('%.256q', %i, '%.256q');",
    .update =
        "update %q set InstanceID='%.256q', AddressOrigin=%i, ElementName='%.256q'\t\t\t\twhere "
        "InstanceID='%.256q';",
    .present = "[%s:%d]IPAssignSettingData record is already present with that key",
    .done = "[%s:%d]Successfully update the IPAssignSettingData record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace assignment

namespace static_settings {

using Record = static_ip_assign_settingdata_rec;

constexpr char kTable[] = "static_ip_assign_settingdata";

// The record has Gateway and SubnetMask the other way round than the table; both are matched by name.
constexpr auto kColumns = columns<Record>(QMV_COLUMN(InterfaceName), QMV_COLUMN(IPv4Address), QMV_COLUMN(SubnetMask),
                                          QMV_COLUMN(Gateway), QMV_COLUMN(IPv6Address), QMV_COLUMN(IPv6AddressType),
                                          QMV_COLUMN(IPv6SubnetPrefixLength), QMV_COLUMN(GatewayIPv6Address));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get Static IPAssignmentSettingData records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all Static IPAssignmentSettingdata records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all Static IPAssignmentSettingData %d",
    .outs = Outs::kUntouched,
    .compile_error = CompileError::kReturnsSqliteCode,
    .out_of_memory = OutOfMemory::kReturnsNoMemory,
};

using Table = qmv::Table<kTable, kColumns, kGetAll>;

std::int32_t insert(sqlite3* db, const Record& record) {
  return db_execute(
      db,
      "insert into %q (InterfaceName, IPv4Address, SubnetMask, Gateway, IPv6Address, IPv6AddressType, "
      "IPv6SubnetPrefixLength, GatewayIPv6Address) values ('%.256q','%.256q', '%.256q', '%.256q', '%.256q', '%d', "
      "'%d', '%.256q');",
      Table::name(), record.InterfaceName, record.IPv4Address, record.SubnetMask, record.Gateway, record.IPv6Address,
      record.IPv6AddressType, record.IPv6SubnetPrefixLength, record.GatewayIPv6Address);
}

// The update leaves its key column alone.
void update(sqlite3* db, const Record& record) {
  db_execute(
      db,
      "update %q set IPv4Address='%.256q', SubnetMask='%.256q', Gateway='%.256q', IPv6Address='%.256q', "
      "IPv6AddressType='%d', IPv6SubnetPrefixLength='%d', GatewayIPv6Address='%.256q' where InterfaceName='%.256q';",
      Table::name(), record.IPv4Address, record.SubnetMask, record.Gateway, record.IPv6Address, record.IPv6AddressType,
      record.IPv6SubnetPrefixLength, record.GatewayIPv6Address, record.InterfaceName);
}

}  // namespace static_settings

}  // namespace

std::int32_t db_get_all_ip_assignment_settingdata(sqlite3* db, std::int32_t* count,
                                                  ip_assign_settingdata_rec** records) noexcept {
  return list<assignment::Table>(here(), db, count, records);
}

std::int32_t db_get_ip_assignment_setting_data(sqlite3* db, const char* InstanceID,
                                               ip_assign_settingdata_rec* record) noexcept {
  return fill<assignment::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_ip_assignment_settingdata(sqlite3* db, const ip_assign_settingdata_rec* record) noexcept {
  return set<assignment::Table, assignment::kKey>(here(), db, record);
}

std::int32_t db_get_all_static_ip_assignment_settingdata(sqlite3* db, std::int32_t* count,
                                                         static_ip_assign_settingdata_rec** records) noexcept {
  return list<static_settings::Table>(here(), db, count, records);
}

std::int32_t db_set_static_ip_assignment_settingdata(sqlite3* db,
                                                     const static_ip_assign_settingdata_rec* record) noexcept {
  const Site site = here();
  if (static_settings::insert(db, *record) == SQLITE_CONSTRAINT) {
    trace(site, Message("[%s:%d]Updating the StaticIPAssignmentTable"));
    static_settings::update(db, *record);
  }
  trace(site, Message("[%s:%d]Successfully update the Static IPAssignSettingData record"));
  return kOk;
}

std::int32_t db_init_static_ip_assignment_settingdata(sqlite3* db,
                                                      const static_ip_assign_settingdata_rec* record) noexcept {
  return static_settings::insert(db, *record) == SQLITE_OK ? kOk : kFailure;
}

std::int32_t db_delete_static_ip(sqlite3* db) noexcept {
  db_execute(db, "delete from %q", static_settings::Table::name());
  return kOk;
}
