// The module's name in log lines.
#ifndef QMV_INSTANCES_DYNAMIC_SITE_H
#define QMV_INSTANCES_DYNAMIC_SITE_H

#include "core/log.h"

namespace qmv::dynamic {

constexpr Site here(std::uint32_t line = __builtin_LINE()) {
  return {Module::kDynamicInstances, line};
}

}  // namespace qmv::dynamic

#endif
