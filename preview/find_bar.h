// The strip under the pages in which the user enters the text to find.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "preview/found.h"

namespace dorvo::preview {

class FindBar : public QWidget {
 public:
  FindBar();

  std::function<void(Direction)> step;  // Enter, Next, Previous
  std::function<void()> edited;         // the text is another, after a short pause
  std::function<void()> closed;

  QString text() const { return text_->text(); }
  void begin();  // shows it, ready for a new text
  void show_count(const Found& found);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLineEdit* text_;
  QLabel* count_;
  QTimer pause_;
};

}  // namespace dorvo::preview
