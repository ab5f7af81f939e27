// Bands onto pages: what fits goes down the page, what does not goes to the next one.
//
// One function for each decision: how much room the footer keeps, whether a band fits, where a band that is taller than
// a page is cut, how a page starts and how it is completed. Private to the engine.
#pragma once

#include <memory>

#include "engine/run.h"

namespace dorvo::engine {

class PageFlow : public BandTarget {
 public:
  explicit PageFlow(Run& run) : run_(run) {}
  void begin() override;
  void place(Band& band, int room_below) override;
  void end() override;

 private:
  // Of a page.
  void measure_sheet();
  void start_page();
  void start_first_page();
  void place_page_header();
  void repeat_group_headers();
  void complete_page();
  void place_page_footer();
  void next_page();
  void deliver();

  // Of a band.
  void place_segment(Band& band, const Segment& segment, int room_below);
  bool fits(int height) const { return top_ + height <= bottom_; }
  bool fits_on_a_fresh_page(int height) const { return fresh_top_ + height <= bottom_; }
  void split(Band& band, int from, int to);
  int cut(const Band& band, int from, int limit) const;
  void start_over();

  // Of columns.
  void place_in_columns(Band& band);
  bool next_column(const SectionLayout& section);
  void leave_columns();
  int column_step(const SectionLayout& section) const;

  // Of items.
  void put(Band& band, int from, int to);
  void put_item(PageItem&& item, int down);
  void tell_clipped(const PageItem& item);

  Run& run_;
  Band edge_;  // headers and footers of the page
  std::shared_ptr<Page> page_;
  int number_ = 0;
  int footer_ = 0;              // height that the footer keeps
  int top_ = 0;                 // where the next band goes, twips on the sheet
  int bottom_ = 0;              // where the footer begins
  int fresh_top_ = 0;           // where the first band of a page goes that has nothing but its header
  int page_top_ = 0;            // where the first band of this page goes
  bool begun_ = false;          // something other than the page's own header stands on this page
  bool next_page_due_ = false;  // what comes next goes to a new page

  int column_ = -1;  // none
  int columns_top_ = 0;
  int columns_bottom_ = 0;

  std::size_t items_ = 0;  // of the last page, to make room for as many
  std::size_t clipped_ = 0;
};

}  // namespace dorvo::engine
