// The export window, driven by clicks and keys.
#include "preview/export_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>

#include "tests/export/hand_pages.h"
#include "tests/preview/preview_fixture.h"

namespace dorvo::preview {
namespace {

constexpr const char* kExport = "E&xport Report";

class ExportWindowTest : public PreviewTest {
 protected:
  static QString text(QWidget& window, const char* edit) { return child<QLineEdit>(window, edit).text(); }
  static void choose_format(QWidget& window, int format) {
    child<QComboBox>(window, "cboExportFormat").setCurrentIndex(format);
  }
  test::Folder out;
};

TEST_F(ExportWindowTest, WritesThePagesOfTheWindow) {
  PreviewWindow& window = shown();
  const std::string file = out.file("a.txt");
  in_dialog([&](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Export");
    EXPECT_TRUE(dialog.isModal());
    choose_format(dialog, 5);
    type(dialog, "txtFilename(5)", file);
    type(dialog, "txtTXTTextDelimiter", "|");
    click(dialog, "btnOK");
    EXPECT_FALSE(dialog.isVisible());
  });
  tool(window, kExport);
  EXPECT_EQ(test::read_file(file).substr(0, 29), "Register|head\r\nAsha|Caption\r\n");
}

// A window exports what it shows, whatever its report has run since.
TEST_F(ExportWindowTest, AnEarlierWindowStillExportsItsOwnPages) {
  PreviewWindow& window = shown();
  database.run("DELETE FROM Customer");
  shown();
  ASSERT_EQ(frame::report_slot(kForm201).Pages().Count(), 0u);
  const std::string file = out.file("a.txt");
  in_dialog([&](QDialog& dialog) {
    choose_format(dialog, 5);
    type(dialog, "txtFilename(5)", file);
    click(dialog, "btnOK");
  });
  tool(window, kExport);
  EXPECT_NE(test::read_file(file).find("Meera"), std::string::npos);
  EXPECT_EQ(frame::report_slot(kForm201).Pages().Count(), 0u);
}

TEST_F(ExportWindowTest, TheMnemonicOpensIt) {
  PreviewWindow& window = shown();
  bool is_open = false;
  QTimer::singleShot(300, &window, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    is_open = dialog->objectName() == "frmExportReport";
    click(*dialog, "btnCancel");
  });
  QTest::keyClick(&window, Qt::Key_X, Qt::AltModifier);
  EXPECT_TRUE(comes([&] { return is_open; }));
  EXPECT_EQ(out.files(), 0u);
}

TEST_F(ExportWindowTest, HasItsControlsAndDefaults) {
  test::HandPages hand;
  ExportWindow window(hand.pages());
  window.show();
  const std::tuple<const char*, const char*, int> lists[] = {
      {"cboExportFormat", "Rich Text Format (RTF) - Word", 6},
      {"cboAcrobatVersion", "1 - Acrobat 3.x", 3},
      {"cboPDFJPGQuality", "75", 4},
      {"cboHTMLVersion", "1 - Dynamic HTML", 2},
      {"cboTOCFormat", "0 - None", 4},
      {"cboXLSVersion", "8.x", 6},
  };
  for (const auto& [name, shown, count] : lists) {
    EXPECT_EQ(child<QComboBox>(window, name).currentText(), shown) << name;
    EXPECT_EQ(child<QComboBox>(window, name).count(), count) << name;
  }
  const std::pair<const char*, const char*> checks[] = {
      {"chkCreateCSS", "Create CSS"},
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
      {"chkTXTUnicode", "Unicode"},
  };
  for (const auto& [name, caption] : checks) EXPECT_EQ(child<QCheckBox>(window, name).text(), caption);
  for (const char* box :
       {"txtFilename(0)", "txtFilename(1)", "txtFilename(2)", "txtFilename(3)", "txtFilename(4)", "txtFilename(5)",
        "txtHTMLFolder", "txtAuxFolder", "txtHTMLCharset", "txtHTMLTitle", "txtTXTTextDelimiter"})
    EXPECT_EQ(text(window, box), "") << box;
  EXPECT_EQ(text(window, "txtXLSBorderSpace"), "59");
  EXPECT_EQ(text(window, "txtXLSMinColWidth"), "1011");
  EXPECT_EQ(text(window, "txtXLSMinRowHeight"), "128");
  EXPECT_EQ(child<QPushButton>(window, "btnCancel").text(), "&Cancel");
  EXPECT_EQ(child<QLabel>(window, "lblDesc").text(),
            "Option Frames are hidden at design-time at position Left = -10000");
  EXPECT_GT(child<QListWidget>(window, "lstPDFFonts").count(), 0);
  EXPECT_TRUE(child<QListWidget>(window, "lstPDFFonts").selectedItems().isEmpty());
  QStringList captions;
  for (const QLabel* label : window.findChildren<QLabel*>()) captions += label->text();
  for (const char* caption : {"Export",           "Select the export file format options",
                              "Export Format",    "Export Options",
                              "Filename:",        "Acrobat Version:",
                              "JPG Quality:",     "No Embedding Fonts:",
                              "File Prefix:",     "HTML Folder:",
                              "Images Folder:",   "Charset:",
                              "Title:",           "HTML Format:",
                              "TOC Format:",      "Version:",
                              "Border Space:",    "Twips",
                              "Min. col. width:", "Min. row height:",
                              "Text Delimiter:"})
    EXPECT_TRUE(captions.contains(caption)) << caption;
}

TEST_F(ExportWindowTest, OnlyThePanelOfTheFormatShows) {
  test::HandPages hand;
  ExportWindow window(hand.pages());
  window.show();
  for (int format = 0; format < 6; ++format) {
    choose_format(window, format);
    for (int number = 0; number < 6; ++number) {
      const auto& panel = child<QWidget>(window, ("picOptions(" + std::to_string(number) + ")").c_str());
      EXPECT_EQ(panel.isVisible(), number == format);
      EXPECT_EQ(panel.x(), (number == format ? 1560 : -10000) * window.logicalDpiX() / 1440);
    }
  }
}

// Nothing happens, with no message.
TEST_F(ExportWindowTest, WithoutAFileNameItStays) {
  test::HandPages hand;
  hand.page().text(1000, 1000, 1000, 240, "x");
  ExportWindow window(hand.pages());
  window.show();
  for (int format = 0; format < 6; ++format) {
    choose_format(window, format);
    click(window, "btnOK");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), &window);
  }
  click(window, "btnCancel");
  EXPECT_FALSE(window.isVisible());
}

TEST_F(ExportWindowTest, AnErrorStandsInABoxAndTheDialogStays) {
  PreviewWindow& window = shown();
  std::string title, told;
  in_dialog([&](QDialog& dialog) {
    type(dialog, "txtFilename(0)", out.file("missing/a.rtf"));
    in_dialog([&](QDialog& box) {
      title = box.windowTitle().toStdString();
      told = box.property("text").toString().toStdString();
      box.accept();
    });
    click(dialog, "btnOK");
    EXPECT_TRUE(dialog.isVisible());
    click(dialog, "btnCancel");
  });
  tool(window, kExport);
  EXPECT_EQ(title, "Error Exporting Document");
  EXPECT_EQ(told, "3004 - Cannot write \"" + out.file("missing/a.rtf") + "\": No such file or directory");
}

TEST_F(ExportWindowTest, BrowsingFillsTheFileName) {
  test::HandPages hand;
  ExportWindow window(hand.pages());
  window.show();
  choose_format(window, 1);
  for (const bool is_taken : {true, false}) {  // Cancel leaves what stands there
    in_dialog([&](QDialog& dialog) {
      auto& files = dynamic_cast<QFileDialog&>(dialog);
      EXPECT_EQ(files.nameFilters(), QStringList("Portable Document Format (*.pdf)"));
      if (!is_taken) return files.reject();
      files.setDirectory(QString::fromStdString(out.path()));
      files.findChild<QLineEdit*>()->setText("form");
      QMetaObject::invokeMethod(&files, "accept");
    });
    click(window, "btnBrowse(1)");
    EXPECT_EQ(text(window, "txtFilename(1)").toStdString(), out.file("form.pdf"));
  }
}

TEST_F(ExportWindowTest, BrowsingForAFolderThatIsCancelledEmptiesTheBox) {
  test::HandPages hand;
  ExportWindow window(hand.pages());
  window.show();
  choose_format(window, 2);
  const std::tuple<const char*, const char*, const char*> boxes[] = {
      {"txtHTMLFolder", "btnHTMLFolder", "Select the HTML pages folder"},
      {"txtAuxFolder", "btnAuxFolder", "Select the HTML images folder"},
  };
  for (const auto& [box, button, title] : boxes) {
    for (const bool is_taken : {true, false}) {
      in_dialog([&, heading = title](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), heading);
        if (!is_taken) return dialog.reject();
        dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(out.path()));
        QMetaObject::invokeMethod(&dialog, "accept");
      });
      click(window, button);
      EXPECT_EQ(text(window, box).toStdString(), is_taken ? out.path() : "");
    }
  }
}

TEST(DialogFilter, IsTheToolkitsForm) {
  EXPECT_EQ(dialog_filter("Rich Text Format (*.RTF)|*.rtf"), "Rich Text Format (*.rtf)");
  EXPECT_EQ(dialog_filter("A (*.a)|*.a|B (*.b)|*.b"), "A (*.a);;B (*.b)");
  EXPECT_EQ(dialog_filter(""), "");
}

}  // namespace
}  // namespace dorvo::preview
