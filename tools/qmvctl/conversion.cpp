#include "conversion.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "names.h"

namespace qmvctl {

namespace {

constexpr int kLinear = 0;

int signed_value(int value, int bits) {
  return value >= 1 << (bits - 1) ? value - (1 << bits) : value;
}

// The 10-bit factors, whose upper two bits stand in the byte behind.
int factor(int32_t low, int32_t high) {
  return signed_value((low & 0xFF) | (high & 0xC0) << 2, 10);
}

// The raw byte as the data format in the sensor units says; nothing for "no analog reading".
std::optional<int> raw_number(const full_sdr_rec& sensor, int32_t raw) {
  switch (sensor.RateUnit >> 6 & 3) {
    case 0:
      return raw;
    case 1:
      return raw & 0x80 ? raw - 0xFF : raw;  // one's complement
    case 2:
      return signed_value(raw, 8);
    default:
      return std::nullopt;
  }
}

std::optional<double> linearize(int32_t function, double x) {
  switch (function) {
    case kLinear:
      return x;
    case 1:
      return std::log(x);
    case 2:
      return std::log10(x);
    case 3:
      return std::log2(x);
    case 4:
      return std::exp(x);
    case 5:
      return std::pow(10, x);
    case 6:
      return std::exp2(x);
    case 7:
      return 1 / x;
    case 8:
      return x * x;
    case 9:
      return x * x * x;
    case 10:
      return std::sqrt(x);
    case 11:
      return std::cbrt(x);
    default:
      return std::nullopt;
  }
}

}  // namespace

Formula formula_of(const full_sdr_rec& sensor) {
  const int accuracy = (sensor.BAccuracy & 0x3F) | (sensor.Accuracy & 0xF0) << 2;  // in 1/100 percent
  const int accuracy_exponent = sensor.Accuracy >> 2 & 3;
  return {.m = factor(sensor.M, sensor.MTolerance),
          .b = factor(sensor.B, sensor.BAccuracy),
          .b_exponent = signed_value(sensor.RBExp & 0xF, 4),
          .r_exponent = signed_value(sensor.RBExp >> 4 & 0xF, 4),
          .tolerance = sensor.MTolerance & 0x3F,
          .accuracy = accuracy * std::pow(10, accuracy_exponent) / 100};
}

std::string linearization_name(int32_t linearization) {
  constexpr const char* kFunctions[] = {"linear", "ln",  "log10", "log2", "e^x",         "10^x",
                                        "2^x",    "1/x", "x^2",   "x^3",  "square root", "cube root"};
  const bool is_function = linearization >= 0 && linearization < static_cast<int32_t>(std::size(kFunctions));
  return is_function ? kFunctions[linearization] : "non-linear";
}

std::optional<double> convert(const full_sdr_rec& sensor, int32_t raw) {
  const auto x = raw_number(sensor, raw & 0xFF);
  if (!x) return std::nullopt;
  const Formula formula = formula_of(sensor);
  const auto value = linearize(sensor.Linearization, (formula.m * *x + formula.b * std::pow(10, formula.b_exponent)) *
                                                         std::pow(10, formula.r_exponent));
  return value && std::isfinite(*value) ? value : std::nullopt;
}

double rounded(const full_sdr_rec& sensor, double value) {
  constexpr double kDecimalsOfFunctions = 3;
  constexpr double kSlack = 1e-9;  // the logarithm of a power of ten may fall short of the integer
  const Formula formula = formula_of(sensor);
  const double count = std::abs(formula.m) * std::pow(10, formula.r_exponent);
  const bool is_linear = sensor.Linearization == kLinear && count > 0;
  const double decimals = is_linear ? -std::floor(std::log10(count) + kSlack) : kDecimalsOfFunctions;
  const double scale = std::pow(10, std::max(decimals, 0.0));
  return std::round(value * scale) / scale;
}

bool has_reading(const full_sdr_rec& sensor, size_t reading) {
  constexpr size_t kFlags = 3;
  return raw_number(sensor, 0) && (reading >= kFlags || (sensor.AnalogCharFlag >> reading & 1) != 0);
}

bool has_threshold(const full_sdr_rec& sensor, size_t threshold) {
  const bool gives_access = (sensor.SensorCaps >> 2 & 3) != 0;
  const int32_t masks = sensor.DiscreteReadingMask | sensor.DiscreteReadingMask >> 8;  // readable, settable
  return sensor.EventTypeCode == kThresholdEvents && gives_access && (masks >> threshold & 1) != 0;
}

}  // namespace qmvctl
