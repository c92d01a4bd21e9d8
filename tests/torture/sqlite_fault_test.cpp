// The n-th call of each kind that a function makes to SQLite fails, with every code that it can fail with, or a prepare
// succeeds without a statement.
#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
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

  static int errors_of_open() { return GetParam().name.ends_with("db_init") ? 2 : 0; }

 private:
  // The rules of steps that are not made prove nothing. Inserts make fewer steps, and the later calls of those that
  // remember.
  static void expect_all_met(const std::vector<End>& ends, int met) {
    const bool makes_fewer = GetParam().name.ends_with("_inserts") || GetParam().remembers;
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

TEST_P(SqliteFault, OfExecEndsTheCallsThatTell) {
  alone([&] {
    for (int nth = 1;; ++nth) {
      SCOPED_TRACE("execution " + std::to_string(nth));
      put_back();
      const Trial trial = tried([&] { boundary().execs = {{nth, SQLITE_FULL}}; });
      if (!boundary().execs.empty()) break;
      const std::size_t prepared = boundary().tails.size();
      if (end_of(rules_of(GetParam()).execs, nth).status == 0) continue;
      EXPECT_EQ(prepared + static_cast<std::size_t>(nth), trial.statements.size());
    }
    put_back();
  });
}

TEST_P(SqliteFault, OfOpenIsToldTwiceByThoseThatOpenForTheHost) {
  std::vector<int> codes = kCodes;
  std::erase(codes, SQLITE_NOMEM);
  expect_ends(&Boundary::opens, codes, rules_of(GetParam()).opens, [](int) { return errors_of_open(); });
}

TEST_P(SqliteFault, OfOpenWithoutMemoryLeavesNoConnection) {
  alone([&] {
    const Trial trial = tried([] { boundary().opens = {{1, SQLITE_NOMEM}}; });
    if (!boundary().opens.empty()) return;
    const End& end = end_of(rules_of(GetParam()).opens, 1);
    expect_end(End(end.status), SQLITE_NOMEM, trial);
    EXPECT_EQ(errors_of_open(), trial.errors());
  });
}

// It is prepared all the same, which is misuse to SQLite, or executed as nothing; statements are prepared before others
// are executed. What becomes of one that is formatted twice, its own tests say.
TEST_P(SqliteFault, OfATextIsOneOfItsStatement) {
  alone([&] {
    for (int nth = 1;; ++nth) {
      SCOPED_TRACE("text " + std::to_string(nth));
      put_back();
      const Trial trial = tried([&] { boundary().fail_text = nth; });
      if (boundary().fail_text != 0) break;
      const auto prepared = static_cast<int>(boundary().tails.size());
      const auto given = std::find(trial.statements.begin(), trial.statements.end(), "(null)");
      if (given == trial.statements.end()) continue;
      const int statement = static_cast<int>(given - trial.statements.begin()) + 1;
      put_back();
      Trial expected = tried([&] {
        if (statement <= prepared) boundary().prepares = {{statement, SQLITE_MISUSE}};
        if (statement > prepared) boundary().execs = {{statement - prepared, SQLITE_OK}};
      });
      expected.left.texts = trial.left.texts;  // what is not there cannot be left
      expect_same_end(expected, trial);
    }
    put_back();
  });
}

TEST_P(SqliteFault, OfCountLeavesNoNumberUnlessItComesAtTheEnd) {
  if (GetParam().shape != Shape::kCount) return;
  // Those whose number is no count, and stays as it is.
  static const std::set<std::string> kReadValues = {"db_get_recordid_by_sensor_num",
                                                    "db_check_is_entity_id_not_equals_to_sen_type"};
  const int none = kReadValues.contains(GetParam().name) ? kUntouched : 0;
  EXPECT_EQ(none, tried([] { boundary().prepares = {{1, SQLITE_IOERR}}; }).answer.number);
  EXPECT_EQ(none, tried([] { boundary().prepares = {{1, SQLITE_OK}}; }).answer.number) << "without a statement";
  EXPECT_EQ(none, tried([] { boundary().steps = {{1, SQLITE_IOERR}}; }).answer.number);
  EXPECT_EQ(tried().answer.number, tried([] { boundary().finalizes = {{1, SQLITE_IOERR}}; }).answer.number);
}

// What get-alls hand out; the assets are those of two get-alls.
class SqliteFaultOfGetAll : public Torture {
 protected:
  void expect_outs(std::optional<std::int32_t> number, Handed handed, const Trial& trial) {
    EXPECT_EQ(number, trial.answer.number);
    EXPECT_EQ(handed, trial.answer.handed);
  }

  // What the pointer is without an array.
  static Handed no_array() {
    static const std::set<std::string> kCleared = {
        "db_get_all_boot_order",
        "db_get_all_compact_sdrs",
        "db_get_all_compact_sdrs_by_phy_elem_type",
        "db_get_all_concretejob",
        "db_get_all_fru_compact_sdr",
        "db_get_all_fru_full_sdr",
        "db_get_all_fru_info",
        "db_get_all_full_sdrs",
        "db_get_all_full_sdrs_by_phy_elem_type",
        "db_get_all_memory",
        "db_get_all_physicalasset_element",
        "db_get_all_processor",
        "db_get_all_protocol_service",
        "db_get_all_pwds_capablities",
        "db_get_all_redundancyset",
        "db_get_all_sel_records",
    };
    return kCleared.contains(GetParam().name) ? Handed::kNull : Handed::kNothing;
  }

  // Some make the array before the statement and write the number with the rows.
  static bool has_array_first() {
    return GetParam().name.find("_all_indication_") != std::string::npos ||
           GetParam().name == "db_get_all_listener_destination";
  }

  static bool is_of_assets() { return GetParam().name == "db_get_all_physicalasset_element"; }

  // The joins read inventory strings in between.
  static bool steps_once_a_row() { return GetParam().name.find("_all_fru_") == std::string::npos; }

  const Trial healthy = tried();
  const std::string& records = healthy.answer.content;
};

INSTANTIATE_TEST_SUITE_P(Each, SqliteFaultOfGetAll, testing::ValuesIn(calls_of(Shape::kGetAll)), name_of);

TEST_P(SqliteFaultOfGetAll, InTheCountLeavesTheOuts) {
  const int untouched = is_of_assets() ? 0 : kUntouched;
  for (const auto calls : {&Boundary::prepares, &Boundary::steps, &Boundary::finalizes})
    expect_outs(untouched, no_array(), tried([&] { boundary().*calls = {{1, SQLITE_IOERR}}; }));
}

TEST_P(SqliteFaultOfGetAll, InItsPrepareComesBehindTheNumberAndBeforeTheArray) {
  if (is_of_assets()) return;
  const Trial trial = tried([] { boundary().prepares = {{2, SQLITE_IOERR}}; });
  if (has_array_first()) return expect_outs(kUntouched, Handed::kBlock, trial);
  expect_outs(healthy.answer.number, no_array(), trial);
}

TEST_P(SqliteFaultOfGetAll, ThatHasNoStatementLeavesZeroedRecords) {
  if (is_of_assets()) return;
  const Trial trial = tried([] { boundary().prepares = {{2, SQLITE_OK}}; });
  if (has_array_first()) return expect_outs(kUntouched, Handed::kBlock, trial);
  expect_outs(healthy.answer.number, Handed::kBlock, trial);
  EXPECT_TRUE(trial.answer.content == std::string(records.size(), 0));
}

TEST_P(SqliteFaultOfGetAll, InAStepLeavesZeroedRecordsBehindTheLastRow) {
  if (is_of_assets() || !steps_once_a_row()) return;
  const std::size_t size = records.size() / static_cast<std::size_t>(*healthy.answer.number);
  for (int nth = 2;; ++nth) {
    SCOPED_TRACE("step " + std::to_string(nth));
    const Trial trial = tried([&] { boundary().steps = {{nth, SQLITE_IOERR}}; });
    if (!boundary().steps.empty()) break;
    expect_outs(healthy.answer.number, Handed::kBlock, trial);
    std::string read = records.substr(0, static_cast<std::size_t>(nth - 2) * size);
    read.resize(records.size());
    EXPECT_TRUE(read == trial.answer.content);
  }
}

TEST_P(SqliteFaultOfGetAll, InItsFinalizeLeavesAllRecords) {
  if (is_of_assets()) return;
  const Trial trial = tried([] { boundary().finalizes = {{2, SQLITE_IOERR}}; });
  expect_outs(healthy.answer.number, Handed::kBlock, trial);
  EXPECT_TRUE(records == trial.answer.content);
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
