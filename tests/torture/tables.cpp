#include "torture/tables.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "support/boundary.h"
#include "torture/calls.h"

namespace qmv::test {

namespace {

// Every table has a row of each letter in all texts and that number in all integers. The numbers are entity IDs, sensor
// types and event types that the library knows: memory and processors, redundancy, power supplies.
constexpr std::pair<char, int> kRowsOfEachTable[] = {{'k', 3}, {'c', 7}, {'p', 10}, {'r', 11}, {'m', 12}};

// Some accessors look for one name, sensors are of all categories and one is of another type than its entity, lists have
// elements, identifiers of jobs a number, and what is there differs from what a record is filled with and updates write.
constexpr char kRowsOfKnownNames[] =
    "update textredirectionservice set Name = 'TextRedirectionService1' where Name = 'k';"
    "update textredirectionsap set Name = 'TextRedirectionSAP1' where Name = 'k';"
    "update account_management_service set Name = 'AccountManagementService' where Name = 'k';"
    "update indication_service set Name = 'IndicationService' where Name = 'k';"
    "update compact_sdr set PhysicalElement = 1024 + 256 + 3;"
    "update full_sdr set PhysicalElement = 1024 + 256 + 3;"
    "update full_sdr set SensorType = 1 where SensorNum = 11;"
    "update association set List5 = '{a, b}', List6 = '{c,d}', List7 = '{e}', List8 = '{f}' where rowid <= 2;"
    "update concrete_job set InstanceID = 'm-17' where InstanceID = 'm';"
    "update concrete_job set JobStatus = 's';"
    "update protocol_service set RequestedState = 2;"
    "update textredirectionservice set EnabledState = 2;"
    "update textredirectionsap set EnabledState = 2, SessionTerminateSequence = 's';"
    "update listener_destination set Destination = 'd';"
    "update indication_filter set Query = 'q';"
    "update indication_subscription set Enabled = 1;"
    "update request_state_change set RequestedState = 2;";

std::string file_text(const std::string& path) {
  std::ifstream file(path);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (text.empty()) throw std::runtime_error("there is no " + path);
  return text;
}

std::vector<std::string> tables_of(sqlite3* db) {
  return rows(db, "select name from sqlite_master where type = 'table' order by name;");
}

void insert_rows(sqlite3* db, char letter, int number) {
  const std::string value =
      std::string("iif(columns.type = 'INTEGER', '") + std::to_string(number) + "', '''" + letter + "''')";
  run_each(db, "select 'insert into ' || tables.name || ' values (' || group_concat(" + value +
                   ") || ');' from sqlite_master as tables, pragma_table_info(tables.name) as columns "
                   "where tables.type = 'table' group by tables.name;");
}

// Makes the last field of every first row another one, for an update to have something to change.
void change_first_rows(sqlite3* db) {
  run_each(db,
           "select 'update ' || tables.name || ' set ' || columns.name || ' = ' || "
           "iif(columns.type = 'INTEGER', '5', '''u''') || ' where rowid = 1;' "
           "from sqlite_master as tables, pragma_table_info(tables.name) as columns "
           "where tables.type = 'table' and not columns.pk group by tables.name having max(columns.cid);");
}

// Each set stores its record once, and finds it from then on.
void make_tables(sqlite3* db) {
  for (const char* schema : {"cim", "tmp_cim", "smashclp", "association"})
    rows(db, file_text(std::string(QMV_SCHEMA) + "/" + schema + ".sql"));
  for (const Call& set : calls_of(Shape::kSet)) set.run(db, set.material);
  for (void* kept : std::exchange(boundary().texts_alive, {})) sqlite3_free(kept);
  change_first_rows(db);
  for (const auto& [letter, number] : kRowsOfEachTable) insert_rows(db, letter, number);
  rows(db, kRowsOfKnownNames);
}

sqlite3* opened_empty() {
  sqlite3* db = nullptr;
  if (__real_sqlite3_open(":memory:", &db) != SQLITE_OK) throw std::runtime_error("no database in memory");
  return db;
}

std::string image_of(sqlite3* db) {
  sqlite3_int64 size = 0;
  unsigned char* const bytes = sqlite3_serialize(db, "main", &size, 0);
  const std::string image(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(size));
  sqlite3_free(bytes);
  return image;
}

}  // namespace

std::vector<std::string> rows(sqlite3* db, const std::string& sql) {
  std::vector<std::string> found;
  const auto add = [](void* to, int columns, char** values, char**) {
    std::string row;
    for (int i = 0; i < columns; ++i)
      row += (i == 0 ? "" : "|") + std::string(values[i] == nullptr ? "NULL" : values[i]);
    static_cast<std::vector<std::string>*>(to)->push_back(row);
    return 0;
  };
  if (__real_sqlite3_exec(db, sql.c_str(), add, &found, nullptr) != SQLITE_OK)
    throw std::runtime_error(sql + ": " + sqlite3_errmsg(db));
  return found;
}

void run_each(sqlite3* db, const std::string& query) {
  for (const std::string& statement : rows(db, query)) rows(db, statement);
}

const std::string& image_of_all_tables() {
  static const std::string image = [] {
    sqlite3* const db = opened_empty();
    make_tables(db);
    const std::string made = image_of(db);
    __real_sqlite3_close(db);
    return made;
  }();
  return image;
}

const std::string& image_with_narrow_sensors() {
  static const std::string image = [] {
    sqlite3* const db = opened(image_of_all_tables());
    run_each(db,
             "select 'alter table ' || tables.name || ' drop column ' || columns.name || ';' "
             "from sqlite_master as tables, pragma_table_info(tables.name) as columns "
             "where tables.name in ('compact_sdr', 'full_sdr') and columns.name <> 'EntityID' "
             "and columns.name in (select name from pragma_table_info('fru'));");
    const std::string made = image_of(db);
    __real_sqlite3_close(db);
    return made;
  }();
  return image;
}

std::string content(sqlite3* db) {
  std::string all;
  for (const std::string& table : tables_of(db)) {
    for (const std::string& row : rows(db, "select * from " + table + " order by rowid;")) all += row + "\n";
  }
  return all;
}

std::string image_of_tables(const std::set<std::string>& kept) {
  sqlite3* const db = opened(image_of_all_tables());
  for (const std::string& table : tables_of(db)) {
    if (!kept.contains(table)) rows(db, "drop table " + table + ";");
  }
  rows(db, "vacuum;");
  const std::string image = image_of(db);
  __real_sqlite3_close(db);
  return image;
}

sqlite3* opened(const std::string& image) {
  sqlite3* const db = opened_empty();
  auto* const bytes = static_cast<unsigned char*>(sqlite3_malloc64(image.size()));
  std::memcpy(bytes, image.data(), image.size());
  const auto size = static_cast<sqlite3_int64>(image.size());
  if (sqlite3_deserialize(db, "main", bytes, size, size,
                          SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE) != SQLITE_OK)
    throw std::runtime_error(sqlite3_errmsg(db));
  return db;
}

}  // namespace qmv::test
