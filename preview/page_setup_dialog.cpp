#include "preview/page_setup_dialog.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QVBoxLayout>
#include <array>

namespace dorvo::preview {
namespace {

constexpr float kTwipsPerMillimetre = 1440 / 25.4f;

struct NamedPaper {
  const char* name;
  int code;
};
constexpr std::array<NamedPaper, 6> kPapers = {
    {{"A4", engine::kPaperA4}, {"Letter", 1}, {"Legal", 5}, {"A3", 8}, {"A5", 11}, {"Custom", engine::kPaperCustom}}};

// A length that the dialog asks for.
struct Length {
  const char* caption;
  const char* name;
  float engine::PageSettings::*member;
  double most;  // millimetres
};
constexpr std::array<Length, 6> kLengths = {
    {{"Width:", "paperWidth", &engine::PageSettings::PaperWidth, 1200},
     {"Height:", "paperHeight", &engine::PageSettings::PaperHeight, 1200},
     {"Left margin:", "leftMargin", &engine::PageSettings::LeftMargin, 200},
     {"Right margin:", "rightMargin", &engine::PageSettings::RightMargin, 200},
     {"Top margin:", "topMargin", &engine::PageSettings::TopMargin, 200},
     {"Bottom margin:", "bottomMargin", &engine::PageSettings::BottomMargin, 200}}};

class PageSetupDialog : public QDialog {
 public:
  PageSetupDialog(QWidget* parent, const engine::PageSettings& settings) : QDialog(parent) {
    setObjectName("pageSetup");
    setWindowTitle("Page Setup");
    auto* form = new QFormLayout;
    paper_ = new QComboBox;
    paper_->setObjectName("paper");
    for (const NamedPaper& paper : kPapers) {
      paper_->addItem(paper.name);
      if (paper.code == settings.PaperSize) paper_->setCurrentIndex(paper_->count() - 1);
    }
    form->addRow("Paper:", paper_);
    orientation_ = new QComboBox;
    orientation_->setObjectName("orientation");
    orientation_->addItems({"Portrait", "Landscape"});
    orientation_->setCurrentIndex(settings.Orientation == engine::Orientation::Landscape ? 1 : 0);
    form->addRow("Orientation:", orientation_);
    for (std::size_t i = 0; i < kLengths.size(); ++i) {
      auto* box = new QDoubleSpinBox;
      box->setObjectName(kLengths[i].name);
      box->setRange(0, kLengths[i].most);
      box->setDecimals(2);
      box->setSuffix(" mm");
      box->setValue(settings.*kLengths[i].member / kTwipsPerMillimetre);
      form->addRow(kLengths[i].caption, box);
      lengths_[i] = box;
      shown_[i] = box->value();
    }
    const auto custom = [this] {
      for (std::size_t i : {0u, 1u}) lengths_[i]->setEnabled(kPapers[paper()].code == engine::kPaperCustom);
    };
    connect(paper_, &QComboBox::currentIndexChanged, this, custom);
    custom();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* all = new QVBoxLayout(this);
    all->addLayout(form);
    all->addWidget(buttons);
  }

  // A length that was not touched keeps its twips: the dialog shows hundredths of a millimetre only.
  void apply(engine::PageSettings& settings) const {
    settings.PaperSize = kPapers[paper()].code;
    settings.Orientation =
        orientation_->currentIndex() == 1 ? engine::Orientation::Landscape : engine::Orientation::Portrait;
    for (std::size_t i = 0; i < kLengths.size(); ++i)
      if (lengths_[i]->value() != shown_[i])
        settings.*kLengths[i].member = static_cast<float>(lengths_[i]->value()) * kTwipsPerMillimetre;
  }

 private:
  std::size_t paper() const { return static_cast<std::size_t>(paper_->currentIndex()); }

  QComboBox* paper_ = nullptr;
  QComboBox* orientation_ = nullptr;
  std::array<QDoubleSpinBox*, kLengths.size()> lengths_{};
  std::array<double, kLengths.size()> shown_{};
};

}  // namespace

bool ask_page_setup(QWidget* parent, engine::PageSettings& settings) {
  PageSetupDialog dialog(parent, settings);
  if (dialog.exec() != QDialog::Accepted) return false;
  dialog.apply(settings);
  return true;
}

}  // namespace dorvo::preview
