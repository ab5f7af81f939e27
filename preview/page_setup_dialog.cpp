#include "preview/page_setup_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace dorvo::preview {
namespace {

constexpr double kLeastPaper = 50;  // mm
constexpr double kMostPaper = 1200;
constexpr double kMostMargin = 500;
constexpr int kLeastRoom = 720;  // twips that margins must leave

QGroupBox* group(const QString& title, QLayout* content) {
  auto* box = new QGroupBox(title);
  box->setLayout(content);
  return box;
}

}  // namespace

PageSetupDialog::PageSetupDialog(const engine::PageSettings& settings, QWidget* parent)
    : QDialog(parent),
      given_(settings),
      paper_(paper_list("Paper", settings.PaperSize)),
      width_(length_box("Paper Width", settings.PaperWidth, kLeastPaper, kMostPaper)),
      height_(length_box("Paper Height", settings.PaperHeight, kLeastPaper, kMostPaper)),
      portrait_(new QRadioButton("&Portrait")),
      landscape_(new QRadioButton("&Landscape")),
      left_(length_box("Left Margin", settings.LeftMargin, 0, kMostMargin)),
      right_(length_box("Right Margin", settings.RightMargin, 0, kMostMargin)),
      top_(length_box("Top Margin", settings.TopMargin, 0, kMostMargin)),
      bottom_(length_box("Bottom Margin", settings.BottomMargin, 0, kMostMargin)),
      wrong_(new QLabel) {
  setWindowTitle("Page Setup");
  portrait_->setObjectName("Portrait");
  landscape_->setObjectName("Landscape");
  (settings.Orientation == engine::Orientation::Landscape ? landscape_ : portrait_)->setChecked(true);
  wrong_->setObjectName("Wrong");
  wrong_->setStyleSheet("color: #b00020");

  auto* sheet = new QFormLayout;
  sheet->addRow("P&aper:", paper_);
  sheet->addRow("&Width:", width_);
  sheet->addRow("&Height:", height_);
  auto* held = new QHBoxLayout;
  held->addWidget(portrait_);
  held->addWidget(landscape_);
  auto* margins = new QFormLayout;
  margins->addRow("L&eft:", left_);
  margins->addRow("&Right:", right_);
  margins->addRow("&Top:", top_);
  margins->addRow("&Bottom:", bottom_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  ok_ = buttons->button(QDialogButtonBox::Ok);

  auto* all = new QVBoxLayout(this);
  all->addWidget(group("Paper", sheet));
  all->addWidget(group("Orientation", held));
  all->addWidget(group("Margins", margins));
  all->addWidget(wrong_);
  all->addWidget(buttons);

  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(paper_, &QComboBox::currentIndexChanged, this, [this] { take_paper(); });
  connect(portrait_, &QRadioButton::toggled, this, [this] { check(); });
  for (QDoubleSpinBox* box : {width_, height_, left_, right_, top_, bottom_})
    connect(box, &QDoubleSpinBox::valueChanged, this, [this] { check(); });
  take_paper();
}

void PageSetupDialog::take_paper() {
  show_paper(paper_->currentData().toInt(), *width_, *height_);
  check();
}

engine::PageSettings PageSetupDialog::settings() const {
  engine::PageSettings chosen = given_;
  chosen.PaperSize = paper_->currentData().toInt();
  chosen.PaperWidth = static_cast<float>(twips_in(*width_));
  chosen.PaperHeight = static_cast<float>(twips_in(*height_));
  chosen.Orientation = landscape_->isChecked() ? engine::Orientation::Landscape : engine::Orientation::Portrait;
  chosen.LeftMargin = static_cast<float>(twips_in(*left_));
  chosen.RightMargin = static_cast<float>(twips_in(*right_));
  chosen.TopMargin = static_cast<float>(twips_in(*top_));
  chosen.BottomMargin = static_cast<float>(twips_in(*bottom_));
  return chosen;
}

void PageSetupDialog::check() {
  const engine::PageSettings chosen = settings();
  const float across = static_cast<float>(chosen.sheet_width()) - chosen.LeftMargin - chosen.RightMargin;
  const float down = static_cast<float>(chosen.sheet_height()) - chosen.TopMargin - chosen.BottomMargin;
  const bool is_room = across >= kLeastRoom && down >= kLeastRoom;
  wrong_->setText(is_room ? "" : "The margins leave no room on the sheet");
  ok_->setEnabled(is_room);
}

}  // namespace dorvo::preview
