#include "listing.h"

#include <fmt/format.h>

#include "characters.h"
#include "text.h"

namespace qmvctl {

namespace {

std::string member_text(const Json& row, const std::string& key) {
  const auto member = row.find(key);
  if (member == row.end() || member->is_null()) return "";
  return member->is_string() ? member->get<std::string>() : member->dump();
}

// The lower bits of a number, as many as the digits show.
Column hex_column(const std::string& head, int width, const std::string& key, int digits) {
  const auto text = [key, digits](const Json& row) -> std::string {
    if (!row.contains(key)) return "";
    return hex(row.at(key).get<int>() & ((1 << 4 * digits) - 1), digits) + "h";
  };
  return {head, width, text, Column::Align::kRight};
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
  return hex_column(head, width, key, 2);
}

Column word_column(const std::string& head, int width, const std::string& key) {
  return hex_column(head, width, key, 4);
}

Column cim_name_column(const std::string& head, int width, const std::string& key, const std::string& code) {
  Column column = name_column(head, width, key, code);
  column.is_cim_code = true;
  return column;
}

Column state_column(const std::string& head, int width, const std::string& key) {
  Column column = text_column(head, width, key);
  column.is_state = true;
  return column;
}

std::string number_text(const Json& value) {
  return fmt::format("{:.10g}", value.get<double>());
}

std::string printable_text(const Column& column, const Json& row) {
  return printable(column.text(row));
}

// The library's writer escapes the control characters of ASCII below 20h only.
std::string json_text(const Json& json, int indent) {
  constexpr bool kAsciiOnly = false;
  const std::string written = json.dump(indent, ' ', kAsciiOnly, Json::error_handler_t::replace);
  std::string text;
  for (std::string_view rest = written; !rest.empty();) {
    const Character character = first_character(rest).value();
    const bool is_obeyed = character.code >= 0x7F && is_control(character.code);
    text += is_obeyed ? fmt::format("\\u{:04x}", static_cast<unsigned>(character.code))
                      : std::string(rest.substr(0, character.length));
    rest.remove_prefix(character.length);
  }
  return text;
}

void print_json(std::ostream& out, const Json& json) {
  constexpr int kIndent = 2;
  out << json_text(json, kIndent) << '\n';
}

}  // namespace qmvctl
