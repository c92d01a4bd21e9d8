// What an import stores, and how sensors and FRUs of one entity are tied.
#ifndef QMVCTL_INVENTORY_H
#define QMVCTL_INVENTORY_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "input.h"
#include "qmv.h"
#include "sdr_decoder.h"
#include "sel_decoder.h"

namespace qmvctl {

struct Inventory {
  std::vector<compact_sdr_rec> compact_sensors;
  std::vector<full_sdr_rec> full_sensors;
  std::vector<fru_rec> frus;
  std::optional<std::vector<fru_locator_sdr_rec>> fru_locators;  // only when a repository was read
  std::optional<EventLog> event_log;                             // only when a log was read
  std::map<std::string, int> not_held;                           // records that no table holds, counted by kind
  std::vector<std::string> notes;
};

// The bits of PhysicalElement: the CIM physical classes as get_sqlqueries() divides the entities, memory and power
// supplies.
constexpr int32_t kMemory = 256;
constexpr int32_t kPowerSupply = 1024;

// The categories of a sensor. A sensor of type memory (0Ch) has the memory bit whatever its entity is, since the
// library counts memory by the bit and reads it by the type: with the bit on all of them none is left out.
int32_t physical_element(int32_t entity_id, int32_t sensor_type);

// Takes a repository over: its sensors and locators, and one FRU for each locator.
void take_repository(Inventory& inventory, Repository repository);

// Whether it is the FRU with that device ID which the management controller at address 20h answers for.
bool is_controllers_fru(const fru_rec& fru, int fru_id);

// Fills the strings of the FRU with that device ID, which the management controller at address 20h answers for, from an
// image. An image without a locator record becomes a FRU of its own: FRU 0 with the entity and name of the controller's
// locator where the repository has it, another one with entity 0 (unspecified); a note says so.
void take_fru(Inventory& inventory, int fru_id, const Input& image, const std::optional<fru_rec>& builtin_fru);

// Gives each sensor its categories and the FRU of its entity: the first one, in the order of the repository, with the
// same entity ID and instance.
void tie_sensors_to_frus(Inventory& inventory);

}  // namespace qmvctl

#endif
