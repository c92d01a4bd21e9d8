// Sample: SSH and telnet, of which telnet is off, and the addresses of the one interface, which are static.
#include "sample.h"
#include "sample_rows.h"

namespace qmvctl {

namespace {

// SSH version 2 (3); its ciphers are others (1) than the class names.
constexpr ssh_capabilities_rec kSshCapabilities[] = {{
    .InstanceID = "QMV:Capabilities-SSH",
    .ElementName = "SSH Capabilities",
    .ElementNameEditSupported = 0,
    .MaxConnections = 4,
    .RequestedStatesSupported = "2,3",
    .ListeningPortManagementSupported = 1,
    .MaxListeningPorts = 1,
    .SupportedSSHVersions = "3",
    .SupportedEncryptionAlgorithms = "1",
}};

constexpr telnet_capabilities_rec kTelnetCapabilities[] = {{
    .InstanceID = "QMV:Capabilities-Telnet",
    .ElementName = "Telnet Capabilities",
    .ElementNameEditSupported = 0,
    .MaxConnections = 2,
    .RequestedStatesSupported = "2,3",
    .ListeningPortManagementSupported = 1,
    .MaxListeningPorts = 1,
    .SupportedTerminalModes = "1",
    .SupportedCharacterDisplayModes = "1",
}};

// Protocol, name, connections, RequestedState, EnabledState, HealthState, OperationalStatus (2 OK, 10 stopped).
constexpr protocol_service_rec kServices[] = {
    {"SSHService", 2, "SSH Service", 4, 12, 2, 5, "2", ""},
    {"TelnetService", 3, "Telnet Service", 2, 3, 3, 5, "10", ""},
};

// Somebody turned it off.
constexpr request_state_change_rec kStateChanges[] = {
    {"CIM_ProtocolService", 3, "Name", "TelnetService"},
};

// Subnet mask (3), router (5), domain name servers (8).
constexpr dhcp_capabilities_rec kDhcpCapabilities[] = {
    {"QMV:Capabilities-DHCP", "DHCP Capabilities", 0, "3,5,8"},
};

constexpr dhcp_protocol_endpoint_rec kDhcpClients[] = {{
    .Name = "DHCP-eth0",
    .NameFormat = "DHCP-Interface",
    .ProtocolIFType = 1,
    .OtherTypeDesc = "DHCP",
    .EnabledState = 3,
    .RequestedState = 12,
    .ClientState = 0,
    .ElementName = "DHCP Client",
}};

constexpr ip_assign_settingdata_rec kIpAssignments[] = {
    {"QMV:IPAssignment-Static", 3, "Static Address"},
    {"QMV:IPAssignment-DHCP", 4, "Address by DHCP"},
};

constexpr static_ip_assign_settingdata_rec kStaticAddresses[] = {{
    .InterfaceName = "eth0",
    .IPv4Address = "192.0.2.10",
    .Gateway = "192.0.2.1",
    .SubnetMask = "255.255.255.0",
    .IPv6Address = "2001:db8::10",
    .IPv6AddressType = 6,  // global unicast
    .IPv6SubnetPrefixLength = 64,
    .GatewayIPv6Address = "2001:db8::1",
}};

}  // namespace

void store_sample_remote_access(Database& database) {
  store_rows(database, "ssh_capabilities", kSshCapabilities, db_set_sshcapabilities);
  store_rows(database, "telnet_capabilities", kTelnetCapabilities, db_set_telnetcapabilities);
  store_rows(database, "protocol_service", kServices, db_set_protocol_service);
  store_rows(database, "request_state_change", kStateChanges, db_set_req_state_change);
  store_rows(database, "dhcp_capabilities", kDhcpCapabilities, db_set_dhcp_capabilities);
  store_rows(database, "dhcp_protocol_endpoint", kDhcpClients, db_set_dhcp_protocol_endpoint);
  store_rows(database, "ip_assign_settingdata", kIpAssignments, db_set_ip_assignment_settingdata);
  store_rows(database, "static_ip_assign_settingdata", kStaticAddresses, db_set_static_ip_assignment_settingdata);
}

}  // namespace qmvctl
