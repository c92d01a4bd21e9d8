#include "sdr_decoder.h"

#include <gtest/gtest.h>

#include <cstring>

#include "bytes.h"

namespace qmvctl::test {
namespace {

Repository decode(const Bytes& bytes) {
  return decode_repository(input(bytes));
}

TEST(CompactRecord, FillsEveryMemberFromItsByte) {
  const Repository repository = decode(compact_record());
  ASSERT_EQ(repository.compact_sensors.size(), 1u);
  const compact_sdr_rec& sensor = repository.compact_sensors[0];
  EXPECT_EQ(sensor.IPMI_RecordID, 0x4140);
  EXPECT_EQ(sensor.SDRType, 2);
  EXPECT_EQ(sensor.OwnerID, 0x45);
  EXPECT_EQ(sensor.OwnerLUN, 0x46);
  EXPECT_EQ(sensor.SensorNum, 0x47);
  EXPECT_EQ(sensor.EntityID, 0x48);
  EXPECT_EQ(sensor.EntityInstance, 0x49);
  EXPECT_EQ(sensor.SensorInit, 0x4A);
  EXPECT_EQ(sensor.SensorCaps, 0x4B);
  EXPECT_EQ(sensor.SensorType, 0x4C);
  EXPECT_EQ(sensor.EventTypeCode, 0x4D);
  EXPECT_EQ(sensor.AssertionMask, 0x4F4E);
  EXPECT_EQ(sensor.DeAssertionMask, 0x5150);
  EXPECT_EQ(sensor.DiscreteReadingMask, 0x5352);
  EXPECT_EQ(sensor.RateUnit, 0x54);
  EXPECT_EQ(sensor.BaseUnit, 0x55);
  EXPECT_EQ(sensor.UnitModifier, 0x56);
  EXPECT_EQ(sensor.RecShareDir, 0x5881);
  EXPECT_EQ(sensor.PHysterysis, 0x59);
  EXPECT_EQ(sensor.NHysterysis, 0x5A);
  EXPECT_EQ(sensor.OEM, 0x5E);
  EXPECT_EQ(sensor.IdStrLen, 5);
  EXPECT_STREQ(sensor.IdStr, "Fan 1");
  EXPECT_STREQ(sensor.SensorName, "Fan 1");
  EXPECT_STREQ(sensor.DeviceID, "45:46:47");
}

TEST(FullRecord, FillsEveryMemberFromItsByte) {
  const Repository repository = decode(full_record());
  ASSERT_EQ(repository.full_sensors.size(), 1u);
  const full_sdr_rec& sensor = repository.full_sensors[0];
  EXPECT_EQ(sensor.IPMI_RecordID, 0x4140);
  EXPECT_EQ(sensor.SDRType, 1);
  EXPECT_EQ(sensor.OwnerID, 0x45);
  EXPECT_EQ(sensor.OwnerLUN, 0x46);
  EXPECT_EQ(sensor.SensorNum, 0x47);
  EXPECT_EQ(sensor.EntityID, 0x48);
  EXPECT_EQ(sensor.EntityInstance, 0x49);
  EXPECT_EQ(sensor.SensorInit, 0x4A);
  EXPECT_EQ(sensor.SensorCaps, 0x4B);
  EXPECT_EQ(sensor.SensorType, 0x4C);
  EXPECT_EQ(sensor.EventTypeCode, 0x4D);
  EXPECT_EQ(sensor.AssertionMask, 0x4F4E);
  EXPECT_EQ(sensor.DeAssertionMask, 0x5150);
  EXPECT_EQ(sensor.DiscreteReadingMask, 0x5352);
  EXPECT_EQ(sensor.RateUnit, 0x54);
  EXPECT_EQ(sensor.BaseUnit, 0x55);
  EXPECT_EQ(sensor.UnitModifier, 0x56);
  EXPECT_EQ(sensor.Linearization, 0x57);
  EXPECT_EQ(sensor.M, 0x58);
  EXPECT_EQ(sensor.MTolerance, 0x59);
  EXPECT_EQ(sensor.B, 0x5A);
  EXPECT_EQ(sensor.BAccuracy, 0x5B);
  EXPECT_EQ(sensor.Accuracy, 0x5C);
  EXPECT_EQ(sensor.RBExp, 0x5D);
  EXPECT_EQ(sensor.AnalogCharFlag, 0x5E);
  EXPECT_EQ(sensor.NominalRdg, 0x5F);
  EXPECT_EQ(sensor.NormalMax, 0x60);
  EXPECT_EQ(sensor.NormalMin, 0x61);
  EXPECT_EQ(sensor.SensorMaxRdg, 0x62);
  EXPECT_EQ(sensor.SensorMinRdg, 0x63);
  EXPECT_EQ(sensor.UpperNRThreshold, 0x64);
  EXPECT_EQ(sensor.UpperCriticalThreshold, 0x65);
  EXPECT_EQ(sensor.UpperNCThreshold, 0x66);
  EXPECT_EQ(sensor.LowerNRThreshold, 0x67);
  EXPECT_EQ(sensor.LowerCriticalThreshold, 0x68);
  EXPECT_EQ(sensor.LowerNCThreshold, 0x69);
  EXPECT_EQ(sensor.PHysterysis, 0x6A);
  EXPECT_EQ(sensor.NHysterysis, 0x6B);
  EXPECT_EQ(sensor.OEM, 0x6E);
  EXPECT_EQ(sensor.IdStrLen, 9);
  EXPECT_STREQ(sensor.IdStr, "BB +12.0V");
  EXPECT_STREQ(sensor.SensorName, "BB +12.0V");
  EXPECT_STREQ(sensor.DeviceID, "45:46:47");
}

TEST(FruLocatorRecord, FillsEveryMemberFromItsByte) {
  const Repository repository = decode(fru_locator_record());
  ASSERT_EQ(repository.fru_locators.size(), 1u);
  const fru_locator_sdr_rec& locator = repository.fru_locators[0];
  EXPECT_EQ(locator.DeviceAccessAddr, 0x45);
  EXPECT_EQ(locator.FruIDSlaveAddr, 0x46);
  EXPECT_EQ(locator.LUNBusID, 0x47);
  EXPECT_EQ(locator.ChannelNumber, 4);  // bits 7 to 4 of 48h
  EXPECT_EQ(locator.DevType, 0x4A);
  EXPECT_EQ(locator.DevTypeModifier, 0x4B);
  EXPECT_EQ(locator.EntityID, 0x4C);
  EXPECT_EQ(locator.EntityInst, 0x4D);
  EXPECT_EQ(locator.OEMField, 0x4E);
  EXPECT_EQ(locator.IDStrLen, 9);
  EXPECT_STREQ(locator.DevIdStr, "Baseboard");
}

TEST(SensorRecord, ReservedBitsOfEventTypeAndLinearizationAreLeftOut) {
  Bytes record = full_record();
  record[13] = 0x81;
  record[23] = 0x87;
  const full_sdr_rec sensor = decode(record).full_sensors.at(0);
  EXPECT_EQ(sensor.EventTypeCode, 1);
  EXPECT_EQ(sensor.Linearization, 7);
}

TEST(SensorRecord, CopiesItsEntityIntoTheFruPart) {
  EXPECT_EQ(decode(full_record()).full_sensors.at(0).FruRecord.EntityID, 0x48);
  EXPECT_EQ(decode(full_record()).full_sensors.at(0).FruRecord.EntityInst, 0x49);
  EXPECT_EQ(decode(compact_record()).compact_sensors.at(0).FruRecord.EntityID, 0x48);
}

TEST(SensorRecord, NameMayHoldAPercentSign) {
  EXPECT_STREQ(decode(full_record(ascii_field("PS1 Curr Out %"))).full_sensors.at(0).SensorName, "PS1 Curr Out %");
}

TEST(SensorRecord, OfAKnownCimTypeHasNoOtherType) {
  Bytes record = full_record();
  record[12] = 0x02;
  const full_sdr_rec sensor = decode(record).full_sensors.at(0);
  EXPECT_EQ(sensor.CIMSensorType, 3);
  EXPECT_EQ(sensor.OtherSensorType, 0);
  EXPECT_STREQ(sensor.OtherSensorTypeDesc, "");
}

TEST(SensorRecord, OfAnotherTypeSaysWhich) {
  Bytes record = compact_record();
  record[12] = 0x08;
  const compact_sdr_rec sensor = decode(record).compact_sensors.at(0);
  EXPECT_EQ(sensor.CIMSensorType, 1);
  EXPECT_EQ(sensor.OtherSensorType, 8);
  EXPECT_STREQ(sensor.OtherSensorTypeDesc, "Power Supply");
}

TEST(SensorRecord, WithAUnicodeNameIsKeptWithoutItAndReported) {
  const Repository repository = decode(full_record({0x01, 'A', 0}));
  EXPECT_STREQ(repository.full_sensors.at(0).IdStr, "");
  ASSERT_EQ(repository.notes.size(), 1u);
  EXPECT_EQ(repository.notes[0], "record 4140h: the Unicode ID string is not decoded, the name stays empty");
}

TEST(SensorRecord, SecondOneOfASensorIsCountedAndReported) {
  Bytes other = compact_record();
  other[0] = 0x01;
  const Repository repository = decode(full_record() + other);
  EXPECT_EQ(repository.full_sensors.size(), 1u);
  EXPECT_EQ(repository.compact_sensors.size(), 0u);
  EXPECT_EQ(repository.not_held.at("repeated sensor"), 1);
  EXPECT_EQ(repository.notes.at(0), "sensor 45:46:47 has more than one record; the first one counts");
}

TEST(SensorRecord, DiffersFromAnotherByOwnerChannelOrNumber) {
  Bytes records = full_record();
  for (const size_t key_byte : {size_t{5}, size_t{6}, size_t{7}}) {
    Bytes other = full_record();
    other[key_byte] = 0x01;
    records = records + other;
  }
  EXPECT_EQ(decode(records).full_sensors.size(), 4u);
}

TEST(SharedRecord, GivesASensorForEachNumber) {
  Bytes record = compact_record(ascii_field("Temp"));
  record[23] = 0x03;
  record[24] = 5;
  const auto sensors = decode(record).compact_sensors;
  ASSERT_EQ(sensors.size(), 3u);
  EXPECT_STREQ(sensors[0].IdStr, "Temp 5");
  EXPECT_STREQ(sensors[2].IdStr, "Temp 7");
  EXPECT_EQ(sensors[2].IdStrLen, 6);
  EXPECT_EQ(sensors[0].SensorNum, 0x47);
  EXPECT_EQ(sensors[2].SensorNum, 0x49);
  EXPECT_STREQ(sensors[2].DeviceID, "45:46:49");
  EXPECT_EQ(sensors[2].EntityInstance, sensors[0].EntityInstance);
}

TEST(SharedRecord, MayCountInstancesAndLetters) {
  Bytes record = compact_record(ascii_field("Temp"));
  record[9] = 0xFF;
  record[23] = 0x13;       // three sensors, alphabetic
  record[24] = 0x80 | 25;  // an instance each, from "Z"
  const auto sensors = decode(record).compact_sensors;
  ASSERT_EQ(sensors.size(), 3u);
  EXPECT_STREQ(sensors[0].IdStr, "Temp Z");
  EXPECT_STREQ(sensors[1].IdStr, "Temp AA");
  EXPECT_STREQ(sensors[2].IdStr, "Temp AB");
  EXPECT_EQ(sensors[0].EntityInstance, 0xFF);
  EXPECT_EQ(sensors[1].EntityInstance, 0x80);
  EXPECT_EQ(sensors[1].FruRecord.EntityInst, 0x80);
}

TEST(SharedRecord, WithCountZeroIsOneSensor) {
  Bytes record = compact_record(ascii_field("Watchdog2"));
  record[23] = 0;
  const auto sensors = decode(record).compact_sensors;
  ASSERT_EQ(sensors.size(), 1u);
  EXPECT_STREQ(sensors[0].IdStr, "Watchdog2");
}

TEST(SharedRecord, ReachingTheReservedNumberIsAnError) {
  Bytes record = compact_record();
  record[7] = 0xFE;
  record[23] = 0x02;
  EXPECT_EQ(error_of([&] { decode(record); }), "file: offset 7: sensor number FFh is reserved");
}

TEST(RepositoryDump, CountsRecordsThatNoTableHolds) {
  Bytes dump = compact_record();
  for (const int type : {0x03, 0x03, 0x08, 0x12, 0xC0, 0x42})
    dump = dump + numbered_record(static_cast<uint8_t>(type), 16, {});
  const auto not_held = decode(dump).not_held;
  EXPECT_EQ(not_held.at("event-only sensor"), 2);
  EXPECT_EQ(not_held.at("entity association"), 1);
  EXPECT_EQ(not_held.at("management controller locator"), 1);
  EXPECT_EQ(not_held.at("OEM"), 1);
  EXPECT_EQ(not_held.at("type 42h"), 1);
}

TEST(RepositoryDump, KeepsTheFirstOfTwoLocatorsOfOneAddress) {
  const Repository repository = decode(fru_locator_record(ascii_field("One")) + fru_locator_record(ascii_field("Two")));
  ASSERT_EQ(repository.fru_locators.size(), 1u);
  EXPECT_STREQ(repository.fru_locators[0].DevIdStr, "One");
  EXPECT_EQ(repository.not_held.at("repeated FRU locator"), 1);
}

TEST(RepositoryDump, ControllerLocatorDescribesTheBuiltinFru) {
  Bytes record = numbered_record(0x12, 15, ascii_field("BMC"));
  record[5] = 0x20;
  record[6] = 0x03;
  record[8] = 0x08;
  const auto fru = decode(record).builtin_fru;
  ASSERT_TRUE(fru);
  EXPECT_EQ(fru->FruIDSlaveAddr, 0);
  EXPECT_EQ(fru->DeviceAccessAddr, 0x20);
  EXPECT_EQ(fru->LUNBusID, 0x80);
  EXPECT_EQ(fru->ChannelNumber, 3);
  EXPECT_EQ(fru->EntityID, 0x4C);
  EXPECT_EQ(fru->EntityInst, 0x4D);
  EXPECT_EQ(fru->IDStrLen, 3);
  EXPECT_STREQ(fru->DevIdStr, "BMC");
}

TEST(RepositoryDump, ControllerElsewhereOrWithoutInventoryHasNoBuiltinFru) {
  Bytes record = numbered_record(0x12, 15, ascii_field("ME"));
  record[5] = 0x2C;
  record[8] = 0x08;
  EXPECT_FALSE(decode(record).builtin_fru);
  record[5] = 0x20;
  record[8] = 0xF7;
  EXPECT_FALSE(decode(record).builtin_fru);
}

TEST(RepositoryDump, CutAnywhereInARecordIsAnErrorWithFileAndOffset) {
  const Bytes whole = compact_record() + full_record() + fru_locator_record();
  const size_t second = compact_record().size();
  const size_t third = second + full_record().size();
  for (size_t size = 0; size < whole.size(); ++size) {
    if (size == second || size == third) continue;  // whole records are a dump of their own
    const size_t start = size < second ? 0 : size < third ? second : third;
    const std::string error = error_of([&] { decode(Bytes(whole.begin(), whole.begin() + static_cast<long>(size))); });
    EXPECT_EQ(error.rfind("file: offset " + std::to_string(start) + ": ", 0), 0u) << "at " << size << ": " << error;
  }
}

TEST(RepositoryDump, RecordWhoseLengthIsTooShortForItsTypeIsAnError) {
  for (const Bytes& whole : {compact_record(), full_record(), fru_locator_record()}) {
    for (size_t size = 5; size < whole.size(); ++size) {
      Bytes record(whole.begin(), whole.begin() + static_cast<long>(size));
      record[4] = static_cast<uint8_t>(size - 5);
      EXPECT_NE(error_of([&] { decode(record); }), "") << size;
    }
  }
}

TEST(RepositoryDump, OtherVersionIsAnErrorAtItsByte) {
  Bytes record = full_record();
  record[2] = 0x50;
  EXPECT_EQ(error_of([&] { decode(compact_record() + record); }),
            "file: offset 39: no sensor data record: version 50h instead of 51h");
}

TEST(RepositoryDump, EmptyFileIsAnError) {
  EXPECT_EQ(error_of([] { decode({}); }), "file: offset 0: there are no sensor data records");
}

}  // namespace
}  // namespace qmvctl::test
