#include "export/pdf_content.h"

#include <algorithm>
#include <cmath>

#include "engine/utf8.h"
#include "export/win_ansi.h"

namespace dorvo::export_ {
namespace {

using engine::GlyphRun;
using engine::LineStyle;

// Appends the text in the single-byte Latin code, as the inside of a string. False when a character has no code; what
// was appended is then of no use.
bool put_latin(std::string& out, const std::string& text, CodeSet& codes) {
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = static_cast<unsigned char>(text[at]);
    const std::uint8_t code = byte >= 0x20 && byte < 0x7F ? ++at, byte : to_win_ansi(engine::next_char(text, at));
    if (code == 0) return false;
    codes.set(code);
    if (code == '(' || code == ')' || code == '\\') out += '\\';
    out += static_cast<char>(code);
  }
  return true;
}

// The characters of each glyph, so that read in drawn order they are the text of the run: a cluster's characters go to
// its glyphs one by one, the last glyph takes the rest, and a glyph for which none is left takes none.
class Characters {
 public:
  explicit Characters(const GlyphRun& run) : run_(run) {}

  std::string_view of(std::size_t index) {
    const std::uint32_t cluster = run_.glyphs[index].cluster;
    if (index == 0 || cluster != run_.glyphs[index - 1].cluster) {
      at_ = cluster;
      stop_ = run_.text.size();
      for (const engine::Glyph& glyph : run_.glyphs)
        if (glyph.cluster > cluster && glyph.cluster < stop_) stop_ = glyph.cluster;
    }
    const bool last = index + 1 == run_.glyphs.size() || run_.glyphs[index + 1].cluster != cluster;
    const std::size_t from = at_;
    if (last)
      at_ = stop_;
    else if (at_ < stop_)
      engine::next_char(run_.text, at_);
    return std::string_view(run_.text).substr(from, at_ - from);
  }

 private:
  const GlyphRun& run_;
  std::size_t at_ = 0, stop_ = 0;
};

}  // namespace

PdfContent::PdfContent(int page_height, bool tagged, PdfFontUse& use)
    : page_height_(page_height), tagged_(tagged), use_(use) {
  out_ = "q .05 0 0 .05 0 0 cm\n";
}

std::string PdfContent::take() {
  open(Open::Nothing);
  return std::move(out_ += "Q\n");
}

void PdfContent::open(Open what) {
  if (what == open_) return;
  if (open_ == Open::Text) out_ += "ET\n";
  if (open_ == Open::Rules) out_ += "S\n";
  if (what == Open::Text) out_ += "BT\n";
  open_ = what;
  pen_x_ = pen_y_ = 0;
}

void PdfContent::number(long value) {
  put_number(out_, value);
  out_ += ' ';
}

void PdfContent::point(double x, double y) {
  number(std::lround(x));
  number(std::lround(page_height_ - y));
}

void PdfContent::set_color(std::uint32_t& now, std::uint32_t wanted, const char* operation) {
  if (now == wanted) return;
  if (open_ == Open::Rules) open(Open::Nothing);
  now = wanted;
  for (const int shift : {16, 8, 0}) {
    put_number(out_, (wanted >> shift & 0xFF) / 255.0, 3);
    out_ += ' ';
  }
  out_ += operation;
}

void PdfContent::set_rule(double weight, LineStyle style, std::uint32_t color) {
  if (weight == state_.weight && style == state_.line && color == state_.stroke) return;
  open(Open::Nothing);
  set_color(state_.stroke, color, "RG\n");
  if (weight != state_.weight) {
    put_number(out_, weight, 1);
    out_ += " w\n";
  }
  if (style != state_.line || (style != LineStyle::Solid && weight != state_.weight)) {
    // Of the weight: dashes of six with gaps of four, dots as wide as high.
    out_ += '[';
    if (style != LineStyle::Solid) put_number(out_, weight * (style == LineStyle::Dash ? 6 : 1), 1);
    if (style == LineStyle::Dash) put_number(out_ += ' ', weight * 4, 1);
    if (style == LineStyle::Dot) put_number(out_ += ' ', weight * 2, 1);
    out_ += "]0 d\n";
  }
  state_.weight = weight;
  state_.line = style;
}

void PdfContent::set_font(std::string_view resource, int half_points) {
  if (resource == state_.font && half_points == state_.half_points) return;
  state_.font = resource;
  state_.half_points = half_points;
  out_.append("/").append(resource) += ' ';
  number(half_points * 10L);
  out_ += "Tf\n";
}

void PdfContent::move_to(double x, double baseline) {
  const long to_x = std::lround(x), to_y = std::lround(page_height_ - baseline);
  number(to_x - pen_x_);
  number(to_y - pen_y_);
  out_ += "Td";
  pen_x_ = to_x;
  pen_y_ = to_y;
}

void PdfContent::glyphs(const GlyphRun& run, double x, double baseline, int half_points, std::uint32_t color) {
  if (run.glyphs.empty()) return;
  open(Open::Text);
  set_color(state_.fill, color, "rg\n");
  if (!show_latin(run, x, baseline, half_points)) show_coded(run, x, baseline, half_points);
}

bool PdfContent::show_latin(const GlyphRun& run, double x, double baseline, int half_points) {
  latin_.clear();
  CodeSet codes;
  if (!put_latin(latin_, run.text, codes)) return false;
  if (state_.latin_face != run.face) {
    state_.latin = &use_.latin(*run.face);
    state_.latin_face = run.face;
  }
  state_.latin->codes |= codes;
  set_font(state_.latin->resource, half_points);
  move_to(x, baseline);
  out_.append("(").append(latin_).append(")Tj\n");
  return true;
}

namespace {

// How far the pen goes on behind a glyph. Readers take a gap for a blank, so that a mark which was moved back onto its
// letter takes it forward again, to a tenth of an em; the rest is made good before the next glyph.
float code_width(const engine::Glyph& glyph) {
  return glyph.dx == 0 ? glyph.advance : std::round(std::max(0.0f, glyph.advance - glyph.dx) * 10) / 10;
}

}  // namespace

void PdfContent::show_coded(const GlyphRun& run, double x, double baseline, int half_points) {
  if (tagged_) {
    out_ += "/Span<</ActualText<FEFF";
    put_utf16(out_, run.text);
    out_ += ">>>BDC\n";
  }
  Characters characters(run);
  double lead = 0;  // how far the reader's pen is ahead of the shaper's, em units
  float rise = 0;
  bool in_string = false;
  const auto end_string = [&] {
    if (in_string) out_ += ">]TJ\n";
    in_string = false;
  };
  for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
    const engine::Glyph& glyph = run.glyphs[i];
    const float width = code_width(glyph);
    const PdfFontUse::Code code = use_.code(*run.face, {glyph.id, width, std::string(characters.of(i))});
    if (code.font->resource != state_.font || glyph.dy != rise) end_string();
    set_font(code.font->resource, half_points);
    if (i == 0) move_to(x, baseline);
    if (glyph.dy != rise) {
      put_number(out_ += ' ', engine::twips_of(glyph.dy, half_points), 1);
      out_ += " Ts";
      rise = glyph.dy;
    }
    if (!in_string) out_ += "[<";
    in_string = true;
    if (const long back = std::lround((lead - glyph.dx) * 1000); back != 0) {
      put_number(out_ += '>', back);
      out_ += '<';
    }
    put_hex(out_, code.code, 2);
    lead = glyph.dx + width - glyph.advance;
  }
  end_string();
  if (rise != 0) out_ += "0 Ts\n";
  if (tagged_) out_ += "EMC\n";
}

void PdfContent::rule(double x1, double y1, double x2, double y2, double weight, LineStyle style, std::uint32_t color) {
  if (weight <= 0) return;
  set_rule(weight, style, color);
  open(Open::Rules);
  point(x1, y1);
  out_ += "m ";
  point(x2, y2);
  out_ += "l\n";
}

void PdfContent::rectangle(const engine::Box& box) {
  point(box.left, box.top + box.height);
  number(std::lround(box.width));
  number(std::lround(box.height));
  out_ += "re ";
}

void PdfContent::box(const engine::Box& box, bool filled, std::uint32_t fill, double weight, LineStyle style,
                     std::uint32_t color) {
  if (filled) {
    open(Open::Nothing);
    set_color(state_.fill, fill, "rg\n");
    rectangle(box);
    out_ += "f\n";
  }
  if (weight <= 0) return;
  set_rule(weight, style, color);
  open(Open::Rules);
  rectangle(box);
}

void PdfContent::clip(const engine::Box& box) {
  open(Open::Nothing);
  saved_ = state_;
  out_ += "q ";
  rectangle(box);
  out_ += "W n\n";
}

void PdfContent::unclip() {
  open(Open::Nothing);
  out_ += "Q\n";
  state_ = saved_;
}

}  // namespace dorvo::export_
