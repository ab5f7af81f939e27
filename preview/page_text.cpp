#include "preview/page_text.h"

#include <algorithm>

namespace dorvo::preview {
namespace {

using engine::GlyphRun;
using engine::twips_of;

std::string text_of(const engine::TextLine& line) {
  std::string text;
  for (const GlyphRun& run : line.runs) text += run.text;
  return text;
}

// From the start of the line to the character that begins at `byte` of its text, em units.
double offset_of(const engine::TextLine& line, std::size_t byte) {
  double offset = 0;
  for (const GlyphRun& run : line.runs) {
    if (byte >= run.text.size()) {
      byte -= run.text.size();
      offset += run.width;
      continue;
    }
    for (const engine::Glyph& glyph : run.glyphs)
      if (glyph.cluster < byte) offset += glyph.advance;
    return offset;
  }
  return offset;
}

QRectF box_of(const engine::PageItem& item, const engine::LinePlace& place) {
  const double ascent = twips_of(item.shaped->ascent, item.half_points);
  const double descent = twips_of(item.shaped->descent, item.half_points);
  const double width = twips_of(place.line->width, item.half_points);
  const QRectF box(place.x, place.baseline - ascent, width, ascent + descent);
  return item.clipped ? box & QRectF(item.left, item.top, item.width, item.height) : box;
}

}  // namespace

PageText::PageText(const engine::Page& page) {
  std::vector<engine::LinePlace> places;
  for (const engine::PageItem& item : page.items) {
    places.clear();
    engine::place_lines(item, places);
    for (const engine::LinePlace& place : places) {
      const QRectF box = box_of(item, place);
      if (!box.isEmpty()) lines_.push_back({QString::fromStdString(text_of(*place.line)), box, &item, place});
    }
  }
  sort();
}

void PageText::sort() {
  const auto middle = [](const Line& line) { return line.box.center().y(); };
  std::ranges::stable_sort(lines_, {}, middle);
  for (std::size_t first = 0; first < lines_.size();) {
    std::size_t end = first + 1;
    while (end < lines_.size() && middle(lines_[end]) < lines_[first].box.bottom()) ++end;
    std::stable_sort(lines_.begin() + static_cast<std::ptrdiff_t>(first),
                     lines_.begin() + static_cast<std::ptrdiff_t>(end),
                     [](const Line& one, const Line& other) { return one.box.left() < other.box.left(); });
    rows_.resize(end, first);
    first = end;
  }
}

QRectF PageText::part(const Line& line, qsizetype from, qsizetype length) const {
  const auto at = [&](qsizetype character) {
    const auto byte = static_cast<std::size_t>(line.text.left(character).toUtf8().size());
    return line.place.x + twips_of(offset_of(*line.place.line, byte), line.item->half_points);
  };
  const double left = at(from);
  return QRectF(left, line.box.top(), at(from + length) - left, line.box.height()) & line.box;
}

std::vector<QRectF> PageText::find(const QString& sought) const {
  std::vector<QRectF> found;
  if (sought.isEmpty()) return found;
  for (const Line& line : lines_) {
    qsizetype at = line.text.indexOf(sought, 0, Qt::CaseInsensitive);
    for (; at >= 0; at = line.text.indexOf(sought, at + sought.size(), Qt::CaseInsensitive)) {
      const QRectF box = part(line, at, sought.size());
      if (!box.isEmpty()) found.push_back(box);
    }
  }
  return found;
}

template <class Take>
QString PageText::joined(Take take) const {
  QString text;
  const std::size_t none = lines_.size();
  std::size_t row = none;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (!take(lines_[i])) continue;
    if (row != none) text += rows_[i] == row ? '\t' : '\n';
    row = rows_[i];
    text += lines_[i].text;
  }
  return text;
}

QString PageText::text() const {
  return joined([](const Line&) { return true; });
}

QString PageText::text_in(const QRectF& area) const {
  return joined([&](const Line& line) { return line.box.intersects(area); });
}

std::vector<QRectF> PageText::lines_in(const QRectF& area) const {
  std::vector<QRectF> boxes;
  for (const Line& line : lines_)
    if (line.box.intersects(area)) boxes.push_back(line.box);
  return boxes;
}

}  // namespace dorvo::preview
