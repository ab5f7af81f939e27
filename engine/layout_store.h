// The store of all stored layouts: those built into the library, or a folder of XML files for layout authors.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/layout.h"

namespace dorvo::engine {

// One layout that the build put into the library: name of the report and XML text.
struct EmbeddedLayout {
  const char* name;
  std::string_view xml;
};

// Called once by the library at start with the table that the build made.
void embed_layouts(const EmbeddedLayout* first, std::size_t count);

// From now on layouts are read from DIR/NAME.xml; empty: from the built-in table again. Drops what was read before.
void layouts_from(std::string folder);

// Reads a layout at its first use and keeps it. Fails with BadLayout when there is none or it is wrong.
LayoutPtr stored_layout(std::string_view name);

std::vector<std::string> stored_layout_names();

}  // namespace dorvo::engine
