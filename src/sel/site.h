// The module's name in log lines.
#ifndef QMV_SEL_SITE_H
#define QMV_SEL_SITE_H

#include "core/log.h"

namespace qmv::sel {

constexpr Site here(std::uint32_t line = __builtin_LINE()) {
  return {Module::kEventLog, line};
}

}  // namespace qmv::sel

#endif
