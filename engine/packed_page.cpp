#include "engine/packed_page.h"

#include "engine/fit.h"

namespace dorvo::engine {
namespace {

PackedItem pack(const PageItem& item, std::string& texts) {
  PackedItem packed;
  packed.control = item.control;
  packed.section = item.section;
  packed.left = item.left;
  packed.top = item.top;
  packed.width = item.width;
  packed.height = item.height;
  packed.half_points = static_cast<std::uint16_t>(item.half_points);
  packed.clipped = item.clipped;
  packed.fixed = item.fixed;
  if (!item.text) return packed;
  if (*item.text == item.control->text) {
    packed.kind = PackedItem::Text::OfControl;
    return packed;
  }
  packed.kind = PackedItem::Text::InArena;
  packed.text = static_cast<std::uint32_t>(texts.size());
  packed.length = static_cast<std::uint32_t>(item.text->size());
  texts += *item.text;
  return packed;
}

std::string_view text_of(const PackedItem& item, const std::string& texts) {
  if (item.kind == PackedItem::Text::OfControl) return item.control->text;
  return std::string_view(texts).substr(item.text, item.length);
}

PageItem unpack(const PackedItem& packed, const std::string& texts) {
  PageItem item;
  item.control = packed.control;
  item.section = packed.section;
  item.left = packed.left;
  item.top = packed.top;
  item.width = packed.width;
  item.height = packed.height;
  item.half_points = packed.half_points;
  item.clipped = packed.clipped;
  item.fixed = packed.fixed;
  if (packed.kind == PackedItem::Text::None) return item;
  const std::string_view text = text_of(packed, texts);
  item.shaped = shape_in_box(text, *packed.control, packed.half_points);
  item.text = held_text(text, item.shaped);
  return item;
}

}  // namespace

std::shared_ptr<const PackedPage> pack(const Page& page) {
  auto packed = std::make_shared<PackedPage>();
  packed->sheet = page;
  packed->items.reserve(page.items.size());
  for (const PageItem& item : page.items) packed->items.push_back(pack(item, packed->texts));
  packed->texts.shrink_to_fit();
  return packed;
}

PagePtr unpack(const PackedPage& packed) {
  auto page = std::make_shared<Page>();
  static_cast<Sheet&>(*page) = packed.sheet;
  page->items.reserve(packed.items.size());
  for (const PackedItem& item : packed.items) page->items.push_back(unpack(item, packed.texts));
  return page;
}

}  // namespace dorvo::engine
