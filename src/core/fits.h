// Compile-time checks that a statement, which is written whole, fits the values that fill it.
#ifndef QMV_CORE_FITS_H
#define QMV_CORE_FITS_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "core/columns.h"
#include "core/format.h"

namespace qmv {

// Whether a conversion takes a value: %q or %s in quotes for a text, %i or %d for an int32. A text of the record must
// be bounded by its width, a text argument of the caller is NUL-terminated and has no bound.
constexpr bool takes_text(Conversion conversion, std::size_t width) {
  return (conversion.letter == 'q' || conversion.letter == 's') && conversion.quoted && conversion.precision == width;
}
constexpr bool takes_integer(Conversion conversion) {
  return conversion.letter == 'i' || conversion.letter == 'd';
}

// Whether the next conversion is the table's name.
constexpr bool takes_table(Conversion conversion) {
  return conversion.letter == 'q' && conversion.precision == 0;
}

template <class Value>
constexpr bool takes(Conversion conversion) {
  if constexpr (std::is_same_v<Value, std::int32_t>) return takes_integer(conversion);
  return std::is_same_v<Value, const char*> && takes_text(conversion, 0);
}

// Whether a statement takes the table's name and then values of these types, and nothing else.
template <class... Values>
constexpr bool fits(const char* text) {
  Conversions conversions(text);
  return takes_table(conversions.next()) && (... && takes<Values>(conversions.next())) &&
         conversions.next().letter == 0;
}

// Whether the next conversions take the columns of a list.
constexpr bool takes_columns(Conversions& conversions, const auto& list) {
  for (std::size_t i = 0; i < list.table_columns(); ++i) {
    const Column& column = list.column[i];
    const Conversion conversion = conversions.next();
    if (!(column.width == Column::kInteger ? takes_integer(conversion) : takes_text(conversion, column.width)))
      return false;
  }
  return true;
}

// Whether a statement takes the table's name and then the columns of these lists, and nothing else.
constexpr bool fits_columns(const char* text, const auto&... lists) {
  Conversions conversions(text);
  return takes_table(conversions.next()) && (... && takes_columns(conversions, lists)) &&
         conversions.next().letter == 0;
}

}  // namespace qmv

#endif
