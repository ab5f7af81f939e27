#include "export/html_filter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <pugixml.hpp>
#include <regex>

#include "tests/export/hand_pages.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

using test::Folder;
using test::HandPages;
using test::read_file;

// Two pages; the second begins with a group heading.
void two_pages(HandPages& hand) {
  hand.page().text(1440, 720, 2880, 240, "Caf\u00E9 <& \u0915");
  hand.line(1440, 1440, 2880, 0);
  hand.page().text(1440, 720, 2880, 240, "M/s Deshmukh");
  hand.as_group_header();
  hand.text(1440, 1200, 2880, 240, "1500.50");
}

std::set<std::string> names_in(const Folder& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
    if (entry.is_regular_file()) names.insert(std::filesystem::relative(entry.path(), folder.path()).string());
  return names;
}

void aim(HtmlFilter& filter, const Folder& folder) {
  filter.FileNamePrefix = "r";
  filter.HTMLOutputPath = filter.ImagesOutputPath = folder.path();
}

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

struct Case {
  const char* what;
  void (*set)(HtmlFilter&);
  std::set<std::string> files;
};

const std::vector<Case>& cases() {
  using H = HtmlFilter;
  static const std::vector<Case> all = {
      {"one file", [](H&) {}, {"r.html"}},
      {"tables", [](H& h) { h.HTMLVersion = 0; }, {"r.html", "rspace.gif"}},
      {"a file a page", [](H& h) { h.MultiPage = true; }, {"r1.html", "r2.html"}},
      {"style sheet apart", [](H& h) { h.CreateCSS = true; }, {"r.html", "r.css"}},
      {"simple contents", [](H& h) { h.TOCFormat = 1; }, {"r.html", "rtoc.html"}},
      {"dynamic contents", [](H& h) { h.TOCFormat = 2, h.MultiPage = true; }, {"r1.html", "r2.html", "rtoc.html"}},
      {"XML contents", [](H& h) { h.TOCFormat = 3; }, {"r.html", "rtoc.xml"}},
      {"frames with contents",
       [](H& h) { h.CreateFrameset = true, h.TOCFormat = 1; },
       {"r.html", "rpages.html", "rtoc.html"}},
      {"frames without",
       [](H& h) { h.CreateFrameset = true, h.MultiPage = true; },
       {"r.html", "r1.html", "r2.html", "rnav.html"}},
      {"frames with XML",
       [](H& h) { h.CreateFrameset = true, h.TOCFormat = 3; },
       {"r.html", "rpages.html", "rnav.html", "rtoc.xml"}},
      {"archive", [](H& h) { h.MHTArchive = true, h.CreateCSS = true, h.HTMLVersion = 0; }, {"r.mht"}},
  };
  return all;
}

TEST(HtmlFilter, WritesTheFilesOfItsOptions) {
  HandPages hand;
  two_pages(hand);
  for (const Case& c : cases()) {
    const Folder folder;
    HtmlFilter filter;
    aim(filter, folder);
    c.set(filter);
    filter.Export(hand.pages());
    EXPECT_EQ(names_in(folder), c.files) << c.what;
    EXPECT_TRUE(std::filesystem::exists(filter.first_file())) << c.what;
  }
}

TEST(HtmlFilter, EveryReferenceLeadsSomewhere) {
  HandPages hand;
  two_pages(hand);
  const std::regex reference("(?:href|src)=\"([^\"#]*)(?:#([^\"]*))?\"", std::regex::icase);
  for (const Case& c : cases()) {
    const Folder folder;
    HtmlFilter filter;
    aim(filter, folder);
    c.set(filter);
    filter.Export(hand.pages());
    for (const std::string& name : names_in(folder)) {
      if (name == "r.mht") continue;
      const std::string text = read_file(folder.file(name));
      for (std::sregex_iterator at(text.begin(), text.end(), reference), end; at != end; ++at) {
        const std::string file = (*at)[1];
        ASSERT_TRUE(std::filesystem::exists(folder.file(file))) << c.what << ": " << name << " refers to " << file;
        const std::string anchor = (*at)[2];
        if (anchor.empty()) continue;
        EXPECT_TRUE(std::regex_search(read_file(folder.file(file)), std::regex("(id|NAME)=\"" + anchor + "\"")))
            << c.what << ": " << anchor;
      }
    }
  }
}

struct SetCase {
  const char* charset;
  std::string text;
};

TEST(HtmlFilter, CharacterSetIsWrittenWhenGivenAndHolds) {
  HandPages hand;
  two_pages(hand);
  const std::vector<SetCase> sets = {{"", "Caf&#233; &lt;&amp; &#2325;"},
                                     {"windows-1252", "Caf\xE9 &lt;&amp; &#2325;"},
                                     {"utf-8", "Caf\u00E9 &lt;&amp; \u0915"}};
  for (const SetCase& c : sets)
    for (int version : {0, 1}) {
      const Folder folder;
      HtmlFilter filter;
      aim(filter, folder);
      filter.CharSet = c.charset;
      filter.HTMLVersion = version;
      filter.Export(hand.pages());
      const std::string html = read_file(folder.file("r.html"));
      EXPECT_TRUE(has(html, c.text)) << c.charset;
      EXPECT_EQ(has(html, "charset"), *c.charset != 0) << c.charset;
      EXPECT_TRUE(*c.charset == 0 || has(html, std::string("charset=") + c.charset));
    }
}

TEST(HtmlFilter, RefusesCharacterSetsThatCannotHoldHtml) {
  for (const char* charset : {"no-such-set", "EBCDIC-US"}) {
    const Folder folder;
    HtmlFilter filter;
    aim(filter, folder);
    filter.CharSet = charset;
    EXPECT_THROW(filter.begin(), value::Failure) << charset;
    EXPECT_EQ(folder.files(), 0u);
  }
}

TEST(HtmlFilter, TitleIsEscaped) {
  HandPages hand;
  two_pages(hand);
  const Folder folder;
  HtmlFilter filter;
  aim(filter, folder);
  filter.Title = "Bills & <receipts>";
  filter.Export(hand.pages());
  EXPECT_TRUE(has(read_file(folder.file("r.html")), "<title>Bills &amp; &lt;receipts&gt;</title>"));
}

TEST(HtmlFilter, DynamicPlaces) {
  HandPages hand;
  two_pages(hand);
  const Folder folder;
  HtmlFilter filter;
  aim(filter, folder);
  filter.Export(hand.pages());
  const std::string html = read_file(folder.file("r.html"));
  // 1440 twips are 72 points. A4 is 595.3 by 841.9 points.
  EXPECT_TRUE(has(html, "id=\"page1\" style=\"width:595.3pt;height:841.9pt\""));
  EXPECT_TRUE(std::regex_search(html, std::regex("left:72pt;top:3[0-9.]*pt;width:144pt\">Caf")));
  EXPECT_TRUE(has(html, "left:72pt;top:71.75pt;width:144pt;border-top:0.5pt solid #000000"));
}

TEST(HtmlFilter, StyleSheetApartOrWithin) {
  HandPages hand;
  two_pages(hand);
  const Folder folder;
  HtmlFilter filter;
  aim(filter, folder);
  filter.Export(hand.pages());
  EXPECT_TRUE(has(read_file(folder.file("r.html")), "<style"));
  filter.CreateCSS = true;
  filter.Export(hand.pages());
  EXPECT_FALSE(has(read_file(folder.file("r.html")), "<style"));
  EXPECT_TRUE(has(read_file(folder.file("r.css")), ".s2{font-family:Arial"));
  filter.CreateCSS = false;
  filter.MultiPage = true;
  filter.Export(hand.pages());
  for (const char* file : {"r1.html", "r2.html"}) EXPECT_TRUE(has(read_file(folder.file(file)), ".s2{")) << file;
}

TEST(HtmlFilter, ContentsNamePagesAndGroups) {
  HandPages hand;
  two_pages(hand);
  const Folder folder;
  HtmlFilter filter;
  aim(filter, folder);
  filter.TOCFormat = 3;
  filter.Title = "Bills";
  filter.Export(hand.pages());
  pugi::xml_document contents;
  ASSERT_TRUE(contents.load_file(folder.file("rtoc.xml").c_str()));
  const pugi::xml_node root = contents.child("contents");
  EXPECT_STREQ(root.attribute("title").value(), "Bills");
  EXPECT_STREQ(root.first_child().attribute("href").value(), "r.html#page1");
  EXPECT_FALSE(root.first_child().first_child());
  EXPECT_STREQ(root.last_child().child("heading").text().get(), "M/s Deshmukh");
  filter.TOCFormat = 2;
  filter.Export(hand.pages());
  EXPECT_TRUE(has(read_file(folder.file("rtoc.html")), "onclick=\"fold(this)\""));
  filter.TOCFormat = 1;
  filter.Export(hand.pages());
  const std::string simple = read_file(folder.file("rtoc.html"));
  EXPECT_FALSE(has(simple, "onclick"));
  EXPECT_TRUE(has(simple, "<ul><li>M/s Deshmukh</li></ul>"));
}

TEST(HtmlFilter, PicturesGoToTheirFolder) {
  HandPages hand;
  two_pages(hand);
  const Folder folder;
  std::filesystem::create_directories(folder.file("web/pages"));
  std::filesystem::create_directories(folder.file("web/img"));
  HtmlFilter filter;
  filter.FileNamePrefix = "r";
  filter.HTMLOutputPath = folder.file("web/pages");
  filter.ImagesOutputPath = folder.file("web/img");
  filter.HTMLVersion = 0;
  filter.Export(hand.pages());
  EXPECT_EQ(names_in(folder), (std::set<std::string>{"web/pages/r.html", "web/img/rspace.gif"}));
  EXPECT_TRUE(has(read_file(folder.file("web/pages/r.html")), "SRC=\"../img/rspace.gif\""));
}

TEST(HtmlFilter, TablesKeepRowsColumnsAndBorders) {
  HandPages hand;
  hand.page().text(0, 0, 3000, 240, "over both").text(0, 300, 1500, 240, "left").text(1500, 300, 1500, 240, "right");
  hand.line(0, 540, 3000, 0);
  const Folder folder;
  HtmlFilter filter;
  aim(filter, folder);
  filter.HTMLVersion = 0;
  filter.Export(hand.pages());
  const std::string html = read_file(folder.file("r.html"));
  EXPECT_TRUE(std::regex_search(html, std::regex("<TD COLSPAN=\"2\" NOWRAP ALIGN=\"left\"[^>]*><FONT[^>]*>over both")));
  EXPECT_TRUE(std::regex_search(
      html, std::regex("<TR><TD CLASS=\"s[0-9]\"[^>]*><FONT[^>]*>left.*<TD CLASS=\"s[0-9]\"[^>]*><FONT[^>]*>right")));
  EXPECT_TRUE(has(html, "{border-bottom:1px solid #000000}"));
  EXPECT_TRUE(has(html, "WIDTH=\"200\""));  // 3000 twips
}

TEST(HtmlFilter, AllFilesOrNone) {
  HandPages hand;
  two_pages(hand);
  const Folder folder;
  {
    HtmlFilter failing;
    aim(failing, folder);
    failing.MultiPage = true;
    failing.HTMLVersion = 0;
    failing.ImagesOutputPath = folder.file("missing");
    EXPECT_THROW(failing.Export(hand.pages()), value::Failure);
  }
  EXPECT_EQ(folder.files(), 0u);
}

TEST(HtmlFilter, ArchiveHoldsEveryPart) {
  HandPages hand;
  two_pages(hand);
  const Folder folder;
  HtmlFilter filter;
  aim(filter, folder);
  filter.MHTArchive = filter.CreateFrameset = filter.CreateCSS = true;
  filter.CharSet = "utf-8";
  filter.HTMLVersion = 0;
  filter.Export(hand.pages());
  const std::string archive = read_file(folder.file("r.mht"));
  std::size_t at = 0;
  for (const char* part : {"r.html", "rpages.html", "rspace.gif", "rnav.html", "r.css"}) {
    at = archive.find(std::string("Content-Location: thismessage:/") + part + "\r\n", at);
    ASSERT_NE(at, std::string::npos) << part;
  }
  EXPECT_TRUE(has(archive, "Caf=C3=A9 &lt;&amp; =E0=A4=95"));
  EXPECT_TRUE(archive.ends_with("\r\n------=_DorvoForm_Report_Part--\r\n"));
  std::size_t line = 0;
  for (char c : archive.substr(archive.find("Content-Transfer"))) {
    line = c == '\n' ? 0 : line + 1;
    EXPECT_LE(line, 77u);
  }
}

}  // namespace
}  // namespace dorvo::export_
