// How much the tests do, and what they measured.
#ifndef QMV_TESTS_SUPPORT_FIGURES_H
#define QMV_TESTS_SUPPORT_FIGURES_H

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace qmv::test {

// A few seconds in all, unless the environment says QMV_TORTURE=full.
inline bool runs_in_full() {
  const char* const torture = std::getenv("QMV_TORTURE");
  return torture != nullptr && std::string_view(torture) == "full";
}

inline int amount(int in_short, int in_full) {
  return runs_in_full() ? in_full : in_short;
}

// A line for scripts that make a table of them.
template <class Value>
void figure(const std::string& name, const Value& value) {
  std::cout << "figure: " << name << " = " << value << std::endl;
}

}  // namespace qmv::test

#endif
