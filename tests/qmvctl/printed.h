// What ipmitool prints for a dump, read back: the other side that the imported rows are compared with.
#ifndef QMVCTL_TESTS_PRINTED_H
#define QMVCTL_TESTS_PRINTED_H

#include <map>
#include <string>
#include <vector>

namespace qmvctl::test {

// A line of "sdr elist all".
struct PrintedSensor {
  std::string name;
  int number = 0;
  std::string entity;  // "7.1"

  auto operator<=>(const PrintedSensor&) const = default;
};

struct PrintedFru {
  int id = 0;
  std::string name;
  std::string entity;

  auto operator<=>(const PrintedFru&) const = default;
};

struct PrintedRepository {
  std::vector<PrintedSensor> sensors;
  std::vector<PrintedSensor> event_only;  // sensors that the database has no table for
  std::vector<PrintedFru> frus;
};

PrintedRepository printed_repository(const std::string& file);

// The fields of "fru print" for each FRU ID; fields of one name are joined by ", ".
std::map<int, std::map<std::string, std::string>> printed_frus(const std::string& file);

// A line of "sel elist" that is no OEM record.
struct PrintedEvent {
  std::string time;       // "2011-11-08 12:33:24"
  std::string sensor;     // "Button #0x09", "Voltage BB +12.0V"
  std::string event;      // empty for what ipmitool does not know
  std::string direction;  // "Asserted"; empty likewise
  std::string reading;    // "Reading 13.36 > Threshold 12.94 Volts"
};

std::vector<PrintedEvent> printed_events(const std::string& file);

}  // namespace qmvctl::test

#endif
