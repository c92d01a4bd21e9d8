// How calls end when SQLite fails: held against the rules, and against the ends that are known.
#ifndef QMV_TESTS_TORTURE_ENDS_H
#define QMV_TESTS_TORTURE_ENDS_H

#include <set>
#include <vector>

#include "torture/rules.h"
#include "torture/torture_test.h"

namespace qmv::test {

// The codes with which every step of SQLite's is made to fail.
extern const std::vector<int> kCodes;

void expect_end(const End& end, int code, const Trial& trial);

// As a whole. What SQLite says of an error is not compared.
void expect_same_end(const Trial& expected, const Trial& trial);

// The fixture of faults that lie below SQLite. Which of the function's calls to SQLite fail then, and with what code, is
// SQLite's affair; but the function ends as it does when such calls are made to fail, which SqliteFault holds against
// the rules, or as without a fault.
class FaultBelow : public Torture {
 protected:
  // The call without faults, and its ends.
  Trial learned_with_ends();

  // Where the function passes SQLite's code on, it is one of these.
  void expect_known_end(const Trial& healthy, const Trial& trial, const std::set<int>& codes);
};

}  // namespace qmv::test

#endif
