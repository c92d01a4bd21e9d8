// Counts that are far from the number of rows: the array's size must not wrap, on machines of 32 bits either. No table
// holds that many rows, so count(*) itself is replaced.
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "hostile/guarded_blocks.h"
#include "hostile/hostile_test.h"

namespace qmv::test {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

// What count(*) answers, 0 for the truth.
sqlite3_int64 claimed = 0;

// Counts what it is asked for, or answers the claim.
struct Count {
  static void step(sqlite3_context* context, int, sqlite3_value**) {
    auto* const rows = static_cast<sqlite3_int64*>(sqlite3_aggregate_context(context, sizeof(sqlite3_int64)));
    ++*rows;
  }
  static void end(sqlite3_context* context) {
    const auto* const rows = static_cast<sqlite3_int64*>(sqlite3_aggregate_context(context, sizeof(sqlite3_int64)));
    sqlite3_result_int64(context, claimed != 0 ? claimed : rows == nullptr ? 0 : *rows);
  }
};

// For the library's own connections too.
int replace_count(sqlite3* connection, char**, const void*) {
  return sqlite3_create_function(connection, "count", 0, SQLITE_UTF8, nullptr, nullptr, Count::step, Count::end);
}

// A get-all, as an array of bytes.
struct GetAll {
  std::string name;
  std::size_t record_size;
  std::function<std::int32_t(sqlite3*, std::int32_t* count, void** records)> call;
};

void PrintTo(const GetAll& get_all, std::ostream* out) {
  *out << get_all.name;
}

template <class Record>
GetAll get_all_of(const std::string& name, auto call) {
  return {name, sizeof(Record), [call](sqlite3* db, std::int32_t* count, void** records) {
            auto* typed = static_cast<Record*>(*records);
            const std::int32_t status = call(db, count, &typed);
            *records = typed;
            return status;
          }};
}

template <class Record>
GetAll get_all(const std::string& name, std::int32_t (*function)(sqlite3*, std::int32_t*, Record**)) {
  return get_all_of<Record>(name, function);
}
template <class Record>
GetAll get_all(const std::string& name, std::int32_t (*function)(sqlite3*, Record**, std::int32_t*)) {
  return get_all_of<Record>(
      name, [function](sqlite3* db, std::int32_t* count, Record** to) { return function(db, to, count); });
}
template <class Record>
GetAll get_all(const std::string& name, std::int32_t (*function)(sqlite3*, std::int32_t, std::int32_t*, Record**)) {
  return get_all_of<Record>(
      name, [function](sqlite3* db, std::int32_t* count, Record** to) { return function(db, 2, count, to); });
}
#define GET_ALL(function) get_all(#function, function)

// Releases the lists of the only row's association, which is to be compared by its bytes alone.
void release_lists(association_rec& record) {
  auto* copy = static_cast<association_rec*>(std::malloc(sizeof(association_rec)));
  *copy = record;
  FreeDBData(&copy, 1);
  record.List5 = record.List6 = record.List7 = record.List8 = nullptr;
}

const GetAll kGetAlls[] = {
    GET_ALL(db_get_all_compact_sdrs),
    GET_ALL(db_get_all_compact_sdrs_by_phy_elem_type),
    GET_ALL(db_get_all_full_sdrs),
    GET_ALL(db_get_all_full_sdrs_by_phy_elem_type),
    GET_ALL(db_get_all_redundancyset),
    GET_ALL(db_get_all_memory),
    GET_ALL(db_get_all_processor),
    GET_ALL(db_get_all_sel_records),
    GET_ALL(db_get_all_fru_info),
    GET_ALL(db_get_all_fru_compact_sdr),
    GET_ALL(db_get_all_fru_full_sdr),
    GET_ALL(db_get_all_elec),
    GET_ALL(db_get_all_regprofile),
    GET_ALL(db_get_all_sshcapabilities),
    GET_ALL(db_get_all_telnetcapabilities),
    GET_ALL(db_get_all_phy_asset_capabilities),
    GET_ALL(db_get_all_concrete_collection),
    GET_ALL(db_get_all_power_mgt_capabilities),
    GET_ALL(db_get_all_power_mgt_service),
    GET_ALL(db_get_all_account_mgt_capabilities),
    GET_ALL(db_get_all_account_setting_data),
    GET_ALL(db_get_all_boot_setting_data),
    GET_ALL(db_get_all_boot_config_setting),
    GET_ALL(db_get_all_boot_service_capabilities),
    GET_ALL(db_get_all_boot_source_setting),
    GET_ALL(db_get_all_boot_service),
    GET_ALL(db_get_all_boot_order),
    GET_ALL(db_get_all_RBMcapabilities),
    GET_ALL(db_get_all_privilege),
    GET_ALL(db_get_all_role),
    GET_ALL(db_get_all_assign_role),
    GET_ALL(db_get_all_ip_assignment_settingdata),
    GET_ALL(db_get_all_static_ip_assignment_settingdata),
    GET_ALL(db_get_all_protocol_service),
    GET_ALL(db_get_all_pwds_capablities),
    GET_ALL(db_get_all_concretejob),
    GET_ALL(db_get_all_error_info),
    GET_ALL(db_get_all_listener_destination),
    GET_ALL(db_get_all_indication_filter_cimxml),
    GET_ALL(db_get_all_indication_subscription),
    get_all_of<association_reg_rec>(
        "load_plugins",
        [](sqlite3*, std::int32_t* count, association_reg_rec** to) { return load_plugins(to, count, "any"); }),
    get_all_of<association_rec>("assoc_get_global_data",
                                [](sqlite3*, std::int32_t* count, association_rec** to) {
                                  const std::int32_t status = assoc_get_global_data(to, count);
                                  if (*to != nullptr) release_lists(**to);
                                  return status;
                                }),
    get_all_of<char*>("get_all_ps_from_db",
                      [](sqlite3*, std::int32_t* count, char*** to) {
                        const std::int32_t status = get_all_ps_from_db(to, count);
                        if (status == 0) db_freemem(**to);  // the name; the array's bytes are compared
                        if (status == 0) **to = nullptr;
                        return status;
                      }),
};

// A row in every table that an array is read from.
class ClaimedCounts : public HostileTest {
 protected:
  void SetUp() override {
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(replace_count));
    HostileTest::SetUp();
    for (const char* database : {"cim", "tmp_cim", "Association"}) make_tables(database);
    for (const std::string& table : values("select name from sqlite_master where type = 'table';")) {
      sql(values("select 'insert into " + table +
                 " values (' || group_concat(iif(type = 'TEXT', '''t''', '7')) || ');'" + " from pragma_table_info('" +
                 table + "');")
              .at(0));
    }
    sql("update compact_sdr set EventTypeCode = 11, EntityID = 10, PhysicalElement = 1024 + 256 + 2;"
        "update full_sdr set EntityID = 10, PhysicalElement = 2; update fru set EntityID = 10;");
  }

  void TearDown() override {
    claimed = 0;
    HostileTest::TearDown();
    sqlite3_reset_auto_extension();
  }
};

class HugeCounts : public ClaimedCounts, public testing::WithParamInterface<GetAll> {
 protected:
  void SetUp() override {
    ClaimedCounts::SetUp();
    if (GetParam().name == "db_get_all_memory") sql("update compact_sdr set SensorType = 12;");
  }

  struct Answer {
    std::int32_t status;
    std::int32_t count;
    std::string first_record;
    bool has_records;
  };

  Answer answer_when(sqlite3_int64 rows) {
    claimed = rows;
    std::int32_t count = -1;
    void* records = nullptr;
    const std::int32_t status = GetParam().call(db, &count, &records);
    const Answer answer = {status, count,
                           records == nullptr ? "" : std::string(static_cast<char*>(records), GetParam().record_size),
                           records != nullptr};
    std::free(records);
    return answer;
  }

  // Destinations and filters answer that memory is short with 0.
  static bool hides_short_memory() {
    return GetParam().name == "db_get_all_listener_destination" ||
           GetParam().name == "db_get_all_indication_filter_cimxml";
  }

  // Plug-ins and associations fewer than none are none.
  static bool takes_less_than_nothing_for_none() {
    return GetParam().name == "load_plugins" || GetParam().name == "assoc_get_global_data";
  }

  // Either there is no memory for so many records, or there is and the row is the first of them.
  void expect_sound(sqlite3_int64 rows) {
    SCOPED_TRACE(rows);
    const Answer usual = answer_when(1);
    const std::size_t refused = blocks_refused();
    const Answer answer = answer_when(rows);
    if (blocks_refused() != refused) {
      const bool is_failure = answer.status == 1 || answer.status == SQLITE_NOMEM;
      EXPECT_EQ(!hides_short_memory(), is_failure) << answer.status;
      EXPECT_FALSE(answer.has_records);
    } else {
      EXPECT_EQ(0, answer.status);
      EXPECT_TRUE(usual.has_records);
      EXPECT_TRUE(usual.first_record == answer.first_record);
    }
  }
};

TEST_P(HugeCounts, AsLargeAsACountCanBe) {
  expect_sound(kLargest);
}

// The smallest counts whose product with the record's size is 2^32, 2^33 and 2^34 and a little more.
TEST_P(HugeCounts, WhoseProductWithTheSizeWouldWrap) {
  for (const int power : {32, 33, 34}) {
    const sqlite3_int64 rows = (sqlite3_int64{1} << power) / static_cast<sqlite3_int64>(GetParam().record_size) + 1;
    if (rows <= kLargest) expect_sound(rows);
  }
}

TEST_P(HugeCounts, BeyondAnInt32AreTakenByTheirLow32Bits) {
  const Answer two = answer_when((sqlite3_int64{1} << 32) + 2);
  EXPECT_EQ(0, two.status);
  EXPECT_EQ(GetParam().name == "get_all_ps_from_db" ? 1 : 2, two.count);
  for (const sqlite3_int64 rows : {sqlite3_int64{1} << 31, sqlite3_int64{-1}}) {
    const Answer less_than_nothing = answer_when(rows);
    EXPECT_EQ(takes_less_than_nothing_for_none() || hides_short_memory() ? 0 : 1, less_than_nothing.status);
    EXPECT_FALSE(less_than_nothing.has_records);
  }
}

const auto name_of = [](const testing::TestParamInfo<GetAll>& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Of, HugeCounts, testing::ValuesIn(kGetAlls), name_of);

constexpr sqlite3_int64 kBelowZero[] = {sqlite3_int64{1} << 31, -1};

TEST_F(ClaimedCounts, BelowZeroAreNoAssociationsAndNoCount) {
  for (const sqlite3_int64 rows : kBelowZero) {
    claimed = rows;
    association_rec untouched;
    association_rec* records = &untouched;
    std::int32_t count = 77;
    EXPECT_EQ(0, assoc_get_global_data(&records, &count));
    EXPECT_EQ(nullptr, records);
    EXPECT_EQ(77, count);
  }
}

TEST_F(ClaimedCounts, BelowZeroAreACountOfPlugInsAndNoArray) {
  for (const sqlite3_int64 rows : kBelowZero) {
    claimed = rows;
    association_reg_rec untouched;
    association_reg_rec* records = &untouched;
    std::int32_t count = 77;
    EXPECT_EQ(0, load_plugins(&records, &count, "any"));
    EXPECT_EQ(&untouched, records);
    EXPECT_EQ(static_cast<std::int32_t>(rows), count);
  }
}

// Compact and full sensors are one array, and each kind alone is as many as can be.
TEST_F(ClaimedCounts, OfBothKindsOfSensorsAreAFailure) {
  claimed = kLargest;
  fru_sdr_rec* records = nullptr;
  std::int32_t count = -1;
  EXPECT_EQ(1, db_get_all_physicalasset_element(db, &count, &records, 2));
  EXPECT_EQ(0, count);
  EXPECT_EQ(nullptr, records);
}

}  // namespace
}  // namespace qmv::test
