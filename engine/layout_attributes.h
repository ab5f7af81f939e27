// What each element of a stored layout may say of itself: its attributes by name, and what they set.
// Private to the layout reader.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "engine/layout_draft.h"

namespace dorvo::engine {

// One attribute as it stands in the file. Its readings fail with BadLayout when the text is no such thing.
struct Attribute {
  const Place& place;
  std::string_view element;  // "Label lblName"
  std::string_view name;
  std::string_view text;

  std::string string() const;  // line ends become CR LF
  std::string identifier() const;
  int twips() const;
  int length() const;  // twips, not negative
  int count(int from, int to) const;
  int half_points() const;  // from points
  bool flag() const;
  std::uint32_t color() const;  // #RRGGBB

  template <class Value>
  struct Word {
    std::string_view word;
    Value value;
  };
  template <class Value>
  Value choice(std::span<const Word<Value>> words) const {
    std::string expected;
    for (const Word<Value>& each : words) {
      if (each.word == text) return each.value;
      expected.append(expected.empty() ? "" : ", ").append(each.word);
    }
    wrong("one of " + expected);
  }

  [[noreturn]] void wrong(const std::string& expected) const;
};

template <class Target>
struct AttributeRule {
  std::string_view name;
  void (*set)(Target&, const Attribute&);
};

std::span<const AttributeRule<Layout>> layout_attributes();
std::span<const AttributeRule<Style>> style_attributes();
std::span<const AttributeRule<SectionDraft>> section_attributes();
std::span<const AttributeRule<ControlDraft>> control_attributes(ControlKind kind);
// Label and Field may write the attributes of a style themselves.
bool takes_style(ControlKind kind);

bool find_control_kind(std::string_view element, ControlKind& kind);
std::string_view element_name(ControlKind kind);

template <class Target>
const AttributeRule<Target>* find_rule(std::span<const AttributeRule<Target>> rules, std::string_view name) {
  for (const AttributeRule<Target>& rule : rules) {
    if (rule.name == name) return &rule;
  }
  return nullptr;
}

}  // namespace dorvo::engine
