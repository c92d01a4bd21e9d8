#include "torture/ends.h"

#include <algorithm>
#include <string>

namespace qmv::test {

namespace {

std::vector<End> all_ends(const Rules& rules) {
  std::vector<End> all;
  for (const auto& ends : {rules.opens, rules.prepares, rules.missing, rules.steps, rules.finalizes, rules.execs})
    all.insert(all.end(), ends.begin(), ends.end());
  return all;
}

std::set<std::int32_t> possible_statuses(const Call& call, const Trial& healthy, const std::set<int>& codes) {
  std::set<std::int32_t> possible = {healthy.answer.status.value_or(0)};
  // A text that could not be formatted is executed as nothing at all, with success.
  if (call.shape == Shape::kSet || call.shape == Shape::kExecute) possible.insert(0);
  for (const End& end : all_ends(rules_of(call))) {
    if (end.status == kCode) {
      possible.insert(codes.begin(), codes.end());
    } else {
      possible.insert(end.status);
    }
  }
  return possible;
}

std::set<Left> possible_remains(const Call& call, const Trial& healthy) {
  std::set<Left> possible = {healthy.left, Left()};
  if (call.name == "db_get_all_physicalasset_element") possible.insert({.statements = 2});  // it counts twice
  for (const End& end : all_ends(rules_of(call))) possible.insert(end.left);
  return possible;
}

// Whether a call may report success and not have read all.
bool may_be_incomplete(const Call& call) {
  static const std::set<std::string> kNames = {
      // A missing row, missing inventory strings or an interrupted reading are no errors to them.
      "db_get_fru_by_entity_id",
      "db_get_pwds_capablities",
      "db_get_req_state_change",
      "db_get_all_fru_compact_sdr",
      "db_get_all_fru_full_sdr",
      "db_get_all_listener_destination",
      "db_get_all_indication_filter_cimxml",
      "db_get_all_indication_subscription",
      "db_get_sesstion_term_seq",
      "get_all_ps_from_db",
      "assoc_get_global_data",
      "get_association_data",
      "fill_association_data",
      "free_global_structure",
      "load_plugins",
      "get_static_instances",
      "GetColumnNames",
      "GetColumnValues",
      // They read integers as texts, which takes memory; without it a text is NULL, and a NULL text is empty.
      "db_get_selinfo",
      "db_get_dhcp_protocol_endpoint",
  };
  return kNames.contains(call.name);
}

}  // namespace

const std::vector<int> kCodes = {SQLITE_ERROR, SQLITE_BUSY,    SQLITE_LOCKED, SQLITE_NOMEM,    SQLITE_READONLY,
                                 SQLITE_IOERR, SQLITE_CORRUPT, SQLITE_FULL,   SQLITE_CANTOPEN, SQLITE_MISUSE};

void expect_end(const End& end, int code, const Trial& trial) {
  if (trial.answer.status) {
    EXPECT_EQ(end.status == kCode ? code : end.status, *trial.answer.status);
  }
  EXPECT_EQ(end.left, trial.left);
}

void expect_possible(const Call& call, const Trial& healthy, const Trial& trial, const std::set<int>& codes) {
  const std::int32_t status = trial.answer.status.value_or(0);
  EXPECT_TRUE(possible_statuses(call, healthy, codes).contains(status)) << status;
  EXPECT_TRUE(possible_remains(call, healthy).contains(trial.left)) << testing::PrintToString(trial.left);
  if (trial.answer.status == healthy.answer.status && !may_be_incomplete(call)) {
    EXPECT_TRUE(trial.answer == healthy.answer) << "success means that all was read";
    // Sets try twice, and the purge answers nothing.
    const bool tells = call.shape != Shape::kSet && call.shape != Shape::kExecute && trial.answer.status;
    if (tells) {
      EXPECT_EQ(healthy.log, trial.log);
    }
  }
  for (const std::string& statement : trial.statements) {
    const Texts& known = healthy.statements;
    EXPECT_TRUE(statement == "(null)" || std::count(known.begin(), known.end(), statement) != 0) << statement;
  }
}

}  // namespace qmv::test
