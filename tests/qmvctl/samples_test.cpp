// Dumps of whole servers against what ipmitool prints for them: the project's own sample always, recorded ones of real
// servers when the environment variable QMV_SAMPLES names their folder.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "command_test.h"
#include "printed.h"

namespace qmvctl::test {
namespace {

namespace fs = std::filesystem;

class SamplesTest : public CommandTest {
 protected:
  SamplesTest() { on_database({"init"}); }

  Outcome import(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"import"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return on_database(command);
  }

  void expect_repository(const std::string& printed_file);
  void expect_frus(const std::string& printed_file, const std::set<int>& imported);
  void expect_events(const std::string& printed_file, const std::vector<PrintedSensor>& event_only = {});

 private:
  void expect_sensor(const Json& event, const PrintedEvent& printed, const std::vector<PrintedSensor>& event_only);
  void expect_event(const Json& event, const PrintedEvent& printed);
  void expect_reading(const Json& event, const std::string& printed, const Json& sensors);
};

std::string entity_of(const nlohmann::json& row) {
  return std::to_string(row.at("entity_id").get<int>()) + "." +
         std::to_string(row.at("entity_instance").get<int>() & 0x7F);
}

std::string without_blanks_at_the_end(const std::string& text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

// Names, numbers and entities of all sensors and FRU locators.
void SamplesTest::expect_repository(const std::string& printed_file) {
  PrintedRepository printed = printed_repository(printed_file);
  PrintedRepository imported;
  for (const Json& row : rows({"sensors"})) {
    imported.sensors.push_back({without_blanks_at_the_end(row.at("name")), row.at("sensor_number"), entity_of(row)});
  }
  for (const Json& row : rows({"fru"})) imported.frus.push_back({row.at("fru_id"), row.at("name"), entity_of(row)});
  for (PrintedRepository* repository : {&printed, &imported}) {
    std::sort(repository->sensors.begin(), repository->sensors.end());
    std::sort(repository->frus.begin(), repository->frus.end());
  }
  EXPECT_GT(printed.sensors.size(), 30u);
  ASSERT_EQ(imported.sensors.size(), printed.sensors.size());
  for (size_t i = 0; i < printed.sensors.size(); ++i) {
    EXPECT_EQ(imported.sensors[i].name, printed.sensors[i].name);
    EXPECT_EQ(imported.sensors[i].number, printed.sensors[i].number) << printed.sensors[i].name;
    EXPECT_EQ(imported.sensors[i].entity, printed.sensors[i].entity) << printed.sensors[i].name;
  }
  EXPECT_TRUE(imported.frus == printed.frus);
}

// The inventory strings of the FRUs whose images were imported.
void SamplesTest::expect_frus(const std::string& printed_file, const std::set<int>& imported) {
  const std::map<std::string, std::string> keys = {
      {"product_manufacturer", "Product Manufacturer"}, {"product_part_number", "Product Part Number"},
      {"product_serial_number", "Product Serial"},      {"board_manufacturer", "Board Mfg"},
      {"board_part_number", "Board Part Number"},       {"board_serial_number", "Board Serial"},
      {"chassis_part_number", "Chassis Part Number"},   {"chassis_serial_number", "Chassis Serial"},
      {"chassis_custom_fields", "Chassis Extra"},
  };
  auto printed = printed_frus(printed_file);
  size_t compared = 0;
  for (const Json& row : rows({"fru"})) {
    const int id = row.at("fru_id");
    if (!imported.contains(id)) continue;
    ASSERT_TRUE(printed.contains(id)) << id;
    for (const auto& [key, label] : keys) {
      EXPECT_EQ(without_blanks_at_the_end(row.at(key)), printed[id][label]) << "FRU " << id << ", " << label;
    }
    ++compared;
  }
  EXPECT_EQ(compared, imported.size());
}

// "Reading 13.36 > Threshold 12.94 Volts": the event's own values, and the threshold as the sensor has it.
void SamplesTest::expect_reading(const Json& event, const std::string& printed, const Json& sensors) {
  double reading = 0;
  double threshold = 0;
  char unit[32] = "";
  ASSERT_EQ(std::sscanf(printed.c_str(), "Reading %lf %*c Threshold %lf %31[^\n]", &reading, &threshold, unit), 3);
  EXPECT_DOUBLE_EQ(event.at("reading").get<double>(), reading);
  EXPECT_DOUBLE_EQ(event.at("threshold").get<double>(), threshold);
  EXPECT_EQ(event.at("unit"), unit);

  const auto sensor = std::find_if(sensors.begin(), sensors.end(),
                                   [&](const Json& row) { return row.at("name") == event.at("sensor_name"); });
  ASSERT_NE(sensor, sensors.end());
  std::string key;  // "Lower Non-critical going low" names "lower_non_critical"
  const std::string name = event.at("event");
  for (const char c : name.substr(0, name.find(" going"))) {
    key += c == ' ' || c == '-' ? '_' : static_cast<char>(std::tolower(c));
  }
  EXPECT_DOUBLE_EQ(sensor->at("thresholds").at(key).at("value").get<double>(), threshold) << key;
}

// Sensor type and name, or the number where the database knows no sensor of it.
void SamplesTest::expect_sensor(const Json& event, const PrintedEvent& printed,
                                const std::vector<PrintedSensor>& event_only) {
  const int number = event.at("sensor_number");
  char text[16];
  std::snprintf(text, sizeof text, "#0x%02x", static_cast<unsigned>(number));
  std::string name = event.at("sensor_name").is_null() ? text : event.at("sensor_name").get<std::string>();
  for (const PrintedSensor& sensor : event_only) {
    if (sensor.number == number && printed.sensor.ends_with(" " + sensor.name)) name = sensor.name;
  }
  std::string type = event.at("sensor_type_name");
  if (event.at("sensor_type") == 0x0F) type = "System Firmware Error";  // the printed name follows the event
  if (event.at("sensor_type") >= 0xC0) type = "Unknown";
  EXPECT_EQ(type + " " + name, printed.sensor);
}

// What happened, as far as it is printed. From the other data bytes, ipmitool may say more than the state's name.
void SamplesTest::expect_event(const Json& event, const PrintedEvent& printed) {
  const bool is_firmware_progress = event.at("sensor_type") == 0x0F;
  if (!printed.event.empty() && !is_firmware_progress) {
    EXPECT_TRUE(printed.event.starts_with(event.at("event").get<std::string>()))
        << printed.event << " or " << event.at("event");
  }
  if (!printed.direction.empty()) {
    EXPECT_EQ(event.at("direction"), printed.direction == "Asserted" ? "asserted" : "deasserted");
  }
}

void SamplesTest::expect_events(const std::string& printed_file, const std::vector<PrintedSensor>& event_only) {
  const auto printed = printed_events(printed_file);
  const Json sensors = rows({"sensors"});
  const Json events = rows({"sel"});
  EXPECT_GT(printed.size(), 10u);
  ASSERT_EQ(events.size(), printed.size());
  for (size_t i = 0; i < printed.size(); ++i) {
    SCOPED_TRACE("event " + std::to_string(i + 1));
    EXPECT_EQ(events[i].at("time"), printed[i].time);
    expect_sensor(events[i], printed[i], event_only);
    expect_event(events[i], printed[i]);
    if (!printed[i].reading.empty()) expect_reading(events[i], printed[i].reading, sensors);
  }
}

class OwnSample : public SamplesTest {
 protected:
  static std::string sample(const std::string& name) { return std::string(QMVCTL_SAMPLES) + "/" + name; }
};

TEST_F(OwnSample, AgreesWithItsPrintedForm) {
  std::vector<std::string> arguments{"--sdr", sample("server.sdr"), "--sel", sample("server.sel")};
  std::set<int> frus;
  for (int id = 0; id < 10; ++id) {
    arguments.insert(arguments.end(),
                     {"--fru", std::to_string(id) + "=" + sample("fru" + std::to_string(id) + ".bin")});
    frus.insert(id);
  }
  const Outcome outcome = import(arguments);
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  expect_repository(sample("expected/sdr-elist.txt"));
  expect_frus(sample("expected/fru-print.txt"), frus);
  expect_events(sample("expected/sel-elist.txt"), printed_repository(sample("expected/sdr-elist.txt")).event_only);
}

TEST_F(OwnSample, ComesBackAsProcessorsMemoryAndPowerSupplies) {
  ASSERT_EQ(import({"--sdr", sample("server.sdr")}).status, 0);
  EXPECT_EQ(rows({"processors"}).size(), 2u);
  EXPECT_EQ(rows({"memory"}).size(), 4u);
  EXPECT_EQ(rows({"power-supplies"}).size(), 3u);  // two supplies and the unit of both
}

// Recorded dumps: sdr/NAME.sdr, fru/NAME-fruID.bin, sel/NAME.sel, and what ipmitool printed under expected/.
class RecordedSamples : public SamplesTest {
 protected:
  void SetUp() override {
    const char* folder = std::getenv("QMV_SAMPLES");
    if (!folder) GTEST_SKIP() << "QMV_SAMPLES names no folder of recorded dumps";
    folder_ = folder;
  }

  std::string sample(const std::string& name) const { return folder_ / name; }

  std::vector<fs::path> files(const std::string& subfolder) const {
    std::vector<fs::path> files{fs::directory_iterator(folder_ / subfolder), fs::directory_iterator()};
    std::sort(files.begin(), files.end());
    return files;
  }

  static bool is_faulty(const fs::path& image) {
    for (const auto& [name, message] : kFaultyImages) {
      if (image.filename() == name) return true;
    }
    return false;
  }

  static constexpr std::pair<const char*, const char*> kFaultyImages[] = {
      {"s2600kp-fru3.bin", "offset 7: the checksum of the common header is wrong"},
      {"s2600wtt-fru5.bin", "the checksum of the board area is wrong"},
      {"s2600wtt-fru17.bin", "the checksum of the board area is wrong"},
      {"opalkelly_default_2k.bin", "the checksum of a multi-record is wrong"},
  };

 private:
  fs::path folder_;
};

TEST_F(RecordedSamples, EveryRepositoryAgreesWithItsPrintedForm) {
  size_t compared = 0;
  for (const fs::path& dump : files("sdr")) {
    SCOPED_TRACE(dump);
    const Outcome outcome = import({"--sdr", dump});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    const std::string printed = sample("expected/" + dump.stem().string() + ".sdr-elist.txt");
    if (!fs::exists(printed)) continue;
    expect_repository(printed);
    ++compared;
  }
  EXPECT_EQ(compared, 5u);
}

TEST_F(RecordedSamples, EveryRecordOfARepositoryIsAccountedFor) {
  struct Counts {
    const char* name;
    int full, compact, locators, event_only, all;
  };
  constexpr Counts kServers[] = {{"s2600wtt", 40, 49, 9, 5, 198},    {"s2600tp", 40, 34, 5, 28, 167},
                                 {"s2600kp", 39, 33, 5, 27, 163},    {"quanta_d51", 48, 42, 2, 17, 112},
                                 {"quanta_t41", 50, 47, 2, 17, 119}, {"generic_2socket", 27, 31, 36, 1, 97}};
  for (const Counts& server : kServers) {
    SCOPED_TRACE(server.name);
    const Json report = rows({"import", "--sdr", sample(std::string("sdr/") + server.name + ".sdr")});
    EXPECT_EQ(report.at("stored").at("full_sensors"), server.full);
    EXPECT_EQ(report.at("stored").at("compact_sensors"), server.compact);
    EXPECT_EQ(report.at("stored").at("fru_locators"), server.locators);
    EXPECT_EQ(report.at("not_held").at("event-only sensor"), server.event_only);
    int all = server.full + server.compact + server.locators;
    for (const Json& count : report.at("not_held")) all += count.get<int>();
    EXPECT_EQ(all, server.all);
  }
}

TEST_F(RecordedSamples, EveryServersFrusAgreeWithTheirPrintedForm) {
  for (const std::string server : {"s2600wtt", "s2600tp", "s2600kp", "quanta_d51", "quanta_t41"}) {
    SCOPED_TRACE(server);
    std::vector<std::string> arguments{"--sdr", sample("sdr/" + server + ".sdr")};
    std::set<int> frus;
    for (const fs::path& image : files("fru")) {
      const std::string name = image.stem();
      if (!name.starts_with(server + "-fru") || is_faulty(image)) continue;
      const std::string id = name.substr(server.size() + 4);
      arguments.insert(arguments.end(), {"--fru", id + "=" + image.string()});
      frus.insert(std::stoi(id));
    }
    const Outcome outcome = import(arguments);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_GE(frus.size(), 2u);
    expect_frus(sample("expected/" + server + ".fru-print.txt"), frus);
  }
}

TEST_F(RecordedSamples, EveryOtherImageIsRead) {
  for (const fs::path& image : files("fru")) {
    SCOPED_TRACE(image);
    if (is_faulty(image)) continue;
    const Outcome outcome = import({"--fru", "0=" + image.string()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const Json fru = rows({"fru"}).at(0);
    EXPECT_NE(fru.at("board_manufacturer").get<std::string>() + fru.at("product_manufacturer").get<std::string>(), "");
  }
}

TEST_F(RecordedSamples, FaultyImagesGiveAClearErrorAndLeaveNothing) {
  for (const auto& [name, message] : kFaultyImages) {
    const std::string image = sample(std::string("fru/") + name);
    const Outcome outcome = import({"--fru", "0=" + image});
    EXPECT_EQ(outcome.status, 1) << name;
    EXPECT_EQ(outcome.err.find("qmvctl: " + image + ": offset "), 0u) << outcome.err;
    EXPECT_NE(outcome.err.find(message), std::string::npos) << outcome.err;
    EXPECT_EQ(rows({"fru"}).size(), 0u);
  }
}

TEST_F(RecordedSamples, EventsOfALiveServerAgreeWithTheirPrintedForm) {
  ASSERT_EQ(import({"--sdr", sample("sdr/s2600wtt.sdr"), "--sel", sample("sel/s2600wtt_live.sel")}).status, 0);
  expect_events(sample("expected/s2600wtt_live.sel-elist.txt"));
}

TEST_F(RecordedSamples, EventsOfAYearAgreeWithTheirPrintedForm) {
  ASSERT_EQ(import({"--sel", sample("sel/intel_board_916.sel")}).status, 0);
  EXPECT_EQ(rows({"sel"}).size(), 916u);
  expect_events(sample("expected/intel_board_916.sel-list.txt"));
}

}  // namespace
}  // namespace qmvctl::test
