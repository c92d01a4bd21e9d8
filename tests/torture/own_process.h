#ifndef QMV_TESTS_TORTURE_OWN_PROCESS_H
#define QMV_TESTS_TORTURE_OWN_PROCESS_H

#include <functional>

namespace qmv::test {

// Runs a part of a test in a process of its own. Returns its result, and fails the test when the part did.
bool in_own_process(const std::function<bool()>& part);

}  // namespace qmv::test

#endif
