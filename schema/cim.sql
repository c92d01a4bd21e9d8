-- cim.sql - the tables of the instance database, /tmp/cim.db.
--
-- Readers take columns by position, writers by name: keep order and spelling. Names are as the statements spell them
-- (SQLite does not tell upper from lower case). Keys are unique because a set updates a row only where its insert meets
-- the key. "Raw" is a reading in the sensor's own counts; IPMI 2.0, section 36.3, converts it. Table numbers are those
-- of IPMI 2.0.

-- Sensors without conversion factors, one row each: the bytes of a compact sensor record (table 43-2).
CREATE TABLE compact_sdr (
  DeviceID            TEXT NOT NULL PRIMARY KEY, -- the sensor's key; no two sensors share it, compact or full
  SDRType             INTEGER, -- record type, 2
  OwnerLUN            INTEGER, -- sensor owner LUN byte: channel in bits 7 to 4, LUN in bits 1 and 0
  OwnerID             INTEGER, -- sensor owner: slave address in bits 7 to 1, or software ID with bit 0 set
  SensorNum           INTEGER, -- number of the sensor at its owner
  EntityID            INTEGER, -- what the sensor belongs to (table 43-13)
  EntityInstance      INTEGER, -- which of them; bit 7 set for a logical entity
  SensorInit          INTEGER, -- sensor initialization bits
  SensorCaps          INTEGER, -- sensor capability bits
  SensorName          TEXT,    -- name for people; the ID string
  SensorType          INTEGER, -- table 42-3
  CIMSensorType       INTEGER, -- CIM_Sensor.SensorType
  OtherSensorType     INTEGER, -- SensorType again where CIMSensorType is 1 (Other), else 0
  OtherSensorTypeDesc TEXT,    -- name of the sensor type where CIMSensorType is 1, else empty
  EventTypeCode       INTEGER, -- event/reading type (table 42-1)
  AssertionMask       INTEGER, -- assertion event mask, low byte first in the record
  DeAssertionMask     INTEGER, -- deassertion event mask
  DiscreteReadingMask INTEGER, -- states that can be read, or thresholds that can be read (low byte) and set (high byte)
  BaseUnit            INTEGER, -- sensor units 2: base unit (table 43-15)
  UnitModifier        INTEGER, -- sensor units 3: modifier unit (table 43-15)
  RateUnit            INTEGER, -- sensor units 1: data format, bits 7 and 6; rate, 5 to 3; modifier use; percentage
  RecShareDir         INTEGER, -- record sharing and sensor direction, two bytes, the first one low
  PHysterysis         INTEGER, -- positive-going threshold hysteresis, raw
  NHysterysis         INTEGER, -- negative-going threshold hysteresis, raw
  OEM                 INTEGER, -- OEM byte
  IdStrLen            INTEGER, -- length of IdStr, in bytes
  IdStr               TEXT,    -- ID string, UTF-8
  IPMI_RecordID       INTEGER, -- ID of the record in the repository
  IsFRUAvailable      INTEGER, -- 1 when the columns below describe the FRU of the sensor's entity, else 0
  PhysicalElement     INTEGER, -- categories of the entity: 1 slot, 2 card, 4 chassis, 8 chip, 16 package, 32 connector,
                               -- 256 memory, 1024 power supply
  FruIDSlaveAddr      INTEGER, -- from here on: the FRU of the sensor's entity, as in fru
  DeviceAccessAddr    INTEGER,
  LUNBusID            INTEGER,
  ChannelNumber       INTEGER,
  FRUIDStrLen         INTEGER, -- IDStrLen of fru
  DevIdStr            TEXT,
  ChassisSerNumber    TEXT,
  ChassisPartNumber   TEXT,
  ChassisCustFields   TEXT,
  ProdSerNumber       TEXT,
  ProdPartNumber      TEXT,
  ProdMfrName         TEXT,
  BrdSerNumber        TEXT,
  BrdPartNumber       TEXT,
  BrdMfrName          TEXT
);

-- Look-ups by entity, one row for each entity, and the joins with fru.
CREATE INDEX compact_sdr_entity ON compact_sdr (EntityID, EntityInstance);

-- Numeric sensors, one row each: the bytes of a full sensor record (table 43-1).
CREATE TABLE full_sdr (
  DeviceID               TEXT NOT NULL PRIMARY KEY, -- the columns to RateUnit are as in compact_sdr
  SDRType                INTEGER, -- record type, 1
  OwnerLUN               INTEGER,
  OwnerID                INTEGER,
  SensorNum              INTEGER,
  EntityID               INTEGER,
  EntityInstance         INTEGER,
  SensorInit             INTEGER,
  SensorCaps             INTEGER,
  SensorName             TEXT,
  SensorType             INTEGER,
  CIMSensorType          INTEGER,
  OtherSensorType        INTEGER,
  OtherSensorTypeDesc    TEXT,
  EventTypeCode          INTEGER,
  AssertionMask          INTEGER,
  DeAssertionMask        INTEGER,
  DiscreteReadingMask    INTEGER,
  BaseUnit               INTEGER,
  UnitModifier           INTEGER,
  RateUnit               INTEGER,
  Linearization          INTEGER, -- 0 linear, 1 to 11 a function, 112 to 127 non-linear
  M                      INTEGER, -- M, lower 8 bits
  MTolerance             INTEGER, -- M, upper 2 bits in bits 7 and 6; tolerance in half raw counts
  B                      INTEGER, -- B, lower 8 bits
  BAccuracy              INTEGER, -- B, upper 2 bits in bits 7 and 6; accuracy, lower 6 bits, in 1/100 percent
  Accuracy               INTEGER, -- accuracy, upper 4 bits, its exponent in bits 3 and 2, sensor direction
  RBExp                  INTEGER, -- R exponent in bits 7 to 4, B exponent in bits 3 to 0, two's complement each
  AnalogCharFlag         INTEGER, -- bit 0 nominal reading, 1 normal maximum, 2 normal minimum are given
  NominalRdg             INTEGER, -- nominal reading, raw
  NormalMax              INTEGER, -- normal maximum, raw
  NormalMin              INTEGER, -- normal minimum, raw
  SensorMaxRdg           INTEGER, -- largest reading, raw
  SensorMinRdg           INTEGER, -- smallest reading, raw
  UpperNRThreshold       INTEGER, -- upper non-recoverable threshold, raw
  UpperCriticalThreshold INTEGER, -- upper critical threshold, raw
  UpperNCThreshold       INTEGER, -- upper non-critical threshold, raw
  LowerNRThreshold       INTEGER, -- lower non-recoverable threshold, raw
  LowerCriticalThreshold INTEGER, -- lower critical threshold, raw
  LowerNCThreshold       INTEGER, -- lower non-critical threshold, raw
  PHysterysis            INTEGER, -- from here on as in compact_sdr
  NHysterysis            INTEGER,
  OEM                    INTEGER,
  IdStrLen               INTEGER,
  IdStr                  TEXT,
  IPMI_RecordID          INTEGER,
  IsFRUAvailable         INTEGER,
  PhysicalElement        INTEGER,
  FruIDSlaveAddr         INTEGER,
  DeviceAccessAddr       INTEGER,
  LUNBusID               INTEGER,
  ChannelNumber          INTEGER,
  FRUIDStrLen            INTEGER,
  DevIdStr               TEXT,
  ChassisSerNumber       TEXT,
  ChassisPartNumber      TEXT,
  ChassisCustFields      TEXT,
  ProdSerNumber          TEXT,
  ProdPartNumber         TEXT,
  ProdMfrName            TEXT,
  BrdSerNumber           TEXT,
  BrdPartNumber          TEXT,
  BrdMfrName             TEXT
);

-- Look-ups by entity, one row for each entity, the joins with fru, and the lists of a physical element class.
CREATE INDEX full_sdr_entity ON full_sdr (EntityID, EntityInstance);
-- The record ID of a sensor number.
CREATE INDEX full_sdr_number ON full_sdr (SensorNum);

-- Field-replaceable units, one row each: address, entity and inventory. The address is bytes 6 to 9 of the FRU device
-- locator (table 43-7); the strings come from the areas of the FRU's information storage, as UTF-8.
CREATE TABLE fru (
  FruIDSlaveAddr    INTEGER NOT NULL, -- FRU device ID, or slave address of a device without a controller
  DeviceAccessAddr  INTEGER NOT NULL, -- slave address of the controller that gives access
  LUNBusID          INTEGER NOT NULL, -- bit 7 logical FRU device, LUN in bits 4 and 3, private bus in bits 2 to 0
  ChannelNumber     INTEGER NOT NULL, -- channel of that controller
  EntityID          INTEGER, -- what the FRU is (table 43-13)
  EntityInst        INTEGER, -- which of them
  IDStrLen          INTEGER, -- length of DevIdStr as the locator gives it
  DevIdStr          TEXT,    -- the locator's ID string
  ChassisSerNumber  TEXT,    -- chassis information area: serial number
  ChassisPartNumber TEXT,    -- chassis information area: part number
  ChassisCustFields TEXT,    -- chassis information area: custom fields, separated by ", "
  ProdSerNumber     TEXT,    -- product information area: serial number
  ProdPartNumber    TEXT,    -- product information area: part or model number
  ProdMfrName       TEXT,    -- product information area: manufacturer
  BrdSerNumber      TEXT,    -- board information area: serial number
  BrdPartNumber     TEXT,    -- board information area: part number
  BrdMfrName        TEXT,    -- board information area: manufacturer
  PRIMARY KEY (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber)
);

-- Look-ups by entity and the joins with the sensors.
CREATE INDEX fru_entity ON fru (EntityID, EntityInst);

-- FRU device locators, one row each (table 43-7).
CREATE TABLE fru_locator_sdr (
  FruIDSlaveAddr   INTEGER NOT NULL, -- the address is as in fru
  DeviceAccessAddr INTEGER NOT NULL,
  LUNBusID         INTEGER NOT NULL,
  ChannelNumber    INTEGER NOT NULL,
  DevType          INTEGER, -- device type (table 43-12)
  DevTypeModifier  INTEGER, -- device type modifier (table 43-12)
  EntityID         INTEGER, -- what the FRU is (table 43-13)
  EntityInst       INTEGER, -- which of them
  OEMField         INTEGER, -- OEM byte
  IDStrLen         INTEGER, -- length of DevIdStr as the record gives it
  DevIdStr         TEXT,    -- ID string, UTF-8
  PRIMARY KEY (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber)
);

-- Managed systems, one row each. Both texts stay below 256 bytes.
CREATE TABLE device (
  GUID           TEXT NOT NULL,    -- the system's globally unique ID
  DeviceType     INTEGER NOT NULL, -- kind of system, chosen by the writer
  IPAddress      TEXT,             -- address of its management controller
  RequestedState INTEGER,          -- CIM_EnabledLogicalElement.RequestedState
  EntityID       INTEGER,          -- its entity (table 43-13)
  EntityInstance INTEGER,
  PRIMARY KEY (GUID, DeviceType)
);

-- The first system of a type.
CREATE INDEX device_type ON device (DeviceType);

-- The IPMI session, one row. Columns are only transported: who fills the table says what they mean. Texts have at most
-- the width given here, in bytes.
CREATE TABLE ipmi_session (
  SessionText0  TEXT,    -- 128
  SessionValue1 INTEGER,
  SessionText2  TEXT,    -- 256
  SessionText3  TEXT,    -- 256
  SessionText4  TEXT,    -- 64
  SessionText5  TEXT,    -- 64
  SessionText6  TEXT,    -- 64
  SessionText7  TEXT,    -- 64
  SessionText8  TEXT     -- 64
);

-- The event log as a whole, one row (table 31-2). What is unknown is 0 or empty.
CREATE TABLE sel_info (
  MaxNoOfSels      INTEGER,                   -- events that the log can hold
  CompletionCode   TEXT,                      -- of Get SEL Info, two hexadecimal digits
  Version          TEXT NOT NULL PRIMARY KEY, -- version of the log's format, two hexadecimal digits, "51" for IPMI 2.0
  RecCnt           INTEGER,                   -- events in the log
  FreeSpace        INTEGER,                   -- free space, in bytes
  AddTimeStamp     TEXT,                      -- time of the latest addition, seconds since 1970-01-01 00:00
  EraseTimeStamp   TEXT,                      -- time of the latest erasure, likewise
  OperationSupport TEXT                       -- operation support byte, two hexadecimal digits
);

-- Events, one row each (table 32-1). The record ID is the row's own number, so rows come in the order of their IDs.
CREATE TABLE sel (
  RecordID    INTEGER NOT NULL PRIMARY KEY, -- 1 to 65534
  RecordType  INTEGER, -- 2 for a system event
  TimeStamp   INTEGER, -- seconds since 1970-01-01 00:00, the low 32 bits as a signed number
  GeneratorID TEXT,    -- low byte of the generator ID, two hexadecimal digits; never more than three characters
  EventType   INTEGER, -- event/reading type (table 42-1)
  EvMRev      INTEGER, -- event message format revision, 4 in IPMI 2.0
  SensorType  INTEGER, -- table 42-3
  SensorNum   INTEGER, -- number of the sensor at the generator
  EventDir    INTEGER, -- 0 assertion, 1 deassertion
  EventData1  INTEGER, -- table 29-6: offset in bits 3 to 0, what the other two bytes hold in bits 7 to 4
  EventData2  INTEGER, -- reading, raw, or other data
  EventData3  INTEGER  -- threshold, raw, or other data
);

-- Profile instances, one table a class, one row an instance. Columns are properties of the DMTF class that is named
-- with the table: the library transports their values, and what a number means stands in the class's value map. A
-- property that holds several values, marked "list", is one text; its form is between its writers and readers.
-- RequestedState and EnabledState are those of CIM_EnabledLogicalElement: 2 enabled, 3 disabled.

-- CIM_EnabledLogicalElementCapabilities.
CREATE TABLE ena_log_elem_cap (
  InstanceID               TEXT NOT NULL PRIMARY KEY,
  RequestStatesSupported   TEXT,    -- RequestedStatesSupported, list; spelled so here only
  ElementNameEditSupported INTEGER, -- 1 when the element's name can be changed, else 0
  ElementName              TEXT,    -- name for people
  MaxElementNameLen        INTEGER  -- longest name, in characters
);

-- CIM_RegisteredProfile: a management profile and its version, as DMTF registers them.
CREATE TABLE registered_profile (
  InstanceID                  TEXT NOT NULL PRIMARY KEY,
  RegOrganization             INTEGER, -- RegisteredOrganization; 2 DMTF, 1 another
  RegisteredName              TEXT,    -- "Boot Control", say
  RegisteredVersion           TEXT,    -- major.minor.update
  AdvertiseTypes              TEXT,    -- list; 2 not advertised, 3 SLP
  OtherRegisteredOrganization TEXT,    -- its name where RegOrganization is 1
  AdvertiseTypesDesc          TEXT,    -- AdvertiseTypeDescriptions, list
  ImplementedFeatures         TEXT     -- list; at most 512 bytes
);

-- CIM_SSHCapabilities.
CREATE TABLE ssh_capabilities (
  InstanceID                       TEXT NOT NULL PRIMARY KEY,
  ElementName                      TEXT,
  ElementNameEditSupported         INTEGER,
  MaxConnections                   INTEGER, -- sessions at a time
  RequestedStatesSupported         TEXT,    -- list
  ListeningPortManagementSupported INTEGER, -- 1 when the port can be changed, else 0
  MaxListeningPorts                INTEGER,
  SupportedSSHVersions             TEXT,    -- list
  SupportedEncryptionAlgorithms    TEXT     -- list
);

-- CIM_TelnetCapabilities; what is not explained is as in ssh_capabilities.
CREATE TABLE telnet_capabilities (
  InstanceID                       TEXT NOT NULL PRIMARY KEY,
  ElementName                      TEXT,
  ElementNameEditSupported         INTEGER,
  MaxConnections                   INTEGER,
  RequestedStatesSupported         TEXT,
  ListeningPortManagementSupported INTEGER,
  MaxListeningPorts                INTEGER,
  SupportedTerminalModes           TEXT,    -- list
  SupportedCharacterDisplayModes   TEXT     -- list
);

-- CIM_PhysicalAssetCapabilities. The get-one takes the first row.
CREATE TABLE phy_asset_capabilities (
  InstanceID       TEXT NOT NULL PRIMARY KEY,
  ElementName      TEXT,
  FRUInfoSupported INTEGER -- 1 when inventory data are given, else 0
);

-- CIM_DHCPCapabilities. The get-one takes the first row.
CREATE TABLE dhcp_capabilities (
  InstanceID               TEXT NOT NULL PRIMARY KEY,
  ElementName              TEXT,
  ElementNameEditSupported INTEGER,
  OptionsSupported         TEXT     -- list of DHCP options
);

-- CIM_DHCPProtocolEndpoint. The get-one shifts the columns from ProtocolIFType on; see qmv/profiles.h.
CREATE TABLE dhcp_protocol_endpoint (
  Name           TEXT NOT NULL PRIMARY KEY,
  NameFormat     TEXT,    -- what the name is made of
  ProtocolIFType INTEGER, -- 1 other
  OtherTypeDesc  TEXT,    -- OtherTypeDescription, where ProtocolIFType is 1
  EnabledState   INTEGER,
  RequestedState INTEGER,
  ClientState    INTEGER, -- where the client is in obtaining its lease
  ElementName    TEXT
);

-- CIM_ConcreteCollection.
CREATE TABLE concrete_collection (
  InstanceID  TEXT NOT NULL PRIMARY KEY,
  ElementName TEXT
);

-- CIM_PowerManagementCapabilities. The lists have at most 64 bytes.
CREATE TABLE power_management_capabilities (
  InstanceID                    TEXT NOT NULL PRIMARY KEY,
  ElementName                   TEXT,
  PowerChangeCapabilities       TEXT, -- list; how power can be changed
  PowerStateSupported           TEXT, -- PowerStatesSupported, list
  RequestedPowerStatesSupported TEXT  -- list
);

-- CIM_PowerManagementService.
CREATE TABLE power_management_service (
  Name                    TEXT NOT NULL PRIMARY KEY, -- an update goes by the name alone, so no two services share it
  SystemCreationClassName TEXT,                      -- class of the system that the service is part of
  CreationClassName       TEXT,                      -- class of the service
  ElementName             TEXT
);

-- CIM_AccountManagementCapabilities. A row is never updated: a set leaves an existing one as it is.
CREATE TABLE account_mgt_capabilities (
  InstanceID               TEXT NOT NULL PRIMARY KEY,
  ElementName              TEXT,
  ElementNameEditSupported INTEGER,
  MaxElementNameLen        INTEGER,
  OperationsSupported      TEXT     -- list; what can be done to accounts
);

-- CIM_AccountSettingData. A row is never updated: a set leaves an existing one as it is.
CREATE TABLE account_setting_data (
  InstanceID       TEXT NOT NULL PRIMARY KEY,
  ElementName      TEXT,
  MaxPwdExpiration TEXT -- MaximumPasswordExpiration, a CIM interval; at most 64 bytes
);

-- CIM_BootSettingData. A row is never updated: a set leaves an existing one as it is.
CREATE TABLE boot_setting_data (
  InstanceID   TEXT NOT NULL PRIMARY KEY,
  ElementName  TEXT,
  OwningEntity TEXT -- who defined the setting
);

-- CIM_BootConfigSetting.
CREATE TABLE boot_config_setting (
  InstanceID  TEXT NOT NULL PRIMARY KEY,
  ElementName TEXT
);

-- CIM_BootServiceCapabilities. A row is never updated: a set leaves an existing one as it is.
CREATE TABLE boot_service_capabilities (
  InstanceID               TEXT NOT NULL PRIMARY KEY,
  ElementName              TEXT,
  ElementNameEditSupported INTEGER,
  BootConfigCapabilities   INTEGER
);

-- CIM_BootSourceSetting. A row is never updated: a set leaves an existing one as it is.
CREATE TABLE boot_source_setting (
  InstanceID           TEXT NOT NULL PRIMARY KEY,
  ElementName          TEXT,
  BootString           TEXT,    -- names the source to the boot service
  BIOSBootString       TEXT,    -- names it to the firmware of the host
  StructuredBootString TEXT,    -- "CIM:Network:1", say
  FailThroughSupported INTEGER, -- whether the next source is tried when this one fails
  isHost               INTEGER  -- which side the source is for, chosen by the writer
);

-- CIM_BootService.
CREATE TABLE boot_service (
  SystemCreationClassName TEXT NOT NULL PRIMARY KEY, -- class of the system that boots; one service for each
  CreationClassName       TEXT,                      -- class of the service
  ElementName             TEXT,
  SystemName              TEXT,                      -- name of the system that boots
  Name                    TEXT
);

-- The boot sequence: a row for each boot source (CIM_OrderedComponent between it and the boot configuration).
CREATE TABLE boot_order (
  InstanceID       TEXT NOT NULL PRIMARY KEY, -- of the boot source
  AssignedSequence INTEGER,                   -- place in the sequence; 0 for none
  isHost           INTEGER                    -- which side the entry is for; the get-all does not read it
);

-- CIM_IPAssignmentSettingData.
CREATE TABLE ip_assign_settingdata (
  InstanceID    TEXT NOT NULL PRIMARY KEY,
  AddressOrigin INTEGER, -- 3 static, 4 DHCP
  ElementName   TEXT
);

-- CIM_StaticIPAssignmentSettingData, one row a network interface.
CREATE TABLE static_ip_assign_settingdata (
  InterfaceName          TEXT NOT NULL PRIMARY KEY,
  IPv4Address            TEXT,    -- dotted decimal
  SubnetMask             TEXT,
  Gateway                TEXT,    -- GatewayIPv4Address
  IPv6Address            TEXT,
  IPv6AddressType        INTEGER, -- scope of the address, chosen by the writer
  IPv6SubnetPrefixLength INTEGER, -- in bits
  GatewayIPv6Address     TEXT
);

-- CIM_RoleBasedManagementCapabilities.
CREATE TABLE role_based_mgt_capabilities (
  InstanceID                 TEXT NOT NULL PRIMARY KEY,
  SharedPrivilege            INTEGER, -- SharedPrivilegeSupported; 1 when roles can share a privilege, else 0
  ActivitiesSupported        TEXT,    -- list
  ActivityQualifierSupported TEXT,    -- ActivityQualifiersSupported, list
  SupportedMethods           TEXT,    -- list
  QualifierFormatsSupported  TEXT,    -- list
  ElementName                TEXT
);

-- CIM_Privilege.
CREATE TABLE privilege (
  InstanceID           TEXT NOT NULL PRIMARY KEY,
  PrivilegeGranted     INTEGER, -- 1 granted, 0 denied
  Activities           TEXT,    -- list; 2 create, 3 delete, 4 detect, 5 read, 6 write, 7 execute
  ActivityQualifiers   TEXT,    -- list; what the activities are limited to
  QualifierFormats     TEXT,    -- list; how ActivityQualifiers is to be read
  RepresentsAuthRights INTEGER, -- RepresentsAuthorizationRights; 1 when it gives the right to grant, else 0
  ElementName          TEXT
);

-- CIM_Role.
CREATE TABLE role (
  CreationClassName   TEXT,
  Name                TEXT NOT NULL PRIMARY KEY, -- an update goes by the name alone, so no two roles share it
  RoleCharacteristics TEXT,                      -- list; 2 static, 3 opaque
  CommonName          TEXT,
  ElementName         TEXT
);

-- The role of an identity.
CREATE TABLE assign_role (
  IdentityInstanceID TEXT NOT NULL PRIMARY KEY, -- CIM_Identity.InstanceID
  RoleCLPName        TEXT                       -- the role's name in the command-line protocol
);

-- CIM_ProtocolService.
CREATE TABLE protocol_service (
  Name              TEXT NOT NULL PRIMARY KEY,
  Protocol          INTEGER, -- 1 other, 2 SSH, 3 telnet
  ElementName       TEXT,
  MaxConnections    INTEGER, -- sessions at a time
  RequestedState    INTEGER,
  EnabledState      INTEGER,
  HealthState       INTEGER, -- CIM_ManagedSystemElement.HealthState; 5 OK
  OperationalStatus TEXT,    -- CIM_ManagedSystemElement.OperationalStatus, list; 2 OK
  OtherProtocol     TEXT     -- its name where Protocol is 1
);

-- CIM_TextRedirectionService. The library knows the row "TextRedirectionService1".
CREATE TABLE textredirectionservice (
  Name                     TEXT NOT NULL PRIMARY KEY,
  ElementName              TEXT,
  MaxConcurrentEnabledSAPs INTEGER, -- access points at a time
  EnabledState             INTEGER,
  RequestedState           INTEGER,
  SharingMode              INTEGER,
  RedirectionServiceType   INTEGER
);

-- CIM_TextRedirectionSAP. The library knows the row "TextRedirectionSAP1".
CREATE TABLE textredirectionsap (
  Name                     TEXT NOT NULL PRIMARY KEY,
  ElementName              TEXT,
  EnabledState             INTEGER,
  RequestedState           INTEGER,
  TextFlowType             INTEGER, -- terminal type of the text
  SessionTerminateSequence TEXT     -- keys that end a session; a set does not write it
);

-- Capabilities of the platform watchdog, which no DMTF class has; its first five columns are those of
-- CIM_EnabledLogicalElementCapabilities. Texts have at most 32 bytes, except the first two. Readers give
-- max_ele_name_len in place of ele_name_edit_supported; see qmv/services.h.
CREATE TABLE pwds_capabilities (
  instance_id             TEXT NOT NULL PRIMARY KEY,
  ele_name                TEXT,
  req_states_supported    TEXT,    -- list
  ele_name_edit_supported INTEGER, -- 1 when the element's name can be changed, else 0
  max_ele_name_len        INTEGER, -- longest name, in characters
  act_on_exp_supported    TEXT,    -- actions on expiration, list
  last_exp_data_supported TEXT,    -- what is kept of the last expiration
  wdt_data_supported      TEXT     -- what is given of the timer
);

-- CIM_AccountManagementService. The library knows the row "AccountManagementService".
CREATE TABLE account_management_service (
  Name           TEXT NOT NULL PRIMARY KEY,
  RequestedState INTEGER,
  EnabledState   INTEGER,
  ElementName    TEXT
);

-- CIM_IndicationService. The library knows the row "IndicationService".
CREATE TABLE indication_service (
  Name                            TEXT NOT NULL PRIMARY KEY,
  FilterCreationEnabled           INTEGER, -- 1 when clients may make filters, else 0
  DeliveryRetryAttempts           INTEGER,
  DeliveryRetryInterval           INTEGER, -- in seconds
  SubscriptionRemovalAction       INTEGER, -- for destinations that stay unreachable: 2 remove, 3 disable, 4 ignore
  SubscriptionRemovalTimeInterval INTEGER  -- in seconds
);

-- Event messages and their numbers.
CREATE TABLE event_type (
  MessageID   INTEGER NOT NULL PRIMARY KEY,
  Description TEXT
);

-- The number of a message.
CREATE INDEX event_type_description ON event_type (Description);

-- The state that a client last asked an instance of any class to enter.
CREATE TABLE request_state_change (
  ClassName      TEXT NOT NULL, -- CIM class of the instance
  RequestedState INTEGER,
  KeyProperty    TEXT NOT NULL, -- property that names the instance
  KeyValue       TEXT NOT NULL, -- its value
  PRIMARY KEY (ClassName, KeyProperty, KeyValue)
);

-- Where indications go (CIM_ListenerDestination).
CREATE TABLE listener_destination (
  Name        TEXT NOT NULL PRIMARY KEY,
  Destination TEXT -- URL
);

-- Which events are indicated (CIM_IndicationFilter).
CREATE TABLE indication_filter (
  Name           TEXT NOT NULL PRIMARY KEY,
  Query          TEXT,    -- at most 512 bytes
  SensorNumMask  INTEGER, -- what the indication service looks for in an event: sensor number,
  SensorTypeMask INTEGER, -- sensor type
  SeverityMask   INTEGER  -- and severity
);

-- Which filter's events go to which destination (CIM_IndicationSubscription). Deleting either deletes its rows.
CREATE TABLE indication_subscription (
  DestName      TEXT NOT NULL, -- Name of listener_destination
  FilterName    TEXT NOT NULL, -- Name of indication_filter
  EventSeverity INTEGER,       -- from here on the filter's SeverityMask,
  SensorNum     INTEGER,       -- SensorNumMask
  SensorType    INTEGER,       -- and SensorTypeMask, renewed when the filter is set again
  Enabled       INTEGER,       -- 1 when events are delivered, else 0
  PRIMARY KEY (DestName, FilterName)
);

-- The subscriptions of a filter.
CREATE INDEX indication_subscription_filter ON indication_subscription (FilterName);
