#include "engine/pages.h"

#include <algorithm>

#include "engine/packed_page.h"

namespace dorvo::engine {

PagePtr Pages::at(std::size_t index) const {
  if (index < ready_.size()) return ready_[index];
  const auto known = std::find_if(unpacked_.begin(), unpacked_.end(), [&](auto& page) { return page.first == index; });
  if (known != unpacked_.end()) return known->second;
  if (unpacked_.size() == kUnpacked) unpacked_.pop_front();
  return unpacked_.emplace_back(index, unpack(*packed_.at(index - ready_.size()))).second;
}

const Sheet& Pages::sheet(std::size_t index) const {
  if (index < ready_.size()) return *ready_[index];
  return packed_.at(index - ready_.size())->sheet;
}

void Pages::add(PagePtr page) {
  if (packed_.empty()) {
    ready_.push_back(std::move(page));
  } else {
    packed_.push_back(pack(*page));
  }
}

void Pages::keep(PagePtr page) {
  if (ready_.size() < kReady) {
    ready_.push_back(std::move(page));
  } else {
    packed_.push_back(pack(*page));
  }
}

void Pages::clear() {
  ready_.clear();
  packed_.clear();
  unpacked_.clear();
}

}  // namespace dorvo::engine
