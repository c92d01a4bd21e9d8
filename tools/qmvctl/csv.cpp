// Lists for spreadsheets, as RFC 4180 has it.
#include <algorithm>

#include "characters.h"
#include "listing.h"

namespace qmvctl {

namespace {

constexpr const char* kLineEnd = "\r\n";

// Line breaks may stand between quotes, which are doubled inside; other control characters may not stand anywhere.
std::string field(const std::string& raw) {
  std::string text = printable(raw, "\r\n");
  if (text.find_first_of("\",\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + '"';
}

void print_line(std::ostream& out, const std::vector<std::string>& texts) {
  const char* comma = "";
  for (const std::string& text : texts) {
    out << comma << field(text);
    comma = ",";
  }
  out << kLineEnd;
}

bool is_shown(const Column& column) {
  return column.width >= kWide;
}

// The heads of all lists, each once, in the order of their columns.
std::vector<std::string> heads_of(const std::vector<HeadedListing>& lists) {
  std::vector<std::string> heads;
  for (const HeadedListing& each : lists) {
    for (const Column& column : each.listing.columns) {
      const bool is_new = std::find(heads.begin(), heads.end(), column.head) == heads.end();
      if (is_new && is_shown(column)) heads.push_back(column.head);
    }
  }
  return heads;
}

std::string text_under(const std::string& head, const Listing& listing, const Json& row) {
  const auto column = std::find_if(listing.columns.begin(), listing.columns.end(),
                                   [&](const Column& column) { return column.head == head && is_shown(column); });
  return column == listing.columns.end() ? "" : column->text(row);
}

}  // namespace

void print_csv(std::ostream& out, const Form& form, const std::vector<HeadedListing>& lists) {
  const bool has_names = lists.size() > 1;
  const std::vector<std::string> heads = heads_of(lists);
  if (form.has_heads) {
    std::vector<std::string> line = heads;
    if (has_names) line.insert(line.begin(), "List");
    print_line(out, line);
  }
  for (const HeadedListing& each : lists) {
    for (const Json& row : each.listing.rows) {
      std::vector<std::string> line;
      if (has_names) line.push_back(each.name);
      for (const std::string& head : heads) line.push_back(text_under(head, each.listing, row));
      print_line(out, line);
    }
  }
}

}  // namespace qmvctl
