// Managed systems, table "device".
#include <malloc.h>

#include <ostream>
#include <string>

#include "qmv/sdr.h"
#include "support/database_test.h"

namespace qmv::test {
namespace {

class Device : public DatabaseTest {
 protected:
  Device() : DatabaseTest("db_sdrd.c") {}

  void SetUp() override {
    DatabaseTest::SetUp();
    sql("create table device (GUID, DeviceType, IPAddress, RequestedState, EntityID, EntityInstance, "
        "unique (GUID, DeviceType));");
  }

  // A row in which column n of a row that begins at `first` holds first + n, texts with a t in front.
  void insert_row(int first) {
    const auto number = [first](int column) { return std::to_string(first + column); };
    sql("insert into device values ('t" + number(0) + "', " + number(1) + ", 't" + number(2) + "', " + number(3) +
        ", " + number(4) + ", " + number(5) + ");");
  }

  static void expect_row(int first, const device_rec& record) {
    EXPECT_EQ("t" + std::to_string(first + 0), field(record.GUID));
    EXPECT_EQ(first + 1, record.DeviceType);
    EXPECT_EQ("t" + std::to_string(first + 2), field(record.IPAddress));
    EXPECT_EQ(first + 3, record.RequestedState);
    EXPECT_EQ(first + 4, record.EntityID);
    EXPECT_EQ(first + 5, record.EntityInstance);
  }

  static device_rec sample() {
    device_rec record{{}, {}, 20, 30, 40, 50};
    put(record.GUID, "a'g");
    put(record.IPAddress, "10.0.'.1");
    return record;
  }

  // What SQLite says that the table holds, columns by name.
  Texts stored() {
    return rows_of("select GUID, DeviceType, IPAddress, RequestedState, EntityID, EntityInstance from device;");
  }

  // What lies between a record and the end of its block.
  static std::string behind(device_rec* record) {
    return {reinterpret_cast<const char*>(record) + sizeof(*record), malloc_usable_size(record) - sizeof(*record)};
  }
};

// The two ways to the row that insert_row(100) makes.
struct Way {
  const char* name;
  std::int32_t (*get)(sqlite3*, device_rec**);
  const char* statement;
};

void PrintTo(const Way& way, std::ostream* out) {
  *out << way.name;
}

class DeviceGet : public Device, public testing::WithParamInterface<Way> {
 protected:
  std::int32_t get(device_rec** record) { return GetParam().get(db, record); }
};

constexpr Way kByKey{"ByKey", [](sqlite3* db, device_rec** record) { return db_get_device(db, "t100", 101, record); },
                     "select * from device where GUID='t100' and DeviceType=101\t\t\t\t;"};
constexpr Way kByType{"ByType", [](sqlite3* db, device_rec** record) { return db_get_device_bytype(db, 101, record); },
                      "select * from device where DeviceType=101\t\t\t\t;"};

INSTANTIATE_TEST_SUITE_P(EachWay, DeviceGet, testing::Values(kByKey, kByType),
                         [](const auto& way) { return way.param.name; });

TEST_P(DeviceGet, ReadsEveryColumnIntoItsField) {
  insert_row(200);
  insert_row(100);
  Owned<device_rec> record;
  EXPECT_EQ(0, get(record.out()));
  expect_row(100, *record.get());
  EXPECT_EQ(Texts({GetParam().statement}), statements());
  EXPECT_EQ(
      Lines({trace("Get ComputerSystem record from database"), trace("Successfully got the ComputerSystem record")}),
      logged());
}

TEST_P(DeviceGet, WithoutAMatchReturnsOneAndLeavesThePointer) {
  insert_row(200);
  device_rec untouched;
  device_rec* record = &untouched;
  EXPECT_EQ(1, get(&record));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({trace("Fail to get the ComputerSystem record")}), logged());
}

TEST_P(DeviceGet, WithoutAStatementReturnsOneAndLeavesThePointer) {
  insert_row(100);
  boundary().miss_statement = 1;
  device_rec untouched;
  device_rec* record = &untouched;
  EXPECT_EQ(1, get(&record));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({trace("Fail to get ComputerSystem record. SQLite stmt is NULL")}), logged());
}

TEST_P(DeviceGet, WithoutATableReturnsOneAndLeavesThePointer) {
  sql("drop table device;");
  device_rec untouched;
  device_rec* record = &untouched;
  EXPECT_EQ(1, get(&record));
  EXPECT_EQ(&untouched, record);
  EXPECT_EQ(Lines({no_such_table("device")}), logged());
}

TEST_P(DeviceGet, ReturnsOneForAnotherCompileErrorToo) {
  boundary().prepares = {{1, SQLITE_INTERNAL}};
  Owned<device_rec> record;
  EXPECT_EQ(1, get(record.out()));
  EXPECT_EQ(1u, logged().size());
}

TEST_P(DeviceGet, AllocationFailureReturnsOneWithNullAndLeavesTheStatementOpen) {
  insert_row(100);
  boundary().fail_allocation = 1;
  device_rec untouched;
  device_rec* record = &untouched;
  EXPECT_EQ(1, get(&record));
  EXPECT_EQ(nullptr, record);
  EXPECT_EQ(Lines({trace("Memory allocation error")}), logged());
  expect_left_open(1);
}

TEST_P(DeviceGet, ReadsNullColumnsAsEmptyTextsAndZeros) {
  sql("create table empty (GUID, DeviceType, IPAddress, RequestedState, EntityID, EntityInstance);"
      "drop table device; alter table empty rename to device; insert into device (GUID, DeviceType) values ('t100', "
      "101);");
  Owned<device_rec> record;
  EXPECT_EQ(0, get(record.out()));
  EXPECT_EQ(std::string(256, '\0'), std::string(record->IPAddress, sizeof(record->IPAddress)));
  EXPECT_EQ(0, record->RequestedState);
  EXPECT_EQ(0, record->EntityID);
  EXPECT_EQ(0, record->EntityInstance);
  logged();
}

TEST_P(DeviceGet, AddressOf15CharactersIsFollowedBy241Zeros) {
  insert_row(100);
  sql("update device set IPAddress = '192.168.100.200';");
  Owned<device_rec> record;
  EXPECT_EQ(0, get(record.out()));
  EXPECT_EQ("192.168.100.200" + std::string(241, '\0'), std::string(record->IPAddress, sizeof(record->IPAddress)));
  logged();
}

TEST_F(Device, GetByKeyFindsAGuidWithAQuote) {
  insert_row(100);
  sql("update device set GUID = 'it''s';");
  Owned<device_rec> record;
  EXPECT_EQ(0, db_get_device(db, "it's", 101, record.out()));
  EXPECT_EQ("it's", field(record->GUID));
  EXPECT_EQ(Texts({"select * from device where GUID='it''s' and DeviceType=101\t\t\t\t;"}), statements());
  logged();
}

TEST_F(Device, GetByKeyNeedsBothThePartsOfTheKey) {
  insert_row(100);
  Owned<device_rec> record;
  EXPECT_EQ(1, db_get_device(db, "t100", 102, record.out()));
  EXPECT_EQ(1, db_get_device(db, "t101", 101, record.out()));
  const LogLine missing = trace("Fail to get the ComputerSystem record");
  EXPECT_EQ(Lines({missing, missing}), logged());
}

TEST_F(Device, GetByTypeReturnsTheFirstDeviceOfTheType) {
  sql("insert into device values ('other', 1, 'a', 0, 0, 0), ('first', 2, 'b', 0, 0, 0), ('second', 2, 'c', 0, 0, 0);");
  Owned<device_rec> record;
  EXPECT_EQ(0, db_get_device_bytype(db, 2, record.out()));
  EXPECT_EQ("first", field(record->GUID));
  logged();
}

TEST_P(DeviceGet, TextsUpToTheirWidthStayInTheirFields) {
  insert_row(100);
  for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{255}, std::size_t{256}}) {
    SCOPED_TRACE(length);
    sql("update device set IPAddress = '" + std::string(length, 'x') + "';");
    Owned<device_rec> record;
    EXPECT_EQ(0, get(record.out()));
    EXPECT_EQ(std::string(length, 'x'), field(record->IPAddress));
    EXPECT_EQ("t100", field(record->GUID));
  }
  logged();
}

TEST_F(Device, GuidAsWideAsItsFieldHasNoTerminatorAndLeavesTheTypeAlone) {
  insert_row(100);
  sql("update device set GUID = '" + std::string(256, 'g') + "';");
  Owned<device_rec> record;
  EXPECT_EQ(0, db_get_device_bytype(db, 101, record.out()));
  EXPECT_EQ(std::string(256, 'g'), field(record->GUID));
  EXPECT_EQ("t102", field(record->IPAddress));
  EXPECT_EQ(101, record->DeviceType);
  logged();
}

// Columns are taken by index: GUID, DeviceType, IPAddress, and then the other integers.
TEST_P(DeviceGet, LongAddressRunsOnIntoTheGuid) {
  insert_row(100);
  sql("update device set IPAddress = '" + std::string(300, 'x') + "';");
  Owned<device_rec> record;
  EXPECT_EQ(0, get(record.out()));
  EXPECT_EQ(std::string(256, 'x'), field(record->IPAddress));
  EXPECT_EQ(std::string(44, 'x'), field(record->GUID));
  EXPECT_EQ(101, record->DeviceType);
  EXPECT_EQ(103, record->RequestedState);
  logged();
}

TEST_F(Device, LongGuidIsOverwrittenByTheIntegersThatAreReadAfterIt) {
  insert_row(100);
  sql("update device set GUID = '" + std::string(300, 'g') + "';");
  Owned<device_rec> record;
  EXPECT_EQ(0, db_get_device_bytype(db, 101, record.out()));
  EXPECT_EQ("t102", field(record->IPAddress));
  EXPECT_EQ(std::string(256, 'g'), field(record->GUID));
  EXPECT_EQ(101, record->DeviceType);
  EXPECT_EQ(103, record->RequestedState);
  EXPECT_EQ(104, record->EntityID);
  EXPECT_EQ(105, record->EntityInstance);
  logged();
}

TEST_F(Device, LongTextsRunOnUpToTheRecordsEnd) {
  insert_row(100);
  for (const std::size_t length : {std::size_t{528}, std::size_t{529}, std::size_t{200000}}) {
    SCOPED_TRACE(length);
    const std::string text(length, 'x');
    sql("update device set GUID = '" + text + "', IPAddress = '" + text + "';");
    Owned<device_rec> record;
    EXPECT_EQ(0, db_get_device_bytype(db, 101, record.out()));
    EXPECT_EQ(std::string(256, 'x'), field(record->GUID));
    EXPECT_EQ(0x78787878, record->DeviceType) << "the address is read behind it";
    EXPECT_EQ(103, record->RequestedState);
    EXPECT_EQ(105, record->EntityInstance);
    EXPECT_EQ(std::string::npos, behind(record.get()).find('x'));
  }
  logged();
}

// 256 and the 16 bytes of the integers reach the end.
TEST_F(Device, LongGuidAloneEndsWithTheRecord) {
  insert_row(100);
  for (const std::size_t length : {std::size_t{272}, std::size_t{273}, std::size_t{200000}}) {
    SCOPED_TRACE(length);
    sql("update device set GUID = '" + std::string(length, 'g') + "';");
    Owned<device_rec> record;
    EXPECT_EQ(0, db_get_device_bytype(db, 101, record.out()));
    EXPECT_EQ(std::string::npos, behind(record.get()).find('g'));
  }
  logged();
}

TEST_F(Device, SetInsertsEveryFieldUnderItsColumn) {
  const device_rec record = sample();
  EXPECT_EQ(0, db_set_device(db, &record));
  EXPECT_EQ(Texts({"insert into device (GUID, DeviceType, IPAddress, \t\t\tRequestedState, EntityID, EntityInstance) "
                   "\t\t\tvalues ('a''g', 20, '10.0.''.1', 30, 40, 50);"}),
            statements());
  EXPECT_EQ(Texts({"a'g|20|10.0.'.1|30|40|50"}), stored());
  EXPECT_EQ(Lines({trace("Successfully update the ComputerSystem record")}), logged());
}

TEST_F(Device, SetOnAnExistingKeyReplacesThatRowAndNoOther) {
  sql("insert into device values ('a''g', 20, 'old', 1, 2, 3), ('a''g', 21, 'old', 1, 2, 3), ('b', 20, 'old', 1, 2, "
      "3);");
  const device_rec record = sample();
  EXPECT_EQ(0, db_set_device(db, &record));
  EXPECT_EQ(
      "update device set GUID='a''g', DeviceType=20, IPAddress='10.0.''.1', \t\t\t\tRequestedState=30, EntityID=40, "
      "EntityInstance=50 \t\t\t\t where GUID='a''g' and DeviceType=20;",
      statements().back());
  EXPECT_EQ(Texts({"a'g|20|10.0.'.1|30|40|50", "a'g|21|old|1|2|3", "b|20|old|1|2|3"}), stored());
  EXPECT_EQ(Lines({execution_failed(), trace("ComputerSystem record is already present with that key"),
                   trace("Successfully update the ComputerSystem record")}),
            logged());
}

TEST_F(Device, SetWhoseUpdateFailsReturnsZeroAndTracesSuccess) {
  const device_rec record = sample();
  boundary().execs = {{1, SQLITE_CONSTRAINT}, {2, SQLITE_FULL}};
  EXPECT_EQ(0, db_set_device(db, &record));
  EXPECT_EQ(Lines({execution_failed(), trace("ComputerSystem record is already present with that key"),
                   execution_failed(), trace("Successfully update the ComputerSystem record")}),
            logged());
}

TEST_F(Device, SetWithoutATableReturnsZeroTracesSuccessAndTriesNoUpdate) {
  sql("drop table device;");
  const device_rec record = sample();
  EXPECT_EQ(0, db_set_device(db, &record));
  EXPECT_EQ(1u, statements().size());
  EXPECT_EQ(Lines({execution_failed(), trace("Successfully update the ComputerSystem record")}), logged());
}

TEST_F(Device, SetReadsFullTextFieldsNoFurtherThanTheirWidthsInBothStatements) {
  device_rec record{{}, {}, 0x01010101, 0x01010101, 0x01010101, 0x01010101};
  put(record.IPAddress, std::string(256, 'x'));
  put(record.GUID, std::string(256, 'g'));
  const std::string row = std::string(256, 'g') + "|16843009|" + std::string(256, 'x') + "|16843009|16843009|16843009";
  EXPECT_EQ(0, db_set_device(db, &record));
  EXPECT_EQ(Texts({row}), stored());
  sql("update device set IPAddress = 'old';");
  EXPECT_EQ(0, db_set_device(db, &record));
  EXPECT_EQ(Texts({row}), stored());
  logged();
}

TEST_F(Device, SetAndGetBringARecordBack) {
  const device_rec record = sample();
  db_set_device(db, &record);
  Owned<device_rec> back;
  EXPECT_EQ(0, db_get_device(db, "a'g", 20, back.out()));
  EXPECT_EQ(0, std::memcmp(&record, back.get(), sizeof(record)));
  logged();
}

}  // namespace
}  // namespace qmv::test
