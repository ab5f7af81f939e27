#include "engine/fonts.h"

#include <fontconfig/fontconfig.h>
#include <hb-ot.h>
#include <hb.h>

#include <deque>
#include <map>

#include "value/failure.h"
#include "value/handle.h"
#include "value/text.h"

namespace dorvo::engine {
namespace {

using PatternPtr = value::Handle<FcPattern, FcPatternDestroy>;
using FontSetPtr = value::Handle<FcFontSet, FcFontSetDestroy>;
using CharSetPtr = value::Handle<FcCharSet, FcCharSetDestroy>;
using BlobPtr = value::Handle<hb_blob_t, hb_blob_destroy>;

[[noreturn]] void font_failure(const std::string& what) {
  throw value::Failure(value::Error::EngineState, what);
}

// FontConfig's own state, read from the machine's settings at the first face that is asked for.
FcConfig* config() {
  static FcConfig* const kConfig = FcInitLoadConfigAndFonts();
  if (!kConfig) font_failure("No fonts: FontConfig cannot read its settings");
  return kConfig;
}

std::string text_property(const FcPattern* pattern, const char* property) {
  FcChar8* text = nullptr;
  if (FcPatternGetString(pattern, property, 0, &text) != FcResultMatch) return {};
  return reinterpret_cast<const char*>(text);
}

bool usable(const FcPattern* pattern) {
  FcBool variable = FcFalse;
  FcPatternGetBool(pattern, FC_VARIABLE, 0, &variable);
  return !variable && text_property(pattern, FC_FONTFORMAT) == "TrueType";
}

PatternPtr pattern_of(std::string_view family, bool bold, bool italic, const FcCharSet* characters,
                      const char* language) {
  PatternPtr pattern(FcPatternCreate());
  const std::string name(family);
  if (!name.empty()) FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
  FcPatternAddInteger(pattern.get(), FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern.get(), FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  // Named, so that the machine's locale does not take part in the choice.
  FcPatternAddString(pattern.get(), FC_LANG, reinterpret_cast<const FcChar8*>(language));
  if (characters) FcPatternAddCharSet(pattern.get(), FC_CHARSET, characters);
  FcConfigSubstitute(config(), pattern.get(), FcMatchPattern);
  FcDefaultSubstitute(pattern.get());
  return pattern;
}

// The nearest usable font; with a character, the nearest that has it. None: nullptr.
PatternPtr nearest(FcPattern* wanted, char32_t character) {
  FcResult result = FcResultNoMatch;
  if (character == 0) {
    PatternPtr best(FcFontMatch(config(), wanted, &result));
    if (best && usable(best.get())) return best;
  }
  FontSetPtr sorted(FcFontSort(config(), wanted, FcFalse, nullptr, &result));
  for (int i = 0; sorted && i < sorted->nfont; ++i) {
    FcCharSet* has = nullptr;
    if (!usable(sorted->fonts[i])) continue;
    if (character != 0 && (FcPatternGetCharSet(sorted->fonts[i], FC_CHARSET, 0, &has) != FcResultMatch ||
                           !FcCharSetHasChar(has, character)))
      continue;
    return PatternPtr(FcFontRenderPrepare(config(), wanted, sorted->fonts[i]));
  }
  return nullptr;
}

struct FaceKey {
  std::string family;
  bool bold = false;
  bool italic = false;
  friend bool operator==(const FaceKey&, const FaceKey&) = default;
};

// Every face in use. A deque, because faces are referred to by address for the life of the process.
struct Loaded {
  std::deque<std::pair<FaceKey, FontFace>> faces;
  std::map<std::pair<const FontFace*, char32_t>, const FontFace*> fallbacks;
};

Loaded& loaded() {
  static Loaded* const kLoaded = new Loaded;  // not destroyed: finished pages may outlive static objects
  return *kLoaded;
}

const FontFace& load(const FcPattern* pattern, FaceKey key) {
  int index = 0;
  FcPatternGetInteger(pattern, FC_INDEX, 0, &index);
  auto& faces = loaded().faces;
  std::string file = text_property(pattern, FC_FILE);
  faces.emplace_back(std::piecewise_construct, std::forward_as_tuple(key), std::forward_as_tuple(file, index));
  FontFace& face = faces.back().second;
  face.family = std::move(key.family);
  face.own_family = text_property(pattern, FC_FAMILY);
  face.postscript_name = text_property(pattern, FC_POSTSCRIPT_NAME);
  face.bold = key.bold;
  face.italic = key.italic;
  face.id = static_cast<int>(faces.size()) - 1;
  return face;
}

const FontFace* find_loaded(std::string_view family, bool bold, bool italic) {
  for (const auto& [key, face] : loaded().faces)
    if (key.bold == bold && key.italic == italic && key.family == family) return &face;
  return nullptr;
}

// The nearest face for a language that has the character; nullptr when there is none.
const FontFace* fallback_in(const char* language, const FontFace& wanted, char32_t character) {
  CharSetPtr characters(FcCharSetCreate());
  FcCharSetAddChar(characters.get(), character);
  const PatternPtr found =
      nearest(pattern_of({}, wanted.bold, wanted.italic, characters.get(), language).get(), character);
  if (!found) return nullptr;
  const std::string family = text_property(found.get(), FC_FAMILY);
  const FontFace* face = find_loaded(family, wanted.bold, wanted.italic);
  return face ? face : &load(found.get(), {family, wanted.bold, wanted.italic});
}

}  // namespace

FontFace::FontFace(std::string path, int face_index) {
  file = std::move(path);
  index = face_index;
  BlobPtr blob(hb_blob_create_from_file_or_fail(file.c_str()));
  if (!blob) font_failure("Font file \"" + file + "\" cannot be read");
  face_ = hb_face_create(blob.get(), static_cast<unsigned>(index));
  if (hb_face_get_glyph_count(face_) == 0) font_failure("Font file \"" + file + "\" holds no font");
  font_ = hb_font_create(face_);
  units_per_em = hb_face_get_upem(face_);
  hb_font_extents_t extents = {};
  hb_font_get_h_extents(font_, &extents);
  ascent = extents.ascender / units_per_em;
  descent = -extents.descender / units_per_em;
  line_gap = extents.line_gap / units_per_em;
}

FontFace::~FontFace() {
  hb_font_destroy(font_);
  hb_face_destroy(face_);
}

const FontFace::Metric& FontFace::metric(char32_t character) const {
  static const Metric kNone;
  if (character > 0x10FFFF) return kNone;
  std::unique_ptr<MetricPage>& page = pages_[character >> 8];
  if (!page) {
    page = std::make_unique<MetricPage>();
    for (std::size_t i = 0; i < page->size(); ++i) {
      hb_codepoint_t glyph = 0;
      if (!hb_font_get_nominal_glyph(font_, (character & ~char32_t{0xFF}) | static_cast<char32_t>(i), &glyph)) continue;
      (*page)[i] = {static_cast<std::uint16_t>(glyph), advance(static_cast<std::uint16_t>(glyph))};
    }
  }
  return (*page)[character & 0xFF];
}

float FontFace::advance(std::uint16_t glyph) const {
  return static_cast<float>(hb_font_get_glyph_h_advance(font_, glyph) / units_per_em);
}

const FontFace& choose_face(std::string_view family, bool bold, bool italic) {
  if (const FontFace* known = find_loaded(family, bold, italic)) return *known;
  const PatternPtr found = nearest(pattern_of(family, bold, italic, nullptr, "en").get(), 0);
  if (!found) font_failure("No TrueType font on this machine for \"" + std::string(family) + "\"");
  return load(found.get(), {std::string(family), bold, italic});
}

const FontFace& fallback_face(const FontFace& wanted, char32_t character) {
  auto& fallbacks = loaded().fallbacks;
  if (const auto known = fallbacks.find({&wanted, character}); known != fallbacks.end()) return *known->second;
  // The face that shows Marathi also shows what else it has, the rupee sign above all, so that such a text does not
  // depend on which other fonts a machine happens to hold.
  const FontFace* face = fallback_in("mr", wanted, U'\u0915');
  if (!face || !face->has(character)) face = fallback_in("en", wanted, character);
  return *fallbacks.emplace(std::pair(&wanted, character), face ? face : &wanted).first->second;
}

}  // namespace dorvo::engine
