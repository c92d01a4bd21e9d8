// The fixture of the tests that hold for every exported function: one call, in its surroundings, with and without faults.
#ifndef QMV_TESTS_TORTURE_TORTURE_TEST_H
#define QMV_TESTS_TORTURE_TORTURE_TEST_H

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "support/boundary.h"
#include "torture/calls.h"
#include "torture/databases.h"

namespace qmv::test {

using Lines = std::vector<LogLine>;
using Texts = std::vector<std::string>;

constexpr int kErrorLevel = 130;
constexpr int kTraceLevel = 135;

// What stays behind a call: its own things, not those that it handed out.
struct Left {
  int statements = 0;
  std::size_t texts = 0;
  std::size_t connections = 0;
  std::size_t blocks = 0;

  auto operator<=>(const Left&) const = default;
};
void PrintTo(const Left& left, std::ostream* out);

// A call as its caller, the log and the process see it.
struct Trial {
  Answer answer;
  Lines log;
  std::string printed;  // on standard error
  Texts statements;
  Left left;
  int allocations = 0;
  int failed = 0;  // of what was made to fail or change

  int errors() const;  // logged
};

class Torture : public testing::TestWithParam<Call> {
 protected:
  ~Torture() override;
  void SetUp() override {
    fixed_files();  // once, and not in every process of a test's own
    put_back();
  }

  // Makes the call once, with faults, and releases what it left behind.
  Trial tried(const std::function<void()>& faults);
  Trial tried();
  // The same, which is not counted.
  Trial made(const std::function<void()>& faults);

  // What a test does; where the call remembers earlier ones, in a process of its own and behind a first call.
  void alone(const std::function<void()>& test);

  // Everything as it was in the beginning.
  void put_back();

  // The call without faults, and what it stores, for comparison; everything is put back.
  Trial learned();

  // Whether that is more than it found.
  bool writes() const { return possibly_stored_.size() > 1; }

  // Each of the writing statements has taken effect whole or not at all.
  void expect_whole_statements();

  // After a fault: the call works again, as if nothing had been.
  void expect_works_as(const Trial& healthy);

  // The connection that the call is given, from before the faults until everything is released; and the file that is
  // written, none for the database in memory.
  virtual void connect() {}
  virtual void disconnect() {}
  virtual sqlite3* db() { return database_.get(); }
  virtual std::string file() const;

  // Where the call writes, for looking at it.
  sqlite3* store();

 private:
  void release();
  std::string stored();

  Database database_{image_for(GetParam())};
  sqlite3* to_file_ = nullptr;
  std::optional<Answer> beside_;  // of the same call once more, while the only thing left was a statement
  std::set<std::string> possibly_stored_;
};

// How many calls met a fault so far, in all processes.
int calls_with_faults();

// Closes a connection with all that is open on it.
void close_with_statements(sqlite3* connection);

// The names of tests on calls.
std::string name_of(const testing::TestParamInfo<Call>& info);

}  // namespace qmv::test

#endif
