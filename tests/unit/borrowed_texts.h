// The texts of the physical assets and of the concrete collections, which tables of other classes borrow.
#ifndef QMV_TESTS_UNIT_BORROWED_TEXTS_H
#define QMV_TESTS_UNIT_BORROWED_TEXTS_H

#include "unit/profile_rules.h"

namespace qmv::test {

inline ProfileGetAllCase like_a_collection(ProfileGetAllCase one) {
  one.reading = "Get all concrete collection records from database";
  one.done = "Successfully got all concrete collections %d";
  one.count_failed = "Fail to get concrete collection records";
  return one;
}

inline ProfileGetOneCase like_an_asset(ProfileGetOneCase one) {
  one.reading = "Get Physical Asset capabilities record from database";
  one.no_row = "Fail to get the physical asset cap. record";
  one.no_statement = "Fail to get physical asset cap. record. SQLite stmt is NULL";
  return one;
}

inline ProfileSetCase like_an_asset(ProfileSetCase one) {
  one.present = "Physical Asset record is already present with that key";
  one.done = "Successfully update the Physical Asset cap. record";
  return one;
}

}  // namespace qmv::test

#endif
