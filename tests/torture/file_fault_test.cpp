// The n-th opening, reading, writing and so on of a file fails, once and from then on. When files are well again, the
// database is sound and every statement took effect or did not.
#include <sqlite3.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/figures.h"
#include "torture/ends.h"
#include "torture/failing.h"
#include "torture/tables.h"
#include "torture/torture_test.h"

namespace qmv::test {
namespace {

// What SQLite answers when a file fails, or a step for it without more detail.
const std::set<int> kFileCodes = {SQLITE_ERROR, SQLITE_IOERR, SQLITE_FULL, SQLITE_CANTOPEN};

// The calls that are given a connection get one to a file, which has read nothing so far.
class FileFault : public FaultBelow {
 protected:
  void connect() override {
    ASSERT_EQ(SQLITE_OK, __real_sqlite3_open((fixed_files().folder() + "/" + given()).c_str(), &connection_));
  }
  void disconnect() override { close_with_statements(std::exchange(connection_, nullptr)); }
  sqlite3* db() override { return connection_; }
  std::string file() const override { return Torture::file().empty() ? given() : Torture::file(); }

  // Fails every use of that kind, once and from then on.
  void expect_survived(Use use) {
    alone([&] {
      const Trial healthy = learned_with_ends();
      EXPECT_EQ(changes_rows(), writes());
      for (const bool stays : {false, true}) {
        int nth = 1;
        while (!HasFailure() && probe(healthy, use, {nth, stays})) ++nth;
        EXPECT_EQ(makes(use, healthy), nth > 1) << "whether it makes such uses";
      }
    });
  }

 private:
  static std::string given() { return GetParam().wants_narrow_sensors ? "narrow.db" : "all.db"; }

  // The purge has no connection of its caller's, and an event type has nothing but its key to update.
  static bool changes_rows() {
    const std::string& name = GetParam().name;
    return name == "db_clear_expired_concretejob" || (is_writer(GetParam()) && name != "db_set_EventType_Data");
  }

  // Opening reads the beginning of the file; every statement reads and locks, except one that is no SQL. Only writers
  // open a journal, write and delete it; that of a commit is open.
  bool makes(Use use, const Trial& healthy) const {
    const std::string& name = GetParam().name;
    const bool opens = !rules_of(GetParam()).opens.empty();
    const bool runs = !healthy.statements.empty() && name != "db_del_sdr";
    const bool changes = is_writer(GetParam()) || writes();
    switch (use) {
      case Use::kRead:
        return opens || runs;
      case Use::kLock:
        return runs;
      case Use::kOpen:
        return opens || (changes && name != "db_commit");
      default:
        return changes;
    }
  }

  // Whether the use is made.
  bool probe(const Trial& healthy, Use use, const Failing& fault) {
    SCOPED_TRACE("use " + std::to_string(fault.nth) + (fault.stays ? " and all behind it" : ""));
    const Trial trial = tried([&] { failing(use) = fault; });
    if (trial.failed == 0) {
      put_back();
      return false;
    }
    expect_known_end(healthy, trial, kFileCodes);
    EXPECT_EQ(Texts({"ok"}), rows(store(), "pragma integrity_check;"));
    expect_whole_statements();
    put_back();
    expect_works_as(healthy);
    put_back();
    return true;
  }

  sqlite3* connection_ = nullptr;
};

// Writers by one statement and by several, readers of every shape, and all that open files themselves; or everything.
std::vector<Call> calls_on_files() {
  static const std::set<std::string> kChosen = {
      "db_set_role",    "db_set_role_inserts", "db_set_indication_filter_cimxml", "db_addsel",   "db_delete_static_ip",
      "db_commit",      "db_get_all_fru_info", "db_get_all_fru_compact_sdr",      "db_get_elec", "db_get_role",
      "db_get_fru_cnt",
  };
  std::vector<Call> all = calls_and_inserts();
  if (!runs_in_full()) {
    std::erase_if(all, [](const Call& call) { return !kChosen.contains(call.name) && rules_of(call).opens.empty(); });
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(Each, FileFault, testing::ValuesIn(calls_on_files()), name_of);

TEST_P(FileFault, OfOpenIsSurvived) {
  expect_survived(Use::kOpen);
}

TEST_P(FileFault, OfReadIsSurvived) {
  expect_survived(Use::kRead);
}

TEST_P(FileFault, OfWriteIsSurvived) {
  expect_survived(Use::kWrite);
}

TEST_P(FileFault, OfAFullFileSystemIsSurvived) {
  expect_survived(Use::kFull);
}

TEST_P(FileFault, OfSyncIsSurvived) {
  expect_survived(Use::kSync);
}

TEST_P(FileFault, OfLockIsSurvived) {
  expect_survived(Use::kLock);
}

TEST_P(FileFault, OfDeleteIsSurvived) {
  expect_survived(Use::kDelete);
}

}  // namespace
}  // namespace qmv::test
