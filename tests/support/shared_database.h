// One database in memory in place of every file that the library opens, and a text in place of "/proc/uptime": for programs
// whose link wraps sqlite3_open, sqlite3_close and fopen.
#ifndef QMV_TESTS_SUPPORT_SHARED_DATABASE_H
#define QMV_TESTS_SUPPORT_SHARED_DATABASE_H

#include <sqlite3.h>

#include <functional>
#include <string>

namespace qmv::test {

int open_shared(sqlite3** connection);

// From now on the library's own connections are those that a function makes; without one, to the shared database again.
void open_by(std::function<sqlite3*()> open);

// Closes a connection with all that was left open on it, or all connections that the library left open.
void close(sqlite3* connection);
void close_left_open();

void set_uptime(const std::string& text);

}  // namespace qmv::test

#endif
