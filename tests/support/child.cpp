#include "child.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "figures.h"

namespace qmv::test {

namespace {

constexpr int kSkipped = 77;

// An exception ends the process: the test that it is a part of goes on in the parent only.
[[noreturn]] void run(const std::function<void()>& part) noexcept {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  alarm(static_cast<unsigned>(amount(240, 1800)));
  part();
  std::fflush(nullptr);
  _exit(testing::Test::HasFailure() ? EXIT_FAILURE : testing::Test::IsSkipped() ? kSkipped : EXIT_SUCCESS);
}

}  // namespace

Child::Child(const std::function<void()>& part) {
  std::fflush(nullptr);
  pid_ = fork();
  if (pid_ == 0) run(part);
  EXPECT_NE(-1, pid_);
}

Child::~Child() {
  if (pid_ != -1) kill();
}

void Child::wait_for_end() {
  int status = -1;
  EXPECT_EQ(pid_, waitpid(pid_, &status, 0));
  pid_ = -1;
  if (WIFEXITED(status) && WEXITSTATUS(status) == kSkipped) GTEST_SKIP() << "in a process of the test's own";
  EXPECT_EQ(0, status) << "in a process of the test's own";
}

void Child::wait_until_stopped() const {
  int status = -1;
  EXPECT_EQ(pid_, waitpid(pid_, &status, WUNTRACED));
  EXPECT_TRUE(WIFSTOPPED(status));
}

bool Child::is_running() const {
  siginfo_t end = {};
  EXPECT_EQ(0, waitid(P_PID, static_cast<id_t>(pid_), &end, WEXITED | WNOHANG | WNOWAIT));
  return end.si_pid == 0;
}

void Child::go_on() const {
  EXPECT_EQ(0, ::kill(pid_, SIGCONT));
}

void Child::kill() {
  int status = -1;
  EXPECT_EQ(0, ::kill(pid_, SIGKILL));
  EXPECT_EQ(pid_, waitpid(pid_, &status, 0));
  EXPECT_TRUE(WIFSIGNALED(status)) << "it ended before";
  pid_ = -1;
}

void in_child(const std::function<void()>& part) {
  Child(part).wait_for_end();
}

}  // namespace qmv::test
