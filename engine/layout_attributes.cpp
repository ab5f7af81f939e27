#include "engine/layout_attributes.h"

#include <array>
#include <charconv>
#include <cmath>

namespace dorvo::engine {
namespace {

constexpr int kFarthest = 1'000'000;  // twips; more than any sheet, and no sum of two leaves an int
constexpr int kLongestName = 64;

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

template <class Number>
bool read_number(std::string_view text, Number& number) {
  const char* end = text.data() + text.size();
  const auto [stop, problem] = std::from_chars(text.data(), end, number);
  return problem == std::errc() && stop == end;
}

constexpr std::array<Attribute::Word<Align>, 3> kAligns = {
    {{"left", Align::Left}, {"center", Align::Center}, {"right", Align::Right}}};
constexpr std::array<Attribute::Word<VAlign>, 3> kVAligns = {
    {{"top", VAlign::Top}, {"middle", VAlign::Middle}, {"bottom", VAlign::Bottom}}};
constexpr std::array<Attribute::Word<LineStyle>, 3> kLineStyles = {
    {{"solid", LineStyle::Solid}, {"dash", LineStyle::Dash}, {"dot", LineStyle::Dot}}};
constexpr std::array<Attribute::Word<Sum>, 2> kSums = {{{"group", Sum::Group}, {"report", Sum::Report}}};
constexpr std::array<Attribute::Word<SectionKind>, 7> kSectionKinds = {{{"ReportHeader", SectionKind::ReportHeader},
                                                                        {"PageHeader", SectionKind::PageHeader},
                                                                        {"GroupHeader", SectionKind::GroupHeader},
                                                                        {"Detail", SectionKind::Detail},
                                                                        {"GroupFooter", SectionKind::GroupFooter},
                                                                        {"PageFooter", SectionKind::PageFooter},
                                                                        {"ReportFooter", SectionKind::ReportFooter}}};
struct NewPage {
  bool before;
  bool after;
};
constexpr std::array<Attribute::Word<NewPage>, 3> kNewPages = {
    {{"before", {true, false}}, {"after", {false, true}}, {"both", {true, true}}}};
constexpr std::array<Attribute::Word<ControlKind>, 7> kControlKinds = {{{"Label", ControlKind::Label},
                                                                        {"Field", ControlKind::Field},
                                                                        {"Line", ControlKind::Line},
                                                                        {"Shape", ControlKind::Shape},
                                                                        {"SubReport", ControlKind::SubReport},
                                                                        {"PageBreak", ControlKind::PageBreak},
                                                                        {"Data", ControlKind::Data}}};

constexpr std::array<AttributeRule<Layout>, 4> kLayout = {{
    {"name", [](Layout& l, const Attribute& a) { l.name = a.identifier(); }},
    {"version", [](Layout& l, const Attribute& a) { l.version = a.count(1, 1); }},
    {"width", [](Layout& l, const Attribute& a) { l.width = a.length(); }},
    {"base", [](Layout& l, const Attribute& a) { l.base = a.identifier(); }},
}};

constexpr std::array<AttributeRule<Style>, 9> kStyle = {{
    {"name", [](Style& s, const Attribute& a) { s.name = a.identifier(); }},
    {"font", [](Style& s, const Attribute& a) { s.font = a.string(); }},
    {"size", [](Style& s, const Attribute& a) { s.half_points = a.half_points(); }},
    {"bold", [](Style& s, const Attribute& a) { s.bold = a.flag(); }},
    {"italic", [](Style& s, const Attribute& a) { s.italic = a.flag(); }},
    {"underline", [](Style& s, const Attribute& a) { s.underline = a.flag(); }},
    {"align", [](Style& s, const Attribute& a) { s.align = a.choice<Align>(kAligns); }},
    {"valign", [](Style& s, const Attribute& a) { s.valign = a.choice<VAlign>(kVAligns); }},
    {"color", [](Style& s, const Attribute& a) { s.color = a.color(); }},
}};

constexpr std::array<AttributeRule<SectionDraft>, 11> kSection = {{
    {"kind",
     [](SectionDraft& s, const Attribute& a) {
       const auto kind = a.choice<SectionKind>(kSectionKinds);
       if (s.kind_written && kind != s.layout.kind) a.wrong("the kind that the base gives it");
       s.layout.kind = kind;
       s.kind_written = true;
     }},
    {"name", [](SectionDraft& s, const Attribute& a) { s.layout.name = a.identifier(); }},
    {"height", [](SectionDraft& s, const Attribute& a) { s.layout.height = a.length(); }},
    {"visible", [](SectionDraft& s, const Attribute& a) { s.layout.visible = a.flag(); }},
    {"key", [](SectionDraft& s, const Attribute& a) { s.layout.key = a.string(); }},
    {"group", [](SectionDraft& s, const Attribute& a) { s.layout.group = a.identifier(); }},
    {"repeat", [](SectionDraft& s, const Attribute& a) { s.layout.repeat = a.flag(); }},
    {"keep", [](SectionDraft& s, const Attribute& a) { s.layout.keep_together = a.flag(); }},
    {"newpage",
     [](SectionDraft& s, const Attribute& a) {
       const auto where = a.choice<NewPage>(kNewPages);
       s.layout.new_page_before = where.before;
       s.layout.new_page_after = where.after;
     }},
    {"columns", [](SectionDraft& s, const Attribute& a) { s.layout.columns = a.count(1, 20); }},
    {"spacing", [](SectionDraft& s, const Attribute& a) { s.layout.column_spacing = a.length(); }},
}};

using ControlRule = AttributeRule<ControlDraft>;
constexpr ControlRule kName = {"name", [](ControlDraft& c, const Attribute& a) { c.layout.name = a.identifier(); }};
constexpr ControlRule kLeft = {"left", [](ControlDraft& c, const Attribute& a) { c.layout.left = a.twips(); }};
constexpr ControlRule kTop = {"top", [](ControlDraft& c, const Attribute& a) { c.layout.top = a.twips(); }};
constexpr ControlRule kWidth = {"width", [](ControlDraft& c, const Attribute& a) { c.layout.width = a.length(); }};
constexpr ControlRule kHeight = {"height", [](ControlDraft& c, const Attribute& a) { c.layout.height = a.length(); }};
constexpr ControlRule kX2 = {"x2", [](ControlDraft& c, const Attribute& a) { c.x2 = a.twips(); }};
constexpr ControlRule kY2 = {"y2", [](ControlDraft& c, const Attribute& a) { c.y2 = a.twips(); }};
constexpr ControlRule kText = {"text", [](ControlDraft& c, const Attribute& a) { c.layout.text = a.string(); }};
constexpr ControlRule kStyleName = {"style", [](ControlDraft& c, const Attribute& a) { c.style = a.identifier(); }};
constexpr ControlRule kColumn = {"column", [](ControlDraft& c, const Attribute& a) { c.layout.column = a.string(); }};
constexpr ControlRule kSum = {"sum", [](ControlDraft& c, const Attribute& a) { c.layout.sum = a.choice<Sum>(kSums); }};
constexpr ControlRule kGroup = {"group", [](ControlDraft& c, const Attribute& a) { c.layout.group = a.identifier(); }};
constexpr ControlRule kTag = {"tag", [](ControlDraft& c, const Attribute& a) { c.layout.tag = a.string(); }};
constexpr ControlRule kVisible = {"visible", [](ControlDraft& c, const Attribute& a) { c.layout.visible = a.flag(); }};
constexpr ControlRule kGrow = {"grow", [](ControlDraft& c, const Attribute& a) { c.layout.grow = a.flag(); }};
constexpr ControlRule kShrink = {"shrink", [](ControlDraft& c, const Attribute& a) { c.layout.shrink = a.flag(); }};
constexpr ControlRule kWrap = {"wrap", [](ControlDraft& c, const Attribute& a) { c.layout.wrap = a.flag(); }};
constexpr ControlRule kShares = {"shares",
                                 [](ControlDraft& c, const Attribute& a) { c.layout.shares = a.identifier(); }};
constexpr ControlRule kBorder = {"border", [](ControlDraft& c, const Attribute& a) { c.layout.border = a.flag(); }};
constexpr ControlRule kWeight = {"weight",
                                 [](ControlDraft& c, const Attribute& a) { c.layout.weight = a.count(0, 1440); }};
constexpr ControlRule kLineStyle = {
    "line", [](ControlDraft& c, const Attribute& a) { c.layout.line_style = a.choice<LineStyle>(kLineStyles); }};
constexpr ControlRule kColor = {"color", [](ControlDraft& c, const Attribute& a) { c.layout.color = a.color(); }};
constexpr ControlRule kFill = {"fill", [](ControlDraft& c, const Attribute& a) {
                                 c.layout.fill = a.color();
                                 c.layout.filled = true;
                               }};
constexpr ControlRule kReport = {"report",
                                 [](ControlDraft& c, const Attribute& a) { c.layout.report = a.identifier(); }};
constexpr ControlRule kBlock = {"block", [](ControlDraft& c, const Attribute& a) { c.block = a.identifier(); }};

constexpr std::array kLabel = {kName,    kLeft, kTop,    kWidth, kHeight, kText,   kStyleName, kTag,
                               kVisible, kGrow, kShrink, kWrap,  kShares, kBorder, kWeight,    kBlock};
constexpr std::array kField = {kName,  kLeft,    kTop,  kWidth,  kHeight, kText,   kStyleName, kTag,    kColumn, kSum,
                               kGroup, kVisible, kGrow, kShrink, kWrap,   kShares, kBorder,    kWeight, kBlock};
constexpr std::array kLine = {kName, kLeft, kTop, kX2, kY2, kWeight, kLineStyle, kColor, kTag, kVisible, kBlock};
constexpr std::array kShape = {kName,      kLeft,  kTop,  kWidth, kHeight,  kWeight,
                               kLineStyle, kColor, kFill, kTag,   kVisible, kBlock};
constexpr std::array kSubReport = {kName, kLeft, kTop, kWidth, kHeight, kReport, kTag, kVisible, kBlock};
constexpr std::array kPageBreak = {kName, kTop, kTag, kVisible, kBlock};
constexpr std::array kData = {kName, kTag};

}  // namespace

std::string Attribute::string() const {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r' || c == '\n') {
      result += "\r\n";
      if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else if (static_cast<unsigned char>(c) < ' ' && c != '\t') {
      wrong("a text without control characters");
    } else {
      result += c;
    }
  }
  return result;
}

std::string Attribute::identifier() const {
  bool good = !text.empty() && text.size() <= kLongestName && (is_letter(text[0]) || text[0] == '_');
  for (const char c : text) good = good && (is_letter(c) || is_digit(c) || c == '_');
  if (!good) wrong("a name of letters, digits and _");
  return std::string(text);
}

int Attribute::count(int from, int to) const {
  int number = 0;
  if (read_number(text, number) && number >= from && number <= to) return number;
  wrong(from == to ? std::to_string(from)
                   : "a whole number from " + std::to_string(from) + " to " + std::to_string(to));
}

int Attribute::twips() const {
  return count(-kFarthest, kFarthest);
}

int Attribute::length() const {
  return count(0, kFarthest);
}

int Attribute::half_points() const {
  double points = 0;
  if (read_number(text, points) && points >= 4 && points <= 200) {
    const double halves = points * 2;
    if (halves == std::floor(halves)) return static_cast<int>(halves);
  }
  wrong("points from 4 to 200, whole or half");
}

bool Attribute::flag() const {
  if (text == "true") return true;
  if (text == "false") return false;
  wrong("true or false");
}

std::uint32_t Attribute::color() const {
  std::uint32_t rgb = 0;
  if (text.size() == 7 && text[0] == '#') {
    const char* end = text.data() + text.size();
    const auto [stop, problem] = std::from_chars(text.data() + 1, end, rgb, 16);
    if (problem == std::errc() && stop == end) return rgb;
  }
  wrong("a color as #RRGGBB");
}

void Attribute::wrong(const std::string& expected) const {
  constexpr std::size_t kShown = 60;
  std::string found(text.substr(0, kShown));
  if (text.size() > kShown) found += "...";
  bad_layout(place, std::string(element) + ": " + std::string(name) + "=\"" + found + "\", expected " + expected);
}

std::span<const AttributeRule<Layout>> layout_attributes() {
  return kLayout;
}
std::span<const AttributeRule<Style>> style_attributes() {
  return kStyle;
}
std::span<const AttributeRule<SectionDraft>> section_attributes() {
  return kSection;
}

std::span<const AttributeRule<ControlDraft>> control_attributes(ControlKind kind) {
  switch (kind) {
    case ControlKind::Label:
      return kLabel;
    case ControlKind::Field:
      return kField;
    case ControlKind::Line:
      return kLine;
    case ControlKind::Shape:
      return kShape;
    case ControlKind::SubReport:
      return kSubReport;
    case ControlKind::PageBreak:
      return kPageBreak;
    case ControlKind::Data:
      return kData;
  }
  return {};
}

bool takes_style(ControlKind kind) {
  return kind == ControlKind::Label || kind == ControlKind::Field;
}

bool find_control_kind(std::string_view element, ControlKind& kind) {
  for (const auto& each : kControlKinds) {
    if (each.word != element) continue;
    kind = each.value;
    return true;
  }
  return false;
}

std::string_view element_name(ControlKind kind) {
  for (const auto& each : kControlKinds) {
    if (each.value == kind) return each.word;
  }
  return {};
}

}  // namespace dorvo::engine
