// Writers that die in the middle of writing.
#include <atomic>
#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "../support/child.h"
#include "../support/figures.h"
#include "processes_test.h"
#include "sensors.h"

namespace qmv::test {
namespace {

constexpr int kRows = 5;

class KillsTest : public ProcessesTest {
 protected:
  // In place of the last one; the other file still has empty tables.
  void make_a_new_database() const {
    std::filesystem::remove(file("cim.db-journal"));
    std::filesystem::copy_file(file("tmp_cim.db"), file("cim.db"), std::filesystem::copy_options::overwrite_existing);
    *committed = 0;
  }

  static void store_all(sqlite3* db, int number) {
    for (int row = 0; row < kRows; ++row) {
      const compact_sdr_rec record = sensor("row " + std::to_string(row), number);
      EXPECT_EQ(0, db_set_compact_sdr_info(db, &record));
    }
  }

  // Gives all rows the next number, in one transaction, again and again.
  void write() const {
    const Connection db;
    for (int number = *committed + 1; !HasFailure(); ++number) {
      EXPECT_EQ(0, db_execute(db, "begin;"));
      store_all(db, number);
      EXPECT_EQ(0, db_commit(db));
      *committed = number;
    }
  }

  // Kills a writer at any moment after its first transactions.
  void kill_a_writer() {
    Child writer([this] { write(); });
    const int enough = *committed + std::uniform_int_distribution(1, 5)(chance);
    while (*committed < enough && writer.is_running()) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution(0, 3000)(chance)));
    writer.kill();
  }

  // A journal that is still there belongs to the transaction that was being written.
  bool died_in_the_middle() const {
    std::error_code none;
    const auto size = std::filesystem::file_size(file("cim.db-journal"), none);
    return !none && size > 0;
  }

  void expect_a_sound_file() const {
    const Connection db;
    ASSERT_EQ("ok", text_of(db, "pragma integrity_check"));
    const int number = stored_number(db, "row 0");
    EXPECT_TRUE(number == *committed || number == *committed + 1) << number << " after " << *committed;
    for (int row = 1; row < kRows; ++row) EXPECT_EQ(number, stored_number(db, "row " + std::to_string(row)));
    *committed = number;
  }

  const Shared<std::atomic<int>> committed;
  std::minstd_rand chance{std::random_device()()};
};

// Each has a database of its own.
TEST_F(KillsTest, LeaveASoundFileWithoutHalfRows) {
  const int kills = amount(20, 200);
  int all = 0;
  int in_the_middle = 0;
  int transactions = 0;
  for (; in_the_middle < kills && !HasFailure(); ++all) {
    ASSERT_LT(all, 20 * kills) << "hardly any writer dies in the middle";
    make_a_new_database();
    kill_a_writer();
    in_the_middle += died_in_the_middle();
    expect_a_sound_file();
    transactions += *committed;
  }
  figure("kills.all", all);
  figure("kills.in_the_middle_of_a_write", in_the_middle);
  figure("kills.transactions", transactions);
}

// What the test above would see if the library's connections had no journal: pages reach the file one by one.
TEST_F(KillsTest, WithoutAJournalHalvesAreLeft) {
  in_child([] {
    const Connection db;
    store_all(db, 1);
  });
  const Shared<std::atomic<bool>> changed;
  Child writer([&changed] {
    const Connection db;
    EXPECT_EQ(0, db_execute(db, "pragma journal_mode = off; pragma cache_size = 3; begin;"));
    store_all(db, 2);
    *changed = true;
    pause();
  });
  while (!*changed && writer.is_running()) std::this_thread::yield();
  writer.kill();
  const Connection db;
  int of_the_first = 0;
  int of_the_second = 0;
  for (int row = 0; row < kRows; ++row) {
    const int number = stored_number(db, "row " + std::to_string(row));
    of_the_first += number == 1;
    of_the_second += number == 2;
  }
  EXPECT_LT(of_the_first, kRows);
  EXPECT_LT(of_the_second, kRows);
}

}  // namespace
}  // namespace qmv::test
