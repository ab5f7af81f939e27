// Finished pages made by hand, so that a filter is tested without an engine, a font or a database.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/pages.h"
#include "tests/export/test_files.h"

namespace dorvo::test {

// A shape as a font of half-em characters would give it: lines at CR LF, 0.9 em above and 0.2 below the baseline.
inline engine::ShapedPtr hand_shape(std::string_view text) {
  static const engine::Face face = [] {
    engine::Face made;
    made.family = "Arial";
    return made;
  }();
  auto shaped = std::make_shared<engine::ShapedText>();
  shaped->ascent = 0.9f;
  shaped->descent = 0.2f;
  shaped->line_height = 1.2f;
  while (true) {
    const std::size_t end = text.find("\r\n");
    engine::GlyphRun run;
    run.face = &face;
    run.text = std::string(text.substr(0, end));
    run.width = 0.5f * static_cast<float>(run.text.size());
    for (std::size_t i = 0; i < run.text.size(); ++i)
      run.glyphs.push_back({36, 0.5f, 0, 0, static_cast<std::uint32_t>(i)});
    shaped->widest = std::max(shaped->widest, run.width);
    shaped->lines.push_back({{run}, run.width});
    if (end == std::string_view::npos) return shaped;
    text.remove_prefix(end + 2);
  }
}

// Builds the pages of one report: style() and page() first, then what stands on the page. Texts are shaped by hand, or
// with real fonts where a reader is to show them.
class HandPages {
 public:
  enum class Fonts { ByHand, Real };
  explicit HandPages(Fonts fonts = Fonts::ByHand) : fonts_(fonts) {
    layout_->name = "Hand";
    layout_->sections.resize(2);
    layout_->sections[0].name = "Detail";
    layout_->sections[1].name = "grpDealer";
    layout_->sections[1].kind = engine::SectionKind::GroupHeader;
    layout_->sections[1].height = 300;
    layout_->sections[0].controls.reserve(4096);  // items point at them
    style();
  }

  engine::Style& style(engine::Align align = engine::Align::Left, int half_points = 20) {
    layout_->styles.push_back(std::make_unique<engine::Style>());
    engine::Style& made = *layout_->styles.back();
    made.align = align;
    made.half_points = half_points;
    return made;
  }

  HandPages& page(int width = 11906, int height = 16838) {
    current_ = std::make_shared<engine::Page>();
    current_->width = width;
    current_->height = height;
    current_->left_margin = 1152;
    current_->right_margin = 360;
    current_->top_margin = current_->bottom_margin = 720;
    current_->number = static_cast<int>(pages_.Count()) + 1;
    current_->layouts = {layout_};
    pages_.add(current_);
    return *this;
  }
  engine::Page& last() { return *current_; }

  HandPages& text(int left, int top, int width, int height, const std::string& text, const std::string& name = "",
                  bool border = false) {
    engine::ControlLayout& control = made(engine::ControlKind::Field, name.empty() ? text : name);
    control.style = layout_->styles.back().get();
    control.border = border;
    engine::PageItem& item = placed(control, left, top, width, height);
    item.half_points = control.style->half_points;
    item.text = std::make_shared<const std::string>(text);
    if (!text.empty())
      item.shaped =
          fonts_ == Fonts::ByHand ? hand_shape(text) : engine::shape(text, *control.style, item.half_points, width);
    return *this;
  }
  // The item placed last stands in a group header.
  void as_group_header() { current_->items.back().section = &layout_->sections[1]; }
  HandPages& line(int left, int top, int width, int height) {
    placed(made(engine::ControlKind::Line, "Line"), left, top, width, height);
    return *this;
  }
  HandPages& shape(int left, int top, int width, int height, bool filled = false, std::uint32_t fill = 0xFFFFFF) {
    engine::ControlLayout& control = made(engine::ControlKind::Shape, "Shape");
    control.filled = filled;
    control.fill = fill;
    placed(control, left, top, width, height);
    return *this;
  }

  const engine::Pages& pages() const { return pages_; }

 private:
  engine::ControlLayout& made(engine::ControlKind kind, const std::string& name) {
    std::vector<engine::ControlLayout>& controls = layout_->sections[0].controls;
    for (engine::ControlLayout& control : controls)
      if (control.kind == kind && control.name == name && control.style == layout_->styles.back().get()) return control;
    controls.emplace_back();
    controls.back().kind = kind;
    controls.back().name = name;
    return controls.back();
  }
  engine::PageItem& placed(const engine::ControlLayout& control, int left, int top, int width, int height) {
    current_->items.emplace_back();
    engine::PageItem& item = current_->items.back();
    item.control = &control;
    item.section = &layout_->sections[0];
    item.left = left;
    item.top = top;
    item.width = width;
    item.height = height;
    return item;
  }

  Fonts fonts_;
  std::shared_ptr<engine::Layout> layout_ = std::make_shared<engine::Layout>();
  std::shared_ptr<engine::Page> current_;
  engine::Pages pages_;
};

}  // namespace dorvo::test
