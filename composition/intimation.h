// Forms 1 to 5: the one-page intimations by which a dealer chooses to pay tax under the composition scheme.
//
// One row of one query, and no other recordset. The key is the dealer's CustomerID, not a return. All five run the
// same Detail_Format; the wording, the fixed nature of business and the names of the boxes are their layouts', and what
// little the logic differs in stands in one table (intimation.cpp).
#pragma once

#include <string>

#include "frame/report.h"

namespace dorvo::composition {

struct IntimationKind;

class Intimation : public frame::Report {
 protected:
  // `report` is one of the five; EngineState on another name.
  explicit Intimation(const std::string& report);

  std::string query() const override;
  void Detail_Format() override;

 private:
  void print_footer();
  void hide_old_number_beside_new();
  void hyphenate_numbers();
  void prefer_tin();
  void sign_for_dealer();

  const IntimationKind& kind_;
};

// Restaurant, eating house, club, hotel.
class Form1 final : public Intimation {
 public:
  Form1() : Intimation("Form1") {}
};

// Caterer.
class Form2 final : public Intimation {
 public:
  Form2() : Intimation("Form2") {}
};

// Baker.
class Form3 final : public Intimation {
 public:
  Form3() : Intimation("Form3") {}
};

// Retailer.
class Form4 final : public Intimation {
 public:
  Form4() : Intimation("Form4") {}
};

// Dealer in second-hand motor vehicles.
class Form5 final : public Intimation {
 public:
  Form5() : Intimation("Form5") {}
};

}  // namespace dorvo::composition
