// Shaped text: which glyphs of which faces stand where, independent of size.
//
// Faces are process-wide and never unloaded. Families are chosen by FontConfig; the metric-compatible free
// families serve Arial, Times New Roman and Courier New, and characters that a face has not are taken from a
// fallback face, Devanagari first. Ligatures and kerning are off, so that a box's text keeps its width in every
// format. Shaped texts are shared and constant; a bounded cache keeps those in use. One thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/layout.h"

namespace dorvo::engine {

// One face of one font file. Metrics are in em units (1.0 is the font size).
struct Face {
  std::string file;
  int index = 0;           // of the face in a collection
  std::string family;      // as the layout asked for it ("Arial"), or the fallback's own
  std::string own_family;  // what serves it ("Liberation Sans")
  std::string postscript_name;
  bool bold = false;
  bool italic = false;
  double ascent = 0;   // above the baseline, positive
  double descent = 0;  // below the baseline, positive
  double line_gap = 0;
  double units_per_em = 1000;
  int id = 0;  // counts from 0 in order of first use in the process; never a source of output order
};

struct Glyph {
  std::uint16_t id = 0;
  float advance = 0;  // em units
  float dx = 0;       // offset from the pen, em units
  float dy = 0;
  std::uint32_t cluster = 0;  // byte offset of its characters in the run's text
};

// Glyphs of one face, left to right as they are drawn.
struct GlyphRun {
  const Face* face = nullptr;
  std::string text;  // the characters that it shows, UTF-8, in reading order
  std::vector<Glyph> glyphs;
  float width = 0;  // em units
};

struct TextLine {
  std::vector<GlyphRun> runs;
  float width = 0;  // em units
};

struct ShapedText {
  std::vector<TextLine> lines;
  float ascent = 0;  // of a line, em units: the largest of the faces in use
  float descent = 0;
  float line_height = 0;  // baseline to baseline, em units
  float widest = 0;       // em units
};

using ShapedPtr = std::shared_ptr<const ShapedText>;

// Shapes `text` in the style's face. Lines end at CR LF, CR or LF; with `width` above 0 (twips) a line wraps at
// word ends so that it fits that width at `half_points`, and within a word only where the word alone is too wide.
// width 0: no wrapping. `half_points` only decides the wrapping; the result is in em units.
ShapedPtr shape(std::string_view text, const Style& style, int half_points, int width);

// Twips from em units at a size in half points.
inline double twips_of(double em, int half_points) {
  return em * half_points * 10.0;
}

// What a box keeps free left and right of its text, twips: room for its border, nothing without one. A box's text is
// shaped to its width less this on both sides.
int text_inset(const ControlLayout& control);

// Of all lines, from the top of the first to the bottom of the last, twips.
double text_height(const ShapedText& shaped, int half_points);

}  // namespace dorvo::engine
