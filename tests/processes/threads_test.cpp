// Two threads with a connection each. With the thread sanitizer, nothing that they share may be unguarded.
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "../qmvctl/redirect.h"
#include "../support/child.h"
#include "../support/figures.h"
#include "../torture/calls.h"
#include "../torture/databases.h"
#include "../torture/tables.h"
#include "host.h"
#include "processes_test.h"
#include "traffic.h"

// A part of the thread sanitizer, where that watches.
extern "C" void __tsan_init() __attribute__((weak));

// What it asks for before anything runs: its own memory does not stand yet. A race ends its process, which the test that
// it is a part of cannot overlook. What SQLite does is not watched: its locks would put the threads in an order, which
// hides almost every race; and since some of its unlocking is called without a frame of its own, mutexes are let be.
extern "C" __attribute__((no_sanitize("thread"))) const char* __tsan_default_options() {
  return "halt_on_error=1:report_mutex_bugs=0";
}
extern "C" __attribute__((no_sanitize("thread"))) const char* __tsan_default_suppressions() {
  return "called_from_lib:libsqlite3.so";
}

namespace qmv::test {
namespace {

using namespace std::chrono_literals;

using Open = std::int32_t (*)(sqlite3**);

class ThreadsTest : public ProcessesTest {
 protected:
  ThreadsTest() {
    let_a_second_last(100us);
    count_busy_traces_in(busy);
    traffic::make_rows();
  }

  static void in_two_threads(const std::function<void()>& one, const std::function<void()>& other) {
    std::thread first(one);
    std::thread second(other);
    first.join();
    second.join();
  }

  void use(Open open, char digit) const {
    const Connection db(open);
    do_not_wait_for_the_disk(db);
    for (int round = 0; round < rounds; ++round) {
      for (const traffic::Call call : traffic::writes()) call(db, digit);
      for (const traffic::Call call : traffic::reads()) call(db, digit);
    }
  }

  // All but those that two threads must not call.
  static std::vector<Call> allowed(std::vector<Call> all) {
    const std::set<std::string> kExcluded = {
        "db_set_concretejob",  // the number of the last job belongs to the process
    };
    std::erase_if(all, [&](const Call& call) { return kExcluded.contains(call.name); });
    return all;
  }

  // What each call answers on a connection of this thread's own, to tables as they were made.
  static std::vector<Answer> answers_to(const std::vector<Call>& made) {
    Database usual(image_of_all_tables());
    Database narrow(image_with_narrow_sensors());
    std::vector<Answer> all;
    for (const Call& call : made) {
      Database& database = call.wants_narrow_sensors ? narrow : usual;
      all.push_back(call.run(database.get(), call.material));
      database.put_back();
    }
    return all;
  }

  static void expect_alike(const std::vector<Call>& made, const std::vector<Answer>& one,
                           const std::vector<Answer>& other) {
    for (std::size_t i = 0; i < made.size(); ++i) {
      const bool goes_on = made[i].name == "GetUpTime";
      EXPECT_TRUE(one[i] == other[i] || goes_on) << made[i].name;
    }
  }

  static void create_job() {
    const Database database(image_of_all_tables());
    concrete_job_rec job = {};
    char identifier[sizeof(job.InstanceID)];
    db_set_concretejob(database.get(), &job, identifier);
  }

  std::atomic<int> busy = 0;
  const int rounds = amount(10, 200);
};

TEST_F(ThreadsTest, WithTwoFilesReadTheirOwn) {
  in_two_threads([this] { use(db_init, '1'); }, [this] { use(tmp_db_init, '2'); });
  figure("threads.rounds", rounds);
}

TEST_F(ThreadsTest, WithOneFileWaitForEachOther) {
  in_two_threads([this] { use(db_init, '1'); }, [this] { use(db_init, '1'); });
  const Connection db;
  EXPECT_EQ(1, number_of(db, "select count(*) from sel"));
  EXPECT_EQ("ok", text_of(db, "pragma integrity_check"));
  figure("threads.busy_traces", busy);
}

// Some of the functions keep something, which goes with the process.
TEST_F(ThreadsTest, GetFromEachFunctionWhatOneThreadGets) {
  in_child([] {
    const FixedFiles files;
    qmvctl::test::redirect_fixed_paths(files.folder());
    const std::vector<Call> made = allowed(calls_and_inserts());
    const std::vector<Answer> of_one = answers_to(made);
    const auto make = [&] {
      for (int round = 0; round < amount(2, 20); ++round) expect_alike(made, of_one, answers_to(made));
    };
    in_two_threads(make, make);
    figure("threads.functions", allowed(calls()).size());
    figure("threads.functions_excluded", calls().size() - allowed(calls()).size());
  });
}

// Were the sanitizer blind, the tests above would show nothing.
TEST_F(ThreadsTest, ThatCreateJobsAreReported) {
  if (&__tsan_init == nullptr) GTEST_SKIP() << "built without the thread sanitizer";
  constexpr int kOfTheSanitizer = 66;
  const auto create = [] {
    in_two_threads(create_job, create_job);
    std::exit(EXIT_SUCCESS);
  };
  EXPECT_EXIT(create(), testing::ExitedWithCode(kOfTheSanitizer), "data race.*db_set_concretejob");
}

}  // namespace
}  // namespace qmv::test
