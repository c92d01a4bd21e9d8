// Tables and records in full, for people.
#include <fmt/color.h>
#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "characters.h"
#include "listing.h"
#include "text.h"

namespace qmvctl {

namespace {

constexpr size_t kPlaces = 80;
constexpr size_t kOfWideColumns = 20;  // in a table that grows, where texts to come are not known
constexpr const char* kGap = "  ";
constexpr char kCutMark = '~';

// How many places a text takes on a terminal: what padding it to as many as it has bytes does not add.
size_t places(const std::string& text) {
  return 2 * text.size() - fmt::formatted_size("{:{}}", text, text.size());
}

// What of a text goes into so many places. East Asian characters take two of them.
std::string cut(std::string_view text, size_t width) {
  std::string beginning;
  size_t used = 0;
  while (const auto character = first_character(text)) {
    const std::string next(text.substr(0, character->length));
    used += places(next);
    if (used > width) break;
    beginning += next;
    text.remove_prefix(character->length);
  }
  return beginning;
}

// A text in so many places: padded, or cut with a mark at its end.
std::string fitted(const std::string& text, size_t width, Column::Align align) {
  const std::string cell = places(text) > width ? cut(text, width - 1) + kCutMark : text;
  return align == Column::Align::kLeft ? fmt::format("{:<{}}", cell, width) : fmt::format("{:>{}}", cell, width);
}

std::string coloured(const std::string& cell) {
  if (cell.find("Critical") != std::string::npos) return fmt::format(fmt::fg(fmt::terminal_color::red), "{}", cell);
  if (cell.find("Warning") != std::string::npos) return fmt::format(fmt::fg(fmt::terminal_color::yellow), "{}", cell);
  return cell;
}

std::string code_text(const Column& column, int code) {
  return column.is_cim_code ? std::to_string(code) : hex(code) + "h";
}

// A column with its cells.
struct Fitted {
  const Column& column;
  std::vector<std::string> cells;  // the first one is the head
  size_t longest = 0;
  size_t width = 0;  // in places
};

Fitted fit(const Column& column, const Form& form, const std::vector<Json>& rows) {
  Fitted fitted{column, {}};
  if (form.has_heads) fitted.cells.push_back(column.head);
  for (const Json& row : rows) fitted.cells.push_back(printable_text(column, row));
  for (const std::string& cell : fitted.cells) fitted.longest = std::max(fitted.longest, places(cell));
  if (form.is_growing) {
    const size_t usual = column.width == kWide ? kOfWideColumns : static_cast<size_t>(column.width);
    fitted.longest = fitted.width = form.is_wide ? std::max(fitted.longest, usual) : usual;
    return fitted;
  }
  fitted.width = form.is_wide ? fitted.longest : std::min(fitted.longest, static_cast<size_t>(column.width));
  return fitted;
}

// Gives what short columns leave of the line to those that are cut, the first ones first.
void fill_line(std::vector<Fitted>& columns) {
  size_t used = (columns.size() - 1) * std::string_view(kGap).size();
  for (const Fitted& each : columns) used += each.width;
  for (Fitted& each : columns) {
    const size_t more = std::min(each.longest - each.width, kPlaces - std::min(used, kPlaces));
    each.width += more;
    used += more;
  }
}

void print_line(std::ostream& out, const Form& form, const std::vector<Fitted>& columns, size_t line) {
  std::string text;
  std::string gap;
  for (const Fitted& each : columns) {
    const std::string cell = fitted(each.cells[line], each.width, each.column.align);
    text += gap + (form.has_colours && each.column.is_state ? coloured(cell) : cell);
    gap = kGap;
  }
  out << text.substr(0, text.find_last_not_of(' ') + 1) << '\n';
}

}  // namespace

void print_table(std::ostream& out, const Form& form, const Listing& listing) {
  if (listing.rows.empty()) {
    if (form.has_heads) out << listing.empty_text << '\n';
    return;
  }
  std::vector<Fitted> columns;
  for (const Column& column : listing.columns) {
    if (column.width > (form.is_wide ? kInFull : kWide)) columns.push_back(fit(column, form, listing.rows));
  }
  fill_line(columns);
  for (size_t line = 0; line < columns.front().cells.size(); ++line) print_line(out, form, columns, line);
}

void print_in_full(std::ostream& out, const Form& form, const Listing& listing) {
  size_t width = 0;
  for (const Column& column : listing.columns) width = std::max(width, places(column.head));
  const char* gap = "";
  for (const Json& row : listing.rows) {
    out << gap;
    gap = "\n";
    for (const Column& column : listing.columns) {
      std::string text = printable_text(column, row);
      if (text.empty()) continue;
      if (!column.code.empty()) text += " (" + code_text(column, row.at(column.code)) + ")";
      if (form.has_colours && column.is_state) text = coloured(text);
      out << fmt::format("{:<{}} : {}\n", column.head, width, text);
    }
  }
}

}  // namespace qmvctl
