// Calls a function of any shape: each parameter's type says what stands for it, what comes back through it, and what is
// to be released afterwards.
#ifndef QMV_TESTS_TORTURE_ARGUMENTS_H
#define QMV_TESTS_TORTURE_ARGUMENTS_H

#include <sqlite3.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <type_traits>

#include "torture/calls.h"
#include "torture/guarded.h"

namespace qmv::test {

// What arguments are made of.
struct Source {
  sqlite3* db;
  const Material& material;
};

// Made of a source; afterwards it reports what came back. Numbers report first: they may be the lengths of arrays.
template <class Parameter>
class Argument;

// What goes in only.
struct In {
  void report_number(Answer&) const {}
  void report(Answer&) const {}
};

template <>
class Argument<sqlite3*> : public In {
 public:
  explicit Argument(const Source& source) : db_(source.db) {}
  sqlite3* get() const { return db_; }

 private:
  sqlite3* db_;
};

template <>
class Argument<std::int32_t> : public In {
 public:
  explicit Argument(const Source& source) : number_(source.material.number) {}
  std::int32_t get() const { return number_; }

 private:
  std::int32_t number_;
};

template <>
class Argument<const char*> : public In {
 public:
  explicit Argument(const Source& source) : text_(source.material.text) {}
  const char* get() const { return text_.c_str(); }

 private:
  const std::string& text_;
};

// A number that comes back.
template <>
class Argument<std::int32_t*> {
 public:
  explicit Argument(const Source&) {}
  std::int32_t* get() { return &number_; }
  void report_number(Answer& answer) const { answer.number = number_; }
  void report(Answer&) const {}

 private:
  std::int32_t number_ = kUntouched;
};

// A record that the caller brings.
template <class Record>
class Argument<Record*> {
 public:
  explicit Argument(const Source& source) : record_(sizeof(Record), source.material.fill) {
    const std::string& bytes = source.material.bytes;
    std::copy_n(bytes.data(), std::min(bytes.size(), sizeof(Record)), record_.bytes());
  }
  Record* get() { return reinterpret_cast<Record*>(record_.bytes()); }
  void report_number(Answer&) const {}
  void report(Answer& answer) const { answer.content.append(record_.bytes(), sizeof(Record)); }

 private:
  Guarded record_;
};

// A place for the pointer to a new record, an array or a text.
template <class Record>
class Argument<Record**> {
 public:
  explicit Argument(const Source&) {}
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;
  ~Argument() {
    if (handed() == Handed::kBlock) std::free(record_);
  }
  Record** get() { return &record_; }
  void report_number(Answer&) const {}

  void report(Answer& answer) const {
    answer.handed = handed();
    if (handed() == Handed::kBlock) answer.content.append(reinterpret_cast<const char*>(record_), size(answer.number));
  }

 private:
  Record* untouched() const { return reinterpret_cast<Record*>(const_cast<Argument*>(this)); }

  Handed handed() const {
    if (record_ == untouched()) return Handed::kNothing;
    return record_ == nullptr ? Handed::kNull : Handed::kBlock;
  }

  // Of an array whose number nobody was told, nothing can be read.
  std::size_t size(const std::optional<std::int32_t>& number) const {
    if constexpr (std::is_same_v<Record, char>) {
      return std::string(record_).size();
    } else {
      return sizeof(Record) * (number == kUntouched ? 0 : static_cast<std::size_t>(number.value_or(1)));
    }
  }

  Record* record_ = untouched();
};

template <class Return, class... Parameters>
Answer called(Return (*function)(Parameters...), Argument<Parameters>&&... each) {
  Answer answer;
  if constexpr (std::is_same_v<Return, std::int32_t>) {
    answer.status = function(each.get()...);
  } else if constexpr (std::is_same_v<Return, const char*>) {
    const char* const text = function(each.get()...);
    answer.content = text == nullptr ? "(null)" : text;
  } else {
    function(each.get()...);
  }
  (each.report_number(answer), ...);
  (each.report(answer), ...);
  return answer;
}

template <class Type>
constexpr bool kIsRecord = std::is_class_v<Type> && !std::is_same_v<Type, sqlite3>;
// Pointers to records: the caller's, the caller's to be read only, and places for new ones.
template <class Parameter>
constexpr bool kIsCallers = std::is_pointer_v<Parameter>&& kIsRecord<std::remove_pointer_t<Parameter>>;
template <class Parameter>
constexpr bool kIsReadOnly = kIsCallers<Parameter>&& std::is_const_v<std::remove_pointer_t<Parameter>>;
template <class Parameter>
constexpr bool kIsNew = std::is_pointer_v<Parameter>&& kIsCallers<std::remove_pointer_t<Parameter>>;

// Parameters tell the shape.
template <class... Parameters>
constexpr Shape shape_of(std::int32_t (*)(sqlite3*, Parameters...)) {
  constexpr bool kCounts = (false || ... || std::is_same_v<Parameters, std::int32_t*>);
  if ((false || ... || kIsNew<Parameters>)) return kCounts ? Shape::kGetAll : Shape::kGetOne;
  if ((false || ... || kIsReadOnly<Parameters>)) return Shape::kSet;
  if ((false || ... || kIsCallers<Parameters>)) return Shape::kGetOne;
  return kCounts ? Shape::kCount : Shape::kExecute;
}
constexpr Shape shape_of(...) {
  return Shape::kOther;
}

template <class Return, class... Parameters>
Call call(const char* name, Return (*function)(Parameters...), const Material& material = {}) {
  const auto run = [function]([[maybe_unused]] sqlite3* db, [[maybe_unused]] const Material& made_of) {
    [[maybe_unused]] const Source source{db, made_of};
    return called(function, Argument<Parameters>(source)...);
  };
  return {name, shape_of(function), run, material};
}

#define CALL(function, ...) call(#function, function __VA_OPT__(, ) __VA_ARGS__)

}  // namespace qmv::test

#endif
