// The finished pages as JSON, for tests and for programs that read what a form says.
//
// {"report": ..., "pages": [{"number", "width", "height", "items": [{"kind", "section", "name", "text", "left", "top",
// "width", "height"}]}], "messages": [...]}: one item per Field, Label, Line and Shape in print order; twips on the
// page; line ends in a text are CR LF. Keys stand in this order and every item has them all.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "export/filter.h"
#include "export/output_file.h"

namespace dorvo::export_ {

class PageDump : public Filter {
 public:
  std::string FileName;
  std::string Report;                    // name of the report class
  std::vector<std::string> RunMessages;  // of the run, its failure included; read by end()

  void begin() override;
  void page(const engine::PagePtr& page) override;
  void end() override;

 private:
  std::unique_ptr<OutputFile> file_;
  bool first_ = true;
};

}  // namespace dorvo::export_
