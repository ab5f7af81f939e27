#include "export/cairo_painter.h"

#include <cairo-ft.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "value/failure.h"

namespace dorvo::export_ {
namespace {

using engine::Face;
using engine::LineStyle;

constexpr double kTwipsPerInch = 1440;

// The faces that were drawn with so far; like the engine's own they stay for the life of the process.
cairo_font_face_t* cairo_face(const Face& face) {
  static std::map<const Face*, cairo_font_face_t*> faces;
  static FT_Library const kLibrary = [] {
    FT_Library library = nullptr;
    FT_Init_FreeType(&library);
    return library;
  }();
  cairo_font_face_t*& known = faces[&face];
  if (known) return known;
  FT_Face loaded = nullptr;
  if (FT_New_Face(kLibrary, face.file.c_str(), face.index, &loaded) != 0)
    throw value::Failure(value::Error::CannotWrite, "Font file \"" + face.file + "\" cannot be drawn with");
  return known = cairo_ft_font_face_create_for_ft_face(loaded, FT_LOAD_NO_HINTING);
}

double red(std::uint32_t color) {
  return (color >> 16 & 0xFF) / 255.0;
}
double green(std::uint32_t color) {
  return (color >> 8 & 0xFF) / 255.0;
}
double blue(std::uint32_t color) {
  return (color & 0xFF) / 255.0;
}
double ink(std::uint32_t color) {
  return 1 - (0.30 * red(color) + 0.59 * green(color) + 0.11 * blue(color));
}
constexpr double kFaintest = 0.1;  // ink of the palest text that still shows

void set_options(cairo_t* context) {
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_set_font_options(context, options);
  cairo_font_options_destroy(options);
}

}  // namespace

CairoPainter::CairoPainter(cairo_t* context, double dots_per_twip, Tone tone)
    : context_(context), dots_per_twip_(dots_per_twip), tone_(tone) {
  set_options(context);
}

void CairoPainter::set_fill(std::uint32_t color) {
  if (tone_ == Tone::Color) return cairo_set_source_rgb(context_, red(color), green(color), blue(color));
  cairo_set_source_rgba(context_, 0, 0, 0, ink(color));
}

void CairoPainter::set_pen(std::uint32_t color) {
  if (tone_ == Tone::Color) return set_fill(color);
  // Grey text is ink too, or it would be lost where a dot is black or white.
  cairo_set_source_rgba(context_, 0, 0, 0, ink(color) > kFaintest ? 1 : 0);
}

void CairoPainter::glyphs(const engine::GlyphRun& run, double x, double baseline, int half_points,
                          std::uint32_t color) {
  if (run.glyphs.empty()) return;
  if (run.face != face_) cairo_set_font_face(context_, cairo_face(*run.face));
  if (half_points != half_points_) cairo_set_font_size(context_, dots(engine::twips_of(1, half_points)));
  face_ = run.face;
  half_points_ = half_points;
  set_pen(color);
  glyphs_.clear();
  for (const engine::Glyph& glyph : run.glyphs) {
    glyphs_.push_back({glyph.id, dots(x + engine::twips_of(glyph.dx, half_points)),
                       dots(baseline - engine::twips_of(glyph.dy, half_points))});
    x += engine::twips_of(glyph.advance, half_points);
  }
  cairo_show_glyphs(context_, glyphs_.data(), static_cast<int>(glyphs_.size()));
}

void CairoPainter::fill(double left, double top, double right, double bottom) {
  cairo_set_antialias(context_, CAIRO_ANTIALIAS_NONE);
  cairo_rectangle(context_, left, top, right - left, bottom - top);
  cairo_fill(context_);
}

void CairoPainter::stroke(double x1, double y1, double x2, double y2, double weight, LineStyle style) {
  const double width = std::max(1.0, std::round(weight));
  // As long as in every other medium, whatever the width was rounded to.
  const double dash[] = {weight * (style == LineStyle::Dash ? 6 : 1), weight * (style == LineStyle::Dash ? 4 : 2)};
  cairo_set_antialias(context_, CAIRO_ANTIALIAS_DEFAULT);
  cairo_set_dash(context_, dash, style == LineStyle::Solid ? 0 : 2, 0);
  cairo_set_line_width(context_, width);
  cairo_move_to(context_, x1, y1);
  cairo_line_to(context_, x2, y2);
  cairo_stroke(context_);
}

void CairoPainter::rule(double x1, double y1, double x2, double y2, double weight, LineStyle style,
                        std::uint32_t color) {
  if (weight <= 0) return;
  set_pen(color);
  const bool upright = x1 == x2, level = y1 == y2;
  if (!upright && !level) return stroke(dots(x1), dots(y1), dots(x2), dots(y2), dots(weight), style);

  const double width = std::max(1.0, std::round(dots(weight)));
  const double across = std::round(dots(level ? y1 : x1) - width / 2);
  const double from = std::round(dots(level ? std::min(x1, x2) : std::min(y1, y2)));
  const double to = std::round(dots(level ? std::max(x1, x2) : std::max(y1, y2)));
  if (style != LineStyle::Solid) {
    const double middle = across + width / 2;
    const double thick = dots(weight);
    return level ? stroke(from, middle, to, middle, thick, style) : stroke(middle, from, middle, to, thick, style);
  }
  if (level)
    fill(from, across, to, across + width);
  else
    fill(across, from, across + width, to);
}

void CairoPainter::box(const engine::Box& box, bool filled, std::uint32_t fill_color, double weight, LineStyle style,
                       std::uint32_t color) {
  const double right = box.left + box.width, bottom = box.top + box.height;
  if (filled) {
    set_fill(fill_color);
    // Paper's own colour covers what lies below it, also where only ink is counted.
    cairo_set_operator(context_, CAIRO_OPERATOR_SOURCE);
    fill(std::round(dots(box.left)), std::round(dots(box.top)), std::round(dots(right)), std::round(dots(bottom)));
    cairo_set_operator(context_, CAIRO_OPERATOR_OVER);
  }
  if (weight <= 0) return;
  const double half = weight / 2;  // the sides meet in full corners
  rule(box.left - half, box.top, right + half, box.top, weight, style, color);
  rule(box.left - half, bottom, right + half, bottom, weight, style, color);
  rule(box.left, box.top - half, box.left, bottom + half, weight, style, color);
  rule(right, box.top - half, right, bottom + half, weight, style, color);
}

void CairoPainter::clip(const engine::Box& box) {
  const double left = std::round(dots(box.left)), top = std::round(dots(box.top));
  cairo_save(context_);
  cairo_rectangle(context_, left, top, std::round(dots(box.left + box.width)) - left,
                  std::round(dots(box.top + box.height)) - top);
  cairo_clip(context_);
}

void CairoPainter::unclip() {
  cairo_restore(context_);
  face_ = nullptr;  // the context has again what it had before
  half_points_ = 0;
}

PageImage::PageImage(const engine::Page& page, double dots_per_inch, cairo_format_t format)
    : dots_per_twip_(dots_per_inch / kTwipsPerInch),
      width_(static_cast<int>(std::lround(page.width * dots_per_twip_))),
      height_(static_cast<int>(std::lround(page.height * dots_per_twip_))),
      surface_(cairo_image_surface_create(format, width_, height_)),
      context_(cairo_create(surface_)) {
  const cairo_status_t status = cairo_status(context_);
  if (status == CAIRO_STATUS_SUCCESS) return;
  cairo_destroy(context_);
  cairo_surface_destroy(surface_);
  throw value::Failure(value::Error::CannotWrite, "Page " + std::to_string(page.number) + " cannot be drawn at " +
                                                      std::to_string(width_) + " by " + std::to_string(height_) +
                                                      " dots: " + cairo_status_to_string(status));
}

PageImage::~PageImage() {
  cairo_destroy(context_);
  cairo_surface_destroy(surface_);
}

void PageImage::draw(const engine::Page& page, Tone tone) {
  CairoPainter painter(context_, dots_per_twip_, tone);
  engine::paint(page, painter);
}

}  // namespace dorvo::export_
