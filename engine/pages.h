// Finished pages: what preview, printer and every export filter read, and nothing else.
//
// A page holds its items in print order, with positions in twips from the top left corner of the sheet. Texts
// are shaped once. Items point into the layout, which the page keeps alive.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/layout.h"
#include "engine/text.h"

namespace dorvo::engine {

struct PageItem {
  const ControlLayout* control = nullptr;  // name, kind, style, rule; owned by one of the page's layouts
  const SectionLayout* section = nullptr;
  int left = 0;
  int top = 0;
  int width = 0;  // of a line: to its end point, may be negative
  int height = 0;
  std::shared_ptr<const std::string> text;  // Field, Label: as the box holds it (line ends CR LF); else none
  ShapedPtr shaped;                         // none for an empty text
  int half_points = 0;                      // size after shrinking
  bool clipped = false;                     // the text is cut at the box
  bool fixed = false;                       // stands as the layout has it: part of the fixed layer

  ControlKind kind() const { return control->kind; }
  const std::string& name() const { return control->name; }
  std::string_view string() const { return text ? std::string_view(*text) : std::string_view(); }
};

struct Page {
  int number = 1;
  int width = 11906;  // twips, as the sheet is read
  int height = 16838;
  int left_margin = 0;  // twips; items may reach into them
  int right_margin = 0;
  int top_margin = 0;
  int bottom_margin = 0;
  std::vector<PageItem> items;
  // Equal keys with equal layouts: the fixed items of the pages are the same at the same places. 0: no fixed layer.
  std::uint64_t fixed_key = 0;
  std::vector<LayoutPtr> layouts;
};

using PagePtr = std::shared_ptr<const Page>;

// Takes pages as they are completed, in order.
using PageSink = std::function<void(const PagePtr&)>;

// The page collection of a report after its run.
class Pages {
 public:
  std::size_t Count() const { return pages_.size(); }
  const Page& operator[](std::size_t index) const { return *pages_[index]; }
  const PagePtr& at(std::size_t index) const { return pages_.at(index); }
  auto begin() const { return pages_.begin(); }
  auto end() const { return pages_.end(); }
  void add(PagePtr page) { pages_.push_back(std::move(page)); }
  void clear() { pages_.clear(); }

 private:
  std::deque<PagePtr> pages_;
};

}  // namespace dorvo::engine
