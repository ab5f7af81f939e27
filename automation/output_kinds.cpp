#include "automation/output_kinds.h"

#include <span>
#include <variant>

#include "export/page_dump.h"
#include "export/pdf_filter.h"
#include "export/png_filter.h"
#include "export/rtf_filter.h"
#include "export/text_filter.h"
#include "export/tiff_filter.h"
#include "export/xls_filter.h"
#include "frame/coerce.h"
#include "value/text.h"

namespace dorvo::automation {
namespace {

template <class Filter>
struct Property {
  std::string_view name;
  std::variant<bool Filter::*, int Filter::*, std::string Filter::*> target;
};

// One specialisation a format, in the order in which the export dialog shows the properties.
template <class Filter>
std::span<const Property<Filter>> properties() {
  return {};
}

template <>
std::span<const Property<export_::PdfFilter>> properties() {
  using F = export_::PdfFilter;
  static constexpr Property<F> kAll[] = {
      {"Version", &F::Version}, {"JPGQuality", &F::JPGQuality}, {"NeverEmbedFonts", &F::NeverEmbedFonts}};
  return kAll;
}

template <>
std::span<const Property<export_::XlsFilter>> properties() {
  using F = export_::XlsFilter;
  static constexpr Property<F> kAll[] = {
      {"FileFormat", &F::FileFormat},           {"AutoRowHeight", &F::AutoRowHeight},
      {"BorderSpace", &F::BorderSpace},         {"DoubleBoundaries", &F::DoubleBoundaries},
      {"GenPageBreaks", &F::GenPageBreaks},     {"MinColumnWidth", &F::MinColumnWidth},
      {"MinRowHeight", &F::MinRowHeight},       {"MultiSheet", &F::MultiSheet},
      {"ShowMarginSpace", &F::ShowMarginSpace}, {"TrimEmptySpace", &F::TrimEmptySpace}};
  return kAll;
}

template <>
std::span<const Property<export_::PngFilter>> properties() {
  using F = export_::PngFilter;
  static constexpr Property<F> kAll[] = {{"Resolution", &F::Resolution}};
  return kAll;
}

template <>
std::span<const Property<export_::TextFilter>> properties() {
  using F = export_::TextFilter;
  static constexpr Property<F> kAll[] = {
      {"TextDelimiter", &F::TextDelimiter}, {"SuppressEmptyLines", &F::SuppressEmptyLines}, {"Unicode", &F::Unicode}};
  return kAll;
}

void assign(bool& to, const std::string& text) {
  to = frame::boolean_of(text);
}
void assign(int& to, const std::string& text) {
  to = frame::long_of(text);
}
void assign(std::string& to, const std::string& text) {
  to = text;
}

// The property's name when the option is one of this format's; empty for another format's.
std::string_view property_of(const OutputKind& kind, const OutputOption& option) {
  const std::string_view name = option.name;
  const std::size_t point = name.find('.');
  if (point == std::string_view::npos || !value::same_name(name.substr(0, point), kind.format)) return {};
  return name.substr(point + 1);
}

template <class Filter>
bool apply(const OutputKind& kind, const OutputOption& option, Filter& filter) {
  const std::string_view name = property_of(kind, option);
  for (const Property<Filter>& property : properties<Filter>()) {
    if (!value::same_name(property.name, name)) continue;
    std::visit([&](auto member) { assign(filter.*member, option.value); }, property.target);
    return true;
  }
  return false;
}

template <class Filter>
bool takes(const OutputKind& kind, const OutputOption& option) {
  try {
    Filter filter;
    return apply(kind, option, filter);
  } catch (const value::Failure&) {
    return false;
  }
}

void name_file(auto& filter, const std::string& file) {
  filter.FileName = file;
}

template <class Filter>
std::unique_ptr<export_::Filter> make(const OutputKind& kind, const std::string& file,
                                      const std::vector<OutputOption>& options) {
  auto filter = std::make_unique<Filter>();
  name_file(*filter, file);
  for (const OutputOption& option : options) apply(kind, option, *filter);
  return filter;
}

template <class Filter>
OutputKind kind(std::string_view extension, std::string_view format) {
  return {extension, format, make<Filter>, takes<Filter>};
}

}  // namespace

const std::vector<OutputKind>& output_kinds() {
  static const std::vector<OutputKind> kinds = {
      kind<export_::PdfFilter>("pdf", "PDF"),   kind<export_::PngFilter>("png", "PNG"),
      kind<export_::PageDump>("json", "JSON"),  kind<export_::RtfFilter>("rtf", "RTF"),
      kind<export_::XlsFilter>("xls", "XLS"),   kind<export_::TiffFilter>("tif", "TIF"),
      kind<export_::TextFilter>("txt", "Text"),
  };
  return kinds;
}

const OutputKind* output_kind_of(std::string_view file) {
  const std::size_t point = file.find_last_of("./");
  if (point == std::string_view::npos || file[point] == '/') return nullptr;
  for (const OutputKind& row : output_kinds()) {
    if (value::same_name(row.extension, file.substr(point + 1))) return &row;
  }
  return nullptr;
}

bool is_output_option(const OutputOption& option) {
  for (const OutputKind& row : output_kinds()) {
    if (row.takes(row, option)) return true;
  }
  return false;
}

}  // namespace dorvo::automation
