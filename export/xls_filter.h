// Finished pages as a worksheet file: real cells, numbers as numbers, the fonts, alignments and borders that the
// version has, columns and rows as the grid step finds them.
//
// Pages follow one another on one sheet, in columns common to all of them, or each has a sheet of its own. A sheet that
// is full goes on in another where the version has several, else the export fails and says so. Pages are put aside in a
// temporary file until the columns are known; memory grows with the different texts of version 8 only.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "export/biff.h"
#include "export/filter.h"
#include "export/output_file.h"
#include "export/page_boxes.h"
#include "export/spool.h"

namespace dorvo::export_ {

class XlsFilter : public Filter {
 public:
  std::string FileName;
  int FileFormat = 8;             // 2, 3, 4, 5, 7 or 8
  bool AutoRowHeight = false;     // the reader makes rows as high as their texts
  int BorderSpace = 59;           // twips: edges nearer than that are one boundary
  bool DoubleBoundaries = false;  // right edges and bottoms are boundaries too
  bool GenPageBreaks = true;      // a page break before each page after the first of a sheet
  int MinColumnWidth = 1011;      // twips
  int MinRowHeight = 128;
  bool MultiSheet = false;       // a sheet for each page
  bool ShowMarginSpace = false;  // the page's margins are cells instead of margins of the print
  bool TrimEmptySpace = false;   // no column or row for empty space

  ~XlsFilter() override;
  void begin() override;
  void page(const engine::PagePtr& page) override;
  void end() override;

 private:
  class Sheets;

  GridOptions grid_options() const;
  void check() const;
  bool sheet_per_page() const { return MultiSheet && biff_workbook(FileFormat); }
  void write_stream(Sheets& sheets, const std::string& globals);

  std::unique_ptr<OutputFile> file_;
  std::unique_ptr<Spool> pages_;
  std::unique_ptr<BiffStyles> styles_;
  std::unique_ptr<BiffText> text_;
  std::unique_ptr<GridColumnFinder> columns_;
  OverlapNotes notes_;
  std::size_t page_count_ = 0;
};

}  // namespace dorvo::export_
