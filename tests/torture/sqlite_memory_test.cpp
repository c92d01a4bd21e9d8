// Every allocation of SQLite's own fails, once and from then on, in every function; every seventh in the short form.
#include <set>
#include <string>

#include "support/figures.h"
#include "torture/ends.h"
#include "torture/failing.h"
#include "torture/torture_test.h"

namespace qmv::test {
namespace {

constexpr int kStride = 7;

class SqliteMemoryFault : public FaultBelow {
 protected:
  // What SQLite answers without memory, or a step without more detail.
  const std::set<int> kMemoryCodes = {SQLITE_ERROR, SQLITE_NOMEM};

  void expect_all_survived(bool stays) {
    alone([&] {
      const Trial healthy = learned_with_ends();
      for (int nth = 1; !HasFailure(); nth += amount(kStride, 1)) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        const Trial trial = tried([&] { failing(Use::kAllocation) = {nth, stays}; });
        if (trial.failed == 0) break;
        expect_known_end(healthy, trial, kMemoryCodes);
        expect_whole_statements();
        put_back();
        expect_works_as(healthy);
        put_back();
      }
    });
  }
};

INSTANTIATE_TEST_SUITE_P(Each, SqliteMemoryFault, testing::ValuesIn(calls_and_inserts()), name_of);

TEST_P(SqliteMemoryFault, OnceIsSurvived) {
  expect_all_survived(false);
}

TEST_P(SqliteMemoryFault, FromThenOnIsSurvived) {
  expect_all_survived(true);
}

}  // namespace
}  // namespace qmv::test
