// Boot order.
#include <string>

#include "qmv/boot.h"
#include "unit/profile_rules.h"

namespace qmv::test {
namespace {

using Record = boot_order_rec;

const ProfileTable& entries() {
  static const ProfileTable kTable = {
      .name = "boot_order",
      .record_size = sizeof(Record),
      .fields = {TEXT(InstanceID, 256), NUMBER(AssignedSequence), NUMBER(isHost)},
      .key = "InstanceID",
  };
  return kTable;
}

const ProfileGetAllCase kGetAll = {
    .name = "Entries",
    .table = entries(),
    .call = erased<Record>(db_get_all_boot_order),
    .reading = "Get all role records from database",
    .done = "Successfully got all boot order %d",
    .count_failed = "Fail to get boot order records",
    .reads = {FIELD(InstanceID), FIELD(AssignedSequence)},
    .clears_the_pointer = true,
    .passes_codes_on = true,
    .without_memory = 7,
};

const ProfileGetOneCase kGetOne = {
    .name = "Entry",
    .table = entries(),
    .call = filling<Record>(
        [](sqlite3* db, const Texts& keys, Record* record) { return db_get_boot_order(db, keys[0].c_str(), record); }),
    .keys = {"InstanceID"},
    .statement = "select * from boot_order where InstanceID='t100';",
    .reading = "Get boot order from database",
    .done = "Successfully got the boot order.",
    .no_row = "Fail to get boot order records",
    .no_statement = "Fail to get boot order record",
    .into = Into::kCallersRecord,
    .says_reading_before_the_step = true,
    .passes_codes_on = true,
};

INSTANTIATE_TEST_SUITE_P(BootOrder, ProfileGetAll, testing::Values(kGetAll), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(BootOrder, ProfileGetOne, testing::Values(kGetOne), testing::PrintToStringParamName());

class BootOrder : public TableTest {
 protected:
  BootOrder() : TableTest("db_static_instance.c", entries()) {}

  static Record entry(const std::string& name, std::int32_t sequence, std::int32_t is_host) {
    Record made{{}, sequence, is_host};
    qmv::test::put(made.InstanceID, name);
    return made;
  }

  std::int32_t set(const Record& record) { return db_set_boot_order(db, &record); }

  LogLine present() const { return trace("Error info is already present with that key"); }
  LogLine was_set() const { return trace("Successfully update the boot order record"); }

  Texts rows() { return rows_of("select InstanceID, AssignedSequence, isHost from boot_order;"); }
};

TEST_F(BootOrder, GetAllLeavesTheHostFlagZero) {
  set(entry("disk", 2, 1));
  std::int32_t count = -1;
  Owned<Record> all;
  EXPECT_EQ(0, db_get_all_boot_order(db, &count, all.out()));
  ASSERT_EQ(1, count);
  EXPECT_EQ(2, all->AssignedSequence);
  EXPECT_EQ(0, all->isHost);
  Record one{};
  EXPECT_EQ(0, db_get_boot_order(db, "disk", &one));
  EXPECT_EQ(1, one.isHost);
  logged();
}

TEST_F(BootOrder, SetInsertsEveryMemberUnderItsColumn) {
  EXPECT_EQ(0, set(entry("a'b", 12, 13)));
  EXPECT_EQ(Texts({"a'b|12|13"}), rows());
  EXPECT_EQ(Texts({"insert into boot_order (InstanceID, AssignedSequence, isHost)                         values "
                   "('a''b', '12', '13');"}),
            statements());
  EXPECT_EQ(Lines({was_set()}), logged());
}

TEST_F(BootOrder, SetOnAnExistingKeyUpdatesItsRowOnly) {
  insert(100);
  insert(200);
  statements();
  EXPECT_EQ(0, set(entry("t100", -2147483647 - 1, 2147483647)));
  EXPECT_EQ(Texts({"t100|-2147483648|2147483647", "t200|201|202"}), rows());
  EXPECT_EQ(
      "update boot_order set InstanceID='t100', AssignedSequence='-2147483648', isHost='2147483647' where "
      "InstanceID='t100';",
      statements().back());
  EXPECT_EQ(Lines({execution_failed(), present(), was_set()}), logged());
}

TEST_F(BootOrder, SetWithoutARecordReturnsOneInSilence) {
  EXPECT_EQ(1, db_set_boot_order(db, nullptr));
  EXPECT_EQ(Texts(), statements());
}

TEST_F(BootOrder, SetWhoseInsertFailsReturnsOneWithSqlitesText) {
  sql("drop table boot_order;");
  EXPECT_EQ(1, set(entry("disk", 1, 1)));
  EXPECT_EQ(1u, statements().size()) << "no update";
  EXPECT_EQ(Lines({execution_failed(), trace("DB Error: no such table: boot_order \n")}), logged());
}

TEST_F(BootOrder, SetWhoseUpdateFailsReturnsOneWithSqlitesText) {
  insert(100);
  sql("create trigger frozen before update on boot_order begin select raise(abort, 'it is frozen'); end;");
  EXPECT_EQ(1, set(entry("t100", 1, 1)));
  EXPECT_EQ(Texts({"t100|101|102"}), rows());
  EXPECT_EQ(Lines({execution_failed(), present(), execution_failed(), trace("DB Error: it is frozen \n")}), logged());
}

TEST_F(BootOrder, SetOnALockedDatabaseReturnsOneWithSqlitesText) {
  const std::string path = scratch() + "/boot.db";
  const Connection owner = open(path);
  sql(owner.get(), "create table boot_order (InstanceID, AssignedSequence, isHost);");
  const Connection other = open(path);
  sql(owner.get(), "begin exclusive;");
  const Record record = entry("disk", 1, 1);
  EXPECT_EQ(1, db_set_boot_order(other.get(), &record));
  EXPECT_EQ(Lines({execution_failed(), trace("DB Error: database is locked \n")}), logged());
}

TEST_F(BootOrder, SetReadsAFullKeyNoFurtherThanItsWidth) {
  const std::string full(256, '\'');
  Record record = entry(full, -1, -1);
  for (const std::int32_t sequence : {1, 2}) {  // inserted, updated
    record.AssignedSequence = sequence;
    EXPECT_EQ(0, set(record));
    EXPECT_EQ(Texts({full + "|" + std::to_string(sequence) + "|-1"}), rows());
  }
  logged();
}

TEST_F(BootOrder, DeleteEmptiesTheTableInSilence) {
  insert(100);
  insert(200);
  EXPECT_EQ(0, db_delete_boot_order(db));
  EXPECT_EQ(Texts(), rows());
  EXPECT_EQ(Texts({"delete from boot_order"}), statements());
}

TEST_F(BootOrder, ResetClearsTheSequenceOfOneSideInSilence) {
  sql("insert into boot_order values ('a', 1, 1), ('b', 2, 0), ('c', 3, 1), ('d', 4, -1);");
  EXPECT_EQ(0, db_reset_boot_order(db, 1));
  EXPECT_EQ(Texts({"a|0|1", "b|2|0", "c|0|1", "d|4|-1"}), rows());
  EXPECT_EQ(0, db_reset_boot_order(db, -1));
  EXPECT_EQ(Texts({"a|0|1", "b|2|0", "c|0|1", "d|0|-1"}), rows());
  EXPECT_EQ(Texts({"update boot_order set AssignedSequence=0 where isHost='1'",
                   "update boot_order set AssignedSequence=0 where isHost='-1'"}),
            statements());
}

TEST_F(BootOrder, DeleteAndResetReturnZeroWhenTheyFail) {
  sql("drop table boot_order;");
  EXPECT_EQ(0, db_delete_boot_order(db));
  EXPECT_EQ(0, db_reset_boot_order(db, 1));
  EXPECT_EQ(Lines({execution_failed(), execution_failed()}), logged());
}

}  // namespace
}  // namespace qmv::test
