#include <sqlite3.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <ctime>
#include <fstream>
#include <limits>
#include <sstream>
#include <thread>

#include "command_line.h"
#include "command_test.h"
#include "support/child.h"

namespace qmvctl::test {
namespace {

class EventLogChanges : public CommandTest {
 protected:
  EventLogChanges() { on_database({"init"}); }

  void insert(int id, int type = 2) {
    sql("insert into sel (RecordID, SensorType, EventType, EventData1) values (" + std::to_string(id) + ", " +
        std::to_string(type) + ", 1, 9);");
  }

  std::string ids(const std::vector<std::string>& options = {}) {
    std::vector<std::string> command{"sel"};
    command.insert(command.end(), options.begin(), options.end());
    std::string ids;
    for (const Json& row : rows(command)) ids += std::to_string(row.at("record_id").get<int>()) + " ";
    return ids;
  }
};

TEST_F(EventLogChanges, ShowsItsLastEventsOnRequest) {
  for (int id = 1; id <= 4; ++id) insert(id, id == 3 ? 1 : 2);
  EXPECT_EQ(ids({"list"}), "1 2 3 4 ");
  EXPECT_EQ(ids({"--last", "2"}), "3 4 ");
  EXPECT_EQ(ids({"list", "--last", "9"}), "1 2 3 4 ");
  EXPECT_EQ(ids({"--last", "2", "--type", "voltage"}), "2 4 ");
  EXPECT_EQ(ids({"--last", "0"}), "");
  EXPECT_EQ(on_database({"sel", "--last", "0"}).out, "Nothing matches.\n");
  EXPECT_EQ(ids({"--last", "02"}), "3 4 ");
  EXPECT_EQ(ids({"--last", "0x2"}), "3 4 ");
  EXPECT_EQ(ids({"--last", "2h"}), "3 4 ");
  EXPECT_EQ(on_database({"sel", "--last", "x"}).status, 2);
  EXPECT_EQ(on_database({"sel", "--last", "-1"}).status, 2);
  EXPECT_EQ(on_database({"watch", "--last", "-1"}).status, 2);
  EXPECT_EQ(on_database({"fru", "--last", "1"}).status, 2);
}

TEST_F(EventLogChanges, TakesTheBytesOfAMessage) {
  insert(7);
  const Outcome outcome = on_database({"sel", "add", "0x04", "02h", "71", "0x81", "0x59", "0xFC", "0xC9", "--time",
                                       "4294967295", "--generator", "33h"});
  EXPECT_EQ(outcome.out, "added event 8\n");
  EXPECT_EQ(
      sql("select RecordID || ' ' || RecordType || ' ' || TimeStamp || ' ' || GeneratorID || ' ' || EvMRev || ' ' "
          "|| SensorType || ' ' || SensorNum || ' ' || EventDir || ' ' || EventType || ' ' || EventData1 || ' ' || "
          "EventData2 || ' ' || EventData3 from sel where RecordID = 8;"),
      "8 2 -1 33 4 2 71 1 1 89 252 201");
}

TEST_F(EventLogChanges, FirstEventIsOfNowAndOfTheController) {
  const auto before = std::time(nullptr);
  EXPECT_EQ(rows({"sel", "add", "4", "2", "1", "1", "0", "0", "0"}), Json({{"added", 1}}));
  const Json event = rows({"sel"}).at(0);
  EXPECT_GE(event.at("time_stamp"), before);
  EXPECT_LE(event.at("time_stamp"), std::time(nullptr));
  EXPECT_EQ(event.at("generator_id"), "20");
}

TEST_F(EventLogChanges, RefusesBytesThatAreNone) {
  EXPECT_EQ(on_database({"sel", "add", "4", "2", "1", "1", "0", "0"}).status, 2);
  EXPECT_EQ(on_database({"sel", "add", "4", "2", "1", "1", "0", "0", "256"}).status, 2);
  EXPECT_EQ(on_database({"sel", "add", "4", "2", "1", "1", "0", "0", "x"}).status, 2);
  EXPECT_EQ(on_database({"sel", "add", "4", "2", "1", "1", "0", "0", "0", "--generator", "256"}).status, 2);
  EXPECT_EQ(ids(), "");
}

TEST_F(EventLogChanges, ThatHasUsedItsLastIdIsFull) {
  for (const int last : {65534, 70000, std::numeric_limits<int>::max()}) {
    insert(last);
    const Outcome outcome = on_database({"sel", "add", "4", "2", "1", "1", "0", "0", "0"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": the event log has used its last record ID: clear it first\n");
  }
}

TEST_F(EventLogChanges, DeletesTheEventsThatAreNamed) {
  for (int id = 1; id <= 4; ++id) insert(id);
  EXPECT_EQ(on_database({"sel", "delete", "2", "0x4"}).out, "deleted 2 events\n");
  EXPECT_EQ(ids(), "1 3 ");
  EXPECT_EQ(rows({"sel", "delete", "1"}), Json({{"deleted", {1}}}));
  insert(70000);
  EXPECT_EQ(on_database({"sel", "delete", "70000", "70000"}).out, "deleted 1 event\n");
  EXPECT_EQ(ids(), "3 ");
}

TEST_F(EventLogChanges, DeletesNoneWhenOneIsMissing) {
  insert(1);
  const Outcome outcome = on_database({"sel", "delete", "1", "2"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": there is no event 2; nothing is deleted\n");
  EXPECT_EQ(ids(), "1 ");
}

TEST_F(EventLogChanges, IsCleared) {
  insert(1);
  insert(2);
  EXPECT_EQ(on_database({"sel", "clear"}).out, "deleted 2 events\n");
  EXPECT_EQ(ids(), "");
  EXPECT_EQ(rows({"sel", "clear"}), Json({{"cleared", 0}}));
}

TEST_F(EventLogChanges, ThatRefusesChangesIsReported) {
  insert(1);
  sql("create trigger kept before delete on sel begin select raise(ignore); end;");
  testing::internal::CaptureStderr();
  const Outcome deleting = on_database({"sel", "delete", "1"});
  const Outcome clearing = on_database({"sel", "clear"});
  sql("create trigger none before insert on sel begin select raise(abort, 'no more'); end;");
  const Outcome adding = on_database({"sel", "add", "4", "2", "1", "1", "0", "0", "0"});
  testing::internal::GetCapturedStderr();
  for (const Outcome& outcome : {deleting, clearing, adding}) {
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
  }
  EXPECT_EQ(clearing.err, "qmvctl: " + database() + ": events cannot be deleted: table sel keeps them\n");
  const std::string refusal = "qmvctl: " + database() +
                              ": the event cannot be added: table sel does not take it (qmvctl check cim --db " +
                              database() + " may tell why)\n";
  EXPECT_EQ(adding.err, refusal);
  sql("drop trigger none; create trigger none before insert on sel begin select raise(ignore); end;");
  EXPECT_EQ(on_database({"sel", "add", "4", "2", "1", "1", "0", "0", "0"}).err, refusal);
  EXPECT_EQ(ids(), "1 ");
}

TEST_F(EventLogChanges, ThatLackAColumnNameIt) {
  sql("alter table sel rename column EvMRev to Revision;");
  testing::internal::CaptureStderr();
  const Outcome outcome = on_database({"sel", "add", "4", "2", "1", "1", "0", "0", "0"});
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(outcome.err,
            "qmvctl: " + database() +
                ": the event cannot be added: table sel has no column named EvMRev (qmvctl check cim --db " +
                database() + " may tell why)\n");
}

TEST_F(EventLogChanges, ThatFailsSaysWhyWithoutControlCharacters) {
  insert(1);
  sql("create trigger kept before delete on sel begin select raise(abort, 'kept\x1B[2J'); end;");
  testing::internal::CaptureStderr();
  const Outcome outcome = on_database({"sel", "clear"});
  const std::string library = testing::internal::GetCapturedStderr();
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": events cannot be deleted: kept.[2J\n");
  EXPECT_EQ(library.find('\x1B'), std::string::npos) << library;
}

TEST_F(EventLogChanges, TakesNoSelectionForChanges) {
  insert(1);
  EXPECT_EQ(on_database({"sel", "--id", "2", "clear"}).status, 2);
  EXPECT_EQ(on_database({"sel", "clear", "--id", "2"}).status, 2);
  EXPECT_EQ(ids(), "1 ");
}

TEST_F(EventLogChanges, ShowsOneEventInFull) {
  insert(3);
  const std::string text = on_database({"sel", "show", "3"}).out;
  EXPECT_NE(text.find("Sensor type      : Voltage (02h)\n"), std::string::npos) << text;
  EXPECT_NE(text.find("State            : Critical\n"), std::string::npos) << text;
  sql("update sel set GeneratorID = '20';");
  EXPECT_NE(on_database({"sel", "show", "3"}).out.find("Generator        : 20h\n"), std::string::npos);
}

// A process that watches the log and writes to a pipe.
class Watch : public EventLogChanges {
 protected:
  qmv::test::Child start(const std::vector<std::string>& options, int status = 0) {
    EXPECT_EQ(mkfifo(path("out").c_str(), 0600), 0);
    return qmv::test::Child([this, options, status] {
      *watcher_ = getpid();
      std::ofstream out(path("out"));
      const std::string file = database();
      std::vector<const char*> arguments{"qmvctl", "watch", "--db", file.c_str()};
      for (const std::string& option : options) arguments.push_back(option.c_str());
      EXPECT_EQ(qmvctl::run(static_cast<int>(arguments.size()), arguments.data(), out, out, {}), status);
    });
  }

  static std::string line(std::istream& stream) {
    std::string line;
    std::getline(stream, line);
    return line;
  }

  void interrupt() { kill(*watcher_, SIGINT); }

  // Locks the file until it is killed.
  qmv::test::Child writer_that_stops() {
    qmv::test::Child writer([this] {
      sqlite3* handle = nullptr;
      sqlite3_open(database().c_str(), &handle);
      EXPECT_EQ(sqlite3_exec(handle, "begin exclusive;", nullptr, nullptr, nullptr), SQLITE_OK);
      raise(SIGSTOP);
    });
    writer.wait_until_stopped();
    return writer;
  }

  // Watches with a standard output whose reader has gone, and waits for its end.
  void watch_unread() {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    qmv::test::Child child([this, &ends] {
      dup2(ends[1], STDOUT_FILENO);
      close(ends[0]);
      close(ends[1]);
      std::ostringstream out;
      const std::string file = database();
      const char* arguments[] = {"qmvctl", "watch", "--db", file.c_str()};
      EXPECT_EQ(qmvctl::run(4, arguments, out, out, {}), 0);
    });
    close(ends[1]);
    close(ends[0]);
    child.wait_for_end();
  }

 private:
  qmv::test::Shared<pid_t> watcher_;
};

TEST_F(Watch, ShowsTheLastEventsAndEachNewOneUntilItIsInterrupted) {
  for (int id = 1; id <= 3; ++id) insert(id);
  qmv::test::Child child = start({"--last", "2"});
  std::ifstream out(path("out"));
  EXPECT_EQ(line(out), "   ID  Time (UTC)           Sensor           Event                      State");
  EXPECT_EQ(line(out), "    2  start + 0 s          Voltage #00h     Upper Critical going high  Critical");
  EXPECT_EQ(line(out), "    3  start + 0 s          Voltage #00h     Upper Critical going high  Critical");
  insert(4);
  EXPECT_EQ(line(out), "    4  start + 0 s          Voltage #00h     Upper Critical going high  Critical");
  sql("update sel set SensorType = 1 where RecordID = 1;");
  EXPECT_EQ(line(out), "    1  start + 0 s          Temperature #0~  Upper Critical going high  Critical");
  interrupt();
  EXPECT_EQ(line(out), "");
  EXPECT_TRUE(out.eof());
  child.wait_for_end();
}

TEST_F(Watch, GoesOnWhenTheSchemaChanges) {
  insert(1);
  qmv::test::Child child = start({"--json"});
  std::ifstream out(path("out"));
  line(out);
  for (const char* change : {"vacuum;", "create index i on sel (SensorType);", "alter table role add column X;"}) {
    sql(change);
    std::this_thread::sleep_for(std::chrono::milliseconds(600));  // a look sees nothing but that
  }
  insert(2);
  EXPECT_EQ(Json::parse(line(out)).at("record_id"), 2);
  interrupt();
  child.wait_for_end();
}

TEST_F(Watch, EndsWhenNobodyReadsItAnyMore) {
  insert(1);
  watch_unread();
}

TEST_F(Watch, EndsWhenNobodyReadsItWhileTheFileIsLocked) {
  insert(1);
  const qmv::test::Child writer = writer_that_stops();
  watch_unread();
}

TEST_F(Watch, EndsAtAnInterruptWhileTheFileIsLocked) {
  insert(1);
  qmv::test::Child child = start({"--json"});
  std::ifstream out(path("out"));
  line(out);
  const qmv::test::Child writer = writer_that_stops();
  std::this_thread::sleep_for(std::chrono::milliseconds(800));  // the next look has begun
  interrupt();
  child.wait_for_end();
}

TEST_F(Watch, EndsAtASecondInterruptThoughNobodyReadsOn) {
  sql("insert into sel (RecordID) with recursive n (i) as (select 1 union all select i + 1 from n where i < 2000) "
      "select i from n;");
  const qmv::test::Child child = start({"--last", "2000", "--json"});
  std::ifstream out(path("out"));
  line(out);  // of more lines than a pipe holds
  interrupt();
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_TRUE(child.is_running());
  interrupt();
  for (int look = 0; look < 100 && child.is_running(); ++look) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  EXPECT_FALSE(child.is_running());
}

TEST_F(Watch, EndsWhenAnotherFileTakesThePlace) {
  insert(1);
  qmv::test::Child child = start({"--json"}, 1);
  std::ifstream out(path("out"));
  line(out);
  std::filesystem::rename(database(), path("former.db"));
  on_database({"init"});
  EXPECT_EQ(line(out), "qmvctl: " + database() + ": the file was replaced or removed");
  child.wait_for_end();
}

TEST_F(Watch, GoesOnWhenTheLogIsCleared) {
  insert(1);
  qmv::test::Child child = start({"--last", "1", "--json"});
  std::ifstream out(path("out"));
  EXPECT_EQ(Json::parse(line(out)).at("record_id"), 1);
  insert(2);
  EXPECT_EQ(Json::parse(line(out)).at("record_id"), 2);
  sql("delete from sel;");
  insert(1, 4);
  EXPECT_EQ(Json::parse(line(out)).at("sensor_type_name"), "Fan");
  interrupt();
  child.wait_for_end();
}

}  // namespace
}  // namespace qmvctl::test
