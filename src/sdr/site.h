// The module's name in log lines.
#ifndef QMV_SDR_SITE_H
#define QMV_SDR_SITE_H

#include "core/log.h"

namespace qmv::sdr {

constexpr Site here(std::uint32_t line = __builtin_LINE()) {
  return {Module::kSensorRecords, line};
}

}  // namespace qmv::sdr

#endif
