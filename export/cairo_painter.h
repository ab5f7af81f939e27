// The raster painter: a finished page on any Cairo surface, in its dots.
//
// Straight rules and borders are set on whole dots, at least one dot wide, so that a thin rule never fades; glyphs are
// drawn without hinting, so that a text is as wide as it is on paper. One thread.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <vector>

#include "engine/painter.h"

namespace dorvo::export_ {

// How colours are laid on: as they are, or as the amount of ink, for surfaces that have alpha only.
enum class Tone { Color, Ink };

class CairoPainter : public engine::Painter {
 public:
  // The caller keeps the context. A page's top left corner is at the context's origin.
  CairoPainter(cairo_t* context, double dots_per_twip, Tone tone);

  void glyphs(const engine::GlyphRun& run, double x, double baseline, int half_points, std::uint32_t color) override;
  void rule(double x1, double y1, double x2, double y2, double weight, engine::LineStyle style,
            std::uint32_t color) override;
  void box(const engine::Box& box, bool filled, std::uint32_t fill, double weight, engine::LineStyle style,
           std::uint32_t color) override;
  void clip(const engine::Box& box) override;
  void unclip() override;

 private:
  void set_pen(std::uint32_t color);   // text and rules
  void set_fill(std::uint32_t color);  // grounds
  // In dots.
  void fill(double left, double top, double right, double bottom);
  void stroke(double x1, double y1, double x2, double y2, double weight, engine::LineStyle style);
  double dots(double twips) const { return twips * dots_per_twip_; }

  cairo_t* context_;
  double dots_per_twip_;
  Tone tone_;
  const engine::Face* face_ = nullptr;  // as the context has it
  int half_points_ = 0;
  std::vector<cairo_glyph_t> glyphs_;
};

// An image surface of a page's size with nothing on it, and its context; fails with CannotWrite when there is no room.
class PageImage {
 public:
  PageImage(const engine::Page& page, double dots_per_inch, cairo_format_t format);
  ~PageImage();
  PageImage(const PageImage&) = delete;
  PageImage& operator=(const PageImage&) = delete;

  int width() const { return width_; }
  int height() const { return height_; }
  cairo_surface_t* surface() const { return surface_; }
  cairo_t* context() const { return context_; }
  void draw(const engine::Page& page, Tone tone);

 private:
  double dots_per_twip_;
  int width_, height_;
  cairo_surface_t* surface_;
  cairo_t* context_;
};

}  // namespace dorvo::export_
