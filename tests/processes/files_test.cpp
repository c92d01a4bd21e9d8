// Files that cannot be written, read or opened.
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>

#include <fstream>

#include "../support/child.h"
#include "../support/figures.h"
#include "host.h"
#include "processes_test.h"
#include "sensors.h"

namespace qmv::test {
namespace {

namespace fs = std::filesystem;

// SQLite's codes, as callers know them.
constexpr std::int32_t kReadOnly = 8;
constexpr std::int32_t kFull = 13;
constexpr std::int32_t kCannotOpen = 14;

class FilesTest : public ProcessesTest {
 protected:
  static void store(const std::string& key, int number) {
    const Connection db;
    const compact_sdr_rec record = sensor(key, number);
    EXPECT_EQ(0, db_set_compact_sdr_info(db, &record)) << "a set answers 0 whatever the insert did";
  }

  // What is there can be read; nothing has come and nothing has changed.
  static void expect_one_row() {
    const Connection db;
    EXPECT_EQ(1, stored_number(db, "old"));
    EXPECT_EQ(-2, stored_number(db, "new"));
    std::int32_t count = -1;
    EXPECT_EQ(0, db_get_num_compact_sdr(db, &count, 0));
    EXPECT_EQ(1, count);
    EXPECT_EQ(0, half_rows(db));
    EXPECT_EQ("ok", text_of(db, "pragma integrity_check"));
  }

  // Neither a new row nor another number in the old one, and not a bit of either.
  static void expect_no_write(std::int32_t status) {
    store("new", 2);
    expect_one_row();
    store("old", 3);
    expect_one_row();
    const Connection db;
    EXPECT_EQ(status, db_execute(db, "insert into compact_sdr (DeviceID) values ('new');"));
    EXPECT_EQ(status, db_execute(db, "update compact_sdr set DeviceID = 'new';"));
    EXPECT_EQ(status, db_execute(db, "delete from compact_sdr;"));
    EXPECT_EQ(status, db_execute(db, "create table more (number);"));
    expect_one_row();
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
    make_file(file("cim.db"));
    store("old", 1);
    fill_up(file("rest"));
    expect_no_write(kFull);
    EXPECT_EQ(0, fs::space(folder()).available);
    fs::remove(file("rest"));
    store("new", 2);
    const Connection db;
    EXPECT_EQ(2, stored_number(db, "new"));
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
  store("old", 1);
  fs::permissions(folder(), fs::perms(0555));
  fs::permissions(file("cim.db"), fs::perms(0444));
  in_child([] {
    if (!become_nobody()) GTEST_SKIP() << "there is no user but root here";
    expect_no_write(kReadOnly);
  });
  fs::permissions(folder(), fs::perms(0755));
  expect_one_row();
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
  for (const char* name : {"cim.db", "tmp_cim.db", "smashclp.db", "Association.db"}) {
    fs::remove(file(name));
    fs::create_directory(file(name));
  }
  in_child(expect_no_file_opens);
  EXPECT_TRUE(fs::is_empty(file("cim.db")));
}

}  // namespace
}  // namespace qmv::test
