// Calls a function of any shape: each parameter's type says what stands for it and what is to be released afterwards.
#ifndef QMV_TESTS_TORTURE_ARGUMENTS_H
#define QMV_TESTS_TORTURE_ARGUMENTS_H

#include <cstdlib>
#include <string>
#include <type_traits>

#include "calls.h"
#include "guarded.h"
#include "qmv/core.h"

namespace qmv::test {

// What arguments are made of.
struct Source {
  sqlite3* db;
  const Material& material;
};

// A record that the caller brings.
template <class Parameter>
class Argument {
 public:
  explicit Argument(const Source& source) : record_(sizeof(std::remove_pointer_t<Parameter>), source.material.fill) {}
  Parameter get() { return reinterpret_cast<Parameter>(record_.bytes()); }
  bool handed_out() const { return false; }

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
  ~Argument() { std::free(record_); }
  Record** get() { return &record_; }
  bool handed_out() const { return record_ != nullptr; }

 private:
  Record* record_ = nullptr;
};

template <>
class Argument<sqlite3*> {
 public:
  explicit Argument(const Source& source) : db_(source.db) {}
  sqlite3* get() const { return db_; }
  bool handed_out() const { return false; }

 private:
  sqlite3* db_;
};

template <>
class Argument<std::int32_t> {
 public:
  explicit Argument(const Source& source) : number_(source.material.number) {}
  std::int32_t get() const { return number_; }
  bool handed_out() const { return false; }

 private:
  std::int32_t number_;
};

template <>
class Argument<std::int32_t*> {
 public:
  explicit Argument(const Source&) {}
  std::int32_t* get() { return &number_; }
  bool handed_out() const { return false; }

 private:
  std::int32_t number_ = -1;
};

template <>
class Argument<const char*> {
 public:
  explicit Argument(const Source& source) : text_(source.material.text) {}
  const char* get() const { return text_.c_str(); }
  bool handed_out() const { return false; }

 private:
  const std::string& text_;
};

// A buffer as wide as the widest that a header asks for.
template <>
class Argument<char*> {
 public:
  explicit Argument(const Source&) {}
  char* get() { return buffer_.bytes(); }
  bool handed_out() const { return false; }

 private:
  Guarded buffer_{2048, 0};
};

template <class Return, class... Parameters>
Call call(const char* name, Return (*function)(Parameters...)) {
  return {name, [function](sqlite3* db, const Material& material) {
            [[maybe_unused]] const Source source{db, material};
            return [function](Argument<Parameters>&&... each) {
              Answer answer;
              if constexpr (std::is_same_v<Return, std::int32_t>) {
                answer.status = function(each.get()...);
              } else {
                function(each.get()...);
              }
              answer.handed_out = (false || ... || each.handed_out());
              return answer;
            }(Argument<Parameters>(source)...);
          }};
}

}  // namespace qmv::test

#endif
