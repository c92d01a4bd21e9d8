// The forms of every list, and the selection of rows.
#include <sstream>

#include "command_test.h"
#include "commands.h"
#include "selection.h"
#include "terminal.h"

namespace qmvctl::test {
namespace {

// A database with two rows in every table, the texts of one far too long.
class Forms : public CommandTest {
 protected:
  void fill(const std::string& kind) {
    on_database({"init", kind});
    for (const std::string& table : split(sql("select group_concat(name) from sqlite_master where type = 'table';"))) {
      insert(table, "'a, \"' || cid || '\"'", 1);
      insert(table, "printf('%.300c', 'x')", 2);
    }
    if (kind == "cim") name_what_has_one_name();
  }

  // The commands that list what such a database holds.
  static std::vector<std::vector<std::string>> lists(const std::string& kind) {
    if (kind == "tmp_cim") return {{"jobs"}, {"jobs", "list"}, {"jobs", "errors"}};
    if (kind == "association") return {{"associations"}, {"associations", "plugins"}};
    std::vector<std::vector<std::string>> all = {{"sensors"},
                                                 {"fru"},
                                                 {"sel"},
                                                 {"assets"},
                                                 {"processors"},
                                                 {"memory"},
                                                 {"power-supplies"},
                                                 {"indications"},
                                                 {"indications", "destinations"},
                                                 {"indications", "filters"},
                                                 {"indications", "subscriptions"}};
    for (const std::string& table : instance_tables()) all.push_back({"instances", table});
    return all;
  }

  static std::vector<std::string> split(const std::string& text, char at = ',') {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, at);) parts.push_back(part);
    return parts;
  }

 private:
  // Where the library knows one row, its name.
  void name_what_has_one_name() {
    const std::pair<const char*, const char*> names[] = {{"textredirectionservice", "TextRedirectionService1"},
                                                         {"textredirectionsap", "TextRedirectionSAP1"},
                                                         {"account_management_service", "AccountManagementService"},
                                                         {"indication_service", "IndicationService"}};
    for (const auto& [table, name] : names) {
      sql("update " + std::string(table) + " set Name = '" + name + "' where rowid = 1;");
    }
  }

  void insert(const std::string& table, const std::string& text, int row) {
    const std::string number = "case name when 'SensorType' then " + std::string(row == 1 ? "7" : "12") +
                               " when 'EntityID' then 10 "
                               "when 'PhysicalElement' then 1280 when 'OwnerID' then 32 else 10 * " +
                               std::to_string(row) + " end";
    const std::string value = "case type when 'TEXT' then '''' || " + text + " || " + std::to_string(row) +
                              " || '''' else " + number + " end";
    sql("insert into " + table + " values (" +
        sql("select group_concat(" + value + ") from pragma_table_info('" + table + "');") + ");");
  }
};

TEST_F(Forms, TablesFitEightyPlaces) {
  for (const char* kind : {"cim", "tmp_cim", "association"}) {
    fill(kind);
    for (const auto& list : lists(kind)) {
      const Outcome outcome = on_database(list);
      ASSERT_EQ(outcome.status, 0) << list.front() << outcome.err;
      const auto lines = split(outcome.out, '\n');
      EXPECT_GE(lines.size(), 2u) << list.front() << ' ' << list.back();
      for (const std::string& line : lines) EXPECT_LE(line.size(), 80u) << line;
    }
    std::filesystem::remove(database());
  }
}

TEST_F(Forms, WideTablesAreUncut) {
  fill("cim");
  const std::string text(255, 'x');
  for (const char* list : {"sensors", "fru", "memory"}) {
    EXPECT_EQ(on_database({list}).out.find(text), std::string::npos) << list;
    EXPECT_NE(on_database({list, "--wide"}).out.find(text), std::string::npos) << list;
  }
}

TEST_F(Forms, EveryListIsWrittenAsCsvWithAsManyFieldsInEachLine) {
  for (const char* kind : {"cim", "tmp_cim", "association"}) {
    fill(kind);
    for (auto list : lists(kind)) {
      list.push_back("--csv");
      const std::string out = on_database(list).out;
      size_t lines = 0;
      size_t commas = std::string::npos;
      for (size_t start = 0; start < out.size(); ++lines) {
        const size_t end = out.find("\r\n", start);
        ASSERT_NE(end, std::string::npos);
        bool is_quoted = false;
        size_t count = 0;
        for (size_t i = start; i < end; ++i) {
          if (out[i] == '"') is_quoted = !is_quoted;
          if (out[i] == ',' && !is_quoted) ++count;
        }
        if (commas == std::string::npos) commas = count;
        EXPECT_EQ(count, commas) << out.substr(start, end - start);
        start = end + 2;
      }
      EXPECT_GE(lines, 2u) << list.front();
    }
    std::filesystem::remove(database());
  }
}

TEST_F(Forms, EveryListHasOneLineLessWithoutItsHead) {
  for (const char* kind : {"cim", "tmp_cim", "association"}) {
    fill(kind);
    for (auto list : lists(kind)) {
      const bool has_several = list.front() == "assets" || list == std::vector<std::string>{"indications"};
      if (has_several) continue;
      const auto before = split(on_database(list).out, '\n');
      list.push_back("--no-header");
      EXPECT_EQ(split(on_database(list).out, '\n').size(), before.size() - 1) << list.front() << ' ' << list.back();
    }
    std::filesystem::remove(database());
  }
}

TEST_F(Forms, ListsWithoutHeadsAreRowsOnly) {
  on_database({"init"});
  for (const char* list : {"sel", "assets", "indications"}) {
    EXPECT_EQ(on_database({list, "--no-header"}).out, "") << list;
    EXPECT_NE(on_database({list}).out, "") << list;
  }
}

TEST_F(Forms, EveryListIsWrittenAsJson) {
  for (const char* kind : {"cim", "tmp_cim", "association"}) {
    fill(kind);
    for (const auto& list : lists(kind)) EXPECT_FALSE(rows(list).empty()) << list.front() << ' ' << list.back();
    std::filesystem::remove(database());
  }
}

TEST_F(Forms, HeadsAreLeftOutOfTablesAndCsv) {
  fill("cim");
  EXPECT_EQ(on_database({"fru"}).out.rfind("ID  Name", 0), 0u);
  EXPECT_EQ(on_database({"fru", "--no-header"}).out.rfind("10  a, ", 0), 0u);
  EXPECT_EQ(on_database({"fru", "--csv"}).out.rfind("ID,Name,Entity,Product maker", 0), 0u);
  EXPECT_EQ(on_database({"fru", "--csv", "--no-header"}).out.rfind("10,\"a, \"\"7\"\"1\",10.10 Power Supply,", 0), 0u);
}

TEST_F(Forms, JsonAndCsvExcludeEachOther) {
  fill("cim");
  EXPECT_EQ(on_database({"fru", "--csv", "--json"}).status, 2);
}

class Selections : public CommandTest {
 protected:
  Selections() {
    on_database({"init"});
    sensor("20:00:01", "Inlet", 1, 55, 1);
    sensor("20:00:02", "Board", 1, 7, 1);
    sensor("20:00:0A", "Fan 1", 4, 7, 0x82);
  }

  void sensor(const std::string& id, const std::string& name, int type, int entity, int instance) {
    sql("insert into compact_sdr (DeviceID, SensorName, SensorType, EntityID, EntityInstance, SensorNum, IdStr) values "
        "('" +
        id + "', '" + name + "', " + std::to_string(type) + ", " + std::to_string(entity) + ", " +
        std::to_string(instance) + ", 5, '');");
  }

  std::string names(const std::vector<std::string>& options) {
    std::vector<std::string> command{"sensors"};
    command.insert(command.end(), options.begin(), options.end());
    std::string names;
    for (const Json& row : rows(command)) names += row.at("name").get<std::string>() + ";";
    return names;
  }
};

TEST_F(Selections, GoByIdOrName) {
  EXPECT_EQ(names({"--id", "20:00:02"}), "Board;");
  EXPECT_EQ(names({"--id", "20:00:0a"}), "Fan 1;");
  EXPECT_EQ(names({"--id", "fan 1"}), "Fan 1;");
  EXPECT_EQ(names({"--id", "fan"}), "");
}

TEST_F(Selections, GoByTypeAsCodeOrName) {
  EXPECT_EQ(names({"--type", "1"}), "Inlet;Board;");
  EXPECT_EQ(names({"--type", "0x04"}), "Fan 1;");
  EXPECT_EQ(names({"--type", "04h"}), "Fan 1;");
  EXPECT_EQ(names({"--type", "temperature"}), "Inlet;Board;");
  EXPECT_EQ(names({"--type", "2"}), "");
}

TEST_F(Selections, GoByEntityWithOrWithoutItsInstance) {
  EXPECT_EQ(names({"--entity", "7"}), "Board;Fan 1;");
  EXPECT_EQ(names({"--entity", "7.2"}), "Fan 1;");
  EXPECT_EQ(names({"--entity", "0x37.1"}), "Inlet;");
  EXPECT_EQ(names({"--entity", "air inlet"}), "Inlet;");
  EXPECT_EQ(names({"--entity", "7.3"}), "");
}

TEST_F(Selections, GoTogether) {
  EXPECT_EQ(names({"--entity", "7", "--type", "1"}), "Board;");
}

TEST_F(Selections, ThatNothingMatchesSaySo) {
  EXPECT_EQ(on_database({"sensors", "--type", "2"}).out, "Nothing matches.\n");
  EXPECT_EQ(on_database({"fru", "--id", "2"}).out, "There are no FRUs.\n");
}

TEST_F(Selections, AreRefusedWhereAListHasNoSuchColumn) {
  EXPECT_EQ(on_database({"fru", "--type", "1"}).status, 2);
  EXPECT_EQ(on_database({"sel", "--entity", "1"}).status, 2);
  EXPECT_EQ(on_database({"associations", "plugins", "--id", "1"}).status, 2);
}

TEST_F(Selections, ByNoSensorTypeOrEntityAreWrongUsage) {
  for (const char* type : {"fann", "256", "-1", "1.5"}) {
    const Outcome outcome = on_database({"sensors", std::string("--type=") + type});
    EXPECT_EQ(outcome.status, 2) << type;
    EXPECT_EQ(outcome.err.rfind("qmvctl: --type: " + std::string(type) + " is no sensor type\n", 0), 0u) << outcome.err;
  }
  for (const char* entity : {"bord", "256", "7.", ".1", "7.x", "board.1"}) {
    const Outcome outcome = on_database({"sensors", std::string("--entity=") + entity});
    EXPECT_EQ(outcome.status, 2) << entity;
    EXPECT_EQ(outcome.err.rfind("qmvctl: --entity: " + std::string(entity) + " is no entity\n", 0), 0u) << outcome.err;
  }
  for (const char* type : {"0", "255", "OEM type C0h", "type 2Dh"}) {
    EXPECT_EQ(on_database({"sensors", "--type", type}).out, "Nothing matches.\n") << type;
  }
}

TEST_F(Selections, OfInstancesGoByTheFirstColumn) {
  sql("insert into boot_order values ('Disk', 2, 1), ('Net', 10, 0);");
  EXPECT_EQ(rows({"instances", "boot_order", "--id", "net"}).at(0).at("AssignedSequence"), 10);
}

TEST_F(Selections, ShowOneRecordInFull) {
  const std::string shown = on_database({"sensors", "show", "Board"}).out;
  EXPECT_EQ(shown.rfind("DeviceID               : 20:00:02\n"
                        "Name                   : Board\n"
                        "Type                   : Temperature (01h)\n"
                        "Entity                 : 7.1 System Board (07h)\n"
                        "Kind                   : compact\n"
                        "Owner                  : 00h\n"
                        "Owner LUN              : 00h\n"
                        "Number                 : 05h\n"
                        "Record ID              : 0\n"
                        "Event type             : unspecified (00h)\n"
                        "CIM sensor type        : 0\n",
                        0),
            0u)
      << shown;
  EXPECT_EQ(rows({"sensors", "show", "Board"}).size(), 1u);
  EXPECT_EQ(on_database({"sensors", "show", "Board", "--csv"}).out.rfind("DeviceID,Name,", 0), 0u);
}

TEST_F(Selections, ShowOneInstanceInFull) {
  sql("insert into boot_order values ('Disk', 2, 1), ('Net', 10, 0);");
  EXPECT_EQ(on_database({"instances", "boot_order", "net"}).out,
            "InstanceID       : Net\n"
            "AssignedSequence : 10\n"
            "isHost           : 0\n");
  EXPECT_EQ(on_database({"instances", "boot_order", "tape"}).status, 1);
  sql("insert into role (CreationClassName, Name) values ('CIM_Role', 'admin'), ('CIM_Role', 'user');");
  EXPECT_EQ(rows({"instances", "role", "user"}).at(0).at("Name"), "user");
  EXPECT_EQ(rows({"instances", "role", "--id", "CIM_Role"}), Json::array());
  EXPECT_EQ(on_database({"instances", "boot_order", "net", "--id", "disk"}).status, 2);
}

// Two FRUs and two full sensors, all of system boards.
class AssetSelections : public CommandTest {
 protected:
  AssetSelections() {
    on_database({"init"});
    sql("insert into full_sdr (DeviceID, IdStr, SensorNum, EntityID, EntityInstance, PhysicalElement) "
        "values ('20:00:30', 'BB +12V', 48, 7, 1, 2), ('20:00:31', 'BB +5V', 49, 7, 2, 2);");
    sql("insert into fru (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, EntityID, EntityInst) "
        "values (5, 32, 128, 3, 7, 1), (6, 32, 128, 0, 7, 1);");
  }

  // The FRUs of the pairs and the sensors alone of class CIM_Card.
  std::string cards(std::vector<std::string> options) {
    options.insert(options.begin(), {"assets", "CIM_Card"});
    const Json card = rows(options).at(0);
    std::string found;
    for (const Json& pair : card["frus_with_sensors"]["rows"]) {
      found += std::to_string(pair["fru_id"].get<int>()) + " " + pair["sensor_name"].get<std::string>() + ";";
    }
    for (const Json& sensor : card["sensors"]["rows"]) found += sensor["sensor_name"].get<std::string>() + ";";
    EXPECT_EQ(card["frus_with_sensors"]["count"], card["frus_with_sensors"]["rows"].size()) << found;
    EXPECT_EQ(card["sensors"]["count"], card["sensors"]["rows"].size()) << found;
    return found;
  }
};

TEST_F(AssetSelections, GoByFruSensorAndEntity) {
  EXPECT_EQ(cards({}), "5 BB +12V;5 BB +5V;6 BB +12V;6 BB +5V;BB +12V;BB +5V;");
  EXPECT_EQ(cards({"--id", "5"}), "5 BB +12V;5 BB +5V;");
  EXPECT_EQ(cards({"--id", "bb +5v"}), "5 BB +5V;6 BB +5V;BB +5V;");
  EXPECT_EQ(cards({"--entity", "7.2"}), "5 BB +5V;6 BB +5V;BB +5V;");
  EXPECT_EQ(cards({"--entity", "system board", "--id", "6"}), "6 BB +12V;6 BB +5V;");
}

TEST_F(AssetSelections, ShowAnAssetInFullInEachOfItsClasses) {
  EXPECT_EQ(on_database({"assets", "show", "BB +5V", "--id", "5"}).status, 2);
  EXPECT_EQ(on_database({"assets", "show", "BB +5V"}).out,
            "CIM_Card: 2 pairs of a FRU and a full sensor\n"
            "FRU         : 5\n"
            "Controller  : 20h\n"
            "LUN and bus : 80h\n"
            "Channel     : 3\n"
            "Entity      : 7.2 System Board (07h)\n"
            "Sensor      : BB +5V\n"
            "Number      : 31h\n"
            "\n"
            "FRU         : 6\n"
            "Controller  : 20h\n"
            "LUN and bus : 80h\n"
            "Channel     : 0\n"
            "Entity      : 7.2 System Board (07h)\n"
            "Sensor      : BB +5V\n"
            "Number      : 31h\n"
            "\n"
            "CIM_Card: 1 full sensor\n"
            "Entity : 7.2 System Board (07h)\n"
            "Sensor : BB +5V\n"
            "Number : 31h\n"
            "\n");
  EXPECT_EQ(rows({"assets", "show", "5"}).size(), 1u);
}

TEST_F(AssetSelections, ShowTextsInColumnsOfNumbersAsTheLibraryReadsThem) {
  sql("update full_sdr set EntityInstance = 'two' where SensorNum = 49;");
  EXPECT_EQ(cards({"--entity", "7.0"}), "5 BB +5V;6 BB +5V;BB +5V;");
}

TEST_F(Selections, ShowOfAMissingRecordFails) {
  const Outcome outcome = on_database({"sensors", "show", "Bord"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": there is no record Bord\n");
  EXPECT_EQ(on_database({"assets", "show", "Bord"}).err, outcome.err);
  EXPECT_EQ(on_database({"sensors", "show"}).status, 2);
}

TEST(Number, IsDecimalOrHexadecimal) {
  EXPECT_EQ(number_of("48"), 48);
  EXPECT_EQ(number_of("-1"), -1);
  EXPECT_EQ(number_of("0x2f"), 47);
  EXPECT_EQ(number_of("2Fh"), 47);
  for (const char* text : {"", "h", "0x", "2F", "1 ", "99999999999999999999", "1.5"})
    EXPECT_EQ(number_of(text), std::nullopt);
}

class TerminalTest : public testing::Test {
 protected:
  TerminalTest() {
    unsetenv("NO_COLOR");
    setenv("TERM", "xterm", 1);
  }
};

TEST_F(TerminalTest, HasColoursAndProgressWhereItIsOne) {
  EXPECT_TRUE(terminal_of(true, false).has_colours);
  EXPECT_FALSE(terminal_of(true, false).has_progress);
  EXPECT_FALSE(terminal_of(false, true).has_colours);
  EXPECT_TRUE(terminal_of(false, true).has_progress);
}

TEST_F(TerminalTest, HasNoColoursWhenTheyAreNotWanted) {
  setenv("NO_COLOR", "1", 1);
  EXPECT_FALSE(terminal_of(true, true).has_colours);
  setenv("NO_COLOR", "", 1);
  EXPECT_TRUE(terminal_of(true, true).has_colours);
  setenv("TERM", "dumb", 1);
  EXPECT_FALSE(terminal_of(true, true).has_colours);
  EXPECT_FALSE(terminal_of(true, true).has_progress);
}

}  // namespace
}  // namespace qmvctl::test
