// Where a text stands on finished pages: for find and for copying.
#pragma once

#include <QRectF>
#include <QString>
#include <optional>
#include <vector>

#include "engine/pages.h"

namespace dorvo::preview {

// One place at which the sought text stands.
struct Match {
  std::size_t page = 0;   // index
  std::size_t place = 0;  // counts the matches of its page
  QRectF box;             // twips on the page
};

// All places on one page, in print order, without regard to case. A text that wraps is found within its lines.
std::vector<Match> matches_on(const engine::Page& page, std::size_t index, const QString& sought);

enum class Direction { Forward, Backward };

// The next match from `from` on, going round at the end; from a page's start when there is no match to go on from.
std::optional<Match> find_text(const engine::Pages& pages, const QString& sought, std::size_t page,
                               const std::optional<Match>& from, Direction direction);

// The page's texts as lines, as they would be read.
QString text_of(const engine::Page& page);

}  // namespace dorvo::preview
