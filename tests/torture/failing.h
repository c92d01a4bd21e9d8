// What SQLite stands on, its allocator and its files, taken over: any use of them can fail.
#ifndef QMV_TESTS_TORTURE_FAILING_H
#define QMV_TESTS_TORTURE_FAILING_H

#include <array>
#include <cstddef>

namespace qmv::test {

// A use that fails: the n-th from now on, or that and all behind it.
struct Failing {
  int nth = 0;
  bool stays = false;
  int failed = 0;  // so far

  // Counts one use. Whether it fails.
  bool now() {
    if (nth == 0 || --nth > 0) return false;
    if (stays) nth = 1;
    ++failed;
    return true;
  }
};

enum class Use { kAllocation, kOpen, kRead, kWrite, kFull, kSync, kLock, kDelete };
constexpr std::size_t kUses = 8;

Failing& failing(Use use);

// How many uses failed since all was last well.
int failed_uses();
void make_all_well();

// As long as it lives, nothing fails.
class Healthy {
 public:
  Healthy();
  Healthy(const Healthy&) = delete;
  Healthy& operator=(const Healthy&) = delete;
  ~Healthy();

 private:
  std::array<Failing, kUses> kept_;
};

// Before SQLite is first used. Its small blocks then come from the allocator too, and nothing waits for a disk.
void take_over_sqlite();

}  // namespace qmv::test

#endif
