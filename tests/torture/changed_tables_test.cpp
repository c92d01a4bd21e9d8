// Get-alls count with one statement and read with another: somebody changes the tables in between.
#include "torture/changed_tables.h"

#include <map>
#include <string>
#include <vector>

namespace qmv::test {
namespace {

class ChangedTablesOfArrays : public ChangedTables {
 protected:
  // An array of as many records as were counted.
  void expect_whole_array(const Trial& trial) const {
    EXPECT_EQ(0, trial.answer.status);
    EXPECT_EQ(Handed::kBlock, trial.answer.handed);
    EXPECT_EQ(healthy.answer.number, trial.answer.number);
    EXPECT_EQ(healthy.answer.content.size(), trial.answer.content.size());
    EXPECT_EQ(Left(), trial.left);
  }

  // The same records as in a table that was changed before they were counted, as far as there is room for them.
  void expect_same_records(const Trial& counted_later, const Trial& trial) const {
    expect_whole_array(trial);
    std::string expected = counted_later.answer.content;
    expected.resize(healthy.answer.content.size());
    EXPECT_TRUE(expected == trial.answer.content);
  }

  bool takes_whole_table() const { return healthy.statements[1].find('=') == std::string::npos; }
};

// The assets are those of two get-alls.
const std::string kAssets = "db_get_all_physicalasset_element";

std::vector<Call> get_alls() {
  std::vector<Call> all = calls_of(Shape::kGetAll);
  std::erase_if(all, [](const Call& call) { return call.name == kAssets; });
  return all;
}

INSTANTIATE_TEST_SUITE_P(Each, ChangedTablesOfArrays, testing::ValuesIn(get_alls()), name_of);

TEST_P(ChangedTablesOfArrays, WithoutRowsLeaveZeroedRecords) {
  const Trial trial = tried_with(kEmpty);
  expect_whole_array(trial);
  EXPECT_EQ(std::string::npos, trial.answer.content.find_first_not_of('\0'));
}

TEST_P(ChangedTablesOfArrays, WithFewerRowsLeaveZeroesBehindThem) {
  const Trial fewer = tried_with(kHalve, 1);
  expect_same_records(fewer, tried_with(kHalve));
  if (takes_whole_table()) {
    const std::size_t kept = fewer.answer.content.size();
    EXPECT_LT(0u, kept);
    EXPECT_LT(kept, healthy.answer.content.size());
    EXPECT_TRUE(fewer.answer.content == healthy.answer.content.substr(0, kept)) << "the first rows";
  }
}

TEST_P(ChangedTablesOfArrays, WithMoreRowsDropThem) {
  const Trial more = tried_with(kDouble, 1);
  const Trial trial = tried_with(kDouble);
  expect_same_records(more, trial);
  EXPECT_LT(healthy.answer.content.size(), more.answer.content.size());
  if (takes_whole_table()) {
    EXPECT_TRUE(healthy.answer.content == trial.answer.content) << "the first rows";
  }
}

TEST_P(ChangedTablesOfArrays, ThatAreGoneDoNotCompile) {
  expect_end_of_prepare(tried_with(kDrop));
}

TEST_P(ChangedTablesOfArrays, WithMoreColumnsAreReadAsBefore) {
  const Trial trial = tried_with(kMoreColumns);
  expect_whole_array(trial);
  EXPECT_TRUE(healthy.answer.content == trial.answer.content);
}

TEST_P(ChangedTablesOfArrays, WithOneColumnAreReadAsFarAsTheyGo) {
  const Trial trial = tried_with(cut(kIsFirst));
  if (takes_whole_table()) {
    expect_whole_array(trial);
  } else {
    expect_end_of_prepare(trial);
  }
}

TEST_P(ChangedTablesOfArrays, WithOneColumnLessAreReadAsFarAsTheyGo) {
  const Trial trial = tried_with(cut(kIsNotLast));
  if (healthy.statements[1].find("JOIN") == std::string::npos) {
    expect_whole_array(trial);
  } else {
    expect_end_of_prepare(trial, 3);
  }
}

// Those that read in more ways, or files of their own.
const std::map<std::string, std::string> kFilesOfOthers = {
    {kAssets, ""},
    {"get_all_ps_from_db", "cim.db"},
    {"assoc_get_global_data", "Association.db"},
    {"load_plugins", "Association.db"},
};

class ChangedTablesOfOthers : public ChangedTables {
 protected:
  std::string file() const override { return kFilesOfOthers.at(GetParam().name); }
};

INSTANTIATE_TEST_SUITE_P(Each, ChangedTablesOfOthers, testing::ValuesIn(calls_named(kFilesOfOthers)), name_of);

TEST_P(ChangedTablesOfOthers, AreSurvived) {
  for (const std::string& change : {kEmpty, kHalve, kDrop, kDouble, cut(kIsFirst), cut(kIsNotLast), kMoreColumns}) {
    for (std::size_t nth = 2; nth <= healthy.statements.size(); ++nth) {
      const Trial trial = tried_with(change, nth);
      EXPECT_TRUE(trial.answer.status == 0 || trial.answer.status == 1);
      EXPECT_EQ(Left(), trial.left);
      put_back();
      expect_works_as(healthy);
    }
  }
}

}  // namespace
}  // namespace qmv::test
