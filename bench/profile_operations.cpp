// A profile table, of a few rows. SSH capabilities stand for all of them: texts and integers in turn, the commonest
// forms of get-all, get-one and set, and an update that SQLite takes.
#include <qmv.h>
#include <sqlite3.h>

#include <string>
#include <vector>

#include "contenders.h"
#include "operations.h"
#include "rows.h"

namespace qmv::bench {

namespace {

constexpr int kTimes = 100;

using Capabilities = Block<ssh_capabilities_rec>;

// What is set: the rows of the file over and over, each time changed, and rows that it has not yet.
std::vector<ssh_capabilities_rec> changed() {
  std::vector<ssh_capabilities_rec> made;
  for (int i = 0; i < kTimes; ++i) made.push_back(capabilities(i % kCapabilities, i + 1));
  return made;
}
std::vector<ssh_capabilities_rec> added() {
  std::vector<ssh_capabilities_rec> made;
  for (int i = 0; i < kTimes; ++i) made.push_back(capabilities(kCapabilities + i, 0));
  return made;
}

// Made beforehand: only getting is measured.
const char* key(int i) {
  static const std::vector<ssh_capabilities_rec> rows = changed();
  return rows[static_cast<std::size_t>(i)].InstanceID;
}

struct Functions {
  const char* contender;
  decltype(&db_get_all_sshcapabilities) get_all;
  decltype(&db_get_sshcapabilities) get_one;
  decltype(&db_set_sshcapabilities) set;

  void add_to(std::vector<Operation>& list, sqlite3* db) const {
    const Functions f = *this;
    const auto get_all_rows = [=](int = 0) {
      return Capabilities([=](auto* n, auto** records) { f.get_all(db, n, records); });
    };
    const auto get_one_row = [=](int i) {
      return Capabilities([=](auto* n, auto** record) { *n = f.get_one(db, key(i), record) == SQLITE_OK; });
    };
    const auto set_row = [=](const ssh_capabilities_rec& record) { f.set(db, &record); };
    const auto execute = [=](const char* sql) { sqlite3_exec(db, sql, nullptr, nullptr, nullptr); };

    list.push_back(reading("profile get-all", contender, kTimes, get_all_rows));
    list.push_back(reading("profile get-one", contender, kTimes, get_one_row));
    list.push_back(writing("profile set, inserts", contender, added(), set_row, get_all_rows, execute));
    list.push_back(writing("profile set, updates", contender, changed(), set_row, get_all_rows, execute));
  }
};

constexpr Functions kLibrary = {
    .contender = "library",
    .get_all = db_get_all_sshcapabilities,
    .get_one = db_get_sshcapabilities,
    .set = db_set_sshcapabilities,
};
constexpr Functions kPlain = {
    .contender = "PLAIN",
    .get_all = plain::get_all_capabilities,
    .get_one = plain::get_capabilities,
    .set = plain::set_capabilities,
};

}  // namespace

void add_profile_operations(std::vector<Operation>& list, sqlite3* db) {
  kLibrary.add_to(list, db);
  kPlain.add_to(list, db);
}

}  // namespace qmv::bench
