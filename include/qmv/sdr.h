/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/sdr.h - sensor data records: compact and full sensors, FRU device locators, managed systems, the IPMI session,
 * and the components (processors, memory, redundancy sets) that are derived from the compact sensors.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_SDR_H
#define QMV_SDR_H

#include "qmv/fru.h"

/*
 * A compact sensor, table "compact_sdr": the bytes of an IPMI 2.0 compact sensor record (table 43-2), the CIM sensor
 * type (CIM_Sensor.SensorType), and the FRU that the sensor's entity belongs to. Key: DeviceID.
 * PhysicalElement has a bit for each category of the entity: 256 memory and 1024 power supply, which the library knows,
 * and what the writer chooses (in schema/ 1 slot, 2 card, 4 chassis, 8 chip, 16 package, 32 connector).
 */
typedef struct compact_sdr_rec {
  char DeviceID[256];            /* the sensor's text key */
  int32_t SDRType;               /* record type, 2 */
  int32_t OwnerLUN;              /* channel in bits 7 to 4, LUN in bits 1 and 0 */
  int32_t OwnerID;               /* slave address in bits 7 to 1, or software ID with bit 0 set */
  int32_t SensorNum;             /* number of the sensor at its owner */
  int32_t EntityID;              /* what the sensor belongs to, table 43-13 */
  int32_t EntityInstance;        /* which of them; bit 7 set for a logical entity */
  int32_t SensorInit;            /* sensor initialization bits */
  int32_t SensorCaps;            /* sensor capability bits */
  char SensorName[256];          /* name for people */
  int32_t SensorType;            /* table 42-3 */
  int32_t CIMSensorType;         /* CIM_Sensor.SensorType */
  int32_t OtherSensorType;       /* SensorType again where CIMSensorType is 1 (other), else 0 */
  char OtherSensorTypeDesc[256]; /* its name where CIMSensorType is 1, else empty */
  int32_t EventTypeCode;         /* event/reading type, table 42-1 */
  int32_t AssertionMask;         /* assertion event mask */
  int32_t DeAssertionMask;       /* deassertion event mask */
  int32_t DiscreteReadingMask;   /* states that can be read, or thresholds: readable low byte, settable high byte */
  int32_t BaseUnit;              /* sensor units 2: base unit, table 43-15 */
  int32_t UnitModifier;          /* sensor units 3: modifier unit, table 43-15 */
  int32_t RateUnit;              /* sensor units 1: data format, bits 7 and 6; rate, 5 to 3; modifier use; percentage */
  int32_t RecShareDir;           /* record sharing and sensor direction, two bytes, the first one low */
  int32_t PHysterysis;           /* positive-going threshold hysteresis, raw */
  int32_t NHysterysis;           /* negative-going threshold hysteresis, raw */
  int32_t OEM;                   /* OEM byte */
  int32_t IdStrLen;              /* length of IdStr, in bytes */
  char IdStr[256];               /* ID string, UTF-8 */
  int32_t IPMI_RecordID;         /* ID of the record in the repository */
  int32_t IsFRUAvailable;        /* 1 when FruRecord is filled, else 0 */
  int32_t PhysicalElement;       /* categories of the entity, a bit each */
  fru_rec FruRecord;             /* EntityID and EntityInst in it are copies of the sensor's own and stored nowhere */
} compact_sdr_rec;

/*
 * A full sensor, table "full_sdr": as a compact sensor, with the bytes of an IPMI 2.0 full sensor record (table 43-1).
 * Fields that are not explained are as in compact_sdr_rec; readings and thresholds are raw. Key: DeviceID.
 * Mind that OwnerID stands before OwnerLUN here, and behind it in compact_sdr_rec: go by name, not by position.
 */
typedef struct full_sdr_rec {
  char DeviceID[256];
  int32_t SDRType; /* record type, 1 */
  int32_t OwnerID;
  int32_t OwnerLUN;
  int32_t SensorNum;
  int32_t EntityID;
  int32_t EntityInstance;
  int32_t SensorInit;
  int32_t SensorCaps;
  char SensorName[256];
  int32_t SensorType;
  int32_t CIMSensorType;
  int32_t OtherSensorType;
  char OtherSensorTypeDesc[256];
  int32_t EventTypeCode;
  int32_t AssertionMask;
  int32_t DeAssertionMask;
  int32_t DiscreteReadingMask;
  int32_t BaseUnit;
  int32_t UnitModifier;
  int32_t RateUnit;
  int32_t Linearization;          /* 0 linear, 1 to 11 a function, 112 to 127 non-linear */
  int32_t M;                      /* M, lower 8 bits */
  int32_t MTolerance;             /* M, upper 2 bits in bits 7 and 6; tolerance in half raw counts */
  int32_t B;                      /* B, lower 8 bits */
  int32_t BAccuracy;              /* B, upper 2 bits in bits 7 and 6; accuracy, lower 6 bits, in 1/100 percent */
  int32_t Accuracy;               /* accuracy, upper 4 bits; its exponent, bits 3 and 2; sensor direction */
  int32_t RBExp;                  /* R exponent in bits 7 to 4, B exponent in bits 3 to 0, two's complement each */
  int32_t AnalogCharFlag;         /* given are: bit 0 nominal reading, 1 normal maximum, 2 normal minimum */
  int32_t NominalRdg;             /* nominal reading */
  int32_t NormalMax;              /* normal maximum */
  int32_t NormalMin;              /* normal minimum */
  int32_t SensorMaxRdg;           /* largest reading */
  int32_t SensorMinRdg;           /* smallest reading */
  int32_t UpperNRThreshold;       /* upper non-recoverable */
  int32_t UpperCriticalThreshold; /* upper critical */
  int32_t UpperNCThreshold;       /* upper non-critical */
  int32_t LowerNRThreshold;       /* lower non-recoverable */
  int32_t LowerCriticalThreshold; /* lower critical */
  int32_t LowerNCThreshold;       /* lower non-critical */
  int32_t PHysterysis;
  int32_t NHysterysis;
  int32_t OEM;
  int32_t IdStrLen;
  char IdStr[256];
  int32_t IPMI_RecordID;
  int32_t IsFRUAvailable;
  int32_t PhysicalElement;
  fru_rec FruRecord;
} full_sdr_rec;

/*
 * A managed system, table "device". Key: GUID and DeviceType.
 * Both texts must stay below 256 bytes: a longer one runs on into the fields behind it, up to the end of the record.
 */
typedef struct device_rec {
  char IPAddress[256];    /* of the system's management controller */
  char GUID[256];         /* the system's globally unique ID */
  int32_t DeviceType;     /* kind of system, chosen by the writer */
  int32_t RequestedState; /* CIM_EnabledLogicalElement.RequestedState */
  int32_t EntityID;       /* the system's entity, table 43-13 */
  int32_t EntityInstance; /* which of them */
} device_rec;

/* A FRU device locator (IPMI 2.0, table 43-7), table "fru_locator_sdr". Key: the first four fields, as in fru_rec. */
typedef struct fru_locator_sdr_rec {
  int32_t FruIDSlaveAddr;
  int32_t DeviceAccessAddr;
  int32_t LUNBusID;
  int32_t ChannelNumber;
  int32_t DevType;         /* device type, table 43-12 */
  int32_t DevTypeModifier; /* table 43-12 */
  int32_t EntityID;        /* what the FRU is, table 43-13 */
  int32_t EntityInst;      /* which of them */
  int32_t OEMField;        /* OEM byte */
  int32_t IDStrLen;        /* length of DevIdStr as the record gives it, in bytes */
  char DevIdStr[256];      /* ID string, UTF-8 */
} fru_locator_sdr_rec;

/* The IPMI session, table "ipmi_session". Whoever fills the table says what its columns mean: they are only
 * transported. */
typedef struct ipmi_session_rec {
  char SessionText0[128];
  int32_t SessionValue1;
  char SessionText2[256];
  char SessionText3[256];
  char SessionText4[64];
  char SessionText5[64];
  char SessionText6[64];
  char SessionText7[64];
  char SessionText8[64];
} ipmi_session_rec;

QMV_BEGIN_DECLS

/*
 * Fills a record from the row on which a "select *" statement of "compact_sdr" stands.
 *   record (out)  the caller's record
 *   row           the statement; it is neither stepped nor finalised
 * Returns 0, or 1 when either is NULL. Logs nothing.
 */
QMV_API int32_t db_fill_compact_sdr_fields(compact_sdr_rec* record, struct sqlite3_stmt* row) QMV_NOEXCEPT;

/* Stores a compact sensor. Set, by DeviceID. */
QMV_API int32_t db_set_compact_sdr_info(struct sqlite3* db, const compact_sdr_rec* record) QMV_NOEXCEPT;

/*
 * Counts the compact sensors. Count.
 *   PhysicalElement  0 counts all rows; another mask counts the entities (EntityID, EntityInstance) that have a sensor
 *                    with all these bits
 */
QMV_API int32_t db_get_num_compact_sdr(struct sqlite3* db, int32_t* count, int32_t PhysicalElement) QMV_NOEXCEPT;

/* Reads all compact sensors. Get-all. */
QMV_API int32_t db_get_all_compact_sdrs(struct sqlite3* db, int32_t* count, compact_sdr_rec** records) QMV_NOEXCEPT;

/*
 * Reads one compact sensor of each entity that has a sensor with all bits of the mask. Get-all.
 * Differs: with mask 0 all rows are counted, but one row an entity is read; the records behind those stay zero.
 */
QMV_API int32_t db_get_all_compact_sdrs_by_phy_elem_type(struct sqlite3* db, int32_t PhysicalElement, int32_t* count,
                                                         compact_sdr_rec** records) QMV_NOEXCEPT;

/* Reads the compact sensor with that number, key and owner. Get-one. */
QMV_API int32_t db_get_compact_sdr_info(struct sqlite3* db, int32_t SensorNum, const char* DeviceID, int32_t OwnerLUN,
                                        int32_t OwnerID, compact_sdr_rec** record) QMV_NOEXCEPT;

/* Reads the first compact sensor of an entity. Get-one, with SQLite's codes. */
QMV_API int32_t db_get_compact_sdr_by_entityid_entityinst(struct sqlite3* db, int32_t EntityID, int32_t EntityInstance,
                                                          compact_sdr_rec** record) QMV_NOEXCEPT;

/* Reads the compact sensor with that key. Get-one, with SQLite's codes. */
QMV_API int32_t db_get_compact_sdr(struct sqlite3* db, const char* DeviceID, compact_sdr_rec** record) QMV_NOEXCEPT;

/* Fills a record from the row on which a "select *" statement of "full_sdr" stands; as db_fill_compact_sdr_fields(). */
QMV_API int32_t db_fill_full_sdr_fields(full_sdr_rec* record, struct sqlite3_stmt* row) QMV_NOEXCEPT;

/* Stores a full sensor. Set, by DeviceID. */
QMV_API int32_t db_set_full_sdr_info(struct sqlite3* db, const full_sdr_rec* record) QMV_NOEXCEPT;

/*
 * Counts the full sensors, with a mask as db_get_num_compact_sdr(). Count.
 * Differs: a statement that does not compile is also reported on standard error, without a newline.
 */
QMV_API int32_t db_get_num_full_sdr(struct sqlite3* db, int32_t* count, int32_t PhysicalElement) QMV_NOEXCEPT;

/* Reads all full sensors. Get-all. */
QMV_API int32_t db_get_all_full_sdrs(struct sqlite3* db, int32_t* count, full_sdr_rec** records) QMV_NOEXCEPT;

/*
 * Reads one full sensor of each entity that has a sensor with all bits of the mask. Get-all.
 * Differs: as db_get_all_compact_sdrs_by_phy_elem_type(); failures of the count and of compiling are also reported on
 *   standard error.
 */
QMV_API int32_t db_get_all_full_sdrs_by_phy_elem_type(struct sqlite3* db, int32_t PhysicalElement, int32_t* count,
                                                      full_sdr_rec** records) QMV_NOEXCEPT;

/* Reads the full sensor with that number, key and owner. Get-one. */
QMV_API int32_t db_get_full_sdr_info(struct sqlite3* db, int32_t SensorNum, const char* DeviceID, int32_t OwnerLUN,
                                     int32_t OwnerID, full_sdr_rec** record) QMV_NOEXCEPT;

/* Reads the first full sensor of an entity. Get-one, with SQLite's codes. */
QMV_API int32_t db_get_full_sdr_by_entityid_entityinst(struct sqlite3* db, int32_t EntityID, int32_t EntityInstance,
                                                       full_sdr_rec** record) QMV_NOEXCEPT;

/* Reads the full sensor with that key. Get-one, with SQLite's codes. */
QMV_API int32_t db_get_full_sdr(struct sqlite3* db, const char* DeviceID, full_sdr_rec** record) QMV_NOEXCEPT;

/*
 * Looks up the SDR record ID of the first full sensor with that number; compact sensors are not looked at.
 *   IPMI_RecordID (out)  the record ID; untouched unless 0 is returned
 * Returns 0, or 1 when no full sensor has that number or the statement does not compile.
 */
QMV_API int32_t db_get_recordid_by_sensor_num(struct sqlite3* db, int32_t SensorNum,
                                              int32_t* IPMI_RecordID) QMV_NOEXCEPT;

/*
 * Deletes no full sensor. Delete.
 * Differs: SQLite rejects its statement, so the row stays; 0 is returned and success is traced all the same. Use
 *   db_execute() to delete a sensor. The formatted statement, some 50 bytes, is never released.
 */
QMV_API int32_t db_del_sdr(struct sqlite3* db, int32_t IPMI_RecordID) QMV_NOEXCEPT;

/* Reads the managed system with that GUID and device type. Get-one. */
QMV_API int32_t db_get_device(struct sqlite3* db, const char* GUID, int32_t DeviceType,
                              device_rec** record) QMV_NOEXCEPT;

/* Reads the first managed system of that device type. Get-one. */
QMV_API int32_t db_get_device_bytype(struct sqlite3* db, int32_t DeviceType, device_rec** record) QMV_NOEXCEPT;

/* Stores a managed system. Set, by GUID and DeviceType. */
QMV_API int32_t db_set_device(struct sqlite3* db, const device_rec* record) QMV_NOEXCEPT;

/* Reads the FRU device locator with that address. Get-one. */
QMV_API int32_t db_get_fru_locator_sdr_info(struct sqlite3* db, int32_t FruIDSlaveAddr, int32_t DeviceAccessAddr,
                                            int32_t LUNBusID, int32_t ChannelNumber,
                                            fru_locator_sdr_rec** record) QMV_NOEXCEPT;

/* Stores a FRU device locator. Set once, by its four address fields. */
QMV_API int32_t db_set_fru_locator_sdr_info(struct sqlite3* db, const fru_locator_sdr_rec* record) QMV_NOEXCEPT;

/* Reads the first row of the IPMI session table. Get-one, without a key. */
QMV_API int32_t db_get_ipmi_session_info(struct sqlite3* db, ipmi_session_rec** record) QMV_NOEXCEPT;

/*
 * Counts the entities with a redundancy sensor (event/reading type 0Bh, table 42-2). Count.
 * Differs (as the other two component counts): the count is taken whatever the step answers, and the status is the code
 *   of sqlite3_finalize.
 */
QMV_API int32_t db_get_redundancyset_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads one redundancy sensor of each such entity. Get-all. */
QMV_API int32_t db_get_all_redundancyset(struct sqlite3* db, int32_t* count, compact_sdr_rec** records) QMV_NOEXCEPT;

/* Counts the distinct DeviceIDs of compact and full sensors whose PhysicalElement has the memory bit 256. Count. */
QMV_API int32_t db_get_memory_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the compact sensors of sensor type memory (0Ch, table 42-3). Get-all.
 * Differs: their number comes from db_get_memory_cnt(), which counts something else: with fewer rows the last records
 *   stay zero, with more rows the surplus is dropped.
 */
QMV_API int32_t db_get_all_memory(struct sqlite3* db, int32_t* count, compact_sdr_rec** records) QMV_NOEXCEPT;

/* Counts the compact sensors of sensor type processor (07h, table 42-3). Count. */
QMV_API int32_t db_get_processor_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads the compact sensors of sensor type processor (07h, table 42-3). Get-all. */
QMV_API int32_t db_get_all_processor(struct sqlite3* db, int32_t* count, compact_sdr_rec** records) QMV_NOEXCEPT;

/*
 * Names a processor (CIM_Processor) as "EntityID:EntityInstance:SensorNum:Processor", after the first compact sensor of
 * that entity in "/tmp/cim.db". Opens the file itself; the handle of a failed open, some 1.4 kilobytes, is never
 * closed. Logs nothing.
 *   name (out)  a new text of at most 256 bytes, released by the caller with db_freemem() or free()
 * Returns 0; 1 with *name untouched when the file cannot be opened or read, no sensor belongs to the entity, or its
 *   entity ID is no processor's (3, 9 and 18 are), and with NULL stored when memory is short.
 */
QMV_API int32_t get_processor_from_db(int32_t EntityID, int32_t EntityInstance, char** name) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
