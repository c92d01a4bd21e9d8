// What the headers promise of a call when SQLite fails at one of its steps.
#ifndef QMV_TESTS_TORTURE_RULES_H
#define QMV_TESTS_TORTURE_RULES_H

#include <cstdint>
#include <optional>
#include <vector>

#include "torture/calls.h"
#include "torture/torture_test.h"

namespace qmv::test {

// Stands for the code that SQLite answered, which is passed on.
constexpr std::int32_t kCode = -1000;

// What stands in a number and a pointer that come back.
struct Outs {
  std::int32_t number;
  Handed handed;

  bool operator==(const Outs&) const = default;
};
constexpr Outs kUntouchedOuts = {kUntouched, Handed::kNothing};  // then buffers are untouched too
constexpr Outs kClearedOuts = {0, Handed::kNull};

// How a call ends.
struct End {
  std::int32_t status;
  Left left = {};
  std::optional<Outs> outs = {};  // where a rule says so; counts, get-alls and get-ones have rules of their own

  End(std::int32_t status_is) : status(status_is) {}  // nothing is left
  End(std::int32_t status_is, const Left& left_are) : status(status_is), left(left_are) {}
  End(std::int32_t status_is, const Outs& outs_are, const Left& left_are = {})
      : status(status_is), left(left_are), outs(outs_are) {}
};

// The ends by the step that failed: element n is for the n-th such step, the last one also for all behind it.
struct Rules {
  std::vector<End> opens = {};
  std::vector<End> prepares = {};
  std::vector<End> missing = {};  // prepared with success, but there is no statement
  std::vector<End> steps = {};
  std::vector<End> finalizes = {};
  std::vector<End> execs = {};
};

const Rules& rules_of(const Call& call);

// The end when the n-th of those steps failed.
const End& end_of(const std::vector<End>& ends, int nth);

}  // namespace qmv::test

#endif
