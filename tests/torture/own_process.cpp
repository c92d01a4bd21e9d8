#include "torture/own_process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace qmv::test {

bool in_own_process(const std::function<bool()>& part) {
  constexpr int kTrue = 1;
  constexpr int kFailed = 2;
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    const bool result = part();
    std::fflush(nullptr);
    _exit(testing::Test::HasFailure() ? kFailed : result ? kTrue : 0);
  }
  int status = -1;
  EXPECT_EQ(child, waitpid(child, &status, 0));
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < kFailed) << "in its own process";
  return WIFEXITED(status) && WEXITSTATUS(status) == kTrue;
}

}  // namespace qmv::test
