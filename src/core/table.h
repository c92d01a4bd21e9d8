// Tables: all that a table's accessors need besides code, in one constant without a pointer. An accessor knows the
// address of its form; the column list and the texts lie behind it.
#ifndef QMV_CORE_TABLE_H
#define QMV_CORE_TABLE_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "core/columns.h"
#include "core/forms.h"
#include "core/shared_texts.h"
#include "core/texts.h"

namespace qmv {

// Values of different types, one behind the other.
template <class First, class... Others>
struct Row {
  First first;
  Row<Others...> others;
};
template <class Last>
struct Row<Last> {
  Last first;
};

template <std::size_t N>
constexpr auto& nth(auto& row) {
  if constexpr (N == 0) {
    return row.first;
  } else {
    return nth<N - 1>(row.others);
  }
}

// Stores the texts of a form, unless the library has them already.
struct StoreTexts {
  static constexpr std::size_t kRoom = 8192;

  Texts<kRoom>& texts;
  std::size_t begin;  // the distance of the texts from the form

  template <class Kind>
  constexpr Stored<Kind> operator()(Kind text) const {
    if (text.text() == nullptr) return {0};
    constexpr std::size_t kNone = sizeof(kSharedTexts) - 1;
    const std::size_t shared = place_among(kSharedTexts, kNone, text.text());
    return {static_cast<std::uint16_t>(shared != kNone ? kSharedText + shared : begin + texts.place_of(text.text()))};
  }
};

template <template <template <class> class> class Form>
Form<Stored> stored(const Form<Written>&);

template <const auto&... Forms>
using StoredForms = Row<decltype(stored(Forms))...>;

// Stores forms in a row that ends at that distance, where the column list lies, and the texts behind it.
template <class First, class... Others>
constexpr void store(Row<First, Others...>& row, std::size_t end, std::size_t list_size,
                     Texts<StoreTexts::kRoom>& texts, const auto& form, const auto&... others) {
  static_assert(alignof(First) == alignof(Layout));
  row.first = form.stored(StoreTexts{texts, end + list_size}, LayoutDistance{static_cast<std::uint16_t>(end)});
  if constexpr (sizeof...(others) != 0) store(row.others, end - sizeof(First), list_size, texts, others...);
}

template <class Forms, class List, std::size_t Size>
struct StoredTable {
  Forms forms;
  List runs;
  char texts[Size];  // the table's name first
};

template <const auto& Name, const auto& List, const auto&... Forms>
inline constexpr auto kStoredTable = [] {
  struct Collected {
    StoredForms<Forms...> forms{};
    Texts<StoreTexts::kRoom> texts{};
  };
  constexpr Collected kCollected = [] {
    Collected made;
    made.texts.place_of(Name);
    store(made.forms, sizeof(made.forms), sizeof(kRuns<List>), made.texts, Forms...);
    return made;
  }();
  StoredTable<StoredForms<Forms...>, std::remove_cvref_t<decltype(kRuns<List>)>, kCollected.texts.used> made{
      kCollected.forms, kRuns<List>, {}};
  static_assert(sizeof(made) <= kSharedText);
  kCollected.texts.copy_to(made.texts);
  return made;
}();

// A table's name, the columns that are read, and the written forms of its accessors.
template <const auto& Name, const auto& List, const auto&... Forms>
class Table {
 public:
  static constexpr const auto& columns() { return List; }

  static const char* name() { return kStoredTable<Name, List, Forms...>.texts; }
  static const Layout& layout() { return kStoredTable<Name, List, Forms...>.runs.layout; }

  // The stored form of a written one.
  template <const auto& Form>
  static const auto& form() {
    return nth<number_of(&Form)>(kStoredTable<Name, List, Forms...>.forms);
  }

  // The only form of its kind.
  template <class Kind>
  static constexpr const Kind& only() {
    static_assert((... + std::size_t{std::is_same_v<decltype(Forms), const Kind&>}) == 1, "name the form");
    const Kind* found = nullptr;
    (..., choose(found, Forms));
    return *found;
  }

 private:
  static constexpr std::size_t number_of(const void* form) {
    const void* const addresses[] = {&Forms...};
    std::size_t number = 0;
    while (addresses[number] != form) ++number;
    return number;
  }

  template <class Kind>
  static constexpr void choose(const Kind*& found, const auto& form) {
    if constexpr (std::is_same_v<decltype(form), const Kind&>) found = &form;
  }
};

}  // namespace qmv

#endif
