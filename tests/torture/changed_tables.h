// Tables that somebody changes while a call is at work on them.
#ifndef QMV_TESTS_TORTURE_CHANGED_TABLES_H
#define QMV_TESTS_TORTURE_CHANGED_TABLES_H

#include <cstddef>
#include <string>
#include <vector>

#include "torture/torture_test.h"

namespace qmv::test {

// What happens to tables, as the end of a query that makes the statements.
extern const std::string kEmpty;
extern const std::string kHalve;
extern const std::string kDouble;  // every row once more, under another key and of another instance, behind the others
extern const std::string kDrop;
extern const std::string kMoreColumns;

// Only those columns are left for which a condition holds; or in place of each other one stands NULL, without its name.
std::string cut(const std::string& condition);
std::string nulled(const std::string& condition);
inline constexpr char kIsFirst[] = "columns.cid = 0";
inline constexpr char kIsNotLast[] = "columns.cid + 1 < (select count(*) from pragma_table_info(tables.name))";

class TablesInUse : public Torture {
 protected:
  // Changes the tables that a text names.
  void make(const std::string& change, const std::string& tables);

  // Calls while somebody does that right before a statement that begins so is prepared, to the tables that it names.
  Trial tried_with(const std::string& change, const std::string& statement);
};

class ChangedTables : public TablesInUse {
 protected:
  // The change comes before the n-th statement of the call.
  Trial tried_with(const std::string& change, std::size_t nth = 2);

  void expect_same(const Trial& expected, const Trial& trial) const;

  // The end that a statement has which does not compile any more.
  void expect_end_of_prepare(const Trial& trial, int nth = 2) const;

  const Trial healthy = tried();
};

// The calls of these names, a set or a map.
std::vector<Call> calls_named(const auto& names) {
  std::vector<Call> all = calls();
  std::erase_if(all, [&](const Call& call) { return !names.contains(call.name); });
  return all;
}

}  // namespace qmv::test

#endif
