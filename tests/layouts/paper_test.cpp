// What every stored layout must keep, so that nothing is cut, printed over or lost on paper.
#include <gtest/gtest.h>

#include <algorithm>

#include "engine/fit.h"
#include "engine/layout_store.h"
#include "frame/page_setups.h"
#include "layouts/layouts.h"
#include "value/text.h"

namespace dorvo {
namespace {

using engine::ControlKind;
using engine::ControlLayout;
using engine::Layout;
using engine::SectionKind;
using engine::SectionLayout;

struct Size {
  int width;
  int height;
};

// What the report's page set-up leaves to print on; margins that it does not write are the engine's inch.
Size print_area(const std::string& report) {
  const frame::ReportKind* found = frame::find_report_kind(report);
  const frame::ReportKind kind = found ? *found : frame::ReportKind();
  engine::PageSettings page;
  page.PaperSize = kind.paper;
  if (kind.paper == engine::kPaperCustom) {
    page.PaperWidth = static_cast<float>(kind.paper_width);
    page.PaperHeight = static_cast<float>(kind.paper_height);
  }
  page.Orientation = kind.orientation;
  const auto margin = [](int twips) { return twips == frame::kNotWritten ? 1440 : twips; };
  return {page.sheet_width() - margin(kind.left) - margin(kind.right),
          page.sheet_height() - margin(kind.top) - margin(kind.bottom)};
}

bool bears_text(const ControlLayout& control) {
  return control.kind == ControlKind::Label || control.kind == ControlKind::Field;
}

// The control in whose place this one stands in the end.
std::string place_of(const ControlLayout& control, const SectionLayout& section) {
  const ControlLayout* at = &control;
  for (std::size_t step = 0; !at->shares.empty() && step < section.controls.size(); ++step) {
    const auto next = std::ranges::find_if(
        section.controls, [&](const ControlLayout& each) { return value::same_name(each.name, at->shares); });
    if (next == section.controls.end()) break;
    at = &*next;
  }
  return value::lower_name(at->name);
}

bool overlap(const ControlLayout& a, const ControlLayout& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height && b.top < a.top + a.height;
}

class Paper : public ::testing::Test {
 protected:
  Paper() { layouts::embed(); }

  // `check` is handed every section of every layout; failures tell where it stands.
  template <class Check>
  static void each_section(Check check) {
    for (const std::string& name : engine::stored_layout_names()) {
      const auto layout = engine::stored_layout(name);
      for (const SectionLayout& section : layout->sections) {
        SCOPED_TRACE(name + ", " + section.name);
        check(*layout, section);
      }
    }
  }
};

TEST_F(Paper, FixedTextFitsItsBox) {
  each_section([](const Layout&, const SectionLayout& section) {
    for (const ControlLayout& control : section.controls) {
      if (!bears_text(control) || control.text.empty()) continue;
      EXPECT_FALSE(engine::fit_text(control.text, control).clipped)
          << control.name << ": \"" << control.text << "\" does not fit " << control.width << " x " << control.height;
    }
  });
}

TEST_F(Paper, TextsStandApartOrShareAPlace) {
  each_section([](const Layout&, const SectionLayout& section) {
    std::vector<const ControlLayout*> texts;
    for (const ControlLayout& control : section.controls) {
      if (bears_text(control)) texts.push_back(&control);
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        if (!overlap(*texts[i], *texts[j]) || place_of(*texts[i], section) == place_of(*texts[j], section)) continue;
        ADD_FAILURE() << texts[i]->name << " and " << texts[j]->name << " overlap";
      }
    }
  });
}

TEST_F(Paper, EverythingLiesInsideThePrintArea) {
  each_section([](const Layout& layout, const SectionLayout& section) {
    const Size area = print_area(layout.name);
    EXPECT_LE(layout.width, area.width);
    const int column = (area.width - (section.columns - 1) * section.column_spacing) / section.columns;
    for (const ControlLayout& control : section.controls) {
      if (control.kind == ControlKind::PageBreak || control.kind == ControlKind::Data) continue;
      EXPECT_GE(std::min(control.left, control.left + control.width), 0) << control.name;
      EXPECT_GE(std::min(control.top, control.top + control.height), 0) << control.name;
      EXPECT_LE(std::max(control.left, control.left + control.width), column) << control.name;
      EXPECT_LE(std::max(control.top, control.top + control.height), section.height) << control.name;
    }
  });
}

// Between its page breaks a section must fit what the page's header and footer leave, and no control may lie across a
// break: it would be torn.
TEST_F(Paper, PiecesBetweenBreaksFitThePage) {
  each_section([](const Layout& layout, const SectionLayout& section) {
    if (section.kind == SectionKind::PageHeader || section.kind == SectionKind::PageFooter) return;
    int room = print_area(layout.name).height;
    for (const SectionLayout& each : layout.sections) {
      if (each.kind == SectionKind::PageHeader || each.kind == SectionKind::PageFooter) room -= each.height;
    }
    std::vector<int> breaks = {0, section.height};
    for (const ControlLayout& control : section.controls) {
      if (control.kind == ControlKind::PageBreak) breaks.push_back(control.top);
    }
    std::ranges::sort(breaks);
    for (std::size_t i = 1; i < breaks.size(); ++i) {
      EXPECT_LE(breaks[i] - breaks[i - 1], room) << "from " << breaks[i - 1];
    }
    for (const ControlLayout& control : section.controls) {
      if (control.kind == ControlKind::PageBreak) continue;
      const int top = std::min(control.top, control.top + control.height);
      const int bottom = std::max(control.top, control.top + control.height);
      for (const int at : breaks) {
        EXPECT_FALSE(top < at && at < bottom) << control.name << " lies across the break at " << at;
      }
    }
  });
}

}  // namespace
}  // namespace dorvo
