// One thing that is measured, and how it is made of a contender's functions.
#ifndef QMV_BENCH_OPERATION_H
#define QMV_BENCH_OPERATION_H

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>

#include "digest.h"

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

// A block of records from the C allocator, and how many they are.
template <class Record>
class Block {
 public:
  explicit Block(auto fill) { fill(&count_, &records_); }
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;
  ~Block() { std::free(records_); }

  const Record* begin() const { return records_; }
  const Record* end() const { return records_ + count_; }

 private:
  std::int32_t count_ = 0;
  Record* records_ = nullptr;
};

// Gets something as often as said; get is told the how manieth time it is.
Operation reading(const char* name, const char* contender, int times, auto get) {
  const auto run = [=] {
    for (int i = 0; i < times; ++i) get(i);
  };
  const auto result = [=] {
    std::uint64_t sum = 0;
    for (int i = 0; i < times; ++i) sum += digest(get(i));
    return sum;
  };
  return {name, contender, run, result};
}

// Sets these records; what that did is seen by reading everything.
Operation writing(const char* name, const char* contender, const auto& records, auto set, auto get_all, auto execute) {
  const auto run = [=] {
    for (const auto& record : records) set(record);
  };
  const auto result = [=] {
    run();
    return digest(get_all());
  };
  return {name, contender, run, result, execute};
}

}  // namespace qmv::bench

#endif
