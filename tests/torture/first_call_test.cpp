// The first call of a process, where a call remembers earlier ones: every probe has a process of its own.
#include <string>
#include <vector>

#include "support/child.h"
#include "torture/ends.h"
#include "torture/failing.h"
#include "torture/torture_test.h"

namespace qmv::test {
namespace {

class FirstCall : public Torture {};

INSTANTIATE_TEST_SUITE_P(Each, FirstCall, testing::ValuesIn(calls_that_remember()), name_of);

TEST_P(FirstCall, EndsAsTheHeaderSaysWhenSqliteFails) {
  const Rules& rules = rules_of(GetParam());
  const struct {
    Faults Boundary::*calls;
    const std::vector<End>& ends;
    int made;
    std::vector<int> codes;
  } kinds[] = {{&Boundary::prepares, rules.prepares, 2, kCodes},
               {&Boundary::prepares, rules.missing, 2, {SQLITE_OK}},
               {&Boundary::steps, rules.steps, 2, kCodes},
               {&Boundary::finalizes, rules.finalizes, 2, kCodes},
               {&Boundary::execs, rules.execs, 1, kCodes}};
  for (const auto& kind : kinds) {
    for (int nth = 1; nth <= kind.made; ++nth) {
      for (const int code : kind.codes) {
        SCOPED_TRACE("call " + std::to_string(nth) + " answers " + std::to_string(code));
        in_child([&] {
          const Trial trial = tried([&] { boundary().*kind.calls = {{nth, code}}; });
          EXPECT_TRUE((boundary().*kind.calls).empty()) << "it is made";
          expect_end(end_of(kind.ends, nth), code, trial);
          EXPECT_EQ(0, tried().answer.status) << "the next one";
        });
      }
    }
  }
}

TEST_P(FirstCall, SurvivesSqliteWithoutMemory) {
  const Shared<bool> failed;
  for (const bool stays : {false, true}) {
    int nth = 0;
    const auto probe = [&] {
      const Trial trial = tried([&] { failing(Use::kAllocation) = {nth, stays}; });
      *failed = trial.failed != 0;
      EXPECT_TRUE(trial.answer.status == 0 || trial.answer.status == 1);
      EXPECT_LE(trial.left.statements, 1);
      EXPECT_EQ(Left({.statements = trial.left.statements}), trial.left);
      EXPECT_EQ(0, tried().answer.status) << "the next one";
    };
    do {
      SCOPED_TRACE("allocation " + std::to_string(++nth));
      in_child(probe);
    } while (*failed && !HasFailure());
    EXPECT_LT(10, nth) << "there are allocations";
  }
}

}  // namespace
}  // namespace qmv::test
