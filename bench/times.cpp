// Times of the same operations, by Google Benchmark. A benchmark's name is "operation/contender".
#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>
#include <filesystem>

#include "operations.h"
#include "rows.h"

namespace {

void measure(benchmark::State& state, const qmv::bench::Operation& operation) {
  operation.begin();
  for (auto _ : state) {
    if (operation.execute) {
      state.PauseTiming();
      operation.end();
      operation.begin();
      state.ResumeTiming();
    }
    operation.run();
  }
  operation.end();
}

}  // namespace

int main(int argc, char** argv) try {
  benchmark::Initialize(&argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: times [Google Benchmark's options] DATABASE SCHEMA\n");
    return 2;
  }
  qmv::bench::create_database(argv[1], argv[2]);
  for (const qmv::bench::Operation& operation : qmv::bench::operations(argv[1])) {
    benchmark::RegisterBenchmark((operation.name + "/" + operation.contender).c_str(), measure, operation);
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
} catch (const std::exception& failure) {
  std::fprintf(stderr, "times: %s\n", failure.what());
  return 1;
}
