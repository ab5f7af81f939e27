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

int inner_width(const ControlLayout& control) {
  return std::max(1, control.width - 2 * text_inset(control));
}

}  // namespace

ShapedPtr shape_in_box(std::string_view text, const ControlLayout& control, int half_points) {
  if (text.empty()) return nullptr;
  return shape(text, *control.style, half_points, control.wrap ? inner_width(control) + kRounding : 0);
}

std::shared_ptr<const std::string> held_text(std::string_view text, const ShapedPtr& shaped) {
  static const auto kEmpty = std::make_shared<const std::string>();
  if (text.empty()) return kEmpty;
  if (shaped && shaped->lines.size() == 1 && shaped->lines[0].runs.size() == 1) {
    const std::string& run = shaped->lines[0].runs[0].text;
    if (run == text) return {shaped, &run};
  }
  return std::make_shared<const std::string>(text);
}

FittedText fit_text(std::string_view text, const ControlLayout& control) {
  FittedText fitted{nullptr, control.style->half_points, control.height, false};
  if (text.empty()) return fitted;
  const Style& style = *control.style;
  const Room room{static_cast<double>(inner_width(control)), static_cast<double>(control.height)};

  fitted.shaped = shape_in_box(text, control, fitted.half_points);
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
    fitted.shaped = shape_in_box(text, control, fitted.half_points);
  }
  fitted.clipped = !fits(*fitted.shaped, fitted.half_points, room);
  return fitted;
}

}  // namespace dorvo::engine
