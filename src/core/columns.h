// Tables as data: the columns of a row and the record members that they fill, said once a table. The row reader, the
// values of the insert and of the update, and the check of both statements follow from that one list.
#ifndef QMV_CORE_COLUMNS_H
#define QMV_CORE_COLUMNS_H

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>

namespace qmv {

// One member of a record and the column that fills it. Only the compiler sees these.
struct Column {
  std::uint32_t index;   // of the column, from 0
  std::uint32_t width;   // of a text member, in bytes; kInteger or kCopy for an int32 member
  std::uint32_t offset;  // of the member, in bytes

  static constexpr std::uint32_t kInteger = 0;
  static constexpr std::uint32_t kCopy = 0xffff;  // of the member that column `index` filled, an int32 as well
};

inline constexpr std::uint32_t kNextIndex = 0xff;

// A column in the table's order; columns() numbers it.
template <class Member>
constexpr Column column(std::uint32_t offset, std::uint32_t index = kNextIndex) {
  if constexpr (std::is_array_v<Member>) {
    static_assert(std::is_same_v<std::remove_extent_t<Member>, char>);
    return {.index = index, .width = sizeof(Member), .offset = offset};
  } else {
    static_assert(std::is_same_v<Member, std::int32_t>);
    return {.index = index, .width = Column::kInteger, .offset = offset};
  }
}

// A text column whose text runs on over the members behind its own, up to the end of the record. Only for new records:
// what it does not reach stays as it is.
constexpr Column running_column(std::uint32_t offset, std::uint32_t record_size, std::uint32_t index = kNextIndex) {
  return {.index = index, .width = record_size - offset, .offset = offset};
}

// In the scope of these, Record names the record: a column that fills a member, the same at an index of its own, one
// whose text runs on, and a member that repeats what an earlier column gave.
#define QMV_COLUMN(member) ::qmv::column<decltype(Record{}.member)>(offsetof(Record, member))
#define QMV_COLUMN_AT(index, member) ::qmv::column<decltype(Record{}.member)>(offsetof(Record, member), index)
#define QMV_RUNNING_COLUMN(member) QMV_RUNNING_COLUMN_AT(::qmv::kNextIndex, member)
#define QMV_RUNNING_COLUMN_AT(index, member) ::qmv::running_column(offsetof(Record, member), sizeof(Record), index)
#define QMV_COPY_OF(index, member)                        \
  ::qmv::Column {                                         \
    index, ::qmv::Column::kCopy, offsetof(Record, member) \
  }

template <class RecordType, std::size_t Count>
struct Columns {
  using Record = RecordType;

  Column column[Count];

  // The number of columns that the table has. Copies, which it has not, stand last.
  constexpr std::size_t table_columns() const {
    std::size_t found = Count;
    while (found > 0 && column[found - 1].width == Column::kCopy) --found;
    return found;
  }

  // Whether the n-th column, and the member that it fills, lie right behind those before it.
  constexpr bool goes_on(std::size_t n) const {
    if (n == 0 || column[n].width == Column::kCopy) return false;
    const Column& before = column[n - 1];
    const std::uint32_t size = before.width == Column::kInteger ? sizeof(std::int32_t) : before.width;
    return column[n].width == before.width && column[n].index == before.index + 1 &&
           column[n].offset == before.offset + size;
  }

  constexpr std::size_t runs() const {
    std::size_t found = 0;
    for (std::size_t n = 0; n < Count; ++n) found += goes_on(n) ? 0 : 1;
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
  static_assert(std::is_standard_layout_v<Record> && sizeof(Record) <= UINT16_MAX && sizeof...(Each) < kNextIndex);
  Columns<Record, sizeof...(Each)> list{{each...}};
  std::uint32_t position = 0;
  for (Column& one : list.column) {
    if (one.index == kNextIndex) one.index = position;
    ++position;
  }
  return list;
}

// Members one behind the other that columns one after the other fill: all that is left of a list when it is compiled.
struct Run {
  std::uint16_t offset;  // of the first member
  std::uint16_t width;   // as in Column; of a copy the offset of what is copied
  std::uint8_t index;    // of the first column
  std::uint8_t members;  // 0 for a copy
};

// What the type-erased readers see of a list: its size, with the runs right behind it.
struct Layout {
  std::uint16_t record_size;
  std::uint16_t runs;
};

template <std::size_t Count>
struct Runs {
  Layout layout;
  Run run[Count];
};
template <>
struct Runs<0> {
  Layout layout;
};

template <const auto& List>
inline constexpr auto kRuns = [] {
  using Record = typename std::remove_cvref_t<decltype(List)>::Record;
  Runs<List.runs()> made{{sizeof(Record), List.runs()}, {}};
  Run* next = made.run;
  for (std::size_t n = 0; n != std::size(List.column); ++n) {
    const Column& each = List.column[n];
    const auto offset = static_cast<std::uint16_t>(each.offset);
    if (List.goes_on(n)) {
      ++next[-1].members;
    } else if (each.width == Column::kCopy) {
      *next++ = {offset, static_cast<std::uint16_t>(List.column[each.index].offset), 0, 0};
    } else {
      *next++ = {offset, static_cast<std::uint16_t>(each.width), static_cast<std::uint8_t>(each.index), 1};
    }
  }
  return made;
}();

// The list of a table that is not read by a list.
struct NoColumns {};
inline constexpr NoColumns kNoColumns;

template <>
inline constexpr Runs<0> kRuns<kNoColumns>{};

// What a record holds before a row is read into it: zeros, so that the rest of a text field is zero already, or the
// caller's bytes, so that the rest has to be cleared.
enum class Before { kZero, kUnknown };

// Fills a record from the row on which the statement stands.
void read_row(sqlite3_stmt* row, const Layout& layout, void* record, Before before);

// Fills a text field: the text, at most the field's width of it, and zeros behind it.
void read_text(sqlite3_stmt* row, int index, char* field, std::size_t width, Before before);

}  // namespace qmv

#endif
