// One row of a table of the practice, filled by column name before it is written.
//
// A new row holds what a host stores for nothing: 0 in amounts, rates, whole numbers and flags, empty text in
// texts, NULL in dates. Names are exact in case here; an unknown one is a mistake of this room and throws
// std::logic_error.
#pragma once

#include <string_view>
#include <vector>

#include "practice/schema.h"
#include "value/variant.h"

namespace dorvo::practice {

class Row {
 public:
  explicit Row(std::string_view table);

  Row& set(std::string_view column, value::Variant held);
  Row& add(std::string_view column, double amount);  // to the paisa
  // The number in a column; 0 when it holds none.
  double number(std::string_view column) const;
  const value::Variant& at(std::string_view column) const { return values_[index(column)]; }

  const Table& table() const { return *table_; }
  const std::vector<value::Variant>& values() const { return values_; }

 private:
  std::size_t index(std::string_view column) const;

  const Table* table_;
  std::vector<value::Variant> values_;
};

// Rounded to the paisa, half away from zero.
double paise(double amount);

}  // namespace dorvo::practice
