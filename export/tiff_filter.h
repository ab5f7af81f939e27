// The TIFF filter: one file of all pages, black and white, packed as fax machines do (CCITT group 4).
#pragma once

#include <memory>
#include <string>

#include "export/filter.h"

namespace dorvo::export_ {

class TiffFilter : public Filter {
 public:
  TiffFilter();
  ~TiffFilter() override;

  std::string FileName;

  void begin() override;
  void page(const engine::PagePtr& page) override;
  void end() override;

  static constexpr int kDotsPerInch = 204;

 private:
  struct Writer;
  std::unique_ptr<Writer> writer_;
};

}  // namespace dorvo::export_
