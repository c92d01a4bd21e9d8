// Power supplies: named after the sensors of their entities, in the instance database.
#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

#include "qmv/instances.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

constexpr char kCountStatement[] =
    "SELECT count(*) FROM (SELECT * FROM (                 SELECT  EntityID,EntityInstance,SensorNum FROM compact_sdr "
    "WHERE (PhysicalElement & 1024) = 1024                 UNION                 SELECT "
    "EntityID,EntityInstance,SensorNum "
    "FROM full_sdr WHERE  (PhysicalElement & 1024) = 1024) \t\t\t\tGROUP BY EntityID,EntityInstance);";

constexpr char kListStatement[] =
    "SELECT * FROM ( \t \tSELECT  EntityID,EntityInstance,SensorNum FROM compact_sdr WHERE (PhysicalElement & 1024) = "
    "1024 \t\tUNION \t\tSELECT EntityID,EntityInstance,SensorNum FROM full_sdr WHERE  (PhysicalElement & 1024) = "
    "1024)\t\tGROUP BY EntityID,EntityInstance;";

std::string find_statement(const std::string& number) {
  return "SELECT * FROM (                 SELECT  EntityID,EntityInstance,SensorNum FROM compact_sdr WHERE "
         "(PhysicalElement & 1024) = 1024 and SensorNum = " +
         number +
         "                UNION                 SELECT EntityID,EntityInstance,SensorNum FROM full_sdr WHERE  "
         "(PhysicalElement & 1024) = 1024 and SensorNum = " +
         number + ");";
}

class PowerSupplies : public DatabaseTest {
 protected:
  PowerSupplies() : DatabaseTest("db_dynamic_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sqlite3_reset_auto_extension();  // an earlier test's list is no memory of this one
    memory_before_ = sqlite3_memory_used();
    in_file(
        "create table compact_sdr (EntityID, EntityInstance, SensorNum, PhysicalElement);"
        "create table full_sdr (EntityID, EntityInstance, SensorNum, PhysicalElement);");
  }

  // Fails the test when a connection that the library opened is still there.
  void TearDown() override {
    EXPECT_EQ(memory_before_, sqlite3_memory_used());
    DatabaseTest::TearDown();
  }

  // Runs SQL on the file, from outside.
  void in_file(const std::string& text) { sql(open(scratch() + "/cim.db").get(), text); }

  void insert(const std::string& table, int entity, int instance, int number,
              const std::string& physical_element = "1024") {
    in_file("insert into " + table + " values (" + std::to_string(entity) + ", " + std::to_string(instance) + ", " +
            std::to_string(number) + ", " + physical_element + ");");
  }

  // Runs SQL on the file once, right before the library prepares a statement that begins so.
  void in_file_before(const std::string& statement, const std::string& text) {
    boundary().change_before = statement;
    boundary().change = [this, text] { in_file(text); };
  }

  std::int32_t find(std::int32_t number) {
    char* name = &untouched_;
    const std::int32_t status = get_ps_from_db(&name, number);
    found = read(name);
    return status;
  }
  // Reads as many texts as were counted, or as many slots as the test knows of.
  std::int32_t list(std::int32_t slots = 0) {
    char* none = &untouched_;
    char** names = &none;
    count = -7;
    listed.clear();
    const std::int32_t status = get_all_ps_from_db(&names, &count);
    if (names == nullptr || names == &none) {
      listed.push_back(read(names == nullptr ? nullptr : none));
      return status;
    }
    for (std::int32_t i = 0; i < std::max(slots, count); ++i) listed.push_back(read(names[i]));
    std::free(names);
    return status;
  }

  void expect_failed_list() {
    EXPECT_EQ(1, list());
    EXPECT_EQ(Texts({"(null)"}), listed);
    EXPECT_EQ(0, count);
  }

  std::string found;
  Texts listed;
  std::int32_t count = -7;

 private:
  // Reads a text and releases it. Its block has 256 bytes, zeros behind it.
  std::string read(char* text) {
    if (text == nullptr) return "(null)";
    if (text == &untouched_) return "(untouched)";
    EXPECT_EQ(256u, size_of(text));
    const std::string whole(text, 256);
    const std::string name = text;
    EXPECT_EQ(std::string(256 - name.size(), '\0'), whole.substr(name.size()));
    std::free(text);
    return name;
  }

  char untouched_ = 0;
  sqlite3_int64 memory_before_ = 0;
};

TEST_F(PowerSupplies, AreNamedByEntityInstanceSensorAndClass) {
  insert("compact_sdr", 10, 1, 48);
  EXPECT_EQ(0, find(48));
  EXPECT_EQ("10:1:48:PowerSupply", found);
  EXPECT_EQ(Texts({"/tmp/cim.db"}), boundary().opened);
  EXPECT_EQ(0, boundary().busy_handlers_installed);
  EXPECT_EQ(Texts({find_statement("48")}), statements());
}

TEST_F(PowerSupplies, AreFoundInBothTablesUnderBothOfTheirEntities) {
  insert("compact_sdr", 10, 1, 48);
  insert("full_sdr", 19, 2, 49);
  EXPECT_EQ(0, find(49));
  EXPECT_EQ("19:2:49:PowerSupply", found);
  EXPECT_EQ(0, find(48));
  EXPECT_EQ("10:1:48:PowerSupply", found);
}

TEST_F(PowerSupplies, AreNamedWithAnyNumber) {
  insert("full_sdr", 10, INT_MAX, INT_MIN);
  EXPECT_EQ(0, find(INT_MIN));
  EXPECT_EQ("10:2147483647:-2147483648:PowerSupply", found);
  EXPECT_EQ(0, list());
  EXPECT_EQ(Texts({"10:2147483647:-2147483648:PowerSupply"}), listed);
}

TEST_F(PowerSupplies, OfOneSensorNumberAreNamedAfterTheFirstRowThatIsOne) {
  insert("compact_sdr", 3, 1, 48);
  insert("compact_sdr", 19, 1, 48);
  insert("full_sdr", 10, 2, 48);
  insert("full_sdr", 40, 1, 48);
  std::string first;
  for (const std::string& row : rows_of(open(scratch() + "/cim.db").get(), find_statement("48"))) {
    if (first.empty() && (row.rfind("10|", 0) == 0 || row.rfind("19|", 0) == 0)) first = row;
  }
  std::replace(first.begin(), first.end(), '|', ':');
  EXPECT_EQ(0, find(48));
  EXPECT_EQ(first + ":PowerSupply", found);
}

TEST_F(PowerSupplies, AreNotFoundInARowThatReadsAsAnotherNumberThanItWasChosenBy) {
  insert("compact_sdr", 10, 1, 49);
  insert("full_sdr", 10, 2, 48);
  in_file(
      "create index damaged on compact_sdr (EntityID) where SensorNum = 49;"
      "pragma writable_schema = on;"
      "update sqlite_master set sql = replace(sql, '49', '48') where name = 'damaged';");
  ASSERT_EQ(Texts({"10|1|49", "10|2|48"}), rows_of(open(scratch() + "/cim.db").get(), find_statement("48")))
      << "SQLite believes the index";
  EXPECT_EQ(0, find(48));
  EXPECT_EQ("10:2:48:PowerSupply", found);
}

TEST_F(PowerSupplies, AreNotTheSensorsOfOtherEntities) {
  insert("compact_sdr", 29, 1, 48);
  EXPECT_EQ(1, find(48));
  EXPECT_EQ("(untouched)", found);
}

TEST_F(PowerSupplies, AreNotFoundUnderANumberThatNoSensorHas) {
  insert("compact_sdr", 10, 1, 48);
  EXPECT_EQ(1, find(49));
  EXPECT_EQ("(untouched)", found);
}

TEST_F(PowerSupplies, AreFlaggedByOneBitWhateverTheOthers) {
  int number = 0;
  for (const char* mask : {"1025", "2047", "-1"}) {
    SCOPED_TRACE(mask);
    insert("compact_sdr", 10, 1, ++number, mask);
    EXPECT_EQ(0, find(number));
  }
  for (const char* mask : {"1023", "2048", "0", "NULL", "'text'"}) {
    SCOPED_TRACE(mask);
    insert("compact_sdr", 10, 2, ++number, mask);
    insert("full_sdr", 10, 2, number, mask);
    EXPECT_EQ(1, find(number));
    EXPECT_EQ("(untouched)", found);
  }
  EXPECT_EQ(0, list());
  EXPECT_EQ(1, count) << "of instance 1";
}

TEST_F(PowerSupplies, AreNoEntityOutsideTheClassMap) {
  for (const int entity : {-1, 54, 64, 255, INT_MIN, INT_MAX}) {
    SCOPED_TRACE(entity);
    insert("compact_sdr", entity, 1, 48);
    insert("full_sdr", entity, 2, 48);
    EXPECT_EQ(1, find(48));
    EXPECT_EQ("(untouched)", found);
  }
  EXPECT_EQ(0, list(12));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Texts(12, "(null)"), listed);
}

TEST_F(PowerSupplies, AreListedOneAnEntityAtTheArraysStart) {
  insert("full_sdr", 3, 1, 5);
  insert("compact_sdr", 10, 1, 48);
  insert("compact_sdr", 10, 2, 49);
  insert("full_sdr", 19, 1, 50);
  insert("full_sdr", 40, 1, 51);
  EXPECT_EQ(0, list(5));
  EXPECT_EQ(3, count);
  EXPECT_EQ(Texts({"10:1:48:PowerSupply", "10:2:49:PowerSupply", "19:1:50:PowerSupply", "(null)", "(null)"}), listed);
  EXPECT_EQ(4, boundary().allocations) << "the array, and each text by itself";
  EXPECT_EQ(Texts({"/tmp/cim.db"}), boundary().opened);
  EXPECT_EQ(0, boundary().busy_handlers_installed);
  EXPECT_EQ(Texts({kCountStatement, kListStatement}), statements());
}

TEST_F(PowerSupplies, AreEntities10And19OfAllThatTheClassMapHas) {
  for (int entity = 0; entity < 54; ++entity) insert("compact_sdr", entity, 1, 100 + entity);
  EXPECT_EQ(0, list(54));
  EXPECT_EQ(2, count);
  Texts expected(54, "(null)");
  expected[0] = "10:1:110:PowerSupply";
  expected[1] = "19:1:119:PowerSupply";
  EXPECT_EQ(expected, listed);
  for (int entity = 0; entity < 54; ++entity) EXPECT_EQ(entity == 10 || entity == 19 ? 0 : 1, find(100 + entity));
}

TEST_F(PowerSupplies, RecordedInBothTablesAreListedOnce) {
  insert("compact_sdr", 10, 1, 48);
  insert("full_sdr", 10, 1, 48);
  insert("compact_sdr", 19, 1, 50);
  insert("full_sdr", 19, 1, 51);
  EXPECT_EQ(0, list(2));
  const Texts kept = rows_of(open(scratch() + "/cim.db").get(), kListStatement);
  ASSERT_EQ(2u, kept.size());
  Texts expected;
  for (std::string row : kept) {
    std::replace(row.begin(), row.end(), '|', ':');
    expected.push_back(row + ":PowerSupply");
  }
  EXPECT_EQ(expected, listed);
}

TEST_F(PowerSupplies, OfNoPhysicalElementsLeaveBothOutputs) {
  insert("compact_sdr", 10, 1, 48, "256");
  EXPECT_EQ(0, list());
  EXPECT_EQ(Texts({"(untouched)"}), listed);
  EXPECT_EQ(-7, count);
  EXPECT_EQ(0, boundary().allocations);
  EXPECT_EQ(Texts({kCountStatement}), statements());
}

TEST_F(PowerSupplies, OfElementsThatAreNoneAreAnArrayOfNulls) {
  insert("compact_sdr", 29, 1, 48);
  insert("full_sdr", 30, 1, 49);
  EXPECT_EQ(0, list(2));
  EXPECT_EQ(0, count);
  EXPECT_EQ(Texts({"(null)", "(null)"}), listed);
}

TEST_F(PowerSupplies, ThatAppearAfterTheCountAreNotListed) {
  insert("compact_sdr", 10, 1, 48);
  in_file_before("SELECT * FROM ( \t", "insert into full_sdr values (10, 2, 49, 1024), (10, 3, 50, 1024);");
  EXPECT_EQ(0, list());
  EXPECT_EQ(1, count);
  EXPECT_EQ(Texts({"10:1:48:PowerSupply"}), listed);
}

TEST_F(PowerSupplies, ThatVanishAfterTheCountLeaveNulls) {
  insert("compact_sdr", 10, 1, 48);
  insert("compact_sdr", 10, 2, 49);
  in_file_before("SELECT * FROM ( \t", "delete from compact_sdr where EntityInstance = 1;");
  EXPECT_EQ(0, list(2));
  EXPECT_EQ(1, count);
  EXPECT_EQ(Texts({"10:2:49:PowerSupply", "(null)"}), listed);
}

TEST_F(PowerSupplies, OfAFileThatCannotBeOpenedAreAFailureAndItsHandleIsClosed) {
  boundary().fixed_files = "/nonexistent";
  EXPECT_EQ(1, find(48));
  EXPECT_EQ("(untouched)", found);
  expect_failed_list();
  EXPECT_EQ(Texts(), statements());
}

TEST_F(PowerSupplies, OfAFileWithoutASensorTableAreAFailureInSilence) {
  insert("compact_sdr", 10, 1, 48);
  in_file("drop table full_sdr;");
  EXPECT_EQ(1, find(48));
  EXPECT_EQ("(untouched)", found);
  expect_failed_list();
}

TEST_F(PowerSupplies, OfAFileThatIsNoDatabaseAreAFailure) {
  in_file("pragma user_version = 1;");
  std::FILE* file = std::fopen((scratch() + "/cim.db").c_str(), "wb");
  std::fputs(std::string(4096, 'x').c_str(), file);
  std::fclose(file);
  EXPECT_EQ(1, find(48));
  expect_failed_list();
}

TEST_F(PowerSupplies, OfALockedFileAreAFailureAtOnce) {
  insert("compact_sdr", 10, 1, 48);
  const Connection other = open(scratch() + "/cim.db");
  sql(other.get(), "begin exclusive;");
  EXPECT_EQ(1, find(48));
  EXPECT_EQ("(untouched)", found);
  expect_failed_list();
  EXPECT_EQ(std::vector<unsigned>(), boundary().sleeps);
}

TEST_F(PowerSupplies, AreNotFoundWhenTheRowsEndEarly) {
  insert("compact_sdr", 10, 1, 48);
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(1, find(48));
  EXPECT_EQ("(untouched)", found);
}

TEST_F(PowerSupplies, WhoseCountGivesNoRowLeaveBothOutputs) {
  insert("compact_sdr", 10, 1, 48);
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(0, list());
  EXPECT_EQ(Texts({"(untouched)"}), listed);
  EXPECT_EQ(-7, count);
}

TEST_F(PowerSupplies, WhoseListDoesNotCompileAreAFailureWithTheArrayReleased) {
  insert("compact_sdr", 10, 1, 48);
  boundary().prepares = {{2, SQLITE_INTERNAL}};
  expect_failed_list();
}

TEST_F(PowerSupplies, WhoseTableVanishesAfterTheCountAreAnArrayOfNulls) {
  insert("compact_sdr", 10, 1, 48);
  in_file_before("SELECT * FROM ( \t", "drop table full_sdr;");
  EXPECT_EQ(0, list(1)) << "it still compiles, and ends before the first row";
  EXPECT_EQ(0, count);
  EXPECT_EQ(Texts({"(null)"}), listed);
}

TEST_F(PowerSupplies, WhoseTextsCannotBeFormattedAreAFailure) {
  insert("compact_sdr", 10, 1, 48);
  boundary().fail_text = 1;
  EXPECT_EQ(1, find(48));
  EXPECT_EQ(Texts({"(null)"}), statements());
  boundary().fail_text = 1;
  expect_failed_list();
  EXPECT_EQ(Texts({"(null)"}), statements());
  boundary().fail_text = 2;
  expect_failed_list();
  EXPECT_EQ(Texts({kCountStatement, "(null)"}), statements());
}

TEST_F(PowerSupplies, WithoutMemoryForTheirNameAreAFailure) {
  insert("compact_sdr", 10, 1, 48);
  boundary().fail_allocation = 1;
  EXPECT_EQ(1, find(48));
  EXPECT_EQ("(null)", found);
}

TEST_F(PowerSupplies, WithoutMemoryForAnyPartOfTheListAreAFailureWithTheRestReleased) {
  for (int instance = 1; instance <= 3; ++instance) insert("compact_sdr", 10, instance, 48);
  for (const int allocation : {1, 2, 3, 4}) {
    SCOPED_TRACE(allocation);
    boundary().fail_allocation = allocation;
    expect_failed_list();
    EXPECT_EQ(0u, boundary().blocks_alive.size());
  }
  EXPECT_EQ(0, list());
  EXPECT_EQ(3, count);
}

}  // namespace
}  // namespace qmv::test
