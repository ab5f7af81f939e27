#include "preview/page_arrangement.h"

#include <algorithm>
#include <cmath>

namespace dorvo::preview {
namespace {

QSize dots_of(const engine::Sheet& page, double dots_per_twip) {
  return {static_cast<int>(std::lround(page.width * dots_per_twip)),
          static_cast<int>(std::lround(page.height * dots_per_twip))};
}

}  // namespace

PageArrangement::PageArrangement(const engine::Pages& pages, int columns, double dots_per_twip)
    : columns_(static_cast<std::size_t>(std::max(1, columns))) {
  std::vector<int> widths;
  int top = kGap;
  for (std::size_t page = 0; page < pages.Count(); ++page) {
    if (page % columns_ == 0) {
      widths.push_back(kGap);
      row_ends_.push_back(top);
    }
    const QSize size = dots_of(pages.sheet(page), dots_per_twip);
    places_.emplace_back(QPoint(widths.back(), top), size);
    widths.back() += size.width() + kGap;
    row_ends_.back() = std::max(row_ends_.back(), top + size.height() + kGap);
    if (page % columns_ == columns_ - 1) top = row_ends_.back();
  }
  const int width = widths.empty() ? 0 : *std::ranges::max_element(widths);
  size_ = QSize(width, row_ends_.empty() ? 0 : row_ends_.back());
  for (std::size_t page = 0; page < places_.size(); ++page)
    places_[page].translate((width - widths[page / columns_]) / 2, 0);
}

std::pair<std::size_t, std::size_t> PageArrangement::between(int top, int bottom) const {
  const auto row = [&](int height) {
    return static_cast<std::size_t>(std::ranges::upper_bound(row_ends_, height) - row_ends_.begin());
  };
  const std::size_t end = std::min(row_ends_.size(), row(bottom) + 1);
  return {std::min(count(), row(top) * columns_), std::min(count(), end * columns_)};
}

}  // namespace dorvo::preview
