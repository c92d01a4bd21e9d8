// The row count of any table, enabled logical element capabilities and registered profiles.
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

constexpr Count kCount = {
    .select = "select count(*) from %q;",
    .no_row = "[%s:%d]No records found",
    .done = "[%s:%d]Successfully returns the ssh count",
};

// Its name is the caller's.
constexpr char kNoName[] = "";
using AnyTable = Table<kNoName, kNoColumns, kCount>;

namespace elec {

using Record = ena_log_elem_cap_rec;

constexpr char kTable[] = "ena_log_elem_cap";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(RequestStatesSupported), QMV_COLUMN(ElementNameEditSupported),
                    QMV_COLUMN(ElementName), QMV_COLUMN(MaxElementNameLen));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get elec records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all elec from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all elec",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get ELEC record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the ELEC record",
    .reading = "[%s:%d]Get Enabled Logical element capability rec from database",
    .done = kSilent,
};

constexpr Set kSet = {
    .insert =
        "insert into %q (InstanceID, RequestStatesSupported, \t\t\tElementNameEditSupported, ElementName, "
        "MaxElementNameLen) \t\t\tvalues ('%.256q', '%.256q', %i, '%.256q', %i);",
    .update =
        "update %q set InstanceID='%.256q', RequestStatesSupported='%.256q', "
        "\t\t\tElementNameEditSupported=%i, ElementName='%.256q', MaxElementNameLen=%i\t\t\twhere "
        "InstanceID='%.256q' ;",
    .present = "[%s:%d]ELEC record is already present with that key",
    .done = "[%s:%d]Successfully update the ELEC record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace elec

namespace regprofile {

using Record = registered_profile_rec;

constexpr char kTable[] = "registered_profile";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(RegOrganization), QMV_COLUMN(RegisteredName),
                    QMV_COLUMN(RegisteredVersion), QMV_COLUMN(AdvertiseTypes), QMV_COLUMN(OtherRegisteredOrganization),
                    QMV_COLUMN(AdvertiseTypesDesc), QMV_COLUMN(ImplementedFeatures));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get regprofile records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all regprofile from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all the regprofile",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get Reg Profile record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the registered Profile record",
    .reading = "[%s:%d]Get Registered profile record from database",
    .done = kSilent,
};

constexpr Set kSet = {
    .insert =
        "insert into %q (InstanceID, RegOrganization, RegisteredName, \t\t\tRegisteredVersion, "
        "AdvertiseTypes, OtherRegisteredOrganization, AdvertiseTypesDesc, ImplementedFeatures) \t\t\tvalues "
        "('%.256q', %i, '%.256q', '%.256q', '%.256q', '%.256q', '%.256q','%.512q');",
    .update =
        "update %q set InstanceID='%.256q', RegOrganization=%i, \t\t\tRegisteredName='%.256q', "
        "RegisteredVersion='%.256q', AdvertiseTypes='%.256q', \t\t\tOtherRegisteredOrganization='%.256q', "
        "AdvertiseTypesDesc='%.256q', ImplementedFeatures='%.512q' where InstanceID='%.256q' ;",
    .present = "[%s:%d]Registered Profile record is already present with that key",
    .done = "[%s:%d]Successfully update the Registered Profile record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace regprofile

}  // namespace

std::int32_t qmv::profile::list_rows(const GetAllForm<Stored>& form, Site site, sqlite3* db, std::int32_t* count,
                                     Out records, const char* table) {
  if (form.outs == Outs::kCleared) records.store(nullptr);
  return get_all_rows(form, site, db, counted(db_get_cnt, db, table), count, records, table);
}

// QUIRK: Its success trace names ssh, whatever the table. Test: GenericCount.NamesSshForEveryTable.
std::int32_t db_get_cnt(sqlite3* db, std::int32_t* count, const char* table) noexcept {
  if (*table == 0) {
    error(here(), Format<>("[%s:%d]Table name is empty"));
    return kFailure;
  }
  return count_rows(AnyTable::form<kCount>(), here(), db, count, table);
}

std::int32_t db_get_all_elec(sqlite3* db, std::int32_t* count, ena_log_elem_cap_rec** records) noexcept {
  return list<elec::Table>(here(), db, count, records);
}

std::int32_t db_get_elec(sqlite3* db, const char* InstanceID, ena_log_elem_cap_rec** record) noexcept {
  return get_one<elec::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_elec(sqlite3* db, const ena_log_elem_cap_rec* record) noexcept {
  return set<elec::Table, elec::kKey>(here(), db, record);
}

std::int32_t db_get_all_regprofile(sqlite3* db, std::int32_t* count, registered_profile_rec** records) noexcept {
  return list<regprofile::Table>(here(), db, count, records);
}

std::int32_t db_get_regprofile(sqlite3* db, const char* InstanceID, registered_profile_rec** record) noexcept {
  return get_one<regprofile::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_regprofile(sqlite3* db, const registered_profile_rec* record) noexcept {
  return set<regprofile::Table, regprofile::kKey>(here(), db, record);
}
