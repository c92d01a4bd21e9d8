#include <sqlite3.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <thread>

#include "command_line.h"
#include "command_test.h"
#include "support/child.h"

namespace qmvctl::test {
namespace {

using Init = CommandTest;
using Usage = CommandTest;
using FixedFile = CommandTest;

TEST_F(Init, CreatesTheTables) {
  EXPECT_EQ(on_database({"init"}).status, 0);
  EXPECT_EQ(sql("select count(*) from sqlite_master where type = 'table';"), "43");
  EXPECT_EQ(sql("select count(*) from pragma_table_info('compact_sdr');"), "45");
  EXPECT_EQ(sql("select count(*) from pragma_table_info('full_sdr');"), "63");
}

TEST_F(Init, DoesNotTouchAnExistingFile) {
  file("test.db", ascii("not a database"));
  const Outcome outcome = on_database({"init"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": the file exists and is not touched\n");
  std::ifstream stream(database());
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "not a database");
}

// As SQLite makes one when a host is started before "init".
TEST_F(Init, TakesAnEmptyFileForMissing) {
  file("test.db", {});
  EXPECT_EQ(on_database({"init"}).status, 0);
  EXPECT_EQ(on_database({"check"}).out, database() + ": nothing is wrong\n");
}

TEST_F(Init, TakesAnEmptyFixedFileForMissing) {
  file("tmp_cim.db", {});
  EXPECT_EQ(run({"init"}).status, 0);
  EXPECT_EQ(run({"check"}).status, 0);
}

TEST_F(Init, DoesNotFollowALinkToAnEmptyFile) {
  const std::string target = file("target", {});
  std::filesystem::create_symlink(target, database());
  EXPECT_EQ(on_database({"init"}).err, "qmvctl: " + database() + ": the file exists and is not touched\n");
  EXPECT_EQ(std::filesystem::file_size(target), 0u);
}

// Another process fills the empty file while the command waits for the lock.
TEST_F(Init, DoesNotTouchAFileThatWasFilledMeanwhile) {
  file("test.db", {});
  sqlite3* other = nullptr;
  sqlite3_open(database().c_str(), &other);
  sqlite3_exec(other, "begin immediate; create table theirs (a);", nullptr, nullptr, nullptr);
  std::thread fill([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    sqlite3_exec(other, "commit;", nullptr, nullptr, nullptr);
  });
  const Outcome outcome = on_database({"init"});
  fill.join();
  sqlite3_close(other);
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": the file exists and is not touched\n");
  EXPECT_EQ(sql("select group_concat(name) from sqlite_master;"), "theirs");
}

TEST_F(Init, LeavesAnEmptyFileEmptyWhenItFails) {
  file("test.db", {});
  std::filesystem::create_directory(database() + "-journal");
  EXPECT_EQ(on_database({"init"}).status, 1);
  EXPECT_EQ(std::filesystem::file_size(database()), 0u);
}

TEST_F(Init, ThatFailsLeavesAFileThatTheNextOneFills) {
  std::filesystem::create_directory(database() + "-journal");
  EXPECT_EQ(on_database({"init"}).status, 1);
  EXPECT_EQ(std::filesystem::file_size(database()), 0u);
  std::filesystem::remove(database() + "-journal");
  EXPECT_EQ(on_database({"init"}).status, 0);
}

TEST_F(Init, InAMissingDirectoryFails) {
  const Outcome outcome = run({"init", "--db", path("missing/test.db")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + path("missing/test.db") + ": No such file or directory\n");
}

TEST_F(Init, WithoutDbCreatesTheFixedFilesThatHostsOpen) {
  EXPECT_EQ(run({"init"}).status, 0);
  for (const char* name : {"cim.db", "tmp_cim.db", "smashclp.db"}) EXPECT_TRUE(std::filesystem::exists(path(name)));
  EXPECT_FALSE(std::filesystem::exists(path("Association.db")));
  const Outcome again = run({"init"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "qmvctl: /tmp/cim.db: the file exists and is not touched\n");
}

TEST_F(Init, CreatesNoneOfThemWhenOneExists) {
  file("smashclp.db", ascii("mine"));
  const Outcome outcome = run({"init"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: /tmp/smashclp.db: the file exists and is not touched\n");
  EXPECT_FALSE(std::filesystem::exists(path("cim.db")));
  EXPECT_FALSE(std::filesystem::exists(path("tmp_cim.db")));
  EXPECT_EQ(std::filesystem::file_size(path("smashclp.db")), 4u);
}

TEST_F(Init, CreatesNoneOfThemWhereALinkToNothingHasOnesName) {
  std::filesystem::create_symlink("nothing", path("tmp_cim.db"));
  EXPECT_EQ(run({"init"}).status, 1);
  EXPECT_FALSE(std::filesystem::exists(path("cim.db")));
}

TEST_F(Init, CreatesTheOneDatabaseThatIsNamed) {
  const std::map<std::string, std::string> tables = {
      {"tmp_cim", "concrete_job,error_info"}, {"smashclp", "jobs"}, {"association", "association,association_reg"}};
  for (const auto& [name, expected] : tables) {
    EXPECT_EQ(on_database({"init", name}).status, 0);
    EXPECT_EQ(sql("select group_concat(name) from (select name from sqlite_master where type = 'table' order by 1);"),
              expected);
    std::filesystem::remove(database());
  }
  EXPECT_EQ(run({"init", "tmp_cim"}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(path("tmp_cim.db")));
  EXPECT_FALSE(std::filesystem::exists(path("cim.db")));
  EXPECT_EQ(run({"init", "association"}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(path("Association.db")));
  EXPECT_EQ(run({"init", "other"}).status, 2);
}

TEST_F(Usage, HelpSucceedsAndNamesTheCommands) {
  const Outcome outcome = run({"--help"});
  EXPECT_EQ(outcome.status, 0);
  for (const char* command : {"init", "import", "sensors", "fru", "sel", "assets", "processors", "memory",
                              "power-supplies", "instances", "jobs", "indications", "associations"}) {
    EXPECT_NE(outcome.out.find(std::string("\n  ") + command + " "), std::string::npos) << command;
  }
}

TEST_F(Usage, WrongUsageExitsWithTwoAndSaysWhyOnStandardError) {
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"unknown"},
      {"sensors", "more"},
      {"--unknown", "sensors"},
      {"import"},
      {"import", "--sdr"},
      {"import", "--fru", "0"},
      {"import", "--fru", "0="},
      {"import", "--fru", "=file"},
      {"import", "--fru", "x=file"},
      {"import", "--fru", "256=file"},
      {"import", "--fru", "-1=file"},
      {"import", "--fru", "1=file", "--fru", "0x1=other"},
      {"export", "--sdr", "file", "--sel", "file"},
      {"export", "--fru", "0=file", "--sel", "./file"},
  };
  on_database({"init"});
  for (const auto& arguments : wrong) {
    const Outcome outcome = on_database(arguments);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err, "");
  }
}

TEST_F(Usage, EmptyTextsAreRefused) {
  run({"init"});
  for (const auto& arguments : std::vector<std::vector<std::string>>{{"sel", "clear", "--db", ""},
                                                                     {"sensors", "show", ""},
                                                                     {"sensors", "--id", ""},
                                                                     {"fru", "--entity="},
                                                                     {"assets", ""},
                                                                     {"import", "--sdr", ""}}) {
    EXPECT_EQ(run(arguments).status, 2) << testing::PrintToString(arguments);
  }
}

TEST_F(Usage, WordsThatAreNoCommandAreNamed) {
  EXPECT_EQ(run({"bog\x1Bus"}).err, "qmvctl: bog.us is no command\nRun with --help for more information.\n");
  EXPECT_EQ(run({}).err.rfind("qmvctl: ", 0), 0u);
}

TEST_F(Usage, TellsItsVersion) {
  const Outcome outcome = run({"--version"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "qmvctl 1.0.0\n");
}

TEST_F(Usage, HelpThatCannotBeWrittenFails) {
  const char* const arguments[] = {"qmvctl", "--help"};
  std::ostream out(nullptr);
  std::ostringstream err;
  EXPECT_EQ(qmvctl::run(2, arguments, out, err, {}), 1);
  EXPECT_EQ(err.str(), "qmvctl: the output cannot be written\n");
}

TEST_F(Usage, ErrorsLetNoControlCharacterThrough) {
  EXPECT_EQ(run({"sel", "--db", path("a\x1B[2J")}).err.find('\x1B'), std::string::npos);
}

TEST_F(Usage, UnknownClassExitsWithTwoAndNamesTheClasses) {
  on_database({"init"});
  const Outcome outcome = on_database({"assets", "CIM_Fan"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.err.find("CIM_Fan is not one of CIM_Slot, CIM_Card, CIM_Chassis, CIM_Chip, CIM_PhysicalPackage, "
                             "CIM_PhysicalConnector, CIM_PhysicalMemory"),
            std::string::npos)
      << outcome.err;
}

TEST_F(Usage, NamesAreThoseOfFilesOnly) {
  const auto before = std::filesystem::current_path();
  std::filesystem::create_directory(path("here"));
  std::filesystem::current_path(path("here"));
  for (const char* name : {":memory:", "file:mine", "file:mine?mode=memory"}) {
    EXPECT_EQ(run({"init", "cim", "--db", name}).status, 0) << name;
    EXPECT_EQ(run({"sel", "--db", name}).out, "The event log is empty.\n") << name;
    EXPECT_TRUE(std::filesystem::exists(name)) << name;
  }
  EXPECT_FALSE(std::filesystem::exists("mine"));
  std::filesystem::current_path(before);
}

TEST_F(Usage, MissingDatabaseFailsAndIsNotCreated) {
  for (const char* command : {"sensors", "fru", "sel", "assets", "processors", "memory", "power-supplies"}) {
    const Outcome outcome = on_database({command});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": No such file or directory (qmvctl init cim --db " + database() +
                               " creates it)\n");
  }
  EXPECT_FALSE(std::filesystem::exists(database()));
}

// Opening a pipe would wait for somebody to write, for ever.
TEST_F(Usage, WhatIsNoRegularFileFails) {
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  for (const std::string& name : {path("pipe"), std::string("/dev/zero")}) {
    const Outcome outcome = run({"sel", "--db", name});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qmvctl: " + name + ": is no regular file\n");
  }
}

TEST_F(Usage, DatabaseWithoutTablesFails) {
  file("test.db", {});
  testing::internal::CaptureStderr();
  for (const char* command : {"sensors", "fru", "sel", "assets", "processors", "memory", "power-supplies"}) {
    const Outcome outcome = on_database({command});
    EXPECT_EQ(outcome.status, 1) << command;
    EXPECT_EQ(outcome.out, "") << command;
    EXPECT_EQ(outcome.err.rfind("qmvctl: " + database() + ": ", 0), 0u) << outcome.err;
  }
  EXPECT_NE(testing::internal::GetCapturedStderr().find("qmvctl: error: [db_sdrd.c:"), std::string::npos);
}

TEST_F(Usage, TracesAreShownOnRequestOnly) {
  on_database({"init"});
  testing::internal::CaptureStderr();
  on_database({"sel"});
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  testing::internal::CaptureStderr();
  on_database({"-v", "sel"});
  EXPECT_NE(testing::internal::GetCapturedStderr().find("qmvctl: trace: [db_seld.c:"), std::string::npos);
}

TEST_F(Usage, EmptyTablesSaySo) {
  on_database({"init"});
  EXPECT_EQ(on_database({"sensors"}).out, "There are no sensors.\n");
  EXPECT_EQ(on_database({"fru"}).out, "There are no FRUs.\n");
  EXPECT_EQ(on_database({"sel"}).out, "The event log is empty.\n");
  EXPECT_EQ(on_database({"processors"}).out, "There are no processors.\n");
  EXPECT_EQ(on_database({"memory"}).out, "There is no memory.\n");
  EXPECT_EQ(on_database({"power-supplies"}).out, "There are no power supplies.\n");
  EXPECT_EQ(on_database({"sensors", "--json"}).out, "[]\n");
}

TEST_F(FixedFile, IsLookedAtForLocks) {
  run({"init"});
  const qmv::test::Child holder([this] {
    sqlite3* handle = nullptr;
    sqlite3_open(path("cim.db").c_str(), &handle);
    EXPECT_EQ(sqlite3_exec(handle, "begin immediate;", nullptr, nullptr, nullptr), SQLITE_OK);
    raise(SIGSTOP);
  });
  holder.wait_until_stopped();
  const std::string found = run({"check", "cim"}).out;
  EXPECT_NE(found.find("\nprocess "), std::string::npos) << found;
}

TEST_F(FixedFile, IsUsedWithoutDb) {
  Bytes supply = compact_record(ascii_field("PS1 Status"));
  supply[8] = 10;
  supply[9] = 1;
  Bytes input_power = full_record(ascii_field("PS1 Input Power"));
  input_power[7] = 0x30;
  input_power[8] = 10;
  input_power[9] = 1;
  run({"init"});
  EXPECT_EQ(run({"import", "--sdr", file("server.sdr", supply + input_power)}).status, 0);
  EXPECT_NE(run({"sensors"}).out.find("PS1 Status"), std::string::npos);
  EXPECT_EQ(Json::parse(run({"power-supplies", "--json"}).out).at(0).at("instance"), "10:1:48:PowerSupply");
  std::filesystem::rename(path("cim.db"), database());
  EXPECT_EQ(rows({"power-supplies"}).at(0).at("instance"), "10:1:48:PowerSupply");
}

}  // namespace
}  // namespace qmvctl::test
