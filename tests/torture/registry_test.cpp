// The list of calls itself: it has every export, and without a fault each call does all that it can.
#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "torture/tables.h"
#include "torture/torture_test.h"

namespace qmv::test {
namespace {

TEST(Registry, HasEveryExportOnce) {
  std::ifstream map(QMV_MAP);
  std::multiset<std::string> exports;
  std::smatch name;
  for (std::string line; std::getline(map, line);) {
    if (std::regex_match(line, name, std::regex(R"(\s*(\w+);)"))) exports.insert(name[1]);
  }
  std::multiset<std::string> names;
  for (const Call& call : calls()) names.insert(call.name);
  EXPECT_EQ(exports, names);
}

TEST(ReferenceSchema, HasColumnsThatAreAmbiguousToGetOnesOfTheJoins) {
  Database reference(image_of_all_tables());
  for (const Call& call : calls()) {
    if (!call.wants_narrow_sensors) continue;
    SCOPED_TRACE(call.name);
    boundary() = Boundary();
    EXPECT_EQ(SQLITE_ERROR, call.run(reference.get(), call.material).status);
    const LogLine ambiguous = {kErrorLevel, "db_dynamic_instance.c",
                               "SQL Compilation error: ambiguous column name: FruIDSlaveAddr"};
    EXPECT_EQ(Lines({ambiguous}), boundary().log);
  }
}

class FaultFree : public Torture {
 protected:
  template <class Value>
  static Value named(const std::map<std::string, Value>& exceptions, const Value& otherwise) {
    const auto found = exceptions.find(GetParam().name);
    return found == exceptions.end() ? otherwise : found->second;
  }
};

INSTANTIATE_TEST_SUITE_P(Each, FaultFree, testing::ValuesIn(calls_and_inserts()), name_of);

TEST_P(FaultFree, CallSucceeds) {
  const std::map<std::string, std::int32_t> kOthers = {
      // The row exists; it is inserted in the other variant.
      {"db_init_static_ip_assignment_settingdata", 1},
      // Values, not statuses.
      {"GetUpTime", 12345},
      {"GetCMPIDataType", 144},
      {"get_row_count", 6},
      {"get_table_count", 5},
  };
  alone([&] { EXPECT_EQ(named(kOthers, 0), tried().answer.status.value_or(0)); });
}

TEST_P(FaultFree, GetAllHandsOutABlock) {
  if (GetParam().shape != Shape::kGetAll) return;
  EXPECT_EQ(Handed::kBlock, tried().answer.handed);
}

TEST_P(FaultFree, GetOneHandsOutABlockOrFillsTheRecord) {
  if (GetParam().shape != Shape::kGetOne) return;
  const Answer answer = tried().answer;
  const bool is_filled = answer.content.find_first_not_of(GetParam().material.fill) != std::string::npos;
  EXPECT_EQ(answer.status == 0, answer.handed == Handed::kBlock || is_filled);
}

TEST_P(FaultFree, StatementsRunExceptThoseThatSqliteRejects) {
  const std::map<std::string, int> kRejected = {
      {"db_del_sdr", 1},
      {"db_add_sel_entries", 1},  // the event exists
      // An insert whose row exists, and an update that SQLite rejects.
      {"db_set_fru_info", 2},
      {"db_set_fru_locator_sdr_info", 2},
      {"db_set_account_mgt_capabilities", 2},
      {"db_set_account_setting_data", 2},
      {"db_set_boot_setting_data", 2},
      {"db_set_boot_service_capabilities", 2},
      {"db_set_boot_source_setting", 2},
  };
  const bool is_update = GetParam().shape == Shape::kSet && GetParam().material.fill == 'k';
  alone([&] {
    const Lines log = tried().log;
    const LogLine rejected = {kTraceLevel, "db.c", "Successfully execute the SQLite query"};
    EXPECT_EQ(named(kRejected, is_update ? 1 : 0), std::count(log.begin(), log.end(), rejected));
  });
}

TEST_P(FaultFree, NothingIsLeftButWhatTheHeadersSay) {
  const std::map<std::string, Left> kKept = {
      {"db_del_sdr", {.texts = 1}},
      {"db_del_sel", {.texts = 1}},
      {"db_addsel", {.texts = 1}},
      {"db_addsel_inserts", {.texts = 1}},
      {"db_add_sel_entries", {.texts = 1}},
      {"db_get_sesstion_term_seq", {.statements = 1, .texts = 1}},
      {"GetColumnNames", {.statements = 1, .texts = 1, .connections = 1}},
      {"GetColumnValues", {.statements = 1, .connections = 1}},
  };
  alone([&] { EXPECT_EQ(named(kKept, Left()), tried().left); });
}

TEST_P(FaultFree, WritersWriteAndReadersDoNot) {
  alone([&] {
    const int before = sqlite3_total_changes(db());
    tried();
    EXPECT_EQ(is_writer(GetParam()), sqlite3_total_changes(db()) > before);
  });
}

TEST_P(FaultFree, CallsThatBeginAlikeAreAlike) {
  alone([&] {
    const Trial first = tried();
    put_back();
    expect_works_as(first);
  });
}

}  // namespace
}  // namespace qmv::test
