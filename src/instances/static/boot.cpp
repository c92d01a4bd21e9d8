// Boot configuration. The first three tables borrow their texts.
#include <cstdlib>

#include "instances/static/asset_texts.h"
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

namespace setting_data {

using Record = boot_setting_data_rec;

constexpr char kTable[] = "boot_setting_data";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(OwningEntity));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where InstanceID='%q';");

// QUIRK: SQLite rejects the update for the comma that lacks before OwningEntity, so a row that exists keeps its values.
// Test: Boot.SettingDataOfAnExistingKeyKeepsItsRow.
constexpr Set kSet =
    profile::asset_set("insert into %q (InstanceID, ElementName, OwningEntity) values ('%.256q', '%.256q', '%.256q');",
                       "update %q set InstanceID='%.256q', ElementName='%.256q' OwningEntity='%.256q' where "
                       "InstanceID='%.256q';");

using Table = qmv::Table<kTable, kColumns, profile::kCollectionGetAll, kGetOne, kSet>;

}  // namespace setting_data

namespace config_setting {

using Record = boot_config_setting_rec;

constexpr char kTable[] = "boot_config_setting";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where InstanceID='%q';");

constexpr Set kSet =
    profile::asset_set("insert into %q (InstanceID, ElementName) values ('%.256q', '%.256q');",
                       "update %q set InstanceID='%.256q', ElementName='%.256q' where InstanceID='%.256q';");

using Table = qmv::Table<kTable, kColumns, profile::kCollectionGetAll, kGetOne, kSet>;

}  // namespace config_setting

namespace service_capabilities {

using Record = boot_service_capabilities_rec;

constexpr char kTable[] = "boot_service_capabilities";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName),
                                          QMV_COLUMN(ElementNameEditSupported), QMV_COLUMN(BootConfigCapabilities));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where InstanceID='%q';");

// QUIRK: SQLite rejects the update for the comma that lacks before ElementNameEditSupported, so a row that exists keeps
// its values. Test: Boot.ServiceCapabilitiesOfAnExistingKeyKeepTheirRow.
constexpr Set kSet = profile::asset_set(
    "insert into %q (InstanceID, ElementName, ElementNameEditSupported, BootConfigCapabilities) values "
    "('%.256q', '%.256q', %i, %i);",
    "update %q set InstanceID='%.256q', ElementName='%.256q' ElementNameEditSupported=%i, "
    "BootConfigCapabilities=%i \t\twhere InstanceID='%.256q';");

using Table = qmv::Table<kTable, kColumns, profile::kCollectionGetAll, kGetOne, kSet>;

}  // namespace service_capabilities

namespace source_setting {

using Record = boot_source_setting_rec;

constexpr char kTable[] = "boot_source_setting";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(BootString), QMV_COLUMN(BIOSBootString),
                    QMV_COLUMN(StructuredBootString), QMV_COLUMN(FailThroughSupported), QMV_COLUMN(isHost));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get Boot_source_setting records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all boot_source_setting records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all Boot_source_setting %d",
    .outs = Outs::kUntouched,
};

// QUIRK: SQLite rejects the update for the comma that lacks before FailThroughSupported, so a row that exists keeps its
// values. Test: Boot.SourceSettingOfAnExistingKeyKeepsItsRow.
constexpr Set kSet = profile::asset_set(
    "insert into %q (InstanceID, ElementName, BootString, BIOSBootString, StructuredBootString, "
    "FailThroughSupported, isHost) values ('%.256q', '%.256q', '%.256q', '%.256q', '%.256q', %i, %i);",
    "update %q set InstanceID='%.256q', ElementName='%.256q', BootString='%.256q', "
    "BIOSBootString='%.256q', StructuredBootString='%.256q' FailThroughSupported=%i, isHost=%i where "
    "InstanceID='%.256q';");

using Table = qmv::Table<kTable, kColumns, kGetAll, kSet>;

}  // namespace source_setting

namespace service {

using Record = boot_service_rec;

constexpr char kTable[] = "boot_service";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(SystemCreationClassName), QMV_COLUMN(CreationClassName),
                                          QMV_COLUMN(ElementName), QMV_COLUMN(SystemName), QMV_COLUMN(Name));

constexpr auto kKey = columns<Record>(QMV_COLUMN(SystemCreationClassName));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get Boot service records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all boot service records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all boot service %d",
    .outs = Outs::kUntouched,
};

constexpr Set kSet = {
    .insert =
        "insert into %q (SystemCreationClassName, CreationClassName, ElementName, SystemName, Name) values "
        "('%.256q', '%.256q', '%.256q', '%.256q', '%.256q');",
    .update =
        "update %q set SystemCreationClassName='%.256q', CreationClassName='%.256q', ElementName='%.256q', "
        "SystemName='%.256q', Name='%.256q' where SystemCreationClassName='%.256q';",
    .present = "[%s:%d]Boot Service record is already present with that key",
    .done = "[%s:%d]Successfully update the Boot Service record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kSet>;

}  // namespace service

}  // namespace

std::int32_t db_get_all_boot_setting_data(sqlite3* db, std::int32_t* count, boot_setting_data_rec** records) noexcept {
  return list<setting_data::Table>(here(), db, count, records);
}

std::int32_t db_get_boot_setting_data(sqlite3* db, const char* InstanceID, boot_setting_data_rec** record) noexcept {
  return get_one<setting_data::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_boot_setting_data(sqlite3* db, const boot_setting_data_rec* record) noexcept {
  return set<setting_data::Table, setting_data::kKey>(here(), db, record);
}

std::int32_t db_get_all_boot_config_setting(sqlite3* db, std::int32_t* count,
                                            boot_config_setting_rec** records) noexcept {
  return list<config_setting::Table>(here(), db, count, records);
}

std::int32_t db_get_boot_config_setting(sqlite3* db, const char* InstanceID,
                                        boot_config_setting_rec** record) noexcept {
  return get_one<config_setting::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_boot_config_setting(sqlite3* db, const boot_config_setting_rec* record) noexcept {
  return set<config_setting::Table, config_setting::kKey>(here(), db, record);
}

std::int32_t db_get_all_boot_service_capabilities(sqlite3* db, std::int32_t* count,
                                                  boot_service_capabilities_rec** records) noexcept {
  return list<service_capabilities::Table>(here(), db, count, records);
}

std::int32_t db_get_boot_service_cap(sqlite3* db, const char* InstanceID,
                                     boot_service_capabilities_rec** record) noexcept {
  return get_one<service_capabilities::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_boot_service_capabilities(sqlite3* db, const boot_service_capabilities_rec* record) noexcept {
  return set<service_capabilities::Table, service_capabilities::kKey>(here(), db, record);
}

std::int32_t db_get_all_boot_source_setting(sqlite3* db, std::int32_t* count,
                                            boot_source_setting_rec** records) noexcept {
  return list<source_setting::Table>(here(), db, count, records);
}

std::int32_t db_set_boot_source_setting(sqlite3* db, const boot_source_setting_rec* record) noexcept {
  return set<source_setting::Table, source_setting::kKey>(here(), db, record);
}

std::int32_t db_get_all_boot_service(sqlite3* db, std::int32_t* count, boot_service_rec** records) noexcept {
  return list<service::Table>(here(), db, count, records);
}

std::int32_t db_set_boot_service(sqlite3* db, const boot_service_rec* record) noexcept {
  return set<service::Table, service::kKey>(here(), db, record);
}

// Written out: it reads before it steps, and an allocation failure is answered without a word.
std::int32_t db_get_boot_source_setting(sqlite3* db, const char* InstanceID,
                                        boot_source_setting_rec** record) noexcept {
  const Site site = here();
  const SqlText text(
      sqlite3_mprintf("select * from %q where InstanceID='%q';", source_setting::Table::name(), InstanceID));
  Statement statement;
  const std::int32_t code = statement.compile(db, site, text);
  if (code != SQLITE_OK) return code;
  if (statement.missing()) {
    trace(site, Message("[%s:%d]Fail to get Boot_source_setting record"));
    return kFailure;
  }
  trace(site, Message("[%s:%d]Get boot_source_setting from database"));
  if (statement.step() != SQLITE_ROW) {
    trace(site, Message("[%s:%d]Fail to get Boot_source_setting records"));
    return kFailure;
  }
  *record = static_cast<boot_source_setting_rec*>(std::calloc(1, sizeof(boot_source_setting_rec)));
  if (*record == nullptr) return kFailure;
  read_row(statement.get(), source_setting::Table::layout(), *record, Before::kZero);
  trace(site, Message("[%s:%d]Successfully got the Boot_source_setting."));
  return kOk;
}
