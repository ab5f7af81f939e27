// The described returns: one for each state that the forms tell apart, with the same keys in every practice.
#pragma once

#include <span>

#include "practice/return_figures.h"

namespace dorvo::practice {

struct DescribedReturn {
  int id;         // CMasterID
  int dealer;     // CustomerCode
  int from_year;  // first month of the period ...
  int from_month;
  int months;        // ... and its length
  const char* what;  // the state it stands for, in one line
  // The lines and figures as they were entered; the totals are worked out from them.
  void (*enter)(Return&);
  // What is put wrong on purpose after the totals; null for none.
  void (*spoil)(Return&) = nullptr;
};

std::span<const DescribedReturn> described_returns();

// The whole return, worked out.
Return described_return(const DescribedReturn& described);

// The return's head: keys, period, filing dates, month, type of period, kind "Original", bank 1 and a cheque.
void set_head(Row& master, int id, int dealer, int from_year, int from_month, int months);

}  // namespace dorvo::practice
