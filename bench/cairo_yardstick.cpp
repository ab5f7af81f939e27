#include "bench/cairo_yardstick.h"

#include <cairo-ft.h>
#include <cairo-pdf.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <map>

#include "engine/painter.h"

namespace dorvo::bench {
namespace {

constexpr double kPoint = 1 / 20.0;  // twips

cairo_font_face_t* face_of(const engine::Face& face) {
  static std::map<const engine::Face*, cairo_font_face_t*> faces;
  static FT_Library library = nullptr;
  if (!library) FT_Init_FreeType(&library);
  cairo_font_face_t*& known = faces[&face];
  if (!known) {
    FT_Face loaded = nullptr;
    FT_New_Face(library, face.file.c_str(), face.index, &loaded);
    known = cairo_ft_font_face_create_for_ft_face(loaded, FT_LOAD_NO_HINTING);
  }
  return known;
}

class Straight : public engine::Painter {
 public:
  explicit Straight(cairo_t* context) : context_(context) {}

  void glyphs(const engine::GlyphRun& run, double x, double baseline, int half_points, std::uint32_t color) override {
    set_color(color);
    if (run.face != face_) cairo_set_font_face(context_, face_of(*run.face));
    if (half_points != half_points_) cairo_set_font_size(context_, half_points / 2.0);
    face_ = run.face;
    half_points_ = half_points;
    glyphs_.clear();
    for (const engine::Glyph& glyph : run.glyphs) {
      glyphs_.push_back({glyph.id, x * kPoint, baseline * kPoint});
      x += engine::twips_of(glyph.advance, half_points);
    }
    cairo_show_glyphs(context_, glyphs_.data(), static_cast<int>(glyphs_.size()));
  }
  void rule(double x1, double y1, double x2, double y2, double weight, engine::LineStyle,
            std::uint32_t color) override {
    set_color(color);
    cairo_set_line_width(context_, weight * kPoint);
    cairo_move_to(context_, x1 * kPoint, y1 * kPoint);
    cairo_line_to(context_, x2 * kPoint, y2 * kPoint);
    cairo_stroke(context_);
  }
  void box(const engine::Box& box, bool filled, std::uint32_t fill, double weight, engine::LineStyle,
           std::uint32_t color) override {
    cairo_rectangle(context_, box.left * kPoint, box.top * kPoint, box.width * kPoint, box.height * kPoint);
    if (filled) {
      set_color(fill);
      cairo_fill_preserve(context_);
    }
    set_color(color);
    cairo_set_line_width(context_, weight * kPoint);
    cairo_stroke(context_);
  }
  void clip(const engine::Box& box) override {
    cairo_save(context_);
    cairo_rectangle(context_, box.left * kPoint, box.top * kPoint, box.width * kPoint, box.height * kPoint);
    cairo_clip(context_);
  }
  void unclip() override {
    cairo_restore(context_);
    face_ = nullptr;
    half_points_ = 0;
  }

 private:
  void set_color(std::uint32_t color) {
    cairo_set_source_rgb(context_, (color >> 16 & 0xFF) / 255.0, (color >> 8 & 0xFF) / 255.0, (color & 0xFF) / 255.0);
  }

  cairo_t* context_;
  const engine::Face* face_ = nullptr;
  int half_points_ = 0;
  std::vector<cairo_glyph_t> glyphs_;
};

cairo_status_t append(void* to, const unsigned char* bytes, unsigned length) {
  auto& out = *static_cast<std::vector<unsigned char>*>(to);
  out.insert(out.end(), bytes, bytes + length);
  return CAIRO_STATUS_SUCCESS;
}

}  // namespace

std::vector<unsigned char> cairo_pdf(const std::vector<engine::PagePtr>& pages) {
  std::vector<unsigned char> out;
  cairo_surface_t* surface = cairo_pdf_surface_create_for_stream(append, &out, 595, 842);
  cairo_t* context = cairo_create(surface);
  for (const engine::PagePtr& page : pages) {
    cairo_pdf_surface_set_size(surface, page->width * kPoint, page->height * kPoint);
    Straight painter(context);
    engine::paint(*page, painter);
    cairo_show_page(context);
  }
  cairo_destroy(context);
  cairo_surface_finish(surface);
  cairo_surface_destroy(surface);
  return out;
}

}  // namespace dorvo::bench
