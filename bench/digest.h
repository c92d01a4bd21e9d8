// What an operation brought, in one number: of texts what stands before their end, of records whatever their order.
#ifndef QMV_BENCH_DIGEST_H
#define QMV_BENCH_DIGEST_H

#include <qmv.h>

#include <cstdint>

namespace qmv::bench {

std::uint64_t digest(const compact_sdr_rec& record);
std::uint64_t digest(const fru_sdr_rec& record);
std::uint64_t digest(const ssh_capabilities_rec& record);

inline std::uint64_t digest(std::int32_t count) {
  return static_cast<std::uint64_t>(count);
}

template <class Records>
requires requires(const Records& records) {
  records.begin();
}
std::uint64_t digest(const Records& records) {
  std::uint64_t sum = 0;
  for (const auto& record : records) sum += digest(record);
  return sum;
}

}  // namespace qmv::bench

#endif
