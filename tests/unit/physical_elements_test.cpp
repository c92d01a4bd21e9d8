// Physical elements: the statements of each CIM class, what a sensor type says of its entity, and the sensors of a
// category.
#include <cctype>
#include <cstring>
#include <string>

#include "qmv/instances.h"
#include "qmv/sdr.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

// A CIM class, its entity IDs and its statements.
struct Category {
  const char* name;
  std::vector<int> entities;
  const char* condition;  // the statements that join the FRUs are made of these three
  const char* separator;
  const char* gap;
  const char* sensors_count;
  const char* sensors_list;
};

void PrintTo(const Category& category, std::ostream* out) {
  *out << category.name;
}

const Category kSlot{
    "CIM_Slot",
    {5, 26, 27, 28},
    "fru.entityid=5 or ( fru.entityid>= 26 and  fru.entityid<= 28) ",
    ", ",
    " ",
    "select count(*) from full_sdr where (entityid=5 or ( entityid>= 26 and entityid<= 28));",
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=5 or ( entityid>= 26 and "
    "entityid<= "
    "28)) order by entityid;",
};

const Category kCard{
    "CIM_Card",
    {7, 8, 11, 12, 13, 14, 15, 16, 17, 18, 21, 22, 25},
    "fru.entityid=7 or fru.entityid=8 or fru.entityid=21 or fru.entityid=22 or fru.entityid=25 or (fru.entityid>= 11 "
    "and "
    " fru.entityid<= 18)",
    ", ",
    "  ",
    "select count(*) from full_sdr where (entityid=7 or entityid=8 or entityid=21 or entityid=22 or entityid=25 or "
    "(entityid>= 11 and entityid<= 18));",
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=7 or entityid=8 or entityid=21 or "
    "entityid=22 or entityid=25 or (entityid>= 11 and entityid<= 18)) order by entityid;",
};

const Category kChassis{
    "CIM_Chassis",
    {23, 24},
    "fru.entityid=23 or fru.entityid=24 ",
    " ,",
    "  ",
    "select count(*) from full_sdr where (entityid=23 or entityid=24);",
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=23 or entityid=24 ) order by "
    "entityid;",
};

const Category kChip{
    "CIM_Chip",
    {3, 9},
    "fru.entityid=3 or fru.entityid=9 ",
    " ,",
    "  ",
    "select count(*) from full_sdr where (entityid=3 or entityid=9);",
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=3 or entityid=9 ) order by "
    "entityid;",
};

const Category kPhysicalPackage{
    "CIM_PhysicalPackage",
    {4, 6, 10, 20, 29, 40, 41, 43, 44, 45},
    "fru.entityid=4 or fru.entityid=6 or fru.entityid=10 or fru.entityid=20 or fru.entityid=29 or fru.entityid=40 or "
    "fru.entityid=41 or (fru.entityid>= 43 and  fru.entityid<= 45)",
    " ,",
    "  ",
    "select count(*) from full_sdr where (entityid=4 or entityid=6 or entityid=10 or entityid=20 or entityid=29 or "
    "entityid=40 or entityid=41 or (entityid>= 43 and entityid<= 45));",
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=4 or entityid=6 or entityid=10 or "
    "entityid=20 or entityid=29 or entityid=40 or entityid=41 or (entityid>= 43 and entityid<= 45)) order by entityid;",
};

const Category kPhysicalConnector{
    "CIM_PhysicalConnector",
    {31, 36, 42},
    "fru.entityid=31 or fru.entityid=36 or fru.entityid=42",
    " ,",
    "  ",
    "select count(*) from full_sdr where (entityid=31 or entityid=36 or entityid=42);",
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=31 or entityid=36 or entityid=42) "
    "order by entityid;",
};

const Category kPhysicalMemory{
    "CIM_PhysicalMemory",
    {3, 8, 9, 32},
    "fru.entityid=3 or fru.entityid=9 or fru.entityid=8 or fru.entityid=32 ",
    " ,",
    "  ",
    "select count(*)  from full_sdr where (entityid=3 or entityid=9 or  entityid=8 or entityid=32);",
    "select EntityID, EntityInstance, IdStr, SensorNum from full_sdr where (entityid=3 or entityid=9 or entityid=8 or "
    "entityid=32);",
};

// A buffer of a caller, with bytes behind it that nobody may touch.
template <std::size_t Size>
struct Buffer {
  Buffer() { std::memset(bytes, 0x55, sizeof(bytes)); }

  // Whether it holds the text, its terminating zero, and behind that what it held before.
  bool holds(const std::string& text) const {
    std::string whole = text + '\0';
    if (whole.size() > Size) return false;
    whole.resize(sizeof(bytes), 0x55);
    return std::string(bytes, sizeof(bytes)) == whole;
  }
  bool untouched() const { return std::string(bytes, sizeof(bytes)) == std::string(sizeof(bytes), 0x55); }

  char bytes[Size + 64];
};

struct Queries {
  Buffer<277> count;
  Buffer<418> list;

  std::int32_t of_frus(const std::string& name) { return get_sqlqueries(name.c_str(), count.bytes, list.bytes); }
  std::int32_t of_sensors(const std::string& name) {
    return get_sqlqueries_nonFRU(name.c_str(), count.bytes, list.bytes);
  }
};

std::string joined_count(const Category& category) {
  return "select count(*)  from fru join full_sdr on fru.entityid=full_sdr.entityid and (" +
         std::string(category.condition) + ") order by fru.entityid;";
}

std::string joined_list(const Category& category) {
  return "select fru.FruIDSlaveAddr, fru.DeviceAccessAddr, fru.LUNBusID, fru.ChannelNumber, full_sdr.EntityID, "
         "full_sdr.EntityInstance, fru.IdStrLen, IdStr" +
         std::string(category.separator) + "SensorNum" + category.gap +
         "from fru join full_sdr on fru.entityid=full_sdr.entityid and (" + category.condition +
         ") order by fru.entityid;";
}

template <int (*Change)(int)>
std::string changed(std::string text) {
  for (char& letter : text) letter = static_cast<char>(Change(letter));
  return text;
}

class PhysicalElementQueries : public DatabaseTest, public testing::WithParamInterface<Category> {
 protected:
  PhysicalElementQueries() : DatabaseTest("db_dynamic_instance.c") {}

  // Entities 0 to 63, each with a FRU and a full sensor; each column holds its own thousand and the entity.
  void create_entities() {
    sql("create table fru (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, EntityID, EntityInst, IDStrLen);"
        "create table full_sdr (EntityID, EntityInstance, IdStrLen, IdStr, SensorNum);");
    for (int entity = 0; entity < 64; ++entity) {
      const std::string e = std::to_string(entity);
      sql("insert into fru values (1000+" + e + ", 2000+" + e + ", 3000+" + e + ", 4000+" + e + ", " + e +
          ", 0, 5000+" + e + "); insert into full_sdr values (" + e + ", 6000+" + e + ", 0, 's" + e + "', 7000+" + e +
          ");");
    }
  }

  static std::string in_thousand(int thousand, int entity) { return std::to_string(thousand * 1000 + entity); }

  Queries queries;
};

INSTANTIATE_TEST_SUITE_P(EachClass, PhysicalElementQueries,
                         testing::Values(kSlot, kCard, kChassis, kChip, kPhysicalPackage, kPhysicalConnector,
                                         kPhysicalMemory),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_P(PhysicalElementQueries, OfFrusAreHandedOutWholeInAnyCase) {
  const std::string name = GetParam().name;
  for (const std::string& spelling : {name, changed<std::tolower>(name), changed<std::toupper>(name)}) {
    SCOPED_TRACE(spelling);
    Queries fresh;
    EXPECT_EQ(0, fresh.of_frus(spelling));
    EXPECT_STREQ(joined_count(GetParam()).c_str(), fresh.count.bytes);
    EXPECT_STREQ(joined_list(GetParam()).c_str(), fresh.list.bytes);
    EXPECT_TRUE(fresh.count.holds(joined_count(GetParam())));
    EXPECT_TRUE(fresh.list.holds(joined_list(GetParam())));
  }
  EXPECT_EQ(Texts(), statements());
}

TEST_P(PhysicalElementQueries, OfSensorsAreHandedOutWholeInAnyCase) {
  const std::string name = GetParam().name;
  for (const std::string& spelling : {name, changed<std::tolower>(name), changed<std::toupper>(name)}) {
    SCOPED_TRACE(spelling);
    Queries fresh;
    EXPECT_EQ(0, fresh.of_sensors(spelling));
    EXPECT_STREQ(GetParam().sensors_count, fresh.count.bytes);
    EXPECT_STREQ(GetParam().sensors_list, fresh.list.bytes);
    EXPECT_TRUE(fresh.count.holds(GetParam().sensors_count));
    EXPECT_TRUE(fresh.list.holds(GetParam().sensors_list));
  }
  EXPECT_EQ(Texts(), statements());
}

TEST_P(PhysicalElementQueries, OfFrusListTheEntitiesOfTheirClassInOrder) {
  create_entities();
  queries.of_frus(GetParam().name);
  Texts expected;
  for (const int e : GetParam().entities) {
    expected.push_back(in_thousand(1, e) + "|" + in_thousand(2, e) + "|" + in_thousand(3, e) + "|" + in_thousand(4, e) +
                       "|" + std::to_string(e) + "|" + in_thousand(6, e) + "|" + in_thousand(5, e) + "|s" +
                       std::to_string(e) + "|" + in_thousand(7, e));
  }
  EXPECT_EQ(expected, rows_of(queries.list.bytes));
  EXPECT_EQ(std::to_string(expected.size()), value_of(queries.count.bytes));
}

TEST_P(PhysicalElementQueries, OfSensorsListTheEntitiesOfTheirClass) {
  create_entities();
  queries.of_sensors(GetParam().name);
  Texts expected;
  for (const int e : GetParam().entities) {
    expected.push_back(std::to_string(e) + "|" + in_thousand(6, e) + "|s" + std::to_string(e) + "|" +
                       in_thousand(7, e));
  }
  EXPECT_EQ(expected, rows_of(queries.list.bytes));
  EXPECT_EQ(std::to_string(expected.size()), value_of(queries.count.bytes));
}

TEST_P(PhysicalElementQueries, OfNamesThatAreAlmostTheirsAreUnknown) {
  const std::string name = GetParam().name;
  for (const std::string& other :
       {name.substr(0, name.size() - 1), name + "s", " " + name, name + " ", name.substr(4)}) {
    SCOPED_TRACE(other);
    EXPECT_EQ(1, queries.of_frus(other));
    EXPECT_EQ(1, queries.of_sensors(other));
    EXPECT_TRUE(queries.count.untouched() && queries.list.untouched());
  }
}

// The sensor types of an entity's full sensors stand in (SensorType, EntityID, EntityInstance).
class PhysicalElements : public DatabaseTest {
 protected:
  PhysicalElements() : DatabaseTest("db_dynamic_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table full_sdr (SensorType, EntityID, EntityInstance);"
        "insert into full_sdr values (3, 3, 1), (3, 3, 1), (7, 3, 1), (8, 3, 1), (4, 3, 2), (5, 5, 9);");
  }

  std::int32_t equals(std::int32_t entity, std::int32_t instance) {
    return db_check_is_entity_id_equals_to_sen_type(db, entity, instance);
  }
  std::int32_t differs(std::int32_t entity, std::int32_t instance) {
    return db_check_is_entity_id_not_equals_to_sen_type(db, entity, instance, &type);
  }
  LogLine counted(int count) const {
    return trace("Successfully returns the status. Count value : " + std::to_string(count));
  }
  static void expect_compile_errors(const Lines& lines, std::size_t number) {
    EXPECT_EQ(number, lines.size());
    for (const LogLine& line : lines) {
      EXPECT_EQ(130, line.level);
      EXPECT_EQ("db_dynamic_instance.c", line.module);
      EXPECT_EQ(0u, line.text.find("SQL Compilation error: "));
    }
  }

  std::int32_t type = -77;
};

TEST_F(PhysicalElements, QueriesOfTheChassisReadLikeThis) {
  Queries queries;
  EXPECT_EQ(0, queries.of_frus("cim_chassis"));
  EXPECT_STREQ(
      "select count(*)  from fru join full_sdr on fru.entityid=full_sdr.entityid and (fru.entityid=23 or "
      "fru.entityid=24 ) order by fru.entityid;",
      queries.count.bytes);
  EXPECT_STREQ(
      "select fru.FruIDSlaveAddr, fru.DeviceAccessAddr, fru.LUNBusID, fru.ChannelNumber, full_sdr.EntityID, "
      "full_sdr.EntityInstance, fru.IdStrLen, IdStr ,SensorNum  from fru join full_sdr on "
      "fru.entityid=full_sdr.entityid and (fru.entityid=23 or fru.entityid=24 ) order by fru.entityid;",
      queries.list.bytes);
}

TEST_F(PhysicalElements, LongestQueriesFillTheirBuffers) {
  EXPECT_EQ(277, QMV_COUNT_QUERY_SIZE);
  EXPECT_EQ(418, QMV_LIST_QUERY_SIZE);
  Queries queries;
  EXPECT_EQ(0, queries.of_frus("CIM_PhysicalPackage"));
  EXPECT_EQ(277u, std::strlen(queries.count.bytes) + 1);
  EXPECT_EQ(418u, std::strlen(queries.list.bytes) + 1);
}

TEST_F(PhysicalElements, MemoryListOfSensorsAloneHasNoOrder) {
  for (const Category& category :
       {kSlot, kCard, kChassis, kChip, kPhysicalPackage, kPhysicalConnector, kPhysicalMemory}) {
    SCOPED_TRACE(category.name);
    Queries queries;
    queries.of_sensors(category.name);
    const bool ordered = std::strstr(queries.list.bytes, ") order by entityid;") != nullptr;
    EXPECT_EQ(std::strcmp(category.name, "CIM_PhysicalMemory") != 0, ordered);
  }
}

TEST_F(PhysicalElements, QueriesOfAnotherClassAreUnknownAndLeaveTheBuffers) {
  Queries queries;
  for (const std::string& name : {std::string("CIM_Fan"), std::string(), std::string(100000, 'C')}) {
    EXPECT_EQ(1, queries.of_frus(name));
    EXPECT_EQ(1, queries.of_sensors(name));
  }
  EXPECT_TRUE(queries.count.untouched() && queries.list.untouched());
  EXPECT_EQ(Texts(), statements());
}

TEST_F(PhysicalElements, EqualTypeCheckIsZeroWhenTheEntityHasSuchASensor) {
  EXPECT_EQ(0, equals(3, 1));
  EXPECT_EQ(Texts({"select count(*) from full_sdr where \t\t\tEntityID == SensorType and EntityID == 3     \t\tand "
                   "EntityInstance == 1;"}),
            statements());
  EXPECT_EQ(Lines({counted(2)}), logged());
}

TEST_F(PhysicalElements, EqualTypeCheckIsOneWithoutSuchASensor) {
  EXPECT_EQ(1, equals(3, 2)) << "its sensor has another type";
  EXPECT_EQ(1, equals(5, 1)) << "another instance has it";
  EXPECT_EQ(1, equals(-2147483647 - 1, 2147483647)) << "no sensor at all";
  EXPECT_EQ(Lines({counted(0), counted(0), counted(0)}), logged());
}

TEST_F(PhysicalElements, EqualTypeCheckWithoutATableReturnsSqlitesCode) {
  sql("drop table full_sdr;");
  EXPECT_EQ(SQLITE_ERROR, equals(3, 1));
  EXPECT_EQ(Lines({no_such_table("full_sdr")}), logged());
}

TEST_F(PhysicalElements, EqualTypeCheckThatDoesNotCompileReturnsSqlitesOwnCode) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  EXPECT_EQ(SQLITE_INTERNAL, equals(3, 1));
  boundary().fail_text = 1;
  EXPECT_EQ(SQLITE_MISUSE, equals(3, 1));
  expect_compile_errors(logged(), 2);
}

TEST_F(PhysicalElements, EqualTypeCheckWithoutAStatementIsOne) {
  boundary().miss_statement = 1;
  EXPECT_EQ(1, equals(3, 1));
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_F(PhysicalElements, EqualTypeCheckWithoutARowLeavesTheStatementOpen) {
  boundary().steps = {{1, SQLITE_BUSY}};
  EXPECT_EQ(1, equals(3, 1));
  EXPECT_EQ(Lines({trace("No records found")}), logged());
  expect_left_open(1);
}

TEST_F(PhysicalElements, ChecksTakeNumbersBelowZero) {
  EXPECT_EQ(1, equals(-3, -1));
  EXPECT_EQ(1, differs(-3, -1));
  const Texts given = statements();
  EXPECT_EQ(2u, given.size());
  for (const std::string& statement : given)
    EXPECT_NE(std::string::npos, statement.find("EntityID == -3 ")) << statement;
  expect_left_open(1);
  logged();
}

TEST_F(PhysicalElements, EqualTypeCheckDoesNotLookAtTheCodeOfFinalize) {
  boundary().finalizes = {{1, SQLITE_IOERR}, {2, SQLITE_IOERR}};
  EXPECT_EQ(0, equals(3, 1));
  EXPECT_EQ(1, equals(3, 2));
  logged();
}

TEST_F(PhysicalElements, OtherTypeCheckAnswersTheTypeOfTheFirstSuchSensor) {
  EXPECT_EQ(0, differs(3, 1));
  EXPECT_EQ(7, type);
  EXPECT_EQ(Texts({"select SensorType from full_sdr where \t\t\tEntityID != SensorType and EntityID == 3 \t\t\tand "
                   "EntityInstance == 1;"}),
            statements());
  EXPECT_EQ(Lines({trace("Successfully returns the status.Sensor Type : 7")}), logged());
}

TEST_F(PhysicalElements, OtherTypeCheckWithoutARowLeavesTheStatementOpen) {
  EXPECT_EQ(1, differs(5, 9));
  EXPECT_EQ(-77, type);
  EXPECT_EQ(Lines(), logged());
  expect_left_open(1);
}

TEST_F(PhysicalElements, OtherTypeCheckWithoutATableReturnsSqlitesCode) {
  sql("drop table full_sdr;");
  EXPECT_EQ(SQLITE_ERROR, differs(3, 1));
  EXPECT_EQ(-77, type);
  EXPECT_EQ(Lines({no_such_table("full_sdr")}), logged());
}

TEST_F(PhysicalElements, OtherTypeCheckThatDoesNotCompileReturnsSqlitesOwnCode) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  EXPECT_EQ(SQLITE_INTERNAL, differs(3, 1));
  boundary().fail_text = 1;
  EXPECT_EQ(SQLITE_MISUSE, differs(3, 1));
  expect_compile_errors(logged(), 2);
}

TEST_F(PhysicalElements, OtherTypeCheckWithoutAStatementIsOne) {
  boundary().miss_statement = 1;
  EXPECT_EQ(1, differs(3, 1));
  EXPECT_EQ(-77, type);
  EXPECT_EQ(Lines({trace("No records found")}), logged());
}

TEST_F(PhysicalElements, OtherTypeCheckReturnsTheCodeOfFinalize) {
  boundary().finalizes = {{1, SQLITE_IOERR}};
  EXPECT_EQ(SQLITE_IOERR, differs(3, 1));
  EXPECT_EQ(7, type);
  logged();
}

// A sensor table, as far as the elements go: the columns that have a part in them, by index.
struct SensorTable {
  const char* name;
  int columns;
  int id_string_length;
  int id_string;
  int is_fru_available;
  int physical_element;
  int fru;  // the first of fifteen
};

constexpr SensorTable kCompactSensors{"compact_sdr", 45, 25, 26, 28, 29, 30};
constexpr SensorTable kFullSensors{"full_sdr", 63, 43, 44, 46, 47, 48};

class PhysicalAssets : public DatabaseTest {
 protected:
  PhysicalAssets() : DatabaseTest("db_dynamic_instance.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    create(kCompactSensors);
    create(kFullSensors);
  }

  void create(const SensorTable& table) {
    std::string columns;
    for (int i = 0; i < table.columns; ++i) {
      std::string name = "c" + std::to_string(i);
      if (i == 5) name = "EntityID";
      if (i == 6) name = "EntityInstance";
      if (i == table.id_string) name = "IdStr";
      if (i == table.physical_element) name = "PhysicalElement";
      columns += (i == 0 ? "" : ", ") + name;
    }
    sql("create table " + std::string(table.name) + " (" + columns + ");");
  }

  // A sensor in which column n of a row that begins at `first` holds first + n, texts with a t in front; of the
  // category 4.
  void insert(const SensorTable& table, int first) {
    std::string values;
    for (int i = 0; i < table.columns; ++i) {
      const std::string number = std::to_string(first + i);
      const bool is_text = i == 0 || i == 9 || i == 13 || i == table.id_string || i >= table.fru + 5;
      values += (i == 0 ? "" : ", ") + (is_text ? "'t" + number + "'" : number);
    }
    const std::string name = table.name;
    sql("insert into " + name + " values (" + values + "); update " + name +
        " set PhysicalElement = 4 where EntityID = " + std::to_string(first + 5) + ";");
  }

  static void expect_asset(const SensorTable& table, int first, const fru_sdr_rec& record) {
    const auto text = [&](int column) { return "t" + std::to_string(first + column); };
    const int fru = table.fru;
    EXPECT_EQ(first + fru, record.FruIDSlaveAddr);
    EXPECT_EQ(first + fru + 1, record.DeviceAccessAddr);
    EXPECT_EQ(first + fru + 2, record.LUNBusID);
    EXPECT_EQ(first + fru + 3, record.ChannelNumber);
    EXPECT_EQ(first + 5, record.EntityID);
    EXPECT_EQ(first + 6, record.EntityInst);
    EXPECT_EQ(first + fru + 4, record.IDStrLen);
    EXPECT_EQ(text(fru + 5), field(record.DevIdStr));
    EXPECT_EQ(text(fru + 6), field(record.ChassisSerNumber));
    EXPECT_EQ(text(fru + 7), field(record.ChassisPartNumber));
    EXPECT_EQ(text(fru + 8), field(record.ChassisCustFields));
    EXPECT_EQ(text(fru + 9), field(record.ProdSerNumber));
    EXPECT_EQ(text(fru + 10), field(record.ProdPartNumber));
    EXPECT_EQ(text(fru + 11), field(record.ProdMfrName));
    EXPECT_EQ(text(fru + 12), field(record.BrdSerNumber));
    EXPECT_EQ(text(fru + 13), field(record.BrdPartNumber));
    EXPECT_EQ(text(fru + 14), field(record.BrdMfrName));
    EXPECT_EQ(first + table.id_string_length, record.IdStrLen);
    EXPECT_EQ(text(table.id_string), field(record.IdStr));
    EXPECT_EQ(first + table.is_fru_available, record.IsFRUAvailable);
    EXPECT_EQ(first + 4, record.SensorNum);
  }

  static void expect_zero(const fru_sdr_rec& record) {
    EXPECT_EQ(std::string(sizeof(record), '\0'), std::string(reinterpret_cast<const char*>(&record), sizeof(record)));
  }

  std::int32_t get(std::int32_t physical_element) {
    return db_get_all_physicalasset_element(db, &count, records.out(), physical_element);
  }

  // Expects the answer of a call that failed: nothing is handed out.
  void expect_nothing() {
    EXPECT_EQ(0, count);
    EXPECT_EQ(nullptr, records.get());
  }

  // The lines that were logged on this family's own account; those of the sensor tables' accessors are dropped.
  Lines own_lines() {
    Lines lines = logged();
    std::erase_if(lines, [](const LogLine& line) { return line.module == "db_sdrd.c"; });
    return lines;
  }

  std::int32_t count = -1;
  Owned<fru_sdr_rec> records;
};

TEST_F(PhysicalAssets, AreTheSensorsOfTheCategoryCompactOnesFirst) {
  for (const int first : {1000, 2000}) insert(kCompactSensors, first);
  for (const int first : {100, 1000, 5000}) insert(kFullSensors, first);
  EXPECT_EQ(0, get(4));
  ASSERT_EQ(5, count);
  expect_asset(kCompactSensors, 1000, records[0]);
  expect_asset(kCompactSensors, 2000, records[1]);
  expect_asset(kFullSensors, 100, records[2]);
  expect_asset(kFullSensors, 1000, records[3]);
  expect_asset(kFullSensors, 5000, records[4]);
  EXPECT_EQ(Lines(), own_lines());
}

TEST_F(PhysicalAssets, AreReadByTheirCategoryFromBothTables) {
  insert(kCompactSensors, 1000);
  insert(kFullSensors, 2000);
  get(4);
  EXPECT_EQ(Texts({"select count(*) from (select * from compact_sdr where (PhysicalElement & 4) = 4 GROUP BY "
                   "EntityID,EntityInstance);",
                   "select * from compact_sdr where (PhysicalElement & 4) = 4 GROUP BY EntityID,EntityInstance;",
                   "select count(*) from (select * from full_sdr where (PhysicalElement & 4) = 4 GROUP BY "
                   "EntityID,EntityInstance);",
                   "select * from full_sdr where (PhysicalElement & 4) = 4 GROUP BY EntityID,EntityInstance;"}),
            statements());
  logged();
}

TEST_F(PhysicalAssets, OfOneTableAreEnough) {
  insert(kCompactSensors, 1000);
  EXPECT_EQ(0, get(4));
  ASSERT_EQ(1, count);
  expect_asset(kCompactSensors, 1000, records[0]);
  std::free(records.get());
  sql("delete from compact_sdr;");
  insert(kFullSensors, 2000);
  EXPECT_EQ(0, get(4));
  ASSERT_EQ(1, count);
  expect_asset(kFullSensors, 2000, records[0]);
  EXPECT_EQ(Lines(), own_lines());
}

TEST_F(PhysicalAssets, OfACategoryWithoutSensorsAreNone) {
  insert(kCompactSensors, 1000);
  insert(kFullSensors, 2000);
  fru_sdr_rec untouched;
  fru_sdr_rec* none = &untouched;
  EXPECT_EQ(0, db_get_all_physicalasset_element(db, &count, &none, 6));
  EXPECT_EQ(nullptr, none);
  EXPECT_EQ(0, count);
  EXPECT_EQ(0, boundary().allocations);
  EXPECT_EQ(Lines(), own_lines());
}

TEST_F(PhysicalAssets, OfCategoryZeroCountEverySensorAndReadOneOfEachEntity) {
  for (int i = 0; i < 2; ++i) insert(kCompactSensors, 1000);
  for (int i = 0; i < 3; ++i) insert(kFullSensors, 2000);
  EXPECT_EQ(0, get(0));
  ASSERT_EQ(5, count);
  expect_asset(kCompactSensors, 1000, records[0]);
  expect_zero(records[1]);
  expect_asset(kFullSensors, 2000, records[2]);
  expect_zero(records[3]);
  expect_zero(records[4]);
  logged();
}

TEST_F(PhysicalAssets, TextsAsWideAsTheirFieldHaveNoTerminator) {
  for (const SensorTable& table : {kCompactSensors, kFullSensors}) {
    insert(table, 1000);
    sql("update " + std::string(table.name) + " set IdStr = '" + std::string(300, 'x') + "', c" +
        std::to_string(table.columns - 1) + " = '" + std::string(256, 'y') + "';");
  }
  EXPECT_EQ(0, get(4));
  for (const std::size_t i : {0u, 1u}) {
    EXPECT_EQ(std::string(256, 'x'), field(records[i].IdStr));
    EXPECT_EQ(std::string(256, 'y'), field(records[i].BrdMfrName));
    EXPECT_NE(0, records[i].IsFRUAvailable);
  }
  logged();
}

TEST_F(PhysicalAssets, NullColumnsReadAsZeroAndEmpty) {
  sql("insert into compact_sdr (PhysicalElement) values (4); insert into full_sdr (PhysicalElement) values (4);");
  EXPECT_EQ(0, get(4));
  ASSERT_EQ(2, count);
  expect_zero(records[0]);
  expect_zero(records[1]);
  logged();
}

TEST_F(PhysicalAssets, WithoutTheCompactTableFail) {
  sql("drop table compact_sdr;");
  insert(kFullSensors, 1000);
  EXPECT_EQ(1, get(4));
  expect_nothing();
  EXPECT_EQ("select * from full_sdr where (PhysicalElement & 4) = 4 GROUP BY EntityID,EntityInstance;",
            statements().back())
      << "the full sensors are read all the same";
  EXPECT_EQ(Lines(), own_lines());
}

TEST_F(PhysicalAssets, WithoutTheFullTableFail) {
  insert(kCompactSensors, 1000);
  sql("drop table full_sdr;");
  testing::internal::CaptureStderr();
  EXPECT_EQ(1, get(4));
  testing::internal::GetCapturedStderr();
  expect_nothing();
  EXPECT_EQ(Lines(), own_lines());
}

TEST_F(PhysicalAssets, WhoseSensorsDoNotFitIntoMemoryFail) {
  insert(kCompactSensors, 1000);
  insert(kFullSensors, 1000);
  for (const int allocation : {1, 2}) {
    SCOPED_TRACE(allocation);
    boundary().fail_allocation = allocation;
    EXPECT_EQ(1, get(4));
    expect_nothing();
    EXPECT_EQ(Lines(), own_lines());
    expect_left_open(1);
  }
}

TEST_F(PhysicalAssets, WithoutMemoryForTheResultFailInSilence) {
  insert(kCompactSensors, 1000);
  insert(kFullSensors, 1000);
  boundary().fail_allocation = 3;
  EXPECT_EQ(1, get(4));
  expect_nothing();
  for (const LogLine& line : logged()) EXPECT_EQ("db_sdrd.c", line.module);
}

TEST_F(PhysicalAssets, OfMoreSensorsThanAnInt32CountsFail) {
  insert(kCompactSensors, 1000);
  insert(kFullSensors, 1000);
  sqlite3_create_function(
      db, "count", 0, SQLITE_UTF8, nullptr, nullptr, [](sqlite3_context*, int, sqlite3_value**) {},
      [](sqlite3_context* context) { sqlite3_result_int(context, INT32_MAX / 2 + 1); });
  boundary().largest_array = 1;
  EXPECT_EQ(1, get(4));
  expect_nothing();
  EXPECT_EQ(Lines(), own_lines());
}

TEST_F(PhysicalAssets, WhoseFinalizeFailsFail) {
  insert(kCompactSensors, 1000);
  insert(kFullSensors, 1000);
  for (const int finalize : {2, 4}) {
    SCOPED_TRACE(finalize);
    boundary().finalizes = {{finalize, SQLITE_IOERR}};
    EXPECT_EQ(1, get(4));
    expect_nothing();
    boundary().finalizes.clear();
  }
  EXPECT_EQ(Lines(), own_lines());
}

}  // namespace
}  // namespace qmv::test
