// One return as a test writes it down, in a small practice of its own, and reports run on it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/report.h"
#include "practice/row.h"

namespace dorvo::returns {

// A dealer "ABC Traders" with no numbers and a return of April 2005 with no figures, and what a test enters. Entries
// stand one behind another, parted by "; ":
//   sale RATE NET TAX [KIND]             a line of local sales
//   buy RATE NET TAX SETOFF [KIND]       a line of purchases from a registered dealer
//   line CLASS KIND RATE                 any other line
//   also COLUMN=VALUE                    a column of the last line
//   COLUMN=VALUE                         a column of the return, or of the dealer when the return has none of that name
// KIND is BASIC when it is left out. NULL, true and false are what they say; dates are year-month-day.
class Filing {
 public:
  explicit Filing(std::string_view entries);

  // Points the shared settings at it; they are those of the library's start otherwise.
  void open() const;

 private:
  void enter(std::string_view entry);
  void add_line(std::string_view entry_type, const std::vector<std::string>& words, std::size_t amounts,
                std::string_view net_column);
  void write() const;

  practice::Row customer_{"Customer"};
  practice::Row master_{"CMaster"};
  std::vector<practice::Row> lines_;
  std::string file_;
};

const std::vector<std::string>& six_forms();
const std::vector<std::string>& plain_and_twin();

// A new report object of that name, whose key is the return; the same after its run.
std::unique_ptr<frame::Report> make(std::string_view form);
std::unique_ptr<frame::Report> print(std::string_view form);

// What stands on paper in a box or label: its text, or "(hidden)".
std::string seen(const frame::Report& report, std::string_view control);

// What is entered, and what the named boxes of each form must show: "box=text; box=text".
struct Case {
  const char* what;
  std::string entries;
  std::string boxes;
};
void expect(const std::vector<Case>& cases, const std::vector<std::string>& forms = plain_and_twin());

}  // namespace dorvo::returns
