// Every layout that is built into the library reads, belongs to a report, and cuts no word of its wording in two.
#include <gtest/gtest.h>

#include "engine/fit.h"
#include "engine/layout_store.h"
#include "frame/page_setups.h"
#include "layouts/layouts.h"
#include "value/failure.h"

namespace dorvo {
namespace {

TEST(StoredLayouts, AllReadAndBelongToAReport) {
  layouts::embed();
  ASSERT_FALSE(engine::stored_layout_names().empty());
  for (const std::string& name : engine::stored_layout_names()) {
    try {
      EXPECT_EQ(engine::stored_layout(name)->name, name);
      EXPECT_NE(frame::find_report_kind(name), nullptr) << name << ": no report of this name";
    } catch (const value::Failure& failure) {
      ADD_FAILURE() << failure.description();
    }
  }
}

// A word that is too wide for a line goes on in the next one.
void check_words(const engine::Layout& layout, const engine::ControlLayout& control) {
  constexpr std::string_view kBetween = " \t\r\n";
  const std::string_view text = control.text;
  const int size = engine::fit_text(text, control).half_points;
  const double width = control.width - 2 * engine::text_inset(control);
  for (std::size_t at = text.find_first_not_of(kBetween); at != std::string_view::npos;) {
    const std::size_t end = std::min(text.find_first_of(kBetween, at), text.size());
    const std::string_view word = text.substr(at, end - at);
    EXPECT_LE(engine::twips_of(engine::shape(word, *control.style, size, 0)->widest, size), width + 1)
        << layout.name << ", " << control.name << ", line " << control.line << ": the box is too narrow for " << word;
    at = text.find_first_not_of(kBetween, end);
  }
}

TEST(StoredLayouts, NoWordIsWiderThanItsBox) {
  layouts::embed();
  for (const std::string& name : engine::stored_layout_names()) {
    const engine::LayoutPtr layout = engine::stored_layout(name);
    for (const engine::SectionLayout& section : layout->sections) {
      for (const engine::ControlLayout& control : section.controls) {
        if (control.style) check_words(*layout, control);
      }
    }
  }
}

}  // namespace
}  // namespace dorvo
