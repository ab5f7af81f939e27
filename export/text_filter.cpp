#include "export/text_filter.h"

#include <algorithm>
#include <cmath>

namespace dorvo::export_ {
namespace {

using engine::Align;
using engine::PageItem;

constexpr int kCharacterWidth = 120;  // twips
constexpr int kLineHeight = 240;

std::size_t length_in_characters(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

// A line of characters that grows to the right; texts are added from left to right.
struct CharacterLine {
  std::string text;
  std::size_t width = 0;

  void put(std::size_t column, std::string_view piece) {
    if (width > 0) column = std::max(column, width + 1);
    text.append(column - width, ' ');
    text += piece;
    width = column + length_in_characters(piece);
  }
};

int characters(int twips) {
  return static_cast<int>(std::lround(static_cast<double>(twips) / kCharacterWidth));
}

// The character column in which a text starts so that it stands in its box as on paper.
std::size_t column_of(const PageItem& item, std::string_view text) {
  const int length = static_cast<int>(length_in_characters(text));
  const int left = characters(item.left);
  const int right = characters(item.left + item.width);
  int column = left;
  if (item.control->style && item.control->style->align == Align::Right) column = right - length;
  if (item.control->style && item.control->style->align == Align::Center) column = left + (right - left - length) / 2;
  return static_cast<std::size_t>(std::max(0, column));
}

std::string quoted(const std::string& text, const std::string& delimiter) {
  if (text.find(delimiter) == std::string::npos && text.find('"') == std::string::npos) return text;
  std::string quoted = "\"";
  for (char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + '"';
}

// Empty lines that the page shows between the end of one row and the start of the next.
int empty_lines(int twips) {
  return std::max(0, static_cast<int>(std::lround(static_cast<double>(twips) / kLineHeight)));
}

}  // namespace

void TextFilter::begin() {
  encoder_ = std::make_unique<Encoder>(Unicode ? "UTF-16LE" : "CP1252", Missing::QuestionMark);
  file_ = std::make_unique<OutputFile>(FileName);
  messages_.clear();
  notes_ = {};
  first_page_ = true;
  if (Unicode) file_->write("\xFF\xFE");
}

void TextFilter::page(const engine::PagePtr& page) {
  const PageBoxes boxes = boxes_of(*page);
  const GridOptions options;
  GridColumnFinder finder(options);
  finder.add(boxes.boxes);
  const Grid grid = make_grid(boxes.boxes, {}, finder.columns(), options);
  notes_.add(*page, boxes, grid, messages_);
  bytes_.clear();
  if (TextDelimiter.empty()) {
    if (!first_page_) encoder_->append(bytes_, "\f");
    write_placed(boxes, grid);
  } else {
    write_delimited(boxes, grid);
  }
  first_page_ = false;
  file_->write(bytes_);
}

void TextFilter::end() {
  if (encoder_->replaced())
    messages_.push_back("\"" + FileName + "\": characters that code page 1252 has not were written as question marks");
  file_->commit();
  file_.reset();
}

void TextFilter::write_line(std::string_view line) {
  if (SuppressEmptyLines && line.find_first_not_of(' ') == std::string_view::npos) return;
  encoder_->append(bytes_, line);
  encoder_->append(bytes_, "\r\n");
}

void TextFilter::write_gap(int lines) {
  for (int i = 0; i < lines; ++i) write_line("");
}

void TextFilter::write_delimited(const PageBoxes& boxes, const Grid& grid) {
  auto cell = grid.cells.begin();
  int below = grid.rows() > 0 ? grid.row_starts.front() : 0;
  for (std::size_t row = 0; row < grid.rows(); ++row) {
    if (grid.row_starts[row] > below) write_gap(empty_lines(grid.row_starts[row] - below));
    below = std::max(below, grid.content[row]);
    std::string line;
    for (std::size_t column = 0; column < grid.columns; ++column) {
      if (column > 0) line += TextDelimiter;
      if (cell == grid.cells.end() || cell->row != row || cell->column != column) continue;
      std::string text;
      for (std::size_t box : cell->boxes) {
        if (!text.empty()) text += ' ';
        text += cell_text(*boxes.items[box], " ");
      }
      line += quoted(text, TextDelimiter);
      ++cell;
    }
    write_line(line);
  }
}

void TextFilter::write_placed(const PageBoxes& boxes, const Grid& grid) {
  auto cell = grid.cells.begin();
  int below = 0;
  for (std::size_t row = 0; row < grid.rows(); ++row) {
    if (grid.row_starts[row] > below) write_gap(empty_lines(grid.row_starts[row] - below));
    std::vector<CharacterLine> lines;
    for (; cell != grid.cells.end() && cell->row == row; ++cell)
      for (std::size_t box : cell->boxes) {
        const PageItem& item = *boxes.items[box];
        const std::vector<std::string> texts = lines_of(item);
        if (lines.size() < texts.size()) lines.resize(texts.size());
        for (std::size_t i = 0; i < texts.size(); ++i)
          if (!texts[i].empty()) lines[i].put(column_of(item, texts[i]), texts[i]);
      }
    for (const CharacterLine& line : lines) write_line(line.text);
    const int written = grid.row_starts[row] + static_cast<int>(lines.size()) * kLineHeight;
    below = std::max({below, written, grid.content[row]});
  }
}

}  // namespace dorvo::export_
