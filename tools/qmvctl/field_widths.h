// The widths of the fields into which the library reads the texts of a table.
#ifndef QMVCTL_FIELD_WIDTHS_H
#define QMVCTL_FIELD_WIDTHS_H

#include <cstddef>
#include <map>
#include <string>

namespace qmvctl {

// By column, in bytes; of the texts that the library reads. Nothing for a table without such.
std::map<std::string, size_t> field_widths(const std::string& table);

}  // namespace qmvctl

#endif
