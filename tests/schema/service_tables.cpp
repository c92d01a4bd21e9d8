// Network and management services, and indications.
#include "table.h"

namespace qmv::test {
namespace {

Table ip_assign_settingdata() {
  using Record = ip_assign_settingdata_rec;
  return {"cim",
          "ip_assign_settingdata",
          {"InstanceID"},
          {FIELD(InstanceID), FIELD(AddressOrigin), FIELD(ElementName)},
          {SET(db_set_ip_assignment_settingdata)},
          {ALL(db_get_all_ip_assignment_settingdata), FILL(db_get_ip_assignment_setting_data, "InstanceID")}};
}

Table static_ip_assign_settingdata() {
  using Record = static_ip_assign_settingdata_rec;
  return {"cim",
          "static_ip_assign_settingdata",
          {"InterfaceName"},
          {FIELD(InterfaceName), FIELD(IPv4Address), FIELD(Gateway), FIELD(SubnetMask), FIELD(IPv6Address),
           FIELD(IPv6AddressType), FIELD(IPv6SubnetPrefixLength), FIELD(GatewayIPv6Address)},
          {SET(db_set_static_ip_assignment_settingdata), always_new(SET(db_init_static_ip_assignment_settingdata))},
          {ALL(db_get_all_static_ip_assignment_settingdata)}};
}

Table protocol_service() {
  using Record = protocol_service_rec;
  return {"cim",
          "protocol_service",
          {"Name"},
          {FIELD(Name), FIELD(Protocol), FIELD(ElementName), FIELD(MaxConnections), FIELD(RequestedState),
           FIELD(EnabledState), FIELD(HealthState), FIELD(OperationalStatus), FIELD(OtherProtocol)},
          {SET(db_set_protocol_service)},
          {ALL(db_get_all_protocol_service), FILL(db_get_protocol_service, "Name")}};
}

Table textredirectionservice() {
  using Record = textredirectionservice_rec;
  return {"cim",
          "textredirectionservice",
          {"Name"},
          {FIELD(Name), FIELD(ElementName), FIELD(MaxConcurrentEnabledSAPs), FIELD(EnabledState), FIELD(RequestedState),
           FIELD(SharingMode), FIELD(RedirectionServiceType)},
          {SET(db_set_trs)},
          {reader_into<Record>("db_get_trs",
                               [](sqlite3* db, const Row&, Record* to) {
                                 std::int32_t count = 0;
                                 return db_get_trs(db, to, &count);
                               })},
          {{"Name", "TextRedirectionService1"}}};
}

Table textredirectionsap() {
  using Record = textredirectionsap_rec;
  const auto set = [](sqlite3* db, const Record* record) {
    const auto& sequence = record->SessionTerminateSequence;  // a text of its own, which ends with a zero
    return db_set_text_sap(db, record) +
           db_modify_textSAP(db, std::string(sequence, strnlen(sequence, sizeof(sequence))).c_str());
  };
  return {"cim",
          "textredirectionsap",
          {"Name"},
          {FIELD(Name), FIELD(ElementName), FIELD(EnabledState), FIELD(RequestedState), FIELD(TextFlowType),
           FIELD(SessionTerminateSequence)},
          {setter<Record>("db_set_text_sap and db_modify_textSAP", set)},
          {reader_into<Record>("db_get_sesstion_term_seq",
                               [](sqlite3* db, const Row&, Record* to) {
                                 std::strcpy(to->SessionTerminateSequence, db_get_sesstion_term_seq(db));
                                 return 0;
                               })
               .filling({FIELD(SessionTerminateSequence)}),
           FILL(db_get_all_textSAP), FILL(db_get_textSAP, "Name")},
          {{"Name", "TextRedirectionSAP1"}}};
}

Table pwds_capabilities() {
  using Record = pwds_capabilities_rec;
  // The readers give the longest name in place of whether it can be changed.
  const std::vector<Field> shifted = {
      FIELD(instance_id),          FIELD(ele_name),
      FIELD(req_states_supported), FIELD_FROM("max_ele_name_len", ele_name_edit_supported),
      FIELD(act_on_exp_supported), FIELD(last_exp_data_supported),
      FIELD(wdt_data_supported)};
  return {
      "cim",
      "pwds_capabilities",
      {"instance_id"},
      {FIELD(instance_id), FIELD(ele_name), FIELD(req_states_supported), FIELD(ele_name_edit_supported),
       FIELD(max_ele_name_len), FIELD(act_on_exp_supported), FIELD(last_exp_data_supported), FIELD(wdt_data_supported)},
      {SET(db_set_pwds_capablities)},
      {ALL(db_get_all_pwds_capablities).filling(shifted),
       FILL(db_get_pwds_capablities, "instance_id").filling(shifted)}};
}

Table account_management_service() {
  using Record = account_management_service_rec;
  return {"cim",
          "account_management_service",
          {"Name"},
          {FIELD(Name), FIELD(RequestedState), FIELD(EnabledState), FIELD(ElementName)},
          {SET(db_set_accountmgt_service)},
          {reader_into<Record>("db_get_accountmgt_service",
                               [](sqlite3* db, const Row&, Record* to) {
                                 std::int32_t count = 0;
                                 return db_get_accountmgt_service(db, to, &count);
                               })},
          {{"Name", "AccountManagementService"}}};
}

Table indication_service() {
  using Record = indication_service_rec;
  return {"cim",
          "indication_service",
          {"Name"},
          {FIELD(Name), FIELD(FilterCreationEnabled), FIELD(DeliveryRetryAttempts), FIELD(DeliveryRetryInterval),
           FIELD(SubscriptionRemovalAction), FIELD(SubscriptionRemovalTimeInterval)},
          {SET(db_set_indication_service)},
          {FILL(db_get_indication_service)},
          {{"Name", "IndicationService"}}};
}

Table event_type() {
  using Record = event_type_rec;
  return {"cim",
          "event_type",
          {"MessageID"},
          {FIELD(MessageID), FIELD(Description)},
          {SET(db_set_EventType_Data)},
          {FILL(db_get_MessageID, "Description")}};
}

Table request_state_change() {
  using Record = request_state_change_rec;
  return {"cim",
          "request_state_change",
          {"ClassName", "KeyProperty", "KeyValue"},
          {FIELD(ClassName), FIELD(RequestedState), FIELD(KeyProperty), FIELD(KeyValue)},
          {SET(db_set_req_state_change)},
          {reader_into<Record>("db_get_req_state_change", [](sqlite3* db, const Row& row, Record* to) {
            put_text(to->ClassName, row.at("ClassName").text);
            put_text(to->KeyProperty, row.at("KeyProperty").text);
            put_text(to->KeyValue, row.at("KeyValue").text);
            return db_get_req_state_change(db, to);
          })}};
}

Table listener_destination() {
  using Record = listener_destination_rec;
  return {"cim",
          "listener_destination",
          {"Name"},
          {FIELD(Name), FIELD(Destination)},
          {SET(db_set_listener_destination)},
          {ALL_ARRAY_FIRST(db_get_all_listener_destination),
           reader_into<Record>("db_get_listener_destination", [](sqlite3* db, const Row& row, Record* to) {
             put_text(to->Name, row.at("Name").text);
             return db_get_listener_destination(db, to);
           })}};
}

Table indication_filter() {
  using Record = indication_filter_rec;
  return {"cim",
          "indication_filter",
          {"Name"},
          {FIELD(Name), FIELD(Query), FIELD(SensorNumMask), FIELD(SensorTypeMask), FIELD(SeverityMask)},
          {SET(db_set_indication_filter_cimxml)},
          {ALL_ARRAY_FIRST(db_get_all_indication_filter_cimxml),
           reader_into<Record>("db_get_indication_filter_cimxml", [](sqlite3* db, const Row& row, Record* to) {
             put_text(to->Name, row.at("Name").text);
             return db_get_indication_filter_cimxml(db, to);
           })}};
}

Table indication_subscription() {
  using Record = indication_subscription_rec;
  return {
      "cim",
      "indication_subscription",
      {"DestName", "FilterName"},
      {FIELD(DestName), FIELD(FilterName), FIELD(EventSeverity), FIELD(SensorNum), FIELD(SensorType), FIELD(Enabled)},
      {SET(db_set_indication_subscription)},
      {ALL_ARRAY_FIRST(db_get_all_indication_subscription),
       reader_into<Record>("db_get_indication_subscription", [](sqlite3* db, const Row& row, Record* to) {
         put_text(to->DestName, row.at("DestName").text);
         put_text(to->FilterName, row.at("FilterName").text);
         return db_get_indication_subscription(db, to);
       })}};
}

}  // namespace

std::vector<Table> service_tables() {
  return {ip_assign_settingdata(),      static_ip_assign_settingdata(), protocol_service(),
          textredirectionservice(),     textredirectionsap(),           pwds_capabilities(),
          account_management_service(), indication_service(),           event_type(),
          request_state_change(),       listener_destination(),         indication_filter(),
          indication_subscription()};
}

}  // namespace qmv::test
