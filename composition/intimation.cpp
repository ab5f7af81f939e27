#include "composition/intimation.h"

#include <algorithm>
#include <string_view>

namespace dorvo::composition {

struct IntimationKind {
  std::string_view report;
  bool signs_for_dealer;  // "For  " stands before the name in txtName1
};

namespace {

constexpr IntimationKind kKinds[] = {
    {"Form1", true}, {"Form2", true}, {"Form3", true}, {"Form4", false}, {"Form5", false},
};

constexpr std::string_view kOldNumberBoxes[] = {"txtBSTNo", "txtBSTNo1"};
constexpr std::string_view kNewNumberBoxes[] = {"txtVATNo", "txtVATNo1"};

const IntimationKind& kind_of(std::string_view report) {
  const auto* kind = std::ranges::find(kKinds, report, &IntimationKind::report);
  if (kind == std::end(kKinds))
    throw value::Failure(value::Error::EngineState, std::string(report) + ": not one of the intimation forms 1 to 5");
  return *kind;
}

}  // namespace

Intimation::Intimation(const std::string& report) : Report(report), kind_(kind_of(report)) {}

std::string Intimation::query() const {
  return " SELECT Customer.*, signature.Signature  FROM Customer LEFT OUTER JOIN  signature ON "
         "  Customer.SignatureID = signature.SignatureID where customer.customerid=" +
         std::to_string(PropCMasterID());
}

void Intimation::Detail_Format() {
  print_footer();
  hide_old_number_beside_new();
  hyphenate_numbers();
  prefer_tin();
  if (kind_.signs_for_dealer) sign_for_dealer();
}

// The footer labels stand in Detail; there is no page footer of their own.
void Intimation::print_footer() {
  show_user_name();
  caption("lblpageno", std::to_string(pageNumber()));
}

void Intimation::hide_old_number_beside_new() {
  if (value::is_empty(master("VATNo"))) return;
  for (const auto box : kOldNumberBoxes) show(box, false);
}

void Intimation::hyphenate_numbers() {
  for (const auto box : kOldNumberBoxes) put(box, convert.FormatBSTCST(text(box)));
  for (const auto box : kNewNumberBoxes) put(box, convert.FormatBSTCST(text(box)));
}

// A TIN takes the place of both numbers. It does so on a blank form too, which then bears the TIN and no other data.
void Intimation::prefer_tin() {
  const value::Variant tin = master("TinVAT");
  if (value::is_empty(tin)) return;
  for (const auto box : kOldNumberBoxes) {
    put(box, tin);
    show(box, true);
  }
  for (const auto box : kNewNumberBoxes) show(box, false);
}

void Intimation::sign_for_dealer() {
  put("txtName1", "For  " + text("txtName1"));
}

}  // namespace dorvo::composition
