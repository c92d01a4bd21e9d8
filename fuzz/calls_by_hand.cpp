// Calls whose arguments are not made of their parameters' types alone, as the targets make them.
#include <sqlite3.h>

#include <algorithm>
#include <cstring>

#include "database.h"
#include "qmv.h"
#include "torture/calls.h"
#include "torture/guarded.h"

namespace qmv::test {

namespace {

// A caller's record at the end of a page.
template <class Record>
class CallersRecord {
 public:
  explicit CallersRecord(const Material& material) : memory_(sizeof(Record), material.fill) {
    std::copy_n(material.bytes.data(), std::min(material.bytes.size(), sizeof(Record)), memory_.bytes());
  }
  Record* get() const { return reinterpret_cast<Record*>(memory_.bytes()); }

 private:
  Guarded memory_;
};

Answer add_events(sqlite3* db, const Material& material) {
  const CallersRecord<sel_rec> event(material);
  return {db_add_sel_entries(db, 1, event.get(), material.number)};
}

Answer create_job(sqlite3* db, const Material& material) {
  const CallersRecord<concrete_job_rec> job(material);
  const Guarded identifier(sizeof(concrete_job_rec::InstanceID), '?');
  return {db_set_concretejob(db, job.get(), identifier.bytes())};
}

template <class Record>
Answer filled(sqlite3* db, const char* query, std::int32_t (*fill)(Record*, sqlite3_stmt*)) {
  const Guarded record(sizeof(Record), '?');
  sqlite3_stmt* row = nullptr;
  Answer answer;
  if (sqlite3_prepare_v2(db, query, -1, &row, nullptr) == SQLITE_OK && sqlite3_step(row) == SQLITE_ROW)
    answer.status = fill(reinterpret_cast<Record*>(record.bytes()), row);
  answer.content.assign(record.bytes(), sizeof(Record));
  sqlite3_finalize(row);
  return answer;
}

Answer power_supplies(sqlite3*, const Material&) {
  char** names = nullptr;
  std::int32_t count = 0;
  const std::int32_t status = get_all_ps_from_db(&names, &count);
  for (std::int32_t i = 0; names != nullptr && i < count; ++i) db_freemem(names[i]);
  db_freemem(names);
  return {status, count};
}

Answer plugins(sqlite3*, const Material&) {
  association_reg_rec* records = nullptr;
  std::int32_t count = 0;
  const std::int32_t status = load_plugins(&records, &count, "any");
  db_freemem(records);
  return {status, count};
}

// Releases what a list has, up to its end.
void release(char** list) {
  for (char** text = list; text != nullptr && *text != nullptr; ++text) db_freemem(*text);
  db_freemem(list);
}

// FreeDBData() loses texts of pairs that are not of one length.
void release(association_rec* records, std::int32_t count) {
  const auto is_pair = [](const association_rec& record) {
    return record.Count5 == record.Count6 && record.Count8 == 0 && record.List5 != nullptr && record.List6 != nullptr &&
           record.List7 == nullptr && record.List8 == nullptr;
  };
  if (count > 0 && std::all_of(records, records + count, is_pair)) return FreeDBData(&records, count);
  for (std::int32_t i = 0; i < count; ++i) {
    for (char** list : {records[i].List5, records[i].List6, records[i].List7, records[i].List8}) release(list);
  }
  db_freemem(records);
}

Answer associations(sqlite3*, const Material&) {
  association_rec* records = nullptr;
  std::int32_t count = 0;
  std::int32_t status = get_association_data(&records, "select * from association;", &count);
  release(records, count);
  const std::int32_t selected = count;
  records = nullptr;
  count = 0;
  status += assoc_get_global_data(&records, &count);
  release(records, count);
  return {status, selected + count};
}

// A file of which only a table's name is known.
Answer introspection(sqlite3*, const Material&) {
  const fuzz::Forgiving meanwhile;
  column_name_node* names = nullptr;
  std::int32_t status = GetColumnNames(&names, "any", "sel");
  free_column_names(names);
  const Guarded value(256, '?');
  status += GetColumnValues("any", value.bytes(), "GeneratorID", "sel", 1);
  const Guarded table(256, '?');
  std::int32_t rows = 0;
  status += get_static_instances("any", &rows, table.bytes());
  return {status, rows, Handed::kNothing, {value.bytes(), 256}};
}

}  // namespace

std::vector<Call> calls_by_hand() {
  return {
      {"db_add_sel_entries", Shape::kExecute, add_events},
      {"db_set_concretejob", Shape::kExecute, create_job},
      {"db_fill_compact_sdr_fields", Shape::kGetOne,
       [](sqlite3* db, const Material&) {
         return filled(db, "select * from compact_sdr;", db_fill_compact_sdr_fields);
       }},
      {"db_fill_full_sdr_fields", Shape::kGetOne,
       [](sqlite3* db, const Material&) { return filled(db, "select * from full_sdr;", db_fill_full_sdr_fields); }},
      {"get_all_ps_from_db", Shape::kOther, power_supplies},
      {"load_plugins", Shape::kOther, plugins},
      {"associations", Shape::kOther, associations},
      {"introspection", Shape::kOther, introspection},
  };
}

}  // namespace qmv::test
