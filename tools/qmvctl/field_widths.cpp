#include "field_widths.h"

#include <algorithm>

#include "instances.h"
#include "qmv.h"

namespace qmvctl {

namespace {

using Widths = std::map<std::string, FieldWidth>;

// In the scope of these, Record names the record: a column that is read into the member of its name or into another
// one, and the same of one whose text runs on.
#define WIDTH_IN(column, member) Widths::value_type(#column, FieldWidth{sizeof(Record::member)})
#define WIDTH(member) WIDTH_IN(member, member)
#define RUNNING_WIDTH_IN(column, member) Widths::value_type(#column, FieldWidth{sizeof(Record::member), true})
#define RUNNING_WIDTH(member) RUNNING_WIDTH_IN(member, member)

Widths fru_widths() {
  using Record = fru_rec;
  return {WIDTH(DevIdStr),      WIDTH(ChassisSerNumber), WIDTH(ChassisPartNumber), WIDTH(ChassisCustFields),
          WIDTH(ProdSerNumber), WIDTH(ProdPartNumber),   WIDTH(ProdMfrName),       WIDTH(BrdSerNumber),
          WIDTH(BrdPartNumber), WIDTH(BrdMfrName)};
}

template <class Record>
Widths sensor_widths() {
  Widths widths = {WIDTH(DeviceID), WIDTH(SensorName), WIDTH(OtherSensorTypeDesc), WIDTH(IdStr)};
  widths.merge(fru_widths());
  return widths;
}

Widths fru_locator_widths() {
  using Record = fru_locator_sdr_rec;
  return {WIDTH(DevIdStr)};
}

Widths device_widths() {
  using Record = device_rec;
  return {WIDTH(GUID), RUNNING_WIDTH(IPAddress)};
}

Widths ipmi_session_widths() {
  using Record = ipmi_session_rec;
  return {WIDTH(SessionText0), WIDTH(SessionText2), WIDTH(SessionText3), WIDTH(SessionText4),
          WIDTH(SessionText5), WIDTH(SessionText6), WIDTH(SessionText7), WIDTH(SessionText8)};
}

// The reader is one column behind: Version is read as a number, OperationSupport not at all. Behind the last field there
// is none to run on over.
Widths sel_info_widths() {
  using Record = sel_info_rec;
  return {RUNNING_WIDTH_IN(MaxNoOfSels, CompletionCode), RUNNING_WIDTH_IN(CompletionCode, Version),
          RUNNING_WIDTH_IN(FreeSpace, AddTimeStamp), RUNNING_WIDTH_IN(AddTimeStamp, EraseTimeStamp),
          WIDTH_IN(EraseTimeStamp, OperationSupport)};
}

Widths sel_widths() {
  using Record = sel_rec;
  return {WIDTH(GeneratorID)};
}

// As of sel_info, from ProtocolIFType on: OtherTypeDesc is read as a number, ElementName not at all.
Widths dhcp_protocol_endpoint_widths() {
  using Record = dhcp_protocol_endpoint_rec;
  return {WIDTH(Name), WIDTH(NameFormat), WIDTH_IN(ProtocolIFType, OtherTypeDesc), WIDTH_IN(ClientState, ElementName)};
}

Widths event_type_widths() {
  using Record = event_type_rec;
  return {WIDTH(Description)};
}

Widths request_state_change_widths() {
  using Record = request_state_change_rec;
  return {WIDTH(ClassName), WIDTH(KeyProperty), WIDTH(KeyValue)};
}

Widths listener_destination_widths() {
  using Record = listener_destination_rec;
  return {WIDTH(Name), WIDTH(Destination)};
}

Widths indication_filter_widths() {
  using Record = indication_filter_rec;
  return {WIDTH(Name), WIDTH(Query)};
}

Widths indication_subscription_widths() {
  using Record = indication_subscription_rec;
  return {WIDTH(DestName), WIDTH(FilterName)};
}

Widths concrete_job_widths() {
  using Record = concrete_job_rec;
  return {WIDTH(InstanceID), WIDTH(ElementName), WIDTH(JobStatus), WIDTH(OperationalStatus), WIDTH(TimeBeforeRemoval)};
}

Widths error_info_widths() {
  using Record = error_info_rec;
  return {WIDTH(ErrorSource)};
}

// A list is read as far as the library's buffer for one reaches.
Widths association_widths() {
  using Record = association_rec;
  constexpr size_t kList = 1023;
  return {WIDTH(ClassName),   WIDTH(NameSpace),   WIDTH(Text2),       WIDTH(Text3),
          {"List5", {kList}}, {"List6", {kList}}, {"List7", {kList}}, {"List8", {kList}}};
}

Widths association_reg_widths() {
  using Record = association_reg_rec;
  return {WIDTH(RegColumn0), WIDTH(RegColumn1), WIDTH(RegColumn2), WIDTH(RegColumn3)};
}

#undef WIDTH
#undef WIDTH_IN
#undef RUNNING_WIDTH
#undef RUNNING_WIDTH_IN

// Profile tables are listed with their members already.
std::map<std::string, Widths> instance_widths() {
  std::map<std::string, Widths> tables;
  for (const InstanceTable& table : all_instance_tables()) {
    for (const InstanceMember& member : table.members) {
      if (member.width != 0) tables[table.name][member.name] = {member.width};
    }
  }
  return tables;
}

std::map<std::string, Widths> all_widths() {
  std::map<std::string, Widths> tables = {{"compact_sdr", sensor_widths<compact_sdr_rec>()},
                                          {"full_sdr", sensor_widths<full_sdr_rec>()},
                                          {"fru", fru_widths()},
                                          {"fru_locator_sdr", fru_locator_widths()},
                                          {"device", device_widths()},
                                          {"ipmi_session", ipmi_session_widths()},
                                          {"sel_info", sel_info_widths()},
                                          {"sel", sel_widths()},
                                          {"dhcp_protocol_endpoint", dhcp_protocol_endpoint_widths()},
                                          {"event_type", event_type_widths()},
                                          {"request_state_change", request_state_change_widths()},
                                          {"listener_destination", listener_destination_widths()},
                                          {"indication_filter", indication_filter_widths()},
                                          {"indication_subscription", indication_subscription_widths()},
                                          {"concrete_job", concrete_job_widths()},
                                          {"error_info", error_info_widths()},
                                          {"association", association_widths()},
                                          {"association_reg", association_reg_widths()}};
  tables.merge(instance_widths());
  return tables;
}

}  // namespace

std::map<std::string, FieldWidth> field_widths(const std::string& table) {
  static const std::map<std::string, Widths> tables = all_widths();
  const auto found = tables.find(table);
  return found == tables.end() ? Widths() : found->second;
}

}  // namespace qmvctl
