// The PDF filter: finished pages to a PDF file.
#pragma once

#include <memory>
#include <string>

#include "export/filter.h"
#include "export/output_file.h"
#include "export/pdf_writer.h"

namespace dorvo::export_ {

class PdfFilter : public Filter {
 public:
  std::string FileName;
  int Version = 1;              // 0, 1, 2: the file is PDF 1.1, 1.2, 1.3 and uses nothing newer
  int JPGQuality = 75;          // of pictures, 1 to 100; finished pages hold none so far
  std::string NeverEmbedFonts;  // families that are left out of the file, each followed by ";"

  void begin() override;
  void page(const engine::PagePtr& page) override;
  void end() override;

 private:
  std::unique_ptr<OutputFile> file_;
  std::unique_ptr<PdfWriter> writer_;
};

}  // namespace dorvo::export_
