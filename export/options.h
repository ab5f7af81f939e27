// The export formats by name, and their options by property: "XLS.FileFormat=5", "HTML.MultiPage=False".
//
// The defaults of all options are the initial values of the filters' members; the export dialog and the command line
// both start from them. A wrong option fails with one line: what was given and what was expected.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export/filter.h"

namespace dorvo::export_ {

// The six of the export dialog in its order, then those that only a command line asks for: pictures for looking at and
// the page dump.
enum class Format { Rtf, Pdf, Html, Xls, Tif, Text, Png, Json };
constexpr std::size_t kDialogFormats = 6;

struct FormatRow {
  Format format;
  std::string_view name;                     // in options: "XLS"
  std::string_view caption;                  // in the dialog; empty: not there
  std::string_view file_filter;              // of its file dialog; empty: it has none
  std::vector<std::string_view> extensions;  // lower case; the first is the usual one
};

const std::vector<FormatRow>& formats();
const FormatRow& format_row(Format format);
// By the extension of a file name, without regard to case.
std::optional<Format> format_of_file(std::string_view path);

struct PropertyRow;  // one property of one filter

// One option that was found right.
struct Option {
  const PropertyRow* property = nullptr;
  std::string value;
};

// From "FORMAT.Property=value"; names ignore case. Fails with PropertyNotFound or TypeMismatch.
Option parse_option(std::string_view text);
// All options with their kinds, one line each, for a help text.
std::vector<std::string> option_help();

std::unique_ptr<Filter> new_filter(Format format);

// A filter that writes to `target`, with the options of its format; options of other formats are left out. For HTML the
// target gives folder and prefix, and ".mht" asks for the archive.
std::unique_ptr<Filter> make_filter(Format format, const std::string& target, const std::vector<Option>& options);

}  // namespace dorvo::export_
