// The start of a report: printer, page, toolbar, sweeps, query.
#include <gtest/gtest.h>

#include "tests/frame/sample_report.h"

namespace dorvo::frame {
namespace {

constexpr char kForm1[] = "Form1";
constexpr char kForm201[] = "Form201";
constexpr char kForm201132[] = "Form201132";
constexpr char kForm204132[] = "Form204132";
constexpr char kPTR[] = "PTRFormIIInew";
constexpr char kCst[] = "CSTReturnIIIB";
constexpr char kCst132[] = "CSTReturnIIIB132";
constexpr char kForm208[] = "Form208";
constexpr char kFormVIII[] = "FormVIII";
constexpr char kForm210[] = "Form210";
constexpr char kBill[] = "Bill";
constexpr char kShort[] = "StatementShort";
constexpr char kInterest[] = "InterestMaster";
constexpr char kLabels[] = "AddressLabel";
constexpr char kLiability[] = "Liability0910";
constexpr char kAudit[] = "AuditDetailsRpt";

class ReportStart : public testing::Test {
 protected:
  ReportStart() {
    basMain() = {};
    use_sample_reports<kForm1, kForm201, kForm201132, kForm204132, kPTR, kCst, kCst132, kForm208, kFormVIII, kForm210,
                       kBill, kShort, kInterest, kLabels, kLiability, kAudit>();
    register_ports(ports);
  }
  ~ReportStart() override { register_ports(nullptr); }

  static SampleReport& started(std::string_view name) {
    auto& report = dynamic_cast<SampleReport&>(report_slot(name));
    report.ActiveReport_ReportStart();
    return report;
  }
  static bool visible(const Report& report, std::string_view control) { return report.control(control).Visible(); }

  std::shared_ptr<RecordingPorts> ports = std::make_shared<RecordingPorts>();
};

TEST_F(ReportStart, PageOfEachKind) {
  constexpr float kEngine = 1440;  // the margin of a report that writes none
  struct Case {
    const char* report;
    int paper;
    float width, height, left, right, top, bottom;
    int orientation;
  };
  const Case cases[] = {
      {kForm1, 9, 11906, 16838, 1152, 360, 720, 720, 1},
      {kForm201132, 256, 21600, 17280, 288, 288, 288, 288, 1},
      {kForm204132, 256, 21600, 17280, 288, 288, 720, 720, 1},
      {kPTR, 9, 11906, 16838, 1152, 360, 432, 720, 1},
      {kCst, 9, 11906, 16838, 360, 0, 144, 144, 1},
      {kCst132, 256, 21600, 17280, 720, 720, 720, 720, 1},
      {kForm208, 9, 11906, 16838, 1440, 1440, 1440, 1440, 1},
      {kFormVIII, 9, 11906, 16838, 1440, 1440, 1296, 1440, 2},
      {kForm210, 9, 11906, 16838, kEngine, kEngine, kEngine, kEngine, 2},
      {kBill, 256, 12240, 7920, 1152, 360, 720, 720, 1},
      {kShort, 9, 11906, 16838, 1440, 720, 720, 720, 1},
      {kInterest, 9, 11906, 16838, 720, 720, 1080, 720, 1},
      {kLabels, 9, 11906, 16838, kEngine, kEngine, kEngine, kEngine, 2},
      {kLiability, 9, 11906, 16838, 720, kEngine, kEngine, kEngine, 1},
  };
  for (const Case& c : cases) {
    const engine::PageSettings& page = started(c.report).PageSettings();
    EXPECT_EQ(page.PaperSize, c.paper) << c.report;
    EXPECT_EQ(page.PaperWidth, c.width) << c.report;
    EXPECT_EQ(page.PaperHeight, c.height) << c.report;
    EXPECT_EQ(page.LeftMargin, c.left) << c.report;
    EXPECT_EQ(page.RightMargin, c.right) << c.report;
    EXPECT_EQ(page.TopMargin, c.top) << c.report;
    EXPECT_EQ(page.BottomMargin, c.bottom) << c.report;
    EXPECT_EQ(static_cast<int>(page.Orientation), c.orientation) << c.report;
  }
}

TEST_F(ReportStart, PageSetupDialogInsteadOfMargins) {
  basMain().ShowPageSetup = true;
  EXPECT_EQ(started(kForm1).PageSettings().LeftMargin, 999);
  started(kForm1);
  EXPECT_EQ(ports->page_setups, 2) << "once a run";
  EXPECT_EQ(report_slot(kForm1).PageSettings().RightMargin, 1440) << "the report's own margin is never written";
  for (const char* report : {kForm210, kShort, kInterest}) {
    EXPECT_NE(started(report).PageSettings().LeftMargin, 999) << report;
  }
  EXPECT_EQ(ports->page_setups, 2) << "three reports do not ask";
}

TEST_F(ReportStart, Printer) {
  for (const bool draft : {false, true}) {
    basMain().PrintQuality = draft;
    EXPECT_EQ(started(kForm1).Printer().PrintQuality, draft ? -1 : -4);
    EXPECT_EQ(started(kForm1).Printer().RenderMode, 1);
    EXPECT_EQ(started(kForm1).Printer().Option, 0);
    EXPECT_EQ(started(kShort).Printer().Option, 1);
    EXPECT_EQ(started(kLabels).Printer().PrintQuality, -4) << "this report leaves the quality alone";
    EXPECT_EQ(started(kForm210).Printer().RenderMode, 0);
  }
}

TEST_F(ReportStart, ToolbarIsTheSameOnASecondRun) {
  for (int run = 1; run <= 2; ++run) {
    const auto& tools = started(kForm1).Toolbar().Tools;
    ASSERT_EQ(tools.size(), 22u) << "run " << run;
    EXPECT_FALSE(tools[0].Enabled);
    EXPECT_TRUE(tools[1].Enabled);
    EXPECT_EQ(tools[20].ID, 0);
    EXPECT_EQ(tools[21].Caption, "E&xport Report");
    EXPECT_EQ(tools[21].ID, 1);
  }
}

TEST_F(ReportStart, SweepsHideAndShow) {
  for (const bool blank : {false, true}) {
    for (const bool preprinted : {false, true}) {
      basMain().BlankForm = blank;
      basMain().preprinted = preprinted;
      const Report& report = started(kForm1);
      for (const auto* box : {"txtName", "txtHidden", "txtLower"}) EXPECT_EQ(visible(report, box), !blank) << box;
      for (const auto* art : {"lblCaption", "linRule", "shpBox"}) EXPECT_EQ(visible(report, art), !preprinted) << art;
      for (const auto* kept : {"txtKept", "lblKept"}) EXPECT_TRUE(visible(report, kept)) << kept;
      for (const auto* outside : {"lblHeading", "txtHead", "lblName"}) EXPECT_TRUE(visible(report, outside)) << outside;
    }
  }
}

TEST_F(ReportStart, ReportsWithoutSweeps) {
  basMain().BlankForm = basMain().preprinted = true;
  for (const char* name : {kCst, kCst132, kForm208, kShort, kInterest, kLabels, kLiability}) {
    const Report& report = started(name);
    EXPECT_TRUE(visible(report, "txtName")) << name;
    EXPECT_TRUE(visible(report, "lblCaption")) << name;
    EXPECT_FALSE(visible(report, "txtHidden")) << name << ": as the layout has it";
  }
}

TEST_F(ReportStart, QueryAndConnectionAreWrittenAnew) {
  basMain().ConnectionString = "practice.db";
  report_slot(kForm1).PropCMasterID(12);
  for (int run = 1; run <= 2; ++run) {
    SampleReport& report = started(kForm1);
    EXPECT_EQ(report.recMaster().ConnectionString(), "practice.db");
    EXPECT_EQ(report.recMaster().Source(), "SELECT Name FROM Customer WHERE CustomerID=12");
  }
}

TEST_F(ReportStart, SubReportKeepsWhatItsParentWrote) {
  basMain().ConnectionString = "practice.db";
  basMain().BlankForm = true;
  Report& report = report_slot(kAudit);
  report.recMaster().Source("SELECT 1");
  started(kAudit);
  EXPECT_EQ(report.recMaster().Source(), "SELECT 1");
  EXPECT_TRUE(visible(report, "txtName"));
}

TEST_F(ReportStart, ExportToolWithoutPagesDoesNothing) {
  SampleReport& report = started(kForm1);
  for (const engine::Tool& tool : report.Toolbar().Tools) report.ActiveReport_ToolbarClick(tool);
  EXPECT_TRUE(ports->exported.empty());
}

// ---- boxes ----

TEST_F(ReportStart, BoxesAreTheirOwnAccumulators) {
  SampleReport& report = started(kForm1);
  report.put("txtName", "NIL");
  report.add("txtName", 0.1);
  report.add("TXTNAME", "0.2");
  EXPECT_EQ(report.text("txtName"), "0.3");
  report.add("txtName", true);
  EXPECT_EQ(report.text("txtName"), "-0.7");
}

TEST_F(ReportStart, NullAndTextThatIsNoNumberNameTheBox) {
  SampleReport& report = started(kForm1);
  const auto message = [](auto action) -> std::string {
    try {
      action();
      return "none";
    } catch (const value::Failure& failure) {
      return std::to_string(static_cast<int>(failure.number())) + " " + failure.description();
    }
  };
  EXPECT_EQ(message([&] { report.put("txtName", value::Null()); }), "94 Form1, txtName: invalid use of Null");
  EXPECT_EQ(message([&] { report.add("txtName", value::Null()); }), "94 Form1, txtName: invalid use of Null");
  report.put("txtName", "");
  EXPECT_EQ(message([&] { report.strict_number("txtName"); }).substr(0, 20), "13 Form1, txtName: T");
  EXPECT_EQ(message([&] { report.put("txtNowhere", 1); }).substr(0, 4), "5002");
}

}  // namespace
}  // namespace dorvo::frame
