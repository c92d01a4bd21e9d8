// The schema against the library: what an accessor writes lies under the columns' names, and what lies there comes back.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

#include "../qmvctl/redirect.h"
#include "table.h"

namespace qmv::test {
namespace {

constexpr const char* kDatabases[] = {"cim", "tmp_cim", "smashclp", "Association"};

std::vector<Table> all_tables() {
  std::vector<Table> all;
  for (const auto& tables : {sensor_tables(), profile_tables(), service_tables(), job_tables(), association_tables()}) {
    all.insert(all.end(), tables.begin(), tables.end());
  }
  return all;
}

std::string schema_of(std::string database) {
  database[0] = static_cast<char>(std::tolower(database[0]));
  std::ifstream file(std::string(QMV_SCHEMA) + "/" + database + ".sql");
  std::ostringstream text;
  text << file.rdbuf();
  if (text.str().empty()) throw std::runtime_error("no schema of " + database);
  return text.str();
}

// One of the databases, as its schema makes it, in a scratch directory that the fixed paths lead to.
class Database {
 public:
  explicit Database(const std::string& name) {
    directory_ = std::filesystem::temp_directory_path() / "qmv-schema-XXXXXX";
    if (mkdtemp(directory_.data()) == nullptr) throw std::runtime_error("no scratch directory");
    qmvctl::test::redirect_fixed_paths(directory_);
    const std::map<std::string, std::int32_t (*)(sqlite3**)> openers = {
        {"cim", db_init}, {"tmp_cim", tmp_db_init}, {"smashclp", smash_db_init}};
    const auto opener = openers.find(name);
    EXPECT_EQ(0, opener != openers.end() ? opener->second(&handle_)
                                         : sqlite3_open((directory_ + "/" + name + ".db").c_str(), &handle_));
    sql("pragma synchronous = off; begin; " + schema_of(name) + "commit;");
  }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  ~Database() {
    while (sqlite3_stmt* statement = sqlite3_next_stmt(handle_, nullptr)) sqlite3_finalize(statement);
    EXPECT_EQ(0, db_close(handle_));
    std::filesystem::remove_all(directory_);
  }

  sqlite3* handle() const { return handle_; }

  // Runs SQL; returns the columns of all rows, one after another.
  std::vector<std::string> sql(const std::string& text) {
    std::vector<std::string> values;
    const auto add = [](void* to, int count, char** texts, char**) {
      for (int i = 0; i < count; ++i) {
        static_cast<std::vector<std::string>*>(to)->emplace_back(texts[i] == nullptr ? "NULL" : texts[i]);
      }
      return 0;
    };
    EXPECT_EQ(SQLITE_OK, sqlite3_exec(handle_, text.c_str(), add, &values, nullptr))
        << sqlite3_errmsg(handle_) << ": " << text;
    return values;
  }

  std::vector<std::string> tables() { return sql("select name from sqlite_master where type = 'table';"); }

  // The type of each column.
  std::map<std::string, std::string> types(const std::string& table) {
    std::map<std::string, std::string> types;
    const auto names_and_types = sql("select name, type from pragma_table_info('" + table + "');");
    for (std::size_t i = 0; i < names_and_types.size(); i += 2) types[names_and_types[i]] = names_and_types[i + 1];
    return types;
  }

  std::string value(const Table& table, const std::string& column) {
    const auto values = sql("select " + column + " from " + table.name + ";");
    return values.size() == 1 ? values[0] : std::to_string(values.size()) + " rows";
  }

 private:
  std::string directory_;
  sqlite3* handle_ = nullptr;
};

// What a member holds. Numbers in texts begin with a zero, which a number has not.
std::string member(const Bytes& record, const Field& field) {
  const char* at = record.data() + field.offset;
  if (field.is_text) return {at, strnlen(at, field.width)};
  std::int32_t number;
  std::memcpy(&number, at, sizeof(number));
  return std::to_string(number);
}

void put(Bytes& record, const Field& field, const std::string& value) {
  char* at = record.data() + field.offset;
  std::memset(at, 0, field.width);
  if (field.is_text) {
    std::memcpy(at, value.data(), std::min(value.size(), field.width));
  } else {
    const std::int32_t number = std::stoi(value);
    std::memcpy(at, &number, sizeof(number));
  }
}

class TableTest : public testing::TestWithParam<Table> {
 protected:
  const Table& table = GetParam();

  // A record whose members count up from a first number.
  Bytes counting_from(int number) const {
    std::size_t size = 0;
    for (const Field& field : table.fields) size = std::max(size, field.offset + field.width);
    Bytes record(size);
    for (const Field& field : table.fields) {
      const auto given = table.given.find(field.column);
      put(record, field,
          given != table.given.end() ? given->second : (field.is_text ? "0" : "") + std::to_string(number));
      ++number;
    }
    return record;
  }

  void expect_row(Database& database, const Bytes& record) const {
    EXPECT_EQ("1", database.value(table, "count(*)"));
    for (const Field& field : table.fields) {
      EXPECT_EQ(member(record, field), database.value(table, field.column)) << field.column;
    }
  }
};
using WrittenTable = TableTest;
using ReadTable = TableTest;

TEST_P(WrittenTable, HasEachMemberUnderItsColumn) {
  for (const Setter& setter : table.setters) {
    SCOPED_TRACE(setter.name);
    Database database(table.database);
    Bytes record = counting_from(10);
    setter.set(database.handle(), record);
    expect_row(database, record);
  }
}

TEST_P(WrittenTable, HasTheKeyThatASetMeets) {
  for (const Setter& setter : table.setters) {
    if (setter.existing == Setter::Existing::kIsNeverMet) continue;
    SCOPED_TRACE(setter.name);
    Database database(table.database);
    Bytes before = counting_from(10);
    table.setters.front().set(database.handle(), before);
    Bytes after = counting_from(80);
    for (const Field& field : table.fields) {
      if (std::count(table.key.begin(), table.key.end(), field.column)) put(after, field, member(before, field));
    }
    setter.set(database.handle(), after);
    expect_row(database, setter.existing == Setter::Existing::kIsUpdated ? after : before);
  }
}

TEST_P(ReadTable, GivesEachColumnToItsMember) {
  Database database(table.database);
  Row row;
  std::string columns;
  std::string values;
  int number = 10;
  for (const std::string& column : database.sql("select name from pragma_table_info('" + table.name + "');")) {
    const bool is_text = database.types(table.name).at(column) == "TEXT";
    const auto given = table.given.find(column);
    row[column].text = given != table.given.end() ? given->second : (is_text ? "0" : "") + std::to_string(number);
    ++number;
    columns += (columns.empty() ? "" : ", ") + column;
    values += (values.empty() ? "'" : ", '") + row[column].text + "'";
  }
  database.sql("insert into " + table.name + " (" + columns + ") values (" + values + ");");
  for (const Reader& reader : table.readers) {
    SCOPED_TRACE(reader.name);
    const Bytes record = reader.read(database.handle(), row);
    for (const Field& field : reader.fields.empty() ? table.fields : reader.fields) {
      const Value& value = row[field.column];
      EXPECT_EQ(field.is_text ? value.text : std::to_string(std::int32_t{value}), member(record, field))
          << field.column;
    }
  }
}

TEST_P(ReadTable, HasColumnsOfTheirMembersTypes) {
  Database database(table.database);
  const auto types = database.types(table.name);
  for (const Field& field : table.fields) {
    ASSERT_TRUE(types.contains(field.column)) << field.column;
    EXPECT_EQ(field.is_text ? "TEXT" : "INTEGER", types.at(field.column)) << field.column;
  }
}

TEST(Schema, HasExactlyTheTablesThatTheseTestsKnow) {
  std::set<std::string> known;
  for (const Table& table : all_tables()) known.insert(table.database + "." + table.name);
  std::set<std::string> found;
  for (const std::string name : kDatabases) {
    Database database(name);
    for (const std::string& table : database.tables()) found.insert(name + "." + table);
  }
  EXPECT_EQ(known, found);
}

std::vector<Table> written_tables() {
  std::vector<Table> tables = all_tables();
  std::erase_if(tables, [](const Table& table) { return table.setters.empty(); });
  return tables;
}

const auto name_of = [](const testing::TestParamInfo<Table>& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Schema, WrittenTable, testing::ValuesIn(written_tables()), name_of);
INSTANTIATE_TEST_SUITE_P(Schema, ReadTable, testing::ValuesIn(all_tables()), name_of);

}  // namespace
}  // namespace qmv::test

// The host's debug output is not looked at here.
void HTRC_LINUXAPP_DbgOut(int, const char*, ...) {}
void HTRC_LINUXAPP_Runtime_DbgOut(int, const char*, ...) {}
