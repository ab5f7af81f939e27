#include "engine/fit.h"

#include <algorithm>
#include <cmath>

namespace dorvo::engine {
namespace {

constexpr int kSmallest = 12;  // half points
constexpr int kRounding = 1;   // twips that nobody sees

float widest_word(std::string_view text, const Style& style) {
  constexpr std::string_view kBetween = " \t\r\n";
  float widest = 0;
  for (std::size_t at = text.find_first_not_of(kBetween); at != std::string_view::npos;) {
    const std::size_t end = std::min(text.find_first_of(kBetween, at), text.size());
    widest = std::max(widest, shape(text.substr(at, end - at), style, kSmallest, 0)->widest);
    at = text.find_first_not_of(kBetween, end);
  }
  return widest;
}

struct Room {
  double width;
  double height;
};

bool fits(const ShapedText& shaped, int half_points, const Room& room) {
  return twips_of(shaped.widest, half_points) <= room.width + kRounding &&
         text_height(shaped, half_points) <= room.height + kRounding;
}

}  // namespace

FittedText fit_text(std::string_view text, const ControlLayout& control) {
  FittedText fitted{nullptr, control.style->half_points, control.height, false};
  if (text.empty()) return fitted;
  const Style& style = *control.style;
  const int width = std::max(1, control.width - 2 * text_inset(control));
  const Room room{static_cast<double>(width), static_cast<double>(control.height)};
  const int wrap_at = control.wrap ? width + kRounding : 0;

  fitted.shaped = shape(text, style, fitted.half_points, wrap_at);
  if (control.grow) {
    fitted.height =
        std::max(fitted.height, static_cast<int>(std::ceil(text_height(*fitted.shaped, fitted.half_points))));
    fitted.clipped = twips_of(fitted.shaped->widest, fitted.half_points) > room.width + kRounding;
    return fitted;
  }
  const auto good = [&] {
    if (!fits(*fitted.shaped, fitted.half_points, room)) return false;
    const bool may_break = control.shrink && control.wrap && fitted.shaped->lines.size() > 1;
    return !may_break || twips_of(widest_word(text, style), fitted.half_points) <= room.width + kRounding;
  };
  while (control.shrink && fitted.half_points > kSmallest && !good()) {
    --fitted.half_points;
    fitted.shaped = shape(text, style, fitted.half_points, wrap_at);
  }
  fitted.clipped = !fits(*fitted.shaped, fitted.half_points, room);
  return fitted;
}

}  // namespace dorvo::engine
