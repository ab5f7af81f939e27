#include <algorithm>
#include <unordered_map>

#include "engine/layout_attributes.h"
#include "engine/layout_draft.h"
#include "value/text.h"

namespace dorvo::engine {
namespace {

using value::same_name;

constexpr int kFarthest = 1'000'000;  // twips, after all shifts

class Finish {
 public:
  explicit Finish(LayoutDraft&& draft)
      : draft_(std::move(draft)), layout_(std::make_shared<Layout>(std::move(draft_.layout))) {}

  LayoutPtr layout() {
    order_sections();
    pair_groups();
    for (const SectionDraft& section : draft_.sections) check_section(section);
    check_names();
    for (SectionDraft& section : draft_.sections) {
      for (ControlDraft& control : section.controls) finish_control(control, section.layout);
    }
    for (SectionDraft& section : draft_.sections) add_section(section);
    return layout_;
  }

 private:
  // In print order; groups keep the order in which they stand in the file.
  void order_sections() {
    std::stable_sort(draft_.sections.begin(), draft_.sections.end(),
                     [](const SectionDraft& a, const SectionDraft& b) { return a.layout.kind < b.layout.kind; });
    bool detail = false;
    for (std::size_t i = 0; i < draft_.sections.size(); ++i) {
      const SectionDraft& section = draft_.sections[i];
      const SectionKind kind = section.layout.kind;
      detail = detail || kind == SectionKind::Detail;
      const bool many = kind == SectionKind::GroupHeader || kind == SectionKind::GroupFooter;
      if (!many && i > 0 && draft_.sections[i - 1].layout.kind == kind) {
        bad_layout(section.place, "Section " + section.layout.name + ": a layout has one section of this kind");
      }
    }
    if (!detail) bad_layout(draft_.place, "Layout " + layout_->name + ": a section of kind Detail is missing");
  }

  std::vector<SectionDraft*> of_kind(SectionKind kind) {
    std::vector<SectionDraft*> found;
    for (SectionDraft& section : draft_.sections) {
      if (section.layout.kind == kind) found.push_back(&section);
    }
    return found;
  }

  // A footer that names no group takes the header that mirrors it: the first footer closes the innermost group.
  void pair_groups() {
    const std::vector<SectionDraft*> headers = of_kind(SectionKind::GroupHeader);
    const std::vector<SectionDraft*> footers = of_kind(SectionKind::GroupFooter);
    std::size_t inside = headers.size();  // the header that the footer before closes
    for (std::size_t i = 0; i < footers.size(); ++i) {
      SectionLayout& footer = footers[i]->layout;
      if (footer.group.empty() && headers.size() == footers.size()) {
        footer.group = headers[headers.size() - 1 - i]->layout.name;
      }
      const auto named = [&](const SectionDraft* header) { return same_name(header->layout.name, footer.group); };
      const auto header = std::find_if(headers.begin(), headers.end(), named);
      if (header == headers.end()) {
        bad_layout(footers[i]->place,
                   "Section " + footer.name + ": group=\"" + footer.group + "\", expected the name of a GroupHeader");
      }
      footer.group = (*header)->layout.name;
      const auto index = static_cast<std::size_t>(header - headers.begin());
      if (index >= inside) {
        bad_layout(footers[i]->place,
                   "Section " + footer.name + ": group footers stand from inner to outer, one a group");
      }
      inside = index;
    }
  }

  static void check_section(const SectionDraft& section) {
    const SectionLayout& layout = section.layout;
    const bool header = layout.kind == SectionKind::GroupHeader;
    const auto only = [&](bool has, bool may, const char* attribute, const char* kind) {
      if (!has || may) return;
      bad_layout(section.place, "Section " + layout.name + ": only a " + kind + " has the attribute " + attribute);
    };
    only(!layout.key.empty(), header, "key", "GroupHeader");
    only(layout.repeat, header, "repeat", "GroupHeader");
    only(!layout.group.empty(), layout.kind == SectionKind::GroupFooter, "group", "GroupFooter");
    only(layout.columns > 1, layout.kind == SectionKind::Detail, "columns", "Detail");
    only(layout.column_spacing > 0, layout.kind == SectionKind::Detail, "spacing", "Detail");
  }

  // Sections and controls are members of one report.
  void check_names() const {
    std::unordered_map<std::string, Place> taken;
    const auto take = [&](const std::string& name, const Place& place) {
      const auto [before, fresh] = taken.emplace(value::lower_name(name), place);
      if (fresh) return;
      bad_layout(place,
                 name + ": the name is taken at " + before->second.file + ":" + std::to_string(before->second.line));
    };
    for (const SectionDraft& section : draft_.sections) {
      take(section.layout.name, section.place);
      for (const ControlDraft& control : section.controls) take(control.layout.name, control.place);
    }
    for (const SectionDraft& section : draft_.sections) {
      for (const ControlDraft& control : section.controls) {
        const std::string& shares = control.layout.shares;
        if (shares.empty() || taken.contains(value::lower_name(shares))) continue;
        bad_layout(control.place, control.layout.name + ": shares=\"" + shares + "\", expected the name of a control");
      }
    }
  }

  void add_section(SectionDraft& section) {
    section.layout.controls.reserve(section.controls.size());
    for (ControlDraft& control : section.controls) section.layout.controls.push_back(std::move(control.layout));
    layout_->sections.push_back(std::move(section.layout));
  }

  void finish_control(ControlDraft& control, const SectionLayout& section) {
    ControlLayout& layout = control.layout;
    const int right = layout.kind == ControlKind::Line ? control.x2 : layout.left + layout.width;
    const int bottom = layout.kind == ControlKind::Line ? control.y2 : layout.top + layout.height;
    for (const int twips : {layout.left, layout.top, right, bottom}) {
      if (twips < -kFarthest || twips > kFarthest) bad_layout(control.place, layout.name + ": lies too far out");
    }
    layout.width = right - layout.left;
    layout.height = bottom - layout.top;
    if (takes_style(layout.kind)) layout.style = style_of(control);
    finish_sum(control, section);
  }

  void finish_sum(ControlDraft& control, const SectionLayout& section) const {
    ControlLayout& layout = control.layout;
    if (layout.sum == Sum::None && layout.group.empty()) return;
    if (layout.column.empty() || layout.sum == Sum::None) {
      bad_layout(control.place, layout.name + ": a total needs column and sum");
    }
    if (layout.sum != Sum::Group) return;
    if (layout.group.empty()) layout.group = section.kind == SectionKind::GroupHeader ? section.name : section.group;
    for (const SectionDraft& each : draft_.sections) {
      const bool header = each.layout.kind == SectionKind::GroupHeader;
      if (header && same_name(each.layout.name, layout.group)) return;
    }
    bad_layout(control.place, layout.name + ": group=\"" + layout.group + "\", expected the name of a GroupHeader");
  }

  // Controls that look alike share one style.
  const Style* style_of(const ControlDraft& control) {
    Style style = named_style(control);
    for (const auto& [name, text] : control.exceptions) {
      find_rule(style_attributes(), name)->set(style, {control.place, control.layout.name, name, text});
    }
    for (const auto& known : layout_->styles) {
      if (*known == style) return known.get();
    }
    return layout_->styles.emplace_back(std::make_unique<Style>(std::move(style))).get();
  }

  const Style& named_style(const ControlDraft& control) const {
    static const Style plain;
    if (control.style.empty()) return plain;
    for (const StyleDraft& each : draft_.styles) {
      if (same_name(each.style.name, control.style)) return each.style;
    }
    bad_layout(control.place, control.layout.name + ": style=\"" + control.style + "\", expected the name of a Style");
  }

  LayoutDraft draft_;
  std::shared_ptr<Layout> layout_;
};

}  // namespace

LayoutPtr finish_layout(LayoutDraft draft) {
  return Finish(std::move(draft)).layout();
}

}  // namespace dorvo::engine
