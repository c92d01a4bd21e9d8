#include "torture/calls.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "qmv.h"
#include "torture/arguments.h"

namespace qmv::test {

namespace {

Call with_narrow_sensors(Call call) {
  call.wants_narrow_sensors = true;
  return call;
}

std::vector<Call> all_calls() {
  std::vector<Call> all = {
      CALL(db_set_compact_sdr_info),
      CALL(db_get_num_compact_sdr),
      CALL(db_get_all_compact_sdrs),
      CALL(db_get_all_compact_sdrs_by_phy_elem_type),
      CALL(db_get_compact_sdr_info),
      CALL(db_get_compact_sdr_by_entityid_entityinst),
      CALL(db_get_compact_sdr),
      CALL(db_set_full_sdr_info),
      CALL(db_get_num_full_sdr),
      CALL(db_get_all_full_sdrs),
      CALL(db_get_all_full_sdrs_by_phy_elem_type),
      CALL(db_get_full_sdr_info),
      CALL(db_get_full_sdr_by_entityid_entityinst),
      CALL(db_get_full_sdr),
      CALL(db_get_recordid_by_sensor_num),
      CALL(db_del_sdr),
      CALL(db_get_device),
      CALL(db_get_device_bytype),
      CALL(db_set_device),
      CALL(db_get_fru_locator_sdr_info),
      CALL(db_set_fru_locator_sdr_info),
      CALL(db_get_ipmi_session_info),
      CALL(db_get_redundancyset_cnt),
      CALL(db_get_all_redundancyset),
      CALL(db_get_memory_cnt),
      CALL(db_get_all_memory),
      CALL(db_get_processor_cnt),
      CALL(db_get_all_processor),
      CALL(get_processor_from_db),
      CALL(db_get_selinfo_cnt),
      CALL(db_get_selinfo),
      CALL(db_set_selinfo),
      CALL(db_getnumofsels),
      CALL(db_get_sel_record),
      CALL(db_get_all_sel_records),
      CALL(db_del_sel),
      CALL(db_clear_sel_records),
      CALL(db_addsel),
      CALL(db_get_fru_info),
      CALL(db_set_fru_info),
      CALL(db_get_fru_cnt),
      CALL(db_get_fru_by_entity_id),
      CALL(db_get_all_fru_info),
      CALL(db_get_fru_compact_sdr_cnt),
      CALL(db_get_all_fru_compact_sdr),
      with_narrow_sensors(CALL(db_get_fru_compact_sdr)),
      CALL(db_get_fru_full_sdr_cnt),
      CALL(db_get_all_fru_full_sdr),
      with_narrow_sensors(CALL(db_get_fru_full_sdr)),
      CALL(db_check_is_entity_id_equals_to_sen_type),
      CALL(db_check_is_entity_id_not_equals_to_sen_type, {.number = 11}),
      CALL(db_get_all_physicalasset_element),
      CALL(get_ps_from_db, {.number = 10}),
      CALL(db_get_cnt, {.text = "sel"}),
      CALL(db_get_all_elec),
      CALL(db_get_elec),
      CALL(db_set_elec),
      CALL(db_get_all_regprofile),
      CALL(db_get_regprofile),
      CALL(db_set_regprofile),
      CALL(db_get_all_sshcapabilities),
      CALL(db_get_sshcapabilities),
      CALL(db_set_sshcapabilities),
      CALL(db_get_all_telnetcapabilities),
      CALL(db_get_telnetcapabilities),
      CALL(db_set_telnetcapabilities),
      CALL(db_get_all_phy_asset_capabilities),
      CALL(db_get_phy_asset_capabilities),
      CALL(db_set_phy_asset_capabilities),
      CALL(db_get_dhcp_capabilities),
      CALL(db_set_dhcp_capabilities),
      CALL(db_get_dhcp_protocol_endpoint),
      CALL(db_set_dhcp_protocol_endpoint),
      CALL(db_get_all_concrete_collection),
      CALL(db_get_concrete_collection),
      CALL(db_set_concrete_collection),
      CALL(db_get_all_power_mgt_capabilities),
      CALL(db_get_power_mgt_capabilities),
      CALL(db_set_power_mgt_capabilities),
      CALL(db_get_all_power_mgt_service),
      CALL(db_get_power_mgt_service),
      CALL(db_set_power_mgt_service),
      CALL(db_get_all_account_mgt_capabilities),
      CALL(db_get_account_mgt_capabilities),
      CALL(db_set_account_mgt_capabilities),
      CALL(db_get_all_account_setting_data),
      CALL(db_get_account_setting_data),
      CALL(db_set_account_setting_data),
      CALL(db_get_all_boot_setting_data),
      CALL(db_get_boot_setting_data),
      CALL(db_set_boot_setting_data),
      CALL(db_get_all_boot_config_setting),
      CALL(db_get_boot_config_setting),
      CALL(db_set_boot_config_setting),
      CALL(db_get_all_boot_service_capabilities),
      CALL(db_get_boot_service_cap),
      CALL(db_set_boot_service_capabilities),
      CALL(db_get_all_boot_source_setting),
      CALL(db_get_boot_source_setting),
      CALL(db_set_boot_source_setting),
      CALL(db_get_all_boot_service),
      CALL(db_set_boot_service),
      CALL(db_get_all_boot_order),
      CALL(db_get_boot_order),
      CALL(db_set_boot_order),
      CALL(db_delete_boot_order),
      CALL(db_reset_boot_order),
      CALL(db_get_all_RBMcapabilities),
      CALL(db_get_RBMcapabilities),
      CALL(db_set_RBMcapabilities),
      CALL(db_get_all_privilege),
      CALL(db_get_privilege),
      CALL(db_set_privilege),
      CALL(db_get_all_role),
      CALL(db_get_role),
      CALL(db_set_role),
      CALL(db_get_all_assign_role),
      CALL(db_get_assign_role),
      CALL(db_set_assign_role),
      CALL(db_get_all_ip_assignment_settingdata),
      CALL(db_get_ip_assignment_setting_data),
      CALL(db_set_ip_assignment_settingdata),
      CALL(db_get_all_static_ip_assignment_settingdata),
      CALL(db_set_static_ip_assignment_settingdata),
      CALL(db_init_static_ip_assignment_settingdata),
      CALL(db_delete_static_ip),
      CALL(db_get_all_protocol_service),
      CALL(db_get_protocol_service),
      CALL(db_set_protocol_service),
      CALL(db_modify_protocol_service_rs),
      CALL(db_set_trs),
      CALL(db_get_trs),
      CALL(db_modify_trs_rs),
      CALL(db_set_text_sap),
      CALL(db_get_all_textSAP),
      CALL(db_get_textSAP, {.text = "TextRedirectionSAP1"}),
      CALL(db_modify_textSAP),
      CALL(db_modify_textSAP_rs),
      CALL(db_get_sesstion_term_seq),
      CALL(db_get_pwds_capabilities_cnt),
      CALL(db_set_pwds_capablities),
      CALL(db_get_pwds_capablities),
      CALL(db_get_all_pwds_capablities),
      CALL(db_set_accountmgt_service),
      CALL(db_get_accountmgt_service),
      CALL(GetUpTime),
      CALL(db_get_concretejob),
      CALL(db_get_all_concretejob),
      CALL(db_delete_concretejob),
      CALL(db_modify_concretejob),
      CALL(db_clear_expired_concretejob, {.number = 10}),
      CALL(db_set_error_info),
      CALL(db_get_error_info),
      CALL(db_get_all_error_info),
      CALL(db_get_clp_error_info, {.text = "12345678"
                                           "10"}),
      CALL(db_set_indication_service),
      CALL(db_get_indication_service),
      CALL(db_set_EventType_Data),
      CALL(db_get_MessageID),
      CALL(db_get_listener_destination_cnt),
      CALL(db_get_listener_destination),
      CALL(db_get_all_listener_destination),
      CALL(db_set_listener_destination),
      CALL(db_delete_listener_destination),
      CALL(db_get_indication_filter_cimxml_cnt),
      CALL(db_get_indication_filter_cimxml),
      CALL(db_get_all_indication_filter_cimxml),
      CALL(db_set_indication_filter_cimxml),
      CALL(db_delete_indication_filter_cimxml),
      CALL(db_get_indication_subscription_cnt),
      CALL(db_get_indication_subscription),
      CALL(db_get_all_indication_subscription),
      CALL(db_set_indication_subscription),
      CALL(db_delete_indication_subscription),
      CALL(db_delete_indication_subscription_for_filter),
      CALL(db_get_req_state_change_cnt),
      CALL(db_get_req_state_change),
      CALL(db_set_req_state_change),
      CALL(GetCMPIDataType, {.text = "uint16"}),
      CALL(GetNameSpace, {.text = "CIM_RegisteredProfile"}),
      CALL(SkipWhiteSpaces, {.text = " \t k"}),
      CALL(get_row_count, {.text = "sel"}),
  };
  for (Call& call : calls_by_hand()) all.push_back(std::move(call));
  return all;
}

template <class Property>
std::vector<Call> calls_that(Property property) {
  std::vector<Call> found;
  std::copy_if(calls().begin(), calls().end(), std::back_inserter(found), property);
  return found;
}

}  // namespace

void PrintTo(const Call& call, std::ostream* out) {
  *out << call.name;
}

const std::vector<Call>& calls() {
  static const std::vector<Call> all = all_calls();
  return all;
}

std::vector<Call> calls_and_inserts() {
  std::vector<Call> all = calls();
  for (Call& set : calls_of(Shape::kSet)) {
    set.name += "_inserts";
    set.material.fill = 'n';
    all.push_back(std::move(set));
  }
  return all;
}

bool is_writer(const Call& call) {
  static const std::set<std::string> kReaders = {"db_check_is_entity_id_equals_to_sen_type", "get_row_count"};
  // Whose statement SQLite rejects, on purpose or because the row exists.
  static const std::set<std::string> kInVain = {
      "db_del_sdr",
      "db_init_static_ip_assignment_settingdata",
      "db_set_fru_info",
      "db_set_fru_locator_sdr_info",
      "db_set_account_mgt_capabilities",
      "db_set_account_setting_data",
      "db_set_boot_setting_data",
      "db_set_boot_service_capabilities",
      "db_set_boot_source_setting",
  };
  const bool executes = call.shape == Shape::kSet || call.shape == Shape::kExecute;
  return executes && !kReaders.contains(call.name) && !kInVain.contains(call.name);
}

std::vector<Call> calls_of(Shape shape) {
  return calls_that([shape](const Call& call) { return call.shape == shape; });
}

std::vector<Call> calls_that_remember() {
  return calls_that([](const Call& call) { return call.remembers; });
}

}  // namespace qmv::test
