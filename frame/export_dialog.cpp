#include "frame/export_dialog.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "export/html_filter.h"
#include "export/pdf_filter.h"
#include "export/text_filter.h"
#include "export/xls_filter.h"
#include "frame/ports.h"
#include "frame/settings.h"
#include "value/failure.h"
#include "value/text.h"

namespace dorvo::frame {
namespace {

using export_::Format;

constexpr int kHiddenLeft = -10000;
constexpr int kShownLeft = 1560;
constexpr std::array<int, 4> kQualities = {25, 50, 75, 100};
constexpr std::array<int, 6> kFileFormats = {2, 3, 4, 5, 7, 8};
constexpr int kOtherError = 5;  // of the system, which has no number of ours

template <std::size_t Size>
int index_of(const std::array<int, Size>& values, int value) {
  return static_cast<int>(std::find(values.begin(), values.end(), value) - values.begin());
}

// The number that a text box holds, rounded to a whole one, halves to even.
int whole_number(const std::string& box) {
  const double number = std::nearbyint(value::Val(box));
  if (std::abs(number) > std::numeric_limits<int>::max()) throw value::Failure(value::Error::Overflow, "Overflow");
  return static_cast<int>(number);
}

}  // namespace

ExportDialog::ExportDialog(std::vector<std::string> screen_fonts, std::string program_folder)
    : program_folder_(std::move(program_folder)) {
  for (std::string& name : screen_fonts) lstPDFFonts.push_back({std::move(name), false});
}

template <class Action>
void ExportDialog::guarded(const char* title, Action action) {
  try {
    action();
  } catch (const value::Failure& failure) {
    ports().message(std::to_string(static_cast<int>(failure.number())) + " - " + failure.description(), title);
  } catch (const std::exception& error) {
    ports().message(std::to_string(kOtherError) + " - " + error.what(), title);
  }
}

void ExportDialog::Form_Load() {
  cboExportFormat = 0;
  cboExportFormat_Click();
  const export_::PdfFilter pdf;
  const export_::HtmlFilter html;
  const export_::XlsFilter xls;
  const export_::TextFilter text;
  cboAcrobatVersion = pdf.Version;
  cboHTMLVersion = html.HTMLVersion;
  cboPDFJPGQuality = index_of(kQualities, pdf.JPGQuality);
  cboTOCFormat = html.TOCFormat;
  cboXLSVersion = index_of(kFileFormats, xls.FileFormat);
  chkCreateCSS = html.CreateCSS;
  chkCreateFrameset = html.CreateFrameset;
  chkMHTArchive = html.MHTArchive;
  chkSinglePage = !html.MultiPage;
  txtXLSBorderSpace = std::to_string(xls.BorderSpace);
  txtXLSMinColWidth = std::to_string(xls.MinColumnWidth);
  txtXLSMinRowHeight = std::to_string(xls.MinRowHeight);
  chkXLSAutoRowHeight = xls.AutoRowHeight;
  chkXLSDoubleBoundaries = xls.DoubleBoundaries;
  chkXLSGenPageBreaks = xls.GenPageBreaks;
  chkXLSMultisheet = xls.MultiSheet;
  chkXLSShowMarginSpace = xls.ShowMarginSpace;
  chkXLSTrimEmptySpace = xls.TrimEmptySpace;
  chkTXTSupressEmptyLines = text.SuppressEmptyLines;
  chkTXTUnicode = text.Unicode;
}

void ExportDialog::cboExportFormat_Click() {
  guarded("Error ExportFormat_Click", [&] {
    if (cboExportFormat < 0) return;
    for (Panel& panel : picOptions) panel = {kHiddenLeft, false};
    picOptions.at(static_cast<std::size_t>(cboExportFormat)) = {kShownLeft, true};
  });
}

void ExportDialog::btnBrowse_Click(std::size_t index) {
  guarded("Error browsing for filename", [&] {
    const std::string chosen = ports().save_file(std::string(export_::formats().at(index).file_filter));
    if (!chosen.empty()) txtFilename.at(index) = chosen;
  });
}

void ExportDialog::btnHTMLFolder_Click() {
  guarded("HTML Folder Select Error", [&] {
    std::string folder;
    BrowseForFolder("Select the HTML pages folder", folder);
    txtHTMLFolder = folder;
  });
}

void ExportDialog::btnAuxFolder_Click() {
  guarded("Images Folder Select Error", [&] {
    std::string folder;
    BrowseForFolder("Select the HTML images folder", folder);
    txtAuxFolder = folder;
  });
}

void ExportDialog::btnOK_Click() {
  guarded("Error Exporting Document", [&] {
    if (!Pages || cboExportFormat < 0 || file_name().empty()) return;
    const std::unique_ptr<export_::Filter> writer = filter();
    writer->Export(*Pages);
    messages_ = writer->Messages();
    closed_ = true;
  });
}

std::unique_ptr<export_::Filter> ExportDialog::filter() const {
  switch (static_cast<Format>(cboExportFormat)) {
    case Format::Pdf:
      return pdf_filter();
    case Format::Html:
      return html_filter();
    case Format::Xls:
      return xls_filter();
    case Format::Text:
      return text_filter();
    default:
      break;  // no properties but the file's name
  }
  return export_::make_filter(static_cast<Format>(cboExportFormat), file_name(), {});
}

std::unique_ptr<export_::Filter> ExportDialog::pdf_filter() const {
  auto filter = std::make_unique<export_::PdfFilter>();
  filter->FileName = file_name();
  filter->Version = cboAcrobatVersion;
  filter->JPGQuality = kQualities.at(static_cast<std::size_t>(cboPDFJPGQuality));
  for (const Font& font : lstPDFFonts)
    if (font.selected) filter->NeverEmbedFonts += font.name + ";";
  return filter;
}

std::unique_ptr<export_::Filter> ExportDialog::html_filter() const {
  auto filter = std::make_unique<export_::HtmlFilter>();
  filter->FileNamePrefix = file_name();
  filter->HTMLOutputPath = txtHTMLFolder.empty() ? program_folder_ : txtHTMLFolder;
  filter->ImagesOutputPath = txtAuxFolder.empty() ? program_folder_ : txtAuxFolder;
  if (!txtHTMLCharset.empty()) filter->CharSet = txtHTMLCharset;
  filter->Title = txtHTMLTitle;
  filter->HTMLVersion = cboHTMLVersion;
  filter->TOCFormat = cboTOCFormat;
  filter->CreateCSS = chkCreateCSS;
  filter->CreateFrameset = chkCreateFrameset;
  filter->MHTArchive = chkMHTArchive;
  filter->MultiPage = !chkSinglePage;
  return filter;
}

std::unique_ptr<export_::Filter> ExportDialog::xls_filter() const {
  auto filter = std::make_unique<export_::XlsFilter>();
  filter->FileName = file_name();
  filter->FileFormat = kFileFormats.at(static_cast<std::size_t>(cboXLSVersion));
  filter->AutoRowHeight = chkXLSAutoRowHeight;
  filter->BorderSpace = whole_number(txtXLSBorderSpace);
  filter->DoubleBoundaries = chkXLSDoubleBoundaries;
  filter->GenPageBreaks = chkXLSGenPageBreaks;
  filter->MinColumnWidth = whole_number(txtXLSMinColWidth);
  filter->MinRowHeight = whole_number(txtXLSMinRowHeight);
  filter->MultiSheet = chkXLSMultisheet;
  filter->ShowMarginSpace = chkXLSShowMarginSpace;
  filter->TrimEmptySpace = chkXLSTrimEmptySpace;
  return filter;
}

std::unique_ptr<export_::Filter> ExportDialog::text_filter() const {
  auto filter = std::make_unique<export_::TextFilter>();
  filter->FileName = file_name();
  filter->TextDelimiter = txtTXTTextDelimiter;
  filter->SuppressEmptyLines = chkTXTSupressEmptyLines;
  filter->Unicode = chkTXTUnicode;
  return filter;
}

}  // namespace dorvo::frame
