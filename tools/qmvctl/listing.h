// Lists: a table with heads for people, or the same rows as JSON for programs.
#ifndef QMVCTL_LISTING_H
#define QMVCTL_LISTING_H

#include <functional>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

namespace qmvctl {

using Json = nlohmann::ordered_json;

struct Column {
  enum class Align { kLeft, kRight };

  std::string head;
  std::function<std::string(const Json& row)> text;
  Align align = Align::kLeft;
};

// Columns that show a member of the rows as it is, and numbers as hexadecimal bytes ("D0h"). A missing member shows as
// "".
Column text_column(const std::string& head, const std::string& key);
Column number_column(const std::string& head, const std::string& key);
Column byte_column(const std::string& head, const std::string& key);

// A converted reading without trailing zeros: "13.26", "1961".
std::string number_text(const Json& value);

struct Listing {
  std::vector<Column> columns;
  std::vector<Json> rows;
  std::string empty_text;  // what people see instead of a table without rows
};

// One list of several that are shown together.
struct HeadedListing {
  std::string name;  // for programs
  std::string head;  // for people
  Listing listing;
};

void print_table(std::ostream& out, const Listing& listing);
void print_json(std::ostream& out, const Json& json);

}  // namespace qmvctl

#endif
