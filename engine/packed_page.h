// A finished page in little room: no shapes, one arena for all texts. Private to the engine.
#pragma once

#include "engine/pages.h"

namespace dorvo::engine {

struct PackedItem {
  const ControlLayout* control = nullptr;
  const SectionLayout* section = nullptr;
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  std::uint32_t text = 0;  // where it begins in the arena
  std::uint32_t length = 0;
  std::uint16_t half_points = 0;
  // Where the text stands: a rule has none, the wording of a label is that of its control.
  enum class Text : std::uint8_t { None, OfControl, InArena } kind = Text::None;
  bool clipped : 1 = false;
  bool fixed : 1 = false;
};

struct PackedPage {
  Sheet sheet;
  std::vector<PackedItem> items;
  std::string texts;
};

// `page` comes from a run: its shapes are those of shape_in_box().
std::shared_ptr<const PackedPage> pack(const Page& page);
PagePtr unpack(const PackedPage& packed);

}  // namespace dorvo::engine
