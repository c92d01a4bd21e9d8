// Numbers far outside of what they count: entity IDs, minutes, uptimes; and base names that leave no room for a number.
#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

#include "hostile/hostile_test.h"
#include "support/shared_database.h"
#include "torture/guarded.h"

namespace qmv::test {
namespace {

constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

class EntityIds : public HostileTest, public testing::WithParamInterface<std::int32_t> {
 protected:
  void SetUp() override {
    HostileTest::SetUp();
    make_tables("cim");
    const std::string row = "('d', " + std::to_string(GetParam()) + ", -2147483648, 2147483647, 1024);";
    sql("insert into compact_sdr (DeviceID, EntityID, EntityInstance, SensorNum, PhysicalElement) values " + row +
        "insert into full_sdr (DeviceID, EntityID, EntityInstance, SensorNum, PhysicalElement) values " + row);
  }
};

INSTANTIATE_TEST_SUITE_P(OfNoClass, EntityIds, testing::Values(-1, 53, 54, 255, 65536, kSmallest, kLargest));

TEST_P(EntityIds, AreNoProcessors) {
  char* name = nullptr;
  EXPECT_EQ(1, get_processor_from_db(GetParam(), kSmallest, &name));
  EXPECT_EQ(nullptr, name);
}

TEST_P(EntityIds, AreNoPowerSupplies) {
  char* name = nullptr;
  EXPECT_EQ(1, get_ps_from_db(&name, kLargest));
  EXPECT_EQ(nullptr, name);
  char** names = nullptr;
  std::int32_t count = -1;
  EXPECT_EQ(0, get_all_ps_from_db(&names, &count));
  EXPECT_EQ(0, count);
  db_freemem(names);
}

// The longest names that numbers can make.
using Names = HostileTest;

TEST_F(Names, OfExtremeNumbersAreWhole) {
  make_tables("cim");
  sql("insert into compact_sdr (DeviceID, EntityID, EntityInstance, SensorNum, PhysicalElement) values "
      "('p', 3, -2147483648, -2147483648, 0), ('s', 10, -2147483648, -2147483648, 1024);");
  char* processor = nullptr;
  EXPECT_EQ(0, get_processor_from_db(3, kSmallest, &processor));
  EXPECT_STREQ("3:-2147483648:-2147483648:Processor", processor);
  db_freemem(processor);
  char* supply = nullptr;
  EXPECT_EQ(0, get_ps_from_db(&supply, kSmallest));
  EXPECT_STREQ("10:-2147483648:-2147483648:PowerSupply", supply);
  db_freemem(supply);
}

class Jobs : public HostileTest {
 protected:
  void SetUp() override {
    HostileTest::SetUp();
    make_tables("tmp_cim");
    set_uptime("1.0 1.0\n");
  }

  // Creates a job from texts that need not end with a zero, in memory that ends with the record.
  concrete_job_rec created(const std::string& base_name, const std::string& minutes) {
    const Guarded memory(sizeof(concrete_job_rec), 0);
    auto* const job = reinterpret_cast<concrete_job_rec*>(memory.bytes());
    std::memcpy(job->InstanceID, base_name.data(), std::min(base_name.size(), sizeof(job->InstanceID)));
    std::memcpy(job->TimeBeforeRemoval, minutes.data(), std::min(minutes.size(), sizeof(job->TimeBeforeRemoval)));
    const Guarded identifier(sizeof(job->InstanceID), '?');
    EXPECT_EQ(0, db_set_concretejob(db, job, identifier.bytes()));
    EXPECT_STREQ(job->InstanceID, identifier.bytes());
    return *job;
  }
};

TEST_F(Jobs, WhoseBaseNameLeavesNoRoomHaveIdentifiersOf63Characters) {
  for (const std::size_t length : {60u, 61u, 62u, 63u, 64u}) {
    sql("delete from concrete_job;");
    const std::string base(length, 'b');
    const concrete_job_rec job = created(base, "1");
    EXPECT_EQ((base + "-").substr(0, 63), std::string(job.InstanceID).substr(0, std::min<std::size_t>(length + 1, 63)));
    EXPECT_LE(std::strlen(job.InstanceID), 63u);
    EXPECT_EQ(job.InstanceID, values("select InstanceID from concrete_job;").at(0));
  }
}

TEST_F(Jobs, AreRemovedInTimeHoweverLargeTheNumbersAre) {
  const std::pair<const char*, std::int64_t> kUptimes[] = {
      {"nan", 0}, {"-inf", 0}, {"inf", 0}, {"1e300", kLargest}, {"-1e300", kSmallest}, {"-1.9", -1}, {"1e-300", 0},
  };
  const std::pair<std::string, std::int64_t> kMinutes[] = {
      {"nan", 0},
      {"inf", 0},
      {"1e300", 1},
      {"-1e300", -1},
      {"9223372036854775807", kLargest},
      {"9223372036854775808", kLargest},
      {"-9223372036854775809", kSmallest},
      {std::string(64, '9'), kLargest},
      {"-" + std::string(63, '9'), kSmallest},
      {std::string(64, ' '), 0},
      {std::string(63, ' ') + "7", 7},
  };
  for (const auto& [uptime, seconds] : kUptimes) {
    for (const auto& [text, minutes] : kMinutes) {
      set_uptime(uptime);
      const std::int64_t time = seconds + 60 * minutes;
      const std::int64_t expected = std::clamp<std::int64_t>(time, kSmallest, kLargest);
      EXPECT_EQ(expected, created("job", text).RemovalTime) << uptime << " and " << text;
    }
  }
}

}  // namespace
}  // namespace qmv::test
