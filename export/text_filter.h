// Finished pages as a text file: cells with a delimiter between them, or at their places when there is no delimiter.
//
// Lines end with CR LF. With a delimiter a line is a row of the page's grid, and a text that holds the delimiter, a
// quotation mark or a line end is quoted. Without one, texts stand on a grid of characters of 120 by 240 twips (12 to
// the inch), never over each other, and a form feed starts each page after the first. Empty lines stand for empty space
// of the page unless they are suppressed. Unicode is UTF-16 little endian with its mark; else the file is code page
// 1252, with a question mark for what that has not.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "export/encoding.h"
#include "export/filter.h"
#include "export/output_file.h"
#include "export/page_boxes.h"

namespace dorvo::export_ {

class TextFilter : public Filter {
 public:
  std::string FileName;
  std::string TextDelimiter;
  bool SuppressEmptyLines = false;
  bool Unicode = false;

  void begin() override;
  void page(const engine::PagePtr& page) override;
  void end() override;

 private:
  void write_line(std::string_view line);
  void write_gap(int lines);
  void write_delimited(const PageBoxes& boxes, const Grid& grid);
  void write_placed(const PageBoxes& boxes, const Grid& grid);

  std::unique_ptr<OutputFile> file_;
  std::unique_ptr<Encoder> encoder_;
  OverlapNotes notes_;
  bool first_page_ = true;
  std::string bytes_;
};

}  // namespace dorvo::export_
