#include "export/options.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "export/html_filter.h"
#include "export/page_dump.h"
#include "export/pdf_filter.h"
#include "export/png_filter.h"
#include "export/rtf_filter.h"
#include "export/text_filter.h"
#include "export/tiff_filter.h"
#include "export/xls_filter.h"
#include "value/failure.h"
#include "value/text.h"

namespace dorvo::export_ {

using value::Error;
using value::Failure;

struct PropertyRow {
  Format format;
  std::string_view name;
  std::string_view expected;                              // what a value must be, as messages tell it
  bool (*set)(Filter& filter, const std::string& value);  // false when the value is not as expected
  std::vector<int> allowed = {};                          // whole numbers; empty: `least` and up
  int least = 0;
};

namespace {

bool read(const std::string& value, std::string& text) {
  text = value;
  return true;
}

bool read(const std::string& value, bool& flag) {
  flag = value::same_name(value, "True");
  return flag || value::same_name(value, "False");
}

bool read(const std::string& value, int& number) {
  const char* end = value.data() + value.size();
  const auto [stop, problem] = std::from_chars(value.data(), end, number);
  return problem == std::errc() && stop == end && number >= 0;
}

template <class F, auto Member>
bool set(Filter& filter, const std::string& value) {
  return read(value, static_cast<F&>(filter).*Member);
}

constexpr std::string_view kFlag = "True or False";
constexpr std::string_view kTwips = "a length in twips, 0 or more";
constexpr std::string_view kText = "a text";

const std::vector<PropertyRow>& properties() {
  using H = HtmlFilter;
  using X = XlsFilter;
  static const std::vector<PropertyRow> rows = {
      {Format::Pdf, "Version", "0 (Acrobat 2.1), 1 (3.x) or 2 (4.x)", set<PdfFilter, &PdfFilter::Version>, {0, 1, 2}},
      {Format::Pdf, "JPGQuality", "25, 50, 75 or 100", set<PdfFilter, &PdfFilter::JPGQuality>, {25, 50, 75, 100}},
      {Format::Pdf, "NeverEmbedFonts", "font names, each followed by \";\"",
       set<PdfFilter, &PdfFilter::NeverEmbedFonts>},
      {Format::Html, "FileNamePrefix", kText, set<H, &H::FileNamePrefix>},
      {Format::Html, "HTMLOutputPath", "a folder", set<H, &H::HTMLOutputPath>},
      {Format::Html, "ImagesOutputPath", "a folder", set<H, &H::ImagesOutputPath>},
      {Format::Html, "CharSet", "a character set, such as utf-8", set<H, &H::CharSet>},
      {Format::Html, "Title", kText, set<H, &H::Title>},
      {Format::Html, "HTMLVersion", "0 (HTML 3.2) or 1 (dynamic HTML)", set<H, &H::HTMLVersion>, {0, 1}},
      {Format::Html,
       "TOCFormat",
       "0 (none), 1 (simple HTML), 2 (dynamic HTML) or 3 (XML)",
       set<H, &H::TOCFormat>,
       {0, 1, 2, 3}},
      {Format::Html, "CreateCSS", kFlag, set<H, &H::CreateCSS>},
      {Format::Html, "CreateFrameset", kFlag, set<H, &H::CreateFrameset>},
      {Format::Html, "MHTArchive", kFlag, set<H, &H::MHTArchive>},
      {Format::Html, "MultiPage", kFlag, set<H, &H::MultiPage>},
      {Format::Xls, "FileFormat", "2, 3, 4, 5, 7 or 8", set<X, &X::FileFormat>, {2, 3, 4, 5, 7, 8}},
      {Format::Xls, "AutoRowHeight", kFlag, set<X, &X::AutoRowHeight>},
      {Format::Xls, "BorderSpace", kTwips, set<X, &X::BorderSpace>},
      {Format::Xls, "DoubleBoundaries", kFlag, set<X, &X::DoubleBoundaries>},
      {Format::Xls, "GenPageBreaks", kFlag, set<X, &X::GenPageBreaks>},
      {Format::Xls, "MinColumnWidth", kTwips, set<X, &X::MinColumnWidth>},
      {Format::Xls, "MinRowHeight", kTwips, set<X, &X::MinRowHeight>},
      {Format::Xls, "MultiSheet", kFlag, set<X, &X::MultiSheet>},
      {Format::Xls, "ShowMarginSpace", kFlag, set<X, &X::ShowMarginSpace>},
      {Format::Xls, "TrimEmptySpace", kFlag, set<X, &X::TrimEmptySpace>},
      {Format::Text, "TextDelimiter", kText, set<TextFilter, &TextFilter::TextDelimiter>},
      {Format::Text, "SuppressEmptyLines", kFlag, set<TextFilter, &TextFilter::SuppressEmptyLines>},
      {Format::Text, "Unicode", kFlag, set<TextFilter, &TextFilter::Unicode>},
      {Format::Png, "Resolution", "dots an inch, 1 or more", set<PngFilter, &PngFilter::Resolution>, {}, 1},
  };
  return rows;
}

std::string full_name(const PropertyRow& row) {
  return std::string(format_row(row.format).name) + "." + std::string(row.name);
}

bool holds(const PropertyRow& row, const std::string& value, Filter& filter) {
  if (!row.set(filter, value)) return false;
  int number = 0;
  if (!read(value, number)) return true;  // a text or a flag
  const bool listed = std::find(row.allowed.begin(), row.allowed.end(), number) != row.allowed.end();
  return row.allowed.empty() ? number >= row.least : listed;
}

void aim(HtmlFilter& filter, const std::filesystem::path& target) {
  filter.FileNamePrefix = target.stem().string();
  filter.HTMLOutputPath = filter.ImagesOutputPath = target.has_parent_path() ? target.parent_path().string() : ".";
  filter.MHTArchive = value::same_name(target.extension().string(), ".mht");
}

template <class F>
bool aim(Filter& filter, const std::string& target) {
  auto* one = dynamic_cast<F*>(&filter);
  if (one) one->FileName = target;
  return one != nullptr;
}

}  // namespace

const std::vector<FormatRow>& formats() {
  static const std::vector<FormatRow> rows = {
      {Format::Rtf, "RTF", "Rich Text Format (RTF) - Word", "Rich Text Format (*.RTF)|*.rtf", {"rtf"}},
      {Format::Pdf, "PDF", "Portable Document Format (PDF)", "Portable Document Format (*.pdf)|*.pdf", {"pdf"}},
      {Format::Html, "HTML", "HTML", "", {"html", "htm", "mht"}},
      {Format::Xls, "XLS", "Microsoft Excel Worksheet (XLS)", "Microsoft Excel Document (*.xls)|*.xls", {"xls"}},
      {Format::Tif, "TIF", "Tagged Image Format (TIF)", "Tagged Image Format (*.tif)|*.tif", {"tif", "tiff"}},
      {Format::Text, "Text", "Text", "Text Document (*.txt)|*.txt", {"txt"}},
      {Format::Png, "PNG", "", "", {"png"}},
      {Format::Json, "JSON", "", "", {"json"}},
  };
  return rows;
}

const FormatRow& format_row(Format format) {
  return formats()[static_cast<std::size_t>(format)];
}

std::optional<Format> format_of_file(std::string_view path) {
  const std::size_t point = path.find_last_of("./");
  if (point == std::string_view::npos || path[point] == '/') return std::nullopt;
  for (const FormatRow& row : formats())
    for (std::string_view known : row.extensions)
      if (value::same_name(path.substr(point + 1), known)) return row.format;
  return std::nullopt;
}

Option parse_option(std::string_view text) {
  const std::size_t equals = text.find('=');
  const std::string_view name = text.substr(0, equals);
  if (equals == std::string_view::npos)
    throw Failure(Error::TypeMismatch,
                  "Option \"" + std::string(text) + "\": expected FORMAT.Property=value, such as XLS.FileFormat=5");
  const std::string value(text.substr(equals + 1));
  for (const PropertyRow& row : properties()) {
    if (!value::same_name(full_name(row), name)) continue;
    if (holds(row, value, *new_filter(row.format))) return {&row, value};
    throw Failure(Error::TypeMismatch,
                  "Option " + full_name(row) + ": found \"" + value + "\", expected " + std::string(row.expected));
  }
  std::string known;
  for (const PropertyRow& row : properties()) known += (known.empty() ? "" : ", ") + full_name(row);
  throw Failure(Error::PropertyNotFound, "Option \"" + std::string(name) + "\" is not known; expected one of " + known);
}

std::vector<std::string> option_help() {
  std::vector<std::string> lines;
  for (const PropertyRow& row : properties()) lines.push_back(full_name(row) + "=" + std::string(row.expected));
  return lines;
}

std::unique_ptr<Filter> new_filter(Format format) {
  switch (format) {
    case Format::Rtf:
      return std::make_unique<RtfFilter>();
    case Format::Pdf:
      return std::make_unique<PdfFilter>();
    case Format::Html:
      return std::make_unique<HtmlFilter>();
    case Format::Xls:
      return std::make_unique<XlsFilter>();
    case Format::Tif:
      return std::make_unique<TiffFilter>();
    case Format::Text:
      return std::make_unique<TextFilter>();
    case Format::Png:
      return std::make_unique<PngFilter>();
    case Format::Json:
      return std::make_unique<PageDump>();
  }
  return nullptr;
}

std::unique_ptr<Filter> make_filter(Format format, const std::string& target, const std::vector<Option>& options) {
  std::unique_ptr<Filter> filter = new_filter(format);
  if (auto* html = dynamic_cast<HtmlFilter*>(filter.get()))
    aim(*html, target);
  else
    aim<RtfFilter>(*filter, target) || aim<PdfFilter>(*filter, target) || aim<XlsFilter>(*filter, target) ||
        aim<TiffFilter>(*filter, target) || aim<TextFilter>(*filter, target) || aim<PngFilter>(*filter, target) ||
        aim<PageDump>(*filter, target);
  for (const Option& option : options)
    if (option.property->format == format) option.property->set(*filter, option.value);
  return filter;
}

}  // namespace dorvo::export_
