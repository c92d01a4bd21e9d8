// Every exported function with the worst arguments that its parameters' types allow. What it answers is its own affair:
// it must come back, and leave tables, and what it does not own, alone.
#include <limits>
#include <string>
#include <vector>

#include "torture/torture_test.h"

namespace qmv::test {
namespace {

struct Hostile {
  const char* name;
  Material material;
};

std::vector<Hostile> hostile_materials() {
  constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
  return {
      {"empty", {"", kSmallest, 0}},
      {"text_of_255", {std::string(255, 't'), -1, 't'}},
      {"text_of_256", {std::string(256, 't'), 53, '\''}},
      {"text_of_100000", {std::string(100000, 't'), kLargest, '%'}},
      {"text_of_quotes", {std::string(5000, '\''), 54, '"'}},
      {"text_of_statements", {"k'; drop table sel; --", 255, ';'}},
      {"text_of_directives", {"%s%n%d%z%q%.99999999999s%*d%lld%%%", 0, '\xff'}},
      {"text_of_a_lone_sign", {"%", -255, ','}},
      {"text_of_invalid_characters", {"\xff\xc3(\xf0\x9f", 65536, '{'}},
      {"text_of_separators", {"12345678,{}:-,", kLargest - 1, '-'}},
  };
}

// The names of all tables.
Texts tables_of(sqlite3* db) {
  Texts tables;
  const auto add = [](void* to, int, char** values, char**) {
    static_cast<Texts*>(to)->emplace_back(values[0]);
    return 0;
  };
  __real_sqlite3_exec(db, "select name from sqlite_master order by name;", add, &tables, nullptr);
  return tables;
}

std::vector<Call> hostile_calls() {
  std::vector<Call> all;
  for (const Call& call : calls()) {
    for (const Hostile& hostile : hostile_materials()) {
      all.push_back(call);
      all.back().name += std::string("_with_") + hostile.name;
      all.back().material = hostile.material;
    }
  }
  return all;
}

using HostileArguments = Torture;

INSTANTIATE_TEST_SUITE_P(Each, HostileArguments, testing::ValuesIn(hostile_calls()), name_of);

TEST_P(HostileArguments, ComeBackAndLeaveTheTablesInPlace) {
  const Texts before = tables_of(db());
  EXPECT_LT(40u, before.size());
  alone([&] {
    tried();
    EXPECT_EQ(before, tables_of(db()));
  });
}

}  // namespace
}  // namespace qmv::test
