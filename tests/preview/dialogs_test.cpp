// The page set-up and print dialogs, driven by clicks and keys.
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>

#include "preview/page_setup_dialog.h"
#include "preview/print_dialog.h"
#include "tests/preview/preview_fixture.h"

namespace dorvo::preview {
namespace {

class DialogTest : public PreviewTest {
 protected:
  static void choose_paper(QWidget& dialog, int code) {
    auto& list = child<QComboBox>(dialog, "Paper");
    list.setCurrentIndex(list.findData(code));
  }
  static void length(QWidget& dialog, const char* box, double mm) { child<QDoubleSpinBox>(dialog, box).setValue(mm); }
};

TEST_F(DialogTest, PageSetupIsAskedForInTheRunAndWhatItSaysPrints) {
  frame::basMain().ShowPageSetup = true;
  in_dialog([&](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Page Setup");
    choose_paper(dialog, engine::kPaperCustom);
    length(dialog, "Paper Width", 381);
    length(dialog, "Paper Height", 304.8);
    length(dialog, "Left Margin", 12.7);
    dialog.accept();
  });
  // 15 by 12 inches, half an inch at the left.
  const engine::Sheet custom = shown().view().pages().sheet(0);
  EXPECT_EQ(custom.width, 21600);
  EXPECT_EQ(custom.height, 17280);
  EXPECT_EQ(custom.left_margin, 720);
  in_dialog([&](QDialog& dialog) {
    choose_paper(dialog, engine::kPaperA4);
    child<QRadioButton>(dialog, "Landscape").click();
    dialog.accept();
  });
  EXPECT_EQ(shown().view().pages().sheet(0).width, 16838);
  in_dialog([&](QDialog& dialog) {
    choose_paper(dialog, 8);
    dialog.reject();
  });
  EXPECT_EQ(shown().view().pages().sheet(0).width, 11906) << "Cancel leaves what the run starts with";
}

TEST_F(DialogTest, PageSetupKeepsTwipsThatNobodyTouched) {
  engine::PageSettings settings;
  settings.LeftMargin = 1152;
  settings.RightMargin = 359;
  settings.TopMargin = 1;
  settings.BottomMargin = 0;
  settings.PaperSize = engine::kPaperCustom;
  settings.PaperWidth = 12241;
  settings.PaperHeight = 7919;
  const engine::PageSettings kept = PageSetupDialog(settings).settings();
  EXPECT_EQ(kept.LeftMargin, 1152);
  EXPECT_EQ(kept.RightMargin, 359);
  EXPECT_EQ(kept.TopMargin, 1);
  EXPECT_EQ(kept.BottomMargin, 0);
  EXPECT_EQ(kept.PaperWidth, 12241);
  EXPECT_EQ(kept.PaperHeight, 7919);
}

TEST_F(DialogTest, PageSetupRefusesMarginsThatLeaveNoRoom) {
  PageSetupDialog dialog({});
  auto& ok = *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
  EXPECT_TRUE(ok.isEnabled());
  length(dialog, "Left Margin", 100);
  length(dialog, "Right Margin", 105);  // of 210
  EXPECT_FALSE(ok.isEnabled());
  EXPECT_EQ(child<QLabel>(dialog, "Wrong").text(), "The margins leave no room on the sheet");
  child<QRadioButton>(dialog, "Landscape").click();  // 297 wide now
  EXPECT_TRUE(ok.isEnabled());
}

const std::vector<PrinterName> kPrinters = {{"Front", "", false}, {"Office", "Line printer", true}};

TEST_F(DialogTest, PrintStartsFromTheReport) {
  PrintDialog dialog({"Form201", 7, 2, QSize(16838, 11906), true}, kPrinters);
  const PrintOrder order = dialog.order();
  EXPECT_EQ(child<QComboBox>(dialog, "Printer").currentText(), "Office - Line printer");
  EXPECT_EQ(order.printer, "Office");
  EXPECT_EQ(order.title, "Form201");
  EXPECT_EQ(order.copies, 1);
  EXPECT_TRUE(order.is_draft);
  EXPECT_EQ(order.paper_width, 11906) << "the sheet is fed upright";
  EXPECT_EQ(order.paper_height, 16838);
  EXPECT_EQ(dialog.pages().size(), 7u);
  EXPECT_FALSE(PrintDialog({"Bill", 1, 0, QSize(11906, 16838), false}, kPrinters).order().is_draft);
}

TEST_F(DialogTest, PrintTakesWhatTheUserChooses) {
  PrintDialog dialog({"Form201132", 7, 2, QSize(21600, 17280), false}, kPrinters);
  dialog.show();
  EXPECT_EQ(dialog.order().paper_width, 21600);
  EXPECT_EQ(dialog.order().paper_height, 17280);
  child<QComboBox>(dialog, "Printer").setCurrentIndex(0);
  child<QComboBox>(dialog, "Quality").setCurrentText("Draft");
  type(dialog, "Copies", "3");
  length(dialog, "Paper Width", 254);
  EXPECT_EQ(dialog.order().printer, "Front");
  EXPECT_EQ(dialog.order().copies, 3);
  EXPECT_TRUE(dialog.order().is_draft);
  EXPECT_EQ(dialog.order().paper_width, 14400);
  choose_paper(dialog, 1);
  EXPECT_EQ(dialog.order().paper_height, 15840);

  using Pages = std::vector<std::size_t>;
  child<QRadioButton>(dialog, "Current Page").click();
  EXPECT_EQ(dialog.pages(), Pages{2});
  type(dialog, "Page Ranges", "1, 6-7");
  EXPECT_TRUE(child<QRadioButton>(dialog, "Some Pages").isChecked());
  EXPECT_EQ(dialog.pages(), (Pages{0, 5, 6}));
  type(dialog, "Page Ranges", "8");
  EXPECT_EQ(child<QLabel>(dialog, "Wrong").text(), "Pages: expected numbers from 1 to 7, as 1-3,5");
  EXPECT_FALSE(child<QPushButton>(dialog, "Print").isEnabled());
}

TEST_F(DialogTest, PrintWithoutAPrinterSaysSo) {
  PrintDialog dialog({"Form201", 1, 0, QSize(11906, 16838), false}, {});
  EXPECT_EQ(child<QLabel>(dialog, "Wrong").text(), "The print service has no printer");
  EXPECT_FALSE(child<QPushButton>(dialog, "Print").isEnabled());
}

TEST(JobOptions, NameThePaperInMillimetres) {
  using Options = std::vector<std::pair<std::string, std::string>>;
  PrintOrder order;
  order.copies = 2;
  EXPECT_EQ(job_options(order), (Options{{"copies", "2"},
                                         {"multiple-document-handling", "separate-documents-collated-copies"},
                                         {"print-quality", "5"},
                                         {"media", "iso_a4_210x297mm"},
                                         {"print-scaling", "none"}}));
  order.is_draft = true;
  order.paper_width = 21600;
  order.paper_height = 17280;
  EXPECT_EQ(job_options(order)[2].second, "3");
  EXPECT_EQ(job_options(order)[3].second, "custom_381x304.8mm_381x304.8mm");
}

}  // namespace
}  // namespace dorvo::preview
