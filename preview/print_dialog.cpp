#include "preview/print_dialog.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>
#include <array>
#include <cmath>

#include "preview/print_job.h"
#include "value/failure.h"

namespace dorvo::preview {
namespace {

constexpr int kWatchEvery = 500;  // milliseconds
constexpr int kMostCopies = 999;
constexpr double kTwipsPerMillimetre = 1440 / 25.4;

struct NamedPaper {
  const char* name;
  Paper paper;
};
constexpr std::array<NamedPaper, 5> kPapers = {{{"As the report", {}},
                                                {"A4", {11906, 16838}},
                                                {"Letter", {12240, 15840}},
                                                {"Legal", {12240, 20160}},
                                                {"Custom", {}}}};

// Stays until it is read; the program goes on meanwhile.
void tell(QWidget* parent, const std::string& text) {
  auto* box = new QMessageBox(QMessageBox::Warning, "Print", QString::fromStdString(text), QMessageBox::Ok, parent);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setObjectName("printMessage");
  box->setModal(false);
  box->show();
}

class PrintDialog : public QDialog {
 public:
  PrintDialog(QWidget* parent, const engine::Pages& pages, std::size_t current, bool draft)
      : QDialog(parent), pages_(pages), current_(current) {
    setObjectName("printDialog");
    setWindowTitle("Print");
    auto* form = new QFormLayout;
    queue_ = new QComboBox;
    queue_->setObjectName("printer");
    for (const PrintQueue& queue : print_queues()) {
      queue_->addItem(QString::fromStdString(queue.name));
      if (queue.usual) queue_->setCurrentIndex(queue_->count() - 1);
    }
    form->addRow("Printer:", queue_);
    all_ = add_choice(form, "All pages", "all");
    one_ = add_choice(form, "Current page", "current");
    some_ = add_choice(form, "Pages:", "some");
    all_->setChecked(true);
    range_ = new QLineEdit;
    range_->setObjectName("range");
    range_->setPlaceholderText("1-3, 5");
    connect(range_, &QLineEdit::textEdited, this, [this] { some_->setChecked(true); });
    form->addRow("", range_);
    copies_ = new QSpinBox;
    copies_->setObjectName("copies");
    copies_->setRange(1, kMostCopies);
    form->addRow("Copies:", copies_);
    quality_ = new QComboBox;
    quality_->setObjectName("quality");
    quality_->addItems({"High", "Draft"});
    quality_->setCurrentIndex(draft ? 1 : 0);
    form->addRow("Quality:", quality_);
    add_paper(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText("&Print");
    buttons->button(QDialogButtonBox::Ok)->setEnabled(queue_->count() > 0);
    if (queue_->count() == 0) queue_->addItem("No printer is set up");
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept_if_right(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* all = new QVBoxLayout(this);
    all->addLayout(form);
    all->addWidget(buttons);
  }

  const PrintRequest& request() const { return request_; }

 private:
  static QRadioButton* add_choice(QFormLayout* form, const char* text, const char* name) {
    auto* button = new QRadioButton(text);
    button->setObjectName(name);
    form->addRow("", button);
    return button;
  }

  void add_paper(QFormLayout* form) {
    paper_ = new QComboBox;
    paper_->setObjectName("paper");
    for (const NamedPaper& paper : kPapers) paper_->addItem(paper.name);
    form->addRow("Paper:", paper_);
    for (QDoubleSpinBox** size : {&width_, &height_}) {
      *size = new QDoubleSpinBox;
      (*size)->setRange(50, 1200);
      (*size)->setSuffix(" mm");
      (*size)->setEnabled(false);
    }
    width_->setObjectName("paperWidth");
    height_->setObjectName("paperHeight");
    width_->setValue(210);
    height_->setValue(297);
    form->addRow("Width:", width_);
    form->addRow("Height:", height_);
    connect(paper_, &QComboBox::currentIndexChanged, this, [this](int index) {
      const bool custom = index == static_cast<int>(kPapers.size()) - 1;
      width_->setEnabled(custom);
      height_->setEnabled(custom);
    });
  }

  std::vector<std::size_t> chosen() const {
    if (one_->isChecked()) return {current_};
    if (some_->isChecked()) return page_range(range_->text().toStdString(), pages_.Count());
    std::vector<std::size_t> all(pages_.Count());
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
    return all;
  }

  void accept_if_right() {
    try {
      request_.queue = queue_->currentText().toStdString();
      request_.pages.clear();
      for (std::size_t index : chosen()) request_.pages.push_back(pages_.at(index));
      request_.copies = copies_->value();
      request_.draft = quality_->currentIndex() == 1;
      request_.paper = kPapers.at(static_cast<std::size_t>(paper_->currentIndex())).paper;
      if (width_->isEnabled())
        request_.paper = {static_cast<int>(std::lround(width_->value() * kTwipsPerMillimetre)),
                          static_cast<int>(std::lround(height_->value() * kTwipsPerMillimetre))};
      accept();
    } catch (const value::Failure& failure) {
      tell(this, failure.description());
    }
  }

  const engine::Pages& pages_;
  std::size_t current_;
  PrintRequest request_;
  QComboBox* queue_ = nullptr;
  QRadioButton* all_ = nullptr;
  QRadioButton* one_ = nullptr;
  QRadioButton* some_ = nullptr;
  QLineEdit* range_ = nullptr;
  QSpinBox* copies_ = nullptr;
  QComboBox* quality_ = nullptr;
  QComboBox* paper_ = nullptr;
  QDoubleSpinBox* width_ = nullptr;
  QDoubleSpinBox* height_ = nullptr;
};

void watch(QWidget* parent, const std::string& queue, int job) {
  auto* timer = new QTimer(parent);
  QObject::connect(timer, &QTimer::timeout, parent, [parent, timer, queue, job] {
    const JobState state = job_state(queue, job);
    if (state == JobState::Waiting || state == JobState::Printing) return;
    timer->stop();
    timer->deleteLater();
    const std::string message = job_message(queue, job, state);
    if (!message.empty()) tell(parent, message);
  });
  timer->start(kWatchEvery);
}

}  // namespace

void print_pages(QWidget* parent, const QString& title, const engine::Pages& pages, std::size_t current_page,
                 bool draft) {
  PrintDialog dialog(parent, pages, current_page, draft);
  if (dialog.exec() != QDialog::Accepted) return;
  try {
    PrintRequest request = dialog.request();
    request.title = title.toStdString();
    watch(parent, request.queue, submit(request));
  } catch (const value::Failure& failure) {
    tell(parent, failure.description());
  }
}

}  // namespace dorvo::preview
