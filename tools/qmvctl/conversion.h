// Raw readings in engineering units: IPMI 2.0, section 36.3.
#ifndef QMVCTL_CONVERSION_H
#define QMVCTL_CONVERSION_H

#include <optional>

#include "qmv.h"

namespace qmvctl {

// Converts a raw reading of a full sensor. Nothing when the sensor has no analog readings or a non-linear formula of
// its own.
std::optional<double> convert(const full_sdr_rec& sensor, int32_t raw);

// Rounds a converted reading to the decimals that one raw count of the sensor is worth.
double rounded(const full_sdr_rec& sensor, double value);

// A threshold of a sensor, in the order of the standard's masks.
struct Threshold {
  const char* key;   // "lower_non_critical"
  const char* head;  // "LNC"
  int32_t full_sdr_rec::*raw;
};

constexpr Threshold kThresholds[] = {
    {"lower_non_critical", "LNC", &full_sdr_rec::LowerNCThreshold},
    {"lower_critical", "LC", &full_sdr_rec::LowerCriticalThreshold},
    {"lower_non_recoverable", "LNR", &full_sdr_rec::LowerNRThreshold},
    {"upper_non_critical", "UNC", &full_sdr_rec::UpperNCThreshold},
    {"upper_critical", "UC", &full_sdr_rec::UpperCriticalThreshold},
    {"upper_non_recoverable", "UNR", &full_sdr_rec::UpperNRThreshold},
};

// Whether the sensor has that threshold (a position in kThresholds): it is a threshold sensor whose record says that
// this one can be read or set.
bool has_threshold(const full_sdr_rec& sensor, size_t threshold);

}  // namespace qmvctl

#endif
