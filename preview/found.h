// The places at which a sought text stands on the pages, and which of them the user is at.
//
// Pages are looked at as they are needed: by a step, by whoever draws one, or one after another by look_further() while
// there is time. So the first place in a long document is there at once.
#pragma once

#include <QRectF>
#include <QString>
#include <optional>
#include <vector>

#include "engine/pages.h"

namespace dorvo::preview {

struct Match {
  std::size_t page = 0;   // index
  std::size_t place = 0;  // among those of its page
  QRectF box;             // twips on the page
};

enum class Direction { Forward, Backward };

class Found {
 public:
  Found() = default;
  Found(engine::Pages pages, QString sought);

  const QString& sought() const { return sought_; }
  const std::vector<QRectF>& on(std::size_t page);

  // The place that the user is at; none before the first step.
  const std::optional<Match>& at() const { return at_; }
  // Goes to the next place, round at the ends; at first to the nearest one from `page` on. None: there is no such text.
  const std::optional<Match>& step(Direction direction, std::size_t page);

  // Looks at one more page; false when all have been looked at.
  bool look_further();
  bool has_seen_all() const { return seen_ == places_.size(); }
  std::size_t count() const;      // of places on the pages seen
  std::size_t number_at() const;  // of the user's place among all, from 1; 0 when it is at none

 private:
  engine::Pages pages_;
  QString sought_;
  std::vector<std::optional<std::vector<QRectF>>> places_;  // by page
  std::size_t seen_ = 0;
  std::size_t next_ = 0;  // page to look at when there is time
  std::optional<Match> at_;
};

}  // namespace dorvo::preview
