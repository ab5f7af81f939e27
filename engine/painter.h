// One way to draw a finished page, for every medium.
//
// paint() walks the items; a Painter is a medium (PDF, a Cairo surface). What is previewed is what prints.
#pragma once

#include <cstdint>

#include "engine/pages.h"

namespace dorvo::engine {

struct Box {
  double left = 0, top = 0, width = 0, height = 0;  // twips on the page
};

class Painter {
 public:
  virtual ~Painter() = default;
  // One run of glyphs whose pen starts at (x, baseline), at a size in half points.
  virtual void glyphs(const GlyphRun& run, double x, double baseline, int half_points, std::uint32_t color) = 0;
  virtual void rule(double x1, double y1, double x2, double y2, double weight, LineStyle style,
                    std::uint32_t color) = 0;
  virtual void box(const Box& box, bool filled, std::uint32_t fill, double weight, LineStyle style,
                   std::uint32_t color) = 0;
  // What is drawn until unclip() shows inside the box only. Never nested.
  virtual void clip(const Box& box) = 0;
  virtual void unclip() = 0;
};

// The fixed layer (labels, rules and shapes as the layout has them), the rest, or both in print order.
enum class Layer { Fixed, Data, All };

void paint(const Page& page, Painter& painter, Layer layer = Layer::All);

// Where the text of an item stands: one place decides it for every painter and filter.
struct LinePlace {
  const TextLine* line = nullptr;
  double x = 0;         // left end, twips on the page
  double baseline = 0;  // twips on the page
};
void place_lines(const PageItem& item, std::vector<LinePlace>& places);
// Of a text that is cut at its box, a line that would show no more than the tips of its letters is left out.
bool shows(const LinePlace& place, const LinePlace& first, const PageItem& item);

}  // namespace dorvo::engine
