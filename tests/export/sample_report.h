// A report with everything that a page can hold, for the checks with readers that are not ours: a form page with boxes,
// rules, alignments, scripts and characters that formats must escape, then two pages of a register, the last on a
// sheet of its own size.
#pragma once

#include "tests/export/hand_pages.h"

namespace dorvo::test {

inline HandPages sample_report() {
  HandPages hand(HandPages::Fonts::Real);
  hand.page();
  engine::Style& title = hand.style(engine::Align::Center, 28);
  title.bold = true;
  hand.text(1152, 800, 10394, 400, "Form-201 <Return & Chalan>");
  hand.style();
  hand.shape(1152, 1400, 10394, 1500);
  hand.line(6000, 1400, 0, 1500).line(1152, 1900, 10394, 0);
  hand.text(1252, 1500, 2000, 300, "Name of dealer");
  engine::Style& bold = hand.style();
  bold.bold = true;
  bold.underline = true;
  hand.text(6100, 1500, 5000, 300, "M/s Caf\u00E9 {Deshmukh} \\ Sons");
  hand.style();
  hand.text(1252, 2000, 4000, 300, "\u092E\u0939\u093E\u0930\u093E\u0937\u094D\u091F\u094D\u0930");
  hand.text(6100, 2000, 3000, 500, "Shop 4, Laxmi Road\r\nPune 411030");
  hand.shape(9500, 2000, 1800, 400, true, 0xDDDDDD);
  engine::Style& amount = hand.style(engine::Align::Right);
  amount.font = "Courier New";
  hand.text(9500, 2050, 1800, 300, "123456.75");
  engine::Style& small = hand.style(engine::Align::Center, 14);
  small.font = "Times New Roman";
  small.italic = true;
  small.color = 0x0000C0;
  hand.text(1152, 3100, 10394, 250, "(See rule 17) - to be filed in duplicate", "lblRule", true);

  for (int number = 2; number <= 3; ++number) {
    number == 2 ? hand.page() : hand.page(16838, 11906);
    engine::Style& heading = hand.style(engine::Align::Left, 24);
    heading.bold = true;
    hand.text(1152, 800, 6000, 360, "Bill register, sheet " + std::to_string(number - 1), "lblHeading");
    hand.line(1152, 1300, 9000, 0);
    for (int row = 0; row < 20; ++row) {
      const int top = 1400 + row * 300;
      const int serial = (number - 2) * 20 + row + 1;
      hand.style();
      hand.text(1152, top, 900, 240, std::to_string(serial), "txtSerial");
      hand.text(2200, top, 4000, 240, "Dealer " + std::to_string(serial) + " & Co.", "txtName");
      hand.style(engine::Align::Right);
      hand.text(6500, top, 1500, 240, std::to_string(serial * 1000) + ".5", "txtAmount");
      hand.text(8400, top, 1500, 240, row % 2 == 0 ? "NIL" : "-" + std::to_string(serial), "txtBalance");
    }
    hand.line(1152, 7500, 9000, 0);
  }
  return hand;
}

}  // namespace dorvo::test
