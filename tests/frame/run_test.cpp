// A whole run on a database: footers, print modes, second run, export dialog, headless printing.
#include <gtest/gtest.h>

#include "tests/data/scratch_database.h"
#include "tests/frame/sample_report.h"

namespace dorvo::frame {
namespace {

constexpr char kForm201[] = "Form201";

class AllRows : public SampleReport {
 public:
  using SampleReport::SampleReport;

 protected:
  std::string query() const override { return "SELECT Name FROM Customer ORDER BY CustomerID"; }
};

class RunTest : public testing::Test {
 protected:
  RunTest() {
    basMain() = {};
    basMain().ConnectionString = database.path();
    use_sample_reports<kForm201>();
    set_report_classes({{kForm201, [] { return std::unique_ptr<Report>(std::make_unique<AllRows>(kForm201)); }}});
    register_ports(nullptr);
  }
  ~RunTest() override {
    basMain() = {};
    register_ports(nullptr);
  }

  Report& shown() {
    Report& report = report_slot(kForm201);
    report.Show();
    return report;
  }
  // Texts of the visible items of that name, page by page; "-" where a page has none.
  static std::vector<std::string> on_pages(const Report& report, std::string_view name) {
    std::vector<std::string> texts;
    for (const engine::PagePtr& page : report.Pages()) {
      std::string text = "-";
      for (const engine::PageItem& item : page->items) {
        if (item.name() == name) text = item.string();
      }
      texts.push_back(text);
    }
    return texts;
  }

  using Texts = std::vector<std::string>;
  data::ScratchDatabase database{
      "CREATE TABLE Customer (CustomerID INT, Name VARCHAR(40));"
      "INSERT INTO Customer VALUES (1, 'Asha'), (2, 'Ganesh'), (3, NULL);"};
};

TEST_F(RunTest, NameAndProductStandOnTheFirstPageOnly) {
  basMain().ShowFooter = true;
  basMain().UserName = "A. Kulkarni";
  const Report& report = shown();
  EXPECT_EQ(on_pages(report, "txtName"), (Texts{"Asha", "Ganesh", ""}));
  EXPECT_EQ(on_pages(report, "lblName"), (Texts{"A. Kulkarni", "-", "-"}));
  EXPECT_EQ(on_pages(report, "lbl"), (Texts{"Pelmar Computation", "-", "-"}));
  EXPECT_EQ(on_pages(report, "lblpageno"), (Texts{"1", "2", "3"}));
}

TEST_F(RunTest, PreprintedKeepsTheFooterAndTheHeader) {
  basMain().preprinted = true;
  basMain().BlankForm = true;
  const Report& report = shown();
  EXPECT_EQ(on_pages(report, "txtName"), (Texts{"-", "-", "-"}));
  EXPECT_EQ(on_pages(report, "lblCaption"), (Texts{"-", "-", "-"}));
  EXPECT_EQ(on_pages(report, "lblpageno"), (Texts{"1", "2", "3"}));
  EXPECT_EQ(on_pages(report, "lblHeading"), (Texts{"Register", "Register", "Register"}));
}

TEST_F(RunTest, SecondRunIsAsTheFirstAndKeepsTheHeading) {
  report_slot(kForm201).heading("Bills");
  const Texts first = on_pages(shown(), "lbl");
  EXPECT_EQ(on_pages(shown(), "lbl"), first);
  EXPECT_EQ(on_pages(shown(), "lblHeading"), (Texts{"Bills", "Bills", "Bills"}));
}

TEST_F(RunTest, ExportDialogOpensOnPagesAndOnlyByItsTool) {
  Report& report = shown();
  auto recording = std::make_shared<RecordingPorts>();
  register_ports(recording);
  for (const engine::Tool& tool : report.Toolbar().Tools) report.ActiveReport_ToolbarClick(tool);
  EXPECT_EQ(recording->exported, std::vector<Report*>{&report});
}

TEST_F(RunTest, NoRowsNoPagesNoDialog) {
  database.run("DELETE FROM Customer");
  Report& report = shown();
  EXPECT_EQ(report.Pages().Count(), 0u);
  auto recording = std::make_shared<RecordingPorts>();
  register_ports(recording);
  report.ShowExportDialog();
  EXPECT_TRUE(recording->exported.empty());
}

TEST_F(RunTest, FailureOfTheDatabaseReachesTheCaller) {
  database.run("DROP TABLE Customer");
  try {
    shown();
    ADD_FAILURE() << "it ran";
  } catch (const value::Failure& failure) {
    EXPECT_NE(failure.description().find("Form201"), std::string::npos) << failure.description();
    EXPECT_NE(failure.description().find("Customer"), std::string::npos) << failure.description();
  }
}

}  // namespace
}  // namespace dorvo::frame
