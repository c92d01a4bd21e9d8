// Those that read one row, with one statement or behind others: somebody changes the table before they do.
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "qmv.h"
#include "support/child.h"
#include "torture/changed_tables.h"
#include "torture/ends.h"
#include "torture/rules.h"

namespace qmv::test {
namespace {

// Those that read one row with one statement.
class ChangedTablesOfOneRow : public ChangedTables {
 protected:
  // Whether a statement names the column that its table ends with.
  static bool names_last_column() {
    static const std::set<std::string> kNames = {"db_get_fru_compact_sdr", "db_get_fru_full_sdr", "db_get_MessageID",
                                                 "db_get_req_state_change"};
    return kNames.contains(GetParam().name);
  }
};

INSTANTIATE_TEST_SUITE_P(Each, ChangedTablesOfOneRow, testing::ValuesIn(calls_of(Shape::kGetOne)), name_of);

TEST_P(ChangedTablesOfOneRow, WithOneColumnLessAreReadAsIfItWereNull) {
  const Trial trial = tried_with(cut(kIsNotLast), 1);
  if (names_last_column()) return expect_end_of_prepare(trial, 1);
  EXPECT_EQ(0, trial.errors()) << "it compiles";
  expect_same(tried_with(nulled(kIsNotLast), 1), trial);
}

TEST_P(ChangedTablesOfOneRow, WithMoreColumnsAreReadAsBefore) {
  expect_same(healthy, tried_with(kMoreColumns, 1));
}

// Those that count all rows before they read one.
class ChangedTablesOfCountedOnes : public ChangedTables {
 protected:
  // What the caller's record is without a row: a requested state is then 0.
  std::string record_without_row() const {
    std::string record(healthy.answer.content.size(), GetParam().material.fill);
    if (GetParam().name == "db_get_req_state_change")
      record.replace(offsetof(request_state_change_rec, RequestedState), sizeof(std::int32_t), sizeof(std::int32_t), 0);
    return record;
  }

  bool asks_for(const std::string& column) const {
    return healthy.statements[1].find(column + "=") != std::string::npos;
  }

  // Columns for which the condition does not hold are NULL, unless the row is asked for by one of them.
  void expect_nulls_without_the_others(const std::string& condition, bool is_key_among_them) {
    const Trial trial = tried_with(cut(condition));
    if (is_key_among_them) {
      expect_end_of_prepare(trial);
    } else {
      expect_same(tried_with(nulled(condition)), trial);
    }
  }
};

const std::set<std::string> kCountedOnes = {"db_get_listener_destination", "db_get_indication_filter_cimxml",
                                            "db_get_indication_subscription", "db_get_req_state_change"};

INSTANTIATE_TEST_SUITE_P(Each, ChangedTablesOfCountedOnes, testing::ValuesIn(calls_named(kCountedOnes)), name_of);

TEST_P(ChangedTablesOfCountedOnes, WithoutRowsEndAsAReadingThatFails) {
  const Trial trial = tried_with(kEmpty);
  expect_end(end_of(rules_of(GetParam()).steps, 2), SQLITE_ERROR, trial);
  EXPECT_TRUE(record_without_row() == trial.answer.content);
}

TEST_P(ChangedTablesOfCountedOnes, WithFewerOrMoreRowsOrMoreColumnsAreReadAsBefore) {
  for (const std::string& change : {kHalve, kDouble, kMoreColumns}) expect_same(healthy, tried_with(change));
}

TEST_P(ChangedTablesOfCountedOnes, ThatAreGoneDoNotCompile) {
  expect_end_of_prepare(tried_with(kDrop));
}

TEST_P(ChangedTablesOfCountedOnes, WithOneColumnLessAreReadAsIfItWereNull) {
  expect_nulls_without_the_others(kIsNotLast, asks_for("KeyValue"));
}

TEST_P(ChangedTablesOfCountedOnes, WithOneColumnAreReadAsIfTheOthersWereNull) {
  expect_nulls_without_the_others(kIsFirst, asks_for("KeyValue") || asks_for("DestName"));
}

// Those that fill records from whatever row a statement yields.
const std::map<std::string, std::string> kTablesOfFillers = {
    {"db_fill_compact_sdr_fields", "compact_sdr"},
    {"db_fill_full_sdr_fields", "full_sdr"},
    {"fill_association_data", "association"},
    {"get_association_data", "association"},
};

class RowsOfOtherWidths : public ChangedTables {
 protected:
  std::string file() const override { return GetParam().name == "get_association_data" ? "Association.db" : ""; }

  Trial tried_after(const std::string& change) {
    put_back();
    make(change, kTablesOfFillers.at(GetParam().name));
    const Trial trial = tried();
    put_back();
    return trial;
  }
};

INSTANTIATE_TEST_SUITE_P(Each, RowsOfOtherWidths, testing::ValuesIn(calls_named(kTablesOfFillers)), name_of);

TEST_P(RowsOfOtherWidths, AreReadAsIfMissingColumnsWereNull) {
  for (const char* condition : {kIsFirst, kIsNotLast}) {
    const Trial trial = tried_after(cut(condition));
    EXPECT_TRUE(tried_after(nulled(condition)).answer == trial.answer);
    EXPECT_FALSE(healthy.answer == trial.answer) << "something is missing";
  }
}

TEST_P(RowsOfOtherWidths, AreReadWithoutColumnsBehindTheLast) {
  EXPECT_TRUE(healthy.answer == tried_after(kMoreColumns).answer);
}

// The first job of a process reads the number of the newest one: of "m-17" in row 5.
class JobsInUse : public TablesInUse {
 protected:
  void expect_job(const std::string& identifier, const std::string& change, std::int32_t status = 0) {
    in_child([&] {
      const Trial trial = tried_with(change, "select * from concrete_job where rowid='5'");
      EXPECT_EQ(status, trial.answer.status);
      EXPECT_EQ(identifier, trial.answer.content.c_str());
      EXPECT_EQ(Left(), trial.left);
    });
  }
};

std::vector<Call> jobs_with_base_names() {
  std::vector<Call> all = calls_that_remember();
  for (Call& call : all) call.material.bytes = std::string("job", sizeof("job"));
  return all;
}

INSTANTIATE_TEST_SUITE_P(Each, JobsInUse, testing::ValuesIn(jobs_with_base_names()), name_of);

TEST_P(JobsInUse, GiveTheNumberOfTheRowThatWasTheNewest) {
  expect_job("job-18", "select 'insert into concrete_job (InstanceID) values (''m-99'');';");
}

TEST_P(JobsInUse, GiveNoNumberWithoutThatRow) {
  expect_job("job-1", kEmpty);
  expect_job("job-1", kHalve);
}

TEST_P(JobsInUse, GiveTheirNumberWhateverTheOtherColumnsAre) {
  expect_job("job-18", kMoreColumns);
  expect_job("job-18", cut(kIsNotLast));
  expect_job("job-18", cut(kIsFirst));
}

TEST_P(JobsInUse, EndTheCallWithoutTheirTable) {
  expect_job("job", kDrop, 1);
}

}  // namespace
}  // namespace qmv::test
