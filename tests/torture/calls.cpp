#include "calls.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "arguments.h"
#include "qmv.h"
#include "support/boundary.h"

namespace qmv::test {

namespace {

#define CALL(function) call(#function, function)

constexpr char kAnyFile[] = "/tmp/cim.db";

// Every table has a row of each letter in all texts and that number in all integers. The numbers are entity IDs, sensor
// types and event types that the library knows: memory and processors, redundancy, power supplies.
constexpr std::pair<char, int> kRowsOfEachTable[] = {{'k', 3}, {'c', 7}, {'p', 10}, {'r', 11}, {'m', 12}};

// Some accessors look for one name, and sensors are of all categories.
constexpr char kRowsOfKnownNames[] =
    "update textredirectionservice set Name = 'TextRedirectionService1' where Name = 'k';"
    "update textredirectionsap set Name = 'TextRedirectionSAP1' where Name = 'k';"
    "update account_management_service set Name = 'AccountManagementService' where Name = 'k';"
    "update indication_service set Name = 'IndicationService' where Name = 'k';"
    "update compact_sdr set PhysicalElement = 1024 + 256 + 3;"
    "update full_sdr set PhysicalElement = 1024 + 256 + 3;";

// A statement of the test's own that stands on a row; no fault meets it.
class Row {
 public:
  Row(sqlite3* db, const char* query) {
    if (sqlite3_prepare_v2(db, query, -1, &row_, nullptr) != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(db));
    __real_sqlite3_step(row_);
  }
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;
  ~Row() { __real_sqlite3_finalize(row_); }

  sqlite3_stmt* get() const { return row_; }

 private:
  sqlite3_stmt* row_ = nullptr;
};

template <class Record>
Call fills(const char* name, const char* query, std::int32_t (*fill)(Record*, sqlite3_stmt*)) {
  return {name, [=](sqlite3* db, const Material& material) {
            const Guarded record(sizeof(Record), material.fill);
            return Answer{fill(reinterpret_cast<Record*>(record.bytes()), Row(db, query).get())};
          }};
}

Call opens(const char* name, std::int32_t (*open)(sqlite3**)) {
  return {name, [=](sqlite3*, const Material&) {
            sqlite3* opened = nullptr;
            const std::int32_t status = open(&opened);
            if (status == SQLITE_OK) sqlite3_close(opened);
            return Answer{status};
          }};
}

Call hands_out_queries(const char* name, std::int32_t (*hand_out)(const char*, char*, char*)) {
  return {name, [=](sqlite3*, const Material& material) {
            const Guarded count(QMV_COUNT_QUERY_SIZE, 0);
            const Guarded list(QMV_LIST_QUERY_SIZE, 0);
            for (const char* each : {"CIM_Slot", "CIM_Card", "CIM_Chassis", "CIM_Chip", "CIM_PhysicalPackage",
                                     "CIM_PhysicalConnector", "CIM_PhysicalMemory"})
              hand_out(each, count.bytes(), list.bytes());
            return Answer{hand_out(material.text.c_str(), count.bytes(), list.bytes())};
          }};
}

// An array of associations, released with its lists.
struct Associations {
  association_rec* records = nullptr;
  std::int32_t count = -1;

  Associations() = default;
  Associations(const Associations&) = delete;
  Associations& operator=(const Associations&) = delete;
  ~Associations() {
    if (count > 0) FreeDBData(&records, count);
  }
};

void release_texts(char** texts, std::int32_t count) {
  for (std::int32_t i = 0; texts != nullptr && i < count; ++i) std::free(texts[i]);
  std::free(texts);
}

Answer call_free_global_structure(sqlite3*, const Material&) {
  Associations loaded;
  if (assoc_get_global_data(&loaded.records, &loaded.count) != 0 || loaded.records == nullptr) return {1};
  for (std::int32_t i = 0; i < loaded.count; ++i) {
    association_rec& record = loaded.records[i];
    release_texts(record.List5, record.Count5);
    release_texts(record.List6, record.Count6);
  }
  const std::int32_t status = free_global_structure(loaded.records, loaded.count);
  loaded.count = 0;
  return {status};
}

Answer call_GetColumnNames(sqlite3*, const Material& material) {
  column_name_node* names = nullptr;
  const std::int32_t status = GetColumnNames(&names, kAnyFile, material.text.c_str());
  const bool handed_out = names != nullptr;
  free_column_names(names);
  return {status, handed_out};
}

Answer call_GetColumnValues(sqlite3*, const Material& material) {
  const Guarded value(256, 0);
  return {GetColumnValues(kAnyFile, value.bytes(), material.text.c_str(), material.text.c_str(), material.number)};
}

Answer call_get_static_instances(sqlite3*, const Material&) {
  std::int32_t rows = 0;
  const Guarded table(256, 0);
  return {get_static_instances(kAnyFile, &rows, table.bytes())};
}

Answer call_load_plugins(sqlite3*, const Material&) {
  Argument<association_reg_rec**> records(Source{nullptr, {}});
  std::int32_t count = 0;
  const std::int32_t status = load_plugins(records.get(), &count, kAnyFile);
  return {status, records.handed_out()};
}

Answer call_GetArrayCount(sqlite3*, const Material& material) {
  char** list = nullptr;
  std::int32_t count = 0;
  const std::int32_t status = GetArrayCount(("{" + material.text + ",b,,c}").c_str(), &list, &count);
  const bool handed_out = list != nullptr;
  release_texts(list, count);
  return {status, handed_out};
}

Answer call_get_all_ps_from_db(sqlite3*, const Material&) {
  char** names = nullptr;
  std::int32_t count = 0;
  const std::int32_t status = get_all_ps_from_db(&names, &count);
  const bool handed_out = names != nullptr;
  release_texts(names, count);
  return {status, handed_out};
}

Answer call_db_set_concretejob(sqlite3* db, const Material& material) {
  const Guarded job(sizeof(concrete_job_rec), material.fill);
  const Guarded identifier(64, 0);
  return {db_set_concretejob(db, reinterpret_cast<concrete_job_rec*>(job.bytes()), identifier.bytes())};
}

std::vector<Call> by_hand() {
  return {
      opens("db_init", db_init),
      opens("tmp_db_init", tmp_db_init),
      opens("smash_db_init", smash_db_init),
      {"db_execute",
       [](sqlite3* db, const Material& material) {
         return Answer{db_execute(db, "update sel set SensorNum=%d where Description='%q';", material.number,
                                  material.text.c_str())};
       }},
      {"db_close",
       [](sqlite3*, const Material&) {
         sqlite3* opened = nullptr;
         sqlite3_open(":memory:", &opened);
         return Answer{db_close(opened)};
       }},
      {"db_freemem",
       [](sqlite3*, const Material&) {
         db_freemem(std::malloc(1));
         db_freemem(nullptr);
         return Answer{};
       }},
      fills("db_fill_compact_sdr_fields", "select * from compact_sdr;", db_fill_compact_sdr_fields),
      fills("db_fill_full_sdr_fields", "select * from full_sdr;", db_fill_full_sdr_fields),
      {"db_add_sel_entries",
       [](sqlite3* db, const Material& material) {
         const Guarded event(sizeof(sel_rec), material.fill);
         return Answer{db_add_sel_entries(db, 1, reinterpret_cast<sel_rec*>(event.bytes()), material.number)};
       }},
      hands_out_queries("get_sqlqueries", get_sqlqueries),
      hands_out_queries("get_sqlqueries_nonFRU", get_sqlqueries_nonFRU),
      {"get_all_ps_from_db", call_get_all_ps_from_db},
      {"db_set_concretejob", call_db_set_concretejob},
      {"assoc_get_global_data",
       [](sqlite3*, const Material&) {
         Associations loaded;
         const std::int32_t status = assoc_get_global_data(&loaded.records, &loaded.count);
         return Answer{status, loaded.records != nullptr};
       }},
      {"get_association_data",
       [](sqlite3*, const Material&) {
         Associations loaded;
         const std::int32_t status = get_association_data(&loaded.records, "select * from association;", &loaded.count);
         return Answer{status, loaded.records != nullptr};
       }},
      {"fill_association_data",
       [](sqlite3* db, const Material&) {
         Associations filled;
         filled.records = static_cast<association_rec*>(std::calloc(1, sizeof(association_rec)));
         filled.count = 1;
         if (filled.records != nullptr)
           fill_association_data(Row(db, "select * from association;").get(), filled.records);
         return Answer{};
       }},
      {"FreeDBData",
       [](sqlite3*, const Material&) {
         association_rec* records = nullptr;
         FreeDBData(&records, 0);
         return Answer{};
       }},
      {"free_global_structure", call_free_global_structure},
      {"GetArrayCount", call_GetArrayCount},
      {"load_plugins", call_load_plugins},
      {"get_table_count",
       [](sqlite3* db, const Material&) { return Answer{get_table_count(Row(db, "select * from sel;").get())}; }},
      {"get_static_instances", call_get_static_instances},
      {"GetColumnNames", call_GetColumnNames},
      {"free_column_names", [](sqlite3*, const Material&) { return Answer{free_column_names(nullptr)}; }},
      {"GetColumnValues", call_GetColumnValues},
  };
}

std::vector<Call> all_calls() {
  std::vector<Call> all = {
      CALL(db_commit),
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
      CALL(db_get_fru_compact_sdr),
      CALL(db_get_fru_full_sdr_cnt),
      CALL(db_get_all_fru_full_sdr),
      CALL(db_get_fru_full_sdr),
      CALL(db_check_is_entity_id_equals_to_sen_type),
      CALL(db_check_is_entity_id_not_equals_to_sen_type),
      CALL(db_get_all_physicalasset_element),
      CALL(get_ps_from_db),
      CALL(db_get_cnt),
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
      CALL(db_get_textSAP),
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
      CALL(db_clear_expired_concretejob),
      CALL(db_set_error_info),
      CALL(db_get_error_info),
      CALL(db_get_all_error_info),
      CALL(db_get_clp_error_info),
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
      CALL(GetCMPIDataType),
      CALL(GetNameSpace),
      CALL(SkipWhiteSpaces),
      CALL(get_row_count),
  };
  for (Call& call : by_hand()) all.push_back(std::move(call));
  return all;
}

std::string file_text(const std::string& path) {
  std::ifstream file(path);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (text.empty()) throw std::runtime_error("there is no " + path);
  return text;
}

// Runs SQL and returns the rows of one column.
std::vector<std::string> rows(sqlite3* db, const std::string& sql) {
  std::vector<std::string> found;
  const auto add = [](void* to, int, char** values, char**) {
    static_cast<std::vector<std::string>*>(to)->emplace_back(values[0]);
    return 0;
  };
  if (__real_sqlite3_exec(db, sql.c_str(), add, &found, nullptr) != SQLITE_OK)
    throw std::runtime_error(sql + ": " + sqlite3_errmsg(db));
  return found;
}

}  // namespace

const std::vector<Call>& calls() {
  static const std::vector<Call> all = all_calls();
  return all;
}

void make_tables_with_rows(sqlite3* db) {
  for (const char* schema : {"cim", "tmp_cim", "smashclp", "association"})
    rows(db, file_text(std::string(QMV_SCHEMA) + "/" + schema + ".sql"));
  for (const std::string& table : rows(db, "select name from sqlite_master where type = 'table';")) {
    for (const auto& [letter, number] : kRowsOfEachTable) {
      const std::string values = "iif(type = 'INTEGER', '" + std::to_string(number) + "', '''" + letter + "''')";
      const std::string insert = "select 'insert into " + table + " values (' || group_concat(" + values +
                                 ") || ');' from pragma_table_info('" + table + "');";
      rows(db, rows(db, insert).at(0));
    }
  }
  rows(db, kRowsOfKnownNames);
}

}  // namespace qmv::test
