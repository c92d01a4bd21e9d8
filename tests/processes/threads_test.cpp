// Two threads with a connection each. With the thread sanitizer, nothing that they share may be unguarded.
#include <atomic>
#include <chrono>
#include <thread>

#include "../support/figures.h"
#include "host.h"
#include "processes_test.h"
#include "traffic.h"

namespace qmv::test {
namespace {

using namespace std::chrono_literals;

using Open = std::int32_t (*)(sqlite3**);

class ThreadsTest : public ProcessesTest {
 protected:
  ThreadsTest() {
    let_a_second_last(100us);
    count_busy_traces_in(busy);
    make_rows();
  }

  void use(Open open, char digit) const {
    const Connection db(open);
    do_not_wait_for_the_disk(db);
    for (int round = 0; round < rounds; ++round) {
      for (const Call call : writes()) call(db, digit);
      for (const Call call : reads()) call(db, digit);
    }
  }

  void use_by_path() const {
    for (int round = 0; round < rounds; ++round) {
      for (const Call call : reads_by_path()) call(nullptr, '0');
    }
  }

  std::atomic<int> busy = 0;
  const int rounds = amount(10, 200);
};

TEST_F(ThreadsTest, WithTwoFilesReadTheirOwn) {
  std::thread one([this] { use(db_init, '1'); });
  std::thread other([this] { use(tmp_db_init, '2'); });
  one.join();
  other.join();
  figure("threads.rounds", rounds);
  figure("threads.functions", writes().size() + reads().size() + reads_by_path().size());
}

TEST_F(ThreadsTest, WithOneFileWaitForEachOther) {
  std::thread one([this] { use(db_init, '1'); });
  std::thread other([this] { use(db_init, '1'); });
  one.join();
  other.join();
  const Connection db;
  EXPECT_EQ(1, number_of(db, "select count(*) from sel"));
  EXPECT_EQ("ok", text_of(db, "pragma integrity_check"));
  figure("threads.busy_traces", busy);
}

TEST_F(ThreadsTest, WithFilesOpenedByThemRead) {
  std::thread one([this] { use_by_path(); });
  std::thread other([this] { use_by_path(); });
  one.join();
  other.join();
}

}  // namespace
}  // namespace qmv::test
