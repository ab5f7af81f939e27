// The print dialog: printer, pages, copies, quality and paper.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include "preview/papers.h"
#include "preview/print_job.h"

namespace dorvo::preview {

class PrintDialog : public QDialog {
 public:
  struct Document {
    std::string title;
    std::size_t pages = 0;
    std::size_t current = 0;  // index
    QSize sheet;              // twips, as it is read
    bool is_draft = false;    // quality that the report asks for
  };

  // `printers` may be empty: the dialog says so and offers Cancel only.
  PrintDialog(Document document, const std::vector<PrinterName>& printers, QWidget* parent = nullptr);

  PrintOrder order() const;
  std::vector<std::size_t> pages() const;  // indexes; empty: the user's list is wrong

 private:
  void fill_printers(const std::vector<PrinterName>& printers);
  QWidget* page_choice();
  void take_paper();
  void check();

  Document document_;
  QComboBox* printer_;
  QRadioButton* all_;
  QRadioButton* current_;
  QRadioButton* some_;
  QLineEdit* ranges_;
  QSpinBox* copies_;
  QComboBox* quality_;
  QComboBox* paper_;
  QDoubleSpinBox* width_;
  QDoubleSpinBox* height_;
  QLabel* wrong_;
  QPushButton* print_;
};

}  // namespace dorvo::preview
