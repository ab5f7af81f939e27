// One pass of one section, laid out but not yet on a page: what the run loop hands to the page flow.
//
// Positions count from the band's own top left corner. Private to the engine.
#pragma once

#include <vector>

#include "engine/pages.h"

namespace dorvo::engine {

// What lies between two page breaks of a band.
struct Segment {
  int from = 0;
  int to = 0;
  bool begins_page = false;  // the page on which it stands counts as begun; not so for empty room behind a break
};

// A stretch that is not cut across two pages when it can be helped: a row of a sub-report.
struct Stretch {
  int from = 0;
  int to = 0;
};

struct Band {
  const SectionLayout* section = nullptr;
  bool visible = false;  // a hidden section takes no room
  int height = 0;
  std::vector<PageItem> items;     // in print order
  std::vector<Segment> segments;   // top to bottom, at least one when visible
  std::vector<Stretch> stretches;  // may lie inside one another
  std::vector<LayoutPtr> layouts;  // of sub-reports whose controls the items show

  void start(const SectionLayout& of) {
    section = &of;
    visible = false;
    height = 0;
    items.clear();
    segments.clear();
    stretches.clear();
    layouts.clear();
  }
};

// Where bands go: pages, or the frame of a sub-report.
class BandTarget {
 public:
  virtual ~BandTarget() = default;
  // Before the first band. The report stands on its first row, when it has one. Pages place the report header here.
  virtual void begin() = 0;
  // `room_below`: the band is not to stand alone at the end of a page, so much must fit below it.
  virtual void place(Band& band, int room_below) = 0;
  virtual void end() = 0;
};

}  // namespace dorvo::engine
