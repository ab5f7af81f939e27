// The dialogs that a preview opens, driven by clicks and keys.
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>

#include "preview/export_window.h"
#include "preview/print_job.h"
#include "tests/export/hand_pages.h"
#include "tests/preview/preview_fixture.h"
#include "value/failure.h"

namespace dorvo::preview {
namespace {

class DialogTest : public PreviewTest {
 protected:
  static void click(QWidget& parent, const char* button) {
    QTest::mouseClick(&child<QAbstractButton>(parent, button), Qt::LeftButton);
  }
  static void choose(QWidget& parent, const char* list, const QString& text) {
    auto& box = child<QComboBox>(parent, list);
    ASSERT_GE(box.findText(text), 0) << text.toStdString();
    box.setCurrentText(text);
    emit box.activated(box.currentIndex());
  }
  static void type(QWidget& parent, const char* edit, const std::string& text) {
    auto& line = child<QLineEdit>(parent, edit);
    line.clear();
    QTest::keyClicks(&line, QString::fromStdString(text));
  }
  test::Folder out;
};

TEST_F(DialogTest, ExportReportWritesThePagesOfTheWindow) {
  PreviewWindow& window = shown();
  const std::string file = out.file("a.txt");
  in_dialog([&](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Export");
    choose(dialog, "cboExportFormat", "Text");
    type(dialog, "txtFilename5", file);
    type(dialog, "txtTXTTextDelimiter", "|");
    click(dialog, "chkTXTSupressEmptyLines");
    click(dialog, "btnOK");
  });
  click(window, "tool1");
  EXPECT_EQ(test::read_file(file).substr(0, 29), "Register|head\r\nAsha|Caption\r\n");
}

TEST_F(DialogTest, TheMnemonicOpensTheExportDialog) {
  PreviewWindow& window = shown();
  bool opened = false;
  in_dialog([&](QDialog& dialog) {
    opened = true;
    click(dialog, "btnCancel");
  });
  QTest::keyClick(&window, Qt::Key_X, Qt::AltModifier);
  QApplication::processEvents();
  EXPECT_TRUE(opened);
}

TEST_F(DialogTest, ExportWindowHasItsControlsAndDefaults) {
  test::HandPages hand;
  ExportWindow window(hand.pages());
  window.show();
  struct List {
    const char* name;
    const char* shown;
    int count;
  };
  const List lists[] = {{"cboExportFormat", "Rich Text Format (RTF) - Word", 6},
                        {"cboAcrobatVersion", "1 - Acrobat 3.x", 3},
                        {"cboPDFJPGQuality", "75", 4},
                        {"cboHTMLVersion", "1 - Dynamic HTML", 2},
                        {"cboTOCFormat", "0 - None", 4},
                        {"cboXLSVersion", "8.x", 6}};
  for (const List& list : lists) {
    EXPECT_EQ(child<QComboBox>(window, list.name).currentText(), list.shown) << list.name;
    EXPECT_EQ(child<QComboBox>(window, list.name).count(), list.count) << list.name;
  }
  const std::pair<const char*, const char*> checks[] = {{"chkCreateCSS", "Create CSS"},
                                                        {"chkCreateFrameset", "Create Frames"},
                                                        {"chkMHTArchive", "Create MIME Archive"},
                                                        {"chkSinglePage", "Single Page Output"},
                                                        {"chkXLSAutoRowHeight", "Auto Row Height"},
                                                        {"chkXLSDoubleBoundaries", "Double Boundaries"},
                                                        {"chkXLSGenPageBreaks", "Generate Page Breaks"},
                                                        {"chkXLSMultisheet", "Generate Multiple Sheets"},
                                                        {"chkXLSShowMarginSpace", "Show Margin Space"},
                                                        {"chkXLSTrimEmptySpace", "Trim Empty Space"},
                                                        {"chkTXTSupressEmptyLines", "Supress Empty Lines"},
                                                        {"chkTXTUnicode", "Unicode"}};
  for (const auto& [name, caption] : checks) EXPECT_EQ(child<QCheckBox>(window, name).text(), caption);
  EXPECT_EQ(child<QLineEdit>(window, "txtXLSMinColWidth").text(), "1011");
  EXPECT_EQ(child<QPushButton>(window, "btnCancel").text(), "&Cancel");
  EXPECT_EQ(child<QLabel>(window, "lblDesc").text(),
            "Option Frames are hidden at design-time at position Left = -10000");
  EXPECT_GT(child<QListWidget>(window, "lstPDFFonts").count(), 0);
  QStringList captions;
  for (const QLabel* label : window.findChildren<QLabel*>()) captions += label->text();
  for (const char* caption : {"Export Format",    "Export Options",
                              "Filename:",        "Acrobat Version:",
                              "JPG Quality:",     "No Embedding Fonts:",
                              "File Prefix:",     "HTML Folder:",
                              "Images Folder:",   "Charset:",
                              "Title:",           "HTML Format:",
                              "TOC Format:",      "Version:",
                              "Border Space:",    "Twips",
                              "Min. col. width:", "Min. row height:",
                              "Text Delimiter:",  "Select the export file format options"})
    EXPECT_TRUE(captions.contains(caption)) << caption;
}

TEST_F(DialogTest, OnlyThePanelOfTheFormatShows) {
  test::HandPages hand;
  ExportWindow window(hand.pages());
  window.show();
  auto& formats = child<QComboBox>(window, "cboExportFormat");
  for (int format = 0; format < 6; ++format) {
    choose(window, "cboExportFormat", formats.itemText(format));
    for (int panel = 0; panel < 6; ++panel) {
      const std::string name = "picOptions" + std::to_string(panel);
      EXPECT_EQ(child<QWidget>(window, name.c_str()).isVisible(), panel == format);
    }
  }
}

TEST_F(DialogTest, AnErrorStandsInABoxAndTheDialogStays) {
  PreviewWindow& window = shown();
  std::string title, text;
  in_dialog([&](QDialog& dialog) {
    type(dialog, "txtFilename0", out.file("missing/a.rtf"));
    in_dialog([&](QDialog& box) {
      title = box.windowTitle().toStdString();
      text = box.property("text").toString().toStdString();
      box.accept();
    });
    click(dialog, "btnOK");
    EXPECT_TRUE(dialog.isVisible());
    click(dialog, "btnCancel");
  });
  click(window, "tool1");
  EXPECT_EQ(title, "Error Exporting Document");
  EXPECT_EQ(text, "3004 - Cannot write \"" + out.file("missing/a.rtf") + "\": No such file or directory");
}

TEST_F(DialogTest, PageSetupChangesWhatTheUserChooses) {
  frame::basMain().ShowPageSetup = true;
  in_dialog([&](QDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "pageSetup");
    choose(dialog, "paper", "Custom");
    child<QDoubleSpinBox>(dialog, "paperWidth").setValue(381);
    child<QDoubleSpinBox>(dialog, "paperHeight").setValue(304.8);
    child<QDoubleSpinBox>(dialog, "leftMargin").setValue(12.7);
    dialog.accept();
  });
  PreviewWindow& custom = shown();
  // 15 by 12 inches, half an inch at the left.
  EXPECT_EQ(custom.pages()[0].width, 21600);
  EXPECT_EQ(custom.pages()[0].height, 17280);
  EXPECT_EQ(custom.pages()[0].left_margin, 720);
  in_dialog([&](QDialog& dialog) {
    choose(dialog, "orientation", "Landscape");
    dialog.reject();
  });
  EXPECT_EQ(shown().pages()[0].width, 11906);  // a new run, and Cancel leaves its page alone
}

TEST_F(DialogTest, PrintDialogWithoutAPrinterSaysSo) {
  qputenv("CUPS_SERVER", "127.0.0.1:1");  // nothing listens there
  PreviewWindow& window = shown();
  bool enabled = true;
  in_dialog([&](QDialog& dialog) {
    EXPECT_EQ(child<QComboBox>(dialog, "printer").currentText(), "No printer is set up");
    enabled = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
    dialog.reject();
  });
  window.tool(2)->trigger();
  EXPECT_FALSE(enabled);
}

TEST(PageRange, ReadsNumbersAndRanges) {
  using Pages = std::vector<std::size_t>;
  const std::vector<std::pair<std::string, Pages>> right = {
      {"1", {0}}, {"1-3", {0, 1, 2}}, {" 2 , 4-5", {1, 3, 4}}, {"3,1,3", {0, 2}}, {"5-5", {4}}};
  for (const auto& [text, pages] : right) EXPECT_EQ(page_range(text, 5), pages) << text;
  for (const char* text : {"", "0", "6", "3-1", "1-", "-2", "1,,2", "a", "1 2"}) {
    try {
      page_range(text, 5);
      ADD_FAILURE() << text << " was taken";
    } catch (const value::Failure& failure) {
      EXPECT_EQ(failure.description(),
                "Pages \"" + std::string(text) + "\": expected numbers from 1 to 5, such as 1-3, 5");
    }
  }
}

}  // namespace
}  // namespace dorvo::preview
