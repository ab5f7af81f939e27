#include "engine/text.h"

#include <gtest/gtest.h>
#include <hb.h>

#include <cmath>
#include <string>
#include <vector>

#include "engine/fonts.h"
#include "engine/painter.h"
#include "engine/utf8.h"

namespace dorvo::engine {
namespace {

const char* const kDevanagari = "राम ट्रेडर्स";

Style style_of(const char* font = "Arial", bool bold = false) {
  Style style;
  style.font = font;
  style.bold = bold;
  return style;
}

std::string text_of(const TextLine& line) {
  std::string text;
  for (const GlyphRun& run : line.runs) text += run.text;
  return text;
}

std::vector<std::string> lines_of(const ShapedPtr& shaped) {
  std::vector<std::string> lines;
  for (const TextLine& line : shaped->lines) lines.push_back(text_of(line));
  return lines;
}

TEST(Face, MetricCompatibleFamiliesServeTheLayoutsNames) {
  const struct {
    const char* asked;
    bool bold, italic;
    const char* served;
    const char* postscript;
  } cases[] = {
      {"Arial", false, false, "Liberation Sans", "LiberationSans"},
      {"Arial", true, false, "Liberation Sans", "LiberationSans-Bold"},
      {"Arial", true, true, "Liberation Sans", "LiberationSans-BoldItalic"},
      {"Times New Roman", false, true, "Liberation Serif", "LiberationSerif-Italic"},
      {"Courier New", true, false, "Liberation Mono", "LiberationMono-Bold"},
  };
  for (const auto& c : cases) {
    const FontFace& face = choose_face(c.asked, c.bold, c.italic);
    EXPECT_EQ(face.family, c.asked);
    EXPECT_EQ(face.own_family, c.served);
    EXPECT_EQ(face.postscript_name, c.postscript);
    EXPECT_EQ(&face, &choose_face(c.asked, c.bold, c.italic));
  }
}

// Widths of Arial in units of 2048: digit 1139, capital A 1366, W 1933, a 1139, blank 569, full stop 569.
TEST(Shape, WidthsAreTheFacesOwnWithoutKerningOrLigatures) {
  EXPECT_FLOAT_EQ(shape("12.5", style_of(), 20, 0)->widest, (3 * 1139 + 569) / 2048.0f);
  EXPECT_FLOAT_EQ(shape("AWAW", style_of(), 20, 0)->widest, (2 * 1366 + 2 * 1933) / 2048.0f);
  EXPECT_EQ(shape("fi", style_of(), 20, 0)->lines[0].runs[0].glyphs.size(), 2u);
}

// The short way around the shaper must be the shaper's own answer.
TEST(Shape, PlainCharactersStandAsTheShaperWouldSetThem) {
  const FontFace& face = choose_face("Arial", false, false);
  const hb_feature_t off[] = {{HB_TAG('l', 'i', 'g', 'a'), 0, 0, HB_FEATURE_GLOBAL_END},
                              {HB_TAG('c', 'l', 'i', 'g'), 0, 0, HB_FEATURE_GLOBAL_END},
                              {HB_TAG('k', 'e', 'r', 'n'), 0, 0, HB_FEATURE_GLOBAL_END}};
  std::string text;
  for (char32_t c = 0x21; c < 0x2300; ++c)
    if ((c < 0x7F || (c > 0xA0 && c < 0x250 && c != 0xAD) || (c >= 0x2013 && c < 0x2027)) && face.has(c))
      append_char(text, c);
  const ShapedPtr ours = shape(text, style_of(), 20, 0);
  ASSERT_EQ(ours->lines.size(), 1u);
  ASSERT_EQ(ours->lines[0].runs.size(), 1u);
  const std::vector<Glyph>& glyphs = ours->lines[0].runs[0].glyphs;

  hb_buffer_t* buffer = hb_buffer_create();
  hb_buffer_add_utf8(buffer, text.data(), static_cast<int>(text.size()), 0, -1);
  hb_buffer_guess_segment_properties(buffer);
  hb_shape(face.hb_font(), buffer, off, 3);
  unsigned count = 0;
  const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
  const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, &count);
  ASSERT_EQ(glyphs.size(), count);
  ASSERT_GT(count, 300u);
  for (unsigned i = 0; i < count; ++i) {
    EXPECT_EQ(glyphs[i].id, infos[i].codepoint) << i;
    EXPECT_FLOAT_EQ(glyphs[i].advance, static_cast<float>(positions[i].x_advance / face.units_per_em)) << i;
  }
  hb_buffer_destroy(buffer);
}

// "m" is 1706 of 2048 in Arial: 166.6 twips at 10 pt; blank 55.6.
TEST(Shape, WrapsAtWordEnds) {
  const struct {
    const char* text;
    int width;
    std::vector<std::string> lines;
  } cases[] = {
      {"mm mm", 0, {"mm mm"}},
      {"mm mm", 723, {"mm mm"}},         // 4 m and a blank: 722.0
      {"mm mm", 721, {"mm", "mm"}},      // one twip short
      {"mm mm", 334, {"mm", "mm"}},      // the blank at the end of a line needs no room
      {"mm  mm ", 400, {"mm", "mm"}},    // several blanks between, one at the end
      {"  mm mm", 450, {"  mm", "mm"}},  // blanks in front are kept
      {"mmm", 334, {"mm", "m"}},         // a word that is too wide alone
      {"m mmm", 334, {"m", "mm", "m"}},  //
      {"mmm", 100, {"m", "m", "m"}},     // never less than one character
      {"mm\r\nmm", 0, {"mm", "mm"}},     //
      {"mm\rmm\nmm", 0, {"mm", "mm", "mm"}},
      {"mm\r\n\r\nmm", 500, {"mm", "", "mm"}},
      {"mm\r\n", 0, {"mm", ""}},
      {"m\tm", 0, {"m m"}},
      {"mm mm mm mm", 723, {"mm mm", "mm mm"}},
      {"", 500, {}},
      {"   ", 500, {""}},
  };
  for (const auto& c : cases) EXPECT_EQ(lines_of(shape(c.text, style_of(), 20, c.width)), c.lines) << c.text << c.width;
}

TEST(Shape, WidthOfALineIsThatOfItsGlyphs) {
  const ShapedPtr shaped = shape("Shop No. 12, मुख्य बाजार Market Yard, Pune 411 037", style_of(), 20, 1500);
  ASSERT_GT(shaped->lines.size(), 2u);
  for (const TextLine& line : shaped->lines) {
    float width = 0;
    for (const GlyphRun& run : line.runs)
      for (const Glyph& glyph : run.glyphs) width += glyph.advance;
    EXPECT_NEAR(line.width, width, 1e-4);
    EXPECT_LE(twips_of(line.width, 20), 1500);
  }
}

TEST(Shape, CharactersThatTheFaceHasNotComeFromAFallback) {
  const struct {
    std::string text;
    std::vector<std::string> runs;
    std::vector<std::string> families;
  } cases[] = {
      {kDevanagari, {kDevanagari}, {"Lohit Devanagari"}},
      {"M/s. राम ट्रेडर्स, Pune", {"M/s. ", kDevanagari, ", Pune"}, {"Arial", "Lohit Devanagari", "Arial"}},
      {"राम & Co", {"राम", " & Co"}, {"Lohit Devanagari", "Arial"}},
      {"राम A राम", {"राम", " A ", "राम"}, {"Lohit Devanagari", "Arial", "Lohit Devanagari"}},
      {"राम ", {"राम"}, {"Lohit Devanagari"}},
      {"\xE2\x82\xB9 500", {"\xE2\x82\xB9", " 500"}, {"Lohit Devanagari", "Arial"}},
  };
  for (const auto& c : cases) {
    const ShapedPtr shaped = shape(c.text, style_of(), 20, 0);
    ASSERT_EQ(shaped->lines.size(), 1u);
    std::vector<std::string> runs, families;
    for (const GlyphRun& run : shaped->lines[0].runs) {
      runs.push_back(run.text);
      families.push_back(run.face->family);
      for (const Glyph& glyph : run.glyphs) EXPECT_NE(glyph.id, 0) << run.text;
    }
    EXPECT_EQ(runs, c.runs);
    EXPECT_EQ(families, c.families);
  }
}

TEST(Shape, DevanagariIsJoined) {
  // The sign i is drawn before the letter that it follows; "ksha" and "tra" are one glyph each.
  const auto glyphs = [](const char* text) { return shape(text, style_of(), 20, 0)->lines[0].runs[0].glyphs; };
  const std::vector<Glyph> ki = glyphs("कि");
  ASSERT_EQ(ki.size(), 2u);
  EXPECT_EQ(ki[1].id, glyphs("क")[0].id);
  EXPECT_EQ(glyphs("क्ष").size(), 1u);
  EXPECT_EQ(glyphs("त्र").size(), 1u);
}

TEST(Shape, ASyllableIsNeverCut) {
  for (const std::string& line : lines_of(shape("किकिकिकि", style_of(), 20, 300)))
    EXPECT_EQ(line.size() % std::string("कि").size(), 0u) << line;
}

TEST(Shape, TextFromRightToLeftStaysWhole) {
  const std::string name = "\u0639\u0644\u06CC \u0628\u0627\u0632\u0627\u0631";
  EXPECT_EQ(lines_of(shape("A " + name + " B", style_of(), 20, 200)), (std::vector<std::string>{"A", name, "B"}));
}

TEST(Shape, BytesThatAreNoTextShowAsReplacement) {
  const ShapedPtr shaped = shape("a\xFF\xC3z", style_of(), 20, 0);
  EXPECT_EQ(text_of(shaped->lines[0]), "a\xEF\xBF\xBD\xEF\xBF\xBDz");
}

TEST(Shape, SameTextIsShapedOnce) {
  const Style style = style_of();
  EXPECT_EQ(shape("Pune", style, 20, 0), shape("Pune", style, 16, 5000));
  EXPECT_NE(shape("Pune", style, 20, 0), shape("Pune", style_of("Arial", true), 20, 0));
}

TEST(Shape, TheCacheForgetsAndStaysRight) {
  const Style style = style_of();
  std::weak_ptr<const ShapedText> first = shape("forgotten 1234", style, 20, 0);
  for (int i = 0; i < 40000; ++i) shape("row " + std::to_string(i), style, 20, 0);
  EXPECT_TRUE(first.expired());
  EXPECT_EQ(lines_of(shape("row 39999", style, 20, 0)), std::vector<std::string>{"row 39999"});
}

class Placing : public testing::Test {
 protected:
  ControlLayout control;
  Style style = style_of();
  PageItem item_of(const char* text) {
    control.style = &style;
    PageItem item;
    item.control = &control;
    item.left = 1000;
    item.top = 2000;
    item.width = 3000;
    item.height = 1000;
    item.half_points = 20;
    item.shaped = shape(text, style, item.half_points, item.width - 2 * text_inset(control));
    return item;
  }
  LinePlace first_place(const char* text) {
    std::vector<LinePlace> places;
    place_lines(item_of(text), places);
    return places.at(0);
  }
};

// "mm" is 333.2 twips wide at 10 pt; Arial's ascent is 0.9053 em and its descent 0.2119 em: 181.1 and 42.4 twips.
TEST_F(Placing, AlignsAcrossAndDown) {
  EXPECT_NEAR(first_place("mm").x, 1000, 0.1);
  EXPECT_NEAR(first_place("mm").baseline, 2181.1, 0.1);
  style.align = Align::Right;
  EXPECT_NEAR(first_place("mm").x, 4000 - 333.2, 0.1);
  style.align = Align::Center;
  EXPECT_NEAR(first_place("mm").x, 1000 + (3000 - 333.2) / 2, 0.1);
  style.valign = VAlign::Bottom;
  EXPECT_NEAR(first_place("mm").baseline, 3000 - 42.4, 0.1);
  style.valign = VAlign::Middle;
  EXPECT_NEAR(first_place("mm").baseline, 2000 + (1000 - 223.5) / 2 + 181.1, 0.1);
}

TEST_F(Placing, TextThatIsTooTallStartsAtTheTop) {
  style.valign = VAlign::Bottom;
  EXPECT_NEAR(first_place("1\r\n2\r\n3\r\n4\r\n5\r\n6").baseline, 2181.1, 0.1);
}

TEST_F(Placing, ABorderKeepsItsTextOff) {
  control.border = true;
  EXPECT_EQ(first_place("mm").x, 1000 + text_inset(control));
  style.align = Align::Right;
  EXPECT_NEAR(first_place("mm").x, 4000 - 333.2 - text_inset(control), 0.1);
  EXPECT_GT(text_inset(control), 0);
}

}  // namespace
}  // namespace dorvo::engine
