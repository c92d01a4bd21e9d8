// fru and assets.
#include <array>

#include "commands.h"
#include "rows.h"
#include "rows_json.h"

namespace qmvctl {

namespace {

using GetQueries = decltype(&get_sqlqueries);

constexpr std::string_view kSensorName = "sensor_name";

// Runs a statement and makes a row of each result: members by position, all but the name numbers.
std::vector<Json> run(const Database& database, const char* statement, const std::vector<const char*>& keys) {
  std::vector<Json> rows;
  database.query(statement, [&](sqlite3_stmt* result) {
    Json& row = rows.emplace_back();
    for (int i = 0; const char* key : keys) {
      if (key == kSensorName) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(result, i));
        row[key] = text ? text : "";
      } else {
        row[key] = sqlite3_column_int(result, i);
      }
      ++i;
    }
  });
  return rows;
}

std::optional<Assets::Part> list_part(const Database& database, const std::string& class_name, GetQueries get_queries,
                                      const std::vector<const char*>& keys) {
  std::array<char, QMV_COUNT_QUERY_SIZE> count{};
  std::array<char, QMV_LIST_QUERY_SIZE> list{};
  if (get_queries(class_name.c_str(), count.data(), list.data()) != 0) return std::nullopt;
  Assets::Part part;
  part.count = run(database, count.data(), {"count"}).at(0).at("count");
  part.listing.rows = run(database, list.data(), keys);
  return part;
}

}  // namespace

Listing list_frus(const Database& database) {
  Listing listing{
      {number_column("ID", 3, "fru_id"), text_column("Name", 16, "name"), entity_column(19),
       byte_column("Controller", kInFull, "device_access_address"), byte_column("LUN and bus", kInFull, "lun_bus_id"),
       number_column("Channel", kInFull, "channel"), text_column("Product maker", kWide, "product_manufacturer"),
       text_column("Product part", 17, "product_part_number"),
       text_column("Product serial", 17, "product_serial_number"),
       text_column("Board maker", kWide, "board_manufacturer"), text_column("Board part", kWide, "board_part_number"),
       text_column("Board serial", kWide, "board_serial_number"),
       text_column("Chassis part", kWide, "chassis_part_number"),
       text_column("Chassis serial", kWide, "chassis_serial_number"),
       text_column("Chassis custom", kInFull, "chassis_custom_fields")},
      {},
      "There are no FRUs."};
  for (const auto& fru : frus(database)) listing.rows.push_back(to_json(fru));
  return listing;
}

std::optional<Assets> list_assets(const Database& database, const std::string& class_name) {
  auto frus = list_part(database, class_name, get_sqlqueries,
                        {"fru_id", "device_access_address", "lun_bus_id", "channel", "entity_id", "entity_instance",
                         "fru_name_length", "sensor_name", "sensor_number"});
  auto sensors = list_part(database, class_name, get_sqlqueries_nonFRU,
                           {"entity_id", "entity_instance", "sensor_name", "sensor_number"});
  if (!frus || !sensors) return std::nullopt;
  sensors->listing.columns = {entity_column(26), text_column("Sensor", 36, "sensor_name"),
                              byte_column("Number", 6, "sensor_number")};
  frus->listing.columns = {
      number_column("FRU", 3, "fru_id"), byte_column("Controller", kInFull, "device_access_address"),
      byte_column("LUN and bus", kInFull, "lun_bus_id"), number_column("Channel", kInFull, "channel")};
  for (const Column& column : sensors->listing.columns) frus->listing.columns.push_back(column);
  frus->listing.empty_text = "No FRU has a full sensor.";
  sensors->listing.empty_text = "There are no full sensors.";
  return Assets{class_name, std::move(*frus), std::move(*sensors)};
}

}  // namespace qmvctl
