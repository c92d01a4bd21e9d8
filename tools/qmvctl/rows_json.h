// Records as rows of a listing, and the columns that several listings share.
#ifndef QMVCTL_ROWS_JSON_H
#define QMVCTL_ROWS_JSON_H

#include "listing.h"
#include "qmv.h"

namespace qmvctl {

// A member of a sensor's record that is shown as its bits are.
template <class Sensor>
struct RecordMember {
  const char* key;
  const char* head;
  int32_t Sensor::*value;
  Column (*column)(const std::string& head, int width, const std::string& key);
};

// IPMI 2.0, tables 43-1 and 43-2.
template <class Sensor>
inline constexpr RecordMember<Sensor> kRecordMembers[] = {
    {"record_type", "Record type", &Sensor::SDRType, byte_column},
    {"initialization", "Initialization", &Sensor::SensorInit, byte_column},
    {"capabilities", "Capabilities", &Sensor::SensorCaps, byte_column},
    {"assertion_mask", "Assertion mask", &Sensor::AssertionMask, word_column},
    {"deassertion_mask", "Deassertion mask", &Sensor::DeAssertionMask, word_column},
    {"reading_mask", "Reading mask", &Sensor::DiscreteReadingMask, word_column},
    {"units_1", "Sensor units 1", &Sensor::RateUnit, byte_column},
    {"modifier_unit", "Modifier unit", &Sensor::UnitModifier, byte_column},
    {"positive_hysteresis", "Positive hysteresis", &Sensor::PHysterysis, byte_column},
    {"negative_hysteresis", "Negative hysteresis", &Sensor::NHysterysis, byte_column},
    {"oem", "OEM", &Sensor::OEM, byte_column},
    {"id_string_length", "ID string length", &Sensor::IdStrLen, number_column},
};

// What compact and full sensors have in common.
Json to_json(const compact_sdr_rec& sensor);
Json to_json(const full_sdr_rec& sensor);  // with the formula, and the given readings and thresholds, raw and converted
Json to_json(const fru_rec& fru);

// "7.1 System Board", from the members entity_id and entity_instance.
Column entity_column(int width);

}  // namespace qmvctl

#endif
