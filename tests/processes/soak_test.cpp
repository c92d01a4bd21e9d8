// A process that goes on for years.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "../support/child.h"
#include "../support/figures.h"
#include "../torture/calls.h"
#include "../torture/tables.h"
#include "host.h"
#include "memory.h"
#include "processes_test.h"

namespace qmv::test {
namespace {

class SoakTest : public ProcessesTest {
 protected:
  struct Calls {
    int writes = 0;
    int reads = 0;
  };

  // What keeps something by contract, whatever it is called with.
  static inline const std::set<std::string> kKeeping = {"db_del_sdr", "db_del_sel", "db_get_sesstion_term_seq",
                                                        "GetColumnNames", "GetColumnValues"};

  // All the others. Events are added without a deletion, which keeps nothing.
  static std::vector<Call> all_calls() {
    std::vector<Call> all = calls_and_inserts();
    std::erase_if(all, [](const Call& call) { return kKeeping.contains(call.name); });
    for (Call& call : all) {
      if (call.name.starts_with("db_add")) call.material.number = 0;
    }
    return all;
  }

  template <class Property>
  static std::vector<Call> calls_that(Property property) {
    std::vector<Call> found = all_calls();
    std::erase_if(found, [property](const Call& call) { return !property(call); });
    return found;
  }

  static bool writes(const Call& call) { return call.shape == Shape::kSet || is_writer(call); }
  static bool is_given_nothing(const Call& call) { return call.shape == Shape::kOther && !writes(call); }
  static bool reads(const Call& call) { return !writes(call) && !is_given_nothing(call); }

  void put_back(const std::string& name, const std::string& image) const {
    std::ofstream(file(name), std::ios::binary) << image;
  }

  // Each write once, on new connections and with the rows that deletes took. Before it come ten reads, one of them by a
  // function that opens a file itself, or none.
  void make_a_round(int writes_to_do, Calls& made) const {
    put_back("cim.db", image_of_all_tables());
    const Connection usual;
    const Connection narrow(smash_db_init);
    do_not_wait_for_the_disk(usual);
    const auto run = [&](const Call& call, int& count) {
      call.run(call.wants_narrow_sensors ? narrow : usual, call.material);
      ++count;
    };
    const auto read_next = [&](const std::vector<Call>& calls, int turn) {
      run(calls[static_cast<std::size_t>(turn) % calls.size()], made.reads);
    };
    for (const Call& write : writing) {
      if (made.writes == writes_to_do) return;
      for (int read = 0; read < 9; ++read) read_next(reading, 9 * made.writes + read);
      read_next(others, made.writes);
      run(write, made.writes);
    }
  }

  Calls use(int writes_to_do) const {
    for (const char* name : {"tmp_cim.db", "Association.db"}) put_back(name, image_of_all_tables());
    put_back("smashclp.db", image_with_narrow_sensors());
    Calls made;
    while (made.writes < writes_to_do) make_a_round(writes_to_do, made);
    return made;
  }

  const std::vector<Call> writing = calls_that(writes);
  const std::vector<Call> reading = calls_that(reads);
  const std::vector<Call> others = calls_that(is_given_nothing);
};

// In a process of its own, which the number of the last job belongs to.
TEST_F(SoakTest, KeepsMemoryAndDescriptorsFlat) {
  in_child([this] {
    const int writes = amount(500, 100'000);
    use(std::max(writes / 10, static_cast<int>(writing.size())));
    const int errors_before = errors();
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
    EXPECT_EQ(errors_before, errors()) << "every statement compiles";

    figure("soak.functions", calls().size() - kKeeping.size());
    figure("soak.reads", made.reads);
    figure("soak.writes", made.writes);
    figure("soak.seconds", elapsed.count());
    figure("soak.heap_bytes_before", heap_before);
    figure("soak.heap_bytes_after", heap_after);
    figure("soak.resident_kib_before", resident_before);
    figure("soak.resident_kib_after", resident_after);
    figure("soak.descriptors_before", before.descriptors);
    figure("soak.descriptors_after", after.descriptors);
  });
}

}  // namespace
}  // namespace qmv::test
