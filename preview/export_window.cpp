#include "preview/export_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace dorvo::preview {
namespace {

using export_::Format;
using frame::ExportDialog;

constexpr int kTwipsPerInch = 1440;
constexpr int kPanelLeft = 1560;  // twips, where the panel of the format stands
constexpr int kMargin = 120;
constexpr const char* kNote = "Option Frames are hidden at design-time at position Left = -10000";

QString text_of(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString indexed(const char* name, std::size_t format) {
  return QString(name) + "(" + QString::number(format) + ")";
}

std::vector<std::string> screen_fonts() {
  std::vector<std::string> names;
  for (const QString& family : QFontDatabase::families()) names.push_back(family.toStdString());
  return names;
}

QLabel* label(const char* name, const QString& text, QWidget* parent) {
  auto* made = new QLabel(text, parent);
  made->setObjectName(name);
  return made;
}

}  // namespace

class ExportWindow::Panel {
 public:
  explicit Panel(QWidget* frame) : rows_(new QGridLayout(frame)) {
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setColumnStretch(1, 1);
  }
  void row(const char* caption, QWidget* widget, QWidget* behind = nullptr) {
    const int at = rows_->rowCount();
    auto* told = new QLabel(caption);
    told->setBuddy(widget);
    const bool is_tall = dynamic_cast<QListWidget*>(widget) != nullptr;
    rows_->addWidget(told, at, 0, (is_tall ? Qt::AlignTop : Qt::AlignVCenter) | Qt::AlignLeft);
    rows_->addWidget(widget, at, 1, 1, behind ? 1 : 2);
    if (behind) rows_->addWidget(behind, at, 2);
  }
  // Check boxes, two beside each other.
  void checks(const std::vector<QCheckBox*>& boxes) {
    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < boxes.size(); ++i)
      grid->addWidget(boxes[i], static_cast<int>(i / 2), static_cast<int>(i % 2));
    rows_->addLayout(grid, rows_->rowCount(), 0, 1, 3);
  }
  void end() { rows_->setRowStretch(rows_->rowCount(), 1); }

 private:
  QGridLayout* rows_;
};

ExportWindow::ExportWindow(const engine::Pages& pages, QWidget* parent)
    : QDialog(parent), logic_(screen_fonts(), QCoreApplication::applicationDirPath().toStdString()) {
  setObjectName("frmExportReport");
  setWindowTitle("Export");
  setModal(true);
  logic_.Pages = &pages;
  logic_.Form_Load();
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(banner());
  all->addWidget(body());
  all->addWidget(buttons());
  all->setSizeConstraint(QLayout::SetFixedSize);
  load();
}

int ExportWindow::dots(int twips) const {
  return twips * logicalDpiX() / kTwipsPerInch;
}

QWidget* ExportWindow::banner() {
  auto* strip = new QFrame;
  strip->setObjectName("picBanner");
  strip->setStyleSheet("#picBanner { background: white; border-bottom: 1px solid #a0a0a0 } QLabel { color: black }");
  auto* rows = new QVBoxLayout(strip);
  auto* title = new QLabel("Export");
  QFont bold = title->font();
  bold.setBold(true);
  title->setFont(bold);
  auto* told = new QLabel("Select the export file format options");
  told->setIndent(dots(kMargin) * 2);
  rows->addWidget(title);
  rows->addWidget(told);
  return strip;
}

QWidget* ExportWindow::body() {
  auto* area = new QWidget;
  std::vector<std::string_view> captions;
  for (std::size_t format = 0; format < frame::kDialogFormats; ++format)
    captions.push_back(export_::formats()[format].caption);
  QComboBox* formats = list("cboExportFormat", logic_.cboExportFormat, captions);
  connect(formats, &QComboBox::currentIndexChanged, this, [this] {
    if (!is_loading_) handle([this] { logic_.cboExportFormat_Click(); });
  });
  formats->setParent(area);
  QSize room;
  for (std::size_t format = 0; format < frame::kDialogFormats; ++format) {
    panels_.push_back(panel(format));
    room = room.expandedTo(panels_.back()->sizeHint());
  }
  const int margin = dots(kMargin), left = dots(kPanelLeft);
  const int line = formats->sizeHint().height();
  panel_top_ = 3 * margin + line;
  formats->setGeometry(left, 2 * margin, room.width(), line);
  label("lblFormat", "Export Format", area)->setGeometry(margin, 2 * margin, left - margin, line);
  label("lblOptions", "Export Options", area)->setGeometry(margin, panel_top_, left - margin, line);
  // The panel of the format stands over the note.
  QLabel* note = label("lblDesc", kNote, area);
  note->setWordWrap(true);
  note->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  note->setGeometry(left, panel_top_, room.width(), room.height());
  for (QWidget* each : panels_) {
    each->setParent(area);
    each->setAutoFillBackground(true);
    each->resize(room);
  }
  area->setFixedSize(left + room.width() + 2 * margin, panel_top_ + room.height() + margin);
  return area;
}

QWidget* ExportWindow::buttons() {
  auto* strip = new QWidget;
  auto* row = new QHBoxLayout(strip);
  auto* ok = new QPushButton("OK");
  auto* cancel = new QPushButton("&Cancel");
  ok->setObjectName("btnOK");
  ok->setDefault(true);
  cancel->setObjectName("btnCancel");
  row->addStretch(1);
  row->addWidget(ok);
  row->addWidget(cancel);
  connect(ok, &QPushButton::clicked, this, [this] { handle([this] { logic_.btnOK_Click(); }); });
  connect(cancel, &QPushButton::clicked, this, [this] { handle([this] { logic_.btnCancel_Click(); }); });
  return strip;
}

QWidget* ExportWindow::panel(std::size_t format) {
  auto* made = new QWidget;
  made->setObjectName(indexed("picOptions", format));
  Panel rows(made);
  const bool is_html = static_cast<Format>(format) == Format::Html;
  rows.row(
      is_html ? "File Prefix:" : "Filename:", line(indexed("txtFilename", format), logic_.txtFilename[format]),
      is_html ? nullptr : browse(indexed("btnBrowse", format), [this, format] { logic_.btnBrowse_Click(format); }));
  if (static_cast<Format>(format) == Format::Pdf) pdf_options(rows);
  if (is_html) html_options(rows);
  if (static_cast<Format>(format) == Format::Xls) xls_options(rows);
  if (static_cast<Format>(format) == Format::Text) text_options(rows);
  rows.end();
  return made;
}

void ExportWindow::pdf_options(Panel& panel) {
  panel.row("Acrobat Version:", list("cboAcrobatVersion", logic_.cboAcrobatVersion,
                                     {frame::kAcrobatVersions.begin(), frame::kAcrobatVersions.end()}));
  panel.row("JPG Quality:", list("cboPDFJPGQuality", logic_.cboPDFJPGQuality,
                                 {frame::kJPGQualities.begin(), frame::kJPGQualities.end()}));
  panel.row("No Embedding Fonts:", fonts());
}

void ExportWindow::folder_row(Panel& panel, const char* caption, const char* box, const char* button,
                              std::string& folder, void (ExportDialog::*handler)()) {
  panel.row(caption, line(box, folder), browse(button, [this, handler] { (logic_.*handler)(); }));
}

void ExportWindow::html_options(Panel& panel) {
  folder_row(panel, "HTML Folder:", "txtHTMLFolder", "btnHTMLFolder", logic_.txtHTMLFolder,
             &ExportDialog::btnHTMLFolder_Click);
  folder_row(panel, "Images Folder:", "txtAuxFolder", "btnAuxFolder", logic_.txtAuxFolder,
             &ExportDialog::btnAuxFolder_Click);
  panel.row("Charset:", line("txtHTMLCharset", logic_.txtHTMLCharset));
  panel.row("Title:", line("txtHTMLTitle", logic_.txtHTMLTitle));
  panel.row("HTML Format:",
            list("cboHTMLVersion", logic_.cboHTMLVersion, {frame::kHTMLVersions.begin(), frame::kHTMLVersions.end()}));
  panel.row("TOC Format:",
            list("cboTOCFormat", logic_.cboTOCFormat, {frame::kTOCFormats.begin(), frame::kTOCFormats.end()}));
  panel.checks({check("chkCreateCSS", "Create CSS", logic_.chkCreateCSS),
                check("chkCreateFrameset", "Create Frames", logic_.chkCreateFrameset),
                check("chkMHTArchive", "Create MIME Archive", logic_.chkMHTArchive),
                check("chkSinglePage", "Single Page Output", logic_.chkSinglePage)});
}

void ExportWindow::xls_options(Panel& panel) {
  panel.row("Version:",
            list("cboXLSVersion", logic_.cboXLSVersion, {frame::kXLSVersions.begin(), frame::kXLSVersions.end()}));
  panel.row("Border Space:", line("txtXLSBorderSpace", logic_.txtXLSBorderSpace), new QLabel("Twips"));
  panel.row("Min. col. width:", line("txtXLSMinColWidth", logic_.txtXLSMinColWidth), new QLabel("Twips"));
  panel.row("Min. row height:", line("txtXLSMinRowHeight", logic_.txtXLSMinRowHeight), new QLabel("Twips"));
  panel.checks({check("chkXLSAutoRowHeight", "Auto Row Height", logic_.chkXLSAutoRowHeight),
                check("chkXLSDoubleBoundaries", "Double Boundaries", logic_.chkXLSDoubleBoundaries),
                check("chkXLSGenPageBreaks", "Generate Page Breaks", logic_.chkXLSGenPageBreaks),
                check("chkXLSMultisheet", "Generate Multiple Sheets", logic_.chkXLSMultisheet),
                check("chkXLSShowMarginSpace", "Show Margin Space", logic_.chkXLSShowMarginSpace),
                check("chkXLSTrimEmptySpace", "Trim Empty Space", logic_.chkXLSTrimEmptySpace)});
}

void ExportWindow::text_options(Panel& panel) {
  panel.row("Text Delimiter:", line("txtTXTTextDelimiter", logic_.txtTXTTextDelimiter));
  panel.checks({check("chkTXTSupressEmptyLines", "Supress Empty Lines", logic_.chkTXTSupressEmptyLines),
                check("chkTXTUnicode", "Unicode", logic_.chkTXTUnicode)});
}

QLineEdit* ExportWindow::line(const QString& name, std::string& text) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  loads_.push_back([box, &text] { box->setText(text_of(text)); });
  stores_.push_back([box, &text] { text = box->text().toStdString(); });
  return box;
}

QComboBox* ExportWindow::list(const char* name, int& index, const std::vector<std::string_view>& texts) {
  auto* box = new QComboBox;
  box->setObjectName(name);
  for (const std::string_view text : texts) box->addItem(text_of(text));
  loads_.push_back([box, &index] { box->setCurrentIndex(index); });
  stores_.push_back([box, &index] { index = box->currentIndex(); });
  return box;
}

QCheckBox* ExportWindow::check(const char* name, const char* caption, bool& value) {
  auto* box = new QCheckBox(caption);
  box->setObjectName(name);
  loads_.push_back([box, &value] { box->setChecked(value); });
  stores_.push_back([box, &value] { value = box->isChecked(); });
  return box;
}

QListWidget* ExportWindow::fonts() {
  constexpr int kLines = 6;
  auto* box = new QListWidget;
  box->setObjectName("lstPDFFonts");
  box->setSelectionMode(QListWidget::MultiSelection);
  for (const ExportDialog::Font& font : logic_.lstPDFFonts) box->addItem(text_of(font.name));
  box->setFixedHeight(kLines * box->fontMetrics().lineSpacing() + 2 * box->frameWidth());
  stores_.push_back([this, box] {
    for (std::size_t i = 0; i < logic_.lstPDFFonts.size(); ++i)
      logic_.lstPDFFonts[i].selected = box->item(static_cast<int>(i))->isSelected();
  });
  return box;
}

QPushButton* ExportWindow::browse(const QString& name, const std::function<void()>& handler) {
  auto* button = new QPushButton("...");
  button->setObjectName(name);
  button->setAutoDefault(false);
  button->setFixedWidth(button->fontMetrics().horizontalAdvance("....."));
  connect(button, &QPushButton::clicked, this, [this, handler] { handle(handler); });
  return button;
}

void ExportWindow::handle(const std::function<void()>& handler) {
  store();
  handler();
  load();
  if (logic_.closed()) accept();
}

void ExportWindow::store() {
  for (const auto& each : stores_) each();
}

void ExportWindow::load() {
  is_loading_ = true;
  for (const auto& each : loads_) each();
  is_loading_ = false;
  place_panels();
}

void ExportWindow::place_panels() {
  for (std::size_t format = 0; format < panels_.size(); ++format) {
    const ExportDialog::Panel& told = logic_.picOptions[format];
    panels_[format]->move(dots(told.Left), panel_top_);
    panels_[format]->setVisible(told.Visible);
  }
}

}  // namespace dorvo::preview
