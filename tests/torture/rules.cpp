#include "torture/rules.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <stdexcept>

namespace qmv::test {

namespace {

// A count whose step yields no row leaves its statement open, and so do some others.
End leaves_open(std::int32_t status) {
  return {status, {.statements = 1}};
}
// What is formatted twice is never released.
End keeps_text(std::int32_t status) {
  return {status, {.texts = 1}};
}

End untouched(std::int32_t status) {
  return {status, kUntouchedOuts};
}
End cleared(std::int32_t status) {
  return {status, kClearedOuts};
}

const std::map<Shape, Rules> kOfShape = {
    {Shape::kCount, {.prepares = {1}, .missing = {0}, .steps = {leaves_open(kCode)}, .finalizes = {kCode}}},
    {Shape::kGetAll, {.prepares = {1, 1}, .missing = {0, 0}, .steps = {leaves_open(1), 0}, .finalizes = {1, kCode}}},
    {Shape::kGetOne, {.prepares = {1}, .missing = {1}, .steps = {1}, .finalizes = {0}}},
    {Shape::kSet, {.execs = {0}}},
    {Shape::kExecute, {.execs = {0}}},
    {Shape::kOther, {}},
};

// Those that take the count whatever the step yields: it is 0 then.
const Rules kUntestedCount = {.prepares = {1}, .missing = {0}, .steps = {0}, .finalizes = {kCode}};
const Rules kGetAllOfUntestedCount = {.prepares = {1, 1}, .missing = {0, 0}, .steps = {0, 0}, .finalizes = {1, kCode}};

// Those whose own statement answers SQLite's code when it does not compile.
const Rules kGetAllWithCode = {
    .prepares = {1, kCode}, .missing = {0, 0}, .steps = {leaves_open(1), 0}, .finalizes = {1, kCode}};
const Rules kGetOneWithCode = {.prepares = {kCode}, .missing = {1}, .steps = {1}, .finalizes = {0}};

// A get-one that counts first.
const Rules kGetCountedOne = {.prepares = {1, 1}, .missing = {1, 1}, .steps = {leaves_open(1), 1}, .finalizes = {1, 0}};

// A get-all that says 0 where the reading ends, however it ends, and needs its statement.
const Rules kGetAllIndications = {
    .prepares = {1, 1}, .missing = {0, 1}, .steps = {leaves_open(1), 0}, .finalizes = {1, 0}};

// The join has six rows. Whatever the count answers, a count of 0 is success; an inventory that does not compile leaves
// its text and the join.
const Rules kGetAllPairs = {
    .prepares = {0, 1, End(kCode, {.statements = 1, .texts = 1})},
    .missing = {0, 0, 0},
    .steps = {leaves_open(0), 0},
    .finalizes = {1, 0, 0, 0, 0, 0, 0, kCode},
};

const Rules kReportsFailure = {.execs = {1}};
const Rules kAddsEvent = {.execs = {keeps_text(0), keeps_text(1), keeps_text(0)}};

// Of the five associations and registrations: those that cannot be counted are none, with the pointer or the number
// cleared; those that cannot be read leave zeroed records.
const End kNoAssociations(0, Outs{kUntouched, Handed::kNull});
const End kZeroCounted(0, Outs{0, Handed::kNothing});
const End kFiveRecords(0, Outs{5, Handed::kBlock});

const std::map<std::string, Rules> kOfName = {
    {"db_execute", {.execs = {kCode}}},
    {"db_commit", {.execs = {kCode}}},
    {"db_init", {.opens = {kCode}}},
    {"tmp_db_init", {.opens = {kCode}}},
    {"smash_db_init", {.opens = {kCode}}},

    {"db_get_compact_sdr_by_entityid_entityinst", kGetOneWithCode},
    {"db_get_compact_sdr", kGetOneWithCode},
    {"db_get_full_sdr_by_entityid_entityinst", kGetOneWithCode},
    {"db_get_full_sdr", kGetOneWithCode},
    {"db_get_recordid_by_sensor_num", kOfShape.at(Shape::kGetOne)},
    {"db_del_sdr", {.execs = {keeps_text(0)}}},
    {"db_get_redundancyset_cnt", kUntestedCount},
    {"db_get_memory_cnt", kUntestedCount},
    {"db_get_processor_cnt", kUntestedCount},
    {"db_get_all_redundancyset", kGetAllOfUntestedCount},
    {"db_get_all_memory", kGetAllOfUntestedCount},
    {"db_get_all_processor", kGetAllOfUntestedCount},
    // The handle of the failed open stays.
    {"get_processor_from_db",
     {.opens = {End(1, kUntouchedOuts, {.connections = 1})},
      .prepares = {untouched(1)},
      .missing = {untouched(1)},
      .steps = {untouched(1)},
      .finalizes = {0}}},

    {"db_get_selinfo_cnt", {.prepares = {1}, .missing = {1}, .steps = {leaves_open(kCode)}, .finalizes = {kCode}}},
    {"db_getnumofsels", kUntestedCount},
    {"db_get_all_sel_records", kGetAllOfUntestedCount},
    {"db_del_sel", {.execs = {keeps_text(0)}}},
    // The delete is only traced and the update ignored; the insert tells.
    {"db_addsel", kAddsEvent},
    {"db_add_sel_entries", kAddsEvent},

    // A missing row is no error.
    {"db_get_fru_by_entity_id", {.prepares = {1}, .missing = {1}, .steps = {0}, .finalizes = {0}}},
    {"db_get_fru_compact_sdr", kGetOneWithCode},
    {"db_get_fru_full_sdr", kGetOneWithCode},
    {"db_get_all_fru_compact_sdr", kGetAllPairs},
    {"db_get_all_fru_full_sdr", kGetAllPairs},

    {"db_check_is_entity_id_equals_to_sen_type",
     {.prepares = {kCode}, .missing = {1}, .steps = {leaves_open(1)}, .finalizes = {0}}},
    {"db_check_is_entity_id_not_equals_to_sen_type",
     {.prepares = {kCode}, .missing = {1}, .steps = {leaves_open(1)}, .finalizes = {kCode}}},
    // Compact sensors, then full ones; of each, after the count, seven sensors and their end. Any failure is one of both.
    {"db_get_all_physicalasset_element",
     {.prepares = {1},
      .missing = {0},
      .steps = {leaves_open(1), 0, 0, 0, 0, 0, 0, 0, leaves_open(1), 0},
      .finalizes = {1}}},
    {"get_ps_from_db",
     {.opens = {untouched(1)},
      .prepares = {untouched(1)},
      .missing = {untouched(1)},
      .steps = {untouched(1)},
      .finalizes = {0}}},
    // Sensors that cannot be counted or read are none.
    {"get_all_ps_from_db",
     {.opens = {cleared(1)},
      .prepares = {cleared(1)},
      .missing = {untouched(0), End(0, Outs{0, Handed::kBlock})},
      .steps = {untouched(0), 0},
      .finalizes = {0}}},

    {"db_get_all_listener_destination", kGetAllIndications},
    {"db_get_all_indication_filter_cimxml", kGetAllIndications},
    {"db_get_all_indication_subscription", kGetAllIndications},
    {"db_get_listener_destination", kGetCountedOne},
    {"db_get_indication_filter_cimxml", kGetCountedOne},
    {"db_get_indication_subscription", kGetCountedOne},
    // The insert tells; the update and the push of masks do not.
    {"db_set_listener_destination", {.execs = {1, 0}}},
    {"db_set_indication_filter_cimxml", {.execs = {1, 0, 0}}},
    {"db_delete_listener_destination", kReportsFailure},
    {"db_delete_indication_filter_cimxml", kReportsFailure},
    {"db_delete_indication_subscription", kReportsFailure},
    {"db_delete_indication_subscription_for_filter", kReportsFailure},
    // A missing row is no error here either.
    {"db_get_req_state_change",
     {.prepares = {1, 1}, .missing = {0, 1}, .steps = {leaves_open(1), 0}, .finalizes = {1, 0}}},

    {"db_get_boot_source_setting", kGetOneWithCode},
    {"db_get_boot_order", kGetOneWithCode},
    {"db_get_error_info", kGetOneWithCode},
    {"db_get_all_boot_order", kGetAllWithCode},
    {"db_get_all_error_info", kGetAllWithCode},
    {"db_get_all_static_ip_assignment_settingdata", kGetAllWithCode},
    {"db_get_clp_error_info", {.prepares = {1}, .missing = {0}, .steps = {1}, .finalizes = {0}}},
    {"db_get_pwds_capablities", {.prepares = {1}, .missing = {0}, .steps = {0}, .finalizes = {0}}},
    {"db_get_sesstion_term_seq", {.prepares = {0}, .missing = {0}, .steps = {End(0, {.statements = 1, .texts = 1})}}},
    {"db_set_boot_order", kReportsFailure},
    {"db_set_pwds_capablities", kReportsFailure},
    // The first job of a process reads the last number back: it counts, and finds no number without a row.
    {"db_set_concretejob",
     {.prepares = {untouched(1)},
      .missing = {0},
      .steps = {End(1, kUntouchedOuts, {.statements = 1}), 0},
      .finalizes = {untouched(1)},
      .execs = {0}}},
    {"db_init_static_ip_assignment_settingdata", kReportsFailure},
    {"db_modify_trs_rs", kReportsFailure},
    {"db_modify_textSAP_rs", kReportsFailure},
    // The connection stays when the statement does not compile.
    {"db_clear_expired_concretejob",
     {.opens = {0},
      .prepares = {End(0, {.connections = 1})},
      .missing = {0},
      .steps = {0},
      .finalizes = {0},
      .execs = {0}}},

    {"assoc_get_global_data",
     {.opens = {untouched(1)},
      .prepares = {kNoAssociations, kFiveRecords},
      .missing = {kNoAssociations, kFiveRecords},
      .steps = {kNoAssociations, kFiveRecords},
      .finalizes = {kFiveRecords}}},
    {"free_global_structure", {.opens = {1}, .prepares = {1, 0}, .missing = {1, 0}, .steps = {1, 0}, .finalizes = {0}}},
    {"get_association_data",
     {.opens = {cleared(1)},
      .prepares = {cleared(1)},
      .missing = {cleared(0)},
      .steps = {cleared(0), 0},
      .finalizes = {0}}},
    // Registrations that cannot be counted are none; the count takes two steps.
    {"load_plugins",
     {.opens = {untouched(1)},
      .prepares = {kZeroCounted, End(1, Outs{5, Handed::kNothing})},
      .missing = {kZeroCounted, End(1, Outs{5, Handed::kBlock})},
      .steps = {kZeroCounted, kFiveRecords, End(1, Outs{5, Handed::kBlock})},
      .finalizes = {kFiveRecords}}},
    {"get_row_count", {.prepares = {0}, .missing = {0}, .steps = {0, 6}, .finalizes = {6}}},
    {"get_table_count", {.steps = {0, 1, 2, 3, 4, 5}}},
    {"get_static_instances",
     {.opens = {untouched(1)},
      .prepares = {untouched(1), kZeroCounted},
      .missing = {untouched(1), kZeroCounted},
      .steps = {untouched(1), 0},
      .finalizes = {0}}},
    {"GetColumnNames",
     {.opens = {untouched(1)},
      .prepares = {untouched(1)},
      .missing = {keeps_text(0)},
      .steps = {End(0, {.statements = 1, .texts = 1, .connections = 1})}}},
    {"GetColumnValues",
     {.opens = {untouched(1)},
      .prepares = {untouched(1)},
      .missing = {0},
      .steps = {End(0, {.statements = 1, .connections = 1})}}},
};

}  // namespace

const Rules& rules_of(const Call& call) {
  const std::string name = call.name.substr(0, call.name.find("_inserts"));
  const auto named = kOfName.find(name);
  return named == kOfName.end() ? kOfShape.at(call.shape) : named->second;
}

const End& end_of(const std::vector<End>& ends, int nth) {
  if (ends.empty()) throw std::runtime_error("no rule for this step");
  return ends[std::min(static_cast<std::size_t>(nth), ends.size()) - 1];
}

}  // namespace qmv::test
