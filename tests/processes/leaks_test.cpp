// What the headers say is never released, counted for each call. Each test is a process of its own, with which the
// leaks go.
#include <csignal>
#include <functional>

#include "../support/child.h"
#include "../support/figures.h"
#include "memory.h"
#include "processes_test.h"

namespace qmv::test {
namespace {

constexpr int kCalls = 100;

class LeaksTest : public ProcessesTest {
 protected:
  // What SQLite holds on behalf of each of many calls: all the same, or no whole number comes out. Blocks of the library's
  // own are counted by the unit tests.
  static Held left_by_each(const std::function<void()>& call) {
    call();
    const Held before = held();
    for (int i = 0; i < kCalls; ++i) call();
    const Held after = held();
    const auto each = [](std::size_t first, std::size_t last) {
      EXPECT_EQ(0U, (last - first) % kCalls);
      return (last - first) / kCalls;
    };
    return {.sqlite_blocks = each(before.sqlite_blocks, after.sqlite_blocks),
            .sqlite_bytes = each(before.sqlite_bytes, after.sqlite_bytes),
            .descriptors = each(before.descriptors, after.descriptors)};
  }

  static void show(const std::string& function, const Held& left) {
    figure("leaks." + function + ".blocks_per_call", left.sqlite_blocks);
    figure("leaks." + function + ".bytes_per_call", left.sqlite_bytes);
    figure("leaks." + function + ".descriptors_per_call", left.descriptors);
  }

  // One text that is as long as the header says, give or take the allocator's rounding.
  static void expect_a_text(const std::string& function, std::size_t bytes, const Held& left) {
    EXPECT_EQ(1U, left.sqlite_blocks);
    EXPECT_NEAR(static_cast<double>(bytes), static_cast<double>(left.sqlite_bytes), 16);
    EXPECT_EQ(0U, left.descriptors);
    show(function, left);
  }

  static int open_statements(sqlite3* db) {
    int open = 0;
    for (sqlite3_stmt* each = nullptr; (each = sqlite3_next_stmt(db, each)) != nullptr;) ++open;
    return open;
  }

  // What another process gets that writes the instance database, once something is left behind in a first one.
  static std::int32_t status_of_a_write_after(const std::function<void()>& leave) {
    Child first([&leave] {
      leave();
      raise(SIGSTOP);
    });
    first.wait_until_stopped();
    sqlite3* db = nullptr;
    EXPECT_EQ(SQLITE_OK, sqlite3_open("/tmp/cim.db", &db));
    const std::int32_t status = db_execute(db, "insert into sel (RecordID) values (null);");
    EXPECT_EQ(SQLITE_OK, sqlite3_close(db));
    first.go_on();
    first.wait_for_end();
    return status;
  }
};

TEST_F(LeaksTest, DeletingASensorLeavesItsText) {
  in_child([] {
    const Connection db;
    expect_a_text("db_del_sdr", 60, left_by_each([&db] { EXPECT_EQ(0, db_del_sdr(db, 10)); }));
  });
}

TEST_F(LeaksTest, DeletingAnEventLeavesItsText) {
  in_child([] {
    const Connection db;
    expect_a_text("db_del_sel", 40, left_by_each([&db] { EXPECT_EQ(0, db_del_sel(db, 10)); }));
  });
}

TEST_F(LeaksTest, AddingAnEventInPlaceOfAnotherLeavesOneText) {
  in_child([] {
    const Connection db;
    sel_rec event = {};
    event.RecordID = 1;
    EXPECT_EQ(0, db_addsel(db, &event, 0));
    expect_a_text("db_addsel", 40, left_by_each([&] { EXPECT_EQ(0, db_addsel(db, &event, 10)); }));
    EXPECT_EQ(0U, left_by_each([&] { EXPECT_EQ(0, db_addsel(db, &event, 0)); }).sqlite_blocks) << "nothing deleted";
  });
}

TEST_F(LeaksTest, AddingSeveralEventsInPlaceOfOneLeavesATextForEach) {
  in_child([] {
    const Connection db;
    sel_rec events[3] = {};
    events[0].RecordID = 1;
    events[2].RecordID = 2;
    const auto add = [&](std::int32_t deleted) {
      return left_by_each([&, deleted] { EXPECT_EQ(0, db_add_sel_entries(db, 3, events, deleted)); });
    };
    EXPECT_EQ(0, db_add_sel_entries(db, 3, events, 0));
    const Held left = add(10);
    EXPECT_EQ(2U, left.sqlite_blocks) << "one event has no number, and is skipped";
    EXPECT_NEAR(2 * 40, static_cast<double>(left.sqlite_bytes), 2 * 16);
    show("db_add_sel_entries_of_two", left);
    EXPECT_EQ(0U, add(0).sqlite_blocks) << "nothing deleted";
  });
}

TEST_F(LeaksTest, TerminateSequenceLeavesItsStatementAndTheLock) {
  const auto look_up = [] {
    sqlite3* db = nullptr;
    ASSERT_EQ(0, db_init(&db));
    for (int i = 0; i < kCalls; ++i) EXPECT_STREQ("~.", db_get_sesstion_term_seq(db));
    EXPECT_EQ(kCalls, open_statements(db));
    EXPECT_EQ(SQLITE_BUSY, db_close(db));
    const Held left = left_by_each([db] { EXPECT_STREQ("~.", db_get_sesstion_term_seq(db)); });
    EXPECT_EQ(0U, left.descriptors);
    show("db_get_sesstion_term_seq", left);
  };
  EXPECT_EQ(0, db_execute(Connection(),
                          "insert into textredirectionsap (Name, SessionTerminateSequence) values "
                          "('TextRedirectionSAP1', '~.');"));
  EXPECT_EQ(SQLITE_BUSY, status_of_a_write_after(look_up));
  EXPECT_EQ(SQLITE_OK, status_of_a_write_after([] {})) << "the process has ended";
}

TEST_F(LeaksTest, GetOneWithoutMemoryLeavesItsStatementAndTheLock) {
  if (is_instrumented()) return;  // with an allocator that refuses nothing
  EXPECT_EQ(0, db_execute(Connection(), "insert into compact_sdr (DeviceID) values ('any');"));
  const auto read = [] {
    sqlite3* db = nullptr;
    ASSERT_EQ(0, db_init(&db));
    compact_sdr_rec* sensor = nullptr;
    refuse_blocks_of(sizeof(compact_sdr_rec));
    EXPECT_NE(0, db_get_compact_sdr(db, "any", &sensor));
    EXPECT_EQ(nullptr, sensor);
    EXPECT_EQ(1, open_statements(db));
  };
  EXPECT_EQ(SQLITE_BUSY, status_of_a_write_after(read));
}

TEST_F(LeaksTest, NewJobBehindOneWithoutIdentifierLeavesItsStatementAndTheLock) {
  EXPECT_EQ(0, db_execute(Connection(),
                          "drop table concrete_job; create table concrete_job (InstanceID);"
                          "insert into concrete_job values (null);"));
  const auto create = [] {
    sqlite3* db = nullptr;
    ASSERT_EQ(0, db_init(&db));
    concrete_job_rec job = {};
    char identifier[sizeof(job.InstanceID)];
    EXPECT_EQ(1, db_set_concretejob(db, &job, identifier));
    EXPECT_EQ(1, open_statements(db));
  };
  EXPECT_EQ(SQLITE_BUSY, status_of_a_write_after(create));
}

TEST_F(LeaksTest, PairsWithoutInventoryLeaveTheirStatementAndTheLock) {
  EXPECT_EQ(0,
            db_execute(Connection(),
                       "drop table fru; create table fru (FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber, "
                       "EntityID, EntityInst, IdStrLen);"
                       "insert into fru (EntityID, EntityInst) values (3, 1);"
                       "insert into compact_sdr (DeviceID, EntityID, EntityInstance) values ('any', 3, 1);"
                       "insert into full_sdr (DeviceID, EntityID, EntityInstance) values ('any', 3, 1);"));
  const auto read = [](const char* name, auto get_all) {
    return [=] {
      sqlite3* db = nullptr;
      ASSERT_EQ(0, db_init(&db));
      const auto read_once = [=] {
        fru_sdr_rec* pairs = nullptr;
        std::int32_t count = 0;
        EXPECT_EQ(1, get_all(db, &count, &pairs)) << "SQLite's code";
        EXPECT_EQ(1, count);
        db_freemem(pairs);
      };
      for (int i = 0; i < kCalls; ++i) read_once();
      EXPECT_EQ(kCalls, open_statements(db));
      const Held left = left_by_each(read_once);
      EXPECT_EQ(0U, left.descriptors);
      show(name, left);
    };
  };
  EXPECT_EQ(SQLITE_BUSY, status_of_a_write_after(read("db_get_all_fru_compact_sdr", db_get_all_fru_compact_sdr)));
  EXPECT_EQ(SQLITE_BUSY, status_of_a_write_after(read("db_get_all_fru_full_sdr", db_get_all_fru_full_sdr)));
}

TEST_F(LeaksTest, PurgeThatDoesNotCompileLeavesItsConnection) {
  in_child([] {
    const auto purge = [] { db_clear_expired_concretejob(INT32_MAX); };
    EXPECT_EQ(Held(), left_by_each(purge)) << "one that compiles";
    EXPECT_EQ(0, db_execute(Connection(tmp_db_init), "drop table concrete_job;"));
    const Held left = left_by_each(purge);
    EXPECT_EQ(1U, left.descriptors);
    show("db_clear_expired_concretejob", left);
  });
}

TEST_F(LeaksTest, ColumnNamesLeaveTheirConnection) {
  const auto list = [] {
    const Held left = left_by_each([] {
      column_name_node* names = nullptr;
      EXPECT_EQ(0, GetColumnNames(&names, "/tmp/cim.db", "sel"));
      EXPECT_STREQ("RecordID", names->ColumnName);
      EXPECT_EQ(0, free_column_names(names));
    });
    EXPECT_EQ(1U, left.descriptors);
    show("GetColumnNames", left);
  };
  EXPECT_EQ(SQLITE_OK, status_of_a_write_after(list));
}

TEST_F(LeaksTest, ColumnValuesLeaveTheirConnectionAndOnARowTheLock) {
  const auto read = [](const char* where) {
    return [where] {
      const Held left = left_by_each([] {
        char value[256] = "untouched";
        EXPECT_EQ(0, GetColumnValues("/tmp/cim.db", value, "RecordID", "sel", 1));
      });
      EXPECT_EQ(1U, left.descriptors);
      show(where, left);
    };
  };
  EXPECT_EQ(SQLITE_OK, status_of_a_write_after(read("GetColumnValues_without_row")));
  EXPECT_EQ(SQLITE_BUSY, status_of_a_write_after(read("GetColumnValues_on_a_row"))) << "of the write above";
}

TEST_F(LeaksTest, NamingAProcessorLeavesTheHandleOfAFailedOpen) {
  in_child([this] {
    std::filesystem::remove(file("cim.db"));
    std::filesystem::create_directory(file("cim.db"));
    const Held left = left_by_each([] {
      char* name = nullptr;
      EXPECT_EQ(1, get_processor_from_db(3, 1, &name));
    });
    EXPECT_EQ(0U, left.descriptors);
    show("get_processor_from_db_failed_open", left);
  });
}

}  // namespace
}  // namespace qmv::test
