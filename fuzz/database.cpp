#include "database.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "support/shared_database.h"

// Of the leak sanitizer, where there is one.
extern "C" {
__attribute__((weak)) void __lsan_disable();
__attribute__((weak)) void __lsan_enable();
}

namespace qmv::fuzz {

namespace {

using test::Call;
using test::Shape;

constexpr int kSteps = 20000;  // of SQLite's machine, that a statement on a damaged file may take

// What the calls touch while they are tried out.
std::set<std::string> touched;

int note_table(void*, int action, const char* table, const char*, const char*, const char*) {
  if (table != nullptr &&
      (action == SQLITE_READ || action == SQLITE_INSERT || action == SQLITE_UPDATE || action == SQLITE_DELETE))
    touched.insert(table);
  return SQLITE_OK;
}

int note_tables(sqlite3* connection, char**, const void*) {
  return sqlite3_set_authorizer(connection, note_table, nullptr);
}

std::vector<std::string> values(sqlite3* db, const std::string& query) {
  std::vector<std::string> found;
  const auto add = [](void* to, int, char** texts, char**) {
    static_cast<std::vector<std::string>*>(to)->emplace_back(texts[0] == nullptr ? "" : texts[0]);
    return 0;
  };
  if (sqlite3_exec(db, query.c_str(), add, &found, nullptr) != SQLITE_OK)
    throw std::runtime_error(query + ": " + sqlite3_errmsg(db));
  return found;
}

void make_tables(sqlite3* db, Tables tables) {
  for (const char* schema : {"cim", "tmp_cim", "smashclp", "association"}) {
    std::ifstream file(std::string(QMV_SCHEMA) + "/" + schema + ".sql");
    values(db, {std::istreambuf_iterator<char>(file), {}});
  }
  if (tables == Tables::kAsTheSchemaSays) return;
  for (const std::string& name : values(db, "select name from sqlite_master where type = 'table';")) {
    const std::string columns =
        values(db, "select group_concat(name || ' ' || type) from pragma_table_info('" + name + "');").at(0);
    values(db, "drop table " + name + "; create table " + name + " (" + columns + ");");
  }
}

bool writes(const Call& call) {
  return call.shape == Shape::kSet || call.shape == Shape::kExecute;
}

// A row by which every call finds what it looks for.
void put_common_rows(sqlite3* db, const std::vector<Touched>& tables) {
  for (const Touched& table : tables) {
    std::string row = "3";
    for (int i = 1; i < table.columns; ++i) row += ", 3";
    values(db, "insert into " + table.name + " values (" + row + ");");
  }
}

void bind(sqlite3_stmt* row, int parameter, Input& input) {
  switch (input.choice(8)) {
    case 0:
      sqlite3_bind_null(row, parameter);
      break;
    case 1:
      sqlite3_bind_int64(row, parameter, input.number<std::int64_t>());
      break;
    case 2:
      sqlite3_bind_int(row, parameter, input.number<std::int8_t>());
      break;
    case 3:
      sqlite3_bind_double(row, parameter, input.number<double>());
      break;
    case 4: {
      const std::string blob = input.text();
      sqlite3_bind_blob(row, parameter, blob.data(), static_cast<int>(blob.size()), SQLITE_TRANSIENT);
      break;
    }
    case 5:
      sqlite3_bind_text(row, parameter, "k", 1, SQLITE_STATIC);  // what calls ask for by themselves
      break;
    default: {
      const std::string text = input.text();
      sqlite3_bind_text(row, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
  }
}

}  // namespace

Database::Database(Tables kind, const std::set<std::string>& kept) {
  const Forgiving meanwhile;
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(note_tables));
  require(test::open_shared(&db_) == SQLITE_OK, "there is a database");
  make_tables(db_, kind);
  for (const std::string& name : values(db_, "select name from sqlite_master where type = 'table' order by name;")) {
    tables_.push_back(
        {name, static_cast<int>(values(db_, "select 1 from pragma_table_info('" + name + "');").size()), {}, {}});
  }
  put_common_rows(db_, tables_);  // for the library's own connections too, hence in no transaction
  for (const Call& call : test::calls()) {
    // It keeps a statement and a text with each call.
    if (call.name == "db_get_sesstion_term_seq") continue;
    touched.clear();
    call.run(db_, call.material);
    test::close_left_open();
    for (Touched& table : tables_) {
      if (touched.contains(table.name)) (writes(call) ? table.writers : table.readers).push_back(call);
    }
  }
  for (const Touched& table : tables_) sql(("delete from " + table.name + ";").c_str());
  sqlite3_reset_auto_extension();
  sqlite3_set_authorizer(db_, nullptr, nullptr);
  if (kept.empty()) return;
  std::erase_if(tables_, [&](const Touched& table) {
    if (!kept.contains(table.name)) sql(("drop table " + table.name + ";").c_str());
    return !kept.contains(table.name);
  });
}

const Touched& Database::table(const std::string& name) const {
  return *std::find_if(tables_.begin(), tables_.end(), [&](const Touched& table) { return table.name == name; });
}

void Database::put_row(const Touched& table, Input& input) const {
  sql(("delete from " + table.name + ";").c_str());
  std::string insert = "insert into " + table.name + " values (?";
  for (int i = 1; i < table.columns; ++i) insert += ",?";
  sqlite3_stmt* row = nullptr;
  sqlite3_prepare_v2(db_, (insert + ");").c_str(), -1, &row, nullptr);
  for (int i = 1; i <= table.columns; ++i) bind(row, i, input);
  sqlite3_step(row);
  sqlite3_finalize(row);
}

void Database::sql(const char* text) const {
  require(sqlite3_exec(db_, text, nullptr, nullptr, nullptr) == SQLITE_OK, text);
}

Forgiving::Forgiving() {
  if (__lsan_disable != nullptr) __lsan_disable();
}

Forgiving::~Forgiving() {
  if (__lsan_enable != nullptr) __lsan_enable();
}

test::Material material_of(Input& input) {
  test::Material material;
  const std::size_t kind = input.choice(4);
  if (kind % 2 == 1) material.number = input.number<std::int32_t>();
  if (kind >= 2) material.text = input.text();
  material.fill = input.number<char>();
  return material;
}

sqlite3* connection_to(const std::string& image) {
  sqlite3* connection = nullptr;
  sqlite3_open_v2(":memory:", &connection, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  sqlite3_limit(connection, SQLITE_LIMIT_LENGTH, 1000000);
  sqlite3_progress_handler(
      connection, kSteps, [](void*) { return 1; }, nullptr);
  auto* const bytes = static_cast<unsigned char*>(sqlite3_malloc64(image.size() + 1));
  std::memcpy(bytes, image.data(), image.size());
  const auto size = static_cast<sqlite3_int64>(image.size());
  sqlite3_deserialize(connection, "main", bytes, size, size + 1,
                      SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE);
  return connection;
}

}  // namespace qmv::fuzz
