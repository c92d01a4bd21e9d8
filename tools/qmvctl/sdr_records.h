// Sensor data records (IPMI 2.0, chapter 43): where their members stand, and how compact records are shared.
#ifndef QMVCTL_SDR_RECORDS_H
#define QMVCTL_SDR_RECORDS_H

#include <string>

#include "qmv.h"
#include "records.h"

namespace qmvctl {

constexpr size_t kHeaderSize = 5;
constexpr int kRecordVersion = 0x51;  // IPMI 1.5 and 2.0

// IPMI 2.0, table 43-2. The table counts bytes from 1, here they count from 0.
inline constexpr Field<compact_sdr_rec> kCompactSensor[] = {
    {&compact_sdr_rec::IPMI_RecordID, 0, Width::kWord},
    {&compact_sdr_rec::SDRType, 3},
    {&compact_sdr_rec::OwnerID, 5},
    {&compact_sdr_rec::OwnerLUN, 6},
    {&compact_sdr_rec::SensorNum, 7},
    {&compact_sdr_rec::EntityID, 8},
    {&compact_sdr_rec::EntityInstance, 9},
    {&compact_sdr_rec::SensorInit, 10},
    {&compact_sdr_rec::SensorCaps, 11},
    {&compact_sdr_rec::SensorType, 12},
    {&compact_sdr_rec::EventTypeCode, 13, Width::kByte, 0x7F},
    {&compact_sdr_rec::AssertionMask, 14, Width::kWord},
    {&compact_sdr_rec::DeAssertionMask, 16, Width::kWord},
    {&compact_sdr_rec::DiscreteReadingMask, 18, Width::kWord},
    {&compact_sdr_rec::RateUnit, 20},
    {&compact_sdr_rec::BaseUnit, 21},
    {&compact_sdr_rec::UnitModifier, 22},
    {&compact_sdr_rec::RecShareDir, 23, Width::kWord},
    {&compact_sdr_rec::PHysterysis, 25},
    {&compact_sdr_rec::NHysterysis, 26},
    {&compact_sdr_rec::OEM, 30},
};
constexpr size_t kCompactIdString = 31;

// IPMI 2.0, table 43-1.
inline constexpr Field<full_sdr_rec> kFullSensor[] = {
    {&full_sdr_rec::IPMI_RecordID, 0, Width::kWord},
    {&full_sdr_rec::SDRType, 3},
    {&full_sdr_rec::OwnerID, 5},
    {&full_sdr_rec::OwnerLUN, 6},
    {&full_sdr_rec::SensorNum, 7},
    {&full_sdr_rec::EntityID, 8},
    {&full_sdr_rec::EntityInstance, 9},
    {&full_sdr_rec::SensorInit, 10},
    {&full_sdr_rec::SensorCaps, 11},
    {&full_sdr_rec::SensorType, 12},
    {&full_sdr_rec::EventTypeCode, 13, Width::kByte, 0x7F},
    {&full_sdr_rec::AssertionMask, 14, Width::kWord},
    {&full_sdr_rec::DeAssertionMask, 16, Width::kWord},
    {&full_sdr_rec::DiscreteReadingMask, 18, Width::kWord},
    {&full_sdr_rec::RateUnit, 20},
    {&full_sdr_rec::BaseUnit, 21},
    {&full_sdr_rec::UnitModifier, 22},
    {&full_sdr_rec::Linearization, 23, Width::kByte, 0x7F},
    {&full_sdr_rec::M, 24},
    {&full_sdr_rec::MTolerance, 25},
    {&full_sdr_rec::B, 26},
    {&full_sdr_rec::BAccuracy, 27},
    {&full_sdr_rec::Accuracy, 28},
    {&full_sdr_rec::RBExp, 29},
    {&full_sdr_rec::AnalogCharFlag, 30},
    {&full_sdr_rec::NominalRdg, 31},
    {&full_sdr_rec::NormalMax, 32},
    {&full_sdr_rec::NormalMin, 33},
    {&full_sdr_rec::SensorMaxRdg, 34},
    {&full_sdr_rec::SensorMinRdg, 35},
    {&full_sdr_rec::UpperNRThreshold, 36},
    {&full_sdr_rec::UpperCriticalThreshold, 37},
    {&full_sdr_rec::UpperNCThreshold, 38},
    {&full_sdr_rec::LowerNRThreshold, 39},
    {&full_sdr_rec::LowerCriticalThreshold, 40},
    {&full_sdr_rec::LowerNCThreshold, 41},
    {&full_sdr_rec::PHysterysis, 42},
    {&full_sdr_rec::NHysterysis, 43},
    {&full_sdr_rec::OEM, 46},
};
constexpr size_t kFullIdString = 47;

// IPMI 2.0, table 43-7.
inline constexpr Field<fru_locator_sdr_rec> kFruLocator[] = {
    {&fru_locator_sdr_rec::DeviceAccessAddr, 5}, {&fru_locator_sdr_rec::FruIDSlaveAddr, 6},
    {&fru_locator_sdr_rec::LUNBusID, 7},         {&fru_locator_sdr_rec::ChannelNumber, 8, Width::kByte, 0xF0, 4},
    {&fru_locator_sdr_rec::DevType, 10},         {&fru_locator_sdr_rec::DevTypeModifier, 11},
    {&fru_locator_sdr_rec::EntityID, 12},        {&fru_locator_sdr_rec::EntityInst, 13},
    {&fru_locator_sdr_rec::OEMField, 14},
};
constexpr size_t kFruLocatorIdString = 15;

// IPMI 2.0, table 43-8.
inline constexpr Field<fru_rec> kControllerLocator[] = {
    {&fru_rec::DeviceAccessAddr, 5},
    {&fru_rec::ChannelNumber, 6, Width::kByte, 0x0F},
    {&fru_rec::EntityID, 12},
    {&fru_rec::EntityInst, 13},
};
constexpr size_t kControllerCapabilities = 8;
constexpr size_t kControllerIdString = 15;

// "A" to "Z", "AA", "AB", ... for 0, 1, ...
inline std::string alphabetic(int number) {
  std::string text;
  for (; number >= 0; number = number / 26 - 1) text.insert(text.begin(), static_cast<char>('A' + number % 26));
  return text;
}

// What the sharing bytes of a compact record say (table 43-2, bytes 24 and 25).
struct Sharing {
  explicit Sharing(int32_t bytes)
      : count(bytes & 0xF),
        is_alphabetic((bytes >> 4 & 3) == 1),
        first_suffix(bytes >> 8 & 0x7F),
        has_own_instances((bytes & 0x8000) != 0) {}

  std::string suffix(int number) const {
    return " " + (is_alphabetic ? alphabetic(first_suffix + number) : std::to_string(first_suffix + number));
  }

  int count;
  bool is_alphabetic;
  int first_suffix;
  bool has_own_instances;
};

}  // namespace qmvctl

#endif
