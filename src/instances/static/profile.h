// What the profile tables have in common: one table for each CIM class that the management services publish.
#ifndef QMV_INSTANCES_STATIC_PROFILE_H
#define QMV_INSTANCES_STATIC_PROFILE_H

#include "core/shapes.h"
#include "qmv.h"

namespace qmv::profile {

constexpr Site here(std::uint32_t line = __builtin_LINE()) {
  return {Module::kStaticInstances, line};
}

// Get-all, counted by db_get_cnt().
std::int32_t list_rows(const GetAllForm<Stored>& form, Site site, sqlite3* db, std::int32_t* count, Out records,
                       const char* table);

template <class Table>
std::int32_t list(Site site, sqlite3* db, std::int32_t* count, RecordOf<Table::columns()>** records) {
  constexpr const GetAll& kForm = Table::template only<GetAll>();
  static_assert(fits<>(kForm.select.text()));
  return list_rows(Table::template form<kForm>(), site, db, count, records, Table::name());
}

}  // namespace qmv::profile

#endif
