// Page set-up and frame differences of every report class, one row each.
#pragma once

#include <string_view>
#include <vector>

#include "engine/active_report.h"

namespace dorvo::frame {

struct ReportKind {
  std::string_view report;
  int paper = engine::kPaperA4;
  int paper_width = 0;  // twips, custom paper only
  int paper_height = 0;
  int left = 1152;  // margins in twips; kNotWritten: the report leaves it alone
  int right = 360;
  int top = 720;
  int bottom = 720;
  engine::Orientation orientation = engine::Orientation::Portrait;
  bool writes_orientation = true;
  bool render_mode = true;        // step 1
  bool print_quality = true;      // step 2
  bool page_setup_dialog = true;  // ShowPageSetup is read
  bool sub_report = false;        // run inside another report: no set-up, toolbar or query of its own
  bool printer_option = false;    // the further printer option set to 1
  bool sweeps = true;
  bool page_footer = false;  // has PageFooter_Format
};

constexpr int kNotWritten = -1;

// nullptr for a report that the table has not.
const ReportKind* find_report_kind(std::string_view report);
const std::vector<ReportKind>& report_kinds();

}  // namespace dorvo::frame
