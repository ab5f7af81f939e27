#include "engine/page_flow.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engine/split.h"
#include "engine/utf8.h"

namespace dorvo::engine {
namespace {

using value::Error;
using value::Failure;

constexpr int kLeastRoom = 360;  // twips between header and footer, a line of type
constexpr std::size_t kMostMessages = 100;

std::uint64_t mix(std::uint64_t hash, std::uint64_t value) {
  hash ^= value + 0x9E3779B97F4A7C15u + (hash << 6) + (hash >> 2);
  return hash * 0xFF51AFD7ED558CCDu;
}

std::uint64_t pair_of(int a, int b) {
  return (std::uint64_t{static_cast<std::uint32_t>(a)} << 32) | static_cast<std::uint32_t>(b);
}

// As much of a text as a message needs, on one line.
std::string start_of(std::string_view text) {
  constexpr int kShown = 60;
  std::string start;
  std::size_t at = 0;
  for (int shown = 0; at < text.size(); ++shown) {
    if (shown == kShown) return start + "...";
    const char32_t character = next_char(text, at);
    if (character != U'\r') append_char(start, character == U'\n' ? U' ' : character);
  }
  return start;
}

// A control is where its layout is, which the page keeps alive.
std::uint64_t fixed_key_of(const Page& page) {
  std::uint64_t key = 0;
  bool any = false;
  for (const PageItem& item : page.items) {
    if (!item.fixed) continue;
    any = true;
    key = mix(key, reinterpret_cast<std::uintptr_t>(item.control));
    key = mix(key, pair_of(item.left, item.top));
    key = mix(key, pair_of(item.width, item.height));
  }
  return any && key == 0 ? 1 : key;
}

int twips(float length) {
  return static_cast<int>(std::lround(length));
}

}  // namespace

// ---- pages ----

void PageFlow::begin() {
  start_first_page();
}

void PageFlow::end() {
  complete_page();
}

void PageFlow::measure_sheet() {
  const PageSettings& settings = run_.report().PageSettings();
  page_ = std::make_shared<Page>();
  page_->number = number_;
  page_->width = settings.sheet_width();
  page_->height = settings.sheet_height();
  page_->left_margin = twips(settings.LeftMargin);
  page_->right_margin = twips(settings.RightMargin);
  page_->top_margin = twips(settings.TopMargin);
  page_->bottom_margin = twips(settings.BottomMargin);
  page_->layouts.push_back(run_.report().layout());
  page_->items.reserve(items_);

  // The footer keeps its room whether it is visible or not: its own handler decides that when the page is complete.
  const SectionPlan* footer = run_.plan().page_footer;
  footer_ = footer ? footer->section->layout().height : 0;
  top_ = page_->top_margin;
  bottom_ = page_->height - page_->bottom_margin - footer_;
}

void PageFlow::start_page() {
  run_.page_number(++number_);
  measure_sheet();
  begun_ = false;
  next_page_due_ = false;
  column_ = -1;
  place_page_header();
  fresh_top_ = top_;
  repeat_group_headers();
  page_top_ = top_;
}

// The report header stands above the header of the first page, unless it needs more than one page itself.
void PageFlow::start_first_page() {
  run_.page_number(++number_);
  measure_sheet();
  Band head;
  if (SectionPlan* header = run_.plan().report_header) run_.compose(*header, head);
  const SectionPlan* page_header = run_.plan().page_header;
  const int below = page_header ? page_header->section->layout().height : 0;
  const bool above = head.visible && head.segments.size() == 1 && fits(head.height + below);
  const int head_height = above ? head.height : 0;
  if (above) {
    put(head, 0, head.height);
    top_ += head.height;
  }
  place_page_header();
  fresh_top_ = top_ - head_height;
  page_top_ = top_;
  begun_ = above && head.height > 0;
  if (above) {
    next_page_due_ = head.section->new_page_after;
  } else if (head.visible) {
    place(head, 0);
  }
}

void PageFlow::place_page_header() {
  if (SectionPlan* header = run_.plan().page_header) {
    run_.compose(*header, edge_);
    if (edge_.visible) {
      put(edge_, 0, edge_.height);
      top_ += edge_.height;
    }
  }
  if (bottom_ - top_ >= kLeastRoom) return;
  throw Failure(Error::EngineState, run_.report().Name() + ", page " + std::to_string(number_) +
                                        ": margins, header and footer leave no room on the sheet");
}

void PageFlow::repeat_group_headers() {
  for (std::size_t i = 0; i < run_.open_groups(); ++i) {
    SectionPlan& header = *run_.plan().groups[i].header;
    if (!header.section->layout().repeat) continue;
    header.section->set_repeat(true);
    run_.compose(header, edge_);
    header.section->set_repeat(false);
    // Heads that would fill the page leave their place to what they head.
    if (!edge_.visible || top_ + edge_.height + kLeastRoom > bottom_) continue;
    put(edge_, 0, edge_.height);
    top_ += edge_.height;
  }
}

void PageFlow::complete_page() {
  place_page_footer();
  page_->fixed_key = fixed_key_of(*page_);
  deliver();
}

void PageFlow::place_page_footer() {
  SectionPlan* footer = run_.plan().page_footer;
  if (!footer) return;
  run_.stand_on_landed_row();
  run_.compose(*footer, edge_);
  run_.stand_on_row();
  top_ = bottom_;
  if (edge_.visible) put(edge_, 0, edge_.height);
}

void PageFlow::deliver() {
  items_ = page_->items.size();
  page_->items.shrink_to_fit();
  PagePtr complete = std::move(page_);
  if (run_.sink()) {
    run_.sink()(complete);
  } else {
    run_.pages().keep(std::move(complete));
  }
}

void PageFlow::next_page() {
  complete_page();
  start_page();
}

// ---- bands ----

void PageFlow::place(Band& band, int room_below) {
  const SectionLayout& section = *band.section;
  if (section.new_page_before && begun_) next_page_due_ = true;
  if (section.kind == SectionKind::Detail && section.columns > 1) {
    place_in_columns(band);
  } else {
    leave_columns();
    for (std::size_t i = 0; i < band.segments.size(); ++i) {
      if (i > 0) next_page_due_ = begun_;
      if (i > 0 && !begun_) start_over();
      place_segment(band, band.segments[i], room_below);
    }
  }
  if (section.new_page_after && begun_) next_page_due_ = true;
}

void PageFlow::place_segment(Band& band, const Segment& segment, int room_below) {
  const int height = segment.to - segment.from;
  if (next_page_due_ && (height > 0 || segment.begins_page)) next_page();
  const bool company = room_below > 0 && fits_on_a_fresh_page(height + room_below);
  if (!fits(height + (company ? room_below : 0)) && band.section->keep_together) {
    if (begun_) {
      next_page();
    } else {
      start_over();
    }
  }
  split(band, segment.from, segment.to);
  begun_ = begun_ || segment.begins_page;
}

// Only empty room stands on the page: it gives way.
void PageFlow::start_over() {
  top_ = page_top_;
}

void PageFlow::split(Band& band, int from, int to) {
  while (!fits(to - from)) {
    const int limit = from + std::max(0, bottom_ - top_);
    const int at = cut(band, from, limit);
    if (at <= from && begun_) {
      next_page();
      continue;
    }
    const int end = at > from ? at : limit;
    put(band, from, end);
    begun_ = true;
    next_page();
    from = end;
  }
  put(band, from, to);
  top_ += to - from;
}

int PageFlow::cut(const Band& band, int from, int limit) const {
  return cut_above(band, from, limit, bottom_ - fresh_top_);
}

// ---- columns: down, then across ----

void PageFlow::place_in_columns(Band& band) {
  const SectionLayout& section = *band.section;
  if (next_page_due_) next_page();
  if (column_ < 0) {
    column_ = 0;
    columns_top_ = columns_bottom_ = top_;
  }
  if (!fits(band.height) && !next_column(section) && begun_) {
    next_page();
    column_ = 0;
    columns_top_ = columns_bottom_ = top_;
  }
  const int right = column_ * column_step(section);
  for (PageItem& item : band.items) item.left += right;
  split(band, 0, band.height);
  begun_ = true;
  columns_bottom_ = std::max(columns_bottom_, top_);
}

bool PageFlow::next_column(const SectionLayout& section) {
  if (column_ + 1 >= section.columns || top_ == columns_top_) return false;
  ++column_;
  top_ = columns_top_;
  return true;
}

// What follows the columns stands below the longest of them.
void PageFlow::leave_columns() {
  if (column_ < 0) return;
  column_ = -1;
  top_ = columns_bottom_;
}

int PageFlow::column_step(const SectionLayout& section) const {
  const int printable = page_->width - page_->left_margin - page_->right_margin;
  const int width = run_.report().layout()->width;
  return ((width > 0 ? width : printable) + section.column_spacing) / section.columns;
}

// ---- items ----

void PageFlow::put(Band& band, int from, int to) {
  const int down = top_ - from;
  for (const LayoutPtr& layout : band.layouts) {
    if (std::find(page_->layouts.begin(), page_->layouts.end(), layout) == page_->layouts.end()) {
      page_->layouts.push_back(layout);
    }
  }
  if (from == 0 && to >= band.height) {
    for (PageItem& item : band.items) put_item(std::move(item), down);
    return;
  }
  for (const PageItem& item : band.items) {
    PageItem part;
    if (part_of(item, from, to, to >= band.height, part)) put_item(std::move(part), down);
  }
}

void PageFlow::put_item(PageItem&& item, int down) {
  item.left += page_->left_margin;
  item.top += down;
  if (item.clipped) tell_clipped(item);
  page_->items.push_back(std::move(item));
}

void PageFlow::tell_clipped(const PageItem& item) {
  if (++clipped_ == kMostMessages + 1) run_.messages().push_back(run_.report().Name() + ": further texts are cut");
  if (clipped_ > kMostMessages) return;
  run_.messages().push_back(run_.report().Name() + ", page " + std::to_string(number_) + ", " + item.name() +
                            ": the text is larger than its box and is cut: " + start_of(item.string()));
}

}  // namespace dorvo::engine
