// What is measured: each operation by each contender that offers it, on one database file.
#ifndef QMV_BENCH_OPERATIONS_H
#define QMV_BENCH_OPERATIONS_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace qmv::bench {

struct Operation {
  std::string name;
  std::string contender;
  std::function<void()> run;                   // what is measured, the release of the records included
  std::function<std::uint64_t()> result;       // runs it, and digests what it brought
  std::function<void(const char*)> execute{};  // on the contender's connection; empty for an operation that only reads

  // A writing operation runs in a transaction that is rolled back, so that all find the same file.
  void begin() const {
    if (execute) execute("begin");
  }
  void end() const {
    if (execute) execute("rollback");
  }
};

// Opens the file for all contenders. Throws when two contenders bring something different for one operation.
std::vector<Operation> operations(const std::string& path);

}  // namespace qmv::bench

#endif
