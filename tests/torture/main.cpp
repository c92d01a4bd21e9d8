#include <gtest/gtest.h>

#include <cstdio>

#include "torture/failing.h"
#include "torture/torture_test.h"

namespace {

// Says how many calls with faults the tests of each suite made.
class Figures : public testing::EmptyTestEventListener {
  void OnTestSuiteEnd(const testing::TestSuite& suite) override {
    const int all = qmv::test::calls_with_faults();
    std::printf("%d calls with faults in %s\n", all - before_, suite.name());
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
