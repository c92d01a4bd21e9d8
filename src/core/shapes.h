// The shapes of the record accessors: count, get-all, get-one, set. Each is one ordinary function, compiled once; the
// templates in front of it only check, while compiling, that the statement fits what it is filled with.
#ifndef QMV_CORE_SHAPES_H
#define QMV_CORE_SHAPES_H

#include <sqlite3.h>

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "core/columns.h"
#include "core/fits.h"
#include "core/forms.h"
#include "core/statement.h"

namespace qmv {

// The caller's pointer to a record pointer, of whatever record.
class Out {
 public:
  template <class Record>
  Out(Record** place) : place_(place) {}  // stands for any record's pointer
  void store(void* block) const { std::memcpy(place_, &block, sizeof(block)); }

 private:
  void* place_;
};

// An exported function that counts a table's rows.
using CountFunction = std::int32_t(sqlite3*, std::int32_t*);

// Calls a count function for a get-all. Returns the number of rows, below 0 when they could not be counted.
std::int32_t counted(CountFunction* count, sqlite3* db);

template <class Filter>
std::int32_t counted(std::int32_t (*count)(sqlite3*, std::int32_t*, Filter), sqlite3* db, Filter filter) {
  std::int32_t rows = 0;
  return count(db, &rows, filter) == kOk ? rows : -1;
}

// The shapes proper. The variable arguments are those of the statement, the table's name first; of the upsert's two
// statements both take the name and the record's columns, and the update goes on to take its keys.
std::int32_t count_rows(const CountForm<Stored>& form, Site site, sqlite3* db, std::int32_t* count, const char* select,
                        ...);
std::int32_t get_all_rows(const GetAllForm<Stored>& form, Site site, const Layout& layout, sqlite3* db,
                          std::int32_t rows, std::int32_t* count, Out records, const char* select, ...);
std::int32_t get_one_row(const GetOneForm<Stored>& form, Site site, const Layout& layout, sqlite3* db, Out record,
                         const char* select, ...);
std::int32_t fill_row(const GetOneForm<Stored>& form, Site site, const Layout& layout, sqlite3* db, void* record,
                      const char* select, ...);
std::int32_t upsert_row(Site site, sqlite3* db, const char* insert, const char* present, const char* update, ...);
std::int32_t set_row(const SetForm<Stored>& form, Site site, sqlite3* db, const char* insert, const char* update, ...);

// The second halves of count and get-all, from the compiled statement on, for accessors whose first half departs.
std::int32_t read_count(const CountForm<Stored>& form, Site site, Statement& statement, std::int32_t* count);
std::int32_t read_rows(const GetAllForm<Stored>& form, Site site, const Layout& layout, Statement& statement,
                       std::int32_t count, Out records);

// An allocation failure of a get-one or get-all: its trace, its status, and its statement, which stays open.
std::int32_t out_of_memory(Site site, Statement& statement, OutOfMemory answer = OutOfMemory::kReturnsOne);

// The text of a packed form.
#define QMV_TEXT(packed, member) ::qmv::text((packed).form, (packed).form.member)

// In the templates below, Sql has the table's name and the statements, and Form what is said and answered; they are one
// where a table's accessors share neither.
template <const auto& Form, const auto& Sql = Form, class... Filter>
std::int32_t get_count(Site site, sqlite3* db, std::int32_t* count, Filter... filter) {
  static_assert(fits<Filter...>(Sql.at_compile_time(Sql.form.select)));
  return count_rows(Form.form, site, db, count, QMV_TEXT(Sql, select), QMV_TEXT(Sql, table), filter...);
}

template <const auto& List>
using RecordOf = typename std::remove_cvref_t<decltype(List)>::Record;

template <const auto& Form, const auto& List, const auto& Sql = Form, class... Filter>
std::int32_t get_all(Site site, sqlite3* db, std::int32_t rows, std::int32_t* count, RecordOf<List>** records,
                     Filter... filter) {
  static_assert(fits<Filter...>(Sql.at_compile_time(Sql.form.select)));
  return get_all_rows(Form.form, site, kRuns<List>.layout, db, rows, count, records, QMV_TEXT(Sql, select),
                      QMV_TEXT(Sql, table), filter...);
}

// Get-one into a new record.
template <const auto& Form, const auto& List, const auto& Sql = Form, class... Keys>
std::int32_t get_one(Site site, sqlite3* db, RecordOf<List>** record, Keys... keys) {
  static_assert(fits<Keys...>(Sql.at_compile_time(Sql.form.select)));
  return get_one_row(Form.form, site, kRuns<List>.layout, db, record, QMV_TEXT(Sql, select), QMV_TEXT(Sql, table),
                     keys...);
}

// Get-one into the caller's record; it traces the reading before it steps.
template <const auto& Form, const auto& List, const auto& Sql = Form, class... Keys>
std::int32_t fill(Site site, sqlite3* db, RecordOf<List>* record, Keys... keys) {
  static_assert(fits<Keys...>(Sql.at_compile_time(Sql.form.select)));
  return fill_row(Form.form, site, kRuns<List>.layout, db, record, QMV_TEXT(Sql, select), QMV_TEXT(Sql, table),
                  keys...);
}

// The columns of a list by number, for a pack of their values.
template <const auto& List>
using NumbersOf = std::make_index_sequence<List.table_columns()>;

template <const auto& List, const auto& Keys, const auto& Sql>
constexpr bool kUpsertFits = fits_columns(Sql.at_compile_time(Sql.form.insert), List) &&
                             fits_columns(Sql.at_compile_time(Sql.form.update), List, Keys);

// Inserts the record, or updates it where its key exists. Returns the code of the last statement.
template <const auto& Form, const auto& List, const auto& Keys, const auto& Sql, std::size_t... Each,
          std::size_t... Key>
std::int32_t upsert(Site site, sqlite3* db, const RecordOf<List>& record, std::index_sequence<Each...>,
                    std::index_sequence<Key...>) {
  return upsert_row(site, db, QMV_TEXT(Sql, insert), QMV_TEXT(Form, present), QMV_TEXT(Sql, update),
                    QMV_TEXT(Sql, table), value<List, Each>(record)..., value<Keys, Key>(record)...);
}

template <const auto& Form, const auto& List, const auto& Keys, const auto& Sql = Form>
std::int32_t upsert(Site site, sqlite3* db, const RecordOf<List>* record) {
  static_assert(kUpsertFits<List, Keys, Sql>);
  return upsert<Form, List, Keys, Sql>(site, db, *record, NumbersOf<List>{}, NumbersOf<Keys>{});
}

// Set: an upsert that reports success whatever happened.
template <const auto& Form, const auto& List, const auto& Keys, const auto& Sql, std::size_t... Each,
          std::size_t... Key>
std::int32_t set(Site site, sqlite3* db, const RecordOf<List>& record, std::index_sequence<Each...>,
                 std::index_sequence<Key...>) {
  return set_row(Form.form, site, db, QMV_TEXT(Sql, insert), QMV_TEXT(Sql, update), QMV_TEXT(Sql, table),
                 value<List, Each>(record)..., value<Keys, Key>(record)...);
}

template <const auto& Form, const auto& List, const auto& Keys, const auto& Sql = Form>
std::int32_t set(Site site, sqlite3* db, const RecordOf<List>* record) {
  static_assert(kUpsertFits<List, Keys, Sql>);
  return set<Form, List, Keys, Sql>(site, db, *record, NumbersOf<List>{}, NumbersOf<Keys>{});
}

}  // namespace qmv

#endif
