// The rate tables of the returns: net turnover and tax, one row a rate, in printed order, "Other" last.
#pragma once

#include <limits>
#include <span>
#include <string_view>

#include "value/variant.h"

namespace dorvo::returns {

inline constexpr double kOtherRate = std::numeric_limits<double>::quiet_NaN();  // equal to no rate

struct RateRow {
  double rate;           // percent
  std::string_view net;  // boxes
  std::string_view tax;
};

using RateTable = std::span<const RateRow>;

// Box 18: sales.
inline constexpr RateRow kSalesRates[] = {
    {4, "txtNetSales4", "txtTaxS4"},    {12.5, "txtNetSales12", "txtTaxS12"},
    {8, "txtNetSales8", "txtTaxS8"},    {1, "txtNetSales1", "txtTaxS1"},
    {20, "txtNetSales20", "txtTaxS20"}, {kOtherRate, "txtNetSalesother", "txtTaxSother"},
};

// Box 19: local purchases eligible for set-off.
inline constexpr RateRow kPurchaseRates[] = {
    {4, "txtNettrunpurch4", "txttaxp4"},    {12.5, "txtNettrunpurch12", "txttaxp12"},
    {8, "txtNettrunpurch8", "txttaxp8"},    {1, "txtNettrunpurch1", "txttaxp1"},
    {20, "txtNettrunpurch20", "txttaxp20"}, {kOtherRate, "txtNettrunpurchother", "txttaxpother"},
};

// The row of a rate, by equality; any other rate, 0 and NULL included, falls to the last row.
const RateRow& rate_row(RateTable table, const value::Variant& rate);

}  // namespace dorvo::returns
