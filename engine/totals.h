// Totals over the rows of a group or of the report, as layouts ask for them. Private to the engine.
#pragma once

#include <cstddef>
#include <vector>

#include "value/variant.h"

namespace dorvo::engine {

// A sum that loses nothing to rounding along the way, so that the total of a hundred thousand amounts in rupees and
// paise prints as it is.
class ExactSum {
 public:
  void add(double number);
  double value() const { return sum_ + lost_; }

 private:
  double sum_ = 0;
  double lost_ = 0;
};

// What a column's value counts in a total: NULL is nothing, a text its leading number.
double amount_of(const value::Variant& value);

class Totals {
 public:
  static constexpr int kReport = -1;

  void clear() { totals_.clear(); }
  // The total of a column over the group of that level (0 is the outermost) or over the report; asked for twice, it is
  // the same one.
  std::size_t request(std::size_t column, int level);
  // The groups from this level inwards start anew.
  void open_groups(int level);
  // `cell(column)` reads the row that has landed on its page.
  template <class Cell>
  void add_row(Cell cell) {
    for (Total& total : totals_) total.sum.add(amount_of(cell(total.column)));
  }
  std::size_t column(std::size_t total) const { return totals_[total].column; }
  double value(std::size_t total) const { return totals_[total].sum.value(); }
  // With one more row, which has not landed yet.
  double value_with(std::size_t total, const value::Variant& cell) const;

 private:
  struct Total {
    std::size_t column;
    int level;
    ExactSum sum;
  };
  std::vector<Total> totals_;
};

}  // namespace dorvo::engine
