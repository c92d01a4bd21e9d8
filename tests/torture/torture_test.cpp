#include "torture/torture_test.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "support/child.h"
#include "torture/failing.h"
#include "torture/tables.h"

namespace qmv::test {

namespace {

// What the library prints on standard error, which is elsewhere as long as this lives.
class Printed {
 public:
  Printed() : real_(std::exchange(stderr, open_memstream(&text_, &size_))) {}
  Printed(const Printed&) = delete;
  Printed& operator=(const Printed&) = delete;
  ~Printed() {
    std::fclose(std::exchange(stderr, real_));
    __real_free(text_);
  }

  std::string text() {
    std::fflush(stderr);
    return {text_, size_};
  }

 private:
  char* text_ = nullptr;
  std::size_t size_ = 0;
  std::FILE* real_;
};

int& counted() {
  static const Shared<int> shared;
  return *shared;
}

Left left_behind() {
  return {boundary().statements_alive, boundary().texts_alive.size(), boundary().connections_alive.size(),
          boundary().blocks_alive.size()};
}

bool reads(const std::string& statement) {
  return strncasecmp(statement.c_str(), "select", 6) == 0 || strncasecmp(statement.c_str(), "pragma", 6) == 0;
}

}  // namespace

void PrintTo(const Left& left, std::ostream* out) {
  *out << left.statements << " statements, " << left.texts << " texts, " << left.connections << " connections, "
       << left.blocks << " blocks";
}

int Trial::errors() const {
  return static_cast<int>(
      std::count_if(log.begin(), log.end(), [](const LogLine& line) { return line.level == kErrorLevel; }));
}

Torture::~Torture() {
  __real_sqlite3_close(to_file_);
  boundary() = Boundary();
}

Trial Torture::tried(const std::function<void()>& faults) {
  const Trial trial = made(faults);
  if (trial.failed != 0) ++counted();
  return trial;
}

Trial Torture::tried() {
  return made([] {});
}

Trial Torture::made(const std::function<void()>& faults) {
  boundary() = Boundary();
  boundary().fixed_files = fixed_files().folder();
  connect();
  Trial trial;
  Printed printed;
  faults();
  trial.answer = GetParam().run(db(), GetParam().material);
  trial.failed = failed_uses() + boundary().met;
  make_all_well();
  trial.printed = printed.text();
  trial.log = boundary().log;
  trial.statements = boundary().statements;
  trial.left = left_behind();
  trial.allocations = boundary().allocations;
  boundary().fail_allocation = 0;
  beside_.reset();
  if (trial.left == Left{.statements = 1}) beside_ = GetParam().run(db(), GetParam().material);
  release();
  disconnect();
  return trial;
}

void Torture::release() {
  for (void* text : std::exchange(boundary().texts_alive, {})) sqlite3_free(text);
  for (sqlite3* connection : std::exchange(boundary().connections_alive, {})) close_with_statements(connection);
  for (const auto& [block, size] : std::exchange(boundary().blocks_alive, {})) __real_free(block);
  database_.settle();
}

void Torture::put_back() {
  database_.put_back();
  // It would go on reading what it keeps of the file.
  __real_sqlite3_close(std::exchange(to_file_, nullptr));
  if (!file().empty()) fixed_files().put_back(file());
}

void Torture::alone(const std::function<void()>& test) {
  if (!GetParam().remembers) return test();
  in_child([&] {
    tried();
    put_back();
    test();
  });
}

std::string Torture::file() const {
  return GetParam().name == "db_clear_expired_concretejob" ? "tmp_cim.db" : "";
}

sqlite3* Torture::store() {
  if (file().empty()) return db();
  if (to_file_ == nullptr) __real_sqlite3_open((fixed_files().folder() + "/" + file()).c_str(), &to_file_);
  return to_file_;
}

// Most calls write nothing to the database in memory, which it tells at once.
std::string Torture::stored() {
  if (!file().empty() || GetParam().wants_narrow_sensors || database_.is_changed()) return content(store());
  static const std::string untouched = content(store());
  return untouched;
}

Trial Torture::learned() {
  put_back();
  const Trial trial = tried();
  Texts writing = trial.statements;
  std::erase_if(writing, reads);
  possibly_stored_ = {stored()};
  for (unsigned chosen = 0; chosen < 1u << writing.size(); ++chosen) {
    put_back();
    for (std::size_t i = 0; i < writing.size(); ++i) {
      if ((chosen >> i & 1) != 0) __real_sqlite3_exec(store(), writing[i].c_str(), nullptr, nullptr, nullptr);
    }
    possibly_stored_.insert(stored());
  }
  put_back();
  return trial;
}

void Torture::expect_whole_statements() {
  EXPECT_TRUE(possibly_stored_.contains(stored()));
}

void Torture::expect_works_as(const Trial& healthy) {
  EXPECT_TRUE(beside_.value_or(healthy.answer) == healthy.answer) << "beside the statement that was left";
  const Trial trial = tried();
  EXPECT_EQ(healthy.answer.status, trial.answer.status);
  EXPECT_EQ(healthy.answer.number, trial.answer.number);
  EXPECT_EQ(healthy.answer.handed, trial.answer.handed);
  EXPECT_TRUE(healthy.answer.content == trial.answer.content) << "what came back";
  EXPECT_EQ(healthy.log, trial.log);
  EXPECT_EQ(healthy.printed, trial.printed);
  EXPECT_EQ(healthy.statements, trial.statements);
  EXPECT_EQ(healthy.left, trial.left);
}

int calls_with_faults() {
  return counted();
}

void close_with_statements(sqlite3* connection) {
  while (sqlite3_stmt* statement = sqlite3_next_stmt(connection, nullptr)) __real_sqlite3_finalize(statement);
  __real_sqlite3_close(connection);
}

std::string name_of(const testing::TestParamInfo<Call>& info) {
  return info.param.name;
}

}  // namespace qmv::test
