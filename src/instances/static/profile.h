// What the profile tables have in common: one table for each CIM class that the management services publish.
#ifndef QMV_INSTANCES_STATIC_PROFILE_H
#define QMV_INSTANCES_STATIC_PROFILE_H

#include "core/shapes.h"
#include "qmv.h"

namespace qmv::profile {

constexpr Site here(std::uint32_t line = __builtin_LINE()) {
  return {Module::kStaticInstances, line};
}

// A table and its statements, apart from what its accessors say: many tables borrow the texts of others.
template <template <class> class Text>
struct TableForm {
  Text<Sql> table;
  Text<Sql> select = {};  // of the get-one
  Text<Sql> insert;
  Text<Sql> update;

  constexpr TableForm<Stored> stored(auto store) const {
    return {store(table), store(select), store(insert), store(update)};
  }
};
using Table = TableForm<Written>;

// Get-all, counted by db_get_cnt().
std::int32_t list_rows(const GetAllForm<Stored>& form, Site site, const Layout& layout, sqlite3* db,
                       std::int32_t* count, Out records, const char* table);

template <const auto& Form, const auto& List, const auto& Sql>
std::int32_t list(Site site, sqlite3* db, std::int32_t* count, RecordOf<List>** records) {
  return list_rows(Form.form, site, kRuns<List>.layout, db, count, records, QMV_TEXT(Sql, table));
}

}  // namespace qmv::profile

#endif
