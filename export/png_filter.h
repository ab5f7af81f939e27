// Pictures of the pages, for looking at: one PNG file a page.
//
// A report of one page goes to FileName; with more, page 3 of "form.png" goes to "form-3.png". All files appear at the
// end, or none.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "export/filter.h"
#include "export/output_file.h"

namespace dorvo::export_ {

class PngFilter : public Filter {
 public:
  std::string FileName;
  int Resolution = 150;  // dots an inch

  void begin() override;
  void page(const engine::PagePtr& page) override;
  void end() override;

 private:
  std::vector<std::unique_ptr<OutputFile>> files_;
};

}  // namespace dorvo::export_
