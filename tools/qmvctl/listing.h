// Lists: rows of JSON members, and the columns in which people read them. What is said here of a column decides every
// form of the output.
#ifndef QMVCTL_LISTING_H
#define QMVCTL_LISTING_H

#include <functional>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

namespace qmvctl {

using Json = nlohmann::ordered_json;

// Widths of columns for which a line of 80 places has no room.
constexpr int kWide = 0;     // shown in wide tables, as CSV and with records in full
constexpr int kInFull = -1;  // shown with records in full only

struct Column {
  enum class Align { kLeft, kRight };

  std::string head;
  int width;  // in places, in a table that fits 80 of them; more where others leave room, less where texts are short
  std::function<std::string(const Json& row)> text;
  Align align = Align::kLeft;
  std::string code = {};     // the member with the code that the text is a name for, where there is one
  bool is_cim_code = false;  // written as CIM does, in decimal digits; those of IPMI are hexadecimal
  bool is_state = false;     // Nominal, Warning or Critical
};

// Columns that show a member of the rows as it is, a name with its code, how bad an event is, and numbers as
// hexadecimal bytes ("D0h") or words ("7A95h"). A missing member shows as "".
Column text_column(const std::string& head, int width, const std::string& key);
Column number_column(const std::string& head, int width, const std::string& key);
Column name_column(const std::string& head, int width, const std::string& key, const std::string& code);
Column cim_name_column(const std::string& head, int width, const std::string& key, const std::string& code);
Column state_column(const std::string& head, int width, const std::string& key);
Column byte_column(const std::string& head, int width, const std::string& key);
Column word_column(const std::string& head, int width, const std::string& key);

// A converted reading without trailing zeros: "13.26", "1961".
std::string number_text(const Json& value);

struct Listing {
  std::vector<Column> columns;
  std::vector<Json> rows;
  std::string empty_text;  // what people see instead of a table without rows, as they see heads
};

// One list of several that are shown together.
struct HeadedListing {
  std::string name;  // for programs
  std::string head;  // for people
  Listing listing;
};

// How lists are written.
struct Form {
  enum class Kind { kTable, kInFull, kJson, kCsv };

  Kind kind = Kind::kTable;
  bool is_wide = false;
  bool has_heads = true;
  bool has_colours = false;
  bool is_growing = false;  // rows are to follow: columns keep their widths
};

// A column's text for people: no control character reaches a terminal.
std::string printable_text(const Column& column, const Json& row);

void print_table(std::ostream& out, const Form& form, const Listing& listing);

// Records one below the other, each column that is not empty a line, with codes behind their names.
void print_in_full(std::ostream& out, const Form& form, const Listing& listing);

// RFC 4180: the columns of the wide table, and in front of several lists, whose columns are put together, their names.
void print_csv(std::ostream& out, const Form& form, const std::vector<HeadedListing>& lists);

// JSON as text, indented by so many places or, below 0, in one line. Control characters are escaped, and U+FFFD stands
// for bytes that are no UTF-8.
std::string json_text(const Json& json, int indent);

void print_json(std::ostream& out, const Json& json);

}  // namespace qmvctl

#endif
