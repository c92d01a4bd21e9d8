#include <sqlite3.h>

#include <filesystem>
#include <map>

#include "command_test.h"

namespace qmvctl::test {
namespace {

// Every table that the sample fills, by its database, with its number of rows.
const std::map<std::string, std::map<std::string, std::string>> kTables = {
    {"cim",
     {{"ena_log_elem_cap", "3"},
      {"registered_profile", "16"},
      {"ssh_capabilities", "1"},
      {"telnet_capabilities", "1"},
      {"phy_asset_capabilities", "1"},
      {"dhcp_capabilities", "1"},
      {"dhcp_protocol_endpoint", "1"},
      {"concrete_collection", "3"},
      {"power_management_capabilities", "1"},
      {"power_management_service", "1"},
      {"account_mgt_capabilities", "1"},
      {"account_setting_data", "1"},
      {"boot_setting_data", "1"},
      {"boot_config_setting", "1"},
      {"boot_service_capabilities", "1"},
      {"boot_source_setting", "3"},
      {"boot_service", "1"},
      {"boot_order", "3"},
      {"ip_assign_settingdata", "2"},
      {"static_ip_assign_settingdata", "1"},
      {"role_based_mgt_capabilities", "1"},
      {"privilege", "3"},
      {"role", "3"},
      {"assign_role", "3"},
      {"protocol_service", "2"},
      {"textredirectionservice", "1"},
      {"textredirectionsap", "1"},
      {"pwds_capabilities", "1"},
      {"account_management_service", "1"},
      {"indication_service", "1"},
      {"event_type", "4"},
      {"request_state_change", "1"},
      {"listener_destination", "1"},
      {"indication_filter", "2"},
      {"indication_subscription", "2"}}},
    {"tmp_cim", {{"concrete_job", "2"}, {"error_info", "1"}}},
    {"smashclp", {{"jobs", "2"}}},
};

// The tables that an import fills, or a host that knows the system and the session.
const std::vector<std::string> kInventory = {"compact_sdr", "full_sdr",     "fru",      "fru_locator_sdr",
                                             "device",      "ipmi_session", "sel_info", "sel"};

class Sample : public CommandTest {
 protected:
  // How many rows of a table there are under a condition.
  std::string count(const std::string& table, const std::string& condition = "true") {
    return sql("select count(*) from " + table + " where " + condition + ";");
  }
  void expect_all_tables(const std::string& kind) {
    for (const auto& [table, rows] : kTables.at(kind)) EXPECT_EQ(count(table), rows) << table;
  }
};

TEST_F(Sample, FillsEveryTableButThoseOfTheInventory) {
  EXPECT_EQ(on_database({"init", "--sample"}).status, 0);
  expect_all_tables("cim");
  for (const std::string& table : kInventory) EXPECT_EQ(count(table), "0") << table;
  EXPECT_EQ(count("sqlite_master", "type = 'table'"), std::to_string(kTables.at("cim").size() + kInventory.size()));
}

TEST_F(Sample, OfTheOneDatabaseThatIsNamed) {
  for (const auto& [kind, tables] : kTables) {
    EXPECT_EQ(on_database({"init", kind, "--sample"}).status, 0);
    expect_all_tables(kind);
    std::filesystem::remove(database());
  }
}

TEST_F(Sample, WithoutDbFillsTheFilesThatHostsOpen) {
  EXPECT_EQ(run({"init", "--sample"}).status, 0);
  for (const auto& [kind, tables] : kTables) {
    std::filesystem::rename(path(kind + ".db"), database());
    expect_all_tables(kind);
  }
}

TEST_F(Sample, IsStoredOnRequestOnly) {
  on_database({"init"});
  for (const auto& [table, rows] : kTables.at("cim")) EXPECT_EQ(count(table), "0") << table;
}

TEST_F(Sample, DoesNotTouchAnExistingFile) {
  on_database({"init"});
  const Outcome outcome = on_database({"init", "--sample"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": the file exists and is not touched\n");
  EXPECT_EQ(count("role"), "0");
}

TEST_F(Sample, OfTheAssociationsThereIsNone) {
  const Outcome outcome = on_database({"init", "association", "--sample"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.err.find("there is no sample of association"), std::string::npos) << outcome.err;
  EXPECT_FALSE(std::filesystem::exists(database()));
}

TEST_F(Sample, IsShownAsInstances) {
  on_database({"init", "--sample"});
  EXPECT_EQ(on_database({"instances", "boot_order"}).out,
            "InstanceID              AssignedSequence  isHost\n"
            "QMV:BootSource-Disk                    1       1\n"
            "QMV:BootSource-Network                 2       1\n"
            "QMV:BootSource-DVD                     3       1\n");
  EXPECT_EQ(rows({"instances", "protocol_service"}).at(1), Json({{"Name", "TelnetService"},
                                                                 {"Protocol", 3},
                                                                 {"ElementName", "Telnet Service"},
                                                                 {"MaxConnections", 2},
                                                                 {"RequestedState", 3},
                                                                 {"EnabledState", 3},
                                                                 {"HealthState", 5},
                                                                 {"OperationalStatus", "10"},
                                                                 {"OtherProtocol", ""}}));
  EXPECT_EQ(rows({"instances", "static_ip_assign_settingdata"}).at(0), Json({{"InterfaceName", "eth0"},
                                                                             {"IPv4Address", "192.0.2.10"},
                                                                             {"Gateway", "192.0.2.1"},
                                                                             {"SubnetMask", "255.255.255.0"},
                                                                             {"IPv6Address", "2001:db8::10"},
                                                                             {"IPv6AddressType", 6},
                                                                             {"IPv6SubnetPrefixLength", 64},
                                                                             {"GatewayIPv6Address", "2001:db8::1"}}));
  EXPECT_EQ(rows({"instances", "textredirectionsap"}).at(0).at("SessionTerminateSequence"), "~.");
  EXPECT_EQ(rows({"instances", "indication_service"}).at(0).at("DeliveryRetryInterval"), 30);
}

TEST_F(Sample, NamesProfilesAsDmtfRegistersThem) {
  on_database({"init", "--sample"});
  const std::map<std::string, std::string> names = {
      {"QMV:DSP1004", "Base Server"},
      {"QMV:DSP1009", "Sensors"},
      {"QMV:DSP1010", "Record Log"},
      {"QMV:DSP1011", "Physical Asset"},
      {"QMV:DSP1012", "Boot Control"},
      {"QMV:DSP1016", "Telnet Service"},
      {"QMV:DSP1017", "SSH Service"},
      {"QMV:DSP1024", "Text Console Redirection"},
      {"QMV:DSP1027", "Power State Management"},
      {"QMV:DSP1033", "Profile Registration"},
      {"QMV:DSP1034", "Simple Identity Management"},
      {"QMV:DSP1036", "IP Interface"},
      {"QMV:DSP1037", "DHCP Client"},
      {"QMV:DSP1039", "Role Based Authorization"},
      {"QMV:DSP1040", "Watchdog"},
      {"QMV:DSP1054", "Indications"},
  };
  std::map<std::string, std::string> shown;
  for (const Json& row : rows({"instances", "registered_profile"})) {
    shown[row.at("InstanceID")] = row.at("RegisteredName");
    EXPECT_EQ(row.at("RegOrganization"), 2);
  }
  EXPECT_EQ(shown, names);
}

TEST_F(Sample, RefersOnlyToWhatItHolds) {
  on_database({"init", "--sample"});
  EXPECT_EQ(count("boot_order", "InstanceID in (select InstanceID from boot_source_setting)"), "3");
  EXPECT_EQ(count("assign_role", "RoleCLPName in (select Name from role)"), "3");
  EXPECT_EQ(count("indication_subscription join listener_destination on DestName = Name"), "2");
  EXPECT_EQ(count("indication_subscription join indication_filter on FilterName = Name",
                  "EventSeverity = SeverityMask and SensorNum = SensorNumMask and SensorType = SensorTypeMask"),
            "2");
  EXPECT_EQ(count("request_state_change join protocol_service on KeyValue = Name",
                  "ClassName = 'CIM_ProtocolService' and KeyProperty = 'Name' and "
                  "request_state_change.RequestedState = protocol_service.RequestedState"),
            "1");
  for (const char* table : {"ssh_capabilities", "telnet_capabilities"}) {
    EXPECT_EQ(count(std::string(table) + " join protocol_service using (MaxConnections)"), "1") << table;
  }
}

TEST_F(Sample, ErrorBelongsToTheFailedJob) {
  on_database({"init", "tmp_cim", "--sample"});
  EXPECT_EQ(
      sql("select ElementName from concrete_job join error_info on InstanceID = ErrorSource where JobState = 10;"),
      "Power Cycle");
}

TEST_F(Sample, NamesTheClassesOfServices) {
  on_database({"init", "--sample"});
  EXPECT_EQ(count("role", "CreationClassName = 'CIM_Role'"), "3");
  EXPECT_EQ(count("boot_service", "CreationClassName = 'CIM_BootService'"), "1");
  EXPECT_EQ(count("power_management_service", "CreationClassName = 'CIM_PowerManagementService'"), "1");
  EXPECT_EQ(count("boot_service join power_management_service using (SystemCreationClassName)",
                  "SystemCreationClassName = 'CIM_ComputerSystem'"),
            "1");
}

// Connections that refuse one kind of change of one table; most setters say nothing of it.
class RefusedSample : public Sample {
 protected:
  ~RefusedSample() override { sqlite3_reset_auto_extension(); }

  void refuse(int action, const std::string& table) {
    action_ = action;
    table_ = table;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
  }

 private:
  static int watch(sqlite3* connection, char**, const void*) {
    return sqlite3_set_authorizer(connection, decide, nullptr);
  }
  static int decide(void*, int action, const char* table, const char*, const char*, const char*) {
    return action == action_ && table_ == table ? SQLITE_DENY : SQLITE_OK;
  }

  static inline int action_;
  static inline std::string table_;
};

TEST_F(RefusedSample, IsReportedForEveryTableAndLeavesTheFileEmpty) {
  for (const auto& [kind, tables] : kTables) {
    for (const auto& [table, rows] : tables) {
      refuse(SQLITE_INSERT, table);
      const Outcome outcome = on_database({"init", kind, "--sample"});
      EXPECT_EQ(outcome.status, 1) << table;
      EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": a row of " + table + " cannot be stored: not authorized\n");
      EXPECT_EQ(std::filesystem::file_size(database()), 0u) << table;
    }
  }
}

TEST_F(RefusedSample, IsReportedForTheConsolesTerminateSequence) {
  refuse(SQLITE_UPDATE, "textredirectionsap");
  const Outcome outcome = on_database({"init", "--sample"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": a row of textredirectionsap cannot be stored: not authorized\n");
}

}  // namespace
}  // namespace qmvctl::test
