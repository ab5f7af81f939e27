#include "export/grid.h"

#include <gtest/gtest.h>

#include "export/page_boxes.h"
#include "tests/export/hand_pages.h"

namespace dorvo::export_ {
namespace {

using Boxes = std::vector<GridBox>;
using Ints = std::vector<int>;

GridColumns columns_of(const Boxes& boxes, const GridOptions& options) {
  GridColumnFinder finder(options);
  finder.add(boxes);
  return finder.columns();
}

Grid grid_of(const Boxes& boxes, const GridOptions& options = {}, const std::vector<GridRule>& rules = {}) {
  return make_grid(boxes, rules, columns_of(boxes, options), options);
}

// Boxes by left edge; all in rows of their own unless they are `beside` each other.
struct ColumnCase {
  const char* what;
  Ints lefts;
  bool beside;
  GridOptions options;
  Ints starts;
};

TEST(GridColumns, FollowBorderSpaceAndMinimum) {
  const GridOptions usual;
  GridOptions none = usual;
  none.min_column_width = 0;
  GridOptions strict = none;
  strict.border_space = 0;
  const std::vector<ColumnCase> cases = {
      {"edges within the border space are one", {0, 59, 1100}, true, none, {0, 1100}},
      {"an edge one twip beyond it is its own", {0, 60}, true, none, {0, 60}},
      {"no border space keeps every edge", {0, 1, 2}, true, strict, {0, 1, 2}},
      {"a narrow column joins when no row needs it", {0, 500, 1011}, false, usual, {0, 1011}},
      {"two boxes of one row keep even a narrow column", {0, 500}, true, usual, {0, 500}},
      {"a chain of near edges does not become one column", {0, 50, 100, 150}, true, none, {0, 100}},
  };
  for (const ColumnCase& c : cases) {
    Boxes boxes;
    int top = 0;
    for (int left : c.lefts) {
      boxes.push_back({left, top, left + 40, top + 240});
      if (!c.beside) top += 300;
    }
    EXPECT_EQ(columns_of(boxes, c.options).starts, c.starts) << c.what;
  }
}

TEST(GridColumns, AreTheSameForAllPagesOfATable) {
  GridColumnFinder finder{GridOptions{}};
  finder.add({{0, 0, 2000, 240}});
  finder.add({{3000, 0, 5000, 240}});
  EXPECT_EQ(finder.columns().starts, (Ints{0, 3000}));
  EXPECT_EQ(finder.columns().widths(), (Ints{3000, 2000}));
}

TEST(GridColumns, KeepTheRoomOfTheTextBefore) {
  // The second box begins 300 after a boundary of another row; the text before it ends 200 after that boundary.
  const GridBox other{1500, 0, 3000, 240};
  const GridBox text{0, 300, 1790, 540, 0, 1700};
  const GridBox beside{1800, 300, 3000, 540};
  EXPECT_EQ(columns_of({other, text, beside}, {}).starts, (Ints{0, 1500, 1800}));
  EXPECT_EQ(columns_of({other, {0, 300, 1790, 540, 0, 1400}, beside}, {}).starts, (Ints{0, 1500}));
  EXPECT_EQ(columns_of({other, text, beside}, {}).widths(), (Ints{1500, 300, 1200}));
}

TEST(GridColumns, DoubleBoundariesMakeGapsColumns) {
  GridOptions options;
  options.double_boundaries = true;
  const Boxes boxes = {{0, 0, 1500, 240}, {4000, 0, 6000, 240}};
  EXPECT_EQ(columns_of(boxes, options).starts, (Ints{0, 1500, 4000}));
  EXPECT_EQ(columns_of(boxes, {}).starts, (Ints{0, 4000}));
}

TEST(Grid, RowsFollowTops) {
  // A label 40 twips higher than its box stands in the same row; the next line 240 lower does not.
  const Grid grid = grid_of({{0, 100, 900, 340}, {2000, 140, 3000, 380}, {0, 380, 900, 620}});
  EXPECT_EQ(grid.row_starts, (Ints{100, 380}));
  ASSERT_EQ(grid.cells.size(), 3u);
  EXPECT_EQ(grid.cells[1].row, 0u);
  EXPECT_EQ(grid.cells[1].column, 1u);
  EXPECT_EQ(grid.cells[2].row, 1u);
  EXPECT_TRUE(grid.overlaps.empty());
}

TEST(Grid, SmallRowsJoinOnlyWhereNothingMeets) {
  const Boxes beside = {{0, 0, 900, 240}, {2000, 100, 3000, 340}};
  EXPECT_EQ(grid_of(beside).rows(), 1u);
  const Boxes below = {{0, 0, 900, 90}, {0, 100, 900, 190}};
  EXPECT_EQ(grid_of(below).rows(), 2u);
  EXPECT_EQ(grid_of(below).heights(128, false), (Ints{128, 128}));
}

TEST(Grid, HeightsKeepOrTrimEmptySpace) {
  const Grid grid = grid_of({{0, 0, 900, 240}, {0, 2000, 900, 2240}});
  EXPECT_EQ(grid.heights(128, false), (Ints{2000, 240}));
  EXPECT_EQ(grid.heights(128, true), (Ints{240, 240}));
}

TEST(Grid, CellsSpanWhatTheirBoxesCover) {
  const Boxes boxes = {{0, 0, 5000, 240}, {0, 300, 2000, 540}, {2000, 300, 5000, 900}, {0, 660, 2000, 900}};
  const Grid grid = grid_of(boxes);
  ASSERT_EQ(grid.cells.size(), 4u);
  EXPECT_EQ(grid.cells[0].columns, 2u);
  EXPECT_EQ(grid.cells[2].column, 1u);
  EXPECT_EQ(grid.cells[2].rows, 2u);
  EXPECT_EQ(grid.cells[3].rows, 1u);
}

TEST(Grid, BoxesThatMeetAreToldAndKept) {
  const Boxes boxes = {{0, 0, 2000, 240}, {20, 10, 2000, 240}, {3000, 0, 5000, 240}};
  const Grid grid = grid_of(boxes);
  ASSERT_EQ(grid.cells.size(), 2u);
  EXPECT_EQ(grid.cells[0].boxes, (std::vector<std::size_t>{0, 1}));
  EXPECT_EQ(grid.overlaps, (std::vector<std::pair<std::size_t, std::size_t>>{{0, 1}}));
}

TEST(Grid, EveryBoxIsInExactlyOneCellAndNoTwoCellsShareAPlace) {
  // Boxes strewn without any order, many of them over each other.
  Boxes boxes;
  unsigned seed = 7;
  const auto next = [&](unsigned limit) {
    return static_cast<int>((seed = seed * 1103515245u + 12345u) / 65536u % limit);
  };
  for (int i = 0; i < 200; ++i) {
    const int left = next(9000), top = next(14000);
    boxes.push_back({left, top, left + 100 + next(3000), top + 100 + next(900)});
  }
  const Grid grid = grid_of(boxes);
  std::vector<int> seen(boxes.size(), 0);
  std::vector<int> taken(grid.rows() * grid.columns, 0);
  for (const GridCell& cell : grid.cells) {
    for (std::size_t box : cell.boxes) ++seen[box];
    for (std::size_t r = 0; r < cell.rows; ++r)
      for (std::size_t c = 0; c < cell.columns; ++c) ++taken.at((cell.row + r) * grid.columns + cell.column + c);
  }
  EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), 200);
  EXPECT_EQ(std::count_if(taken.begin(), taken.end(), [](int n) { return n > 1; }), 0);
}

TEST(Grid, RulesBecomeBordersOfTheNearestBoundary) {
  const Boxes boxes = {{0, 0, 2000, 240}, {2000, 0, 4000, 240}, {0, 300, 2000, 540}, {2000, 300, 4000, 540}};
  const Grid grid = grid_of(boxes, {}, {{0, 280, 2000, 280}, {2010, 0, 2010, 540}, {0, 560, 4000, 560}});
  EXPECT_EQ(grid.border(0, 0), 0);
  EXPECT_EQ(grid.border(1, 0), kBorderTop | kBorderBottom);
  EXPECT_EQ(grid.border(0, 1), kBorderLeft);
  EXPECT_EQ(grid.border(1, 1), kBorderLeft | kBorderBottom);
}

TEST(Grid, ARuleDownBesideASpanningCellStandsAtItsSide) {
  // The boundary at 2000 is the title's only; the amount begins before the rule at 2150 and goes on behind it.
  const Boxes boxes = {{0, 0, 2000, 240}, {2000, 0, 4000, 240}, {0, 300, 1000, 540}, {1900, 300, 4000, 540}};
  GridOptions options;
  options.min_column_width = 0;
  const Grid grid = grid_of(boxes, options, {{2150, 0, 2150, 540}});
  ASSERT_EQ(grid.columns, 3u);
  EXPECT_EQ(grid.border(1, 1), kBorderLeft);
}

TEST(Grid, ARuleInEmptySpaceHasARowOfItsOwn) {
  const Grid grid =
      grid_of({{0, 0, 2000, 240}, {0, 2000, 2000, 2240}}, {}, {{0, 1000, 2000, 1000}, {0, 3000, 2000, 3000}});
  EXPECT_EQ(grid.row_starts, (Ints{0, 1000, 2000}));
  EXPECT_EQ(grid.border(1, 0), kBorderTop);
  EXPECT_EQ(grid.border(2, 0), kBorderBottom);
  EXPECT_EQ(grid.heights(128, false), (Ints{1000, 1000, 1000}));
}

TEST(Grid, OfNothingIsEmpty) {
  const Grid grid = grid_of({}, {}, {{0, 0, 100, 0}});
  EXPECT_EQ(grid.rows(), 0u);
  EXPECT_TRUE(grid.cells.empty());
}

TEST(OverlapNotes, TellEachPairOfControlsOnce) {
  test::HandPages hand;
  for (int i = 0; i < 3; ++i) hand.page().text(0, 0, 2000, 240, "1", "txtA").text(10, 0, 2000, 240, "2", "txtB");
  OverlapNotes notes;
  std::vector<std::string> messages;
  for (const engine::PagePtr& page : hand.pages()) {
    const PageBoxes boxes = boxes_of(*page);
    notes.add(*page, boxes, grid_of(boxes.boxes), messages);
  }
  EXPECT_EQ(messages, (std::vector<std::string>{"Page 1: txtA and txtB stand over each other; both texts are kept"}));
}

}  // namespace
}  // namespace dorvo::export_
