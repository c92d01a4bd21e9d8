// What the help shows can be done, on the databases of init --sample with the sample server in them.
#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

#include "command_test.h"

namespace qmvctl::test {
namespace {

using Words = std::vector<std::string>;

Words words_of(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

class HelpTest : public CommandTest {
 protected:
  HelpTest() {
    const std::string samples = QMVCTL_SAMPLES;
    EXPECT_EQ(run({"init", "--sample"}).status, 0);
    Words import{"import", "--sdr", samples + "/server.sdr", "--sel", samples + "/server.sel"};
    for (const char* id : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
      import.insert(import.end(), {"--fru", id + ("=" + samples) + "/fru" + id + ".bin"});
    }
    EXPECT_EQ(run(import).status, 0);
    for (const char* name : kFiles) std::filesystem::copy(path(name), path(name + std::string(".first")));
  }

  // The commands below one, each with the words that lead to it.
  std::vector<Words> commands_below(const Words& command) {
    std::vector<Words> commands;
    std::istringstream lines(help_of(command));
    bool is_list = false;
    for (std::string line; std::getline(lines, line);) {
      const Words words = words_of(line);
      if (is_list && !words.empty()) {
        Words below = command;
        below.push_back(words.front());
        commands.push_back(below);
        for (const Words& each : commands_below(below)) commands.push_back(each);
      }
      is_list = line == "Subcommands:" || (is_list && !words.empty());
    }
    return commands;
  }

  // The words behind "qmvctl" of a command's example.
  Words example_of(const Words& command) {
    const std::string help = help_of(command);
    const std::string head = "\nExample:\n  qmvctl ";
    const size_t at = help.find(head);
    return at == std::string::npos ? Words() : words_of(help.substr(at + head.size()));
  }

  // Runs it on databases that no other one has changed.
  Outcome run_afresh(const Words& command) {
    constexpr auto kOverwrites = std::filesystem::copy_options::overwrite_existing;
    for (const char* name : kFiles) std::filesystem::copy(path(name + std::string(".first")), path(name), kOverwrites);
    return run(command);
  }

 private:
  static constexpr const char* kFiles[] = {"cim.db", "tmp_cim.db"};

  std::string help_of(Words command) {
    command.push_back("--help");
    return run(command).out;
  }
};

TEST_F(HelpTest, HasAnExampleOfEachCommandThatFindsSomething) {
  // They name files or do not end, and the registry has no sample.
  const std::set<std::string> kLeftOut = {"init", "check", "import", "export", "watch", "associations"};
  size_t tried = 0;
  for (const Words& command : commands_below({})) {
    const Words example = example_of(command);
    ASSERT_TRUE(example.size() >= command.size() && std::equal(command.begin(), command.end(), example.begin()))
        << testing::PrintToString(command) << testing::PrintToString(example);
    if (kLeftOut.contains(command.front())) continue;
    const Outcome outcome = run_afresh(example);
    EXPECT_EQ(outcome.status, 0) << testing::PrintToString(example) << outcome.err;
    EXPECT_EQ(outcome.out.find("Nothing matches"), std::string::npos) << testing::PrintToString(example);
    ++tried;
  }
  EXPECT_GE(tried, 25u);
}

}  // namespace
}  // namespace qmvctl::test
