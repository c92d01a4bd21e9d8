// A process that goes on for years.
#include <chrono>

#include "../support/figures.h"
#include "memory.h"
#include "processes_test.h"
#include "traffic.h"

namespace qmv::test {
namespace {

class SoakTest : public ProcessesTest {
 protected:
  SoakTest() { traffic::make_rows(); }

  struct Calls {
    int writes = 0;
    int reads = 0;
  };

  // The next of the calls, in turn, and counts it.
  static void call(std::span<const traffic::Call> calls, int turn, sqlite3* db, int& count) {
    calls[static_cast<std::size_t>(turn) % calls.size()](db, '1');
    ++count;
  }

  // Ten reads for each write, one of them by a path; before them, each write once.
  static Calls use(int writes_to_do) {
    const Connection db;
    do_not_wait_for_the_disk(db);
    for (const traffic::Call write : traffic::writes()) write(db, '1');
    Calls made;
    for (int i = 0; i < writes_to_do; ++i) {
      call(traffic::writes(), i, db, made.writes);
      for (int read = 0; read < 9; ++read) call(traffic::reads(), 9 * i + read, db, made.reads);
      call(traffic::reads_by_path(), i, db, made.reads);
    }
    return made;
  }
};

TEST_F(SoakTest, KeepsMemoryAndDescriptorsFlat) {
  const int writes = amount(500, 100'000);
  use(writes / 10);
  const Held before = held();
  const std::size_t heap_before = heap_bytes();
  const std::size_t resident_before = resident_kib();
  const auto start = std::chrono::steady_clock::now();
  const Calls made = use(writes);
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  const Held after = held();
  const std::size_t heap_after = heap_bytes();
  const std::size_t resident_after = resident_kib();

  EXPECT_EQ(before, after);
  EXPECT_EQ(heap_before, heap_after);
  if (!is_instrumented()) {
    EXPECT_LE(resident_after, resident_before + 1024);
  }

  figure("soak.reads", made.reads);
  figure("soak.writes", made.writes);
  figure("soak.seconds", elapsed.count());
  figure("soak.heap_bytes_before", heap_before);
  figure("soak.heap_bytes_after", heap_after);
  figure("soak.resident_kib_before", resident_before);
  figure("soak.resident_kib_after", resident_after);
  figure("soak.descriptors_before", before.descriptors);
  figure("soak.descriptors_after", after.descriptors);
}

}  // namespace
}  // namespace qmv::test
