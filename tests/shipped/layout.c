/*
 * The layout of every record, as callers were compiled with: size, and each member's offset and size, in bytes. The
 * same on every machine, since records hold only 32-bit integers and character arrays.
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
