// Tables as they are.
#ifndef QMVCTL_TABLE_SHAPE_H
#define QMVCTL_TABLE_SHAPE_H

#include <set>
#include <string>
#include <vector>

#include "database.h"

namespace qmvctl {

// Names of columns, compared as SQLite does: upper and lower case are alike.
struct NameOrder {
  bool operator()(const std::string& a, const std::string& b) const;
};
using Names = std::vector<std::string>;
using NameSet = std::set<std::string, NameOrder>;

// What a key or an index lets no two rows have alike.
struct Uniqueness {
  NameSet columns;
  std::string index;  // empty where it is the key of the rows themselves
  bool is_partial;    // it holds for some of the rows only
  bool has_expressions;
};

struct TableShape {
  std::string name;
  Names columns;  // in their order
  std::vector<Uniqueness> unique;
};

NameSet set_of(const Names& names);

// Column 0 of all rows.
Names names_of(const Database& database, const std::string& query);

NameSet tables_of(const Database& database);
NameSet views_of(const Database& database);

// The columns that "select *" yields, which are also the generated ones.
Names columns_of(const Database& database, const std::string& table);

TableShape shape_of(const Database& database, const std::string& table);

// The tables that a database of that kind has to have.
std::vector<TableShape> references(const DatabaseKind& kind);

// What SQLite says of an insert of all columns that a table has to have; empty when it takes one, as far as can be seen
// without a row.
std::string objection_to_rows(const Database& database, const TableShape& reference);

}  // namespace qmvctl

#endif
