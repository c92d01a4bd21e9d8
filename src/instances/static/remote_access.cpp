// Remote access: SSH, telnet and DHCP, physical asset capabilities, concrete collections.
#include "instances/static/asset_texts.h"
#include "instances/static/profile.h"

namespace {

using namespace qmv;
using profile::here;
using profile::list;

namespace ssh {

using Record = ssh_capabilities_rec;

constexpr char kTable[] = "ssh_capabilities";

constexpr auto kColumns = columns<Record>(
    QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(ElementNameEditSupported), QMV_COLUMN(MaxConnections),
    QMV_COLUMN(RequestedStatesSupported), QMV_COLUMN(ListeningPortManagementSupported), QMV_COLUMN(MaxListeningPorts),
    QMV_COLUMN(SupportedSSHVersions), QMV_COLUMN(SupportedEncryptionAlgorithms));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get ssh records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all ssh from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all the ssh",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get SSH Capabilities record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the SSH Capabilities record",
    .reading = "[%s:%d]Get SSH Capabilities rec from database",
    .done = kSilent,
};

constexpr Set kSet = {
    .insert =
        "insert into %q (InstanceID, ElementName, ElementNameEditSupported,\t\t\tMaxConnections, "
        "RequestedStatesSupported, \t\t\tListeningPortManagementSupported, MaxListeningPorts, "
        "\t\t\tSupportedSSHVersions, SupportedEncryptionAlgorithms)\t\t\tvalues ('%.256q', '%.256q', %i, %i, "
        "'%.256q', %i, %i, '%.256q', '%.256q');",
    .update =
        "update %q set InstanceID='%.256q', ElementName='%.256q', \t\t\tElementNameEditSupported=%i, "
        "MaxConnections=%i, \t\t\tRequestedStatesSupported='%.256q', "
        "ListeningPortManagementSupported=%i,\t\t\tMaxListeningPorts=%i, SupportedSSHVersions='%.256q', "
        "\t\t\tSupportedEncryptionAlgorithms='%.256q' where InstanceID='%.256q' ;",
    .present = "[%s:%d]SSH record is already present with that key",
    .done = "[%s:%d]Successfully update the SSH record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace ssh

namespace telnet {

using Record = telnet_capabilities_rec;

constexpr char kTable[] = "telnet_capabilities";

constexpr auto kColumns = columns<Record>(
    QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(ElementNameEditSupported), QMV_COLUMN(MaxConnections),
    QMV_COLUMN(RequestedStatesSupported), QMV_COLUMN(ListeningPortManagementSupported), QMV_COLUMN(MaxListeningPorts),
    QMV_COLUMN(SupportedTerminalModes), QMV_COLUMN(SupportedCharacterDisplayModes));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get telnet records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all telnet from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all the telnet",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q where InstanceID='%q';",
    .no_statement = "[%s:%d]Fail to get TELNET Capabilities record. SQLite stmt is NULL",
    .no_row = "[%s:%d]Fail to get the TELNET Capabilities record",
    .reading = "[%s:%d]Get TELNET Capabilities rec from database",
    .done = kSilent,
};

constexpr Set kSet = {
    .insert =
        "insert into %q (InstanceID, ElementName, ElementNameEditSupported,\t\t\tMaxConnections, "
        "RequestedStatesSupported, \t\t\tListeningPortManagementSupported, MaxListeningPorts, "
        "\t\t\tSupportedTerminalModes, SupportedCharacterDisplayModes)\t\t\tvalues ('%.256q', '%.256q', %i, "
        "%i, '%.256q', %i, %i, '%.256q', '%.256q');",
    .update =
        "update %q set InstanceID='%.256q', ElementName='%.256q', \t\t\tElementNameEditSupported=%i, "
        "MaxConnections=%i, \t\t\tRequestedStatesSupported='%.256q', "
        "ListeningPortManagementSupported=%i,\t\t\tMaxListeningPorts=%i, SupportedTerminalModes='%.256q', "
        "\t\t\tSupportedCharacterDisplayModes='%.256q' where InstanceID='%.256q' ;",
    .present = "[%s:%d]TELNET record is already present with that key",
    .done = "[%s:%d]Successfully update the TELNET record",
};

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace telnet

namespace phy_asset {

using Record = phy_asset_capabilities_rec;

constexpr char kTable[] = "phy_asset_capabilities";

constexpr auto kColumns =
    columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName), QMV_COLUMN(FRUInfoSupported));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetAll kGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get phy asset cap records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all phy asset cap from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all phy asset cap ",
    .outs = Outs::kUntouched,
};

constexpr GetOne kGetOne = {
    .select = "select * from %q ;",
    .no_statement = "[%s:%d]Fail to get physical asset cap. record. SQLite stmt is NULL",
    .no_row = "[%s:%d]No Entry in DB",
    .reading = "[%s:%d]Get Physical Asset capabilities record from database",
    .done = kSilent,
};

constexpr Set kSet = profile::asset_set(
    "insert into %q (InstanceID, ElementName, FRUInfoSupported) \t\t\tvalues ('%.256q', '%.256q', %i);",
    "update %q set InstanceID='%.256q', ElementName='%.256q', \t\t\tFRUInfoSupported=%i where "
    "InstanceID='%.256q' ;");

using Table = qmv::Table<kTable, kColumns, kGetAll, kGetOne, kSet>;

}  // namespace phy_asset

namespace dhcp {

using Record = dhcp_capabilities_rec;

constexpr char kTable[] = "dhcp_capabilities";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName),
                                          QMV_COLUMN(ElementNameEditSupported), QMV_COLUMN(OptionsSupported));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q ;");

constexpr Set kSet = profile::asset_set(
    "insert into %q (InstanceID, ElementName, ElementNameEditSupported, OptionsSupported) \t\t\tvalues "
    "('%.256q', '%.256q', %i, '%.256q');",
    "update %q set InstanceID='%.256q', ElementName='%.256q', \t\t\tElementNameEditSupported=%i, "
    "OptionsSupported='%.256q' where InstanceID='%.256q' ;");

using Table = qmv::Table<kTable, kColumns, kGetOne, kSet>;

}  // namespace dhcp

namespace dhcp_endpoint {

using Record = dhcp_protocol_endpoint_rec;

constexpr char kTable[] = "dhcp_protocol_endpoint";

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where Name='%q';");

// QUIRK: The reader takes ProtocolIFType from column 5 and is one column behind after it; the writer is not.
// Test: DhcpEndpoint.ReaderIsOneColumnBehindAfterTheProtocol.
constexpr auto kReadColumns =
    columns<Record>(QMV_COLUMN_AT(0, Name), QMV_COLUMN_AT(1, NameFormat), QMV_COLUMN_AT(5, ProtocolIFType),
                    QMV_COLUMN_AT(2, OtherTypeDesc), QMV_COLUMN_AT(3, EnabledState), QMV_COLUMN_AT(4, RequestedState),
                    QMV_COLUMN_AT(5, ClientState), QMV_COLUMN_AT(6, ElementName));

constexpr auto kColumns = columns<Record>(QMV_COLUMN(Name), QMV_COLUMN(NameFormat), QMV_COLUMN(ProtocolIFType),
                                          QMV_COLUMN(OtherTypeDesc), QMV_COLUMN(EnabledState),
                                          QMV_COLUMN(RequestedState), QMV_COLUMN(ClientState), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(Name));
constexpr Set kSet = profile::asset_set(
    "insert into %q (Name, NameFormat, ProtocolIFType, \t\t\tOtherTypeDesc, EnabledState, "
    "RequestedState, ClientState, ElementName) \t\t\tvalues ('%.256q', '%.256q', %i, '%.256q', %i, %i, "
    "%i, '%.256q');",
    "update %q set Name='%.256q', NameFormat='%.256q', ProtocolIFType=%i, OtherTypeDesc='%.256q', "
    "EnabledState=%i, RequestedState=%i, \t\tClientState=%i, ElementName='%.256q' where Name='%.256q';");

using Table = qmv::Table<kTable, kReadColumns, kGetOne, kSet>;

}  // namespace dhcp_endpoint

namespace collection {

using Record = concrete_collection_rec;

constexpr char kTable[] = "concrete_collection";

constexpr auto kColumns = columns<Record>(QMV_COLUMN(InstanceID), QMV_COLUMN(ElementName));

constexpr auto kKey = columns<Record>(QMV_COLUMN(InstanceID));

constexpr GetOne kGetOne = profile::asset_get_one("select * from %q where InstanceID='%q';");

constexpr Set kSet =
    profile::asset_set("insert into %q (InstanceID, ElementName) \t\t\tvalues ('%.256q', '%.256q');",
                       "update %q set InstanceID='%.256q', ElementName='%.256q' where InstanceID='%.256q';");

using Table = qmv::Table<kTable, kColumns, profile::kCollectionGetAll, kGetOne, kSet>;

}  // namespace collection

}  // namespace

std::int32_t db_get_all_sshcapabilities(sqlite3* db, std::int32_t* count, ssh_capabilities_rec** records) noexcept {
  return list<ssh::Table>(here(), db, count, records);
}

std::int32_t db_get_sshcapabilities(sqlite3* db, const char* InstanceID, ssh_capabilities_rec** record) noexcept {
  return get_one<ssh::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_sshcapabilities(sqlite3* db, const ssh_capabilities_rec* record) noexcept {
  return set<ssh::Table, ssh::kKey>(here(), db, record);
}

std::int32_t db_get_all_telnetcapabilities(sqlite3* db, std::int32_t* count,
                                           telnet_capabilities_rec** records) noexcept {
  return list<telnet::Table>(here(), db, count, records);
}

std::int32_t db_get_telnetcapabilities(sqlite3* db, const char* InstanceID, telnet_capabilities_rec** record) noexcept {
  return get_one<telnet::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_telnetcapabilities(sqlite3* db, const telnet_capabilities_rec* record) noexcept {
  return set<telnet::Table, telnet::kKey>(here(), db, record);
}

std::int32_t db_get_all_phy_asset_capabilities(sqlite3* db, std::int32_t* count,
                                               phy_asset_capabilities_rec** records) noexcept {
  return list<phy_asset::Table>(here(), db, count, records);
}

std::int32_t db_get_phy_asset_capabilities(sqlite3* db, phy_asset_capabilities_rec** record) noexcept {
  return get_one<phy_asset::Table>(here(), db, record);
}

std::int32_t db_set_phy_asset_capabilities(sqlite3* db, const phy_asset_capabilities_rec* record) noexcept {
  return set<phy_asset::Table, phy_asset::kKey>(here(), db, record);
}

std::int32_t db_get_dhcp_capabilities(sqlite3* db, dhcp_capabilities_rec** record) noexcept {
  return get_one<dhcp::Table>(here(), db, record);
}

std::int32_t db_set_dhcp_capabilities(sqlite3* db, const dhcp_capabilities_rec* record) noexcept {
  return set<dhcp::Table, dhcp::kKey>(here(), db, record);
}

std::int32_t db_get_dhcp_protocol_endpoint(sqlite3* db, const char* Name,
                                           dhcp_protocol_endpoint_rec** record) noexcept {
  return get_one<dhcp_endpoint::Table>(here(), db, record, Name);
}

std::int32_t db_set_dhcp_protocol_endpoint(sqlite3* db, const dhcp_protocol_endpoint_rec* record) noexcept {
  return set<dhcp_endpoint::Table, dhcp_endpoint::kKey, dhcp_endpoint::kColumns>(here(), db, record);
}

std::int32_t db_get_all_concrete_collection(sqlite3* db, std::int32_t* count,
                                            concrete_collection_rec** records) noexcept {
  return list<collection::Table>(here(), db, count, records);
}

std::int32_t db_get_concrete_collection(sqlite3* db, const char* InstanceID,
                                        concrete_collection_rec** record) noexcept {
  return get_one<collection::Table>(here(), db, record, InstanceID);
}

std::int32_t db_set_concrete_collection(sqlite3* db, const concrete_collection_rec* record) noexcept {
  return set<collection::Table, collection::kKey>(here(), db, record);
}
