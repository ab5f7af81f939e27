#include "engine/layout_reader.h"

#include <algorithm>
#include <pugixml.hpp>

#include "engine/layout_attributes.h"
#include "engine/utf8.h"
#include "value/failure.h"
#include "value/text.h"

namespace dorvo::engine {
namespace {

using value::same_name;

constexpr std::size_t kDeepestBase = 8;

// One layout file being read onto the draft of its base.
class LayoutFile {
 public:
  LayoutFile(std::string_view xml, const std::string& file) : xml_(xml), file_(file) {
    check_text();
    const pugi::xml_parse_result parsed =
        document_.load_buffer(xml.data(), xml.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!parsed) bad_layout(place_at(parsed.offset), std::string("no XML: ") + parsed.description());
    root_ = document_.document_element();
    if (std::string_view(root_.name()) != "Layout") {
      bad_layout(place_of(root_), "found " + element_of(root_) + ", expected the element Layout");
    }
    for (const pugi::xml_node node : document_.children()) {
      if (node != root_) bad_layout(place_of(node), "found " + element_of(node) + " behind the Layout");
    }
  }

  std::string_view base() const { return root_.attribute("base").value(); }
  Place place() const { return place_of(root_); }

  void apply(LayoutDraft& draft) {
    draft.layout.base.clear();
    draft.layout.name.clear();
    draft.layout.file = file_;
    draft.place = place();
    read_attributes(root_, layout_attributes(), draft.layout);
    if (draft.layout.name.empty()) bad_layout(place(), "Layout: the attribute name is missing");
    for (const pugi::xml_node node : root_.children()) {
      const std::string_view element = node.name();
      if (element == "Style") {
        apply_style(node, draft);
      } else if (element == "Section") {
        apply_section(node, draft);
      } else {
        bad_layout(place_of(node), "found " + element_of(node) + ", expected Style or Section");
      }
    }
  }

 private:
  // Only UTF-8 without control characters goes on to the pages.
  void check_text() const {
    for (std::size_t at = 0; at < xml_.size();) {
      const std::size_t start = at;
      const char32_t character = next_char(xml_, at);
      const bool broken = character == kReplacement && at - start == 1;
      const bool control = character < ' ' && character != '\t' && character != '\r' && character != '\n';
      if (broken) bad_layout(place_at(static_cast<std::ptrdiff_t>(start)), "a byte that is no UTF-8");
      if (control) bad_layout(place_at(static_cast<std::ptrdiff_t>(start)), "a control character");
    }
  }

  Place place_at(std::ptrdiff_t offset) const {
    const auto end = xml_.begin() + std::clamp<std::ptrdiff_t>(offset, 0, static_cast<std::ptrdiff_t>(xml_.size()));
    return {file_, 1 + static_cast<int>(std::count(xml_.begin(), end, '\n'))};
  }

  // Elements are met in the order of the file, so that counting goes on from the last one.
  Place place_of(const pugi::xml_node& node) const {
    const std::ptrdiff_t offset = node.offset_debug();
    if (offset < counted_to_) return place_at(offset);
    line_ += static_cast<int>(std::count(xml_.begin() + counted_to_, xml_.begin() + offset, '\n'));
    counted_to_ = offset;
    return {file_, line_};
  }

  static std::string element_of(const pugi::xml_node& node) {
    return *node.name() ? "the element " + std::string(node.name()) : "text between the elements";
  }

  static std::string title_of(const pugi::xml_node& node) {
    const std::string name = node.attribute("name").value();
    return name.empty() ? node.name() : std::string(node.name()) + " " + name;
  }

  // An element as its attributes are told of in messages.
  struct Element {
    Place place;
    std::string title;
  };
  Element element(const pugi::xml_node& node) const { return {place_of(node), title_of(node)}; }

  template <class Target>
  static void read_attribute(const Element& element, const pugi::xml_attribute& attribute,
                             std::span<const AttributeRule<Target>> rules, Target& target) {
    const AttributeRule<Target>* rule = find_rule(rules, attribute.name());
    if (rule) return rule->set(target, {element.place, element.title, attribute.name(), attribute.value()});
    std::string known;
    for (const AttributeRule<Target>& each : rules) known.append(known.empty() ? "" : ", ").append(each.name);
    bad_layout(element.place, element.title + ": unknown attribute " + attribute.name() + ", expected one of " + known);
  }

  template <class Target>
  void read_attributes(const pugi::xml_node& node, std::span<const AttributeRule<Target>> rules, Target& target) const {
    check_twice(node);
    const Element written = element(node);
    for (const pugi::xml_attribute attribute : node.attributes()) read_attribute(written, attribute, rules, target);
  }

  void check_twice(const pugi::xml_node& node) const {
    for (const pugi::xml_attribute attribute : node.attributes()) {
      if (node.attribute(attribute.name()) != attribute) {
        bad_layout(place_of(node), title_of(node) + ": the attribute " + attribute.name() + " stands twice");
      }
    }
  }

  void check_empty(const pugi::xml_node& node) const {
    const pugi::xml_node child = node.first_child();
    if (child) bad_layout(place_of(child), title_of(node) + ": found " + element_of(child) + " inside, expected none");
  }

  std::string name_of(const pugi::xml_node& node) const { return name_in(node, "name"); }

  std::string name_in(const pugi::xml_node& node, const char* attribute) const {
    const pugi::xml_attribute name = node.attribute(attribute);
    if (!name) bad_layout(place_of(node), title_of(node) + ": the attribute " + attribute + " is missing");
    const Place where = place_of(node);
    return Attribute{where, node.name(), attribute, name.value()}.identifier();
  }

  void apply_style(const pugi::xml_node& node, LayoutDraft& draft) {
    check_empty(node);
    const std::string name = name_of(node);
    const auto same = [&](const StyleDraft& style) { return same_name(style.style.name, name); };
    auto style = std::find_if(draft.styles.begin(), draft.styles.end(), same);
    if (style == draft.styles.end()) style = draft.styles.insert(style, StyleDraft());
    refuse_twice(node, style->place);
    style->place = place_of(node);
    read_attributes(node, style_attributes(), style->style);
  }

  // Two elements of one file cannot both describe one thing.
  void refuse_twice(const pugi::xml_node& node, const Place& before) const {
    if (before.file != file_ || before.line == 0) return;
    bad_layout(place_of(node), title_of(node) + ": the name is taken on line " + std::to_string(before.line));
  }

  void apply_section(const pugi::xml_node& node, LayoutDraft& draft) {
    const std::string name = name_of(node);
    const auto same = [&](const SectionDraft& section) { return same_name(section.layout.name, name); };
    auto section = std::find_if(draft.sections.begin(), draft.sections.end(), same);
    if (section == draft.sections.end()) section = draft.sections.insert(section, SectionDraft());
    refuse_twice(node, section->place);
    section->place = place_of(node);
    section->layout.line = section->place.line;
    read_attributes(node, section_attributes(), *section);
    if (!section->kind_written) bad_layout(section->place, title_of(node) + ": the attribute kind is missing");
    change_base(node, *section);
    const auto children = node.children();
    section->controls.reserve(section->controls.size() +
                              static_cast<std::size_t>(std::distance(children.begin(), children.end())));
    for (const pugi::xml_node child : node.children()) {
      if (!is_change(child)) apply_control(child, *section);
    }
  }

  static bool is_change(const pugi::xml_node& node) {
    const std::string_view element = node.name();
    return element == "Rename" || element == "Remove" || element == "Shift";
  }

  // Names change first and all at once, then controls go out, then blocks move; whatever the order in the file.
  void change_base(const pugi::xml_node& node, SectionDraft& section) {
    rename(node, section);
    for (const pugi::xml_node child : node.children("Remove")) remove(child, section);
    for (const pugi::xml_node child : node.children("Shift")) shift(child, section);
  }

  ControlDraft* find_control(SectionDraft& section, std::string_view name) const {
    for (ControlDraft& control : section.controls) {
      if (same_name(control.layout.name, name)) return &control;
    }
    return nullptr;
  }

  ControlDraft& base_control(const pugi::xml_node& node, SectionDraft& section) const {
    const std::string name = name_of(node);
    ControlDraft* control = find_control(section, name);
    if (!control) {
      bad_layout(place_of(node),
                 title_of(node) + ": section " + section.layout.name + " of the base has no such control");
    }
    return *control;
  }

  void rename(const pugi::xml_node& node, SectionDraft& section) {
    struct Change {
      ControlDraft* control;
      std::string to;
    };
    std::vector<Change> changes;
    for (const pugi::xml_node child : node.children("Rename")) {
      check_change(child, {"name", "to"});
      ControlDraft& control = base_control(child, section);
      for (const Change& earlier : changes) {
        if (earlier.control == &control) bad_layout(place_of(child), title_of(child) + ": renamed twice");
      }
      changes.push_back({&control, name_in(child, "to")});
    }
    std::vector<std::pair<std::string*, std::string>> followers;
    for (ControlDraft& control : section.controls) {
      for (const Change& change : changes) {
        if (same_name(control.layout.shares, change.control->layout.name)) {
          followers.emplace_back(&control.layout.shares, change.to);
        }
      }
    }
    for (Change& change : changes) change.control->layout.name = std::move(change.to);
    for (auto& [shares, to] : followers) *shares = std::move(to);
  }

  void remove(const pugi::xml_node& node, SectionDraft& section) {
    check_change(node, {"name"});
    const ControlDraft* gone = &base_control(node, section);
    section.controls.erase(section.controls.begin() + (gone - section.controls.data()));
  }

  void shift(const pugi::xml_node& node, SectionDraft& section) {
    check_change(node, {"block", "left", "top"});
    const std::string block = name_in(node, "block");
    const int right = shift_by(node, "left");
    const int down = shift_by(node, "top");
    bool found = false;
    for (ControlDraft& control : section.controls) {
      if (control.block != block) continue;
      found = true;
      control.layout.left += right;
      control.layout.top += down;
      control.x2 += right;
      control.y2 += down;
    }
    if (!found) {
      bad_layout(place_of(node), "Shift: section " + section.layout.name + " of the base has no block " + block);
    }
  }

  int shift_by(const pugi::xml_node& node, const char* attribute) const {
    const Place where = place_of(node);
    const pugi::xml_attribute by = node.attribute(attribute);
    return by ? Attribute{where, "Shift", attribute, by.value()}.twips() : 0;
  }

  void check_change(const pugi::xml_node& node, std::initializer_list<std::string_view> known) const {
    check_empty(node);
    check_twice(node);
    for (const pugi::xml_attribute attribute : node.attributes()) {
      if (std::find(known.begin(), known.end(), attribute.name()) == known.end()) {
        bad_layout(place_of(node), title_of(node) + ": unknown attribute " + attribute.name());
      }
    }
  }

  void apply_control(const pugi::xml_node& node, SectionDraft& section) {
    ControlKind kind{};
    if (!find_control_kind(node.name(), kind)) {
      bad_layout(place_of(node), "section " + section.layout.name + ": found " + element_of(node) +
                                     ", expected Label, Field, Line, Shape, SubReport, PageBreak, Data, Remove, "
                                     "Rename or Shift");
    }
    check_empty(node);
    const std::string name = name_of(node);
    ControlDraft* control = find_control(section, name);
    if (!control) {
      control = &section.controls.emplace_back();
      control->layout.kind = kind;
    }
    refuse_twice(node, control->place);
    if (control->layout.kind != kind) {
      bad_layout(place_of(node),
                 title_of(node) + ": the base has it as " + std::string(element_name(control->layout.kind)));
    }
    control->place = place_of(node);
    control->layout.line = control->place.line;
    read_control(node, *control);
  }

  void read_control(const pugi::xml_node& node, ControlDraft& control) const {
    check_twice(node);
    const auto rules = control_attributes(control.layout.kind);
    const Element written = element(node);
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const bool own = find_rule(rules, attribute.name()) != nullptr;
      if (!own && takes_style(control.layout.kind) && find_rule(style_attributes(), attribute.name())) {
        Style tried;
        read_attribute(written, attribute, style_attributes(), tried);
        control.exceptions.insert_or_assign(attribute.name(), attribute.value());
      } else {
        read_attribute(written, attribute, rules, control);
      }
    }
  }

  std::string_view xml_;
  std::string file_;
  pugi::xml_document document_;
  pugi::xml_node root_;
  mutable std::ptrdiff_t counted_to_ = 0;
  mutable int line_ = 1;
};

std::string xml_of_base(const LayoutFile& file, const LayoutSource& source) {
  try {
    return source(file.base());
  } catch (const value::Failure& failure) {
    const Place place = file.place();
    throw failure.at(place.file + ":" + std::to_string(place.line) + ": base");
  }
}

LayoutDraft read_draft(std::string_view xml, const std::string& file, const LayoutSource& source, std::size_t depth) {
  LayoutFile layout(xml, file);
  LayoutDraft draft;
  if (!layout.base().empty()) {
    if (depth == kDeepestBase) bad_layout(layout.place(), "bases that run in a circle, or more than 8 of them");
    const std::string base = xml_of_base(layout, source);
    draft = read_draft(base, std::string(layout.base()) + ".xml", source, depth + 1);
  }
  layout.apply(draft);
  return draft;
}

}  // namespace

void bad_layout(const Place& place, const std::string& what) {
  throw value::Failure(value::Error::BadLayout, place.file + ":" + std::to_string(place.line) + ": " + what);
}

LayoutPtr read_layout(std::string_view xml, const std::string& file, const LayoutSource& source) {
  return finish_layout(read_draft(xml, file, source, 0));
}

}  // namespace dorvo::engine
