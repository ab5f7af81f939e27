// What the return-cum-chalan forms share: dealer, numbers, words and zeros, as steps on lists of boxes.
//
// A form has the same box several times, once a copy of the chalan, under names that follow no rule; so each step takes
// the list of its boxes, and the lists are data of the form. A step that reads a column names it in its failure.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "frame/address_block.h"
#include "frame/report.h"

namespace dorvo::frame {

using Boxes = std::span<const std::string_view>;

// The boxes of the dealer's registration numbers in all copies. A `vat` box and an `old` box share one place.
struct RegistrationBoxes {
  Boxes old;  // number under the earlier law, or the TIN in its place
  Boxes vat;
  Boxes cst;
};

// An amount and the box that says it in words.
struct WordBoxes {
  std::string_view amount;
  std::string_view words;
};

class ReturnForm : public Report {
 protected:
  using Report::Report;

  // ---- boxes and columns ----
  void put_all(Boxes boxes, const value::Variant& held);
  void show_all(Boxes boxes, bool visible);
  // The number in a box, for sums with columns, which may be NULL.
  value::Variant amount(std::string_view box) const { return number(box); }
  // Val of a column of the main query; fails with InvalidUseOfNull, naming report and column.
  double master_number(std::string_view column);
  // Each box takes `prefix` before its text, or is emptied when `column` is empty.
  void prefix_or_empty(Boxes boxes, std::string_view column, std::string_view prefix);

  // ---- the dealer ----
  void name_and_address(Boxes boxes, std::span<const AddressPiece> pieces = dealer_address());
  // The new number hides the old one, all are hyphenated, and TINs replace them in periods from 1 April 2006 on.
  // Fails with TypeMismatch when `txtFromDate` holds no date.
  void registration_numbers(const RegistrationBoxes& boxes);

  // ---- the return ----
  // "Revised" or "Fresh"; hidden on an original return.
  void kind_of_return(Boxes boxes);
  // By ShowFilingDate and ShowCity; a blank form leaves them to the sweep.
  void filing_date_and_place(Boxes dates, Boxes places);
  void file_number();

  // ---- amounts ----
  // Words for each amount above 0, which is read strictly: fails with TypeMismatch on an empty box.
  void amounts_in_words(std::span<const WordBoxes> rows);
  // Each box whose number is 0 takes `zero`. Runs after all arithmetic.
  void replace_zeros(Boxes boxes, std::string_view zero = "NIL");

 private:
  void prefer_tin(const RegistrationBoxes& boxes);
};

}  // namespace dorvo::frame
