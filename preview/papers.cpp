#include "preview/papers.h"

#include <cmath>
#include <cstdlib>

namespace dorvo::preview {
namespace {

constexpr double kTwipsPerMm = 1440 / 25.4;
constexpr int kSameSize = 20;  // twips that a size may differ and be the same paper

bool is_same(const QSize& one, const QSize& other) {
  return std::abs(one.width() - other.width()) <= kSameSize && std::abs(one.height() - other.height()) <= kSameSize;
}

}  // namespace

const std::vector<Paper>& papers() {
  static const std::vector<Paper> kPapers = {
      {engine::kPaperA4, "A4"},
      {8, "A3"},
      {11, "A5"},
      {1, "Letter"},
      {5, "Legal"},
      {engine::kPaperCustom, "Custom size"},
  };
  return kPapers;
}

QSize paper_size(int code) {
  engine::PageSettings settings;
  settings.PaperSize = code;
  return {settings.sheet_width(), settings.sheet_height()};
}

int paper_of(const QSize& twips) {
  for (const Paper& paper : papers()) {
    if (paper.code == engine::kPaperCustom) break;
    const QSize size = paper_size(paper.code);
    if (is_same(size, twips) || is_same(size.transposed(), twips)) return paper.code;
  }
  return engine::kPaperCustom;
}

QString size_text(const QSize& twips) {
  const auto mm = [](int length) { return QString::number(std::lround(length / kTwipsPerMm)); };
  return mm(twips.width()) + " x " + mm(twips.height()) + " mm";
}

QComboBox* paper_list(const QString& name, int chosen) {
  auto* list = new QComboBox;
  list->setObjectName(name);
  for (const Paper& paper : papers()) {
    const bool is_custom = paper.code == engine::kPaperCustom;
    list->addItem(
        is_custom ? QString(paper.name) : QString(paper.name) + " (" + size_text(paper_size(paper.code)) + ")",
        paper.code);
    if (paper.code == chosen) list->setCurrentIndex(list->count() - 1);
  }
  return list;
}

QDoubleSpinBox* length_box(const QString& name, double twips, double least_mm, double most_mm) {
  auto* box = new QDoubleSpinBox;
  box->setObjectName(name);
  box->setLocale(QLocale::c());
  box->setDecimals(2);  // a step is less than a twip
  box->setRange(least_mm, most_mm);
  box->setSuffix(" mm");
  show_twips(*box, twips);
  return box;
}

int twips_in(const QDoubleSpinBox& box) {
  return static_cast<int>(std::lround(box.value() * kTwipsPerMm));
}

void show_twips(QDoubleSpinBox& box, double twips) {
  box.setValue(twips / kTwipsPerMm);
}

void show_paper(int code, QDoubleSpinBox& width, QDoubleSpinBox& height) {
  const bool is_custom = code == engine::kPaperCustom;
  width.setEnabled(is_custom);
  height.setEnabled(is_custom);
  if (is_custom) return;
  show_twips(width, paper_size(code).width());
  show_twips(height, paper_size(code).height());
}

}  // namespace dorvo::preview
