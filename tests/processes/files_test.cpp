// Files that cannot be written, read or opened.
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>

#include <fstream>
#include <map>
#include <utility>
#include <vector>

#include "../support/child.h"
#include "../torture/calls.h"
#include "../torture/databases.h"
#include "../torture/tables.h"
#include "host.h"
#include "processes_test.h"

namespace qmv::test {
namespace {

namespace fs = std::filesystem;

// SQLite's codes, as callers know them.
constexpr std::int32_t kReadOnly = 8;
constexpr std::int32_t kFull = 13;
constexpr std::int32_t kCannotOpen = 14;

// What the functions answer that report a write that failed. All others answer 0 whatever became of it.
std::map<std::string, std::int32_t> statuses_of_failed_writes(std::int32_t code) {
  return {
      {"db_execute", code},
      {"db_addsel", 1},
      {"db_add_sel_entries", 1},
      {"db_set_boot_order", 1},
      {"db_set_pwds_capablities", 1},
      {"db_set_listener_destination", 1},
      {"db_set_indication_filter_cimxml", 1},
      {"db_delete_listener_destination", 1},
      {"db_delete_indication_filter_cimxml", 1},
      {"db_delete_indication_subscription", 1},
      {"db_delete_indication_subscription_for_filter", 1},
      {"db_init_static_ip_assignment_settingdata", 1},
      {"db_modify_trs_rs", 1},
      {"db_modify_textSAP_rs", 1},
  };
}

class FilesTest : public ProcessesTest {
 protected:
  FilesTest() { make_database(); }

  // Every table has rows.
  void make_database() const { EXPECT_TRUE(write_text(file("cim.db"), image_of_all_tables())); }

  // Every function that writes to a connection, with a record that is new: of one that is there SQLite says so before it
  // writes. What db_commit() commits was written before.
  static std::vector<Call> writers() {
    std::vector<Call> found;
    for (Call call : calls()) {
      if (call.name == "db_commit" || (call.shape != Shape::kSet && !is_writer(call))) continue;
      call.material.fill = 'n';
      found.push_back(std::move(call));
    }
    return found;
  }

  static std::string stored() { return content(Connection()); }

  // Every call answers as its header says, and nothing has changed.
  static void expect_no_write(std::int32_t code) {
    const std::string before = stored();
    std::map<std::string, std::int32_t> reporting = statuses_of_failed_writes(code);
    const Connection db;
    for (const Call& call : writers()) {
      const auto reported = reporting.extract(call.name);
      EXPECT_EQ(reported ? reported.mapped() : 0, call.run(db, call.material).status) << call.name;
    }
    EXPECT_TRUE(reporting.empty()) << reporting.begin()->first << " was not called";
    EXPECT_TRUE(before == stored());
    EXPECT_EQ("ok", text_of(db, "pragma integrity_check"));
  }

  // Every call stores something, and all is well.
  void expect_writes() const {
    const std::string before = stored();
    for (const Call& call : writers()) {
      make_database();
      EXPECT_EQ(0, call.run(Connection(), call.material).status) << call.name;
      EXPECT_FALSE(before == stored()) << call.name;
    }
  }

  // What is there comes back as from a database in memory.
  static void expect_reads() {
    const Database same(image_of_all_tables());
    const Connection db;
    for (const Shape shape : {Shape::kCount, Shape::kGetAll, Shape::kGetOne}) {
      for (const Call& call : calls_of(shape))
        EXPECT_TRUE(call.run(same.get(), call.material) == call.run(db, call.material)) << call.name;
    }
  }

  // The dead handle that a failed open can leave goes with its process.
  static void expect_no_file_opens() {
    for (const auto open : {db_init, tmp_db_init, smash_db_init}) {
      const int before = errors();
      sqlite3* dead = nullptr;
      EXPECT_EQ(kCannotOpen, open(&dead));
      EXPECT_EQ(before + 2, errors());
    }
    char* name = nullptr;
    EXPECT_EQ(1, get_processor_from_db(3, 1, &name));
    EXPECT_EQ(1, get_ps_from_db(&name, 1));
    association_rec* associations = nullptr;
    std::int32_t count = -1;
    EXPECT_EQ(1, assoc_get_global_data(&associations, &count));
    EXPECT_EQ(1, get_association_data(&associations, "select * from association", &count));
    char** names = nullptr;
    EXPECT_EQ(1, get_all_ps_from_db(&names, &count));
    association_reg_rec* plugins = nullptr;
    EXPECT_EQ(1, load_plugins(&plugins, &count, "/etc/Association.db"));
    column_name_node* columns = nullptr;
    EXPECT_EQ(1, GetColumnNames(&columns, "/tmp/cim.db", "sel"));
    char value[256] = "";
    EXPECT_EQ(1, GetColumnValues("/tmp/cim.db", value, "1", "sel", 1));
    EXPECT_EQ(1, get_static_instances("/tmp/cim.db", &count, value));
    const int before = errors();
    db_clear_expired_concretejob(INT32_MAX);
    EXPECT_EQ(before, errors()) << "it is silent";
  }

  // Gives up root's right to ignore permissions. Returns whether there is a user who lacks it.
  static bool become_nobody() {
    constexpr id_t kNobody = 65534;
    return getuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0);
  }

  static bool write_text(const fs::path& file, const std::string& text) {
    std::ofstream stream(file);
    return static_cast<bool>(stream << text << std::flush);
  }

  // Mounts that only this process sees. Without root's rights it gets them in a namespace of its own, as the same user.
  static bool unshare_mounts() {
    if (unshare(CLONE_NEWNS) == 0) return true;
    const std::string user = std::to_string(getuid());
    const std::string group = std::to_string(getgid());
    return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && write_text("/proc/self/setgroups", "deny") &&
           write_text("/proc/self/uid_map", user + " " + user + " 1") &&
           write_text("/proc/self/gid_map", group + " " + group + " 1");
  }

  // A small file system of this process alone. Returns whether the system allows it.
  static bool mount_small(const fs::path& at) {
    return unshare_mounts() && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", at.c_str(), "tmpfs", 0, "size=1m") == 0;
  }

  static void fill_up(const fs::path& rest) {
    const std::string page(4096, 'x');
    std::ofstream file(rest, std::ios::binary);
    while (file << page << std::flush) {
    }
  }
};

TEST_F(FilesTest, FullFileSystemStoresNothingAndGoesOnWhenThereIsRoom) {
  in_child([this] {
    if (!mount_small(folder())) GTEST_SKIP() << "no file system may be mounted here";
    make_database();
    fill_up(file("rest"));
    expect_reads();
    expect_no_write(kFull);
    EXPECT_EQ(0, fs::space(folder()).available);
    fs::remove(file("rest"));
    expect_writes();
  });
}

TEST_F(FilesTest, NewFileOnAFullFileSystemStaysEmpty) {
  in_child([this] {
    if (!mount_small(folder())) GTEST_SKIP() << "no file system may be mounted here";
    fill_up(file("rest"));
    const Connection db;
    EXPECT_TRUE(fs::exists(file("cim.db")));
    EXPECT_EQ(kFull, db_execute(db, "create table texts (text);"));
    EXPECT_EQ(0, fs::file_size(file("cim.db")));
  });
}

TEST_F(FilesTest, ReadOnlyFileIsReadAndNotWritten) {
  fs::permissions(folder(), fs::perms(0555));
  fs::permissions(file("cim.db"), fs::perms(0444));
  in_child([] {
    if (!become_nobody()) GTEST_SKIP() << "there is no user but root here";
    expect_reads();
    expect_no_write(kReadOnly);
  });
  fs::permissions(folder(), fs::perms(0755));
}

TEST_F(FilesTest, FileOfAnotherUserDoesNotOpen) {
  for (const auto& entry : fs::directory_iterator(folder())) fs::permissions(entry, fs::perms(0));
  fs::permissions(folder(), fs::perms(0555));
  in_child([] {
    if (!become_nobody()) GTEST_SKIP() << "there is no user but root here";
    expect_no_file_opens();
  });
  fs::permissions(folder(), fs::perms(0755));
}

TEST_F(FilesTest, NothingOpensInAMissingDirectory) {
  fs::remove_all(folder());
  in_child(expect_no_file_opens);
  EXPECT_FALSE(fs::exists(folder()));
}

TEST_F(FilesTest, DirectoryInTheFilesPlaceDoesNotOpen) {
  constexpr const char* kFiles[] = {"cim.db", "tmp_cim.db", "smashclp.db", "Association.db"};
  for (const char* name : kFiles) {
    fs::remove(file(name));
    fs::create_directory(file(name));
  }
  in_child(expect_no_file_opens);
  for (const char* name : kFiles) EXPECT_TRUE(fs::is_empty(file(name))) << name;
}

}  // namespace
}  // namespace qmv::test
