#include "practice/row.h"

#include <cmath>
#include <stdexcept>
#include <string>

namespace dorvo::practice {
namespace {

value::Variant nothing(Type type) {
  switch (type) {
    case Type::Text:
      return "";
    case Type::Date:
      return {};
    case Type::Flag:
      return false;
    default:
      return 0;
  }
}

}  // namespace

Row::Row(std::string_view table) : table_(find_table(table)) {
  if (table_ == nullptr) throw std::logic_error("no table " + std::string(table));
  for (const Column& column : table_->columns) values_.push_back(nothing(column.type));
}

std::size_t Row::index(std::string_view column) const {
  for (std::size_t i = 0; i < table_->columns.size(); ++i) {
    if (table_->columns[i].name == column) return i;
  }
  throw std::logic_error("no column " + std::string(column) + " in " + std::string(table_->name));
}

Row& Row::set(std::string_view column, value::Variant held) {
  values_[index(column)] = std::move(held);
  return *this;
}

Row& Row::add(std::string_view column, double amount) {
  return set(column, paise(number(column) + amount));
}

double Row::number(std::string_view column) const {
  const value::Variant& held = at(column);
  if (const auto* real = held.as<double>()) return *real;
  if (const auto* whole = held.as<std::int64_t>()) return static_cast<double>(*whole);
  return 0;
}

double paise(double amount) {
  return std::round(amount * 100) / 100;
}

}  // namespace dorvo::practice
