#include "export/xls_filter.h"

#include <gsf/gsf.h>

#include <algorithm>
#include <functional>
#include <numeric>

#include "value/failure.h"
#include "value/text.h"

namespace dorvo::export_ {
namespace {

using value::Error;
using value::Failure;

constexpr int kHighestRow = 8190;  // twips
constexpr int kA4Width = 11906;
constexpr int kA4Height = 16838;
constexpr std::size_t kChunk = 1 << 16;

// A page as it waits in the temporary file.
struct StoredPage {
  int number = 0, width = 0, height = 0;
  int left_margin = 0, right_margin = 0, top_margin = 0, bottom_margin = 0;
  std::vector<GridBox> boxes;
  std::vector<CellFormat> formats;  // of the boxes, in step, without border
  std::vector<int> widths;          // of the texts
  std::vector<std::string> texts;   // lines end with "\n"
  std::vector<std::string> names;
  std::vector<GridRule> rules;
};

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += (&line == &lines.front() ? "" : "\n") + line;
  return text;
}

std::vector<std::string> split(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at <= text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// `wraps`: the reader breaks texts into lines itself; else they keep those that they have on paper.
StoredPage stored(const engine::Page& page, BiffStyles& styles, bool wraps) {
  StoredPage stored;
  stored.number = page.number;
  stored.width = page.width;
  stored.height = page.height;
  stored.left_margin = page.left_margin;
  stored.right_margin = page.right_margin;
  stored.top_margin = page.top_margin;
  stored.bottom_margin = page.bottom_margin;
  PageBoxes found = boxes_of(page);
  stored.boxes = std::move(found.boxes);
  stored.rules = std::move(found.rules);
  for (const engine::PageItem* item : found.items) {
    const engine::Style& style = *item->control->style;
    CellFormat format;
    format.font = styles.font(style, item->half_points);
    format.align = style.align;
    format.general_align = false;
    const std::vector<std::string> lines = lines_of(*item);
    format.wrap = wraps && lines.size() > 1;
    stored.formats.push_back(format);
    stored.texts.push_back(wraps ? cell_text(*item, "\n") : joined(lines));
    const double width = item->shaped ? engine::twips_of(item->shaped->widest, item->half_points) : 0;
    stored.widths.push_back(static_cast<int>(width));
    stored.names.push_back(item->name());
  }
  return stored;
}

void put(Spool& spool, const StoredPage& page) {
  for (int number :
       {page.number, page.width, page.height, page.left_margin, page.right_margin, page.top_margin, page.bottom_margin})
    spool.write_number(number);
  spool.write_number(static_cast<std::int64_t>(page.boxes.size()));
  for (std::size_t i = 0; i < page.boxes.size(); ++i) {
    const GridBox& box = page.boxes[i];
    const CellFormat& format = page.formats[i];
    for (int number :
         {box.left, box.top, box.right, box.bottom, box.text_left, box.text_width, static_cast<int>(format.font),
          static_cast<int>(format.align), format.wrap ? 1 : 0, page.widths[i]})
      spool.write_number(number);
    spool.write_text(page.texts[i]);
    spool.write_text(page.names[i]);
  }
  spool.write_number(static_cast<std::int64_t>(page.rules.size()));
  for (const GridRule& rule : page.rules)
    for (int number : {rule.x1, rule.y1, rule.x2, rule.y2}) spool.write_number(number);
}

int take_number(Spool& spool) {
  std::int64_t number = 0;
  spool.read_number(number);
  return static_cast<int>(number);
}

StoredPage take_page(Spool& spool) {
  StoredPage page;
  for (int* number : {&page.number, &page.width, &page.height, &page.left_margin, &page.right_margin, &page.top_margin,
                      &page.bottom_margin})
    *number = take_number(spool);
  for (int count = take_number(spool); count > 0; --count) {
    GridBox box;
    for (int* number : {&box.left, &box.top, &box.right, &box.bottom, &box.text_left, &box.text_width})
      *number = take_number(spool);
    CellFormat format;
    format.font = static_cast<std::size_t>(take_number(spool));
    format.align = static_cast<engine::Align>(take_number(spool));
    format.wrap = take_number(spool) != 0;
    format.general_align = false;
    page.widths.push_back(take_number(spool));
    page.boxes.push_back(box);
    page.formats.push_back(format);
    page.texts.push_back(spool.read_text());
    page.names.push_back(spool.read_text());
  }
  for (int count = take_number(spool); count > 0; --count) {
    GridRule rule;
    for (int* number : {&rule.x1, &rule.y1, &rule.x2, &rule.y2}) *number = take_number(spool);
    page.rules.push_back(rule);
  }
  return page;
}

// A text that is a plain decimal number and would look the same as one: no leading zeros, at most 15 digits.
bool plain_number(const std::string& text, int& decimals) {
  const std::string_view digits = std::string_view(text).substr(!text.empty() && text[0] == '-' ? 1 : 0);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::string_view whole = digits.substr(0, point);
  const std::string_view fraction = point < digits.size() ? digits.substr(point + 1) : std::string_view();
  const auto all_digits = [](std::string_view part) {
    return std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
  };
  if (whole.empty() || (whole.size() > 1 && whole[0] == '0') || (point < digits.size() && fraction.empty()))
    return false;
  if (whole.size() + fraction.size() > 15 || !all_digits(whole) || !all_digits(fraction)) return false;
  if (text[0] == '-' && digits.find_first_not_of("0.") == std::string_view::npos) return false;
  decimals = static_cast<int>(fraction.size());
  return true;
}

// The rows of a sheet that one page takes. A grid row that is higher than a sheet's row may be takes several.
struct RowPlan {
  std::vector<int> heights;
  std::vector<std::size_t> first;  // by grid row: its first sheet row; one more for the end

  void add(int height) {
    for (; height > kHighestRow; height -= kHighestRow) heights.push_back(kHighestRow);
    if (height > 0) heights.push_back(height);
  }
};

}  // namespace

// The sheets as they fill up.
class XlsFilter::Sheets {
 public:
  explicit Sheets(XlsFilter& filter)
      : filter_(filter),
        version_(filter.FileFormat),
        limits_(biff_limits(version_)),
        cells_(version_, *filter.styles_, *filter.text_) {}

  void add(const StoredPage& page, const GridColumns& columns) {
    const GridOptions options = filter_.grid_options();
    const Grid grid = make_grid(page.boxes, page.rules, columns, options);
    filter_.notes_.add(page.number, page.names, grid, filter_.messages_);
    const RowPlan plan = rows_of(page, grid);
    open_sheet(page, columns, plan.heights.size());
    if (sheet().rows > 0 && filter_.GenPageBreaks) sheet().breaks.push_back(sheet().rows);
    write(page, grid, plan);
    sheet().rows += plan.heights.size();
    const std::string records = cells_.take();
    sizes_.back() += records.size();
    body_.write(records);
  }

  std::vector<BiffSheet>& list() { return sheets_; }

  // Sizes of the whole sheets: what stands before the cells, the cells, what stands behind them.
  std::vector<std::size_t> sizes() const {
    std::vector<std::size_t> sizes = sizes_;
    for (std::size_t i = 0; i < sizes.size(); ++i)
      sizes[i] += sheet_head(version_, sheets_[i], *filter_.styles_).size() + sheet_tail(version_, sheets_[i]).size();
    return sizes;
  }

  void write_to(const std::function<void(std::string_view)>& sink) {
    body_.rewind();
    std::string chunk;
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
      sink(sheet_head(version_, sheets_[i], *filter_.styles_));
      for (std::size_t left = sizes_[i]; left > 0; left -= chunk.size()) {
        body_.read(chunk, std::min(left, kChunk));
        sink(chunk);
      }
      sink(sheet_tail(version_, sheets_[i]));
    }
  }

 private:
  BiffSheet& sheet() { return sheets_.back(); }

  void open_sheet(const StoredPage& page, const GridColumns& columns, std::size_t rows) {
    const bool full =
        !sheets_.empty() && (sheet().rows + rows > limits_.rows || sheet().breaks.size() >= limits_.breaks);
    if (full && !biff_workbook(version_)) too_much("rows or pages", sheet().rows + rows, limits_.rows);
    if (rows > limits_.rows) too_much("rows", rows, limits_.rows);
    if (!sheets_.empty() && !full && !filter_.sheet_per_page()) return;
    BiffSheet made;
    made.name = (filter_.sheet_per_page() ? "Page " + std::to_string(page.number)
                                          : "Sheet" + std::to_string(sheets_.size() + 1));
    made.first = sheets_.empty();
    made.widths = lead_columns(page, columns);
    lead_ = made.widths.size();
    for (int width : columns.widths()) made.widths.push_back(width);
    if (made.widths.size() > limits_.columns) too_much("columns", made.widths.size(), limits_.columns);
    made.print.landscape = page.width > page.height;
    made.print.a4 = std::minmax(page.width, page.height) == std::minmax(kA4Width, kA4Height);
    if (!filter_.ShowMarginSpace) {
      made.print.left = page.left_margin;
      made.print.right = page.right_margin;
      made.print.top = page.top_margin;
      made.print.bottom = page.bottom_margin;
    }
    sheets_.push_back(made);
    sizes_.push_back(0);
  }

  [[noreturn]] void too_much(const char* what, std::size_t found, std::size_t limit) const {
    throw Failure(Error::CannotWrite, "Cannot write \"" + filter_.FileName + "\": " + std::to_string(found) + " " +
                                          what + ", and a sheet of version " + std::to_string(version_) + " holds " +
                                          std::to_string(limit) + " rows, " + std::to_string(limits_.columns) +
                                          " columns and " + std::to_string(limits_.breaks) +
                                          " page breaks; choose version 5 or later or larger minimum sizes");
  }

  // Columns for the page's margin and for empty space before the first text.
  std::vector<int> lead_columns(const StoredPage& page, const GridColumns& columns) const {
    std::vector<int> widths;
    if (filter_.ShowMarginSpace && page.left_margin > 0) widths.push_back(page.left_margin);
    const int gap = columns.starts.empty() ? 0 : columns.starts.front() - page.left_margin;
    if (!filter_.TrimEmptySpace && gap > filter_.BorderSpace) widths.push_back(gap);
    return widths;
  }

  bool merges() const { return version_ == 8; }

  // A row is high enough for all of a text that stands in it alone.
  std::vector<int> heights_of(const StoredPage& page, const Grid& grid) const {
    std::vector<int> heights = grid.heights(filter_.MinRowHeight, filter_.TrimEmptySpace);
    for (const GridCell& cell : grid.cells)
      for (std::size_t box : cell.boxes)
        if (!merges() || cell.rows == 1)
          heights[cell.row] = std::max(heights[cell.row], page.boxes[box].bottom - page.boxes[box].top);
    for (const GridCell& cell : grid.cells) make_room(page, cell, heights);
    return heights;
  }

  // The rows of a merged cell together are as high as its text.
  void make_room(const StoredPage& page, const GridCell& cell, std::vector<int>& heights) const {
    if (!merges()) return;
    const auto first = heights.begin() + static_cast<std::ptrdiff_t>(cell.row);
    const int room = std::accumulate(first, first + static_cast<std::ptrdiff_t>(cell.rows), 0);
    int need = 0;
    for (std::size_t box : cell.boxes) need = std::max(need, page.boxes[box].bottom - page.boxes[box].top);
    heights[cell.row + cell.rows - 1] += std::max(0, need - room);
  }

  // Without merged cells each line of a text has a sheet row of its own: how many a grid row needs for that.
  std::vector<std::size_t> lines_of_rows(const StoredPage& page, const Grid& grid) const {
    std::vector<std::size_t> lines(grid.rows(), 1);
    for (const GridCell& cell : grid.cells) {
      const std::size_t count = split(text_of(page, cell)).size();
      if (!merges() && count >= cell.rows) lines[cell.row] = std::max(lines[cell.row], count - cell.rows + 1);
    }
    return lines;
  }

  static std::string text_of(const StoredPage& page, const GridCell& cell) {
    std::string text;
    for (std::size_t box : cell.boxes) text += (box == cell.boxes.front() ? "" : " ") + page.texts[box];
    return text;
  }

  RowPlan rows_of(const StoredPage& page, const Grid& grid) const {
    RowPlan plan;
    if (filter_.ShowMarginSpace) plan.add(page.top_margin);
    const int gap = (grid.rows() == 0 ? page.height - page.bottom_margin : grid.row_starts.front()) - page.top_margin;
    if (!filter_.TrimEmptySpace && gap > filter_.BorderSpace) plan.add(gap);
    const std::vector<int> heights = heights_of(page, grid);
    const std::vector<std::size_t> lines = lines_of_rows(page, grid);
    for (std::size_t row = 0; row < grid.rows(); ++row) {
      plan.first.push_back(plan.heights.size());
      const int line =
          std::max(1, std::min(heights[row], grid.content[row] - grid.row_starts[row]) / static_cast<int>(lines[row]));
      for (std::size_t i = 1; i < lines[row]; ++i) plan.add(line);
      plan.add(std::max(line, heights[row] - line * (static_cast<int>(lines[row]) - 1)));
    }
    plan.first.push_back(plan.heights.size());
    if (filter_.ShowMarginSpace && grid.rows() > 0) plan.add(page.height - grid.bottom);
    if (plan.heights.empty()) plan.add(std::max(1, filter_.MinRowHeight));
    return plan;
  }

  void write(const StoredPage& page, const Grid& grid, const RowPlan& plan) {
    const std::size_t base = sheet().rows;
    for (std::size_t i = 0; i < plan.heights.size(); ++i)
      cells_.row(base + i, sheet().widths.size(), filter_.AutoRowHeight ? 0 : plan.heights[i]);
    std::vector<const GridCell*> owner(grid.rows() * grid.columns, nullptr);
    for (const GridCell& cell : grid.cells)
      for (std::size_t r = 0; r < cell.rows; ++r)
        for (std::size_t c = 0; c < cell.columns; ++c) owner[(cell.row + r) * grid.columns + cell.column + c] = &cell;
    for (std::size_t row = 0; row < grid.rows(); ++row)
      for (std::size_t column = 0; column < grid.columns; ++column)
        for (std::size_t i = plan.first[row]; i < plan.first[row + 1]; ++i)
          write_spot(page, grid, plan, owner[row * grid.columns + column], row, column, i);
    for (const GridCell& cell : grid.cells)
      if (merges() && (cell.rows > 1 || cell.columns > 1))
        sheet().merges.push_back({base + plan.first[cell.row], base + plan.first[cell.row + cell.rows] - 1,
                                  lead_ + cell.column, lead_ + cell.column + cell.columns - 1});
  }

  // A place of the grid in one of its sheet rows.
  struct Spot {
    std::size_t column = 0;  // of the grid
    std::size_t row = 0;     // of the sheet
    std::size_t line = 0;    // counts the sheet rows of its cell
    std::uint8_t border = 0;
  };

  void write_spot(const StoredPage& page, const Grid& grid, const RowPlan& plan, const GridCell* cell, std::size_t row,
                  std::size_t column, std::size_t sheet_row) {
    const std::size_t line = cell ? sheet_row - plan.first[cell->row] : 0;
    write_place(page, grid, cell,
                {column, sheet().rows + sheet_row, line, border_in(grid, plan, row, column, sheet_row)});
  }

  // The borders of one sheet row of a grid place.
  static std::uint8_t border_in(const Grid& grid, const RowPlan& plan, std::size_t row, std::size_t column,
                                std::size_t sheet_row) {
    int border = grid.border(row, column);
    if (sheet_row > plan.first[row]) border &= ~kBorderTop;
    if (sheet_row + 1 < plan.first[row + 1]) border &= ~kBorderBottom;
    return static_cast<std::uint8_t>(border);
  }

  // Of a merged cell the border of its first place counts for some readers: it takes the whole rim.
  // Versions that cannot merge cells put a text that ends at the right into the last of its columns and centre one over
  // the empty cells beside it; version 2, which cannot do that either, lets it start at the left, where it is not cut.
  void write_place(const StoredPage& page, const Grid& grid, const GridCell* cell, const Spot& spot) {
    CellFormat format;
    std::size_t text_column = 0;
    std::string text;
    if (cell) {
      format = page.formats[cell->boxes.front()];
      const bool apart = !merges() && cell->columns > 1;
      text_column = cell->column + (apart && format.align == engine::Align::Right ? cell->columns - 1 : 0);
      if (apart && version_ == 2 && format.align == engine::Align::Center) format.align = engine::Align::Left;
      text = line_of(page, *cell, spot.line);
      format.across = apart && version_ > 2 && format.align == engine::Align::Center && !text.empty();
    }
    const bool has_text = cell && text_column == spot.column && !text.empty();
    format.border = spot.border;
    if (has_text && merges()) format.border = static_cast<std::uint8_t>(format.border | grid.border(*cell));
    const std::size_t column = lead_ + spot.column;
    if (has_text)
      write_text(page, *cell, text, format, spot.row, column);
    else if (format.border != 0 || format.across)
      cells_.blank(spot.row, column, filter_.styles_->format(format));
  }

  // What of its text a cell shows in one of its sheet rows.
  std::string line_of(const StoredPage& page, const GridCell& cell, std::size_t line) const {
    const std::string text = text_of(page, cell);
    if (merges()) return line == 0 ? text : std::string();
    const std::vector<std::string> lines = split(text);
    return line < lines.size() ? lines[line] : std::string();
  }

  // A number that its column cannot hold would not be shown: the column grows.
  void write_text(const StoredPage& page, const GridCell& cell, const std::string& text, CellFormat format,
                  std::size_t row, std::size_t column) {
    constexpr int kPadding = 150;  // twips, beside the figures
    if (plain_number(text, format.decimals)) {
      cells_.number(row, column, filter_.styles_->format(format), value::strict_number(text));
      int& width = sheet().widths[column];
      if (!merges() || cell.columns == 1) width = std::max(width, page.widths[cell.boxes.front()] + kPadding);
    } else {
      cells_.label(row, column, filter_.styles_->format(format), text);
    }
  }

  XlsFilter& filter_;
  int version_;
  BiffLimits limits_;
  BiffCells cells_;
  Spool body_;
  std::vector<BiffSheet> sheets_;
  std::vector<std::size_t> sizes_;  // of the cells of each sheet
  std::size_t lead_ = 0;
};

XlsFilter::~XlsFilter() = default;

GridOptions XlsFilter::grid_options() const {
  return {BorderSpace, MinColumnWidth, MinRowHeight, DoubleBoundaries};
}

void XlsFilter::check() const {
  constexpr std::array<int, 6> kFormats = {2, 3, 4, 5, 7, 8};
  if (std::find(kFormats.begin(), kFormats.end(), FileFormat) == kFormats.end())
    throw Failure(Error::CannotWrite, "Cannot write \"" + FileName + "\": FileFormat " + std::to_string(FileFormat) +
                                          "; expected 2, 3, 4, 5, 7 or 8");
}

void XlsFilter::begin() {
  check();
  file_ = std::make_unique<OutputFile>(FileName);
  pages_ = std::make_unique<Spool>();
  styles_ = std::make_unique<BiffStyles>(FileFormat);
  text_ = std::make_unique<BiffText>(FileFormat);
  columns_ = std::make_unique<GridColumnFinder>(grid_options());
  notes_ = {};
  messages_.clear();
  page_count_ = 0;
}

void XlsFilter::page(const engine::PagePtr& page) {
  const StoredPage kept = stored(*page, *styles_, FileFormat == 8);
  if (!sheet_per_page()) columns_->add(kept.boxes);
  put(*pages_, kept);
  ++page_count_;
}

void XlsFilter::end() {
  pages_->rewind();
  Sheets sheets(*this);
  const GridColumns common = columns_->columns();
  for (std::size_t i = 0; i < page_count_; ++i) {
    const StoredPage page = take_page(*pages_);
    GridColumnFinder own(grid_options());
    if (sheet_per_page()) own.add(page.boxes);
    sheets.add(page, sheet_per_page() ? own.columns() : common);
  }
  if (page_count_ == 0) sheets.add({}, {});
  if (biff_workbook(FileFormat))
    write_stream(sheets, workbook_globals(FileFormat, sheets.list(), sheets.sizes(), *styles_, *text_));
  else
    sheets.write_to([&](std::string_view bytes) { file_->write(bytes); });
  file_->commit();
  file_.reset();
  pages_.reset();

  const std::string file = "\"" + FileName + "\": ";
  if (MultiSheet && !sheet_per_page() && page_count_ > 1)
    messages_.push_back(file + "version " + std::to_string(FileFormat) +
                        " holds one sheet; the pages follow one another on it");
  if (text_->replaced())
    messages_.push_back(file + "characters that code page 1252 has not were written as question marks");
  if (text_->cut())
    messages_.push_back(file + "texts of more than " + std::to_string(biff_limits(FileFormat).text) +
                        " characters were cut, the most that a cell of this version holds");
}

// The stream in a compound file, under the name that its version has.
void XlsFilter::write_stream(Sheets& sheets, const std::string& globals) {
  gsf_init();
  GsfOutput* sink = gsf_output_stdio_new_FILE(FileName.c_str(), file_->stream(), TRUE);
  GsfOutfile* container = gsf_outfile_msole_new(sink);
  GsfOutput* stream = gsf_outfile_new_child(container, FileFormat == 8 ? "Workbook" : "Book", FALSE);
  bool written = true;
  const auto write = [&](std::string_view bytes) {
    written = written && gsf_output_write(stream, bytes.size(), reinterpret_cast<const guint8*>(bytes.data()));
  };
  write(globals);
  sheets.write_to(write);
  written = gsf_output_close(stream) && written;
  written = gsf_output_close(GSF_OUTPUT(container)) && written;
  for (void* object : {static_cast<void*>(stream), static_cast<void*>(container), static_cast<void*>(sink)})
    g_object_unref(object);
  if (!written) throw Failure(Error::CannotWrite, "Cannot write \"" + FileName + "\": the compound file was not taken");
}

}  // namespace dorvo::export_
