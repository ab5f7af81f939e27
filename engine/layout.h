// A stored layout: what a report looks like before any data is in it.
//
// Read once by layout_reader.h and then constant; shared by std::shared_ptr between the report object, its
// finished pages and the caches of the painters. Lengths and positions are twips (1440 to an inch). Positions of
// controls count from the top of their section and from the left margin of the page.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dorvo::engine {

enum class Align : std::uint8_t { Left, Center, Right };
enum class VAlign : std::uint8_t { Top, Middle, Bottom };

// How text looks. Layouts name these and controls refer to them by name.
struct Style {
  std::string name;
  std::string font = "Arial";  // family
  int half_points = 20;        // size; 20 is 10 pt
  bool bold = false;
  bool italic = false;
  bool underline = false;
  Align align = Align::Left;
  VAlign valign = VAlign::Top;
  std::uint32_t color = 0x000000;  // 0xRRGGBB

  friend bool operator==(const Style&, const Style&) = default;
};

enum class ControlKind : std::uint8_t { Label, Field, Line, Shape, SubReport, PageBreak, Data };

enum class LineStyle : std::uint8_t { Solid, Dash, Dot };

// Over what a bound Field with a total adds up the rows.
enum class Sum : std::uint8_t { None, Group, Report };

struct ControlLayout {
  ControlKind kind = ControlKind::Label;
  std::string name;
  int left = 0;
  int top = 0;
  int width = 0;       // of a Line: to its end point, may be negative
  int height = 0;      // of a Line: to its end point, may be negative
  std::string text;    // caption of a Label, the designer's text of a Field; line ends are CR LF
  std::string column;  // Field: the column of the main query, empty when bound to nothing
  std::string tag;
  const Style* style = nullptr;  // Label and Field; owned by the Layout
  bool visible = true;
  bool grow = false;    // the box grows downwards with its text, and its section with it
  bool shrink = false;  // the text is made smaller, in half points down to 6 pt, until it fits
  bool wrap = true;     // false: one line only
  std::string shares;   // name of the control in whose place this one stands on purpose
  engine::Sum sum = Sum::None;
  std::string group;  // Sum::Group: name of the group header section whose group is added up
  int weight = 10;    // Line, Shape, border of a box: width of the rule; 0 draws none
  LineStyle line_style = LineStyle::Solid;
  std::uint32_t color = 0x000000;  // of the rule
  bool border = false;             // Label, Field: a rule around the box
  bool filled = false;             // Shape
  std::uint32_t fill = 0xFFFFFF;
  std::string report;  // SubReport: report class that the layout author expects, for the checks only
  int line = 0;        // where it stands in the layout's file, for messages
};

enum class SectionKind : std::uint8_t {
  ReportHeader,
  PageHeader,
  GroupHeader,
  Detail,
  GroupFooter,
  PageFooter,
  ReportFooter
};

struct SectionLayout {
  SectionKind kind = SectionKind::Detail;
  std::string name;
  int height = 0;
  bool visible = true;
  std::string key;            // GroupHeader: the column whose change breaks the group; empty: one group over all rows
  std::string group;          // GroupFooter: name of its GroupHeader
  bool repeat = false;        // GroupHeader: printed again at the top of each page on which the group goes on
  bool keep_together = true;  // moves whole to the next page when it does not fit but would fit there
  bool new_page_before = false;
  bool new_page_after = false;
  int columns = 1;  // Detail only: columns down, then across
  int column_spacing = 0;
  std::vector<ControlLayout> controls;  // in designer order, which is print order
  int line = 0;
};

struct Layout {
  std::string name;
  std::string base;  // name of the layout that it extends, empty when none
  int version = 1;
  int width = 0;     // of the print area; 0 when the page decides
  std::string file;  // where it was read from, for messages
  std::vector<std::unique_ptr<Style>> styles;
  // ReportHeader, PageHeader, group headers outer to inner, Detail, group footers inner to outer, PageFooter,
  // ReportFooter; those that the layout has.
  std::vector<SectionLayout> sections;

  // nullptr when there is none; names ignore case.
  const SectionLayout* find_section(std::string_view name) const;
};

using LayoutPtr = std::shared_ptr<const Layout>;

}  // namespace dorvo::engine
