#include "table_comparison.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>

#include "characters.h"
#include "table_shape.h"

namespace qmvctl {

namespace {

// "A", "A and B", "A, B and C"
std::string listed(const Names& names) {
  std::string text;
  for (size_t i = 0; i < names.size(); ++i) {
    text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
  }
  return text;
}

std::string columns_are(const Names& names) {
  return (names.size() == 1 ? "column " : "columns ") + listed(names) + (names.size() == 1 ? " is " : " are ");
}

// The names that are not in the other list.
Names without(const Names& names, const Names& others) {
  const NameSet left_out = set_of(others);
  Names rest;
  std::copy_if(names.begin(), names.end(), std::back_inserter(rest),
               [&](const std::string& name) { return !left_out.contains(name); });
  return rest;
}

// Whether these names are the last ones of a list.
bool are_last(const Names& names, const Names& all) {
  return std::equal(names.rbegin(), names.rend(), all.rbegin(), is_same);
}

// A name as SQL takes it: between quotes unless it is a plain one.
std::string quoted(const std::string& name) {
  const auto is_plain = [](unsigned char c) { return std::isalnum(c) || c == '_'; };
  const bool is_number = !name.empty() && std::isdigit(static_cast<unsigned char>(name.front()));
  const bool is_keyword = sqlite3_keyword_check(name.c_str(), static_cast<int>(name.size()));
  const bool is_word = !name.empty() && std::all_of(name.begin(), name.end(), is_plain);
  if (is_word && !is_number && !is_keyword) return name;
  std::string text = "\"";
  for (const char c : name) text += c == '"' ? "\"\"" : std::string(1, c);
  return text + '"';
}

std::string renewal(const DatabaseKind& kind) {
  return fmt::format(
      "Create a new database (qmvctl init {} --db NEW) and copy the rows over by the names of their columns.",
      kind.name);
}

// A table beside its reference, and where to put what differs.
struct Comparison {
  const Database& database;
  const TableShape& table;
  const TableShape& reference;
  const DatabaseKind& kind;
  const Rehearsal& rehearsal;
  std::vector<Finding>& findings;

  void add(const std::string& problem, const std::string& advice) const {
    findings.push_back({table.name, problem, advice});
  }
};

// What to do: these statements behind a condition, or where one is of no use, the renewal.
std::string advice_of(const Comparison& comparison, const std::string& condition, const Names& statements) {
  const std::string text = fmt::format("{}", fmt::join(statements, " "));
  const bool is_shown_as_it_is = printable(text) == text;
  if (!is_shown_as_it_is || !comparison.rehearsal.can_run(statements)) return renewal(comparison.kind);
  return condition + (condition.empty() ? "" : " ") + text;
}

const char* unless_needed(size_t count) {
  return count == 1 ? "If nothing else needs it:" : "If nothing else needs them:";
}

std::string advice_to_drop(const Comparison& comparison, const Names& columns) {
  Names statements;
  for (const std::string& column : columns) {
    statements.push_back(fmt::format("alter table {} drop column {};", comparison.table.name, quoted(column)));
  }
  return advice_of(comparison, unless_needed(columns.size()), statements);
}

// The columns, those under their expected names that have another one at their place, which is reported.
Names with_expected_names(const Comparison& comparison) {
  const TableShape& table = comparison.table;
  const TableShape& reference = comparison.reference;
  Names columns = table.columns;
  if (columns.size() != reference.columns.size()) return columns;
  const NameSet missing = set_of(without(reference.columns, table.columns));
  const NameSet added = set_of(without(table.columns, reference.columns));
  for (size_t i = 0; i < columns.size(); ++i) {
    const std::string found = columns[i];
    const std::string& expected = reference.columns[i];
    if (!missing.contains(expected) || !added.contains(found)) continue;
    columns[i] = expected;
    comparison.add(
        fmt::format("column {} is called {}: rows cannot be stored.", expected, found),
        advice_of(comparison, "",
                  {fmt::format("alter table {} rename column {} to {};", table.name, quoted(found), expected)}));
  }
  return columns;
}

void report_missing(const Comparison& comparison, const Names& missing) {
  const char* shift = are_last(missing, comparison.reference.columns)
                          ? ""
                          : ", and each column behind is read into the field of the one before";
  comparison.add(columns_are(missing) + "missing: rows cannot be stored" + shift + ".", renewal(comparison.kind));
}

// Those of the columns that a condition on their pragma_table_xinfo is true of.
Names columns_where(const Comparison& comparison, const Names& columns, const std::string& condition) {
  const Names all = names_of(comparison.database, fmt::format("select name from pragma_table_xinfo('{}') where {};",
                                                              comparison.table.name, condition));
  return without(columns, without(columns, all));
}

// What ends a sentence about added columns.
std::string effect_of_required(const Names& required) {
  if (required.empty()) return ".";
  return fmt::format("; no row can be stored, since {} must not be null and {} no default.", listed(required),
                     required.size() == 1 ? "has" : "have");
}

// The one key column of type INTEGER that SQLite fills by itself.
constexpr const char* kIsRowid =
    "(pk > 0 and lower(type) = 'integer' and (select count(*) from pragma_table_info('{0}') where pk > 0) = 1 "
    "and not exists (select 1 from pragma_index_list('{0}') where origin = 'pk'))";

void report_added(const Comparison& comparison, const Names& added) {
  // The library names none of them when it stores a row, so neither a default nor an expression fills these.
  const std::string has_no_value = fmt::format("hidden = 0 and coalesce(lower(dflt_value), 'null') = 'null' and not {}",
                                               fmt::format(kIsRowid, comparison.table.name));
  const Names empty = columns_where(comparison, added, has_no_value);
  const Names required = columns_where(comparison, added, has_no_value + " and \"notnull\"");
  const std::string them = added.size() == 1 ? "it" : "them";
  std::string effect = "between the others: each column behind is read into the field of the one after";
  if (are_last(added, comparison.table.columns)) {
    effect = "behind the others: the library does not read " + them;
    const std::string which = empty.size() == added.size() ? them : listed(empty);
    if (required.empty() && !empty.empty()) effect += ", and leaves " + which + " empty in new rows";
  }
  comparison.add(columns_are(added) + "added " + effect + effect_of_required(required),
                 advice_to_drop(comparison, added));
}

// With columns of both kinds, some column is not where it is expected.
void report_missing_and_added(const Comparison& comparison, const Names& columns, const Names& missing,
                              const Names& added) {
  const auto [found, expected] = std::mismatch(columns.begin(), columns.end(), comparison.reference.columns.begin(),
                                               comparison.reference.columns.end(), is_same);
  comparison.add(
      fmt::format("{}missing and {}added: rows cannot be stored, and since the library reads columns by their "
                  "position, those from {} on, where {} is expected, are taken for others.",
                  columns_are(missing), columns_are(added), *found, *expected),
      renewal(comparison.kind));
}

void compare_names(const Comparison& comparison) {
  const Names columns = with_expected_names(comparison);
  const Names missing = without(comparison.reference.columns, columns);
  const Names added = without(columns, comparison.reference.columns);
  if (!missing.empty() && !added.empty()) {
    report_missing_and_added(comparison, columns, missing, added);
  } else if (!missing.empty()) {
    report_missing(comparison, missing);
  } else if (!added.empty()) {
    report_added(comparison, added);
  }
}

// Where the columns are there, and yet SQLite stores no row: one may be generated.
void report_objection(const Comparison& comparison) {
  if (!without(comparison.reference.columns, comparison.table.columns).empty()) return;
  const std::string objection = objection_to_rows(comparison.database, comparison.reference);
  if (!objection.empty()) comparison.add("rows cannot be stored: " + objection + ".", renewal(comparison.kind));
}

// Compares the order of the columns that both have.
void compare_order(const Comparison& comparison) {
  const TableShape& table = comparison.table;
  const TableShape& reference = comparison.reference;
  constexpr const char* kByPosition = "the library reads columns by their position";
  const Names expected = without(reference.columns, without(reference.columns, table.columns));
  const Names found = without(table.columns, without(table.columns, reference.columns));
  std::vector<size_t> moved;
  for (size_t i = 0; i < expected.size(); ++i) {
    if (!is_same(expected[i], found[i])) moved.push_back(i);
  }
  if (moved.empty()) return;
  const size_t first = moved.front();
  const bool is_swap = moved.size() == 2 && is_same(expected[first], found[moved[1]]);
  const std::string problem =
      is_swap ? fmt::format("columns {} and {} are swapped: {}, so each is taken for the other.", found[first],
                            expected[first], kByPosition)
              : fmt::format(
                    "{} columns are in another order, from {} on, where {} is expected: {}, so each is taken for "
                    "another.",
                    moved.size(), found[first], expected[first], kByPosition);
  comparison.add(problem, renewal(comparison.kind));
}

bool includes(const NameSet& all, const NameSet& part) {
  return std::includes(all.begin(), all.end(), part.begin(), part.end(), NameOrder());
}

// The library takes an insert that fails for a row that exists, and updates the one that has the whole key.
void compare_key(const Comparison& comparison, const NameSet& key) {
  const TableShape& table = comparison.table;
  const bool is_unique = std::any_of(table.unique.begin(), table.unique.end(), [&](const Uniqueness& found) {
    return !found.is_partial && !found.has_expressions && includes(key, found.columns);
  });
  if (is_unique) return;
  const Names columns(key.begin(), key.end());
  comparison.add(
      fmt::format("{}not unique: storing a row that exists adds a second one in place of an update.",
                  columns_are(columns)),
      advice_of(comparison, "Delete rows that are there twice, then:",
                {fmt::format("create unique index {0}_key on {0} ({1});", table.name, fmt::join(columns, ", "))}));
}

// "column X is", "columns X and Y are"; of expressions SQLite tells no text.
std::string unique_things_are(const Uniqueness& unique) {
  if (unique.has_expressions) return fmt::format("what index {} is made of is ", unique.index);
  return columns_are({unique.columns.begin(), unique.columns.end()});
}

// Only rows that have the whole key alike may be one and the same. Of keys and constraints no index can be dropped,
// which shows when it is tried.
void report_uniqueness(const Comparison& comparison, const NameSet& key) {
  std::map<std::string, Names> drops;  // by problem: several indexes may be of the same columns
  for (const Uniqueness& unique : comparison.table.unique) {
    if (includes(unique.columns, key)) continue;
    const Names whole(key.begin(), key.end());
    const Names rest = without(whole, {unique.columns.begin(), unique.columns.end()});
    drops[fmt::format("{}unique {}without {}: a row that has the same there as another one is refused, or replaces it.",
                      unique_things_are(unique), unique.is_partial ? "in some of the rows " : "", listed(rest))]
        .push_back(fmt::format("drop index {};", quoted(unique.index)));
  }
  for (const auto& [problem, statements] : drops) {
    comparison.add(problem, advice_of(comparison, unless_needed(statements.size()), statements));
  }
}

// A table has one key or, where the library stores nothing, none. Without all of its columns there is more amiss.
void compare_uniqueness(const Comparison& comparison) {
  for (const Uniqueness& expected : comparison.reference.unique) {
    if (!includes(set_of(comparison.table.columns), expected.columns)) continue;
    report_uniqueness(comparison, expected.columns);
    compare_key(comparison, expected.columns);
  }
}

void report_triggers(const Comparison& comparison) {
  const Names triggers =
      names_of(comparison.database,
               fmt::format("select name from sqlite_master where type = 'trigger' and tbl_name = '{}' collate nocase;",
                           comparison.table.name));
  for (const std::string& trigger : triggers) {
    comparison.add(
        fmt::format("trigger {} runs when rows change: what is stored may read back different, or not at all.",
                    trigger),
        advice_of(comparison, unless_needed(1), {fmt::format("drop trigger {};", quoted(trigger))}));
  }
}

}  // namespace

Rehearsal::Rehearsal(const Database& database) : copy_(Database::in_memory()) {
  const Names schema = names_of(database,
                                "select sql from sqlite_master where sql is not null and "
                                "name not like 'sqlite\\_%' escape '\\' order by type <> 'table', rowid;");
  is_complete_ = run(schema);
}

bool Rehearsal::can_run(const Names& statements) const {
  if (!is_complete_) return false;
  run({"savepoint before;"});
  const bool is_possible = run(statements);
  run({"rollback to before;", "release before;"});
  return is_possible;
}

bool Rehearsal::run(const Names& statements) const {
  try {
    for (const std::string& statement : statements) copy_.query(statement.c_str(), [](sqlite3_stmt*) {});
  } catch (const FileError&) {
    return false;
  }
  return true;
}

void compare(const Database& database, const TableShape& reference, const DatabaseKind& kind,
             const Rehearsal& rehearsal, std::vector<Finding>& findings) {
  const TableShape table = shape_of(database, reference.name);
  const Comparison comparison{database, table, reference, kind, rehearsal, findings};
  compare_names(comparison);
  report_objection(comparison);
  compare_order(comparison);
  compare_uniqueness(comparison);
  report_triggers(comparison);
}

}  // namespace qmvctl
