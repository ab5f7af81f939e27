// What a finished page gives the grid step: its texts as boxes, its rules and frames as rules.
//
// A box is as wide as its control, which decides where its text is aligned, and as high as its text stands on paper, so
// that texts of one line come into one row however high their controls are.
#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engine/painter.h"
#include "export/grid.h"

namespace dorvo::export_ {

struct PageBoxes {
  std::vector<const engine::PageItem*> items;  // Labels and Fields with a text; live as long as the page
  std::vector<GridBox> boxes;                  // of the items, in step
  std::vector<GridRule> rules;
};

PageBoxes boxes_of(const engine::Page& page);

// Messages on controls that stand over each other, each pair of names once.
class OverlapNotes {
 public:
  // `names` are those of the boxes, in step.
  void add(int page_number, const std::vector<std::string>& names, const Grid& grid,
           std::vector<std::string>& messages);
  void add(const engine::Page& page, const PageBoxes& boxes, const Grid& grid, std::vector<std::string>& messages);

 private:
  std::set<std::pair<std::string, std::string>> told_;
};

// Where a format that places whole texts puts one: as wide as its box or its widest line and `slack` more, so that its
// lines stand where they stand on paper. `lines` are those that show.
struct TextPlace {
  int left = 0;
  int width = 0;
  std::vector<engine::LinePlace> lines;
};
TextPlace text_place(const engine::PageItem& item, int slack);

// Lines of the text of an item as they stand on paper: as it was shaped, else at its line ends.
std::vector<std::string> lines_of(const engine::PageItem& item);

// The whole text of an item for one cell, its line ends as `line_end`.
std::string cell_text(const engine::PageItem& item, std::string_view line_end);

}  // namespace dorvo::export_
