// Names for the codes of IPMI 2.0, chapters 42 and 43, and the CIM classes that follow from them.
#ifndef QMVCTL_NAMES_H
#define QMVCTL_NAMES_H

#include <cstdint>
#include <string>
#include <string_view>

namespace qmvctl {

// Table 42-3. Codes without a name come as "type 2Dh" or "OEM type C0h".
std::string sensor_type_name(int32_t sensor_type);

// Table 43-13. Codes without a name come as "entity 41h".
std::string entity_name(int32_t entity_id);

// Table 43-15; "unit 5Fh" for codes without a name.
std::string unit_name(int32_t unit);

// The unit of a sensor's readings, as the three sensor units bytes give it: "degrees C", "% Watts", "hits per minute".
std::string reading_unit(int32_t units1, int32_t base_unit, int32_t modifier_unit);

// Table 42-1: "Threshold", "Sensor-specific"; "reserved" for codes without a meaning.
std::string event_type_name(int32_t event_type);
constexpr int32_t kThresholdEvents = 1;

// CIM_Sensor.SensorType for an IPMI sensor; by the unit where the sensor type is 0Bh, "other units-based sensor".
constexpr int32_t kCimOther = 1;
int32_t cim_sensor_type(int32_t sensor_type, int32_t base_unit);

// What an event says (tables 42-2 and 42-3): "Upper Critical going high". States without a name come as "state 5".
std::string event_name(int32_t event_type, int32_t sensor_type, int32_t state);

// How bad that is: Nominal, Warning or Critical; "" for a state without a name. What ends a bad state is Nominal; what
// ends a nominal one, Ended, since it does not say what follows.
std::string event_state(int32_t event_type, int32_t sensor_type, int32_t state, bool is_deasserted);

}  // namespace qmvctl

#endif
