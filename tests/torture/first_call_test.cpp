// The first call of a process, where a call remembers earlier ones: every probe has a process of its own.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "qmv.h"
#include "support/child.h"
#include "torture/ends.h"
#include "torture/failing.h"
#include "torture/tables.h"
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
    int errors = 0;
  } kinds[] = {{&Boundary::prepares, rules.prepares, 2, kCodes, 1},
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
          EXPECT_EQ(kind.errors, trial.errors());
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

// The newest job's identifier, as an expression, and the number that the next job gets.
struct Newest {
  const char* identifier;
  std::int32_t next;
};

const Newest kNewest[] = {
    // BLOBs: "job-42", with a zero behind it, and nothing.
    {"x'6a6f622d3432'", 43},
    {"x'6a6f622d34320039'", 43},
    {"x''", 1},
    // Texts with a zero, and with bytes that are no UTF-8.
    {"'job-42' || char(0) || '-7'", 43},
    {"cast(x'ff2d3432fe' as text)", 43},
    {"cast(x'2dc32d3432' as text)", 43},
    // Texts far longer than an identifier.
    {"printf('%.*c', 99997, 'j') || '-42'", 43},
    {"printf('%.*c', 100000, '-')", 1},
    {"'job-' || printf('%.*c', 99994, '0') || '42'", 43},
    // What begins with a number, or with none.
    {"'job--42'", 43},
    {"'job- +42nd'", 43},
    {"'job-0x42'", 1},
    {"'job'", 1},
    {"''", 1},
    {"-42", 43},
    // Behind the largest number comes 1, and those beyond it count as it.
    {"'job-2147483646'", 2147483647},
    {"'job-2147483647'", 1},
    {"'job-4294967338'", 1},
    {"'job-' || printf('%.*c', 99996, '9')", 1},
};

TEST_P(FirstCall, ReadsTheNumberOfTheNewestJobWhateverItsIdentifierIs) {
  for (const Newest& newest : kNewest) {
    SCOPED_TRACE(newest.identifier);
    in_child([&] {
      rows(db(), "update concrete_job set InstanceID = " + std::string(newest.identifier) + " where rowid = 5;");
      concrete_job_rec job = {};
      std::strcpy(job.InstanceID, "job");
      char identifier[sizeof(job.InstanceID)];
      EXPECT_EQ(0, db_set_concretejob(db(), &job, identifier));
      EXPECT_EQ("job-" + std::to_string(newest.next), identifier);
    });
  }
}

}  // namespace
}  // namespace qmv::test
