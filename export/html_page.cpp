#include "export/html_page.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "value/text.h"

namespace dorvo::export_ {
namespace {

using engine::Align;
using engine::ControlKind;
using engine::PageItem;

const std::string kSize = "size:";  // what declarations of a sheet begin with
constexpr int kTwipsPerDot = 15;    // of a browser, 96 to the inch

std::string points(double twips) {
  return value::number_text(std::round(twips * 5) / 100) + "pt";
}

std::string rgb(std::uint32_t color) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%06X", static_cast<unsigned>(color & 0xFFFFFF));
  return text.data();
}

std::string font_rules(const engine::Style& style, int half_points) {
  static const std::map<std::string, std::string> kSubstitutes = {
      {"Arial", "Arial,\"Liberation Sans\",sans-serif"},
      {"Times New Roman", "\"Times New Roman\",\"Liberation Serif\",serif"},
      {"Courier New", "\"Courier New\",\"Liberation Mono\",monospace"}};
  const auto found = kSubstitutes.find(style.font);
  std::string rules = "font-family:" + (found == kSubstitutes.end() ? "\"" + style.font + "\"" : found->second);
  rules += ";font-size:" + points(half_points * 10);
  if (style.bold) rules += ";font-weight:bold";
  if (style.italic) rules += ";font-style:italic";
  if (style.underline) rules += ";text-decoration:underline";
  if (style.color != 0) rules += ";color:" + rgb(style.color);
  return rules;
}

const char* align_name(Align align) {
  return align == Align::Left ? "left" : align == Align::Center ? "center" : "right";
}

std::string pen(const engine::ControlLayout& control) {
  constexpr std::array<const char*, 3> kStyles = {"solid", "dashed", "dotted"};
  return points(control.weight) + " " + kStyles[static_cast<std::size_t>(control.line_style)] + " " +
         rgb(control.color);
}

std::string place(double left, double top) {
  return "left:" + points(left) + ";top:" + points(top);
}

std::string positioned_rule(const PageItem& item) {
  const double half = item.control->weight / 2.0;
  const std::string line = pen(*item.control);
  std::string style;
  if (item.height == 0) {
    style = place(item.left + std::min(0, item.width), item.top - half) + ";width:" + points(std::abs(item.width)) +
            ";border-top:" + line;
  } else if (item.width == 0) {
    style = place(item.left - half, item.top + std::min(0, item.height)) + ";height:" + points(std::abs(item.height)) +
            ";border-left:" + line;
  } else {
    const double angle = std::atan2(item.height, item.width) * 180 / M_PI;
    style = place(item.left, item.top) + ";width:" + points(std::hypot(item.width, item.height)) +
            ";border-top:" + line + ";transform-origin:0 0;transform:rotate(" +
            value::number_text(std::round(angle * 1000) / 1000) + "deg)";
  }
  return "<div style=\"" + style + "\"></div>\n";
}

std::string positioned_box(const PageItem& item) {
  const engine::ControlLayout& control = *item.control;
  if (control.weight <= 0 && !control.filled) return {};
  const double half = std::max(0, control.weight) / 2.0;
  std::string style = place(item.left - half, item.top - half) + ";width:" + points(item.width + 2 * half) +
                      ";height:" + points(item.height + 2 * half) + ";box-sizing:border-box";
  if (control.weight > 0) style += ";border:" + pen(control);
  if (control.filled) style += ";background:" + rgb(control.fill);
  return "<div style=\"" + style + "\"></div>\n";
}

std::string positioned_text(const PageItem& item, HtmlStyles& styles) {
  const TextPlace text = text_place(item, 0);
  if (text.lines.empty()) return {};
  const engine::Style& style = *item.control->style;
  const engine::ShapedText& shaped = *item.shaped;
  // A browser puts half of a line's leading above the letters.
  const double leading = (shaped.line_height - shaped.ascent - shaped.descent) / 2.0;
  const double top = text.lines.front().baseline - engine::twips_of(shaped.ascent + leading, item.half_points);
  const std::string name =
      styles.name(font_rules(style, item.half_points) + ";text-align:" + align_name(style.align) +
                  ";line-height:" + value::number_text(std::round(shaped.line_height * 1000) / 1000));
  std::string html = "<div class=\"" + name + "\" style=\"" + place(text.left, top) + ";width:" + points(text.width);
  if (item.clipped) html += ";height:" + points(item.top + item.height - top) + ";overflow:hidden";
  html += "\">";
  for (const engine::LinePlace& line : text.lines) {
    if (&line != &text.lines.front()) html += "<br>";
    for (const engine::GlyphRun& run : line.line->runs) html += html_escaped(run.text);
  }
  return html + "</div>\n";
}

// ---- tables ----

std::string border_rules(std::uint8_t border) {
  std::string rules;
  constexpr std::array<std::pair<int, const char*>, 4> kSides = {
      {{kBorderLeft, "left"}, {kBorderTop, "top"}, {kBorderRight, "right"}, {kBorderBottom, "bottom"}}};
  for (const auto& [side, name] : kSides)
    if (border & side) rules += std::string(rules.empty() ? "" : ";") + "border-" + name + ":1px solid #000000";
  return rules;
}

int dots(int twips) {
  return (twips + kTwipsPerDot / 2) / kTwipsPerDot;
}

// The size of a FONT element that comes nearest.
int font_step(int half_points) {
  constexpr std::array<int, 6> kUpTo = {16, 20, 24, 28, 36, 48};
  return static_cast<int>(std::lower_bound(kUpTo.begin(), kUpTo.end(), half_points) - kUpTo.begin()) + 1;
}

std::string font_text(const PageItem& item, HtmlStyles& styles) {
  const engine::Style& style = *item.control->style;
  std::string open = "<FONT CLASS=\"" + styles.name(font_rules(style, item.half_points)) + "\" FACE=\"" +
                     html_escaped(style.font) + "\" SIZE=\"" + std::to_string(font_step(item.half_points)) + "\"";
  if (style.color != 0) open += " COLOR=\"" + rgb(style.color) + "\"";
  open += ">";
  std::string close = "</FONT>";
  for (const auto& [on, tag] : {std::pair(style.bold, "B"), {style.italic, "I"}, {style.underline, "U"}})
    if (on) open += std::string("<") + tag + ">", close = std::string("</") + tag + ">" + close;
  std::string text;
  for (const std::string& line : lines_of(item)) text += (text.empty() ? "" : "<BR>") + html_escaped(line);
  return open + text + close;
}

class TablePage {
 public:
  TablePage(const PageBoxes& boxes, const Grid& grid, HtmlStyles& styles, const std::string& spacer)
      : boxes_(boxes), grid_(grid), styles_(styles), spacer_(spacer) {}

  std::string html(const std::vector<int>& widths, const std::vector<int>& heights, int left, int top) {
    left_ = left;
    std::vector<int> all = widths;
    if (left_ > 0) all.insert(all.begin(), left_);
    int total = 0;
    for (int width : all) total += dots(width);
    html_ = "<TABLE BORDER=\"0\" CELLSPACING=\"0\" CELLPADDING=\"0\" WIDTH=\"" + std::to_string(total) + "\">\n<TR>";
    for (int width : all) html_ += "<TD>" + space(dots(width), std::max(1, dots(top))) + "</TD>";
    html_ += "</TR>\n";
    taken_.assign(grid_.rows() * grid_.columns, nullptr);
    for (const GridCell& cell : grid_.cells)
      for (std::size_t r = 0; r < cell.rows; ++r)
        for (std::size_t c = 0; c < cell.columns; ++c) taken_[(cell.row + r) * grid_.columns + cell.column + c] = &cell;
    for (std::size_t row = 0; row < grid_.rows(); ++row) add_row(row, heights[row]);
    return html_ + "</TABLE>\n";
  }

 private:
  std::string space(int width, int height) const {
    return "<IMG SRC=\"" + spacer_ + "\" WIDTH=\"" + std::to_string(width) + "\" HEIGHT=\"" + std::to_string(height) +
           "\" ALT=\"\">";
  }

  void add_row(std::size_t row, int height) {
    html_ += "<TR>";
    if (left_ > 0) html_ += "<TD>" + space(1, dots(height)) + "</TD>";
    for (std::size_t column = 0; column < grid_.columns;) {
      const GridCell* cell = taken_[row * grid_.columns + column];
      if (!cell) {
        column = add_empty(row, column);
        continue;
      }
      if (cell->row == row && cell->column == column) add_cell(*cell);
      ++column;
    }
    html_ += "</TR>\n";
  }

  // Empty places beside each other are one cell as far as their borders are the same.
  std::size_t add_empty(std::size_t row, std::size_t column) {
    const std::uint8_t border = grid_.border(row, column);
    std::size_t end = column + 1;
    const bool joins = (border & (kBorderLeft | kBorderRight)) == 0;
    while (joins && end < grid_.columns && !taken_[row * grid_.columns + end] && grid_.border(row, end) == border)
      ++end;
    open_cell(1, end - column, border);
    html_ += "></TD>";
    return end;
  }

  void add_cell(const GridCell& cell) {
    const PageItem& first = *boxes_.items[cell.boxes.front()];
    const engine::Style& style = *first.control->style;
    open_cell(cell.rows, cell.columns, grid_.border(cell));
    html_ += std::string(" NOWRAP ALIGN=\"") + align_name(style.align) + "\" VALIGN=\"TOP\">";
    for (std::size_t i = 0; i < cell.boxes.size(); ++i) {
      if (i > 0) html_ += " ";
      html_ += font_text(*boxes_.items[cell.boxes[i]], styles_);
    }
    html_ += "</TD>";
  }

  void open_cell(std::size_t rows, std::size_t columns, std::uint8_t border) {
    html_ += "<TD";
    if (rows > 1) html_ += " ROWSPAN=\"" + std::to_string(rows) + "\"";
    if (columns > 1) html_ += " COLSPAN=\"" + std::to_string(columns) + "\"";
    if (border != 0) html_ += " CLASS=\"" + styles_.name(border_rules(border)) + "\"";
  }

  const PageBoxes& boxes_;
  const Grid& grid_;
  HtmlStyles& styles_;
  std::string spacer_;
  int left_ = 0;
  std::vector<const GridCell*> taken_;
  std::string html_;
};

}  // namespace

std::string html_escaped(std::string_view text) {
  std::string escaped;
  for (char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        if (static_cast<unsigned char>(c) >= ' ' || c == '\t') escaped += c;
    }
  }
  return escaped;
}

std::string HtmlStyles::name(const std::string& declarations) {
  const std::size_t number = numbers_.insert({declarations, numbers_.size() + 1}).first->second;
  if (handed_.insert(number).second) wanted_[number] = declarations;
  return "s" + std::to_string(number);
}

std::string HtmlStyles::sheet(const engine::Page& page) {
  return name(kSize + points(page.width) + " " + points(page.height) + ";margin:0");
}

std::string HtmlStyles::take() {
  std::string rules;
  for (const auto& [number, declarations] : wanted_) {
    const std::string name = "s" + std::to_string(number);
    if (declarations.starts_with(kSize))
      rules += "@page " + name + "{" + declarations + "}\n." + name + "{page:" + name + "}\n";
    else
      rules += "." + name + "{" + declarations + "}\n";
  }
  wanted_.clear();
  return rules;
}

std::string html_base_rules(bool dynamic) {
  const std::string common = "BODY{margin:0}\n.page~.page{page-break-before:always}\n";
  if (!dynamic) return common + "TABLE{border-collapse:collapse}\n";
  return common +
         ".page{position:relative;overflow:hidden;background:#FFFFFF}\n"
         ".page div{position:absolute;white-space:pre}\n";
}

std::string dynamic_page(const engine::Page& page, HtmlStyles& styles) {
  std::string html = "<div class=\"page " + styles.sheet(page) + "\" id=\"page" + std::to_string(page.number) +
                     "\" style=\"width:" + points(page.width) + ";height:" + points(page.height) + "\">\n";
  for (const PageItem& item : page.items) {
    if (item.kind() == ControlKind::Line && item.control->weight > 0) html += positioned_rule(item);
    if (item.kind() == ControlKind::Shape) html += positioned_box(item);
    if (item.kind() != ControlKind::Label && item.kind() != ControlKind::Field) continue;
    if (item.control->border) html += positioned_box(item);
    if (!item.string().empty()) html += positioned_text(item, styles);
  }
  return html + "</div>\n";
}

std::string table_page(const engine::Page& page, HtmlStyles& styles, const std::string& spacer, OverlapNotes& notes,
                       std::vector<std::string>& messages) {
  GridOptions options;
  options.min_column_width = 0;  // a browser has no smallest column
  const PageBoxes boxes = boxes_of(page);
  GridColumnFinder finder(options);
  finder.add(boxes.boxes);
  const GridColumns columns = finder.columns();
  const Grid grid = make_grid(boxes.boxes, boxes.rules, columns, options);
  notes.add(page, boxes, grid, messages);
  const int left = columns.starts.empty() ? 0 : columns.starts.front();
  const int top = grid.rows() == 0 ? 0 : grid.row_starts.front();
  return "<DIV CLASS=\"page " + styles.sheet(page) + "\"><A NAME=\"page" + std::to_string(page.number) + "\"></A>\n" +
         TablePage(boxes, grid, styles, spacer).html(columns.widths(), grid.heights(0, false), left, top) + "</DIV>\n";
}

}  // namespace dorvo::export_
