// The kinds of file that a run can be written to, by extension, and the properties of their filters by name.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "export/filter.h"

namespace dorvo::automation {

// "PDF.Version" and its value, in the order given.
struct OutputOption {
  std::string name;
  std::string value;
};

struct OutputKind {
  std::string_view extension;  // "pdf"
  std::string_view format;     // the name before the point of an option
  std::unique_ptr<export_::Filter> (*make)(const OutputKind& kind, const std::string& file,
                                           const std::vector<OutputOption>& options);
  // Whether the format has the option's property and the value fits it.
  bool (*takes)(const OutputKind& kind, const OutputOption& option);
};

const std::vector<OutputKind>& output_kinds();

// By the extension of a file's name, in any capitals; nullptr when there is none.
const OutputKind* output_kind_of(std::string_view file);

bool is_output_option(const OutputOption& option);

}  // namespace dorvo::automation
