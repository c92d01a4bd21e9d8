// The fixture of every test that runs the command: a scratch directory with a database, and the verbs.
#ifndef QMVCTL_TESTS_COMMAND_TEST_H
#define QMVCTL_TESTS_COMMAND_TEST_H

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bytes.h"

namespace qmvctl::test {

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

class CommandTest : public testing::Test {
 protected:
  using Json = nlohmann::json;

  CommandTest();
  ~CommandTest() override;

  // Runs the command with these arguments alone.
  Outcome run(const std::vector<std::string>& arguments);

  // Runs the command on the scratch database.
  Outcome on_database(std::vector<std::string> arguments);

  // Runs a command that must succeed on the scratch database, and returns the rows that it lists.
  Json rows(std::vector<std::string> arguments);

  // Runs an SQL statement on the scratch database; returns column 0 of its first row.
  std::string sql(const std::string& statement);

  // Writes a file of the scratch directory and returns its path.
  std::string file(const std::string& name, const Bytes& bytes);
  std::string path(const std::string& name) const { return directory_ / name; }

  std::string database() const { return path("test.db"); }

  // Everything that the database holds, to see that nothing changed.
  std::string contents();

 private:
  std::filesystem::path directory_;
};

}  // namespace qmvctl::test

#endif
