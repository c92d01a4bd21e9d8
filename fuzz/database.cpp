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

// The schema's sensors have the columns of FRUs, too, with which the get-ones of their joins do not compile. They are
// tried with these.
constexpr char kBareSensors[] =
    "create temp table compact_sdr (EntityID int, EntityInstance int, IdStrLen int, IdStr text);"
    "create temp table full_sdr (EntityID int, EntityInstance int, IdStrLen int, IdStr text);";

bool needs_bare_sensors(const Call& call) {
  return call.name == "db_get_fru_compact_sdr" || call.name == "db_get_fru_full_sdr";
}

// What calls ask for by themselves.
constexpr const char* kFixed[] = {"TextRedirectionService1", "TextRedirectionSAP1", "AccountManagementService",
                                  "IndicationService"};

// What a call touches while it is tried out.
std::set<std::string> touched;

int note_table(void*, int action, const char* table, const char*, const char* schema, const char*) {
  if (table != nullptr &&
      (action == SQLITE_READ || action == SQLITE_INSERT || action == SQLITE_UPDATE || action == SQLITE_DELETE))
    touched.insert(schema != nullptr && std::string(schema) == "temp" ? std::string("temp.") + table : table);
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

void make_tables(sqlite3* db, Tables tables, const std::set<std::string>& only) {
  for (const char* schema : {"cim", "tmp_cim", "smashclp", "association"}) {
    std::ifstream file(std::string(QMV_SCHEMA) + "/" + schema + ".sql");
    values(db, {std::istreambuf_iterator<char>(file), {}});
  }
  for (const std::string& name : values(db, "select name from sqlite_master where type = 'table';")) {
    const std::string columns =
        values(db, "select group_concat(name || ' ' || type) from pragma_table_info('" + name + "');").at(0);
    const bool wanted = only.empty() || only.contains(name);
    if (!wanted || tables == Tables::kOfAnyValues) values(db, "drop table " + name + ";");
    if (wanted && tables == Tables::kOfAnyValues) values(db, "create table " + name + " (" + columns + ");");
  }
}

bool writes(const Call& call) {
  static const std::set<std::string> kReads = {"db_check_is_entity_id_equals_to_sen_type", "get_row_count"};
  return (call.shape == Shape::kSet || call.shape == Shape::kExecute) && !kReads.contains(call.name);
}

sqlite3_stmt* prepared(sqlite3* db, const std::string& text) {
  sqlite3_stmt* statement = nullptr;
  require(sqlite3_prepare_v2(db, text.c_str(), -1, &statement, nullptr) == SQLITE_OK, text.c_str());
  return statement;
}

void run(sqlite3_stmt* statement) {
  require(sqlite3_step(statement) == SQLITE_DONE, sqlite3_sql(statement));
  sqlite3_reset(statement);
}

// A row by which most calls find what they look for.
void put_common_row(const Touched& table) {
  for (int i = 1; i <= sqlite3_bind_parameter_count(table.put); ++i) sqlite3_bind_int(table.put, i, 3);
  run(table.put);
}

// What a call looks for: what it is given, a text in a record of its caller's among that, or what it asks for by itself.
void bind_asked(sqlite3_stmt* row, int parameter, const test::Material& asked, Input& input) {
  const std::size_t which = input.choice(3 + std::size(kFixed));
  if (which == 0) {
    sqlite3_bind_int(row, parameter, asked.number);
    return;
  }
  const std::string text = which == 1 ? asked.text : which == 2 ? std::string(256, asked.fill) : kFixed[which - 3];
  sqlite3_bind_text(row, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void bind(sqlite3_stmt* row, int parameter, const test::Material& asked, Input& input) {
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
      bind_asked(row, parameter, asked, input);
      break;
    default: {
      const std::string text = input.text();
      sqlite3_bind_text(row, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }
  }
}

}  // namespace

Database::Database(Tables kind, const std::set<std::string>& only) {
  const Forgiving meanwhile;
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(note_tables));
  require(test::open_shared(&db_) == SQLITE_OK && test::open_shared(&bare_) == SQLITE_OK, "there is a database");
  make_tables(db_, kind, only);
  values(bare_, kBareSensors);
  add_tables(db_, "main");
  add_tables(bare_, "temp");
  for (const Touched& table : tables_) put_common_row(table);
  for (const Call& call : test::calls()) {
    // It keeps a statement and a text with each call.
    if (call.name != "db_get_sesstion_term_seq") try_out(call);
  }
  sqlite3_reset_auto_extension();
  for (sqlite3* db : {db_, bare_}) sqlite3_set_authorizer(db, nullptr, nullptr);
  for (const Touched& table : tables_) clear(table);
  for (Reader& reader : readers_) {
    reader.without_rows = reader.call.run(reader.db, reader.call.material);
    test::close_left_open();
  }
}

void Database::add_tables(sqlite3* db, const std::string& schema) {
  const std::string tables = "select name from " + schema + ".sqlite_master where type = 'table' order by name;";
  for (const std::string& table : values(db, tables)) {
    const std::string row =
        values(db, "select group_concat('?') from pragma_table_info('" + table + "', '" + schema + "');").at(0);
    const std::string name = schema == "main" ? table : schema + "." + table;
    tables_.push_back({name, db, prepared(db, "insert into " + name + " values (" + row + ");"),
                       prepared(db, "delete from " + name + ";")});
  }
}

// Finds out which tables it touches.
void Database::try_out(const Call& call) {
  touched.clear();
  sqlite3* const db = needs_bare_sensors(call) ? bare_ : db_;
  call.run(db, call.material);
  test::close_left_open();
  Reader reader{call, db, {}, {}};
  for (Touched& table : tables_) {
    if (!touched.contains(table.name)) continue;
    (writes(call) ? table.writers : table.readers).push_back(call);
    reader.tables.push_back(&table);
  }
  if (!writes(call) && !reader.tables.empty()) readers_.push_back(reader);
}

const Touched& Database::table(const std::string& name) const {
  return *std::find_if(tables_.begin(), tables_.end(), [&](const Touched& table) { return table.name == name; });
}

void Database::sql(const char* text) const {
  require(sqlite3_exec(db_, text, nullptr, nullptr, nullptr) == SQLITE_OK, text);
}

void put_row(const Touched& table, const test::Material& asked, Input& input) {
  for (int i = 1; i <= sqlite3_bind_parameter_count(table.put); ++i) bind(table.put, i, asked, input);
  run(table.put);
}

int clear(const Touched& table) {
  run(table.clear);
  return sqlite3_changes(table.db);
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
