// A return as a host application works it out: the lines as they were entered, and the totals it stores with them.
#pragma once

#include <string_view>
#include <vector>

#include "practice/row.h"

namespace dorvo::practice {

struct Return {
  Row master{"CMaster"};
  std::vector<Row> lines;
  std::vector<int> certificates;  // CustomerECID of each certificate of entitlement it claims under
};

// Lines of class `entry` and kind "BASIC", with their tax at `rate` percent to the paisa. A purchase is eligible
// for set-off in full.
Row sales_line(std::string_view entry, double rate, double net);
Row purchase_line(std::string_view entry, double rate, double net);
// An inter-state sale against a declaration form, 'Form "C"' for example.
Row central_line(std::string_view form, double rate, double net);
// The same line as goods returned.
Row returned(Row line);

// Fills the stored totals of the return from its lines and from the figures already in `master`: deductions, works
// contract balances by rate, opening stock, adjustments, payments made, and what of an excess set-off the dealer
// wants refunded (SetoffRefund) or moved to the central sales tax (SetoffCFCST), taken as far as the excess goes.
void work_out(Return& document);

// The figures of the central sales tax form that belong to a worked-out return.
Row form_3b(const Return& document);

}  // namespace dorvo::practice
