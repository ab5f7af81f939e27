#include "engine/split.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace dorvo::engine {
namespace {

bool is_text(const PageItem& item) {
  return item.kind() == ControlKind::Label || item.kind() == ControlKind::Field;
}

bool goes_on_by_lines(const PageItem& item) {
  return item.control->grow && item.shaped && item.shaped->lines.size() > 1;
}

double line_step(const PageItem& item) {
  return twips_of(item.shaped->line_height, item.half_points);
}

// The end of the last whole line above `cut`.
int above_line(const PageItem& item, int cut) {
  const double lines = std::floor((cut - item.top) / line_step(item));
  return item.top + static_cast<int>(std::ceil(lines * line_step(item)));
}

std::string text_of(const TextLine& line) {
  std::string text;
  for (const GlyphRun& run : line.runs) text += run.text;
  return text;
}

// The lines [first, first + count) of a grown text as a text of their own.
PageItem lines_of(const PageItem& item, std::size_t first, std::size_t count) {
  auto shaped = std::make_shared<ShapedText>(*item.shaped);
  const auto begin = item.shaped->lines.begin() + static_cast<std::ptrdiff_t>(first);
  shaped->lines.assign(begin, begin + static_cast<std::ptrdiff_t>(count));
  std::string text;
  for (const TextLine& line : shaped->lines) text.append(text.empty() ? "" : "\r\n").append(text_of(line));

  PageItem part = item;
  part.top = item.top + static_cast<int>(std::lround(static_cast<double>(first) * line_step(item)));
  part.height = static_cast<int>(std::ceil(text_height(*shaped, item.half_points)));
  part.text = std::make_shared<const std::string>(std::move(text));
  part.shaped = std::move(shaped);
  part.fixed = false;
  return part;
}

bool text_part(const PageItem& item, int from, int to, PageItem& part) {
  const bool whole = item.top >= from && (item.top + item.height <= to || !goes_on_by_lines(item));
  if (whole) {
    if (item.top >= to) return false;
    part = item;
    return true;
  }
  if (!goes_on_by_lines(item)) return false;
  const std::size_t lines = item.shaped->lines.size();
  std::size_t first = 0;
  const auto line_top = [&](std::size_t line) { return item.top + static_cast<double>(line) * line_step(item); };
  while (first < lines && line_top(first) < from - 0.5) ++first;
  std::size_t end = first;
  while (end < lines && line_top(end) < to - 0.5) ++end;
  if (end == first) return false;
  part = lines_of(item, first, end - first);
  return true;
}

bool rule_part(const PageItem& item, int from, int to, PageItem& part) {
  const int upper = std::min(item.top, item.top + item.height);
  const int lower = std::max(item.top, item.top + item.height);
  if (upper == lower) {
    if (upper < from || upper >= to) return false;
    part = item;
    return true;
  }
  const int part_upper = std::max(upper, from);
  const int part_lower = std::min(lower, to);
  if (part_upper >= part_lower) return false;
  part = item;
  const bool downwards = item.height > 0;
  part.top = downwards ? part_upper : part_lower;
  part.height = downwards ? part_lower - part_upper : part_upper - part_lower;
  if (item.kind() != ControlKind::Line) return true;
  const double slope = static_cast<double>(item.width) / item.height;
  part.left = item.left + static_cast<int>(std::lround(slope * (part.top - item.top)));
  part.width = static_cast<int>(std::lround(slope * part.height));
  return true;
}

// How far up the cut has to go for this stretch.
int spare(const Stretch& stretch, int from, int cut, int page_room) {
  const bool through = stretch.from < cut && stretch.to > cut;
  const bool has_room = stretch.from >= from && stretch.to - stretch.from <= page_room;
  return through && has_room ? stretch.from : cut;
}

int spare_text(const PageItem& item, int from, int cut, int page_room) {
  const int whole = spare({item.top, item.top + item.height}, from, cut, page_room);
  if (whole < cut || !goes_on_by_lines(item)) return whole;
  const bool through = item.top < cut && item.top + item.height > cut;
  return through ? std::max(from, above_line(item, cut)) : cut;
}

}  // namespace

int cut_above(const Band& band, int from, int limit, int page_room) {
  int cut = limit;
  for (int before = cut + 1; cut < before && cut > from;) {
    before = cut;
    for (const Stretch& stretch : band.stretches) cut = spare(stretch, from, cut, page_room);
    for (const PageItem& item : band.items) {
      if (is_text(item)) cut = spare_text(item, from, cut, page_room);
    }
  }
  return std::max(cut, from);
}

bool part_of(const PageItem& item, int from, int to, bool last, PageItem& part) {
  const int lowest = last ? std::numeric_limits<int>::max() : to;
  const int highest = from == 0 ? std::numeric_limits<int>::min() / 2 : from;
  return is_text(item) ? text_part(item, highest, lowest, part) : rule_part(item, highest, lowest, part);
}

}  // namespace dorvo::engine
