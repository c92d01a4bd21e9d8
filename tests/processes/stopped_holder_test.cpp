// A process that holds the lock and is stopped: the others wait for it.
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

#include "../support/child.h"
#include "../support/figures.h"
#include "host.h"
#include "processes_test.h"
#include "sensors.h"

namespace qmv::test {
namespace {

using Seconds = std::chrono::duration<double>;

constexpr int kRows = 10;
constexpr int kMostWaiting = 4;

class StoppedHolderTest : public ProcessesTest {
 protected:
  static void store(sqlite3* db, const std::string& whose, int row) {
    const compact_sdr_rec record = sensor(whose + ", row " + std::to_string(row), row);
    EXPECT_EQ(0, db_set_compact_sdr_info(db, &record));
  }

  // Stops itself between the halves of its transaction.
  static void hold() {
    const Connection db;
    EXPECT_EQ(0, db_execute(db, "begin exclusive;"));
    for (int i = 0; i < kRows; ++i) {
      if (i == kRows / 2) raise(SIGSTOP);
      store(db, "holder", i);
    }
    EXPECT_EQ(0, db_commit(db));
  }

  struct Wait {
    std::atomic<int> traces = 0;
    std::atomic<double> seconds = 0;
  };

  Wait& wait_of(int who) const { return (*waits)[static_cast<std::size_t>(who)]; }

  // Half of the processes read, half write. It is the first call that waits.
  static void read() { EXPECT_EQ(kRows - 1, stored_number(Connection(), "holder, row 9")) << "what the holder stored"; }

  static void write(int who) {
    const Connection db;
    for (int i = 0; i < kRows; ++i) store(db, std::to_string(who), i);
  }

  void wait(int who) const {
    Wait& wait = wait_of(who);
    count_busy_traces_in(wait.traces);
    const auto start = std::chrono::steady_clock::now();
    who % 2 == 0 ? read() : write(who);
    wait.seconds = Seconds(std::chrono::steady_clock::now() - start).count();
  }

  // Until the child waits; a minute is more than it needs.
  static void wait_for_a_trace(const std::atomic<int>& traces, const Child& child) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (traces == 0 && child.is_running() && std::chrono::steady_clock::now() < end) std::this_thread::yield();
    EXPECT_GT(traces, 0);
  }

  const Shared<std::array<Wait, kMostWaiting>> waits;
  const int waiting = amount(2, kMostWaiting);
  const int held_seconds = amount(3, 60);
};

TEST_F(StoppedHolderTest, DelaysTheOthersWhoTraceEveryTwoSecondsAndLoseNothing) {
  Child holder(hold);
  holder.wait_until_stopped();
  std::vector<Child> children;
  for (int who = 0; who < waiting; ++who) children.emplace_back([this, who] { wait(who); });
  for (int who = 0; who < waiting; ++who)
    wait_for_a_trace(wait_of(who).traces, children[static_cast<std::size_t>(who)]);
  std::this_thread::sleep_for(std::chrono::seconds(held_seconds));
  for (const Child& child : children) EXPECT_TRUE(child.is_running());
  holder.go_on();
  holder.wait_for_end();
  for (Child& child : children) child.wait_for_end();

  for (int who = 0; who < waiting; ++who) {
    const Wait& wait = wait_of(who);
    EXPECT_LE(2 * wait.traces, wait.seconds) << "more than one trace in two seconds";
    EXPECT_GE(2.2 * wait.traces + 2, wait.seconds) << "less than one trace in two seconds";
    const std::string name = "stopped_holder.waiting_" + std::to_string(who);
    figure(name + ".seconds", wait.seconds);
    figure(name + ".busy_traces", wait.traces);
  }
  const Connection db;
  const int rows = number_of(db, "select count(*) from compact_sdr");
  EXPECT_EQ(kRows + waiting / 2 * kRows, rows);
  EXPECT_EQ(0, half_rows(db));
  figure("stopped_holder.held_seconds", held_seconds);
  figure("stopped_holder.rows", rows);
}

TEST_F(StoppedHolderTest, WithoutTheBusyHandlerTheRowIsLost) {
  Child holder(hold);
  holder.wait_until_stopped();
  sqlite3* impatient = nullptr;
  ASSERT_EQ(SQLITE_OK, sqlite3_open("/tmp/cim.db", &impatient));
  std::atomic<int> traces = 0;
  count_busy_traces_in(traces);
  store(impatient, "lost", 1);
  EXPECT_EQ(SQLITE_BUSY, db_execute(impatient, "delete from compact_sdr;"));
  EXPECT_EQ(0, traces);
  holder.go_on();
  holder.wait_for_end();
  EXPECT_EQ(-2, stored_number(impatient, "lost, row 1"));
  EXPECT_EQ(kRows, number_of(impatient, "select count(*) from compact_sdr"));
  EXPECT_EQ(SQLITE_OK, sqlite3_close(impatient));
}

TEST_F(StoppedHolderTest, ThatIsKilledLetsTheOthersGoOnWithoutItsRows) {
  Child holder(hold);
  holder.wait_until_stopped();
  const Shared<std::atomic<int>> traces;
  count_busy_traces_in(*traces);
  let_a_second_last(std::chrono::milliseconds(1));
  Child other([] { store(Connection(), "waiting", 1); });
  wait_for_a_trace(*traces, other);
  holder.kill();
  other.wait_for_end();
  const Connection db;
  EXPECT_EQ(1, stored_number(db, "waiting, row 1"));
  EXPECT_EQ(1, number_of(db, "select count(*) from compact_sdr"));
}

}  // namespace
}  // namespace qmv::test
