// Every allocation of the library's own fails, once and from then on, in every function.
#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "torture/torture_test.h"

namespace qmv::test {
namespace {

// How a call ends when memory is short.
struct Short {
  std::int32_t status = 1;
  Handed handed = Handed::kNull;
  Left left = {.statements = 1};
  std::size_t traces = 1;
};

// The rule of both get-ones and of get-all, and those that depart from it.
const Short kRule;
const Short kAnswersSeven = {.status = 7};
const std::map<std::string, Short> kDepartures = {
    {"db_get_compact_sdr_by_entityid_entityinst", kAnswersSeven},
    {"db_get_compact_sdr", kAnswersSeven},
    {"db_get_full_sdr_by_entityid_entityinst", kAnswersSeven},
    {"db_get_full_sdr", kAnswersSeven},
    {"db_get_selinfo", kAnswersSeven},
    {"db_get_error_info", kAnswersSeven},
    {"db_get_all_error_info", kAnswersSeven},
    {"db_get_all_boot_order", kAnswersSeven},
    {"db_get_all_static_ip_assignment_settingdata", kAnswersSeven},
    {"db_get_clp_error_info", {.status = 7, .left = {}}},
    {"db_get_boot_source_setting", {.left = {}, .traces = 0}},
    // Their arrays come before their statements.
    {"db_get_all_listener_destination", {.status = 0, .left = {}}},
    {"db_get_all_indication_filter_cimxml", {.status = 0, .left = {}}},
    {"db_get_all_indication_subscription", {.status = 1, .left = {}}},
};

// Those that allocate in other ways: how often, and how they end when the n-th allocation fails, and all behind it.
struct Other {
  int allocations;
  std::function<Short(int nth, bool stays)> end;
};

// Most of them say and leave nothing.
constexpr Short silent(std::int32_t status, Handed handed, const Left& left = {}) {
  return {.status = status, .handed = handed, .left = left, .traces = 0};
}
constexpr Short kSilentFailure = silent(1, Handed::kNull);
constexpr Short kSilentSuccess = silent(0, Handed::kBlock);

// Five associations have twenty lists, four of them with two elements.
constexpr int kListsAndElements = 20 + 24;
// The records' own allocations among those of a loader whose array grows.
const std::set<int> kGrowths = {1, 12, 23, 32, 41};

const std::map<std::string, Other> kOthers = {
    // The compact sensors, the full ones, which are read in any case, and the assets.
    {"db_get_all_physicalasset_element",
     {3,
      [](int nth, bool stays) {
        if (nth == 3) return kSilentFailure;
        const bool both = nth == 1 && stays;
        return Short{.left = {.statements = both ? 2 : 1}, .traces = both ? 2u : 1u};
      }}},
    {"get_processor_from_db", {1, [](int, bool) { return kSilentFailure; }}},
    {"get_ps_from_db", {1, [](int, bool) { return kSilentFailure; }}},
    {"get_all_ps_from_db", {2, [](int, bool) { return kSilentFailure; }}},
    // The loaders fail without records: one clears its outs, the other leaves them. A list that memory was too short for stays short.
    {"assoc_get_global_data",
     {1 + kListsAndElements, [](int nth, bool) { return nth == 1 ? silent(1, Handed::kNothing) : kSilentSuccess; }}},
    {"get_association_data",
     {5 + kListsAndElements,
      [](int nth, bool stays) {
        const bool grows = stays ? nth <= *kGrowths.rbegin() : kGrowths.contains(nth);
        return grows ? kSilentFailure : kSilentSuccess;
      }}},
    {"fill_association_data", {4 + 6, [](int, bool) { return silent(0, Handed::kNothing); }}},
    {"free_global_structure",
     {1 + kListsAndElements, [](int nth, bool) { return silent(nth == 1 ? 1 : 0, Handed::kNothing); }}},
    {"GetArrayCount", {1 + 3, [](int nth, bool) { return silent(1, nth == 1 ? Handed::kNull : Handed::kBlock); }}},
    {"load_plugins", {1, [](int, bool) { return silent(1, Handed::kNothing); }}},
    // One for each column. The connection stays, as it does without a fault.
    {"GetColumnNames",
     {12,
      [](int nth, bool) {
        return silent(1, nth == 1 ? Handed::kNothing : Handed::kBlock, {.statements = 1, .texts = 1, .connections = 1});
      }}},
};

Short end_of(const std::string& name, int nth, bool stays) {
  if (const auto other = kOthers.find(name); other != kOthers.end()) return other->second.end(nth, stays);
  const auto departure = kDepartures.find(name);
  return departure == kDepartures.end() ? kRule : departure->second;
}

class AllocationFault : public Torture {
 protected:
  void fail_each(const std::function<void(const Trial& healthy, const Trial& trial, int nth, bool stays)>& expect) {
    alone([&] {
      const Trial healthy = learned();
      for (const bool stays : {false, true}) {
        for (int nth = 1; nth <= healthy.allocations; ++nth) {
          SCOPED_TRACE("allocation " + std::to_string(nth) + (stays ? " and all behind it" : ""));
          const auto faults = [&] {
            boundary().fail_allocation = nth;
            boundary().allocations_stay_failing = stays;
          };
          expect(healthy, tried(faults), nth, stays);
        }
      }
    });
  }

  const std::string& name() const { return GetParam().name; }
};

INSTANTIATE_TEST_SUITE_P(Each, AllocationFault, testing::ValuesIn(calls_and_inserts()), name_of);

TEST_P(AllocationFault, ComesOnceToThoseThatHandOutOneBlock) {
  alone([&] {
    const Trial trial = tried();
    const auto other = kOthers.find(name());
    const bool hands_out = trial.answer.handed == Handed::kBlock;
    EXPECT_EQ(other == kOthers.end() ? (hands_out ? 1 : 0) : other->second.allocations, trial.allocations);
  });
}

TEST_P(AllocationFault, EndsAsTheHeaderSays) {
  fail_each([&](const Trial&, const Trial& trial, int nth, bool stays) {
    const Short end = end_of(name(), nth, stays);
    if (trial.answer.status) {
      EXPECT_EQ(end.status, *trial.answer.status);
    }
    EXPECT_EQ(end.handed, trial.answer.handed);
    EXPECT_EQ(end.left, trial.left);
  });
}

TEST_P(AllocationFault, IsTracedAndNothingElseIsNew) {
  const bool has_detail = name() == "db_get_fru_info" || name() == "db_get_fru_locator_sdr_info";
  fail_each([&](const Trial& healthy, const Trial& trial, int nth, bool stays) {
    Lines others = trial.log;
    const std::string module = healthy.log.empty() ? "db_static_instance.c" : healthy.log.back().module;
    const LogLine trace = {kTraceLevel, module, has_detail ? "Memory allocation error: " : "Memory allocation error"};
    EXPECT_EQ(end_of(name(), nth, stays).traces, std::erase(others, trace));
    auto known = healthy.log.begin();
    for (const LogLine& line : others) {
      known = std::find(known, healthy.log.end(), line);
      ASSERT_NE(healthy.log.end(), known) << testing::PrintToString(line);
    }
    const bool is_printed = name() == "get_association_data" && trial.answer.status == 1;
    EXPECT_EQ(is_printed ? "\n Memory allocation error \n" : "", trial.printed);
  });
}

TEST_P(AllocationFault, OfGetAllComesAfterTheCount) {
  if (GetParam().shape != Shape::kGetAll) return;
  fail_each([&](const Trial& healthy, const Trial& trial, int, bool) {
    if (name() == "db_get_all_physicalasset_element") {
      EXPECT_EQ(0, trial.answer.number);
    } else if (name().find("_all_indication_") != std::string::npos || name() == "db_get_all_listener_destination") {
      EXPECT_EQ(kUntouched, trial.answer.number) << "written with the rows";
    } else {
      EXPECT_EQ(healthy.answer.number, trial.answer.number);
    }
  });
}

TEST_P(AllocationFault, LeavesTheCallAsItWas) {
  fail_each([&](const Trial& healthy, const Trial&, int, bool) { expect_works_as(healthy); });
}

}  // namespace
}  // namespace qmv::test
