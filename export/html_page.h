// One finished page as HTML, in UTF-8: as a table (HTML 3.2) or as positioned elements (dynamic HTML).
//
// Fonts and borders are classes of a style sheet; the sheet hands each rule out once, as the pages come to need it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "engine/painter.h"
#include "export/page_boxes.h"

namespace dorvo::export_ {

std::string html_escaped(std::string_view text);

// Class names by what they say; the same for the whole export.
class HtmlStyles {
 public:
  // The class of these declarations, "s1", "s2", ... in order of first use.
  std::string name(const std::string& declarations);
  // The class that prints an element on a sheet of the page's size.
  std::string sheet(const engine::Page& page);
  // The rules that were asked for since the last call and were not handed out since forget().
  std::string take();
  // A new page file begins with no rules.
  void forget() { handed_.clear(); }

 private:
  std::map<std::string, std::size_t> numbers_;
  std::set<std::size_t> handed_;
  std::map<std::size_t, std::string> wanted_;
};

// The rules that every page of the kind needs.
std::string html_base_rules(bool dynamic);

// The element that holds the page; its id (or anchor name) is "page" and the page's number.
std::string dynamic_page(const engine::Page& page, HtmlStyles& styles);
// `spacer` refers to a picture of one clear dot that keeps the columns at their widths.
std::string table_page(const engine::Page& page, HtmlStyles& styles, const std::string& spacer, OverlapNotes& notes,
                       std::vector<std::string>& messages);

}  // namespace dorvo::export_
