#include "frame/return_form.h"

#include "frame/settings.h"
#include "value/text.h"

namespace dorvo::frame {
namespace {

constexpr value::Date kTinFrom = {.year = 2006, .month = 4, .day = 1};

}  // namespace

void ReturnForm::put_all(Boxes boxes, const value::Variant& held) {
  for (const auto box : boxes) put(box, held);
}

void ReturnForm::show_all(Boxes boxes, bool visible) {
  for (const auto box : boxes) show(box, visible);
}

double ReturnForm::master_number(std::string_view column) {
  const value::Variant held = master(column);
  if (held.is_null())
    throw value::Failure(value::Error::InvalidUseOfNull,
                         Name() + ", column " + std::string(column) + ": invalid use of Null");
  return value::Val(held);
}

void ReturnForm::prefix_or_empty(Boxes boxes, std::string_view column, std::string_view prefix) {
  const bool empty = value::is_empty(master(column));
  for (const auto box : boxes) put(box, empty ? std::string() : std::string(prefix) + text(box));
}

void ReturnForm::name_and_address(Boxes boxes, std::span<const AddressPiece> pieces) {
  put_all(boxes, address_block(pieces, [this](std::string_view column) { return master(column); }));
}

void ReturnForm::registration_numbers(const RegistrationBoxes& boxes) {
  if (!value::is_empty(master("VATNo"))) show_all(boxes.old, false);
  for (const Boxes list : {boxes.old, boxes.cst, boxes.vat}) {
    for (const auto box : list) put(box, convert.FormatBSTCST(text(box)));
  }
  prefer_tin(boxes);
}

// Shows the TIN on a blank form too, which then bears it over its empty boxes.
void ReturnForm::prefer_tin(const RegistrationBoxes& boxes) {
  constexpr std::string_view kFrom = "txtFromDate";
  value::Date from;
  try {
    from = value::parse_date(text(kFrom));
  } catch (const value::Failure& failure) {
    throw failure.at(Name() + ", " + std::string(kFrom));
  }
  if (from < kTinFrom) return;
  if (const value::Variant tin = master("TinVAT"); !value::is_empty(tin)) {
    put_all(boxes.old, tin);
    show_all(boxes.old, true);
    show_all(boxes.vat, false);
  }
  if (const value::Variant tin = master("TinCST"); !value::is_empty(tin)) put_all(boxes.cst, tin);
}

void ReturnForm::kind_of_return(Boxes boxes) {
  const value::Variant kind = master("ReturnType");
  if (value::equals(kind, "Original")) show_all(boxes, false);
  for (const std::string_view word : {"Revised", "Fresh"}) {
    if (value::equals(kind, word)) put_all(boxes, word);
  }
}

void ReturnForm::filing_date_and_place(Boxes dates, Boxes places) {
  if (basMain().BlankForm) return;
  show_all(dates, basMain().ShowFilingDate);
  show_all(places, basMain().ShowCity);
}

void ReturnForm::file_number() {
  if (value::is_empty(master("FileNo"))) show("lblFileNo", false);
}

void ReturnForm::amounts_in_words(std::span<const WordBoxes> rows) {
  for (const WordBoxes& row : rows) {
    if (strict_number(row.amount) > 0) put(row.words, convert.TrasToEng(text(row.amount)));
  }
}

void ReturnForm::replace_zeros(Boxes boxes, std::string_view zero) {
  for (const auto box : boxes) {
    if (number(box) == 0) put(box, zero);
  }
}

}  // namespace dorvo::frame
