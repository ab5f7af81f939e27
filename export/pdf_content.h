// A page's drawing as a PDF content stream.
//
// The stream counts in twips from the bottom left corner of the page; text is set at whole twips. It stands in q and Q
// of its own, so that several streams may make up one page.
#pragma once

#include <string>

#include "engine/painter.h"
#include "export/pdf_fonts.h"

namespace dorvo::export_ {

class PdfContent : public engine::Painter {
 public:
  // `tagged`: text in coded fonts carries its characters beside it, for readers that would put marks and letters in
  // the order in which they stand. `use` learns which characters of which faces the stream shows.
  PdfContent(int page_height, bool tagged, PdfFontUse& use);

  void glyphs(const engine::GlyphRun& run, double x, double baseline, int half_points, std::uint32_t color) override;
  void rule(double x1, double y1, double x2, double y2, double weight, engine::LineStyle style,
            std::uint32_t color) override;
  void box(const engine::Box& box, bool filled, std::uint32_t fill, double weight, engine::LineStyle style,
           std::uint32_t color) override;
  void clip(const engine::Box& box) override;
  void unclip() override;

  // The whole stream; nothing is drawn after it.
  std::string take();

 private:
  enum class Open { Nothing, Text, Rules };
  // What q saves and Q restores.
  struct State {
    std::string_view font;
    const engine::Face* latin_face = nullptr;
    LatinFont* latin = nullptr;
    int half_points = 0;
    std::uint32_t fill = 0;
    std::uint32_t stroke = 0;
    double weight = -1;
    engine::LineStyle line = engine::LineStyle::Solid;
  };

  void open(Open what);
  void number(long value);
  void point(double x, double y);
  void set_color(std::uint32_t& now, std::uint32_t wanted, const char* operation);
  void set_rule(double weight, engine::LineStyle style, std::uint32_t color);
  void set_font(std::string_view resource, int half_points);
  void move_to(double x, double baseline);
  bool show_latin(const engine::GlyphRun& run, double x, double baseline, int half_points);
  void show_coded(const engine::GlyphRun& run, double x, double baseline, int half_points);
  void rectangle(const engine::Box& box);

  int page_height_;
  bool tagged_;
  PdfFontUse& use_;
  std::string out_;
  std::string latin_;  // the codes of the run at hand
  Open open_ = Open::Nothing;
  State state_, saved_;
  long pen_x_ = 0, pen_y_ = 0;  // where the last text started, within its BT
};

}  // namespace dorvo::export_
