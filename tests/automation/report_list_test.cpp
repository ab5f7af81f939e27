// The lists that must agree: report classes, page set-ups, launchers, files.
#include "automation/report_list.h"

#include <gtest/gtest.h>

#include <set>

#include "frame/launchers.h"
#include "layouts/layouts.h"

namespace dorvo::automation {
namespace {

TEST(ReportList, EveryReportHasAPageSetupAndTheOtherWayRound) {
  std::set<std::string_view> listed, kinds;
  for (const frame::ReportClass& row : report_list()) EXPECT_TRUE(listed.insert(row.name).second) << row.name;
  for (const frame::ReportKind& kind : frame::report_kinds()) EXPECT_TRUE(kinds.insert(kind.report).second);
  EXPECT_EQ(listed, kinds);
}

TEST(ReportList, EveryReportThatALauncherOpensIsListed) {
  frame::set_report_classes(report_list());
  for (const frame::LauncherClass& row : frame::launcher_classes()) {
    if (row.report.empty()) continue;
    EXPECT_NE(frame::find_report_class(row.report), nullptr) << row.report;
    if (row.twin.empty()) continue;
    EXPECT_NE(frame::find_report_class(row.twin), nullptr) << row.twin;
  }
}

TEST(ReportList, EveryBuiltReportHasALayoutThatItCanBeMadeFrom) {
  layouts::embed();
  for (const frame::ReportClass& row : report_list()) {
    if (!row.is_built()) continue;
    const auto report = row.make();
    EXPECT_EQ(report->Name(), row.name);
  }
}

}  // namespace
}  // namespace dorvo::automation
