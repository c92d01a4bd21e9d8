// IPMI entities as CIM classes: the constant table by IPMI entity ID (IPMI 2.0, table 43-13).
#ifndef QMV_SDR_ENTITY_CLASS_MAP_H
#define QMV_SDR_ENTITY_CLASS_MAP_H

#include <cstdint>

namespace qmv {

struct EntityClass {
  const char* id;              // the entity ID, decimal
  const char* logical_class;   // CIM class, "TBD" where none is assigned
  const char* physical_class;  // CIM class, "TBD" where none is assigned
  const char* description;
};

inline constexpr std::int32_t kEntityClasses = 54;

// The row of an entity ID from 0 to 53.
EntityClass entity_class(std::int32_t entity_id);

// Whether an entity ID's logical class is that CIM class. IDs outside the map, which real servers have, are of no
// class.
bool is_of_logical_class(std::int32_t entity_id, const char* cim_class);

}  // namespace qmv

#endif
