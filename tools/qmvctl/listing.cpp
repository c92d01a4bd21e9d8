#include "listing.h"

#include <fmt/format.h>

#include <algorithm>

#include "text.h"

namespace qmvctl {

namespace {

std::string member_text(const Json& row, const std::string& key) {
  const auto member = row.find(key);
  if (member == row.end() || member->is_null()) return "";
  return member->is_string() ? member->get<std::string>() : member->dump();
}

}  // namespace

Column text_column(const std::string& head, int width, const std::string& key) {
  return {head, width, [key](const Json& row) { return member_text(row, key); }};
}

Column number_column(const std::string& head, int width, const std::string& key) {
  return {head, width, [key](const Json& row) { return member_text(row, key); }, Column::Align::kRight};
}

Column name_column(const std::string& head, int width, const std::string& key, const std::string& code) {
  return {head, width, [key](const Json& row) { return member_text(row, key); }, Column::Align::kLeft, code};
}

Column byte_column(const std::string& head, int width, const std::string& key) {
  return {head, width, [key](const Json& row) { return hex(row.at(key).get<int>() & 0xFF) + "h"; },
          Column::Align::kRight};
}

std::string number_text(const Json& value) {
  return fmt::format("{:.10g}", value.get<double>());
}

std::string printable_text(const Column& column, const Json& row) {
  return printable(column.text(row));
}

std::string printable(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '.');
  return text;
}

void print_json(std::ostream& out, const Json& json) {
  constexpr int kIndent = 2;
  constexpr bool kAsciiOnly = false;
  out << json.dump(kIndent, ' ', kAsciiOnly, Json::error_handler_t::replace) << '\n';  // a column may hold any bytes
}

}  // namespace qmvctl
