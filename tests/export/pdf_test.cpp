#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <sstream>
#include <string>
#include <vector>

#include "export/pdf_filter.h"
#include "tests/export/page_builder.h"
#include "tests/export/sample_pages.h"
#include "tests/export/test_files.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

using engine::Align;
using test::Folder;
using test::form_page;
using test::output_of;
using test::PageBuilder;
using test::read_file;
using test::register_page;

// Names with every kind of joint: signs before their letter, half forms, letters over and under, moved marks.
const std::vector<std::string> kNames = {
    "कृष्णा ट्रेडर्स आणि कंपनी",
    "श्री गणेश किराणा स्टोअर्स, लक्ष्मी रोड",
    "महाराष्ट्र हार्डवेअर व बिल्डिंग मटेरियल्स",
    "ज्ञानेश्वर विठ्ठल पाटील",
    "द्वारकाधीश ऑटोमोबाईल्स प्रा. लि.",
    "सौ. वृषाली हर्षवर्धन क्षीरसागर",
    "डॉ. ऋषिकेश त्र्यंबक कुलकर्णी",
    "दुर्गाप्रसाद ढोंडू खंडेलवाल",
    "अँड. फ़िरोज़ क़ुरैशी",
    "रु. १,२३,४५६.७८ फक्त",
    "ट्रॅक्टर्स ऱ्हास कुऱ्हाड दऱ्या",
    "शृंगार विश्वकर्मा हृदय ब्रह्मा चिन्ह",
    "M/s. राम ट्रेडर्स & Sons (Pune), पुणे-411037",
    "\xE2\x82\xB9 500 \xE2\x80\x93 \xE2\x80\x9Cquoted\xE2\x80\x9D \xE2\x82\xAC 7, 50% \\ back",
};

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    line.erase(0, line.find_first_not_of(" \f"));
    if (!line.empty()) lines.push_back(line);
  }
  return lines;
}

std::size_t count_of(const std::string& bytes, std::string_view what) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = bytes.find(what, at)) != std::string::npos; ++at) ++count;
  return count;
}

engine::PagePtr names_page() {
  PageBuilder page;
  int top = 400;
  for (const std::string& name : kNames) page.text(name, 700, top += 400, 10000, 300);
  return page.page();
}

class Pdf : public testing::Test {
 protected:
  Folder folder;
  PdfFilter filter;
  engine::Pages pages;
  void SetUp() override { filter.FileName = folder.file("form.pdf"); }
  std::string written() {
    filter.Export(pages);
    return read_file(filter.FileName);
  }
  std::string read_by(const std::string& program) { return output_of(program + " " + filter.FileName); }
};

class PdfOfVersion : public Pdf, public testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    Pdf::SetUp();
    filter.Version = GetParam();
    pages.add(names_page());
    for (int n = 1; n <= 3; ++n) pages.add(form_page(n));
  }
};

TEST_P(PdfOfVersion, OtherReadersFindNoFault) {
  const std::string bytes = written();
  EXPECT_EQ(bytes.substr(0, 9), "%PDF-1." + std::to_string(GetParam() + 1) + "\n");
  EXPECT_EQ(read_by("qpdf --check").find("WARNING"), std::string::npos);
  EXPECT_EQ(read_by("gs -q -dBATCH -dNOPAUSE -sDEVICE=nullpage"), "");
  EXPECT_EQ(read_by("gs -q -dBATCH -dNOPAUSE -dPDFSTOPONWARNING -sDEVICE=nullpage"), "");
  EXPECT_NE(read_by("pdfinfo").find("Pages:           4"), std::string::npos);
}
INSTANTIATE_TEST_SUITE_P(All, PdfOfVersion, testing::Values(0, 1, 2));

TEST_F(Pdf, TextIsFoundAgain) {
  pages.add(names_page());
  filter.Export(pages);
  EXPECT_EQ(lines_of(output_of("pdftotext " + filter.FileName + " -")), kNames);
  EXPECT_EQ(lines_of(output_of("pdftotext -layout " + filter.FileName + " -")), kNames);
  EXPECT_EQ(lines_of(output_of("(mutool draw -q -F text " + filter.FileName + " 2>/dev/null)")), kNames);
}

TEST_F(Pdf, TheOldestVersionUsesNothingNewerAndShowsTheSame) {
  pages.add(names_page());
  for (int version : {0, 1}) {
    filter.Version = version;
    filter.FileName = folder.file("v" + std::to_string(version) + ".pdf");
    const std::string bytes = written();
    for (const char* newer : {"/FlateDecode", "BDC", "EMC", "/ToUnicode"})
      EXPECT_EQ(bytes.find(newer) == std::string::npos, version == 0 || newer[0] != '/') << newer;
    output_of("pdftoppm -r 100 -gray " + filter.FileName + " " + (folder.file("v" + std::to_string(version))));
  }
  EXPECT_EQ(read_file(folder.file("v0-1.pgm")), read_file(folder.file("v1-1.pgm")));
}

TEST_F(Pdf, FamiliesLeftOutKeepTheirStyleByName) {
  PageBuilder page;
  int top = 300;
  for (const char* family : {"Arial", "Times New Roman", "Courier New"})
    for (int style = 0; style < 4; ++style) {
      page.style.font = family;
      page.style.bold = style & 1;
      page.style.italic = style & 2;
      page.text("12.5 of a box", 300, top += 400, 5000, 300);
    }
  page.style = {};
  page.text("राम", 300, top, 5000, 300);
  pages.add(page.page());
  // By the layout's name, or by that of the font which serves it, in any capitals.
  filter.NeverEmbedFonts = "ARIAL;liberation serif;Lohit Devanagari;";
  filter.Export(pages);

  const std::string fonts = read_by("pdffonts");
  for (const char* name : {"Arial ", "Arial,Bold ", "Arial,Italic ", "Arial,BoldItalic ", "TimesNewRoman ",
                           "TimesNewRoman,Bold ", "TimesNewRoman,Italic ", "TimesNewRoman,BoldItalic "})
    EXPECT_NE(fonts.find(std::string("\n") + name), std::string::npos) << fonts;
  EXPECT_EQ(count_of(fonts, "no  no  no"), 8u);
  EXPECT_EQ(count_of(fonts, "yes yes no"), 4u);   // Courier New
  EXPECT_EQ(count_of(fonts, "yes yes yes"), 1u);  // no viewer could show this one otherwise
  EXPECT_EQ(read_by("gs -q -dBATCH -dNOPAUSE -sDEVICE=nullpage"), "");
  EXPECT_EQ(lines_of(output_of("pdftotext " + filter.FileName + " -")).back(), "राम");
}

TEST_F(Pdf, SamePagesGiveTheSameBytesWhateverWasWrittenBefore) {
  pages.add(names_page());
  pages.add(form_page(1));
  const std::string first = written();
  for (int i = 0; i < 70; ++i) {
    engine::Pages others;
    others.add(form_page(100 + i));
    PdfFilter other;
    other.FileName = folder.file("other.pdf");
    other.Version = i % 3;
    other.Export(others);
  }
  engine::Pages anew;
  anew.add(names_page());
  anew.add(form_page(1));
  filter.Export(anew);
  EXPECT_EQ(read_file(filter.FileName), first);
}

TEST_F(Pdf, TheFixedLayerStandsOnceInADocument) {
  int row = 0;
  for (int n = 1; n <= 5; ++n) pages.add(register_page(n, row));
  filter.Version = 0;  // its streams can be read
  const std::string bytes = written();
  EXPECT_EQ(count_of(bytes, "(Dealer)Tj"), 1u);
  EXPECT_EQ(count_of(bytes, "(Dealer 0)Tj"), 1u);
  EXPECT_EQ(count_of(output_of("pdftotext -layout " + filter.FileName + " -"), "Dealer "), 5u * 46);
}

TEST_F(Pdf, AFixedLayerWithJoinedTextShowsItToo) {
  for (int n = 1; n <= 2; ++n) {
    PageBuilder page(n);
    page.page()->fixed_key = 77;
    page.fixed = true;
    page.text("नाव", 500, 500, 3000, 300, engine::ControlKind::Label);
    page.fixed = false;
    page.text("राम " + std::to_string(n), 4000, 500, 3000, 300);
    pages.add(page.page());
  }
  filter.Export(pages);
  EXPECT_EQ(count_of(output_of("pdftotext " + filter.FileName + " -"), "नाव"), 2u);
}

TEST_F(Pdf, MoreGlyphsThanOneFontHasCodesFor) {
  PageBuilder page;
  std::string line, all;
  for (char32_t c = 0x915; c < 0x939; ++c)
    for (char32_t sign = 0x93E; sign < 0x94D; ++sign) {
      std::string syllable;
      for (const char32_t part : {c, sign}) {
        syllable += static_cast<char>(0xE0);
        syllable += static_cast<char>(0x80 | (part >> 6 & 0x3F));
        syllable += static_cast<char>(0x80 | (part & 0x3F));
      }
      line += syllable;
    }
  page.text(line, 300, 300, 11000, 15000);
  pages.add(page.page());
  filter.Export(pages);
  std::string found;
  for (const std::string& part : lines_of(output_of("pdftotext " + filter.FileName + " -"))) found += part;
  EXPECT_EQ(found, line);
}

TEST_F(Pdf, BytesOfAFormAndOfAList) {
  for (int n = 1; n <= 3; ++n) pages.add(form_page(n));
  EXPECT_LE(written().size(), 30u * 1024);
  pages.clear();
  int row = 0;
  for (int n = 1; n <= 100; ++n) pages.add(register_page(n, row));
  EXPECT_LE(written().size(), 100u * 5 * 1024);
}

TEST_F(Pdf, SheetAsItIsRead) {
  pages.add(PageBuilder(1, 16838, 11906).page());
  pages.add(PageBuilder(2, 21600, 17280).page());
  filter.Export(pages);
  const std::string info = read_by("pdfinfo -f 1 -l 2");
  EXPECT_NE(info.find("size:  841.9 x 595.3 pts"), std::string::npos) << info;
  EXPECT_NE(info.find("size:  1080 x 864 pts"), std::string::npos) << info;
}

TEST_F(Pdf, AClippedTextEndsAtItsBox) {
  PageBuilder page;
  page.style.half_points = 40;
  engine::PageItem& item = page.text("MMMM", 1000, 1000, 5000, 600);
  item.width = 500;  // less than two letters
  item.clipped = true;
  page.text("after", 1000, 2000, 5000, 600);
  pages.add(page.page());
  filter.Export(pages);
  // 72 dots an inch, 20 twips a dot: nothing darker than paper right of the box in its lines, and text below it.
  output_of("pdftoppm -r 72 -gray " + filter.FileName + " " + folder.file("clip"));
  const std::string picture = read_file(folder.file("clip-1.pgm"));
  const std::size_t width = 596, dots = picture.size() - width * 842;
  int left = 0, right = 0, below = 0;
  for (std::size_t y = 50; y < 130; ++y)
    for (std::size_t x = 0; x < width; ++x)
      if (static_cast<unsigned char>(picture[dots + y * width + x]) < 128) ++(y >= 95 ? below : x <= 75 ? left : right);
  EXPECT_GT(left, 20);
  EXPECT_EQ(right, 0);
  EXPECT_GT(below, 20);
}

TEST_F(Pdf, OfATextThatIsTooTallWholeLinesShow) {
  PageBuilder page;
  page.text("first\r\nsecond\r\nthird", 1000, 1000, 5000, 500).clipped = true;  // two lines of 230 twips
  page.text("tall", 1000, 3000, 5000, 100).clipped = true;                      // the first one always does
  pages.add(page.page());
  filter.Export(pages);
  EXPECT_EQ(lines_of(output_of("pdftotext " + filter.FileName + " -")),
            (std::vector<std::string>{"first", "second", "tall"}));
}

TEST_F(Pdf, AFullDiskLeavesNothing) {
  int row = 0;
  for (int n = 1; n <= 60; ++n) pages.add(register_page(n, row));
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small = {20000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  {
    PdfFilter full;
    full.FileName = filter.FileName;
    try {
      full.Export(pages);
      ADD_FAILURE() << "a file of 100 KB where 20 KB have room";
    } catch (const value::Failure& failure) {
      EXPECT_EQ(failure.number(), value::Error::CannotWrite);
      EXPECT_NE(failure.description().find(filter.FileName), std::string::npos);
    }
  }
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(folder.files(), 0u);
}

TEST_F(Pdf, ValuesThatTheFilterDoesNotKnow) {
  const struct { int version, quality; } cases[] = {{3, 75}, {-1, 75}, {1, 0}, {1, 101}};
  for (const auto& c : cases) {
    filter.Version = c.version;
    filter.JPGQuality = c.quality;
    EXPECT_THROW(filter.begin(), value::Failure) << c.version << " " << c.quality;
  }
  EXPECT_EQ(folder.files(), 0u);
}

}  // namespace
}  // namespace dorvo::export_
