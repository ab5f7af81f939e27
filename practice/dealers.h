// The dealers of the sample practice: the described ones, and invented ones in any number.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "practice/row.h"

namespace dorvo::practice {

struct DescribedDealer {
  int code;          // CustomerCode; the CustomerID of the first year as well
  const char* what;  // the state it stands for, in one line
};

std::span<const DescribedDealer> described_dealers();

// The row of a described dealer for a year (1 is the first); its CustomerID is 100 higher for each later year.
Row described_dealer(int code, int year);

// How an invented dealer files and trades.
struct Trade {
  int months;       // of a return period: 1, 3 or 6
  double turnover;  // about what it sells in a month, in rupees
  int main_rate;    // index of the rate it deals in most
  bool interstate;  // sells to other States
};

struct InventedDealer {
  Row row;  // without CustomerID and YearID
  Trade trade;
};

// The dealer of that number from 0 on. It depends on the seed and the number alone.
InventedDealer invented_dealer(int number, std::uint64_t seed);

// Small tables that the dealers refer to.
struct NamedRow {
  int id;
  std::string_view name;
};
std::span<const NamedRow> constitutions();
std::span<const NamedRow> signatures();
std::span<const NamedRow> offices();

struct BankBranch {
  std::string_view bank;
  std::string_view branch;
};
std::span<const BankBranch> bank_branches();

}  // namespace dorvo::practice
