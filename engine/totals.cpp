#include "engine/totals.h"

#include <cmath>
#include <string>

#include "value/text.h"

namespace dorvo::engine {

void ExactSum::add(double number) {
  const double sum = sum_ + number;
  lost_ += std::abs(sum_) >= std::abs(number) ? (sum_ - sum) + number : (number - sum) + sum_;
  sum_ = sum;
}

double amount_of(const value::Variant& value) {
  if (value.is_null()) return 0;
  if (const auto* text = value.as<std::string>()) return value::Val(*text);
  return value::number_of(value);
}

std::size_t Totals::request(std::size_t column, int level) {
  for (std::size_t i = 0; i < totals_.size(); ++i) {
    if (totals_[i].column == column && totals_[i].level == level) return i;
  }
  totals_.push_back({column, level, {}});
  return totals_.size() - 1;
}

void Totals::open_groups(int level) {
  for (Total& total : totals_) {
    if (total.level != kReport && total.level >= level) total.sum = {};
  }
}

double Totals::value_with(std::size_t total, const value::Variant& cell) const {
  ExactSum sum = totals_[total].sum;
  sum.add(amount_of(cell));
  return sum.value();
}

}  // namespace dorvo::engine
