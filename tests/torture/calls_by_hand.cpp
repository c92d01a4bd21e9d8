#include <sqlite3.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>

#include "qmv.h"
#include "support/boundary.h"
#include "torture/arguments.h"
#include "torture/calls.h"
#include "torture/failing.h"

namespace qmv::test {

namespace {

constexpr char kInstances[] = "/tmp/cim.db";
constexpr char kRegistry[] = "/etc/Association.db";

// A statement of the test's own that stands on a row; no fault meets it.
class Row {
 public:
  Row(sqlite3* db, const char* query) {
    const Healthy meanwhile;
    if (__real_sqlite3_prepare(db, query, -1, &row_, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(db));
    __real_sqlite3_step(row_);
  }
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;
  ~Row() { __real_sqlite3_finalize(row_); }

  sqlite3_stmt* get() const { return row_; }

 private:
  sqlite3_stmt* row_ = nullptr;
};

template <class Record>
Call fills(const char* name, const char* query, std::int32_t (*fill)(Record*, sqlite3_stmt*)) {
  return {name, Shape::kOther, [=](sqlite3* db, const Material& material) {
            const Guarded record(sizeof(Record), material.fill);
            const std::int32_t status = fill(reinterpret_cast<Record*>(record.bytes()), Row(db, query).get());
            return Answer{.status = status, .content = {record.bytes(), sizeof(Record)}};
          }};
}

Call opens(const char* name, std::int32_t (*open)(sqlite3**)) {
  return {name, Shape::kOther, [=](sqlite3*, const Material&) {
            sqlite3* opened = nullptr;
            const std::int32_t status = open(&opened);
            if (status == SQLITE_OK) sqlite3_close(opened);
            return Answer{.status = status};
          }};
}

Call hands_out_queries(const char* name, std::int32_t (*hand_out)(const char*, char*, char*)) {
  return {name, Shape::kOther, [=](sqlite3*, const Material&) {
            const Guarded count(QMV_COUNT_QUERY_SIZE, 0);
            const Guarded list(QMV_LIST_QUERY_SIZE, 0);
            Answer answer;
            for (const char* each : {"CIM_Slot", "CIM_Card", "CIM_Chassis", "CIM_Chip", "CIM_PhysicalPackage",
                                     "CIM_PhysicalConnector", "CIM_PhysicalMemory"}) {
              answer.status = answer.status.value_or(0) + hand_out(each, count.bytes(), list.bytes());
              answer.content += std::string(count.bytes()) + list.bytes();
            }
            return answer;
          }};
}

std::string content_of(char** texts, std::int32_t count) {
  std::string content;
  for (std::int32_t i = 0; texts != nullptr && i < count; ++i)
    content += texts[i] == nullptr ? "(null)" : std::string(texts[i]) + ",";
  return content;
}

void release_texts(char** texts, std::int32_t count) {
  for (std::int32_t i = 0; texts != nullptr && i < count; ++i) std::free(texts[i]);
  std::free(texts);
}

// The answer of a function that makes an array of texts.
Answer texts_of(std::int32_t (*make)(char***, std::int32_t*)) {
  char* untouched = nullptr;
  char** texts = &untouched;
  std::int32_t count = kUntouched;
  Answer answer{.status = make(&texts, &count)};
  answer.number = count;
  if (texts == &untouched) return answer;
  answer.handed = texts == nullptr ? Handed::kNull : Handed::kBlock;
  answer.content = content_of(texts, count);
  release_texts(texts, count);
  return answer;
}

// An array of associations, released with its lists.
struct Associations {
  association_rec untouched = {};
  association_rec* records = &untouched;
  std::int32_t count = kUntouched;

  Associations() = default;
  Associations(const Associations&) = delete;
  Associations& operator=(const Associations&) = delete;
  ~Associations() {
    if (records != &untouched) FreeDBData(&records, count);
  }

  Answer answer(std::int32_t status) const {
    Answer answer{status, count};
    if (records == &untouched) return answer;
    answer.handed = records == nullptr ? Handed::kNull : Handed::kBlock;
    for (std::int32_t i = 0; records != nullptr && i < count; ++i) answer.content += content_of(records[i]);
    return answer;
  }

  static std::string content_of(const association_rec& record) {
    std::string content = std::to_string(record.Flag4) + ";";
    for (const auto& text : {record.NameSpace, record.ClassName, record.Text2, record.Text3})
      content += std::string(text, strnlen(text, sizeof(record.Text2))) + ";";
    return content + test::content_of(record.List5, record.Count5) + test::content_of(record.List6, record.Count6) +
           test::content_of(record.List7, record.Count7) + test::content_of(record.List8, record.Count7);
  }
};

Answer call_free_global_structure(sqlite3*, const Material&) {
  Associations loaded;
  if (assoc_get_global_data(&loaded.records, &loaded.count) != 0 || loaded.records == nullptr) return {.status = 1};
  for (std::int32_t i = 0; i < loaded.count; ++i) {
    association_rec& record = loaded.records[i];
    release_texts(record.List5, record.Count5);
    release_texts(record.List6, record.Count6);
  }
  return {.status = free_global_structure(std::exchange(loaded.records, nullptr), loaded.count)};
}

Answer call_fill_association_data(sqlite3* db, const Material&) {
  association_rec record = {};
  fill_association_data(Row(db, "select * from association;").get(), &record);
  const Answer answer{.content = Associations::content_of(record)};
  release_texts(record.List5, record.Count5);
  release_texts(record.List6, record.Count6);
  release_texts(record.List7, record.Count7);
  release_texts(record.List8, record.Count7);
  return answer;
}

Answer call_GetColumnNames(sqlite3*, const Material&) {
  column_name_node* names = nullptr;
  Answer answer{.status = GetColumnNames(&names, kInstances, "sel")};
  if (names != nullptr) answer.handed = Handed::kBlock;
  for (const column_name_node* each = names; each != nullptr; each = each->Next)
    answer.content += std::string(each->ColumnName) + ",";
  free_column_names(names);
  return answer;
}

Answer call_GetColumnValues(sqlite3*, const Material& material) {
  const Guarded value(256, material.fill);
  const std::int32_t status = GetColumnValues(kInstances, value.bytes(), "Description", "event_type", material.number);
  return {.status = status, .content = {value.bytes(), 256}};
}

Answer call_get_static_instances(sqlite3*, const Material& material) {
  std::int32_t rows = kUntouched;
  const Guarded table(256, material.fill);
  const std::int32_t status = get_static_instances(kInstances, &rows, table.bytes());
  return {.status = status, .number = rows, .content = {table.bytes(), 256}};
}

Answer call_load_plugins(sqlite3* db, const Material& material) {
  const Source source{db, material};
  Argument<association_reg_rec**> records(source);
  Argument<std::int32_t*> count(source);
  Answer answer{.status = load_plugins(records.get(), count.get(), kRegistry)};
  count.report_number(answer);
  records.report(answer);
  return answer;
}

Answer call_db_set_concretejob(sqlite3* db, const Material& material) {
  Argument<concrete_job_rec*> job(Source{db, material});
  const Guarded identifier(sizeof(concrete_job_rec::InstanceID), material.fill);
  Answer answer{.status = db_set_concretejob(db, job.get(), identifier.bytes())};
  job.report(answer);
  answer.content.append(identifier.bytes(), sizeof(concrete_job_rec::InstanceID));
  return answer;
}

Answer call_db_commit(sqlite3* db, const Material&) {
  {
    const Healthy meanwhile;
    __real_sqlite3_exec(db, "begin; delete from sel;", nullptr, nullptr, nullptr);
  }
  return {.status = db_commit(db)};
}

Answer call_db_close(sqlite3*, const Material&) {
  sqlite3* opened = nullptr;
  {
    const Healthy meanwhile;
    __real_sqlite3_open(":memory:", &opened);
  }
  return {.status = db_close(opened)};
}

}  // namespace

std::vector<Call> calls_by_hand() {
  return {
      opens("db_init", db_init),
      opens("tmp_db_init", tmp_db_init),
      opens("smash_db_init", smash_db_init),
      {"db_commit", Shape::kExecute, call_db_commit},
      {"db_execute", Shape::kExecute,
       [](sqlite3* db, const Material& material) {
         return Answer{.status = db_execute(db, "update sel set SensorNum=1+%d where GeneratorID='%q';",
                                            material.number, material.text.c_str())};
       }},
      {"db_close", Shape::kOther, call_db_close},
      {"db_freemem", Shape::kOther,
       [](sqlite3*, const Material&) {
         db_freemem(__real_malloc(1));
         db_freemem(nullptr);
         return Answer{};
       }},
      fills("db_fill_compact_sdr_fields", "select * from compact_sdr;", db_fill_compact_sdr_fields),
      fills("db_fill_full_sdr_fields", "select * from full_sdr;", db_fill_full_sdr_fields),
      {"db_add_sel_entries", Shape::kExecute,
       [](sqlite3* db, const Material& material) {
         const Guarded event(sizeof(sel_rec), material.fill);
         return Answer{.status = db_add_sel_entries(db, 1, reinterpret_cast<sel_rec*>(event.bytes()), material.number)};
       }},
      hands_out_queries("get_sqlqueries", get_sqlqueries),
      hands_out_queries("get_sqlqueries_nonFRU", get_sqlqueries_nonFRU),
      {"get_all_ps_from_db", Shape::kOther, [](sqlite3*, const Material&) { return texts_of(get_all_ps_from_db); }},
      {"db_set_concretejob", Shape::kExecute, call_db_set_concretejob, {}, true},
      {"assoc_get_global_data", Shape::kOther,
       [](sqlite3*, const Material&) {
         Associations loaded;
         const std::int32_t status = assoc_get_global_data(&loaded.records, &loaded.count);
         return loaded.answer(status);
       }},
      {"get_association_data", Shape::kOther,
       [](sqlite3*, const Material&) {
         Associations loaded;
         loaded.records = nullptr;  // as it asks for
         const std::int32_t status = get_association_data(&loaded.records, "select * from association;", &loaded.count);
         return loaded.answer(status);
       }},
      {"fill_association_data", Shape::kOther, call_fill_association_data},
      {"FreeDBData", Shape::kOther,
       [](sqlite3*, const Material&) {
         association_rec* records = nullptr;
         FreeDBData(&records, 0);
         return Answer{};
       }},
      {"free_global_structure", Shape::kOther, call_free_global_structure},
      {"GetArrayCount", Shape::kOther,
       [](sqlite3*, const Material&) {
         return texts_of([](auto* list, auto* count) { return GetArrayCount("{a, b,,c}", list, count); });
       }},
      {"load_plugins", Shape::kOther, call_load_plugins},
      {"get_table_count", Shape::kOther,
       [](sqlite3* db, const Material&) {
         return Answer{.status = get_table_count(Row(db, "select * from sel;").get())};
       }},
      {"get_static_instances", Shape::kOther, call_get_static_instances},
      {"GetColumnNames", Shape::kOther, call_GetColumnNames},
      {"free_column_names", Shape::kOther,
       [](sqlite3*, const Material&) { return Answer{.status = free_column_names(nullptr)}; }},
      {"GetColumnValues", Shape::kOther, call_GetColumnValues},
  };
}

}  // namespace qmv::test
