// Power management and account management. All four tables borrow their texts.
#include "instances/static/asset_texts.h"
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

namespace power_capabilities {

using Record = power_management_capabilities_rec;

constexpr char kTable[] = "power_management_capabilities";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(PowerChangeCapabilities),
                    QMV_COLUMN(PowerStateSupported), QMV_COLUMN(RequestedPowerStatesSupported));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where InstanceID='%q';");

constexpr Set kSet = profile::asset_set(
    "insert into %q (InstanceID, ElementName, PowerChangeCapabilities, PowerStateSupported, "
    "RequestedPowerStatesSupported) \t\t\tvalues ('%.256q', '%.256q', '%.64q', '%.64q', '%.64q');",
    "update %q set InstanceID='%.256q', ElementName='%.256q', PowerChangeCapabilities='%.64q', "
    "\t\tPowerStateSupported='%.64q', RequestedPowerStatesSupported='%.64q' where InstanceID='%.256q';");

using Table = qmv::Table<kTable, kColumns, profile::kCollectionGetAll, kGetOne, kSet>;

}  // namespace power_capabilities

namespace power_service {

using Record = power_management_service_rec;

constexpr char kTable[] = "power_management_service";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(SystemCreationClassName),
                                          QMV_COLUMN(CreationClassName), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(Name));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where Name='%q' and SystemCreationClassName='%q';");

constexpr Set kSet = profile::asset_set(
    "insert into %q (Name, SystemCreationClassName, CreationClassName, "
    "ElementName)                         values ('%.256q', '%.256q', '%.256q', '%.256q');",
    "update %q set Name='%.256q', SystemCreationClassName='%.256q', CreationClassName='%.256q', "
    "ElementName='%.256q' where Name='%.256q';");

using Table = qmv::Table<kTable, kColumns, profile::kCollectionGetAll, kGetOne, kSet>;

}  // namespace power_service

namespace account_capabilities {

using Record = account_mgt_capabilities_rec;

constexpr char kTable[] = "account_mgt_capabilities";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(ElementNameEditSupported),
                    QMV_COLUMN(MaxElementNameLen), QMV_COLUMN(OperationsSupported));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where InstanceID='%q';");

// QUIRK: SQLite rejects the update for the comma that lacks behind ElementName, so a row that exists keeps its values.
// Test: PowerAccount.AccountCapabilitiesOfAnExistingKeyKeepTheirRow.
constexpr Set kSet = profile::asset_set(
    "insert into %q (InstanceID, ElementName, ElementNameEditSupported, MaxElementNameLen, "
    "OperationsSupported) \t\t\tvalues ('%.256q', '%.256q', %i, %i, '%.256q');",
    "update %q set InstanceID='%.256q', ElementName='%.256q' ElementNameEditSupported=%i, "
    "MaxElementNameLen=%i, \t\tOperationsSupported='%.256q' where InstanceID='%.256q';");

using Table = qmv::Table<kTable, kColumns, profile::kCollectionGetAll, kGetOne, kSet>;

}  // namespace account_capabilities

namespace account_settings {

using Record = account_setting_data_rec;

constexpr char kTable[] = "account_setting_data";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(MaxPwdExpiration));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where InstanceID='%q';");

// QUIRK: SQLite rejects the update for the comma that lacks behind ElementName, so a row that exists keeps its values.
// Test: PowerAccount.AccountSettingsOfAnExistingKeyKeepTheirRow.
constexpr Set kSet = profile::asset_set(
    "insert into %q (InstanceID, ElementName, MaxPwdExpiration)\tvalues ('%.256q', '%.256q', '%.64q');",
    "update %q set InstanceID='%.256q', ElementName='%.256q' MaxPwdExpiration='%.64q' where "
    "InstanceID='%.256q';");

using Table = qmv::Table<kTable, kColumns, profile::kCollectionGetAll, kGetOne, kSet>;

}  // namespace account_settings

}  // namespace

std::int32_t db_get_all_power_mgt_capabilities(sqlite3* db, std::int32_t* count,
                                               power_management_capabilities_rec** records) noexcept {
  return list<power_capabilities::Table>(here(), db, count, records);
}

std::int32_t db_get_power_mgt_capabilities(sqlite3* db, const char* InstanceID,
                                           power_management_capabilities_rec** record) noexcept {
  return get_one<power_capabilities::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_power_mgt_capabilities(sqlite3* db, const power_management_capabilities_rec* record) noexcept {
  return set<power_capabilities::Table, power_capabilities::kKey>(here(), db, record);
}

std::int32_t db_get_all_power_mgt_service(sqlite3* db, std::int32_t* count,
                                          power_management_service_rec** records) noexcept {
  return list<power_service::Table>(here(), db, count, records);
}

std::int32_t db_get_power_mgt_service(sqlite3* db, const char* Name, const char* SystemCreationClassName,
                                      power_management_service_rec** record) noexcept {
  return get_one<power_service::Table>(here(), db, record, Name, SystemCreationClassName);
}

std::int32_t db_set_power_mgt_service(sqlite3* db, const power_management_service_rec* record) noexcept {
  return set<power_service::Table, power_service::kKey>(here(), db, record);
}

std::int32_t db_get_all_account_mgt_capabilities(sqlite3* db, std::int32_t* count,
                                                 account_mgt_capabilities_rec** records) noexcept {
  return list<account_capabilities::Table>(here(), db, count, records);
}

std::int32_t db_get_account_mgt_capabilities(sqlite3* db, const char* InstanceID,
                                             account_mgt_capabilities_rec** record) noexcept {
  return get_one<account_capabilities::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_account_mgt_capabilities(sqlite3* db, const account_mgt_capabilities_rec* record) noexcept {
  return set<account_capabilities::Table, account_capabilities::kKey>(here(), db, record);
}

std::int32_t db_get_all_account_setting_data(sqlite3* db, std::int32_t* count,
                                             account_setting_data_rec** records) noexcept {
  return list<account_settings::Table>(here(), db, count, records);
}

std::int32_t db_get_account_setting_data(sqlite3* db, const char* InstanceID,
                                         account_setting_data_rec** record) noexcept {
  return get_one<account_settings::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_account_setting_data(sqlite3* db, const account_setting_data_rec* record) noexcept {
  return set<account_settings::Table, account_settings::kKey>(here(), db, record);
}
