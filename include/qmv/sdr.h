/*
 * qmv/sdr.h - sensor data records: compact and full sensors, FRU device locators, managed systems, the IPMI session,
 * and the components (processors, memory, redundancy sets) that are derived from the compact sensors. The conventions
 * and the shapes named here stand in qmv.h.
 */
#ifndef QMV_SDR_H
#define QMV_SDR_H

#include "qmv/fru.h"

/*
 * A compact sensor, table "compact_sdr": the bytes of an IPMI 2.0 compact sensor record (table 43-2), the CIM sensor
 * type (CIM_Sensor.SensorType), and the FRU that the sensor's entity belongs to. Key: DeviceID.
 */
typedef struct compact_sdr_rec {
  char DeviceID[256]; /* the sensor's text key */
  int32_t SDRType;    /* record type, 2 */
  int32_t OwnerLUN;
  int32_t OwnerID;
  int32_t SensorNum;
  int32_t EntityID;       /* table 43-13 */
  int32_t EntityInstance; /* entity instance */
  int32_t SensorInit;
  int32_t SensorCaps;
  char SensorName[256];
  int32_t SensorType;    /* table 42-3 */
  int32_t CIMSensorType; /* CIM_Sensor.SensorType */
  int32_t OtherSensorType;
  char OtherSensorTypeDesc[256];
  int32_t EventTypeCode; /* event/reading type, table 42-1 */
  int32_t AssertionMask;
  int32_t DeAssertionMask;
  int32_t DiscreteReadingMask;
  int32_t BaseUnit;
  int32_t UnitModifier;
  int32_t RateUnit;
  int32_t RecShareDir; /* record sharing and sensor direction, two bytes, the first one low */
  int32_t PHysterysis; /* positive-going threshold hysteresis, raw */
  int32_t NHysterysis; /* negative-going threshold hysteresis, raw */
  int32_t OEM;
  int32_t IdStrLen; /* length of IdStr, in bytes */
  char IdStr[256];
  int32_t IPMI_RecordID;
  int32_t IsFRUAvailable; /* 1 when FruRecord is filled */
  int32_t
      PhysicalElement; /* bit mask of categories; 256 memory, 1024 power supply, the others are the writer's choice */
  fru_rec FruRecord;   /* EntityID and EntityInst in it are copies of the sensor's own and stored nowhere */
} compact_sdr_rec;

/*
 * A full sensor, table "full_sdr": as a compact sensor, with the bytes of an IPMI 2.0 full sensor record (table 43-1).
 * Readings and thresholds are raw; section 36.3 converts them. Key: DeviceID.
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
  int32_t Linearization;
  int32_t M;
  int32_t MTolerance;
  int32_t B;
  int32_t BAccuracy;
  int32_t Accuracy;
  int32_t RBExp; /* R exponent in the upper, B exponent in the lower four bits, two's complement each */
  int32_t AnalogCharFlag;
  int32_t NominalRdg;
  int32_t NormalMax;
  int32_t NormalMin;
  int32_t SensorMaxRdg;
  int32_t SensorMinRdg;
  int32_t UpperNRThreshold;
  int32_t UpperCriticalThreshold;
  int32_t UpperNCThreshold;
  int32_t LowerNRThreshold;
  int32_t LowerCriticalThreshold;
  int32_t LowerNCThreshold;
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
  char IPAddress[256];
  char GUID[256];
  int32_t DeviceType;
  int32_t RequestedState; /* CIM_EnabledLogicalElement.RequestedState */
  int32_t EntityID;
  int32_t EntityInstance;
} device_rec;

/* A FRU device locator (IPMI 2.0, table 43-7), table "fru_locator_sdr". Key: the first four fields, as in fru_rec. */
typedef struct fru_locator_sdr_rec {
  int32_t FruIDSlaveAddr;
  int32_t DeviceAccessAddr;
  int32_t LUNBusID;
  int32_t ChannelNumber;
  int32_t DevType; /* table 43-12 */
  int32_t DevTypeModifier;
  int32_t EntityID;
  int32_t EntityInst;
  int32_t OEMField;
  int32_t IDStrLen;
  char DevIdStr[256];
} fru_locator_sdr_rec;

/* The IPMI session, table "ipmi_session". Whoever makes the table says what its columns mean: they are only
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

/*
 * Reads the first compact sensor of an entity. Get-one.
 * Differs: SQLite's own code when the statement does not compile, 7 (SQLITE_NOMEM) when memory is short.
 */
QMV_API int32_t db_get_compact_sdr_by_entityid_entityinst(struct sqlite3* db, int32_t EntityID, int32_t EntityInstance,
                                                          compact_sdr_rec** record) QMV_NOEXCEPT;

/* Reads the compact sensor with that key. Get-one. Differs: as db_get_compact_sdr_by_entityid_entityinst(). */
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

/*
 * Reads the first full sensor of an entity. Get-one.
 * Differs: SQLite's own code when the statement does not compile, 7 (SQLITE_NOMEM) when memory is short.
 */
QMV_API int32_t db_get_full_sdr_by_entityid_entityinst(struct sqlite3* db, int32_t EntityID, int32_t EntityInstance,
                                                       full_sdr_rec** record) QMV_NOEXCEPT;

/* Reads the full sensor with that key. Get-one. Differs: as db_get_full_sdr_by_entityid_entityinst(). */
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
 *   db_execute() to delete a sensor. The formatted statement, some 60 bytes, is never released.
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

/*
 * Stores a FRU device locator. Set, by its four address fields.
 * Differs: a row that exists is never updated, since SQLite rejects the update; it keeps its values and 0 is returned.
 */
QMV_API int32_t db_set_fru_locator_sdr_info(struct sqlite3* db, const fru_locator_sdr_rec* record) QMV_NOEXCEPT;

/* Reads the first row of the IPMI session table. Get-one, without a key. */
QMV_API int32_t db_get_ipmi_session_info(struct sqlite3* db, ipmi_session_rec** record) QMV_NOEXCEPT;

/*
 * Counts the entities with a redundancy sensor (event/reading type 0Bh). Count.
 * Differs (as the other two component counts): the count is taken whatever the step answers, and the status is the code
 *   of sqlite3_finalize.
 */
QMV_API int32_t db_get_redundancyset_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads one redundancy sensor of each such entity. Get-all. */
QMV_API int32_t db_get_all_redundancyset(struct sqlite3* db, int32_t* count, compact_sdr_rec** records) QMV_NOEXCEPT;

/* Counts the distinct DeviceIDs of compact and full sensors whose PhysicalElement has the memory bit 256. Count. */
QMV_API int32_t db_get_memory_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/*
 * Reads the compact sensors of sensor type memory (0Ch). Get-all.
 * Differs: their number comes from db_get_memory_cnt(), which counts something else: with fewer rows the last records
 *   stay zero, with more rows the surplus is dropped.
 */
QMV_API int32_t db_get_all_memory(struct sqlite3* db, int32_t* count, compact_sdr_rec** records) QMV_NOEXCEPT;

/* Counts the compact sensors of sensor type processor (07h). Count. */
QMV_API int32_t db_get_processor_cnt(struct sqlite3* db, int32_t* count) QMV_NOEXCEPT;

/* Reads the compact sensors of sensor type processor (07h). Get-all. */
QMV_API int32_t db_get_all_processor(struct sqlite3* db, int32_t* count, compact_sdr_rec** records) QMV_NOEXCEPT;

/*
 * Names a processor (CIM_Processor) as "EntityID:EntityInstance:SensorNum:Processor", after the first compact sensor of
 * that entity in "/tmp/cim.db". Opens the file itself and does not wait for locks. Logs nothing.
 *   name (out)  a new text of at most 256 bytes, released by the caller with db_freemem() or free()
 * Returns 0, or 1 when the file cannot be opened or is locked, no sensor belongs to the entity, its entity ID is no
 *   processor's (3, 9 and 18 are), or memory is short: then NULL is stored; otherwise *name is untouched.
 */
QMV_API int32_t get_processor_from_db(int32_t EntityID, int32_t EntityInstance, char** name) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
