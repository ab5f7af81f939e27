#include "export/rtf_filter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "export/page_boxes.h"

namespace dorvo::export_ {
namespace {

using engine::Align;
using engine::ControlKind;
using engine::PageItem;

// Readers put the baseline of a line of exact height at four fifths of it.
constexpr double kBaseline = 0.8;
// Room beside a text, so that a reader whose font is a little wider does not wrap it.
constexpr int kSlack = 60;

// The last paragraph of a page: of no height, it carries the page's drawn objects.
constexpr const char* kAnchor = "\\pard\\plain\\fs2\\sl-20 ";

void append(std::string& out, const char* word, long number) {
  out += word;
  out += std::to_string(number);
}

void append_unicode(std::string& out, std::uint32_t unit) {
  append(out, "\\u", static_cast<std::int16_t>(unit));
  out += '?';
}

void append_escaped(std::string& out, std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    if (lead < 0x80) {
      if (lead == '\\' || lead == '{' || lead == '}') out += '\\';
      if (lead == '\t')
        out += "\\tab ";
      else if (lead >= ' ')
        out += utf8[i];
      ++i;
      continue;
    }
    const std::size_t size = std::min<std::size_t>(lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2, utf8.size() - i);
    std::uint32_t code = lead & (0x7Fu >> size);
    for (std::size_t k = 1; k < size; ++k) code = code << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
    if (code >= 0x10000) {
      append_unicode(out, 0xD800 + ((code - 0x10000) >> 10));
      append_unicode(out, 0xDC00 + ((code - 0x10000) & 0x3FF));
    } else {
      append_unicode(out, code);
    }
    i += size;
  }
}

const char* family_class(const std::string& family) {
  if (family.find("Times") != std::string::npos) return "\\froman";
  if (family.find("Courier") != std::string::npos) return "\\fmodern";
  return "\\fswiss";
}

template <class Value>
std::size_t index_in(std::vector<Value>& values, const Value& value) {
  const auto found = std::find(values.begin(), values.end(), value);
  if (found != values.end()) return static_cast<std::size_t>(found - values.begin());
  values.push_back(value);
  return values.size() - 1;
}

void append_rgb(std::string& out, const std::string& prefix, std::uint32_t rgb) {
  append(out, (prefix + "r").c_str(), static_cast<long>(rgb >> 16 & 0xFF));
  append(out, (prefix + "g").c_str(), static_cast<long>(rgb >> 8 & 0xFF));
  append(out, (prefix + "b").c_str(), static_cast<long>(rgb & 0xFF));
}

void append_page_size(std::string& out, const engine::Page& page) {
  append(out, "\\paperw", page.width);
  append(out, "\\paperh", page.height);
  append(out, "\\margl", page.left_margin);
  append(out, "\\margr", page.right_margin);
  append(out, "\\margt", page.top_margin);
  append(out, "\\margb", page.bottom_margin);
  if (page.width > page.height) out += "\\landscape";
}

void append_section_size(std::string& out, const engine::Page& page) {
  append(out, "\\pgwsxn", page.width);
  append(out, "\\pghsxn", page.height);
  append(out, "\\marglsxn", page.left_margin);
  append(out, "\\margrsxn", page.right_margin);
  append(out, "\\margtsxn", page.top_margin);
  append(out, "\\margbsxn", page.bottom_margin);
  if (page.width > page.height) out += "\\lndscpsxn";
}

}  // namespace

void RtfFilter::begin() {
  file_ = std::make_unique<OutputFile>(FileName);
  body_ = std::make_unique<Spool>();
  messages_.clear();
  fonts_ = {"Arial"};
  colors_ = {0x000000};
  first_ = {};
  width_ = height_ = 0;
}

void RtfFilter::page(const engine::PagePtr& page) {
  bytes_.clear();
  break_page(*page);
  height_order_ = 0;
  for (const PageItem& item : page->items) {
    if (item.kind() == ControlKind::Line) add_rule(item);
    if (item.kind() == ControlKind::Shape) add_box(item);
    if (item.kind() != ControlKind::Label && item.kind() != ControlKind::Field) continue;
    if (item.control->border) add_box(item);
    if (!item.string().empty()) add_text(item);
  }
  body_->write(bytes_);
}

void RtfFilter::end() {
  file_->write(head());
  body_->rewind();
  while (body_->read(bytes_, 1 << 16)) file_->write(bytes_);
  file_->write(std::string(kAnchor) + "\\par}\r\n");
  file_->commit();
  file_.reset();
  body_.reset();
}

std::string RtfFilter::head() const {
  std::string head = "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0{\\fonttbl";
  for (std::size_t i = 0; i < fonts_.size(); ++i) {
    append(head, "{\\f", static_cast<long>(i));
    head += family_class(fonts_[i]);
    head += ' ';
    append_escaped(head, fonts_[i]);
    head += ";}";
  }
  head += "}\r\n{\\colortbl;";
  for (std::uint32_t rgb : colors_) {
    append(head, "\\red", static_cast<long>(rgb >> 16 & 0xFF));
    append(head, "\\green", static_cast<long>(rgb >> 8 & 0xFF));
    append(head, "\\blue", static_cast<long>(rgb & 0xFF));
    head += ';';
  }
  head += "}\r\n";
  append_page_size(head, first_);
  return head + "\\viewkind1\r\n";
}

void RtfFilter::break_page(const engine::Page& page) {
  if (width_ == 0) {
    first_.width = page.width;
    first_.height = page.height;
    first_.left_margin = page.left_margin;
    first_.right_margin = page.right_margin;
    first_.top_margin = page.top_margin;
    first_.bottom_margin = page.bottom_margin;
    bytes_ += std::string(kAnchor) + "\\par\r\n";
  } else if (width_ == page.width && height_ == page.height) {
    bytes_ += std::string(kAnchor) + "\\page\\par\r\n";
  } else {
    bytes_ += std::string(kAnchor) + "\\par\\sect\\sectd";
    append_section_size(bytes_, page);
    bytes_ += "\r\n" + std::string(kAnchor) + "\\par\r\n";
  }
  width_ = page.width;
  height_ = page.height;
}

void RtfFilter::add_text(const PageItem& item) {
  const TextPlace place = text_place(item, kSlack);
  if (place.lines.empty()) return;
  const engine::Style& style = *item.control->style;
  const auto line_height = static_cast<int>(std::lround(engine::twips_of(item.shaped->line_height, item.half_points)));
  const auto top = static_cast<int>(std::lround(place.lines.front().baseline - kBaseline * line_height));

  begin_object("\\dptxbx\\dptxbxmar0{\\dptxbxtext\\pard\\plain");
  if (style.align == Align::Right) bytes_ += "\\qr";
  if (style.align == Align::Center) bytes_ += "\\qc";
  append(bytes_, "\\sl-", line_height);
  append(bytes_, "\\slmult0\\f", static_cast<long>(font(style.font)));
  append(bytes_, "\\fs", item.half_points);
  if (style.bold) bytes_ += "\\b";
  if (style.italic) bytes_ += "\\i";
  if (style.underline) bytes_ += "\\ul";
  if (style.color != 0) append(bytes_, "\\cf", static_cast<long>(color(style.color)));
  bytes_ += ' ';
  for (const engine::LinePlace& line : place.lines) {
    if (&line != &place.lines.front()) bytes_ += "\\line ";
    for (const engine::GlyphRun& run : line.line->runs) append_escaped(bytes_, run.text);
  }
  bytes_ += "\\par}";
  add_place(place.left, top, place.width, line_height * static_cast<int>(place.lines.size()));
  bytes_ += "\\dplinehollow\\dpfillpat0}\r\n";
}

// A drawn object counts its place from the corner of the sheet; later ones stand above earlier ones.
void RtfFilter::begin_object(const char* kind) {
  append(bytes_, "{\\*\\do\\dobxpage\\dobypage\\dodhgt", ++height_order_);
  bytes_ += kind;
}

void RtfFilter::add_rule(const PageItem& item) {
  if (item.control->weight <= 0) return;
  begin_object("\\dpline");
  append(bytes_, "\\dpptx", std::max(0, -item.width));
  append(bytes_, "\\dppty", std::max(0, -item.height));
  append(bytes_, "\\dpptx", std::max(0, item.width));
  append(bytes_, "\\dppty", std::max(0, item.height));
  add_place(item.left + std::min(0, item.width), item.top + std::min(0, item.height), std::abs(item.width),
            std::abs(item.height));
  add_pen(*item.control);
  bytes_ += "}\r\n";
}

void RtfFilter::add_box(const PageItem& item) {
  const engine::ControlLayout& control = *item.control;
  if (control.weight <= 0 && !control.filled) return;
  begin_object("\\dprect");
  add_place(item.left, item.top, item.width, item.height);
  add_pen(control);
  if (control.filled) {
    append_rgb(bytes_, "\\dpfillbgc", control.fill);
    append_rgb(bytes_, "\\dpfillfgc", control.fill);
    bytes_ += "\\dpfillpat1";
  } else {
    bytes_ += "\\dpfillpat0";
  }
  bytes_ += "}\r\n";
}

void RtfFilter::add_place(int left, int top, int width, int height) {
  append(bytes_, "\\dpx", left);
  append(bytes_, "\\dpy", top);
  append(bytes_, "\\dpxsize", width);
  append(bytes_, "\\dpysize", height);
}

void RtfFilter::add_pen(const engine::ControlLayout& control) {
  if (control.weight <= 0) {
    bytes_ += "\\dplinehollow";
    return;
  }
  append(bytes_, "\\dplinew", control.weight);
  append_rgb(bytes_, "\\dplineco", control.color);
  if (control.line_style == engine::LineStyle::Dash) bytes_ += "\\dplinedash";
  if (control.line_style == engine::LineStyle::Dot) bytes_ += "\\dplinedot";
}

std::size_t RtfFilter::font(const std::string& family) {
  return index_in(fonts_, family);
}

std::size_t RtfFilter::color(std::uint32_t rgb) {
  return index_in(colors_, rgb) + 1;
}

}  // namespace dorvo::export_
