#include "preview/page_ranges.h"

#include <QStringList>

namespace dorvo::preview {

std::optional<std::vector<std::size_t>> page_ranges(const QString& text, std::size_t count) {
  std::vector<std::size_t> pages;
  for (const QString& range : text.split(',')) {
    const QStringList ends = range.split('-');
    bool is_first = false, is_last = false;
    const std::size_t first = ends.first().trimmed().toULongLong(&is_first);
    const std::size_t last = ends.last().trimmed().toULongLong(&is_last);
    if (ends.size() > 2 || !is_first || !is_last || first < 1 || last < first || last > count) return std::nullopt;
    for (std::size_t page = first; page <= last; ++page) pages.push_back(page - 1);
  }
  return pages;
}

}  // namespace dorvo::preview
