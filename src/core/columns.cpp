#include "core/columns.h"

#include <cstring>

namespace qmv {

namespace {

// Inlined, since a get-all reads tens of thousands of texts.
[[gnu::always_inline]] inline void copy_text(sqlite3_stmt* row, int index, char* field, std::size_t width,
                                             Before before) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, index));
  const std::size_t length = text == nullptr ? 0 : strnlen(text, width);
  if (length != 0) std::memcpy(field, text, length);
  if (before == Before::kUnknown) std::memset(field + length, 0, width - length);
}

}  // namespace

void read_text(sqlite3_stmt* row, int index, char* field, std::size_t width, Before before) {
  copy_text(row, index, field, width, before);
}

void read_row(sqlite3_stmt* row, const Layout& layout, void* record, Before before) {
  const auto* run = reinterpret_cast<const Run*>(&layout + 1);
  const Run* const end = run + layout.runs;
  for (; run != end; ++run) {
    char* member = static_cast<char*>(record) + run->offset;
    const std::size_t width = run->width;
    int index = run->index;
    const int behind = index + run->members;
    if (index == behind) {
      std::memcpy(member, static_cast<char*>(record) + width, sizeof(std::int32_t));
    } else if (width == Column::kInteger) {
      for (; index != behind; ++index, member += sizeof(std::int32_t))
        *reinterpret_cast<std::int32_t*>(member) = sqlite3_column_int(row, index);
    } else {
      for (; index != behind; ++index, member += width) copy_text(row, index, member, width, before);
    }
  }
}

}  // namespace qmv
