#include "export/pdf_filter.h"

#include "value/failure.h"

namespace dorvo::export_ {
namespace {

void check(const char* property, int value, int least, int most) {
  if (value >= least && value <= most) return;
  throw value::Failure(value::Error::InvalidPropertyValue, std::string("PDF.") + property + ": " +
                                                               std::to_string(value) + " is not between " +
                                                               std::to_string(least) + " and " + std::to_string(most));
}

}  // namespace

void PdfFilter::begin() {
  check("Version", Version, 0, 2);
  check("JPGQuality", JPGQuality, 1, 100);
  file_ = std::make_unique<OutputFile>(FileName);
  writer_ = std::make_unique<PdfWriter>([this](std::string_view bytes) { file_->write(bytes); },
                                        static_cast<PdfVersion>(Version), NeverEmbed(NeverEmbedFonts));
}

void PdfFilter::page(const engine::PagePtr& page) {
  writer_->page(*page);
}

void PdfFilter::end() {
  writer_->end();
  file_->commit();
  writer_.reset();
  file_.reset();
}

}  // namespace dorvo::export_
