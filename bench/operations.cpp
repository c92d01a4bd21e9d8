#include "operations.h"

#include <sqlite3.h>

#include <map>
#include <stdexcept>

namespace qmv::bench {

namespace {

void check_agreement(const std::vector<Operation>& list) {
  std::map<std::string, std::uint64_t> first;
  for (const Operation& operation : list) {
    operation.begin();
    const std::uint64_t result = operation.result();
    operation.end();
    if (first.try_emplace(operation.name, result).first->second != result)
      throw std::runtime_error(operation.name + ": " + operation.contender + " brings something else");
  }
}

}  // namespace

std::vector<Operation> operations(const std::string& path) {
  // Left open to the end of the process, as the operations use it.
  sqlite3* db = nullptr;
  if (sqlite3_open(path.c_str(), &db) != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(db));
  std::vector<Operation> list;
  add_sensor_operations(list, db, path);
  add_profile_operations(list, db);
  check_agreement(list);
  return list;
}

}  // namespace qmv::bench
