// sel.
#include <fmt/format.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <optional>
#include <utility>

#include "commands.h"
#include "conversion.h"
#include "names.h"
#include "rows.h"
#include "text.h"

namespace qmvctl {

namespace {

// Sensors by owner ID and number, as an event names its sensor. The event's owner LUN is not kept, so the first one
// counts.
struct KnownSensors {
  explicit KnownSensors(const Database& database) : full(full_sensors(database)) {
    for (const auto& sensor : full) {
      names.try_emplace({sensor.OwnerID, sensor.SensorNum}, text_of(sensor.SensorName));
      numeric.try_emplace({sensor.OwnerID, sensor.SensorNum}, &sensor);
    }
    for (const auto& sensor : compact_sensors(database)) {
      names.try_emplace({sensor.OwnerID, sensor.SensorNum}, text_of(sensor.SensorName));
    }
  }

  using Key = std::pair<int32_t, int32_t>;
  std::vector<full_sdr_rec> full;
  std::map<Key, std::string> names;
  std::map<Key, const full_sdr_rec*> numeric;
};

// Times up to 20000000h count from the start of the controller, FFFFFFFFh is no time (IPMI 2.0, section 37.1).
std::string time_text(int32_t stamp) {
  constexpr uint32_t kLastSinceStart = 0x20000000;
  const auto seconds = static_cast<uint32_t>(stamp);
  if (seconds == 0xFFFFFFFF) return "unspecified";
  if (seconds <= kLastSinceStart) return "start + " + std::to_string(seconds) + " s";
  const std::chrono::sys_seconds time{std::chrono::seconds{seconds}};
  const auto midnight = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(midnight);
  const std::chrono::hh_mm_ss clock(time - midnight);
  return fmt::format("{}-{:02}-{:02} {:02}:{:02}:{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), clock.hours().count(),
                     clock.minutes().count(), clock.seconds().count());
}

// What the bits 7 and 6 (or 5 and 4) of a threshold event's first data byte say of the second (or third) byte: 1 is a
// reading.
Json converted(const full_sdr_rec* sensor, int32_t use, int32_t raw) {
  const auto value = sensor && use == 1 ? convert(*sensor, raw) : std::nullopt;
  return value ? Json(rounded(*sensor, *value)) : Json(nullptr);
}

std::string data_text(const Json& row) {
  std::string text;
  for (const Json& byte : row.at("data")) text += (text.empty() ? "" : " ") + hex(byte.get<int>() & 0xFF);
  return text;
}

std::string reading_text(const Json& row) {
  if (row["reading"].is_null()) return "";
  const std::string threshold = row["threshold"].is_null() ? "" : " (threshold " + number_text(row["threshold"]) + ")";
  return number_text(row["reading"]) + threshold + " " + row["unit"].get<std::string>();
}

// The sensor's name, or its type and number where no table knows it.
std::string sensor_text(const Json& row) {
  if (!row["sensor_name"].is_null()) return row["sensor_name"];
  return row["sensor_type_name"].get<std::string>() + " #" + hex(row["sensor_number"].get<int>() & 0xFF) + "h";
}

std::string generator_text(const Json& row) {
  const std::string digits = row["generator_id"];
  return digits.empty() ? "" : digits + "h";
}

Json to_json(const sel_rec& event, const KnownSensors& sensors) {
  const std::string generator(text_of(event.GeneratorID));
  const KnownSensors::Key key{static_cast<int32_t>(std::strtol(generator.c_str(), nullptr, 16)), event.SensorNum};
  const auto name = sensors.names.find(key);
  const auto numeric = sensors.numeric.find(key);
  const bool has_readings = event.EventType == kThresholdEvents && numeric != sensors.numeric.end();
  const full_sdr_rec* sensor = has_readings ? numeric->second : nullptr;
  return {
      {"record_id", event.RecordID},
      {"record_type", event.RecordType},
      {"time_stamp", static_cast<uint32_t>(event.TimeStamp)},
      {"time", time_text(event.TimeStamp)},
      {"generator_id", generator},
      {"message_revision", event.EvMRev},
      {"sensor_type", event.SensorType},
      {"sensor_type_name", sensor_type_name(event.SensorType)},
      {"sensor_number", event.SensorNum},
      {"sensor_name", name == sensors.names.end() ? Json(nullptr) : Json(name->second)},
      {"event_type", event.EventType},
      {"event_type_name", event_type_name(event.EventType)},
      {"event_offset", event.EventData1 & 0xF},
      {"event", event_name(event.EventType, event.SensorType, event.EventData1 & 0xF)},
      {"event_direction", event.EventDir},
      {"direction", event.EventDir ? "deasserted" : "asserted"},
      {"state", event_state(event.EventType, event.SensorType, event.EventData1 & 0xF, event.EventDir != 0)},
      {"data", {event.EventData1, event.EventData2, event.EventData3}},
      {"reading", converted(sensor, event.EventData1 >> 6 & 3, event.EventData2)},
      {"threshold", converted(sensor, event.EventData1 >> 4 & 3, event.EventData3)},
      {"unit", sensor ? reading_unit(sensor->RateUnit, sensor->BaseUnit, sensor->UnitModifier) : ""},
  };
}

}  // namespace

Listing list_events(const Database& database) {
  const KnownSensors sensors(database);
  Listing listing{{number_column("ID", 5, "record_id"),
                   text_column("Time (UTC)", 19, "time"),
                   byte_column("Record type", kInFull, "record_type"),
                   {"Generator", kWide, generator_text},
                   name_column("Sensor type", kWide, "sensor_type_name", "sensor_type"),
                   byte_column("Number", kWide, "sensor_number"),
                   {"Sensor", 15, sensor_text},
                   name_column("Event type", kInFull, "event_type_name", "event_type"),
                   name_column("Event", 25, "event", "event_offset"),
                   name_column("Direction", kWide, "direction", "event_direction"),
                   state_column("State", 8, "state"),
                   {"Data", kWide, data_text},
                   {"Reading", kWide, reading_text},
                   number_column("Message revision", kInFull, "message_revision")},
                  {},
                  "The event log is empty."};
  for (const auto& event : events(database)) listing.rows.push_back(to_json(event, sensors));
  return listing;
}

}  // namespace qmvctl
