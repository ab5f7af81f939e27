#include "preview/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

namespace dorvo::preview {
namespace {

constexpr int kPause = 250;  // ms after a key stroke

}  // namespace

FindBar::FindBar() : text_(new QLineEdit), count_(new QLabel) {
  auto* next = new QPushButton("&Next");
  auto* previous = new QPushButton("Pre&vious");
  auto* close = new QPushButton("Close");
  setObjectName("FindBar");
  text_->setObjectName("Find Text");
  text_->setPlaceholderText("Text to find");
  text_->setMaximumWidth(360);
  count_->setObjectName("Find Count");
  next->setObjectName("Find Next");
  previous->setObjectName("Find Previous");
  close->setObjectName("Find Close");

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(new QLabel("Find:"));
  row->addWidget(text_, 1);
  row->addWidget(next);
  row->addWidget(previous);
  row->addWidget(count_);
  row->addStretch(1);
  row->addWidget(close);

  pause_.setSingleShot(true);
  pause_.setInterval(kPause);
  connect(&pause_, &QTimer::timeout, this, [this] { edited(); });
  connect(text_, &QLineEdit::textEdited, this, [this] { pause_.start(); });
  connect(next, &QPushButton::clicked, this, [this] { step(Direction::Forward); });
  connect(previous, &QPushButton::clicked, this, [this] { step(Direction::Backward); });
  connect(close, &QPushButton::clicked, this, [this] { closed(); });
}

void FindBar::begin() {
  show();
  text_->setFocus(Qt::ShortcutFocusReason);
  text_->selectAll();
}

void FindBar::show_count(const Found& found) {
  const QString count = QString::number(found.count());
  if (found.sought().isEmpty()) {
    count_->clear();
  } else if (!found.has_seen_all()) {
    count_->setText(count + " so far");
  } else if (found.count() == 0) {
    count_->setText("Not found");
  } else {
    count_->setText(found.at() ? QString::number(found.number_at()) + " of " + count : count + " found");
  }
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  pause_.stop();
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QWidget::keyPressEvent(event);
  step(event->modifiers() & Qt::ShiftModifier ? Direction::Backward : Direction::Forward);
}

}  // namespace dorvo::preview
