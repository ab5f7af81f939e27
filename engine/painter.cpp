#include "engine/painter.h"

#include <algorithm>

namespace dorvo::engine {
namespace {

// Of an underline, em units.
constexpr double kUnderlineBelow = 0.12;
constexpr double kUnderlineWeight = 0.06;

Box box_of(const PageItem& item) {
  return {static_cast<double>(item.left), static_cast<double>(item.top), static_cast<double>(item.width),
          static_cast<double>(item.height)};
}

void paint_line(const LinePlace& place, const PageItem& item, Painter& painter) {
  const Style& style = *item.control->style;
  double x = place.x;
  for (const GlyphRun& run : place.line->runs) {
    painter.glyphs(run, x, place.baseline, item.half_points, style.color);
    x += twips_of(run.width, item.half_points);
  }
  if (!style.underline || place.line->runs.empty()) return;
  const double y = place.baseline + twips_of(kUnderlineBelow, item.half_points);
  painter.rule(place.x, y, x, y, twips_of(kUnderlineWeight, item.half_points), LineStyle::Solid, style.color);
}

void paint_text(const PageItem& item, Painter& painter, std::vector<LinePlace>& places) {
  const ControlLayout& control = *item.control;
  if (control.border) painter.box(box_of(item), false, control.fill, control.weight, control.line_style, control.color);
  if (!item.shaped) return;
  places.clear();
  place_lines(item, places);
  if (item.clipped) painter.clip(box_of(item));
  for (const LinePlace& place : places)
    if (shows(place, places.front(), item)) paint_line(place, item, painter);
  if (item.clipped) painter.unclip();
}

void paint_item(const PageItem& item, Painter& painter, std::vector<LinePlace>& places) {
  const ControlLayout& control = *item.control;
  switch (control.kind) {
    case ControlKind::Label:
    case ControlKind::Field:
      return paint_text(item, painter, places);
    case ControlKind::Line:
      return painter.rule(item.left, item.top, item.left + item.width, item.top + item.height, control.weight,
                          control.line_style, control.color);
    case ControlKind::Shape:
      return painter.box(box_of(item), control.filled, control.fill, control.weight, control.line_style, control.color);
    case ControlKind::SubReport:
    case ControlKind::PageBreak:
    case ControlKind::Data:
      return;  // nothing of their own on paper
  }
}

}  // namespace

void paint(const Page& page, Painter& painter, Layer layer) {
  std::vector<LinePlace> places;
  for (const PageItem& item : page.items)
    if (layer == Layer::All || item.fixed == (layer == Layer::Fixed)) paint_item(item, painter, places);
}

bool shows(const LinePlace& place, const LinePlace& first, const PageItem& item) {
  return !item.clipped || place.line == first.line || place.baseline <= item.top + item.height;
}

void place_lines(const PageItem& item, std::vector<LinePlace>& places) {
  if (!item.shaped || item.shaped->lines.empty()) return;
  const ShapedText& shaped = *item.shaped;
  const Style& style = *item.control->style;
  const double step = twips_of(shaped.line_height, item.half_points);
  const double spare = item.height - text_height(shaped, item.half_points);
  // Text that is too tall shows its first lines, whatever its alignment.
  const double down =
      style.valign == VAlign::Top ? 0 : std::max(0.0, style.valign == VAlign::Middle ? spare / 2 : spare);
  double baseline = item.top + down + twips_of(shaped.ascent, item.half_points);
  const int inset = text_inset(*item.control);
  for (const TextLine& line : shaped.lines) {
    const double gap = item.width - 2 * inset - twips_of(line.width, item.half_points);
    const double right = style.align == Align::Left ? 0 : style.align == Align::Center ? gap / 2 : gap;
    places.push_back({&line, item.left + inset + right, baseline});
    baseline += step;
  }
}

}  // namespace dorvo::engine
