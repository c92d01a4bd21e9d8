#include "command_test.h"

#include <sqlite3.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "command_line.h"
#include "redirect.h"

namespace qmvctl::test {

CommandTest::CommandTest() {
  std::string name = std::filesystem::temp_directory_path() / "qmvctl-XXXXXX";
  if (!mkdtemp(name.data())) throw std::runtime_error("no scratch directory");
  directory_ = name;
  redirect_fixed_paths(directory_);
}

CommandTest::~CommandTest() {
  std::filesystem::remove_all(directory_);
}

Outcome CommandTest::run(const std::vector<std::string>& arguments) {
  std::vector<const char*> pointers{"qmvctl"};
  for (const std::string& argument : arguments) pointers.push_back(argument.c_str());
  std::ostringstream out;
  std::ostringstream err;
  const int status = qmvctl::run(static_cast<int>(pointers.size()), pointers.data(), out, err, {});
  return {status, out.str(), err.str()};
}

Outcome CommandTest::on_database(std::vector<std::string> arguments) {
  arguments.insert(arguments.end(), {"--db", database()});
  return run(arguments);
}

CommandTest::Json CommandTest::rows(std::vector<std::string> arguments) {
  arguments.push_back("--json");
  const Outcome outcome = on_database(std::move(arguments));
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return Json::parse(outcome.out);
}

std::string CommandTest::sql(const std::string& statement) {
  sqlite3* handle = nullptr;
  sqlite3_open(database().c_str(), &handle);
  std::string value;
  const auto take = [](void* value, int, char** columns, char**) {
    if (static_cast<std::string*>(value)->empty() && columns[0]) *static_cast<std::string*>(value) = columns[0];
    return 0;
  };
  char* error = nullptr;
  sqlite3_exec(handle, statement.c_str(), take, &value, &error);
  EXPECT_EQ(error, nullptr) << error;
  sqlite3_free(error);
  sqlite3_close(handle);
  return value;
}

std::string CommandTest::file(const std::string& name, const Bytes& bytes) {
  std::ofstream(path(name), std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
  return path(name);
}

std::string CommandTest::contents() {
  std::string all;
  for (const char* command : {"sensors", "fru", "sel"}) all += on_database({command, "--json"}).out;
  return all + sql("select group_concat(FruIDSlaveAddr || DevIdStr) from fru_locator_sdr;") +
         sql("select group_concat(RecCnt || AddTimeStamp) from sel_info;");
}

}  // namespace qmvctl::test
