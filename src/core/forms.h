// Forms: what differs between the accessors of one shape, written with designated initialisers next to the accessor.
//
// A form is written with texts and stored with offsets: packed() lays the texts behind the form, in one constant
// without a pointer. A pointer in a constant of a shared object costs twelve bytes on ARM, four for itself and eight
// for its relocation, which is work at every start of every process besides; an offset costs two.
#ifndef QMV_CORE_FORMS_H
#define QMV_CORE_FORMS_H

#include <cstddef>
#include <cstdint>

#include "core/log.h"
#include "core/status.h"

namespace qmv {

// A table's name or a statement's template, as it is written.
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

// A text's distance from the beginning of its form; 0 for a step that logs nothing.
template <class Kind>
struct Stored {
  std::uint16_t offset = 0;
};

// What a statement that does not compile is answered with.
enum class CompileError : std::uint8_t { kReturnsOne, kReturnsSqliteCode };

// What an allocation failure is answered with, and whether its trace has an (always empty) detail.
enum class OutOfMemory : std::uint8_t { kReturnsOne, kReturnsNoMemory, kReturnsOneWithDetail };

// What a get-all does to the caller's pointer before anything else.
enum class Outs : std::uint8_t { kCleared, kUntouched };

// Whether a count is believed only when the step yields a row.
enum class CountStep : std::uint8_t { kTested, kIgnored };

// The forms. A table and statements that another form has, for accessors that share what they say, are left out.
template <template <class> class Text>
struct CountForm {
  Text<Sql> table = {};
  Text<Sql> select = {};
  Text<Message> no_row;
  Text<CountMessage> done;
  CountStep step = CountStep::kTested;
  std::int8_t without_statement = kOk;

  constexpr CountForm<Stored> stored(auto store) const {
    return {store(table), store(select), store(no_row), store(done), step, without_statement};
  }
};

template <template <class> class Text>
struct GetAllForm {
  Text<Sql> table = {};
  Text<Sql> select = {};
  Text<Message> count_failed;
  Text<Message> no_rows;  // a count of zero
  Text<Message> reading;
  Text<Message> row;
  Text<CountMessage> done;
  Outs outs = Outs::kCleared;
  CompileError compile_error = CompileError::kReturnsOne;
  OutOfMemory out_of_memory = OutOfMemory::kReturnsOne;

  constexpr GetAllForm<Stored> stored(auto store) const {
    return {store(table), store(select), store(count_failed), store(no_rows), store(reading), store(row),
            store(done),  outs,          compile_error,       out_of_memory};
  }
};

template <template <class> class Text>
struct GetOneForm {
  Text<Sql> table = {};
  Text<Sql> select = {};
  Text<Message> no_statement;
  Text<Message> no_row;
  Text<Message> reading;
  Text<Message> done;
  CompileError compile_error = CompileError::kReturnsOne;
  OutOfMemory out_of_memory = OutOfMemory::kReturnsOne;

  constexpr GetOneForm<Stored> stored(auto store) const {
    return {store(table),   store(select), store(no_statement), store(no_row),
            store(reading), store(done),   compile_error,       out_of_memory};
  }
};

template <template <class> class Text>
struct SetForm {
  Text<Sql> table = {};
  Text<Sql> insert = {};
  Text<Sql> update = {};
  Text<Message> present;
  Text<Message> done;

  constexpr SetForm<Stored> stored(auto store) const {
    return {store(table), store(insert), store(update), store(present), store(done)};
  }
};

// A table and one statement, for accessors that share what they say.
template <template <class> class Text>
struct SelectForm {
  Text<Sql> table;
  Text<Sql> select;

  constexpr SelectForm<Stored> stored(auto store) const { return {store(table), store(select)}; }
};

using Select = SelectForm<Written>;
using Count = CountForm<Written>;
using GetAll = GetAllForm<Written>;
using GetOne = GetOneForm<Written>;
using Set = SetForm<Written>;

// A text of a stored form, NULL for a step that logs nothing.
template <class Kind>
const char* text(const auto& form, Stored<Kind> at) {
  return at.offset == 0 ? nullptr : reinterpret_cast<const char*>(&form) + at.offset;
}

// A stored form with its texts behind it.
template <class Form, std::size_t Size>
struct Packed {
  Form form;
  char texts[Size];

  // A text while compiling, where memory cannot be read as bytes.
  template <class Kind>
  constexpr const char* at_compile_time(Stored<Kind> at) const {
    return texts + (at.offset - sizeof(Form));
  }
};

constexpr std::size_t size_with_end(const char* text) {
  std::size_t length = 0;
  while (text[length] != 0) ++length;
  return length + 1;
}

// The bytes that the texts of a written form take.
constexpr std::size_t texts_size(const auto& written) {
  std::size_t size = 0;
  written.stored([&size]<class Kind>(Kind text) {
    if (text.text() != nullptr) size += size_with_end(text.text());
    return Stored<Kind>{0};
  });
  return size;
}

// Packs the form that a lambda without captures writes.
template <class Writer>
constexpr auto packed(Writer) {
  constexpr auto kWritten = Writer{}();
  using Form = decltype(kWritten.stored([]<class Kind>(Kind) { return Stored<Kind>{0}; }));
  Packed<Form, texts_size(kWritten)> made{};
  static_assert(alignof(Form) <= 2 && sizeof(made) <= UINT16_MAX);

  std::size_t used = 0;
  made.form = kWritten.stored([&made, &used]<class Kind>(Kind text) {
    if (text.text() == nullptr) return Stored<Kind>{0};
    const Stored<Kind> at{static_cast<std::uint16_t>(sizeof(Form) + used)};
    const char* from = text.text();
    do made.texts[used++] = *from;
    while (*from++ != 0);
    return at;
  });
  return made;
}

}  // namespace qmv

#endif
