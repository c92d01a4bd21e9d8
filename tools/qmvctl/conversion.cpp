#include "conversion.h"

#include <algorithm>
#include <cmath>

namespace qmvctl {

namespace {

constexpr int kLinear = 0;

int signed_value(int value, int bits) {
  return value >= 1 << (bits - 1) ? value - (1 << bits) : value;
}

// The 10-bit factors, whose upper two bits stand in the byte behind.
int factor(int32_t low, int32_t high) {
  return signed_value(low | (high & 0xC0) << 2, 10);
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

int result_exponent(const full_sdr_rec& sensor) {
  return signed_value(sensor.RBExp >> 4 & 0xF, 4);
}

}  // namespace

std::optional<double> convert(const full_sdr_rec& sensor, int32_t raw) {
  const auto x = raw_number(sensor, raw & 0xFF);
  if (!x) return std::nullopt;
  const int m = factor(sensor.M, sensor.MTolerance);
  const int b = factor(sensor.B, sensor.BAccuracy);
  const int b_exponent = signed_value(sensor.RBExp & 0xF, 4);
  const auto value =
      linearize(sensor.Linearization, (m * *x + b * std::pow(10, b_exponent)) * std::pow(10, result_exponent(sensor)));
  return value && std::isfinite(*value) ? value : std::nullopt;
}

double rounded(const full_sdr_rec& sensor, double value) {
  constexpr double kDecimalsOfFunctions = 3;
  constexpr double kSlack = 1e-9;  // the logarithm of a power of ten may fall short of the integer
  const double count = std::abs(factor(sensor.M, sensor.MTolerance)) * std::pow(10, result_exponent(sensor));
  const bool is_linear = sensor.Linearization == kLinear && count > 0;
  const double decimals = is_linear ? -std::floor(std::log10(count) + kSlack) : kDecimalsOfFunctions;
  const double scale = std::pow(10, std::max(decimals, 0.0));
  return std::round(value * scale) / scale;
}

bool has_threshold(const full_sdr_rec& sensor, size_t threshold) {
  constexpr int32_t kThresholdEvents = 1;
  const bool gives_access = (sensor.SensorCaps >> 2 & 3) != 0;
  const int32_t masks = sensor.DiscreteReadingMask | sensor.DiscreteReadingMask >> 8;  // readable, settable
  return sensor.EventTypeCode == kThresholdEvents && gives_access && (masks >> threshold & 1) != 0;
}

}  // namespace qmvctl
