#include "selection.h"

#include <algorithm>
#include <charconv>

#include "characters.h"
#include "names.h"

namespace qmvctl {

namespace {

bool is_value(const Json& row, const std::string& key, const std::string& text) {
  const auto value = row.find(key);
  if (value == row.end() || value->is_null()) return false;
  return value->is_string() ? is_same(*value, text) : number_of(text) == value->get<int>();
}

// Whether it is a code of one byte or the name of one.
bool is_code(const std::string& text, std::string (*name)(int32_t code)) {
  constexpr int kLast = 0xFF;
  if (const auto code = number_of(text)) return *code >= 0 && *code <= kLast;
  for (int code = 0; code <= kLast; ++code) {
    if (is_same(text, name(code))) return true;
  }
  return false;
}

bool has_type(const Json& row, const std::string& type) {
  return is_value(row, "sensor_type", type) || is_value(row, "sensor_type_name", type);
}

bool has_entity(const Json& row, const std::string& entity) {
  const int id = row.at("entity_id");
  const int instance = row.at("entity_instance").get<int>() & 0x7F;
  const size_t dot = entity.find('.');
  if (dot == std::string::npos) return number_of(entity) == id || is_same(entity, entity_name(id));
  return number_of(entity.substr(0, dot)) == id && number_of(entity.substr(dot + 1)) == instance;
}

}  // namespace

std::optional<int64_t> number_of(std::string_view text) {
  int base = 10;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    text.remove_prefix(2);
    base = 16;
  } else if (text.ends_with('h') || text.ends_with('H')) {
    text.remove_suffix(1);
    base = 16;
  }
  int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  const bool is_number = error == std::errc() && end == text.data() + text.size();
  return is_number ? std::optional(number) : std::nullopt;
}

bool is_sensor_type(const std::string& text) {
  return is_code(text, sensor_type_name);
}

bool is_entity(const std::string& text) {
  const size_t dot = text.find('.');
  if (dot == std::string::npos) return is_code(text, entity_name);
  return number_of(text.substr(0, dot)) && number_of(text.substr(dot + 1));
}

size_t select(Listing& listing, const Keys& keys, const Selection& selection) {
  const auto is_left_out = [&](const Json& row) {
    const auto is_id = [&](const std::string& key) { return is_value(row, key, selection.id); };
    return (!selection.id.empty() && std::none_of(keys.ids.begin(), keys.ids.end(), is_id)) ||
           (!selection.type.empty() && !has_type(row, selection.type)) ||
           (!selection.entity.empty() && !has_entity(row, selection.entity));
  };
  size_t left_out = std::erase_if(listing.rows, is_left_out);
  if (selection.last && *selection.last < listing.rows.size()) {
    const size_t older = listing.rows.size() - *selection.last;
    listing.rows.erase(listing.rows.begin(), listing.rows.begin() + static_cast<std::ptrdiff_t>(older));
    left_out += older;
  }
  if (left_out > 0) listing.empty_text = "Nothing matches.";
  return left_out;
}

}  // namespace qmvctl
