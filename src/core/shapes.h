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
#include "core/table.h"

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

// The same for a get-all that clears the caller's pointer first.
template <class Record, class... Filter>
std::int32_t counted(Record** records, std::int32_t (*count)(sqlite3*, std::int32_t*, Filter...), sqlite3* db,
                     Filter... filter) {
  *records = nullptr;
  return counted(count, db, filter...);
}

// The shapes proper. The variable arguments are those of the statement, the table's name first; of the upsert's two
// statements both take the name and the record's columns, and the update goes on to take its keys.
std::int32_t count_rows(const CountForm<Stored>& form, Site site, sqlite3* db, std::int32_t* count, ...);
std::int32_t get_all_rows(const GetAllForm<Stored>& form, Site site, sqlite3* db, std::int32_t rows,
                          std::int32_t* count, Out records, ...);
std::int32_t get_one_row(const GetOneForm<Stored>& form, Site site, sqlite3* db, Out record, ...);
std::int32_t fill_row(const GetOneForm<Stored>& form, Site site, sqlite3* db, void* record, ...);
std::int32_t upsert_row(const SetForm<Stored>& form, Site site, sqlite3* db, ...);
std::int32_t set_row(const SetForm<Stored>& form, Site site, sqlite3* db, ...);

// The second halves of count and get-all, from the compiled statement on, for accessors whose first half departs.
std::int32_t read_count(const CountForm<Stored>& form, Site site, Statement& statement, std::int32_t* count);
std::int32_t read_rows(const GetAllForm<Stored>& form, Site site, Statement& statement, std::int32_t count,
                       Out records);

// An allocation failure of a get-one or get-all: its trace, its status, and its statement, which stays open.
std::int32_t out_of_memory(Site site, Statement& statement, OutOfMemory answer = OutOfMemory::kReturnsOne);

// In the templates below, the form has to be named where a table has several of its kind.
template <class Table, const auto& Form = Table::template only<Count>(), class... Filter>
std::int32_t get_count(Site site, sqlite3* db, std::int32_t* count, Filter... filter) {
  static_assert(fits<Filter...>(Form.select.text()));
  return count_rows(Table::template form<Form>(), site, db, count, Table::name(), filter...);
}

template <const auto& List>
using RecordOf = typename std::remove_cvref_t<decltype(List)>::Record;

template <class Table, const auto& Form = Table::template only<GetAll>(), class... Filter>
std::int32_t get_all(Site site, sqlite3* db, std::int32_t rows, std::int32_t* count,
                     RecordOf<Table::columns()>** records, Filter... filter) {
  static_assert(fits<Filter...>(Form.select.text()));
  return get_all_rows(Table::template form<Form>(), site, db, rows, count, records, Table::name(), filter...);
}

// Get-one into a new record.
template <class Table, const auto& Form = Table::template only<GetOne>(), class... Keys>
std::int32_t get_one(Site site, sqlite3* db, RecordOf<Table::columns()>** record, Keys... keys) {
  static_assert(fits<Keys...>(Form.select.text()));
  return get_one_row(Table::template form<Form>(), site, db, record, Table::name(), keys...);
}

// Get-one into the caller's record; it traces the reading before it steps.
template <class Table, const auto& Form = Table::template only<GetOne>(), class... Keys>
std::int32_t fill(Site site, sqlite3* db, RecordOf<Table::columns()>* record, Keys... keys) {
  static_assert(fits<Keys...>(Form.select.text()));
  return fill_row(Table::template form<Form>(), site, db, record, Table::name(), keys...);
}

// The columns of a list by number, for a pack of their values.
template <const auto& List>
using NumbersOf = std::make_index_sequence<List.table_columns()>;

// An upsert's shape, called with the columns and the keys of a record.
template <class Table, const auto& Keys, const auto& List, std::size_t... Each, std::size_t... Key>
std::int32_t with_values(auto shape, Site site, sqlite3* db, const RecordOf<List>& record, std::index_sequence<Each...>,
                         std::index_sequence<Key...>) {
  constexpr const Set& kForm = Table::template only<Set>();
  static_assert(fits_columns(kForm.insert.text(), List) && fits_columns(kForm.update.text(), List, Keys));
  return shape(Table::template form<kForm>(), site, db, Table::name(), value<List, Each>(record)...,
               value<Keys, Key>(record)...);
}

// Inserts the record, or updates it where its key exists. Returns the code of the last statement.
template <class Table, const auto& Keys, const auto& List = Table::columns()>
std::int32_t upsert(Site site, sqlite3* db, const RecordOf<List>* record) {
  return with_values<Table, Keys, List>(upsert_row, site, db, *record, NumbersOf<List>{}, NumbersOf<Keys>{});
}

// Set: an upsert that reports success whatever happened.
template <class Table, const auto& Keys, const auto& List = Table::columns()>
std::int32_t set(Site site, sqlite3* db, const RecordOf<List>* record) {
  return with_values<Table, Keys, List>(set_row, site, db, *record, NumbersOf<List>{}, NumbersOf<Keys>{});
}

}  // namespace qmv

#endif
