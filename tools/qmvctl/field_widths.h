// The widths of the fields into which the library reads the texts of a table.
#ifndef QMVCTL_FIELD_WIDTHS_H
#define QMVCTL_FIELD_WIDTHS_H

#include <cstddef>
#include <map>
#include <string>

namespace qmvctl {

struct FieldWidth {
  size_t bytes;
  bool runs_on = false;  // a text that fills the field or is longer is not cut: it runs on over what is behind
};

// By column; of the texts that the library reads. Nothing for a table without such.
std::map<std::string, FieldWidth> field_widths(const std::string& table);

}  // namespace qmvctl

#endif
