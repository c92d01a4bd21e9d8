#include "core/columns.h"

#include <cstring>

namespace qmv {

void read_text(sqlite3_stmt* row, int index, char* field, std::size_t width, Before before) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, index));
  const std::size_t length = text == nullptr ? 0 : strnlen(text, width);
  if (length != 0) std::memcpy(field, text, length);
  if (before == Before::kUnknown) std::memset(field + length, 0, width - length);
}

void read_row(sqlite3_stmt* row, const Layout& layout, void* record, Before before) {
  const auto* columns = reinterpret_cast<const Column*>(&layout + 1);
  auto* bytes = static_cast<char*>(record);
  for (const Column* each = columns; each != columns + layout.columns; ++each) {
    char* member = bytes + each->offset;
    if (each->width == Column::kInteger) {
      *reinterpret_cast<std::int32_t*>(member) = sqlite3_column_int(row, static_cast<int>(each->index));
    } else if (each->width == Column::kCopy) {
      std::memcpy(member, bytes + columns[each->index].offset, sizeof(std::int32_t));
    } else {
      read_text(row, static_cast<int>(each->index), member, each->width, before);
    }
  }
}

}  // namespace qmv
