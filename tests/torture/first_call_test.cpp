// The first call of a process, where a call remembers earlier ones: every probe has a process of its own.
#include <string>
#include <vector>

#include "torture/ends.h"
#include "torture/failing.h"
#include "torture/own_process.h"
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
        in_own_process([&] {
          const Trial trial = tried([&] { boundary().*kind.calls = {{nth, code}}; });
          EXPECT_TRUE((boundary().*kind.calls).empty()) << "it is made";
          expect_end(end_of(kind.ends, nth), code, trial);
          EXPECT_EQ(0, tried().answer.status) << "the next one";
          return true;
        });
      }
    }
  }
}

TEST_P(FirstCall, SurvivesSqliteWithoutMemory) {
  for (const bool stays : {false, true}) {
    const auto probe = [&](int nth) {
      SCOPED_TRACE("allocation " + std::to_string(nth));
      const Trial trial = tried([&] { failing(Use::kAllocation) = {nth, stays}; });
      EXPECT_TRUE(trial.answer.status == 0 || trial.answer.status == 1);
      EXPECT_LE(trial.left.statements, 1);
      EXPECT_EQ(Left({.statements = trial.left.statements}), trial.left);
      EXPECT_EQ(0, tried().answer.status) << "the next one";
      return trial.failed != 0;
    };
    int nth = 1;
    while (!HasFailure() && in_own_process([&] { return probe(nth); })) ++nth;
    EXPECT_LT(10, nth) << "there are allocations";
  }
}

}  // namespace
}  // namespace qmv::test
