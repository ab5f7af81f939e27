// The grid step: from boxes that stand anywhere on a page to the rows and columns of a table.
//
// Shared by the worksheet, HTML table and text filters. The left edge of every box is a column boundary and its top a
// row boundary (with double boundaries its right edge and bottom too); boundaries within the border space of each other
// are one, and so are boundaries that would make a column or row smaller than the minimum, unless two boxes of one row
// or column would then meet in a cell or a text lose room to the box beside it. Such a column keeps the width that it
// has on paper. Nothing is dropped: boxes that meet in a cell all the same share it, and they are told as overlaps. All
// lengths are twips. Same boxes, same grid.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace dorvo::export_ {

struct GridOptions {
  int border_space = 59;
  int min_column_width = 1011;
  int min_row_height = 128;
  bool double_boundaries = false;
};

struct GridBox {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  int text_left = 0;   // where its text stands in it, when `text_width` is not 0
  int text_width = 0;  // 0: not known, the text may fill the box

  // How far a cell that begins with the box must reach for its text.
  int need_end() const { return text_width > 0 ? left + text_width : right; }
  int ink_left() const { return text_width > 0 ? text_left : left; }
  int ink_right() const { return text_width > 0 ? text_left + text_width : right; }
};

// A rule from one point to another; in a grid it becomes borders of cells, on the side of the texts on which it is.
struct GridRule {
  int x1 = 0;
  int y1 = 0;
  int x2 = 0;
  int y2 = 0;
};

// Boundaries of one direction, collected from as many pages as stand in one table.
class GridEdges {
 public:
  GridEdges(int border_space, int minimum) : border_space_(border_space), minimum_(minimum) {}
  void add(int edge) { edges_.insert(edge); }
  // The two edges bound different tracks, even a smaller one than the minimum.
  void keep_apart(int one, int other);
  // The edge may join others only if its track then starts at `least` or after.
  void keep_room(int edge, int least);
  // Where the tracks start, ascending.
  std::vector<int> starts() const;

 private:
  bool joins(int edge, const std::vector<int>& cluster) const;

  int border_space_;
  int minimum_;
  std::set<int> edges_;
  std::set<std::pair<int, int>> apart_;
  std::map<int, int> room_;
};

// The columns of a table: starts of the columns, and the right end of the last one.
struct GridColumns {
  std::vector<int> starts;
  int right = 0;
  std::vector<int> widths() const;
};

// Collects the columns of all pages of a table; memory grows with the different edges only.
class GridColumnFinder {
 public:
  explicit GridColumnFinder(const GridOptions& options);
  void add(const std::vector<GridBox>& boxes);
  GridColumns columns() const;

 private:
  void add_neighbours(const GridBox& one, const GridBox& other);

  GridOptions options_;
  GridEdges edges_;
  int right_ = 0;
};

enum : std::uint8_t { kBorderLeft = 1, kBorderTop = 2, kBorderRight = 4, kBorderBottom = 8 };

struct GridCell {
  std::size_t row = 0;
  std::size_t column = 0;
  std::size_t rows = 1;  // that it spans
  std::size_t columns = 1;
  std::vector<std::size_t> boxes;  // indexes of its boxes: one, or several that meet here
};

struct Grid {
  std::size_t columns = 0;
  std::vector<int> row_starts;
  int bottom = 0;                                             // of the last row
  std::vector<int> content;                                   // by row: the lowest bottom of the boxes that start in it
  std::vector<GridCell> cells;                                // by row, then column; never two over one place
  std::vector<std::uint8_t> borders;                          // by row * columns + column: kBorder...
  std::vector<std::pair<std::size_t, std::size_t>> overlaps;  // indexes of boxes that stand over each other

  std::size_t rows() const { return row_starts.size(); }
  std::uint8_t border(std::size_t row, std::size_t column) const { return borders[row * columns + column]; }
  // The borders along the rim of a cell, whatever it spans.
  std::uint8_t border(const GridCell& cell) const;
  // Heights of the rows, none smaller than `minimum`; `trim`: only as high as what stands in them.
  std::vector<int> heights(int minimum, bool trim) const;
};

// One page in the columns of its table.
Grid make_grid(const std::vector<GridBox>& boxes, const std::vector<GridRule>& rules, const GridColumns& columns,
               const GridOptions& options);

}  // namespace dorvo::export_
