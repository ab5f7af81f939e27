// One return as a test writes it down, in a small practice of its own, and reports run on it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/report.h"
#include "practice/row.h"

namespace dorvo::returns {

using Columns = std::vector<std::pair<std::string_view, value::Variant>>;

// A dealer "ABC Traders" with no numbers and a return of April 2005 with no figures; a test adds to it.
class Filing {
 public:
  Filing();

  Filing& dealer(std::string_view column, value::Variant held);
  Filing& set(std::string_view column, value::Variant held);
  Filing& set(const Columns& columns);
  Filing& period(value::Variant from, value::Variant to);
  Filing& line(std::string_view entry, std::string_view sub_entry, value::Variant rate, const Columns& columns);
  Filing& sale(double rate, double net, double tax, std::string_view sub_entry = "BASIC");
  Filing& purchase(double rate, double net, double tax, double set_off, std::string_view sub_entry = "BASIC");
  // The last line's column.
  Filing& spoil(std::string_view column, value::Variant held);

  // Writes the practice, once, and points the shared settings at it.
  void open();

 private:
  practice::Row customer_{"Customer"};
  practice::Row master_{"CMaster"};
  std::vector<practice::Row> lines_;
  std::string file_;
};

const std::vector<std::string>& six_forms();

// A new report object of that name, whose key is the return.
std::unique_ptr<frame::Report> make(std::string_view form);
// The same after its run.
std::unique_ptr<frame::Report> print(std::string_view form);

// What stands on paper in a box or label: its text, or kHidden.
inline constexpr const char* kHidden = "<hidden>";
std::string seen(const frame::Report& report, std::string_view control);

// The shared settings as they are when the library starts, at the end of each test.
struct FreshSettings {
  FreshSettings();
  ~FreshSettings();
};

}  // namespace dorvo::returns
