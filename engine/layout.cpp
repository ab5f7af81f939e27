#include "engine/layout.h"

#include "value/text.h"

namespace dorvo::engine {

const SectionLayout* Layout::find_section(std::string_view section) const {
  for (const SectionLayout& each : sections) {
    if (value::same_name(each.name, section)) return &each;
  }
  return nullptr;
}

}  // namespace dorvo::engine
