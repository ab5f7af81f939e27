// The texts of one finished page as they stand on it: for finding, selecting and copying.
//
// Reading order is from top to bottom, and from left to right among texts beside each other. Boxes are twips on the
// page.
#pragma once

#include <QRectF>
#include <QString>
#include <vector>

#include "engine/painter.h"

namespace dorvo::preview {

class PageText {
 public:
  explicit PageText(const engine::Page& page);  // which outlives this

  // Where the text stands, in reading order, without regard to case; nothing for an empty one. A text is found within
  // a line, and only as far as its box shows it.
  std::vector<QRectF> find(const QString& sought) const;

  // Texts in reading order, those beside each other parted by tabs.
  QString text() const;
  // Of the lines that the area touches.
  QString text_in(const QRectF& area) const;
  std::vector<QRectF> lines_in(const QRectF& area) const;

 private:
  struct Line {
    QString text;
    QRectF box;
    const engine::PageItem* item = nullptr;
    engine::LinePlace place;
  };
  void sort();
  QRectF part(const Line& line, qsizetype from, qsizetype length) const;
  template <class Take>
  QString joined(Take take) const;

  std::vector<Line> lines_;
  std::vector<std::size_t> rows_;  // by line: which row it stands in
};

}  // namespace dorvo::preview
