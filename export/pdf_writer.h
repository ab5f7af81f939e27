// Finished pages as a PDF, to any sink of bytes.
//
// Pages go out as they come; only the numbers of their objects are kept, so memory does not grow with the document but
// by some bytes a page. No date, no random id: the same pages give the same bytes. The fixed layer of a form is drawn
// once a document, and kept, packed, for the life of the process (bounded). One thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/pages.h"
#include "export/pdf_fonts.h"
#include "export/pdf_objects.h"

namespace dorvo::export_ {

class PdfWriter {
 public:
  PdfWriter(ByteSink sink, PdfVersion version = PdfVersion::Acrobat3, NeverEmbed left_out = {});

  void page(const engine::Page& page);
  void end();

 private:
  int fixed_object(const engine::Page& page);
  std::string packed(std::string content) const;

  PdfObjects objects_;
  NeverEmbed left_out_;
  PdfFontUse use_;
  int catalog_, tree_, resources_;
  std::vector<int> pages_;
  std::unordered_map<std::string, int> fixed_objects_;  // by their bytes
};

}  // namespace dorvo::export_
