// All places at which a sought text stands on the pages, and which of them the user is at.
#pragma once

#include <QRectF>
#include <QString>
#include <optional>
#include <vector>

#include "engine/pages.h"

namespace dorvo::preview {

struct Match {
  std::size_t page = 0;  // index
  QRectF box;            // twips on the page
};

enum class Direction { Forward, Backward };

class Found {
 public:
  Found() = default;
  Found(const std::vector<engine::PagePtr>& pages, const QString& sought);

  const QString& sought() const { return sought_; }
  const std::vector<Match>& matches() const { return matches_; }
  // Those of one page.
  std::pair<std::size_t, std::size_t> range(std::size_t page) const;

  // The match that the user is at; none before the first step.
  const std::optional<std::size_t>& at() const { return at_; }
  // The next one, going round at the ends; the first step goes to the nearest one from `page` on. None when the text
  // is nowhere.
  std::optional<Match> step(Direction direction, std::size_t page);

 private:
  QString sought_;
  std::vector<Match> matches_;
  std::optional<std::size_t> at_;
};

}  // namespace dorvo::preview
