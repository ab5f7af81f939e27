#include "preview/found.h"

#include <algorithm>

#include "preview/page_text.h"

namespace dorvo::preview {

Found::Found(const std::vector<engine::PagePtr>& pages, const QString& sought) : sought_(sought) {
  for (std::size_t page = 0; page < pages.size() && !sought.isEmpty(); ++page)
    for (const QRectF& box : PageText(*pages[page]).find(sought)) matches_.push_back({page, box});
}

std::pair<std::size_t, std::size_t> Found::range(std::size_t page) const {
  const auto same = std::ranges::equal_range(matches_, page, {}, &Match::page);
  return {static_cast<std::size_t>(same.begin() - matches_.begin()),
          static_cast<std::size_t>(same.end() - matches_.begin())};
}

std::optional<Match> Found::step(Direction direction, std::size_t page) {
  const std::size_t count = matches_.size();
  if (count == 0) return std::nullopt;
  const bool forward = direction == Direction::Forward;
  if (at_)
    at_ = (*at_ + (forward ? 1 : count - 1)) % count;
  else
    at_ = forward ? range(page).first % count : (range(page).second + count - 1) % count;
  return matches_[*at_];
}

}  // namespace dorvo::preview
