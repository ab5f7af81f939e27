// Where pages stand on the ground that a preview scrolls over: in rows of so many columns, each row centred.
#pragma once

#include <QRect>
#include <QSize>
#include <utility>
#include <vector>

#include "engine/pages.h"

namespace dorvo::preview {

class PageArrangement {
 public:
  static constexpr int kGap = 12;  // dots around a page

  PageArrangement() = default;
  PageArrangement(const engine::Pages& pages, int columns, double dots_per_twip);

  const QSize& size() const { return size_; }  // of the ground, dots
  std::size_t count() const { return places_.size(); }
  const QRect& place(std::size_t page) const { return places_[page]; }
  // The pages of all rows that stand between two heights: the first, and one past the last.
  std::pair<std::size_t, std::size_t> between(int top, int bottom) const;

 private:
  std::size_t columns_ = 1;
  std::vector<QRect> places_;
  std::vector<int> row_ends_;
  QSize size_;
};

}  // namespace dorvo::preview
