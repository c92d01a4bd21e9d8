#include <sqlite3.h>

#include <chrono>
#include <thread>

#include "command_test.h"

namespace qmvctl::test {
namespace {

// A repository with a board (7.1: a numeric sensor), a power supply (10.1: a discrete sensor) and their FRU locators.
class Import : public CommandTest {
 protected:
  Import() {
    on_database({"init"});
    board_sensor = sensor(full_record(ascii_field("PS1 Curr Out %")), 7, 1, 0x30);
    board_sensor[13] = 1;
    supply_sensor = sensor(compact_record(ascii_field("PS1 Status")), 10, 1, 0x50);
    repository =
        file("server.sdr", board_sensor + supply_sensor + locator("Board", 0, 7, 1) + locator("Supply", 2, 10, 1) +
                               numbered_record(0x03, 16, {}) + numbered_record(0xC0, 9, {}));
    board = file("board.bin", fru_image({}, board_area(ascii_field("Maker")), {}));
    supply = file("supply.bin", fru_image({}, {}, product_area(ascii_field("PSU Maker"))));
    log = file("server.sel", {1, 0, 2, 1, 0, 0, 0x50, 0x20, 0, 4, 8, 0x50, 0x6F, 3, 0xFF, 0xFF});
  }

  static Bytes sensor(Bytes record, uint8_t entity, uint8_t instance, uint8_t number) {
    record[5] = 0x20;
    record[6] = 0;
    record[7] = number;
    record[8] = entity;
    record[9] = instance;
    return record;
  }

  static Bytes locator(const std::string& name, uint8_t id, uint8_t entity, uint8_t instance) {
    Bytes record = fru_locator_record(ascii_field(name));
    record[5] = 0x20;
    record[6] = id;
    record[7] = 0x80;
    record[8] = 0;
    record[12] = entity;
    record[13] = instance;
    return record;
  }

  Outcome import_all() {
    return on_database({"import", "--sdr", repository, "--fru", "0=" + board, "2=" + supply, "--sel", log});
  }

  Bytes board_sensor;
  Bytes supply_sensor;
  std::string repository;
  std::string board;
  std::string supply;
  std::string log;
};

TEST_F(Import, ReportsWhatWasStoredAndWhatNoTableHolds) {
  const Outcome outcome = import_all();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out,
            "stored 1 compact sensor\n"
            "stored 1 full sensor\n"
            "stored 2 FRUs\n"
            "stored 2 FRU locators\n"
            "stored 1 event\n"
            "not stored, as no table holds them: 1 OEM record, 1 event-only sensor record\n");
}

TEST_F(Import, ReportsAsJson) {
  const Json report = rows({"import", "--sdr", repository});
  EXPECT_EQ(report.at("stored").at("frus"), 2);
  EXPECT_EQ(report.at("not_held").at("OEM"), 1);
  EXPECT_EQ(report.at("notes").size(), 0u);
}

TEST_F(Import, TiesSensorsAndFrusOfOneEntity) {
  import_all();
  EXPECT_EQ(sql("select IsFRUAvailable || FruIDSlaveAddr || DevIdStr || ProdMfrName || FRUIDStrLen from compact_sdr;"),
            "12SupplyPSU Maker6");
  EXPECT_EQ(sql("select IsFRUAvailable || FruIDSlaveAddr || DevIdStr || BrdMfrName from full_sdr;"), "10BoardMaker");
}

TEST_F(Import, FillsThePhysicalElement) {
  import_all();
  EXPECT_EQ(sql("select PhysicalElement from compact_sdr;"), "1040");  // package and power supply
  EXPECT_EQ(sql("select PhysicalElement from full_sdr;"), "2");
}

TEST_F(Import, SensorOfAnotherInstanceHasNoFru) {
  on_database({"import", "--sdr", file("one.sdr", sensor(supply_sensor, 10, 2, 0x51) + locator("Supply", 2, 10, 1))});
  EXPECT_EQ(sql("select IsFRUAvailable || FruIDSlaveAddr || DevIdStr from compact_sdr;"), "00");
}

TEST_F(Import, FirstFruOfAnEntityIsTheSensors) {
  on_database(
      {"import", "--sdr", file("two.sdr", locator("First", 9, 10, 1) + locator("Second", 3, 10, 1) + supply_sensor)});
  EXPECT_EQ(sql("select DevIdStr from compact_sdr;"), "First");
  EXPECT_EQ(rows({"fru"}).size(), 2u);
}

TEST_F(Import, KeepsNamesWithPercentSignsAndQuotes) {
  const Bytes quoted = sensor(compact_record(ascii_field("it's 100%s")), 7, 1, 0x51);
  on_database({"import", "--sdr", file("names.sdr", board_sensor + quoted)});
  EXPECT_EQ(sql("select SensorName from full_sdr;"), "PS1 Curr Out %");
  EXPECT_EQ(sql("select SensorName from compact_sdr;"), "it's 100%s");
}

TEST_F(Import, EmptiesTheTablesThatItFills) {
  import_all();
  on_database({"import", "--sdr", file("one.sdr", supply_sensor)});
  EXPECT_EQ(rows({"sensors"}).size(), 1u);
  EXPECT_EQ(rows({"fru"}).size(), 0u);
  EXPECT_EQ(sql("select count(*) from fru_locator_sdr;"), "0");
  EXPECT_EQ(rows({"sel"}).size(), 1u);  // not imported, so not touched
}

TEST_F(Import, OfTheLogAloneLeavesTheSensors) {
  import_all();
  on_database({"import", "--sel", file("empty.sel", {})});
  EXPECT_EQ(rows({"sel"}).size(), 0u);
  EXPECT_EQ(sql("select RecCnt || Version || CompletionCode from sel_info;"), "05100");
  EXPECT_EQ(rows({"sensors"}).size(), 2u);
}

TEST_F(Import, OfAnImageAloneRenewsTheFruAndItsSensors) {
  import_all();
  const std::string renewed = file("new.bin", fru_image({}, {}, product_area(ascii_field("Other Maker"))));
  const Outcome outcome = on_database({"import", "--fru", "0x2=" + renewed});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(sql("select ProdMfrName || DevIdStr from fru where FruIDSlaveAddr = 2;"), "Other MakerSupply");
  EXPECT_EQ(sql("select ProdMfrName from compact_sdr;"), "Other Maker");
  EXPECT_EQ(sql("select BrdMfrName from full_sdr;"), "Maker");
  EXPECT_EQ(sql("select count(*) from fru_locator_sdr;"), "2");
}

TEST_F(Import, ImageWithoutLocatorIsAFruOfNoEntity) {
  const Outcome outcome = on_database({"import", "--sdr", repository, "--fru", "7=" + board});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "qmvctl: note: FRU 7 has no locator record: its entity is unspecified\n");
  EXPECT_EQ(sql("select DeviceAccessAddr || LUNBusID || EntityID || BrdMfrName from fru where FruIDSlaveAddr = 7;"),
            "321280Maker");
}

TEST_F(Import, ImageOfFruZeroBelongsToTheControllersEntity) {
  Bytes controller = numbered_record(0x12, 15, ascii_field("BMC"));
  controller[5] = 0x20;
  controller[8] = 0x08;
  controller[12] = 7;
  controller[13] = 1;
  const Outcome outcome =
      on_database({"import", "--sdr", file("one.sdr", board_sensor + controller), "--fru", "0=" + board});
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(sql("select DevIdStr || BrdMfrName from full_sdr;"), "BMCMaker");
}

TEST_F(Import, ImageGoesToTheLogicalFruOfTheController) {
  Bytes elsewhere = locator("Elsewhere", 2, 7, 1);
  elsewhere[5] = 0x2C;
  Bytes memory = locator("EEPROM", 2, 7, 2);
  memory[7] = 0;
  const std::string dump = file("three.sdr", elsewhere + memory + locator("Supply", 2, 10, 1));
  on_database({"import", "--sdr", dump, "--fru", "2=" + supply});
  EXPECT_EQ(sql("select group_concat(DevIdStr) from fru where ProdMfrName = 'PSU Maker';"), "Supply");
}

TEST_F(Import, FaultyFileLeavesEverythingAsItWas) {
  import_all();
  const std::string before = contents();
  const std::string cut = file("cut.sdr", Bytes(board_sensor.begin(), board_sensor.end() - 1));
  const std::string bad_image = file("bad.bin", Bytes(8, 0));
  const std::string cut_log = file("cut.sel", Bytes(17, 1));
  for (const auto& arguments : std::vector<std::vector<std::string>>{{"--sdr", cut},
                                                                     {"--sdr", repository, "--fru", "0=" + bad_image},
                                                                     {"--fru", "0=" + bad_image},
                                                                     {"--sdr", repository, "--sel", cut_log},
                                                                     {"--sdr", path("missing")}}) {
    std::vector<std::string> command{"import"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const Outcome outcome = on_database(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err, "");
    EXPECT_EQ(contents(), before);
  }
}

TEST_F(Import, ErrorNamesFileAndOffset) {
  const std::string cut = file("cut.sdr", supply_sensor + Bytes(board_sensor.begin(), board_sensor.end() - 1));
  EXPECT_EQ(on_database({"import", "--sdr", cut}).err,
            "qmvctl: " + cut + ": offset 42: record 4140h needs 62 bytes, but 61 are there\n");
  EXPECT_EQ(on_database({"import", "--sdr", path("missing")}).err,
            "qmvctl: " + path("missing") + ": No such file or directory\n");
}

TEST_F(Import, RefusesWhatIsNoDump) {
  std::filesystem::create_directory(path("folder"));
  EXPECT_EQ(on_database({"import", "--sdr", path("folder")}).err, "qmvctl: " + path("folder") + ": Is a directory\n");
  for (const char* option : {"--sdr", "--sel"}) {
    EXPECT_EQ(on_database({"import", option, "/dev/zero"}).err, "qmvctl: /dev/zero: too long for a dump\n");
  }
  EXPECT_EQ(on_database({"import", "--fru", "0=/dev/zero"}).err, "qmvctl: /dev/zero: too long for a dump\n");
}

// A trigger plays a row that does not come back as it was stored: sets never say so themselves.
class ReadBack : public Import, public testing::WithParamInterface<const char*> {};

TEST_P(ReadBack, DifferenceRollsTheImportBack) {
  import_all();
  const std::string before = contents();
  sql(GetParam());
  const Outcome outcome = import_all();
  EXPECT_EQ(outcome.status, 1);
  const std::string trigger = GetParam();
  const size_t table = trigger.find(" on ") + 4;
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": table " +
                             trigger.substr(table, trigger.find(' ', table) - table) +
                             " reads back different from what was stored; nothing is imported (qmvctl check cim --db " +
                             database() + " may tell why)\n");
  const std::string found = on_database({"check"}).out;
  EXPECT_NE(found.find("trigger t "), std::string::npos) << found;
  EXPECT_EQ(contents(), before);
}

INSTANTIATE_TEST_SUITE_P(
    OfEachTable, ReadBack,
    testing::Values(
        "create trigger t after insert on compact_sdr begin update compact_sdr set OEM = OEM + 1; end;",
        "create trigger t after insert on compact_sdr begin delete from compact_sdr; end;",
        "create trigger t before insert on full_sdr begin select raise(ignore); end;",
        "create trigger t after insert on full_sdr begin update full_sdr set BrdMfrName = ''; end;",
        "create trigger t after insert on fru begin update fru set EntityInst = 9; end;",
        "create trigger t after insert on fru_locator_sdr begin update fru_locator_sdr set DevType = 1; end;",
        "create trigger t after insert on sel begin update sel set GeneratorID = '21'; end;",
        "create trigger t after insert on sel begin insert or ignore into sel (RecordID) values (77); end;",
        "create trigger t after insert on sel_info begin update sel_info set RecCnt = 5; end;"));

// Of each table that is read back.
TEST_F(Import, OfRowsThatATableDoesNotTakeSaysWhatSqliteSays) {
  for (const auto& [table, column] : std::vector<std::pair<std::string, std::string>>{{"compact_sdr", "OEM"},
                                                                                      {"full_sdr", "OEM"},
                                                                                      {"fru", "DevIdStr"},
                                                                                      {"fru_locator_sdr", "DevIdStr"},
                                                                                      {"sel_info", "RecCnt"},
                                                                                      {"sel", "EvMRev"}}) {
    sql("alter table " + table + " rename column " + column + " to Other;");
    testing::internal::CaptureStderr();
    const Outcome outcome = import_all();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": table " + table +
                               " reads back different from what was stored: table " + table + " has no column named " +
                               column + "; nothing is imported (qmvctl check cim --db " + database() +
                               " may tell why)\n");
    sql("alter table " + table + " rename column Other to " + column + ";");
  }
  EXPECT_EQ(import_all().status, 0);
}

TEST_F(Import, MissingTableFailsAndNothingStays) {
  import_all();
  sql("drop table fru_locator_sdr;");
  testing::internal::CaptureStderr();
  const Outcome outcome = on_database({"import", "--sdr", file("one.sdr", supply_sensor)});
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": no such table: fru_locator_sdr\n");
  EXPECT_EQ(rows({"sensors"}).size(), 2u);
}

TEST_F(Import, WaitsForAnotherProcessesLock) {
  sqlite3* other = nullptr;
  sqlite3_open(database().c_str(), &other);
  sqlite3_exec(other, "begin immediate;", nullptr, nullptr, nullptr);
  sqlite3_busy_timeout(other, 0);
  // The lock goes away while the command waits.
  std::thread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    sqlite3_exec(other, "commit;", nullptr, nullptr, nullptr);
  });
  EXPECT_EQ(import_all().status, 0);
  release.join();
  sqlite3_close(other);
}

}  // namespace
}  // namespace qmvctl::test
