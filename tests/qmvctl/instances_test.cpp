#include <map>

#include "command_test.h"

namespace qmvctl::test {
namespace {

// Each profile table, with the name that its row must have where the library knows one only.
const std::map<std::string, std::string> kTables = {
    {"ena_log_elem_cap", ""},
    {"registered_profile", ""},
    {"ssh_capabilities", ""},
    {"telnet_capabilities", ""},
    {"phy_asset_capabilities", ""},
    {"dhcp_capabilities", ""},
    {"concrete_collection", ""},
    {"power_management_capabilities", ""},
    {"power_management_service", ""},
    {"account_mgt_capabilities", ""},
    {"account_setting_data", ""},
    {"boot_setting_data", ""},
    {"boot_config_setting", ""},
    {"boot_service_capabilities", ""},
    {"boot_source_setting", ""},
    {"boot_service", ""},
    {"boot_order", ""},
    {"ip_assign_settingdata", ""},
    {"static_ip_assign_settingdata", ""},
    {"role_based_mgt_capabilities", ""},
    {"privilege", ""},
    {"role", ""},
    {"assign_role", ""},
    {"protocol_service", ""},
    {"textredirectionservice", "TextRedirectionService1"},
    {"textredirectionsap", "TextRedirectionSAP1"},
    {"pwds_capabilities", ""},
    {"account_management_service", "AccountManagementService"},
    {"indication_service", "IndicationService"},
};

class Instances : public CommandTest {
 protected:
  Instances() { on_database({"init"}); }

  // Inserts a row of distinct values; returns it, a member for each column.
  Json insert(const std::string& table, int first, const std::string& name) {
    const std::string columns = " from pragma_table_info('" + table + "')";
    const std::string value = "case type when 'TEXT' then '''t' || (cid + " + std::to_string(first) +
                              ") || '''' else cid + " + std::to_string(first) + " end";
    sql("insert into " + table + " values (" + sql("select group_concat(" + value + ")" + columns + ";") + ");");
    if (!name.empty()) sql("update " + table + " set Name = '" + name + "';");
    const std::string members = sql("select group_concat('''' || name || ''', ' || name)" + columns + ";");
    const std::string newest = " where rowid = (select max(rowid) from " + table + ");";
    return Json::parse(sql("select json_object(" + members + ") from " + table + newest));
  }
};

TEST_F(Instances, AreShownWithAMemberForEachColumn) {
  for (const auto& [table, name] : kTables) {
    Json row = insert(table, 10, name);
    row.erase("ele_name_edit_supported");  // which the library's readers lose
    EXPECT_EQ(rows({"instances", table}), Json::array({row})) << table;
  }
}

TEST_F(Instances, AreAllShown) {
  const Json expected = Json::array({insert("boot_order", 10, ""), insert("boot_order", 20, "")});
  EXPECT_EQ(rows({"instances", "boot_order"}), expected);
}

TEST_F(Instances, AreATableForPeople) {
  sql("insert into boot_order values ('Disk', 2, 1), ('Net', 10, 0);");
  EXPECT_EQ(on_database({"instances", "boot_order"}).out,
            "InstanceID  AssignedSequence  isHost\n"
            "Disk                       2       1\n"
            "Net                       10       0\n");
}

TEST_F(Instances, WithoutARowThereAreNone) {
  for (const auto& [table, name] : kTables) {
    EXPECT_EQ(on_database({"instances", table}).out, "There are no instances in " + table + ".\n");
    EXPECT_EQ(rows({"instances", table}), Json::array()) << table;
  }
}

TEST_F(Instances, UnderANameThatTheLibraryDoesNotKnowAreNotSeen) {
  for (const auto& [table, name] : kTables) {
    if (name.empty()) continue;
    insert(table, 10, "Another");
    EXPECT_EQ(rows({"instances", table}), Json::array()) << table;
  }
}

TEST_F(Instances, OfAMissingTableFail) {
  testing::internal::CaptureStderr();
  for (const auto& [table, name] : kTables) {
    sql("drop table " + table + ";");
    const Outcome outcome = on_database({"instances", table});
    EXPECT_EQ(outcome.status, 1) << table;
    EXPECT_EQ(outcome.err.rfind("qmvctl: " + database() + ": table " + table + " cannot be read", 0), 0u)
        << outcome.err;
  }
  testing::internal::GetCapturedStderr();
}

TEST_F(Instances, OfATableThatCannotBeListedAreWrongUsage) {
  for (const char* table : {"dhcp_protocol_endpoint", "event_type", "request_state_change", "sel", "role; "}) {
    const Outcome outcome = on_database({"instances", table});
    EXPECT_EQ(outcome.status, 2) << table;
    EXPECT_NE(outcome.err.find(std::string(table) + " is not one of ena_log_elem_cap, "), std::string::npos);
  }
  EXPECT_EQ(on_database({"instances"}).status, 2);
}

TEST_F(Instances, HelpNamesTheTables) {
  const Outcome outcome = run({"instances", "--help"});
  EXPECT_EQ(outcome.status, 0);
  for (const auto& [table, name] : kTables) EXPECT_NE(outcome.out.find(table), std::string::npos) << table;
  EXPECT_NE(outcome.out.find("they cannot be shown"), std::string::npos);
}

}  // namespace
}  // namespace qmvctl::test
