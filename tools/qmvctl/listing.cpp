#include "listing.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "text.h"

namespace qmvctl {

namespace {

constexpr const char* kGap = "  ";

// How many places a text takes: bytes inside a UTF-8 character take none.
size_t places(const std::string& text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// Inventory strings come from devices: no control character of theirs reaches a terminal.
std::string printable(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '.');
  return text;
}

std::string member_text(const Json& row, const std::string& key) {
  const auto member = row.find(key);
  if (member == row.end() || member->is_null()) return "";
  return member->is_string() ? member->get<std::string>() : member->dump();
}

void print_row(std::ostream& out, const std::vector<Column>& columns, const std::vector<std::string>& cells,
               const std::vector<size_t>& widths) {
  std::string line;
  for (size_t i = 0; i < columns.size(); ++i) {
    const std::string blanks(widths[i] - places(cells[i]), ' ');
    line += i ? kGap : "";
    line += columns[i].align == Column::Align::kLeft ? cells[i] + blanks : blanks + cells[i];
  }
  out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
}

}  // namespace

Column text_column(const std::string& head, const std::string& key) {
  return {head, [key](const Json& row) { return member_text(row, key); }};
}

Column number_column(const std::string& head, const std::string& key) {
  return {head, [key](const Json& row) { return member_text(row, key); }, Column::Align::kRight};
}

Column byte_column(const std::string& head, const std::string& key) {
  return {head, [key](const Json& row) { return hex(row.at(key).get<int>() & 0xFF) + "h"; }, Column::Align::kRight};
}

std::string number_text(const Json& value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.10g", value.get<double>());
  return text.data();
}

void print_table(std::ostream& out, const Listing& listing) {
  if (listing.rows.empty()) {
    out << listing.empty_text << '\n';
    return;
  }
  std::vector<std::vector<std::string>> lines(1);
  for (const Column& column : listing.columns) lines[0].push_back(column.head);
  for (const Json& row : listing.rows) {
    auto& cells = lines.emplace_back();
    for (const Column& column : listing.columns) cells.push_back(printable(column.text(row)));
  }
  std::vector<size_t> widths(listing.columns.size());
  for (const auto& cells : lines) {
    for (size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], places(cells[i]));
  }
  for (const auto& cells : lines) print_row(out, listing.columns, cells, widths);
}

void print_json(std::ostream& out, const Json& json) {
  constexpr int kIndent = 2;
  constexpr bool kAsciiOnly = false;
  out << json.dump(kIndent, ' ', kAsciiOnly, Json::error_handler_t::replace) << '\n';  // a column may hold any bytes
}

}  // namespace qmvctl
