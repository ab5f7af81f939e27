#include "preview/found.h"

#include <utility>

#include "preview/page_text.h"

namespace dorvo::preview {

Found::Found(engine::Pages pages, QString sought) : pages_(std::move(pages)), sought_(std::move(sought)) {
  if (!sought_.isEmpty()) places_.resize(pages_.Count());
}

const std::vector<QRectF>& Found::on(std::size_t page) {
  static const std::vector<QRectF> kNone;
  if (page >= places_.size()) return kNone;
  if (!places_[page]) {
    places_[page] = PageText(*pages_.at(page)).find(sought_);
    ++seen_;
  }
  return *places_[page];
}

const std::optional<Match>& Found::step(Direction direction, std::size_t page) {
  const bool is_forward = direction == Direction::Forward;
  const std::size_t count = places_.size();
  const std::size_t from = at_ ? at_->page : page;
  const auto go = [&](std::size_t index, std::size_t place) -> const std::optional<Match>& {
    at_ = Match{index, place, on(index)[place]};
    return at_;
  };
  if (at_ && is_forward && at_->place + 1 < on(from).size()) return go(from, at_->place + 1);
  if (at_ && !is_forward && at_->place > 0) return go(from, at_->place - 1);
  // The page of the last place comes again at the end, for the places on its other side.
  for (std::size_t away = at_ ? 1 : 0; away <= count && count > 0; ++away) {
    const std::size_t index = (from + (is_forward ? away : count - away % count)) % count;
    if (!on(index).empty()) return go(index, is_forward ? 0 : on(index).size() - 1);
  }
  return at_;
}

bool Found::look_further() {
  while (next_ < places_.size() && places_[next_]) ++next_;
  if (next_ == places_.size()) return false;
  on(next_);
  return true;
}

std::size_t Found::count() const {
  std::size_t count = 0;
  for (const auto& places : places_) count += places ? places->size() : 0;
  return count;
}

std::size_t Found::number_at() const {
  if (!at_) return 0;
  std::size_t before = 0;
  for (std::size_t page = 0; page < at_->page; ++page) before += places_[page] ? places_[page]->size() : 0;
  return before + at_->place + 1;
}

}  // namespace dorvo::preview
