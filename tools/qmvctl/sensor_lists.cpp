// sensors, processors, memory and power-supplies.
#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <utility>

#include "commands.h"
#include "conversion.h"
#include "inventory.h"
#include "rows.h"
#include "rows_json.h"
#include "text.h"

namespace qmvctl {

namespace {

// A threshold or a reading of the record converted, or its raw count where the sensor has no linear formula.
Column level_column(const Level& level, int width, const char* levels) {
  const auto text = [key = level.key, levels](const Json& row) -> std::string {
    if (!row.contains(levels) || !row[levels].contains(key)) return "";
    const Json& value = row[levels][key];
    if (value["value"].is_null()) return "raw " + hex(value["raw"].get<int>() & 0xFF) + "h";
    return number_text(value["value"]);
  };
  return {level.head, width, text, Column::Align::kRight};
}

std::string accuracy_text(const Json& row) {
  return row.contains("accuracy") ? number_text(row["accuracy"]) : "";
}

std::vector<Column> sensor_columns() {
  std::vector<Column> columns{text_column("DeviceID", 10, "device_id"),
                              text_column("Name", 16, "name"),
                              name_column("Type", 16, "sensor_type_name", "sensor_type"),
                              entity_column(20),
                              text_column("Kind", kWide, "kind"),
                              name_column("Unit", 10, "unit", "base_unit"),
                              byte_column("Owner", kInFull, "owner_id"),
                              byte_column("Owner LUN", kInFull, "owner_lun"),
                              byte_column("Number", kInFull, "sensor_number"),
                              number_column("Record ID", kInFull, "record_id"),
                              name_column("Event type", kInFull, "event_type_name", "event_type"),
                              number_column("CIM sensor type", kInFull, "cim_sensor_type"),
                              text_column("Other sensor type", kInFull, "other_sensor_type"),
                              text_column("FRU", kInFull, "fru"),
                              word_column("Physical element", kInFull, "physical_element"),
                              text_column("ID string", kInFull, "id_string")};
  constexpr size_t kLowestToHighest[] = {2, 1, 0, 3, 4, 5};
  for (const size_t threshold : kLowestToHighest) {
    columns.push_back(level_column(kThresholds[threshold], kWide, "thresholds"));
  }
  for (const Level& reading : kReadings) columns.push_back(level_column(reading, kInFull, "readings"));
  columns.insert(columns.end(), {name_column("Linearization", kInFull, "linearization_name", "linearization"),
                                 number_column("M", kInFull, "m"),
                                 number_column("B", kInFull, "b"),
                                 number_column("B exponent", kInFull, "b_exponent"),
                                 number_column("R exponent", kInFull, "r_exponent"),
                                 number_column("Tolerance (1/2 counts)", kInFull, "tolerance"),
                                 {"Accuracy (%)", kInFull, accuracy_text, Column::Align::kRight},
                                 number_column("Sensor direction", kInFull, "sensor_direction")});
  for (const auto& member : kRecordMembers<full_sdr_rec>) {
    columns.push_back(member.column(member.head, kInFull, member.key));
  }
  columns.push_back(byte_column("Analog flags", kInFull, "analog_flags"));
  columns.push_back(word_column("Record sharing", kInFull, "sharing"));
  return columns;
}

Listing list_components(const std::vector<compact_sdr_rec>& sensors, const std::string& empty_text) {
  Listing listing{
      {text_column("DeviceID", 10, "device_id"), text_column("Name", 20, "name"),
       byte_column("Number", 6, "sensor_number"), name_column("Type", kInFull, "sensor_type_name", "sensor_type"),
       entity_column(20), text_column("FRU", 16, "fru")},
      {},
      empty_text};
  for (const auto& sensor : sensors) {
    const bool is_filled = sensor.DeviceID[0] != '\0';  // a get-all of memory may end in zeroed records
    if (is_filled) listing.rows.push_back(to_json(sensor));
  }
  return listing;
}

// A power supply and the sensor that stands for it.
struct PowerSupply {
  int32_t entity_id = 0;
  int32_t entity_instance = 0;
  int32_t sensor_number = 0;
};

std::string instance_name(const PowerSupply& supply) {
  return std::to_string(supply.entity_id) + ":" + std::to_string(supply.entity_instance) + ":" +
         std::to_string(supply.sensor_number) + ":PowerSupply";
}

std::vector<PowerSupply> power_supplies_of_fixed_file(const Database& database) {
  char** names = nullptr;
  int32_t count = 0;
  if (get_all_ps_from_db(&names, &count) != 0) database.fail("the power supplies cannot be read");
  std::vector<PowerSupply> supplies;
  for (int32_t i = 0; i < count; ++i) {
    PowerSupply supply;
    std::sscanf(names[i], "%d:%d:%d", &supply.entity_id, &supply.entity_instance, &supply.sensor_number);
    supplies.push_back(supply);
    db_freemem(names[i]);
  }
  db_freemem(names);
  return supplies;
}

// One power supply an entity, by its sensor with the lowest number, as in the fixed file.
std::vector<PowerSupply> power_supplies_of(const Database& database) {
  std::map<std::pair<int32_t, int32_t>, PowerSupply> by_entity;
  const auto take = [&](const auto& sensors) {
    for (const auto& sensor : sensors) {
      const bool is_supply = (sensor.PhysicalElement & kPowerSupply) != 0 &&
                             (sensor.EntityID == 10 || sensor.EntityID == 19);  // power supply, power unit
      if (!is_supply) continue;
      const PowerSupply supply{sensor.EntityID, sensor.EntityInstance, sensor.SensorNum};
      PowerSupply& known = by_entity.try_emplace({sensor.EntityID, sensor.EntityInstance}, supply).first->second;
      known.sensor_number = std::min(known.sensor_number, supply.sensor_number);
    }
  };
  take(compact_sensors(database));
  take(full_sensors(database));
  std::vector<PowerSupply> supplies;
  for (const auto& [entity, supply] : by_entity) supplies.push_back(supply);
  return supplies;
}

}  // namespace

Listing list_sensors(const Database& database) {
  Listing listing{sensor_columns(), {}, "There are no sensors."};
  for (const auto& sensor : compact_sensors(database)) listing.rows.push_back(to_json(sensor));
  for (const auto& sensor : full_sensors(database)) listing.rows.push_back(to_json(sensor));
  return listing;
}

Listing list_processors(const Database& database) {
  return list_components(read_all<compact_sdr_rec>(database, "compact_sdr", db_get_all_processor),
                         "There are no processors.");
}

Listing list_memory(const Database& database) {
  return list_components(read_all<compact_sdr_rec>(database, "compact_sdr", db_get_all_memory), "There is no memory.");
}

Listing list_power_supplies(const Database& database) {
  Listing listing{
      {text_column("Instance", 20, "instance"), entity_column(18), byte_column("Sensor", 6, "sensor_number"),
       text_column("FRU", 14, "fru"), text_column("Manufacturer", kWide, "manufacturer"),
       text_column("Part number", 14, "part_number"), text_column("Serial number", kWide, "serial_number")},
      {},
      "There are no power supplies."};
  const auto all_frus = frus(database);
  const bool is_fixed_file = database.file() == kInstanceDatabase.file;
  for (const PowerSupply& supply :
       is_fixed_file ? power_supplies_of_fixed_file(database) : power_supplies_of(database)) {
    Json row{{"instance", instance_name(supply)},
             {"entity_id", supply.entity_id},
             {"entity_instance", supply.entity_instance},
             {"sensor_number", supply.sensor_number}};
    const auto fru = std::find_if(all_frus.begin(), all_frus.end(), [&](const fru_rec& fru) {
      return fru.EntityID == supply.entity_id && fru.EntityInst == supply.entity_instance;
    });
    if (fru != all_frus.end()) {
      row["fru"] = text_of(fru->DevIdStr);
      row["manufacturer"] = text_of(fru->ProdMfrName);
      row["part_number"] = text_of(fru->ProdPartNumber);
      row["serial_number"] = text_of(fru->ProdSerNumber);
    }
    listing.rows.push_back(std::move(row));
  }
  return listing;
}

}  // namespace qmvctl
