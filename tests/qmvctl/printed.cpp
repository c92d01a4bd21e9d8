#include "printed.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace qmvctl::test {

namespace {

std::string trimmed(const std::string& text) {
  const size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string> lines(const std::string& file) {
  std::ifstream stream(file);
  if (!stream) throw std::runtime_error(file + " cannot be read");
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> fields(const std::string& line) {
  std::vector<std::string> fields;
  for (size_t start = 0; start <= line.size();) {
    const size_t end = std::min(line.find('|', start), line.size());
    fields.push_back(trimmed(line.substr(start, end - start)));
    start = end + 1;
  }
  return fields;
}

bool begins(const std::string& text, const char* with) {
  return text.rfind(with, 0) == 0;
}

// "11/08/2011" or "11/21/26", and "12:33:24" or "07:53:16 UTC".
std::string iso_time(const std::string& date, const std::string& time) {
  int year = 0;
  int month = 0;
  int day = 0;
  if (std::sscanf(date.c_str(), "%d/%d/%d", &month, &day, &year) != 3) return "";
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %.8s", year < 100 ? year + 2000 : year, month, day, time.c_str());
  return text;
}

}  // namespace

PrintedRepository printed_repository(const std::string& file) {
  PrintedRepository repository;
  for (const std::string& line : lines(file)) {
    const auto field = fields(line);
    const bool is_controller = begins(field.at(4), "Dynamic MC") || begins(field[4], "Static MC");
    if (begins(field[4], "Logical FRU @")) {
      repository.frus.push_back({std::stoi(field[4].substr(13), nullptr, 16), field[0], field[3]});
    } else if (!is_controller) {
      auto& sensors = field[4] == "Event-Only" ? repository.event_only : repository.sensors;
      sensors.push_back({field[0], std::stoi(field[1], nullptr, 16), field[3]});
    }
  }
  return repository;
}

std::map<int, std::map<std::string, std::string>> printed_frus(const std::string& file) {
  std::map<int, std::map<std::string, std::string>> frus;
  std::map<std::string, std::string>* fru = nullptr;
  for (const std::string& line : lines(file)) {
    const size_t colon = line.find(" : ");
    const std::string key = trimmed(line.substr(0, colon));
    if (key == "FRU Device Description") fru = &frus[std::stoi(line.substr(line.rfind("(ID ") + 4))];
    if (!fru || colon == std::string::npos) continue;
    std::string& value = (*fru)[key];
    value += (value.empty() ? "" : ", ") + trimmed(line.substr(colon + 3));
  }
  return frus;
}

std::vector<PrintedEvent> printed_events(const std::string& file) {
  std::vector<PrintedEvent> events;
  for (const std::string& line : lines(file)) {
    auto field = fields(line);
    const bool is_oem = line.find("OEM record") != std::string::npos;
    if (field.size() < 4 || is_oem) continue;
    field.resize(7);
    events.push_back({iso_time(field[1], field[2]), field[3], field[4], field[5], field[6]});
  }
  return events;
}

}  // namespace qmvctl::test
