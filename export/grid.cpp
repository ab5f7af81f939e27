#include "export/grid.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace dorvo::export_ {
namespace {

// The track in which a position falls: the last one that starts at or before it.
std::size_t track_of(const std::vector<int>& starts, int position) {
  const auto after = std::upper_bound(starts.begin(), starts.end(), position);
  return after == starts.begin() ? 0 : static_cast<std::size_t>(after - starts.begin()) - 1;
}

// The last track that a box reaches into by more than the border space: with its text, or to the track's middle.
std::size_t last_track(const std::vector<int>& starts, int last_end, std::size_t first, int end, int text_end,
                       int border_space) {
  std::size_t last = first;
  while (last + 1 < starts.size()) {
    const int start = starts[last + 1];
    const int size = (last + 2 < starts.size() ? starts[last + 2] : last_end) - start;
    if (end - start <= std::max(border_space, (size - 1) / 2) && text_end - start <= border_space) break;
    ++last;
  }
  return last;
}

// With double boundaries the last edges are where everything ends: no track starts there.
std::vector<int> starts_before(std::vector<int> starts, int end) {
  while (starts.size() > 1 && starts.back() >= end) starts.pop_back();
  return starts;
}

// Which boundary, of tracks and of the end of the last, is nearest to a position.
std::size_t nearest_boundary(const std::vector<int>& starts, int end, int position) {
  std::size_t best = 0;
  int distance = std::abs(starts.front() - position);
  for (std::size_t i = 1; i <= starts.size(); ++i) {
    const int next = std::abs((i < starts.size() ? starts[i] : end) - position);
    if (next < distance) best = i, distance = next;
  }
  return best;
}

// How many tracks begin before a rule, so that it lies behind their texts and before those of the others.
std::size_t tracks_before(const std::vector<int>& starts, int rule) {
  constexpr int kInText = 100;  // twips: a rule that is nearer to a text's edge runs along it
  return static_cast<std::size_t>(std::lower_bound(starts.begin(), starts.end(), rule - kInText) - starts.begin());
}

std::vector<int> sizes(const std::vector<int>& starts, int end, int minimum) {
  std::vector<int> result;
  for (std::size_t i = 0; i < starts.size(); ++i)
    result.push_back(std::max(minimum, (i + 1 < starts.size() ? starts[i + 1] : end) - starts[i]));
  return result;
}

std::vector<std::size_t> ordered(const std::vector<GridBox>& boxes, int GridBox::*edge) {
  std::vector<std::size_t> order(boxes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return boxes[a].*edge < boxes[b].*edge; });
  return order;
}

int common(int start1, int end1, int start2, int end2) {
  return std::min(end1, end2) - std::max(start1, start2);
}

// Where a box stands in tracks, ends included.
struct Place {
  std::size_t first_row = 0, last_row = 0, first_column = 0, last_column = 0;
};

bool share_columns(const Place& a, const Place& b) {
  return a.first_column <= b.last_column && b.first_column <= a.last_column;
}

class GridMaker {
 public:
  GridMaker(const std::vector<GridBox>& boxes, const GridColumns& columns, const GridOptions& options)
      : boxes_(boxes), columns_(columns), options_(options), places_(boxes.size()) {}

  Grid make(const std::vector<GridRule>& rules) {
    grid_.columns = columns_.starts.size();
    find_columns();
    find_rows();
    for (const GridRule& rule : rules) add_row_at(rule);
    place_in_rows();
    make_cells();
    span_cells();
    for (const GridRule& rule : rules) draw(rule);
    find_overlaps();
    return std::move(grid_);
  }

 private:
  void find_columns() {
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
      places_[i].first_column = track_of(columns_.starts, boxes_[i].left);
      places_[i].last_column = last_track(columns_.starts, columns_.right, places_[i].first_column, boxes_[i].right,
                                          boxes_[i].need_end(), options_.border_space);
    }
  }

  void find_rows() {
    GridEdges edges(options_.border_space, options_.min_row_height);
    const std::vector<std::size_t> order = ordered(boxes_, &GridBox::top);
    for (std::size_t i = 0; i < order.size(); ++i) {
      const GridBox& box = boxes_[order[i]];
      edges.add(box.top);
      if (options_.double_boundaries) {
        edges.add(box.bottom);
        edges.keep_apart(box.top, box.bottom);
      }
      for (std::size_t j = i + 1; j < order.size() && boxes_[order[j]].top - box.top < options_.min_row_height; ++j)
        if (share_columns(places_[order[i]], places_[order[j]])) edges.keep_apart(box.top, boxes_[order[j]].top);
    }
    for (const GridBox& box : boxes_) grid_.bottom = std::max(grid_.bottom, box.bottom);
    grid_.row_starts = starts_before(edges.starts(), grid_.bottom);
    content_of_rows();
  }

  void content_of_rows() {
    grid_.content = grid_.row_starts;
    for (const GridBox& box : boxes_) {
      int& content = grid_.content[track_of(grid_.row_starts, box.top)];
      content = std::max(content, box.bottom);
    }
  }

  // A rule across empty space, well before the next text, ends the row above it: else it would run along that text.
  void add_row_at(const GridRule& rule) {
    const int y = rule.y1;
    if (rule.y2 != y || grid_.rows() == 0) return;
    const std::size_t next = tracks_before(grid_.row_starts, y);
    if (next == 0 || y < grid_.content[next - 1]) return;
    if (next == grid_.rows()) {
      grid_.bottom = std::max(grid_.bottom, y);
    } else if (grid_.row_starts[next] - y >= std::max(options_.min_row_height, options_.border_space + 1)) {
      const auto at = static_cast<std::ptrdiff_t>(next);
      grid_.row_starts.insert(grid_.row_starts.begin() + at, y);
      grid_.content.insert(grid_.content.begin() + at, y);
    }
  }

  void place_in_rows() {
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
      Place& place = places_[i];
      place.first_row = track_of(grid_.row_starts, boxes_[i].top);
      place.last_row = last_track(grid_.row_starts, grid_.bottom, place.first_row, boxes_[i].bottom, boxes_[i].bottom,
                                  options_.border_space);
    }
    grid_.borders.assign(grid_.rows() * grid_.columns, 0);
  }

  void make_cells() {
    std::vector<std::size_t> order(boxes_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      return std::pair(places_[a].first_row, places_[a].first_column) <
             std::pair(places_[b].first_row, places_[b].first_column);
    });
    owner_.assign(grid_.rows() * grid_.columns, kNone);
    for (std::size_t box : order) {
      const Place& place = places_[box];
      std::size_t& owner = owner_[place.first_row * grid_.columns + place.first_column];
      if (owner == kNone) {
        owner = grid_.cells.size();
        grid_.cells.push_back({place.first_row, place.first_column, 1, 1, {}});
      }
      grid_.cells.back().boxes.push_back(box);
    }
  }

  bool free(std::size_t row, std::size_t column, std::size_t columns) const {
    for (std::size_t i = 0; i < columns; ++i)
      if (owner_[row * grid_.columns + column + i] != kNone) return false;
    return true;
  }

  // A cell takes the places its box covers, as far as no other cell stands there.
  void span_cells() {
    for (GridCell& cell : grid_.cells) {
      const Place& place = places_[cell.boxes.front()];
      while (cell.column + cell.columns <= place.last_column && free(cell.row, cell.column + cell.columns, 1))
        ++cell.columns;
      while (cell.row + cell.rows <= place.last_row && free(cell.row + cell.rows, cell.column, cell.columns))
        ++cell.rows;
      for (std::size_t row = 0; row < cell.rows; ++row)
        for (std::size_t column = 0; column < cell.columns; ++column)
          owner_[(cell.row + row) * grid_.columns + cell.column + column] =
              static_cast<std::size_t>(&cell - grid_.cells.data());
    }
  }

  void draw(const GridRule& rule) {
    if (grid_.rows() == 0 || grid_.columns == 0) return;
    const auto [x1, x2] = std::minmax(rule.x1, rule.x2);
    const auto [y1, y2] = std::minmax(rule.y1, rule.y2);
    if (x2 - x1 >= y2 - y1)
      draw_across(tracks_before(grid_.row_starts, y1), nearest_boundary(columns_.starts, columns_.right, x1),
                  nearest_boundary(columns_.starts, columns_.right, x2));
    else
      draw_down(x1, nearest_boundary(grid_.row_starts, grid_.bottom, y1),
                nearest_boundary(grid_.row_starts, grid_.bottom, y2));
  }

  void draw_across(std::size_t below, std::size_t left, std::size_t right) {
    const bool last = below == grid_.rows();
    for (std::size_t column = left; column < std::max(right, left + 1) && column < grid_.columns; ++column)
      mark(last ? below - 1 : below, column, last ? kBorderBottom : kBorderTop);
  }

  void draw_down(int x, std::size_t top, std::size_t bottom) {
    for (std::size_t row = top; row < std::max(bottom, top + 1) && row < grid_.rows(); ++row) {
      const std::size_t behind = beside_cell(row, tracks_before(columns_.starts, x), x);
      const bool last = behind == grid_.columns;
      mark(row, last ? behind - 1 : behind, last ? kBorderRight : kBorderLeft);
    }
  }

  // A rule that comes down in a cell stands on the side of its box that is nearer.
  std::size_t beside_cell(std::size_t row, std::size_t boundary, int x) const {
    const std::size_t owner = boundary == 0 ? kNone : owner_[row * grid_.columns + boundary - 1];
    if (owner == kNone) return boundary;
    const GridCell& cell = grid_.cells[owner];
    const GridBox& box = boxes_[cell.boxes.front()];
    return std::abs(x - box.left) < std::abs(box.right - x) ? cell.column : cell.column + cell.columns;
  }

  void mark(std::size_t row, std::size_t column, std::uint8_t side) {
    std::uint8_t& border = grid_.borders[row * grid_.columns + column];
    border = static_cast<std::uint8_t>(border | side);
  }

  void find_overlaps() {
    const std::vector<std::size_t> order = ordered(boxes_, &GridBox::top);
    for (std::size_t i = 0; i < order.size(); ++i)
      for (std::size_t j = i + 1; j < order.size(); ++j) {
        const GridBox& a = boxes_[order[i]];
        const GridBox& b = boxes_[order[j]];
        const Place& one = places_[order[i]];
        const Place& other = places_[order[j]];
        if (b.top >= a.bottom && other.first_row != one.first_row) break;
        const bool one_cell = one.first_row == other.first_row && one.first_column == other.first_column;
        const bool stand_over =
            common(a.ink_left(), a.ink_right(), b.ink_left(), b.ink_right()) > options_.border_space &&
            common(a.top, a.bottom, b.top, b.bottom) > options_.border_space;
        if (one_cell || stand_over) grid_.overlaps.push_back(std::minmax(order[i], order[j]));
      }
    std::sort(grid_.overlaps.begin(), grid_.overlaps.end());
  }

  const std::vector<GridBox>& boxes_;
  const GridColumns& columns_;
  GridOptions options_;
  std::vector<Place> places_;
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::vector<std::size_t> owner_;  // by place: the cell that covers it
  Grid grid_;
};

}  // namespace

void GridEdges::keep_apart(int one, int other) {
  if (one != other) apart_.insert(std::minmax(one, other));
}

void GridEdges::keep_room(int edge, int least) {
  const auto found = room_.insert({edge, least}).first;
  found->second = std::max(found->second, least);
}

bool GridEdges::joins(int edge, const std::vector<int>& cluster) const {
  if (cluster.empty()) return false;
  if (edge - cluster.front() <= border_space_) return true;
  if (edge - cluster.front() >= minimum_) return false;
  const auto room = room_.find(edge);
  if (room != room_.end() && cluster.front() < room->second) return false;
  return std::none_of(cluster.begin(), cluster.end(), [&](int member) { return apart_.count({member, edge}) != 0; });
}

std::vector<int> GridEdges::starts() const {
  std::vector<int> starts;
  std::vector<int> cluster;
  for (int edge : edges_) {
    if (!joins(edge, cluster)) {
      starts.push_back(edge);
      cluster.clear();
    }
    cluster.push_back(edge);
  }
  return starts;
}

std::vector<int> GridColumns::widths() const {
  return sizes(starts, right, 0);
}

GridColumnFinder::GridColumnFinder(const GridOptions& options)
    : options_(options), edges_(options.border_space, options.min_column_width) {}

void GridColumnFinder::add(const std::vector<GridBox>& boxes) {
  const std::vector<std::size_t> order = ordered(boxes, &GridBox::top);
  for (std::size_t i = 0; i < order.size(); ++i) {
    const GridBox& box = boxes[order[i]];
    edges_.add(box.left);
    right_ = std::max(right_, box.right);
    if (options_.double_boundaries) {
      edges_.add(box.right);
      edges_.keep_apart(box.left, box.right);
    }
    for (std::size_t j = i + 1; j < order.size() && boxes[order[j]].top < box.bottom; ++j) {
      const GridBox& other = boxes[order[j]];
      if (common(box.top, box.bottom, other.top, other.bottom) > options_.border_space) add_neighbours(box, other);
    }
  }
}

// Two boxes of one row.
void GridColumnFinder::add_neighbours(const GridBox& one, const GridBox& other) {
  const GridBox& first = one.left <= other.left ? one : other;
  const GridBox& second = one.left <= other.left ? other : one;
  if (second.left - first.left < options_.min_column_width) edges_.keep_apart(first.left, second.left);
  const int end = std::min(first.need_end(), second.left);
  if (second.left > first.left && end > second.left - options_.min_column_width) edges_.keep_room(second.left, end);
}

GridColumns GridColumnFinder::columns() const {
  return {starts_before(edges_.starts(), right_), right_};
}

std::uint8_t Grid::border(const GridCell& cell) const {
  std::uint8_t rim = 0;
  const auto take = [&](std::size_t row, std::size_t column, std::uint8_t side) {
    rim = static_cast<std::uint8_t>(rim | (border(row, column) & side));
  };
  for (std::size_t i = 0; i < cell.columns; ++i) {
    take(cell.row, cell.column + i, kBorderTop);
    take(cell.row + cell.rows - 1, cell.column + i, kBorderBottom);
  }
  for (std::size_t i = 0; i < cell.rows; ++i) {
    take(cell.row + i, cell.column, kBorderLeft);
    take(cell.row + i, cell.column + cell.columns - 1, kBorderRight);
  }
  return rim;
}

std::vector<int> Grid::heights(int minimum, bool trim) const {
  std::vector<int> heights = sizes(row_starts, bottom, minimum);
  for (std::size_t i = 0; trim && i < heights.size(); ++i)
    heights[i] = std::max(minimum, std::min(heights[i], content[i] - row_starts[i]));
  return heights;
}

Grid make_grid(const std::vector<GridBox>& boxes, const std::vector<GridRule>& rules, const GridColumns& columns,
               const GridOptions& options) {
  return GridMaker(boxes, columns, options).make(rules);
}

}  // namespace dorvo::export_
