// The sensors' tables: large ones, and a join.
#include <qmv.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "contenders.h"
#include "operations.h"
#include "rows.h"

namespace qmv::bench {

namespace {

constexpr int kReads = 100;
constexpr int kCounts = 10;
constexpr int kSets = 100;

using Sensors = Block<compact_sdr_rec>;
using Pairs = Block<fru_sdr_rec>;

constexpr char kGetAll[] = "get-all, 1,000 records";
constexpr char kGetMasked[] = "masked get-all";
constexpr char kGetOne[] = "get-one";
constexpr char kCount[] = "count";
constexpr char kJoin[] = "FRU-to-sensor join";
constexpr char kInsert[] = "set, inserts";
constexpr char kUpdate[] = "set, updates";

// Made beforehand: only getting is measured.
const char* key(int i) {
  static const std::vector<std::string> keys = [] {
    std::vector<std::string> made;
    for (int n = 0; n < kReads; ++n) made.push_back(device_id(n * (kSensors / kReads)));
    return made;
  }();
  return keys[static_cast<std::size_t>(i)].c_str();
}

// A contender that has the library's own functions.
struct Functions {
  const char* contender;
  decltype(&db_get_all_compact_sdrs) get_all;
  decltype(&db_get_all_compact_sdrs_by_phy_elem_type) get_masked;
  decltype(&db_get_compact_sdr) get_one;
  decltype(&db_get_num_compact_sdr) count;
  decltype(&db_get_all_fru_compact_sdr) get_pairs;
  decltype(&db_set_compact_sdr_info) set;

  void add_to(std::vector<Operation>& list, sqlite3* db) const {
    const Functions f = *this;
    const auto get_all_sensors = [=](int = 0) {
      return Sensors([=](auto* n, auto** records) { f.get_all(db, n, records); });
    };
    const auto get_masked_sensors = [=](int) {
      return Sensors([=](auto* n, auto** records) { f.get_masked(db, kMask, n, records); });
    };
    const auto get_one_sensor = [=](int i) {
      return Sensors([=](auto* n, auto** record) { *n = f.get_one(db, key(i), record) == SQLITE_OK; });
    };
    const auto count_sensors = [=](int) {
      std::int32_t n = 0;
      f.count(db, &n, 0);
      return n;
    };
    const auto get_all_pairs = [=](int) {
      return Pairs([=](auto* n, auto** records) { f.get_pairs(db, n, records); });
    };
    const auto set_sensor = [=](const compact_sdr_rec& record) { f.set(db, &record); };
    const auto execute = [=](const char* sql) { sqlite3_exec(db, sql, nullptr, nullptr, nullptr); };

    list.push_back(reading(kGetAll, contender, 1, get_all_sensors));
    list.push_back(reading(kGetMasked, contender, 1, get_masked_sensors));
    list.push_back(reading(kGetOne, contender, kReads, get_one_sensor));
    list.push_back(reading(kCount, contender, kCounts, count_sensors));
    list.push_back(reading(kJoin, contender, 1, get_all_pairs));
    list.push_back(writing(kInsert, contender, new_sensors(kSets), set_sensor, get_all_sensors, execute));
    list.push_back(writing(kUpdate, contender, changed_sensors(kSets), set_sensor, get_all_sensors, execute));
  }
};

constexpr Functions kLibrary = {
    .contender = "library",
    .get_all = db_get_all_compact_sdrs,
    .get_masked = db_get_all_compact_sdrs_by_phy_elem_type,
    .get_one = db_get_compact_sdr,
    .count = db_get_num_compact_sdr,
    .get_pairs = db_get_all_fru_compact_sdr,
    .set = db_set_compact_sdr_info,
};
constexpr Functions kPlain = {
    .contender = "PLAIN",
    .get_all = plain::get_all,
    .get_masked = plain::get_masked,
    .get_one = plain::get_one,
    .count = plain::count,
    .get_pairs = plain::get_pairs,
    .set = plain::set,
};

void add_limit(std::vector<Operation>& list, sqlite3* db) {
  std::int32_t masked = 0;
  db_get_num_compact_sdr(db, &masked, kMask);
  const auto get_all = [=](int) {
    return Sensors([=](auto* n, auto** records) { limit::get_all(db, *n = kSensors, records); });
  };
  const auto get_masked = [=](int) {
    return Sensors([=](auto* n, auto** records) { limit::get_masked(db, kMask, *n = masked, records); });
  };
  const auto get_one = [=](int i) {
    return Sensors([=](auto* n, auto** record) { *n = limit::get_one(db, key(i), record) == SQLITE_OK; });
  };
  list.push_back(reading(kGetAll, "LIMIT", 1, get_all));
  list.push_back(reading(kGetMasked, "LIMIT", 1, get_masked));
  list.push_back(reading(kGetOne, "LIMIT", kReads, get_one));
}

#ifdef QMV_BENCH_WRAPPERS
void add_wrapper(std::vector<Operation>& list, const char* contender, std::shared_ptr<Wrapper> wrapper) {
  const auto get_all = [=](int = 0) { return wrapper->get_all(); };
  const auto get_one = [=](int i) { return wrapper->get_one(key(i)); };
  const auto set = [=](const compact_sdr_rec& record) { wrapper->set(record); };
  const auto execute = [=](const char* sql) { wrapper->execute(sql); };
  list.push_back(reading(kGetAll, contender, 1, get_all));
  list.push_back(reading(kGetOne, contender, kReads, get_one));
  list.push_back(writing(kInsert, contender, new_sensors(kSets), set, get_all, execute));
  list.push_back(writing(kUpdate, contender, changed_sensors(kSets), set, get_all, execute));
}
#endif

}  // namespace

void add_sensor_operations(std::vector<Operation>& list, sqlite3* db, [[maybe_unused]] const std::string& path) {
  kLibrary.add_to(list, db);
  kPlain.add_to(list, db);
  add_limit(list, db);
#ifdef QMV_BENCH_WRAPPERS
  add_wrapper(list, "SQLiteCpp", open_sqlitecpp(path));
  add_wrapper(list, "SOCI", open_soci(path));
#endif
}

}  // namespace qmv::bench
