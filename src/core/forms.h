// Forms: what differs between the accessors of one shape, written with designated initialisers next to the accessor.
//
// A form is written with texts and stored with distances, by the table that it belongs to: a pointer in a constant of a
// shared object costs twelve bytes on ARM, four for itself and eight for its relocation, which is work at every start
// of every process besides; a distance costs two.
#ifndef QMV_CORE_FORMS_H
#define QMV_CORE_FORMS_H

#include <cstdint>

#include "core/log.h"
#include "core/status.h"

namespace qmv {

// A statement's template, as it is written.
class Sql {
 public:
  constexpr Sql() : text_(nullptr) {}
  constexpr Sql(const char* text) : text_(text) {}  // a form is filled with texts
  constexpr const char* text() const { return text_; }

 private:
  const char* text_;
};

template <class Kind>
using Written = Kind;

// A text's distance from the beginning of its form, or from kSharedText on its place among the shared texts; 0 for a
// step that logs nothing.
template <class Kind>
struct Stored {
  std::uint16_t distance;
};

inline constexpr std::uint16_t kSharedText = 0x8000;

// The distance of the column list from the beginning of a stored form that reads rows. The table fills it in.
struct LayoutDistance {
  std::uint16_t distance = 0;
};

// What a statement that does not compile is answered with.
enum class CompileError : std::uint8_t { kReturnsOne, kReturnsSqliteCode };

// What an allocation failure is answered with, and whether its trace has an (always empty) detail.
enum class OutOfMemory : std::uint8_t { kReturnsOne, kReturnsNoMemory, kReturnsOneWithDetail };

// What a get-all does to the caller's pointer before anything else.
enum class Outs : std::uint8_t { kCleared, kUntouched };

// Whether a count is believed only when the step yields a row.
enum class CountStep : std::uint8_t { kTested, kIgnored };

template <template <class> class Text>
struct CountForm {
  Text<Sql> select = {};  // an accessor that departs has its own
  Text<Message> no_row;
  Text<CountMessage> done;
  CountStep step = CountStep::kTested;
  std::int8_t without_statement = kOk;

  constexpr CountForm<Stored> stored(auto store, LayoutDistance) const {
    return {store(select), store(no_row), store(done), step, without_statement};
  }
};

template <template <class> class Text>
struct GetAllForm {
  Text<Sql> select;
  Text<Message> count_failed;
  Text<Message> no_rows;  // a count of zero
  Text<Message> reading;
  Text<Message> row;
  Text<CountMessage> done;
  Outs outs = Outs::kCleared;
  CompileError compile_error = CompileError::kReturnsOne;
  OutOfMemory out_of_memory = OutOfMemory::kReturnsOne;
  LayoutDistance layout = {};

  constexpr GetAllForm<Stored> stored(auto store, LayoutDistance at) const {
    return {store(select),  store(count_failed),
            store(no_rows), store(reading),
            store(row),     store(done),
            outs,           compile_error,
            out_of_memory,  at};
  }
};

template <template <class> class Text>
struct GetOneForm {
  Text<Sql> select;
  Text<Message> no_statement;
  Text<Message> no_row;
  Text<Message> reading;
  Text<Message> done;
  CompileError compile_error = CompileError::kReturnsOne;
  OutOfMemory out_of_memory = OutOfMemory::kReturnsOne;
  LayoutDistance layout = {};

  constexpr GetOneForm<Stored> stored(auto store, LayoutDistance at) const {
    return {store(select), store(no_statement), store(no_row), store(reading),
            store(done),   compile_error,       out_of_memory, at};
  }
};

template <template <class> class Text>
struct SetForm {
  Text<Sql> insert;
  Text<Sql> update;
  Text<Message> present;
  Text<Message> done;

  constexpr SetForm<Stored> stored(auto store, LayoutDistance) const {
    return {store(insert), store(update), store(present), store(done)};
  }
};

using Count = CountForm<Written>;
using GetAll = GetAllForm<Written>;
using GetOne = GetOneForm<Written>;
using Set = SetForm<Written>;

// A text of a stored form, NULL for a step that logs nothing.
const char* text_at(const void* form, std::uint16_t distance);

template <class Kind>
const char* text(const auto& form, Stored<Kind> at) {
  return text_at(&form, at.distance);
}

}  // namespace qmv

#endif
