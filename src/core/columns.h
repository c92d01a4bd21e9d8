// Tables as data: the columns of a row and the record members that they fill, said once a table. The row reader, the
// values of the insert and of the update, and the check of both statements follow from that one list.
#ifndef QMV_CORE_COLUMNS_H
#define QMV_CORE_COLUMNS_H

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace qmv {

void column_does_not_fit(const char* why);

// One member of a record and the column that fills it, packed into a word.
struct Column {
  std::uint32_t index : 8;    // of the column, from 0
  std::uint32_t offset : 14;  // of the member, in bytes
  std::uint32_t width : 10;   // of a text member, in bytes; kInteger or kCopy for an int32 member

  static constexpr std::uint32_t kInteger = 0;
  static constexpr std::uint32_t kCopy = 1023;  // of the member that column `index` filled, an int32 as well
};
static_assert(sizeof(Column) == sizeof(std::uint32_t));

inline constexpr std::uint32_t kNextIndex = 255;

// A column in the table's order; columns() numbers it.
template <class Member>
constexpr Column column(std::uint32_t offset, std::uint32_t index = kNextIndex) {
  Column made{.index = index & 0xff, .offset = offset & 0x3fff, .width = Column::kInteger};
  if constexpr (std::is_array_v<Member>) {
    static_assert(std::is_same_v<std::remove_extent_t<Member>, char>);
    made.width = sizeof(Member) & 0x3ff;
  } else {
    static_assert(std::is_same_v<Member, std::int32_t>);
  }
  if (made.offset != offset || made.index != index || made.width == Column::kCopy)
    column_does_not_fit("widen a bit field");
  return made;
}

// A text column whose text runs on over the members behind its own, up to the end of the record. Only for new records:
// what it does not reach stays as it is.
constexpr Column running_column(std::uint32_t offset, std::uint32_t record_size, std::uint32_t index = kNextIndex) {
  const Column made{.index = index & 0xff, .offset = offset & 0x3fff, .width = (record_size - offset) & 0x3ff};
  if (made.width != record_size - offset || made.width == Column::kCopy) column_does_not_fit("widen a bit field");
  return made;
}

// In the scope of these, Record names the record: a column that fills a member, the same at an index of its own, one
// whose text runs on, and a member that repeats what an earlier column gave.
#define QMV_COLUMN(member) ::qmv::column<decltype(Record{}.member)>(offsetof(Record, member))
#define QMV_COLUMN_AT(index, member) ::qmv::column<decltype(Record{}.member)>(offsetof(Record, member), index)
#define QMV_RUNNING_COLUMN(member) QMV_RUNNING_COLUMN_AT(::qmv::kNextIndex, member)
#define QMV_RUNNING_COLUMN_AT(index, member) ::qmv::running_column(offsetof(Record, member), sizeof(Record), index)
#define QMV_COPY_OF(index, member)                        \
  ::qmv::Column {                                         \
    index, offsetof(Record, member), ::qmv::Column::kCopy \
  }

// What the type-erased readers see of a list: its size, with the columns right behind it.
struct Layout {
  std::uint16_t record_size;
  std::uint16_t columns;
};

template <class RecordType, std::size_t Count>
struct Columns {
  using Record = RecordType;

  Layout layout;
  Column column[Count];

  // The number of columns that the table has. Copies, which it has not, stand last.
  constexpr std::size_t table_columns() const {
    std::size_t found = Count;
    while (found > 0 && column[found - 1].width == Column::kCopy) --found;
    return found;
  }
};

// The value of the N-th column of a list in a record: an int32 or a text field.
template <const auto& List, std::size_t N>
auto value(const typename std::remove_cvref_t<decltype(List)>::Record& record) {
  constexpr Column kColumn = List.column[N];
  const char* member = reinterpret_cast<const char*>(&record) + kColumn.offset;
  if constexpr (kColumn.width == Column::kInteger) {
    return *reinterpret_cast<const std::int32_t*>(member);
  } else {
    static_assert(kColumn.width != Column::kCopy, "copies stand last");
    return member;
  }
}

// Makes the list of a record's columns. Columns without an index of their own are numbered in order.
template <class Record, class... Each>
constexpr Columns<Record, sizeof...(Each)> columns(Each... each) {
  static_assert(std::is_standard_layout_v<Record> && sizeof(Record) < 1 << 14);
  Columns<Record, sizeof...(Each)> list{{sizeof(Record), sizeof...(Each)}, {each...}};
  std::uint32_t position = 0;
  for (Column& one : list.column) {
    if (one.index == kNextIndex) one.index = position & 0xff;
    ++position;
  }
  return list;
}

// What a record holds before a row is read into it: zeros, so that the rest of a text field is zero already, or the
// caller's bytes, so that the rest has to be cleared.
enum class Before { kZero, kUnknown };

// Fills a record from the row on which the statement stands.
void read_row(sqlite3_stmt* row, const Layout& layout, void* record, Before before);

// Fills a text field: the text, at most the field's width of it, and zeros behind it.
void read_text(sqlite3_stmt* row, int index, char* field, std::size_t width, Before before);

}  // namespace qmv

#endif
