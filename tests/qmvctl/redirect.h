// The fixed paths, led into a scratch directory: the test program's own sqlite3_open and fopen stand before those of
// SQLite and the C library, for the command and for the shared library alike.
#ifndef QMVCTL_TESTS_REDIRECT_H
#define QMVCTL_TESTS_REDIRECT_H

#include <string>

namespace qmvctl::test {

// Leads the fixed paths to files of the same names in the directory from now on. Before that, opening a fixed path ends
// the test program.
void redirect_fixed_paths(const std::string& directory);

}  // namespace qmvctl::test

#endif
