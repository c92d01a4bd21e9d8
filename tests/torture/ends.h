// How calls end when SQLite fails, held against the rules.
#ifndef QMV_TESTS_TORTURE_ENDS_H
#define QMV_TESTS_TORTURE_ENDS_H

#include <set>
#include <vector>

#include "torture/calls.h"
#include "torture/rules.h"
#include "torture/torture_test.h"

namespace qmv::test {

// The codes with which every step of SQLite's is made to fail.
extern const std::vector<int> kCodes;

void expect_end(const End& end, int code, const Trial& trial);

// What a call may do when something fails inside SQLite, with one of those codes, at whatever step.
void expect_possible(const Call& call, const Trial& healthy, const Trial& trial, const std::set<int>& codes);

}  // namespace qmv::test

#endif
