// Selection of rows by what people know them by.
#ifndef QMVCTL_SELECTION_H
#define QMVCTL_SELECTION_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "listing.h"

namespace qmvctl {

// What the rows of a list can be selected by.
struct Keys {
  std::vector<std::string> ids = {};  // members that name a row; none where rows have no names
  const char* id_example = "";        // such a name
  bool has_type = false;              // members sensor_type and sensor_type_name
  bool has_entity = false;            // members entity_id and entity_instance
  bool has_order = false;             // the newest rows come last
};

// What was asked for; an empty text asks for nothing. Numbers are decimal or, as "0x2F" or "2Fh", hexadecimal; upper and
// lower case are alike.
struct Selection {
  std::string id = {};
  std::string type = {};              // code or name: "1", "temperature"
  std::string entity = {};            // "7", "7.1" or a name
  std::optional<uint32_t> last = {};  // so many of what else is asked for
};

// The number that a text is; nothing when it is none.
std::optional<int64_t> number_of(std::string_view text);

// Whether a selection by that text can find something: a code of one byte, a name, and of an entity a name or an
// instance too.
bool is_sensor_type(const std::string& text);
bool is_entity(const std::string& text);

// Leaves the rows that are asked for. Returns how many are left out.
size_t select(Listing& listing, const Keys& keys, const Selection& selection);

}  // namespace qmvctl

#endif
