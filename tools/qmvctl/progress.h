// How far something has come that takes long.
#ifndef QMVCTL_PROGRESS_H
#define QMVCTL_PROGRESS_H

#include <chrono>
#include <ostream>

namespace qmvctl {

// A line on a terminal that is written over and in the end erased. It comes once the patience has passed.
class Progress {
 public:
  // Without a stream nothing is shown.
  explicit Progress(std::ostream* terminal, std::chrono::milliseconds patience = std::chrono::milliseconds(500));
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  // "storing events: 1200 of 65000"
  void show(const char* what, size_t done, size_t all);

 private:
  std::ostream* terminal_;
  std::chrono::steady_clock::time_point next_;
  bool is_shown_ = false;
};

}  // namespace qmvctl

#endif
