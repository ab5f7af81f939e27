// The faces that text is shaped and drawn with, as FontConfig finds them on the machine.
//
// A face is loaded at its first use, mapped from its file, and stays for the life of the process. Only TrueType
// outlines are taken, because every PDF version can carry them. One thread.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "engine/text.h"

struct hb_face_t;
struct hb_font_t;

namespace dorvo::engine {

// What a Face is made from. Every Face in a GlyphRun is one of these; font_face() tells.
class FontFace final : public Face {
 public:
  struct Metric {
    std::uint16_t glyph = 0;  // 0: the face has no such character
    float advance = 0;        // em units
  };

  // Fails with EngineState when the file cannot be read as a font.
  FontFace(std::string file, int index);
  ~FontFace();

  // The plain glyph of a character, as it stands without any shaping.
  const Metric& metric(char32_t character) const;
  bool has(char32_t character) const { return metric(character).glyph != 0; }
  float advance(std::uint16_t glyph) const;  // em units, from the font's own table

  hb_font_t* hb_font() const { return font_; }  // its scale is units_per_em
  hb_face_t* hb_face() const { return face_; }

 private:
  using MetricPage = std::array<Metric, 256>;
  hb_face_t* face_ = nullptr;
  hb_font_t* font_ = nullptr;
  mutable std::array<std::unique_ptr<MetricPage>, 0x1100> pages_;  // by character / 256
};

inline const FontFace& font_face(const Face& face) {
  return static_cast<const FontFace&>(face);
}

// The face of a family in a style, or the nearest that the machine has.
// Fails with EngineState when the machine has no font at all.
const FontFace& choose_face(std::string_view family, bool bold, bool italic);

// The face that shows a character which `wanted` has not; `wanted` itself when no face of the machine has it.
const FontFace& fallback_face(const FontFace& wanted, char32_t character);

}  // namespace dorvo::engine
