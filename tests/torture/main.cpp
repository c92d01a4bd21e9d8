#include <gtest/gtest.h>

#include <string>

#include "support/figures.h"
#include "torture/failing.h"
#include "torture/torture_test.h"

namespace {

// Says how many calls with faults the tests of each suite made.
class Figures : public testing::EmptyTestEventListener {
  void OnTestSuiteEnd(const testing::TestSuite& suite) override {
    const int all = qmv::test::calls_with_faults();
    const std::string name = suite.name();
    if (all > before_) qmv::test::figure(name.substr(name.find('/') + 1) + ".calls_with_faults", all - before_);
    before_ = all;
  }

  int before_ = qmv::test::calls_with_faults();
};

}  // namespace

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  qmv::test::take_over_sqlite();
  testing::UnitTest::GetInstance()->listeners().Append(new Figures);
  return RUN_ALL_TESTS();
}
