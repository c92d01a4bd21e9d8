// What a target makes of the bytes that it is given. Where they end, zeros go on.
#ifndef QMV_FUZZ_INPUT_H
#define QMV_FUZZ_INPUT_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace qmv::fuzz {

class Input {
 public:
  Input(const std::uint8_t* bytes, std::size_t size) : at_(reinterpret_cast<const char*>(bytes)), end_(at_ + size) {}

  std::size_t left() const { return static_cast<std::size_t>(end_ - at_); }

  std::string bytes(std::size_t count) {
    const std::size_t taken = std::min(count, left());
    at_ += taken;
    return {at_ - taken, taken};
  }
  std::string rest() { return bytes(left()); }

  template <class Number>
  Number number() {
    Number value{};
    const std::string taken = bytes(sizeof(value));
    std::memcpy(&value, taken.data(), taken.size());
    return value;
  }

  // One of so many.
  std::size_t choice(std::size_t count) { return number<std::uint8_t>() % count; }

  // A text whose length the input tells. Long ones repeat a short piece of it, so that an input of few bytes has them.
  std::string text() {
    const std::size_t length = number<std::uint8_t>();
    if (length < 192) return bytes(length);
    std::string whole = bytes(1 + length % 8);
    const std::size_t wanted = length == 253 ? 20000 : (length - 191) * 20;
    while (!whole.empty() && whole.size() < wanted) whole += whole;
    return whole;
  }

 private:
  const char* at_;
  const char* end_;
};

// Ends the process where something does not hold.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

// Of a target that tells: what no input has reached yet. The kept inputs reach all.
__attribute__((weak)) std::vector<std::string> unreached();

}  // namespace qmv::fuzz

// Of every target.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

#endif
