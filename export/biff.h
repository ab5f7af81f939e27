// The records of worksheet files in six versions: 2, 3 and 4 are bare streams of one sheet, 5, 7 and 8 streams of
// several sheets that stand in a compound file. What differs between versions is decided here and nowhere else.
//
// A BiffStyles collects the fonts, number formats and cell formats in order of first use; a BiffText counts the shared
// strings of version 8. Lengths are twips, rows and columns count from 0.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/layout.h"
#include "export/encoding.h"

namespace dorvo::export_ {

// Little endian bytes of a record.
class BiffBytes {
 public:
  BiffBytes& u8(std::size_t value) { return put(value, 1); }
  BiffBytes& u16(std::size_t value) { return put(value, 2); }
  BiffBytes& u32(std::size_t value) { return put(value, 4); }
  BiffBytes& f64(double value);
  BiffBytes& text(std::string_view bytes) {
    bytes_ += bytes;
    return *this;
  }
  const std::string& bytes() const { return bytes_; }

 private:
  BiffBytes& put(std::size_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) bytes_ += static_cast<char>(value >> (8 * i) & 0xFF);
    return *this;
  }
  std::string bytes_;
};

void append_record(std::string& out, std::size_t type, const BiffBytes& payload);

// What a version can hold.
struct BiffLimits {
  std::size_t rows = 65536;
  std::size_t columns = 256;
  std::size_t breaks = 1024;  // page breaks of a sheet
  std::size_t text = 32767;   // characters of a cell
};
BiffLimits biff_limits(int version);
inline bool biff_workbook(int version) {
  return version >= 5;
}

constexpr int kGeneral = -1;  // no number format

struct CellFormat {
  std::size_t font = 0;     // as BiffStyles::font() gave it
  int decimals = kGeneral;  // of a number
  engine::Align align = engine::Align::Left;
  bool general_align = true;
  bool across = false;  // centred over the empty cells to its right
  bool wrap = false;
  std::uint8_t border = 0;  // kBorder... of the grid step
  friend auto operator<=>(const CellFormat&, const CellFormat&) = default;
};

class BiffStyles {
 public:
  explicit BiffStyles(int version);
  std::size_t font(const engine::Style& style, int half_points);
  std::size_t format(const CellFormat& format);
  // FONT, FORMAT, XF and STYLE records.
  std::string records() const;
  // The three attribute bytes that cells of version 2 carry, with an IXFE record in front where it is needed.
  std::string attributes(std::size_t format, std::string& front) const;

 private:
  struct Font {
    std::string family;
    int height = 200;        // twips
    std::uint8_t flags = 0;  // bold 1, italic 2, underline 4
    std::size_t color = 0;
    friend auto operator<=>(const Font&, const Font&) = default;
  };
  void add_font(std::string& out, const Font& font) const;
  void add_formats(std::string& out) const;
  void add_format(std::string& out, const CellFormat& format, bool style) const;
  std::size_t font_index(std::size_t font) const { return font < 4 ? font : font + 1; }

  int version_;
  std::vector<Font> fonts_;
  std::vector<CellFormat> formats_;
  std::map<Font, std::size_t> font_at_;
  std::map<CellFormat, std::size_t> format_at_;
};

// Texts as the version writes them.
class BiffText {
 public:
  explicit BiffText(int version);
  // A text of code page 1252 or of 8 or 16 bits, with a length of one byte or two.
  std::string counted(std::string_view utf8, std::size_t length_bytes);
  // Number of a shared string, counting its use.
  std::size_t shared(const std::string& utf8);
  std::string shared_table();  // SST and its CONTINUE records
  bool replaced() const { return narrow_.replaced(); }
  bool cut() const { return cut_; }

 private:
  int version_;
  Encoder narrow_;
  Encoder latin_;
  Encoder wide_;
  bool cut_ = false;
  std::size_t uses_ = 0;
  std::unordered_map<std::string, std::size_t> numbers_;
  std::vector<const std::string*> strings_;  // in order of first use; the keys of numbers_
};

// Cells and rows of one sheet body.
class BiffCells {
 public:
  BiffCells(int version, BiffStyles& styles, BiffText& text) : version_(version), styles_(styles), text_(text) {}
  // `height` 0: as high as the reader makes it.
  void row(std::size_t row, std::size_t columns, int height);
  void blank(std::size_t row, std::size_t column, std::size_t format);
  void number(std::size_t row, std::size_t column, std::size_t format, double number);
  void label(std::size_t row, std::size_t column, std::size_t format, const std::string& utf8);
  std::string take();  // the records since the last take()

 private:
  BiffBytes place(std::size_t row, std::size_t column, std::size_t format);

  int version_;
  BiffStyles& styles_;
  BiffText& text_;
  std::string records_;
};

struct BiffMerge {
  std::size_t first_row = 0, last_row = 0, first_column = 0, last_column = 0;
};

struct BiffPrint {
  int left = 0, right = 0, top = 0, bottom = 0;  // margins
  bool landscape = false;
  bool a4 = true;
};

struct BiffSheet {
  std::string name;
  std::size_t rows = 0;
  std::vector<int> widths;          // of the columns
  std::vector<std::size_t> breaks;  // first row of each page after the first
  std::vector<BiffMerge> merges;    // version 8 only
  BiffPrint print;
  bool first = false;  // shown when the file is opened
};

// What stands before and after the cells of a sheet; versions 2 to 4 put the styles in its head.
std::string sheet_head(int version, const BiffSheet& sheet, const BiffStyles& styles);
std::string sheet_tail(int version, const BiffSheet& sheet);
// The globals of a workbook. `sizes` are those of the sheets, in bytes.
std::string workbook_globals(int version, const std::vector<BiffSheet>& sheets, const std::vector<std::size_t>& sizes,
                             const BiffStyles& styles, BiffText& text);

}  // namespace dorvo::export_
