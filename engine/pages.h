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
#include <utility>
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

// The sheet of a page, and all else of it but its items.
struct Sheet {
  int number = 1;
  int width = 11906;  // twips, as the sheet is read
  int height = 16838;
  int left_margin = 0;  // twips; items may reach into them
  int right_margin = 0;
  int top_margin = 0;
  int bottom_margin = 0;
  // Equal keys with equal layouts: the fixed items of the pages are the same at the same places. 0: no fixed layer.
  std::uint64_t fixed_key = 0;
  std::vector<LayoutPtr> layouts;
};

struct Page : Sheet {
  std::vector<PageItem> items;
};

using PagePtr = std::shared_ptr<const Page>;

// Takes pages as they are completed, in order.
using PageSink = std::function<void(const PagePtr&)>;

struct PackedPage;

// The page collection of a report after its run. A copy shares the pages.
//
// The first pages stand ready. Of a long document the later ones are kept packed, without shapes, and are made ready
// again when they are read, so that a register of thousands of pages needs little memory.
class Pages {
 public:
  static constexpr std::size_t kReady = 32;     // pages that are never packed
  static constexpr std::size_t kUnpacked = 16;  // packed pages that stand ready at a time

  std::size_t Count() const { return ready_.size() + packed_.size(); }
  PagePtr at(std::size_t index) const;
  const Sheet& sheet(std::size_t index) const;  // without making the page ready
  // Good until kUnpacked other pages have been read; at() gives one to hold.
  const Page& operator[](std::size_t index) const { return *at(index); }

  class Iterator {
   public:
    Iterator(const Pages& pages, std::size_t index) : pages_(&pages), index_(index) {}
    PagePtr operator*() const { return pages_->at(index_); }
    Iterator& operator++() {
      ++index_;
      return *this;
    }
    friend bool operator==(const Iterator&, const Iterator&) = default;

   private:
    const Pages* pages_;
    std::size_t index_;
  };
  Iterator begin() const { return {*this, 0}; }
  Iterator end() const { return {*this, Count()}; }

  // A page as it is.
  void add(PagePtr page);
  // A page of a run, whose shapes follow from its texts and controls: packed when the document is long.
  void keep(PagePtr page);
  void clear();

 private:
  std::deque<PagePtr> ready_;
  std::deque<std::shared_ptr<const PackedPage>> packed_;
  mutable std::deque<std::pair<std::size_t, PagePtr>> unpacked_;  // those read last
};

}  // namespace dorvo::engine
