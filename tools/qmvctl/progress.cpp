#include "progress.h"

#include <fmt/format.h>

namespace qmvctl {

namespace {

constexpr std::chrono::milliseconds kBetweenLines(100);
constexpr const char* kErase = "\r\x1B[K";

}  // namespace

Progress::Progress(std::ostream* terminal, std::chrono::milliseconds patience)
    : terminal_(terminal), next_(std::chrono::steady_clock::now() + patience) {}

Progress::~Progress() {
  if (is_shown_) *terminal_ << kErase << std::flush;
}

void Progress::show(const char* what, size_t done, size_t all) {
  const auto now = std::chrono::steady_clock::now();
  if (!terminal_ || now < next_) return;
  *terminal_ << kErase << fmt::format("storing {}: {} of {}", what, done, all) << std::flush;
  is_shown_ = true;
  next_ = now + kBetweenLines;
}

}  // namespace qmvctl
