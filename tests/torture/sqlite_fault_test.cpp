// The n-th call of each kind that a function makes to SQLite fails, with every code that it can fail with, or a prepare
// succeeds without a statement.
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "torture/ends.h"
#include "torture/torture_test.h"

namespace qmv::test {
namespace {

// Those that say nothing of a statement that does not compile.
const std::set<std::string> kSilent = {
    "db_get_clp_error_info", "get_processor_from_db", "get_ps_from_db",        "get_all_ps_from_db",
    "assoc_get_global_data", "get_association_data",  "free_global_structure", "load_plugins",
    "get_row_count",         "get_static_instances",  "GetColumnNames",        "GetColumnValues",
};

class SqliteFault : public Torture {
 protected:
  // Lets the first of these calls answer with each of the codes, the second, and so on, until the function makes fewer.
  void expect_ends(
      Faults Boundary::*calls, const std::vector<int>& codes, const std::vector<End>& ends,
      const std::function<int(int nth)>& errors = [](int) { return 0; }) {
    alone([&] {
      const Trial healthy = learned();
      for (int nth = 1; !HasFailure(); ++nth) {
        Lines said;
        for (const int code : codes) {
          SCOPED_TRACE("call " + std::to_string(nth) + " answers " + std::to_string(code));
          const Trial trial = tried([&] { boundary().*calls = {{nth, code}}; });
          if (!(boundary().*calls).empty()) return expect_all_met(ends, nth - 1);
          expect_end(end_of(ends, nth), code, trial);
          EXPECT_EQ(errors(nth), trial.errors());
          if (code == codes.front()) said = trial.log;
          EXPECT_EQ(said, trial.log) << "whatever the code";
          expect_whole_statements();
          put_back();
          expect_works_as(healthy);
          put_back();
        }
      }
    });
  }

 private:
  // The rules of steps that are not made prove nothing. Inserts make fewer steps, the later calls of those that remember
  // too, and the get-ones of the joins do not compile.
  static void expect_all_met(const std::vector<End>& ends, int met) {
    const std::string name = GetParam().name;
    const bool makes_fewer = name.ends_with("_inserts") || GetParam().remembers || name == "db_get_fru_compact_sdr" ||
                             name == "db_get_fru_full_sdr";
    if (!makes_fewer) {
      EXPECT_LE(static_cast<int>(ends.size()), met);
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Each, SqliteFault, testing::ValuesIn(calls_and_inserts()), name_of);

TEST_P(SqliteFault, OfPrepareIsAnError) {
  const bool is_silent = kSilent.contains(GetParam().name);
  expect_ends(&Boundary::prepares, kCodes, rules_of(GetParam()).prepares, [=](int) { return is_silent ? 0 : 1; });
}

// Some get-alls need the statement that reads.
TEST_P(SqliteFault, OfPrepareWithoutAStatementIsNone) {
  const bool needs = GetParam().name.find("_all_indication_") != std::string::npos ||
                     GetParam().name == "db_get_all_listener_destination";
  expect_ends(&Boundary::prepares, {SQLITE_OK}, rules_of(GetParam()).missing,
              [=](int nth) { return needs && nth == 2 ? 1 : 0; });
}

TEST_P(SqliteFault, OfStepIsNoError) {
  expect_ends(&Boundary::steps, kCodes, rules_of(GetParam()).steps);
}

TEST_P(SqliteFault, OfFinalizeIsNoError) {
  expect_ends(&Boundary::finalizes, kCodes, rules_of(GetParam()).finalizes);
}

TEST_P(SqliteFault, OfExecIsNoError) {
  expect_ends(&Boundary::execs, kCodes, rules_of(GetParam()).execs);
}

TEST_P(SqliteFault, OfOpenIsToldTwiceByThoseThatOpenForTheHost) {
  const bool for_the_host = GetParam().name.ends_with("db_init");
  std::vector<int> codes = kCodes;
  std::erase(codes, SQLITE_NOMEM);
  expect_ends(&Boundary::opens, codes, rules_of(GetParam()).opens, [=](int) { return for_the_host ? 2 : 0; });
}

TEST_P(SqliteFault, OfOpenWithoutMemoryLeavesNoConnection) {
  alone([&] {
    const Trial trial = tried([] { boundary().opens = {{1, SQLITE_NOMEM}}; });
    if (!boundary().opens.empty()) return;
    const End& end = end_of(rules_of(GetParam()).opens, 1);
    expect_end(End(end.status), SQLITE_NOMEM, trial);
  });
}

TEST_P(SqliteFault, OfTheCountLeavesTheOutsOfGetAll) {
  if (GetParam().shape != Shape::kGetAll) return;
  const bool clears = GetParam().name == "db_get_all_physicalasset_element";
  for (const auto calls : {&Boundary::prepares, &Boundary::steps, &Boundary::finalizes}) {
    const Trial trial = tried([&] { boundary().*calls = {{1, SQLITE_IOERR}}; });
    EXPECT_NE(Handed::kBlock, trial.answer.handed);
    EXPECT_EQ(clears ? 0 : kUntouched, trial.answer.number);
  }
}

TEST_P(SqliteFault, OfPrepareAndStepLeavesTheRecordOfGetOne) {
  if (GetParam().shape != Shape::kGetOne) return;
  for (const auto calls : {&Boundary::prepares, &Boundary::steps}) {
    const Trial trial = tried([&] { boundary().*calls = {{1, SQLITE_IOERR}}; });
    if (!(boundary().*calls).empty()) continue;
    EXPECT_EQ(Handed::kNothing, trial.answer.handed);
    EXPECT_EQ(std::string::npos, trial.answer.content.find_first_not_of(GetParam().material.fill));
    EXPECT_EQ(1, trial.answer.number.value_or(1)) << "where there is one, it is 1 on every path";
  }
}

}  // namespace
}  // namespace qmv::test
