// The page set-up dialog: paper, custom size, orientation and margins of a report.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "preview/papers.h"

namespace dorvo::preview {

class PageSetupDialog : public QDialog {
 public:
  explicit PageSetupDialog(const engine::PageSettings& settings, QWidget* parent = nullptr);

  // What the user has chosen so far.
  engine::PageSettings settings() const;

 private:
  void take_paper();
  void check();

  engine::PageSettings given_;
  QComboBox* paper_;
  QDoubleSpinBox* width_;
  QDoubleSpinBox* height_;
  QRadioButton* portrait_;
  QRadioButton* landscape_;
  QDoubleSpinBox* left_;
  QDoubleSpinBox* right_;
  QDoubleSpinBox* top_;
  QDoubleSpinBox* bottom_;
  QLabel* wrong_;
  QPushButton* ok_;
};

}  // namespace dorvo::preview
