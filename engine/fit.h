// Fitting a text into its box: wrapping, shrinking, growing, and whether it had to be cut.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "engine/layout.h"
#include "engine/text.h"

namespace dorvo::engine {

struct FittedText {
  ShapedPtr shaped;  // none for an empty text
  int half_points = 0;
  int height = 0;        // of the box, twips: that of the layout, or more when it grows
  bool clipped = false;  // the text is larger than the box
};

// A Label's or Field's text in its box. A box that grows keeps its size of type; one that shrinks goes down in half
// points, to 6 pt at the smallest, until the text fits without a word being broken.
FittedText fit_text(std::string_view text, const ControlLayout& control);

// The shape that fit_text() chose, from the size that it chose; none for an empty text.
ShapedPtr shape_in_box(std::string_view text, const ControlLayout& control, int half_points);

// A text to be held beside its shape, which mostly has it already.
std::shared_ptr<const std::string> held_text(std::string_view text, const ShapedPtr& shaped);

}  // namespace dorvo::engine
