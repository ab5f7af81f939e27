#include "export/page_boxes.h"

#include <algorithm>
#include <cmath>

namespace dorvo::export_ {
namespace {

using engine::ControlKind;
using engine::PageItem;

constexpr int kPadding = 30;  // twips that a cell keeps free beside its text

void add_frame(const PageItem& item, std::vector<GridRule>& rules) {
  const int right = item.left + item.width;
  const int bottom = item.top + item.height;
  rules.push_back({item.left, item.top, right, item.top});
  rules.push_back({item.left, bottom, right, bottom});
  rules.push_back({item.left, item.top, item.left, bottom});
  rules.push_back({right, item.top, right, bottom});
}

std::vector<std::string> split_lines(std::string_view text) {
  std::vector<std::string> lines(1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    if (text[i] == '\r' || text[i] == '\n')
      lines.emplace_back();
    else
      lines.back() += text[i];
  }
  return lines;
}

GridBox box_of(const PageItem& item, std::vector<engine::LinePlace>& places) {
  GridBox box{item.left, item.top, item.left + item.width, item.top + item.height};
  if (!item.shaped) return box;
  places.clear();
  engine::place_lines(item, places);
  if (places.empty()) return box;
  const auto twips = [&](double em) { return static_cast<int>(std::lround(engine::twips_of(em, item.half_points))); };
  box.top = static_cast<int>(std::lround(places.front().baseline)) - twips(item.shaped->ascent);
  box.bottom = box.top + twips(item.shaped->line_height) * static_cast<int>(places.size());
  double left = box.right;
  for (const engine::LinePlace& place : places) left = std::min(left, place.x);
  box.text_left = static_cast<int>(std::lround(left)) - kPadding;
  box.text_width = twips(item.shaped->widest) + 2 * kPadding;
  return box;
}

}  // namespace

PageBoxes boxes_of(const engine::Page& page) {
  PageBoxes found;
  std::vector<engine::LinePlace> places;
  for (const PageItem& item : page.items) {
    const bool ruled = item.control->weight > 0;
    if (item.kind() == ControlKind::Line && ruled)
      found.rules.push_back({item.left, item.top, item.left + item.width, item.top + item.height});
    if (item.kind() == ControlKind::Shape && ruled) add_frame(item, found.rules);
    if (item.kind() != ControlKind::Label && item.kind() != ControlKind::Field) continue;
    if (item.control->border && ruled) add_frame(item, found.rules);
    if (item.string().empty()) continue;
    found.items.push_back(&item);
    found.boxes.push_back(box_of(item, places));
  }
  return found;
}

void OverlapNotes::add(int page_number, const std::vector<std::string>& names, const Grid& grid,
                       std::vector<std::string>& messages) {
  for (const auto& [one, other] : grid.overlaps) {
    if (!told_.insert({names[one], names[other]}).second) continue;
    messages.push_back("Page " + std::to_string(page_number) + ": " + names[one] + " and " + names[other] +
                       " stand over each other; both texts are kept");
  }
}

void OverlapNotes::add(const engine::Page& page, const PageBoxes& boxes, const Grid& grid,
                       std::vector<std::string>& messages) {
  if (grid.overlaps.empty()) return;
  std::vector<std::string> names;
  for (const PageItem* item : boxes.items) names.push_back(item->name());
  add(page.number, names, grid, messages);
}

TextPlace text_place(const PageItem& item, int slack) {
  TextPlace place;
  engine::place_lines(item, place.lines);
  if (place.lines.empty()) return place;
  const engine::LinePlace first = place.lines.front();
  std::erase_if(place.lines, [&](const engine::LinePlace& line) { return !engine::shows(line, first, item); });
  const int inset = engine::text_inset(*item.control);
  const int room = item.width - 2 * inset;
  place.width =
      std::max(room, static_cast<int>(std::ceil(engine::twips_of(item.shaped->widest, item.half_points)))) + slack;
  const int spare = place.width - room;
  const engine::Align align = item.control->style->align;
  place.left = item.left + inset -
               (align == engine::Align::Right    ? spare
                : align == engine::Align::Center ? spare / 2
                                                 : 0);
  return place;
}

std::vector<std::string> lines_of(const PageItem& item) {
  if (!item.shaped) return split_lines(item.string());
  std::vector<std::string> lines;
  for (const engine::TextLine& line : item.shaped->lines) {
    lines.emplace_back();
    for (const engine::GlyphRun& run : line.runs) lines.back() += run.text;
  }
  return lines;
}

std::string cell_text(const PageItem& item, std::string_view line_end) {
  std::string text;
  for (const std::string& line : split_lines(item.string())) {
    if (!text.empty()) text += line_end;
    text += line;
  }
  return text;
}

}  // namespace dorvo::export_
