#include "preview/page_text.h"

#include <QStringList>
#include <algorithm>

#include "engine/painter.h"
#include "export/page_boxes.h"

namespace dorvo::preview {
namespace {

std::string line_text(const engine::TextLine& line) {
  std::string text;
  for (const engine::GlyphRun& run : line.runs) text += run.text;
  return text;
}

// Distance from the start of the line to the character that begins at a byte, in em units.
double offset_of(const engine::TextLine& line, std::size_t byte) {
  double offset = 0;
  for (const engine::GlyphRun& run : line.runs) {
    if (byte >= run.text.size()) {
      byte -= run.text.size();
      offset += run.width;
      continue;
    }
    for (const engine::Glyph& glyph : run.glyphs)
      if (glyph.cluster < byte) offset += glyph.advance;
    break;
  }
  return offset;
}

void find_in_line(const engine::PageItem& item, const engine::LinePlace& place, const QString& sought,
                  std::vector<QRectF>& boxes) {
  const QString text = QString::fromStdString(line_text(*place.line));
  for (qsizetype at = text.indexOf(sought, 0, Qt::CaseInsensitive); at >= 0;
       at = text.indexOf(sought, at + sought.size(), Qt::CaseInsensitive)) {
    const auto first = static_cast<std::size_t>(text.left(at).toUtf8().size());
    const auto last = static_cast<std::size_t>(text.left(at + sought.size()).toUtf8().size());
    const double left = place.x + engine::twips_of(offset_of(*place.line, first), item.half_points);
    const double right = place.x + engine::twips_of(offset_of(*place.line, last), item.half_points);
    const double ascent = engine::twips_of(item.shaped->ascent, item.half_points);
    const double descent = engine::twips_of(item.shaped->descent, item.half_points);
    boxes.emplace_back(left, place.baseline - ascent, right - left, ascent + descent);
  }
}

}  // namespace

std::vector<Match> matches_on(const engine::Page& page, std::size_t index, const QString& sought) {
  std::vector<QRectF> boxes;
  std::vector<engine::LinePlace> places;
  for (const engine::PageItem& item : page.items) {
    if (sought.isEmpty() || !item.shaped) continue;
    places.clear();
    engine::place_lines(item, places);
    for (const engine::LinePlace& place : places) find_in_line(item, place, sought, boxes);
  }
  std::vector<Match> matches;
  for (const QRectF& box : boxes) matches.push_back({index, matches.size(), box});
  return matches;
}

std::optional<Match> find_text(const engine::Pages& pages, const QString& sought, std::size_t page,
                               const std::optional<Match>& from, Direction direction) {
  const bool forward = direction == Direction::Forward;
  const std::size_t count = pages.Count();
  if (from) page = from->page;
  // The page of the last match counts at both ends: what lies behind it first, what lies before it last.
  for (std::size_t step = 0; step <= count && count > 0; ++step) {
    const std::size_t index = forward ? (page + step) % count : (page + count - step % count) % count;
    const std::vector<Match> matches = matches_on(*pages.at(index), index, sought);
    if (matches.empty()) continue;
    if (!from || step > 0) return forward ? matches.front() : matches.back();
    if (forward && from->place + 1 < matches.size()) return matches[from->place + 1];
    if (!forward && from->place > 0) return matches[from->place - 1];
  }
  return std::nullopt;
}

QString text_of(const engine::Page& page) {
  const export_::PageBoxes boxes = export_::boxes_of(page);
  export_::GridColumnFinder finder({});
  finder.add(boxes.boxes);
  const export_::Grid grid = export_::make_grid(boxes.boxes, {}, finder.columns(), {});
  QString text;
  std::size_t row = 0;
  for (const export_::GridCell& cell : grid.cells) {
    if (!text.isEmpty()) text += cell.row == row ? '\t' : '\n';
    row = cell.row;
    QStringList texts;
    for (std::size_t box : cell.boxes) texts += QString::fromStdString(export_::cell_text(*boxes.items[box], " "));
    text += texts.join(' ');
  }
  return text;
}

}  // namespace dorvo::preview
