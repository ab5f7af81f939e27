// Pages like those of the library's reports, of any size, for bounds on bytes and time.
#pragma once

#include <string>

#include "tests/export/page_builder.h"

namespace dorvo::test {

// A page of a statutory form: a fixed layer of captions and ruled boxes, and 100 boxes of figures and names. `seed`
// changes the data and not the fixed layer.
inline engine::PagePtr form_page(int number, int seed = 0) {
  PageBuilder page(number);
  page.page()->fixed_key = static_cast<std::uint64_t>(number);
  for (int row = 0; row < 50; ++row) {
    const int top = 600 + row * 300;
    page.fixed = true;
    page.style.bold = row % 10 == 0;
    page.text(std::to_string(row + 1) + ". Turnover of sales of goods, rule " + std::to_string(row * 7 + number), 720,
              top, 5000, 260, engine::ControlKind::Label);
    page.shape(6000, top - 20, 2400, 280);
    page.line(720, top + 280, 10000, 0);
    page.fixed = false;
    page.style.bold = false;
    page.style.align = engine::Align::Right;
    page.text(std::to_string(seed * 1237 + row * 98765) + ".5", 6040, top, 2320, 260);
    page.style.align = engine::Align::Left;
    page.text("Dealer " + std::to_string(seed + row), 8500, top, 2400, 260);
  }
  return page.page();
}

// A page of a register: nine columns, its headings fixed. Returns the page; `row` moves on to the next page's first.
inline engine::PagePtr register_page(int number, int& row) {
  constexpr int kRows = 45, kColumns = 9, kWidth = 1150;
  static const char* const kHeads[kColumns] = {"No.", "Date", "Dealer", "TIN", "Sales", "Tax", "Paid", "Due", "Bank"};
  PageBuilder page(number);
  page.page()->fixed_key = 1;
  page.style.half_points = 16;
  page.fixed = true;
  page.style.bold = true;
  for (int c = 0; c < kColumns; ++c) page.text(kHeads[c], 600 + c * kWidth, 600, kWidth, 240);
  page.line(600, 850, kColumns * kWidth, 0);
  page.fixed = false;
  page.style.bold = false;
  for (int i = 0; i < kRows; ++i, ++row) {
    const unsigned mixed = static_cast<unsigned>(row) * 2654435761u;
    const std::string cells[kColumns] = {std::to_string(row + 1),
                                         std::to_string(row % 28 + 1) + "/04/2008",
                                         "Dealer " + std::to_string(mixed % 9973),
                                         "27" + std::to_string(mixed % 900000000 + 100000000) + "V",
                                         std::to_string(mixed % 9999999),
                                         std::to_string(mixed % 999999) + ".5",
                                         std::to_string(mixed % 88888),
                                         std::to_string(mixed % 7777),
                                         "Bank of Maharashtra"};
    for (int c = 0; c < kColumns; ++c) {
      page.style.align = c >= 4 && c < 8 ? engine::Align::Right : engine::Align::Left;
      page.text(cells[c], 600 + c * kWidth, 900 + i * 320, kWidth, 300).clipped = c == 8;
    }
  }
  return page.page();
}

}  // namespace dorvo::test
