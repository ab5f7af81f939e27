// The fonts of a PDF: which characters of which faces its pages use, and the objects that carry them.
//
// Text of the single-byte Latin code goes out as a simple TrueType font with WinAnsiEncoding, one a face. Everything
// else (Devanagari, the rupee sign) goes out in coded fonts: simple TrueType fonts in which every pair of a glyph and
// the characters it stands for has a code of its own, so that all three versions can carry them and every reader finds
// the right text again. Subsets are without hints and are kept, packed, for the life of the process (bounded).
#pragma once

#include <bitset>
#include <compare>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/fonts.h"
#include "export/pdf_objects.h"

namespace dorvo::export_ {

using CodeSet = std::bitset<256>;

// The single-byte Latin font of a face.
struct LatinFont {
  const engine::FontFace* face = nullptr;
  std::string resource;  // its name in content streams; the same in every document
  CodeSet codes;
};

// What a code of a coded font shows.
struct CodedGlyph {
  std::uint16_t glyph = 0;
  float width = 0;  // how far the pen goes on, em units; not the face's own for a mark that is moved onto a letter
  std::string characters;  // UTF-8
  friend auto operator<=>(const CodedGlyph&, const CodedGlyph&) = default;
};

// Up to 255 glyphs of a face under codes from 1.
struct CodedFont {
  const engine::FontFace* face = nullptr;
  std::string resource;
  std::vector<CodedGlyph> glyphs;  // code 1 first; a glyph has one width in all its codes
  bool takes(const CodedGlyph& glyph) const;
};

// What a document or one content stream uses, in order of first use. References stay good.
class PdfFontUse {
 public:
  LatinFont& latin(const engine::Face& face);

  struct Code {
    const CodedFont* font = nullptr;
    std::uint8_t code = 0;
  };
  Code code(const engine::Face& face, CodedGlyph glyph);

  bool has_coded() const { return !coded_.empty(); }
  void add(const PdfFontUse& other);  // its Latin fonts

  const std::vector<std::unique_ptr<LatinFont>>& latin_fonts() const { return latin_; }
  const std::vector<std::unique_ptr<CodedFont>>& coded_fonts() const { return coded_; }

 private:
  std::vector<std::unique_ptr<LatinFont>> latin_;
  std::vector<std::unique_ptr<CodedFont>> coded_;
  std::map<std::pair<const engine::Face*, CodedGlyph>, Code> known_codes_;
};

// Families that are to be left out of the file, as the filter's property names them.
class NeverEmbed {
 public:
  NeverEmbed() = default;
  explicit NeverEmbed(std::string_view names);  // each followed by ";"
  bool has(const engine::Face& face) const;     // by the layout's name or the face's own, in any capitals

 private:
  std::set<std::string> families_;  // lower case
};

// Writes all fonts and returns the entries of the resources' /Font dictionary.
std::string write_fonts(PdfObjects& objects, const PdfFontUse& use, const NeverEmbed& left_out);

}  // namespace dorvo::export_
