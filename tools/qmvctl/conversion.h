// Raw readings in engineering units: IPMI 2.0, section 36.3.
#ifndef QMVCTL_CONVERSION_H
#define QMVCTL_CONVERSION_H

#include <optional>
#include <string>

#include "qmv.h"

namespace qmvctl {

// Converts a raw reading of a full sensor. Nothing when the sensor has no analog readings or a non-linear formula of
// its own.
std::optional<double> convert(const full_sdr_rec& sensor, int32_t raw);

// Rounds a converted reading to the decimals that one raw count of the sensor is worth.
double rounded(const full_sdr_rec& sensor, double value);

// The numbers of the conversion formula, put together from the bytes of the record (table 43-1, bytes 25 to 30).
struct Formula {
  int m;
  int b;
  int b_exponent;
  int r_exponent;
  int tolerance;    // in half raw counts
  double accuracy;  // in percent
};

Formula formula_of(const full_sdr_rec& sensor);

// The function that follows the linear formula (byte 24): "linear", "ln", "1/x"; "non-linear" where it is the sensor's
// own.
std::string linearization_name(int32_t linearization);

// A raw value of a sensor's record.
struct Level {
  const char* key;   // "lower_non_critical"
  const char* head;  // "LNC"
  int32_t full_sdr_rec::*raw;
};

// In the order of the standard's masks.
constexpr Level kThresholds[] = {
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

// In the order of the standard's flags, which tell of the first three whether they are given.
constexpr Level kReadings[] = {
    {"nominal", "Nominal reading", &full_sdr_rec::NominalRdg},
    {"normal_maximum", "Normal maximum", &full_sdr_rec::NormalMax},
    {"normal_minimum", "Normal minimum", &full_sdr_rec::NormalMin},
    {"sensor_maximum", "Largest reading", &full_sdr_rec::SensorMaxRdg},
    {"sensor_minimum", "Smallest reading", &full_sdr_rec::SensorMinRdg},
};

// Whether the record gives that reading (a position in kReadings) of an analog sensor.
bool has_reading(const full_sdr_rec& sensor, size_t reading);

}  // namespace qmvctl

#endif
