#include "engine/stack_flow.h"

namespace dorvo::engine {

void StackFlow::place(Band& band, int) {
  const int down = top_ + height_;
  for (PageItem& item : band.items) {
    item.left += left_;
    item.top += down;
    out_.items.push_back(std::move(item));
  }
  for (const Stretch& inner : band.stretches) out_.stretches.push_back({inner.from + down, inner.to + down});
  out_.stretches.push_back({down, down + band.height});
  out_.layouts.insert(out_.layouts.end(), band.layouts.begin(), band.layouts.end());
  height_ += band.height;
}

}  // namespace dorvo::engine
