// Finished pages made by hand, for the tests and benchmarks of painters and filters.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <utility>

#include "engine/pages.h"
#include "engine/text.h"

namespace dorvo::test {

class PageBuilder {
 public:
  explicit PageBuilder(int number = 1, int width = 11906, int height = 16838) : held_(std::make_shared<Held>()) {
    held_->layout->name = "ByHand";
    held_->section.name = "Detail";
    held_->page.number = number;
    held_->page.width = width;
    held_->page.height = height;
    held_->page.layouts.push_back(held_->layout);
  }

  engine::Style style;         // of the next text
  engine::ControlLayout look;  // of the next item: rule, fill, border
  bool fixed = false;          // whether the next item is of the fixed layer

  engine::PageItem& text(const std::string& text, int left, int top, int width, int height,
                         engine::ControlKind kind = engine::ControlKind::Field) {
    look.style = &held_->styles.emplace_back(style);
    engine::PageItem& item = add(kind, left, top, width, height);
    item.text = std::make_shared<std::string>(text);
    item.half_points = style.half_points;
    if (!text.empty())
      item.shaped = engine::shape(text, style, style.half_points, width - 2 * engine::text_inset(*item.control));
    return item;
  }
  engine::PageItem& line(int left, int top, int width, int height) {
    return add(engine::ControlKind::Line, left, top, width, height);
  }
  engine::PageItem& shape(int left, int top, int width, int height) {
    return add(engine::ControlKind::Shape, left, top, width, height);
  }

  // The page, with whatever is added to it later too.
  std::shared_ptr<engine::Page> page() const { return {held_, &held_->page}; }

 private:
  // The page with what its items point into.
  struct Held {
    engine::Page page;
    std::shared_ptr<engine::Layout> layout = std::make_shared<engine::Layout>();
    engine::SectionLayout section;
    std::deque<engine::ControlLayout> controls;
    std::deque<engine::Style> styles;
  };

  engine::PageItem& add(engine::ControlKind kind, int left, int top, int width, int height) {
    engine::ControlLayout& control = held_->controls.emplace_back(look);
    control.kind = kind;
    control.name = "c" + std::to_string(held_->page.items.size());
    engine::PageItem& item = held_->page.items.emplace_back();
    item.control = &control;
    item.section = &held_->section;
    item.left = left;
    item.top = top;
    item.width = width;
    item.height = height;
    item.fixed = fixed;
    return item;
  }

  std::shared_ptr<Held> held_;
};

}  // namespace dorvo::test
