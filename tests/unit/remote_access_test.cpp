// Remote access: SSH, telnet and DHCP, physical assets and concrete collections.
#include <string>

#include "qmv/profiles.h"
#include "unit/borrowed_texts.h"

namespace qmv::test {
namespace {

const ProfileTable& ssh() {
  using Record = ssh_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "ssh_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), NUMBER(ElementNameEditSupported),
                 NUMBER(MaxConnections), TEXT(RequestedStatesSupported, 256), NUMBER(ListeningPortManagementSupported),
                 NUMBER(MaxListeningPorts), TEXT(SupportedSSHVersions, 256), TEXT(SupportedEncryptionAlgorithms, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& telnet() {
  using Record = telnet_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "telnet_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), NUMBER(ElementNameEditSupported),
                 NUMBER(MaxConnections), TEXT(RequestedStatesSupported, 256), NUMBER(ListeningPortManagementSupported),
                 NUMBER(MaxListeningPorts), TEXT(SupportedTerminalModes, 256),
                 TEXT(SupportedCharacterDisplayModes, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& assets() {
  using Record = phy_asset_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "phy_asset_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), NUMBER(FRUInfoSupported)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& dhcp() {
  using Record = dhcp_capabilities_rec;
  static const ProfileTable kTable = {
      .name = "dhcp_capabilities",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256), NUMBER(ElementNameEditSupported),
                 TEXT(OptionsSupported, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileTable& endpoints() {
  using Record = dhcp_protocol_endpoint_rec;
  static const ProfileTable kTable = {
      .name = "dhcp_protocol_endpoint",
      .record_size = sizeof(Record),
      .fields = {TEXT(Name, 256), TEXT(NameFormat, 256), NUMBER(ProtocolIFType), TEXT(OtherTypeDesc, 256),
                 NUMBER(EnabledState), NUMBER(RequestedState), NUMBER(ClientState), TEXT(ElementName, 256)},
      .key = "Name",
  };
  return kTable;
}

// The members of an endpoint and the columns that they are read from.
std::vector<Field> endpoint_as_read() {
  using Record = dhcp_protocol_endpoint_rec;
  return {FIELD(Name),
          FIELD(NameFormat),
          FIELD_OF_COLUMN("RequestedState", ProtocolIFType),
          FIELD_OF_COLUMN("ProtocolIFType", OtherTypeDesc),
          FIELD_OF_COLUMN("OtherTypeDesc", EnabledState),
          FIELD_OF_COLUMN("EnabledState", RequestedState),
          FIELD_OF_COLUMN("RequestedState", ClientState),
          FIELD_OF_COLUMN("ClientState", ElementName)};
}

const ProfileTable& collections() {
  using Record = concrete_collection_rec;
  static const ProfileTable kTable = {
      .name = "concrete_collection",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), TEXT(ElementName, 256)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileGetAllCase kGetAll[] = {
    {.name = "Ssh",
     .table = ssh(),
     .call = erased<ssh_capabilities_rec>(db_get_all_sshcapabilities),
     .reading = "Get all ssh from database",
     .done = "Successfully got all the ssh",
     .count_failed = "Fail to get ssh records"},
    {.name = "Telnet",
     .table = telnet(),
     .call = erased<telnet_capabilities_rec>(db_get_all_telnetcapabilities),
     .reading = "Get all telnet from database",
     .done = "Successfully got all the telnet",
     .count_failed = "Fail to get telnet records"},
    {.name = "PhysicalAsset",
     .table = assets(),
     .call = erased<phy_asset_capabilities_rec>(db_get_all_phy_asset_capabilities),
     .reading = "Get all phy asset cap from database",
     .done = "Successfully got all phy asset cap ",
     .count_failed = "Fail to get phy asset cap records"},
    {.name = "ConcreteCollection",
     .table = collections(),
     .call = erased<concrete_collection_rec>(db_get_all_concrete_collection),
     .reading = "Get all concrete collection records from database",
     .done = "Successfully got all concrete collections %d",
     .count_failed = "Fail to get concrete collection records"},
};

const ProfileGetOneCase kGetOne[] = {
    {.name = "Ssh",
     .table = ssh(),
     .call = by_text(db_get_sshcapabilities),
     .keys = {"InstanceID"},
     .statement = "select * from ssh_capabilities where InstanceID='t100';",
     .reading = "Get SSH Capabilities rec from database",
     .no_row = "Fail to get the SSH Capabilities record",
     .no_statement = "Fail to get SSH Capabilities record. SQLite stmt is NULL"},
    {.name = "Telnet",
     .table = telnet(),
     .call = by_text(db_get_telnetcapabilities),
     .keys = {"InstanceID"},
     .statement = "select * from telnet_capabilities where InstanceID='t100';",
     .reading = "Get TELNET Capabilities rec from database",
     .no_row = "Fail to get the TELNET Capabilities record",
     .no_statement = "Fail to get TELNET Capabilities record. SQLite stmt is NULL"},
    {.name = "PhysicalAsset",
     .table = assets(),
     .call = by_nothing(db_get_phy_asset_capabilities),
     .statement = "select * from phy_asset_capabilities ;",
     .reading = "Get Physical Asset capabilities record from database",
     .no_row = "No Entry in DB",
     .no_statement = "Fail to get physical asset cap. record. SQLite stmt is NULL"},
    like_an_asset({.name = "Dhcp",
                   .table = dhcp(),
                   .call = by_nothing(db_get_dhcp_capabilities),
                   .statement = "select * from dhcp_capabilities ;"}),
    like_an_asset({.name = "DhcpEndpoint",
                   .table = endpoints(),
                   .call = by_text(db_get_dhcp_protocol_endpoint),
                   .keys = {"Name"},
                   .statement = "select * from dhcp_protocol_endpoint where Name='t100';",
                   .reads = endpoint_as_read()}),
    like_an_asset({.name = "ConcreteCollection",
                   .table = collections(),
                   .call = by_text(db_get_concrete_collection),
                   .keys = {"InstanceID"},
                   .statement = "select * from concrete_collection where InstanceID='t100';"}),
};

const ProfileSetCase kSet[] = {
    {.name = "Ssh",
     .table = ssh(),
     .call = storing(db_set_sshcapabilities),
     .insert = "insert into ssh_capabilities (InstanceID, ElementName, ElementNameEditSupported,\t\t\tMaxConnections, "
               "RequestedStatesSupported, \t\t\tListeningPortManagementSupported, MaxListeningPorts, "
               "\t\t\tSupportedSSHVersions, SupportedEncryptionAlgorithms)\t\t\tvalues ('t100', 't101', 102, 103, "
               "'t104', 105, 106, 't107', 't108');",
     .update = "update ssh_capabilities set InstanceID='t100', ElementName='t101', \t\t\tElementNameEditSupported=102, "
               "MaxConnections=103, \t\t\tRequestedStatesSupported='t104', "
               "ListeningPortManagementSupported=105,\t\t\tMaxListeningPorts=106, SupportedSSHVersions='t107', "
               "\t\t\tSupportedEncryptionAlgorithms='t108' where InstanceID='t100' ;",
     .present = "SSH record is already present with that key",
     .done = "Successfully update the SSH record"},
    {.name = "Telnet",
     .table = telnet(),
     .call = storing(db_set_telnetcapabilities),
     .insert = "insert into telnet_capabilities (InstanceID, ElementName, "
               "ElementNameEditSupported,\t\t\tMaxConnections, RequestedStatesSupported, "
               "\t\t\tListeningPortManagementSupported, MaxListeningPorts, \t\t\tSupportedTerminalModes, "
               "SupportedCharacterDisplayModes)\t\t\tvalues ('t100', 't101', 102, 103, 't104', 105, 106, 't107', "
               "'t108');",
     .update = "update telnet_capabilities set InstanceID='t100', ElementName='t101', "
               "\t\t\tElementNameEditSupported=102, MaxConnections=103, \t\t\tRequestedStatesSupported='t104', "
               "ListeningPortManagementSupported=105,\t\t\tMaxListeningPorts=106, SupportedTerminalModes='t107', "
               "\t\t\tSupportedCharacterDisplayModes='t108' where InstanceID='t100' ;",
     .present = "TELNET record is already present with that key",
     .done = "Successfully update the TELNET record"},
    like_an_asset({.name = "PhysicalAsset",
                   .table = assets(),
                   .call = storing(db_set_phy_asset_capabilities),
                   .insert = "insert into phy_asset_capabilities (InstanceID, ElementName, FRUInfoSupported) "
                             "\t\t\tvalues ('t100', 't101', 102);",
                   .update = "update phy_asset_capabilities set InstanceID='t100', ElementName='t101', "
                             "\t\t\tFRUInfoSupported=102 where InstanceID='t100' ;"}),
    like_an_asset({.name = "Dhcp",
                   .table = dhcp(),
                   .call = storing(db_set_dhcp_capabilities),
                   .insert = "insert into dhcp_capabilities (InstanceID, ElementName, ElementNameEditSupported, "
                             "OptionsSupported) \t\t\tvalues ('t100', 't101', 102, 't103');",
                   .update = "update dhcp_capabilities set InstanceID='t100', ElementName='t101', "
                             "\t\t\tElementNameEditSupported=102, OptionsSupported='t103' where InstanceID='t100' ;"}),
    like_an_asset({.name = "DhcpEndpoint",
                   .table = endpoints(),
                   .call = storing(db_set_dhcp_protocol_endpoint),
                   .insert = "insert into dhcp_protocol_endpoint (Name, NameFormat, ProtocolIFType, "
                             "\t\t\tOtherTypeDesc, EnabledState, RequestedState, ClientState, ElementName) "
                             "\t\t\tvalues ('t100', 't101', 102, 't103', 104, 105, 106, 't107');",
                   .update = "update dhcp_protocol_endpoint set Name='t100', NameFormat='t101', ProtocolIFType=102, "
                             "OtherTypeDesc='t103', EnabledState=104, RequestedState=105, \t\tClientState=106, "
                             "ElementName='t107' where Name='t100';"}),
    like_an_asset({.name = "ConcreteCollection",
                   .table = collections(),
                   .call = storing(db_set_concrete_collection),
                   .insert = "insert into concrete_collection (InstanceID, ElementName) \t\t\tvalues ('t100', 't101');",
                   .update = "update concrete_collection set InstanceID='t100', ElementName='t101' where "
                             "InstanceID='t100';"}),
};

INSTANTIATE_TEST_SUITE_P(RemoteAccess, ProfileGetAll, testing::ValuesIn(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(RemoteAccess, ProfileGetOne, testing::ValuesIn(kGetOne), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(RemoteAccess, ProfileSet, testing::ValuesIn(kSet), testing::PrintToStringParamName());

class DhcpEndpoint : public DatabaseTest {
 protected:
  DhcpEndpoint() : DatabaseTest("db_static_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table dhcp_protocol_endpoint (Name unique, NameFormat, ProtocolIFType, OtherTypeDesc, EnabledState, "
        "RequestedState, ClientState, ElementName);");
  }
};

TEST_F(DhcpEndpoint, ReaderIsOneColumnBehindAfterTheProtocol) {
  dhcp_protocol_endpoint_rec stored = {};
  put(stored.Name, "eth0");
  put(stored.NameFormat, "format");
  stored.ProtocolIFType = 1;
  put(stored.OtherTypeDesc, "2 wires");
  stored.EnabledState = 3;
  stored.RequestedState = 4;
  stored.ClientState = 5;
  put(stored.ElementName, "element");
  EXPECT_EQ(0, db_set_dhcp_protocol_endpoint(db, &stored));
  EXPECT_EQ(Texts({"eth0|format|1|2 wires|3|4|5|element"}), rows_of("select * from dhcp_protocol_endpoint;"));

  Owned<dhcp_protocol_endpoint_rec> found;
  EXPECT_EQ(0, db_get_dhcp_protocol_endpoint(db, "eth0", found.out()));
  EXPECT_EQ("eth0", field(found->Name));
  EXPECT_EQ("format", field(found->NameFormat));
  EXPECT_EQ(4, found->ProtocolIFType) << "RequestedState";
  EXPECT_EQ("1", field(found->OtherTypeDesc)) << "ProtocolIFType";
  EXPECT_EQ(2, found->EnabledState) << "the number at the front of OtherTypeDesc";
  EXPECT_EQ(3, found->RequestedState) << "EnabledState";
  EXPECT_EQ(4, found->ClientState) << "RequestedState";
  EXPECT_EQ("5", field(found->ElementName)) << "ClientState";
  logged();
}

}  // namespace
}  // namespace qmv::test
