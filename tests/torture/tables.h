// All tables of the schemas, with rows for every call.
#ifndef QMV_TESTS_TORTURE_TABLES_H
#define QMV_TESTS_TORTURE_TABLES_H

#include <sqlite3.h>

#include <set>
#include <string>
#include <vector>

namespace qmv::test {

// The bytes of a database with all tables, with sensor tables that have no column of the FRU's names but the entity, and
// with some of the tables.
const std::string& image_of_all_tables();
const std::string& image_with_narrow_sensors();
std::string image_of_tables(const std::set<std::string>& kept);

// A connection to a database in memory that begins as an image.
sqlite3* opened(const std::string& image);

// Runs SQL and returns its rows, columns separated by "|".
std::vector<std::string> rows(sqlite3* db, const std::string& sql);

// Runs every statement that a query makes.
void run_each(sqlite3* db, const std::string& query);

// The rows of all tables, as a text.
std::string content(sqlite3* db);

}  // namespace qmv::test

#endif
