// A stored layout while it is put together from its file and its bases: positions as they are written, styles still
// apart from what a control changes in them. Private to the layout reader.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "engine/layout.h"

namespace dorvo::engine {

// Where something was written.
struct Place {
  std::string file;
  int line = 0;
};

// Fails with BadLayout: "FILE:LINE: WHAT".
[[noreturn]] void bad_layout(const Place& place, const std::string& what);

struct ControlDraft {
  ControlLayout layout;
  int x2 = 0;                                     // Line: its end point
  int y2 = 0;                                     //
  std::string style;                              // name of the style that it uses
  std::map<std::string, std::string> exceptions;  // attributes of a style that it writes itself, by name
  std::string block;
  Place place;
};

struct SectionDraft {
  SectionLayout layout;  // without controls
  std::vector<ControlDraft> controls;
  bool kind_written = false;
  Place place;
};

struct StyleDraft {
  Style style;
  Place place;
};

struct LayoutDraft {
  Layout layout;  // without styles and sections
  std::vector<StyleDraft> styles;
  std::vector<SectionDraft> sections;
  Place place;
};

// The finished layout. Fails with BadLayout when its parts do not fit together: a name used twice or missing, groups
// that do not pair, an attribute that its kind of section has not.
LayoutPtr finish_layout(LayoutDraft draft);

}  // namespace dorvo::engine
