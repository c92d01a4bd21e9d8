// Every command has an example in its help, and stands with every option of its own in the manual page; and nothing else
// stands there.
#include <fstream>
#include <set>
#include <sstream>

#include "command_test.h"

namespace qmvctl::test {
namespace {

class Manual : public CommandTest {
 protected:
  using Words = std::vector<std::string>;

  struct Help {
    std::string text;
    std::set<std::string> options;  // "id", "sample"
    Words commands;
  };

  Help help_of(const Words& path) {
    Words arguments = path;
    arguments.push_back("--help");
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0);
    Help help{outcome.out, {}, {}};
    bool are_commands = false;
    std::istringstream stream(outcome.out);
    for (std::string line; std::getline(stream, line);) {
      are_commands = line == "Subcommands:" || (are_commands && !line.empty());
      const size_t option = line.find("--");
      if (line.starts_with("  -")) help.options.insert(line.substr(option + 2, line.find(' ', option) - option - 2));
      if (are_commands && line.starts_with("  ")) help.commands.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
    help.options.erase("help");
    return help;
  }

  // All commands with the options that their help tells, "sel add" for instance.
  std::map<std::string, std::set<std::string>> commands(const Words& path = {}) {
    std::map<std::string, std::set<std::string>> all;
    const Help help = help_of(path);
    std::string name;
    for (const std::string& word : path) name += (name.empty() ? "" : " ") + word;
    if (!path.empty()) {
      EXPECT_NE(help.text.find("\nExample:\n  qmvctl " + path.front()), std::string::npos) << name;
      all[name] = help.options;
    }
    for (const std::string& command : help.commands) {
      Words longer = path;
      longer.push_back(command);
      all.merge(commands(longer));
    }
    return all;
  }

  // The same, as the manual page tells; the options of all commands under "".
  static std::map<std::string, std::set<std::string>> items() {
    std::map<std::string, std::set<std::string>> all;
    std::ifstream stream(QMVCTL_MANUAL);
    for (std::string line; std::getline(stream, line);) {
      if (!line.starts_with(".It Cm ") && !line.starts_with(".It Fl ")) continue;
      std::istringstream words(line.substr(4));
      std::string name;
      std::string word;
      words >> word;
      const bool is_command = word == "Cm";
      while (is_command && words >> word && std::islower(static_cast<unsigned char>(word[0]))) {
        name += (name.empty() ? "" : " ") + word;
      }
      words.clear();
      auto& options = all[name];
      for (size_t at = 0; (at = line.find("Fl -", at)) != std::string::npos; ++at) {
        options.insert(line.substr(at + 4, line.find_first_of(" ", at + 4) - at - 4));
      }
    }
    all[""].erase("help");
    return all;
  }
};

TEST_F(Manual, HasEveryCommandWithItsOptionsAndNoOther) {
  auto expected = commands();
  expected[""] = help_of({}).options;
  EXPECT_GT(expected.size(), 30u);
  const auto found = items();
  for (const auto& [command, options] : expected) {
    const auto item = found.find(command);
    ASSERT_NE(item, found.end()) << command;
    EXPECT_EQ(item->second, options) << command;
  }
  for (const auto& [command, options] : found) EXPECT_TRUE(expected.contains(command)) << command;
}

TEST_F(Manual, HelpFitsATerminal) {
  auto all = commands();
  all[""] = {};
  for (const auto& [command, options] : all) {
    Words arguments;
    std::istringstream words(command);
    for (std::string word; words >> word;) arguments.push_back(word);
    std::istringstream lines(help_of(arguments).text);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << command << ": " << line;
  }
}

}  // namespace
}  // namespace qmvctl::test
