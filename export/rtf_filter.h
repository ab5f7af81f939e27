// Finished pages as Rich Text Format: every text in a text box at its place on the page, rules and frames as drawn
// objects, a hard page break between pages, and the page's size and margins. A change of page size starts a new
// section. The file is plain ASCII; other characters are written by their code point.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/painter.h"
#include "export/filter.h"
#include "export/output_file.h"
#include "export/spool.h"

namespace dorvo::export_ {

class RtfFilter : public Filter {
 public:
  std::string FileName;

  void begin() override;
  void page(const engine::PagePtr& page) override;
  void end() override;

 private:
  void break_page(const engine::Page& page);
  void add_text(const engine::PageItem& item);
  void begin_object(const char* kind);
  void add_rule(const engine::PageItem& item);
  void add_box(const engine::PageItem& item);
  void add_place(int left, int top, int width, int height);
  void add_pen(const engine::ControlLayout& control);
  std::size_t font(const std::string& family);
  std::size_t color(std::uint32_t rgb);
  std::string head() const;

  std::unique_ptr<OutputFile> file_;
  std::unique_ptr<Spool> body_;
  std::string bytes_;  // of the page that is being written
  std::vector<std::string> fonts_;
  std::vector<std::uint32_t> colors_;
  engine::Page first_;  // its size and margins
  int width_ = 0;       // of the page before
  int height_ = 0;
  int height_order_ = 0;  // of the drawn objects on a page, later ones above
};

}  // namespace dorvo::export_
