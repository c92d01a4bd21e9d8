#include "progress.h"

#include <sstream>

#include "command_test.h"
#include "import.h"

namespace qmvctl::test {
namespace {

constexpr std::chrono::milliseconds kNow(0);

TEST(ProgressLine, IsErasedInTheEnd) {
  std::ostringstream terminal;
  {
    Progress progress(&terminal, kNow);
    progress.show("events", 64, 100);
    progress.show("events", 65, 100);  // too soon after the first one
  }
  EXPECT_EQ(terminal.str(), "\r\x1B[Kstoring events: 64 of 100\r\x1B[K");
}

TEST(ProgressLine, DoesNotComeWhileThereIsPatience) {
  std::ostringstream terminal;
  {
    Progress progress(&terminal);
    progress.show("events", 64, 100);
  }
  EXPECT_EQ(terminal.str(), "");
}

class ProgressOfImports : public CommandTest {
 protected:
  ProgressOfImports() { on_database({"init"}); }
};

TEST_F(ProgressOfImports, IsShown) {
  std::ostringstream terminal;
  Database connection = Database::open(database());
  {
    Progress progress(&terminal, kNow);
    import_files(connection, {"", {}, std::string(QMVCTL_SAMPLES) + "/server.sel"}, progress);
  }
  EXPECT_EQ(terminal.str().rfind("\r\x1B[Kstoring events: 0 of ", 0), 0u) << terminal.str();
}

TEST_F(ProgressOfImports, StoresEventsInSeveralPieces) {
  Bytes log;
  for (int id = 1; id <= 130; ++id) {
    log = log + Bytes{static_cast<uint8_t>(id), 0, 2, 1, 0, 0, 0x50, 0x20, 0, 4, 8, 0x50, 0x6F, 3, 0xFF, 0xFF};
  }
  EXPECT_EQ(on_database({"import", "--sel", file("long.sel", log)}).out, "stored 130 events\n");
  EXPECT_EQ(rows({"sel"}).size(), 130u);
}

}  // namespace
}  // namespace qmvctl::test
