#include "rows_json.h"

#include "conversion.h"
#include "names.h"
#include "text.h"

namespace qmvctl {

namespace {

template <class Sensor>
Json sensor_json(const Sensor& sensor, const char* kind) {
  Json row{
      {"device_id", text_of(sensor.DeviceID)},
      {"kind", kind},
      {"name", text_of(sensor.SensorName)},
      {"owner_id", sensor.OwnerID},
      {"owner_lun", sensor.OwnerLUN},
      {"sensor_number", sensor.SensorNum},
      {"record_id", sensor.IPMI_RecordID},
      {"entity_id", sensor.EntityID},
      {"entity_instance", sensor.EntityInstance},
      {"sensor_type", sensor.SensorType},
      {"sensor_type_name", sensor_type_name(sensor.SensorType)},
      {"cim_sensor_type", sensor.CIMSensorType},
      {"event_type", sensor.EventTypeCode},
      {"event_type_name", event_type_name(sensor.EventTypeCode)},
      {"base_unit", sensor.BaseUnit},
      {"unit", reading_unit(sensor.RateUnit, sensor.BaseUnit, sensor.UnitModifier)},
      {"physical_element", sensor.PhysicalElement},
      {"fru", sensor.IsFRUAvailable ? Json(text_of(sensor.FruRecord.DevIdStr)) : Json(nullptr)},
      {"id_string", text_of(sensor.IdStr)},
      {"other_sensor_type", text_of(sensor.OtherSensorTypeDesc)},
  };
  for (const auto& member : kRecordMembers<Sensor>) row[member.key] = sensor.*member.value;
  return row;
}

// A raw value as it is, and converted where the sensor has a linear formula or a known function.
Json level_json(const full_sdr_rec& sensor, const Level& level) {
  const int32_t raw = sensor.*level.raw;
  const auto value = convert(sensor, raw);
  return {{"raw", raw}, {"value", value ? Json(rounded(sensor, *value)) : Json(nullptr)}};
}

}  // namespace

Json to_json(const compact_sdr_rec& sensor) {
  Json row = sensor_json(sensor, "compact");
  row["sharing"] = sensor.RecShareDir;
  return row;
}

Json to_json(const full_sdr_rec& sensor) {
  Json row = sensor_json(sensor, "full");
  const Formula formula = formula_of(sensor);
  row["linearization"] = sensor.Linearization;
  row["linearization_name"] = linearization_name(sensor.Linearization);
  row["m"] = formula.m;
  row["b"] = formula.b;
  row["b_exponent"] = formula.b_exponent;
  row["r_exponent"] = formula.r_exponent;
  row["tolerance"] = formula.tolerance;
  row["accuracy"] = formula.accuracy;
  row["sensor_direction"] = sensor.Accuracy & 3;
  row["analog_flags"] = sensor.AnalogCharFlag;
  Json& readings = row["readings"] = Json::object();
  for (size_t i = 0; i < std::size(kReadings); ++i) {
    if (has_reading(sensor, i)) readings[kReadings[i].key] = level_json(sensor, kReadings[i]);
  }
  Json& thresholds = row["thresholds"] = Json::object();
  for (size_t i = 0; i < std::size(kThresholds); ++i) {
    if (has_threshold(sensor, i)) thresholds[kThresholds[i].key] = level_json(sensor, kThresholds[i]);
  }
  return row;
}

Json to_json(const fru_rec& fru) {
  return {
      {"fru_id", fru.FruIDSlaveAddr},
      {"device_access_address", fru.DeviceAccessAddr},
      {"lun_bus_id", fru.LUNBusID},
      {"channel", fru.ChannelNumber},
      {"name", text_of(fru.DevIdStr)},
      {"entity_id", fru.EntityID},
      {"entity_instance", fru.EntityInst},
      {"product_manufacturer", text_of(fru.ProdMfrName)},
      {"product_part_number", text_of(fru.ProdPartNumber)},
      {"product_serial_number", text_of(fru.ProdSerNumber)},
      {"board_manufacturer", text_of(fru.BrdMfrName)},
      {"board_part_number", text_of(fru.BrdPartNumber)},
      {"board_serial_number", text_of(fru.BrdSerNumber)},
      {"chassis_part_number", text_of(fru.ChassisPartNumber)},
      {"chassis_serial_number", text_of(fru.ChassisSerNumber)},
      {"chassis_custom_fields", text_of(fru.ChassisCustFields)},
  };
}

Column entity_column(int width) {
  const auto text = [](const Json& row) {
    constexpr int kLogicalEntity = 0x80;
    const int id = row.at("entity_id");
    const int instance = row.at("entity_instance").get<int>() & ~kLogicalEntity;
    return std::to_string(id) + "." + std::to_string(instance) + " " + entity_name(id);
  };
  return {"Entity", width, text, Column::Align::kLeft, "entity_id"};
}

}  // namespace qmvctl
