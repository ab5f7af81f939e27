#include "preview/export_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace dorvo::preview {
namespace {

using export_::Format;

std::vector<std::string> screen_fonts() {
  std::vector<std::string> fonts;
  for (const QString& family : QFontDatabase::families()) fonts.push_back(family.toStdString());
  return fonts;
}

QString text_of(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

ExportWindow::ExportWindow(const engine::Pages& pages, QWidget* parent)
    : QDialog(parent), logic_(screen_fonts(), QCoreApplication::applicationDirPath().toStdString()) {
  setObjectName("frmExportReport");
  setWindowTitle("Export");
  setModal(true);
  logic_.Pages = &pages;
  logic_.Form_Load();
  auto* all = new QVBoxLayout(this);
  make_banner(all);
  make_panels(all);
  make_buttons(all);
  show_state();
}

void ExportWindow::make_banner(QVBoxLayout* all) {
  auto* banner = new QWidget;
  banner->setObjectName("picBanner");
  banner->setAutoFillBackground(true);
  banner->setBackgroundRole(QPalette::Base);
  auto* lines = new QVBoxLayout(banner);
  auto* title = new QLabel("<b>Export</b>");
  lines->addWidget(title);
  lines->addWidget(new QLabel("Select the export file format options"));
  all->addWidget(banner);
  // A note to whoever edits the form; users never see it.
  auto* note = new QLabel("Option Frames are hidden at design-time at position Left = -10000", this);
  note->setObjectName("lblDesc");
  note->hide();
}

void ExportWindow::make_panels(QVBoxLayout* all) {
  auto* head = new QFormLayout;
  auto* formats = new QComboBox;
  formats->setObjectName("cboExportFormat");
  for (std::size_t i = 0; i < frame::kDialogFormats; ++i) formats->addItem(text_of(export_::formats()[i].caption));
  head->addRow("Export Format", formats);
  all->addLayout(head);
  read_.push_back([this, formats] { logic_.cboExportFormat = formats->currentIndex(); });
  write_.push_back([this, formats] { formats->setCurrentIndex(logic_.cboExportFormat); });
  all->addWidget(new QLabel("Export Options"));
  for (std::size_t i = 0; i < frame::kDialogFormats; ++i) {
    panels_[i] = new QWidget;
    panels_[i]->setObjectName("picOptions" + QString::number(i));
    auto* form = new QFormLayout(panels_[i]);
    add_file_name(form, i);
    switch (static_cast<Format>(i)) {
      case Format::Pdf:
        make_pdf(form);
        break;
      case Format::Html:
        make_html(form);
        break;
      case Format::Xls:
        make_xls(form);
        break;
      case Format::Text:
        make_text(form);
        break;
      default:
        break;
    }
    all->addWidget(panels_[i]);
  }
  all->addStretch();
  connect(formats, &QComboBox::activated, this, [this] { handle([this] { logic_.cboExportFormat_Click(); }); });
}

void ExportWindow::add_file_name(QFormLayout* form, std::size_t format) {
  auto* line = new QHBoxLayout;
  auto* edit = new QLineEdit;
  edit->setObjectName("txtFilename" + QString::number(format));
  line->addWidget(edit);
  std::string& box = logic_.txtFilename[format];
  read_.push_back([edit, &box] { box = edit->text().toStdString(); });
  write_.push_back([edit, &box] { edit->setText(QString::fromStdString(box)); });
  const bool html = static_cast<Format>(format) == Format::Html;
  if (!html) {
    auto* browse = new QPushButton("...");
    browse->setObjectName("btnBrowse" + QString::number(format));
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this,
            [this, format] { handle([this, format] { logic_.btnBrowse_Click(format); }); });
    line->addWidget(browse);
  }
  form->addRow(html ? "File Prefix:" : "Filename:", line);
}

void ExportWindow::make_pdf(QFormLayout* form) {
  add_list(form, "Acrobat Version:", "cboAcrobatVersion", frame::kAcrobatVersions, logic_.cboAcrobatVersion);
  add_list(form, "JPG Quality:", "cboPDFJPGQuality", frame::kJPGQualities, logic_.cboPDFJPGQuality);
  auto* fonts = new QListWidget;
  fonts->setObjectName("lstPDFFonts");
  fonts->setSelectionMode(QAbstractItemView::MultiSelection);
  for (const frame::ExportDialog::Font& font : logic_.lstPDFFonts) fonts->addItem(QString::fromStdString(font.name));
  form->addRow("No Embedding Fonts:", fonts);
  read_.push_back([this, fonts] {
    for (std::size_t i = 0; i < logic_.lstPDFFonts.size(); ++i)
      logic_.lstPDFFonts[i].selected = fonts->item(static_cast<int>(i))->isSelected();
  });
}

void ExportWindow::make_html(QFormLayout* form) {
  add_folder(form, "HTML Folder:", "txtHTMLFolder", "btnHTMLFolder", logic_.txtHTMLFolder,
             &frame::ExportDialog::btnHTMLFolder_Click);
  add_folder(form, "Images Folder:", "txtAuxFolder", "btnAuxFolder", logic_.txtAuxFolder,
             &frame::ExportDialog::btnAuxFolder_Click);
  add_text(form, "Charset:", "txtHTMLCharset", logic_.txtHTMLCharset);
  add_text(form, "Title:", "txtHTMLTitle", logic_.txtHTMLTitle);
  add_list(form, "HTML Format:", "cboHTMLVersion", frame::kHTMLVersions, logic_.cboHTMLVersion);
  add_list(form, "TOC Format:", "cboTOCFormat", frame::kTOCFormats, logic_.cboTOCFormat);
  add_check(form, "Create CSS", "chkCreateCSS", logic_.chkCreateCSS);
  add_check(form, "Create Frames", "chkCreateFrameset", logic_.chkCreateFrameset);
  add_check(form, "Create MIME Archive", "chkMHTArchive", logic_.chkMHTArchive);
  add_check(form, "Single Page Output", "chkSinglePage", logic_.chkSinglePage);
}

void ExportWindow::make_xls(QFormLayout* form) {
  add_list(form, "Version:", "cboXLSVersion", frame::kXLSVersions, logic_.cboXLSVersion);
  add_text(form, "Border Space:", "txtXLSBorderSpace", logic_.txtXLSBorderSpace, "Twips");
  add_text(form, "Min. col. width:", "txtXLSMinColWidth", logic_.txtXLSMinColWidth, "Twips");
  add_text(form, "Min. row height:", "txtXLSMinRowHeight", logic_.txtXLSMinRowHeight, "Twips");
  add_check(form, "Auto Row Height", "chkXLSAutoRowHeight", logic_.chkXLSAutoRowHeight);
  add_check(form, "Double Boundaries", "chkXLSDoubleBoundaries", logic_.chkXLSDoubleBoundaries);
  add_check(form, "Generate Page Breaks", "chkXLSGenPageBreaks", logic_.chkXLSGenPageBreaks);
  add_check(form, "Generate Multiple Sheets", "chkXLSMultisheet", logic_.chkXLSMultisheet);
  add_check(form, "Show Margin Space", "chkXLSShowMarginSpace", logic_.chkXLSShowMarginSpace);
  add_check(form, "Trim Empty Space", "chkXLSTrimEmptySpace", logic_.chkXLSTrimEmptySpace);
}

void ExportWindow::make_text(QFormLayout* form) {
  add_text(form, "Text Delimiter:", "txtTXTTextDelimiter", logic_.txtTXTTextDelimiter);
  add_check(form, "Supress Empty Lines", "chkTXTSupressEmptyLines", logic_.chkTXTSupressEmptyLines);
  add_check(form, "Unicode", "chkTXTUnicode", logic_.chkTXTUnicode);
}

void ExportWindow::make_buttons(QVBoxLayout* all) {
  auto* line = new QHBoxLayout;
  line->addStretch();
  auto* ok = new QPushButton("&OK");
  ok->setObjectName("btnOK");
  ok->setDefault(true);
  auto* cancel = new QPushButton("&Cancel");
  cancel->setObjectName("btnCancel");
  line->addWidget(ok);
  line->addWidget(cancel);
  all->addLayout(line);
  connect(ok, &QPushButton::clicked, this, [this] { handle([this] { logic_.btnOK_Click(); }); });
  connect(cancel, &QPushButton::clicked, this, [this] { handle([this] { logic_.btnCancel_Click(); }); });
}

void ExportWindow::add_text(QFormLayout* form, const char* caption, const char* name, std::string& box,
                            const char* unit) {
  auto* edit = new QLineEdit;
  edit->setObjectName(name);
  read_.push_back([edit, &box] { box = edit->text().toStdString(); });
  write_.push_back([edit, &box] { edit->setText(QString::fromStdString(box)); });
  if (!unit) return form->addRow(caption, edit);
  auto* line = new QHBoxLayout;
  line->addWidget(edit);
  line->addWidget(new QLabel(unit));
  form->addRow(caption, line);
}

void ExportWindow::add_folder(QFormLayout* form, const char* caption, const char* name, const char* button_name,
                              std::string& box, void (frame::ExportDialog::*browse)()) {
  auto* line = new QHBoxLayout;
  auto* edit = new QLineEdit;
  edit->setObjectName(name);
  auto* button = new QPushButton("...");
  button->setObjectName(button_name);
  button->setAutoDefault(false);
  line->addWidget(edit);
  line->addWidget(button);
  form->addRow(caption, line);
  read_.push_back([edit, &box] { box = edit->text().toStdString(); });
  write_.push_back([edit, &box] { edit->setText(QString::fromStdString(box)); });
  connect(button, &QPushButton::clicked, this, [this, browse] { handle([this, browse] { (logic_.*browse)(); }); });
}

void ExportWindow::add_check(QFormLayout* form, const char* caption, const char* name, bool& box) {
  auto* check = new QCheckBox(caption);
  check->setObjectName(name);
  form->addRow("", check);
  read_.push_back([check, &box] { box = check->isChecked(); });
  write_.push_back([check, &box] { check->setChecked(box); });
}

template <class Texts>
void ExportWindow::add_list(QFormLayout* form, const char* caption, const char* name, const Texts& texts, int& index) {
  auto* list = new QComboBox;
  list->setObjectName(name);
  for (std::string_view text : texts) list->addItem(text_of(text));
  form->addRow(caption, list);
  read_.push_back([list, &index] { index = list->currentIndex(); });
  write_.push_back([list, &index] { list->setCurrentIndex(index); });
}

void ExportWindow::handle(const std::function<void()>& handler) {
  for (const auto& read : read_) read();
  handler();
  show_state();
  if (logic_.closed()) done(QDialog::Accepted);
}

void ExportWindow::show_state() {
  for (const auto& write : write_) write();
  for (std::size_t i = 0; i < panels_.size(); ++i) panels_[i]->setVisible(logic_.picOptions[i].Visible);
}

}  // namespace dorvo::preview
