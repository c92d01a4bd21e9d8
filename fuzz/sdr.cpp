// Sensor data repositories of any bytes.
#include <set>
#include <string>

#include "sdr_decoder.h"
#include "texts.h"

namespace {

template <class Sensor>
void require_sensor(const Sensor& sensor, std::set<std::string>& keys) {
  using qmv::fuzz::require;
  qmv::fuzz::require_text(sensor.DeviceID);
  qmv::fuzz::require_text(sensor.SensorName);
  qmv::fuzz::require_text(sensor.IdStr);
  qmv::fuzz::require_text(sensor.OtherSensorTypeDesc);
  require(keys.insert(sensor.DeviceID).second, "no two sensors share a key");
  require(sensor.SensorNum >= 0 && sensor.SensorNum <= 0xFE, "a sensor has a number");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  try {
    const qmvctl::Repository repository = qmvctl::decode_repository({"file", {bytes, bytes + size}});
    std::set<std::string> keys;
    for (const auto& sensor : repository.compact_sensors) require_sensor(sensor, keys);
    for (const auto& sensor : repository.full_sensors) require_sensor(sensor, keys);
    for (const auto& locator : repository.fru_locators) qmv::fuzz::require_text(locator.DevIdStr);
    if (repository.builtin_fru) qmv::fuzz::require_texts(*repository.builtin_fru);
  } catch (const qmvctl::InputError&) {
  }
  return 0;
}
