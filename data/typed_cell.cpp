#include "data/typed_cell.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "value/text.h"

namespace dorvo::data {
namespace {

struct TypeRow {
  std::string_view name;
  ColumnType type;
};
// The first name that begins the declaration counts.
constexpr std::array<TypeRow, 26> kTypes = {{
    {"bit", ColumnType::Bool},        {"bool", ColumnType::Bool},          {"datetime", ColumnType::Date},
    {"date", ColumnType::Date},       {"smalldatetime", ColumnType::Date}, {"timestamp", ColumnType::Date},
    {"int", ColumnType::Integer},     {"bigint", ColumnType::Integer},     {"smallint", ColumnType::Integer},
    {"tinyint", ColumnType::Integer}, {"decimal", ColumnType::Number},     {"dec", ColumnType::Number},
    {"numeric", ColumnType::Number},  {"money", ColumnType::Number},       {"smallmoney", ColumnType::Number},
    {"real", ColumnType::Number},     {"float", ColumnType::Number},       {"double", ColumnType::Number},
    {"nvarchar", ColumnType::Text},   {"varchar", ColumnType::Text},       {"nchar", ColumnType::Text},
    {"char", ColumnType::Text},       {"ntext", ColumnType::Text},         {"text", ColumnType::Text},
    {"blob", ColumnType::Binary},     {"image", ColumnType::Binary},
}};

bool begins(std::string_view text, std::string_view name) {
  return text.size() >= name.size() && value::same_name(text.substr(0, name.size()), name);
}

// The usual amount, "-1234567.50", without the general way: its digits as a whole number, exact up to 2^53, divided by
// an exact power of ten give the nearest double.
bool is_plain_amount(std::string_view text, double& number) {
  static constexpr std::array<double, 7> kPowers = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
  constexpr std::size_t kMostDigits = 15;
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  std::int64_t digits = 0;
  std::size_t count = 0, decimals = 0;
  bool point = false;
  for (const char c : text) {
    if (c == '.' && !point) {
      point = true;
      continue;
    }
    if (c < '0' || c > '9') return false;
    digits = digits * 10 + (c - '0');
    decimals += point;
    if (++count > kMostDigits) return false;
  }
  if (count == 0 || decimals >= kPowers.size()) return false;
  number = static_cast<double>(negative ? -digits : digits) / kPowers[decimals];
  return true;
}

// Whether `parse` reads the text.
template <class Value>
bool reads(Value (*parse)(std::string_view), std::string_view text, Value& value) {
  try {
    value = parse(text);
    return true;
  } catch (const value::Failure&) {
    return false;
  }
}

bool is_number(std::string_view text, double& number) {
  return is_plain_amount(text, number) || reads(&value::strict_number, text, number);
}

bool is_integer(std::string_view text, std::int64_t& number) {
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
  return problem == std::errc() && end == text.data() + text.size();
}

bool is_flag(std::string_view text, bool& flag) {
  const bool on = text == "1" || value::same_name(text, "true");
  const bool off = text == "0" || value::same_name(text, "false");
  flag = on;
  return on || off;
}

}  // namespace

ColumnType declared_type(std::string_view declaration) {
  for (const TypeRow& row : kTypes)
    if (begins(declaration, row.name)) return row.type;
  return ColumnType::Undeclared;
}

void add_text(Table& table, ColumnType type, std::string_view text) {
  double number = 0;
  std::int64_t whole = 0;
  bool flag = false;
  value::Date date;
  if (type == ColumnType::Date && reads(&value::parse_date, text, date)) return table.add(date);
  if (type == ColumnType::Bool && is_flag(text, flag)) return table.add(flag);
  if (type == ColumnType::Integer && is_integer(text, whole)) return table.add(whole);
  if (type == ColumnType::Integer && is_number(text, number)) return add_number(table, type, number);
  if (type == ColumnType::Number && is_number(text, number)) return table.add(number);
  table.add(text);
}

void add_number(Table& table, ColumnType type, double number) {
  if (type == ColumnType::Bool) return table.add(number != 0);
  if (type == ColumnType::Text) return table.add(std::string_view(value::number_text(number)));
  constexpr double kExact = 9007199254740992.0;  // 2^53
  if (type == ColumnType::Integer && number == std::floor(number) && std::abs(number) <= kExact)
    return table.add(static_cast<std::int64_t>(number));
  table.add(number);
}

void add_integer(Table& table, ColumnType type, std::int64_t number) {
  if (type == ColumnType::Bool) return table.add(number != 0);
  if (type == ColumnType::Text) return table.add(std::string_view(std::to_string(number)));
  if (type == ColumnType::Number) return table.add(static_cast<double>(number));
  table.add(number);
}

void add_bytes(Table& table, std::string_view bytes) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "0x";
  text.reserve(2 + 2 * bytes.size());
  for (const char c : bytes) {
    text += kDigits[static_cast<unsigned char>(c) >> 4];
    text += kDigits[static_cast<unsigned char>(c) & 15];
  }
  table.add(std::string_view(text));
}

}  // namespace dorvo::data
