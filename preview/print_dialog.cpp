#include "preview/print_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QVBoxLayout>
#include <numeric>

#include "preview/page_ranges.h"

namespace dorvo::preview {
namespace {

constexpr double kLeastPaper = 50;  // mm
constexpr double kMostPaper = 1200;
constexpr int kMostCopies = 999;
enum Quality { kDraft, kHigh };

// As the sheet is fed: printers turn a page that is read across.
QSize upright(const QSize& sheet) {
  return paper_of(sheet) == engine::kPaperCustom ? sheet : paper_size(paper_of(sheet));
}

template <class Widget>
Widget* named(const char* name, Widget* widget) {
  widget->setObjectName(name);
  return widget;
}

}  // namespace

PrintDialog::PrintDialog(Document document, const std::vector<PrinterName>& printers, QWidget* parent)
    : QDialog(parent),
      document_(std::move(document)),
      printer_(named("Printer", new QComboBox)),
      all_(named("All Pages", new QRadioButton("&All"))),
      current_(named("Current Page", new QRadioButton("Curr&ent page"))),
      some_(named("Some Pages", new QRadioButton("Pa&ges:"))),
      ranges_(named("Page Ranges", new QLineEdit)),
      copies_(named("Copies", new QSpinBox)),
      quality_(named("Quality", new QComboBox)),
      paper_(paper_list("Paper", paper_of(document_.sheet))),
      width_(length_box("Paper Width", upright(document_.sheet).width(), kLeastPaper, kMostPaper)),
      height_(length_box("Paper Height", upright(document_.sheet).height(), kLeastPaper, kMostPaper)),
      wrong_(named("Wrong", new QLabel)) {
  setWindowTitle("Print");
  fill_printers(printers);
  copies_->setRange(1, kMostCopies);
  quality_->addItems({"Draft", "High"});
  quality_->setCurrentIndex(document_.is_draft ? kDraft : kHigh);
  wrong_->setStyleSheet("color: #b00020");

  auto* form = new QFormLayout;
  form->addRow("P&rinter:", printer_);
  form->addRow("Pages:", page_choice());
  form->addRow("&Copies:", copies_);
  form->addRow("&Quality:", quality_);
  form->addRow("Pap&er:", paper_);
  form->addRow("&Width:", width_);
  form->addRow("&Height:", height_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  print_ = buttons->addButton("&Print", QDialogButtonBox::AcceptRole);
  print_->setObjectName("Print");
  auto* all = new QVBoxLayout(this);
  all->addLayout(form);
  all->addWidget(wrong_);
  all->addWidget(buttons);

  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(paper_, &QComboBox::currentIndexChanged, this, [this] { take_paper(); });
  connect(ranges_, &QLineEdit::textEdited, this, [this] { some_->setChecked(true); });
  connect(ranges_, &QLineEdit::textChanged, this, [this] { check(); });
  for (QRadioButton* choice : {all_, current_, some_})
    connect(choice, &QRadioButton::toggled, this, [this] { check(); });
  print_->setDefault(true);  // heard of by the dialog only once the button stands in it
  take_paper();
}

void PrintDialog::fill_printers(const std::vector<PrinterName>& printers) {
  for (const PrinterName& printer : printers) {
    const QString name = QString::fromStdString(printer.name);
    const QString description = QString::fromStdString(printer.description);
    printer_->addItem(description.isEmpty() || description == name ? name : name + " - " + description, name);
    if (printer.is_default) printer_->setCurrentIndex(printer_->count() - 1);
  }
}

QWidget* PrintDialog::page_choice() {
  auto* choice = new QWidget;
  auto* rows = new QGridLayout(choice);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(all_, 0, 0, 1, 2);
  rows->addWidget(current_, 1, 0, 1, 2);
  rows->addWidget(some_, 2, 0);
  rows->addWidget(ranges_, 2, 1);
  all_->setText("&All " + QString::number(document_.pages));
  current_->setText("Curre&nt page, " + QString::number(document_.current + 1));
  all_->setChecked(true);
  ranges_->setPlaceholderText("as 1-3,5");
  return choice;
}

void PrintDialog::take_paper() {
  show_paper(paper_->currentData().toInt(), *width_, *height_);
  check();
}

PrintOrder PrintDialog::order() const {
  PrintOrder order;
  order.printer = printer_->currentData().toString().toStdString();
  order.title = document_.title;
  order.copies = copies_->value();
  order.is_draft = quality_->currentIndex() == kDraft;
  order.paper_width = twips_in(*width_);
  order.paper_height = twips_in(*height_);
  return order;
}

std::vector<std::size_t> PrintDialog::pages() const {
  if (current_->isChecked()) return {document_.current};
  if (some_->isChecked()) return page_ranges(ranges_->text(), document_.pages).value_or(std::vector<std::size_t>());
  std::vector<std::size_t> all(document_.pages);
  std::iota(all.begin(), all.end(), std::size_t{0});
  return all;
}

void PrintDialog::check() {
  QString wrong;
  if (pages().empty()) wrong = "Pages: expected numbers from 1 to " + QString::number(document_.pages) + ", as 1-3,5";
  if (printer_->count() == 0) wrong = "The print service has no printer";
  wrong_->setText(wrong);
  print_->setEnabled(wrong.isEmpty());
}

}  // namespace dorvo::preview
