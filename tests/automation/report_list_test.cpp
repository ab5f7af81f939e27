// The lists that must agree: report classes, page set-ups, launchers, files.
#include "automation/report_list.h"

#include <gtest/gtest.h>

#include <set>

#include "automation/output_kinds.h"
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

TEST(OutputKinds, AreToldByExtension) {
  struct Case {
    const char* file;
    const char* format;  // empty: none
  };
  const Case cases[] = {
      {"a.pdf", "PDF"}, {"A.PDF", "PDF"}, {"/x.y/a.b.json", "JSON"}, {"a.txt", "Text"}, {"a", ""},
      {"a.", ""},       {"pdf", ""},      {"/x.pdf/a", ""},          {"a.doc", ""},     {"", ""},
      {".pdf", "PDF"},
  };
  for (const Case& c : cases) {
    const OutputKind* kind = output_kind_of(c.file);
    EXPECT_EQ(kind ? kind->format : "", c.format) << c.file;
  }
}

TEST(OutputKinds, OptionsAreTypedPropertiesOfTheirFormat) {
  struct Case {
    OutputOption option;
    bool taken;
  };
  const Case cases[] = {
      {{"PDF.Version", "0"}, true},
      {{"pdf.VERSION", "2"}, true},
      {{"PDF.Version", "two"}, false},
      {{"PDF.NeverEmbedFonts", ""}, true},
      {{"Text.Unicode", "True"}, true},
      {{"Text.Unicode", "maybe"}, false},
      {{"Text.Version", "1"}, false},
      {{"PDF", "1"}, false},
      {{"PDF.", "1"}, false},
      {{"PDF.FileName", "x"}, false},
      {{"JSON.Report", "Form1"}, false},
  };
  for (const Case& c : cases) EXPECT_EQ(is_output_option(c.option), c.taken) << c.option.name << "=" << c.option.value;
}

}  // namespace
}  // namespace dorvo::automation
