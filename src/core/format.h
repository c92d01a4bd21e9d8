// Compile-time reading of printf-style texts: which conversions a text has, in order. Message and statement texts are
// contracts that are written whole; they are not derived from anything, but checked against what they are filled with.
#ifndef QMV_CORE_FORMAT_H
#define QMV_CORE_FORMAT_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace qmv {

// A check that fails calls this undefined function, so the text does not compile.
void text_does_not_fit(const char* why);

// A conversion of a text: its letter (0 behind the last one), its precision (0 without one), and whether the character
// before it is a single quote.
struct Conversion {
  char letter = 0;
  std::size_t precision = 0;
  bool quoted = false;
};

// Steps through the conversions of a text.
class Conversions {
 public:
  constexpr explicit Conversions(const char* text) : at_(text) {}

  constexpr Conversion next() {
    char before = 0;
    while (*at_ != 0 && *at_ != '%') before = *at_++;
    if (*at_ == 0) return {};
    Conversion found{.letter = 0, .precision = 0, .quoted = before == '\''};
    if (*++at_ == '.') {
      while (*++at_ >= '0' && *at_ <= '9')
        found.precision = found.precision * 10 + static_cast<std::size_t>(*at_ - '0');
    }
    found.letter = *at_;
    if (*at_ != 0) ++at_;
    return found;
  }

 private:
  const char* at_;
};

// Whether a text begins with "[%s:%d]", as every log line does, and has exactly Letters behind it.
template <char... Letters>
constexpr bool is_log_line(const char* text) {
  Conversions conversions(text);
  return text[0] == '[' && conversions.next().letter == 's' && text[3] == ':' && conversions.next().letter == 'd' &&
         text[6] == ']' && (... && (conversions.next().letter == Letters)) && conversions.next().letter == 0;
}

// Whether a value is what a conversion takes.
template <char Letter, class Value>
inline constexpr bool kMatches = (Letter == 's' && std::is_convertible_v<Value, const char*>) ||
                                 (Letter == 'd' && std::is_same_v<Value, std::int32_t>);

}  // namespace qmv

#endif
