// Log lines. Every line goes to one of the host's two debug-output functions and begins with the module's file name and
// the line of the accessor that it is about, so that a line leads to the accessor and not into the shared frame.
#ifndef QMV_CORE_LOG_H
#define QMV_CORE_LOG_H

#include <cstdint>

#include "core/format.h"
#include "qmv/core.h"

namespace qmv {

enum class Module : std::uint8_t { kDb, kSensorRecords, kEventLog, kFru, kStaticInstances, kDynamicInstances };

// Where a log line comes from, in one word. Each module's folder has a here() that makes one from the line of its call.
class Site {
 public:
  constexpr Site(Module module, std::uint32_t line) : word_(line * kModules + static_cast<std::uint32_t>(module)) {}
  constexpr Module module() const { return static_cast<Module>(word_ % kModules); }
  constexpr int line() const { return static_cast<int>(word_ / kModules); }

 private:
  static constexpr std::uint32_t kModules = 8;
  std::uint32_t word_;
};

const char* file_name(Module module);

// The text of a log line whose conversions behind "[%s:%d]" are exactly Letters.
template <char... Letters>
class Format {
 public:
  consteval Format(const char* text) : text_(text) {  // a form is filled with texts
    if (!is_log_line<Letters...>(text)) text_does_not_fit("no log line, or other conversions than values");
  }

  constexpr const char* text() const { return text_; }

 protected:
  struct Unchecked {};
  consteval Format(Unchecked, const char* text) : text_(text) {}

 private:
  const char* text_;
};

// A step that logs nothing.
struct Silent {};
inline constexpr Silent kSilent;

// What a step of a shape says: a line without values, or nothing.
class Message : public Format<> {
 public:
  consteval Message(const char* text) : Format(text) {}
  consteval Message(Silent) : Format(Unchecked{}, nullptr) {}
};

// What a step says that knows a number of rows: a line that may name it, or nothing.
class CountMessage : public Format<'d'> {
 public:
  consteval CountMessage(const char* text)
      : Format(Unchecked{}, has_value(text) ? Format<'d'>(text).text() : Format<>(text).text()) {}

 private:
  static consteval bool has_value(const char* text) {
    Conversions conversions(text);
    conversions.next();
    conversions.next();
    return conversions.next().letter != 0;
  }
};

inline constexpr int kErrorLevel = 130;
inline constexpr int kTraceLevel = 135;

// The traces of the shapes: a NULL text is a step that logs nothing.
void trace(Site site, const char* text);
void trace(Site site, const char* text, std::int32_t count);

// The only place where a format is not a literal: Format has checked it against its values.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
template <char... Letters, class... Values>
void trace(Site site, Format<Letters...> format, Values... values) {
  static_assert(sizeof...(Letters) == sizeof...(Values) && (... && kMatches<Letters, Values>));
  HTRC_LINUXAPP_Runtime_DbgOut(kTraceLevel, format.text(), file_name(site.module()), site.line(), values...);
}

template <char... Letters, class... Values>
void error(Site site, Format<Letters...> format, Values... values) {
  static_assert(sizeof...(Letters) == sizeof...(Values) && (... && kMatches<Letters, Values>));
  HTRC_LINUXAPP_DbgOut(kErrorLevel, format.text(), file_name(site.module()), site.line(), values...);
}
#pragma GCC diagnostic pop

}  // namespace qmv

#endif
