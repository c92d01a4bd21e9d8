// Many processes write one file while others read it.
#include <atomic>
#include <chrono>
#include <vector>

#include "../support/child.h"
#include "../support/figures.h"
#include "host.h"
#include "processes_test.h"
#include "sensors.h"

namespace qmv::test {
namespace {

using namespace std::chrono_literals;

constexpr int kWriters = 8;
constexpr int kReaders = 4;

class WritersTest : public ProcessesTest {
 protected:
  // Every other row is the writer's own, the rest they share.
  static std::string key(int writer, int upsert) {
    return (upsert % 2 == 0 ? "writer " + std::to_string(writer) : "any writer") + ", row " + std::to_string(upsert);
  }
  static int number(int writer, int upsert) { return upsert * kWriters + writer; }

  void write(int writer) const {
    const Connection db;
    do_not_wait_for_the_disk(db);
    for (int i = 0; i < upserts; ++i) {
      const compact_sdr_rec record = sensor(key(writer, i), number(writer, i));
      EXPECT_EQ(0, db_set_compact_sdr_info(db, &record));
    }
  }

  // One row of each writer, then all rows, and again.
  void read() const {
    const Connection db;
    for (int round = 0; !seen->all_is_written; ++round) {
      for (int writer = 0; writer < kWriters; ++writer) {
        seen->halves += stored_number(db, key(writer, round % upserts)) == -1;
        ++seen->reads;
      }
      seen->halves += half_rows(db);
      std::this_thread::sleep_for(10ms);
    }
  }

  // The file itself counts the upserts that reach it.
  static void make_tally() {
    const Connection db;
    EXPECT_EQ(0, db_execute(db, "create table tally (upserts integer); insert into tally values (0);"));
    for (const char* event : {"insert", "update"}) {
      EXPECT_EQ(0, db_execute(db,
                              "create trigger tally_%s after %s on compact_sdr begin update tally set upserts = "
                              "upserts + 1; end;",
                              event, event));
    }
  }

  void run() const {
    count_busy_traces_in(seen->busy);
    std::vector<Child> readers;
    std::vector<Child> writers;
    for (int i = 0; i < kReaders; ++i) readers.emplace_back([this] { read(); });
    for (int i = 0; i < kWriters; ++i) writers.emplace_back([this, i] { write(i); });
    for (Child& writer : writers) writer.wait_for_end();
    seen->all_is_written = true;
    for (Child& reader : readers) reader.wait_for_end();
  }

  struct Seen {
    std::atomic<bool> all_is_written = false;
    std::atomic<int> reads = 0;
    std::atomic<int> halves = 0;
    std::atomic<int> busy = 0;
  };
  const Shared<Seen> seen;
  const int upserts = amount(100, 500);
};

TEST_F(WritersTest, LoseNoUpsertAndShowNoHalfRow) {
  if (!runs_in_full()) let_a_second_last(1ms);
  make_tally();
  const auto start = std::chrono::steady_clock::now();
  run();
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

  const Connection db;
  EXPECT_GT(seen->reads, 0);
  EXPECT_EQ(0, seen->halves);
  EXPECT_EQ(kWriters * upserts, number_of(db, "select upserts from tally"));
  EXPECT_EQ(kWriters * upserts / 2 + upserts / 2, number_of(db, "select count(*) from compact_sdr"));
  for (int i = 0; i < upserts; i += 2) {
    for (int writer = 0; writer < kWriters; ++writer) {
      EXPECT_EQ(number(writer, i), stored_number(db, key(writer, i))) << key(writer, i);
    }
    EXPECT_EQ(i + 1, stored_number(db, key(0, i + 1)) / kWriters) << "by any writer";
  }
  EXPECT_EQ("ok", text_of(db, "pragma integrity_check"));
  EXPECT_GT(seen->busy, 0) << "they never met";

  figure("writers.upserts", kWriters * upserts);
  figure("writers.rows", number_of(db, "select count(*) from compact_sdr"));
  figure("writers.reads", seen->reads);
  figure("writers.half_rows", seen->halves);
  figure("writers.busy_traces", seen->busy);
  figure("writers.seconds", elapsed.count());
}

// Were the check blind, the test above would show nothing.
TEST_F(WritersTest, HalfARowIsNoticed) {
  const Connection db;
  const compact_sdr_rec record = sensor("half", 7);
  EXPECT_EQ(0, db_set_compact_sdr_info(db, &record));
  EXPECT_EQ(7, stored_number(db, "half"));
  EXPECT_EQ(0, half_rows(db));
  EXPECT_EQ(0, db_execute(db, "update compact_sdr set BrdMfrName = 'another';"));
  EXPECT_EQ(-1, stored_number(db, "half"));
  EXPECT_EQ(1, half_rows(db));
}

}  // namespace
}  // namespace qmv::test
