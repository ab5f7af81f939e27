#include "frame/export_dialog.h"

#include <gtest/gtest.h>

#include "frame/ports.h"
#include "frame/settings.h"
#include "tests/export/hand_pages.h"

namespace dorvo::frame {
namespace {

using test::Folder;
using test::HandPages;
using test::read_file;

// A user who answers every dialog with what the test laid out.
class Answers : public HeadlessPorts {
 public:
  void message(const std::string& text, const std::string& title) override {
    last_text = text;
    last_title = title;
  }
  std::string save_file(const std::string& filter) override {
    last_filter = filter;
    return file;
  }
  bool browse_folder(const std::string& title, const std::string& initial, std::string& chosen) override {
    last_title = title;
    last_initial = initial;
    if (!folder.empty()) chosen = folder;
    return !folder.empty();
  }
  std::string file, folder;
  std::string last_text, last_title, last_filter, last_initial;
};

class ExportDialogTest : public testing::Test {
 protected:
  ExportDialogTest() : dialog({"Arial", "Courier New", "Times New Roman"}, out.path()) {
    register_ports(user);
    hand.page().text(1440, 1440, 3000, 240, "1500");
    hand.page().text(1440, 1440, 3000, 240, "2500");
    dialog.Pages = &hand.pages();
    dialog.Form_Load();
  }
  ~ExportDialogTest() override { register_ports({}); }

  void choose(int format, const std::string& name) {
    dialog.cboExportFormat = format;
    dialog.cboExportFormat_Click();
    dialog.txtFilename[static_cast<std::size_t>(format)] = name;
  }

  std::shared_ptr<Answers> user = std::make_shared<Answers>();
  Folder out;
  HandPages hand{HandPages::Fonts::Real};
  ExportDialog dialog;
};

TEST_F(ExportDialogTest, OpensWithItsDefaults) {
  EXPECT_EQ(dialog.cboExportFormat, 0);
  EXPECT_EQ(dialog.cboAcrobatVersion, 1);
  EXPECT_EQ(kJPGQualities[static_cast<std::size_t>(dialog.cboPDFJPGQuality)], "75");
  EXPECT_EQ(dialog.cboHTMLVersion, 1);
  EXPECT_EQ(dialog.cboTOCFormat, 0);
  EXPECT_EQ(dialog.cboXLSVersion, 5);
  EXPECT_EQ(dialog.txtXLSBorderSpace, "59");
  EXPECT_EQ(dialog.txtXLSMinColWidth, "1011");
  EXPECT_EQ(dialog.txtXLSMinRowHeight, "128");
  for (const std::string& name : dialog.txtFilename) EXPECT_EQ(name, "");
  for (const ExportDialog::Font& font : dialog.lstPDFFonts) EXPECT_FALSE(font.selected);
}

TEST_F(ExportDialogTest, ShowsThePanelOfTheFormat) {
  for (int format = 0; format < 6; ++format) {
    dialog.cboExportFormat = format;
    dialog.cboExportFormat_Click();
    for (int panel = 0; panel < 6; ++panel) {
      EXPECT_EQ(dialog.picOptions[static_cast<std::size_t>(panel)].Visible, panel == format);
      EXPECT_EQ(dialog.picOptions[static_cast<std::size_t>(panel)].Left, panel == format ? 1560 : -10000);
    }
  }
  dialog.cboExportFormat = -1;
  dialog.cboExportFormat_Click();
  EXPECT_TRUE(dialog.picOptions[5].Visible);
}

TEST_F(ExportDialogTest, BrowsesForAFile) {
  user->file = "/srv/a.xls";
  dialog.btnBrowse_Click(3);
  EXPECT_EQ(user->last_filter, "Microsoft Excel Document (*.xls)|*.xls");
  EXPECT_EQ(dialog.txtFilename[3], "/srv/a.xls");
  user->file.clear();
  dialog.btnBrowse_Click(3);
  EXPECT_EQ(dialog.txtFilename[3], "/srv/a.xls");
  dialog.btnBrowse_Click(0);
  EXPECT_EQ(user->last_filter, "Rich Text Format (*.RTF)|*.rtf");
}

TEST_F(ExportDialogTest, ACancelledFolderBrowserEmptiesTheBox) {
  user->folder = "/srv/web";
  dialog.btnHTMLFolder_Click();
  EXPECT_EQ(user->last_title, "Select the HTML pages folder");
  EXPECT_EQ(user->last_initial, "");
  EXPECT_EQ(dialog.txtHTMLFolder, "/srv/web");
  dialog.btnAuxFolder_Click();
  EXPECT_EQ(user->last_title, "Select the HTML images folder");
  EXPECT_EQ(dialog.txtAuxFolder, "/srv/web");
  user->folder.clear();
  dialog.btnHTMLFolder_Click();
  EXPECT_EQ(dialog.txtHTMLFolder, "");
  EXPECT_EQ(dialog.txtAuxFolder, "/srv/web");
}

TEST_F(ExportDialogTest, OKWithoutPagesFormatOrNameDoesNothing) {
  choose(5, "");
  dialog.btnOK_Click();
  choose(5, out.file("a.txt"));
  dialog.Pages = nullptr;
  dialog.btnOK_Click();
  dialog.Pages = &hand.pages();
  dialog.cboExportFormat = -1;
  dialog.btnOK_Click();
  EXPECT_FALSE(dialog.closed());
  EXPECT_EQ(out.files(), 0u);
  EXPECT_EQ(user->last_text, "");
}

TEST_F(ExportDialogTest, OKWritesEveryFormatAndCloses) {
  const std::vector<std::pair<const char*, std::string>> files = {
      {"a.rtf", "{\\rtf"},           {"a.pdf", "%PDF-1.2"}, {"a", "<!DOCTYPE html>"},
      {"a.xls", "\xD0\xCF\x11\xE0"}, {"a.tif", "II*"},      {"a.txt", "\r\n"}};
  for (std::size_t format = 0; format < files.size(); ++format) {
    ExportDialog one({}, out.path());
    one.Pages = &hand.pages();
    one.Form_Load();
    one.cboExportFormat = static_cast<int>(format);
    const bool html = format == 2;
    one.txtFilename[format] = html ? files[format].first : out.file(files[format].first);
    one.btnOK_Click();
    EXPECT_TRUE(one.closed()) << user->last_text;
    const std::string file = read_file(html ? out.file("a.html") : one.txtFilename[format]);
    EXPECT_EQ(file.substr(0, files[format].second.size()), files[format].second) << format;
  }
}

TEST_F(ExportDialogTest, ControlsReachTheFilter) {
  choose(2, "r");
  dialog.chkSinglePage = false;
  dialog.chkCreateCSS = true;
  dialog.cboTOCFormat = 3;
  dialog.txtHTMLTitle = "Bills";
  dialog.btnOK_Click();
  EXPECT_EQ(out.files(), 4u);  // two pages, style sheet, contents
  EXPECT_NE(read_file(out.file("r1.html")).find("<title>Bills</title>"), std::string::npos);
  EXPECT_EQ(read_file(out.file("r1.html")).find("charset"), std::string::npos);

  choose(5, out.file("a.txt"));
  dialog.chkTXTSupressEmptyLines = dialog.chkTXTUnicode = true;
  dialog.btnOK_Click();
  EXPECT_EQ(read_file(out.file("a.txt")).substr(0, 4), "\xFF\xFE\x20" + std::string(1, '\0'));

  choose(1, out.file("a.pdf"));
  dialog.cboAcrobatVersion = 0;
  dialog.btnOK_Click();
  EXPECT_EQ(read_file(out.file("a.pdf")).substr(0, 8), "%PDF-1.1");

  // Version 2 is a bare stream that begins with its BOF record.
  choose(3, out.file("a.xls"));
  dialog.cboXLSVersion = 0;
  dialog.txtXLSMinColWidth = "letters";  // counts as 0
  dialog.btnOK_Click();
  EXPECT_EQ(read_file(out.file("a.xls")).substr(0, 6), std::string("\x09\0\x04\0\x02\0", 6));
  EXPECT_EQ(user->last_text, "");
}

TEST_F(ExportDialogTest, AnErrorShowsNumberAndDescriptionAndTheDialogStays) {
  choose(0, out.file("missing/a.rtf"));
  dialog.btnOK_Click();
  EXPECT_FALSE(dialog.closed());
  EXPECT_EQ(user->last_title, "Error Exporting Document");
  EXPECT_EQ(user->last_text, "3004 - Cannot write \"" + out.file("missing/a.rtf") + "\": No such file or directory");
  choose(3, out.file("a.xls"));
  dialog.txtXLSMinRowHeight = "1E12";
  dialog.btnOK_Click();
  EXPECT_EQ(user->last_text, "6 - Overflow");
  dialog.btnCancel_Click();
  EXPECT_TRUE(dialog.closed());
  EXPECT_EQ(out.files(), 0u);
}

}  // namespace
}  // namespace dorvo::frame
