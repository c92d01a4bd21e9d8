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
