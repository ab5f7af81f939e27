#include "returns/rate_rows.h"

#include <algorithm>

namespace dorvo::returns {

const RateRow& rate_row(RateTable table, const value::Variant& rate) {
  const auto row = std::ranges::find_if(table, [&](const RateRow& each) { return value::equals(rate, each.rate); });
  return row == table.end() ? table.back() : *row;
}

}  // namespace dorvo::returns
