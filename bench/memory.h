#ifndef QMV_BENCH_MEMORY_H
#define QMV_BENCH_MEMORY_H

#include <cstddef>

namespace qmv::bench {

// How many blocks the process has asked the C allocator for.
std::size_t allocations();

}  // namespace qmv::bench

#endif
