#include "export/rtf_filter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/export/hand_pages.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

using test::Folder;
using test::HandPages;
using test::read_file;

std::string written(const HandPages& hand) {
  const Folder folder;
  RtfFilter filter;
  filter.FileName = folder.file("out.rtf");
  filter.Export(hand.pages());
  return read_file(filter.FileName);
}

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
  return found;
}

TEST(RtfFilter, PageSizeMarginsAndHardBreaks) {
  HandPages hand;
  for (int i = 0; i < 3; ++i) hand.page().text(1440, 1440, 3000, 240, "x");
  const std::string rtf = written(hand);
  EXPECT_TRUE(has(rtf, "\\paperw11906\\paperh16838\\margl1152\\margr360\\margt720\\margb720\\viewkind1"));
  EXPECT_EQ(count(rtf, "\\page\\par"), 2u);
  EXPECT_EQ(count(rtf, "\\sect"), 0u);
}

TEST(RtfFilter, AnotherPageSizeIsASection) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 240, "x");
  hand.page(21600, 17280).text(0, 0, 3000, 240, "y");
  const std::string rtf = written(hand);
  EXPECT_TRUE(has(rtf, "\\sect\\sectd\\pgwsxn21600\\pghsxn17280\\marglsxn1152"));
  EXPECT_TRUE(has(rtf, "\\lndscpsxn"));
  EXPECT_EQ(count(rtf, "\\page\\par"), 0u);
}

// Ten points: a line of 1.2 em is 240 twips, its baseline 0.9 em = 180 below the top of the box; a reader puts it at
// four fifths of the line, 192, so the text box begins 12 above. It is 60 twips wider than the box.
TEST(RtfFilter, TextStandsAtItsPlace) {
  HandPages hand;
  hand.page().text(1440, 2000, 3000, 240, "left");
  hand.style(engine::Align::Right).bold = true;
  hand.text(1440, 3000, 3000, 480, "two\r\nlines");
  hand.style(engine::Align::Center, 16).color = 0x0000C0;
  hand.text(1440, 4000, 3000, 240, "mid");
  const std::string rtf = written(hand);
  EXPECT_TRUE(has(rtf, "\\sl-240\\slmult0\\f0\\fs20 left\\par}\\dpx1440\\dpy1988\\dpxsize3060\\dpysize240"));
  EXPECT_TRUE(
      has(rtf, "\\qr\\sl-240\\slmult0\\f0\\fs20\\b two\\line lines\\par}\\dpx1380\\dpy2988\\dpxsize3060\\dpysize480"));
  EXPECT_TRUE(has(rtf, "\\qc\\sl-192\\slmult0\\f0\\fs16\\cf2 mid\\par}\\dpx1410"));
  EXPECT_TRUE(has(rtf, "{\\colortbl;\\red0\\green0\\blue0;\\red0\\green0\\blue192;}"));
}

TEST(RtfFilter, EscapesAndOtherScripts) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 240, "{a\\b} \u00E9\u0915\U0001F600");
  const std::string rtf = written(hand);
  // U+1F600 is the pair D83D DE00, written as signed 16-bit numbers.
  EXPECT_TRUE(has(rtf, "\\{a\\\\b\\} \\u233?\\u2325?\\u-10179?\\u-8704?\\par"));
  EXPECT_TRUE(std::all_of(rtf.begin(), rtf.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }));
  EXPECT_EQ(count(rtf, "{"), count(rtf, "}"));
}

TEST(RtfFilter, RulesAndBoxes) {
  HandPages hand;
  hand.page().line(1000, 2000, 5000, 0).line(3000, 4000, -1000, -500);
  hand.shape(1000, 5000, 2000, 600, true, 0xC0C0C0);
  const std::string rtf = written(hand);
  EXPECT_TRUE(
      has(rtf, "\\dpline\\dpptx0\\dppty0\\dpptx5000\\dppty0\\dpx1000\\dpy2000\\dpxsize5000\\dpysize0\\dplinew10"));
  EXPECT_TRUE(has(rtf, "\\dpline\\dpptx1000\\dppty500\\dpptx0\\dppty0\\dpx2000\\dpy3500\\dpxsize1000\\dpysize500"));
  EXPECT_TRUE(has(rtf, "\\dprect\\dpx1000\\dpy5000\\dpxsize2000\\dpysize600"));
  EXPECT_TRUE(has(rtf, "\\dpfillbgcr192\\dpfillbgcg192\\dpfillbgcb192"));
}

TEST(RtfFilter, SamePagesSameBytes) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 240, "x").line(0, 0, 10, 0);
  EXPECT_EQ(written(hand), written(hand));
}

TEST(RtfFilter, NothingStaysOfAnUnfinishedExport) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 240, "x");
  const Folder folder;
  {
    RtfFilter filter;
    filter.FileName = folder.file("out.rtf");
    filter.begin();
    filter.page(hand.pages().at(0));
  }
  EXPECT_EQ(folder.files(), 0u);
}

}  // namespace
}  // namespace dorvo::export_
