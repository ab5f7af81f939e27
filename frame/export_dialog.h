// `frmExportReport`: the export dialog's logic, apart from any window.
//
// A window shows these controls under their names, writes into them what the user enters, and calls the handlers. What
// a handler does with an error: the ports' message box shows its number, " - " and its description under the handler's
// title, and the dialog stays open. One thread.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "engine/pages.h"
#include "export/options.h"

namespace dorvo::frame {

using export_::kDialogFormats;

class ExportDialog {
 public:
  struct Panel {
    int Left = -10000;  // twips; where a hidden panel waits
    bool Visible = false;
  };
  struct Font {
    std::string name;
    bool selected = false;
  };

  // `screen_fonts` as the system lists them; `program_folder` takes HTML files when the user names no folder.
  ExportDialog(std::vector<std::string> screen_fonts, std::string program_folder);

  const engine::Pages* Pages = nullptr;  // outlives the dialog

  // ---- controls: lists by the index that is chosen, -1 for none ----
  int cboExportFormat = -1;
  std::array<Panel, kDialogFormats> picOptions;
  std::array<std::string, kDialogFormats> txtFilename;
  int cboAcrobatVersion = -1;
  int cboPDFJPGQuality = -1;
  std::vector<Font> lstPDFFonts;
  std::string txtHTMLFolder;
  std::string txtAuxFolder;
  std::string txtHTMLCharset;
  std::string txtHTMLTitle;
  int cboHTMLVersion = -1;
  int cboTOCFormat = -1;
  bool chkCreateCSS = false;
  bool chkCreateFrameset = false;
  bool chkMHTArchive = false;
  bool chkSinglePage = false;
  int cboXLSVersion = -1;
  std::string txtXLSBorderSpace;
  std::string txtXLSMinColWidth;
  std::string txtXLSMinRowHeight;
  bool chkXLSAutoRowHeight = false;
  bool chkXLSDoubleBoundaries = false;
  bool chkXLSGenPageBreaks = false;
  bool chkXLSMultisheet = false;
  bool chkXLSShowMarginSpace = false;
  bool chkXLSTrimEmptySpace = false;
  std::string txtTXTTextDelimiter;
  bool chkTXTSupressEmptyLines = false;
  bool chkTXTUnicode = false;

  // ---- handlers ----
  void Form_Load();
  void cboExportFormat_Click();
  void btnBrowse_Click(std::size_t index);
  void btnHTMLFolder_Click();
  void btnAuxFolder_Click();
  void btnOK_Click();
  void btnCancel_Click() { closed_ = true; }

  bool closed() const { return closed_; }
  // What the filter told of the last export that went through.
  const std::vector<std::string>& Messages() const { return messages_; }

 private:
  template <class Action>
  void guarded(const char* title, Action action);
  std::unique_ptr<export_::Filter> filter() const;
  std::unique_ptr<export_::Filter> pdf_filter() const;
  std::unique_ptr<export_::Filter> html_filter() const;
  std::unique_ptr<export_::Filter> xls_filter() const;
  std::unique_ptr<export_::Filter> text_filter() const;
  std::string file_name() const { return txtFilename[static_cast<std::size_t>(cboExportFormat)]; }

  std::string program_folder_;
  std::vector<std::string> messages_;
  bool closed_ = false;
};

// ---- texts of the dialog, as windows show them ----

inline constexpr std::array<std::string_view, 3> kAcrobatVersions = {"0 - Acrobat 2.1", "1 - Acrobat 3.x",
                                                                     "2 - Acrobat 4.x"};
inline constexpr std::array<std::string_view, 4> kJPGQualities = {"25", "50", "75", "100"};
inline constexpr std::array<std::string_view, 2> kHTMLVersions = {"0 - HTML 3.2", "1 - Dynamic HTML"};
inline constexpr std::array<std::string_view, 4> kTOCFormats = {"0 - None", "1 - Simple HTML", "2 - Dynamic HTML",
                                                                "3 - XML"};
inline constexpr std::array<std::string_view, 6> kXLSVersions = {"2.x", "3.x", "4.x", "5.x", "7.x", "8.x"};

}  // namespace dorvo::frame
