// What the library allocates, taken over at link time: every block ends at the end of a page, between two pages that
// nobody may touch, on machines without an address sanitizer too. With one, and with QMV_PLAIN_BLOCKS in the environment
// (for valgrind), all but huge blocks are left to it.
#ifndef QMV_TESTS_HOSTILE_GUARDED_BLOCKS_H
#define QMV_TESTS_HOSTILE_GUARDED_BLOCKS_H

#include <cstddef>

namespace qmv::test {

// Blocks that were handed out and not released. Those of a test that loses some are released here.
std::size_t blocks_alive();
void release_blocks();

// Blocks that were not handed out since there is no address space for them.
std::size_t blocks_refused();

}  // namespace qmv::test

#endif
