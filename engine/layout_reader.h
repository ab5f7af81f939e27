// Stored layouts from their XML form (docs/layouts.md).
//
// A layout that does not follow the format fails with BadLayout and one line: file, line, what was found and what
// was expected. Reading is independent of the locale.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "engine/layout.h"

namespace dorvo::engine {

// The XML text of another layout by its name, for base="..."; fails with BadLayout when there is none.
using LayoutSource = std::function<std::string(std::string_view name)>;

// `file` is the name that messages give. Bases are read through `source`; a circle of bases is a failure.
LayoutPtr read_layout(std::string_view xml, const std::string& file, const LayoutSource& source);

}  // namespace dorvo::engine
