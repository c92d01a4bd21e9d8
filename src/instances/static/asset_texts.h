// The texts of the physical asset and concrete collection accessors, which many tables of other classes borrow. They
// are what callers of those tables know; no table has a wording of its own.
#ifndef QMV_INSTANCES_STATIC_ASSET_TEXTS_H
#define QMV_INSTANCES_STATIC_ASSET_TEXTS_H

#include "core/forms.h"

namespace qmv::profile {

constexpr GetOne asset_get_one(Sql select) {
  return {
      .select = select,
      .no_statement = "[%s:%d]Fail to get physical asset cap. record. SQLite stmt is NULL",
      .no_row = "[%s:%d]Fail to get the physical asset cap. record",
      .reading = "[%s:%d]Get Physical Asset capabilities record from database",
      .done = kSilent,
  };
}

inline constexpr GetAll kCollectionGetAll = {
    .select = "select * from %q;",
    .count_failed = "[%s:%d]Fail to get concrete collection records",
    .no_rows = kSilent,
    .reading = "[%s:%d]Get all concrete collection records from database",
    .row = kSilent,
    .done = "[%s:%d]Successfully got all concrete collections %d",
    .outs = Outs::kUntouched,
};

constexpr Set asset_set(Sql insert, Sql update) {
  return {
      .insert = insert,
      .update = update,
      .present = "[%s:%d]Physical Asset record is already present with that key",
      .done = "[%s:%d]Successfully update the Physical Asset cap. record",
  };
}

}  // namespace qmv::profile

#endif
