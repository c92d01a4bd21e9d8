/*
 * The layout of every record, as callers were compiled with: size, and each member's offset and size, in bytes. The
 * same on every machine for records that hold only 32-bit integers and character arrays.
 */
#include <assert.h>
#include <stddef.h>

#include "qmv.h"

#define SIZE(size) static_assert(sizeof(RECORD) == (size), "size of the record")
#define AT(offset, size, member) \
  static_assert(offsetof(RECORD, member) == (offset) && sizeof(((RECORD*)NULL)->member) == (size), #member)

#define RECORD fru_rec
SIZE(2588);
AT(0, 4, FruIDSlaveAddr);
AT(4, 4, DeviceAccessAddr);
AT(8, 4, LUNBusID);
AT(12, 4, ChannelNumber);
AT(16, 4, EntityID);
AT(20, 4, EntityInst);
AT(24, 4, IDStrLen);
AT(28, 256, DevIdStr);
AT(284, 256, ChassisSerNumber);
AT(540, 256, ChassisPartNumber);
AT(796, 256, ChassisCustFields);
AT(1052, 256, ProdSerNumber);
AT(1308, 256, ProdPartNumber);
AT(1564, 256, ProdMfrName);
AT(1820, 256, BrdSerNumber);
AT(2076, 256, BrdPartNumber);
AT(2332, 256, BrdMfrName);
#undef RECORD

#define RECORD compact_sdr_rec
SIZE(3716);
AT(0, 256, DeviceID);
AT(256, 4, SDRType);
AT(260, 4, OwnerLUN);
AT(264, 4, OwnerID);
AT(268, 4, SensorNum);
AT(272, 4, EntityID);
AT(276, 4, EntityInstance);
AT(280, 4, SensorInit);
AT(284, 4, SensorCaps);
AT(288, 256, SensorName);
AT(544, 4, SensorType);
AT(548, 4, CIMSensorType);
AT(552, 4, OtherSensorType);
AT(556, 256, OtherSensorTypeDesc);
AT(812, 4, EventTypeCode);
AT(816, 4, AssertionMask);
AT(820, 4, DeAssertionMask);
AT(824, 4, DiscreteReadingMask);
AT(828, 4, BaseUnit);
AT(832, 4, UnitModifier);
AT(836, 4, RateUnit);
AT(840, 4, RecShareDir);
AT(844, 4, PHysterysis);
AT(848, 4, NHysterysis);
AT(852, 4, OEM);
AT(856, 4, IdStrLen);
AT(860, 256, IdStr);
AT(1116, 4, IPMI_RecordID);
AT(1120, 4, IsFRUAvailable);
AT(1124, 4, PhysicalElement);
AT(1128, 2588, FruRecord);
#undef RECORD

#define RECORD full_sdr_rec
SIZE(3788);
AT(0, 256, DeviceID);
AT(256, 4, SDRType);
AT(260, 4, OwnerID);
AT(264, 4, OwnerLUN);
AT(268, 4, SensorNum);
AT(272, 4, EntityID);
AT(276, 4, EntityInstance);
AT(280, 4, SensorInit);
AT(284, 4, SensorCaps);
AT(288, 256, SensorName);
AT(544, 4, SensorType);
AT(548, 4, CIMSensorType);
AT(552, 4, OtherSensorType);
AT(556, 256, OtherSensorTypeDesc);
AT(812, 4, EventTypeCode);
AT(816, 4, AssertionMask);
AT(820, 4, DeAssertionMask);
AT(824, 4, DiscreteReadingMask);
AT(828, 4, BaseUnit);
AT(832, 4, UnitModifier);
AT(836, 4, RateUnit);
AT(840, 4, Linearization);
AT(844, 4, M);
AT(848, 4, MTolerance);
AT(852, 4, B);
AT(856, 4, BAccuracy);
AT(860, 4, Accuracy);
AT(864, 4, RBExp);
AT(868, 4, AnalogCharFlag);
AT(872, 4, NominalRdg);
AT(876, 4, NormalMax);
AT(880, 4, NormalMin);
AT(884, 4, SensorMaxRdg);
AT(888, 4, SensorMinRdg);
AT(892, 4, UpperNRThreshold);
AT(896, 4, UpperCriticalThreshold);
AT(900, 4, UpperNCThreshold);
AT(904, 4, LowerNRThreshold);
AT(908, 4, LowerCriticalThreshold);
AT(912, 4, LowerNCThreshold);
AT(916, 4, PHysterysis);
AT(920, 4, NHysterysis);
AT(924, 4, OEM);
AT(928, 4, IdStrLen);
AT(932, 256, IdStr);
AT(1188, 4, IPMI_RecordID);
AT(1192, 4, IsFRUAvailable);
AT(1196, 4, PhysicalElement);
AT(1200, 2588, FruRecord);
#undef RECORD

#define RECORD device_rec
SIZE(528);
AT(0, 256, IPAddress);
AT(256, 256, GUID);
AT(512, 4, DeviceType);
AT(516, 4, RequestedState);
AT(520, 4, EntityID);
AT(524, 4, EntityInstance);
#undef RECORD

#define RECORD fru_locator_sdr_rec
SIZE(296);
AT(0, 4, FruIDSlaveAddr);
AT(4, 4, DeviceAccessAddr);
AT(8, 4, LUNBusID);
AT(12, 4, ChannelNumber);
AT(16, 4, DevType);
AT(20, 4, DevTypeModifier);
AT(24, 4, EntityID);
AT(28, 4, EntityInst);
AT(32, 4, OEMField);
AT(36, 4, IDStrLen);
AT(40, 256, DevIdStr);
#undef RECORD

#define RECORD ipmi_session_rec
SIZE(964);
AT(0, 128, SessionText0);
AT(128, 4, SessionValue1);
AT(132, 256, SessionText2);
AT(388, 256, SessionText3);
AT(644, 64, SessionText4);
AT(708, 64, SessionText5);
AT(772, 64, SessionText6);
AT(836, 64, SessionText7);
AT(900, 64, SessionText8);
#undef RECORD

#define RECORD sel_info_rec
SIZE(460);
AT(0, 4, MaxNoOfSels);
AT(4, 64, CompletionCode);
AT(68, 64, Version);
AT(132, 4, RecCnt);
AT(136, 4, FreeSpace);
AT(140, 128, AddTimeStamp);
AT(268, 128, EraseTimeStamp);
AT(396, 64, OperationSupport);
#undef RECORD

#define RECORD sel_rec
SIZE(48);
AT(0, 4, RecordID);
AT(4, 4, RecordType);
AT(8, 4, TimeStamp);
AT(12, 4, GeneratorID);
AT(16, 4, EventType);
AT(20, 4, EvMRev);
AT(24, 4, SensorType);
AT(28, 4, SensorNum);
AT(32, 4, EventDir);
AT(36, 4, EventData1);
AT(40, 4, EventData2);
AT(44, 4, EventData3);
#undef RECORD

#define RECORD fru_sdr_rec
SIZE(2856);
AT(0, 4, FruIDSlaveAddr);
AT(4, 4, DeviceAccessAddr);
AT(8, 4, LUNBusID);
AT(12, 4, ChannelNumber);
AT(16, 4, EntityID);
AT(20, 4, EntityInst);
AT(24, 4, IDStrLen);
AT(28, 256, DevIdStr);
AT(284, 256, ChassisSerNumber);
AT(540, 256, ChassisPartNumber);
AT(796, 256, ChassisCustFields);
AT(1052, 256, ProdSerNumber);
AT(1308, 256, ProdPartNumber);
AT(1564, 256, ProdMfrName);
AT(1820, 256, BrdSerNumber);
AT(2076, 256, BrdPartNumber);
AT(2332, 256, BrdMfrName);
AT(2588, 4, IdStrLen);
AT(2592, 256, IdStr);
AT(2848, 4, IsFRUAvailable);
AT(2852, 4, SensorNum);
#undef RECORD

#define RECORD ena_log_elem_cap_rec
SIZE(776);
AT(0, 256, InstanceID);
AT(256, 256, RequestStatesSupported);
AT(512, 4, ElementNameEditSupported);
AT(516, 256, ElementName);
AT(772, 4, MaxElementNameLen);
#undef RECORD

#define RECORD registered_profile_rec
SIZE(2052);
AT(0, 256, InstanceID);
AT(256, 4, RegOrganization);
AT(260, 256, RegisteredName);
AT(516, 256, RegisteredVersion);
AT(772, 256, AdvertiseTypes);
AT(1028, 256, OtherRegisteredOrganization);
AT(1284, 256, AdvertiseTypesDesc);
AT(1540, 512, ImplementedFeatures);
#undef RECORD

#define RECORD ssh_capabilities_rec
SIZE(1296);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 4, ElementNameEditSupported);
AT(516, 4, MaxConnections);
AT(520, 256, RequestedStatesSupported);
AT(776, 4, ListeningPortManagementSupported);
AT(780, 4, MaxListeningPorts);
AT(784, 256, SupportedSSHVersions);
AT(1040, 256, SupportedEncryptionAlgorithms);
#undef RECORD

#define RECORD telnet_capabilities_rec
SIZE(1296);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 4, ElementNameEditSupported);
AT(516, 4, MaxConnections);
AT(520, 256, RequestedStatesSupported);
AT(776, 4, ListeningPortManagementSupported);
AT(780, 4, MaxListeningPorts);
AT(784, 256, SupportedTerminalModes);
AT(1040, 256, SupportedCharacterDisplayModes);
#undef RECORD

#define RECORD phy_asset_capabilities_rec
SIZE(516);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 4, FRUInfoSupported);
#undef RECORD

#define RECORD dhcp_capabilities_rec
SIZE(772);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 4, ElementNameEditSupported);
AT(516, 256, OptionsSupported);
#undef RECORD

#define RECORD dhcp_protocol_endpoint_rec
SIZE(1040);
AT(0, 256, Name);
AT(256, 256, NameFormat);
AT(512, 4, ProtocolIFType);
AT(516, 256, OtherTypeDesc);
AT(772, 4, EnabledState);
AT(776, 4, RequestedState);
AT(780, 4, ClientState);
AT(784, 256, ElementName);
#undef RECORD

#define RECORD concrete_collection_rec
SIZE(512);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
#undef RECORD

#define RECORD power_management_capabilities_rec
SIZE(704);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 64, PowerChangeCapabilities);
AT(576, 64, PowerStateSupported);
AT(640, 64, RequestedPowerStatesSupported);
#undef RECORD

#define RECORD power_management_service_rec
SIZE(1024);
AT(0, 256, Name);
AT(256, 256, SystemCreationClassName);
AT(512, 256, CreationClassName);
AT(768, 256, ElementName);
#undef RECORD

#define RECORD account_mgt_capabilities_rec
SIZE(776);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 4, ElementNameEditSupported);
AT(516, 4, MaxElementNameLen);
AT(520, 256, OperationsSupported);
#undef RECORD

#define RECORD account_setting_data_rec
SIZE(576);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 64, MaxPwdExpiration);
#undef RECORD

#define RECORD boot_setting_data_rec
SIZE(768);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 256, OwningEntity);
#undef RECORD

#define RECORD boot_config_setting_rec
SIZE(512);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
#undef RECORD

#define RECORD boot_service_capabilities_rec
SIZE(520);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 4, ElementNameEditSupported);
AT(516, 4, BootConfigCapabilities);
#undef RECORD

#define RECORD boot_source_setting_rec
SIZE(1288);
AT(0, 256, InstanceID);
AT(256, 256, ElementName);
AT(512, 256, BootString);
AT(768, 256, BIOSBootString);
AT(1024, 256, StructuredBootString);
AT(1280, 4, FailThroughSupported);
AT(1284, 4, isHost);
#undef RECORD

#define RECORD boot_service_rec
SIZE(1284);
AT(0, 256, SystemCreationClassName);
AT(256, 256, CreationClassName);
AT(512, 256, ElementName);
AT(768, 256, SystemName);
AT(1024, 256, Name);
AT(1280, 4, reserved);
#undef RECORD

#define RECORD boot_order_rec
SIZE(264);
AT(0, 256, InstanceID);
AT(256, 4, AssignedSequence);
AT(260, 4, isHost);
#undef RECORD

#define RECORD ip_assign_settingdata_rec
SIZE(516);
AT(0, 256, InstanceID);
AT(256, 4, AddressOrigin);
AT(260, 256, ElementName);
#undef RECORD

#define RECORD static_ip_assign_settingdata_rec
SIZE(1544);
AT(0, 256, InterfaceName);
AT(256, 256, IPv4Address);
AT(512, 256, Gateway);
AT(768, 256, SubnetMask);
AT(1024, 256, IPv6Address);
AT(1280, 4, IPv6AddressType);
AT(1284, 4, IPv6SubnetPrefixLength);
AT(1288, 256, GatewayIPv6Address);
#undef RECORD

#define RECORD role_based_mgt_capabilities_rec
SIZE(1540);
AT(0, 256, InstanceID);
AT(256, 4, SharedPrivilege);
AT(260, 256, ActivitiesSupported);
AT(516, 256, ActivityQualifierSupported);
AT(772, 256, SupportedMethods);
AT(1028, 256, QualifierFormatsSupported);
AT(1284, 256, ElementName);
#undef RECORD

#define RECORD privilege_rec
SIZE(1288);
AT(0, 256, InstanceID);
AT(256, 4, PrivilegeGranted);
AT(260, 256, Activities);
AT(516, 256, ActivityQualifiers);
AT(772, 256, QualifierFormats);
AT(1028, 4, RepresentsAuthRights);
AT(1032, 256, ElementName);
#undef RECORD

#define RECORD role_rec
SIZE(1280);
AT(0, 256, CreationClassName);
AT(256, 256, Name);
AT(512, 256, RoleCharacteristics);
AT(768, 256, CommonName);
AT(1024, 256, ElementName);
#undef RECORD

#define RECORD assign_role_rec
SIZE(512);
AT(0, 256, IdentityInstanceID);
AT(256, 256, RoleCLPName);
#undef RECORD

#define RECORD protocol_service_rec
SIZE(1044);
AT(0, 256, Name);
AT(256, 4, Protocol);
AT(260, 256, ElementName);
AT(516, 4, MaxConnections);
AT(520, 4, RequestedState);
AT(524, 4, EnabledState);
AT(528, 4, HealthState);
AT(532, 256, OperationalStatus);
AT(788, 256, OtherProtocol);
#undef RECORD

#define RECORD textredirectionservice_rec
SIZE(532);
AT(0, 256, Name);
AT(256, 256, ElementName);
AT(512, 4, MaxConcurrentEnabledSAPs);
AT(516, 4, EnabledState);
AT(520, 4, RequestedState);
AT(524, 4, SharingMode);
AT(528, 4, RedirectionServiceType);
#undef RECORD

#define RECORD textredirectionsap_rec
SIZE(780);
AT(0, 256, Name);
AT(256, 256, ElementName);
AT(512, 4, EnabledState);
AT(516, 4, RequestedState);
AT(520, 4, TextFlowType);
AT(524, 256, SessionTerminateSequence);
#undef RECORD

#define RECORD pwds_capabilities_rec
SIZE(648);
AT(0, 256, instance_id);
AT(256, 256, ele_name);
AT(512, 32, req_states_supported);
AT(544, 4, ele_name_edit_supported);
AT(548, 4, max_ele_name_len);
AT(552, 32, act_on_exp_supported);
AT(584, 32, last_exp_data_supported);
AT(616, 32, wdt_data_supported);
#undef RECORD

#define RECORD account_management_service_rec
SIZE(520);
AT(0, 256, Name);
AT(256, 4, RequestedState);
AT(260, 4, EnabledState);
AT(264, 256, ElementName);
#undef RECORD

#define RECORD concrete_job_rec
SIZE(528);
AT(0, 64, InstanceID);
AT(64, 64, ElementName);
AT(128, 4, JobState);
AT(132, 64, JobStatus);
AT(196, 4, DeleteOnCompletion);
AT(200, 64, TimeBeforeRemoval);
AT(264, 256, OperationalStatus);
AT(520, 4, PercentComplete);
AT(524, 4, RemovalTime);
#undef RECORD

#define RECORD error_info_rec
SIZE(276);
AT(0, 4, ErrorType);
AT(4, 4, PerceivedSeverity);
AT(8, 4, ProbableCause);
AT(12, 256, ErrorSource);
AT(268, 4, ErrorSourceFormat);
AT(272, 4, CIMStatusCode);
#undef RECORD

#define RECORD indication_service_rec
SIZE(276);
AT(0, 256, Name);
AT(256, 4, FilterCreationEnabled);
AT(260, 4, DeliveryRetryAttempts);
AT(264, 4, DeliveryRetryInterval);
AT(268, 4, SubscriptionRemovalAction);
AT(272, 4, SubscriptionRemovalTimeInterval);
#undef RECORD

#define RECORD event_type_rec
SIZE(260);
AT(0, 4, MessageID);
AT(4, 256, Description);
#undef RECORD

#define RECORD listener_destination_rec
SIZE(512);
AT(0, 256, Name);
AT(256, 256, Destination);
#undef RECORD

#define RECORD indication_filter_rec
SIZE(780);
AT(0, 256, Name);
AT(256, 512, Query);
AT(768, 4, SensorNumMask);
AT(772, 4, SensorTypeMask);
AT(776, 4, SeverityMask);
#undef RECORD

#define RECORD indication_subscription_rec
SIZE(528);
AT(0, 256, DestName);
AT(256, 256, FilterName);
AT(512, 4, EventSeverity);
AT(516, 4, SensorNum);
AT(520, 4, SensorType);
AT(524, 4, Enabled);
#undef RECORD

#define RECORD request_state_change_rec
SIZE(772);
AT(0, 256, ClassName);
AT(256, 4, RequestedState);
AT(260, 256, KeyProperty);
AT(516, 256, KeyValue);
#undef RECORD

#define RECORD association_reg_rec
SIZE(1024);
AT(0, 256, RegColumn3);
AT(256, 256, RegColumn0);
AT(512, 256, RegColumn2);
AT(768, 256, RegColumn1);
#undef RECORD

/* The records that hold pointers, where these have four bytes and where they have eight. */
#define EITHER(with_4, with_8) (sizeof(void*) == 4 ? (with_4) : (with_8))

#define RECORD association_rec
SIZE(EITHER(1060, 1080));
AT(0, 256, NameSpace);
AT(256, EITHER(4, 8), List5);
AT(EITHER(260, 264), EITHER(4, 8), List6);
AT(EITHER(264, 272), 4, Count5);
AT(EITHER(268, 276), 4, Count6);
AT(EITHER(272, 280), 4, Flag4);
AT(EITHER(276, 284), 256, ClassName);
AT(EITHER(532, 540), 256, Text2);
AT(EITHER(788, 796), 256, Text3);
AT(EITHER(1044, 1056), EITHER(4, 8), List7); /* aligned */
AT(EITHER(1048, 1064), EITHER(4, 8), List8);
AT(EITHER(1052, 1072), 4, Count7);
AT(EITHER(1056, 1076), 4, Count8);
#undef RECORD

#define RECORD column_name_node
SIZE(EITHER(132, 136));
AT(0, 128, ColumnName);
AT(128, EITHER(4, 8), Next);
#undef RECORD
